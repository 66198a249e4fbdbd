#pragma once

#include <cstddef>
#include <functional>

/// The steps that the processor takes for `work`, one for each instruction: what a clock would only tell on an idle
/// machine. Zero where they cannot be counted.
[[nodiscard]] std::size_t stepsOf(const std::function<void()>& work);
