#include "designs/formats/umbrello/Uml1.h"

#include "designs/formats/shared/Kinds.h"
#include "designs/formats/umbrello/Xmi1.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Texts.h"

#include <array>
#include <unordered_map>
#include <utility>

namespace design::uml1 {

namespace {

constexpr std::array classifierElements = {
    NamedClassifier{"Class", ClassifierKind::Class},
    NamedClassifier{"AssociationClass", ClassifierKind::AssociationClass},
    NamedClassifier{"Interface", ClassifierKind::Interface},
    NamedClassifier{"DataType", ClassifierKind::DataType},
    NamedClassifier{"Primitive", ClassifierKind::PrimitiveType},
    NamedClassifier{"Enumeration", ClassifierKind::Enumeration},
    NamedClassifier{"Actor", ClassifierKind::Actor, "Actor"},
    NamedClassifier{"UseCase", ClassifierKind::UseCase},
    NamedClassifier{"Signal", ClassifierKind::Class, "signal"},
    NamedClassifier{"Component", ClassifierKind::Class, "component"},
    NamedClassifier{"Object", ClassifierKind::Class, "object"},
};

// UML 1.x has no realizations of its own, and tools write them as abstractions.
constexpr std::array relationshipElements = {
    NamedRelationship{"Generalization", RelationshipKind::Generalization, "", "child", "parent"},
    NamedRelationship{"Abstraction", RelationshipKind::Realization},
    NamedRelationship{"Dependency", RelationshipKind::Dependency},
    NamedRelationship{"Usage", RelationshipKind::Dependency, "use"},
    NamedRelationship{"Permission", RelationshipKind::Dependency, "permit"},
};

// Stereotypes that say what the kind of the element says already.
constexpr std::array<std::string_view, 5> impliedStereotypes = {"folder", "datatype", "enum", "interface",
                                                                "enumeration"};

class Reader {
public:
    Reader(pugi::xml_node theRoot, Report& theReport) : root(theRoot), report(theReport) {}

    Design read()
    {
        xml::forEachBelow(root, [this](pugi::xml_node node) { return add(node); });
        const pugi::xml_node documentation = root.child("XMI.header").child("XMI.documentation");
        design.tool = documentation.child("XMI.exporter").text().get();
        const std::string_view version = documentation.child("XMI.exporterVersion").text().get();
        if (!version.empty())
            design.tool += " " + std::string(version);
        readTop(root.child("XMI.content"));
        return std::move(design);
    }

private:
    // Whether there are elements in it.
    bool add(pugi::xml_node node)
    {
        const std::string_view name = node.name();
        if (name.starts_with("XMI.extension"))
            return false;
        if (const std::string_view id = xml::xmiAttribute(node, "id"); !id.empty()) {
            design.kinds.emplace(id, plainWords(xml::localName(name)));
            if (name == "UML:Stereotype")
                stereotypes.emplace(id, node);
        }
        return true;
    }

    void readTop(pugi::xml_node content)
    {
        Package& top = design.root;
        bool hasTop = false;
        for (const pugi::xml_node node : content.children()) {
            if (!hasTop && std::string_view(node.name()) == "UML:Model") {
                readContent(node, top);
                hasTop = true;
            } else if (node.type() == pugi::node_element) {
                readMember(node, top);
            }
        }
        // The tool has all its views in every file.
        std::erase_if(top.packages, [](const Package& package) {
            return package.classifiers.empty() && package.packages.empty() && package.associations.empty() &&
                   package.relationships.empty() && package.id == package.name &&
                   package.id.find(' ') != std::string::npos;
        });
    }

    void readContent(pugi::xml_node node, Package& package)
    {
        describe(node, package);
        for (const pugi::xml_node member : parts(node, "ownedElement"))
            readMember(member, package);
    }

