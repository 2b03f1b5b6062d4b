#pragma once
// Loggers of the class library's protocol. Code hands a level and a message to Log() (KoLog.h); the master
// logger stamps each message with the local time and hands it to every attached logger whose level admits
// it. A smaller level is a more important message: a logger of level L takes the messages of level <= L.
//
// The log sits at the bottom of the class library (everything may log), so its lists are standard
// containers rather than the library's notifying lists, which would announce every queued line to observers.

#include <cstdint>
#include <ctime>
#include <list>

#include "support/KoString.h"

class KoLogger {
public:
    KoLogger() = default;
    explicit KoLogger(std::int32_t level) : m_level(level) {}
    KoLogger(const KoLogger&) = default;
    KoLogger& operator=(const KoLogger&) = default;
    virtual ~KoLogger() = default;

    // Non-zero: something was opened, closed or written.
    virtual int Open() { return 0; }
    virtual int Close() { return 0; }
    virtual int Write(std::int32_t level, const String& text);

    std::int32_t Level() const { return m_level; }
    void SetLevel(std::int32_t level) { m_level = level; }

private:
    std::int32_t m_level = 3;
};

// An application's own logger base; it only makes the destructor virtual.
class KoApplicationLogger {
public:
    KoApplicationLogger() = default;
    KoApplicationLogger(const KoApplicationLogger&) = default;
    KoApplicationLogger& operator=(const KoApplicationLogger&) = default;
    virtual ~KoApplicationLogger() = default;
};

// One attached logger; the master does not own it.
struct KoLoggerRef {
    KoLogger* logger = nullptr;
};

// One message waiting for the master logger.
struct KoLogString {
    std::int32_t level = 0;
    String text;
};

class KoMasterLogger : public KoLogger {
public:
    KoMasterLogger() : KoLogger(3) {}

    int Open() override;
    int Close() override;
    // Expands the line format with the message and the local time, then writes the line to every attached
    // logger whose level admits `level`. Non-zero when at least one of them wrote it.
    int Write(std::int32_t level, const String& text) override;

    // Appends a reference to `logger`; detaching removes its first reference (nothing when not attached).
    void Attach(KoLogger* logger);
    void Detach(KoLogger* logger);
    bool IsAttached(const KoLogger* logger) const;

    const String& Format() const { return m_format; }
    void SetFormat(const String& format) { m_format = format; }

private:
    std::list<KoLoggerRef> m_loggers;
    String m_format = "[$hour24:$minute:$second] $mesg";
};

// Replaces the time tokens of `format` ($day $month $year $hour12 $hour24 $minute $second $ampm) with the
// fields of `time`, then $mesg with `message`. The message goes in last, so tokens inside it stay as written.
String KoExpandLogFormat(const String& format, const std::tm& time, std::string_view message);
