#pragma once

#include "kiv/KivString.h"

/// Where a line starts.
struct Indentation {
    int depth = 0; ///< nesting level

    /// CR LF, which ends the line before, and a tab for each level.
    [[nodiscard]] KivString text() const;
};

extern Indentation indent;

/// Back to depth 0.
inline void resetIndent()
{
    indent.depth = 0;
}
inline void increaseIndent()
{
    ++indent.depth;
}
/// Stays at depth 0 when it is there.
inline void decreaseIndent()
{
    if (indent.depth > 0)
        --indent.depth;
}
