#include "points/KoNotifier.h"

#include <vector>

KoStandardNotifier::~KoStandardNotifier()
{
    DetachAll();
    delete[] m_cells;
}

bool KoStandardNotifier::Attach(KoObserver* observer)
{
    if (!observer || observer->m_notifier)
        return false;
    if (m_count == m_capacity) {
        // Doubling when full; an empty notifier starts with room for a few observers.
        const std::uint32_t capacity = m_capacity == 0 ? 4 : m_capacity * 2;
        Cell** cells = new Cell*[capacity]();
        for (std::uint32_t i = 0; i < m_count; ++i)
            cells[i] = m_cells[i];
        delete[] m_cells;
        m_cells = cells;
        m_capacity = capacity;
    }
    m_cells[m_count++] = new Cell{observer};
    observer->m_notifier = this;
    return true;
}

bool KoStandardNotifier::Detach(KoObserver* observer)
{
    for (std::uint32_t i = 0; i < m_count; ++i) {
        if (m_cells[i]->observer != observer)
            continue;
        observer->m_notifier = nullptr;
        delete m_cells[i];
        for (std::uint32_t j = i + 1; j < m_count; ++j)
            m_cells[j - 1] = m_cells[j];
        m_cells[--m_count] = nullptr;
        return true;
    }
    return false;
}

void KoStandardNotifier::DetachAll()
{
    while (m_count > 0)
        Detach(m_cells[0]->observer);
}

bool KoStandardNotifier::Holds(const KoObserver* observer) const
{
    for (std::uint32_t i = 0; i < m_count; ++i)
        if (m_cells[i]->observer == observer)
            return true;
    return false;
}

KoObserver* KoStandardNotifier::At(std::uint32_t index) const
{
    return index < m_count ? m_cells[index]->observer : nullptr;
}

std::uint32_t KoStandardNotifier::Notify(const KoEvent& event, const KoObserver* skip)
{
    const std::uint32_t attached = m_count;
    // An observer may detach itself or others from inside Update; walk a snapshot and call only
    // those still attached (compared by address, never dereferenced once gone).
    std::vector<KoObserver*> round;
    round.reserve(m_count);
    for (std::uint32_t i = 0; i < m_count; ++i)
        round.push_back(m_cells[i]->observer);
    for (KoObserver* observer : round)
        if (observer != skip && Holds(observer))
            observer->Update(event);
    return attached;
}

KoObserver::KoObserver(KoStandardNotifier* notifier) { AttachTo(notifier); }

KoObserver::KoObserver(KoStandardNotifier* notifier, const KoObserverDesc& desc)
    : m_clientValue(desc.clientValue), m_clientCode(desc.clientCode)
{
    AttachTo(notifier);
}

KoObserver::~KoObserver() { Detach(); }

bool KoObserver::AttachTo(KoStandardNotifier* notifier)
{
    Detach();
    return notifier ? notifier->Attach(this) : false;
}

bool KoObserver::Detach()
{
    return m_notifier ? m_notifier->Detach(this) : false;
}
