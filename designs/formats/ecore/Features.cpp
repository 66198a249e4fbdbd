#include "designs/formats/ecore/Features.h"

#include "designs/formats/ecore/Types.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace design::ecore {

namespace {

struct Bounds {
    std::int32_t lower = 0;
    std::int32_t upper = 1;
};

// Rose files keep the multiplicity of an attribute in its stereotype.
Bounds boundsOf(const std::optional<Multiplicity>& stated, std::string_view stereotype)
{
    std::optional<Multiplicity> multiplicity = stated;
    if (!multiplicity) {
        multiplicity = parseMultiplicity(stereotype);
        if (multiplicity && !multiplicity->text.empty())
            multiplicity.reset();
    }
    if (!multiplicity)
        return {};
    Bounds bounds = {std::max(multiplicity->lower, 0), multiplicity->upper};
    if (bounds.upper >= 0)
        bounds.upper = std::max({bounds.upper, bounds.lower, 1});
    return bounds;
}

void setBounds(pugi::xml_node node, Bounds bounds)
{
    if (bounds.lower != 0)
        set(node, "lowerBound", std::to_string(bounds.lower));
    if (bounds.upper != 1)
        set(node, "upperBound", std::to_string(bounds.upper));
}

void setFlag(pugi::xml_node node, const char* name, bool value, bool otherwise)
{
    if (value != otherwise)
        set(node, name, value ? "true" : "false");
}

bool flagOf(const Element& element, std::string_view property, bool otherwise)
{
    const std::string_view value = propertyOf(element, property);
    return value.empty() ? otherwise : value == "true";
}

// What attributes and references have in common.
void setFlags(pugi::xml_node node, const Element& element, bool isReadOnly, bool isDerived, bool isTransient = false)
{
    setFlag(node, "changeable", flagOf(element, "isChangeable", !isReadOnly), true);
    setFlag(node, "volatile", flagOf(element, "isVolatile", false), false);
    setFlag(node, "transient", flagOf(element, "isTransient", isTransient), false);
    setFlag(node, "unsettable", flagOf(element, "isUnsettable", false), false);
    setFlag(node, "derived", isDerived, false);
}

std::string_view withoutQuotes(std::string_view text)
{
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

bool isLiteral(const AttributePlan& plan, std::string_view text)
{
    if (!plan.enumeration)
        return isLiteralOf(plan.ecoreType, text);
    const std::vector<Literal>& literals = plan.enumeration->literals;
    return std::any_of(literals.begin(), literals.end(), [&](const Literal& each) { return each.name == text; });
}

// "Order" of "order".
std::string largeFirst(std::string name)
{
    if (!name.empty())
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
    return name;
}

constexpr std::array<std::string_view, 2> getters = {"get", "is"};
constexpr std::array<std::string_view, 2> setters = {"set", "unset"};

class FeatureWriter {
public:
    FeatureWriter(Plan& thePlan, const Classifier& theClassifier, pugi::xml_node theNode, Report& theReport)
        : plan(thePlan), classifier(theClassifier), node(theNode), report(theReport)
    {
    }

    void run()
    {
        const ClassPlan& features = plan.classOf(classifier);
        for (const AttributePlan& attribute : features.attributes) {
            accessed.insert(largeFirst(attribute.name));
            addAttribute(attribute);
        }
        for (const ReferencePlan& reference : features.references) {
            accessed.insert(largeFirst(reference.name));
            addReference(reference);
        }
        for (const Operation& operation : classifier.operations)
            addOperation(operation);
    }

private:
    pugi::xml_node addFeature(const char* type, const std::string& name)
    {
        pugi::xml_node feature = node.append_child("eStructuralFeatures");
        set(feature, "xsi:type", type);
        set(feature, "name", name);
        return feature;
    }

    void addAttribute(const AttributePlan& planned)
    {
        const Attribute& attribute = *planned.attribute;
        pugi::xml_node feature = addFeature("ecore:EAttribute", planned.name);
        setFlag(feature, "unique", flagOf(attribute, "isUnique", true), true);
        setBounds(feature, boundsOf(attribute.multiplicity, attribute.stereotype));
        set(feature, "eType", planned.type);
        setFlags(feature, attribute, attribute.isReadOnly, attribute.isDerived);
        const std::string_view value = withoutQuotes(attribute.initialValue);
        if (!value.empty() && isLiteral(planned, value))
            set(feature, "defaultValueLiteral", value);
        else if (!value.empty())
            report.left("initial value of an attribute", attribute.id, attribute.name,
                        "it is no literal of the attribute's type");
        const bool isIdentifier = attribute.isIdentifier || flagOf(attribute, "isID", false);
        setFlag(feature, "iD", isIdentifier && !std::exchange(hasIdentifier, hasIdentifier || isIdentifier), false);
        describe(attribute, "attribute", feature, report);
    }

    // A reference that leads to the whole leads to one, and is told by where the part lies.
    void addReference(const ReferencePlan& planned)
    {
        const Element& element = planned.end ? static_cast<const Element&>(*planned.end) : *planned.attribute;
        pugi::xml_node feature = addFeature("ecore:EReference", planned.name);
        Bounds bounds = planned.end ? boundsOf(planned.end->multiplicity, {})
                                    : boundsOf(planned.attribute->multiplicity, planned.attribute->stereotype);
        const bool leadsToWhole = planned.opposite && planned.opposite->isContainment;
        if (leadsToWhole)
            bounds = {};
        setBounds(feature, bounds);
        set(feature, "eType", plan.pathOf(*planned.type));
        const bool isReadOnly = planned.attribute && planned.attribute->isReadOnly;
        setFlags(feature, element, isReadOnly, planned.end ? planned.end->isDerived : planned.attribute->isDerived,
                 leadsToWhole);
        setFlag(feature, "containment", planned.isContainment, false);
        if (!planned.isContainment)
            setFlag(feature, "resolveProxies", flagOf(element, "isResolveProxies", true), true);
        if (planned.opposite)
            set(feature, "eOpposite", plan.pathOf(*planned.type) + "/" + planned.opposite->name);
        describe(element, "association end", feature, report);
    }

    // What generated code has for a feature by itself, no operation may be.
    [[nodiscard]] bool isAccessor(const Operation& operation) const
    {
        if (operation.parameters.size() > 1)
            return false;
        for (const std::string_view prefix : operation.parameters.empty() ? getters : setters)
            if (operation.name.starts_with(prefix) && operation.name.size() > prefix.size())
                return accessed.contains(identifierOf(std::string_view(operation.name).substr(prefix.size())));
        return false;
    }

    void leaveOperation(const Operation& operation)
    {
        report.left("operation", operation.id, operation.name,
                    "it is the accessor of a feature, which is there anyway");
        for (const Parameter& parameter : operation.parameters)
            report.left("parameter", parameter.id, parameter.name, "its operation is an accessor");
    }

    // A class has an operation of that name with these types, as Java tells them apart, once.
    std::string takeOperationName(const Operation& operation, const std::vector<Plan::TypeLink>& types)
    {
        std::string parameters;
        for (std::size_t i = 0; i < types.size(); ++i)
            parameters.append(" ").append(javaTypeOf(types[i], operation.parameters[i]));
        Scope names;
        std::string name = takeName(names, operation, "operation", "operation", report);
        while (!signatures.insert(name + parameters).second)
            name = names.take(operation.name, "operation");
        if (name != identifierOf(operation.name))
            report.made("name", operation.id, renamed(operation.name, name),
                        "the class has an operation with these types already");
        return name;
    }

    static std::string javaTypeOf(const Plan::TypeLink& type, const Parameter& parameter)
    {
        const bool isMany = boundsOf(parameter.multiplicity, {}).upper != 1;
        if (isMany)
            return "many";
        if (type.classifier && type.classifier->kind != ClassifierKind::DataType &&
            type.classifier->kind != ClassifierKind::PrimitiveType)
            return type.link;
        const std::string own = type.classifier ? javaClassOf(*type.classifier) : std::string();
        return own.empty() ? std::string(javaClassNamed(parameter.type.name)) : own;
    }

    void addOperation(const Operation& operation)
    {
        if (isAccessor(operation))
            return leaveOperation(operation);
        std::vector<Plan::TypeLink> types;
        for (const Parameter& parameter : operation.parameters)
            types.push_back(plan.typeOf(parameter.type));
        pugi::xml_node added = node.append_child("eOperations");
        set(added, "name", takeOperationName(operation, types));
        if (!operation.returnType.isEmpty() && operation.returnType.name != "void") {
            setBounds(added, boundsOf(operation.returnMultiplicity, {}));
            set(added, "eType", plan.typeOf(operation.returnType).link);
        }
        describe(operation, "operation", added, report);
        if (operation.stereotype == "inv" && types.empty())
            return addInvariant(operation, added);
        Scope parameterNames;
        for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
            const Parameter& parameter = operation.parameters[i];
            pugi::xml_node child = added.append_child("eParameters");
            set(child, "name", takeName(parameterNames, parameter, "parameter", "argument", report));
            setBounds(child, boundsOf(parameter.multiplicity, {}));
            set(child, "eType", types[i].link);
            describe(parameter, "parameter", child, report);
        }
    }

    // What the validators of Ecore ask: whether an object is as it must be.
    void addInvariant(const Operation& operation, pugi::xml_node added)
    {
        if (!added.attribute("eType"))
            set(added, "eType", linkTo("EBoolean"));
        for (const std::string_view name : {"diagnostics", "context"})
            report.made("parameter", operation.id, name, "validators want it of an invariant");
        pugi::xml_node diagnostics = added.append_child("eParameters");
        set(diagnostics, "name", "diagnostics");
        set(diagnostics, "eType", linkTo("EDiagnosticChain"));
        pugi::xml_node context = added.append_child("eParameters");
        set(context, "name", "context");
        pugi::xml_node type = context.append_child("eGenericType");
        set(type, "eClassifier", linkTo("EMap"));
        for (int i = 0; i < 2; ++i)
            set(type.append_child("eTypeArguments"), "eClassifier", linkTo("EJavaObject"));
    }

    Plan& plan;
    const Classifier& classifier;
    pugi::xml_node node;
    Report& report;
    std::unordered_set<std::string> accessed; // features by the ends of their accessors' names
    std::unordered_set<std::string> signatures;
    bool hasIdentifier = false;
};

} // namespace

