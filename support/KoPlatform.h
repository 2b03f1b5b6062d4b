#pragma once
// The few operating-system services the class library needs. This is the POSIX implementation's
// interface; a Windows one provides the same functions.

#include <cstdint>

// The Windows SYSTEMTIME layout: eight 16-bit fields, UTC.
struct KoSystemTime {
    std::uint16_t year = 0;
    std::uint16_t month = 0;
    std::uint16_t dayOfWeek = 0;  // 0 = Sunday
    std::uint16_t day = 0;
    std::uint16_t hour = 0;
    std::uint16_t minute = 0;
    std::uint16_t second = 0;
    std::uint16_t milliseconds = 0;
};
static_assert(sizeof(KoSystemTime) == 16);

// The current time of day and date in UTC.
KoSystemTime KoGetSystemTime();

// Creates the file empty (truncating an existing one); false when it cannot be created.
bool KoCreateEmptyFile(const char* utf8Path);
bool KoFileExists(const char* utf8Path);
