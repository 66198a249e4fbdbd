#pragma once

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

struct ProcessSetup {
    std::string program;
    std::vector<std::string> arguments;
    std::filesystem::path folder; ///< where it starts
    std::string input = {};
    std::function<void()> prepare = {}; ///< called in the new process, when its streams are in place
};

struct ProcessResult {
    int exitCode = -1; ///< -1 when a signal ended the process
    int signal = 0;
    std::string output = {};
    std::string errors = {};
};

/// A program that runs beside the test, its standard streams connected. It is killed when nobody waited for it.
class Process {
public:
    explicit Process(const ProcessSetup& setup)
    {
        const int input = memfd_create("input", MFD_CLOEXEC);
        requireSuccess(input);
        requireSuccess(::write(input, setup.input.data(), setup.input.size()));
        requireSuccess(lseek(input, 0, SEEK_SET));
        std::array<int, 2> output;
        std::array<int, 2> errors;
        requireSuccess(pipe2(output.data(), O_CLOEXEC));
        requireSuccess(pipe2(errors.data(), O_CLOEXEC));
        std::vector<char*> arguments = {const_cast<char*>(setup.program.c_str())};
        for (const std::string& argument : setup.arguments)
            arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        id = fork();
        requireSuccess(id);
        if (id == 0) {
            for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE, SIGXFSZ})
                std::signal(signal, SIG_DFL);
            dup2(input, STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            dup2(errors[1], STDERR_FILENO);
            if (chdir(setup.folder.c_str()) == 0) {
                if (setup.prepare)
                    setup.prepare();
                execv(setup.program.c_str(), arguments.data());
            }
            _exit(127);
        }
        for (const int descriptor : {input, output[1], errors[1]})
            close(descriptor);
        streams = {{{output[0], POLLIN, 0}, {errors[0], POLLIN, 0}}};
    }
    ~Process()
    {
        if (id > 0) {
            kill(SIGKILL);
            waitpid(id, nullptr, 0);
        }
        for (const pollfd& stream : streams)
            close(stream.fd);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void kill(int signal) const { ::kill(id, signal); }

    ProcessResult wait()
    {
        ProcessResult result;
        const std::array<std::string*, 2> texts = {&result.output, &result.errors};
        while (streams[0].fd >= 0 || streams[1].fd >= 0) {
            requireSuccess(poll(streams.data(), streams.size(), -1));
            for (std::size_t i = 0; i < streams.size(); ++i) {
                if (streams[i].revents == 0)
                    continue;
                std::array<char, 65536> piece;
                const ssize_t count = read(streams[i].fd, piece.data(), piece.size());
                requireSuccess(count);
                texts[i]->append(piece.data(), static_cast<std::size_t>(count));
                if (count == 0)
                    close(std::exchange(streams[i].fd, -1));
            }
        }
        int status = 0;
        requireSuccess(waitpid(std::exchange(id, 0), &status, 0));
        if (WIFEXITED(status))
            result.exitCode = WEXITSTATUS(status);
        else
            result.signal = WTERMSIG(status);
        return result;
    }

private:
    static void requireSuccess(ssize_t result)
    {
        if (result < 0)
            throw std::system_error(errno, std::generic_category());
    }

    pid_t id = 0;
    std::array<pollfd, 2> streams = {};
};

inline ProcessResult runProcess(const ProcessSetup& setup)
{
    return Process(setup).wait();
}
