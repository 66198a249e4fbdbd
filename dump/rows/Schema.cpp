#include "dump/rows/Schema.h"

namespace dump {

namespace {

using enum ColumnType;

constexpr Column dumpColumns[] = {{"schema_version", integer}, {"program", text}, {"file", text}};

constexpr Column filesColumns[] = {
    {"file", integer, true}, {"name", text},     {"unit_of", integer}, {"petal_version", integer},
    {"char_set", integer},   {"encoding", text}, {"written_by", text}, {"bytes", integer},
};

constexpr Column missingUnitsColumns[] = {{"object", integer}, {"file_name", text}, {"reason", text}};

constexpr Column findingsColumns[] = {
    {"severity", text}, {"kind", text}, {"file", integer}, {"line", integer}, {"column", integer}, {"text", text},
};

constexpr Column objectsColumns[] = {
    {"object", integer, true},
    {"parent", integer, false, true},
    {"list", integer},
    {"position", integer},
    {"key", text},
    {"keyword", text},
    {"name", text},
    {"second_name", text},
    {"view_number", integer},
    {"quid", text},
    {"file", integer},
    {"line", integer},
    {"column", integer},
    {"byte", integer},
    {"length", integer},
};

constexpr Column propertiesColumns[] = {
    {"property", integer, true},
    {"object", integer, false, true},
    {"list", integer},
    {"position", integer},
    {"key", text},
    {"kind", text},
    {"type", text},
    {"value", text},
    {"target", integer},
    {"state", text},
    {"line", integer},
    {"column", integer},
    {"byte", integer},
    {"length", integer},
};

constexpr Column elementsColumns[] = {
    {"element", integer, true},
    {"owner", integer, false, true},
    {"category", text},
    {"kind", text},
    {"keyword", text},
    {"name", text},
    {"qualified_name", text, false, true},
    {"quid", text, false, true},
    {"stereotype", text},
    {"documentation", text},
    {"visibility", text},
    {"type", text},
    {"file", integer},
    {"line", integer},
};

constexpr Column relationsColumns[] = {
    {"relation", integer},
    {"kind", text},
    {"keyword", text},
    {"key", text},
    {"name", text},
    {"stereotype", text},
    {"source", integer, false, true},
    {"source_name", text},
    {"target", integer, false, true},
    {"target_name", text},
    {"state", text},
    {"source_end", integer},
    {"source_role", text},
    {"source_multiplicity", text},
    {"target_end", integer},
    {"target_role", text},
    {"target_multiplicity", text},
    {"file", integer},
    {"line", integer},
};

constexpr Column viewsColumns[] = {
    {"view", integer, true},
    {"diagram", integer, false, true},
    {"diagram_name", text},
    {"container", integer},
    {"keyword", text},
    {"view_number", integer},
    {"element", integer, false, true},
    {"element_name", text},
    {"state", text},
    {"text", ColumnType::text},
    {"x", real},
    {"y", real},
    {"width", real},
    {"height", real},
    {"source", integer},
    {"target", integer},
    {"file", integer},
    {"line", integer},
};

constexpr Table allTables[] = {
    {"dump", dumpColumns},         {"files", filesColumns},         {"missing_units", missingUnitsColumns},
    {"findings", findingsColumns}, {"objects", objectsColumns},     {"properties", propertiesColumns},
    {"elements", elementsColumns}, {"relations", relationsColumns}, {"views", viewsColumns},
};

} // namespace

std::span<const Table> tables()
{
    return allTables;
}

const Table& table(TableName name)
{
    return allTables[static_cast<std::size_t>(name)];
}

} // namespace dump
