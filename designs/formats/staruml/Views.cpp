#include "designs/formats/staruml/Views.h"

#include "designs/model/Texts.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace design::staruml {

namespace {

constexpr double rowHeight = 15;
constexpr double labelHeight = 13;
constexpr double margin = 5;

std::string colourOf(const std::optional<std::uint32_t>& colour, std::string_view otherwise)
{
    if (!colour)
        return std::string(otherwise);
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned shift : {20U, 16U, 12U, 8U, 4U, 0U})
        text += digits[*colour >> shift & 0xFU];
    return text;
}

// Points of a Rose file and of other tools are three quarters of a pixel.
std::string fontOf(const Appearance& appearance)
{
    constexpr double pixelsInPoint = 4.0 / 3;
    std::string name = appearance.fontName.empty() ? "Arial" : appearance.fontName;
    std::replace(name.begin(), name.end(), ';', ' ');
    const double size = appearance.fontSize > 0 ? appearance.fontSize * pixelsInPoint : labelHeight;
    return name + ";" + std::to_string(std::llround(std::min(size, 1000.0))) + ";";
}

std::string nameOfType(const Output& output, const Reference& type)
{
    const Classifier* const classifier = output.writing.catalogue.classifierOf(type);
    if (classifier)
        return classifier->name;
    return type.name.empty() ? type.id : type.name;
}

std::string_view signOf(Visibility visibility)
{
    constexpr std::array<std::string_view, 4> signs = {"+", "#", "-", "~"};
    return signs[static_cast<std::size_t>(visibility)];
}

void appendTyped(const Output& output, std::string& text, const Reference& type,
                 const std::optional<Multiplicity>& multiplicity)
{
    if (const std::string name = nameOfType(output, type); !name.empty())
        text.append(": ").append(name);
    if (multiplicity)
        text.append("[").append(textOf(*multiplicity)).append("]");
}

std::string textOf(const Output& output, const Attribute& attribute)
{
    std::string text = attribute.stereotype.empty() ? std::string() : "«" + attribute.stereotype + "» ";
    text.append(signOf(attribute.visibility)).append(attribute.isDerived ? "/" : "").append(attribute.name);
    appendTyped(output, text, attribute.type, attribute.multiplicity);
    if (!attribute.initialValue.empty())
        text.append(" = ").append(attribute.initialValue);
    return text;
}

std::string textOf(const Output& output, const Operation& operation)
{
    std::string text = operation.stereotype.empty() ? std::string() : "«" + operation.stereotype + "» ";
    text.append(signOf(operation.visibility)).append(operation.name).append("(");
    for (const Parameter& parameter : operation.parameters) {
        text.append(&parameter == operation.parameters.data() ? "" : ", ").append(parameter.name);
        appendTyped(output, text, parameter.type, parameter.multiplicity);
    }
    text += ")";
    appendTyped(output, text, operation.returnType, operation.returnMultiplicity);
    return text;
}

std::string textOf(const Output& /*output*/, const Literal& literal)
{
    return literal.name;
}

// A row of a compartment.
struct Row {
    std::string model;
    std::string text;
    bool isUnderlined = false;
};

template <class Member>
std::vector<Row> rowsOf(Output& output, const std::vector<Member>& members)
{
    std::vector<Row> rows;
    for (const Member& member : members) {
        rows.push_back({output.idOf(member), textOf(output, member)});
        if constexpr (!std::is_same_v<Member, Literal>)
            rows.back().isUnderlined = member.isStatic;
    }
    return rows;
}

void writeAlignment(Output& output, int horizontal)
{
    output.json.member("horizontalAlignment", horizontal).member("verticalAlignment", 5).member("wordWrap", false);
}

// Writes a box from the top down: its name and its compartments.
class BoxWriter {
public:
    BoxWriter(Output& theOutput, const Box& theBox, std::string_view theId)
        : output(theOutput), box(theBox), id(theId), style(theBox.appearance), bounds(wholePixels(theBox.bounds)),
          top(bounds.top)
    {
    }

