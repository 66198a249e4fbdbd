#pragma once

#include "designs/convert/ModelBuilder.h"
#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace design {

/// Pixels of a tool as the host's units of a 300th of an inch, and back.
[[nodiscard]] int inUnits(double pixels);
[[nodiscard]] double inPixels(int units);

/// Where each element is drawn, as the host has it: centres and sizes in units of a 300th of an inch.
class Projections {
public:
    explicit Projections(const Catalogue& theCatalogue) : catalogue(theCatalogue) {}

    /// Takes in what a diagram shows; `target` is what the host has for it.
    void add(const Diagram& diagram, KivClassDiagram& target);

    /// Gives a class or a relationship the projections of its element.
    void addTo(KivModelObject& object, std::string_view elementId, ModelBuilder& builder) const;
    /// Its roles get the parts of the line from the association's point to their classes.
    void addTo(KivAssociation& association, std::string_view elementId, ModelBuilder& builder) const;

private:
    struct Projection {
        KivClassDiagram* diagram = nullptr;
        std::optional<Rectangle> bounds; ///< of a box; of a line without extent
        std::vector<Point> vertices;
        bool isLine = false;
        const Appearance* appearance = nullptr;
    };
    using BoxOfElement = std::unordered_map<std::string_view, const Box*>;

    void addLine(KivClassDiagram& target, const Line& line, bool keepsPlaces, const BoxOfElement& boxes);
    void addAssociation(KivClassDiagram& target, const Line& line, const Association& association,
                        const BoxOfElement& boxes);
    void addDivided(KivClassDiagram& target, const Line& line, Point middle);
    static void addAll(const std::vector<Projection>& projections, KivModelObject& object, ModelBuilder& builder);
    static KivProjection* create(const Projection& projection, ModelBuilder& builder);

    const Catalogue& catalogue;
    std::unordered_map<std::string_view, std::vector<Projection>> ofElements;
    std::unordered_map<std::string_view, std::vector<std::vector<Projection>>> ofEnds; // by association, end
};

} // namespace design
