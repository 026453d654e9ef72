#pragma once

#include "custom/ccustomout.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// The customisable output terminals described by Set05.e, in file order, keyed by Location.
class CCustomOuts {
public:
    // Appends the terminal under its Location; false (nothing added) when the location is
    // taken already.
    bool Add(const CCustomOut& terminal);
    int Count() const { return int(m_items.size()); }
    // 1-based; nullptr when out of range or unknown.
    CCustomOut* Item(int index);
    const CCustomOut* Item(int index) const;
    CCustomOut* Item(const QString& location);
    const CCustomOut* Item(const QString& location) const;
    void clear();
    std::vector<CCustomOut>::const_iterator begin() const { return m_items.begin(); }
    std::vector<CCustomOut>::const_iterator end() const { return m_items.end(); }

    // Reads <folder>/Set05.e (16 TAB-separated fields a line, CR LF). On a short line, a
    // mask outside 0..255, an address beyond the index range or a duplicate location the
    // read stops with a report ("ReadSet05e") and false; terminals before it stay.
    bool ReadSet05e(const QString& folder);
    // The same over file content already in memory.
    bool readLines(const QByteArray& content);

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

private:
    std::vector<CCustomOut> m_items;
    QHash<QString, int> m_index;
};

} // namespace vkm
