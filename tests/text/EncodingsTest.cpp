#include "text/Encodings.h"
#include "text/Utf8.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace {

std::string decodedBy(const char* encoding, std::string_view bytes)
{
    return text::decoded(bytes, encoding).value().text;
}

TEST(Encodings, GiveWhatTheBytesMean)
{
    const struct {
        const char* encoding;
        std::string_view bytes;
        std::string_view text;
    } rows[] = {
        {"ISO-8859-1", "caf\xE9", "caf\u00e9"},
        {"CP1251", "\xCF\xF0\xE8", "\u041f\u0440\u0438"},
        {"CP932", "\x93\xFA\x96\x7B", "\u65e5\u672c"},
        {"ISO-2022-JP", "\x1b$BF|\x1b(B.", "\u65e5."},
        {"UTF-16",
         std::string_view("\xFF\xFE"
                          "a\0\xE9\0",
                          6),
         "a\u00e9"},
        {"UTF-16", std::string_view("\xFE\xFF\0a\0\xE9", 6), "a\u00e9"},
        {"UTF-16LE", std::string_view("a\0", 2), "a"},
        {"CP1255", "\xF9\xD1", "\ufb2a"}, // the second joins the first
        {"windows-1252", "\x80\x81", "\u20ac\u0081"},
        {"CP1252", "", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(decodedBy(row.encoding, row.bytes), row.text) << row.encoding;
    EXPECT_FALSE(text::decoded("a", "no such encoding"));
    EXPECT_FALSE(text::isEncoding("no such encoding"));
    EXPECT_TRUE(text::isEncoding("CP1257"));
}

TEST(Encodings, KeepWhatStandsBehindABadByte)
{
    const struct {
        const char* encoding;
        std::string_view bytes;
        std::string_view text;
        std::size_t undecodable;
        std::size_t first;
    } rows[] = {
        {"CP949", "x\xa2\xe8", "x\uFFFD", 2, 1},
        {"CP949", "a\xc9\"b", "a\uFFFD\"b", 1, 1},
        {"CP936", "\xff\xff!", "\uFFFD\uFFFD!", 2, 0},
        {"UTF-8", "a\xffz\xc3", "a\uFFFDz\uFFFD", 2, 1},
        {"ISO-2022-CN-EXT", "\x0e", "\uFFFD", 1, 0},
        {"UTF-16LE",
         std::string_view("a\0\0\xD8"
                          "b\0",
                          6),
         "a\uFFFDb", 2, 1},
        {"UTF-16LE", std::string_view("a\0b", 3), "a\uFFFD", 1, 1},
        {"UTF-8", "a\xf9\x9f\x9f\x9f\x9fz", "a\uFFFDz", 5, 1}, // numbers beyond the last character
        {"UTF-8", "\xff|\xf4\x90\x80\x80|\xed\xa0\x80", "\uFFFD|\uFFFD|\uFFFD", 8, 0},
        {"UCS-4BE", std::string_view("\0\x11\0\0\0\0\0z", 8), "\uFFFDz", 4, 0},
        {"ASCII", "\xe9\xe9 a", "\uFFFD\uFFFD a", 2, 0},
    };
    for (const auto& row : rows) {
        const text::Decoded decoded = text::decoded(row.bytes, row.encoding).value();
        EXPECT_EQ(decoded.text, row.text) << row.encoding;
        EXPECT_EQ(decoded.undecodable, row.undecodable) << row.encoding;
        EXPECT_EQ(decoded.firstUndecodable, row.first) << row.encoding;
    }
}

// Some of the system's converters move past a sequence that they call illegal, to the end of the bytes and behind it.
TEST(Encodings, TakeWhateverBytesComeInEveryEncodingOfAPetalFile)
{
    for (const char* const encoding :
         {"CP1252", "CP932",      "CP949",           "JOHAB",       "CP936",         "CP950",  "CP1253",
          "CP1254", "CP1258",     "CP1255",          "CP1256",      "CP1257",        "CP1251", "CP874",
          "CP1250", "UTF-16",     "ISO-2022-CN-EXT", "ISO-2022-KR", "ISO-2022-JP-2", "UTF-7",  "GB18030",
          "EUC-TW", "BIG5-HKSCS", "TSCII",           "IBM1390",     "SHIFT_JISX0213"}) {
        if (!text::isEncoding(encoding))
            continue;
        std::string all;
        for (unsigned first = 0; first < 0x100; ++first)
            for (unsigned second = 0x1B; second < 0x100; second += 5)
                all.append(1, static_cast<char>(first)).append(1, static_cast<char>(second)).append("\")\n");
        const text::Decoded decoded = text::decoded(all, encoding).value();
        EXPECT_TRUE(text::isUtf8(decoded.text)) << encoding;
        for (std::size_t end = 0; end < 40; ++end)
            EXPECT_TRUE(text::isUtf8(decodedBy(encoding, std::string_view(all).substr(all.size() - end)))) << encoding;
        for (unsigned byte = 0; byte < 0x100; ++byte) {
            const char value = static_cast<char>(byte);
            EXPECT_TRUE(text::isUtf8(decodedBy(encoding, {&value, 1}))) << encoding << ' ' << byte;
        }
    }
}

} // namespace
