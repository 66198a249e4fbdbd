#include "designs/layout/LayoutBudget.h"

namespace design {

namespace {

constexpr double mostInFull = 10000; // of one diagram: boxes times lines
constexpr double mostInBrief = 110000;
constexpr double startInFull = 4e5; // what a layout takes that has next to nothing to do
constexpr double startInBrief = 40;

} // namespace

LayoutCare LayoutBudget::take(std::size_t boxes, std::size_t lines)
{
    const double product = static_cast<double>(boxes) * static_cast<double>(lines);
    const double full = product * product + startInFull;
    if (product <= mostInFull && full <= fullLeft) {
        fullLeft -= full;
        return LayoutCare::full;
    }
    const double brief = product + startInBrief;
    if (product > mostInBrief || brief > briefLeft)
        return LayoutCare::none;
    briefLeft -= brief;
    return LayoutCare::brief;
}

} // namespace design
