#pragma once

#include "kiv/KivPackage.h"

#include <string>

/// The Rose file of a model, with the names of types as they are. Throws `KivException` and `std::system_error`.
[[nodiscard]] std::string roseTextOf(KivModel& model);
