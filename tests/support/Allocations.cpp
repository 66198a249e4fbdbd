#include "support/Allocations.h"

#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <new>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::size_t count = 0;
std::size_t inUse = 0;
std::size_t firstRefused = never;
std::size_t lastRefused = never;

} // namespace

// The forms without an alignment, and those for arrays, since a sanitizer would bring the ones that are missing and
// tell them apart.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    const std::size_t number = count++;
    if (number >= firstRefused && number <= lastRefused)
        return nullptr;
    void* const block = std::malloc(size != 0 ? size : 1);
    inUse += malloc_usable_size(block);
    return block;
}

void* operator new(std::size_t size)
{
    if (void* const block = operator new(size, std::nothrow))
        return block;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void operator delete(void* block) noexcept
{
    inUse -= malloc_usable_size(block);
    std::free(block);
}

void operator delete[](void* block) noexcept
{
    operator delete(block);
}

// Without a declaration by the language, as with some compilers, these would be hidden from the libraries.
[[gnu::visibility("default")]] void operator delete(void* block, std::size_t /*size*/) noexcept
{
    operator delete(block);
}

[[gnu::visibility("default")]] void operator delete[](void* block, std::size_t /*size*/) noexcept
{
    operator delete(block);
}

std::size_t allocationCount() noexcept
{
    return count;
}

std::size_t bytesInUse() noexcept
{
    return inUse;
}

RefusedAllocation::RefusedAllocation(std::size_t before, Shortage shortage) noexcept
{
    firstRefused = count + before;
    lastRefused = shortage == Shortage::Once ? firstRefused : never - 1;
}

RefusedAllocation::~RefusedAllocation()
{
    firstRefused = lastRefused = never;
}

bool RefusedAllocation::happened() const noexcept
{
    return count > firstRefused;
}
