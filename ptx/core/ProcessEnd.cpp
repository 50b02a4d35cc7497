#include "ptx/core/ProcessEnd.h"

#include "protocol/FileNames.h"
#include "protocol/Printable.h"

#include <unistd.h>

#include <algorithm>
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
/// Those of faults in the program; SIGXCPU is the end of somebody's patience.
constexpr int CrashSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
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
    sigset_t mask{}; ///< of before
    const Rescue* rescue = nullptr;
    char marks[MostPath] = {};
    std::vector<char*> command; ///< begins the conversion anew, ends with null; empty when that is not to be
} state;

// What the pointers of the command point to.
std::vector<std::string> commandWords;

/// Calls only what a signal handler may.
void restoreFiles()
{
    ::unlink(state.unfinished);
    if (state.rescue)
        ::unlink(state.marks);
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
        return "the conversion crashed (SIGSEGV, signal 11) in stage ";
    case SIGBUS:
        return "the conversion crashed (SIGBUS, signal 7) in stage ";
    case SIGFPE:
        return "the conversion crashed (SIGFPE, signal 8) in stage ";
    case SIGILL:
        return "the conversion crashed (SIGILL, signal 4) in stage ";
    case SIGABRT:
        return "the conversion gave up (SIGABRT, signal 6) in stage ";
    case SIGXCPU:
        return "the conversion used up the processor time it was given (SIGXCPU, signal 24) in stage ";
    default:
        return "the conversion was ended by a signal in stage ";
    }
}

/// What another process sends is meant to end this one.
bool isOwnCrash(int signal, const siginfo_t& info)
{
    return isCrash(signal) && (info.si_code > 0 || info.si_pid == ::getpid());
}

/// Goes on as a fresh process of the same number, with the same files, limits and parent; returns if that fails.
void beginAnew(int signal)
{
    say(state.log, signalText(signal));
    say(state.log, stageWord(state.progress->stage()));
    say(state.log, "; it begins anew without what was at work\n");
    ::unlink(state.unfinished);
    ::sigprocmask(SIG_SETMASK, &state.mask, nullptr);
    ::execve("/proc/self/exe", state.command.data(), environ);
}

void onFatal(int signal, siginfo_t* info, void*)
{
    if (!state.command.empty() && isOwnCrash(signal, *info) && state.rescue->noteCrash())
        beginAnew(signal);
    sayEverywhere(protocol::LogErrorMark);
    sayEverywhere(signalText(signal));
    sayEverywhere(stageWord(state.progress->stage()));
    sayEverywhere("\n");
    restoreFiles();
    ::_exit(protocol::exitCodeOfSignal(signal));
}

void onStop(int)
{
    sayEverywhere(protocol::LogErrorMark);
    sayEverywhere("cancelled in stage ");
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

void handleFatal(int signal)
{
    struct sigaction action {
    };
    action.sa_sigaction = onFatal;
    action.sa_flags = SA_ONSTACK | SA_SIGINFO;
    sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void install(const Log& log, const Progress& progress, const std::string& unfinished)
{
    state.log = log.descriptor();
    state.progress = &progress;
    copyPath(state.unfinished, unfinished);
    ::sigprocmask(SIG_SETMASK, nullptr, &state.mask);
    giveHandlersAStack();
    for (const int signal : FatalSignals)
        handleFatal(signal);
    for (const int signal : StopSignals)
        handle(signal, onStop, SA_ONSTACK);
    // A write beyond a limit or into a closed pipe fails by its result.
    handle(SIGXFSZ, SIG_IGN, 0);
    handle(SIGPIPE, SIG_IGN, 0);
}

void beginAnewAfterCrash(const Rescue& rescue, std::vector<std::string> command)
{
    copyPath(state.marks, rescue.path());
    state.rescue = &rescue;
    commandWords = std::move(command);
    state.command.clear();
    for (std::string& word : commandWords)
        state.command.push_back(word.data());
    if (!state.command.empty())
        state.command.push_back(nullptr);
}

void crashForGood()
{
    state.command.clear();
    state.rescue = nullptr;
}

bool isCrash(int signal)
{
    return std::find(std::begin(CrashSignals), std::end(CrashSignals), signal) != std::end(CrashSignals);
}

void forget()
{
    for (const int signal : FatalSignals)
        handle(signal, SIG_DFL, 0);
    for (const int signal : StopSignals)
        handle(signal, SIG_DFL, 0);
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
    protocol::print(stderr, "ptxconvert: " + failure.message + '\n');
    restoreFiles();
    ::_exit(protocol::number(failure.code));
}

} // namespace ptx::core::processend
