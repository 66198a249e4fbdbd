#pragma once

/// Compare two elements by position, for `qsort` over arrays of element pointers: `a` and `b` point at array slots
/// that hold pointers to attributes (`KivAttribute*`) or arguments (`KivArgument*`), not null. The result is -1, 0
/// or 1.
__attribute__((visibility("default"))) int compareAttributePos(const void* a, const void* b);
__attribute__((visibility("default"))) int compareArgumentPos(const void* a, const void* b);
