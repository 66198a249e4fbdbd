#include "tool/terminal/CommandLog.h"

#include "tool/output/OutputTarget.h"
#include "tool/output/Writing.h"
#include "tool/terminal/Progress.h"

#include "text/Utf8.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace {

// A file begins anew; what is open already, as behind /dev/stderr, goes on where it is.
std::FILE* openLog(const std::string& path)
{
    const OutputTarget target(path);
    if (target.descriptor() < 0)
        return std::fopen(target.path().c_str(), "we");
    const int descriptor = fcntl(target.descriptor(), F_DUPFD_CLOEXEC, 0);
    return descriptor < 0 ? nullptr : fdopen(descriptor, "we");
}

} // namespace

CommandLog::CommandLog(const std::string& path) : name(path)
{
    if (path.empty())
        return;
    file = path == "-" ? stderr : openLog(path);
    if (!file)
        failWith(path);
}

CommandLog::~CommandLog()
{
    if (file && file != stderr)
        std::fclose(file);
}

void CommandLog::add(const KivLogEntry& entry)
{
    if (&entry.identifier == &ROS_E_VIEW_NUMBERS_WRAP)
        wrap = true;
    else if (!begin)
        begin = Clock::now();
    if (file) {
        const KivString text = entry.getText();
        const std::string line = file == stderr ? text::onOneLine(text.view()) : std::string(text.view());
        std::fwrite(line.data(), 1, line.size(), file);
        std::fputc('\n', file);
    }
    if (&entry.identifier == &ROS_E_PRINTING_PACKAGE && isProgressDue())
        showProgress(entry.getText().view());
}

void CommandLog::close()
{
    if (!file || file == stderr)
        return;
    const bool failed = std::ferror(file) != 0;
    const bool unclosed = std::fclose(file) != 0;
    file = nullptr;
    if (failed || unclosed)
        throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), name);
}
