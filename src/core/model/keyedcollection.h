#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace vkm {

// An ordered collection whose items are kept in insertion order under a string key
// (the decimal text of a number) and found by key or by 1-based index. Items are
// shared: whoever holds one holds the same object as the collection. A copy of the
// collection is a collection of its own, with copies of the items.
template <typename T> class KeyedCollection {
public:
    using Ptr = std::shared_ptr<T>;

    KeyedCollection() = default;
    KeyedCollection(const KeyedCollection& other) { copyItems(other); }
    KeyedCollection& operator=(const KeyedCollection& other) {
        if (this != &other) {
            m_items.clear();
            copyItems(other);
        }
        return *this;
    }
    KeyedCollection(KeyedCollection&&) noexcept = default;
    KeyedCollection& operator=(KeyedCollection&&) noexcept = default;
    ~KeyedCollection() = default;

    // Appends under key; false (and nothing added) when the key exists already.
    bool add(const QString& key, Ptr item) {
        if (indexOf(key) >= 0)
            return false;
        m_items.push_back({key, std::move(item)});
        return true;
    }
    int Count() const { return int(m_items.size()); }
    // 1-based; nullptr when out of range.
    Ptr Item(int index) const {
        if (index < 1 || index > Count())
            return nullptr;
        return m_items[std::size_t(index - 1)].item;
    }
    Ptr Item(const QString& key) const {
        const int i = indexOf(key);
        return i < 0 ? nullptr : m_items[std::size_t(i)].item;
    }
    bool Remove(int index) {
        if (index < 1 || index > Count())
            return false;
        m_items.erase(m_items.begin() + (index - 1));
        return true;
    }
    bool Remove(const QString& key) {
        const int i = indexOf(key);
        if (i < 0)
            return false;
        m_items.erase(m_items.begin() + i);
        return true;
    }
    void clear() { m_items.clear(); }

    // Iteration in insertion order over the shared items.
    struct Entry {
        QString key;
        Ptr item;
    };
    class const_iterator {
    public:
        explicit const_iterator(typename std::vector<Entry>::const_iterator it) : m_it(it) {}
        const Ptr& operator*() const { return m_it->item; }
        const_iterator& operator++() {
            ++m_it;
            return *this;
        }
        bool operator!=(const const_iterator& o) const { return m_it != o.m_it; }
        bool operator==(const const_iterator& o) const { return m_it == o.m_it; }

    private:
        typename std::vector<Entry>::const_iterator m_it;
    };
    const_iterator begin() const { return const_iterator(m_items.begin()); }
    const_iterator end() const { return const_iterator(m_items.end()); }

private:
    void copyItems(const KeyedCollection& other) {
        m_items.reserve(other.m_items.size());
        for (const Entry& e : other.m_items)
            m_items.push_back({e.key, e.item ? std::make_shared<T>(*e.item) : nullptr});
    }
    int indexOf(const QString& key) const {
        for (std::size_t i = 0; i < m_items.size(); ++i)
            if (m_items[i].key == key)
                return int(i);
        return -1;
    }
    std::vector<Entry> m_items;
};

} // namespace vkm
