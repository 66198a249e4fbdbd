#include "loading/Loading.h"

#include <dlfcn.h>
#include <stdexcept>
#include <string>

namespace loading {

namespace {

[[noreturn]] void fail(const char* library)
{
    const char* const reason = dlerror();
    throw NotLoaded(std::string(library) + " cannot be loaded: " + (reason ? reason : "unknown reason"));
}

} // namespace

// Nothing closes the library: those below it do not all survive that, and what was thrown in it may still be caught.
const void* addressIn(const char* library, const char* name)
{
    void* const opened = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (!opened)
        fail(library);
    const void* const address = dlsym(opened, name);
    if (!address)
        fail(library);
    return address;
}

} // namespace loading
