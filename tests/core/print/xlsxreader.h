#pragma once

// Reads back what a workbook file holds, independently of the writer: the .xlsx file is
// opened as the zip archive it is (libarchive) and its XML parts are read as the Office
// Open XML format defines them. Header-only, for the core, GUI and end-to-end tests.

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>
#include <archive.h>
#include <archive_entry.h>
#include <vector>

namespace vkm::test {

class XlsxFile {
public:
    struct Cell {
        QString value; // shared strings resolved; numbers as written
        bool isNumber = false;
        int style = 0;
    };
    struct Anchor { // a picture's top-left cell (0-based)
        int col = -1;
        int row = -1;
    };

    explicit XlsxFile(const QString& path) { m_ok = unzip(path) && parse(); }
    bool ok() const { return m_ok; }
    QByteArray part(const QString& name) const { return m_parts.value(name); }

    QStringList sheetNames() const { return m_sheetNames; }
    // Cell by reference ("A1"); an empty cell when the sheet has none there.
    Cell cell(const QString& ref) const { return m_cells.value(ref); }
    QString text(const QString& ref) const { return m_cells.value(ref).value; }
    bool has(const QString& ref) const { return m_cells.contains(ref); }
    // Width of column (1-based) as stored; -1 when not set.
    double columnWidth(int col) const { return m_widths.value(col, -1); }
    // Height of row (1-based) as stored; -1 when not set.
    double rowHeight(int row) const { return m_heights.value(row, -1); }
    // Attributes of an element of the sheet ("pageSetup", "pageMargins", "sheetView").
    QString attribute(const QString& element, const QString& name) const {
        return m_attrs.value(element + QLatin1Char('/') + name);
    }
    QString oddHeader() const { return m_oddHeader; }
    QString oddFooter() const { return m_oddFooter; }
    const std::vector<Anchor>& pictures() const { return m_anchors; }
    // The font name and fill colour ("FFRRGGBB", "" for none) of a cell's style.
    QString fontName(const QString& ref) const {
        const int s = cell(ref).style;
        return s < int(m_xfFont.size()) && m_xfFont[std::size_t(s)] < m_fonts.size()
                   ? m_fonts[m_xfFont[std::size_t(s)]]
                   : QString();
    }
    QString fill(const QString& ref) const {
        const int s = cell(ref).style;
        return s < int(m_xfFill.size()) && m_xfFill[std::size_t(s)] < m_fills.size()
                   ? m_fills[m_xfFill[std::size_t(s)]]
                   : QString();
    }

    // "A".."Z", "AA".. for a 1-based column.
    static QString column(int col) {
        QString name;
        for (int n = col; n > 0; n = (n - 1) / 26)
            name.prepend(QChar(u'A' + (n - 1) % 26));
        return name;
    }

private:
    bool unzip(const QString& path) {
        archive* a = archive_read_new();
        archive_read_support_format_zip(a);
        const QByteArray name = path.toLocal8Bit();
        bool ok = archive_read_open_filename(a, name.constData(), 16384) == ARCHIVE_OK;
        archive_entry* e = nullptr;
        while (ok && archive_read_next_header(a, &e) == ARCHIVE_OK) {
            QByteArray data;
            char buf[8192];
            la_ssize_t n = 0;
            while ((n = archive_read_data(a, buf, sizeof buf)) > 0)
                data.append(buf, qsizetype(n));
            if (n < 0)
                ok = false;
            m_parts.insert(QString::fromUtf8(archive_entry_pathname(e)), data);
        }
        archive_read_free(a);
        return ok && !m_parts.isEmpty();
    }

    static QString localName(const QXmlStreamReader& x) { return x.name().toString(); }

