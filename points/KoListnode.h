#pragma once
// Building blocks of every record kept in the library's intrusive lists.

#include <cstdint>
#include <utility>

#include "support/KoString.h"

// Link part of a list element. The links belong to the list the element sits in: copying an
// element never copies them, so a copy always starts outside any list.
class KoBaseListnode {
public:
    KoBaseListnode() = default;
    KoBaseListnode(const KoBaseListnode&) {}
    KoBaseListnode& operator=(const KoBaseListnode&) { return *this; }
    virtual ~KoBaseListnode() = default;

    KoBaseListnode* Prev() const { return m_prev; }
    KoBaseListnode* Next() const { return m_next; }

    // Ordering used by sorted insertion and key search: a result of 1 or more means this element
    // sorts after the other one. Plain list nodes have no order of their own.
    virtual int Compare(const KoBaseListnode& other) const
    {
        (void)other;
        return 0;
    }

private:
    template <class T>
    friend class TKoBaseListHeader;

    KoBaseListnode* m_prev = nullptr;  // null at the head
    KoBaseListnode* m_next = nullptr;  // null at the tail
};

// A numbered, named object.
class KoObject {
public:
    KoObject() = default;
    explicit KoObject(std::uint32_t number) : number(number) {}
    KoObject(std::uint32_t number, String name) : number(number), name(std::move(name)) {}

    std::uint32_t number = 0;  // shown as "Nr." and written as field "#"
    String name;
};

// Handle base of the library's link and observer classes; it carries no data.
class LinkHdl {};

// List element with number and name.
class KoListnode : public KoBaseListnode, public KoObject, public LinkHdl {
public:
    KoListnode() = default;
    explicit KoListnode(std::uint32_t number) : KoObject(number) {}
};

// Carries the status word of a point.
class KoFlag {
public:
    std::int32_t flag = 0;
};
