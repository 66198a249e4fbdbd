#pragma once

#include <simdjson.h>
#include <string_view>

namespace design {

/// A JSON document that someone else wrote. Throws UnreadableDesign with line and column where the text is no JSON, and
/// when values lie in each other more than 1024 deep.
class JsonDocument {
public:
    explicit JsonDocument(std::string_view text);

    [[nodiscard]] simdjson::dom::element root() const { return document; }

private:
    simdjson::dom::parser parser;
    simdjson::dom::element document;
};

} // namespace design
