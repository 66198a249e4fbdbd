#pragma once

#include <string_view>

// The last line of the terminal, on which a command that takes long says where it is.

/// From here on nothing is shown.
void forbidProgress();

/// Whether a text would be shown now: messages go to a terminal, the process has taken a second already, and the last
/// text stands there for a while.
[[nodiscard]] bool isProgressDue();

/// Shows `text` when it is due, shortened to the width of the terminal.
void showProgress(std::string_view text);

/// Wipes the line; to be called before something else is written to the terminal.
void clearProgress();
