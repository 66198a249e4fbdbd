#include "browse/changes/ChangesPage.h"

#include "browse/changes/ChangedDiagrams.h"
#include "browse/changes/ChangedSheets.h"
#include "browse/changes/ChangesFields.h"
#include "browse/Fields.h"
#include "browse/Kinds.h"
#include "browse/PageTemplate.h"
#include "browse/Sheets.h"
#include "compare/facts/Labels.h"
#include "compare/facts/Values.h"
#include "compare/report/Details.h"
#include "text/Utf8.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace browse {

using compare::Change;
using compare::nobody;
using compare::Snapshot;

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20U;

class ChangesPage {
public:
    ChangesPage(const compare::Comparison& states, const std::vector<Change>& changes,
                const ChangesPageOptions& options, const Sink& sink)
        : states(states), options(options), sink(sink), sheets(changedSheets(states, changes)),
          diagrams(changedDiagrams(states, changes))
    {
        for (std::size_t i = 0; i < sheets.size(); ++i)
            sheetPlaces.emplace(std::pair(sheets[i].old, sheets[i].fresh), i);
    }

    void write()
    {
        const PageTemplate& page = changesPage();
        sink(page.beforeTitle);
        sink(escapedText(options.oldName + " \u2192 " + options.newName));
        sink(page.beforeModel);
        writeData();
        sink(page.beforePictures);
        writePictures(states.before, "before-", &ChangedDiagram::old);
        writePictures(states.after, "after-", &ChangedDiagram::fresh);
        sink(page.afterPictures);
    }

private:
    void writeData() const
    {
        Packer packer(sink);
        std::string text;
        text::JsonWriter json(text, pageLayout);
        const auto passOn = [&] {
            packer.add(text);
            text.clear();
        };
        json.beginObject().key("old").value(options.oldName).key("new").value(options.newName);
        json.key("sheets").beginList();
        for (const ChangedSheet& sheet : sheets) {
            writeSheet(json, sheet);
            if (text.size() > pieceSize)
                passOn();
        }
        json.endList().key("diagrams").beginList();
        for (const ChangedDiagram& diagram : diagrams)
            writeDiagram(json, diagram);
        json.endList().endObject();
        passOn();
        packer.finish();
    }

    static std::uint64_t sortOf(std::uint32_t old, std::uint32_t fresh)
    {
        return static_cast<std::uint64_t>(old == nobody     ? RowSort::added
                                          : fresh == nobody ? RowSort::removed
                                                            : RowSort::changed);
    }

    void writeSheet(text::JsonWriter& json, const ChangedSheet& sheet) const
    {
        const bool isGone = sheet.fresh == nobody;
        const Snapshot& state = isGone ? states.before : states.after;
        const std::uint32_t node = isGone ? sheet.old : sheet.fresh;
        const reader::Object& object = *state[node].object;
        const Kind kind = kindOf(object);
        using enum SheetField;
        json.beginList();
        FieldWriter<SheetField>(json)
            .add<title>(object.is("Design") ? std::string("model") : compare::headlineOf(state, object))
            .add<owner>(state[node].parent == nobody ? std::string() : state.path(state[node].parent))
            .add<icon>(kind.icon)
            .add<group>(static_cast<std::uint64_t>(kind.group))
            .add<sort>(sortOf(sheet.old, sheet.fresh))
            .add<lines>([&] { writeLines(json, sheet.changes, sheet.fresh); })
            .add<rows>([&] {
                json.beginList();
                for (const ChangedRow& row : rowsOf(states, sheet))
                    writeRow(json, row);
                json.endList();
            });
        json.endList();
    }

    static void writeRow(text::JsonWriter& json, const ChangedRow& row)
    {
        using enum RowField;
        json.beginList();
        FieldWriter<RowField>(json)
            .add<sort>(static_cast<std::uint64_t>(row.sort))
            .add<isInside>(row.isInside ? 1 : 0)
            .add<label>(text::mended(row.label))
            .add<before>(text::mended(row.before))
            .add<after>(text::mended(row.after));
        json.endList();
    }

