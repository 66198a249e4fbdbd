#include "kiv/KivOptions.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace {

constexpr const char* trueText = "True";
constexpr const char* falseText = "False";
constexpr const char* cppText = "C++";

std::uint64_t nextRevision() noexcept
{
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

} // namespace

const KivOptionEnumLiteral BOOLEAN_ENUM_VALUE_TRUE(trueText);
const KivOptionEnumLiteral BOOLEAN_ENUM_VALUE_FALSE(falseText);
const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_AS_IS("As is");
const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_C__(cppText);
const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_JAVA("Java");
const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8("Oracle 7.x/8");

namespace {

constexpr const KivOptionEnumLiteral* booleans[] = {&BOOLEAN_ENUM_VALUE_TRUE, &BOOLEAN_ENUM_VALUE_FALSE, nullptr};
constexpr const KivOptionEnumLiteral* supportedTypes[] = {&BP_SUPPORTED_TYPES_ENUM_AS_IS, &BP_SUPPORTED_TYPES_ENUM_C__,
                                                          &BP_SUPPORTED_TYPES_ENUM_JAVA,
                                                          &BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8, nullptr};

} // namespace

const KivBridgeOptionLiteral BP_FILE({"BP_FILE", "The Rose model file to write", KivOptionKind::OutputFile, "",
                                      nullptr});
const KivBridgeOptionLiteral BP_SUPPORTED_TYPES({"BP_SUPPORTED_TYPES", "The type system that type names are written in",
                                                 KivOptionKind::Enumeration, cppText, supportedTypes});
const KivBridgeOptionLiteral BP_EXPORT_FOREIGN_KEY_ATTRIBUTES({"BP_EXPORT_FOREIGN_KEY_ATTRIBUTES",
                                                               "Write attributes that belong to foreign keys",
                                                               KivOptionKind::Boolean, falseText, booleans});
const KivBridgeOptionLiteral BP_GENERATE_QUALIFIERS({"BP_GENERATE_QUALIFIERS",
                                                     "Make association qualifiers from the keys behind the roles",
                                                     KivOptionKind::Boolean, falseText, booleans});
const KivBridgeOptionLiteral BP_SHOW_CONSTRAINTS_IN_DIAGRAMS({"BP_SHOW_CONSTRAINTS_IN_DIAGRAMS",
                                                              "Show constraints of associations and roles on diagrams",
                                                              KivOptionKind::Boolean, falseText, booleans});
const KivBridgeOptionLiteral BP_USE_GRAPHICAL_INFORMATION({"BP_USE_GRAPHICAL_INFORMATION",
                                                           "Take places, sizes, colours and lines from the model",
                                                           KivOptionKind::Boolean, trueText, booleans});
const KivBridgeOptionLiteral BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM({"BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM",
                                                                         "Horizontal scale of diagrams in percent",
                                                                         KivOptionKind::IntegerPercent, "100",
                                                                         nullptr});
const KivBridgeOptionLiteral BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM({"BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM",
                                                                         "Vertical scale of diagrams in percent",
                                                                         KivOptionKind::IntegerPercent, "100",
                                                                         nullptr});

void KivOptionList::removeAll() noexcept
{
    options.clear();
    revision = nextRevision();
}

void KivOptionList::append(KivOption option)
{
    options.push_back(std::move(option));
    revision = nextRevision();
}

const KivOption* KivOptionList::find(const KivString& name) const noexcept
{
    const auto found =
        std::find_if(options.begin(), options.end(), [&](const KivOption& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

KivString KivOptionList::getValue(const KivString& name) const noexcept
{
    const KivOption* const option = find(name);
    return option ? option->value : KivString();
}

bool KivOptionList::setValue(const KivString& name, const KivString& value) noexcept
{
    const auto found =
        std::find_if(options.begin(), options.end(), [&](const KivOption& option) { return option.name == name; });
    if (found == options.end())
        return false;
    found->value = value;
    revision = nextRevision();
    return true;
}

KivOption KivBridgeOptionLiteral::generateOption(bool /*isHidden*/) const
{
    KivOption option;
    option.name = declaration.name;
    option.description = declaration.description;
    option.kind = declaration.kind;
    option.defaultValue = declaration.defaultValue;
    option.value = option.defaultValue;
    for (const auto* const* literal = declaration.literals; literal && *literal; ++literal)
        option.literals.emplace_back((*literal)->getText());
    return option;
}

KivOption KivBridgeOptionLiteral::generateOption(bool /*isOutput*/, const char* const* extensions,
                                                 const char* /*title*/, bool /*isMandatory*/) const
{
    KivOption option = generateOption(false);
    for (; *extensions; ++extensions)
        option.extensions.emplace_back(*extensions);
    return option;
}
