#include "Designs.h"

#include "DesignParts.h"

#include <initializer_list>

namespace {

using namespace parts;

std::string classesInOnePackage(std::size_t size)
{
    return onePackage(repeated(size, [](std::size_t i) { return classOf(i); }));
}

std::string packagesInOnePackage(std::size_t size)
{
    return modelFile(
        field("childPackages", list(packageOf(size, field("childPackages", list(repeated(size, [](std::size_t i) {
                                                              return packageOf(i);
                                                          })))))));
}

// All of them move under the Logical View and back.
std::string topLevelPackages(std::size_t size)
{
    return modelFile(field("childPackages", list(repeated(size, [](std::size_t i) { return packageOf(i); }))));
}

std::string deepChains(std::size_t size)
{
    constexpr std::size_t depth = 512;
    return modelFile(field("childPackages", list(repeated(size, [](std::size_t /*i*/) {
                               return repeatedText(depth, R"({"name":"Package","childPackages":[)") +
                                      repeatedText(depth, "]}");
                           }))));
}

std::string typedAttributes(std::size_t count, std::string_view typeWord, std::size_t firstType, std::size_t typeCount)
{
    return field("attributes", list(repeated(count, [&](std::size_t i) {
                     return object(textField("name", numbered("attribute", i)),
                                   field("type", reference(typeWord, (firstType + i) % typeCount)));
                 })));
}

std::string enumeration(std::size_t number, std::size_t literals, std::string_view literalName)
{
    return object(textField("id", numbered("Enumeration", number)), textField("name", numbered("Enumeration", number)),
                  field("typeValues", list(repeated(literals, [&](std::size_t i) {
                            return object(textField("name", numbered(literalName, i)), field("value", quoted("1")));
                        }))));
}

// Each type is named ten times, in packages far from each other.
std::string enumerationsInManyPackages(std::size_t size)
{
    constexpr std::size_t attributesInPackage = 100;
    const std::size_t types = size / 10;
    return modelFile(
        field("types", list(repeated(types, [](std::size_t i) { return enumeration(i, 2, "literal"); }))),
        field("childPackages", list(repeated(size / attributesInPackage, [&](std::size_t i) {
                  return packageOf(
                      i, field("modelElements", list(classOf(i, typedAttributes(attributesInPackage, "Enumeration",
                                                                                i * attributesInPackage, types)))));
              }))));
}

std::string namedObjects(std::size_t count)
{
    return list(repeated(count, [](std::size_t i) { return object(textField("name", numbered("name", i))); }));
}

std::string attributesOfOneClass(std::size_t size)
{
    return onePackage(classOf(0, field("attributes", namedObjects(size))));
}

std::string operationsOfOneClass(std::size_t size)
{
    return onePackage(classOf(0, field("operations", namedObjects(size))));
}

std::string parametersOfOneClass(std::size_t size)
{
    return onePackage(classOf(0, field("classType", 2), field("parameters", namedObjects(size))));
}

std::string argumentsOfOneOperation(std::size_t size)
{
    return onePackage(classOf(
        0, field("operations", list(object(textField("name", "call"), field("arguments", namedObjects(size)))))));
}

std::string notes(std::size_t count)
{
    return list(repeated(count, [](std::size_t i) { return reference("See chapter ", i); }));
}

std::string notesOfOneClass(std::size_t size)
{
    return oneDiagram(classOf(0, field("notes", notes(size))), reference("Class", 0));
}

std::string notesOfOneDiagram(std::size_t size)
{
    return oneDiagram(classOf(0), reference("Class", 0), notes(size));
}

std::string oneEnumeration(const std::string& type)
{
    return modelFile(
        field("types", list(type)),
        field("childPackages",
              list(packageOf(0, field("modelElements", list(classOf(0, typedAttributes(1, "Enumeration", 0, 1))))))));
}

std::string literalsOfOneEnumeration(std::size_t size)
{
    return oneEnumeration(enumeration(0, size, "literal"));
}

std::string longLiterals(std::size_t size)
{
    return oneEnumeration(enumeration(0, 100, std::string(size, 'x')));
}

std::string generalization(std::size_t number, std::string_view supertypes, std::string_view subtypes)
{
    return elementOf("generalization", numbered("Generalization", number), field("supertypes", list(supertypes)),
                     field("subtypes", list(subtypes)));
}

std::string generalizationsOfOneClass(std::size_t size)
{
    return oneDiagram(
        listed(drawnClass(0, 0), drawnClass(1, 0),
               repeated(size,
                        [](std::size_t i) { return generalization(i, reference("Class", 0), reference("Class", 1)); })),
        listed(reference("Class", 0), reference("Class", 1),
               repeated(size, [](std::size_t i) { return reference("Generalization", i); })));
}

// One class on one side of a generalization and `size` on the other, all drawn.
std::string oneAndMany(std::size_t size, bool areSubtypes)
{
    const std::string many = repeated(size, [](std::size_t i) { return reference("Class", i); });
    const std::string one = reference("Class", size);
    return oneDiagram(listed(repeated(size + 1, [](std::size_t i) { return drawnClass(i, 0); }),
                             areSubtypes ? generalization(0, one, many) : generalization(0, many, one)),
                      listed(many, one, reference("Generalization", 0)));
}

std::string subtypesOfOneGeneralization(std::size_t size)
{
    return oneAndMany(size, true);
}

std::string supertypesOfOneGeneralization(std::size_t size)
{
    return oneAndMany(size, false);
}

// Two classes; the role of the first knows the key, so the other role gets qualifiers from it.
std::string keyedAssociation(std::size_t key)
{
    return elementOf(
        "association", "",
        field("roles", list(object(field("participant", reference("Class", 0)), field("key", reference("Key", key))),
                            object(field("participant", reference("Class", 1))))));
}

std::string attributesOfOneKey(std::size_t size)
{
    const auto attribute = [](std::size_t i) {
        return object(textField("id", numbered("Attribute", i)), textField("name", numbered("attribute", i)));
    };
    const auto attributeReference = [](std::size_t i) { return reference("Attribute", i); };
    return onePackage(
        classOf(0, field("attributes", list(repeated(size, attribute))),
                field("keys", list(object(textField("id", "Key0"),
                                          field("attributes", list(repeated(size, attributeReference))))))),
        classOf(1), keyedAssociation(0));
}

// One attribute in `size` keys, each behind an association.
std::string manyKeys(std::size_t size, const std::string& mappings)
{
    const auto key = [](std::size_t i) {
        return object(textField("id", numbered("Key", i)), field("attributes", list(quoted("Attribute"))));
    };
    return onePackage(
        classOf(0,
                field("attributes", list(object(textField("id", "Attribute"), textField("name", "number"), mappings))),
                field("keys", list(repeated(size, key)))),
        classOf(1), repeated(size, keyedAssociation));
}

std::string keysOfOneAttribute(std::size_t size)
{
    return manyKeys(size, "");
}

std::string keyMappingsOfOneAttribute(std::size_t size)
{
    return manyKeys(size, field("keyMappings", list(repeated(size, [](std::size_t i) {
                                    return object(field("key", reference("Key", i)),
                                                  field("counterpart", quoted("Class1")));
                                }))));
}

std::string rolesOfOneAssociation(std::size_t size)
{
    constexpr std::size_t classes = 10;
    const auto role = [](std::size_t i) {
        return object(textField("name", numbered("role", i)), field("participant", reference("Class", i % classes)),
                      field("projections", list(lineProjection(0, "(10,20)\\r\\n(10,80)"))));
    };
    return oneDiagram(
        listed(repeated(classes, [](std::size_t i) { return drawnClass(i, 0); }),
               elementOf("association", "Association", field("roles", list(repeated(size, role))))),
        listed(repeated(classes, [](std::size_t i) { return reference("Class", i); }), quoted("Association")));
}

// Diagrams stand one to a package: each further one of a package is written a level deeper, so that the file of many
// in one package grows with the square of their number.
std::string oneClassOnManyDiagrams(std::size_t size)
{
    const std::string theClass =
        classOf(size, field("projections", list(repeated(size, [](std::size_t i) { return projection(i, i); }))));
    return modelFile(
        field("childPackages",
              list(packageOf(size, field("modelElements", list(theClass))), repeated(size, [&](std::size_t i) {
                       return packageOf(
                           i, field("diagrams", list(diagramOf(i, field("elements", list(reference("Class", size)))))));
                   }))));
}

std::string manyDiagrams(std::size_t size)
{
    return modelFile(field(
        "childPackages", list(repeated(size, [](std::size_t i) {
            return packageOf(i, field("modelElements", list(drawnClass(i, i))),
                             field("diagrams", list(diagramOf(i, field("elements", list(reference("Class", i)))))));
        }))));
}

std::string elementsWithNotesOnOneDiagram(std::size_t size)
{
    return oneDiagram(repeated(size,
                               [](std::size_t i) {
                                   return classOf(i, field("projections", list(projection(0, i))),
                                                  field("notes", notes(1)));
                               }),
                      repeated(size, [](std::size_t i) { return reference("Class", i); }));
}

// A text of `size` times 100 bytes, as documentation and in a note on a diagram. `part` is its JSON for 10 bytes.
std::string longText(std::size_t size, std::string_view part)
{
    const std::string text = repeatedText(10 * size, part);
    return oneDiagram(classOf(0, textField("description", text), field("notes", list(quoted(text)))),
                      reference("Class", 0));
}

std::string plainText(std::size_t size)
{
    return longText(size, "ten bytes ");
}

std::string textWithLineFeeds(std::size_t size)
{
    return longText(size, "ten bytes\\n");
}

std::string textWithQuotes(std::size_t size)
{
    return longText(size, "ten \\\"byte\\\"");
}

std::string textWithBackslashes(std::size_t size)
{
    return longText(size, "ten\\\\bytes ");
}

std::string linePoints(std::size_t size)
{
    const std::string line = repeatedText(size, "(1200,300)\\r\\n");
    const std::string dependency =
        elementOf("dependency", "Dependency", field("client", reference("Class", 0)),
                  field("supplier", reference("Class", 1)), field("projections", list(lineProjection(0, line))));
    return oneDiagram(listed(drawnClass(0, 0), drawnClass(1, 0), dependency),
                      listed(reference("Class", 0), reference("Class", 1), quoted("Dependency")));
}

std::string typesNamedOften(std::size_t size)
{
    constexpr std::size_t attributes = 100;
    return modelFile(field("types", list(baseTypes())),
                     field("childPackages",
                           list(packageOf(0, field("modelElements", list(repeated(size / attributes, [](std::size_t i) {
                                                       return classOf(
                                                           i, typedAttributes(attributes, "Type", i, dataTypes.size()));
                                                   })))))));
}

} // namespace

