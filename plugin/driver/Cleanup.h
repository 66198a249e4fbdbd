#pragma once

/// Undoes what an export did besides writing: closes the file, clears the marks on enumeration types, forgets these
/// types, moves the packages back when the Logical View package was made for the export, and sets every number back
/// to 0. Does not fail.
void cleanup();
