#pragma once

#include <cstddef>

/// The memory that the program and its libraries ask for through `operator new`, counted and, if wanted, refused.

/// Number of allocations so far.
[[nodiscard]] std::size_t allocationCount() noexcept;
/// Bytes asked for so far.
[[nodiscard]] std::size_t allocatedBytes() noexcept;

/// As long as it lives, one allocation throws `std::bad_alloc`: the one after `before` others.
class RefusedAllocation {
public:
    explicit RefusedAllocation(std::size_t before) noexcept;
    ~RefusedAllocation();
    RefusedAllocation(const RefusedAllocation&) = delete;
    RefusedAllocation& operator=(const RefusedAllocation&) = delete;

    /// Whether it has been refused.
    [[nodiscard]] bool happened() const noexcept;
};
