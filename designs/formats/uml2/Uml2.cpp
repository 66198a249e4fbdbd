#include "designs/formats/uml2/Uml2.h"

#include "designs/model/Kinds.h"
#include "designs/model/Naming.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>

namespace design::uml2 {

namespace {

constexpr std::array<NamedClassifier, 10> classifierTypes = {{
    {"Class", ClassifierKind::Class, ""},
    {"AssociationClass", ClassifierKind::AssociationClass, ""},
    {"Interface", ClassifierKind::Interface, ""},
    {"DataType", ClassifierKind::DataType, ""},
    {"PrimitiveType", ClassifierKind::PrimitiveType, ""},
    {"Enumeration", ClassifierKind::Enumeration, ""},
    {"Actor", ClassifierKind::Class, "Actor"},
    {"Signal", ClassifierKind::Class, "signal"},
    {"Component", ClassifierKind::Class, "component"},
    {"InstanceSpecification", ClassifierKind::Class, "object"},
}};

/// Of the ends, `client` and `supplier` are always asked, too.
constexpr std::array<NamedRelationship, 11> relationshipTypes = {{
    {"Generalization", RelationshipKind::Generalization, "", "specific", "general"},
    {"InterfaceRealization", RelationshipKind::Realization, "", "implementingClassifier", "contract"},
    {"Realization", RelationshipKind::Realization, "", "client", "supplier"},
    {"ComponentRealization", RelationshipKind::Realization, "", "realizingClassifier", "abstraction"},
    {"Substitution", RelationshipKind::Dependency, "substitute", "substitutingClassifier", "contract"},
    {"Dependency", RelationshipKind::Dependency, "", "client", "supplier"},
    {"Usage", RelationshipKind::Dependency, "use", "client", "supplier"},
    {"Abstraction", RelationshipKind::Dependency, "abstraction", "client", "supplier"},
    {"Permission", RelationshipKind::Dependency, "permit", "client", "supplier"},
    {"Manifestation", RelationshipKind::Dependency, "manifest", "client", "supplier"},
    {"Implementation", RelationshipKind::Realization, "", "implementingClassifier", "contract"},
}};

/// Why something is left. What is not listed has `otherReason`.
struct LeftReason {
    std::string_view type;
    std::string_view reason;
};

constexpr std::array<LeftReason, 7> leftReasons = {{
    {"Profile", "the names of applied stereotypes are taken, not their definitions"},
    {"ProfileApplication", "the names of applied stereotypes are taken, not their definitions"},
    {"Stereotype", "the names of applied stereotypes are taken, not their definitions"},
    {"Extension", "the names of applied stereotypes are taken, not their definitions"},
    {"PackageImport", "the host model has no imports"},
    {"ElementImport", "the host model has no imports"},
    {"PackageMerge", "the host model has no imports"},
}};

constexpr std::string_view otherReason = "the host model has classes, their features and their relations only";

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Roles in which elements hold other elements that have names of their own.
bool isMemberRole(std::string_view role)
{
    constexpr std::array<std::string_view, 7> roles = {"packagedElement", "ownedMember",  "nestedClassifier",
                                                       "nestedPackage",   "ownedElement", "ownedType",
                                                       "packagedMember"};
    return isOneOf(roles, role);
}

bool isAssociation(std::string_view type)
{
    return type == "Association" || type == "AssociationClass" || type == "CommunicationPath";
}

/// Where a UML tree begins in a file.
bool isModelRoot(pugi::xml_node node)
{
    constexpr std::array<std::string_view, 3> roots = {"Model", "Package", "Profile"};
    const std::string_view name = node.name();
    return name.find(':') != std::string_view::npos && isOneOf(roots, xml::localName(name)) &&
           !name.starts_with("xmi:");
}

void addParagraph(std::string& text, std::string_view paragraph)
{
    if (!text.empty() && !paragraph.empty())
        text += '\n';
    text += paragraph;
}

/// Reads one file into a `Model`.
class Reader {
public:
    Reader(pugi::xml_node root, Outside& outside, Report& report) : root_(root), outside_(outside), report_(report) {}

    Model read();

private:
    void indexAll();
    void indexNode(pugi::xml_node node);
    void readStereotypes(pugi::xml_node parent);
    void readTool();

