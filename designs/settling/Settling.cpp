#include "designs/settling/Settling.h"

namespace design {

void settle(Design& design, Reach reach, Report& report)
{
    giveIdentifiers(design, report);
    settleNames(design.root, report);
    settleEnds(design, reach, report);
    settleRemarks(design.root, report);
}

} // namespace design
