// Loads the plug-in named on the command line into a program that was not linked with it, and lets go of it again,
// a hundred times: nothing in the plug-in may need a second library by path, or keep the plug-in in the process.

#include <cstdlib>
#include <dlfcn.h>
#include <iostream>

namespace {

bool fail(const char* what)
{
    const char* const reason = dlerror();
    std::cerr << "plugin-loader: " << what << (reason ? ": " : "") << (reason ? reason : "") << '\n';
    return false;
}

bool loadAndUnload(const char* plugin)
{
    void* const library = dlopen(plugin, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return fail("the plug-in cannot be loaded");
    if (dlclose(library) != 0)
        return fail("the plug-in cannot be closed");
    if (dlopen(plugin, RTLD_NOW | RTLD_NOLOAD))
        return fail("the plug-in stays in the process after it was closed");
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    for (int i = 0; i < 100; ++i)
        if (!loadAndUnload(argv[1]))
            return EXIT_FAILURE;
    return EXIT_SUCCESS;
}
