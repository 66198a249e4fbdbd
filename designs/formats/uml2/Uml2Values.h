#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/model/Design.h"
#include "designs/model/Naming.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// How UML trees in XMI write references and values: each as an attribute, as a child element, or as a link into
/// another file.
namespace design::uml2 {

using Index = std::unordered_map<std::string_view, pugi::xml_node>;

/// Models that references lead out to. Those that lie beside the file are read for their names.
class Outside {
public:
    explicit Outside(const std::filesystem::path& path) : path_(path) {}

    /// What "Other.uml#_id" leads to. The identifier is that within the file when the link leads back into it, nothing
    /// for something from a library that has a name only, and the whole link otherwise.
    [[nodiscard]] Reference reference(std::string_view link, std::string_view nameHint);

private:
    const Names& namesIn(const std::string& file);

    std::filesystem::path path_;
    std::unordered_map<std::string, Names> files_;
};

/// What an element refers to by a role such as "client" or "type", in order.
[[nodiscard]] std::vector<Reference> references(pugi::xml_node node, const char* role, Outside& outside);

/// The first of them, or an empty one.
[[nodiscard]] Reference reference(pugi::xml_node node, const char* role, Outside& outside);

/// The text of a value such as a default.
[[nodiscard]] std::string valueText(pugi::xml_node value, const Index& index);

/// From `lowerValue` and `upperValue` or the attributes `lower` and `upper`; none where the file tells none.
[[nodiscard]] std::optional<Multiplicity> multiplicity(pugi::xml_node node, const Index& index);

/// What an annotation for Eclipse's code generator documents.
[[nodiscard]] std::string generatorDocumentation(pugi::xml_node node);

[[nodiscard]] Visibility visibility(std::string_view word);

[[nodiscard]] Aggregation aggregation(std::string_view word);

} // namespace design::uml2
