#pragma once
// The library's intrusive, owning, doubly linked list. T derives from KoBaseListnode.
//
// Ownership: the list deletes its elements when it is cleared or destroyed. Remove() unlinks an
// element and hands it back; the caller owns it from then on.
//
// The announce operations are hooks: this plain list announces nothing, TKoListHeader sends them to
// its observers. Notification can be suspended; suspensions nest.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

#include "points/KoListnode.h"

class KoObserver;

template <class T>
class TKoBaseListHeader {
public:
    TKoBaseListHeader() = default;
    TKoBaseListHeader(const TKoBaseListHeader& other) { other.CopyInto(*this); }
    TKoBaseListHeader& operator=(const TKoBaseListHeader& other)
    {
        Assign(other);
        return *this;
    }
    virtual ~TKoBaseListHeader() { DeleteAllSilently(); }

    // --- announcements (no-ops here) ---
    virtual void NotifyAdded(T* element) { (void)element; }
    virtual void NotifyChanged() {}
    virtual void NotifyRemoved(T* element) { (void)element; }
    // Change notice with a value, sent to every observer except `skip`.
    virtual void NotifyChanged(std::intptr_t value, const KoObserver* skip)
    {
        (void)value;
        (void)skip;
    }
    virtual void NotifyUpdate() { NotifyChanged(); }
    virtual void NotifyDestroyed() {}
    // false suspends, true resumes; a resume without a pending suspension does nothing.
    virtual void EnableNotification(bool enable)
    {
        if (!enable)
            ++m_suspended;
        else if (m_suspended > 0)
            --m_suspended;
    }
    bool IsNotifying() const { return m_suspended == 0; }

    // Replaces the contents by copies of the other list's elements, then announces one change.
    virtual void Assign(const TKoBaseListHeader& other)
    {
        if (&other == this)
            return;
        EnableNotification(false);
        DeleteAll();
        other.CopyInto(*this);
        EnableNotification(true);
        NotifyChanged();
    }

    // --- access ---
    virtual T* First() const { return m_head; }
    T* Last() const { return m_tail; }
    static T* Next(const T* element) { return static_cast<T*>(element->Next()); }
    static T* Prev(const T* element) { return static_cast<T*>(element->Prev()); }
    // The element `index` steps from the head, null when the list ends first.
    virtual T* At(std::size_t index) const
    {
        T* e = m_head;
        while (e && index-- > 0)
            e = Next(e);
        return e;
    }

    // --- linking ---
    // Links the element after the tail; a null element is ignored and null returned.
    virtual T* Append(T* element)
    {
        if (!element)
            return nullptr;
        Node(element)->m_prev = m_tail;
        Node(element)->m_next = nullptr;
        if (m_tail)
            Node(m_tail)->m_next = element;
        else
            m_head = element;
        m_tail = element;
        NotifyAdded(element);
        return element;
    }

    // Links the element before `position`; on an empty list (or without a position) appends.
    // A position that is not in this list is refused: null, and the element stays the caller's.
    virtual T* InsertBefore(T* position, T* element)
    {
        if (!element)
            return nullptr;
        if (!m_head || !position)
            return Append(element);
        if (position != m_head && !Contains(position))
            return nullptr;
        KoBaseListnode* before = Node(position)->m_prev;
        Node(element)->m_prev = before;
        Node(element)->m_next = position;
        Node(position)->m_prev = element;
        // Only a new head is announced as added; an element linked in the middle is not announced.
        if (position == m_head) {
            m_head = element;
            NotifyAdded(element);
        } else {
            before->m_next = element;
        }
        return element;
    }

    // Inserts before the first element that sorts after the new one (its Compare gives 1 or more),
    // so equal elements keep their insertion order.
    virtual T* InsertSorted(T* element)
    {
        if (!element)
            return nullptr;
        for (T* e = m_head; e; e = Next(e))
            if (e->Compare(*element) >= 1)
                return InsertBefore(e, element);
        return Append(element);
    }

