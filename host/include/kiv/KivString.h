#pragma once

#include <compare>
#include <cstddef>
#include <string_view>
#include <utility>

/// The host's string type: a sequence of bytes, UTF-8 in a model, without an opinion about their meaning.
///
/// A value like any other: copies are independent of each other and cost no allocation, because equal copies share
/// their bytes until one of them changes. An empty string owns nothing. Copying and moving never throw; whatever makes
/// a longer text throws `std::bad_alloc`, or `std::length_error` past 4 GiB, and then leaves the string as it was.
class __attribute__((visibility("default"))) KivString {
public:
    KivString() noexcept = default;
    /// Copies a null-terminated text; a null pointer gives the empty string.
    KivString(const char* text);
    /// Copies `text`, which may hold any bytes.
    explicit KivString(std::string_view text);
    KivString(const KivString& other) noexcept : storage(other.storage)
    {
        if (storage)
            addReference(storage);
    }
    KivString(KivString&& other) noexcept : storage(std::exchange(other.storage, nullptr)) {}
    KivString& operator=(const KivString& other) noexcept
    {
        KivString copy(other);
        std::swap(storage, copy.storage);
        return *this;
    }
    KivString& operator=(KivString&& other) noexcept
    {
        std::swap(storage, other.storage);
        return *this;
    }
    ~KivString()
    {
        if (storage)
            release(storage); // NOLINT(clang-analyzer-cplusplus.NewDelete): it does not follow the count
    }

    /// Length in bytes, the terminating zero not counted.
    [[nodiscard]] std::size_t length() const noexcept { return storage ? storage->length : 0; }
    [[nodiscard]] bool isEmpty() const noexcept { return length() == 0; }
    /// The bytes, null-terminated; valid until the string changes or ends. Never null.
    [[nodiscard]] const char* text() const noexcept { return storage ? storage->bytes() : ""; }
    /// The bytes as a view; valid as long as `text()` is.
    [[nodiscard]] std::string_view view() const noexcept { return {text(), length()}; }

    /// The first `count` bytes, or the whole string when it is shorter.
    [[nodiscard]] KivString left(std::size_t count) const;
    /// Everything from byte `from` on; empty when `from` is past the end.
    [[nodiscard]] KivString mid(std::size_t from) const;
    /// Appends the texts of a list that ends with a null pointer.
    KivString& add(const char* const* texts);
    /// Appends `text`, which may be a part of this string. Appending again and again costs the bytes appended.
    KivString& add(std::string_view text);
    /// Drops everything behind the first `count` bytes. Does not throw while no other string shares the bytes.
    void truncate(std::size_t count);

    /// The string as it stands in a file between double quotes: a backslash becomes two backslashes, a double quote
    /// becomes backslash and double quote, a line feed backslash and `n`, a carriage return backslash and `r`; every
    /// other byte stays.
    [[nodiscard]] KivString escapeChars() const;

    friend bool operator==(const KivString& a, const KivString& b) noexcept
    {
        return a.storage == b.storage || a.view() == b.view();
    }
    /// Byte order.
    friend std::strong_ordering operator<=>(const KivString& a, const KivString& b) noexcept
    {
        return a.view() <=> b.view();
    }
    friend bool operator==(const KivString& a, std::string_view b) noexcept { return a.view() == b; }
    friend bool operator==(const KivString& a, const char* b) noexcept { return a.view() == b; }

private:
    // The header of a shared text; the bytes follow it in the same block.
    struct Storage {
        unsigned references;
        unsigned length;
        unsigned capacity;

        [[nodiscard]] char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
    };
    static Storage* allocate(std::size_t capacity);
    static void addReference(Storage* storage) noexcept;
    static void release(Storage* storage) noexcept;
    [[nodiscard]] static bool isShared(Storage* storage) noexcept;
    void assign(std::string_view text);

    Storage* storage = nullptr;
};

/// What `escapeChars` writes for one byte, or null when the byte stays as it is.
[[nodiscard]] constexpr const char* escapeSequence(char byte) noexcept
{
    switch (byte) {
    case '\\':
        return "\\\\";
    case '"':
        return "\\\"";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    default:
        return nullptr;
    }
}

/// Number of bytes at the start of `text` that stay as they are.
[[nodiscard]] constexpr std::size_t plainLength(std::string_view text) noexcept
{
    std::size_t plain = 0;
    while (plain < text.size() && !escapeSequence(text[plain]))
        ++plain;
    return plain;
}

/// Whether a name can stand between double quotes as it is. A double quote, a line feed or a carriage return would end
/// the quoted text early, and a backslash at its end would swallow the closing quote; such a name is written through
/// `escapeChars`. Backslashes elsewhere are harmless, and escaping them would change names that readers compare.
[[nodiscard]] constexpr bool isSafeBetweenQuotes(std::string_view name) noexcept
{
    for (const char byte : name)
        if (byte == '"' || byte == '\n' || byte == '\r')
            return false;
    return name.empty() || name.back() != '\\';
}

/// `name` as it stands between double quotes: itself when that is safe, else through `escapeChars`.
[[nodiscard]] __attribute__((visibility("default"))) KivString guardedName(const KivString& name);