    void left(pugi::xml_node node, std::string_view type);
    void leftWithMembers(pugi::xml_node node, std::string_view type, Package& package);
    void readPackage(pugi::xml_node node, Package& package);
    void readMember(pugi::xml_node node, Package& package);
    void readClassifier(pugi::xml_node node, const NamedClassifier& row, Package& package);
    void readClassifierPart(pugi::xml_node part, Classifier& classifier, Package& package);
    bool readFeature(pugi::xml_node part, Classifier& classifier, Package& package);
    void readOther(pugi::xml_node part, Package& package);

    void describe(pugi::xml_node node, Element& element, const Package& package);
    void readComment(pugi::xml_node node, Element& owner, const Package& package);
    void readConstraint(pugi::xml_node node, const Element& owner, const Package& package);
    std::string constraintText(pugi::xml_node node) const;
    std::string constraintsNamed(pugi::xml_node node, const char* role);

    Attribute attribute(pugi::xml_node node, const Package& package);
    Operation operation(pugi::xml_node node, const Package& package);
    void readTemplate(pugi::xml_node signature, Classifier& classifier, const Package& package);
    void readRelationship(pugi::xml_node node, const NamedRelationship& row, std::string_view ownerId,
                          Package& package);
    void readAssociation(pugi::xml_node node, Package& package);
    std::vector<std::string> endIds(pugi::xml_node node);
    AssociationEnd end(const std::string& id, const std::vector<std::string>& navigable, const Package& package);

