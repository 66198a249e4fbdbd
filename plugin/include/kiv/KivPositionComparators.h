#pragma once

#pragma GCC visibility push(default) // what the library exports

/// Compare two elements by position, for `qsort` over arrays of element pointers: `a` and `b` point at array slots
/// that hold pointers to attributes (`KivAttribute*`) or arguments (`KivArgument*`), not null. The result is -1, 0
/// or 1.
int compareAttributePos(const void* a, const void* b);
int compareArgumentPos(const void* a, const void* b);

#pragma GCC visibility pop
