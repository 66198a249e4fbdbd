#include "designs/formats/rose/DrawnDiagram.h"

#include "designs/formats/rose/Views.h"
#include "designs/formats/shared/Kinds.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace design::rose {

namespace {

struct FigureRow {
    std::string_view type; // of the views
    FigureKind kind;
};
constexpr std::array figureRows = {
    FigureRow{"InterObjView", FigureKind::Object},        FigureRow{"ObjectView", FigureKind::Object},
    FigureRow{"ClassInstanceView", FigureKind::Object},   FigureRow{"StateView", FigureKind::State},
    FigureRow{"ActivityStateView", FigureKind::Activity}, FigureRow{"DecisionView", FigureKind::Decision},
    FigureRow{"SynchronizationView", FigureKind::Bar},    FigureRow{"Swimlane", FigureKind::Lane},
    FigureRow{"ModView", FigureKind::Component},          FigureRow{"SubSysView", FigureKind::Subsystem},
    FigureRow{"InterfaceView", FigureKind::Interface},    FigureRow{"ProcessorView", FigureKind::Processor},
    FigureRow{"DeviceView", FigureKind::Device},          FigureRow{"ClassView", FigureKind::Other},
    FigureRow{"CategoryView", FigureKind::Other},         FigureRow{"UseCaseView", FigureKind::Other},
};

struct JointRow {
    std::string_view type;
    JointKind kind;
};
constexpr std::array jointRows = {
    JointRow{"InterMessView", JointKind::Message},
    JointRow{"SelfMessView", JointKind::Message},
    JointRow{"TransView", JointKind::Transition},
    JointRow{"SelfTransView", JointKind::Transition},
    JointRow{"ObjectFlowView", JointKind::Transition},
    JointRow{"ModVisView", JointKind::Dependency},
    JointRow{"UsesView", JointKind::Dependency},
    JointRow{"DependencyView", JointKind::Dependency},
    JointRow{"RealizeView", JointKind::Realization},
    JointRow{"ConnectionView", JointKind::Plain},
    JointRow{"LinkView", JointKind::Plain},
    JointRow{"LinkSelfView", JointKind::Plain},
};

std::string keyOf(const Object& view)
{
    const auto number = view.viewNumber();
    return number ? std::string("@").append(std::to_string(*number)) : std::string();
}

// The text of the label of a view if it has one, else the name of its element, else its own.
std::string nameOf(const Object& view, const Object* element)
{
    if (const Object* const label = view.object("label"))
        if (std::string text = label->text("label"); !text.empty() && !text.starts_with("$UNNAMED$"))
            return text;
    if (element)
        return reader::shownName(*element);
    const std::string path = view.lastName();
    const std::size_t colons = path.rfind("::");
    return path.starts_with("$UNNAMED$") ? "" : path.substr(colons == std::string::npos ? 0 : colons + 2);
}

FigureKind kindOf(const Object& view, FigureKind usual)
{
    if (usual != FigureKind::State && usual != FigureKind::Activity)
        return usual;
    switch (reader::stateKindOf(view)) {
    case reader::StateKind::start:
        return FigureKind::Start;
    case reader::StateKind::end:
        return FigureKind::End;
    case reader::StateKind::normal:
        break;
    }
    return usual;
}

// "entry / ring the bell"
std::string textOfAction(const Object& action)
{
    const std::string when = reader::timeOf(action);
    return (when.empty() ? when : when + " / ") + action.name();
}

class DiagramReader {
public:
    DiagramReader(const Reading& theReading, const reader::Diagram& theDiagram)
        : reading(theReading), source(theDiagram), items(theDiagram.object->objects("items"))
    {
    }

    DrawnDiagram read()
    {
        describe();
        for (const Object* const item : items)
            if (const FigureRow* const row = rowOf(figureRows, item->kind()))
                addFigure(*item, row->kind);
        for (const Object* const item : items)
            addJoint(*item);
        findAnchors();
        for (const Object* const item : items)
            if (item->is("NoteView", "Label"))
                addNote(*item);
        return std::move(drawing);
    }

private:
    void describe()
    {
        drawing.kind = source.kind;
        drawing.id = reading.idOf(*source.object);
        drawing.name = source.name;
        drawing.documentation = source.object->text("documentation");
        drawing.isNumbered = reader::areMessagesNumbered(reading.document.root().object("defaults"),
                                                         source.kind == reader::DiagramKind::sequence);
        if (source.owner) {
            drawing.owner = reader::shownName(*source.owner);
            drawing.path = reading.index.path(*source.owner);
            show(source.owner->is("State_Machine") ? source.owner : nullptr);
        }
        show(source.object);
        drawing.interaction = reading.index.view(*source.object, "mechanism_ref");
    }

