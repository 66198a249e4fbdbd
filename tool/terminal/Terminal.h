#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Whether messages go to a terminal.
[[nodiscard]] bool isErrorTerminal();

/// Its width in columns; 80 where it does not tell.
[[nodiscard]] std::size_t terminalWidth();

/// Whether messages have colours: on a terminal unless NO_COLOR or TERM=dumb says otherwise, or always, or never.
enum class ColourUse { automatic, always, never };
void useColours(ColourUse use);

/// Whether what is written to standard output or standard error (`descriptor`) has colours.
[[nodiscard]] bool hasColours(int descriptor);

/// A message as standard output or standard error (`descriptor`) shows it: with a colour for the `error: `, `warning: `
/// or `note: ` that it begins with, where there are colours.
[[nodiscard]] std::string inColour(std::string_view message, int descriptor);

/// A line of a text (from 1) with its number, and below it a caret at one of its characters (from 1). Of a line that is
/// wider than `width` the part around that character is shown; nothing in it steers a terminal.
[[nodiscard]] std::string excerptAt(std::string_view text, std::size_t line, std::size_t column, std::size_t width);
