#pragma once

#include "designs/convert/JsonWriter.h"
#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace design {

/// Where each element is drawn, as the model file says it: centres and sizes in units of a 300th of an inch.
class Projections {
public:
    Projections(const Package& root, const Catalogue& catalogue);

    /// The list of an element's projections, for a class, an association or another relationship.
    void write(JsonWriter& json, std::string_view elementId) const;
    /// The list of those of an association's end: the part of the line from the association's point to the class.
    void writeRole(JsonWriter& json, std::string_view associationId, std::size_t end) const;

private:
    struct Projection {
        std::string_view diagramId;
        std::optional<Rectangle> bounds; ///< of a box; of a line without extent
        std::vector<Point> vertices;
        bool isLine = false;
        const Appearance* appearance = nullptr;
    };
    using BoxOfElement = std::unordered_map<std::string_view, const Box*>;

    void addDiagram(const Diagram& diagram, const Catalogue& catalogue);
    void addLine(const Diagram& diagram, const Line& line, const Catalogue& catalogue, const BoxOfElement& boxes);
    void addAssociation(const Diagram& diagram, const Line& line, const Association& association,
                        const BoxOfElement& boxes);
    static void writeAll(JsonWriter& json, const std::vector<Projection>& projections);
    static void writeOne(JsonWriter& json, const Projection& projection);

    std::unordered_map<std::string_view, std::vector<Projection>> ofElements;
    std::unordered_map<std::string_view, std::vector<std::vector<Projection>>> ofEnds; // by association, end
};

} // namespace design