std::span<const Trap> traps()
{
    const std::string_view yes = BOOLEAN_ENUM_VALUE_TRUE.getText();
    const auto* const types = &BP_SUPPORTED_TYPES;
    static const std::vector<Trap> all = {
        {"classes in one package", classesInOnePackage},
        {"packages in one package", packagesInOnePackage},
        {"packages at the top, to move under the Logical View", topLevelPackages},
        {"chains of packages, 512 deep", deepChains, 500},
        {"names of enumerations, 10 for each, over many packages", enumerationsInManyPackages},
        {"attributes of one class", attributesOfOneClass},
        {"operations of one class", operationsOfOneClass},
        {"parameters of one class", parametersOfOneClass},
        {"notes of one class, drawn", notesOfOneClass},
        {"notes of one diagram", notesOfOneDiagram},
        {"arguments of one operation", argumentsOfOneOperation},
        {"literals of one enumeration, C++", literalsOfOneEnumeration},
        {"literals of one enumeration, Java",
         literalsOfOneEnumeration,
         1,
         {{types, BP_SUPPORTED_TYPES_ENUM_JAVA.getText()}}},
        {"bytes in each of 100 literals, C++", longLiterals},
        {"bytes in each of 100 literals, Java", longLiterals, 1, {{types, BP_SUPPORTED_TYPES_ENUM_JAVA.getText()}}},
        {"generalizations of one class, drawn", generalizationsOfOneClass},
        {"subtypes of one generalization, drawn", subtypesOfOneGeneralization},
        {"supertypes of one generalization, drawn", supertypesOfOneGeneralization},
        {"attributes of one key, as qualifiers", attributesOfOneKey, 1, {{&BP_GENERATE_QUALIFIERS, yes}}},
        {"keys of one attribute, as qualifiers", keysOfOneAttribute, 1, {{&BP_GENERATE_QUALIFIERS, yes}}},
        {"key mappings of one attribute, as qualifiers",
         keyMappingsOfOneAttribute,
         1,
         {{&BP_GENERATE_QUALIFIERS, yes}}},
        {"roles of one association, drawn", rolesOfOneAssociation},
        {"diagrams that show one class", oneClassOnManyDiagrams},
        {"diagrams", manyDiagrams},
        {"elements with notes on one diagram", elementsWithNotesOnOneDiagram},
        {"hundreds of bytes in a text without line feeds", plainText},
        {"hundreds of bytes in a text with line feeds", textWithLineFeeds},
        {"hundreds of bytes in a text with double quotes", textWithQuotes},
        {"hundreds of bytes in a text with backslashes", textWithBackslashes},
        {"points of one line", linePoints},
        {"names of types, as they are", typesNamedOften, 1, {{types, BP_SUPPORTED_TYPES_ENUM_AS_IS.getText()}}},
        {"names of types, C++", typesNamedOften, 1, {{types, BP_SUPPORTED_TYPES_ENUM_C__.getText()}}},
        {"names of types, Java", typesNamedOften, 1, {{types, BP_SUPPORTED_TYPES_ENUM_JAVA.getText()}}},
        {"names of types, Oracle", typesNamedOften, 1, {{types, BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText()}}},
    };
    return all;
}
