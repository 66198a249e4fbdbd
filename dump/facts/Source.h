#pragma once

#include "dump/facts/Elements.h"
#include "reader/index/Index.h"

#include <string>

namespace dump {

/// What is dumped. All of it must stay while it is.
struct Source {
    const reader::Document& document;
    const reader::Index& index;
    const Elements& elements;
    std::string program; ///< that makes the dump: its name and version
};

} // namespace dump
