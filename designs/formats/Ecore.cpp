#include "designs/formats/Ecore.h"

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Uml2Values.h"
#include "designs/model/Texts.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

/// Nothing in these files has an identifier; links name the way from the root, "#//shop/Order/lines", and so do we.
std::string pathOf(const std::string& parent, pugi::xml_node node)
{
    return parent + "/" + node.attribute("name").value();
}

/// Bounds that are left out are 0 and 1.
Multiplicity bounds(pugi::xml_node node)
{
    const std::string lower = node.attribute("lowerBound").as_string("0");
    const std::string upper = node.attribute("upperBound").as_string("1");
    return parseMultiplicity(lower + ".." + upper).value_or(Multiplicity());
}

std::optional<Multiplicity> statedBounds(pugi::xml_node node)
{
    const bool isStated = node.attribute("lowerBound") || node.attribute("upperBound");
    return isStated ? std::optional<Multiplicity>(bounds(node)) : std::nullopt;
}

struct Feature {
    pugi::xml_node node;
    std::string owner; ///< path of the class
};

class Reader {
public:
    Reader(uml2::Outside& outside, Report& report) : outside_(outside), report_(report) {}

    Design read(pugi::xml_node root);

private:
    void index(pugi::xml_node node, const std::string& path);
    std::vector<Reference> links(std::string_view text);
    Reference type(pugi::xml_node node);
    void describe(pugi::xml_node node, const std::string& path, Element& element);
    void readPackage(pugi::xml_node node, const std::string& path, Package& package);
    void readClassifier(pugi::xml_node node, const std::string& path, Package& package);
    void readClass(pugi::xml_node node, const std::string& path, Classifier& classifier, Package& package);
    Attribute attribute(pugi::xml_node node, const std::string& path);
    Operation operation(pugi::xml_node node, const std::string& path);
    void readReference(pugi::xml_node node, const std::string& path, const std::string& owner, Package& package);

    uml2::Outside& outside_;
    Report& report_;
    std::unordered_map<std::string, std::string> paths_; ///< by other forms of link, such as "//@eClassifiers.3"
    std::unordered_map<std::string, Feature> references_;
    std::unordered_set<std::string> joined_; ///< references that the association of their opposites has taken in
};

/// Notes the other ways to name classes, and all references.
void Reader::index(pugi::xml_node node, const std::string& path)
{
    int number = 0;
    for (const pugi::xml_node classifier : node.children("eClassifiers")) {
        const std::string own = pathOf(path, classifier);
        paths_.emplace(path + "/@eClassifiers." + std::to_string(number++), own);
        if (const std::string_view id = xml::xmiAttribute(classifier, "id"); !id.empty())
            paths_.emplace(id, own);
        for (const pugi::xml_node feature : classifier.children("eStructuralFeatures")) {
            if (xml::typeName(feature) == "EReference")
                references_.emplace(pathOf(own, feature), Feature{feature, own});
        }
    }
    for (const pugi::xml_node child : node.children("eSubpackages"))
        index(child, pathOf(path, child));
}

/// "#//Order ecore:EClass platform:/resource/base.ecore#//Thing": a kind may stand before a link out of the file.
std::vector<Reference> Reader::links(std::string_view text)
{
    std::vector<Reference> found;
    for (const std::string_view word : xml::words(text)) {
        if (word.find('#') == std::string_view::npos)
            continue;
        Reference reference = outside_.reference(word, {});
        const auto other = paths_.find(reference.id);
        if (other != paths_.end())
            reference.id = other->second;
        found.push_back(std::move(reference));
    }
    return found;
}

Reference Reader::type(pugi::xml_node node)
{
    std::vector<Reference> found = links(node.attribute("eType").value());
    if (found.empty())
        found = links(node.child("eGenericType").attribute("eClassifier").value());
    return found.empty() ? Reference() : found.front();
}

void Reader::describe(pugi::xml_node node, const std::string& path, Element& element)
{
    element.id = path;
    element.name = node.attribute("name").value();
    element.documentation = uml2::generatorDocumentation(node);
}

void Reader::readPackage(pugi::xml_node node, const std::string& path, Package& package)
{
    describe(node, path, package);
    for (const pugi::xml_node classifier : node.children("eClassifiers"))
        readClassifier(classifier, pathOf(path, classifier), package);
    for (const pugi::xml_node child : node.children("eSubpackages")) {
        Package inner;
        readPackage(child, pathOf(path, child), inner);
        package.packages.push_back(std::move(inner));
    }
}

void Reader::readClassifier(pugi::xml_node node, const std::string& path, Package& package)
{
    const std::string_view type = xml::typeName(node);
    Classifier classifier;
    describe(node, path, classifier);
    for (const pugi::xml_node parameter : node.children("eTypeParameters")) {
        Parameter taken;
        describe(parameter, {}, taken);
        classifier.templateParameters.push_back(std::move(taken));
    }
    if (type == "EEnum") {
        classifier.kind = ClassifierKind::Enumeration;
        for (const pugi::xml_node literal : node.children("eLiterals")) {
            Literal taken;
            describe(literal, pathOf(path, literal), taken);
            taken.value = literal.attribute("value").value();
            classifier.literals.push_back(std::move(taken));
        }
    } else if (type == "EDataType") {
        classifier.kind = ClassifierKind::PrimitiveType;
    } else {
        readClass(node, path, classifier, package);
    }
    package.classifiers.push_back(std::move(classifier));
}

