// Sheets side by side.

const fewSame = 4; // lines in a row that are the same are shown, more of them on demand

// The texts with the part marked in which they differ.
function markedSides(before, after) {
  if (!before || !after || before === after) return [[before], [after]];
  const [one, other] = [Array.from(before), Array.from(after)];
  const most = Math.min(one.length, other.length);
  let start = 0;
  while (start < most && one[start] === other[start]) ++start;
  let end = 0;
  while (end < most - start && one[one.length - 1 - end] === other[other.length - 1 - end]) ++end;
  return [one, other].map((text) => {
    const middle = text.slice(start, text.length - end).join("");
    const ending = end > 0 ? text.slice(-end).join("") : "";
    return [text.slice(0, start).join(""), middle ? make("mark", {}, middle) : "", ending];
  });
}

function rowOf(row) {
  const sort = row[RowField.sort];
  const [before, after] = markedSides(row[RowField.before], row[RowField.after]);
  return make("tr", { class: classOf(sort) + (row[RowField.isInside] ? " is-inside" : "") },
    make("td", { class: "mark-cell" }, markOf(sort)),
    make("td", { class: "label", dir: "auto" }, row[RowField.label]),
    make("td", { class: "before", dir: "auto" }, ...before),
    make("td", { class: "after", dir: "auto" }, ...after));
}

function sameRows(rows) {
  if (rows.length <= fewSame) return rows.map(rowOf);
  const button = make("button", { type: "button", onclick: () => folded.replaceWith(...rows.map(rowOf)) },
    "\u22ef " + rows.length + " lines that are the same");
  const folded = make("tr", { class: "unchanged" }, make("td", { colspan: "4" }, button));
  return [folded];
}

function sideRows(rows) {
  const result = [];
  let same = [];
  const flush = () => {
    result.push(...sameRows(same));
    same = [];
  };
  for (const row of rows) {
    if (row[RowField.sort] === RowSort.same) {
      same.push(row);
    } else if (!hiddenSorts.has(row[RowField.sort])) {
      flush();
      result.push(rowOf(row));
    }
  }
  flush();
  return result;
}

const sheetIcon = (sheet) => icon(sheet[SheetField.icon], "of-" + Object.keys(Group)[sheet[SheetField.group]]);

function sheetSection(sheet, index) {
  const title = sheet[SheetField.title];
  const sort = sheet[SheetField.sort];
  const head = [make("td", { class: "sign-column" }), make("td", { class: "label-column" }),
    ...[data.old, data.new].map((name) => make("th", { scope: "col", dir: "auto" }, name))];
  return make("section", { class: "changed " + classOf(sort), id: "sheet-" + index, "aria-label": title },
    make("h2", {}, sort === RowSort.changed ? "" : markOf(sort), sheetIcon(sheet),
      make("span", { dir: "auto" }, title)),
    sheet[SheetField.owner] ? make("p", { class: "note", dir: "auto" }, "in " + sheet[SheetField.owner]) : "",
    make("table", { class: "sides" }, make("thead", {}, make("tr", {}, ...head)),
      make("tbody", {}, ...sideRows(sheet[SheetField.rows]))));
}
