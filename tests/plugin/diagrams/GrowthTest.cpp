#include "plugin/diagrams/Drawing.h"

namespace {

std::size_t steps = 0;

} // namespace

// The instrumented diagram writers call this in every basic block.
extern "C" void __sanitizer_cov_trace_pc()
{
    ++steps;
}

namespace {

// In a package of its own a diagram stands no deeper than the one before, so that all take up the same space.
KivClassDiagram* diagramOfItsOwnPackage(Drawing& drawing)
{
    return drawing.diagram("D", drawing.package("P", drawing.view));
}

// Twice the model may take twice the work for each byte of the file only where something is searched or copied again
// and again.
TEST(Growth, WorkForAByteStaysTheSame)
{
    struct Row {
        const char* what;
        void (*build)(Drawing& drawing, int size);
    };
    const Row rows[] = {
        {"a class on many diagrams",
         [](Drawing& drawing, int size) {
             KivClass* const order = drawing.drawClass("Order");
             for (int i = 0; i < size; ++i) {
                 KivClassDiagram* const diagram = diagramOfItsOwnPackage(drawing);
                 drawing.draw(order, diagram);
                 drawing.projection(order, diagram, 1, 2, 3, 4);
             }
         }},
        {"relationships on many diagrams",
         [](Drawing& drawing, int size) {
             KivClass* const order = drawing.drawClass("Order");
             auto* const is = drawing.generalization("", drawing.view, {order}, {order});
             auto* const places = drawing.association("", drawing.view, order, order);
             auto* const reads = drawing.dependency("", drawing.view, order, order);
             for (int i = 0; i < size; ++i) {
                 KivClassDiagram* const diagram = diagramOfItsOwnPackage(drawing);
                 drawing.draw(order, diagram);
                 for (KivModelObject* const relationship : std::initializer_list<KivModelObject*>{is, places, reads})
                     drawing.lineProjection(drawing.draw(relationship, diagram), diagram, "(1,2)");
                 for (KivAssociationRole* const role : places->roles)
                     drawing.lineProjection(role, diagram, "(1,2)");
             }
         }},
        {"a supertype with many subtypes",
         [](Drawing& drawing, int size) {
             KivClass* const party = drawing.drawClass("Party");
             auto* const is = drawing.draw(drawing.generalization("", drawing.view, {}, {party}));
             drawing.note("", is);
             for (int i = 0; i < size; ++i)
                 is->subtypes.add(drawing.drawClass("C"));
         }},
        {"many supertypes of many subtypes that are not drawn",
         [](Drawing& drawing, int size) {
             auto* const is = drawing.draw(drawing.generalization("", drawing.view, {}, {}));
             drawing.note("", is);
             for (int i = 0; i < size; ++i) {
                 is->subtypes.add(drawing.addClass("C", drawing.view));
                 is->supertypes.add(drawing.drawClass("P"));
             }
         }},
        {"an element with many notes",
         [](Drawing& drawing, int size) {
             KivClass* const order = drawing.drawClass("Order");
             for (int i = 0; i < size; ++i)
                 drawing.note("a\nb", order);
         }},
        {"a diagram with many elements",
         [](Drawing& drawing, int size) {
             for (int i = 0; i < size; ++i) {
                 KivClass* const order = drawing.drawClass("Order");
                 drawing.draw(drawing.realization("", drawing.view, order, order));
                 drawing.draw(drawing.association("", drawing.view, order, order));
                 drawing.draw(drawing.dependency("", drawing.view, order, order));
             }
         }},
    };
    for (const Row& row : rows) {
        double workPerByte[2];
        for (int i = 0; i < 2; ++i) {
            Drawing drawing;
            row.build(drawing, 300 << i);
            steps = 0;
            const std::string text = drawing.written();
            workPerByte[i] = static_cast<double>(steps) / static_cast<double>(text.size());
        }
        EXPECT_GT(workPerByte[0], 0) << row.what;
        EXPECT_LT(workPerByte[1], 1.05 * workPerByte[0]) << row.what;
    }
}

} // namespace
