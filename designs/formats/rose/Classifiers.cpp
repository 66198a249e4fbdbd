#include "designs/formats/rose/Reading.h"

#include "designs/formats/shared/Kinds.h"
#include "designs/model/Texts.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace design::rose {

namespace {

struct NamedForm {
    std::string_view type;
    ClassForm form;
};
constexpr std::array forms = {
    NamedForm{"Class", ClassForm::Plain},
    NamedForm{"Parameterized_Class", ClassForm::Parameterized},
    NamedForm{"Instantiated_Class", ClassForm::Instantiated},
    NamedForm{"Class_Utility", ClassForm::Utility},
    NamedForm{"Parameterized_Class_Utility", ClassForm::ParameterizedUtility},
    NamedForm{"Instantiated_Class_Utility", ClassForm::InstantiatedUtility},
    NamedForm{"Metaclass", ClassForm::Metaclass},
};

constexpr std::string_view untyped = "Int"; // what stands where an attribute has no type

// What says nothing but a name, and maybe a value.
bool isLiteral(const Object* attribute)
{
    const std::string type = attribute->text("type");
    const std::string visibility = attribute->text("exportControl");
    return (type.empty() || type == untyped) && (visibility.empty() || visibility == "Public") &&
           containmentOf(*attribute) == Containment::Unspecified && !attribute->flag("static") &&
           !attribute->flag("derived");
}

// Where all attributes are without a type they are the literals.
bool isEnumeration(const Object& object)
{
    const auto attributes = object.objects("class_attributes");
    return object.objects("operations").empty() && std::all_of(attributes.begin(), attributes.end(), isLiteral);
}

ClassifierKind kindNamed(const Reading& reading, const Object& object, const std::string& stereotype)
{
    if (!object.is("Class"))
        return ClassifierKind::Class;
    if (reading.interfaces.contains(object.text("quid")))
        return ClassifierKind::Interface;
    const ClassifierKind kind = kindFor(stereotype);
    const bool isNone = (kind == ClassifierKind::Interface && reading.isExport && stereotype != "Interface") ||
                        (kind == ClassifierKind::Enumeration && !isEnumeration(object));
    return isNone ? ClassifierKind::Class : kind;
}

std::int32_t numberIn(const std::string& text)
{
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void readParameters(const Reading& reading, const Object& object, std::vector<Parameter>& parameters)
{
    for (const Object* const each : object.objects("parameters")) {
        Parameter& parameter = parameters.emplace_back();
        reading.describe(*each, parameter);
        parameter.type = reading.typeOf(*each, "type");
        parameter.initialValue = each->text("initv");
        parameter.direction = directionNamed(lowerCase(each->text("dir")));
    }
}

std::string semanticsIn(const Object& operation, std::string_view key)
{
    const Object* const information = operation.object(key);
    return information ? information->text("PDL") : std::string();
}

Operation readOperation(const Reading& reading, const Object& object)
{
    Operation operation;
    reading.describe(object, operation);
    readParameters(reading, object, operation.parameters);
    operation.returnType = reading.typeOf(object, "result");
    operation.visibility = visibilityOf(object, "opExportControl", Visibility::Public);
    operation.concurrency = concurrencyOf(object);
    operation.isStatic = object.flag("static");
    operation.isAbstract = object.flag("abstract");
    operation.isVirtual = object.flag("virtual");
    operation.isFriend = object.flag("friend");
    operation.preCondition = semanticsIn(object, "pre_condition");
    operation.postCondition = semanticsIn(object, "post_condition");
    operation.semantics = semanticsIn(object, "semantics");
    return operation;
}

void readAttributes(const Reading& reading, const Object& object, Classifier& classifier)
{
    for (const Object* const each : object.objects("class_attributes")) {
        Attribute attribute = readAttribute(reading, *each);
        if (classifier.kind != ClassifierKind::Enumeration) {
            classifier.attributes.push_back(std::move(attribute));
            continue;
        }
        Literal& literal = classifier.literals.emplace_back();
        static_cast<Element&>(literal) = static_cast<const Element&>(attribute);
        literal.value = attribute.initialValue;
    }
}

// Of data classes, such as tables, the host leaves out what others have in any case.
bool isDataClass(const Object& object)
{
    const auto has = [&](const char* key) { return object.has(key); };
    constexpr std::array keys = {"exportControl", "concurrency", "operations", "parameters",
                                 "abstract",      "cardinality", "space"};
    return object.is("Class") && has("language") && std::none_of(keys.begin(), keys.end(), has);
}

void readFeatures(const Reading& reading, const Object& object, Classifier& classifier)
{
    classifier.form = isDataClass(object) ? ClassForm::Data : rowOf(forms, object.kind())->form;
    classifier.staysClass = true;
    classifier.visibility = visibilityOf(object, "exportControl", Visibility::Public);
    classifier.concurrency = concurrencyOf(object);
    classifier.isAbstract = object.flag("abstract");
    classifier.isPersistent = object.text("persistence") == "Persistent";
    classifier.cardinality = object.text("cardinality");
    classifier.space = numberIn(object.text("space"));
    readAttributes(reading, object, classifier);
    for (const Object* const operation : object.objects("operations"))
        classifier.operations.push_back(readOperation(reading, *operation));
    readParameters(reading, object, classifier.templateParameters);
}

} // namespace

bool isClass(const Object& object)
{
    return rowOf(forms, object.kind());
}

Attribute readAttribute(const Reading& reading, const Object& object)
{
    Attribute attribute;
    reading.describe(object, attribute);
    attribute.type = reading.typeOf(object, "type");
    attribute.initialValue = object.text("initv");
    attribute.visibility = visibilityOf(object, "exportControl", Visibility::Private);
    attribute.containment = containmentOf(object);
    attribute.isStatic = object.flag("static");
    attribute.isDerived = object.flag("derived");
    return attribute;
}

void readUseCase(Reading& reading, const Object& object, Package& package)
{
    Classifier& useCase = package.classifiers.emplace_back();
    reading.describe(object, useCase);
    useCase.kind = ClassifierKind::UseCase;
    useCase.isAbstract = object.flag("abstract");
    readRelationships(reading, object, package);
    for (const Object* const diagram : object.objects("logical_presentations"))
        readDiagram(reading, *diagram, object, package);
}

// The host writes that stereotype of every interface that has none.
void readClass(Reading& reading, const Object& object, Package& package)
{
    Classifier classifier;
    reading.describe(object, classifier);
    if (const std::string declaration = enumerationOf(object); !declaration.empty()) {
        classifier.kind = ClassifierKind::Enumeration;
        classifier.literals = literalsOf(declaration);
    } else {
        classifier.kind = kindNamed(reading, object, classifier.stereotype);
        if (classifier.stereotype == "Interface")
            classifier.stereotype.clear();
        readFeatures(reading, object, classifier);
    }
    package.classifiers.push_back(std::move(classifier));
    readRelationships(reading, object, package);
    for (const Object* const nested : object.objects("nestedClasses")) {
        if (!isClass(*nested))
            continue;
        reading.report.made("nested class", reading.idOf(*nested), reader::shownName(*nested), besideItsOwner);
        readClass(reading, *nested, package);
    }
    for (const Object* const diagram : object.objects("logical_presentations"))
        readDiagram(reading, *diagram, object, package);
}

} // namespace design::rose
