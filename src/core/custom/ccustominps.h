#pragma once

#include "custom/ccustominp.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// The customisable input terminals described by Set04.e, in file order, keyed by Location.
class CCustomInps {
public:
    // Appends the terminal under its Location; false (nothing added) when the location is
    // taken already.
    bool Add(const CCustomInp& terminal);
    int Count() const { return int(m_items.size()); }
    // 1-based; nullptr when out of range or unknown.
    CCustomInp* Item(int index);
    const CCustomInp* Item(int index) const;
    CCustomInp* Item(const QString& location);
    const CCustomInp* Item(const QString& location) const;
    void clear();
    std::vector<CCustomInp>::const_iterator begin() const { return m_items.begin(); }
    std::vector<CCustomInp>::const_iterator end() const { return m_items.end(); }

    // Reads <folder>/Set04.e (26 TAB-separated fields a line, CR LF). On a short line, a
    // mask outside 0..255, an address beyond the index range or a duplicate location the
    // read stops with a report ("ReadSet04e") and false; terminals before it stay.
    bool ReadSet04e(const QString& folder);
    // The same over file content already in memory.
    bool readLines(const QByteArray& content);

    // One line's fields as a terminal; nullopt when the line is not valid, with the error
    // number in *error.
    static std::optional<CCustomInp> parseLine(const QStringList& fields, int* error = nullptr);

private:
    std::vector<CCustomInp> m_items;
    QHash<QString, int> m_index;
};

} // namespace vkm