    // Unlinks the element and hands it back; the caller owns it. Null if it is not in this list
    // (membership is checked by walking the chain, so a removal costs one walk).
    virtual T* Remove(T* element)
    {
        if (!element || !Contains(element))
            return nullptr;
        NotifyRemoved(element);
        Unlink(element);
        return element;
    }

    // Removes the element and deletes it.
    void Delete(T* element) { delete Remove(element); }

    // Hands the whole chain to the other list (after its tail) and leaves this one empty.
    virtual void MoveAllTo(TKoBaseListHeader& other)
    {
        if (&other == this)
            return;
        if (m_head) {
            if (other.m_tail) {
                Node(other.m_tail)->m_next = m_head;
                Node(m_head)->m_prev = other.m_tail;
            } else {
                other.m_head = m_head;
            }
            other.m_tail = m_tail;
            m_head = m_tail = nullptr;
        }
        other.NotifyChanged();
        NotifyChanged(0, nullptr);
    }

    // Appends a copy of every element to the other list.
    virtual void CopyInto(TKoBaseListHeader& other) const
    {
        if (&other == this)
            return;
        for (const T* e = m_head; e; e = Next(e))
            other.Append(new T(*e));
    }

    // Deletes every element; announces one change when there was anything to delete.
    virtual void DeleteAll()
    {
        if (!m_head)
            return;
        DeleteAllSilently();
        NotifyChanged();
    }

    // --- queries ---
    virtual std::size_t Count() const
    {
        std::size_t n = 0;
        for (const T* e = m_head; e; e = Next(e))
            ++n;
        return n;
    }
    bool IsEmpty() const { return m_head == nullptr; }

    // Identity, not value.
    virtual bool Contains(const T* element) const
    {
        for (const T* e = m_head; e; e = Next(e))
            if (e == element)
                return true;
        return false;
    }

    // 0 when the element is in the chain, -1 when not. Callers only test membership with it;
    // it does not tell the position.
    virtual int CheckMember(const T* element) const { return Contains(element) ? 0 : -1; }

    // The first element whose comparison with the key is non-zero, i.e. the first one that does
    // not compare equal to the key; null if every element compares equal.
    virtual T* FindByKey(const T& key) const
    {
        for (T* e = m_head; e; e = Next(e))
            if (e->Compare(key) != 0)
                return e;
        return nullptr;
    }

    // --- range-for over the elements ---
    template <class E>
    class BasicIterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::remove_const_t<E>;
        using difference_type = std::ptrdiff_t;
        using pointer = E*;
        using reference = E&;

        BasicIterator() = default;
        explicit BasicIterator(E* e) : m_e(e) {}
        E& operator*() const { return *m_e; }
        E* operator->() const { return m_e; }
        BasicIterator& operator++()
        {
            m_e = static_cast<E*>(m_e->Next());
            return *this;
        }
        BasicIterator operator++(int)
        {
            BasicIterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const BasicIterator& o) const { return m_e == o.m_e; }

    private:
        E* m_e = nullptr;
    };
    using iterator = BasicIterator<T>;
    using const_iterator = BasicIterator<const T>;
    iterator begin() { return iterator(m_head); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(m_head); }
    const_iterator end() const { return const_iterator(); }

protected:
    // Deletes every element without any announcement (destruction, assignment).
    void DeleteAllSilently()
    {
        T* e = m_head;
        m_head = m_tail = nullptr;
        while (e) {
            T* next = Next(e);
            delete e;
            e = next;
        }
    }

    std::uint32_t SuspendCount() const { return m_suspended; }

private:
    static KoBaseListnode* Node(T* element) { return element; }

    void Unlink(T* element)
    {
        KoBaseListnode* prev = Node(element)->m_prev;
        KoBaseListnode* next = Node(element)->m_next;
        if (prev)
            prev->m_next = next;
        else
            m_head = static_cast<T*>(next);
        if (next)
            next->m_prev = prev;
        else
            m_tail = static_cast<T*>(prev);
        Node(element)->m_prev = Node(element)->m_next = nullptr;
    }

    T* m_head = nullptr;
    T* m_tail = nullptr;
    std::uint32_t m_suspended = 0;
};
