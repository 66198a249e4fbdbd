#include "render/painting/Warnings.h"

#include "render/paper/Image.h"

#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace render {

namespace {

thread_local std::string firstWarning;

std::string messageIn(const GLogField* fields, gsize count)
{
    for (gsize i = 0; i < count; ++i)
        if (std::string_view(fields[i].key) == "MESSAGE" && fields[i].length < 0)
            return static_cast<const char*>(fields[i].value);
    return "a font or picture library warns";
}

// GLib ends the process where it cannot go on, by a signal and a message for programmers. This says the reason alone,
// and what watches for the end of the process the rest.
[[noreturn]] void giveUp(const std::string& reason)
{
    std::fprintf(stderr, "petal: texts cannot be drawn: %s\n", g_strescape(reason.c_str(), nullptr));
    std::quick_exit(EXIT_FAILURE);
}

GLogWriterOutput keep(GLogLevelFlags level, const GLogField* fields, gsize count, void* data)
{
    if ((level & (G_LOG_LEVEL_ERROR | G_LOG_FLAG_FATAL)) != 0)
        giveUp(messageIn(fields, count));
    if ((level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL)) == 0)
        return g_log_writer_default(level, fields, count, data);
    if (firstWarning.empty())
        firstWarning = messageIn(fields, count);
    return G_LOG_WRITER_HANDLED;
}

} // namespace

void keepWarnings()
{
    static std::once_flag once; // GLib takes no second one
    std::call_once(once, [] { g_log_set_writer_func(keep, nullptr, nullptr); });
    firstWarning.clear();
}

void throwIfWarned()
{
    if (!firstWarning.empty())
        throw ImageError(std::exchange(firstWarning, {}));
}

} // namespace render
