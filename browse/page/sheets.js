// Sheets, and the overview of the model.

const columnsOf = (list, makeItem) => limited(make("ul", { class: "links in-columns" }), list, makeItem);

function diagramsSection(title, list, isPrinted, shown) {
  if (!list || list.length === 0) return "";
  return section(title, ...(isPrinted ? columnsOf(list, (each) => linkItem(each)) : cards(list, wordOf, shown)));
}

function plural(word) {
  let text = word + (/(s|x|ch)$/.test(word) ? "es" : "s");
  if (/[^aeiou]y$/.test(word)) text = word.slice(0, -1) + "ies";
  return text[0].toUpperCase() + text.slice(1);
}

// The first sentence of what is written about an element.
function summaryOf(element) {
  const text = (detailsOf(element).documentation || "").trim();
  const [sentence] = /^[\s\S]*?(?:[.!?](?=\s)|\n|$)/.exec(text);
  return sentence.length > 120 ? sentence.slice(0, 119).trim() + "\u2026" : sentence.trim();
}

function contentsSections(children) {
  const byWord = new Map();
  for (const child of children) addTo(byWord, wordOf(child), child);
  const item = (each) => {
    const link = linkItem(each);
    if (summaryOf(each)) link.append(noteOf(summaryOf(each)));
    return link;
  };
  const isTold = (list) => list.some(summaryOf);
  const listOf = (list) =>
    (isTold(list) ? limited(make("ul", { class: "links" }), list, item) : columnsOf(list, item));
  return [...byWord].map(([word, list]) => section(plural(word), ...listOf(list)));
}

// On paper there are links in place of pictures, and no properties of tools.
function sheetOf(element, isPrinted = false) {
  const { missing, parameters, ends, tools } = detailsOf(element);
  const children = sortedChildren(element);
  const features = (word) => children.filter((child) => wordOf(child) === word);
  const isEnumeration = literals().has(element);
  const [attributes, operations] = [isEnumeration ? [] : features("attribute"), features("operation")];
  const isOwn = (child) => ![Group.diagram, Group.feature].includes(groupOf(child)) && !isRelation(child);
  const others = children.filter(isOwn);
  return make("article", { class: "sheet" },
    trail(element), heading(element), sortLine(element),
    missing ? make("p", { class: "warning", dir: "auto" }, "Not loaded: " + missing) : "",
    documentation(element),
    isEnumeration ? literalsSection(literals().get(element)) : "",
    attributes.length ? attributesSection(attributes) : "",
    operations.length ? operationsSection(operations) : "",
    parameters ? parametersSection(parameters) : "",
    ends ? endsSection(ends) : "",
    neighboursSection(element),
    relationsSection(element),
    diagramsSection("Diagrams", children.filter((child) => groupOf(child) === Group.diagram), isPrinted),
    diagramsSection("Shown in", shownIn().get(element), isPrinted, element),
    ...contentsSections(others),
    propertiesSection(element),
    tools === undefined || isPrinted ? "" : toolsSection(tools));
}

const figureOrder = ["package", "class", "enumeration", "use case", "association", "diagram"];
const countedTogether = {
  [Group.diagram]: "diagram",
  [Group.behavior]: "behaviour item",
  [Group.relation]: "relation",
};
const countedAs = (element) => {
  const word = wordOf(element);
  return (figureOrder.includes(word) ? word : countedTogether[groupOf(element)]) || word;
};

// Where a figure leads: to the first element that it counts, and of the diagrams to one that shows something.
function figureLink(word, content) {
  const isIt = (element) => element > 0 && countedAs(element) === word;
  const drawn = word === "diagram" ? [...diagramOf().keys()].find((each) => !isEmpty(each)) : undefined;
  const target = drawn ?? elements.findIndex((each, element) => isIt(element));
  return target > 0 ? make("a", { href: addressOf(target) }, ...content) : make("div", {}, ...content);
}

// Numbers of elements, in the order in which a model is read; some groups are counted as one.
function figures() {
  const counts = new Map();
  for (let element = isUnit ? 0 : 1; element < elements.length; ++element) {
    const word = countedAs(element);
    if (word !== "view") counts.set(word, (counts.get(word) || 0) + 1);
  }
  const named = (word, count) => (count === 1 ? word : plural(word).toLowerCase());
  const rankOf = (word) => (figureOrder.includes(word) ? figureOrder.indexOf(word) : figureOrder.length);
  const sorted = [...counts].sort(([a, m], [b, n]) => rankOf(a) - rankOf(b) || n - m);
  return make("ul", { class: "figures" }, ...sorted.map(([word, count]) => make("li", {}, figureLink(word,
    [make("b", {}, count.toLocaleString("en")), make("span", {}, named(word, count))]))));
}

const mostTogether = 12; // diagrams of different kinds

function allDiagrams() {
  const all = [...diagramOf().keys()];
  const drawn = all.filter((element) => !isEmpty(element));
  const byWord = new Map();
  for (const element of drawn) addTo(byWord, wordOf(element), element);
  const empty = all.filter(isEmpty);
  if (all.length === 0) return "";
  const emptyItem = (element) => {
    const item = linkItem(element);
    item.append(noteOf(nameOf(parentOf(element))));
    return item;
  };
  const ownerOf = (each) => nameOf(parentOf(each));
  const groups = drawn.length > mostTogether || byWord.size < 2 ?
    [...byWord].flatMap(([word, list]) => [make("h3", {}, plural(word)), ...cards(list, ownerOf)]) :
    cards([...byWord.values()].flat(), (each) => wordOf(each) + " · " + ownerOf(each));
  return section("Diagrams", ...groups,
  ...(empty.length ? [make("h3", {}, "Empty diagrams"), ...columnsOf(empty, emptyItem)] : []));
}

function overview(isPrinted = false) {
  const title = make("div", { class: "head" }, icon("model", "of-diagram"),
    make("h1", { tabindex: "-1", dir: "auto" }, model.title));
  const missing = table([
    ["File", "", (each) => [reference(each[MissingField.file], each[MissingField.stub])]],
    ["Reason", "", (each) => [each[MissingField.reason]]],
  ], model.missing);
  const files = table([
    ["File", "", (each) => [each[FileField.name]]],
    ["Petal version", "", (each) => [each[FileField.version]]],
    ["Encoding", "", (each) => [each[FileField.encoding]]],
    ["Written by", "", (each) => [each[FileField.writtenBy]]],
  ], model.files);
  const faults = table([
    ["Where", "", (each) => [each[FaultField.place]]],
    ["What", "", (each) => [each[FaultField.text]]],
  ], model.faults);
  return make("article", { class: "sheet" }, title, documentation(0),
    model.faults.length ? section("Faults of the file", ...faults) : "", figures(),
    isPrinted ? "" : allDiagrams(),
    model.missing.length ? section("Units that are not loaded", ...missing) : "",
    section("Files", ...files),
    detailsOf(0).properties === undefined ? "" : propertiesSection(0),
    detailsOf(0).tools === undefined || isPrinted ? "" : toolsSection(detailsOf(0).tools));
}