    void show(const Object* element)
    {
        if (!element)
            return;
        if (std::string id = reading.idOf(*element); !id.empty())
            drawing.shown.push_back(std::move(id));
    }

    void addFigure(const Object& view, FigureKind usual)
    {
        Figure figure;
        const Object* const element = reading.index.element(view).element;
        show(element);
        figure.key = keyOf(view);
        figure.kind = kindOf(view, usual);
        figure.name = nameOf(view, element);
        figure.box.elementId = figure.key;
        figure.box.bounds = boundsOf(view);
        figure.box.appearance = appearanceOf(view);
        if (const Object* const around = reading.index.view(view, "Parent_View"))
            figure.around = keyOf(*around);
        if (element)
            addDetails(view, *element, figure);
        if (figure.stereotype.empty() && view.text("icon_style") != "Label" && usual == FigureKind::Object)
            figure.stereotype = view.text("icon");
        if (figure.kind == FigureKind::Object)
            addBars(view, figure.key);
        places.emplace(&view, drawing.figures.size());
        drawing.figures.push_back(std::move(figure));
    }

    void addDetails(const Object& view, const Object& element, Figure& figure)
    {
        figure.stereotype = element.text("stereotype");
        if (figure.kind == FigureKind::Object && figure.name.find(':') == std::string::npos)
            if (const std::string type = reader::classNameOf(reading.index, element); !type.empty())
                figure.name.append(figure.name.empty() ? ": " : " : ").append(type);
        for (const Object* const action : element.objects("actions")) {
            figure.lines.push_back(textOfAction(*action));
            show(action);
        }
        for (const Object* const process : element.objects("processes")) {
            figure.lines.push_back(process->name());
            show(process);
        }
        if (view.is("InterObjView", "ObjectView") && element.flag("multi"))
            figure.lines.emplace_back("{multi}");
    }

    void addBars(const Object& lifeline, const std::string& figure)
    {
        reader::forEachObject(lifeline, [&](const Object& focus) {
            if (!focus.is("Focus_Of_Control"))
                return;
            const auto place = focus.get("location").asPoint();
            if (place)
                drawing.bars.push_back({keyOf(focus), figure, place->y / unitsInPixel,
                                        (place->y + focus.number("height")) / unitsInPixel});
        });
    }

    void addJoint(const Object& view)
    {
        if (view.is("Destruction_Marker")) {
            destroy(view);
            return;
        }
        if (view.is("MessView")) {
            addMessageOfLink(view);
            return;
        }
        const JointRow* const row = rowOf(jointRows, view.kind());
        if (!row)
            return;
        Joint joint;
        joint.kind = row->kind;
        joint.from = keyIn(view, "client");
        joint.to = view.is("SelfMessView", "SelfTransView", "LinkSelfView") ? joint.from : keyIn(view, "supplier");
        if (joint.from.empty() || joint.to.empty())
            return;
        const Object* const element = reading.index.element(view).element;
        show(element);
        if (row->kind == JointKind::Message)
            describeMessage(view, joint);
        else
            joint.text = textOf(view, element);
        drawing.joints.push_back(std::move(joint));
    }

    [[nodiscard]] std::string keyIn(const Object& view, std::string_view key) const
    {
        const Object* const end = reading.index.view(view, key);
        return end ? keyOf(*end) : std::string();
    }

    void describeMessage(const Object& view, Joint& joint)
    {
        const Object* const message = reader::messageOf(reading.index, view);
        show(message);
        if (message && message->parent() && message->parent()->is("Link"))
            show(message->parent());
        joint.text = nameOf(view, message);
        joint.synchronization = reader::synchronizationOf(message);
        const auto origin = view.get("origin").asPoint();
        const auto place = view.get("location").asPoint();
        joint.height = (origin ? origin->y : place ? place->y : 0) / unitsInPixel;
        joint.startsBar = keyIn(view, "Focus_Entry");
    }

