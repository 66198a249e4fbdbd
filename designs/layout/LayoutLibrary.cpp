#include "designs/layout/LayoutLibrary.h"

#include "loading/Loading.h"

namespace design {

const LayoutFunctions& layoutLibrary()
{
    static const auto& library = loading::functionsOf<LayoutFunctions>("libpetal-layout.so", "petalLayoutFunctions");
    return library;
}

bool placeInLayers(Graph& graph, bool isBrief)
{
    return layoutLibrary().placeInLayers(graph, isBrief);
}

} // namespace design
