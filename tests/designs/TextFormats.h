#pragma once

#include "designs/Files.h"
#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "designs/SmallDesigns.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Designs as texts of diagrams.

struct Texts {
    design::Design design; ///< settled
    design::Report report; ///< of the writer alone
    std::vector<design::WrittenFile> files;

    /// All of them, one behind the other.
    [[nodiscard]] std::string all() const
    {
        std::string text;
        for (const design::WrittenFile& file : files)
            text += file.text;
        return text;
    }
};

inline Texts textsOf(design::Design given, std::string_view format, bool isFolder = true)
{
    Texts texts{std::move(given), {}, {}};
    const design::Format* const target = design::formatNamed(format);
    design::Report settling;
    design::settleFor(*target, texts.design, true, settling);
    const design::Catalogue catalogue(texts.design.root);
    texts.files = design::filesIn(*target, {texts.design, catalogue, "design", isFolder}, texts.report);
    return texts;
}

inline design::Design designIn(const std::string& name)
{
    const std::string bytes = bytesOf(name);
    const design::Source source{bytes, pathOf(name)};
    design::Report report;
    return design::readDesign(*design::formatOf(source), source, report);
}

/// Designs that together have everything that the readers know.
inline const std::vector<const char*>& designFiles()
{
    static const std::vector<const char*> names = {
        "shop.mdj",       "enterprise-architect.xml",
        "shop.uml",       "one-file.uml",
        "umbrello.xmi",   "umbrello2.xmi",
        "uml1.xmi",       "plain.xmi",
        "all-kinds.xmi",  "shop.ecore",
        "packages.ecore", "shop.mdl",
    };
    return names;
}

/// A diagram in which a class is above another one and a third is beside it, with everything that a diagram shows.
inline design::Design designWithEverything()
{
    using namespace design;
    Design design = designOf({classNamed("Order"), classNamed("Order item"), classNamed("note"), classNamed("Colour"),
                              classNamed("Buyer"), classNamed("Contract")});
    Package& sales = design.root.packages[0];
    sales.name = "Sales";
    sales.id = "sales";
    Classifier& order = sales.classifiers[0];
    order.isAbstract = true;
    order.stereotype = "entity";
    order.documentation = "What was ordered.\nAnd by whom.";
    order.notes = {"Never\nend note", "@enduml"};
    order.constraints = {"x > 0"};
    order.isPersistent = true;
    order.templateParameters.resize(1);
    order.templateParameters[0].name = "Item";
    order.templateParameters[0].type.name = "list<int>";
    order.attributes.resize(2);
    order.attributes[0].name = "total";
    order.attributes[0].id = "total";
    order.attributes[0].type.name = "NUMBER(12)";
    order.attributes[0].initialValue = "\"0\"";
    order.attributes[0].isDerived = order.attributes[0].isStatic = true;
    order.attributes[0].stereotype = "key";
    order.attributes[1].name = "hidden";
    order.attributes[1].visibility = Visibility::Protected;
    order.operations.resize(1);
    order.operations[0].name = "cancel";
    order.operations[0].isAbstract = true;
    order.operations[0].parameters.resize(2);
    order.operations[0].parameters[0].name = "reason";
    order.operations[0].parameters[0].type.name = "String";
    order.operations[0].parameters[0].initialValue = "none";
    order.operations[0].parameters[1].name = "why";
    order.operations[0].parameters[1].direction = Direction::Out;
    order.operations[0].returnType.name = "Boolean";
    sales.classifiers[2].kind = ClassifierKind::Interface;
    sales.classifiers[3].kind = ClassifierKind::Enumeration;
    sales.classifiers[3].literals.resize(2);
    sales.classifiers[3].literals[0].name = "RED";
    sales.classifiers[3].literals[0].value = "hex(FF)";
    sales.classifiers[3].literals[1].name = "-green-";
    sales.classifiers[4].kind = ClassifierKind::Actor;
    Package& stock = sales.packages.emplace_back();
    stock.name = "Stock";
    stock.id = "stock";
    stock.stereotype = "subsystem";
    stock.classifiers.push_back(classNamed("Shelf"));

    Association holds = association("Order", "Order item");
    holds.name = "holds";
    holds.associationClassId = "Contract";
    holds.ends[0].aggregation = Aggregation::Composite;
    holds.ends[0].multiplicity = Multiplicity{1, 1, ""};
    holds.ends[1].isNavigable = true;
    holds.ends[1].name = "items";
    holds.ends[1].multiplicity = Multiplicity{0, -1, ""};
    holds.ends[1].constraints = {"ordered"};
    holds.ends[0].qualifiers.resize(1);
    holds.ends[0].qualifiers[0].name = "position";
    Association buys = association("Buyer", "Order");
    buys.ends.push_back(buys.ends[1]);
    buys.ends[2].participant.id = "Shelf";
    sales.associations = {holds, buys};
    sales.relationships = {generalization("Order item", "note"), generalization("Order", "note")};
    sales.relationships[0].kind = RelationshipKind::Realization;
    sales.relationships[0].notes = {"Some day"};
    Relationship uses = generalization("Order", "stock");
    uses.kind = RelationshipKind::Dependency;
    uses.stereotype = "use";
    sales.relationships.push_back(uses);

    Diagram main = diagramOf({"Order", "Order item", "note", "Colour", "Buyer", "stock", "Shelf", "Contract"});
    main.name = "Main";
    main.notes = {"A loose note"};
    main.boxes[0].bounds = Rectangle{300, 0, 100, 100};
    main.boxes[1].bounds = Rectangle{0, 10, 100, 60};
    main.boxes[2].bounds = Rectangle{0, 300, 100, 60};
    main.boxes[0].appearance.fillColor = 0xFFFFCC;
    main.boxes[1].appearance.fillColor = 0xFFFFCC;
    main.boxes[2].appearance.fillColor = 0x00FF80;
    main.boxes[0].hidden.attributes[static_cast<std::size_t>(Visibility::Protected)] = true;
    for (const std::string& id : {holds.id, buys.id})
        main.lines.emplace_back().elementId = id;
    for (const Relationship& each : sales.relationships)
        main.lines.emplace_back().elementId = each.id;
    sales.diagrams.push_back(std::move(main));
    sales.diagrams.push_back(diagramOf({}));
    return design;
}
