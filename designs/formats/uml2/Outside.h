#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/model/Design.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace design::uml2 {

/// The bytes of the file `name` in the folder of `path`, none if there is no such file or `path` is standard input.
/// Throws UnreadableDesign, with the name, when it cannot be read or is no regular file.
[[nodiscard]] std::optional<std::string> readBeside(const std::filesystem::path& path, const std::string& name);

/// Whether something of that name is there, or whether there is cannot be told; `readBeside` then says why.
[[nodiscard]] bool isBeside(const std::filesystem::path& path, const std::string& name);

/// Models that references lead out to. Those that lie beside the file are read for their names.
class Outside {
public:
    explicit Outside(std::filesystem::path thePath) : path(std::move(thePath)) {}

    /// What "Other.uml#_id" leads to. The identifier is that within the file when the link leads back into it, nothing
    /// for something from a library that has a name only, and the whole link otherwise.
    [[nodiscard]] Reference reference(std::string_view link, std::string_view nameHint);

private:
    const TextsById& namesIn(const std::string& file);

    std::filesystem::path path;
    std::unordered_map<std::string, TextsById> files;
};

/// What an element refers to by a role such as "client" or "type", in order: as an attribute, as child elements, or as
/// links into another file.
[[nodiscard]] std::vector<Reference> references(pugi::xml_node node, const char* role, Outside& outside);

/// The first of them, or an empty one.
[[nodiscard]] Reference reference(pugi::xml_node node, const char* role, Outside& outside);

} // namespace design::uml2
