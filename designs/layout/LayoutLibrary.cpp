#include "designs/layout/LayoutLibrary.h"

#include "loading/Loading.h"

namespace design {

bool placeInLayers(Graph& graph, bool isBrief)
{
    static const auto& library = loading::functionsOf<LayoutFunctions>("libpetal-layout.so", "petalLayoutFunctions");
    return library.placeInLayers(graph, isBrief);
}

} // namespace design
