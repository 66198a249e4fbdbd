#pragma once

#include "kiv/KivString.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

/// How a failed comparison shows a text.
inline void PrintTo(const KivString& text, std::ostream* out)
{
    *out << testing::PrintToString(std::string(text.view()));
}
