#pragma once

#include "kiv/KivString.h"

#pragma GCC visibility push(default) // what the library exports

/// `text`, which is UTF-8, in the encoding of the process locale. Under the C locale the bytes pass unchanged. Throws
/// `KivException` (`BRIDGE_UNCONVERTIBLE_TEXT`) when the text is not UTF-8 or the encoding lacks a character of it.
[[nodiscard]] KivString utf8ToLocale(const KivString& text);

#pragma GCC visibility pop
