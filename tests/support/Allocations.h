#pragma once

#include <cstddef>

/// The memory that the program and its libraries ask for through `operator new`, counted and, if wanted, refused.

/// Number of allocations so far.
[[nodiscard]] std::size_t allocationCount() noexcept;
/// Bytes that have not been given back.
[[nodiscard]] std::size_t bytesInUse() noexcept;

enum class Shortage { Once, FromThereOn };

/// As long as it lives, the allocation after `before` others throws `std::bad_alloc`, or all from there on.
class RefusedAllocation {
public:
    explicit RefusedAllocation(std::size_t before, Shortage shortage = Shortage::Once) noexcept;
    ~RefusedAllocation();
    RefusedAllocation(const RefusedAllocation&) = delete;
    RefusedAllocation& operator=(const RefusedAllocation&) = delete;

    /// Whether one has been refused.
    [[nodiscard]] bool happened() const noexcept;
};
