// Parts of sheets.

const heading = (element) => make("div", { class: "head" }, iconOf(element),
  make("h1", { tabindex: "-1", dir: "auto" }, nameOf(element)), copyButton(element));

function trail(element) {
  const links = ancestorsOf(element).map((each) => make("li", {}, linkTo(each)));
  if (links.length === 0) return "";
  return make("nav", { class: "path", "aria-label": "Path" }, make("ol", { class: "trail" }, ...links));
}

function sortLine(element) {
  const { stereotype } = detailsOf(element);
  return make("p", { class: "sort", dir: "auto" },
    (stereotype ? "\u00ab" + stereotype + "\u00bb " : "") + wordOf(element));
}

function documentation(element) {
  const text = detailsOf(element).documentation;
  return text ? make("div", { class: "documentation", dir: "auto" }, text) : "";
}

// A column is [TITLE, CLASS, what it says of an item: a list of texts and links]; one that says nothing is left out.
function table(columns, items) {
  const isUsed = ([, , contentOf]) => items.some((item) => contentOf(item).some(Boolean));
  const used = columns.filter(isUsed);
  const makeCell = (item) => ([, type, contentOf]) => make("td", { class: type, dir: "auto" }, ...contentOf(item));
  const [body, ...more] = limited(make("tbody"), items, (item) => make("tr", {}, ...used.map(makeCell(item))));
  const head = used.map(([title]) => make(title ? "th" : "td", title ? { scope: "col" } : {}, title));
  return [make("table", {}, make("thead", {}, make("tr", {}, ...head)), body), ...more];
}

function labelTable(rows) {
  const makeRow = ([label, ...content]) =>
    make("tr", {}, make("th", { scope: "row" }, label), make("td", { dir: "auto" }, ...content));
  const [body, ...more] = limited(make("tbody"), rows, makeRow);
  return [make("table", {}, body), ...more];
}

const reference = (text, target) => (target >= 0 ? linkTo(target, text || nameOf(target)) : text);
const linkItem = (element, shown) => make("li", {}, iconOf(element), linkTo(element, nameOf(element), shown));
const noteOf = (text) => make("span", { class: "note", dir: "auto" }, text);

const reasons = {
  [ReferenceState.unloaded]: "(in a unit that is not loaded)",
  [ReferenceState.missing]: "(not in the file)",
};
const unresolved = (state) => (reasons[state] ? make("span", { class: "note" }, reasons[state]) : "");

function typeText(element) {
  const { type } = detailsOf(element);
  return type ? reference(type[TypeField.name], type[TypeField.target]) : "";
}

const parameterType = (parameter) => reference(parameter[ParameterField.type], parameter[ParameterField.target]);

const signColumn = ["", "sign", (each) => [detailsOf(each).visibility]];
const documentationColumn = ["Documentation", "words", (each) => [detailsOf(each).documentation]];

const attributesSection = (attributes) => section("Attributes", ...table([
  signColumn,
  ["Name", "", (each) => [linkTo(each)]],
  ["Type", "", (each) => [typeText(each)]],
  ["Initial value", "", (each) => [detailsOf(each).value]],
  documentationColumn,
], attributes));

function signatureParts(element) {
  const { parameters, type } = detailsOf(element);
  const parts = (parameters || []).flatMap((each, i) => {
    const name = each[ParameterField.name];
    const value = each[ParameterField.value];
    return [i ? ", " : "", name, name && each[ParameterField.type] ? " : " : "", parameterType(each),
      value ? " = " + value : ""];
  });
  return [linkTo(element), "(", ...parts, ")", ...(type ? [" : ", typeText(element)] : [])];
}

const operationsSection = (operations) => section("Operations", ...table([
  signColumn,
  ["Signature", "signature", signatureParts],
  documentationColumn,
], operations));

const literalsSection = (list) => section("Literals", ...table([
  ["Name", "", ([name]) => [name]],
  ["Value", "", ([, value]) => [value]],
  ["Documentation", "words", ([, , words]) => [words]],
], list));

const parametersSection = (parameters) => section("Parameters", ...table([
  ["Name", "", (each) => [each[ParameterField.name]]],
  ["Type", "", (each) => [parameterType(each)]],
  ["Default", "", (each) => [each[ParameterField.value]]],
  ["Documentation", "words", (each) => [each[ParameterField.documentation]]],
], parameters));

const endsSection = (ends) => section("Ends", ...table([
  ["Class", "", (each) =>
    [reference(each[EndField.name], each[EndField.target]), " ", unresolved(each[EndField.state])]],
  ["Role", "", (each) => [each[EndField.role]]],
  ["Multiplicity", "", (each) => [each[EndField.multiplicity]]],
  ["Properties", "", (each) => [each[EndField.flags]]],
  ["Documentation", "words", (each) => [each[EndField.documentation]]],
], ends));

function propertiesSection(element) {
  const { properties, type, to } = detailsOf(element);
  const rows = [["Full name", fullName(element)], ...(model.shared[properties] || [])];
  if (type) rows.unshift([forwardOf(element), typeText(element)]);
  if (isRelation(element) && to)
    rows.unshift(["To", reference(targetName(to), to[TargetField.target]), " ", unresolved(to[TargetField.state])]);
  if (isRelation(element)) rows.unshift(["From", linkTo(parentOf(element))]);
  return section("Properties", ...labelTable(rows));
}

const toolsSection = (tools) => section("Tool properties", ...model.shared[tools].map(([tool, rows]) =>
  make("details", {}, make("summary", { dir: "auto" }, tool || "(no tool)"), ...labelTable(rows))));
