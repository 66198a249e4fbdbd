#pragma once

namespace render {

/// Ends the objects of the libraries that draw, each kind by its own function.
template <auto release>
struct Releaser {
    template <typename T>
    void operator()(T* object) const
    {
        release(object);
    }
};

} // namespace render
