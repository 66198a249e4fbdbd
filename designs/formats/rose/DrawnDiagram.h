#pragma once

#include "designs/formats/rose/Reading.h"
#include "reader/index/Behaviour.h"
#include "reader/index/Kinds.h"

#include <optional>
#include <string>
#include <vector>

/// Diagrams of the kinds that a design has not: what they show, read straight from the file.

namespace design::rose {

enum class FigureKind : std::uint8_t {
    Object, ///< also a lifeline
    State,
    Activity,
    Start,
    End,
    Decision,
    Bar, ///< where ways part or meet
    Lane,
    Component,
    Subsystem,
    Interface,
    Processor,
    Device,
    Other, ///< a class, a package, a use case
};

struct Figure {
    std::string key; ///< of the view, by which joints and notes refer to it
    FigureKind kind = FigureKind::Other;
    std::string name;
    std::string stereotype;
    std::vector<std::string> lines;    ///< actions of a state, processes of a processor
    std::string around;                ///< key of the figure that it stands in; or empty
    Box box;                           ///< place and colours
    std::optional<double> destroyedAt; ///< of a lifeline
};

enum class JointKind : std::uint8_t {
    Plain,
    Transition,
    Dependency,
    Realization,
    Message,
};

struct Joint {
    JointKind kind = JointKind::Plain;
    std::string from; ///< keys of figures
    std::string to;
    std::string text;
    reader::Synchronization synchronization = reader::Synchronization::Simple;
    double height = 0;     ///< of a message in a sequence, from the top, in pixels
    std::string startsBar; ///< key of the bar of activity that a message begins; or empty
};

/// A bar of activity on a lifeline.
struct Bar {
    std::string key;
    std::string figure;
    double from = 0;
    double to = 0;
};

struct DrawnNote {
    std::string text;
    std::vector<std::string> figures; ///< keys of those that it hangs at
    Box box;
};

struct DrawnDiagram {
    reader::DiagramKind kind = reader::DiagramKind::other;
    std::string id;
    std::string name;
    std::string owner; ///< name of the element that it belongs to
    std::string path;  ///< of that
    std::string documentation;
    std::vector<Figure> figures; ///< in the order of the file
    std::vector<Joint> joints;
    std::vector<Bar> bars;
    std::vector<DrawnNote> notes;
    bool isNumbered = false;             ///< its messages show their numbers
    std::vector<std::string> shown;      ///< identifiers of the elements that it shows, and its own
    const Object* interaction = nullptr; ///< that it is a view of; or null
};

/// The diagram, with everything that leads from one of its figures to another.
[[nodiscard]] DrawnDiagram drawnDiagram(const Reading& reading, const reader::Diagram& diagram);

/// Those of the file that are no class or use case diagrams and show something, in the order of the file.
[[nodiscard]] std::vector<const reader::Diagram*> otherDiagrams(const Reading& reading);

} // namespace design::rose
