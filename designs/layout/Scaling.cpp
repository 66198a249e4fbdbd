#include "designs/layout/Scaling.h"

#include "designs/layout/TextSize.h"

#include <algorithm>
#include <cmath>

namespace design {

namespace {

// How much larger a box must be, by what the file says of its size; 0 where it says nothing.
double factorFor(const Box& box, const Classifier& classifier, const Catalogue& catalogue)
{
    const Size needed = neededSize(classifier, box, catalogue);
    double factor = 0;
    if (box.bounds->width > 0)
        factor = std::max(factor, needed.width / box.bounds->width);
    if (box.bounds->height > 0)
        factor = std::max(factor, needed.height / box.bounds->height);
    return factor;
}

} // namespace

double factorForText(const Diagram& diagram, const Catalogue& catalogue)
{
    constexpr double share = 0.9; // of the boxes; the text of the others is cut
    constexpr double largest = 2;
    std::vector<double> factors;
    for (const Box& box : diagram.boxes) {
        const Classifier* const classifier = box.bounds ? catalogue.classifier(box.elementId) : nullptr;
        const double factor = classifier ? factorFor(box, *classifier, catalogue) : 0;
        if (factor > 0)
            factors.push_back(factor);
    }
    if (factors.empty())
        return 1;
    const auto rank = static_cast<std::ptrdiff_t>(std::ceil(share * static_cast<double>(factors.size()))) - 1;
    std::nth_element(factors.begin(), factors.begin() + rank, factors.end());
    return std::clamp(factors[static_cast<std::size_t>(rank)], 1.0, largest);
}

void place(Diagram& diagram, double factor, Point offset)
{
    const auto placed = [&](Point point) { return Point{point.x * factor + offset.x, point.y * factor + offset.y}; };
    for (Box& box : diagram.boxes)
        if (box.bounds) {
            const Point corner = placed({box.bounds->left, box.bounds->top});
            box.bounds = Rectangle{corner.x, corner.y, box.bounds->width * factor, box.bounds->height * factor};
        }
    const auto placeAll = [&](std::vector<Point>& points) {
        std::transform(points.begin(), points.end(), points.begin(), placed);
    };
    for (Line& line : diagram.lines) {
        placeAll(line.points);
        if (line.middle)
            line.middle = placed(*line.middle);
        for (LinePart& part : line.parts) {
            placeAll(part.points);
            if (part.place)
                part.place = placed(*part.place);
        }
    }
}

} // namespace design
