#include "diagrams/Geometry.h"

#include "model/ExportState.h"
#include "model/Numbering.h"
#include "petal/Pieces.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

// Up to here a look at every projection is faster than a table.
constexpr std::size_t fewProjections = 8;

using Place = std::pair<const KivModelObject*, const KivClassDiagram*>;

struct PlaceHash {
    std::size_t operator()(const Place& place) const
    {
        constexpr std::size_t odd = 0x9E3779B97F4A7C15U;
        const std::hash<const void*> hash;
        return hash(place.first) * odd ^ hash(place.second);
    }
};

// The first projection on each diagram, for objects with many of them; filled object by object.
struct ProjectionTable {
    std::unordered_map<Place, const KivProjection*, PlaceHash> firsts;
    std::unordered_set<const KivModelObject*> objects;

    void add(const KivModelObject& object)
    {
        for (const KivProjection* const projection : object.projections)
            if (projection)
                firsts.emplace(Place(&object, projection->diagram), projection);
        objects.insert(&object);
    }
};
ProjectionTable known;

} // namespace

char* copy(char* to, const Point& point)
{
    *to++ = '(';
    to = copy(to, clamped(point.x));
    *to++ = ',';
    to = copy(to, clamped(point.y));
    *to++ = ')';
    return to;
}

int clamped(Coordinate coordinate)
{
    constexpr Coordinate least = std::numeric_limits<int>::min();
    constexpr Coordinate greatest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(coordinate, least, greatest));
}

Coordinate truncated(double value)
{
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double greatest = std::numeric_limits<int>::max();
    return static_cast<Coordinate>(std::clamp(value, least, greatest));
}

Coordinate scaledX(Coordinate x)
{
    return truncated(static_cast<double>(x) * static_cast<double>(XScale));
}

Coordinate scaledY(Coordinate y)
{
    return truncated(static_cast<double>(y) * static_cast<double>(YScale));
}

const KivProjection* projectionOn(const KivModelObject& object, const KivClassDiagram& diagram)
{
    if (object.projections.count() <= fewProjections) {
        const auto found =
            std::find_if(object.projections.begin(), object.projections.end(),
                         [&](const auto* projection) { return projection && projection->diagram == &diagram; });
        return found != object.projections.end() ? *found : nullptr;
    }
    if (!known.objects.contains(&object))
        known.add(object);
    const auto found = known.firsts.find(Place(&object, &diagram));
    return found != known.firsts.end() ? found->second : nullptr;
}

const KivProjection* geometryOn(const KivModelObject& object, const KivClassDiagram& diagram)
{
    return useGraphicalInfo ? projectionOn(object, diagram) : nullptr;
}

int viewNumber(int offset, long number)
{
    return lowBits(static_cast<long>(static_cast<unsigned long>(offset) + static_cast<unsigned long>(number)));
}

void releaseProjections() noexcept
{
    known = ProjectionTable();
}
