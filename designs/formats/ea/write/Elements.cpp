#include "designs/formats/ea/write/Extension.h"

#include "designs/model/Texts.h"

namespace design::ea {

namespace {

constexpr const char* usualAppearance =
    "BackColor=-1;BorderColor=-1;BorderWidth=-1;FontColor=-1;VSwimLanes=1;HSwimLanes=1;BorderStyle=0;";

void writeUsual(Output& output, const Package* package, const Element& element, std::string_view id)
{
    xml::Element(output.xml, "code").with("gentype", "<none>");
    xml::Element(output.xml, "style").with("appearance", usualAppearance);
    writeTags(output, element, id);
    xml::Element(output.xml, "xrefs");
    xml::Element node(output.xml, "extendedProperties");
    node.with("tagged", "0");
    if (package)
        node.with("package_name", output.nameOf(*package));
}

void writeDocumentation(Output& output, const Element& element)
{
    xml::Element(output.xml, "documentation").withSome("value", element.documentation);
}

void writeStereotype(Output& output, const Element& element)
{
    xml::Element(output.xml, "stereotype").withSome("stereotype", element.stereotype);
}

// <attribute xmi:idref="EAID_1" name="total" scope="Private">
//     <initial body="0"/>
//     <documentation value="with taxes"/>
//     <properties type="int" derived="0" collection="false" static="0" duplicates="0" changeability="changeable"/>
struct AttributeTexts {
    std::string scope;
    std::string initial;
    std::string type;
    bool isDerived = false;
    bool isStatic = false;
    bool isReadOnly = false;
    bool isLiteral = false;
    Containment containment = Containment::Unspecified;
    std::optional<Multiplicity> multiplicity;
};

void writeBoundTexts(Output& output, const std::optional<Multiplicity>& multiplicity)
{
    const auto textOfBound = [](std::int32_t bound) { return bound < 0 ? "*" : std::to_string(bound); };
    const Multiplicity bounds = multiplicity.value_or(Multiplicity());
    xml::Element(output.xml, "bounds")
        .with("lower", textOfBound(bounds.lower))
        .with("upper", textOfBound(bounds.upper));
}

void writeAttribute(Output& output, const Element& element, const AttributeTexts& texts, std::size_t position)
{
    constexpr std::array<std::string_view, 3> containments = {"Not Specified", "By Value", "By Reference"};
    xml::Element node(output.xml, "attribute");
    node.with("xmi:idref", output.ids.of(element)).with("name", element.name).with("scope", texts.scope);
    xml::Element(output.xml, "initial").withSome("body", texts.initial);
    writeDocumentation(output, element);
    xml::Element(output.xml, "properties")
        .withSome("type", texts.type)
        .with("derived", texts.isDerived ? "1" : "0")
        .with("collection", "false")
        .with("static", texts.isStatic ? "1" : "0")
        .with("duplicates", "0")
        .with("changeability", texts.isReadOnly ? "frozen" : "changeable");
    xml::Element(output.xml, "coords").with("ordered", "0");
    xml::Element(output.xml, "containment")
        .with("containment", containments[static_cast<std::size_t>(texts.containment)])
        .with("position", std::to_string(position));
    writeStereotype(output, element);
    writeBoundTexts(output, texts.multiplicity);
    xml::Element(output.xml, "options");
    xml::Element(output.xml, "style");
    xml::Element(output.xml, "styleex")
        .with("value", texts.isLiteral ? "IsLiteral=1;volatile=0;union=0;" : "volatile=0;union=0;");
    writeTags(output, element);
    xml::Element(output.xml, "xrefs");
}

void writeAttributes(Output& output, const Classifier& classifier)
{
    if (classifier.attributes.empty() && classifier.literals.empty())
        return;
    const xml::Element node(output.xml, "attributes");
    std::size_t position = 0;
    for (const Attribute& attribute : classifier.attributes)
        writeAttribute(output, attribute,
                       {capitalized(wordOf(attribute.visibility)), attribute.initialValue,
                        output.typeName(attribute.type), attribute.isDerived, attribute.isStatic, attribute.isReadOnly,
                        false, attribute.containment, attribute.multiplicity},
                       position++);
    for (const Literal& literal : classifier.literals) {
        AttributeTexts texts;
        texts.scope = "Public";
        texts.initial = literal.value;
        texts.isLiteral = true;
        writeAttribute(output, literal, texts, position++);
    }
}

void writeParameter(Output& output, const Parameter& parameter, std::size_t position)
{
    xml::Element node(output.xml, "parameter");
    node.with("xmi:idref", output.ids.of(parameter)).with("visibility", "public");
    xml::Element(output.xml, "properties")
        .with("pos", std::to_string(position))
        .withSome("type", output.typeName(parameter.type))
        .withSome("default", parameter.initialValue)
        .with("const", "false");
    xml::Element(output.xml, "style");
    xml::Element(output.xml, "styleex");
    writeDocumentation(output, parameter);
    writeStereotype(output, parameter);
    writeTags(output, parameter);
    xml::Element(output.xml, "xrefs");
}

void writeOperation(Output& output, const Operation& operation, std::size_t position)
{
    constexpr std::array<std::string_view, 4> concurrencies = {"Sequential", "Guarded", "Active", "Synchronous"};
    xml::Element node(output.xml, "operation");
    node.with("xmi:idref", output.ids.of(operation)).with("name", operation.name);
    node.with("scope", capitalized(wordOf(operation.visibility)));
    xml::Element(output.xml, "properties").with("position", std::to_string(position));
    writeStereotype(output, operation);
    xml::Element(output.xml, "type")
        .withSome("type", output.typeName(operation.returnType))
        .with("const", "false")
        .with("static", operation.isStatic ? "true" : "false")
        .with("isAbstract", operation.isAbstract ? "true" : "false")
        .with("synchronised", "0")
        .with("concurrency", concurrencies[static_cast<std::size_t>(operation.concurrency)])
        .with("pure", "0")
        .with("isQuery", "false");
    xml::Element(output.xml, "behaviour");
    xml::Element(output.xml, "code");
    xml::Element(output.xml, "style");
    xml::Element(output.xml, "styleex");
    writeDocumentation(output, operation);
    writeTags(output, operation);
    if (!operation.parameters.empty()) {
        const xml::Element parameters(output.xml, "parameters");
        for (std::size_t i = 0; i < operation.parameters.size(); ++i)
            writeParameter(output, operation.parameters[i], i);
    }
    xml::Element(output.xml, "xrefs");
}

void writeClassifier(Output& output, const Classifier& classifier, const Package& package)
{
    const std::string type(typeOf(output, classifier));
    xml::Element node(output.xml, "element");
    node.with("xmi:idref", output.ids.of(classifier)).with("xmi:type", "uml:" + type).with("name", classifier.name);
    node.with("scope", wordOf(classifier.visibility));
    xml::Element(output.xml, "model")
        .with("package", output.idOf(package))
        .with("tpos", "0")
        .with("ea_eleType", "element");
    xml::Element(output.xml, "properties")
        .withSome("documentation", classifier.documentation)
        .with("isSpecification", "false")
        .with("sType", type == "AssociationClass" ? "Class" : type)
        .with("nType", type == "AssociationClass" ? "17" : "0")
        .with("scope", wordOf(classifier.visibility))
        .withSome("stereotype", stereotypeBeside(classifier.stereotype, impliedBy(type)))
        .flag("isRoot", false)
        .flag("isLeaf", false)
        .flag("isAbstract", classifier.isAbstract)
        .flag("isActive", classifier.concurrency == Concurrency::Active);
    writeUsual(output, &package, classifier, output.ids.of(classifier));
    writeAttributes(output, classifier);
    if (classifier.operations.empty())
        return;
    const xml::Element operations(output.xml, "operations");
    for (std::size_t i = 0; i < classifier.operations.size(); ++i)
        writeOperation(output, classifier.operations[i], i);
}

void writeNote(Output& output, const Note& note, const Package& package)
{
    xml::Element node(output.xml, "element");
    node.with("xmi:idref", note.id).with("xmi:type", "uml:Note").with("scope", "public");
    xml::Element(output.xml, "model")
        .with("package", output.idOf(package))
        .with("tpos", "0")
        .with("ea_eleType", "element");
    xml::Element(output.xml, "properties")
        .with("documentation", note.text)
        .with("isSpecification", "false")
        .with("sType", "Note")
        .with("nType", "0")
        .with("scope", "public");
    writeUsual(output, &package, Element(), note.id);
}

void writePackage(Output& output, const Package& package, const Package* parent)
{
    xml::Element node(output.xml, "element");
    node.with("xmi:idref", output.idOf(package)).with("xmi:type", "uml:Package");
    node.with("name", output.nameOf(package));
    node.with("scope", "public");
    {
        xml::Element model(output.xml, "model");
        model.with("package2", output.subject(package));
        if (parent && (parent != &output.writing.design.root || output.isRootElement()))
            model.with("package", output.idOf(*parent));
        model.with("tpos", "0").with("ea_eleType", "package");
    }
    xml::Element(output.xml, "properties")
        .withSome("documentation", package.documentation)
        .with("isSpecification", "false")
        .with("sType", "Package")
        .with("nType", "0")
        .with("scope", "public")
        .withSome("stereotype", package.stereotype);
    writeUsual(output, parent, package, output.idOf(package));
}

void writePackages(Output& output, const Package& package, const Package* parent)
{
    if (parent || output.isRootElement())
        writePackage(output, package, parent);
    for (const Note& note : output.notes.at(&package))
        writeNote(output, note, package);
    for (const Classifier& classifier : package.classifiers)
        writeClassifier(output, classifier, package);
    for (const Package& child : package.packages)
        writePackages(output, child, &package);
}

} // namespace

void writeElements(Output& output)
{
    const xml::Element node(output.xml, "elements");
    writePackages(output, output.writing.design.root, nullptr);
}

void writePrimitiveTypes(Output& output)
{
    const xml::Element node(output.xml, "primitivetypes");
    const auto open = [](xml::Element& element, const char* type, std::string_view id, std::string_view name) {
        element.with("xmi:type", type).with("xmi:id", id).with("name", name).with("visibility", "public");
    };
    xml::Element all(output.xml, "packagedElement");
    open(all, "uml:Package", "EAPrimitiveTypesPackage", "EA_PrimitiveTypes_Package");
    if (output.typeNames.empty())
        return;
    xml::Element own(output.xml, "packagedElement");
    open(own, "uml:Package", "EAnoneTypesPackage", "EA_none_Types_Package");
    for (const std::string& name : output.typeNames) {
        xml::Element type(output.xml, "packagedElement");
        open(type, "uml:PrimitiveType", output.typeIds.at(name), name);
    }
}

} // namespace design::ea
