#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace design::ecore {

/// Names in one scope, a package, a class or an operation. Ecore names are identifiers of Java, each of which a scope
/// has once.
class Scope {
public:
    /// An identifier as like the name as can be, or made of `otherwise` when the name has nothing to make one of.
    [[nodiscard]] std::string take(std::string_view name, std::string_view otherwise);

private:
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> numbers; // the last behind each name
};

/// The name with an underscore for each sign that no identifier has, and before a digit; empty for an empty name.
[[nodiscard]] std::string identifierOf(std::string_view name);

} // namespace design::ecore
