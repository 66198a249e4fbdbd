#pragma once

#include "designs/convert/Convert.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace design {

/// What an import says that it has taken.
enum class Kind : std::uint8_t {
    Packages,
    Classes,
    Interfaces,
    DataTypes,
    Enumerations,
    Literals,
    Types,
    Attributes,
    Operations,
    Parameters,
    Associations,
    Generalizations,
    Realizations,
    Dependencies,
    Notes,
    Diagrams,
    Boxes,
    Lines,
    Count,
};

/// Makes the objects of a model from elements of a design, and remembers what is told of them.
class ModelBuilder {
public:
    explicit ModelBuilder(Report& theReport) : report(theReport) {}
    /// Goes on with a model that is there.
    ModelBuilder(Report& theReport, std::unique_ptr<KivModel> model) : report(theReport)
    {
        result.model = std::move(model);
    }

    [[nodiscard]] KivModel& model() const { return *result.model; }

    template <class Object>
    Object* create()
    {
        if constexpr (std::is_base_of_v<KivModelObject, Object>)
            ++result.objects;
        return model().create<Object>();
    }
    /// With what all elements have. `stereotype` is that of an element which has none of its own.
    template <class Object>
    Object* create(const Element& element, std::string_view description, std::string_view stereotype = {})
    {
        auto* const object = create<Object>();
        describe(*object, element, description, stereotype);
        return object;
    }
    void describe(KivModelObject& object, const Element& element, std::string_view description,
                  std::string_view stereotype = {});
    /// Notes the identifier that the object has in the design.
    void identify(const KivObject& object, const std::string& id);
    [[nodiscard]] KivNote* createNote(const Element& owner, std::string_view text);

    /// A text as the model has it. What no text can hold is replaced, and told as a fault of the element.
    [[nodiscard]] KivString text(const Element& element, std::string_view text);

    void count(Kind kind, std::size_t number = 1) { counts[static_cast<std::size_t>(kind)] += number; }

    /// The model, when all is in it.
    [[nodiscard]] Converted finish();
    /// The model as it is.
    [[nodiscard]] std::unique_ptr<KivModel> release() { return std::move(result.model); }

private:
    Report& report;
    Converted result;
    std::array<std::size_t, static_cast<std::size_t>(Kind::Count)> counts = {};
};

/// What the position of the next element in a list is. Past the end of the numbers all have the last one.
template <class List>
[[nodiscard]] std::int16_t nextPosition(const List& list)
{
    return static_cast<std::int16_t>(std::min<std::size_t>(list.count(), INT16_MAX));
}

/// The number that the host has for the word.
[[nodiscard]] int numberOf(Visibility visibility);
[[nodiscard]] int numberOf(Containment containment);

} // namespace design
