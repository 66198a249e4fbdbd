#pragma once

#include "reader/document/Document.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace dump {

/// From where to where something stands in the text of its file.
struct Extent {
    std::size_t file = 0; ///< number of the file, from 1
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t byte = 0;   ///< of the text in UTF-8, from 0
    std::size_t length = 0; ///< in bytes of that text
};

/// Something in an object or a list.
struct Member {
    static constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

    std::string_view key = {};                          ///< that it stands behind; empty in a list
    std::size_t position = nowhere;                     ///< in its list, from 0; `nowhere` outside of lists
    reader::ValueKind kind = reader::ValueKind::object; ///< of `(value Text "...")` that of the text
    std::string_view type = {};                         ///< kind of a list, type of a `(value ...)`; or empty
    const reader::Value* value = nullptr;               ///< null for the outermost objects of a file
};

/// What is told of a document, in the order of the text. What stands in a controlled unit is told in the object that
/// names the unit's file, before what that object holds itself.
class Visitor {
public:
    Visitor() = default;
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    virtual ~Visitor() = default;

    /// Its `Petal` object and its root follow, as far as there are any.
    virtual void beginFile(std::size_t /*file*/) {}
    virtual void endFile() {}
    virtual void beginObject(const reader::Object& object, const Member& member, const Extent& extent) = 0;
    virtual void endObject() = 0;
    /// Of a list, a tuple, or a `(value ...)` that holds more than a word. The extent is that of the key, too.
    virtual void beginList(const Member& member, const Extent& extent) = 0;
    virtual void endList() = 0;
    /// Of everything else.
    virtual void value(const Member& member, const Extent& extent) = 0;
};

/// Tells the visitor of everything that is in the files of a document.
void walk(const reader::Document& document, Visitor& visitor);

} // namespace dump
