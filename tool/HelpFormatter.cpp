#include "tool/HelpFormatter.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace {

constexpr std::size_t pageWidth = 80;
constexpr std::size_t nameWidth = 28;

// The text in lines of at most `width` columns.
std::string wrapped(std::string_view text, std::size_t width)
{
    std::string result;
    while (text.size() > width) {
        const std::size_t blank = text.rfind(' ', width);
        const std::size_t end = blank == std::string_view::npos ? std::min(text.find(' '), text.size()) : blank;
        result.append(text.substr(0, end)).append("\n");
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result.append(text);
}

} // namespace

HelpFormatter::HelpFormatter()
{
    column_width(nameWidth);
}

std::string HelpFormatter::make_description(const CLI::App* app) const
{
    return app->get_description() + "\n";
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const
{
    return option->get_type_size() == 0 ? "" : CLI::Formatter::make_option_opts(option);
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const
{
    return wrapped(option->get_description(), pageWidth - nameWidth);
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const
{
    constexpr std::size_t column = 11; // behind the longest name
    const std::string purpose = command->get_description();
    std::ostringstream out;
    CLI::detail::format_help(out, command->get_name(), purpose.substr(0, purpose.find('\n')), column);
    return out.str();
}
