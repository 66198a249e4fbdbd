#include "tool/output/Ending.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

// The names of the files to remove, as a signal handler can read them.
constexpr std::size_t mostFiles = 8;
std::array<std::atomic<const char*>, mostFiles> namesToRemove;

std::atomic<bool> isRunning = false;

constexpr std::array endingSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM,   SIGALRM,
                                      SIGUSR1, SIGUSR2, SIGXCPU, SIGVTALRM, SIGPROF};
// What a fault in the process raises, and libraries that give up.
constexpr std::array faultSignals = {SIGABRT, SIGTRAP, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGSYS};

// A handler has this stack when the fault is that the usual one is full.
std::array<char, std::size_t{64} * 1024> handlerStack;

void removeFiles()
{
    for (const auto& name : namesToRemove)
        if (const char* const path = name.load())
            unlink(path);
}

void say(std::string_view message)
{
    [[maybe_unused]] const ssize_t count = write(STDERR_FILENO, message.data(), message.size());
}

// The default disposition is back (SA_RESETHAND): the process ends as the sender expects.
void removeFilesAndEnd(int signal)
{
    removeFiles();
    raise(signal);
}

void tellFaultAndEnd(int signal)
{
    removeFiles();
    const char* const description = sigdescr_np(signal);
    say("petal: ended by a fault of its own or of a library: ");
    say(description ? description : "unknown");
    say("\n");
    raise(signal);
}

// Libraries may end the process as if all were well, or as if the message were theirs to give.
void tellUnexpectedEnd()
{
    if (!isRunning)
        return;
    removeFiles();
    say("petal: ended by a library that gave up\n");
    _exit(EXIT_FAILURE);
}

void replaceInList(const char* from, const char* to)
{
    for (auto& name : namesToRemove)
        if (name.load() == from) {
            name.store(to);
            return;
        }
}

// Unless whoever started the command wants it to go on, or somebody else watches for faults.
void handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER | SA_ONSTACK);
    sigfillset(&action.sa_mask);
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_DFL)
        sigaction(signal, &action, nullptr);
}

} // namespace

void occupyStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongDirection = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(stream, F_GETFD) >= 0 || open("/dev/null", wrongDirection) == stream)
            continue;
        say("petal: a standard stream is closed, and /dev/null cannot be opened in its place\n");
        _exit(EXIT_FAILURE);
    }
}

void watchForTheEnd()
{
    stack_t stack = {};
    sigaltstack(nullptr, &stack);
    if ((static_cast<unsigned>(stack.ss_flags) & SS_DISABLE) != 0) { // nobody else watches for faults
        stack = {handlerStack.data(), 0, handlerStack.size()};
        sigaltstack(&stack, nullptr);
    }
    for (const int signal : endingSignals)
        handle(signal, removeFilesAndEnd);
    for (const int signal : faultSignals)
        handle(signal, tellFaultAndEnd);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    isRunning = true;
    std::atexit(tellUnexpectedEnd);
    std::at_quick_exit(tellUnexpectedEnd);
}

void endIsNear()
{
    isRunning = false;
}

SignalBlock::SignalBlock()
{
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
}

SignalBlock::~SignalBlock()
{
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

void removeAtEnd(const char* path)
{
    replaceInList(nullptr, path);
}

void keepAtEnd(const char* path)
{
    replaceInList(path, nullptr);
}