    pugi::xml_node root_;
    Outside& outside_;
    Report& report_;
    Index index_;
    std::unordered_set<std::string> ends_; ///< properties that are ends of associations
    std::unordered_map<std::string_view, std::vector<std::string_view>> propertiesOf_; ///< by association
    Model model_;
};

void Reader::indexNode(pugi::xml_node node)
{
    const std::string_view id = xml::xmiAttribute(node, "id");
    if (id.empty())
        return;
    const std::string_view type = xml::typeName(node);
    if (!index_.emplace(id, node).second)
        report_.made("identifier", id, node.attribute("name").value(), "used twice in the file; the first one holds");
    model_.kinds.emplace(id, type.empty() ? xml::localName(node.name()) : type);
    if (isAssociation(type)) {
        for (const Reference& end : references(node, "memberEnd", outside_))
            ends_.insert(end.id);
    }
    if (const pugi::xml_attribute association = node.attribute("association"))
        propertiesOf_[association.value()].push_back(id);
}

/// All of the tree but the tools' own parts, whose identifiers may be those of the model.
void Reader::indexAll()
{
    for (pugi::xml_node node = root_; node;) {
        indexNode(node);
        const pugi::xml_node child = node.first_child();
        if (child && xml::localName(node.name()) != "Extension") {
            node = child;
            continue;
        }
        while (node && node != root_ && !node.next_sibling())
            node = node.parent();
        node = node == root_ ? pugi::xml_node() : node.next_sibling();
    }
}

/// <CityGML:CodeList base_Class="EAID_1" asDictionary="true"/>
void Reader::readStereotypes(pugi::xml_node parent)
{
    for (const pugi::xml_node node : parent.children()) {
        const std::string_view name = node.name();
        if (name.find(':') == std::string_view::npos || name.starts_with("uml:") || name.starts_with("xmi:"))
            continue;
        for (const pugi::xml_attribute attribute : node.attributes()) {
            if (!std::string_view(attribute.name()).starts_with("base_"))
                continue;
            for (const std::string_view id : xml::words(attribute.value()))
                addWord(model_.stereotypes[std::string(id)], xml::localName(name));
        }
        for (const pugi::xml_node child : node.children()) {
            const std::string_view id = xml::xmiAttribute(child, "idref");
            if (std::string_view(child.name()).starts_with("base_") && !id.empty())
                addWord(model_.stereotypes[std::string(id)], xml::localName(name));
        }
    }
}

void Reader::readTool()
{
    for (const pugi::xml_node child : root_.children()) {
        if (xml::localName(child.name()) != "Documentation")
            continue;
        for (const std::string_view part : {"exporter", "exporterVersion"}) {
            std::string_view text = child.attribute(std::string(part).c_str()).value();
            for (const pugi::xml_node inner : child.children()) {
                if (text.empty() && xml::localName(inner.name()) == part)
                    text = inner.text().get();
            }
            if (!text.empty() && !model_.design.tool.empty())
                model_.design.tool += ' ';
            model_.design.tool += text;
        }
    }
    // Eclipse's tools tell themselves by the names of their metamodel: "http://www.eclipse.org/uml2/5.0.0/UML".
    const std::string_view space = root_.attribute("xmlns:uml").value();
    const std::string_view version = xml::between(space, "www.eclipse.org/uml2/", '/');
    if (model_.design.tool.empty() && !version.empty())
        model_.design.tool = "Eclipse UML2 " + std::string(version);
}

Model Reader::read()
{
    indexAll();
    readTool();
    readStereotypes(root_);
    std::vector<pugi::xml_node> roots;
    if (isModelRoot(root_))
        roots.push_back(root_);
    for (const pugi::xml_node child : root_.children()) {
        if (roots.empty() || roots.front() != root_) {
            if (isModelRoot(child))
                roots.push_back(child);
        }
    }
    Package& top = model_.design.root;
    bool hasTop = false;
    for (const pugi::xml_node node : roots) {
        const std::string_view kind = xml::localName(node.name());
        readStereotypes(node);
        if (kind == "Profile") {
            left(node, kind);
        } else if (!hasTop) {
            readPackage(node, top);
            hasTop = true;
        } else {
            Package package;
            readPackage(node, package);
            top.packages.push_back(std::move(package));
        }
    }
    return std::move(model_);
}

void Reader::left(pugi::xml_node node, std::string_view type)
{
    const LeftReason* const row = rowOf(leftReasons, type);
    report_.left(plainWords(type), xml::xmiAttribute(node, "id"), xml::property(node, "name"),
                 row == nullptr ? otherReason : row->reason);
}

/// A component or the like has no place, the classes in it have.
void Reader::leftWithMembers(pugi::xml_node node, std::string_view type, Package& package)
{
    left(node, type.empty() ? std::string_view(node.name()) : type);
    for (const pugi::xml_node child : node.children()) {
        if (isMemberRole(child.name()) && type != "Profile")
            readMember(child, package);
    }
}

void Reader::readPackage(pugi::xml_node node, Package& package)
{
    describe(node, package, package);
    for (const pugi::xml_node child : node.children()) {
        if (isMemberRole(child.name()))
            readMember(child, package);
        else
            readOther(child, package);
    }
}

void Reader::readMember(pugi::xml_node node, Package& package)
{
    std::string_view type = xml::typeName(node);
    if (type.empty() && std::string_view(node.name()) == "nestedPackage")
        type = "Package";
    if (type == "Package" || type == "Model" || type == "Subsystem") {
        Package child;
        readPackage(node, child);
        package.packages.push_back(std::move(child));
    } else if (const NamedClassifier* const classifier = rowOf(classifierTypes, type)) {
        readClassifier(node, *classifier, package);
    } else if (type == "Association") {
        readAssociation(node, package);
    } else if (const NamedRelationship* const relationship = rowOf(relationshipTypes, type)) {
        readRelationship(node, *relationship, {}, package);
    } else {
        leftWithMembers(node, type, package);
    }
}

/// What a package or a classifier has beside members and features.
void Reader::readOther(pugi::xml_node part, Package& package)
{
    constexpr std::array<std::string_view, 4> readElsewhere = {"ownedComment", "ownedRule", "eAnnotations",
                                                               "Extension"};
    constexpr std::array<std::string_view, 5> withoutType = {"profileApplication", "packageImport", "elementImport",
                                                             "packageMerge", "templateBinding"};
    const std::string_view role = xml::localName(part.name());
    if (isOneOf(readElsewhere, role))
        return;
    const std::string_view type = xml::typeName(part);
    if (isOneOf(withoutType, role)) {
        std::string name(role);
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
        left(part, name);
    } else if (const NamedRelationship* const row = rowOf(relationshipTypes, type)) {
        readRelationship(part, *row, xml::xmiAttribute(part.parent(), "id"), package);
    } else if (!type.empty() && !xml::xmiAttribute(part, "id").empty() && !part.attribute("base_Element") &&
               std::string_view(part.name()).find(':') == std::string_view::npos) {
        leftWithMembers(part, type, package);
    }
}

void Reader::describe(pugi::xml_node node, Element& element, const Package& package)
{
    element.id = xml::xmiAttribute(node, "id");
    element.name = xml::property(node, "name");
    element.documentation = generatorDocumentation(node);
    if (const pugi::xml_attribute stereotype = node.attribute("stereotype")) {
        const auto found = index_.find(stereotype.value());
        element.stereotype =
            found == index_.end() ? std::string_view(stereotype.value()) : xml::property(found->second, "name");
    }
    for (const pugi::xml_node comment : node.children("ownedComment"))
        readComment(comment, element, package);
    for (const pugi::xml_node constraint : node.children("ownedRule"))
        readConstraint(constraint, element, package);
}

/// A comment on its owner, or in a class and on nothing else, is documentation; one on something else is a note.
void Reader::readComment(pugi::xml_node node, Element& owner, const Package& package)
{
    const std::string_view body = xml::property(node, "body");
    const std::vector<Reference> annotated = references(node, "annotatedElement", outside_);
    if (trimmed(body).empty())
        return;
    const bool isPackage = &owner == static_cast<const Element*>(&package);
    if (annotated.empty() && !isPackage)
        addParagraph(owner.documentation, body);
    else if (annotated.empty())
        model_.notes.push_back({{}, std::string(body), package.id});
    for (const Reference& reference : annotated) {
        if (reference.id == owner.id)
            addParagraph(owner.documentation, body);
        else
            model_.notes.push_back({reference.id, std::string(body), package.id});
    }
}

std::string Reader::constraintText(pugi::xml_node node) const
{
    std::string text = valueText(node.child("specification"), index_);
    return text.empty() ? std::string(xml::property(node, "name")) : text;
}

void Reader::readConstraint(pugi::xml_node node, const Element& owner, const Package& package)
{
    const std::string text = constraintText(node);
    std::vector<Reference> constrained = references(node, "constrainedElement", outside_);
    if (text.empty())
        return;
    const std::string_view id = xml::xmiAttribute(node, "id");
    for (const char* const role : {"precondition", "postcondition", "bodyCondition"}) {
        for (const std::string_view word : xml::words(node.parent().attribute(role).value())) {
            if (word == id) // shown as the operation's condition
                return;
        }
    }
    if (constrained.empty())
        constrained.push_back({owner.id, {}});
    for (const Reference& reference : constrained)
        model_.constraints.push_back({reference.id, text, package.id});
}

/// The texts of constraints that a role such as "precondition" holds or names.
std::string Reader::constraintsNamed(pugi::xml_node node, const char* role)
{
    std::string text;
    for (const pugi::xml_node child : node.children(role)) {
        if (xml::xmiAttribute(child, "idref").empty())
            addParagraph(text, constraintText(child));
    }
    for (const Reference& reference : references(node, role, outside_)) {
        const auto found = index_.find(reference.id);
        if (found != index_.end())
            addParagraph(text, constraintText(found->second));
    }
    return text;
}

void Reader::readClassifier(pugi::xml_node node, const NamedClassifier& row, Package& package)
{
    Classifier classifier;
    describe(node, classifier, package);
    classifier.kind = row.kind;
    if (classifier.stereotype.empty())
        classifier.stereotype = row.stereotype;
    classifier.visibility = visibility(node.attribute("visibility").value());
    classifier.isAbstract = xml::flag(node, "isAbstract");
    classifier.isActive = xml::flag(node, "isActive");
    for (const pugi::xml_node part : node.children())
        readClassifierPart(part, classifier, package);
    package.classifiers.push_back(std::move(classifier));
    if (row.kind == ClassifierKind::AssociationClass)
        readAssociation(node, package);
}

void Reader::readClassifierPart(pugi::xml_node part, Classifier& classifier, Package& package)
{
    constexpr std::array<std::string_view, 3> ofAssociation = {"ownedEnd", "navigableOwnedEnd", "memberEnd"};
    const std::string_view role = part.name();
    if (readFeature(part, classifier, package) || isOneOf(ofAssociation, role))
        return;
    if (isMemberRole(role)) {
        report_.made("nested classifier", xml::xmiAttribute(part, "id"), xml::property(part, "name"),
                     "stands beside its owner, since classes of the host model do not hold others");
        readMember(part, package);
    } else if (role == "ownedTemplateSignature") {
        readTemplate(part, classifier, package);
    } else if (role == "generalization") {
        readRelationship(part, relationshipTypes.front(), classifier.id, package);
    } else {
        readOther(part, package);
    }
}

bool Reader::readFeature(pugi::xml_node part, Classifier& classifier, Package& package)
{
    const std::string_view role = part.name();
    const std::string_view type = xml::typeName(part);
    if (role == "ownedAttribute" && type != "Port") {
        const pugi::xml_attribute association = part.attribute("association");
        const auto owner = index_.find(association.value());
        const bool isEnd = ends_.contains(std::string(xml::xmiAttribute(part, "id"))) ||
                           (association && owner != index_.end() && isAssociation(xml::typeName(owner->second)));
        if (!isEnd)
            classifier.attributes.push_back(attribute(part, package));
    } else if (role == "ownedOperation") {
        classifier.operations.push_back(operation(part, package));
    } else if (role == "ownedLiteral") {
        Literal literal;
        describe(part, literal, package);
        literal.value = valueText(part.child("specification"), index_);
        classifier.literals.push_back(std::move(literal));
    } else {
        return false;
    }
    return true;
}

Attribute Reader::attribute(pugi::xml_node node, const Package& package)
{
    Attribute attribute;
    describe(node, attribute, package);
    attribute.type = reference(node, "type", outside_);
    const pugi::xml_node value = node.child("defaultValue");
    attribute.initialValue = value ? valueText(value, index_) : std::string(node.attribute("default").value());
    attribute.multiplicity = multiplicity(node, index_);
    attribute.visibility = visibility(node.attribute("visibility").value());
    attribute.isStatic = xml::flag(node, "isStatic");
    attribute.isDerived = xml::flag(node, "isDerived");
    attribute.isReadOnly = xml::flag(node, "isReadOnly");
    attribute.isIdentifier = xml::flag(node, "isID");
    return attribute;
}

Operation Reader::operation(pugi::xml_node node, const Package& package)
{
    Operation operation;
    describe(node, operation, package);
    operation.visibility = visibility(node.attribute("visibility").value());
    operation.isStatic = xml::flag(node, "isStatic");
    operation.isAbstract = xml::flag(node, "isAbstract");
    operation.preCondition = constraintsNamed(node, "precondition");
    operation.postCondition = constraintsNamed(node, "postcondition");
    operation.semantics = constraintsNamed(node, "bodyCondition");
    for (const pugi::xml_node child : node.children("ownedParameter")) {
        const std::string_view direction = child.attribute("direction").value();
        if (direction == "return" || direction == "result") {
            operation.returnType = reference(child, "type", outside_);
            operation.returnMultiplicity = multiplicity(child, index_);
            continue;
        }
        const Attribute read = attribute(child, package);
        Parameter parameter;
        static_cast<Element&>(parameter) = static_cast<const Element&>(read);
        parameter.type = read.type;
        parameter.initialValue = read.initialValue;
        parameter.multiplicity = read.multiplicity;
        if (direction == "out" || direction == "inout")
            parameter.direction = direction == "out" ? Direction::Out : Direction::InOut;
        operation.parameters.push_back(std::move(parameter));
    }
    return operation;
}

/// <ownedTemplateSignature><ownedParameter><ownedParameteredElement xmi:type="uml:Class" name="T"/>
void Reader::readTemplate(pugi::xml_node signature, Classifier& classifier, const Package& package)
{
    for (const pugi::xml_node owned : signature.children("ownedParameter")) {
        Parameter parameter;
        pugi::xml_node element = owned.child("ownedParameteredElement");
        if (!element)
            element = owned.child("ownedElement");
        describe(element ? element : owned, parameter, package);
        const std::string_view type = xml::typeName(element);
        if (!type.empty() && type != "Class" && type != "TemplateParameter")
            parameter.type = reference(element, "type", outside_);
        classifier.templateParameters.push_back(std::move(parameter));
    }
}

/// One for each pair of ends. Where the file leaves the client out, it is the element that owns the relation.
void Reader::readRelationship(pugi::xml_node node, const NamedRelationship& row, std::string_view ownerId,
                              Package& package)
{
    std::vector<Reference> clients = references(node, row.client, outside_);
    std::vector<Reference> suppliers = references(node, row.supplier, outside_);
    if (clients.empty())
        clients = references(node, "client", outside_);
    if (suppliers.empty())
        suppliers = references(node, "supplier", outside_);
    if (clients.empty() && !ownerId.empty())
        clients.push_back({std::string(ownerId), {}});
    if (clients.empty() || suppliers.empty()) {
        report_.left(plainWords(row.type), xml::xmiAttribute(node, "id"), xml::property(node, "name"),
                     "the file does not say between what");
        return;
    }
    Relationship relationship;
    describe(node, relationship, package);
    relationship.kind = row.kind;
    addWord(relationship.stereotype, row.stereotype);
    const std::string id = relationship.id;
    int number = 1;
    for (const Reference& client : clients) {
        for (const Reference& supplier : suppliers) {
            relationship.id = number == 1 ? id : id + "/" + std::to_string(number);
            relationship.client = client;
            relationship.supplier = supplier;
            package.relationships.push_back(relationship);
            ++number;
        }
    }
}

std::vector<std::string> Reader::endIds(pugi::xml_node node)
{
    std::vector<std::string> ids;
    const auto add = [&ids](std::string_view id) {
        if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end())
            ids.emplace_back(id);
    };
    for (const Reference& reference : references(node, "memberEnd", outside_))
        add(reference.id);
    for (const char* const role : {"ownedEnd", "navigableOwnedEnd"}) {
        for (const pugi::xml_node child : node.children(role))
            add(xml::xmiAttribute(child, "id"));
    }
    const auto found = propertiesOf_.find(xml::xmiAttribute(node, "id"));
    if (found != propertiesOf_.end()) {
        for (const std::string_view id : found->second)
            add(id);
    }
    return ids;
}

/// An end is navigable when the class at the other end owns it or when the association says so.
AssociationEnd Reader::end(const std::string& id, const std::vector<std::string>& navigable, const Package& package)
{
    AssociationEnd end;
    end.id = id;
    const auto found = index_.find(id);
    if (found == index_.end())
        return end;
    const pugi::xml_node node = found->second;
    describe(node, end, package);
    end.participant = reference(node, "type", outside_);
    end.multiplicity = multiplicity(node, index_);
    end.visibility = visibility(node.attribute("visibility").value());
    end.aggregation = aggregation(node.attribute("aggregation").value());
    if (xml::flag(node, "isComposite"))
        end.aggregation = Aggregation::Composite;
    end.isNavigable = std::string_view(node.name()) != "ownedEnd" || xml::flag(node, "isNavigable") ||
                      std::find(navigable.begin(), navigable.end(), id) != navigable.end();
    end.isStatic = xml::flag(node, "isStatic");
    end.isDerived = xml::flag(node, "isDerived");
    for (const pugi::xml_node qualifier : node.children("qualifier"))
        end.qualifiers.push_back(attribute(qualifier, package));
    return end;
}

void Reader::readAssociation(pugi::xml_node node, Package& package)
{
    Association association;
    describe(node, association, package);
    association.isDerived = xml::flag(node, "isDerived");
    if (xml::typeName(node) == "AssociationClass") { // the class has said everything else
        const std::string id = association.id;
        association = Association();
        association.id = associationOf(id);
        association.associationClassId = id;
        association.name = xml::property(node, "name");
    }
    std::vector<std::string> navigable;
    for (const Reference& reference : references(node, "navigableOwnedEnd", outside_))
        navigable.push_back(reference.id);
    for (const std::string& id : endIds(node))
        association.ends.push_back(end(id, navigable, package));
    if (association.ends.size() == 2) {
        // A property says that its owner, which is at the other end, is the whole. So do qualifiers: they stand at the
        // end whose objects pick those of the other one.
        std::swap(association.ends[0].aggregation, association.ends[1].aggregation);
        std::swap(association.ends[0].qualifiers, association.ends[1].qualifiers);
    }
    package.associations.push_back(std::move(association));
}

} // namespace

bool hasModel(std::string_view head)
{
    for (std::size_t at = 0; (at = head.find('<', at)) != std::string_view::npos; ++at) {
        const std::string_view name = head.substr(at + 1, head.find_first_of(" \t\r\n>", at) - at - 1);
        if (name.starts_with("uml:") || name.starts_with("UML2:"))
            return true;
    }
    return false;
}

Model read(const xml::Document& document, Outside& outside, Report& report)
{
    return Reader(document.root(), outside, report).read();
}

std::string associationOf(std::string_view associationClassId)
{
    return std::string(associationClassId) + "/association";
}

std::string plainWords(std::string_view type)
{
    std::string words;
    for (const char letter : type) {
        const auto code = static_cast<unsigned char>(letter);
        if (std::isupper(code) != 0 && !words.empty() && words.back() != ' ')
            words += ' ';
        words += static_cast<char>(std::tolower(code));
    }
    return words;
}

} // namespace design::uml2
