#pragma once
// Elapsed-time meter for progress and protocol lines. Only the time of day counts: the date is
// ignored, so an interval across midnight UTC comes out negative (23:59:59 to 00:00:01 is -86398 s).

#include <memory>

#include "support/KoPlatform.h"

class KoDifftime {
public:
    using Clock = KoSystemTime (*)();

    // Starts running at once. The clock is replaceable for tests.
    explicit KoDifftime(Clock clock = &KoGetSystemTime);
    virtual ~KoDifftime() = default;
    KoDifftime(const KoDifftime&) = delete;
    KoDifftime& operator=(const KoDifftime&) = delete;

    void Restart();
    void Stop();
    // Takes the current time as the end and returns end minus start in seconds of the day.
    double ElapsedSeconds();

    bool IsRunning() const { return m_running; }
    const KoSystemTime& StartTime() const { return *m_start; }
    const KoSystemTime& EndTime() const { return *m_end; }

private:
    Clock m_clock;
    std::unique_ptr<KoSystemTime> m_start = std::make_unique<KoSystemTime>();
    std::unique_ptr<KoSystemTime> m_end = std::make_unique<KoSystemTime>();
    bool m_running = false;
};
