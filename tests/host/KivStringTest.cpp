#include "Allocations.h"

#include "kiv/KivString.h"
#include "support/KivStringPrinting.h"

#include <array>
#include <gmock/gmock.h>
#include <random>
#include <string>
#include <utility>

namespace {

std::string escaped(char byte)
{
    switch (byte) {
    case '\\':
        return R"(\\)";
    case '"':
        return R"(\")";
    case '\n':
        return R"(\n)";
    case '\r':
        return R"(\r)";
    default:
        return std::string(1, byte);
    }
}

TEST(KivString, EscapesFourBytesAndNoOther)
{
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        const std::string written = escaped(byte[0]);
        for (const auto& [text, expected] : {std::pair(byte, written), std::pair("a" + byte + "z", "a" + written + "z"),
                                             std::pair(byte + byte + "z", written + written + "z")})
            EXPECT_EQ(KivString(text).escapeChars().view(), expected) << "byte " << code;
    }
}

TEST(KivString, GuardsOnlyNamesThatWouldBreakTheFile)
{
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        const bool breaks = byte == '"' || byte == '\n' || byte == '\r';
        const struct {
            std::string name;
            bool isGuarded;
        } rows[] = {{std::string(1, byte), breaks || byte == '\\'},
                    {std::string("a") + byte, breaks || byte == '\\'},
                    {std::string(1, byte) + "z", breaks},
                    {std::string("\\") + byte + "z", breaks}};
        for (const auto& row : rows)
            EXPECT_EQ(guardedName(KivString(row.name)),
                      row.isGuarded ? KivString(row.name).escapeChars() : KivString(row.name))
                << "byte " << code << " in " << testing::PrintToString(row.name);
    }
    EXPECT_EQ(guardedName(KivString()), "");
    EXPECT_EQ(guardedName(R"(C:\data\)"), R"(C:\\data\\)") << "once guarded, every backslash is doubled";
}

TEST(KivString, GivesItsParts)
{
    const KivString text(std::string_view("a\0bc", 4));
    const struct {
        std::size_t at;
        std::string left;
        std::string mid;
    } rows[] = {{0, "", std::string("a\0bc", 4)}, {2, std::string("a\0", 2), "bc"},
                {3, std::string("a\0b", 3), "c"}, {4, std::string("a\0bc", 4), ""},
                {5, std::string("a\0bc", 4), ""}, {std::string::npos, std::string("a\0bc", 4), ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(text.left(row.at).view(), row.left) << row.at;
        EXPECT_EQ(text.mid(row.at).view(), row.mid) << row.at;
        KivString cut = text;
        cut.truncate(row.at);
        EXPECT_EQ(cut.view(), row.left) << row.at;
        EXPECT_EQ(cut.text()[cut.length()], '\0') << row.at;
    }
    EXPECT_EQ(text.length(), 4U);
}

TEST(KivString, NullAndEmptyAreOneEmptyString)
{
    const char* const none = nullptr;
    for (const KivString& empty : {KivString(), KivString(none), KivString(""), KivString(std::string_view()),
                                   KivString("ab").left(0), KivString("ab").mid(2)}) {
        EXPECT_TRUE(empty.isEmpty());
        EXPECT_STREQ(empty.text(), "");
    }
}

TEST(KivString, ComparesBytesAsUnsigned)
{
    const std::array<KivString, 6> ascending = {"", "A", "AB", "a", "\x7F", "\x80"};
    for (std::size_t i = 0; i < ascending.size(); ++i)
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << ' ' << j;
            EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << ' ' << j;
        }
}

TEST(KivString, TakesPartsOfItself)
{
    for (const bool isShared : {false, true}) {
        KivString text = "abc";
        const KivString other = isShared ? text : KivString();
        for (int i = 0; i < 12; ++i) // goes through growing as well as through free room
            text.add(text.view().substr(text.length() / 2));
        std::string expected = "abc";
        for (int i = 0; i < 12; ++i)
            expected += std::string(expected.substr(expected.size() / 2));
        EXPECT_EQ(text.view(), expected);
        EXPECT_EQ(other, isShared ? "abc" : "");
    }
    const char* const texts[] = {"cd", "", "e", nullptr};
    EXPECT_EQ(KivString("ab").add(texts), "abcde");
}

TEST(KivString, BehavesLikeAnUnsharedText)
{
    std::mt19937 random(1);
    std::array<KivString, 6> texts;
    std::array<std::string, 6> expected;
    const auto below = [&](std::size_t end) { return random() % end; };
    for (int step = 0; step < 50'000; ++step) {
        const std::size_t to = below(texts.size());
        const std::size_t from = below(texts.size());
        const std::size_t at = below(expected[from].size() + 2);
        switch (below(7)) {
        case 0:
            texts[to] = texts[from];
            expected[to] = expected[from];
            break;
        case 1:
            texts[to] = std::move(texts[from]);
            if (to != from)
                expected[to] = std::exchange(expected[from], std::string(texts[from].view()));
            break;
        case 2:
            texts[to] = texts[from].left(at);
            expected[to] = expected[from].substr(0, at);
            break;
        case 3:
            texts[to] = texts[from].mid(at);
            expected[to] = expected[from].substr(std::min(at, expected[from].size()));
            break;
        case 4:
            texts[from].truncate(at);
            expected[from].resize(std::min(at, expected[from].size()));
            break;
        default:
            if (expected[to].size() > 300)
                break;
            texts[to].add(texts[from].view().substr(0, at));
            expected[to] += std::string(expected[from].substr(0, at));
            texts[to].add("x");
            expected[to] += "x";
        }
        for (std::size_t i = 0; i < texts.size(); ++i)
            ASSERT_EQ(texts[i].view(), expected[i]) << "step " << step;
    }
}

TEST(KivString, CopiesWithoutAllocatingAndAppendsInPlace)
{
    KivString text(std::string(1000, 'x'));
    std::size_t before = allocationCount();
    const KivString copy = text;
    KivString moved = std::move(text);
    text = moved;
    EXPECT_EQ(text.left(1000).text(), copy.text());
    EXPECT_EQ(allocationCount(), before);

    before = allocationCount();
    KivString grown;
    for (int i = 0; i < 1'000'000; ++i)
        grown.add(std::string_view("ab"));
    EXPECT_EQ(grown.length(), 2'000'000U);
    EXPECT_LT(allocationCount() - before, 50U);
    before = allocationCount();
    grown.truncate(1000);
    EXPECT_EQ(allocationCount(), before);
}

TEST(KivString, StaysAsItWasWhenThereIsNoRoom)
{
    const KivString shared = "abc";
    KivString text = shared;
    const char* const texts[] = {"first", "a text that needs more room than the one before it left", nullptr};
    for (std::size_t before = 0;; ++before) {
        const RefusedAllocation refused(before);
        try {
            text.add(texts);
            break;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(text, "abc") << before;
            text = shared;
        }
    }
    const std::string_view tooLong(shared.text(), std::size_t{1} << 32);
    EXPECT_THROW(text.add(tooLong), std::length_error);
    EXPECT_THROW((void)KivString(tooLong), std::length_error);
    EXPECT_EQ(text.left(8), "abcfirst");
}

} // namespace
