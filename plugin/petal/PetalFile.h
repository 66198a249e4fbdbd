#pragma once

#include <cstring>
#include <fstream>
#include <memory>
#include <ostream>
#include <string_view>

/// The stream's buffer: a file buffer whose free room is open to a plain copy, so that a piece of a line costs no call.
class PetalBuffer : public std::filebuf {
public:
    /// Copies `text` if it fits; a text that does not is left to the caller.
    [[nodiscard]] bool copy(std::string_view text)
    {
        if (static_cast<std::size_t>(epptr() - pptr()) <= text.size())
            return false;
        std::memcpy(pptr(), text.data(), text.size());
        pbump(static_cast<int>(text.size()));
        return true;
    }
    /// Forgets what has not reached the file yet and leaves no room for more.
    void poison() { setp(nullptr, nullptr); }
};

/// The petal file. After a failed write the stream stays failed and drops whatever else comes, so that a file that
/// was cut off ends where it was cut.
class PetalFile : public std::ostream {
public:
    PetalFile();
    ~PetalFile() override;

    /// Opens `path` for writing and truncates it. The stream is failed afterwards when that did not work.
    void open(const char* path);
    [[nodiscard]] bool is_open() const { return buffer.is_open(); }
    void close();

    void append(std::string_view text)
    {
        if (!buffer.copy(text))
            appendSlowly(text);
    }

private:
    void appendSlowly(std::string_view text);

    PetalBuffer buffer;
    std::unique_ptr<char[]> area;
};

extern PetalFile theFile;
