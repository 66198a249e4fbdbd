#pragma once

#include "render/shapes/Context.h"

#include <string>
#include <vector>

namespace render {

struct Node;

/// What is drawn for views of one kind that have a place: boxes, ellipses, icons, notes.
struct NodeKind {
    std::string_view keyword;
    /// Fills in blocks, outline and the least size of a node; its place comes later.
    void (*prepare)(const Context& context, Node& node);
    void (*draw)(const Context& context, const Node& node, Svg& svg);
    /// Size of those whose size the file leaves open.
    Size usualSize;
    bool isNamedOutside = false; ///< the name stands below or beside
};

/// The attributes or the operations of a class.
struct MemberBlock {
    TextBlock text;
    std::string access; ///< `+`, `#`, `-`, `~` or a blank for each line
    bool areOperations = false;
    bool hasIcons = false; ///< which say what a member is and who may use it

    [[nodiscard]] Size size(const TextMeasure& measure) const;
};

struct Node {
    const Object* view = nullptr;
    const Object* element = nullptr; ///< null when it is not in the document
    const NodeKind* kind = nullptr;
    std::string name;
    std::string icon; ///< in lower case, if it is drawn as an icon
    Font font;
    Stroke stroke;
    std::vector<TextBlock> blocks; ///< what stands in it, from top to bottom
    TextBlock owner;               ///< below the name: the package of an element that is shown in another
    std::vector<MemberBlock> members;
    Size least; ///< so that nothing spills
    Size usual; ///< of those whose size the file leaves open
    Outline outline = Outline::rectangle;
    bool isNamedOutside = false;
    bool isPlaced = true;
    Rect rect;
    Rect nameRect;             ///< only when named outside
    bool isNamedBelow = false; ///< where lines end, too
};

/// The node of a view, whatever its kind; `rect` is where the file says.
[[nodiscard]] Node nodeOf(const Context& context, const Object& view);

/// Whether views like this are nodes.
[[nodiscard]] const NodeKind* nodeKindOf(const Object& view);

/// Moves a node, its name with it.
void moveTo(Node& node, Point centre);

/// The whole room of a node.
[[nodiscard]] Rect roomOf(const Node& node);

/// Whether lines do not come to `point`: it is in the box, the icon or the name below that.
[[nodiscard]] bool isCovered(const Node& node, Point point);
/// Where a line from a point in the node to one outside of it leaves the node.
[[nodiscard]] Point exitOf(const Node& node, Point inside, Point outside);

void drawNode(const Context& context, const Node& node, Svg& svg);

/// Room between the border of a box and what stands in it.
inline constexpr double padding = 12;
inline constexpr double sidePadding = 9; ///< left and right

/// Sizes of all blocks below each other.
[[nodiscard]] Size sizeOfBlocks(const Context& context, const Node& node);

// What several kinds use.
void prepareClass(const Context& context, Node& node);
void drawClass(const Context& context, const Node& node, Svg& svg);
void prepareObject(const Context& context, Node& node);
/// The words that an object is called by: `name : Class`.
[[nodiscard]] std::string objectName(const Context& context, const Object& view, const Object* element);

/// What stands behind the name of a member or parameter: ` : Money = 0`.
[[nodiscard]] std::string typeAndValue(const Object& feature);
/// The members of a class that a view shows; up to two blocks.
[[nodiscard]] std::vector<MemberBlock> membersOf(const Context& context, const Object& view, const Object* element);
/// Draws what has room in `rect`, from its top.
void drawMembers(const Context& context, const MemberBlock& block, const Rect& rect, Svg& svg);
/// The members of a class from the top of `rect`, with rules between them if they are in a box.
void drawCompartments(const Context& context, const Node& node, const Rect& rect, bool isBoxed, Svg& svg);
/// Height from the first member to the lower end of all.
[[nodiscard]] double heightOfMembers(const Node& node);

/// Draws an icon (actor, boundary, control, entity, interface) into `rect`; false when there is none of that name.
bool drawIcon(std::string_view icon, const Rect& rect, const Stroke& stroke, Svg& svg);
/// Its usual size, 0 when there is none of that name.
[[nodiscard]] Size iconSize(std::string_view icon);

} // namespace render
