#include "designs/formats/Formats.h"

#include "designs/formats/ecore/Write.h"
#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Outside.h"
#include "designs/formats/uml2/Values.h"
#include "designs/model/Texts.h"

#include <array>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

// Nothing in these files has an identifier; links name the way from the root, "#//shop/Order/lines", and so do we.
std::string pathOf(const std::string& parent, pugi::xml_node node)
{
    return parent + "/" + node.attribute("name").value();
}

// Bounds that are left out are 0 and 1.
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

struct KeptAttribute {
    const char* name;
    const char* property; // as Rose files have it
};
constexpr std::array keptAttributes = {
    KeptAttribute{"nsURI", "nsURI"},
    KeptAttribute{"nsPrefix", "nsPrefix"},
    KeptAttribute{"instanceClassName", "instanceClassName"},
    KeptAttribute{"unique", "isUnique"},
    KeptAttribute{"volatile", "isVolatile"},
    KeptAttribute{"transient", "isTransient"},
    KeptAttribute{"unsettable", "isUnsettable"},
    KeptAttribute{"resolveProxies", "isResolveProxies"},
};

// What a design has no field for, and a file that goes out needs again.
void keepProperties(pugi::xml_node node, Element& element)
{
    for (const KeptAttribute& kept : keptAttributes)
        if (const pugi::xml_attribute attribute = node.attribute(kept.name))
            element.properties.push_back({"Ecore", kept.property, attribute.value()});
}

// References to a whole are taken for transient, unless something else is said.
void keepAbsence(AssociationEnd& end, pugi::xml_node reference)
{
    if (!reference.attribute("transient"))
        end.properties.push_back({"Ecore", "isTransient", "false"});
}

// The end that a reference leads to.
AssociationEnd endOf(pugi::xml_node reference, const std::string& path)
{
    AssociationEnd end;
    end.id = path;
    end.name = reference.attribute("name").value();
    end.documentation = uml2::generatorDocumentation(reference);
    keepProperties(reference, end);
    if (const pugi::xml_attribute changeable = reference.attribute("changeable"))
        end.properties.push_back({"Ecore", "isChangeable", changeable.value()});
    end.multiplicity = bounds(reference);
    end.isNavigable = true;
    end.isDerived = xml::flag(reference, "derived");
    return end;
}

class Reader {
public:
    Reader(uml2::Outside& theOutside, Report& theReport) : outside(theOutside), report(theReport) {}

    Design read(pugi::xml_node root)
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

private:
    // Notes the other ways to name classes, and all references.
    void index(pugi::xml_node node, const std::string& path)
    {
        int number = 0;
        for (const pugi::xml_node classifier : node.children("eClassifiers")) {
            const std::string own = pathOf(path, classifier);
            paths.emplace(path + "/@eClassifiers." + std::to_string(number++), own);
            if (const std::string_view id = xml::xmiAttribute(classifier, "id"); !id.empty())
                paths.emplace(id, own);
            for (const pugi::xml_node feature : classifier.children("eStructuralFeatures"))
                if (xml::typeName(feature) == "EReference")
                    references.emplace(pathOf(own, feature), feature);
        }
        for (const pugi::xml_node child : node.children("eSubpackages"))
            index(child, pathOf(path, child));
    }

    // "#//Order ecore:EClass platform:/resource/base.ecore#//Thing": a kind may stand before a link out of the file.
    std::vector<Reference> links(std::string_view text)
    {
        std::vector<Reference> found;
        for (const std::string_view word : xml::words(text)) {
            if (word.find('#') == std::string_view::npos)
                continue;
            Reference reference = outside.reference(word, {});
            const auto other = paths.find(reference.id);
            if (other != paths.end())
                reference.id = other->second;
            found.push_back(std::move(reference));
        }
        return found;
    }

    Reference typeOf(pugi::xml_node node)
    {
        std::vector<Reference> found = links(node.attribute("eType").value());
        if (found.empty())
            found = links(node.child("eGenericType").attribute("eClassifier").value());
        return found.empty() ? Reference() : found.front();
    }

    void describe(pugi::xml_node node, const std::string& path, Element& element)
    {
        element.id = path;
        element.name = node.attribute("name").value();
        element.documentation = uml2::generatorDocumentation(node);
        keepProperties(node, element);
    }

    void readPackage(pugi::xml_node node, const std::string& path, Package& package)
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