    void readMember(pugi::xml_node node, Package& package)
    {
        const std::string_view name = xml::localName(node.name());
        if (!xml::xmiAttribute(node, "idref").empty())
            return;
        if (name == "Package" || name == "Model" || name == "Subsystem") {
            Package child;
            readContent(node, child);
            package.packages.push_back(std::move(child));
        } else if (const NamedClassifier* const classifier = rowOf(classifierElements, name)) {
            readClassifier(node, *classifier, package);
        } else if (const NamedRelationship* const relationship = rowOf(relationshipElements, name)) {
            readRelationship(node, *relationship, package);
        } else if (name == "Association") {
            readAssociation(node, package);
        } else if (name == "Comment") {
            readComment(node, package);
        } else if (name != "Stereotype" && name != "TagDefinition") { // both only name what elements have
            leave(node);
            for (const pugi::xml_node member : parts(node, "ownedElement"))
                readMember(member, package);
        }
    }

    void leave(pugi::xml_node node)
    {
        report.left(plainWords(xml::localName(node.name())), xml::xmiAttribute(node, "id"), value(node, "name"),
                    nothingOfThisKind);
    }

    void describe(pugi::xml_node node, Element& element)
    {
        element.id = xml::xmiAttribute(node, "id");
        element.name = value(node, "name");
        element.documentation = value(node, "comment");
        const std::string_view stereotype = value(node, "stereotype");
        const auto found = stereotypes.find(stereotype);
        const std::string_view name = found == stereotypes.end() ? stereotype : value(found->second, "name");
        if (!isOneOf(impliedStereotypes, name))
            element.stereotype = name;
        for (const pugi::xml_node tagged : parts(node, "taggedValue"))
            if (std::string_view(tagged.attribute("tag").value()) == "documentation")
                element.documentation = tagged.attribute("value").value();
        for (const pugi::xml_node constraint : parts(node, "constraint")) {
            const std::string_view body = constraint.attribute("body").value();
            const std::string_view text = body.empty() ? value(constraint, "name") : body;
            if (!text.empty())
                element.constraints.emplace_back(text);
        }
    }

    void readClassifier(pugi::xml_node node, const NamedClassifier& type, Package& package)
    {
        Classifier classifier;
        describe(node, classifier);
        classifier.kind = type.kind;
        if (classifier.stereotype.empty())
            classifier.stereotype = type.stereotype;
        classifier.visibility = visibilityNamed(node.attribute("visibility").value());
        classifier.isAbstract = xml::flag(node, "isAbstract") && type.kind != ClassifierKind::Interface;
        classifier.concurrency = concurrencyOf(xml::flag(node, "isActive"));
        for (const pugi::xml_node parameter : parts(node, "templateParameter")) {
            classifier.templateParameters.push_back(readTyped<Parameter>(parameter));
            classifier.templateParameters.back().initialValue.clear();
        }
        for (const pugi::xml_node feature : parts(node, "feature"))
            readFeature(feature, classifier);
        for (const pugi::xml_node child : node.children())
            readFeature(child, classifier);
        for (const pugi::xml_node literal : parts(node, "literal"))
            readFeature(literal, classifier);
        package.classifiers.push_back(std::move(classifier));
        if (type.kind == ClassifierKind::AssociationClass)
            readAssociation(node, package);
        for (const pugi::xml_node member : parts(node, "ownedElement")) {
            if (xml::xmiAttribute(member, "idref").empty() && rowOf(classifierElements, xml::localName(member.name())))
                report.made("nested class", xml::xmiAttribute(member, "id"), value(member, "name"), besideItsOwner);
            readMember(member, package);
        }
    }

    void readFeature(pugi::xml_node node, Classifier& classifier)
    {
        const std::string_view name = xml::localName(node.name());
        if (name == "Attribute") {
            classifier.attributes.push_back(readAttribute(node));
        } else if (name == "Operation") {
            classifier.operations.push_back(readOperation(node));
        } else if (name == "EnumerationLiteral") {
            Literal& literal = classifier.literals.emplace_back();
            describe(node, literal);
            literal.value = node.attribute("value").value();
        } else if (name == "EntityAttribute" || name == "Reception" || name == "Method") {
            leave(node);
        }
    }

