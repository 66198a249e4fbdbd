#include "designs/formats/staruml/Views.h"

#include "designs/model/Texts.h"

#include <array>

namespace design::staruml {

namespace {

constexpr std::string_view quarter = "1.5707963267948966"; // of a turn
constexpr std::string_view minusQuarter = "-1.5707963267948966";
constexpr std::string_view eighth = "0.7853981633974483";
constexpr std::string_view minusEighth = "-0.7853981633974483";
constexpr std::string_view twelfth = "0.5235987755982988";
constexpr std::string_view minusTwelfth = "-0.5235987755982988";

class EdgeWriter {
public:
    EdgeWriter(Output& theOutput, const Edge& theEdge, const Appearance& appearance)
        : output(theOutput), edge(theEdge), style(appearance)
    {
    }

    void run(std::string_view diagram)
    {
        const Association* const association = output.writing.catalogue.association(edge.model);
        beginView(output, edge.type, edge.id, diagram, edge.model);
        output.json.beginList("subViews");
        if (association) {
            writeLabels(*association);
            writeEnd(association->ends[0], "tail", 2, {twelfth, eighth, minusTwelfth});
            writeEnd(association->ends[1], "head", 0, {minusTwelfth, minusEighth, twelfth});
            writeQualifiers(association->ends[0], "tailQualifiersCompartment");
            writeQualifiers(association->ends[1], "headQualifiersCompartment");
        } else if (const Relationship* const relationship = output.writing.catalogue.relationship(edge.model)) {
            writeLabels(*relationship);
        }
        output.json.endList();
        writeWay();
        output.json.member("stereotypeDisplay", "label").member("showVisibility", true).member("showProperty", true);
        if (association)
            output.json.member("showMultiplicity", true).member("showType", true);
        for (const auto& [key, view] : references)
            output.reference(key, view);
        output.end();
    }

    void runPlain(std::string_view diagram)
    {
        beginView(output, edge.type, edge.id, diagram, edge.model);
        writeWay();
        output.end();
    }

private:
    void writeWay()
    {
        writeStyle(output, style, true);
        output.reference("head", edge.head);
        output.reference("tail", edge.tail);
        output.json.member("lineStyle", 0).member("points", edge.points);
    }

    void writeLabel(const EdgeLabel& label)
    {
        const std::string id = output.newId();
        beginView(output, "EdgeLabelView", id, edge.id, label.model);
        writeStyle(output, style, !label.text.empty());
        writeBounds(output, {0, 0, 0, 13}); // the tool puts it beside its line
        output.json.key("alpha").written(label.angle);
        output.json.member("distance", label.distance);
        output.reference("hostEdge", edge.id);
        output.json.member("edgePosition", label.position).member("underline", false);
        output.textIfAny("text", label.text);
        output.json.member("horizontalAlignment", 2).member("verticalAlignment", 5).member("wordWrap", false);
        output.end();
        references.emplace_back(label.key, id);
    }

    void writeLabels(const Element& element)
    {
        const std::string model(edge.model);
        const std::string stereotype = element.stereotype.empty() ? "" : "«" + element.stereotype + "»";
        writeLabel({"nameLabel", 1, quarter, 15, element.name, model});
        writeLabel({"stereotypeLabel", 1, quarter, 30, stereotype, model});
        writeLabel({"propertyLabel", 1, minusQuarter, 15, "", model});
    }

    void writeEnd(const AssociationEnd& end, std::string_view side, int position,
                  const std::array<std::string_view, 3>& angles)
    {
        const bool isTail = side == "tail";
        const std::string model = output.idOf(end);
        const std::string multiplicity = end.multiplicity ? textOf(*end.multiplicity) : "";
        const std::string name = end.name.empty() ? "" : "+#-~"[static_cast<std::size_t>(end.visibility)] + end.name;
        writeLabel({isTail ? "tailRoleNameLabel" : "headRoleNameLabel", position, angles[0], 30, name, model});
        writeLabel({isTail ? "tailPropertyLabel" : "headPropertyLabel", position, angles[1], 40, "", model});
        writeLabel(
            {isTail ? "tailMultiplicityLabel" : "headMultiplicityLabel", position, angles[2], 25, multiplicity, model});
    }

    void writeQualifiers(const AssociationEnd& end, std::string_view key)
    {
        const std::string id = output.newId();
        beginView(output, "UMLQualifierCompartmentView", id, edge.id, output.idOf(end));
        writeStyle(output, style, !end.qualifiers.empty());
        writeBounds(output, {0, 0, 10, 10}); // the tool puts it at the end
        output.end();
        references.emplace_back(key, id);
    }

    Output& output;
    const Edge& edge;
    Style style;
    std::vector<std::pair<std::string_view, std::string>> references; // to the labels
};

} // namespace

void writeEdge(Output& output, const Edge& edge, const Appearance& appearance, std::string_view diagram)
{
    EdgeWriter(output, edge, appearance).run(diagram);
}

void writePlainEdge(Output& output, const Edge& edge, std::string_view diagram)
{
    EdgeWriter(output, edge, {}).runPlain(diagram);
}

} // namespace design::staruml
