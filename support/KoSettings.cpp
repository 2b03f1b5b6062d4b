#include "support/KoSettings.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

std::string Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

// The XDG variable, else $HOME with the fallback below it; a relative XDG value is ignored, as the
// base-directory rules for those variables demand.
std::string BaseDirectory(const char* variable, const char* underHome)
{
    std::string base = Environment(variable);
    if (base.empty() || base.front() != '/') {
        std::string home = Environment("HOME");
        if (home.empty())
            home = "/tmp";
        base = home + "/" + underHome;
    }
    return base;
}

std::string Trim(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

bool ReadLines(const std::string& path, std::vector<std::string>& lines)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return true;
}

bool IsSectionLine(const std::string& line, std::string* name)
{
    const std::string t = Trim(line);
    if (t.size() < 2 || t.front() != '[' || t.back() != ']')
        return false;
    if (name)
        *name = t.substr(1, t.size() - 2);
    return true;
}

bool SplitValueLine(const std::string& line, std::string& name, std::string& value)
{
    const auto eq = line.find('=');
    if (eq == std::string::npos)
        return false;
    const std::string t = Trim(line);
    if (t.empty() || t.front() == ';' || t.front() == '#')
        return false;
    name = Trim(line.substr(0, eq));
    value = Trim(line.substr(eq + 1));
    return true;
}

bool WriteAllAtomically(const std::string& path, const std::string& text)
{
    const std::string temporary = path + ".tmp." + std::to_string(::getpid());
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            ::close(fd);
            ::unlink(temporary.c_str());
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    if (::fsync(fd) != 0 || ::close(fd) != 0 || ::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace

std::string KoConfigDirectory()
{
    return BaseDirectory("XDG_CONFIG_HOME", ".config") + "/TRELLANOVA 10";
}

std::string KoStateDirectory()
{
    return BaseDirectory("XDG_STATE_HOME", ".local/state") + "/TRELLANOVA 10";
}

std::string KoSettingsFile()
{
    return KoConfigDirectory() + "/registry.ini";
}

std::optional<std::string> KoReadSetting(const std::string& section, const std::string& name)
{
    std::vector<std::string> lines;
    if (!ReadLines(KoSettingsFile(), lines))
        return std::nullopt;
    bool inSection = false;
    for (const std::string& line : lines) {
        std::string current;
        if (IsSectionLine(line, &current)) {
            inSection = current == section;
            continue;
        }
        std::string key, value;
        if (inSection && SplitValueLine(line, key, value) && key == name)
            return value;
    }
    return std::nullopt;
}

bool KoWriteSetting(const std::string& section, const std::string& name, const std::string& value)
{
    if (!KoCreateDirectories(KoConfigDirectory()))
        return false;
    std::vector<std::string> lines;
    ReadLines(KoSettingsFile(), lines);  // a missing file starts empty

    bool inSection = false, sectionSeen = false, written = false;
    std::size_t insertAt = lines.size();
    for (std::size_t i = 0; i < lines.size() && !written; ++i) {
        std::string current;
        if (IsSectionLine(lines[i], &current)) {
            if (inSection) {
                insertAt = i;  // end of our section: append the value there
                break;
            }
            inSection = current == section;
            sectionSeen = sectionSeen || inSection;
            continue;
        }
        std::string key, old;
        if (inSection && SplitValueLine(lines[i], key, old) && key == name) {
            lines[i] = name + "=" + value;
            written = true;
        }
    }
    if (!written) {
        if (!sectionSeen) {
            lines.push_back("[" + section + "]");
            insertAt = lines.size();
        }
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(insertAt), name + "=" + value);
    }
    std::ostringstream text;
    for (const std::string& line : lines)
        text << line << '\n';
    return WriteAllAtomically(KoSettingsFile(), text.str());
}

std::string KoTemporaryDirectory()
{
    for (const char* name : {"TMP", "TEMP", "TMPDIR"}) {
        std::string value = Environment(name);
        while (value.size() > 1 && value.back() == '/')
            value.pop_back();
        if (!value.empty())
            return value;
    }
    return "/tmp";
}

bool KoCreateDirectories(const std::string& path)
{
    if (path.empty())
        return false;
    for (std::size_t slash = path.find('/', 1); ; slash = path.find('/', slash + 1)) {
        const std::string prefix = slash == std::string::npos ? path : path.substr(0, slash);
        if (::mkdir(prefix.c_str(), 0755) != 0 && errno != EEXIST)
            return false;
        if (slash == std::string::npos)
            break;
    }
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}
