#include "designs/formats/papyrus/Views.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace design::papyrus {

namespace {

// How the tool calls the views of an element, and of what is in its compartments.
struct ShapeType {
    std::string_view type;
    std::string_view shape; // "Class" of "Class_Shape"
    std::string_view attributes;
    std::string_view attributeLabel;
    std::string_view operations = {};
    std::string_view operationLabel = {};
    std::string_view others = {}; // a compartment that stays empty
};
constexpr std::array shapeTypes = {
    ShapeType{"uml:Class", "Class", "Class_AttributeCompartment", "Property_ClassAttributeLabel",
              "Class_OperationCompartment", "Operation_ClassOperationLabel", "Class_NestedClassifierCompartment"},
    ShapeType{"uml:Interface", "Interface", "Interface_AttributeCompartment", "Property_InterfaceAttributeLabel",
              "Interface_OperationCompartment", "Operation_InterfaceOperationLabel"},
    ShapeType{"uml:DataType", "DataType", "DataType_AttributeCompartment", "Property_DataTypeAttributeLabel",
              "DataType_OperationCompartment", "Operation_DataTypeOperationLabel"},
    ShapeType{"uml:PrimitiveType", "PrimitiveType", "PrimitiveType_AttributeCompartment",
              "Property_PrimitiveTypeAttributeLabel", "PrimitiveType_OperationCompartment",
              "Operation_PrimitiveTypeOperationLabel"},
    ShapeType{"uml:Enumeration", "Enumeration", "Enumeration_LiteralCompartment", "EnumerationLiteral_LiteralLabel"},
    ShapeType{"uml:Actor", "Actor", "", ""},
    ShapeType{"uml:UseCase", "UseCase", "", ""},
};

// That of a class is that of the class of an association, too.
const ShapeType& shapeTypeOf(std::string_view type)
{
    const auto* const found =
        std::find_if(shapeTypes.begin(), shapeTypes.end(), [&](const ShapeType& each) { return each.type == type; });
    return found == shapeTypes.end() ? shapeTypes.front() : *found;
}

template <class Flags>
bool isAll(const Flags& hidden)
{
    return std::all_of(hidden.begin(), hidden.end(), [](bool each) { return each; });
}

class ShapeWriter {
public:
    ShapeWriter(Notation& theNotation, const Box& theBox) : notation(theNotation), box(theBox) {}

    // <children xmi:type="notation:Shape" xmi:id="_d-1" type="Class_Shape" fillColor="13434879">
    //   <children xmi:type="notation:DecorationNode" xmi:id="_d-2" type="Class_NameLabel"/>
    //   ...
    //   <element xmi:type="uml:Class" href="shop.uml#_1"/>
    //   <layoutConstraint xmi:type="notation:Bounds" xmi:id="_d-9" x="20" y="20" width="100" height="80"/>
    void ofClassifier(const Classifier& classifier)
    {
        const std::string_view type = notation.model.typeOf(classifier);
        const ShapeType& names = shapeTypeOf(type);
        View shape(notation, "children", "notation:Shape", std::string(names.shape) + "_Shape");
        begin(shape, names.shape);
        {
            View label(notation, "children", "notation:DecorationNode",
                       std::string(names.shape) + "_FloatingNameLabel");
            constexpr int below = 5;
            writeLocation(notation, below);
        }
        writeCompartments(classifier, names);
        finish(shape, type, notation.model.identifierOfClassifier(classifier));
    }

    void ofPackage(const Package& package)
    {
        View shape(notation, "children", "notation:Shape", "Package_Shape");
        begin(shape, "Package");
        writeCompartment("Package_PackagedElementCompartment", false, [] {});
        finish(shape, "uml:Package", notation.model.identifierOfPackage(package));
    }

private:
    void begin(View& shape, std::string_view name)
    {
        writeFont(shape, box.appearance);
        writeColour(shape, "fillColor", box.appearance.fillColor);
        writeColour(shape, "lineColor", box.appearance.lineColor);
        writePart(notation, "children", "notation:DecorationNode", std::string(name) + "_NameLabel");
    }

    void finish(const View& shape, std::string_view type, std::string_view id)
    {
        writeElement(notation, "element", type, id);
        Rectangle bounds;
        if (box.bounds) {
            bounds = {std::round(box.bounds->left), std::round(box.bounds->top), std::round(box.bounds->width),
                      std::round(box.bounds->height)};
            View(notation, "layoutConstraint", "notation:Bounds")
                .with("x", numberText(bounds.left))
                .with("y", numberText(bounds.top))
                .with("width", numberText(bounds.width))
                .with("height", numberText(bounds.height));
        }
        notation.places.emplace(box.elementId, Notation::Place{shape.id(), bounds});
    }

    void writeCompartments(const Classifier& classifier, const ShapeType& names)
    {
        if (!names.attributes.empty())
            writeCompartment(names.attributes, isAll(box.hidden.attributes), [&] {
                if (classifier.kind == ClassifierKind::Enumeration)
                    writeLabels(classifier.literals, names.attributeLabel, "uml:EnumerationLiteral");
                else
                    writeLabels(classifier.attributes, names.attributeLabel, "uml:Property");
            });
        if (!names.operations.empty())
            writeCompartment(names.operations, isAll(box.hidden.operations),
                             [&] { writeLabels(classifier.operations, names.operationLabel, "uml:Operation"); });
        if (!names.others.empty())
            writeCompartment(names.others, false, [] {});
    }

    template <class WriteContent>
    void writeCompartment(std::string_view kind, bool isHidden, const WriteContent& writeContent)
    {
        View compartment(notation, "children", "notation:BasicCompartment", kind);
        if (isHidden)
            compartment.with("visible", "false");
        writeContent();
        for (const std::string_view style : {"notation:TitleStyle", "notation:SortingStyle", "notation:FilteringStyle"})
            writePart(notation, "styles", style);
        writePart(notation, "layoutConstraint", "notation:Bounds");
    }

    // A feature is shown by a view of its own.
    template <class Features>
    void writeLabels(const Features& features, std::string_view kind, std::string_view type)
    {
        for (const Element& feature : features) {
            const View label(notation, "children", "notation:Shape", kind);
            writeElement(notation, "element", type, notation.model.identifierOfFeature(feature));
            writePart(notation, "layoutConstraint", "notation:Location");
        }
    }

    Notation& notation;
    const Box& box;
};

} // namespace

void writeShape(Notation& notation, const Box& box)
{
    if (const Classifier* const classifier = notation.writing.catalogue.classifier(box.elementId))
        ShapeWriter(notation, box).ofClassifier(*classifier);
    else if (const Package* const package = notation.writing.catalogue.package(box.elementId))
        ShapeWriter(notation, box).ofPackage(*package);
    else
        notation.report.left("box", box.elementId, "", "the tool draws no symbols of associations");
}

} // namespace design::papyrus
