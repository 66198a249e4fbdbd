#include "diagrams/Geometry.h"

#include "plugin/support/Written.h"

#include <climits>

namespace {

TEST(Coordinates, AreScaledInDoubleAndTruncatedTowardZero)
{
    struct Row {
        const char* what;
        float scale;
        Coordinate coordinate;
        Coordinate scaled;
    };
    const Row rows[] = {
        {"half, down", 0.5F, 101, 50},
        {"half, up from below zero", 0.5F, -101, -50},
        {"the float 0.7 is a little less", 0.7F, 10, 6},
        {"the float 0.7, negative", -0.7F, 10, -6},
        {"the float 1.1 is a little more", 1.1F, 10, 11},
        {"scale zero", 0.0F, INT_MAX, 0},
        {"scale one, the least int", 1.0F, INT_MIN, INT_MIN},
        {"every bit of an int", 1.0F, 2147483645, 2147483645},
        {"past the greatest int", 2.0F, INT_MAX, INT_MAX},
        {"past the least int", 2.0F, INT_MIN, INT_MIN},
        {"the least int turned round", -1.0F, INT_MIN, INT_MAX},
        {"one past the greatest int", 1.0F, 2147483648, INT_MAX},
        {"a sum past the int range, scaled back into it", 0.5F, 4294967293, 2147483646},
        {"a difference past the int range, scaled back", 0.5F, -4294967295, -2147483647},
        {"the greatest scale", 9.2e16F, 1, INT_MAX},
        {"the least scale", -9.2e16F, 1, INT_MIN},
        {"the greatest scale of nothing", 9.2e16F, 0, 0},
    };
    for (const Row& row : rows) {
        {
            const Scales scales(row.scale, 3);
            EXPECT_EQ(scaledX(row.coordinate), row.scaled) << row.what;
        }
        const Scales scales(3, row.scale);
        EXPECT_EQ(scaledY(row.coordinate), row.scaled) << row.what;
    }
}

TEST(Coordinates, AreClampedWhereTheyAreWritten)
{
    struct Row {
        Point point;
        const char* text;
    };
    const Row rows[] = {
        {{INT_MAX, INT_MIN}, "(2147483647,-2147483648)"},
        {{Coordinate{INT_MAX} + 1, Coordinate{INT_MIN} - 1}, "(2147483647,-2147483648)"},
        {{INT64_MIN, INT64_MAX}, "(-2147483648,2147483647)"},
        {{0, -1}, "(0,-1)"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(written([&] { append(row.point); }), row.text);
}

TEST(ViewNumbers, AreTheLowBits)
{
    struct Row {
        int offset;
        long number;
        int view;
    };
    constexpr long wrap = 1L << 32;
    const Row rows[] = {
        {0, 10, 10},
        {3013, 10, 3023},
        {INT_MAX, 1, INT_MIN},
        {INT_MIN, -1, INT_MAX},
        {0, INT_MAX + 1L, INT_MIN},
        {5, wrap + 10, 15},
        {-5, 10, 5},
        {-1, LONG_MIN, -1},
        {INT_MAX, LONG_MAX, INT_MAX - 1},
    };
    for (const Row& row : rows)
        EXPECT_EQ(viewNumber(row.offset, row.number), row.view) << row.offset << " and " << row.number;
}

// Objects with many projections are looked up in another way than those with few.
class Projections : public testing::TestWithParam<int> {
protected:
    Projections() { useGraphicalInfo = true; }
    ~Projections() override { releaseProjections(); }

    ModelBuilder builder;
    KivDesignPackage* const package = builder.package("Logical View");
    KivClass* const order = builder.addClass("Order", package);
};

TEST_P(Projections, OnEveryDiagramTheFirst)
{
    std::vector<KivClassDiagram*> diagrams;
    std::vector<KivProjection*> firsts;
    order->projections.add(nullptr);
    builder.projection(order, nullptr, 1, 1, 1, 1);
    for (int i = 0; i < GetParam(); ++i) {
        diagrams.push_back(builder.diagram("", package));
        firsts.push_back(builder.projection(order, diagrams.back(), i, 0, 0, 0));
        order->projections.add(nullptr);
    }
    for (KivClassDiagram* const diagram : diagrams)
        builder.projection(order, diagram, -1, 0, 0, 0);

    for (std::size_t i = 0; i < diagrams.size(); ++i)
        ASSERT_EQ(projectionOn(*order, *diagrams[i]), firsts[i]) << "diagram " << i;
    EXPECT_EQ(projectionOn(*order, *builder.diagram("not drawn", package)), nullptr);
    EXPECT_EQ(projectionOn(*builder.addClass("not drawn", package), *diagrams[0]), nullptr);
    EXPECT_EQ(geometryOn(*order, *diagrams[0]), firsts[0]);
    useGraphicalInfo = false;
    EXPECT_EQ(geometryOn(*order, *diagrams[0]), nullptr);

    releaseProjections();
    order->projections.removeAll();
    EXPECT_EQ(projectionOn(*order, *diagrams[0]), nullptr) << "an earlier export's projection";
}

INSTANTIATE_TEST_SUITE_P(Counts, Projections, testing::Values(1, 2, 3, 10'000));

} // namespace
