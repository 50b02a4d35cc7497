#include "ptx/core/ProcessEnd.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace ptx::core::processend
{

namespace
{

constexpr int FatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGXCPU};
constexpr int StopSignals[] = {SIGTERM, SIGINT, SIGHUP};
constexpr std::size_t HandlerStack = std::size_t{64} * 1024;

constexpr std::size_t MostPath = 4096;

// Read by the handlers. What may change once they are installed counts when the flag says so.
struct {
    int log = -1;
    const Progress* progress = nullptr;
    char unfinished[MostPath] = {};
    char aside[MostPath] = {};
    char place[MostPath] = {};
    std::atomic<bool> putsBack = false;
} state;

/// Calls only what a signal handler may.
void restoreFiles()
{
    ::unlink(state.unfinished);
    if (state.putsBack)
        ::rename(state.aside, state.place);
}

void copyPath(char (&target)[MostPath], const std::string& path)
{
    std::snprintf(target, sizeof target, "%s", path.c_str());
}

void say(int descriptor, const char* text)
{
    if (descriptor >= 0) [[maybe_unused]]
        const auto written = ::write(descriptor, text, std::strlen(text));
}

void sayEverywhere(const char* text)
{
    say(state.log, text);
    say(STDERR_FILENO, text);
}

const char* signalText(int signal)
{
    switch (signal) {
    case SIGSEGV:
        return "Error: the conversion crashed (SIGSEGV, signal 11) in stage ";
    case SIGBUS:
        return "Error: the conversion crashed (SIGBUS, signal 7) in stage ";
    case SIGFPE:
        return "Error: the conversion crashed (SIGFPE, signal 8) in stage ";
    case SIGILL:
        return "Error: the conversion crashed (SIGILL, signal 4) in stage ";
    case SIGABRT:
        return "Error: the conversion gave up (SIGABRT, signal 6) in stage ";
    case SIGXCPU:
        return "Error: the conversion used up the processor time it was given (SIGXCPU, signal 24) in stage ";
    default:
        return "Error: the conversion was ended by a signal in stage ";
    }
}

void onFatal(int signal)
{
    sayEverywhere(signalText(signal));
    sayEverywhere(stageWord(state.progress->stage()));
    sayEverywhere("\n");
    restoreFiles();
    ::_exit(protocol::exitCodeOfSignal(signal));
}

void onStop(int)
{
    sayEverywhere("Error: cancelled in stage ");
    sayEverywhere(stageWord(state.progress->stage()));
    sayEverywhere("\n");
    restoreFiles();
    ::_exit(protocol::number(ExitCode::Cancelled));
}

// An overflown stack has no room for the handler.
void giveHandlersAStack()
{
    static std::vector<char> memory(HandlerStack);
    stack_t stack{};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    ::sigaltstack(&stack, nullptr);
}

void handle(int signal, void (*handler)(int), int flags)
{
    struct sigaction action {
    };
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void install(const Log& log, const Progress& progress, const std::string& unfinished)
{
    state.log = log.descriptor();
    state.progress = &progress;
    copyPath(state.unfinished, unfinished);
    giveHandlersAStack();
    for (const int signal : FatalSignals)
        handle(signal, onFatal, SA_ONSTACK);
    for (const int signal : StopSignals)
        handle(signal, onStop, SA_ONSTACK);
    // A write beyond a limit or into a closed pipe fails by its result.
    handle(SIGXFSZ, SIG_IGN, 0);
    handle(SIGPIPE, SIG_IGN, 0);
}

void putBack(const std::string& aside, const std::string& place)
{
    state.putsBack = false;
    copyPath(state.aside, aside);
    copyPath(state.place, place);
    state.putsBack = !aside.empty();
}

void outputStands()
{
    for (const int signal : StopSignals)
        handle(signal, SIG_IGN, 0);
}

void end(Log& log, const Failure& failure)
{
    log.error(failure.message);
    std::fprintf(stderr, "ptxconvert: %s\n", failure.message.c_str());
    restoreFiles();
    ::_exit(protocol::number(failure.code));
}

} // namespace ptx::core::processend
