#include "designs/model/Settling.h"

namespace design {

void settle(Design& design, Report& report)
{
    giveIdentifiers(design, report);
    settleNames(design.root, report);
    settleEnds(design, report);
    settleRemarks(design.root, report);
}

} // namespace design
