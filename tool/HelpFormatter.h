#pragma once

#include <CLI/CLI.hpp>
#include <string>

/// Help that fits into 80 columns: descriptions are broken between words and hang in their column.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_description(const CLI::App* app) const override;
    /// Says nothing of the options that a flag needs or excludes: the descriptions do.
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
    /// In a list of commands each is one line.
    std::string make_subcommand(const CLI::App* command) const override;
};