    // What attributes and parameters have in common.
    template <class Feature>
    Feature readTyped(pugi::xml_node node)
    {
        Feature feature;
        describe(node, feature);
        feature.type.id = value(node, "type");
        for (const char* const key : {"initialValue", "value", "defaultValue"}) {
            if (feature.initialValue.empty())
                feature.initialValue = node.attribute(key).value();
            for (const pugi::xml_node expression : parts(node, key))
                if (feature.initialValue.empty())
                    feature.initialValue = expression.attribute("body").value();
        }
        return feature;
    }

    Attribute readAttribute(pugi::xml_node node)
    {
        auto attribute = readTyped<Attribute>(node);
        attribute.multiplicity = multiplicity(node);
        attribute.visibility = visibilityNamed(node.attribute("visibility").value());
        attribute.isStatic = isOfClass(node);
        attribute.isReadOnly = std::string_view(node.attribute("changeability").value()) == "frozen";
        return attribute;
    }

    static bool isOfClass(pugi::xml_node feature)
    {
        return std::string_view(feature.attribute("ownerScope").value()) == "classifier";
    }

    Operation readOperation(pugi::xml_node node)
    {
        Operation operation;
        describe(node, operation);
        operation.visibility = visibilityNamed(node.attribute("visibility").value());
        operation.isStatic = isOfClass(node);
        operation.isAbstract = xml::flag(node, "isAbstract");
        for (const pugi::xml_node child : parts(node, "parameter")) {
            const std::string_view kind = child.attribute("kind").value();
            auto parameter = readTyped<Parameter>(child);
            parameter.direction = directionNamed(kind);
            if (kind == "return")
                operation.returnType = std::move(parameter.type);
            else
                operation.parameters.push_back(std::move(parameter));
        }
        return operation;
    }

    void readRelationship(pugi::xml_node node, const NamedRelationship& type, Package& package)
    {
        Relationship relationship;
        describe(node, relationship);
        relationship.kind = type.kind;
        addWord(relationship.stereotype, type.stereotype);
        relationship.client.id = value(node, type.client);
        relationship.supplier.id = value(node, type.supplier);
        package.relationships.push_back(std::move(relationship));
    }

    // Here an end's aggregation says what the class at this same end is.
    void readAssociation(pugi::xml_node node, Package& package)
    {
        Association association;
        describe(node, association);
        if (xml::localName(node.name()) == "AssociationClass") { // the class says what there is to say
            association.associationClassId = association.id;
            association.id = uml2::associationOf(association.associationClassId);
            association.documentation.clear();
            association.constraints.clear();
        }
        for (const pugi::xml_node part : parts(node, "connection")) {
            AssociationEnd end;
            describe(part, end);
            end.participant.id = value(part, "type").empty() ? value(part, "participant") : value(part, "type");
            end.multiplicity = multiplicity(part);
            end.visibility = visibilityNamed(part.attribute("visibility").value());
            end.aggregation = aggregationNamed(part.attribute("aggregation").value());
            end.isNavigable = xml::flag(part, "isNavigable");
            for (const pugi::xml_node qualifier : parts(part, "qualifier"))
                end.qualifiers.push_back(readAttribute(qualifier));
            association.ends.push_back(std::move(end));
        }
        package.associations.push_back(std::move(association));
    }

    static void readComment(pugi::xml_node node, Package& package)
    {
        const std::string_view body = value(node, "body");
        Remark remark;
        remark.id = xml::xmiAttribute(node, "id");
        remark.text = body.empty() ? value(node, "name") : body;
        for (const pugi::xml_node element : parts(node, "annotatedElement"))
            remark.elementIds.emplace_back(xml::xmiAttribute(element, "idref"));
        if (!remark.text.empty())
            package.remarks.push_back(std::move(remark));
    }

    pugi::xml_node root;
    Report& report;
    std::unordered_map<std::string_view, pugi::xml_node> stereotypes; // by identifier
    Design design;
};

} // namespace

bool hasModel(std::string_view head)
{
    return head.find("<XMI") != std::string_view::npos && head.find("xmi.version") != std::string_view::npos &&
           (head.find("UML:") != std::string_view::npos || head.find("<XMI.header>") != std::string_view::npos);
}

Design read(const xml::Document& document, Report& report)
{
    return Reader(document.root(), report).read();
}

} // namespace design::uml1
