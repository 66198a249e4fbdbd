#pragma once

#include "kiv/KivMessages.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

/// The host's log as a command keeps it: a line a message in a file if one is wanted; the package at work is shown as
/// progress.
class CommandLog : public KivLog {
public:
    using Clock = std::chrono::steady_clock;

    /// `path` is empty for no file and `-` for standard error. Throws `std::system_error` when it cannot be opened.
    explicit CommandLog(const std::string& path);
    ~CommandLog() override;

    void add(const KivLogEntry& entry) override;
    /// Throws `std::system_error` when a message did not get into the file.
    void close();
    /// When the first package began; not set before.
    [[nodiscard]] std::optional<Clock::time_point> firstProgress() const { return begin; }
    /// Whether the file's view numbers repeat.
    [[nodiscard]] bool sawWrap() const { return wrap; }

private:
    std::string name;
    std::FILE* file = nullptr;
    bool wrap = false;
    std::optional<Clock::time_point> begin;
};
