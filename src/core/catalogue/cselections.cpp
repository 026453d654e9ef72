#include "catalogue/cselections.h"

#include "base/errorreporter.h"
#include "base/number.h"
#include "catalogue/settinglines.h"

#include <QFileInfo>
#include <limits>

namespace vkm {

namespace {
const QString kCount = QStringLiteral("COUNT");
const QString kProcRead = QStringLiteral("ReadSet6_7_8_9e");

QString digitalKey(const QString& category, const QString& digital) {
    return category + u'_' + digital;
}

// Function numbers travel through the program both as signed 16-bit values (the catalogue
// files write a jump target as -32768) and as the unsigned 16 bits of the step image
// (32768). Both name the same function.
std::optional<qint16> asFunctionValue(int value) {
    if (value >= std::numeric_limits<qint16>::min() && value <= std::numeric_limits<qint16>::max())
        return qint16(value);
    if (value > std::numeric_limits<qint16>::max() && value <= 0xFFFF)
        return qint16(value - 0x10000);
    return std::nullopt;
}

// Set08.e and Set09.e carry min and max of counters; every other catalogue file has four
// fields. The names are compared as the file system of the machine's tools does, ignoring case.
int fieldsNeeded(const QString& sfilename) {
    const QString base = QFileInfo(sfilename).fileName();
    if (base.compare(QLatin1String("Set08.e"), Qt::CaseInsensitive) == 0 ||
        base.compare(QLatin1String("Set09.e"), Qt::CaseInsensitive) == 0)
        return 6;
    return 4;
}
} // namespace

const CSelection* CSelections::Add(const QString& sDigital, qint16 value, const QString& sAdvice,
                                   const QString& sCategory, const QString& sMin, const QString& sMax) {
    CSelection entry;
    entry.Category = sCategory.isEmpty() ? kDefaultCategory : sCategory;
    entry.Digital = sDigital;
    entry.value = value;
    entry.Advice = sAdvice;
    const QString valueKey = QString::number(value);
    if (!appendEntry(valueKey, entry)) {
        reportError(ErrDuplicateKey, QStringLiteral("Add"));
        return nullptr;
    }
    const CSelection* added = &m_entries.back();
    const QString dKey = digitalKey(entry.Category, sDigital);
    if (m_dicDigital.contains(dKey)) {
        reportError(ErrDuplicateKey, QStringLiteral("Add"));
        return nullptr;
    }
    m_dicDigital.insert(dKey, value);
    if (m_dicValue.contains(valueKey)) {
        reportError(ErrDuplicateKey, QStringLiteral("Add"));
        return nullptr;
    }
    m_dicValue.insert(valueKey, true);
    if (entry.Category == kCount && !(leadingNumber(sMin) == 0.0 && leadingNumber(sMax) == 0.0)) {
        m_dicMinMax.insert(dKey, sMin + u',' + sMax);
    }
    return added;
}

const CSelection* CSelections::Add2(const QString& sSelection, qint16 value) {
    CSelection entry;
    entry.Selection = sSelection;
    entry.value = value;
    if (!appendEntry(sSelection, entry)) {
        reportError(ErrDuplicateKey, QStringLiteral("Add2"));
        return nullptr;
    }
    return &m_entries.back();
}

bool CSelections::appendEntry(const QString& key, const CSelection& entry) {
    if (m_keyIndex.contains(key))
        return false;
    const int pos = int(m_entries.size());
    m_entries.push_back(entry);
    m_keys.push_back(key);
    m_keyIndex.insert(key, pos);
    m_byDigital[entry.Digital].push_back(pos);
    m_lastByValue.insert(entry.value, pos);
    return true;
}

void CSelections::rebuildIndexes() {
    m_keyIndex.clear();
    m_byDigital.clear();
    m_lastByValue.clear();
    for (int i = 0; i < int(m_entries.size()); ++i) {
        m_keyIndex.insert(m_keys[std::size_t(i)], i);
        m_byDigital[m_entries[std::size_t(i)].Digital].push_back(i);
        m_lastByValue.insert(m_entries[std::size_t(i)].value, i);
    }
}

bool CSelections::ReadSet6_7_8_9e(const QString& folder, const QString& sfilename) {
    QByteArray content;
    int error = 0;
    if (!readSettingFile(folder + u'/' + sfilename, content, &error)) {
        reportError(error, kProcRead);
        return false;
    }
    return readLines(content, sfilename);
}

bool CSelections::readLines(const QByteArray& content, const QString& sfilename) {
    const int needed = fieldsNeeded(sfilename);
    for (const QString& line : settingFileLines(content))
        if (!readLine(line, needed))
            return false;
    return true;
}

bool CSelections::readLine(const QString& line, int needed) {
    const QStringList fields = line.split(u'\t');
    if (fields.size() < needed) {
        reportError(ErrSubscript, kProcRead);
        return false;
    }
    const std::optional<qint16> value = leadingInt16(fields[1]);
    if (!value) {
        reportError(ErrOverflow, kProcRead);
        return false;
    }
    const QString zero = QStringLiteral("0");
    Add(fields[0], *value, fields[2], fields[3], needed > 4 ? fields[4] : zero,
        needed > 5 ? fields[5] : zero);
    return true;
}

const CSelection* CSelections::Item(int index) const {
    if (index < 1 || index > Count())
        return nullptr;
    return &m_entries[std::size_t(index - 1)];
}

const CSelection* CSelections::Item(const QString& key) const {
    const auto it = m_keyIndex.constFind(key);
    return it == m_keyIndex.constEnd() ? nullptr : &m_entries[std::size_t(*it)];
}

void CSelections::Remove(int index) {
    if (index < 1 || index > Count())
        return;
    m_entries.erase(m_entries.begin() + (index - 1));
    m_keys.erase(m_keys.begin() + (index - 1));
    rebuildIndexes();
}

void CSelections::Remove(const QString& key) {
    const auto it = m_keyIndex.constFind(key);
    if (it != m_keyIndex.constEnd())
        Remove(*it + 1);
}

void CSelections::clear() {
    m_entries.clear();
    m_keys.clear();
    m_dicDigital.clear();
    m_dicValue.clear();
    m_dicMinMax.clear();
    rebuildIndexes();
}

QString CSelections::CategoryByValue(int value) const {
    const auto v = asFunctionValue(value);
    if (!v)
        return {};
    const CSelection* e = Item(QString::number(*v));
    return e ? e->Category : QString();
}

qint16 CSelections::ValueByDigital(const QString& sCategory, const QString& sDigital) const {
    const QString category = sCategory.isEmpty() ? kDefaultCategory : sCategory;
    return m_dicDigital.value(digitalKey(category, sDigital), qint16(-1));
}

QString CSelections::CategoryByDigitalOnly(const QString& sDigital) const {
    const auto it = m_byDigital.constFind(sDigital);
    if (it == m_byDigital.constEnd() || it->empty())
        return {};
    return m_entries[std::size_t(it->front())].Category;
}

int CSelections::CountByDigital(const QString& sDigital) const {
    const auto it = m_byDigital.constFind(sDigital);
    return it == m_byDigital.constEnd() ? 0 : int(it->size());
}

void CSelections::MinMaxByDigital(const QString& sCategory, const QString& sDigital, qint32& lMin,
                                  qint32& lMax) const {
    const auto it = m_dicMinMax.constFind(digitalKey(sCategory, sDigital));
    if (it == m_dicMinMax.constEnd())
        return;
    const QStringList parts = it->split(u',');
    const qint64 lo = leadingInteger(parts.value(0));
    const qint64 hi = leadingInteger(parts.value(1));
    constexpr qint64 kMin = std::numeric_limits<qint32>::min();
    constexpr qint64 kMax = std::numeric_limits<qint32>::max();
    if (lo < kMin || lo > kMax || hi < kMin || hi > kMax) {
        reportError(ErrOverflow, QStringLiteral("MinMaxByDigital"));
        return;
    }
    lMin = qint32(lo);
    lMax = qint32(hi);
}

QString CSelections::GetSelection(int value) const {
    const auto v = asFunctionValue(value);
    if (!v)
        return QStringLiteral("?");
    const auto it = m_lastByValue.constFind(*v);
    if (it == m_lastByValue.constEnd())
        return QStringLiteral("?");
    return m_entries[std::size_t(*it)].Selection;
}

QString CSelections::shownDigital(int value) const {
    const auto v = asFunctionValue(value);
    if (v && hasValue(*v))
        if (const CSelection* e = Item(QString::number(*v)))
            return e->Digital;
    return QLatin1Char('#') + QString::number(quint16(value));
}

bool CSelections::hasValue(int value) const {
    const auto v = asFunctionValue(value);
    return v && m_dicValue.contains(QString::number(*v));
}

QStringList CSelections::categories() const {
    QStringList out;
    for (const CSelection& e : m_entries)
        if (!e.Category.isEmpty() && !out.contains(e.Category))
            out << e.Category;
    return out;
}

QStringList CSelections::categoriesOfDigital(const QString& sDigital) const {
    QStringList out;
    const auto it = m_byDigital.constFind(sDigital);
    if (it != m_byDigital.constEnd())
        for (int pos : *it)
            out << m_entries[std::size_t(pos)].Category;
    return out;
}

std::optional<qint16> CSelections::valueInCategory(const QString& sCategory, const QString& sDigital) const {
    if (sCategory.isEmpty() || !categoriesOfDigital(sDigital).contains(sCategory))
        return std::nullopt;
    return ValueByDigital(sCategory, sDigital);
}

} // namespace vkm