    // Below the element or diagram `around`, of the new state.
    void writeLines(text::JsonWriter& json, const std::vector<const Change*>& changes, std::uint32_t around) const
    {
        using enum LineField;
        json.beginList();
        for (const Change* const change : changes) {
            const std::string_view word =
                isView(*change) ? "view" : compare::kindWord(compare::objectOf(states, *change));
            json.beginList();
            FieldWriter<LineField>(json)
                .add<sort>(static_cast<std::uint64_t>(change->sort))
                .add<kind>(word)
                .add<LineField::text>(text::mended(text::onOneLine(wordsOf(*change, around))))
                .add<LineField::sheet>(placeOf(*change));
            json.endList();
        }
        json.endList();
    }

    // The sheet of what came or went, or -1.
    [[nodiscard]] std::int64_t placeOf(const Change& change) const
    {
        const auto found = isComing(change) || isGoing(change) ? sheetPlaces.find(std::pair(change.old, change.fresh))
                                                               : sheetPlaces.end();
        return found == sheetPlaces.end() ? -1 : static_cast<std::int64_t>(found->second);
    }

    [[nodiscard]] std::string wordsOf(const Change& change, std::uint32_t around) const
    {
        if (isView(change))
            return change.view + ' ' + compare::detailOf(change);
        const Snapshot& state = isGoing(change) ? states.before : states.after;
        const reader::Object& object = compare::objectOf(states, change);
        if (isComing(change) || isGoing(change))
            return compare::descriptionOf(state, object);
        if (change.fresh == around)
            return compare::detailOf(change);
        return compare::headlineOf(state, object) + ": " + compare::detailOf(change);
    }

    void writeDiagram(text::JsonWriter& json, const ChangedDiagram& diagram) const
    {
        const bool isGone = diagram.fresh == nobody;
        const Snapshot& state = isGone ? states.before : states.after;
        const std::uint32_t node = isGone ? diagram.old : diagram.fresh;
        using enum PairField;
        json.beginList();
        FieldWriter<PairField>(json)
            .add<title>(state.path(node))
            .add<icon>(kindOf(*state[node].object).icon)
            .add<sort>(sortOf(diagram.old, diagram.fresh))
            .add<lines>([&] { writeLines(json, diagram.changes, diagram.fresh); })
            .add<before>(diagram.old == nobody ? 0 : 1)
            .add<after>(isGone ? 0 : 1)
            .add<marksBefore>([&] { writeMarks(json, diagram.before); })
            .add<marksAfter>([&] { writeMarks(json, diagram.after); });
        json.endList();
    }

    // [VIEW, SORT, VIEW, SORT ...]
    static void writeMarks(text::JsonWriter& json, const Marks& marks)
    {
        json.beginList();
        for (const auto& [view, sort] : marks)
            json.value(std::uint64_t{view}).value(static_cast<std::uint64_t>(sort));
        json.endList();
    }

    void writePictures(const Snapshot& state, const std::string& prefix, std::uint32_t ChangedDiagram::*side) const
    {
        std::unordered_map<const reader::Object*, const reader::Diagram*> byObject;
        for (const reader::Diagram& diagram : state.index().diagrams())
            byObject.emplace(diagram.object, &diagram);
        for (std::size_t i = 0; i < diagrams.size(); ++i) {
            const std::uint32_t node = diagrams[i].*side;
            const auto found = node == nobody ? byObject.end() : byObject.find(state[node].object);
            if (found == byObject.end() || !options.picture)
                continue;
            sink("<script type=\"text/plain\" id=\"" + prefix + std::to_string(i) + "\">");
            pack(options.picture(state, *found->second), sink);
            sink("</script>\n");
        }
    }

    const compare::Comparison& states;
    const ChangesPageOptions& options;
    const Sink& sink;
    std::vector<ChangedSheet> sheets;
    std::vector<ChangedDiagram> diagrams;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> sheetPlaces;
};

} // namespace

void writeChangesPage(const compare::Comparison& states, const std::vector<Change>& changes,
                      const ChangesPageOptions& options, const Sink& sink)
{
    ChangesPage(states, changes, options, sink).write();
}

} // namespace browse
