#pragma once
// Change notification of the library's lists: a notifier holds the attached observers and sends
// them event records; an observer is attached to at most one notifier at a time.

#include <cstdint>

#include "points/KoListnode.h"

enum eKoEventCode : std::int32_t {
    eKoEventChanged = 1,    // contents changed in general; value carries the notice's value
    eKoEventAdded = 2,      // element appended or inserted
    eKoEventRemoved = 3,    // element is being removed
    eKoEventDestroyed = 4,  // the list is being destroyed (it is already empty)
};

struct KoEvent {
    std::int32_t code = 0;
    const void* sender = nullptr;          // the sending list (its TKoListHeader part)
    const KoBaseListnode* element = nullptr;  // events 2 and 3
    std::intptr_t value = 0;               // event 1

    template <class T>
    T* Element() const
    {
        return static_cast<T*>(const_cast<KoBaseListnode*>(element));
    }
};

class KoObserver;

// Base of the library's link classes.
class Link : public LinkHdl {
public:
    virtual ~Link() = default;
};

class KoStandardNotifier {
public:
    KoStandardNotifier() = default;
    KoStandardNotifier(const KoStandardNotifier&) = delete;
    KoStandardNotifier& operator=(const KoStandardNotifier&) = delete;
    ~KoStandardNotifier();

    // False when the observer is null or already attached somewhere.
    bool Attach(KoObserver* observer);
    // False when the observer is not attached here.
    bool Detach(KoObserver* observer);
    void DetachAll();
    // Calls every attached observer but `skip`, in attachment order; returns the number attached.
    // An observer that detaches (or is destroyed) during the round is not called afterwards.
    std::uint32_t Notify(const KoEvent& event, const KoObserver* skip = nullptr);

    std::uint32_t Count() const { return m_count; }
    std::uint32_t Capacity() const { return m_capacity; }
    KoObserver* At(std::uint32_t index) const;

private:
    struct Cell {
        KoObserver* observer;
    };
    bool Holds(const KoObserver* observer) const;

    Cell** m_cells = nullptr;
    std::uint32_t m_count = 0;
    std::uint32_t m_capacity = 0;
};

// Values copied into an observer when it is created.
struct KoObserverDesc {
    std::uint32_t clientValue = 0;
    std::uint32_t clientCode = 0;
};

class KoObserver : public Link {
public:
    KoObserver() = default;
    explicit KoObserver(KoStandardNotifier* notifier);
    KoObserver(KoStandardNotifier* notifier, const KoObserverDesc& desc);
    KoObserver(const KoObserver&) = delete;
    KoObserver& operator=(const KoObserver&) = delete;
    ~KoObserver() override;

    // Receives every event of the notifier it is attached to.
    virtual void Update(const KoEvent& event) = 0;

    // Detaches from the current notifier first; null only detaches.
    bool AttachTo(KoStandardNotifier* notifier);
    bool Detach();

    KoStandardNotifier* Notifier() const { return m_notifier; }
    std::uint32_t ClientValue() const { return m_clientValue; }
    std::uint32_t ClientCode() const { return m_clientCode; }

private:
    friend class KoStandardNotifier;

    std::uint32_t m_clientValue = 0;
    std::uint32_t m_clientCode = 0;
    KoStandardNotifier* m_notifier = nullptr;
};
