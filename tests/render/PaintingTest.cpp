#include "render/paper/Image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;

constexpr double pixelsPerUnit = 0.64;

struct Bounds {
    int left = 1 << 20;
    int top = 1 << 20;
    int right = -1;
    int bottom = -1;
};

// What a PNG file shows.
class Pixels {
public:
    explicit Pixels(const std::string& png)
    {
        image.version = PNG_IMAGE_VERSION;
        png_image_begin_read_from_memory(&image, png.data(), png.size());
        image.format = PNG_FORMAT_RGB;
        bytes.resize(PNG_IMAGE_SIZE(image));
        png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr);
    }

    [[nodiscard]] int columns() const { return static_cast<int>(image.width); }
    [[nodiscard]] int rows() const { return static_cast<int>(image.height); }
    [[nodiscard]] unsigned colour(int column, int row) const
    {
        const std::size_t at = 3 * (static_cast<std::size_t>(row) * image.width + static_cast<std::size_t>(column));
        return bytes[at] * 0x10000U + bytes[at + 1] * 0x100U + bytes[at + 2];
    }
    [[nodiscard]] unsigned colourAt(double x, double y) const // in units
    {
        return colour(static_cast<int>(x * pixelsPerUnit), static_cast<int>(y * pixelsPerUnit));
    }
    [[nodiscard]] Bounds ink() const
    {
        constexpr unsigned pale = 0x80;
        Bounds bounds;
        for (int row = 0; row < rows(); ++row)
            for (int column = 0; column < columns(); ++column)
                if ((colour(column, row) & 0xFFU) < pale)
                    bounds = {std::min(bounds.left, column), std::min(bounds.top, row), std::max(bounds.right, column),
                              std::max(bounds.bottom, row)};
        return bounds;
    }

private:
    png_image image = {};
    std::vector<std::uint8_t> bytes;
};

std::string pictureOf(const std::string& elements, const std::string& box = "0 0 401 200")
{
    return "<svg viewBox=\"" + box + "\"><title>None</title><g>" + elements + "</g></svg>";
}

Pixels drawn(const std::string& elements, const std::string& box = "0 0 401 200")
{
    return Pixels(render::imageOf(pictureOf(elements, box), render::ImageFormat::png,
                                  [](const std::string& warning) { ADD_FAILURE() << warning; }));
}

TEST(Painting, DrawsEveryShapeInItsColours)
{
    constexpr unsigned white = 0xFFFFFF;
    const struct {
        const char* element;
        double x, y;
        unsigned colour;
    } rows[] = {
        {"<rect x='10' y='10' width='100' height='80' fill='#102030'/>", 60, 50, 0x102030},
        {"<rect x='10' y='10' width='100' height='80' fill='#102030'/>", 120, 50, white},
        {"<rect x='10' y='10' width='100' height='80' fill='none' stroke='#0000ff' stroke-width='8'/>", 60, 50, white},
        {"<rect x='10' y='10' width='100' height='80' fill='none' stroke='#0000ff' stroke-width='8'/>", 60, 10.5, 0xFF},
        {"<rect x='10' y='10' width='100' height='80' rx='30' fill='#102030'/>", 60, 12, 0x102030},
        {"<rect x='10' y='10' width='100' height='80' rx='30' fill='#102030'/>", 13, 13, white},
        {"<ellipse cx='60' cy='50' rx='50' ry='20' fill='#00ff00' stroke='#000000' stroke-width='4'/>", 95, 50, 0xFF00},
        {"<ellipse cx='60' cy='50' rx='50' ry='20' fill='#00ff00' stroke='#000000' stroke-width='4'/>", 95, 70, white},
        {"<ellipse cx='60' cy='50' rx='50' ry='20' fill='#00ff00' stroke='#000000' stroke-width='4'/>", 60, 30, 0},
        {"<ellipse cx='60' cy='50' rx='0' ry='20' fill='#00ff00' stroke='#000000' stroke-width='4'/>", 60, 50, white},
        {"<polygon points='10,10 110,10 10,90' fill='#ff0000' stroke='#0000ff' stroke-width='6'/>", 30, 30, 0xFF0000},
        {"<polygon points='10,10 110,10 10,90' fill='#ff0000' stroke='#0000ff' stroke-width='6'/>", 10, 50, 0xFF},
        {"<polyline points='10,10 110,10 10,90' fill='none' stroke='#0000ff' stroke-width='6'/>", 60, 10, 0xFF},
        {"<polyline points='10,10 110,10 10,90' fill='none' stroke='#0000ff' stroke-width='6'/>", 10, 50, white},
        {"<polyline points='0,50 100,50' stroke='#ff' stroke-width='6' stroke-dasharray='20 30'/>", 10, 50, 0xFF},
        {"<polyline points='0,50 100,50' stroke='#ff' stroke-width='6' stroke-dasharray='20 30'/>", 35, 50, white},
    };
    for (const auto& row : rows)
        EXPECT_EQ(drawn(row.element).colourAt(row.x, row.y), row.colour) << row.element << row.x << ", " << row.y;
}

