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

    // Fills the value properties of every terminal, in table order, from a customisation
    // image (byte n is machine address n). Kino is the byte AND 127: bit 7 is not part of
    // the function number. A property whose address is empty keeps its value. An address
    // outside the image stops the read with a report and false; terminals before it keep
    // their new values.
    bool ReadData(const QByteArray& image);
    // Writes the value properties of every terminal into the image: the function as a whole
    // byte, multi-bit codes (Dosa, RSFSet, RSFReset) by replacing the bits under their mask, flags by OR-ing
    // them in, whole bytes as they are; a property whose address is empty is skipped. An
    // address outside the image stops with a report and false.
    bool SaveCustomizeData(QByteArray& image) const;

    // One line's fields as a terminal; nullopt when the line is not valid, with the error
    // number in *error.
    static std::optional<CCustomInp> parseLine(const QStringList& fields, int* error = nullptr);
};

} // namespace vkm
