#include "diagrams/ClassDiagrams.h"

#include "diagrams/Labels.h"
#include "model/ExportState.h"
#include "model/WrittenElements.h"
#include "petal/PetalWriter.h"
#include "petal/RoseKeywords.h"

namespace {

constexpr std::string_view usualFont = "Arial";
constexpr int usualFontSize = 10;
constexpr int usualFontColor = 0;

// How a class is drawn; at first as without geometry in the model.
struct ClassViewSettings {
    Point location;
    Point label;
    Coordinate width = 600;
    Coordinate height = 300;
    std::string_view fontName = usualFont;
    int fontSize = usualFontSize;
    int fontColor = usualFontColor;
    int lineColor = 3342489;
    int fillColor = 13434879;
};

// The label stands inside the upper left corner of the box.
Point labelIn(const KivProjection& projection)
{
    const Coordinate left = Coordinate{projection.x} - projection.width / 2;
    const Coordinate top = Coordinate{projection.y} - projection.height / 2;
    return {truncated(static_cast<double>(left) * static_cast<double>(XScale) + 9.0),
            truncated(static_cast<double>(top) * static_cast<double>(YScale) + 56.0)};
}

ClassViewSettings settingsOf(const KivProjection* projection)
{
    if (!projection)
        return {};
    return {{scaledX(projection->x), scaledY(projection->y)},
            labelIn(*projection),
            scaledX(projection->width),
            scaledY(projection->height),
            projection->fontName.view(),
            projection->fontSize,
            projection->fontColor,
            projection->lineColor,
            projection->fillColor};
}

//     \tfont\t\t(object Font
//     \t\tsize\t12
//     \t\tface\t"Helvetica"
//     \t\tcolor\t255)
void printFont(const ClassViewSettings& settings)
{
    const bool hasFace = settings.fontName != usualFont;
    const bool hasSize = settings.fontSize != usualFontSize;
    const bool hasColor = settings.fontColor != usualFontColor;
    if (!hasFace && !hasSize && !hasColor)
        return;
    object([&] {
        line("\tfont\t\t(object Font");
        if (hasSize)
            line("\t\tsize\t", settings.fontSize);
        if (hasFace)
            line("\t\tface\t", quoted(settings.fontName));
        if (hasColor)
            line("\t\tcolor\t", settings.fontColor);
    });
}

//     stereotype \t(object ItemLabel
//     \tParent_View \t@26
//     \tlocation\t\t(69,41)
//     \tanchor     \t10
//     \tnlines     \t1
//     \tmax_width  \t240
//     \tlabel      \t"<<entity>>")
void printStereotypeLabel(const KivString& stereotype, int view, const Point& label)
{
    object([&] {
        line("stereotype \t(object ItemLabel");
        line("\tParent_View \t@", view);
        line("\tlocation\t\t", Point{label.x, label.y - 45});
        line("\tanchor     \t10");
        line("\tnlines     \t1");
        line("\tmax_width  \t", stereotype.length() * unitsPerCharacter + 120);
        line("\tlabel      \t", quotedStereotype(stereotype));
    });
}

void printIcon(const KivClass& theClass)
{
    if (theClass.classType == interfaceClassType) {
        line("\ticon\t\t\t\"Interface\"");
        line("\ticon_style\t\t\"Label\"");
    } else {
        line("\ticon_style\t\t\"Icon\"");
    }
}

//     \tcompartment \t(object Compartment
//     \t\tParent_View \t@26
//     \t\tlocation\t\t\t(69,146)
//     \t\tfill_color \t\t13434879
//     \t\tanchor\t\t\t2
//     \t\tnlines\t\t\t5
//     \t\tmax_width\t\t81)
void printCompartment(const KivClass& theClass, int view, const ClassViewSettings& settings)
{
    object([&] {
        line("\tcompartment \t(object Compartment");
        line("\t\tParent_View \t@", view);
        line("\t\tlocation\t\t\t", Point{settings.label.x, settings.label.y + 60});
        line("\t\tfill_color \t\t", settings.fillColor);
        line("\t\tanchor\t\t\t2");
        line("\t\tnlines\t\t\t", theClass.getAttributeCount() + theClass.operations.count());
        line("\t\tmax_width\t\t", settings.width);
    });
}

} // namespace

//     (object ClassView "Class" "Order" @26
//     \tShowCompartmentStereotypes\t\tTRUE
//     \tIncludeAttribute \tTRUE
//     \tIncludeOperation \tTRUE
//     \tlocation\t\t\t(100,50)
//     ...
//     \tautoResize \tTRUE)
int printClassesInDiagram(KivClassDiagram* diagram, KivClass* theClass, int offset)
{
    if (isHidden(*theClass))
        return 0;
    const int view = viewNumber(offset, theClass->pid);
    const ClassViewSettings settings = settingsOf(geometryOn(*theClass, *diagram));
    object([&] {
        line("(object ClassView \"", keyword(classKinds, theClass->classType), "\" ", quoted(theClass->getName()), " @",
             view);
        line("\tShowCompartmentStereotypes\t\tTRUE");
        line("\tIncludeAttribute \tTRUE");
        line("\tIncludeOperation \tTRUE");
        line("\tlocation\t\t\t", settings.location);
        printFont(settings);
        deeper([&] {
            printItemLabel(view, settings.label, settings.width, theClass->getName());
            if (!theClass->stereotype.isEmpty())
                printStereotypeLabel(theClass->stereotype, view, settings.label);
        });
        printIcon(*theClass);
        line("\tline_color \t ", settings.lineColor);
        line("\tfill_color \t ", settings.fillColor);
        line("\tquidu      \t", quoted(makeQuid(equid, theClass->pid)));
        printCompartment(*theClass, view, settings);
        line("\twidth\t\t", settings.width);
        line("\theight\t\t", settings.height);
        line("\tannotation\t8");
        line("\tautoResize \tTRUE");
    });
    return 1;
}
