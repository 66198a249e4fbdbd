#include "dump/rows/Relations.h"

#include "dump/facts/Targets.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <iterator>

namespace dump {

using reader::Object;
using reader::ReferenceState;

namespace {

// What elements that are no relations say of others, and behind which key. The quid stands in `quidu`.
struct Saying {
    std::string_view keyword;
    std::string_view key;
    bool mayBeAnything = false; // as types, which need be no elements
};

constexpr Saying sayings[] = {
    {"ClassAttribute", "type", true},
    {"Class_Category", "subsystem"},
    {"Class_Utility", "module"},
    {"Class", "module"},
    {"Instantiated_Class", "module"},
    {"Instantiated_Class_Utility", "module"},
    {"Message", ""},
    {"Metaclass", "module"},
    {"Object", "class"},
    {"Operation", "result", true},
    {"Parameter", "type", true},
    {"Parameterized_Class", "module"},
    {"Parameterized_Class_Utility", "module"},
    {"Partition", "class"},
    {"SubSystem", "category"},
};

// One side of a relation.
struct End {
    Target target;
    std::string name;             // in full
    const Object* role = nullptr; // of an association
    std::string multiplicity = {};
};

class RelationRows {
public:
    RelationRows(const Source& theSource, Elements::Number theElement, const Extent& theExtent, Row& theRow,
                 const RowSink& theSink)
        : source(theSource), element(theElement), object(*theSource.elements.object(theElement)), extent(theExtent),
          row(theRow), sink(theSink)
    {
    }

    void add()
    {
        if (object.is("Role"))
            return; // its association says it
        if (object.is("Association"))
            addAssociation();
        else if (object.has("supplier") || source.elements.category(element) == Category::relation)
            addSupplier();
        else
            addSaying();
    }

private:
    [[nodiscard]] End endAt(Elements::Number number) const
    {
        return {{number, number == 0 ? "none" : "found"}, source.elements.qualifiedName(number)};
    }

    // What a reference leads to, which calls it `name` if there is no such element.
    [[nodiscard]] End endOf(const reader::Reference& reference, std::string name) const
    {
        End end{targetOf(reference, source.elements), std::move(name)};
        if (std::string known = source.elements.qualifiedName(end.target.object); !known.empty())
            end.name = std::move(known);
        return end;
    }

    void addSupplier()
    {
        End from = endAt(source.elements.owner(element));
        from.multiplicity = object.text("client_cardinality");
        End to = endOf(source.index.element(object), object.text("supplier"));
        to.multiplicity = object.text("supplier_cardinality");
        addRow("supplier", from, to);
    }

    void addSaying()
    {
        const auto* const saying =
            std::ranges::find_if(sayings, [&](const Saying& each) { return object.is(each.keyword); });
        if (saying == std::end(sayings))
            return;
        const std::string_view quid = reader::quidIn(object);
        std::string name = object.text(saying->key);
        const reader::Reference reference = source.index.lookUp(quid, name);
        const bool isFound = reference.state == ReferenceState::found;
        if (reference.state != ReferenceState::none && (isFound || !quid.empty() || !saying->mayBeAnything))
            addRow(saying->key, endAt(element), endOf(reference, std::move(name)));
    }

    // More than two ends are a row for each behind the first.
    void addAssociation()
    {
        std::vector<End> ends;
        for (const Object* const role : object.objects("roles")) {
            ends.push_back(endOf(source.index.element(*role), role->text("supplier")));
            ends.back().role = role;
            ends.back().multiplicity = role->text("client_cardinality");
        }
        ends.resize(std::max<std::size_t>(ends.size(), 2), endAt(0));
        for (std::size_t i = 1; i < ends.size(); ++i)
            addRow("roles", ends.front(), ends[i]);
    }

    // The worst of both says how the relation is.
    static std::string_view stateOf(const End& from, const End& to)
    {
        constexpr std::string_view states[] = {"found", "by name", "none", "unloaded"}; // and missing
        const auto* const first = std::ranges::find(states, from.target.state);
        const auto* const second = std::ranges::find(states, to.target.state);
        return first > second ? from.target.state : to.target.state;
    }

    void addEnd(const End& end)
    {
        row.object(source.elements.numberOf(end.role));
        const std::string name = end.role ? end.role->name() : std::string();
        row.nonEmpty(reader::isUnnamed(name) ? std::string() : name);
        row.nonEmpty(std::string_view(end.multiplicity));
    }

    void addRow(std::string_view key, const End& from, const End& to)
    {
        const std::string name = object.name();
        row.number(element).nonEmpty(kindWordOf(object)).text(object.kind()).nonEmpty(key);
        row.nonEmpty(reader::isUnnamed(name) ? std::string() : name).nonEmpty(object.text("stereotype"));
        row.object(from.target.object).nonEmpty(std::string_view(from.name));
        row.object(to.target.object).nonEmpty(std::string_view(to.name));
        row.text(stateOf(from, to));
        addEnd(from);
        addEnd(to);
        row.number(extent.file).number(extent.line);
        row.give(sink, TableName::relations);
    }

    const Source& source;
    Elements::Number element;
    const Object& object;
    const Extent& extent;
    Row& row;
    const RowSink& sink;
};

} // namespace

void addRelations(const Source& source, Elements::Number element, const Extent& extent, Row& row, const RowSink& sink)
{
    RelationRows(source, element, extent, row, sink).add();
}

} // namespace dump
