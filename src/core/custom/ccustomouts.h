#pragma once

#include "custom/ccustomout.h"
#include "custom/terminalcollection.h"

#include <QByteArray>
#include <QStringList>
#include <optional>

namespace vkm {

// The customisable output terminals described by Set05.e, in file order, keyed by Location.
class CCustomOuts : public TerminalCollection<CCustomOut> {
public:
    // Reads <folder>/Set05.e (16 TAB-separated fields a line, CR LF). On a short line, a
    // mask outside 0..255, an address beyond the index range or a duplicate location the
    // read stops with a report ("ReadSet05e") and false; terminals before it stay.
    bool ReadSet05e(const QString& folder);
    // The same over file content already in memory.
    bool readLines(const QByteArray& content);

    // Fills the value properties of every terminal, in table order, from a customisation
    // image (byte n is machine address n). Kino is the byte AND 127: bit 7 is not part of
    // the function number. A property whose address is empty keeps its value. An address
    // outside the image stops the read with a report and false; terminals before it keep
    // their new values.
    bool ReadData(const QByteArray& image);
    // Writes the value properties of every terminal into the image: the function as a whole
    // byte, multi-bit codes (ChopDuty, Zenpa, Hoji) by replacing the bits under their mask, flags by OR-ing
    // them in, whole bytes as they are; a property whose address is empty is skipped. An
    // address outside the image stops with a report and false.
    bool SaveCustomizeData(QByteArray& image) const;

    // One line's fields as a terminal; nullopt when the line is not valid, with the error
    // number in *error.
    static std::optional<CCustomOut> parseLine(const QStringList& fields, int* error = nullptr);

    // Short and long texts of the chop duty (0..7), full-wave time (0..7) and hold mode
    // (0..3) codes; "" outside the table.
    static QString GetChopDutyInfo1(int index);
    static QString GetChopDutyInfo2(int index);
    static QString GetZenpaInfo1(int index);
    static QString GetZenpaInfo2(int index);
    static QString GetHojiInfo1(int index);
    static QString GetHojiInfo2(int index);
};

} // namespace vkm
