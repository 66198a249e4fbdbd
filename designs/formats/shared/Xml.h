#pragma once

#include "designs/formats/Format.h"

#include <pugixml.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// XML as design tools write it, down to the encodings that they declare wrongly or not at all.
namespace design::xml {

/// The bytes as UTF-8, without byte order mark. UTF-8, UTF-16, Windows-1252, ISO 8859 and what else the system converts
/// are told by byte order mark, declaration or, where UTF-8 is said but is not there, taken as Windows-1252. Throws
/// UnreadableDesign for an encoding that nobody knows.
[[nodiscard]] std::string toUtf8(std::string_view bytes);

/// A file as a tree. Size and depth are bounded, entities that a document type declares are not expanded: a document
/// that uses one is refused.
class Document {
public:
    /// Throws UnreadableDesign with line and column.
    explicit Document(std::string_view bytes);

    [[nodiscard]] pugi::xml_node root() const { return tree_.document_element(); }

private:
    pugi::xml_document tree_;
};

/// Writes a tree as a file, indented by two blanks a level. `flags` are further ones of pugixml.
void save(const pugi::xml_document& document, text::Sink& sink, unsigned int flags = 0);

/// Calls `visit(node)` for the node and all below it, in the order of the file, without recursion. It tells whether
/// what is in the node is to be visited.
template <class Visit>
void forEachBelow(pugi::xml_node root, const Visit& visit)
{
    for (pugi::xml_node node = root; node;) {
        const pugi::xml_node child = visit(node) ? node.first_child() : pugi::xml_node();
        if (child) {
            node = child;
            continue;
        }
        while (node != root && !node.next_sibling())
            node = node.parent();
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
}

/// The first bytes of a file as UTF-8, enough to tell its format by.
[[nodiscard]] std::string head(std::string_view bytes);

/// "uml:Class" without its prefix.
[[nodiscard]] std::string_view localName(std::string_view name);

/// An attribute of the XMI namespace, such as `id`, under any prefix, or in the older form `xmi.id`; empty if missing.
[[nodiscard]] std::string_view xmiAttribute(pugi::xml_node node, std::string_view name);

/// The local name of the type that `xmi:type` or `xsi:type` tells, empty if none does.
[[nodiscard]] std::string_view typeName(pugi::xml_node node);

/// An attribute, or else the text of the child element of that name; empty if there is neither.
[[nodiscard]] std::string_view property(pugi::xml_node node, const char* name);

/// Whether a property is "true" or "1".
[[nodiscard]] bool flag(pugi::xml_node node, const char* name);

/// A number as the tools write them, or `otherwise` where there is none. Infinite and absurd values count as none.
[[nodiscard]] double number(std::string_view text, double otherwise);

/// Parts of a list that blanks separate.
[[nodiscard]] std::vector<std::string_view> words(std::string_view text);

/// The part of `text` between `key` and the next `end`, empty if `key` is not there.
[[nodiscard]] std::string_view between(std::string_view text, std::string_view key, char end);

} // namespace design::xml