    // Beside a link, with it or against it.
    void addMessageOfLink(const Object& view)
    {
        const Object* const link = reading.index.view(view, "object_arc");
        if (!link)
            return;
        Joint joint;
        joint.kind = JointKind::Message;
        joint.from = keyIn(*link, "client");
        joint.to = link->is("LinkSelfView") ? joint.from : keyIn(*link, "supplier");
        if (joint.from.empty() || joint.to.empty())
            return;
        if (view.integer("dir", 1) < 0)
            std::swap(joint.from, joint.to);
        describeMessage(view, joint);
        const Object* const message = reader::messageOf(reading.index, view);
        const std::string number = message ? message->text("sequence") : std::string();
        if (drawing.isNumbered && !number.empty())
            joint.text.insert(0, number + ": ");
        drawing.joints.push_back(std::move(joint));
    }

    // What the label says, else what the transition does: event [condition] / action.
    std::string textOf(const Object& view, const Object* element)
    {
        std::string text;
        if (element) {
            const Object* const event = element->object("Event");
            text = event ? event->name() : std::string();
            if (const std::string condition = element->text("condition"); !condition.empty())
                text.append(text.empty() ? "[" : " [").append(condition).append("]");
            if (const Object* const action = element->object("action"); action && !action->name().empty())
                text.append(text.empty() ? "/ " : " / ").append(action->name());
            for (const char* const part : {"Event", "action", "sendEvent"})
                show(element->object(part));
        }
        const Object* const label = view.object("label");
        const std::string shown = label ? label->text("label") : std::string();
        if (!shown.empty())
            text = shown;
        const Object* const stereotype = view.object("stereotype");
        const std::string word = stereotype && !stereotype->flag("hidden") ? stereotype->text("label") : std::string();
        return word.empty() || text.empty() ? word + text : word + ' ' + text;
    }

    void destroy(const Object& marker)
    {
        const Object* const lifeline = reading.index.view(marker, "Parent_View");
        const auto place = marker.get("location").asPoint();
        if (!lifeline || !place)
            return;
        if (const auto found = places.find(lifeline); found != places.end())
            drawing.figures[found->second].destroyedAt = place->y / unitsInPixel;
    }

    void addNote(const Object& view)
    {
        const Object* const label = view.is("Label") ? &view : view.object("label");
        DrawnNote note;
        note.text = label ? label->text("label") : std::string();
        if (note.text.empty())
            return;
        note.box.bounds = boundsOf(view);
        const auto found = anchors.find(&view);
        if (found != anchors.end())
            note.figures = found->second;
        drawing.notes.push_back(std::move(note));
    }

    // What the lines of notes lead to, by both of their ends.
    void findAnchors()
    {
        for (const Object* const item : items) {
            if (!item->is("AttachView", "AnchorView"))
                continue;
            const Object* const client = reading.index.view(*item, "client");
            const Object* const supplier = reading.index.view(*item, "supplier");
            if (!client || !supplier)
                continue;
            anchors[client].push_back(keyOf(*supplier));
            anchors[supplier].push_back(keyOf(*client));
        }
    }

    const Reading& reading;
    const reader::Diagram& source;
    const std::vector<const Object*> items;
    std::unordered_map<const Object*, std::vector<std::string>> anchors;
    std::unordered_map<const Object*, std::size_t> places; // of figures, by their views
    DrawnDiagram drawing;
};

} // namespace

DrawnDiagram drawnDiagram(const Reading& reading, const reader::Diagram& diagram)
{
    return DiagramReader(reading, diagram).read();
}

std::vector<const reader::Diagram*> otherDiagrams(const Reading& reading)
{
    std::vector<const reader::Diagram*> others;
    for (const reader::Diagram& diagram : reading.index.diagrams())
        if (diagram.kind != reader::DiagramKind::classes && diagram.kind != reader::DiagramKind::useCases &&
            !diagram.object->objects("items").empty())
            others.push_back(&diagram);
    return others;
}

} // namespace design::rose