    void run(std::string_view diagram)
    {
        const Classifier* const classifier = output.writing.catalogue.classifier(box.elementId);
        const bool hasFeatures =
            classifier && classifier->kind != ClassifierKind::Actor && classifier->kind != ClassifierKind::UseCase;
        beginView(output, typeOfView(classifier), id, diagram, box.elementId);
        output.json.beginList("subViews");
        writeName(classifier);
        const bool hidesAttributes = hides(box.hidden.attributes, "attributes");
        const bool hidesOperations = hides(box.hidden.operations, "operations");
        if (classifier)
            writeCompartments(*classifier, hasFeatures && !hidesAttributes, hasFeatures && !hidesOperations);
        output.json.endList();
        writeStyle(output, style, true);
        writeBounds(output, bounds);
        const bool isActor = classifier && classifier->kind == ClassifierKind::Actor; // drawn as a figure
        output.json.member("stereotypeDisplay", isActor ? "icon" : "label")
            .member("showVisibility", true)
            .member("showNamespace", false);
        output.json.member("showProperty", true).member("showType", true).member("wordWrap", false);
        if (classifier)
            output.json.member("suppressAttributes", !hasFeatures || hidesAttributes)
                .member("suppressOperations", !hasFeatures || hidesOperations)
                .member("suppressReceptions", true)
                .member("showMultiplicity", true)
                .member("showOperationSignature", true);
        for (const auto& [key, view] : references)
            output.reference(key, view);
        output.end();
    }

private:
    static std::string typeOfView(const Classifier* classifier)
    {
        return std::string(classifier ? typeOf(*classifier) : "UMLPackage") + "View";
    }

    // Whether it hides all of them; the tool cannot hide some.
    [[nodiscard]] bool hides(const std::array<bool, 4>& hidden, std::string_view what) const
    {
        const bool all = std::all_of(hidden.begin(), hidden.end(), [](bool each) { return each; });
        if (!all && std::any_of(hidden.begin(), hidden.end(), [](bool each) { return each; }))
            output.report.left("choice of " + std::string(what) + " in a box", box.elementId, nameOfElement(),
                               "a box of StarUML shows all or none");
        return all;
    }

    [[nodiscard]] const Element& element() const
    {
        if (const Classifier* const classifier = output.writing.catalogue.classifier(box.elementId))
            return *classifier;
        return *output.writing.catalogue.package(box.elementId);
    }
    [[nodiscard]] const std::string& nameOfElement() const { return element().name; }

    void writeLabel(std::string_view labelId, std::string_view parent, const std::string& text, bool isVisible,
                    int fontStyle)
    {
        beginView(output, "LabelView", labelId, parent, "");
        writeStyle(output, style, isVisible, fontStyle);
        writeBounds(output,
                    {bounds.left + margin, top + margin, std::max(0.0, bounds.width - 2 * margin), labelHeight});
        output.json.member("underline", false);
        output.textIfAny("text", text);
        writeAlignment(output, 2);
        output.end();
        if (isVisible)
            top += rowHeight;
    }

    void writeName(const Classifier* classifier)
    {
        constexpr std::array<std::string_view, 4> keys = {"stereotypeLabel", "nameLabel", "namespaceLabel",
                                                          "propertyLabel"};
        constexpr int bold = 1;
        constexpr int boldItalic = 3;
        const bool isFigure = classifier && classifier->kind == ClassifierKind::Actor; // which says that it is one
        const std::string stereotype =
            isFigure && element().stereotype == "Actor" ? std::string() : element().stereotype;
        const std::string compartment = output.newId();
        const double start = top;
        std::array<std::string, 4> labels;
        beginView(output, "UMLNameCompartmentView", compartment, id, box.elementId);
        output.json.beginList("subViews");
        for (std::size_t i = 0; i < labels.size(); ++i) {
            labels[i] = output.newId();
            if (i == 0)
                writeLabel(labels[i], compartment, stereotype.empty() ? "" : "«" + stereotype + "»",
                           !stereotype.empty(), 0);
            else if (i == 1)
                writeLabel(labels[i], compartment, nameOfElement(), true,
                           classifier && classifier->isAbstract ? boldItalic : bold);
            else
                writeLabel(labels[i], compartment, "", false, 0);
        }
        output.json.endList();
        writeStyle(output, style, true);
        top += 2 * margin;
        writeBounds(output, {bounds.left, start, bounds.width, top - start});
        for (std::size_t i = 0; i < labels.size(); ++i)
            output.reference(keys[i], labels[i]);
        output.end();
        references.emplace_back("nameCompartment", compartment);
    }

