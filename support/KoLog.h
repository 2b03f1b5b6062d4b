#pragma once
// The process-wide protocol: one call, Log(level, message), from anywhere. Until a master logger is
// installed the messages wait in a queue; the first Log() after the installation delivers the backlog in
// arrival order, all stamped with the time of delivery. Every message also goes to the debugger channel.
//
// Any thread may log (the update check logs from its own thread): one lock serialises the writers, and a
// logger that logs from inside its Write() is served on the same thread without deadlock. The state behind
// the log is never destroyed, so a thread that still logs while the process ends finds it intact.

#include <cstdint>
#include <string>
#include <string_view>

#include "support/KoLogger.h"

// Queues the message, writes it to the debugger channel and, when a master logger is installed, delivers
// the queue to it. Returns the number of messages still waiting (0 after a delivery).
int Log(std::int32_t level, const char* message);
int Log(std::int32_t level, std::string_view message);

// The master logger is not owned: whoever installs it keeps it alive until it is replaced by null.
void SetMasterLogger(KoMasterLogger* master);
KoMasterLogger* GetMasterLogger();

// The debugger channel. The class library knows no host, so the host's channel is plugged in here
// (OutputDebugStringA); without one the debugger text goes nowhere. Returns the previous one.
using KoDebugOutput = void (*)(const char* text);
KoDebugOutput KoSetDebugOutput(KoDebugOutput output);

// What the debugger channel receives for `message`. Messages are plain text: they carry lines a web
// server sent, so they are never a format that reads arguments. "%%" becomes "%", any other directive
// ("%s", "%n", ...) stays as written; the text is cut to the channel's 1,503 characters.
std::string KoDebugText(std::string_view message);

// The protocol file: every message of level 4 or less, "LEVEL : LINE" per line, appended.
class KoTomaDebugLogger : public KoLogger {
public:
    KoTomaDebugLogger() : KoLogger(4) {}
    // Appends the line; a file that cannot be opened is skipped. Returns 0 as every file logger does.
    int Write(std::int32_t level, const String& text) override;
};

// ${XDG_STATE_HOME:-$HOME/.local/state}/TRELLANOVA 10/TomaProtokoll.log (the folder is not created here).
std::string KoTomaProtokollPath();

// With a master logger and no protocol logger yet: creates it, attaches it and logs
// "InstallTomaDebugLogger()" at level 4. Otherwise nothing happens.
void InstallTomaDebugLogger();
// With a master logger and a protocol logger: logs "UninstallTomaDebugLogger()" at level 4, detaches the
// logger and destroys it. Otherwise nothing happens.
void UninstallTomaDebugLogger();
bool IsTomaDebugLoggerInstalled();
