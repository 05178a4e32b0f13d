// SPDX-License-Identifier: MIT
// A list of pointers with a cursor and optional ownership. Code that walks such a list by first()
// and next() while it removes or counts items depends on the cursor's position afterwards. No
// standard container has a cursor. Every access to a place moves it there; a range-for does not.
// Owns: its items while auto-delete is on.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

template <class T> class PtrList
{
public:
    using const_iterator = typename std::vector<T *>::const_iterator;

    PtrList() = default;
    PtrList(const PtrList &) = delete;
    PtrList &operator=(const PtrList &) = delete;

    virtual ~PtrList() { deleteAll(); }

    /// Initially off. When on, an item is deleted when it is removed or cleared, or with the list.
    void setAutoDelete(bool enable) { m_autoDelete = enable; }

    [[nodiscard]] bool autoDelete() const { return m_autoDelete; }

    [[nodiscard]] virtual int count() const { return static_cast<int>(m_items.size()); }

    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }

    /// Removes every item; the cursor is null after it. The list is already empty when the
    /// items are deleted, so their destructors may look at it.
    virtual void clear() { deleteAll(); }

    /// The new item becomes the current one. A null pointer is ignored.
    void append(T *item) { insert(count(), item); }

    /// Puts the item before place i (0 to count()) and makes it current. False, with list and
    /// cursor unchanged, if there is no such place or the item is null.
    bool insert(int i, T *item)
    {
        if (item == nullptr || i < 0 || i > count()) {
            return false;
        }
        m_items.insert(m_items.begin() + i, item);
        m_current = i;
        return true;
    }

    /// Removes the current item. After every removal the cursor is on the item that followed, or
    /// else on the new last one, or null in an empty list. False if there is no current item.
    bool remove() { return remove(m_current); }

    /// False, with the cursor unchanged, if there is no such place.
    bool remove(int i)
    {
        T *item = take(i);
        if (m_autoDelete) {
            delete item;
        }
        return item != nullptr;
    }

    /// Removes the first item that equals this one by compareItems(). False, with a null cursor, if
    /// there is none.
    bool remove(const T *item) { return find(item) >= 0 && remove(); }

    /// remove() without deletion; the caller gets the item. Null if remove() would return false.
    [[nodiscard]] T *take() { return take(m_current); }

    [[nodiscard]] T *take(int i)
    {
        if (!hasPlace(i)) {
            return nullptr;
        }
        T *item = m_items[static_cast<std::size_t>(i)];
        m_items.erase(m_items.begin() + i);
        m_current = std::min(i, count() - 1);
        return item;
    }

    /// Makes the item at place i current and returns it. Null, with the cursor unchanged, if there
    /// is no such place.
    T *at(int i)
    {
        if (hasPlace(i)) {
            m_current = i;
            return current();
        }
        return nullptr;
    }

    /// The place of the current item, -1 without one.
    [[nodiscard]] int at() const { return m_current; }

    /// The current item. Null if the cursor is null.
    [[nodiscard]] T *current() const
    {
        return m_current < 0 ? nullptr : m_items[static_cast<std::size_t>(m_current)];
    }

    T *first() { return moveTo(0); }

    T *last() { return moveTo(count() - 1); }

    /// Beyond either end the result and the cursor are null. From there next() and prev() return
    /// null; first(), last(), at(i), find() and insertion set the cursor again.
    T *next() { return m_current < 0 ? nullptr : moveTo(m_current + 1); }

    T *prev() { return m_current < 0 ? nullptr : moveTo(m_current - 1); }

    /// Makes the first item that equals this one by compareItems() current and returns its place.
    /// -1, with a null cursor, if there is none.
    int find(const T *item)
    {
        return search([this, item](const T *other) {
            return compareItems(other, item) == 0;
        });
    }

    /// find() by the pointer alone.
    int findRef(const T *item)
    {
        return search([item](const T *other) {
            return other == item;
        });
    }

    /// For reading all items without moving the cursor. The list must not change meanwhile.
    [[nodiscard]] const_iterator begin() const { return m_items.begin(); }

    [[nodiscard]] const_iterator end() const { return m_items.end(); }

protected:
    /// 0 when the two are the same for find() and remove(item).
    virtual int compareItems(const T *one, const T *other) const { return one == other ? 0 : 1; }

private:
    [[nodiscard]] bool hasPlace(int i) const { return i >= 0 && i < count(); }

    T *moveTo(int i)
    {
        m_current = hasPlace(i) ? i : -1;
        return current();
    }

    template <class Test> int search(Test test)
    {
        const auto found = std::find_if(m_items.begin(), m_items.end(), test);
        m_current = found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
        return m_current;
    }

    void deleteAll()
    {
        const std::vector<T *> gone = std::exchange(m_items, {});
        m_current = -1;
        if (m_autoDelete) {
            for (T *item : gone) {
                delete item;
            }
        }
    }

    std::vector<T *> m_items;
    int m_current = -1;
    bool m_autoDelete = false;
};
