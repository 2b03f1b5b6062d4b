#include "support/KoProcess.h"

#include <fcntl.h>
#include <langinfo.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <locale.h>
#include <thread>

extern char** environ;

namespace {

// posix_spawnp reports a missing program only through the child's exit status 127; look first so the
// user hears why nothing opened.
bool FindExecutable(const std::string& name, std::string& found)
{
    auto executable = [](const std::string& path) {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
    };
    if (name.find('/') != std::string::npos) {
        found = name;
        return executable(name);
    }
    const char* path = std::getenv("PATH");
    std::string list = path ? path : "/usr/local/bin:/usr/bin:/bin";
    std::size_t start = 0;
    while (start <= list.size()) {
        std::size_t end = list.find(':', start);
        if (end == std::string::npos)
            end = list.size();
        std::string dir = list.substr(start, end - start);
        if (dir.empty())
            dir = ".";
        const std::string candidate = dir + "/" + name;
        if (executable(candidate)) {
            found = candidate;
            return true;
        }
        start = end + 1;
    }
    return false;
}

}  // namespace

bool KoStartProgram(const std::vector<std::string>& argv, std::string& error)
{
    if (argv.empty() || argv.front().empty()) {
        error = "no program named";
        return false;
    }
    std::string program;
    if (!FindExecutable(argv.front(), program)) {
        error = argv.front() + ": program not found";
        return false;
    }
    std::vector<char*> args;
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);

    // The child gets its own session so that Ctrl+C in the host's terminal does not end the user's
    // spreadsheet, and it must not inherit our standard input.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);

    pid_t pid = 0;
    const int rc = ::posix_spawn(&pid, program.c_str(), &actions, &attributes, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (rc != 0) {
        error = argv.front() + ": " + std::strerror(rc);
        return false;
    }
    std::thread([pid] {
        int status = 0;
        while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
        }
    }).detach();
    return true;
}

std::vector<std::string> KoSplitCommand(const std::string& command)
{
    std::vector<std::string> parts;
    std::string current;
    bool quoted = false, any = false;
    for (char c : command) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if ((c == ' ' || c == '\t') && !quoted) {
            if (any)
                parts.push_back(current);
            current.clear();
            any = false;
        } else {
            current += c;
            any = true;
        }
    }
    if (any)
        parts.push_back(current);
    return parts;
}

std::wstring KoListSeparator()
{
    // The user's locale as the environment names it, without touching the process locale.
    locale_t user = ::newlocale(LC_NUMERIC_MASK, "", static_cast<locale_t>(nullptr));
    if (!user)
        return L",";
    const char* point = ::nl_langinfo_l(RADIXCHAR, user);
    const bool comma = point && std::strcmp(point, ",") == 0;
    ::freelocale(user);
    return comma ? L";" : L",";
}