void Reader::readClass(pugi::xml_node node, const std::string& path, Classifier& classifier, Package& package)
{
    classifier.kind = xml::flag(node, "interface") ? ClassifierKind::Interface : ClassifierKind::Class;
    classifier.isAbstract = xml::flag(node, "abstract");
    std::vector<Reference> supertypes = links(node.attribute("eSuperTypes").value());
    for (const pugi::xml_node generic : node.children("eGenericSuperTypes")) {
        for (Reference& reference : links(generic.attribute("eClassifier").value()))
            supertypes.push_back(std::move(reference));
    }
    for (Reference& supertype : supertypes) {
        Relationship relationship;
        relationship.kind = RelationshipKind::Generalization;
        relationship.client = {path, classifier.name};
        relationship.supplier = std::move(supertype);
        package.relationships.push_back(std::move(relationship));
    }
    for (const pugi::xml_node feature : node.children("eStructuralFeatures")) {
        if (xml::typeName(feature) == "EReference")
            readReference(feature, pathOf(path, feature), path, package);
        else
            classifier.attributes.push_back(attribute(feature, pathOf(path, feature)));
    }
    for (const pugi::xml_node each : node.children("eOperations"))
        classifier.operations.push_back(operation(each, {}));
}

Attribute Reader::attribute(pugi::xml_node node, const std::string& path)
{
    Attribute attribute;
    describe(node, path, attribute);
    attribute.type = type(node);
    attribute.initialValue = node.attribute("defaultValueLiteral").value();
    attribute.multiplicity = statedBounds(node);
    attribute.visibility = Visibility::Public;
    attribute.isDerived = xml::flag(node, "derived");
    attribute.isReadOnly = std::string_view(node.attribute("changeable").value()) == "false";
    attribute.isIdentifier = xml::flag(node, "iD");
    return attribute;
}

/// Operations of one name may differ in their parameters, so that a path would not name one.
Operation Reader::operation(pugi::xml_node node, const std::string& path)
{
    Operation operation;
    describe(node, path, operation);
    operation.returnType = type(node);
    operation.returnMultiplicity = statedBounds(node);
    for (const pugi::xml_node child : node.children("eParameters")) {
        Parameter parameter;
        describe(child, {}, parameter);
        parameter.type = type(child);
        parameter.multiplicity = statedBounds(child);
        operation.parameters.push_back(std::move(parameter));
    }
    return operation;
}

/// The end that a reference leads to.
AssociationEnd endOf(pugi::xml_node reference, const std::string& path)
{
    AssociationEnd end;
    end.id = path;
    end.name = reference.attribute("name").value();
    end.documentation = uml2::generatorDocumentation(reference);
    end.multiplicity = bounds(reference);
    end.isNavigable = true;
    end.isDerived = xml::flag(reference, "derived");
    return end;
}

/// A reference and its opposite are the two ends of one association; the end at the owner of a containment is the
/// whole.
void Reader::readReference(pugi::xml_node node, const std::string& path, const std::string& owner, Package& package)
{
    if (!joined_.insert(path).second)
        return;
    Association association;
    association.id = path + "/association";
    AssociationEnd near;
    AssociationEnd far = endOf(node, path);
    far.participant = type(node);
    const std::vector<Reference> opposites = links(node.attribute("eOpposite").value());
    const auto opposite = opposites.empty() ? references_.end() : references_.find(opposites.front().id);
    if (opposite != references_.end() && joined_.insert(opposite->first).second) {
        near = endOf(opposite->second.node, opposite->first);
        if (xml::flag(opposite->second.node, "containment"))
            far.aggregation = Aggregation::Composite;
    } else if (!opposites.empty()) {
        report_.made("opposite", path, far.name, "it is not in the file; the association is navigable one way");
    }
    near.participant.id = owner;
    if (xml::flag(node, "containment"))
        near.aggregation = Aggregation::Composite;
    association.ends = {std::move(near), std::move(far)};
    package.associations.push_back(std::move(association));
}

Design Reader::read(pugi::xml_node root)
{
    Design design;
    design.tool = "Ecore";
    if (xml::localName(root.name()) == "EPackage") {
        index(root, "/");
        readPackage(root, "/", design.root);
        return design;
    }
    int number = 0; // several packages: links begin with the package's number
    for (const pugi::xml_node node : root.children("ecore:EPackage")) {
        const std::string path = "/" + std::to_string(number++);
        Package package;
        index(node, path);
        readPackage(node, path, package);
        design.root.packages.push_back(std::move(package));
    }
    return design;
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    return head.find("<ecore:EPackage") != std::string::npos;
}

Design read(const Source& source, Report& report)
{
    const xml::Document document(source.text);
    uml2::Outside outside(source.path);
    return Reader(outside, report).read(document.root());
}

} // namespace

Format ecoreFormat()
{
    return {"ecore", "Ecore metamodel (.ecore)", "an ecore:EPackage with eClassifiers", recognizes, read};
}

} // namespace design
