// Where the database helpers send their debug lines. The class library's log is not part of the module
// yet; until it is, this one function stands in for it and a later change points it at Log.
#pragma once

#include <functional>
#include <string_view>

// The level the database helpers log at: a debug detail, less important than anything the protocol file
// keeps (a smaller level is more important).
inline constexpr int kAcDbDebugLogLevel = 4;

// Hands one line to the debug log. Without a sink of its own the line goes to the debugger output
// channel, as every message of the log does.
void AcDbDebugLog(int level, std::string_view message);

// Replaces the destination (a test, the log once it exists); an empty function restores the debugger
// channel. Answers the previous sink.
using AcDbDebugLogSink = std::function<void(int level, std::string_view message)>;
AcDbDebugLogSink AcDbSetDebugLogSink(AcDbDebugLogSink sink);
