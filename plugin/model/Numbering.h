#pragma once

#include "kiv/KivPackage.h"

/// Gives every model object its number (`pid`) on leaving it, so that contents come before what holds them, and
/// reserves its block of numbers (`NumberBlocks.h`). A model object is what says so, a host's own class too.
class KivSetPID final : public KivTraversalOperation {
public:
    explicit KivSetPID(long first) : KivTraversalOperation(Calls::onLeavingOnly), counter(first) {}
    void post_process(KivObject* object, void* context) override;

    /// The next number.
    long counter;
    /// Class diagrams met so far.
    long diagramCount = 0;
};

/// Sets the number of every model object back to 0.
class KivZeroPID final : public KivTraversalOperation {
public:
    KivZeroPID() : KivTraversalOperation(Calls::onLeavingOnly) {}
    void post_process(KivObject* object, void* context) override;
};

/// The low 32 bits of a number, read as signed: what view numbers and offsets are made of.
[[nodiscard]] constexpr int lowBits(long number) noexcept
{
    return static_cast<int>(static_cast<unsigned>(static_cast<unsigned long>(number)));
}
