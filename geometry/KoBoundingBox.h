#pragma once

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <limits>
#include <string>

// Shared conventions of the plane and spatial bounding boxes.

// An empty box has every minimum at the largest double and every maximum at its negative, so that the
// first point or box merged into it replaces both without a special case.
inline constexpr double kKoBoxEmptyMin = std::numeric_limits<double>::max();
inline constexpr double kKoBoxEmptyMax = -std::numeric_limits<double>::max();

// Receives diagnostic text line by line (a log, a console, a test collecting lines).
using KoTextSink = std::function<void(const std::string& line)>;

// printf-style formatting of one diagnostic line of any length ("%f" of a huge coordinate runs to
// hundreds of characters).
[[gnu::format(printf, 1, 2)]] inline std::string KoFormatLine(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}
