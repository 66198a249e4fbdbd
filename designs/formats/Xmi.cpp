#include "designs/formats/Formats.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/formats/uml2/Umldi.h"
#include "designs/formats/uml2/write/Write.h"

#include <utility>

namespace design {

namespace {

bool recognizes(const Source& source)
{
    return uml2::hasModel(xml::head(source.text));
}

Design read(const Source& source, Report& report)
{
    const xml::Document document(source.text);
    uml2::Outside outside(source.path);
    Design design = uml2::read(document, outside, report);
    const Drawing drawing(design.root);
    for (umldi::OwnedDiagram& owned : umldi::read(document.root(), drawing, report))
        drawing.add(owned.packageId, std::move(owned.diagram));
    umldi::readNames(document.root(), design.outsideNames);
    return design;
}

} // namespace

Format xmiFormat()
{
    return {"xmi",
            "UML 2 in XMI 2.x, of Eclipse UML2 and others (.uml, .xmi)",
            {".uml", ".xmi"},
            "a uml:Model or uml:Package with packaged elements",
            recognizes,
            read,
            uml2::write,
            false,
            false};
}

} // namespace design
