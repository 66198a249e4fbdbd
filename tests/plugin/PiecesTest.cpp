#include "plugin/support/Written.h"

#include <algorithm>
#include <functional>
#include <limits>

TEST(Quids, HavePrefixAndNumber)
{
    const struct {
        QuidForm form;
        long number;
        const char* quid;
    } rows[] = {
        {pquid, 10, "344A1400000A"},
        {iquid, 0, "3449E0000000"},
        {equid, 26, "3449E200001A"},
        {nquid, 104, "3449E8000068"},
        {aquid, 1000026, "3449E40F425A"},
        {asquid, 0xFFFFFF, "3449E6FFFFFF"},
        {asquid, 0x1000000, "3449E61000000"},
        {iquid, 0x1FFFFFFFF, "3449E01FFFFFFFF"},
        {iquid, std::numeric_limits<long>::max(), "3449E07FFFFFFFFFFFFFFF"},
    };
    for (const auto& row : rows) {
        std::array<char, longestQuid> text;
        const char* const end = copy(text.data(), makeQuid(row.form, row.number));
        EXPECT_EQ(std::string_view(text.data(), end), row.quid);
    }
}

TEST(Indentation, IsCrLfAndTabs)
{
    resetIndent();
    int depth = 0;
    for (const char step : std::string_view("+++----+-+++++++++++++++++++++++++++++++--")) {
        step == '+' ? increaseIndent() : decreaseIndent();
        depth = std::max(0, depth + (step == '+' ? 1 : -1));
        EXPECT_EQ(indent.depth, depth);
        EXPECT_EQ(indent.text().view(), std::string("\r\n").append(static_cast<std::size_t>(depth), '\t'));
    }
    resetIndent();
    EXPECT_EQ(indent.depth, 0);
    EXPECT_EQ(indent.text(), "\r\n");
}

TEST(RoseDesc, IsAQuotedTextOrABlock)
{
    const struct {
        const char* text;
        const char* form;
        const char* bracedForm;
    } rows[] = {
        {"", "\"\"", "\"{}\""},
        {"plain text", "\"plain text\"", "\"{plain text}\""},
        {"C:\\temp\\", "\"C:\\\\temp\\\\\"", "\"{C:\\\\temp\\\\}\""},
        {"a\tb\r", "\"a\tb\\r\"", "\"{a\tb\\r}\""},
        {"Line one\nLine two", "\n|Line one\n|Line two\n", "\n|{Line one\n|Line two}\n"},
        {"One\n", "\n|One\n|\n", "\n|{One\n|}\n"},
        {"\n", "\n|\n|\n", "\n|{\n|}\n"},
        {"\n\n|x", "\n|\n|\n||x\n", "\n|{\n|\n||x}\n"},
        {"a \"word\"", "\n|a \"word\"\n", "\n|{a \"word\"}\n"},
        {"\"", "\n|\"\n", "\n|{\"}\n"},
        {"a\r\nb\r\n", "\n|a\r\n|b\r\n|\n", "\n|{a\r\n|b\r\n|}\n"},
        {"back\\slash\nstays", "\n|back\\slash\n|stays\n", "\n|{back\\slash\n|stays}\n"},
        {"ab\ncde", "\n|ab\n|cde\n", "\n|{ab\n|cde}\n"},
    };
    for (const auto& row : rows) {
        const KivString text = row.text;
        for (const auto& [desc, form] : {std::pair(makeRoseDesc(text), std::string(row.form)),
                                         std::pair(makeBracedRoseDesc(text), std::string(row.bracedForm))}) {
            SCOPED_TRACE(form);
            EXPECT_EQ(written([&piece = desc] { append(piece); }), form);
            // The measures are those of the form as a text of its own.
            EXPECT_EQ(writtenLength(desc), form.size());
            EXPECT_EQ(measureLines(desc).lines, measureLines(std::string_view(form)).lines);
            EXPECT_EQ(measureLines(desc).longest, measureLines(std::string_view(form)).longest);
        }
    }
}

TEST(Pieces, SurviveEveryByte)
{
    const auto escaped = [](char byte) -> std::string {
        return byte == '\\'   ? "\\\\"
               : byte == '"'  ? "\\\""
               : byte == '\n' ? "\\n"
               : byte == '\r' ? "\\r"
                              : std::string(1, byte);
    };
    for (int code = 1; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        const std::string inside = std::string("\\") + byte + "x";
        const std::string atEnd = std::string("\\x") + byte;
        const bool isBlock = byte == '\n' || byte == '"';
        const bool isHarmful = isBlock || byte == '\r';
        const std::string escapedInside = "\\\\" + escaped(byte) + "x";
        const std::string escapedAtEnd = "\\\\x" + escaped(byte);
        const std::string name = isHarmful ? escapedInside : inside;
        const std::string nameEnd = isHarmful || byte == '\\' ? escapedAtEnd : atEnd;
        const std::string desc =
            isBlock ? "\n|" + (byte == '"' ? inside : std::string("\\\n|x")) + "\n" : "\"" + escapedInside + "\"";
        const KivString text(inside);
        const KivString textEnd(atEnd);
        EXPECT_EQ(written([&] {
                      append(quoted(text), quoted("<<", text, ">>"), "\"", guarded(text), "\"", quoted(textEnd),
                             makeRoseDesc(text));
                  }),
                  "\"" + name + "\"\"<<" + name + ">>\"\"" + name + "\"\"" + nameEnd + "\"" + desc)
            << "byte " << code;
    }
}

