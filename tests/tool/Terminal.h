#pragma once

#include "support/Process.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

/// Runs a program whose standard error is a terminal of that many columns; gives what that shows, with plain line ends.
inline std::string shownOnTerminal(ProcessSetup setup, unsigned short columns)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const winsize size = {24, columns, 0, 0};
    ioctl(terminal, TIOCSWINSZ, &size);
    const std::string other = ptsname(terminal);
    const int keptOpen = open(other.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC); // or what is written can be lost
    setup.prepare = [&, prepare = setup.prepare] {
        if (prepare)
            prepare();
        dup2(open(other.c_str(), O_RDWR | O_NOCTTY), STDERR_FILENO);
    };
    EXPECT_NE(runProcess(setup).exitCode, 127);
    // What a terminal was given comes through piece by piece: up to a mark behind everything.
    constexpr char mark = '\x1E';
    EXPECT_EQ(write(keptOpen, &mark, 1), 1);
    std::string text;
    std::array<char, 4096> piece;
    pollfd arrival = {terminal, POLLIN, 0};
    constexpr int patience = 10'000; // milliseconds
    while (!text.ends_with(mark) && poll(&arrival, 1, patience) == 1) {
        const ssize_t count = read(terminal, piece.data(), piece.size());
        if (count <= 0)
            break;
        text.append(piece.data(), static_cast<std::size_t>(count));
    }
    EXPECT_TRUE(text.ends_with(mark));
    close(keptOpen);
    close(terminal);
    std::erase_if(text, [](char c) { return c == '\r' || c == mark; });
    return text;
}
