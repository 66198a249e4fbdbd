#include "designs/formats/staruml/Write.h"

#include "designs/model/Counts.h"
#include "designs/model/Texts.h"

namespace design::staruml {

namespace {

std::string_view wordFor(Direction direction)
{
    switch (direction) {
    case Direction::Out:
        return "out";
    case Direction::InOut:
        return "inout";
    case Direction::In:
        break;
    }
    return "in";
}

std::string_view wordFor(Containment containment)
{
    switch (containment) {
    case Containment::ByValue:
        return "composite";
    case Containment::ByReference:
        return "shared";
    case Containment::Unspecified:
        break;
    }
    return "none";
}

// One that lies outside is the placeholder of that name; what is no class of the design stays the text that it is.
void writeType(Output& output, const Reference& type)
{
    const Catalogue& catalogue = output.writing.catalogue;
    const Classifier* const known = catalogue.classifierOf(type);
    if (const Classifier* const classifier = known ? known : catalogue.classifierNamed(type.name))
        output.reference("type", classifier->id);
    else
        output.textIfAny("type", type.name.empty() ? type.id : type.name);
}

void writeMultiplicity(Output& output, const std::optional<Multiplicity>& multiplicity)
{
    if (multiplicity)
        output.textIfAny("multiplicity", textOf(*multiplicity));
}

template <class Feature>
void writeTyped(Output& output, const Feature& feature, std::string_view id)
{
    output.textIfAny("stereotype", feature.stereotype);
    output.ownedConstraints(feature, id, {"ordered"});
    writeType(output, feature.type);
    output.textIfAny("defaultValue", feature.initialValue);
    writeMultiplicity(output, feature.multiplicity);
    output.json.member("isLeaf", false).member("isOrdered", hasConstraint(feature, "ordered"));
    output.json.member("isUnique", false);
    output.leaveNotes(feature);
}

void writeParameter(Output& output, const Parameter& parameter, std::string_view parent)
{
    const std::string id = output.begin("UMLParameter", parameter, parent);
    writeTyped(output, parameter, id);
    output.json.member("visibility", "public").member("isStatic", false).member("isReadOnly", false);
    output.json.member("direction", wordFor(parameter.direction));
    output.end();
}

void writeResult(Output& output, const Operation& operation, std::string_view parent)
{
    if (operation.returnType.isEmpty() && !operation.returnMultiplicity)
        return;
    output.begin("UMLParameter", output.newId(), parent);
    writeType(output, operation.returnType);
    writeMultiplicity(output, operation.returnMultiplicity);
    output.json.member("visibility", "public").member("isStatic", false).member("isLeaf", false);
    output.json.member("isReadOnly", false).member("isOrdered", false).member("isUnique", false);
    output.json.member("direction", "return");
    output.end();
}

void writeTemplateParameter(Output& output, const Parameter& parameter, std::string_view parent)
{
    const std::string id = output.begin("UMLTemplateParameter", parameter, parent);
    output.textIfAny("stereotype", parameter.stereotype);
    output.ownedConstraints(parameter, id);
    output.textIfAny("parameterType", parameter.type.name.empty() ? parameter.type.id : parameter.type.name);
    output.textIfAny("defaultValue", parameter.initialValue);
    if (parameter.multiplicity)
        output.leave("multiplicity of a template parameter", parameter);
    output.leaveNotes(parameter);
    output.end();
}

void writeCondition(Output& output, std::string_view key, std::string_view text, std::string_view parent)
{
    if (text.empty())
        return;
    output.json.beginList(key);
    output.begin("UMLConstraint", output.newId(), parent);
    output.json.member("specification", text);
    output.end();
    output.json.endList();
}

std::string_view concurrencyOf(const Operation& operation)
{
    switch (operation.concurrency) {
    case Concurrency::Guarded:
        return "guarded";
    case Concurrency::Active:
    case Concurrency::Synchronous:
        return "concurrent";
    case Concurrency::Sequential:
        break;
    }
    return "sequential";
}

void leaveProperties(const Output& output, const Operation& operation)
{
    if (operation.concurrency == Concurrency::Active)
        output.leave("concurrency of an operation", operation);
    if (operation.isVirtual)
        output.leave("virtuality of an operation", operation);
    if (operation.isFriend)
        output.leave("friendship of an operation", operation);
    output.leaveNotes(operation);
}

void writeOperation(Output& output, const Operation& operation, std::string_view parent)
{
    const std::string id = output.begin("UMLOperation", operation, parent);
    output.textIfAny("stereotype", operation.stereotype);
    output.ownedConstraints(operation, id, {"query"});
    output.json.member("visibility", staruml::wordFor(operation.visibility)).member("isStatic", operation.isStatic);
    output.json.member("isLeaf", false);
    output.json.beginList("parameters");
    for (const Parameter& parameter : operation.parameters)
        writeParameter(output, parameter, id);
    writeResult(output, operation, id);
    output.json.endList();
    writeCondition(output, "preconditions", operation.preCondition, id);
    writeCondition(output, "postconditions", operation.postCondition, id);
    output.json.member("concurrency", concurrencyOf(operation));
    output.json.member("isQuery", hasConstraint(operation, "query")).member("isAbstract", operation.isAbstract);
    output.textIfAny("specification", operation.semantics);
    leaveProperties(output, operation);
    output.end();
}

void writeLiteral(Output& output, const Literal& literal, std::string_view parent)
{
    const std::string id = output.begin("UMLEnumerationLiteral", literal, parent);
    output.textIfAny("stereotype", literal.stereotype);
    output.ownedConstraints(literal, id);
    if (!literal.value.empty() && literal.value != literal.name)
        output.leave("value of a literal", literal);
    output.leaveNotes(literal);
    output.end();
}

template <class Member, class Write>
void writeList(Output& output, std::string_view key, const std::vector<Member>& members, std::string_view parent,
               const Write& write)
{
    if (members.empty())
        return;
    output.json.beginList(key);
    for (const Member& member : members)
        write(output, member, parent);
    output.json.endList();
}

void leaveProperties(const Output& output, const Classifier& classifier)
{
    if (classifier.kind == ClassifierKind::AssociationClass) {
        constexpr std::string_view reason = "in StarUML it is a class beside its association";
        output.report.left(nameOf(classifier.kind), classifier.id, classifier.name, reason);
        output.report.made("class", classifier.id, classifier.name, reason);
    }
    const bool isTemplate = classifier.form == ClassForm::Parameterized && !classifier.templateParameters.empty();
    if (classifier.form != ClassForm::Plain && !isTemplate)
        output.leave("form of a class", classifier);
    if (classifier.concurrency == Concurrency::Guarded || classifier.concurrency == Concurrency::Synchronous)
        output.leave("concurrency of a class", classifier);
    if (classifier.isPersistent)
        output.leave("persistence of a class", classifier);
    if (!classifier.cardinality.empty())
        output.leave("cardinality of a class", classifier);
    if (classifier.space != 0)
        output.leave("space of a class", classifier);
}

} // namespace

std::string_view typeOf(const Classifier& classifier)
{
    switch (classifier.kind) {
    case ClassifierKind::Interface:
        return "UMLInterface";
    case ClassifierKind::DataType:
        return "UMLDataType";
    case ClassifierKind::PrimitiveType:
        return "UMLPrimitiveType";
    case ClassifierKind::Enumeration:
        return "UMLEnumeration";
    case ClassifierKind::Actor:
        return "UMLActor";
    case ClassifierKind::UseCase:
        return "UMLUseCase";
    case ClassifierKind::Class:
    case ClassifierKind::AssociationClass:
        break;
    }
    return "UMLClass";
}

void writeAttribute(Output& output, const Attribute& attribute, std::string_view parent)
{
    const std::string id = output.begin("UMLAttribute", attribute, parent);
    output.json.member("visibility", wordFor(attribute.visibility)).member("isStatic", attribute.isStatic);
    writeTyped(output, attribute, id);
    output.json.member("isReadOnly", attribute.isReadOnly).member("isDerived", attribute.isDerived);
    output.json.member("aggregation", wordFor(attribute.containment)).member("isID", attribute.isIdentifier);
    output.end();
}

void writeClassifier(Output& output, const Classifier& classifier, const OwnedRelations& relations,
                     std::string_view parent)
{
    const std::string id = output.begin(typeOf(classifier), classifier, parent);
    if (classifier.kind != ClassifierKind::Actor || classifier.stereotype != "Actor") // the tool's type says it
        output.textIfAny("stereotype", classifier.stereotype);
    if (!classifier.constraints.empty() || !relations.associations.empty() || !relations.relationships.empty()) {
        output.json.beginList("ownedElements");
        output.constraints(classifier, id);
        writeRelations(output, relations, id);
        output.json.endList();
    }
    output.json.member("visibility", wordFor(classifier.visibility));
    writeList(output, "attributes", classifier.attributes, id, writeAttribute);
    writeList(output, "operations", classifier.operations, id, writeOperation);
    writeList(output, "templateParameters", classifier.templateParameters, id, writeTemplateParameter);
    writeList(output, "literals", classifier.literals, id, writeLiteral);
    output.json.member("isAbstract", classifier.isAbstract).member("isFinalSpecialization", false);
    output.json.member("isLeaf", false);
    output.json.member("isActive", classifier.concurrency == Concurrency::Active);
    leaveProperties(output, classifier);
    output.end();
}

} // namespace design::staruml
