#include "support/KoPlatform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

KoSystemTime KoGetSystemTime()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm utc{};
    gmtime_r(&now.tv_sec, &utc);
    KoSystemTime t;
    t.year = static_cast<std::uint16_t>(utc.tm_year + 1900);
    t.month = static_cast<std::uint16_t>(utc.tm_mon + 1);
    t.dayOfWeek = static_cast<std::uint16_t>(utc.tm_wday);
    t.day = static_cast<std::uint16_t>(utc.tm_mday);
    t.hour = static_cast<std::uint16_t>(utc.tm_hour);
    t.minute = static_cast<std::uint16_t>(utc.tm_min);
    t.second = static_cast<std::uint16_t>(utc.tm_sec > 59 ? 59 : utc.tm_sec);  // leap second
    t.milliseconds = static_cast<std::uint16_t>(now.tv_nsec / 1000000);
    return t;
}

bool KoCreateEmptyFile(const char* utf8Path)
{
    if (!utf8Path || !*utf8Path)
        return false;
    const int fd = ::open(utf8Path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        return false;
    ::close(fd);
    return true;
}

bool KoFileExists(const char* utf8Path)
{
    struct stat info {};
    return utf8Path && ::stat(utf8Path, &info) == 0;
}
