#include "CommandLog.h"

#include "OutputTarget.h"
#include "Writing.h"

#include "Terminal.h"
#include "text/Utf8.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace {

constexpr auto progressInterval = std::chrono::milliseconds(40);
// A file begins anew; what is open already, as behind /dev/stderr, goes on where it is.
std::FILE* openLog(const std::string& path)
{
    const OutputTarget target(path);
    if (target.descriptor() < 0)
        return std::fopen(target.path().c_str(), "we");
    const int descriptor = fcntl(target.descriptor(), F_DUPFD_CLOEXEC, 0);
    return descriptor < 0 ? nullptr : fdopen(descriptor, "we");
}

// As much of a text as fits into `width` columns of a terminal.
std::string displayable(std::string_view text, std::size_t width)
{
    const std::string line = text::onOneLine(text);
    std::size_t end = 0;
    while (end < line.size() && width > 0) {
        end += text::characterLength(std::string_view(line).substr(end));
        --width;
    }
    return line.substr(0, end);
}

} // namespace

CommandLog::CommandLog(const std::string& path, bool showsProgress) : name(path), progress(showsProgress)
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
    if (progress && &entry.identifier == &ROS_E_PRINTING_PACKAGE && Clock::now() - lastShown >= progressInterval)
        show(entry.getText());
}

void CommandLog::show(const KivString& text)
{
    lastShown = Clock::now();
    isShown = true;
    std::fprintf(stderr, "\r\033[K%s", displayable(text.view(), terminalWidth() - 1).c_str());
    std::fflush(stderr);
}

void CommandLog::clearProgress()
{
    if (isShown)
        std::fputs("\r\033[K", stderr);
    isShown = false;
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