// What XML cannot hold becomes a blank.
void set(pugi::xml_node node, const char* name, std::string_view value)
{
    std::string text(value);
    std::replace_if(
        text.begin(), text.end(),
        [](char byte) {
            return static_cast<unsigned char>(byte) < 0x20U && byte != '\n' && byte != '\t' && byte != '\r';
        },
        ' ');
    node.append_attribute(name).set_value(text.c_str());
}

void describe(const Element& element, std::string_view kind, pugi::xml_node node, Report& report)
{
    if (!element.documentation.empty()) {
        pugi::xml_node annotation = node.append_child("eAnnotations");
        set(annotation, "source", "http://www.eclipse.org/emf/2002/GenModel");
        pugi::xml_node detail = annotation.append_child("details");
        set(detail, "key", "documentation");
        set(detail, "value", element.documentation);
    }
    const std::string owner = " of this " + std::string(kind);
    for (const std::string& text : element.notes)
        report.left("note", element.id, text, "Ecore has none; it is" + owner);
    for (const std::string& text : element.constraints)
        report.left("constraint", element.id, text, "Ecore has none but in languages of its own; it is" + owner);
}

void writeFeatures(Plan& plan, const Classifier& classifier, pugi::xml_node node, Report& report)
{
    FeatureWriter(plan, classifier, node, report).run();
}

} // namespace design::ecore
