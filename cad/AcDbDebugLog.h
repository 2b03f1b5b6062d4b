// Where the database helpers send their debug lines: the class library's log (and with it the debugger
// channel and, at level 4, the protocol file), unless a test takes them.
#pragma once

#include <functional>
#include <string_view>

// The level the database helpers log at: a debug detail, the least important level the protocol file keeps
// (a smaller level is more important).
inline constexpr int kAcDbDebugLogLevel = 4;

// Hands one line to the log (Log), or to the sink a test set.
void AcDbDebugLog(int level, std::string_view message);

// Replaces the destination (a test); an empty function restores the log. Answers the previous sink.
using AcDbDebugLogSink = std::function<void(int level, std::string_view message)>;
AcDbDebugLogSink AcDbSetDebugLogSink(AcDbDebugLogSink sink);
