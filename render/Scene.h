#pragma once

#include "render/Node.h"

#include <cstdint>
#include <deque>
#include <unordered_map>
#include <vector>

namespace render {

/// Height of the title of a swimlane.
inline constexpr double laneTitle = 70;

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
    [[nodiscard]] Rect laneOf(const Object& swimlane) const { return lanes.at(&swimlane); }

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
    [[nodiscard]] const Junction* junctionAt(const Object& association) const;
    [[nodiscard]] static Path selfRolePath(const Object& role, const Node& node, const Junction& junction);
    [[nodiscard]] Point treePoint(const Object& tree) const;
    [[nodiscard]] End endOf(const Object& view, std::string_view key) const;
    void addQualifiers(Line& line) const;

    const Context& common;
    std::deque<Node> allNodes;
    std::vector<Line> allLines;
    std::vector<const Object*> otherViews;
    std::unordered_map<const Object*, Node*> nodeByView;
    std::unordered_map<const Object*, std::size_t> lineByView;
    std::unordered_map<const Object*, Junction> junctions;
    std::unordered_map<const Object*, Rect> lanes;
};

[[nodiscard]] const LineKind* lineKindOf(const Object& view);

/// The message that a view shows, by its label, or null.
[[nodiscard]] const Object* messageOf(const Context& context, const Object& view);

/// Draws the texts of lines and messages, none over another.
class Labels {
public:
    Labels(const Scene& scene, Svg& svg) : scene(scene), svg(svg) {}

    /// `number` is in front of the text.
    void draw(const Object& view, const Path& path, const std::string& number = "");

private:
    void drawOne(const Object& view, const Object& label, const Path& path, const std::string& number);
    [[nodiscard]] Rect rectOf(const Object& view, const Object& label, const Path& path, Size size) const;
    [[nodiscard]] Rect clearOfEnds(const Object& view, Rect rect) const;
    [[nodiscard]] Rect moved(Rect rect) const;

    const Scene& scene;
    Svg& svg;
    std::vector<Rect> taken;
};

void drawLine(const Context& context, const Line& line, Svg& svg, Labels& labels);
/// Associations, swimlanes, messages; `number` is that of a message in its diagram.
void drawOther(const Scene& scene, const Object& view, const std::string& number, Svg& svg, Labels& labels);
/// Whether such a view is drawn by drawOther.
[[nodiscard]] bool isOther(const Object& view);
/// A line with its end.
void drawPath(const Path& path, const Stroke& stroke, LineEnd end, Svg& svg);

} // namespace render
