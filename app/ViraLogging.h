// The module's protocol: from initialisation on, every message of the class library's log reaches the host's
// debugger channel and the protocol file (TomaProtokoll.log in the suite's state folder), so that every run
// leaves its protocol.
#pragma once

// The level of the module's own protocol lines.
inline constexpr int kViraLogLevel = 3;

// Creates the protocol's folder, installs the master logger and the protocol file logger, and sends the
// database helpers' debug lines into the log. Safe to call again.
void ViraStartLogging();
// Removes the protocol file logger and the master logger. A worker that still logs afterwards only queues.
void ViraStopLogging();
