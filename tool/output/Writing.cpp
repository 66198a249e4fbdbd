#include "tool/output/Writing.h"

#include <cerrno>
#include <unistd.h>

void failWith(const std::string& name)
{
    throw std::system_error(errno, std::generic_category(), name);
}

void writeAll(int descriptor, std::string_view text, const std::string& name)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EPIPE)
            throw PipeClosed(errno, std::generic_category(), name);
        if (count < 0)
            failWith(name);
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}
