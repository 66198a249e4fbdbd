#include "designs/formats/ea/write/Tree.h"

#include "designs/model/Texts.h"

namespace design::ea {

namespace {

void writeBound(Output& output, const char* role, const char* type, std::string_view value)
{
    xml::Element(output.xml, role)
        .with("xmi:type", type)
        .with("xmi:id", output.ids.numbered("EAID_LI"))
        .with("value", value);
}

void writeValue(Output& output, const char* role, std::string_view value)
{
    if (!value.empty())
        writeBound(output, role, "uml:LiteralString", value);
}

void writeType(Output& output, const Reference& type)
{
    if (const std::string id = output.typeId(type); !id.empty())
        xml::Element(output.xml, "type").with("xmi:idref", id);
}

// <precondition xmi:type="uml:Constraint" xmi:id="EAID_C000001"><specification ... body="n > 0"/></precondition>
void writeConstraint(Output& output, const char* role, std::string_view text)
{
    if (text.empty())
        return;
    xml::Element node(output.xml, role);
    node.with("xmi:type", "uml:Constraint").with("xmi:id", output.ids.numbered("EAID_CO"));
    xml::Element(output.xml, "specification")
        .with("xmi:type", "uml:OpaqueExpression")
        .with("xmi:id", output.ids.numbered("EAID_OE"))
        .with("body", text);
}

void writeParameter(Output& output, const Parameter& parameter)
{
    constexpr std::array<std::string_view, 3> directions = {"in", "out", "inout"};
    xml::Element node(output.xml, "ownedParameter");
    node.with("xmi:type", "uml:Parameter").with("xmi:id", output.ids.of(parameter)).with("name", parameter.name);
    node.with("direction", directions[static_cast<std::size_t>(parameter.direction)]);
    node.flag("isStream", false).flag("isException", false).flag("isOrdered", false).flag("isUnique", true);
    node.withSome("type", output.typeId(parameter.type));
    writeConstraints(output, parameter);
    writeBounds(output, parameter.multiplicity);
    writeValue(output, "defaultValue", parameter.initialValue);
}

void writeResult(Output& output, const Operation& operation)
{
    const std::string type = output.typeId(operation.returnType);
    if (type.empty() && !operation.returnMultiplicity)
        return;
    xml::Element node(output.xml, "ownedParameter");
    node.with("xmi:type", "uml:Parameter").with("xmi:id", output.ids.numbered("EAID_RT")).with("name", "return");
    node.with("direction", "return").flag("isStream", false).flag("isException", false);
    node.flag("isOrdered", false).flag("isUnique", true).withSome("type", type);
    writeBounds(output, operation.returnMultiplicity);
}

void writeOperation(Output& output, const Operation& operation)
{
    xml::Element node(output.xml, "ownedOperation");
    node.with("xmi:type", "uml:Operation").with("xmi:id", output.ids.of(operation)).with("name", operation.name);
    node.with("visibility", wordOf(operation.visibility)).flag("isStatic", operation.isStatic);
    node.flag("isAbstract", operation.isAbstract);
    writeConstraints(output, operation);
    writeConstraint(output, "precondition", operation.preCondition);
    writeConstraint(output, "postcondition", operation.postCondition);
    writeConstraint(output, "bodyCondition", operation.semantics);
    for (const Parameter& parameter : operation.parameters)
        writeParameter(output, parameter);
    writeResult(output, operation);
}

// <ownedTemplateSignature><ownedParameter><ownedParameteredElement xmi:type="uml:Class" name="T"/>
void writeTemplate(Output& output, const std::vector<Parameter>& parameters)
{
    if (parameters.empty())
        return;
    xml::Element signature(output.xml, "ownedTemplateSignature");
    signature.with("xmi:type", "uml:TemplateSignature").with("xmi:id", output.ids.numbered("EAID_TS"));
    for (const Parameter& parameter : parameters) {
        xml::Element owned(output.xml, "ownedParameter");
        owned.with("xmi:type", "uml:ClassifierTemplateParameter").with("xmi:id", output.ids.numbered("EAID_TP"));
        const std::string type = output.typeId(parameter.type);
        xml::Element element(output.xml, "ownedParameteredElement");
        element.with("xmi:type", type.empty() ? "uml:Class" : "uml:Property");
        element.with("xmi:id", output.ids.of(parameter)).with("name", parameter.name).withSome("type", type);
        writeConstraints(output, parameter);
    }
}

} // namespace

void writeBounds(Output& output, const std::optional<Multiplicity>& multiplicity)
{
    if (!multiplicity)
        return;
    const auto write = [&](const char* role, std::int32_t bound) {
        writeBound(output, role, bound < 0 ? "uml:LiteralUnlimitedNatural" : "uml:LiteralInteger",
                   std::to_string(bound));
    };
    if (multiplicity->text.empty()) {
        write("lowerValue", multiplicity->lower);
        write("upperValue", multiplicity->upper);
    } else {
        writeValue(output, "lowerValue", multiplicity->text);
        writeValue(output, "upperValue", multiplicity->text);
    }
}

void writeConstraints(Output& output, const Element& element)
{
    for (const std::string& text : element.constraints)
        writeConstraint(output, "ownedRule", text);
}

void writeProperty(Output& output, const char* role, const Attribute& attribute)
{
    xml::Element node(output.xml, role);
    node.with("xmi:type", "uml:Property").with("xmi:id", output.ids.of(attribute)).with("name", attribute.name);
    node.with("visibility", wordOf(attribute.visibility)).flag("isStatic", attribute.isStatic);
    node.flag("isReadOnly", attribute.isReadOnly).flag("isDerived", attribute.isDerived).flag("isOrdered", false);
    node.flag("isUnique", true).flag("isDerivedUnion", false);
    if (attribute.isIdentifier)
        node.flag("isID", true);
    writeConstraints(output, attribute);
    writeType(output, attribute.type);
    writeBounds(output, attribute.multiplicity);
    writeValue(output, "defaultValue", attribute.initialValue);
}

// A property tells of its owner, which is at the other end, that it is the whole, and by what it picks its objects.
void writeEnd(Output& output, const char* role, const Association& association, std::size_t index)
{
    const AssociationEnd& end = association.ends[index];
    const AssociationEnd& teller = association.ends.size() == 2 ? association.ends[1 - index] : end;
    xml::Element node(output.xml, role);
    node.with("xmi:type", "uml:Property").with("xmi:id", output.idOf(association, index)).withSome("name", end.name);
    node.with("visibility", wordOf(end.visibility));
    node.with("association",
              output.ids.of(output.isInClass(association) ? association.associationClassId : association.id));
    node.flag("isStatic", end.isStatic).flag("isReadOnly", false).flag("isDerived", end.isDerived);
    node.flag("isOrdered", false).flag("isUnique", true).flag("isDerivedUnion", false);
    node.with("aggregation", wordOf(teller.aggregation));
    writeConstraints(output, end);
    xml::Element(output.xml, "type").with("xmi:idref", output.target(end.participant.id));
    writeBounds(output, end.multiplicity);
    for (const Attribute& qualifier : teller.qualifiers)
        writeProperty(output, "qualifier", qualifier);
}

void writeFeatures(Output& output, const Classifier& classifier)
{
    for (const Attribute& attribute : classifier.attributes)
        writeProperty(output, "ownedAttribute", attribute);
    if (const auto ends = output.endsIn.find(classifier.id); ends != output.endsIn.end())
        for (const OwnedEnd& end : ends->second)
            writeEnd(output, "ownedAttribute", *end.association, end.index);
    for (const Literal& literal : classifier.literals) {
        xml::Element node(output.xml, "ownedLiteral");
        node.with("xmi:type", "uml:EnumerationLiteral").with("xmi:id", output.ids.of(literal));
        node.with("name", literal.name).with("visibility", "public");
        writeConstraints(output, literal);
        writeValue(output, "specification", literal.value);
    }
    for (const Operation& operation : classifier.operations)
        writeOperation(output, operation);
    writeTemplate(output, classifier.templateParameters);
}

} // namespace design::ea
