#pragma once

#include "custom/ccustominp.h"
#include "custom/terminalcollection.h"

#include <QByteArray>
#include <QStringList>
#include <optional>

namespace vkm {

// The customisable input terminals described by Set04.e, in file order, keyed by Location.
class CCustomInps : public TerminalCollection<CCustomInp> {
public:
    // Reads <folder>/Set04.e (26 TAB-separated fields a line, CR LF). On a short line, a
    // mask outside 0..255, an address beyond the index range or a duplicate location the
    // read stops with a report ("ReadSet04e") and false; terminals before it stay.
    bool ReadSet04e(const QString& folder);
    // The same over file content already in memory.
    bool readLines(const QByteArray& content);

    // One line's fields as a terminal; nullopt when the line is not valid, with the error
    // number in *error.
    static std::optional<CCustomInp> parseLine(const QStringList& fields, int* error = nullptr);
};

} // namespace vkm
