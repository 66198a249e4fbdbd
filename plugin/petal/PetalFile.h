#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <string_view>

/// The stream's buffer: writes to a file in large pieces, and its free room is open to direct writing, so that a line
/// costs no call. Where the file system can, space is set aside ahead of writing, which makes writing faster and keeps
/// the file in one piece; what was too much is given back on closing.
class PetalBuffer : public std::streambuf {
public:
    PetalBuffer() = default;
    ~PetalBuffer() override { close(); }
    PetalBuffer(const PetalBuffer&) = delete;
    PetalBuffer& operator=(const PetalBuffer&) = delete;

    /// Opens `path` for writing and truncates it; false when that fails. Throws `std::bad_alloc`.
    [[nodiscard]] bool open(const char* path);
    [[nodiscard]] bool is_open() const { return file >= 0; }
    /// Writes what is left and closes the file; false when any of it fails.
    bool close();

    /// Whether there is room for `size` bytes; nothing is written to find out.
    [[nodiscard]] bool hasRoom(std::size_t size) const { return static_cast<std::size_t>(epptr() - pptr()) >= size; }
    /// Where the room begins.
    [[nodiscard]] char* room() const { return pptr(); }
    /// Takes what was put into the room, up to `end`.
    void take(const char* end) { pbump(static_cast<int>(end - pptr())); }
    /// Writes what is in the buffer to the file; false when that fails.
    [[nodiscard]] bool empty();
    /// Writes enough of it that there is room for `size` bytes, which must not be more than the buffer has; false when
    /// that fails.
    [[nodiscard]] bool makeRoom(std::size_t size);
    /// Forgets what has not reached the file yet and leaves no room for more.
    void poison() { setp(nullptr, nullptr); }

protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override { return empty() ? 0 : -1; }

private:
    [[nodiscard]] std::size_t filled() const { return static_cast<std::size_t>(pptr() - pbase()); }
    [[nodiscard]] bool writeUpTo(std::size_t end);
    [[nodiscard]] bool write(std::string_view bytes);
    void setSpaceAside(std::size_t size);

    int file = -1;
    std::size_t written = 0;  // bytes in the file
    std::size_t setAside = 0; // bytes that the file has space for; 0 when the file system cannot
    bool canSetAside = false;
    std::unique_ptr<char[]> area;
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

    /// The file is mostly written in pieces that begin and end at multiples of this; a text larger than the buffer puts
    /// them out of step once. The file system takes larger pieces faster, and much faster when they fill whole pages;
    /// still larger ones do not stay in the processor's cache until they are written.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;
    /// The room of an empty buffer: a piece, and what the line at its end has beyond it.
    static constexpr std::size_t bufferSize = pieceSize + std::size_t{16} * 1024;

    /// Whether the stream's buffer has room for `size` bytes, at least one.
    [[nodiscard]] bool hasRoom(std::size_t size) const { return buffer.hasRoom(size); }
    /// Makes room for `size` bytes; false when the buffer is too small for them or the stream has failed.
    [[nodiscard]] bool makeRoom(std::size_t size);
    /// Where the room begins; to be filled and given back with `take`.
    [[nodiscard]] char* room() const { return buffer.room(); }
    void take(const char* end) { buffer.take(end); }
    /// Writes a text of any size.
    void append(std::string_view text);

private:
    void giveUp();

    PetalBuffer buffer;
};

extern PetalFile theFile;
