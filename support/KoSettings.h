#pragma once
// The user's settings file and the folders this suite keeps its files in. On Windows the language code
// lives in the registry and the protocol in the root of the drive; here both follow the XDG base
// directories, so a test (or a second user profile) runs with a private set just by setting the variables.
//
//   ${XDG_CONFIG_HOME:-$HOME/.config}/TRELLANOVA 10/registry.ini   the registry value and [Platform] choices
//   ${XDG_STATE_HOME:-$HOME/.local/state}/TRELLANOVA 10/           the protocol log
//
// The settings file is INI text: "[section]" lines, "name=value" lines, nothing else that matters. A
// registry key path such as "Software\Halvern Optik\TRELLANOVA 10" is used as it stands as a section name.

#include <optional>
#include <string>

// The suite's folder under the user's configuration directory (not created).
std::string KoConfigDirectory();
// The suite's folder under the user's state directory (not created).
std::string KoStateDirectory();
// The settings file's full path.
std::string KoSettingsFile();

// The value of `name` in `section` (both matched as written, names without surrounding blanks); nothing
// when the file is missing or unreadable, or does not hold the value.
std::optional<std::string> KoReadSetting(const std::string& section, const std::string& name);

// Sets the value (creating the folder, the file, the section as needed) and replaces the file atomically,
// so that a reader never sees half a file. False when it cannot be written.
bool KoWriteSetting(const std::string& section, const std::string& name, const std::string& value);

// The section that holds the choices of programs and servers that Windows would answer by itself.
inline constexpr const char* kKoPlatformSection = "Platform";

// The folder for temporary exports: TMP, else TEMP, else TMPDIR, else /tmp (no trailing slash).
std::string KoTemporaryDirectory();

// Creates the folder and its missing parents; true when it exists afterwards.
bool KoCreateDirectories(const std::string& path);
