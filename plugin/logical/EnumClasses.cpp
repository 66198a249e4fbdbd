#include "logical/LogicalView.h"

#include "petal/PetalWriter.h"
#include "types/TypeNames.h"

#include <cstdint>

namespace {

// What the general pointer of a written type holds.
void* writtenMark()
{
    return reinterpret_cast<void*>(std::uintptr_t{1}); // NOLINT(performance-no-int-to-ptr): never followed
}

//     RED=0, GREEN=1, BLUE
// Each literal is its name, with its value unless that is the same text; a literal without name shows its value twice.
void printLiterals(const KivTypeValueByPosition& literals)
{
    const char* separator = "";
    for (const KivTypeValue* const literal : literals) {
        const KivString name = literal->getName().escapeChars();
        const KivString value = literal->value.escapeChars();
        append(separator, name.isEmpty() ? value.view() : name.view());
        if (literal->value != name)
            append("=", value.view());
        separator = ", ";
    }
}

//     \t(object Attribute
//     \ttool       \t"cg"
//     \tname       \t"ImplementationType"
//     \tvalue      \t(value Text "enum Color {RED=0, GREEN=1}"))
void printCppDeclaration(const KivType& type, const KivTypeValueByPosition& literals)
{
    object([&] {
        line("\t(object Attribute");
        line("\ttool       \t\"cg\"");
        line("\tname       \t\"ImplementationType\"");
        line("\tvalue      \t(value Text \"enum ", guarded(type.getName()), " {");
        printLiterals(literals);
        append("}\")");
    });
}

//     \t(object Attribute
//     \ttool       \t"IDL"
//     \tname       \t"ImplementationType"
//     \tvalue      \t"enum Color {RED=0, GREEN=1}")
//     \t(object Attribute
//     \ttool       \t"IDL"
//     \tname       \t"IDLSpecificationType"
//     \tvalue      \t("IDLSpecSet" 8))
void printIdlDeclaration(const KivType& type, const KivTypeValueByPosition& literals)
{
    object([&] {
        line("\t(object Attribute");
        line("\ttool       \t\"IDL\"");
        line("\tname       \t\"ImplementationType\"");
        line("\tvalue      \t\"enum ", guarded(type.getName()), " {");
        printLiterals(literals);
        append("}\"");
    });
    object([] {
        line("\t(object Attribute");
        line("\ttool       \t\"IDL\"");
        line("\tname       \t\"IDLSpecificationType\"");
        line("\tvalue      \t(\"IDLSpecSet\" 8)");
    });
}

//     (object Class "Color"
//     attributes\t(list Attribute_Set ...)
//     \tquid       \t"3449E200001A")
void printEnumClass(const KivType& type)
{
    KivTypeValueByPosition literals;
    type.getTypeValueByPosition(literals);
    object([&] {
        line("(object Class ", quoted(type.getName()));
        flatList("attributes\t(list Attribute_Set", [&] {
            if (isCppTypeSystem())
                printCppDeclaration(type, literals);
            else
                printIdlDeclaration(type, literals);
        });
        line("\tquid       \t", quoted(makeQuid(equid, type.pid)));
    });
}

} // namespace

void createEnumClass()
{
    // Everything before the last type that an earlier call saw has its mark already.
    for (std::size_t i = writtenEnumClasses; i < enumClasses.count(); ++i) {
        KivType* const type = enumClasses.at(i);
        if (!type->generalPointer) {
            type->generalPointer = writtenMark();
            printEnumClass(*type);
        }
    }
    writtenEnumClasses = enumClasses.count();
}
