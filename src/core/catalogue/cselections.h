#pragma once

#include "catalogue/cselection.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// Category given to entries whose category field is empty.
inline const QString kDefaultCategory = QStringLiteral("Category not specified");

// One function catalogue (Set06.e .. Set09.e) with its look-ups.
class CSelections {
public:
    // Registers one entry. Returns nullptr when registration failed part way (duplicate
    // value, or duplicate category/digital pair): what was registered before stays.
    const CSelection* Add(const QString& sDigital, qint16 value, const QString& sAdvice,
                          const QString& sCategory, const QString& sMin, const QString& sMax);
    // An entry with only Selection and value, keyed by sSelection; no dictionary touched.
    const CSelection* Add2(const QString& sSelection, qint16 value);

    // Reads <folder>/<sfilename>; Set08.e and Set09.e have six fields a line, the
    // others four. True when the whole file was read.
    bool ReadSet6_7_8_9e(const QString& folder, const QString& sfilename);
    // The same over text already in memory (lines separated by CR LF or LF), for the
    // fuzzers and tests.
    bool readLines(const QByteArray& content, const QString& sfilename);

    // By 1-based position or by key (decimal text of the value). nullptr when missing.
    const CSelection* Item(int index) const;
    const CSelection* Item(const QString& key) const;
    int Count() const { return int(m_entries.size()); }
    void Remove(int index);
    void Remove(const QString& key);
    void clear();
    const std::vector<CSelection>& entries() const { return m_entries; }

    // Look-ups by value accept the signed form (-32768) and the unsigned 16 bits of the step
    // image (32768) of the same function; anything beyond 16 bits is unknown.
    QString CategoryByValue(int value) const;
    qint16 ValueByDigital(const QString& sCategory, const QString& sDigital) const;
    QString CategoryByDigitalOnly(const QString& sDigital) const;
    int CountByDigital(const QString& sDigital) const;
    void MinMaxByDigital(const QString& sCategory, const QString& sDigital, qint32& lMin, qint32& lMax) const;
    QString GetSelection(int value) const;

    // The digital text of the entry with this value; for a value no entry has, "#" and the
    // value as an unsigned 16-bit number, so that it stays visible as what it is.
    QString shownDigital(int value) const;

    // True when some entry has this value (dicValue).
    bool hasValue(int value) const;
    // Categories in the order of their first entry.
    QStringList categories() const;
    // Every category that holds the digital text, in file order.
    QStringList categoriesOfDigital(const QString& sDigital) const;
    // The value of the digital text in that category; nullopt when the category is empty or
    // does not hold the text (a cell's category may be stale, or the cell holds no function).
    std::optional<qint16> valueInCategory(const QString& sCategory, const QString& sDigital) const;

    const QHash<QString, qint16>& dicDigital() const { return m_dicDigital; }
    const QHash<QString, QString>& dicMinMax() const { return m_dicMinMax; }

private:
    bool appendEntry(const QString& key, const CSelection& entry);
    bool readLine(const QString& line, int needed);
    void rebuildIndexes();

    std::vector<CSelection> m_entries;
    std::vector<QString> m_keys; // key of each entry (decimal text of value, or Add2's label)
    QHash<QString, qint16> m_dicDigital;
    QHash<QString, bool> m_dicValue;
    QHash<QString, QString> m_dicMinMax;
    // Look-up indexes over the entry list (positions), rebuilt when an entry is removed.
    QHash<QString, int> m_keyIndex;
    QHash<QString, std::vector<int>> m_byDigital;
    QHash<qint16, int> m_lastByValue;
};

} // namespace vkm
