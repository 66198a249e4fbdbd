#include "designs/formats/ea/write/Output.h"

#include "designs/model/Walk.h"

#include <cctype>

namespace design::ea {

Output::Output(const Writing& theWriting, text::Sink& sink, Report& theReport)
    : writing(theWriting), report(theReport), ids(theWriting.catalogue),
      xml(sink, R"(<?xml version="1.0" encoding="UTF-8"?>)")
{
    collectRelations();
    collectAssociations();
    collectNotes(writing.design.root, nullptr);
    forEachPackage(writing.design.root, [this](const Package& package) {
        for (const Note& note : notes.at(&package))
            if (!note.drawnAt.empty())
                notesOn[note.drawnAt].push_back(&note);
    });
}

void Output::collectRelations()
{
    forEachPackage(writing.design.root, [this](const Package& package) {
        for (const Relationship& relationship : package.relationships)
            if (isHeldByClient(relationship))
                inClient[relationship.client.id].push_back(&relationship);
        for (const Association& association : package.associations)
            if (writing.catalogue.classifier(association.associationClassId))
                associationOf.emplace(association.associationClassId, &association);
    });
}

void Output::collectAssociations()
{
    forEachPackage(writing.design.root, [this](const Package& package) {
        std::vector<const Association*>& all = associations[&package];
        for (const Classifier& classifier : package.classifiers)
            if (const auto found = associationOf.find(classifier.id); found != associationOf.end())
                all.push_back(found->second);
        for (const Association& association : package.associations)
            if (!isInClass(association))
                all.push_back(&association);
        for (const Association* const association : all)
            for (std::size_t i = 0; i < association->ends.size(); ++i)
                if (isOwnedByClass(*association, i))
                    endsIn[association->ends[1 - i].participant.id].push_back({association, i});
    });
}

// A comment on a package stands in the one around it: one inside would document it. Relations come where they are
// written, so that a file that comes back goes out in the same order.
void Output::collectNotes(const Package& package, const Package* parent)
{
    for (const Package& child : package.packages)
        collectNotes(child, &package);
    for (const std::string& text : package.notes)
        if (parent)
            addNote(*parent, text, idOf(package), subject(package));
        else
            report.left("note", package.id, text, "it is on the whole design");
    const auto addOf = [&](const Element& element, const std::string& id) {
        for (const std::string& text : element.notes)
            addNote(package, text, id);
    };
    for (const Classifier& classifier : package.classifiers) {
        for (const std::string& text : classifier.notes)
            addNote(package, text, ids.of(classifier), ids.of(classifier));
        forEachFeature(classifier, [&](const Element& feature) { addOf(feature, ids.of(feature)); });
        if (const auto held = inClient.find(classifier.id); held != inClient.end())
            for (const Relationship* const relationship : held->second)
                addOf(*relationship, ids.of(*relationship));
    }
    for (const Association* const association : associations.at(&package)) {
        if (!isInClass(*association))
            addOf(*association, ids.of(*association));
        for (std::size_t i = 0; i < association->ends.size(); ++i)
            addOf(association->ends[i], idOf(*association, i));
    }
    for (const Relationship& relationship : package.relationships)
        if (!isHeldByClient(relationship))
            addOf(relationship, ids.of(relationship));
    collectLooseNotes(package);
}

void Output::collectLooseNotes(const Package& package)
{
    constexpr std::string_view ownPrefix = "EAID_NT"; // of notes that were numbered when they were written
    std::vector<Note>& all = notes[&package];
    for (const Remark& remark : package.remarks) // settled: they are comments and hang at nothing
        all.push_back(
            {remark.id.empty() || remark.id.starts_with(ownPrefix) ? ids.numbered(ownPrefix) : ids.of(remark.id),
             remark.text,
             {},
             {},
             {}});
    std::size_t next = all.size();
    for (const Diagram& diagram : package.diagrams)
        for (const std::string& text : diagram.notes)
            addNote(package, text, "");
    for (const Diagram& diagram : package.diagrams)
        for (std::size_t i = 0; i < diagram.notes.size(); ++i)
            notesOfDiagram[&diagram].push_back(&all[next++]);
}

void Output::addNote(const Package& package, std::string_view text, const std::string& annotated,
                     const std::string& drawnAt)
{
    notes[&package].push_back(
        {ids.numbered("EAID_NT"), text, annotated, drawnAt, drawnAt.empty() ? std::string() : ids.numbered("EAID_NL")});
}

const std::string& Output::subject(const Package& package)
{
    if (!package.id.empty())
        return ids.of(package.id);
    std::string& id = subjects[&package];
    if (id.empty())
        id = ids.beside(idOf(package), "EAID_");
    return id;
}

const std::string& Output::target(const std::string& id)
{
    return ids.of(id, writing.catalogue.package(id) ? "EAPK_" : "EAID_");
}

const std::string& Output::idOf(const Association& association, std::size_t end)
{
    if (association.ends.size() != 2)
        return ids.of(association.ends[end]);
    return ids.of(association.ends[end], end == 0 ? "EAID_src" : "EAID_dst");
}

std::string Output::typeName(const Reference& type) const
{
    if (const Classifier* const classifier = writing.catalogue.classifierOf(type))
        return classifier->name;
    return type.name.empty() ? type.id : type.name;
}

std::string Output::typeId(const Reference& type)
{
    if (const Classifier* const classifier = writing.catalogue.classifierOf(type))
        return ids.of(*classifier);
    const std::string name = typeName(type);
    if (name.empty())
        return {};
    const auto [found, isNew] = typeIds.try_emplace(name);
    if (isNew) {
        typeNames.push_back(name);
        found->second = ids.beside(name, "EAnone_");
    }
    return found->second;
}

bool Output::isInClass(const Association& association) const
{
    const auto found = associationOf.find(association.associationClassId);
    return found != associationOf.end() && found->second == &association;
}

std::string_view Output::nameOf(const Package& package) const
{
    return &package == &writing.design.root && package.name.empty() ? "EA_Model" : std::string_view(package.name);
}

bool Output::isHeldByClient(const Relationship& relationship) const
{
    if (!writing.catalogue.classifier(relationship.client.id))
        return false;
    const std::string_view type = typeOf(*this, relationship);
    return type == "Generalization" || type == "Include" || type == "Extend";
}

// The tool's classes own the ends that one can go to from them.
bool Output::isOwnedByClass(const Association& association, std::size_t end) const
{
    if (association.ends.size() != 2 || !association.ends[end].isNavigable)
        return false;
    const Classifier* const owner = writing.catalogue.classifier(association.ends[1 - end].participant.id);
    return owner && owner->kind != ClassifierKind::Actor && owner->kind != ClassifierKind::UseCase;
}

bool Output::isRootElement() const
{
    const Package& root = writing.design.root;
    return !root.documentation.empty() || !root.properties.empty() || !root.stereotype.empty() ||
           !root.classifiers.empty() || !root.diagrams.empty() || !root.associations.empty() ||
           !root.relationships.empty() || !notes.at(&root).empty();
}

void writeTags(Output& output, const Element& element, std::string_view id)
{
    const xml::Element tags(output.xml, "tags");
    for (const Property& property : element.properties)
        xml::Element(output.xml, "tag")
            .with("xmi:id", output.ids.numbered("EAID_TV"))
            .with("name", property.tool + "::" + property.name)
            .with("value", property.value)
            .withSome("modelElement", id);
}

std::string_view wordOf(Visibility visibility)
{
    constexpr std::array<std::string_view, 4> words = {"public", "protected", "private", "package"};
    return words[static_cast<std::size_t>(visibility)];
}

std::string_view wordOf(Aggregation aggregation)
{
    constexpr std::array<std::string_view, 3> words = {"none", "shared", "composite"};
    return words[static_cast<std::size_t>(aggregation)];
}

std::string capitalized(std::string_view word)
{
    std::string text(word);
    if (!text.empty())
        text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    return text;
}

std::string_view typeOf(const Output& output, const Classifier& classifier)
{
    if (output.associationOf.contains(classifier.id))
        return "AssociationClass";
    constexpr std::array<std::string_view, 8> types = {"Class",       "Interface", "DataType", "PrimitiveType",
                                                       "Enumeration", "Class",     "Actor",    "UseCase"};
    return types[static_cast<std::size_t>(classifier.kind)];
}

std::string_view typeOf(const Output& output, const Relationship& relationship)
{
    if (relationship.kind == RelationshipKind::Generalization)
        return "Generalization";
    if (relationship.kind == RelationshipKind::Realization)
        return "Realization";
    const auto isUseCase = [&](const Reference& end) {
        const Classifier* const classifier = output.writing.catalogue.classifier(end.id);
        return classifier && classifier->kind == ClassifierKind::UseCase;
    };
    const std::string_view word = relationship.stereotype;
    if ((word == "include" || word == "extend") && isUseCase(relationship.client) && isUseCase(relationship.supplier))
        return word == "include" ? "Include" : "Extend";
    if (word == "use")
        return "Usage";
    return word == "abstraction" ? "Abstraction" : "Dependency";
}

std::string_view impliedBy(std::string_view type)
{
    constexpr std::array<std::array<std::string_view, 2>, 5> words = {{
        {"Actor", "Actor"},
        {"Usage", "use"},
        {"Abstraction", "abstraction"},
        {"Include", "include"},
        {"Extend", "extend"},
    }};
    for (const auto& [word, implied] : words)
        if (word == type)
            return implied;
    return {};
}

std::string stereotypeBeside(std::string_view stereotype, std::string_view implied)
{
    std::string others;
    while (!stereotype.empty()) {
        const std::size_t comma = stereotype.find(", ");
        const std::string_view word = stereotype.substr(0, comma);
        stereotype = comma == std::string_view::npos ? std::string_view() : stereotype.substr(comma + 2);
        if (word != implied)
            others.append(others.empty() ? "" : ", ").append(word);
    }
    return others;
}

} // namespace design::ea
