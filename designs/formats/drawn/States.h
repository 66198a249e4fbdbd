#pragma once

#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/rose/DrawnDiagram.h"

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace design {

/// The text of a state or activity diagram, in the order in which all notations have it: the states, each with those
/// that stand in it; what is said in them; transitions; notes. A notation derives from it and says how a line looks.
class StatesText {
public:
    /// Both must stay.
    StatesText(const rose::DrawnDiagram& theDiagram, std::span<const std::string_view> reservedWords);
    StatesText(const StatesText&) = delete;
    StatesText& operator=(const StatesText&) = delete;
    virtual ~StatesText() = default;

    /// `head` and what follows it.
    [[nodiscard]] std::string write(std::string head);

protected:
    /// Whether it has no line of its own: a dot where its transition begins or ends.
    [[nodiscard]] virtual bool isDot(const rose::Figure& figure) const = 0;
    /// Adds the line of a state, but for the brace behind it and the end of the line; `level` is 0 at the top.
    virtual void addFigure(const rose::Figure& figure, std::size_t level) = 0;
    /// Adds the brace that ends a state on that level.
    virtual void addEnd(std::size_t level) = 0;
    virtual void addDetails(const rose::Figure& figure, const std::string& alias) = 0;
    virtual void addTransition(const rose::Figure& from, const rose::Figure& to, std::string_view label) = 0;
    virtual void addNoteAt(const std::string& alias, std::string_view text) = 0;
    /// Adds a note that hangs at no state.
    virtual void addLooseNote(std::string_view text) = 0;

    /// The word for a state, made when asked for the first time.
    const std::string& aliasOf(const rose::Figure& figure);
    /// The word for a state that has a line, or that of a dot.
    [[nodiscard]] std::string stateOf(const rose::Figure& figure) const;
    /// The word for the first state, or null when there is none.
    [[nodiscard]] const std::string* firstState() const;

    std::string out;
    Aliases aliases;

private:
    void addFigures();
    void addNote(const rose::DrawnNote& note);

    const rose::DrawnDiagram& diagram;
    std::unordered_map<std::string_view, const rose::Figure*> figures;
};

} // namespace design
