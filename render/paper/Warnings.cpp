#include "render/paper/Warnings.h"

#include "render/paper/Image.h"

#include <glib.h>

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

GLogWriterOutput keep(GLogLevelFlags level, const GLogField* fields, gsize count, void* data)
{
    const bool isWarning = (level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL)) != 0;
    if (!isWarning || (level & G_LOG_FLAG_FATAL) != 0)
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
