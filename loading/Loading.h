#pragma once

#include <stdexcept>

namespace loading {

/// A library that cannot be opened; `what()` says which and why.
class NotLoaded : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The address of what the library of this file name shows as `name`. The library is looked for where the program looks
/// for its own, and stays open until the program ends. Throws NotLoaded.
[[nodiscard]] const void* addressIn(const char* library, const char* name);

/// The functions of a library, which it shows as a constant of this type.
template <typename Functions>
[[nodiscard]] const Functions& functionsOf(const char* library, const char* name)
{
    return *static_cast<const Functions*>(addressIn(library, name));
}

} // namespace loading
