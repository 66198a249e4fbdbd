#pragma once

#include "diagrams/Geometry.h"
#include "petal/PetalWriter.h"

/// The labels of diagrams, by their shapes. Sizes are estimated from the text's length in bytes, 20 Rose units a byte.

inline constexpr std::size_t unitsPerCharacter = 20;

/// Writes the label of a view: a name between quotes. `width` is in Rose units; -1 takes the text's own size.
///
///     label      \t(object ItemLabel
///     \tParent_View \t@26
///     \tlocation\t\t(69,86)
///     \tnlines\t\t3
///     \tmax_width\t400
///     \tjustify\t\t0
///     \tlabel      \t"Order")
void printItemLabel(int parentView, Point location, Coordinate width, const KivString& name);
/// The same with a free text and without the line about justification.
void printItemLabel(int parentView, Point location, Coordinate width, RoseDesc text);

/// Writes a free-standing label at least `minWidth` Rose units wide.
///
///     (object Label @501
///     location\t(0,0)
///     nlines\t\t1
///     max_width\t600
///     label      \t"A diagram")
void printLabel(int number, Point location, Coordinate minWidth, RoseDesc text);

/// What labels along a line have in common, kind by kind.
struct SegmentLabelShape {
    const char* opening;
    int anchor;
    std::size_t extraWidth;
    const char* pctDist;
    int height;
    int orientation;
};

inline constexpr const char* segmentLabel = "label      \t(object SegLabel @";
inline constexpr const char* segmentStereotype = "stereotype \t(object SegLabel @";

/// Writes a label along a line; `length` is that of its text without brackets.
///
///     label      \t(object SegLabel @27
///     \tParent_View \t@26
///     \tlocation\t\t(12,-60)
///     \tanchor     \t1
///     \tanchor_loc \t1
///     \tnlines     \t1
///     \tmax_width  \t160
///     \tjustify    \t0
///     \tlabel      \t"places"
///     \tpctDist    \t0.500000
///     \theight     \t30
///     \torientation \t0)
template <class Text>
void printSegmentLabel(const SegmentLabelShape& shape, int number, int parentView, Point location, std::size_t length,
                       const Text& text)
{
    object([&] {
        line(shape.opening, number);
        line("\tParent_View \t@", parentView);
        line("\tlocation\t\t", location);
        line("\tanchor     \t", shape.anchor);
        line("\tanchor_loc \t1");
        line("\tnlines     \t1");
        line("\tmax_width  \t", length * unitsPerCharacter + shape.extraWidth);
        line("\tjustify    \t0");
        line("\tlabel      \t", text);
        line("\tpctDist    \t", shape.pctDist);
        line("\theight     \t", shape.height);
        line("\torientation \t", shape.orientation);
    });
}

/// A stereotype as diagrams show it.
[[nodiscard]] inline auto quotedStereotype(const KivString& stereotype)
{
    return quoted("<<", stereotype, ">>");
}
