#include "designs/formats/ecore/Write.h"

#include "designs/formats/ecore/Features.h"
#include "designs/formats/ecore/Plan.h"
#include "designs/formats/ecore/Types.h"
#include "designs/formats/shared/Xml.h"
#include "designs/model/Counts.h"
#include "designs/model/Walk.h"
#include "designs/settling/LeftDiagram.h"

#include <algorithm>
#include <charconv>

namespace design::ecore {

namespace {

bool isJavaName(std::string_view name)
{
    return !name.empty() && name.find_first_of(" <>\"'&;()") == std::string_view::npos;
}

std::optional<std::int32_t> numberIn(std::string_view text)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = !text.empty() && error == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

class Writer {
public:
    Writer(const Writing& writing, Report& theReport) : plan(writing, theReport), report(theReport)
    {
        forEachPackage(writing.design.root, [&](const Package& package) { leaveDiagrams(package, writing.catalogue); });
    }

    void run(text::Sink& sink)
    {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("ecore:EPackage");
        set(root, "xmi:version", "2.0");
        set(root, "xmlns:xmi", "http://www.omg.org/XMI");
        set(root, "xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance");
        set(root, "xmlns:ecore", "http://www.eclipse.org/emf/2002/Ecore");
        writePackage(plan.outermost(), root, "");
        const pugi::xml_node packages = root.child("eSubpackages");
        for (const std::string& name : plan.furtherTypes()) {
            pugi::xml_node type = addClassifier(root, "ecore:EDataType", name);
            if (packages)
                root.insert_move_before(type, packages);
            set(type, "instanceClassName", javaClassNamed(name));
        }
        xml::save(document, sink, pugi::format_save_file_text);
    }

private:
    void leaveDiagrams(const Package& package, const Catalogue& catalogue)
    {
        for (const Diagram& diagram : package.diagrams)
            leaveDiagram(diagram, catalogue, "Ecore has none", report);
        for (const Remark& remark : package.remarks)
            report.left("note", remark.id, remark.text, "Ecore has none");
    }

    static pugi::xml_node addClassifier(pugi::xml_node node, const char* type, const std::string& name)
    {
        pugi::xml_node added = node.append_child("eClassifiers");
        set(added, "xsi:type", type);
        set(added, "name", name);
        return added;
    }

    // Names of spaces are those that the packages give, or are made of their names.
    void writePackage(const Package& package, pugi::xml_node node, const std::string& outer)
    {
        const std::string& name = plan.nameOf(package);
        const std::string_view base = propertyOf(package, "basePackage");
        std::string prefix = base.empty() ? outer : std::string(base);
        prefix.append(prefix.empty() ? "" : ".").append(name);
        std::string path = prefix;
        std::replace(path.begin(), path.end(), '.', '/');
        const std::string_view uri = propertyOf(package, "nsURI");
        const std::string_view ownPrefix = propertyOf(package, "nsPrefix");
        set(node, "name", name);
        set(node, "nsURI", uri.empty() ? "http:///" + path + ".ecore" : std::string(uri));
        set(node, "nsPrefix", ownPrefix.empty() ? std::string_view(prefix) : ownPrefix);
        describe(package, "package", node, report);
        for (const Classifier& classifier : package.classifiers)
            writeClassifier(classifier, node);
        for (const Package* const child : plan.packagesIn(package))
            writePackage(*child, node.append_child("eSubpackages"), prefix);
    }

    void writeClassifier(const Classifier& classifier, pugi::xml_node node)
    {
        switch (plan.metaclassOf(classifier)) {
        case Metaclass::None:
            report.left("use case", classifier.id, classifier.name, "Ecore has none");
            return;
        case Metaclass::DataType:
            return writeDataType(classifier, node);
        case Metaclass::Enum:
            return writeEnum(classifier, node);
        case Metaclass::Class:
            return writeClass(classifier, node);
        }
    }

    void tellOtherKind(const Classifier& classifier, std::string_view kind)
    {
        const std::string reason = "in Ecore it is a " + std::string(kind);
        report.left(design::nameOf(classifier.kind), classifier.id, classifier.name, reason);
        report.made(kind, classifier.id, classifier.name, reason);
    }

    void writeClass(const Classifier& classifier, pugi::xml_node node)
    {
        const bool isInterface = classifier.kind == ClassifierKind::Interface;
        if (!isInterface && classifier.kind != ClassifierKind::Class)
            tellOtherKind(classifier, "class");
        pugi::xml_node added = addClassifier(node, "ecore:EClass", plan.nameOf(classifier));
        if (classifier.isAbstract || isInterface)
            set(added, "abstract", "true");
        if (isInterface)
            set(added, "interface", "true");
        std::string supertypes;
        for (const Classifier* const supertype : plan.classOf(classifier).supertypes)
            supertypes.append(supertypes.empty() ? "" : " ").append(plan.pathOf(*supertype));
        if (!supertypes.empty())
            set(added, "eSuperTypes", supertypes);
        describe(classifier, "class", added, report);
        Scope names;
        for (const Parameter& parameter : classifier.templateParameters)
            set(added.append_child("eTypeParameters"), "name", takeName(names, parameter, "parameter", "T", report));
        writeFeatures(plan, classifier, added, report);
        for (const Literal& literal : classifier.literals)
            report.left("literal", literal.id, literal.name, "the enumeration is a class here");
    }

    void writeDataType(const Classifier& classifier, pugi::xml_node node)
    {
        if (classifier.kind == ClassifierKind::DataType)
            tellOtherKind(classifier, "primitive type");
        pugi::xml_node added = addClassifier(node, "ecore:EDataType", plan.nameOf(classifier));
        const std::string javaClass = javaClassOf(classifier);
        set(added, "instanceClassName", isJavaName(javaClass) ? javaClass : javaClassNamed(classifier.name));
        for (const Attribute& attribute : classifier.attributes)
            report.left("attribute", attribute.id, attribute.name, "it names the Java class of the data type");
        describe(classifier, "data type", added, report);
    }

    // Literals have numbers: their own, or that of their place.
    void writeEnum(const Classifier& classifier, pugi::xml_node node)
    {
        pugi::xml_node added = addClassifier(node, "ecore:EEnum", plan.nameOf(classifier));
        describe(classifier, "enumeration", added, report);
        Scope names;
        std::int32_t place = 0;
        for (const Literal& literal : classifier.literals) {
            pugi::xml_node child = added.append_child("eLiterals");
            set(child, "name", takeName(names, literal, "literal", "literal", report));
            const std::optional<std::int32_t> own = numberIn(literal.value);
            if (!own && !literal.value.empty())
                report.left("value of a literal", literal.id, literal.name, "it is no number");
            if (const std::int32_t value = own.value_or(place); value != 0)
                set(child, "value", std::to_string(value));
            ++place;
            describe(literal, "literal", child, report);
        }
        for (const Attribute& attribute : classifier.attributes)
            report.left("attribute", attribute.id, attribute.name, "an enumeration has literals alone");
        for (const Operation& operation : classifier.operations)
            report.left("operation", operation.id, operation.name, "an enumeration has literals alone");
    }

    Plan plan;
    Report& report;
};

} // namespace

void write(const Writing& writing, Files& files, Report& report)
{
    Writer(writing, report).run(files.begin({}));
}

} // namespace design::ecore
