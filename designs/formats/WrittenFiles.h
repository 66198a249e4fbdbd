#pragma once

#include "designs/formats/Format.h"

#include <deque>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace design {

/// A file that comes out, as a whole.
struct WrittenFile {
    std::string name;
    std::string text;
    std::string kind = {};
    std::string owner = {};
};

/// Keeps all files in memory.
class WrittenFiles : public Files {
public:
    text::Sink& begin(const FileName& name) override
    {
        files.push_back({name.name, "", name.kind, name.owner});
        return texts.emplace_back(files.back().text);
    }

    /// In the order in which they were begun.
    [[nodiscard]] std::vector<WrittenFile> take()
    {
        return {std::make_move_iterator(files.begin()), std::make_move_iterator(files.end())};
    }

private:
    class Text : public text::Sink {
    public:
        explicit Text(std::string& theText) : text(theText) {}
        void write(std::string_view piece) override { text.append(piece); }

    private:
        std::string& text;
    };

    std::deque<WrittenFile> files;
    std::deque<Text> texts;
};

/// What `format` makes of a design, in memory.
[[nodiscard]] inline std::vector<WrittenFile> filesIn(const Format& format, const Writing& writing, Report& report)
{
    WrittenFiles files;
    format.write(writing, files, report);
    return files.take();
}

} // namespace design
