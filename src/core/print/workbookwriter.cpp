#include "print/workbookwriter.h"

#include "base/tempfolder.h"
#include "print/printpictures.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <map>
#include <vector>
#include <xlsxwriter.h>

namespace vkm {

namespace {

// The formats of one workbook, one per distinct cell look.
class Formats {
public:
    Formats(lxw_workbook* book, const PrintSheet& sheet) : m_book(book), m_sheet(sheet) {}

    lxw_format* get(const CellStyle& s) {
        const QString font = s.font.isEmpty() ? m_sheet.fontName() : s.font;
        const double size = s.fontSize > 0 ? s.fontSize : m_sheet.fontSize();
        const QString key = QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9")
                                .arg(font)
                                .arg(size)
                                .arg(int(s.align))
                                .arg(s.bold)
                                .arg(s.wrap)
                                .arg(s.border)
                                .arg(s.fill)
                                .arg(s.color)
                                .arg(s.shrink);
        const auto it = m_cache.find(key);
        if (it != m_cache.end())
            return it->second;
        lxw_format* f = workbook_add_format(m_book);
        if (!font.isEmpty())
            format_set_font_name(f, font.toUtf8().constData());
        if (size > 0)
            format_set_font_size(f, size);
        if (s.bold)
            format_set_bold(f);
        if (s.color != 0)
            format_set_font_color(f, lxw_color_t(s.color));
        if (s.fill != CellStyle::kNoFill) {
            format_set_pattern(f, LXW_PATTERN_SOLID);
            format_set_bg_color(f, lxw_color_t(s.fill));
        }
        if (s.border)
            format_set_border(f, LXW_BORDER_THIN);
        format_set_align(f, s.align == CellAlign::Center  ? LXW_ALIGN_CENTER
                            : s.align == CellAlign::Right ? LXW_ALIGN_RIGHT
                                                          : LXW_ALIGN_LEFT);
        format_set_align(f, LXW_ALIGN_VERTICAL_CENTER);
        if (s.wrap)
            format_set_text_wrap(f);
        else if (s.shrink)
            format_set_shrink(f);
        m_cache.emplace(key, f);
        return f;
    }

private:
    lxw_workbook* m_book;
    const PrintSheet& m_sheet;
    std::map<QString, lxw_format*> m_cache;
};

QString lxwText(lxw_error e) {
    return QString::fromUtf8(lxw_strerror(e));
}

// Pixel size of a cell as the spreadsheet draws it (for centring a picture in it).
int rowPixels(double points) {
    return int(points * 4.0 / 3.0);
}

// Writes the sheet into the workbook; false with the first error.
bool writeSheet(lxw_workbook* book, const PrintSheet& sheet, std::vector<QByteArray>& keep, QString* error) {
    lxw_worksheet* ws = workbook_add_worksheet(book, sheet.name().toUtf8().constData());
    if (!ws) {
        *error = QStringLiteral("cannot add the worksheet \"%1\"").arg(sheet.name());
        return false;
    }
    Formats formats(book, sheet);
    auto check = [&](lxw_error e, const QString& what) {
        if (e == LXW_NO_ERROR)
            return true;
        *error = what + QStringLiteral(": ") + lxwText(e);
        return false;
    };
    for (int c = 0; c < sheet.columnCount(); ++c)
        if (!check(worksheet_set_column(ws, lxw_col_t(c), lxw_col_t(c), sheet.columnWidth(c), nullptr),
                   QStringLiteral("column width")))
            return false;
    for (int r = 0; r < sheet.rowCount(); ++r) {
        if (sheet.hasRowHeight(r) && !check(worksheet_set_row(ws, lxw_row_t(r), sheet.rowHeight(r), nullptr),
                                            QStringLiteral("row height")))
            return false;
        for (int c = 0; c < sheet.columnCount(); ++c) {
            const PrintCell& cell = sheet.cell(r, c);
            lxw_format* f = formats.get(cell.style);
            lxw_error e = LXW_NO_ERROR;
            switch (cell.type) {
            case PrintCell::Type::Text:
                e = worksheet_write_string(ws, lxw_row_t(r), lxw_col_t(c), cell.text.toUtf8().constData(), f);
                break;
            case PrintCell::Type::Number:
                e = worksheet_write_number(ws, lxw_row_t(r), lxw_col_t(c), cell.number, f);
                break;
            case PrintCell::Type::Empty:
                if (cell.style != CellStyle())
                    e = worksheet_write_blank(ws, lxw_row_t(r), lxw_col_t(c), f);
                break;
            }
            if (!check(e, QStringLiteral("cell %1%2").arg(PrintSheet::columnName(c)).arg(r + 1)))
                return false;
            if (cell.picture.isEmpty())
                continue;
            const PrintPicture pic = printPicture(cell.picture);
            if (pic.isNull()) {
                *error = QStringLiteral("no picture \"%1\"").arg(cell.picture);
                return false;
            }
            keep.push_back(pic.png);
            keep.push_back(cell.pictureText.toUtf8());
            lxw_image_options opt{};
            opt.x_scale = pic.scale;
            opt.y_scale = pic.scale;
            opt.x_offset = std::max(0, (PrintSheet::columnWidthPixels(sheet.columnWidth(c)) - pic.width) / 2);
            opt.y_offset = std::max(0, (rowPixels(sheet.rowHeight(r)) - pic.height) / 2);
            opt.object_position = LXW_OBJECT_MOVE_DONT_SIZE;
            opt.description = keep.back().data();
            const QByteArray& png = keep[keep.size() - 2];
            if (!check(
                    worksheet_insert_image_buffer_opt(ws, lxw_row_t(r), lxw_col_t(c),
                                                      reinterpret_cast<const unsigned char*>(png.constData()),
                                                      std::size_t(png.size()), &opt),
                    QStringLiteral("picture in %1%2").arg(PrintSheet::columnName(c)).arg(r + 1)))
                return false;
        }
    }

    const PageSetup& page = sheet.page();
    if (page.landscape)
        worksheet_set_landscape(ws);
    else
        worksheet_set_portrait(ws);
    worksheet_set_print_scale(ws, uint16_t(page.scale));
    worksheet_set_margins(ws, page.marginLeft, page.marginRight, page.marginTop, page.marginBottom);
    // Only the centre sections are used: the codes go behind "&C".
    keep.push_back(page.centerHeader.isEmpty() ? QByteArray() : "&C" + page.centerHeader.toUtf8());
    lxw_header_footer_options header{};
    header.margin = page.marginHeader;
    if (!check(worksheet_set_header_opt(ws, keep.back().constData(), &header), QStringLiteral("page header")))
        return false;
    keep.push_back(page.centerFooter.isEmpty() ? QByteArray() : "&C" + page.centerFooter.toUtf8());
    lxw_header_footer_options footer{};
    footer.margin = page.marginFooter;
    if (!check(worksheet_set_footer_opt(ws, keep.back().constData(), &footer), QStringLiteral("page footer")))
        return false;
    if (!page.gridLines)
        worksheet_gridlines(ws, LXW_HIDE_ALL_GRIDLINES);
    worksheet_set_selection(ws, 0, 0, 0, 0);
    return true;
}

} // namespace

bool WriteWorkbook(const PrintSheet& sheet, const QString& path, QString* error) {
    QString reason;
    if (!error)
        error = &reason;
    // The workbook is made in the private temporary folder and copied over the target in
    // one piece, so that a failure never leaves a broken workbook where the user looks.
    QTemporaryDir work(TempFolder::instance().filePath(QStringLiteral("xlsx-XXXXXX")));
    if (!work.isValid()) {
        *error = QStringLiteral("cannot create a temporary folder: ") + work.errorString();
        return false;
    }
    const QByteArray tmpName =
        QDir::toNativeSeparators(work.filePath(QStringLiteral("sheet.xlsx"))).toLocal8Bit();
    QByteArray tmpDir = QDir::toNativeSeparators(work.path()).toLocal8Bit();
    lxw_workbook_options options{};
    options.tmpdir = tmpDir.data();
    lxw_workbook* book = workbook_new_opt(tmpName.constData(), &options);
    if (!book) {
        *error = QStringLiteral("cannot create the workbook");
        return false;
    }
    std::vector<QByteArray> keep; // texts and images the library reads when it closes the book
    const bool written = writeSheet(book, sheet, keep, error);
    const lxw_error closed = workbook_close(book); // frees the workbook in every case
    if (!written)
        return false;
    if (closed != LXW_NO_ERROR) {
        *error = lxwText(closed);
        return false;
    }
    QFile made(QString::fromLocal8Bit(tmpName));
    if (!made.open(QIODevice::ReadOnly)) {
        *error = made.errorString();
        return false;
    }
    const QByteArray bytes = made.readAll();
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
        *error = path + QStringLiteral(": ") + out.errorString();
        return false;
    }
    return true;
}

bool WorkbookTarget::open() {
    // The writer is part of the program; what can be missing is the folder it works in.
    if (TempFolder::instance().path().isEmpty()) {
        m_error = QStringLiteral("no temporary folder");
        return false;
    }
    return true;
}

bool WorkbookTarget::output(const PrintSheet& sheet) {
    return WriteWorkbook(sheet, m_path, &m_error);
}

} // namespace vkm
