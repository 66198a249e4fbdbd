#include "Format.h"

#include "Ecore.h"
#include "EnterpriseArchitect.h"
#include "Papyrus.h"
#include "StarUml.h"
#include "Umbrello.h"
#include "Xmi.h"

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
