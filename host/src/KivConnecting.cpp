#include "kiv/KivConnecting.h"

#include <unordered_map>

namespace {

// Meets every reference that a collection mirrors: calls `sink.put(owner, name of the collection, collection, object)`.
template <class Sink>
class Mirroring : public KivTraversalOperation {
public:
    explicit Mirroring(Sink& theSink) : sink(theSink) {}

    void pre_process(KivObject* object, void*& /*context*/) override
    {
        switch (object->elementType) {
        case KivElementType::Generalization:
            return addTo(static_cast<KivGeneralization&>(*object));
        case KivElementType::Realization:
            return addTo(static_cast<KivRealization&>(*object), "realizations", &KivClass::realizations);
        case KivElementType::Dependency:
            return addTo(static_cast<KivDependency&>(*object), "dependencies", &KivClass::dependencies);
        case KivElementType::ClassDiagram:
            return addTo(static_cast<KivClassDiagram&>(*object));
        case KivElementType::CandidateKey:
        case KivElementType::ForeignKey:
            return addTo(static_cast<KivKey&>(*object));
        default:
            return;
        }
    }

private:
    // A class that is a subtype twice has the generalization once.
    void addTo(KivGeneralization& generalization)
    {
        for (KivClass* const subtype : generalization.subtypes)
            if (subtype)
                sink.putOnce(*subtype, "generalizations", subtype->generalizations, generalization);
    }

    template <class Relationship, class Collection>
    void addTo(Relationship& relationship, const char* name, Collection KivClass::*collection)
    {
        if (KivClass* const client = relationship.client)
            sink.put(*client, name, client->*collection, relationship);
    }

    void addTo(KivClassDiagram& diagram)
    {
        for (KivModelObject* const element : diagram.elements)
            if (element->elementType == KivElementType::Class)
                sink.put(*element, "links", static_cast<KivClass*>(element)->links, diagram);
    }

    void addTo(KivKey& key)
    {
        for (KivAttribute* const attribute : key.attributes)
            sink.put(*attribute, "keys", attribute->keys, key);
    }

    Sink& sink;
};

struct Filling {
    template <class Collection, class Element>
    static void put(const KivObject& /*owner*/, const char* /*name*/, Collection& collection, Element& element)
    {
        collection.add(&element);
    }
    // One object at a time fills the collections, so what it added is the last element.
    template <class Collection, class Element>
    static void putOnce(const KivObject& owner, const char* name, Collection& collection, Element& element)
    {
        if (collection.isEmpty() || collection.at(collection.count() - 1) != &element)
            put(owner, name, collection, element);
    }
};

// Holds against each other what a collection has and what it would be filled with.
class Comparing {
public:
    template <class Collection, class Element>
    void put(const KivObject& owner, const char* name, const Collection& collection, const Element& element)
    {
        std::size_t& place = places[&collection];
        if (place >= collection.count() || collection.at(place) != &element)
            report(owner, name);
        ++place;
    }
    template <class Collection, class Element>
    void putOnce(const KivObject& owner, const char* name, const Collection& collection, const Element& element)
    {
        const auto found = places.find(&collection);
        const bool isThere = found != places.end() && found->second <= collection.count() &&
                             collection.at(found->second - 1) == &element;
        if (!isThere)
            put(owner, name, collection, element);
    }

    void requireEnd(const KivObject& owner, const char* name, const KivSequence& collection)
    {
        const auto found = places.find(&collection);
        if (collection.count() != (found == places.end() ? 0 : found->second))
            report(owner, name);
    }

    KivUnconnected first;

private:
    void report(const KivObject& owner, const char* name)
    {
        if (!first.owner)
            first = {&owner, name};
    }

    std::unordered_map<const KivSequence*, std::size_t> places; // how many objects came
};

// Whether anything stands in a collection that no reference leads to.
class Ending : public KivTraversalOperation {
public:
    explicit Ending(Comparing& theComparing) : comparing(theComparing) {}

    void pre_process(KivObject* object, void*& /*context*/) override
    {
        if (object->elementType == KivElementType::Class) {
            const auto& element = static_cast<const KivClass&>(*object);
            comparing.requireEnd(element, "generalizations", element.generalizations);
            comparing.requireEnd(element, "realizations", element.realizations);
            comparing.requireEnd(element, "dependencies", element.dependencies);
            comparing.requireEnd(element, "links", element.links);
        } else if (object->elementType == KivElementType::Attribute) {
            comparing.requireEnd(*object, "keys", static_cast<const KivAttribute&>(*object).keys);
        }
    }

private:
    Comparing& comparing;
};

} // namespace

void connect(KivModel& model)
{
    Filling filling;
    Mirroring mirroring(filling);
    model.depthTraversal(mirroring, nullptr);
}

KivUnconnected findUnconnected(KivModel& model)
{
    Comparing comparing;
    Mirroring mirroring(comparing);
    model.depthTraversal(mirroring, nullptr);
    Ending ending(comparing);
    model.depthTraversal(ending, nullptr);
    return comparing.first;
}
