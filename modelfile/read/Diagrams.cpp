#include "modelfile/read/Tables.h"

namespace modelfile {

namespace {

// A diagram of another kind has its elements checked and draws none.
template <class Diagram>
void readDiagramElements(Builder& builder, Diagram& diagram, Value& value)
{
    constexpr auto add = [](void* owner, KivObject* object) {
        if constexpr (std::is_same_v<Diagram, KivClassDiagram>)
            static_cast<KivClassDiagram*>(owner)->elements.add(static_cast<KivModelObject*>(object));
        else
            (void)owner, (void)object;
    };
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        builder.references.refer(item, KivElementType::ModelElement, add, &diagram);
    });
}

template <class Diagram>
constexpr auto diagramFields = withCommonFields(fieldTable(knownKind<Diagram>(),
                                                           Field<Diagram>{"elements", readDiagramElements<Diagram>}));

template <class Diagram>
KivDiagram* readDiagramAs(Builder& builder, Object& object)
{
    auto* const diagram = builder.create<Diagram>();
    builder.readFields(object, *diagram, diagramFields<Diagram>);
    return diagram;
}

KivDiagram* readDiagram(Builder& builder, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"classDiagram", "diagram"};
    Object object = builder.readObject(value);
    return builder.readKind(object, kinds, 0) == 0 ? readDiagramAs<KivClassDiagram>(builder, object)
                                                   : readDiagramAs<KivDiagram>(builder, object);
}

} // namespace

void readDiagrams(Builder& builder, KivPackage& package, Value& value)
{
    builder.readList(value,
                     [&](Value& item, std::size_t /*index*/) { package.diagrams.add(readDiagram(builder, item)); });
}

void setDiagramPackages(KivPackage& package)
{
    for (KivDiagram* const diagram : package.diagrams)
        if (diagram->elementType == KivElementType::ClassDiagram)
            static_cast<KivClassDiagram*>(diagram)->package = &package;
}

std::vector<ObjectKeys> diagramKeys()
{
    return {keysOf("diagram", diagramFields<KivClassDiagram>)};
}

} // namespace modelfile
