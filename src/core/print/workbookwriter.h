#pragma once

#include "print/printjob.h"

#include <QString>

namespace vkm {

// Writes a printed sheet as an .xlsx workbook of one worksheet: cells with their fonts,
// fills, borders and alignment, the pictures over their cells, column widths, row
// heights, grid lines and the page setup (orientation, scale, margins, header, footer).
// The file is replaced only once the whole workbook was written; on failure it is left
// as it was and false is returned with the reason in *error.
bool WriteWorkbook(const PrintSheet& sheet, const QString& path, QString* error = nullptr);

// A workbook file as the target of a print.
class WorkbookTarget : public SheetTarget {
public:
    explicit WorkbookTarget(QString path) : m_path(std::move(path)) {}
    bool open() override;
    bool output(const PrintSheet& sheet) override;
    QString errorString() const override { return m_error; }

private:
    QString m_path;
    QString m_error;
};

} // namespace vkm
