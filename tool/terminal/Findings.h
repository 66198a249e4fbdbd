#pragma once

#include "reader/document/Document.h"

#include <string>
#include <string_view>

// What is wrong with Rose files, as the commands say it.

/// `FILE:LINE:COLUMN: SEVERITY: TEXT` without a line end, as standard output or standard error (`descriptor`) shows it.
[[nodiscard]] std::string lineOf(const reader::Finding& finding, int descriptor);

/// Says what was wrong with the text of the files on standard error.
void reportFaults(const reader::Document& document);
/// And which units are missing.
void reportFindings(const reader::Document& document);
