#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace design {

/// What an import left behind or had to make up: one entry for each thing, so that a user can find it again.
struct ReportEntry {
    std::string kind;   ///< in words of the source format, e.g. "state machine", "sequence diagram", "type"
    std::string id;     ///< identifier in the file; may be empty
    std::string name;   ///< may be empty
    std::string reason; ///< one clause, e.g. "the host model has no state machines"
};

/// Why something is left out or made up.
inline constexpr std::string_view nothingOfThisKind = "nothing of this kind is taken";
inline constexpr std::string_view classDiagramsOnly = "diagrams of this kind are not taken";
inline constexpr std::string_view missingUnit = "controlled unit"; ///< the kind of one that could not be read
inline constexpr std::string_view besideItsOwner = "it stands beside the class that it lay in";

/// Collects what was not taken and what was made up while a design is read and converted.
class Report {
public:
    /// Something in the file that has no place in the host model.
    void left(std::string_view kind, std::string_view id, std::string_view name, std::string_view reason);
    /// A placeholder for something outside the file, or a mended fault of the file.
    void made(std::string_view kind, std::string_view id, std::string_view name, std::string_view reason);

    /// Forgets what was left where a later step takes it after all.
    void takeBack(const std::function<bool(const ReportEntry&)>& isTaken);

    [[nodiscard]] const std::vector<ReportEntry>& leftEntries() const { return leftEntries_; }
    [[nodiscard]] const std::vector<ReportEntry>& madeEntries() const { return madeEntries_; }

private:
    std::vector<ReportEntry> leftEntries_;
    std::vector<ReportEntry> madeEntries_;
};

} // namespace design
