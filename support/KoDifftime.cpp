#include "support/KoDifftime.h"

namespace {

double SecondsOfDay(const KoSystemTime& t)
{
    return t.hour * 3600.0 + t.minute * 60.0 + t.second + t.milliseconds / 1000.0;
}

}  // namespace

KoDifftime::KoDifftime(Clock clock) : m_clock(clock ? clock : &KoGetSystemTime) { Restart(); }

void KoDifftime::Restart()
{
    *m_start = m_clock();
    m_running = true;
}

void KoDifftime::Stop()
{
    *m_end = m_clock();
    m_running = false;
}

double KoDifftime::ElapsedSeconds()
{
    *m_end = m_clock();
    return SecondsOfDay(*m_end) - SecondsOfDay(*m_start);
}
