#include "kiv/KivString.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <sys/single_threaded.h>
#include <utility>

// The header and the bytes lie in one block, so that a name costs one allocation and a string one pointer.
KivString::Storage* KivString::allocate(std::size_t capacity)
{
    if (capacity > std::numeric_limits<unsigned>::max() - 1)
        throw std::length_error("a text is longer than 4 GiB");
    void* const block = ::operator new(sizeof(Storage) + capacity + 1);
    auto* const storage = new (block) Storage{1, 0, static_cast<unsigned>(capacity)};
    storage->bytes()[0] = '\0';
    return storage;
}

// As long as the process has one thread, counting needs no atomic operations.
void KivString::addReference(Storage* storage) noexcept
{
    if (__libc_single_threaded)
        ++storage->references;
    else
        std::atomic_ref(storage->references).fetch_add(1, std::memory_order_relaxed);
}

void KivString::release(Storage* storage) noexcept
{
    const bool isLast = __libc_single_threaded
                            ? --storage->references == 0
                            : std::atomic_ref(storage->references).fetch_sub(1, std::memory_order_acq_rel) == 1;
    if (isLast)
        ::operator delete(storage);
}

bool KivString::isShared(Storage* storage) noexcept
{
    return std::atomic_ref(storage->references).load(std::memory_order_acquire) != 1;
}

KivString::KivString(const char* text)
{
    if (text)
        assign(text);
}

KivString::KivString(std::string_view text)
{
    assign(text);
}

void KivString::assign(std::string_view text)
{
    if (text.empty())
        return;
    storage = allocate(text.size());
    std::memcpy(storage->bytes(), text.data(), text.size());
    storage->bytes()[text.size()] = '\0';
    storage->length = static_cast<unsigned>(text.size());
}

KivString KivString::left(std::size_t count) const
{
    return count >= length() ? *this : KivString(view().substr(0, count));
}

KivString KivString::mid(std::size_t from) const
{
    if (from == 0)
        return *this;
    return from >= length() ? KivString() : KivString(view().substr(from));
}

KivString& KivString::add(const char* const* texts)
{
    KivString longer(*this);
    for (; *texts; ++texts)
        longer.add(std::string_view(*texts));
    *this = std::move(longer);
    return *this;
}

KivString& KivString::add(std::string_view text)
{
    if (text.empty())
        return *this;
    const std::size_t old = length();
    const bool fits = storage && !isShared(storage) && storage->capacity - old >= text.size();
    if (!fits) {
        Storage* const grown = allocate(std::max(old + text.size(), std::min<std::size_t>(old * 2, 1U << 31)));
        std::memcpy(grown->bytes(), this->text(), old);
        std::memcpy(grown->bytes() + old, text.data(), text.size());
        if (Storage* const replaced = std::exchange(storage, grown))
            release(replaced);
    } else {
        std::memcpy(storage->bytes() + old, text.data(), text.size());
    }
    storage->length = static_cast<unsigned>(old + text.size());
    storage->bytes()[storage->length] = '\0';
    return *this;
}

void KivString::truncate(std::size_t count)
{
    if (count >= length())
        return;
    if (isShared(storage)) {
        *this = left(count);
        return;
    }
    storage->length = static_cast<unsigned>(count);
    storage->bytes()[count] = '\0';
}

KivString KivString::escapeChars() const
{
    const std::string_view bytes = view();
    std::size_t plain = plainLength(bytes);
    if (plain == bytes.size())
        return *this;
    KivString result;
    for (std::string_view rest = bytes;; plain = plainLength(rest)) {
        result.add(rest.substr(0, plain));
        if (plain == rest.size())
            return result;
        result.add(std::string_view(escapeSequence(rest[plain])));
        rest.remove_prefix(plain + 1);
    }
}

KivString guardedName(const KivString& name)
{
    return isSafeBetweenQuotes(name.view()) ? name : name.escapeChars();
}
