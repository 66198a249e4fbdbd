#include "designs/convert/OtherKinds.h"

#include "designs/model/Counts.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace design {

namespace {

constexpr std::string_view asType = "it is a type of the model, of which a Rose file has the name";
constexpr std::string_view asStereotype = "a Rose file has the kind of a class as its stereotype, which is another one";
constexpr std::string_view asFeature = "literals are attributes, unless the class is an enumeration";

// An attribute that says nothing but a name and a value; "Int" is what a file has of one without a type.
bool looksLikeLiteral(const Attribute& attribute)
{
    const bool isTyped = !attribute.type.isEmpty() && attribute.type.name != "Int";
    return !isTyped && attribute.visibility == Visibility::Public &&
           attribute.containment == Containment::Unspecified && !attribute.isStatic && !attribute.isDerived;
}

class KindTeller {
public:
    KindTeller(const Package& root, const Selection& theSelection, Report& theReport)
        : selection(theSelection), report(theReport)
    {
        forEachPackage(root, [&](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                for (const Box& box : diagram.boxes)
                    drawn.insert(box.elementId);
        });
    }

    void tell(const Classifier& classifier)
    {
        if (selection.isClass(classifier))
            tellClass(classifier);
        else if (classifier.kind != ClassifierKind::Enumeration)
            tellType(classifier);
    }

private:
    void leave(std::string_view kind, const Element& element, std::string_view reason)
    {
        report.left(kind, element.id, element.name, reason);
    }

    // What a file has of enumerations that are types is read as such again.
    void tellType(const Classifier& classifier)
    {
        leave(nameOf(classifier.kind), classifier, asType);
        for (const Parameter& parameter : classifier.templateParameters)
            leave("parameter", parameter, asType);
    }

    void tellClass(const Classifier& classifier)
    {
        const ClassifierKind kind = kindInFile(classifier);
        if (kind != classifier.kind) {
            leave(nameOf(classifier.kind), classifier, asStereotype);
            report.made(nameOf(kind), classifier.id, classifier.name, asStereotype);
        }
        const bool isEnumeration = kind == ClassifierKind::Enumeration;
        if (isEnumeration)
            tellFeatures(classifier.attributes, "attribute", "literal");
        else
            tellFeatures(classifier.literals, "literal", "attribute");
    }

    template <class Feature>
    void tellFeatures(const std::vector<Feature>& features, std::string_view before, std::string_view after)
    {
        for (const Feature& feature : features) {
            leave(before, feature, asFeature);
            report.made(after, feature.id, feature.name, asFeature);
        }
    }

    // What the readers of the host's files take it for.
    [[nodiscard]] ClassifierKind kindInFile(const Classifier& classifier) const
    {
        const bool isInterface = classifier.kind == ClassifierKind::Interface;
        if (isInterface && (classifier.stereotype.empty() || drawn.contains(classifier.id)))
            return ClassifierKind::Interface;
        const bool isPlain =
            isInterface || classifier.form == ClassForm::Data ||
            (classifier.form == ClassForm::Plain && (classifier.staysClass || classifier.templateParameters.empty()));
        if (!isPlain)
            return ClassifierKind::Class;
        const std::string_view stereotype =
            classifier.stereotype.empty() ? stereotypeFor(classifier.kind) : std::string_view(classifier.stereotype);
        if (stereotype == "Interface")
            return ClassifierKind::Interface;
        const ClassifierKind kind = kindFor(stereotype);
        const bool isNone =
            kind == ClassifierKind::Interface || (kind == ClassifierKind::Enumeration && !hasLiteralsAlone(classifier));
        return isNone ? ClassifierKind::Class : kind;
    }

    static bool hasLiteralsAlone(const Classifier& classifier)
    {
        return classifier.operations.empty() && std::ranges::all_of(classifier.attributes, looksLikeLiteral);
    }

    const Selection& selection;
    Report& report;
    std::unordered_set<std::string_view> drawn; // by identifier
};

} // namespace

void tellOtherKinds(const Package& root, const Selection& selection, Report& report)
{
    KindTeller teller(root, selection, report);
    forEachPackage(root, [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            teller.tell(classifier);
    });
}

} // namespace design