    bool parse() {
        QXmlStreamReader book(part(QStringLiteral("xl/workbook.xml")));
        while (!book.atEnd()) {
            book.readNext();
            if (book.isStartElement() && localName(book) == QLatin1String("sheet"))
                m_sheetNames << book.attributes().value(QLatin1String("name")).toString();
        }
        QStringList shared;
        QXmlStreamReader sst(part(QStringLiteral("xl/sharedStrings.xml")));
        QString current;
        bool inSi = false;
        while (!sst.atEnd()) {
            sst.readNext();
            if (sst.isStartElement() && localName(sst) == QLatin1String("si")) {
                inSi = true;
                current.clear();
            } else if (sst.isStartElement() && localName(sst) == QLatin1String("t") && inSi) {
                current += sst.readElementText();
            } else if (sst.isEndElement() && localName(sst) == QLatin1String("si")) {
                shared << current;
                inSi = false;
            }
        }
        parseStyles();
        QXmlStreamReader ws(part(QStringLiteral("xl/worksheets/sheet1.xml")));
        QString ref;
        Cell cell;
        QString type;
        while (!ws.atEnd()) {
            ws.readNext();
            if (ws.isStartElement()) {
                const QString n = localName(ws);
                const auto at = ws.attributes();
                for (const auto& attr : at)
                    m_attrs.insert(n + QLatin1Char('/') + attr.name().toString(), attr.value().toString());
                if (n == QLatin1String("col")) {
                    for (int c = at.value(QLatin1String("min")).toInt();
                         c <= at.value(QLatin1String("max")).toInt(); ++c)
                        m_widths.insert(c, at.value(QLatin1String("width")).toDouble());
                } else if (n == QLatin1String("row") && at.hasAttribute(QLatin1String("ht"))) {
                    m_heights.insert(at.value(QLatin1String("r")).toInt(),
                                     at.value(QLatin1String("ht")).toDouble());
                } else if (n == QLatin1String("c")) {
                    ref = at.value(QLatin1String("r")).toString();
                    type = at.value(QLatin1String("t")).toString();
                    cell = Cell{};
                    cell.style = at.value(QLatin1String("s")).toInt();
                    m_cells.insert(ref, cell);
                } else if (n == QLatin1String("v")) {
                    const QString v = ws.readElementText();
                    cell.isNumber = type.isEmpty() || type == QLatin1String("n");
                    cell.value = type == QLatin1String("s") ? shared.value(v.toInt()) : v;
                    m_cells.insert(ref, cell);
                } else if (n == QLatin1String("oddHeader")) {
                    m_oddHeader = ws.readElementText();
                } else if (n == QLatin1String("oddFooter")) {
                    m_oddFooter = ws.readElementText();
                }
            }
        }
        for (const QString& name : m_parts.keys()) {
            if (!name.startsWith(QLatin1String("xl/drawings/drawing")) ||
                !name.endsWith(QLatin1String(".xml")))
                continue;
            QXmlStreamReader d(part(name));
            bool inFrom = false;
            Anchor a;
            while (!d.atEnd()) {
                d.readNext();
                const QString n = localName(d);
                if (d.isStartElement() && n == QLatin1String("from")) {
                    inFrom = true;
                    a = Anchor{};
                } else if (d.isEndElement() && n == QLatin1String("from")) {
                    inFrom = false;
                    m_anchors.push_back(a);
                } else if (d.isStartElement() && inFrom && n == QLatin1String("col")) {
                    a.col = d.readElementText().toInt();
                } else if (d.isStartElement() && inFrom && n == QLatin1String("row")) {
                    a.row = d.readElementText().toInt();
                }
            }
        }
        return !m_sheetNames.isEmpty() && !ws.hasError();
    }

    void parseStyles() {
        QXmlStreamReader s(part(QStringLiteral("xl/styles.xml")));
        QString section;
        bool inPattern = false;
        QString fillColor;
        while (!s.atEnd()) {
            s.readNext();
            const QString n = localName(s);
            if (s.isStartElement() && (n == QLatin1String("fonts") || n == QLatin1String("fills") ||
                                       n == QLatin1String("cellXfs") || n == QLatin1String("cellStyleXfs")))
                section = n;
            if (s.isStartElement() && section == QLatin1String("fonts") && n == QLatin1String("name"))
                m_fonts << s.attributes().value(QLatin1String("val")).toString();
            if (section == QLatin1String("fills")) {
                if (s.isStartElement() && n == QLatin1String("fill")) {
                    fillColor.clear();
                    inPattern = true;
                } else if (s.isStartElement() && inPattern && n == QLatin1String("fgColor")) {
                    fillColor = s.attributes().value(QLatin1String("rgb")).toString();
                } else if (s.isEndElement() && n == QLatin1String("fill")) {
                    m_fills << fillColor;
                    inPattern = false;
                }
            }
            if (s.isStartElement() && section == QLatin1String("cellXfs") && n == QLatin1String("xf")) {
                m_xfFont.push_back(s.attributes().value(QLatin1String("fontId")).toInt());
                m_xfFill.push_back(s.attributes().value(QLatin1String("fillId")).toInt());
            }
        }
    }

    bool m_ok = false;
    QMap<QString, QByteArray> m_parts;
    QStringList m_sheetNames;
    QMap<QString, Cell> m_cells;
    QMap<int, double> m_widths;
    QMap<int, double> m_heights;
    QMap<QString, QString> m_attrs;
    QString m_oddHeader;
    QString m_oddFooter;
    std::vector<Anchor> m_anchors;
    QStringList m_fonts;
    QStringList m_fills;
    std::vector<qsizetype> m_xfFont;
    std::vector<qsizetype> m_xfFill;
};

} // namespace vkm::test
