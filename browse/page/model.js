// The model: its elements, what they are called and what belongs to what. The places of what its lists say are named as
// in the program that writes them.

const model = JSON.parse(await unpacked("model"));
byId("model").remove();

const { elements, kinds, diagrams } = model;
const groupNames = Object.keys(Group);
const collator = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });

const kindOf = (element) => kinds[elements[element][ElementField.kind]];
const wordOf = (element) => (literals().has(element) ? "enumeration" : kindOf(element)[KindField.word]);
const groupOf = (element) => kindOf(element)[KindField.group];
const forwardOf = (element) => kindOf(element)[KindField.forward];
const isRelation = (element) => kindOf(element)[KindField.isRelation] === 1;
const detailsOf = (element) => elements[element][ElementField.details];
const parentOf = (element) => elements[element][ElementField.parent];
const givenName = (element) => elements[element][ElementField.name]; // empty when it has none
const isUnit = elements[0][ElementField.id] !== "model"; // a package by itself, which is in the tree

function once(work) {
  let result;
  let isDone = false;
  return () => {
    if (!isDone) result = work();
    isDone = true;
    return result;
  };
}

// "enum Colour {red=0, blue='B'}": [name, value] of each literal.
function literalsInText(text) {
  const [, list] = /^\s*enum\b[^{]*\{([\s\S]*)\}/.exec(text) || [];
  if (list === undefined) return [];
  return [...list.matchAll(/([^=,]+)(?:=\s*('[^']*'|"[^"]*"|[^,]*))?(?:,|$)/g)]
    .map(([, name, value]) => [name.trim(), (value || "").trim()]).filter(([name]) => name);
}

// The literals of enumerations: classes say by their stereotype that their attributes are such, or have them as a
// text among the properties of a tool.
const literals = once(() => {
  const result = new Map();
  const lists = model.shared.map((list) => (list || []).flatMap(([, rows]) => (Array.isArray(rows) ? rows : [])
    .flatMap(([name, text]) => (name === "ImplementationType" ? literalsInText(text) : []))));
  elements.forEach((each, element) => {
    if (groupOf(element) !== Group.classifier) return;
    const { stereotype, tools } = detailsOf(element);
    if (/^enum(eration)?$/i.test(stereotype || "")) {
      const attributes = childrenOf(element).filter((child) => groupOf(child) === Group.feature);
      const rowOf = (child) => [givenName(child), detailsOf(child).value || "", detailsOf(child).documentation || ""];
      result.set(element, attributes.map(rowOf));
    } else if (tools !== undefined && lists[tools].length > 0) result.set(element, lists[tools]);
  });
  return result;
});

// Children of all elements, one list behind the other.
const childLists = (() => {
  const starts = new Int32Array(elements.length + 2);
  for (let element = 1; element < elements.length; ++element) ++starts[parentOf(element) + 2];
  for (let element = 2; element < starts.length; ++element) starts[element] += starts[element - 1];
  const places = new Int32Array(elements.length);
  for (let element = 1; element < elements.length; ++element) places[starts[parentOf(element) + 1]++] = element;
  return { starts, places };
})();
const hasChildren = (element) => childLists.starts[element] < childLists.starts[element + 1];
const childrenOf = (element) =>
  Array.from(childLists.places.subarray(childLists.starts[element], childLists.starts[element + 1]));

// Diagrams, packages, classes and so on, each by name; what has an order of its own keeps it.
function sortedChildren(element) {
  const children = childrenOf(element);
  if (element === 0 && !isUnit) return children;
  const hasOrder = (child) => [Group.behavior, Group.feature].includes(groupOf(child));
  return children.sort(
    (a, b) => groupOf(a) - groupOf(b) || (hasOrder(a) ? a - b : collator.compare(nameOf(a), nameOf(b))) || a - b);
}

// What has no name is called by what it leads to, which may have none either.
function nameAtDepth(element, depth) {
  if (givenName(element)) return givenName(element);
  if (element === 0) return model.title;
  const { ends, to } = detailsOf(element);
  if (ends) return ends.map((end) => end[EndField.name] || "?").join(" \u2013 ");
  if (!to || depth === 3) return "(" + wordOf(element) + ")";
  return (isRelation(element) ? forwardOf(element) + " " : ": ") + targetName(to, depth + 1);
}
function targetName({ [TargetField.name]: name, [TargetField.target]: target }, depth = 0) {
  return target >= 0 ? nameAtDepth(target, depth) : name || "?";
}
const nameOf = (element) => nameAtDepth(element, 0);

// What stands behind the name of an attribute or operation.
function signatureOf(element) {
  if (groupOf(element) !== Group.feature) return "";
  const { type, value, parameters } = detailsOf(element);
  const wordsOf = (each) => [each[ParameterField.name], each[ParameterField.type]].filter(Boolean).join(" : ") +
    (each[ParameterField.value] ? " = " + each[ParameterField.value] : "");
  const list = (parameters || []).map(wordsOf).join(", ");
  return (wordOf(element) === "operation" ? "(" + list + ")" : "") +
    (type ? " : " + type[TypeField.name] : "") + (value ? " = " + value : "");
}

// Those around an element, the outermost first; the whole model is none of them.
function ancestorsOf(element) {
  const ancestors = [];
  for (let each = element; each !== 0;) {
    each = parentOf(each);
    if (each !== 0 || isUnit) ancestors.unshift(each);
  }
  return ancestors;
}

function fullName(element) {
  const named = ancestorsOf(element).filter(givenName);
  return [...named, element].map(nameOf).join("::");
}
const elementById = once(() => new Map(elements.map((each, element) => [each[ElementField.id], element])));
const diagramOf = once(() => new Map(diagrams.map((each, number) => [each[DiagramField.element], number])));

function addTo(map, key, value) {
  const list = map.get(key);
  if (!list) map.set(key, [value]);
  else if (list[list.length - 1] !== value) list.push(value);
}

// What refers to each element.
const referrers = once(() => {
  const result = new Map();
  const add = (target, from) => {
    if (target >= 0) addTo(result, target, from);
  };
  elements.forEach((each, element) => {
    const { to, type, parameters, ends } = each[ElementField.details];
    if (to) add(to[TargetField.target], element);
    if (type) add(type[TypeField.target], element);
    for (const parameter of parameters || []) add(parameter[ParameterField.target], element);
    for (const end of ends || []) add(end[EndField.target], element);
  });
  return result;
});

// The diagrams that each element is shown in.
const shownIn = once(() => {
  const result = new Map();
  diagrams.forEach(({ [DiagramField.element]: element, [DiagramField.items]: items }) => {
    for (let i = 1; i < items.length; i += 2) if (items[i] !== element) addTo(result, items[i], element);
  });
  return result;
});

function iconOf(element) {
  const name = literals().has(element) ? "enumeration" : kindOf(element)[KindField.icon];
  const stereotype = (detailsOf(element).stereotype || "").toLowerCase();
  const special = name === "class" && ["actor", "interface"].includes(stereotype) ? stereotype : name;
  return icon(special, "of-" + groupNames[groupOf(element)]);
}
