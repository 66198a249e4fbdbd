#pragma once

#include <array>
#include <streambuf>

/// Stands behind `std::cout` while it lives, and keeps why the first write failed.
class StandardOutput : public std::streambuf {
public:
    StandardOutput();
    ~StandardOutput() override;
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    /// `errno` of the first write that failed; 0 when none did. After one nothing more is written.
    [[nodiscard]] int error() const { return firstError; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    std::streambuf* const before;
    std::array<char, std::size_t{64} * 1024> buffer;
    int firstError = 0;
};
