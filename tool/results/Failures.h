#pragma once

#include "tool/terminal/Reporting.h"

#include <functional>
#include <stdexcept>
#include <string>

// How the commands end when something goes wrong.

/// The command line names files that do not go together.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Hands on what was written to standard output: `exitCode`, or `failure` after a message when it did not arrive. A
/// reader that wants no more of it is told nothing.
[[nodiscard]] int endOfOutput(int exitCode, int failure);

/// Runs `work`, which reads `input` and writes `output`, and reports what it throws. Returns the exit code.
[[nodiscard]] int reportFailures(const std::string& input, const std::string& output, const std::function<int()>& work);