    void readClassifier(pugi::xml_node node, const std::string& path, Package& package)
    {
        const std::string_view type = xml::typeName(node);
        Classifier classifier;
        describe(node, path, classifier);
        for (const pugi::xml_node parameter : node.children("eTypeParameters"))
            describe(parameter, {}, classifier.templateParameters.emplace_back());
        if (type == "EEnum") {
            classifier.kind = ClassifierKind::Enumeration;
            for (const pugi::xml_node literal : node.children("eLiterals")) {
                Literal& taken = classifier.literals.emplace_back();
                describe(literal, pathOf(path, literal), taken);
                taken.value = literal.attribute("value").value();
            }
        } else if (type == "EDataType") {
            classifier.kind = ClassifierKind::PrimitiveType;
        } else {
            readClass(node, path, classifier, package);
        }
        package.classifiers.push_back(std::move(classifier));
    }

    void readClass(pugi::xml_node node, const std::string& path, Classifier& classifier, Package& package)
    {
        classifier.kind = xml::flag(node, "interface") ? ClassifierKind::Interface : ClassifierKind::Class;
        classifier.isAbstract = xml::flag(node, "abstract");
        std::vector<Reference> supertypes = links(node.attribute("eSuperTypes").value());
        for (const pugi::xml_node generic : node.children("eGenericSuperTypes"))
            for (Reference& reference : links(generic.attribute("eClassifier").value()))
                supertypes.push_back(std::move(reference));
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
                classifier.attributes.push_back(readAttribute(feature, pathOf(path, feature)));
        }
        for (const pugi::xml_node each : node.children("eOperations"))
            classifier.operations.push_back(readOperation(each));
    }

    Attribute readAttribute(pugi::xml_node node, const std::string& path)
    {
        Attribute attribute;
        describe(node, path, attribute);
        attribute.type = typeOf(node);
        attribute.initialValue = node.attribute("defaultValueLiteral").value();
        attribute.multiplicity = statedBounds(node);
        attribute.visibility = Visibility::Public;
        attribute.isDerived = xml::flag(node, "derived");
        attribute.isReadOnly = std::string_view(node.attribute("changeable").value()) == "false";
        attribute.isIdentifier = xml::flag(node, "iD");
        return attribute;
    }

    // Operations of one name may differ in their parameters, so that a path would not name one.
    Operation readOperation(pugi::xml_node node)
    {
        Operation operation;
        describe(node, {}, operation);
        operation.returnType = typeOf(node);
        operation.returnMultiplicity = statedBounds(node);
        for (const pugi::xml_node child : node.children("eParameters")) {
            Parameter& parameter = operation.parameters.emplace_back();
            describe(child, {}, parameter);
            parameter.type = typeOf(child);
            parameter.multiplicity = statedBounds(child);
        }
        return operation;
    }

    // A reference and its opposite are the two ends of one association; the end at the owner of a containment is the
    // whole.
    void readReference(pugi::xml_node node, const std::string& path, const std::string& owner, Package& package)
    {
        if (!joined.insert(path).second)
            return;
        Association association;
        association.id = path + "/association";
        AssociationEnd near;
        AssociationEnd far = endOf(node, path);
        far.participant = typeOf(node);
        const std::vector<Reference> opposites = links(node.attribute("eOpposite").value());
        const auto opposite = opposites.empty() ? references.end() : references.find(opposites.front().id);
        if (opposite != references.end() && joined.insert(opposite->first).second) {
            near = endOf(opposite->second, opposite->first);
            if (xml::flag(opposite->second, "containment")) {
                far.aggregation = Aggregation::Composite;
                keepAbsence(far, node);
            }
            if (xml::flag(node, "containment"))
                keepAbsence(near, opposite->second);
        } else if (!opposites.empty() && opposite == references.end()) {
            report.made("opposite", path, far.name, "it is not in the file; the association is navigable one way");
        }
        near.participant.id = owner;
        if (xml::flag(node, "containment"))
            near.aggregation = Aggregation::Composite;
        association.ends = {std::move(near), std::move(far)};
        package.associations.push_back(std::move(association));
    }

    uml2::Outside& outside;
    Report& report;
    std::unordered_map<std::string, std::string> paths;         // by other forms of link, such as "//@eClassifiers.3"
    std::unordered_map<std::string, pugi::xml_node> references; // by path
    std::unordered_set<std::string> joined;                     // references whose association is there, by path
};

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
    return {"ecore",      "Ecore metamodel (.ecore)",
            {".ecore"},   "an ecore:EPackage with eClassifiers",
            recognizes,   read,
            ecore::write, false,
            false};
}

} // namespace design
