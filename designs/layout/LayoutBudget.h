#pragma once

#include <cstddef>
#include <cstdint>

namespace design {

/// How much care a layout may take.
enum class LayoutCare : std::uint8_t {
    full,
    brief, ///< few tries to make lines short and to have them cross seldom
    none,  ///< boxes in rows, whatever joins them
};

/// What the layouts of a design may take together. They are counted by boxes and lines, so that a design is laid out
/// alike on every machine: the time of a layout grows with the product of the two, or faster.
class LayoutBudget {
public:
    /// The care for the next diagram, which is taken from the budget.
    [[nodiscard]] LayoutCare take(std::size_t boxes, std::size_t lines);

private:
    double fullLeft = 1e9;     ///< of squares of products
    double briefLeft = 150000; ///< of products
};

} // namespace design
