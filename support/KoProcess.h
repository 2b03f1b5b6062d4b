#pragma once
// Starting another program for the user (the spreadsheet with an export, the browser with a link) and the
// user's list separator. Programs start with an argument vector, never through a shell, so a file name or a
// link can never become a command.

#include <string>
#include <vector>

// Starts argv[0] (searched on PATH when it has no slash) with the arguments and does not wait for it; the
// child is reaped in the background. False with `error` set when it could not be started (no such program,
// not executable).
bool KoStartProgram(const std::vector<std::string>& argv, std::string& error);

// Splits a command such as "libreoffice --calc" at blanks into an argument vector; double quotes keep a
// part with blanks together. No other shell syntax means anything.
std::vector<std::string> KoSplitCommand(const std::string& command);

// The separator the user's locale expects between fields of a list: ";" where the decimal point is ","
// (a spreadsheet there reads "1,5" as one number), "," otherwise.
std::wstring KoListSeparator();
