#pragma once

#include "support/Process.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
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
    std::array<char, 65536> shown;
    pollfd arrival = {terminal, POLLIN, 0};
    const int patience = 300; // milliseconds, in which what was written comes through
    const ssize_t count = poll(&arrival, 1, patience) == 1 ? read(terminal, shown.data(), shown.size()) : 0;
    close(keptOpen);
    close(terminal);
    std::string text(shown.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    std::erase(text, '\r');
    return text;
}
