#pragma once

#include "base/errorreporter.h"
#include "catalogue/settinglines.h"
#include "custom/customfield.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vkm {

// The customisable terminals of one setting table (Set04.e inputs, Set05.e outputs), in
// file order and keyed by Location. Both tables share this bookkeeping; each table class
// adds its own line layout.
template <typename Terminal> class TerminalCollection {
public:
    // Appends the terminal under its Location; false (nothing added) when the location is
    // taken already.
    bool Add(const Terminal& terminal) {
        if (m_index.contains(terminal.Location))
            return false;
        m_index.insert(terminal.Location, int(m_items.size()));
        m_items.push_back(terminal);
        return true;
    }
    int Count() const { return int(m_items.size()); }
    // 1-based; nullptr when out of range or unknown.
    Terminal* Item(int index) { return inRange(index) ? &m_items[std::size_t(index - 1)] : nullptr; }
    const Terminal* Item(int index) const {
        return inRange(index) ? &m_items[std::size_t(index - 1)] : nullptr;
    }
    Terminal* Item(const QString& location) {
        const auto it = m_index.constFind(location);
        return it == m_index.constEnd() ? nullptr : &m_items[std::size_t(*it)];
    }
    const Terminal* Item(const QString& location) const {
        const auto it = m_index.constFind(location);
        return it == m_index.constEnd() ? nullptr : &m_items[std::size_t(*it)];
    }
    void clear() {
        m_items.clear();
        m_index.clear();
    }
    typename std::vector<Terminal>::const_iterator begin() const { return m_items.begin(); }
    typename std::vector<Terminal>::const_iterator end() const { return m_items.end(); }
    typename std::vector<Terminal>::iterator begin() { return m_items.begin(); }
    typename std::vector<Terminal>::iterator end() { return m_items.end(); }

protected:
    // Every terminal's values from the image, in table order; the first address outside
    // the image is reported under proc and ends the read (terminals before it keep their
    // new values).
    bool readValues(const QByteArray& image, const QString& proc) {
        for (Terminal& t : m_items) {
            if (!readTerminalValues(t, image, Terminal::valueFields())) {
                reportAddressOutside(proc, t.Location);
                return false;
            }
        }
        return true;
    }
    // Every terminal's values into the image, with the same rule for addresses outside it.
    bool writeValues(QByteArray& image, const QString& proc) const {
        for (const Terminal& t : m_items) {
            if (!writeTerminalValues(t, image, Terminal::valueFields())) {
                reportAddressOutside(proc, t.Location);
                return false;
            }
        }
        return true;
    }

    // One line's fields as a terminal; nullopt with the error number in *error.
    using LineParser = std::optional<Terminal> (*)(const QStringList& fields, int* error);

    // Reads the setting file at path and adds its lines; a file that cannot be read is
    // reported under proc.
    bool readTable(const QString& path, LineParser parse, const QString& proc) {
        QByteArray content;
        int error = 0;
        if (!readSettingFile(path, content, &error)) {
            reportError(error, proc);
            return false;
        }
        return addLines(content, parse, proc);
    }

    // Adds one terminal a line. The first invalid line or duplicate location stops the read
    // with a report under proc; terminals added before it stay.
    bool addLines(const QByteArray& content, LineParser parse, const QString& proc) {
        for (const QString& line : settingFileLines(content)) {
            int error = 0;
            const auto terminal = parse(line.split(u'\t'), &error);
            if (!terminal) {
                reportError(error, proc);
                return false;
            }
            if (!Add(*terminal)) {
                reportError(ErrDuplicateKey, proc);
                return false;
            }
        }
        return true;
    }

private:
    bool inRange(int index) const { return index >= 1 && index <= Count(); }

    std::vector<Terminal> m_items;
    QHash<QString, int> m_index;
};

} // namespace vkm
