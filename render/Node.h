#pragma once

#include "render/Context.h"

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

struct Node {
    const Object* view = nullptr;
    const Object* element = nullptr; ///< null when it is not in the document
    const NodeKind* kind = nullptr;
    std::string name;
    std::string icon; ///< in lower case, if it is drawn as an icon
    Font font;
    Stroke stroke;
    std::vector<TextBlock> blocks; ///< what stands in it, from top to bottom
    Size least;                    ///< so that nothing spills
    Size usual;
    Outline outline = Outline::rectangle;
    bool isNamedOutside = false;
    bool isPlaced = true;
    Rect rect;
    Rect nameRect; ///< only when named outside
};

/// The node of a view, whatever its kind; `rect` is where the file says.
[[nodiscard]] Node nodeOf(const Context& context, const Object& view);

/// Whether views like this are nodes.
[[nodiscard]] const NodeKind* nodeKindOf(const Object& view);

/// Moves a node, its name with it.
void moveTo(Node& node, Point centre);

/// The whole room of a node.
[[nodiscard]] Rect roomOf(const Node& node);

void drawNode(const Context& context, const Node& node, Svg& svg);

/// Room between the border of a box and what stands in it.
inline constexpr double padding = 12;

/// Sizes of all blocks below each other.
[[nodiscard]] Size sizeOfBlocks(const Context& context, const Node& node);

// What several kinds use.
void prepareClass(const Context& context, Node& node);
void drawClass(const Context& context, const Node& node, Svg& svg);
void prepareObject(const Context& context, Node& node);
/// The words that an object is called by: `name : Class`.
[[nodiscard]] std::string objectName(const Context& context, const Object& view, const Object* element);

/// Draws an icon (actor, boundary, control, entity, interface) into `rect`; false when there is none of that name.
bool drawIcon(std::string_view icon, const Rect& rect, const Stroke& stroke, Svg& svg);
/// Its usual size, 0 when there is none of that name.
[[nodiscard]] Size iconSize(std::string_view icon);

} // namespace render
