#pragma once

#include "tool/commands/Commands.h"

#include "reader/index/Index.h"

#include <string>

// The diagrams of petal files, as their users name them.

/// With the packages around it: `Logical View::Orders::Main`.
[[nodiscard]] std::string fullNameOf(const reader::Diagram& diagram, const reader::Index& index);

/// Prints the diagrams of all files, a line each or as JSON. Gives the exit code.
[[nodiscard]] int listDiagrams(const DrawRequest& request);
