#include "Allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::size_t count = 0;
std::size_t bytes = 0;
std::size_t refused = never;

} // namespace

// The forms without an alignment; those for arrays come here too.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    bytes += size;
    return count++ == refused ? nullptr : std::malloc(size);
}

void* operator new(std::size_t size)
{
    if (void* const block = operator new(size, std::nothrow))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

// Without a declaration by the language, as with some compilers, this would be hidden from the libraries.
[[gnu::visibility("default")]] void operator delete(void* block, std::size_t /*size*/) noexcept
{
    std::free(block);
}

std::size_t allocationCount() noexcept
{
    return count;
}

std::size_t allocatedBytes() noexcept
{
    return bytes;
}

RefusedAllocation::RefusedAllocation(std::size_t before) noexcept
{
    refused = count + before;
}

RefusedAllocation::~RefusedAllocation()
{
    refused = never;
}

bool RefusedAllocation::happened() const noexcept
{
    return count > refused;
}
