#include "support/KoLogger.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

// Replaces every occurrence of `token`, going on behind each replacement so that it is never read again.
void ReplaceAll(std::string& text, std::string_view token, std::string_view replacement)
{
    for (std::size_t at = text.find(token); at != std::string::npos; at = text.find(token, at)) {
        text.replace(at, token.size(), replacement);
        at += replacement.size();
    }
}

std::string TwoDigits(int value)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", value);
    return buffer;
}

}  // namespace

int KoLogger::Write(std::int32_t, const String&) { return 0; }

int KoMasterLogger::Open()
{
    bool any = false;
    for (KoLoggerRef& ref : m_loggers)
        any = ref.logger->Open() != 0 || any;
    return any ? 1 : 0;
}

int KoMasterLogger::Close()
{
    bool any = false;
    for (KoLoggerRef& ref : m_loggers)
        any = ref.logger->Close() != 0 || any;
    return any ? 1 : 0;
}

int KoMasterLogger::Write(std::int32_t level, const String& text)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const String line = KoExpandLogFormat(m_format, local, text.View());
    bool any = false;
    for (KoLoggerRef& ref : m_loggers) {
        if (level > ref.logger->Level())
            continue;
        any = ref.logger->Write(level, line) != 0 || any;
    }
    return any ? 1 : 0;
}

void KoMasterLogger::Attach(KoLogger* logger) { m_loggers.push_back(KoLoggerRef{logger}); }

void KoMasterLogger::Detach(KoLogger* logger)
{
    const auto found =
        std::find_if(m_loggers.begin(), m_loggers.end(), [&](const KoLoggerRef& ref) { return ref.logger == logger; });
    if (found != m_loggers.end())
        m_loggers.erase(found);
}

bool KoMasterLogger::IsAttached(const KoLogger* logger) const
{
    return std::any_of(m_loggers.begin(), m_loggers.end(),
                       [&](const KoLoggerRef& ref) { return ref.logger == logger; });
}

String KoExpandLogFormat(const String& format, const std::tm& time, std::string_view message)
{
    std::string line = format.StdString();
    const int hour = time.tm_hour;
    char year[16];
    std::snprintf(year, sizeof year, "%4d", time.tm_year + 1900);
    ReplaceAll(line, "$day", TwoDigits(time.tm_mday));
    ReplaceAll(line, "$month", TwoDigits(time.tm_mon + 1));
    ReplaceAll(line, "$year", year);
    // Midnight reads 00 and noon 12 on this clock face.
    ReplaceAll(line, "$hour12", TwoDigits(hour < 13 ? hour : hour - 12));
    ReplaceAll(line, "$hour24", TwoDigits(hour));
    ReplaceAll(line, "$minute", TwoDigits(time.tm_min));
    ReplaceAll(line, "$second", TwoDigits(time.tm_sec));
    ReplaceAll(line, "$ampm", hour < 12 ? "AM" : "PM");
    ReplaceAll(line, "$mesg", message);
    return String(line);
}