TEST(Painting, IsWhiteWhereThePictureEndsWithinAPixel)
{
    const Pixels pixels = drawn("<rect x='0' y='0' width='401.9' height='200' fill='#ffffff'/>", "0 0 401.9 200");
    EXPECT_EQ(pixels.colour(pixels.columns() - 1, pixels.rows() - 1), 0xFFFFFFU);
}

std::string text(const std::string& attributes, const std::string& words = "Hamburg")
{
    return "<text y='100' font-family='Arial' font-size='40' fill='#000000' " + attributes + ">" + words + "</text>";
}

TEST(Painting, PutsTextsWhereTheyBelong)
{
    const Bounds plain = drawn(text("x='50'")).ink();
    const int width = plain.right - plain.left;
    EXPECT_NEAR(plain.left, 50 * pixelsPerUnit, 4);
    EXPECT_NEAR(width, 4.1 * 40 * pixelsPerUnit, 12);
    EXPECT_LT(plain.top, 75 * pixelsPerUnit);
    EXPECT_NEAR(plain.bottom, 109 * pixelsPerUnit, 2); // of the g

    const Bounds centred = drawn(text("x='200' text-anchor='middle'")).ink();
    EXPECT_NEAR((centred.left + centred.right) / 2.0, 200 * pixelsPerUnit, 2);
    EXPECT_NEAR(centred.right - centred.left, width, 1);

    const Bounds squeezed = drawn(text("x='50' transform='matrix(0.500 0 0 1 25 0)'")).ink();
    EXPECT_NEAR(squeezed.left, plain.left, 2);
    EXPECT_NEAR(squeezed.right - squeezed.left, width / 2.0, 2);
    EXPECT_EQ(squeezed.top, plain.top);

    EXPECT_GT(drawn(text("x='50' font-weight='bold'")).ink().right, plain.right);
    EXPECT_EQ(drawn(text("x='50'", "  Hamburg ")).ink().right, plain.right);
    EXPECT_EQ(drawn(text("x='50'", "Hamburg &#10;  Hamburg")).ink().right,
              drawn(text("x='50'", "Hamburg Hamburg")).ink().right);
    EXPECT_EQ(drawn(text("x='50'", "  ")).ink().right, -1);
}

TEST(Painting, HasLinesUnderAndThroughTexts)
{
    const struct {
        const char* decoration;
        bool isUnder, isThrough;
    } rows[] = {{"", false, false},
                {"underline", true, false},
                {"line-through", false, true},
                {"underline line-through", true, true}};
    for (const auto& row : rows) {
        // Between the words nothing but lines can stand.
        const Pixels pixels = drawn(
            text("x='50' text-decoration='" + std::string(row.decoration) + "'", "l&#160;&#160;&#160;&#160;&#160;l"));
        const auto hasInk = [&](int from, int to) {
            for (int y = from; y < to; ++y)
                if ((pixels.colourAt(85, y) & 0xFFU) < 0x80U)
                    return true;
            return false;
        };
        EXPECT_EQ(hasInk(101, 112), row.isUnder) << row.decoration;
        EXPECT_EQ(hasInk(80, 97), row.isThrough) << row.decoration;
    }
}

TEST(Painting, KeepsLettersApartBySmallPartsOfAPixel)
{
    // Letters that are 5.7 pixels wide would be 6 if each stood on whole ones.
    const Bounds one = drawn(text("x='50'", "l")).ink();
    const Bounds many = drawn(text("x='50'", std::string(30, 'l'))).ink();
    const double step = (many.left - one.left + many.right - one.right) / 29.0;
    EXPECT_NEAR(step, 40 * 0.2222 * pixelsPerUnit, 0.05);
}

TEST(Painting, KeepsLettersAsSuchInPdf)
{
    EXPECT_THAT(render::imageOf(pictureOf(text("x='150'")), render::ImageFormat::pdf, nullptr), HasSubstr("/Font"));
}

TEST(Painting, TakesLettersOfEverySize)
{
    const struct {
        const char* attributes;
        bool isSeen;
    } rows[] = {{"font-size='0'", false},  {"font-size='0.1'", false}, {"font-size='9' fill='#000000'", true},
                {"font-size='40'", true}, // black, as nothing is said
                {"font-size='300'", true}, {"font-size='500'", true}};
    for (const auto& row : rows)
        EXPECT_EQ(
            drawn("<text x='0' y='190' font-family='Arial' " + std::string(row.attributes) + ">X</text>").ink().right >
                0,
            row.isSeen)
            << row.attributes;
}

} // namespace
