#pragma once

#include "designs/formats/Format.h"
#include "text/ReadRecord.h"
#include "tool/output/OutputFile.h"
#include "tool/pictures/PictureNames.h"

#include <deque>
#include <string>
#include <vector>

/// The files that a conversion makes. None is in its place before all of them are written.
class ConvertedFiles : public design::Files {
public:
    /// `place` is the output: a file, `-`, or a folder for a file of each diagram. Its folder is there.
    ConvertedFiles(const design::Format& theFormat, std::string thePlace, bool isItFolder);

    text::Sink& begin(const design::FileName& file) override;

    /// What the user is told of.
    [[nodiscard]] const std::string& place() const { return outputPlace; }
    [[nodiscard]] std::size_t count() const { return files.size(); }
    [[nodiscard]] std::size_t bytes() const;

    /// Puts them in place, and the report with them if its file has a name. Throws `FileClash` when one of them is
    /// another, or a file that was read.
    void commit(const std::string& reportFile, const std::string& report, const text::ReadRecord& read);

private:
    class Text : public text::Sink {
    public:
        explicit Text(const std::string& name) : file(name) {}
        void write(std::string_view piece) override { file.write(piece); }

        OutputFile file;
    };

    const design::Format& format;
    const std::string outputPlace;
    const bool isFolder;
    PictureNames names;
    std::vector<std::string> paths;
    std::deque<Text> files;
};
