#include "TemporaryFile.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace {

// The names of the files to remove, as a signal handler can read them.
constexpr std::size_t mostFiles = 8;
std::array<std::atomic<const char*>, mostFiles> namesToRemove;

constexpr std::array endingSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM,   SIGALRM,
                                      SIGUSR1, SIGUSR2, SIGXCPU, SIGVTALRM, SIGPROF};

void removeFilesAndEnd(int signal)
{
    for (const auto& name : namesToRemove)
        if (const char* const path = name.load())
            unlink(path);
    // The default disposition is back (SA_RESETHAND): the process ends as the sender expects.
    raise(signal);
}

// Keeps signals away while a file and its name in the list come or go together.
class SignalBlock {
public:
    SignalBlock()
    {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &before);
    }
    ~SignalBlock() { sigprocmask(SIG_SETMASK, &before, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t before;
};

void replaceInList(const char* from, const char* to)
{
    for (auto& name : namesToRemove)
        if (name.load() == from) {
            name.store(to);
            return;
        }
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& folder) : name(folder + "/.petal-XXXXXX")
{
    const SignalBlock block;
    fd = mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0)
        throw std::system_error(errno, std::generic_category(), folder);
    replaceInList(nullptr, name.c_str());
}

TemporaryFile::~TemporaryFile()
{
    const SignalBlock block;
    if (!name.empty()) {
        unlink(name.c_str());
        replaceInList(name.c_str(), nullptr);
    }
    close(fd);
}

void TemporaryFile::renameTo(const std::string& target)
{
    const SignalBlock block;
    if (std::rename(name.c_str(), target.c_str()) != 0)
        throw std::system_error(errno, std::generic_category(), target);
    replaceInList(name.c_str(), nullptr);
    name.clear();
}

void occupyStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const int wrongDirection = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", wrongDirection) != stream)
            std::abort();
    }
}

void handleSignals()
{
    struct sigaction remove = {};
    remove.sa_handler = removeFilesAndEnd;
    remove.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    sigfillset(&remove.sa_mask);
    for (const int signal : endingSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // whoever started the command wants it to go on
            sigaction(signal, &remove, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
