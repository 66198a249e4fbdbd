#include "designs/formats/Xmi.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/formats/uml2/Umldi.h"

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
    uml2::Model model = uml2::read(document, outside, report);
    const JoinedElements joined(model.design.root);
    for (umldi::OwnedDiagram& owned : umldi::read(document.root(), joined, report))
        addDiagram(model.design.root, owned.packageId, std::move(owned.diagram));
    umldi::readNames(document.root(), model.outsideNames);
    return uml2::finish(std::move(model), report);
}

} // namespace

Format xmiFormat()
{
    return {"xmi", "UML 2 in XMI 2.x, of Eclipse UML2 and others (.uml, .xmi)",
            "a uml:Model or uml:Package with packaged elements", recognizes, read};
}

} // namespace design
