#include "kiv/KivLocale.h"

#include "kiv/KivMessages.h"

#include <array>
#include <cerrno>
#include <iconv.h>
#include <langinfo.h>

namespace {

class Converter {
public:
    explicit Converter(const char* encoding) : handle(iconv_open(encoding, "UTF-8")) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv says no
    [[nodiscard]] bool isOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

    // Converts piece by piece through a small buffer; false when the text cannot be converted.
    bool convert(const KivString& text, KivString& result)
    {
        char* from = const_cast<char*>(text.text()); // iconv only reads it
        std::size_t fromLeft = text.length();
        bool flushing = false;
        for (;;) {
            std::array<char, 256> piece;
            char* to = piece.data();
            std::size_t toLeft = piece.size();
            const std::size_t irreversible =
                iconv(handle, flushing ? nullptr : &from, flushing ? nullptr : &fromLeft, &to, &toLeft);
            result.add(std::string_view(piece.data(), piece.size() - toLeft));
            if (irreversible == static_cast<std::size_t>(-1)) {
                if (errno != E2BIG)
                    return false;
            } else if (irreversible > 0) {
                return false;
            } else if (flushing) {
                return true;
            } else {
                flushing = true; // back to the initial shift state
            }
        }
    }

private:
    iconv_t handle;
};

// The library converts more than there is: code points past U+10FFFF.
bool isPastUnicode(const KivString& text)
{
    constexpr unsigned lastLead = 0xF4;
    constexpr unsigned firstPast = 0x90;
    const std::string_view bytes = text.view();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead > lastLead)
            return true;
        if (lead == lastLead && i + 1 < bytes.size() && static_cast<unsigned char>(bytes[i + 1]) >= firstPast)
            return true;
    }
    return false;
}

} // namespace

KivString utf8ToLocale(const KivString& text)
{
    const std::string_view encoding = nl_langinfo(CODESET);
    if (encoding == "ANSI_X3.4-1968") // the C locale: file names are plain bytes there
        return text;
    Converter converter(encoding.data());
    KivString result;
    if (isPastUnicode(text) || !converter.isOpen() || !converter.convert(text, result))
        BRIDGE_UNCONVERTIBLE_TEXT.throwException(text);
    return result;
}
