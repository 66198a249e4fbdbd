// The changes, and which of them are shown.

const data = JSON.parse(await unpacked("model"));
byId("model").remove();

const sorts = [
  { name: "added", sign: "+", word: "new" },
  { name: "removed", sign: "\u2212", word: "gone" },
  { name: "changed", sign: "~", word: "changed" },
  { name: "moved", sign: "\u2192", word: "moved" },
  { name: "same", sign: "", word: "the same" },
];
const hiddenSorts = new Set();
let shownKind = ""; // all of them

const markOf = (sort) => make("span", { class: "mark", role: sort === RowSort.same ? undefined : "img",
  "aria-label": sort === RowSort.same ? undefined : sorts[sort].word, title: sorts[sort].word }, sorts[sort].sign);
const classOf = (sort) => "is-" + sorts[sort].name;

const allLines = () => [...data.sheets.flatMap((sheet) => sheet[SheetField.lines]),
  ...data.diagrams.flatMap((pair) => pair[PairField.lines])];

const isShown = (line) =>
  !hiddenSorts.has(line[LineField.sort]) && (!shownKind || line[LineField.kind] === shownKind);

// An element is shown with its changes; one that came or went is told by its owner.
const shownLines = (lines) => lines.filter(isShown);
function isPartShown(lines, sort, title) {
  if (lines.length > 0) return lines.some(isShown);
  return !hiddenSorts.has(sort) && title.startsWith(shownKind);
}

function addFilters(update) {
  const counts = sorts.map((_, sort) => allLines().filter((line) => line[LineField.sort] === sort).length);
  const buttons = sorts.flatMap(({ word }, sort) => {
    if (counts[sort] === 0) return [];
    const button = make("button", { type: "button", class: classOf(sort), "aria-pressed": "true", onclick: () => {
      const isOn = hiddenSorts.delete(sort);
      if (!isOn) hiddenSorts.add(sort);
      button.setAttribute("aria-pressed", String(isOn));
      update();
    } }, make("span", { class: "mark", "aria-hidden": "true" }, sorts[sort].sign), counts[sort] + " " + word);
    return [button];
  });
  const kinds = [...new Set(allLines().map((line) => line[LineField.kind]))].sort();
  const choice = make("select", { "aria-label": "Kind" }, make("option", { value: "" }, "all kinds"),
    ...kinds.map((kind) => make("option", { value: kind }, kind)));
  choice.addEventListener("change", () => {
    shownKind = choice.value;
    update();
  });
  byId("filters").append(...buttons, kinds.length > 1 ? choice : "");
}