TEST(Numbers, AreDecimal)
{
    std::vector<long> numbers = {0, std::numeric_limits<int>::min(), std::numeric_limits<long>::min(),
                                 std::numeric_limits<long>::max()};
    for (long power = 1; power <= std::numeric_limits<long>::max() / 10; power *= 10)
        for (const long number : {power - 1, power, power + 1, 7 * power, -power})
            numbers.push_back(number);
    for (const long number : numbers)
        EXPECT_EQ(written([&] { append(number, "|"); }), std::to_string(number) + "|");
    EXPECT_EQ(written([] { append(std::numeric_limits<unsigned long>::max()); }), "18446744073709551615");
}

// A line goes into the stream's buffer whole, or in pieces where the buffer ends; the file must not tell.
TEST(Pieces, DoNotDependOnTheBuffer)
{
    constexpr std::size_t bufferSize = PetalFile::bufferSize;
    const KivString quotes(std::string(40, '"'));
    const KivString lineFeeds(std::string(40, '\n'));
    std::string escapedQuotes;
    std::string bars;
    for (int i = 0; i < 40; ++i) {
        escapedQuotes += "\\\"";
        bars += "\n|";
    }
    const struct {
        std::function<void()> write;
        std::string text;
    } rows[] = {
        {[&] { append(quoted(quotes)); }, "\"" + escapedQuotes + "\""},
        {[&] { append(makeBracedRoseDesc(lineFeeds)); }, "\n|{" + bars + "}\n"},
        {[&] { append("a\t", quoted(makeQuid(equid, 26)), -2147483647 - 1, ")"); }, "a\t\"3449E200001A\"-2147483648)"},
        {[&] { append(Indentation{40}, keyword(visibilityKeywords, 3), 7); },
         "\r\n" + std::string(40, '\t') + "\"Implementation\"7"},
    };
    for (const auto& row : rows)
        for (std::size_t before = bufferSize - 90; before <= bufferSize + 1; ++before) {
            const std::string filler(before, 'x');
            const auto write = [&] {
                append(std::string_view(filler));
                row.write();
                append("next");
            };
            ASSERT_TRUE(written(write) == filler + row.text + "next") << before << " bytes before " << row.text;
        }
    for (const std::size_t size : {bufferSize - 1, bufferSize, bufferSize + 1, 3 * bufferSize + 7}) {
        std::string plain(size, 'a');
        const KivString name(plain);
        plain[size / 2] = '\n';
        const KivString text(plain);
        std::string block = plain;
        block.insert(size / 2 + 1, "|");
        std::string escaped = plain;
        escaped.replace(size / 2, 1, "\\n");
        std::string expected;
        for (const std::string& piece : {std::string(size, 'a'), escaped})
            expected.append("\"").append(piece).append("\"");
        expected.append("\n|").append(block).append("\n\"").append(size, 'a').append("\"");
        ASSERT_TRUE(written([&] { append(quoted(name), quoted(text), makeRoseDesc(text), makeRoseDesc(name)); }) ==
                    expected)
            << size << " bytes";
    }
}

// Texts of all sizes, so that pieces of the file end in the middle of one, and large ones put them out of step.
TEST(Pieces, FollowEachOtherThroughALargeFile)
{
    std::string texts;
    const auto write = [&] {
        std::size_t size = 1;
        while (texts.size() < 20 * PetalFile::pieceSize) {
            size = size * 48271 % 2147483647;
            const std::size_t limit = size % 50 == 0 ? 2 * PetalFile::bufferSize : size % 7 == 0 ? 40000 : 90;
            const std::string text(size % limit, static_cast<char>('a' + size % 26));
            append(std::string_view(text), size);
            texts += text + std::to_string(size);
        }
    };
    const std::string file = written(write);
    ASSERT_TRUE(file == texts) << "differs from byte "
                               << std::mismatch(file.begin(), file.end(), texts.begin(), texts.end()).first -
                                      file.begin();
}

TEST(Lists, CloseOnTheLastLineUnlessSomethingLeavesThem)
{
    const auto writeLists = [](bool fails) {
        return written([&] {
            try {
                list("outer\t(list x", [&] {
                    flatList("inner\t(list y", [&] {
                        object([&] {
                            line("(object z");
                            if (fails)
                                throw 1;
                        });
                        line("entry");
                    });
                });
            } catch (int) {
                decreaseIndent(); // the level stays where writing ended
            }
            line("after");
        });
    };
    EXPECT_EQ(writeLists(false), petalLines(R"(
    outer\t(list x
        inner\t(list y
        (object z)
        entry))
    after)"));
    EXPECT_EQ(writeLists(true), petalLines(R"(
    outer\t(list x
        inner\t(list y
        (object z
    after)"));
}

TEST(Lists, OfSomeElementsAreNotOpenedForNone)
{
    const int numbers[] = {1, 2, 3, 4};
    const std::vector<const int*> elements = {&numbers[0], &numbers[1], &numbers[2], &numbers[3]};
    const auto writeList = [&](auto isWritten) {
        return written([&] { listOf("some\t(list x", elements, isWritten, [](int number) { line(number); }); });
    };
    EXPECT_EQ(writeList([](int number) { return number % 2 == 0; }), petalLines(R"(
    some\t(list x
        2
        4))"));
    EXPECT_EQ(writeList([](int) { return false; }), "");
}
