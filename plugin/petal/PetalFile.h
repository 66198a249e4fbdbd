#pragma once

#include <fstream>
#include <memory>
#include <ostream>
#include <string_view>

/// The stream's buffer: a file buffer whose free room is open to direct writing, so that a line costs no call.
class PetalBuffer : public std::filebuf {
public:
    /// Room for `size` bytes, or null when there is less; nothing is written to find out.
    [[nodiscard]] char* room(std::size_t size) const
    {
        return static_cast<std::size_t>(epptr() - pptr()) >= size ? pptr() : nullptr;
    }
    /// Takes what was put into the room, up to `end`.
    void take(const char* end) { pbump(static_cast<int>(end - pptr())); }
    /// Writes what is in the buffer to the file; false when that fails.
    [[nodiscard]] bool empty() { return overflow(traits_type::eof()) != traits_type::eof(); }
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

    /// Room for `size` bytes in the stream's buffer, to be filled and given back with `take`; null when the buffer is
    /// too small for them or the stream has failed.
    [[nodiscard]] char* room(std::size_t size)
    {
        char* const place = buffer.room(size);
        return place ? place : makeRoom(size);
    }
    void take(const char* end) { buffer.take(end); }
    /// Writes a text of any size.
    void append(std::string_view text);

private:
    char* makeRoom(std::size_t size);
    void giveUp();

    PetalBuffer buffer;
    std::unique_ptr<char[]> area;
};

extern PetalFile theFile;
