#pragma once

#include "kiv/KivString.h"

#include <cstddef>
#include <string_view>

/// A free text on its way into the file; refers to the text, which must stay until it is written.
struct RoseDesc {
    std::string_view before; ///< stands right before the text; holds nothing special
    std::string_view text;
    std::string_view after; ///< stands right after the text; holds nothing special
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
    return {{}, text.view(), {}};
}

/// The same for a text in braces, as diagrams show constraints.
[[nodiscard]] inline RoseDesc makeBracedRoseDesc(const KivString& text)
{
    return {"{", text.view(), "}"};
}

/// How the lines of a text measure up: one line more than there are LFs; lengths in bytes, and every line after the
/// first counts the LF that begins it.
struct LineMeasure {
    std::size_t lines;
    std::size_t longest;
};
[[nodiscard]] LineMeasure measureLines(std::string_view text);
/// For the text as it is written.
[[nodiscard]] LineMeasure measureLines(RoseDesc desc);
/// Length in bytes of the text as it is written.
[[nodiscard]] std::size_t writtenLength(RoseDesc desc);
