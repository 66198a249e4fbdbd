#include "tool/terminal/Reporting.h"

#include "tool/terminal/Progress.h"

#include "text/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <iostream>

void report(std::string_view message)
{
    clearProgress();
    std::cerr << "petal: " + text::onOneLine(message) + "\n";
}

void reportLines(std::string_view message)
{
    clearProgress();
    std::string lines = "petal: ";
    while (!message.empty()) {
        const std::size_t end = std::min(message.find('\n'), message.size());
        lines += text::onOneLine(message.substr(0, end));
        lines += '\n';
        message.remove_prefix(std::min(end + 1, message.size()));
    }
    std::cerr << lines;
}

void tellMade(const std::string& file, std::string_view text)
{
    clearProgress();
    std::cerr << text::onOneLine(file + ": ").append(text).append("\n");
}
