#pragma once
// The list that announces its changes to observers. T derives from KoListnode (number and name).
//
// Events: 1 changed (value), 2 added (element), 3 removed (element, sent before it is unlinked),
// 4 destroyed (sent even while suspended, when the list is already empty).
//
//   class MyView : public KoObserver { void Update(const KoEvent& e) override { ... } };
//   KoPointList points;  MyView view;  view.AttachTo(&points.Notifier());

#include <cstdint>
#include <string_view>

#include "points/KoNotifier.h"
#include "points/TKoBaseListHeader.h"

template <class T>
class TKoListHeader : public TKoBaseListHeader<T> {
    using Base = TKoBaseListHeader<T>;

public:
    TKoListHeader() = default;
    TKoListHeader(const TKoListHeader& other) : Base(other) {}
    TKoListHeader& operator=(const TKoListHeader& other)
    {
        this->Assign(other);
        return *this;
    }
    ~TKoListHeader() override
    {
        // Observers see the destroyed event with the list already empty, and nothing before it.
        Base::EnableNotification(false);
        Base::DeleteAll();
        NotifyDestroyed();
    }

    KoStandardNotifier& Notifier() { return m_notifier; }

    void NotifyAdded(T* element) override
    {
        if (this->IsNotifying())
            Send(eKoEventAdded, element, 0, nullptr);
    }
    void NotifyChanged() override
    {
        if (this->IsNotifying())
            Send(eKoEventChanged, nullptr, 0, nullptr);
    }
    void NotifyRemoved(T* element) override
    {
        if (this->IsNotifying())
            Send(eKoEventRemoved, element, 0, nullptr);
    }
    void NotifyChanged(std::intptr_t value, const KoObserver* skip) override
    {
        if (this->IsNotifying())
            Send(eKoEventChanged, nullptr, value, skip);
    }
    void NotifyDestroyed() override { Send(eKoEventDestroyed, nullptr, 0, nullptr); }

    // Appends a copy of the element.
    T* AppendCopy(const T& element) { return this->Append(new T(element)); }

    // Takes the element (the list owns it). An element with the same number is replaced: the new
    // one goes to its place and the old one is deleted. Otherwise the element is appended.
    T* Put(T* element) { return PutOrReplace(element, false); }
    T* PutCopy(const T& element) { return Put(new T(element)); }

    // As Put, but a new number is inserted in sort order.
    T* PutSorted(T* element) { return PutOrReplace(element, true); }
    T* PutCopySorted(const T& element) { return PutSorted(new T(element)); }

    T* FindByName(std::string_view name, bool ignoreCase = false) const
    {
        for (T* e = this->First(); e; e = Base::Next(e))
            if (ignoreCase ? e->name.EqualsNoCase(name) : e->name == name)
                return e;
        return nullptr;
    }

    T* FindByNumber(std::uint32_t number) const
    {
        for (T* e = this->First(); e; e = Base::Next(e))
            if (e->number == number)
                return e;
        return nullptr;
    }

    // wish 0: one above the highest number (1 for an empty list). Otherwise the wish itself, or the
    // next number above it that no element carries.
    std::uint32_t FreeNumber(std::uint32_t wish = 0) const
    {
        if (wish == 0) {
            std::uint32_t highest = 0;
            for (const T* e = this->First(); e; e = Base::Next(e))
                if (e->number > highest)
                    highest = e->number;
            return highest + 1;
        }
        while (FindByNumber(wish))
            ++wish;
        return wish;
    }

    // Numbers the elements from `from` (null: the head) to the tail start, start + step, ...;
    // returns how many were numbered.
    std::uint32_t Renumber(std::uint32_t start, T* from = nullptr, std::uint32_t step = 1)
    {
        std::uint32_t count = 0;
        for (T* e = from ? from : this->First(); e; e = Base::Next(e))
            e->number = start + step * count++;
        return count;
    }

private:
    T* PutOrReplace(T* element, bool sorted)
    {
        if (!element)
            return nullptr;
        T* old = FindByNumber(element->number);
        if (!old)
            return sorted ? this->InsertSorted(element) : this->Append(element);
        if (old == element)
            return element;
        this->InsertBefore(old, element);
        this->Delete(old);
        return element;
    }

    void Send(std::int32_t code, const T* element, std::intptr_t value, const KoObserver* skip)
    {
        KoEvent event;
        event.code = code;
        event.sender = this;
        event.element = element;
        event.value = value;
        m_notifier.Notify(event, skip);
    }

    KoStandardNotifier m_notifier;
};
