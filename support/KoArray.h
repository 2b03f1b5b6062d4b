#pragma once
// The class library's growable array: field masks, unit choices and similar small tables.

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

#include "support/KoString.h"

template <class T>
class TKoArray {
public:
    TKoArray() = default;
    TKoArray(std::initializer_list<T> items) : m_items(items) {}

    std::size_t GetSize() const { return m_items.size(); }
    bool IsEmpty() const { return m_items.empty(); }

    // Index access outside the array raises KoIndexError ("invalid index").
    T& operator[](std::size_t index) { return m_items.at(Checked(index)); }
    const T& operator[](std::size_t index) const { return m_items.at(Checked(index)); }

    // Returns the index of the new item.
    std::size_t Add(T item)
    {
        m_items.push_back(std::move(item));
        return m_items.size() - 1;
    }
    void InsertAt(std::size_t index, T item)
    {
        if (index > m_items.size())
            throw KoIndexError();
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(index), std::move(item));
    }
    void RemoveAt(std::size_t index) { m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(Checked(index))); }
    void RemoveAll() { m_items.clear(); }
    void SetSize(std::size_t size) { m_items.resize(size); }

    T* data() { return m_items.data(); }
    const T* data() const { return m_items.data(); }
    std::size_t size() const { return m_items.size(); }
    auto begin() { return m_items.begin(); }
    auto end() { return m_items.end(); }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    std::size_t Checked(std::size_t index) const
    {
        if (index >= m_items.size())
            throw KoIndexError();
        return index;
    }

    std::vector<T> m_items;
};
