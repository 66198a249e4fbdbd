#include "tool/commands/Git.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace {

[[noreturn]] void failWithGit(int error)
{
    throw std::system_error(error, std::generic_category(), "git");
}

// What was to be done in the new process before it runs; gives back what it holds.
class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&actions); }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    [[nodiscard]] posix_spawn_file_actions_t* get() { return &actions; }

private:
    posix_spawn_file_actions_t actions{};
};

// Closes both ends.
class Pipe {
public:
    Pipe()
    {
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            failWithGit(errno);
    }
    ~Pipe()
    {
        ::close(ends[0]);
        closeWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    [[nodiscard]] int reading() const { return ends[0]; }
    [[nodiscard]] int writing() const { return ends[1]; }
    void closeWriting()
    {
        if (ends[1] >= 0)
            ::close(ends[1]);
        ends[1] = -1;
    }

private:
    std::array<int, 2> ends{-1, -1};
};

std::string allOf(int descriptor)
{
    std::string text;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

int exitCodeOf(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            failWithGit(errno);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
}

} // namespace

GitResult runGit(const std::vector<std::string>& arguments)
{
    std::vector<std::string> words = {"git"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    Pipe pipe;
    SpawnActions actions;
    posix_spawn_file_actions_adddup2(actions.get(), pipe.writing(), STDOUT_FILENO);
    pid_t process = 0;
    if (const int error = posix_spawnp(&process, "git", actions.get(), nullptr, pointers.data(), environ); error != 0)
        failWithGit(error);
    pipe.closeWriting();
    GitResult result;
    result.output = allOf(pipe.reading());
    result.exitCode = exitCodeOf(process);
    while (result.output.ends_with('\n'))
        result.output.pop_back();
    return result;
}
