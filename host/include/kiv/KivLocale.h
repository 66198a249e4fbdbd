#pragma once

#include "kiv/KivString.h"

/// `text`, which is UTF-8, in the encoding of the process locale. Under the C locale the bytes pass unchanged. Throws
/// `KivException` (`BRIDGE_UNCONVERTIBLE_TEXT`) when the text is not UTF-8 or the encoding lacks a character of it.
[[nodiscard]] __attribute__((visibility("default"))) KivString utf8ToLocale(const KivString& text);
