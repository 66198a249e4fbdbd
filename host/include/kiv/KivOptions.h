#pragma once

#include "kiv/KivString.h"

#include <cstdint>
#include <utility>
#include <vector>

/// What kind of value an option takes; values are texts all the same.
enum class KivOptionKind { OutputFile, Enumeration, Boolean, IntegerPercent };

/// A value that an enumeration or boolean option can have.
class __attribute__((visibility("default"))) KivOptionEnumLiteral {
public:
    constexpr explicit KivOptionEnumLiteral(const char* theText) noexcept : text(theText) {}
    /// The text under which the value stands in an option list; compared byte for byte.
    [[nodiscard]] constexpr std::string_view getText() const noexcept { return text; }

private:
    const char* text;
};

/// An option with its value.
struct __attribute__((visibility("default"))) KivOption {
    KivString name;
    KivString description;
    KivOptionKind kind = KivOptionKind::OutputFile;
    KivString defaultValue;
    KivString value;
    std::vector<KivString> literals;   ///< the values an enumeration or boolean takes
    std::vector<KivString> extensions; ///< file name extensions of an output file, without the dot
};

/// The options of a bridge, in the order in which they are shown.
class __attribute__((visibility("default"))) KivOptionList {
public:
    KivOptionList() = default;
    KivOptionList(const KivOptionList&) = default;
    KivOptionList& operator=(const KivOptionList&) = default;
    /// The other list is empty afterwards.
    KivOptionList(KivOptionList&& other) noexcept
        : options(std::move(other.options)), revision(std::exchange(other.revision, 0))
    {
    }
    KivOptionList& operator=(KivOptionList&& other) noexcept
    {
        options = std::move(other.options);
        other.options.clear();
        revision = std::exchange(other.revision, 0);
        return *this;
    }
    ~KivOptionList() = default;

    void removeAll() noexcept;
    /// Adds an option at the end.
    void append(KivOption option);
    [[nodiscard]] const std::vector<KivOption>& getOptions() const noexcept { return options; }
    /// The first option of that exact name, or null; valid until the list changes.
    [[nodiscard]] const KivOption* find(const KivString& name) const noexcept;
    /// The value of the first option of that name; empty when there is none.
    [[nodiscard]] KivString getValue(const KivString& name) const noexcept;
    /// Sets the value of the first option of that name; returns false when there is none.
    bool setValue(const KivString& name, const KivString& value) noexcept;
    /// Names the content: two lists with one revision have the same options and values.
    [[nodiscard]] std::uint64_t getRevision() const noexcept { return revision; }

private:
    std::vector<KivOption> options;
    std::uint64_t revision = 0;
};

/// An option identifier of the host's catalogue: makes the record that a bridge puts into its option list.
class __attribute__((visibility("default"))) KivBridgeOptionLiteral {
public:
    struct Declaration {
        const char* name;
        const char* description;
        KivOptionKind kind;
        const char* defaultValue;
        const KivOptionEnumLiteral* const* literals; ///< ends with null; null when there are none
    };
    constexpr explicit KivBridgeOptionLiteral(const Declaration& theDeclaration) noexcept : declaration(theDeclaration)
    {
    }

    [[nodiscard]] KivString getName() const { return {declaration.name}; }
    /// A record with the default value. This host shows every option alike, so the flag changes nothing.
    [[nodiscard]] KivOption generateOption(bool isHidden) const;
    /// The same for a file, with the extensions it can have (a list that ends with null). This host makes nothing of
    /// the title of the file dialog and of the two flags.
    [[nodiscard]] KivOption generateOption(bool isOutput, const char* const* extensions, const char* title,
                                           bool isMandatory) const;

private:
    Declaration declaration;
};

__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BOOLEAN_ENUM_VALUE_TRUE;
__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BOOLEAN_ENUM_VALUE_FALSE;
__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_AS_IS;
__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_C__;
__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_JAVA;
__attribute__((visibility("default"))) extern const KivOptionEnumLiteral BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8;

__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_FILE;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_SUPPORTED_TYPES;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_EXPORT_FOREIGN_KEY_ATTRIBUTES;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_GENERATE_QUALIFIERS;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_SHOW_CONSTRAINTS_IN_DIAGRAMS;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_USE_GRAPHICAL_INFORMATION;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM;
__attribute__((visibility("default"))) extern const KivBridgeOptionLiteral BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM;
