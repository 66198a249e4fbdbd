#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <cstdint>
#include <string_view>

namespace design {

/// What the relationships of a design may join, besides classifiers.
enum class Reach : std::uint8_t {
    Classifiers, ///< nothing
    Packages,
};

/// Makes one whole of what a format's reader has read, in this one way for all formats: every element gets a name and
/// an identifier where it needs one, every end leads to a classifier, or to a package, and every comment is where it
/// belongs.
void settle(Design& design, Reach reach, Report& report);

/// Gives every element that can be referred to an identifier of its own: what has none, or one that was given before,
/// gets a new one.
void giveIdentifiers(Design& design, Report& report);

/// Names packages and classifiers that have no name, which no Rose file can hold, and takes line ends and other control
/// characters out of names.
void settleNames(Package& root, Report& report);

/// What the package is called that placeholders lie in.
inline constexpr std::string_view placeholderPackage = "External";

/// Makes every end of an association or relationship lead to a classifier. Those outside of the file, and those that
/// are only drawn, get a placeholder in a package "External"; a relation that ends at nothing, or at no classifier,
/// goes, and the report says so.
void settleEnds(Design& design, Reach reach, Report& report);

/// Takes out use cases, and the diagrams of them, for a model that has none.
void leaveUseCases(Design& design, Report& report);

/// Gives comments and constraints to the elements that they hang at. A comment that hangs at no element of the design
/// becomes a note of the diagrams that it stands in, or stays with its package; a constraint goes, and the report says
/// so.
void settleRemarks(Package& root, Report& report);

} // namespace design
