#include "diagrams/Labels.h"

#include "plugin/support/Written.h"

#include <climits>
#include <gmock/gmock.h>

namespace {

std::string letters(std::size_t count)
{
    return std::string(count, 'x');
}

std::string sizeOf(long long lines, long long maxWidth)
{
    return "\r\n\t\tnlines\t\t" + std::to_string(lines) + "\r\n\t\tmax_width\t" + std::to_string(maxWidth) + "\r\n";
}

TEST(ItemLabel, SizesOfNames)
{
    struct Row {
        const char* what;
        Coordinate width;
        std::string name;
        long long lines;
        long long maxWidth;
    };
    const Row rows[] = {
        {"45 bytes in 20 characters", 400, letters(45), 3, 400},
        {"a last line that is exactly full", 400, letters(40), 3, 400},
        {"a last line one byte short of full", 400, letters(39), 2, 400},
        {"no name", 400, "", 1, 400},
        {"a width between two characters", 419, letters(20), 2, 400},
        {"bytes, not characters", 400, "\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9", 2, 400},
        {"a line feed is one byte, though written as two", 400, letters(18) + "\n", 1, 400},
        {"double quotes are one byte, though written as two", 400, std::string(19, '"'), 1, 400},
        {"half a character", 10, letters(6), 7, 20},
        {"no width", 0, letters(6), 7, 20},
        {"just below one character", 19, letters(6), 7, 20},
        {"one character", 20, letters(6), 7, 20},
        {"just below two characters", 39, letters(6), 7, 20},
        {"two characters", 40, letters(6), 4, 40},
        {"negative, next to measuring", -2, letters(6), 7, 20},
        {"negative, below one character", -19, letters(6), 7, 20},
        {"minus one character", -20, letters(6), 1, -20},
        {"a little wider", -21, letters(6), 1, -20},
        {"minus one character and no name", -20, "", 1, -20},
        {"the greatest int", INT_MAX, letters(6), 1, 2147483640},
        {"the least int", INT_MIN, letters(6), 1, -2147483640},
        {"measured", -1, letters(45), 1, 900},
        {"measured, empty", -1, "", 1, 0},
        {"measured, later lines count their line feed", -1, "ab\ncde", 2, 80},
        {"measured, the first line does not", -1, "abcd\nef", 2, 80},
        {"measured, line feeds only", -1, "\n\n", 3, 20},
        {"measured, a line feed at the end", -1, "abc\n", 2, 60},
    };
    for (const Row& row : rows)
        EXPECT_THAT(written([&] {
                        printItemLabel(1, {0, 0}, row.width, KivString(row.name));
                    }),
                    testing::HasSubstr(sizeOf(row.lines, row.maxWidth)))
            << row.what;
}

struct TextRow {
    const char* what;
    Coordinate width;
    std::string text;
    long long lines;
    long long maxWidth;
    std::string writtenText;
};

TEST(ItemLabel, SizesOfTextsAsWritten)
{
    const TextRow rows[] = {
        {"28 bytes and two quotes", 240, letters(28), 3, 240, '"' + letters(28) + '"'},
        {"nothing but quotes", 240, "", 1, 240, R"("")"},
        {"quotes fill the line", 240, letters(10), 2, 240, '"' + letters(10) + '"'},
        {"escapes count", 240, R"(\\\\\)", 2, 240, R"("\\\\\\\\\\")"},
        {"a block of ten bytes", 240, "ab\ncde", 1, 240, "\n|ab\n|cde\n"},
        {"a block, one byte a line", 20, "ab\ncde", 11, 20, "\n|ab\n|cde\n"},
        {"a block for a double quote", 100, "a\"b", 2, 100, "\n|a\"b\n"},
        {"measured", -1, "abc", 1, 100, R"("abc")"},
        {"measured block", -1, "ab\ncde", 4, 100, "\n|ab\n|cde\n"},
        {"measured block with a carriage return", -1, "ab\r\nc", 4, 100, "\n|ab\r\n|c\n"},
    };
    for (const TextRow& row : rows) {
        const KivString text(row.text);
        EXPECT_THAT(written([&] {
                        printItemLabel(1, {0, 0}, row.width, makeRoseDesc(text));
                    }),
                    testing::AllOf(testing::HasSubstr(sizeOf(row.lines, row.maxWidth)),
                                   testing::EndsWith("\r\n\t\tlabel      \t" + row.writtenText + ")")))
            << row.what;
    }
}

TEST(FreeLabel, SizesOfTextsAsWritten)
{
    const TextRow rows[] = {
        {"wider than the least width", 600, letters(48), 1, 1000, '"' + letters(48) + '"'},
        {"narrower", 600, letters(27), 1, 600, '"' + letters(27) + '"'},
        {"empty", 600, "", 1, 600, R"("")"},
        {"a least width between two characters", 619, "", 1, 600, R"("")"},
        {"no least width", 0, "", 1, 40, R"("")"},
        {"a negative least width", -400, "abc", 1, 100, R"("abc")"},
        {"a carriage return is escaped", 0, "a\rb", 1, 120, R"("a\rb")"},
        {"a block of ten bytes", 600, "ab\ncde", 4, 600, "\n|ab\n|cde\n"},
        {"a block, no least width", 0, "ab\ncde", 4, 100, "\n|ab\n|cde\n"},
        {"a block of empty lines", 0, "\n", 4, 40, "\n|\n|\n"},
    };
    for (const TextRow& row : rows) {
        const KivString text(row.text);
        EXPECT_EQ(written([&] {
                      printLabel(501, {-3, 4}, row.width, makeRoseDesc(text));
                  }),
                  "\r\n\t(object Label @501\r\n\tlocation\t(-3,4)\r\n\tnlines\t\t" + std::to_string(row.lines) +
                      "\r\n\tmax_width\t" + std::to_string(row.maxWidth) + "\r\n\tlabel      \t" + row.writtenText +
                      ")")
            << row.what;
    }
}

} // namespace
