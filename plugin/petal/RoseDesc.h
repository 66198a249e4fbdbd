#pragma once

#include "kiv/KivString.h"

#include <string_view>

/// A free text on its way into the file; refers to the text, which must stay until it is written.
struct RoseDesc {
    std::string_view text;
};

/// The petal form of a documentation or other free text:
///
///     ""                     an empty text
///     "C:\\temp"             one line without double quotes, escaped
///                            otherwise a text block, nothing escaped:
///     |first line
///     |second "line"
///
/// A text block begins and ends with a bare LF, and its lines are separated by bare LFs; carriage returns stay where
/// they are.
[[nodiscard]] inline RoseDesc makeRoseDesc(const KivString& text)
{
    return {text.view()};
}
