#pragma once

#include "render/shapes/Node.h"

#include <cstdint>
#include <deque>
#include <unordered_map>
#include <vector>

namespace render {

/// Height of the title of a swimlane, which is above everything else.
inline constexpr double laneTitle = 60;

struct Lane {
    Rect rect;
    bool isFirst = false;
    bool isShown = true; ///< not the last if it has no name
};

/// What a line ends with at its supplier.
enum class LineEnd : std::uint8_t { none, openArrow, filledArrow, halfArrow, triangle, diamond, filledDiamond };

struct LineKind {
    std::string_view keyword;
    bool isDashed = false;
    LineEnd end = LineEnd::none;
};

/// A line between two nodes or other lines.
struct Line {
    const Object* view = nullptr;
    const Object* element = nullptr;
    Stroke stroke;
    LineEnd end = LineEnd::none;
    Path path;            ///< from client to supplier, clipped at the boxes; empty when an end is gone
    TextBlock qualifiers; ///< of a role
    Rect qualifierRect;
};

/// What a diagram shows, each thing with its place.
class Scene {
public:
    explicit Scene(const Context& context);

    [[nodiscard]] const Context& context() const { return common; }
    [[nodiscard]] const std::deque<Node>& nodes() const { return allNodes; }
    [[nodiscard]] const std::vector<Line>& lines() const { return allLines; }
    /// Views that are neither: associations (their roles are the lines), swimlanes, messages.
    [[nodiscard]] const std::vector<const Object*>& others() const { return otherViews; }

    /// The node that a key of a view refers to, or null.
    [[nodiscard]] const Node* nodeOf(const Object& view, std::string_view key) const;
    /// The path of the line that a key of a view refers to, or null.
    [[nodiscard]] const Path* pathOf(const Object& view, std::string_view key) const;
    /// Where the roles of an association meet.
    [[nodiscard]] Point junctionOf(const Object& association) const;
    /// The line of an association from one end to the other, through its roles.
    [[nodiscard]] Path wholePathOf(const Object& association) const;
    [[nodiscard]] const Lane& laneOf(const Object& swimlane) const { return lanes.at(&swimlane); }

private:
    struct End {
        const Node* node = nullptr; ///< null at a line
        Point place;
        bool isKnown = false;
    };

    /// Where the roles of an association meet.
    struct Junction {
        Point place;
        bool isPlaced = false; ///< the file says where
        bool isLoop = false;   ///< all roles end at one node
        const Object* firstRole = nullptr;
        Path way; ///< from the first box to the second where a straight line would cross others
    };

    void add(const Object& view);
    void addNode(const Object& view);
    void addLine(const Object& view, const LineKind& kind);
    void addRoles(const Object& association);

    void arrangeNodes();
    void arrangeLanes();
    void arrangeNotes();
    void arrangeRest();
    /// The room of all nodes that have a place.
    [[nodiscard]] Rect room() const;
    [[nodiscard]] std::optional<Rect> targetOf(const Object& attachment, const Node*& note);
    [[nodiscard]] bool isFree(const Rect& rect) const;
    [[nodiscard]] std::optional<Point> freePlaceBeside(const Rect& target, Size size) const;

    void routeAll();
    void route(Line& line);
    [[nodiscard]] Path pathOf(const Line& line) const;
    [[nodiscard]] Path treePath(const Object& tree) const;
    [[nodiscard]] Path branchPath(const Object& view, const Node& client, const Object& tree) const;
    void findJunction(const Object& association);
    /// From a point to another around boxes, if the exporter left the way open and a straight line would cross one.
    [[nodiscard]] Path wayAround(Point from, Point to, const Node* first, const Node* second) const;
    /// Whether a box stands at a place that the exporter computed.
    [[nodiscard]] bool isComputedOnBox(Point place) const;
    [[nodiscard]] const Junction* junctionAt(const Object& association) const;
    [[nodiscard]] static Path selfRolePath(const Object& role, const Node& node, const Junction& junction);
    [[nodiscard]] Point treePoint(const Object& tree) const;
    [[nodiscard]] End endOf(const Object& view, std::string_view key) const;
    /// What stands at the ends of a line for a role: an arrow or a diamond, qualifiers.
    void addRoleTo(Line& line) const;

    const Context& common;
    std::deque<Node> allNodes;
    std::vector<Line> allLines;
    std::vector<const Object*> otherViews;
    std::unordered_map<const Object*, Node*> nodeByView;
    std::unordered_map<const Object*, std::size_t> lineByView;
    std::unordered_map<const Object*, Junction> junctions;
    std::unordered_map<const Object*, Lane> lanes;
    // What looking for ways around boxes may still cost: ways, each as long as a picture of a few boxes, and boxes that
    // are compared with lines.
    mutable std::size_t waysLeft;
    mutable std::size_t comparisonsLeft;
};

[[nodiscard]] const LineKind* lineKindOf(const Object& view);

/// The message that a view shows, by its label, or null.
[[nodiscard]] const Object* messageOf(const Context& context, const Object& view);

/// A line with its end.
void drawPath(const Path& path, const Stroke& stroke, LineEnd end, Svg& svg);
/// Whether such a view is drawn by drawOther.
[[nodiscard]] bool isOther(const Object& view);

} // namespace render
