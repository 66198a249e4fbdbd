#include "plugin/support/Design.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Packages, DriftToTheLeft)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    root->description = "Top\nview";
    root->stereotype = "never written";
    KivDesignPackage* const a = builder.package("A", root);
    a->description = "First";
    a->stereotype = "layer";
    builder.package("AA", a);
    builder.package("inside", builder.package("Logical View", a));
    root->addChildPackage(builder.make<KivPackage>("no design package"));
    builder.package("My Logical View", root);
    EXPECT_EQ(exportedLogicalView(builder.model), petalLines(R"(
    root_category \t(object Class_Category "Logical View"
    quid\t"34429CE6000"
    documentation\t\n|Top\n|view\n
    exportControl\t"Public"
    global\tTRUE
    subsystem\t"Component View"
    quidu\t"344A14000010"
    logical_models \t(list unit_reference_list
        (object Class_Category "A"
        quid\t"344A1400000D"
        documentation\t"First"
        stereotype\t"layer"
        exportControl\t"Public"
        logical_models \t(list unit_reference_list
            (object Class_Category "AA"
            quid\t"344A1400000A"
            exportControl\t"Public"
            logical_models \t(list unit_reference_list)
            logical_presentations \t(list unit_reference_list)))
    logical_presentations \t(list unit_reference_list))
(object Class_Category "My Logical View"
quid\t"344A1400000F"
exportControl\t"Public"
logical_models \t(list unit_reference_list)
logical_presentations \t(list unit_reference_list)))
logical_presentations \t(list unit_reference_list)))"));
}

TEST(Packages, WithDiagramsDriftToTheRight)
{
    for (std::size_t diagrams = 0; diagrams <= 3; ++diagrams) {
        ModelBuilder builder;
        KivDesignPackage* const root = builder.package("Logical View");
        KivDesignPackage* const first = builder.package("First", root);
        builder.package("Second", root);
        for (std::size_t i = 0; i < diagrams; ++i) {
            builder.diagram("D", first);
            first->diagrams.add(builder.make<KivDiagram>("of another kind"));
        }
        const std::string view = exportedLogicalView(builder.model);
        const std::string tabs(1 + diagrams, '\t');
        EXPECT_THAT(view, HasSubstr("\r\n" + tabs + "(object Class_Category \"Second\"")) << diagrams << " diagrams";
        for (std::size_t i = 1; i <= diagrams; ++i)
            EXPECT_THAT(view, HasSubstr("\r\n" + std::string(2 + i, '\t') + "(object ClassDiagram \"D\"")) << i;
    }
}

TEST(Packages, HoldTheirElementsInAFixedOrder)
{
    Design design;
    KivDesignPackage* const inner = design.package("Inner", design.root);
    auto* const association = design.association("association", design.root);
    design.root->modelElements.add(design.model.create<KivNote>());
    design.root->modelElements.add(nullptr);
    KivClass* const a = design.addClass("A");
    design.attribute("color", a, design.enumeration("Color", {{"RED", "0"}}));
    design.generalization("G", design.root, {a}, {a});
    design.role("role", association, a);
    KivClass* const b = design.addClass("B");
    for (KivDesignPackage* const package : {design.root, design.root, inner})
        design.diagram("D", package, {b});
    // Numbers: RED 10, Color 11, role 12, association 16, color 20, A 21, G 22, B 26, inner diagram 27, Inner 3027,
    // diagrams 3028 and 6028, Logical View 9028, model 9029; the next diagram's views begin 9030 later.
    EXPECT_THAT(linesWith("(object ", exportedLogicalView(design.model)),
                ElementsAre("Class \"A\"", "Inheritance_Relationship", "ClassAttribute \"color\"", "Class \"B\"",
                            "Class \"Color\"", "Attribute", "Association \"association\"", "Role \"role\"",
                            "Class_Category \"Inner\"", "ClassDiagram \"D\"", "ClassView \"Class\" \"B\" @26",
                            "ClassDiagram \"D\"", "CategoryView \"LogicalView::Inner\" @12057",
                            "ClassView \"Class\" \"B\" @9056", "ClassDiagram \"D\"",
                            "CategoryView \"LogicalView::Inner\" @21087", "ClassView \"Class\" \"B\" @18086"));
}
