#include "DesignParts.h"
#include "Designs.h"

#include <algorithm>
#include <array>

namespace {

using namespace parts;

constexpr std::size_t attributesOfClass = 8;
constexpr std::size_t operationsOfClass = 5;
constexpr std::size_t argumentsOfOperation = 2;
constexpr std::size_t classesOfPackage = 50;
constexpr std::size_t objectsOfClass =
    1 + attributesOfClass + operationsOfClass * (1 + argumentsOfOperation) + 2; // a share in what is beside the classes

template <std::size_t Count>
std::string nameFrom(const std::array<std::string_view, Count>& words, std::size_t number)
{
    return numbered(words[number % Count], number);
}

constexpr std::array<std::string_view, 10> classWords = {
    "Customer", "Order",    "Invoice", "DeliveryNote", "Account",
    "Payment",  "Contract", "Address", "PriceList",    "Warehouse",
};
constexpr std::array<std::string_view, 8> attributeWords = {
    "number", "name", "createdOn", "changedBy", "totalAmount", "state", "isActive", "remark",
};
constexpr std::array<std::string_view, 5> operationWords = {
    "calculateTotal", "find", "cancel", "addEntry", "isComplete",
};

std::string documentation(std::size_t number)
{
    constexpr std::array<std::string_view, 4> texts = {
        "Set when the row is written for the first time and never changed afterwards.",
        "What the customer sees; see the manual of the ordering system for the rules.\\nEmpty until it was confirmed.",
        "Internal.",
        "The amount in the currency of the contract. It is what the \\\"accounting period\\\" is closed with, so that "
        "a change after that needs the consent of two people.",
    };
    return number % 3 == 0 ? textField("description", texts[number / 3 % texts.size()]) : "";
}

std::string ordinaryAttribute(std::size_t number)
{
    return object(textField("name", nameFrom(attributeWords, number)), field("type", typeReference(number)),
                  field("visibility", number % 3), textField("initialValue", number % 8 == 5 ? "0" : ""),
                  documentation(number));
}

std::string ordinaryArgument(std::size_t number)
{
    return object(textField("name", nameFrom(attributeWords, number)), field("type", typeReference(number)),
                  documentation(number));
}

std::string ordinaryOperation(std::size_t number)
{
    return object(textField("name", nameFrom(operationWords, number)), field("returnType", typeReference(number)),
                  documentation(number), field("arguments", list(repeated(argumentsOfOperation, [&](std::size_t i) {
                                                   return ordinaryArgument(number * argumentsOfOperation + i);
                                               }))));
}

std::string ordinaryClass(std::size_t number, std::size_t diagram)
{
    return elementOf(
        "class", numbered("Class", number), textField("name", nameFrom(classWords, number)), documentation(number),
        field("attributes",
              list(repeated(attributesOfClass,
                            [&](std::size_t i) { return ordinaryAttribute(number * attributesOfClass + i); }))),
        field("operations",
              list(repeated(operationsOfClass,
                            [&](std::size_t i) { return ordinaryOperation(number * operationsOfClass + i); }))),
        field("projections", list(projection(diagram, number % classesOfPackage))));
}

std::string ordinaryRole(std::string_view name, std::size_t theClass, std::size_t diagram)
{
    return object(textField("name", name), field("participant", reference("Class", theClass)),
                  field("multiplicity", object(field("lower", 0), field("upper", "-1"))), field("isNavigable", "true"),
                  documentation(theClass),
                  field("projections", list(lineProjection(diagram, "(1000,600)\\r\\n(1400,600)\\r\\n(1400,900)"))));
}

std::string ordinaryAssociation(std::size_t number, std::size_t firstClass, std::size_t diagram)
{
    return elementOf("association", numbered("Association", number), textField("name", numbered("places", number)),
                     documentation(number),
                     field("roles", list(ordinaryRole("buyer", firstClass, diagram),
                                         ordinaryRole("bought", firstClass + 1, diagram))),
                     field("projections", list(projection(diagram, number))));
}

std::string ordinaryGeneralization(std::size_t number, std::size_t firstClass, std::size_t diagram)
{
    return elementOf("generalization", numbered("Generalization", number), documentation(number),
                     field("supertypes", list(reference("Class", firstClass))),
                     field("subtypes", list(reference("Class", firstClass + 1), reference("Class", firstClass + 2))),
                     field("projections", list(lineProjection(diagram, "(400,450)\\r\\n(400,750)"))));
}

// `count` classes from `first` on; every two have an association, every five a generalization.
std::string ordinaryPackage(std::size_t number, std::size_t first, std::size_t count)
{
    const std::size_t associations = count / 2;
    const std::size_t generalizations = count / 5;
    const auto drawn =
        listed(repeated(count, [&](std::size_t i) { return reference("Class", first + i); }),
               repeated(associations, [&](std::size_t i) { return reference("Association", first + i); }),
               repeated(generalizations, [&](std::size_t i) { return reference("Generalization", first + i); }));
    return packageOf(
        number, documentation(number),
        field("modelElements",
              list(repeated(count, [&](std::size_t i) { return ordinaryClass(first + i, number); }),
                   repeated(associations,
                            [&](std::size_t i) { return ordinaryAssociation(first + i, first + 2 * i, number); }),
                   repeated(generalizations,
                            [&](std::size_t i) { return ordinaryGeneralization(first + i, first + 5 * i, number); }))),
        field("diagrams", list(diagramOf(number, documentation(number), field("elements", list(drawn))))));
}

} // namespace

std::string ordinaryDesign(std::size_t objects)
{
    const std::size_t classes = std::max<std::size_t>(objects / objectsOfClass, 1);
    const std::size_t packages = (classes + classesOfPackage - 1) / classesOfPackage;
    return modelFile(textField("name", "Ordering system"), field("types", list(baseTypes())),
                     field("childPackages", list(repeated(packages, [&](std::size_t i) {
                               const std::size_t first = i * classesOfPackage;
                               return ordinaryPackage(i, first, std::min(classesOfPackage, classes - first));
                           }))));
}
