#pragma once

#include <QString>
#include <QtGlobal>
#include <vector>

namespace vkm {

// Horizontal placement of a cell's content.
enum class CellAlign { Left, Center, Right };

// How one cell of the printed sheet looks. Colours are 0xRRGGBB.
struct CellStyle {
    static constexpr quint32 kNoFill = 0xFFFFFFFF;
    CellAlign align = CellAlign::Left;
    bool bold = false;
    bool wrap = false;   // breaks lines at "\n" and where the column is too narrow
    bool shrink = false; // a text too wide for its cell is made smaller (not with wrap)
    bool border = false; // a thin line on all four sides
    quint32 fill = kNoFill;
    quint32 color = 0x000000;
    double fontSize = 0; // points; 0 = the sheet's size
    QString font;        // "" = the sheet's font
    bool operator==(const CellStyle&) const = default;
};

// One cell: a text, a number or nothing, possibly with a picture drawn over it.
struct PrintCell {
    enum class Type { Empty, Text, Number };
    Type type = Type::Empty;
    QString text; // the text; for a number its decimal form
    double number = 0;
    QString picture;     // name of a picture drawn centred over the cell ("" = none)
    QString pictureText; // what the picture shows, in words (its alternative text)
    CellStyle style;

    bool isEmpty() const { return type == Type::Empty && picture.isEmpty(); }
    void setText(const QString& t);
    void setNumber(double n);
};

// Page setup of the printed sheet. Lengths in inches.
struct PageSetup {
    bool landscape = false;
    int scale = 100; // per cent
    double marginLeft = 0.7;
    double marginRight = 0.7;
    double marginTop = 0.75;
    double marginBottom = 0.75;
    double marginHeader = 0.3;
    double marginFooter = 0.3;
    // Centre header and footer in the spreadsheet's header codes (&9, &F, &A, &P, &D).
    QString centerHeader;
    QString centerFooter;
    bool gridLines = true;
};

// The header or footer text of one printed page, its codes replaced.
struct HeaderText {
    QString text;
    double fontSize = 0; // points set by a size code ("&9"); 0 = not set
};

// What the codes of a header refer to on one page.
struct HeaderFields {
    QString fileName;  // &F: the workbook's file name
    QString sheetName; // &A
    int page = 1;      // &P
    int pages = 1;     // &N
    QString date;      // &D
};

// Replaces the header codes of a spreadsheet page header: "&&" is "&", "&F" the file
// name, "&A" the sheet name, "&P" the page, "&N" the page count, "&D" the date, "&C"
// "&L" "&R" (sections) are dropped, and a number after "&" sets the font size.
HeaderText expandHeaderCodes(const QString& codes, const HeaderFields& fields);

// One worksheet laid out for printing or for a workbook: cells, column widths in
// characters of the spreadsheet's standard font, row heights in points, the page setup.
// The workbook writer and the page painter both read it, so that a saved workbook and a
// printed page show the same sheet. Rows and columns count from 0 (A1 is row 0, col 0).
class PrintSheet {
public:
    static constexpr double kDefaultRowHeight = 15.0; // points: the spreadsheet's standard row
    static constexpr double kDefaultColumnWidth = 8.43;

    PrintSheet(int columns, QString name);

    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString fontName() const { return m_fontName; }
    double fontSize() const { return m_fontSize; }
    void setFont(const QString& name, double size);

    int columnCount() const { return m_columns; }
    int rowCount() const { return int(m_rows.size()); }
    // The cell at (row, col); reading outside the sheet gives an empty cell, writing
    // adds rows as needed.
    const PrintCell& cell(int row, int col) const;
    PrintCell& cell(int row, int col);
    // Inserts an empty row before row (the rows below move down with their heights).
    void insertRow(int row);
    // The last row holding something (-1 when none).
    int lastUsedRow() const;

    double columnWidth(int col) const;
    void setColumnWidth(int col, double characters);
    double rowHeight(int row) const;
    bool hasRowHeight(int row) const;
    void setRowHeight(int row, double points);

    PageSetup& page() { return m_page; }
    const PageSetup& page() const { return m_page; }

    // "A" .. "Z", "AA" ...
    static QString columnName(int col);
    // A column width in characters as the spreadsheet shows it, in pixels at 96 dpi and
    // in points: a character is 7 pixels of the standard font, plus 5 pixels of padding.
    static int columnWidthPixels(double characters);
    static double columnWidthPoints(double characters);

private:
    struct Row {
        std::vector<PrintCell> cells;
        double height = -1; // -1: the standard height
    };
    Row& rowAt(int row);

    QString m_name;
    QString m_fontName;
    double m_fontSize = 10;
    int m_columns;
    std::vector<double> m_widths;
    std::vector<Row> m_rows;
    PageSetup m_page;
};

} // namespace vkm
