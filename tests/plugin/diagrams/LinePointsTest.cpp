#include "diagrams/LinePoints.h"

#include "kiv/KivIbmRationalRose98ExportVertices.h"
#include "plugin/support/Written.h"

namespace {

// A line as the exported class gives it: its points one after the other, its ends, its shape.
struct Line {
    std::string points;
    std::string origin;
    std::string terminal;
    bool isRectilinear;

    friend bool operator==(const Line&, const Line&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Line& line)
    {
        return out << line.points << " from " << line.origin << " to " << line.terminal
                   << (line.isRectilinear ? ", rectilinear" : "");
    }
};

constexpr std::string_view pointStart = "\r\n\t\t";

Line lineOf(std::string_view text)
{
    KivIbmRationalRose98ExportVertices vertices{KivString(text)};
    std::string points(vertices.getLinePoints().view());
    for (std::size_t at = 0; (at = points.find(pointStart, at)) != std::string::npos;)
        points.erase(at, pointStart.size());
    return {points, vertices.originPoint.text(), vertices.terminalPoint.text(), vertices.rectilinear};
}

// What a view writes for that line.
std::string viewOf(std::string_view text)
{
    if (text.empty())
        return "\r\n\tline_style\t0";
    KivIbmRationalRose98ExportVertices vertices{KivString(text)};
    std::string view = "\r\n\tvertices\t(list Points";
    view.append(vertices.getLinePoints().view()).append(")");
    if (!vertices.rectilinear)
        return view + "\r\n\tline_style\t0";
    view.append("\r\n\tline_style\t3\r\n\torigin_attachment     ").append(vertices.originPoint.view());
    return view.append("\r\n\tterminal_attachment   ").append(vertices.terminalPoint.view());
}

class LinePoints : public testing::Test {
protected:
    LinePoints()
    {
        resetIndent();
        increaseIndent();
    }
};

struct Row {
    const char* what;
    std::string_view text;
    Line line;
};

template <std::size_t Count>
void check(const Row (&rows)[Count])
{
    for (const Row& row : rows) {
        EXPECT_EQ(lineOf(row.text), row.line) << row.what << ": " << row.text;
        EXPECT_EQ(written([&] { printLine(KivString(row.text)); }), viewOf(row.text)) << row.what << ": " << row.text;
    }
}

TEST_F(LinePoints, OfTheModel)
{
    const Scales scales(1, 1);
    check({
        {"a corner", "(10,20)\r\n(10,80)\r\n(60,80)", {"(10,20)(10,80)(60,80)", "(10,20)", "(60,80)", true}},
        {"slanted", "(0,0)\r\n(50,50)", {"(0,0)(50,50)", "(0,0)", "(50,50)", false}},
        {"slanted at the start", "(0,0)\r\n(5,6)\r\n(5,7)", {"(0,0)(5,6)(5,7)", "(0,0)", "(5,7)", false}},
        {"slanted at the end", "(0,0)\r\n(5,0)\r\n(6,7)", {"(0,0)(5,0)(6,7)", "(0,0)", "(6,7)", false}},
        {"a single point", "(7,9)", {"(7,9)", "(7,9)", "(7,9)", true}},
        {"a point twice", "(7,9)\r\n(7,9)", {"(7,9)(7,9)", "(7,9)", "(7,9)", true}},
        {"back where it began", "(1,2)\r\n(1,5)\r\n(1,2)", {"(1,2)(1,5)(1,2)", "(1,2)", "(1,2)", true}},
        {"only neighbours count", "(1,2)\r\n(1,5)\r\n(4,5)", {"(1,2)(1,5)(4,5)", "(1,2)", "(4,5)", true}},
        {"below zero", "(-1,-2)\r\n(-1,2)", {"(-1,-2)(-1,2)", "(-1,-2)", "(-1,2)", true}},
    });
}

TEST_F(LinePoints, OfOtherTexts)
{
    const Scales scales(1, 1);
    const Line none = {"", "(0,0)", "(0,0)", true};
    const Line origin = {"(0,0)", "(0,0)", "(0,0)", true};
    const Line point = {"(1,2)", "(1,2)", "(1,2)", true};
    const Line two = {"(1,2)(1,5)", "(1,2)", "(1,5)", true};
    const Line brokenStart = {"(0,0)(1,2)", "(0,0)", "(1,2)", false};
    const Line brokenEnd = {"(1,2)(0,0)", "(1,2)", "(0,0)", false};
    check({
        {"empty", "", none},
        {"no parenthesis", "1,2", none},
        {"never closed", "(1,2", none},
        {"only line ends", "\r\n\r\n", none},
        {"only closed", ")", origin},
        {"empty parentheses", "()", origin},
        {"never opened", "1,2)", origin},
        {"opened twice", "((1,2)", point},
        {"opened before", "(9,9\r\n(1,2)", point},
        {"closed twice", "(1,2))", brokenEnd},
        {"nested", "((1,2),(1,5))", {"(1,2)(1,5)(0,0)", "(1,2)", "(0,0)", false}},
        {"first broken", "(1;2)\r\n(1,2)", brokenStart},
        {"last broken", "(1,2)\r\n(1,)", brokenEnd},
        {"a last line end", "(1,2)\r\n(1,5)\r\n", two},
        {"bare line feed", "(1,2)\n(1,5)", two},
        {"bare carriage return", "(1,2)\r(1,5)", two},
        {"nothing between", "(1,2)(1,5)", two},
        {"an empty line between", "(1,2)\r\n\r\n(1,5)", two},
        {"text around", "from (1,2) to (1,5)!", two},
        {"never closed at the end", "(1,2)\r\n(1,5)\r\n(7,7", two},
        {"a byte of zero between", std::string_view("(1,2)\0(1,5)", 11), two},
        {"white space before x", "( \t\r\n\v\f1,2)", point},
        {"white space before y", "(1, \t\r\n\v\f2)", point},
        {"white space after x", "(1 ,2)", origin},
        {"white space after y", "(1,2 )", origin},
        {"white space after the sign", "(- 1,2)", origin},
        {"white space inside a number", "(1 1,2)", origin},
        {"a no-break space", "(\u00a01,2)", origin},
        {"a byte of zero", std::string_view("(\0001,2)", 6), origin},
        {"plus signs", "(+1,+2)", point},
        {"minus zero", "(-0,-0)", origin},
        {"two signs", "(+-1,2)", origin},
        {"a sign alone", "(-,2)", origin},
        {"leading zeros are no octals", "(001,-010)", {"(1,-10)", "(1,-10)", "(1,-10)", true}},
        {"hexadecimal", "(0x1,2)", origin},
        {"fraction", "(1.0,2)", origin},
        {"exponent", "(1e0,2)", origin},
        {"one number", "(1)", origin},
        {"three numbers", "(1,2,3)", origin},
        {"no x", "(,2)", origin},
        {"no comma", "(1 2)", origin},
        {"two commas", "(1,,2)", origin},
    });
}

TEST_F(LinePoints, PastTheIntRange)
{
    const auto point = [](const std::string& x, const std::string& y) {
        return std::string("(").append(x).append(",-").append(y).append(")");
    };
    const std::string digits = point(std::string(1000, '9'), std::string(1000, '9'));
    const std::string zeros = point(std::string(1000, '0') + "7", std::string(1000, '0') + "9");
    const Line extremes = {"(2147483647,-2147483648)", "(2147483647,-2147483648)", "(2147483647,-2147483648)", true};
    {
        const Scales scales(1, 1);
        check({
            {"the last ints", "(2147483647,-2147483648)", extremes},
            {"one more", "(2147483648,-2147483649)", extremes},
            {"the last of 64 bits", "(9223372036854775807,-9223372036854775808)", extremes},
            {"past 64 bits", "(9223372036854775808,-9223372036854775809)", extremes},
            {"past unsigned 64 bits", "(18446744073709551617,-18446744073709551617)", extremes},
            {"a thousand digits", digits, extremes},
            {"a thousand zeros", zeros, {"(7,-9)", "(7,-9)", "(7,-9)", true}},
            {"equal once clamped, so upright",
             "(2147483648,0)\r\n(4294967296,5)",
             {"(2147483647,0)(2147483647,5)", "(2147483647,0)", "(2147483647,5)", true}},
        });
    }
    {
        const Scales scales(0.5F, -0.5F);
        check({{"clamped before scaling",
                digits,
                {"(1073741823,1073741824)", "(1073741823,1073741824)", "(1073741823,1073741824)", true}}});
    }
    const Scales scales(2, -1);
    check({{"clamped after scaling",
            "(1073741824,-2147483648)",
            {"(2147483647,2147483647)", "(2147483647,2147483647)", "(2147483647,2147483647)", true}}});
}

TEST_F(LinePoints, Scaled)
{
    struct ScaledRow {
        float x;
        float y;
        Row row;
    };
    const ScaledRow rows[] = {
        {0.5F, 2.0F, {"half and double", "(15,-3)", {"(7,-6)", "(7,-6)", "(7,-6)", true}}},
        {-1, -0.5F, {"negative", "(15,-3)", {"(-15,1)", "(-15,1)", "(-15,1)", true}}},
        {0, 0, {"zero", "(15,-3)\r\n(15,9)", {"(0,0)(0,0)", "(0,0)", "(0,0)", true}}},
        {0, 0, {"slanted as the model has it", "(0,0)\r\n(1,1)", {"(0,0)(0,0)", "(0,0)", "(0,0)", false}}},
        {0.7F, 1.1F, {"floats in double", "(10,10)", {"(6,11)", "(6,11)", "(6,11)", true}}},
        {9.2e16F,
         -9.2e16F,
         {"huge", "(1,1)", {"(2147483647,-2147483648)", "(2147483647,-2147483648)", "(2147483647,-2147483648)", true}}},
    };
    for (const ScaledRow& row : rows) {
        const Scales scales(row.x, row.y);
        check({row.row});
    }
}

TEST_F(LinePoints, StandOneLevelDeeperAndAreAppendedByEveryCall)
{
    const Scales scales(1, 1);
    KivIbmRationalRose98ExportVertices vertices("(1,2)\r\n(3,4)");
    increaseIndent();
    EXPECT_EQ(vertices.getLinePoints(), "\r\n\t\t\t(1,2)\r\n\t\t\t(3,4)");
    EXPECT_EQ(indent.text(), "\r\n\t\t");
    resetIndent();
    EXPECT_EQ(vertices.getLinePoints(), "\r\n\t\t\t(1,2)\r\n\t\t\t(3,4)\r\n\t(1,2)\r\n\t(3,4)");
    EXPECT_EQ(indent.text(), "\r\n");
}

} // namespace
