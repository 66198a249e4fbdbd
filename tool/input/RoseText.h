#pragma once

#include "kiv/KivPackage.h"

#include <string>
#include <string_view>

/// The Rose file of a model; `typeSystem` is the text of a value of the option for names of types. Throws
/// `KivException` and `std::system_error`.
[[nodiscard]] std::string roseTextOf(KivModel& model, std::string_view typeSystem);
