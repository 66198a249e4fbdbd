// The page of changes.

byId("states").textContent = data.old + " \u2192 " + data.new;

// What is told of an element or a diagram, with a link to where it is shown.
function listItem(id, title, image, sort, lines) {
  const link = make("a", { href: "#" + id, dir: "auto" }, title);
  const textOf = (line) => (line[LineField.sheet] < 0 ? make("span", { dir: "auto" }, line[LineField.text])
    : make("a", { href: "#sheet-" + line[LineField.sheet], dir: "auto" }, line[LineField.text]));
  const items = shownLines(lines).map((line) => make("li", { class: classOf(line[LineField.sort]) },
    markOf(line[LineField.sort]), textOf(line)));
  return make("li", { class: classOf(sort) }, sort === RowSort.changed ? "" : markOf(sort), image, link,
    items.length ? make("ul", {}, ...items) : "");
}

function shownParts() {
  const sheets = data.sheets.map((sheet, index) => ({ sheet, index })).filter(({ sheet }) =>
    isPartShown(sheet[SheetField.lines], sheet[SheetField.sort], sheet[SheetField.title]));
  const pairs = data.diagrams.map((pair, index) => ({ pair, index })).filter(({ pair }) =>
    isPartShown(pair[PairField.lines], pair[PairField.sort], "diagram"));
  return { sheets, pairs };
}

function listSection(sheets, pairs) {
  const items = [
    ...sheets.filter(({ sheet }) => sheet[SheetField.lines].length > 0).map(({ sheet, index }) => () =>
      listItem("sheet-" + index, sheet[SheetField.title], sheetIcon(sheet), sheet[SheetField.sort],
        sheet[SheetField.lines])),
    ...pairs.map(({ pair, index }) => () => listItem("diagram-" + index, "diagram " + pair[PairField.title],
      icon(pair[PairField.icon], "of-diagram"), pair[PairField.sort], pair[PairField.lines])),
  ];
  return section("All changes", ...limited(make("ul", { class: "all" }), items, (makeItem) => makeItem()));
}

function update() {
  const { sheets, pairs } = shownParts();
  const title = make("h1", { dir: "auto" }, "What is different");
  const parts = [...sheets.map(({ sheet, index }) => () => sheetSection(sheet, index)),
    ...pairs.map(({ pair, index }) => () => pairSection(pair, index))];
  const isEmpty = data.sheets.length + data.diagrams.length === 0;
  const words = isEmpty ? "Nothing is different." : "Nothing of that kind is different.";
  byId("main").replaceChildren(make("article", { class: "sheet" }, title,
    ...(parts.length === 0 ? [make("p", { class: "message" }, words)]
      : [listSection(sheets, pairs), ...limited(make("div"), parts, (makePart) => makePart())])));
}

// Links lead to parts that are brought on demand, too.
addEventListener("hashchange", () => {
  if (byId(location.hash.slice(1))) return;
  document.querySelectorAll("div + .more").forEach((button) => button.click());
  byId(location.hash.slice(1))?.scrollIntoView();
});

addFilters(update);
update();
