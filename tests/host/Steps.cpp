#include "Steps.h"

#include <csignal>
#include <malloc.h>

#ifdef __x86_64__

namespace {

volatile std::size_t steps = 0;

void countStep(int /*signal*/)
{
    steps = steps + 1;
}

// With the trap flag set the processor raises the signal after every instruction.
void setTrapFlag(bool isSet)
{
    constexpr unsigned long long trapFlag = 0x100;
    const unsigned long long flags = __builtin_ia32_readeflags_u64();
    __builtin_ia32_writeeflags_u64(isSet ? flags | trapFlag : flags & ~trapFlag);
}

} // namespace

std::size_t stepsOf(const std::function<void()>& work)
{
    struct sigaction counting = {};
    struct sigaction before = {};
    counting.sa_handler = countStep;
    malloc_trim(0); // else the allocator puts its house in order when it likes
    sigaction(SIGTRAP, &counting, &before);
    steps = 0;
    setTrapFlag(true);
    work();
    setTrapFlag(false);
    sigaction(SIGTRAP, &before, nullptr);
    return steps;
}

#else

std::size_t stepsOf(const std::function<void()>& work)
{
    work();
    return 0;
}

#endif
