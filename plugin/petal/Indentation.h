#pragma once

#include "kiv/KivString.h"

/// Where a line starts.
struct Indentation {
    int depth = 0;           ///< nesting level
    KivString text = "\r\n"; ///< CR LF, which ends the line before, and a tab for each level
};

extern Indentation indent;

/// Back to depth 0.
void resetIndent();
void increaseIndent();
/// Stays at depth 0 when it is there.
void decreaseIndent();
