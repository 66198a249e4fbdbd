#include "designs/formats/Format.h"

#include "designs/formats/ea/EnterpriseArchitect.h"
#include "designs/formats/Ecore.h"
#include "designs/formats/Papyrus.h"
#include "designs/formats/staruml/StarUml.h"
#include "designs/formats/umbrello/Umbrello.h"
#include "designs/formats/Xmi.h"

#include <array>

namespace design {

std::span<const Format> formats()
{
    static const std::array table = {
        starUmlFormat(),             // .mdj
        enterpriseArchitectFormat(), // .xml
        papyrusFormat(),             // .uml with .notation
        umbrelloFormat(),            // .xmi
        xmiFormat(),                 // .uml, .xmi
        ecoreFormat(),               // .ecore
    };
    return table;
}

} // namespace design
