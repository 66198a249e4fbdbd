#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

/// The petal file. It is written in large pieces from a buffer whose free room is open to direct writing, so that a
/// line costs no call. Where the file system can, space is set aside ahead of writing, which makes writing faster and
/// keeps the file in one piece; what was too much is given back on closing.
///
/// After a failed write, or one in which the thread was cancelled, the file drops whatever else comes, so that a file
/// that was cut off ends where it was cut. Whoever opens it closes it: its end writes nothing, since a thread can be
/// cancelled in every write, and there must be a way out.
class PetalFile {
public:
    PetalFile() = default;
    PetalFile(const PetalFile&) = delete;
    PetalFile& operator=(const PetalFile&) = delete;
    ~PetalFile() = default;

    /// Opens `path` for writing and truncates it; the file must be closed. It has failed afterwards when that did not
    /// work. Throws `std::bad_alloc`.
    void open(const char* path);
    [[nodiscard]] bool isOpen() const { return file >= 0; }
    /// Whether opening it or writing to it has failed.
    [[nodiscard]] bool hasFailed() const { return failed; }
    /// Writes what is left and closes the file.
    void close();

    /// The file is mostly written in pieces that begin and end at multiples of this; a text larger than the buffer puts
    /// them out of step once. The file system takes larger pieces faster, and much faster when they fill whole pages;
    /// still larger ones do not stay in the processor's cache until they are written.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;
    /// The room of an empty buffer: a piece, and what the line at its end has beyond it.
    static constexpr std::size_t bufferSize = pieceSize + std::size_t{16} * 1024;

    /// Whether the buffer has room for `size` bytes, at least one; nothing is written to find out.
    [[nodiscard]] bool hasRoom(std::size_t size) const { return static_cast<std::size_t>(end - next) >= size; }
    /// Makes room for `size` bytes; false when the buffer is too small for them or the file takes no more.
    [[nodiscard]] bool makeRoom(std::size_t size);
    /// Where the room begins; to be filled and given back with `take`.
    [[nodiscard]] char* room() const { return next; }
    void take(char* filledUpTo) { next = filledUpTo; }
    /// Writes a text of any size.
    void append(std::string_view text);

private:
    [[nodiscard]] std::size_t filled() const { return static_cast<std::size_t>(next - area.get()); }
    bool writeOut(std::size_t size);
    bool write(std::string_view bytes);
    void setSpaceAside(std::size_t size);

    std::unique_ptr<char[]> area;
    char* next = nullptr; // the room in the buffer, none unless the file is open and has not failed
    char* end = nullptr;
    int file = -1;
    bool failed = false;
    bool canSetAside = false;
    std::size_t written = 0;  // bytes in the file
    std::size_t setAside = 0; // bytes that the file has space for; 0 when the file system cannot
};

extern PetalFile theFile;
