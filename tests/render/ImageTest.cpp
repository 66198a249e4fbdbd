#include "render/paper/Image.h"
#include "Drawing.h"

namespace {

using render::ImageFormat;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Image, IsOfTheFormat)
{
    Drawn drawn(modelOf("(object ClassView \"Class\" \"A\" @1 location (500, 500))"));
    const std::string svg = drawn.picture(drawn.index.diagrams().front());
    const struct {
        ImageFormat format;
        const char* start;
    } rows[] = {{ImageFormat::svg, "<svg "}, {ImageFormat::png, "\x89PNG\r\n"}, {ImageFormat::pdf, "%PDF-1."}};
    for (const auto& row : rows)
        EXPECT_THAT(render::imageOf(svg, row.format, [](const std::string& text) { ADD_FAILURE() << text; }),
                    StartsWith(row.start));
}

TEST(Image, IsReducedRatherThanTooLarge)
{
    Drawn drawn(modelOf("(object ClassView \"Class\" \"A\" @1 location (500, 500)) "
                        "(object ClassView \"Class\" \"B\" @2 location (99000, 99000))"));
    std::vector<std::string> warnings;
    const auto warn = [&](const std::string& text) { warnings.push_back(text); };
    const std::string png = render::imageOf(drawn.picture(drawn.index.diagrams().front()), ImageFormat::png, warn);
    EXPECT_THAT(png, StartsWith("\x89PNG"));
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_THAT(warnings[0], HasSubstr("reduced to 9 %"));
}

TEST(Image, SaysThatAPictureIsNone)
{
    EXPECT_THROW(static_cast<void>(render::imageOf("<svg", ImageFormat::png, nullptr)), render::ImageError);
}

TEST(Text, IsBrokenBetweenWords)
{
    const struct {
        const char* text;
        double letters; // that a line has room for
        std::vector<std::string> lines;
    } rows[] = {
        {"", 10, {}},
        {"one two three", 0, {"one two three"}},
        {"one two three", 8, {"one two", "three"}},
        {"one two three", 4, {"one", "two", "three"}},
        {"one\n\ntwo\n", 10, {"one", "", "two"}},
        {"extraordinary name", 4, {"extraordinary", "name"}},
        {"\u0645\u0646\u0648 \u0627\u0635\u0644", 4, {"\u0645\u0646\u0648", "\u0627\u0635\u0644"}},
    };
    const EqualLetters measure;
    const render::Font font;
    for (const auto& row : rows)
        EXPECT_EQ(render::wrapped(row.text, font, row.letters * font.em() / 2, measure), row.lines) << row.text;
    EXPECT_GT(render::wrapped(std::string(1000, 'x'), font, 100, measure).size(), 5U);
}

TEST(Text, IsMeasuredByTheFontThatDrawsIt)
{
    const render::PangoMeasure measure;
    render::Font font;
    const double small = measure.width("Order", font);
    EXPECT_GT(small, font.em());
    EXPECT_LT(small, 4 * font.em());
    EXPECT_GT(measure.width("Orders", font), small);
    font.isBold = true;
    EXPECT_GT(measure.width("Order", font), small);
    font.size = 20;
    EXPECT_GT(measure.width("Order", font), 1.8 * small);
}

} // namespace
