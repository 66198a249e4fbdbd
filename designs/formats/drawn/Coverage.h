#pragma once

#include "designs/formats/Format.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace design {

/// What of a design came out in the texts of its diagrams. A format that has nothing but diagrams loses the rest.
class Coverage {
public:
    void add(const Element& element) { written.insert(&element); }
    [[nodiscard]] bool has(const Element& element) const { return written.contains(&element); }

    /// Tells the report of every element of the design that was not added.
    void tellRest(const Package& root, Report& report) const;

private:
    void tell(std::string_view kind, const Element& element, Report& report) const;
    void tellRest(const Classifier& classifier, Report& report) const;

    std::unordered_set<const Element*> written;
};

/// Tells of what an element has that a text of its diagram does not say.
void leaveProperties(const Classifier& classifier, Report& report);
void leaveProperties(const Association& association, Report& report);
void leaveProperties(const Relationship& relationship, Report& report);

/// Tells what a drawing loses that is laid out anew: places, sizes, bends, fonts.
void leaveLayout(const Diagram& diagram, Report& report);

} // namespace design
