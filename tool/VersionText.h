#pragma once

#include <string>

/// What `--version` says: the version on the first line, then what a fault report needs: how the command was built,
/// what it uses, and who holds the rights.
[[nodiscard]] std::string versionText();
