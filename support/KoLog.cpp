#include "support/KoLog.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <list>
#include <mutex>

#include "support/KoSettings.h"

namespace {

struct LogState {
    std::recursive_mutex lock;
    std::list<KoLogString> queue;
    KoMasterLogger* master = nullptr;
    KoTomaDebugLogger* protocol = nullptr;
};

// Never destroyed: a worker thread may log while the process runs its exit handlers.
LogState& State()
{
    static LogState* state = new LogState();
    return *state;
}

std::atomic<KoDebugOutput> gDebugOutput{nullptr};

// The channel takes at most this many characters per message (the terminating zero not counted).
constexpr std::size_t kDebugTextLimit = 1503;

}  // namespace

std::string KoDebugText(std::string_view message)
{
    std::string text;
    text.reserve(std::min(message.size(), kDebugTextLimit));
    for (std::size_t i = 0; i < message.size() && text.size() < kDebugTextLimit; ++i) {
        text += message[i];
        if (message[i] == '%' && i + 1 < message.size() && message[i + 1] == '%')
            ++i;
    }
    return text;
}

KoDebugOutput KoSetDebugOutput(KoDebugOutput output) { return gDebugOutput.exchange(output); }

int Log(std::int32_t level, const char* message) { return Log(level, std::string_view(message ? message : "")); }

int Log(std::int32_t level, std::string_view message)
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    state.queue.push_back(KoLogString{level, String(message)});
    if (const KoDebugOutput output = gDebugOutput.load())
        output(KoDebugText(message).c_str());
    while (state.master != nullptr && !state.queue.empty()) {
        // Taken off the queue before it is written, so that a logger that logs itself cannot see it twice.
        const KoLogString next = std::move(state.queue.front());
        state.queue.pop_front();
        state.master->Write(next.level, next.text);
    }
    return static_cast<int>(state.queue.size());
}

void SetMasterLogger(KoMasterLogger* master)
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    state.master = master;
}

KoMasterLogger* GetMasterLogger()
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    return state.master;
}

std::string KoTomaProtokollPath() { return KoStateDirectory() + "/TomaProtokoll.log"; }

int KoTomaDebugLogger::Write(std::int32_t level, const String& text)
{
    std::string line = std::to_string(level) + " : ";
    line += text.View();
    line += '\n';
    // Opened per line for appending, so other programs can read (and the user delete) the file meanwhile.
    if (std::FILE* file = std::fopen(KoTomaProtokollPath().c_str(), "a")) {
        std::fwrite(line.data(), 1, line.size(), file);
        std::fclose(file);
    }
    return 0;
}

void InstallTomaDebugLogger()
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    if (state.master == nullptr || state.protocol != nullptr)
        return;
    state.protocol = new KoTomaDebugLogger();
    state.master->Attach(state.protocol);
    Log(4, "InstallTomaDebugLogger()");
}

void UninstallTomaDebugLogger()
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    if (state.master == nullptr || state.protocol == nullptr)
        return;
    Log(4, "UninstallTomaDebugLogger()");
    state.master->Detach(state.protocol);
    delete state.protocol;
    state.protocol = nullptr;
}

bool IsTomaDebugLoggerInstalled()
{
    LogState& state = State();
    std::lock_guard guard(state.lock);
    return state.protocol != nullptr;
}