    void writeCompartments(const Classifier& classifier, bool showsAttributes, bool showsOperations)
    {
        writeCompartment("UMLAttributeCompartmentView", "attributeCompartment", "UMLAttributeView",
                         rowsOf(output, classifier.attributes), showsAttributes);
        writeCompartment("UMLOperationCompartmentView", "operationCompartment", "UMLOperationView",
                         rowsOf(output, classifier.operations), showsOperations);
        writeCompartment("UMLReceptionCompartmentView", "receptionCompartment", "", {}, false);
        writeCompartment("UMLTemplateParameterCompartmentView", "templateParameterCompartment", "", {}, false);
        if (classifier.kind == ClassifierKind::Enumeration)
            writeCompartment("UMLEnumerationLiteralCompartmentView", "enumerationLiteralCompartment",
                             "UMLEnumerationLiteralView", rowsOf(output, classifier.literals), showsAttributes);
        if (classifier.kind == ClassifierKind::UseCase)
            writeCompartment("UMLExtensionPointCompartmentView", "extensionPointCompartment", "", {}, false);
    }

    void writeCompartment(std::string_view type, std::string_view key, std::string_view rowType,
                          const std::vector<Row>& rows, bool isVisible)
    {
        const std::string compartment = output.newId();
        const double start = top;
        beginView(output, type, compartment, id, box.elementId);
        if (!rows.empty()) {
            output.json.beginList("subViews");
            for (const Row& row : rows)
                writeRow(rowType, row, compartment);
            output.json.endList();
        }
        writeStyle(output, style, isVisible);
        writeBounds(output, {bounds.left, start, bounds.width, isVisible ? top - start + 2 * margin - 2 : 10});
        output.end();
        top = isVisible ? top + 2 * margin - 2 : start;
        references.emplace_back(key, compartment);
    }

    void writeRow(std::string_view type, const Row& row, std::string_view compartment)
    {
        beginView(output, type, output.newId(), compartment, row.model);
        writeStyle(output, style, true);
        writeBounds(output,
                    {bounds.left + margin, top + margin, std::max(0.0, bounds.width - 2 * margin), labelHeight});
        output.json.member("underline", row.isUnderlined).member("text", row.text);
        writeAlignment(output, 0);
        output.end();
        top += rowHeight;
    }

    Output& output;
    const Box& box;
    std::string_view id;
    Style style;
    Rectangle bounds;
    double top;                                                       // of what is written next
    std::vector<std::pair<std::string_view, std::string>> references; // to the compartments
};

} // namespace

Style::Style(const Appearance& appearance)
    : lineColor(colourOf(appearance.lineColor, "#000000")), fillColor(colourOf(appearance.fillColor, "#ffffff")),
      fontColor(colourOf(appearance.fontColor, "#000000")), font(fontOf(appearance))
{
}

Rectangle wholePixels(const std::optional<Rectangle>& bounds)
{
    const Rectangle given = bounds.value_or(Rectangle());
    return {std::round(given.left), std::round(given.top), std::round(given.width), std::round(given.height)};
}

void beginView(Output& output, std::string_view type, std::string_view id, std::string_view parent,
               std::string_view model)
{
    output.begin(type, id, parent);
    if (!model.empty())
        output.reference("model", model);
}

void writeStyle(Output& output, const Style& style, bool isVisible, int fontStyle)
{
    output.json.member("visible", isVisible).member("enabled", true);
    output.json.member("lineColor", style.lineColor).member("fillColor", style.fillColor);
    output.json.member("fontColor", style.fontColor).member("font", style.font + std::to_string(fontStyle));
    output.json.member("showShadow", true).member("containerChangeable", false).member("containerExtending", false);
}

void writeBounds(Output& output, const Rectangle& bounds)
{
    output.number("left", bounds.left);
    output.number("top", bounds.top);
    output.number("width", bounds.width);
    output.number("height", bounds.height);
    output.json.member("autoResize", false);
}

void writeBox(Output& output, const Box& box, std::string_view id, std::string_view diagram)
{
    BoxWriter(output, box, id).run(diagram);
}

void writeNote(Output& output, std::string_view text, const Rectangle& bounds, std::string_view id,
               std::string_view diagram)
{
    beginView(output, "UMLNoteView", id, diagram, "");
    writeStyle(output, Style({}), true);
    writeBounds(output, bounds);
    output.json.member("text", text).member("wordWrap", true);
    output.end();
}

} // namespace design::staruml
