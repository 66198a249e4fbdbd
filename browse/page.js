"use strict";
// Shows the model of the page. Whatever comes from the model gets into the page as text only.
(() => {
  const holder = document.getElementById("model");
  const model = JSON.parse(holder.textContent);
  holder.remove();

  const { elements, kinds, diagrams } = model;
  const [KIND, PARENT, NAME, ID, DETAILS] = [0, 1, 2, 3, 4];
  const groups = ["diagram", "package", "classifier", "feature", "behavior", "relation"];
  const [DIAGRAM, FEATURE, BEHAVIOR, RELATION] = [0, 3, 4, 5];
  const referenceStates = ["", "", "in a unit that is not loaded", "not in the file"];
  const rowHeight = 26;
  const mostResults = 100;
  const mostSorted = 5000; // of alike results
  const mostLinks = 200;
  const mostEnds = 100; // of an association, which has two
  const byId = (id) => document.getElementById(id);
  const collator = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });

  // --- Making elements of the page ---

  function make(tag, properties = {}, ...content) {
    const node = document.createElement(tag);
    for (const [key, value] of Object.entries(properties)) {
      if (key === "class") node.className = value;
      else if (key === "onclick") node.addEventListener("click", value);
      else if (value !== undefined) node.setAttribute(key, value);
    }
    node.append(...content.filter((part) => part !== "" && part !== undefined));
    return node;
  }

  function icon(name, extra = "") {
    const namespace = "http://www.w3.org/2000/svg";
    const svg = document.createElementNS(namespace, "svg");
    svg.setAttribute("class", "icon " + extra);
    svg.setAttribute("aria-hidden", "true");
    const use = document.createElementNS(namespace, "use");
    use.setAttribute("href", "#icon-" + name);
    svg.append(use);
    return svg;
  }

  // --- The model ---

  const kindOf = (element) => kinds[elements[element][KIND]];
  const wordOf = (element) => kindOf(element)[0];
  const groupOf = (element) => kindOf(element)[2];
  const isRelation = (element) => kindOf(element)[5] === 1;
  const detailsOf = (element) => elements[element][DETAILS];
  const parentOf = (element) => elements[element][PARENT];
  const isUnit = elements[0][ID] !== "model"; // a package by itself, which is in the tree

  function once(work) {
    let result;
    let isDone = false;
    return () => {
      if (!isDone) result = work();
      isDone = true;
      return result;
    };
  }

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
    const hasOrder = (child) => [BEHAVIOR, FEATURE].includes(groupOf(child));
    return children.sort(
      (a, b) => groupOf(a) - groupOf(b) || (hasOrder(a) ? a - b : collator.compare(nameOf(a), nameOf(b))) || a - b);
  }

  // What has no name is called by what it leads to, which may have none either.
  function nameAtDepth(element, depth) {
    const name = elements[element][NAME];
    if (name) return name;
    if (element === 0) return model.title;
    const { ends, to } = detailsOf(element);
    if (ends) return ends.map((end) => end[2] || "?").join(" \u2013 ");
    if (!to || depth === 3) return "(" + wordOf(element) + ")";
    return (isRelation(element) ? kindOf(element)[3] + " " : ": ") + targetName(to, depth + 1);
  }
  const targetName = ([text, target], depth = 0) => (target >= 0 ? nameAtDepth(target, depth) : text || "?");
  const nameOf = (element) => nameAtDepth(element, 0);

  // What stands behind the name of an attribute or operation.
  function signatureOf(element) {
    if (groupOf(element) !== FEATURE) return "";
    const { type, value, parameters } = detailsOf(element);
    const list = (parameters || []).map(([name, text]) => [name, text].filter(Boolean).join(" : ")).join(", ");
    return (wordOf(element) === "operation" ? "(" + list + ")" : "") +
      (type ? " : " + type[0] : "") + (value ? " = " + value : "");
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
    const named = ancestorsOf(element).filter((each) => elements[each][NAME]);
    return [...named, element].map(nameOf).join("::");
  }
  const elementById = once(() => new Map(elements.map((each, element) => [each[ID], element])));
  const diagramOf = once(() => new Map(diagrams.map(([element], number) => [element, number])));

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
    elements.forEach(([, , , , details], element) => {
      if (details.to) add(details.to[1], element);
      if (details.type) add(details.type[1], element);
      for (const parameter of details.parameters || []) add(parameter[2], element);
      for (const end of details.ends || []) add(end[3], element);
    });
    return result;
  });

  // The diagrams that each element is shown in.
  const shownIn = once(() => {
    const result = new Map();
    diagrams.forEach(([element, items]) => {
      for (let i = 1; i < items.length; i += 2) if (items[i] !== element) addTo(result, items[i], element);
    });
    return result;
  });

  function iconOf(element) {
    const [, name, group] = kindOf(element);
    const stereotype = (detailsOf(element).stereotype || "").toLowerCase();
    const special = name === "class" && ["actor", "interface"].includes(stereotype) ? stereotype : name;
    return icon(special, "of-" + groups[group]);
  }

  // --- Addresses: #Name~ID, and #Name~ID@ID for a diagram with an element in it ---

  const encoded = (text) => encodeURIComponent(text).replaceAll("~", "%7E").replaceAll("'", "%27");

  function addressOf(element, shown) {
    if (element === 0 && !isUnit) return "#";
    const name = Array.from(nameOf(element).trim().replace(/[\s/]+/g, "-")).slice(0, 40).join("");
    const at = shown === undefined ? "" : "@" + encoded(elements[shown][ID]);
    return "#" + encoded(name) + "~" + encoded(elements[element][ID]) + at;
  }

  function decoded(text) {
    try {
      return decodeURIComponent(text);
    } catch {
      return text;
    }
  }

  // [element, element shown in it]; undefined for what is not in this model.
  function placeOfAddress() {
    const address = location.hash.slice(1);
    if (!address) return [0];
    const [id, shown] = address.slice(address.lastIndexOf("~") + 1).split("@").map(decoded);
    return [elementById().get(id), shown === undefined ? undefined : elementById().get(shown)];
  }

  const focusTitle = () => document.querySelector("main h1")?.focus({ preventScroll: true });

  function goTo(element) {
    const address = addressOf(element);
    if (location.hash === address) focusTitle(); // it is there already
    else location.hash = address;
  }

  const linkTo = (element, text = nameOf(element), shown = undefined) =>
    make("a", { href: addressOf(element, shown), dir: "auto" }, text);

  // --- The tree ---

  const tree = (() => {
    const box = byId("tree");
    const holder = byId("rows");
    const expanded = new Set([0]);
    let rows = [];
    let active = 0; // a row
    let selected = 0; // an element
    let typed = "";
    let typedAt = 0;

    function addRowsBelow(target, element, level) {
      const children = sortedChildren(element);
      children.forEach((child, i) => {
        target.push({ element: child, level, position: i + 1, size: children.length });
        if (expanded.has(child)) addRowsBelow(target, child, level + 1);
      });
      return target;
    }

    const setHeight = () => {
      holder.style.height = rows.length * rowHeight + "px";
    };

    function rebuild() {
      rows = isUnit ? [{ element: 0, level: 1, position: 1, size: 1 }] : [];
      if (expanded.has(0)) addRowsBelow(rows, 0, isUnit ? 2 : 1);
      setHeight();
    }

    function makeRow(index) {
      const { element, level, position, size } = rows[index];
      const opens = hasChildren(element);
      const row = make("div", {
        class: index === active ? "row active" : "row",
        id: "row-" + element,
        role: "treeitem",
        "aria-level": level,
        "aria-posinset": position,
        "aria-setsize": size,
        "aria-selected": String(element === selected),
        "aria-expanded": opens ? String(expanded.has(element)) : undefined,
        "aria-label": wordOf(element) + " " + nameOf(element),
        "data-index": index,
      });
      row.style.top = index * rowHeight + "px";
      row.style.paddingLeft = 6 + (level - 1) * 16 + "px";
      const name = make("span", { class: "row-name", dir: "auto" }, nameOf(element));
      const more = signatureOf(element);
      if (more) name.append(make("span", { class: "row-more" }, more));
      row.append(make("span", { class: "twisty" }, opens ? icon("twisty") : ""), iconOf(element), name);
      return row;
    }

    // Only the rows in sight are in the page, and the active one.
    function draw() {
      const first = Math.max(0, Math.floor(box.scrollTop / rowHeight) - 10);
      const last = Math.min(rows.length, Math.ceil((box.scrollTop + box.clientHeight) / rowHeight) + 10);
      const shown = [];
      for (let index = first; index < last; ++index) shown.push(makeRow(index));
      if (rows.length > 0 && (active < first || active >= last)) shown.push(makeRow(active));
      holder.replaceChildren(...shown);
      if (rows.length > 0) box.setAttribute("aria-activedescendant", "row-" + rows[active].element);
    }

    function setActive(index) {
      active = Math.max(0, Math.min(rows.length - 1, index));
      const top = active * rowHeight;
      if (top < box.scrollTop) box.scrollTop = top;
      else if (top + rowHeight * 2 > box.scrollTop + box.clientHeight)
        box.scrollTop = top + rowHeight * 2 - box.clientHeight;
      draw();
    }

    function setExpanded(index, isExpanded) {
      const { element, level } = rows[index];
      if (!hasChildren(element) || expanded.has(element) === isExpanded) return;
      if (isExpanded) {
        expanded.add(element);
        rows = rows.slice(0, index + 1).concat(addRowsBelow([], element, level + 1), rows.slice(index + 1));
      } else {
        expanded.delete(element);
        let end = index + 1;
        while (end < rows.length && rows[end].level > level) ++end;
        rows.splice(index + 1, end - index - 1);
        if (active > index) active = Math.max(index, active - (end - index - 1));
      }
      setHeight();
      draw();
    }

    function expandBeside(index) {
      const current = rows[index].element;
      for (const element of current === 0 ? [0] : childrenOf(parentOf(current)))
        if (hasChildren(element)) expanded.add(element);
      rebuild();
      setActive(rows.findIndex((row) => row.element === current));
    }

    function typeAhead(letter) {
      const now = performance.now();
      typed = now - typedAt > 800 ? letter : typed + letter;
      typedAt = now;
      for (let step = typed.length > 1 ? 0 : 1; step <= rows.length; ++step) {
        const index = (active + step) % rows.length;
        if (nameOf(rows[index].element).toLowerCase().startsWith(typed)) {
          setActive(index);
          return;
        }
      }
    }

    function left() {
      const row = rows[active];
      if (hasChildren(row.element) && expanded.has(row.element)) {
        setExpanded(active, false);
        return;
      }
      let index = active;
      while (index > 0 && rows[index].level >= row.level) --index;
      if (rows[index].level < row.level) setActive(index);
    }

    function right() {
      const { element } = rows[active];
      if (!hasChildren(element)) return;
      if (expanded.has(element)) setActive(active + 1);
      else setExpanded(active, true);
    }

    const pageStep = () => Math.max(1, Math.floor(box.clientHeight / rowHeight) - 1);
    const keys = {
      ArrowDown: () => setActive(active + 1),
      ArrowUp: () => setActive(active - 1),
      Home: () => setActive(0),
      End: () => setActive(rows.length - 1),
      PageDown: () => setActive(active + pageStep()),
      PageUp: () => setActive(active - pageStep()),
      ArrowLeft: left,
      ArrowRight: right,
      Enter: () => goTo(rows[active].element),
      " ": () => goTo(rows[active].element),
      "*": () => expandBeside(active),
    };

    box.addEventListener("keydown", (event) => {
      if (event.ctrlKey || event.altKey || event.metaKey || rows.length === 0) return;
      if (Object.hasOwn(keys, event.key)) keys[event.key]();
      else if (event.key.length === 1 && event.key !== "/") typeAhead(event.key.toLowerCase());
      else return;
      event.preventDefault();
    });
    box.addEventListener("click", (event) => {
      const row = event.target.closest(".row");
      if (!row) return;
      active = Number(row.dataset.index);
      const { element } = rows[active];
      if (event.target.closest(".twisty") || element === selected) setExpanded(active, !expanded.has(element));
      else goTo(element);
      draw();
    });
    box.addEventListener("scroll", draw);
    new ResizeObserver(draw).observe(box);

    // Opens the tree down to the element.
    function reveal(element) {
      selected = element;
      const closed = ancestorsOf(element).filter((each) => !expanded.has(each));
      closed.forEach((each) => expanded.add(each));
      if (closed.length > 0) rebuild();
      const index = rows.findIndex((row) => row.element === element);
      if (index < 0) {
        draw();
        return;
      }
      const isSeen = index * rowHeight >= box.scrollTop && (index + 2) * rowHeight <= box.scrollTop + box.clientHeight;
      if (!isSeen) box.scrollTop = Math.max(0, (index + 0.5) * rowHeight - box.clientHeight / 3);
      setActive(index);
    }

    rebuild();
    return { reveal, focus: () => box.focus(), hasFocus: () => document.activeElement === box };
  })();

  // --- Parts of sheets ---

  const heading = (element) =>
    make("div", { class: "head" }, iconOf(element), make("h1", { tabindex: "-1", dir: "auto" }, nameOf(element)));

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

  // `holder` with the first of `items`, and a button that brings the others.
  function limited(holder, items, makeItem) {
    holder.append(...items.slice(0, mostLinks).map(makeItem));
    if (items.length <= mostLinks) return [holder];
    const button = make("button", { type: "button", class: "more", onclick: () => {
      holder.append(...items.slice(mostLinks).map(makeItem));
      button.remove();
    } }, "Show all " + items.length);
    return [holder, button];
  }

  const section = (title, ...content) => make("section", { "aria-label": title }, make("h2", {}, title), ...content);

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

  const unresolved = (state) =>
    referenceStates[state] ? make("span", { class: "note" }, "(" + referenceStates[state] + ")") : "";

  const typeText = (element) => (detailsOf(element).type ? reference(...detailsOf(element).type) : "");

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
    const parts = (parameters || []).flatMap(([name, text, target], i) =>
      [i ? ", " : "", name, name && text ? " : " : "", reference(text, target)]);
    return [linkTo(element), "(", ...parts, ")", ...(type ? [" : ", typeText(element)] : [])];
  }

  const operationsSection = (operations) =>
    section("Operations", ...table([signColumn, ["Signature", "", signatureParts], documentationColumn], operations));

  const parametersSection = (parameters) => section("Parameters", ...table([
    ["Name", "", ([name]) => [name]],
    ["Type", "", ([, text, target]) => [reference(text, target)]],
    ["Default", "", ([, , , value]) => [value]],
    ["Documentation", "words", ([, , , , words]) => [words]],
  ], parameters));

  const endsSection = (ends) => section("Ends", ...table([
    ["Class", "", ([, , text, target, state]) => [reference(text, target), " ", unresolved(state)]],
    ["Role", "", ([role]) => [role]],
    ["Multiplicity", "", ([, multiplicity]) => [multiplicity]],
    ["Properties", "", ([, , , , , flags]) => [flags]],
    ["Documentation", "words", ([, , , , , , words]) => [words]],
  ], ends));

  function propertiesSection(element) {
    const { properties, type, to } = detailsOf(element);
    const rows = [["Full name", fullName(element)], ...(model.shared[properties] || [])];
    if (type) rows.unshift([kindOf(element)[3], typeText(element)]);
    if (isRelation(element) && to) rows.unshift(["To", reference(targetName(to), to[1]), " ", unresolved(to[2])]);
    if (isRelation(element)) rows.unshift(["From", linkTo(parentOf(element))]);
    return section("Properties", ...labelTable(rows));
  }

  const toolsSection = (tools) => section("Tool properties", ...model.shared[tools].map(([tool, rows]) =>
    make("details", {}, make("summary", { dir: "auto" }, tool || "(no tool)"), ...labelTable(rows))));

  // --- Relations of an element, both ways ---

  // An association as seen from each of its ends that is `element`.
  function associationRows(element, association) {
    const ends = detailsOf(association).ends.slice(0, mostEnds);
    const words = ([role, multiplicity]) => [role, multiplicity].filter(Boolean).join(" ");
    const isSeen = (own, i, other, k) => own[3] === element && k !== i && (other[3] !== element || k > i);
    return ends.flatMap((own, i) => ends.filter((other, k) => isSeen(own, i, other, k)).map((other) => {
      const note = [words(other), words(own) && "(this: " + words(own) + ")"].filter(Boolean).join(" ");
      const [, , text, target, state] = other;
      return { phrase: kindOf(association)[3], text, target, state, via: association, note };
    }));
  }

  function rowsTo(element) {
    const relations = childrenOf(element).filter(isRelation);
    return [...(isRelation(element) ? [] : [element]), ...relations].filter((via) => detailsOf(via).to).map((via) => {
      const [, target, state] = detailsOf(via).to;
      const text = targetName(detailsOf(via).to);
      return { phrase: kindOf(via)[3], text, target, state, via: via === element ? -1 : via };
    });
  }

  const placeOf = (element) => elements[ancestorsOf(element).findLast((each) => elements[each][NAME]) ?? 0][NAME];

  function rowsFrom(element) {
    return (referrers().get(element) || []).flatMap((from) => {
      const { ends, to, type, parameters } = detailsOf(from);
      const inClass = { text: nameOf(parentOf(from)) + "." + nameOf(from), target: from, via: -1 };
      const backward = kindOf(from)[4];
      const isParameter = (parameters || []).some((parameter) => parameter[2] === element);
      const rows = ends ? associationRows(element, from) : [];
      if (to && to[1] === element)
        rows.push(isRelation(from)
          ? { phrase: backward, target: parentOf(from), via: from }
          : { phrase: backward, target: from, via: -1, note: "in " + placeOf(from) });
      if (type && type[1] === element) rows.push({ phrase: backward, ...inClass });
      if (isParameter) rows.push({ phrase: "Parameter of", ...inClass });
      return rows;
    });
  }

  function relationItem({ text, target, state, via, note }) {
    const item = make("li", {}, target >= 0 ? iconOf(target) : "", reference(text, target), unresolved(state));
    if (note) item.append(noteOf(note));
    if (via >= 0) {
      const link = linkTo(via, elements[via][NAME] || wordOf(via));
      link.setAttribute("aria-label", wordOf(via) + " " + nameOf(via));
      item.append(make("span", { class: "note" }, link));
    }
    return item;
  }

  function relationsSection(element) {
    const byPhrase = new Map();
    for (const row of [...rowsTo(element), ...rowsFrom(element)]) addTo(byPhrase, row.phrase, row);
    if (byPhrase.size === 0) return "";
    return section("Relations", ...[...byPhrase].flatMap(([phrase, rows]) =>
      [make("h3", {}, phrase), ...limited(make("ul", { class: "links" }), rows, relationItem)]));
  }

  // --- Sheets ---

  const columnsOf = (list, makeItem) => limited(make("ul", { class: "links in-columns" }), list, makeItem);

  function diagramsSection(title, list, shown) {
    if (!list || list.length === 0) return "";
    return section(title, ...columnsOf(list, (each) => {
      const item = linkItem(each, shown);
      item.append(noteOf(wordOf(each)));
      return item;
    }));
  }

  function plural(word) {
    let text = word + (/(s|x|ch)$/.test(word) ? "es" : "s");
    if (/[^aeiou]y$/.test(word)) text = word.slice(0, -1) + "ies";
    return text[0].toUpperCase() + text.slice(1);
  }

  function contentsSections(children) {
    const byWord = new Map();
    for (const child of children) addTo(byWord, wordOf(child), child);
    return [...byWord].map(([word, list]) => section(plural(word), ...columnsOf(list, (each) => linkItem(each))));
  }

  function sheetOf(element) {
    const { missing, parameters, ends, tools } = detailsOf(element);
    const children = sortedChildren(element);
    const features = (word) => children.filter((child) => wordOf(child) === word);
    const [attributes, operations] = [features("attribute"), features("operation")];
    const others = children.filter((child) => ![DIAGRAM, FEATURE].includes(groupOf(child)) && !isRelation(child));
    return make("article", { class: "sheet" },
      trail(element), heading(element), sortLine(element),
      missing ? make("p", { class: "warning", dir: "auto" }, "Not loaded: " + missing) : "",
      documentation(element),
      attributes.length ? attributesSection(attributes) : "",
      operations.length ? operationsSection(operations) : "",
      parameters ? parametersSection(parameters) : "",
      ends ? endsSection(ends) : "",
      relationsSection(element),
      diagramsSection("Diagrams", children.filter((child) => groupOf(child) === DIAGRAM)),
      diagramsSection("Shown in", shownIn().get(element), element),
      ...contentsSections(others),
      propertiesSection(element),
      tools === undefined ? "" : toolsSection(tools));
  }

  // Numbers of elements; some groups are counted as one.
  function figures() {
    const counts = new Map();
    const words = { [DIAGRAM]: "diagram", [BEHAVIOR]: "behaviour item", [RELATION]: "relation" };
    for (let element = isUnit ? 0 : 1; element < elements.length; ++element) {
      const word = words[groupOf(element)] || wordOf(element);
      if (word !== "view") counts.set(word, (counts.get(word) || 0) + 1);
    }
    const named = (word, count) => (count === 1 ? word : plural(word).toLowerCase());
    return make("ul", { class: "figures" }, ...[...counts].sort((a, b) => b[1] - a[1]).map(([word, count]) =>
      make("li", {}, make("b", {}, count.toLocaleString("en")), make("span", {}, named(word, count)))));
  }

  function allDiagrams() {
    const byWord = new Map();
    for (const [element] of diagrams) addTo(byWord, wordOf(element), element);
    if (byWord.size === 0) return "";
    const item = (element) => {
      const link = linkItem(element);
      link.append(noteOf(nameOf(parentOf(element))));
      return link;
    };
    return section("Diagrams", ...[...byWord].flatMap(([word, list]) =>
      [make("h3", {}, plural(word)), ...columnsOf(list, item)]));
  }

  function overview() {
    const title = make("div", { class: "head" }, icon("model", "of-diagram"),
      make("h1", { tabindex: "-1", dir: "auto" }, model.title));
    const missing = table([
      ["File", "", ([file, , stub]) => [reference(file, stub)]],
      ["Reason", "", ([, reason]) => [reason]],
    ], model.missing);
    const files = table(["File", "Petal version", "Encoding", "Written by"].map((label, i) =>
      [label, "", (file) => [file[i]]]), model.files);
    return make("article", { class: "sheet" }, title, documentation(0), figures(),
      allDiagrams(),
      model.missing.length ? section("Units that are not loaded", ...missing) : "",
      section("Files", ...files),
      detailsOf(0).properties === undefined ? "" : propertiesSection(0),
      detailsOf(0).tools === undefined ? "" : toolsSection(detailsOf(0).tools));
  }

  // --- Pictures ---

  // Only shapes, texts and images are taken from a picture.
  function pictureOf(number) {
    const source = byId("picture-" + number);
    if (!source || !source.textContent.trim()) return null;
    const parsed = new DOMParser().parseFromString(source.textContent, "image/svg+xml");
    const root = parsed.documentElement;
    if (root.localName !== "svg" || parsed.querySelector("parsererror")) return null;
    parsed.querySelectorAll("script, foreignObject, style, animate, set").forEach((node) => node.remove());
    for (const node of [root, ...root.querySelectorAll("*")])
      for (const { name, value } of [...node.attributes])
        if (/^on/i.test(name) || (/href$/i.test(name) && !/^(#|data:image\/(png|jpeg|gif);)/.test(value)))
          node.removeAttribute(name);
    return document.importNode(root, true);
  }

  const positions = new Map(); // of the pictures that were seen, by diagram
  const [leastScale, greatestScale, edge] = [0.02, 8, 16];

  class Picture {
    constructor(element, shown) {
      this.element = element;
      this.shown = shown;
      this.items = new Map();
      const items = diagrams[diagramOf().get(element)][1];
      for (let i = 0; i < items.length; i += 2) this.items.set(items[i], items[i + 1]);
      this.svg = pictureOf(diagramOf().get(element));
      if (this.svg) this.prepare();
      else this.box = make("p", { class: "message" }, document.readyState === "loading"
        ? "The picture is coming." : "There is no picture of this diagram.");
    }

    prepare() {
      const { svg } = this;
      const drawn = svg.viewBox.baseVal;
      this.width = parseFloat(svg.getAttribute("width")) || drawn?.width || 800;
      this.height = parseFloat(svg.getAttribute("height")) || drawn?.height || 600;
      this.unit = (drawn?.width || this.width) / this.width; // of the picture, in its own size
      svg.setAttribute("width", this.width);
      svg.setAttribute("height", this.height);
      for (const name of ["role", "aria-label", "aria-labelledby"]) svg.removeAttribute(name);
      for (const node of svg.querySelectorAll("[data-view]")) this.prepareItem(node);
      this.paper = make("div", { class: "paper" }, svg);
      this.box = make("div", { class: "picture", tabindex: "0", role: "group",
        "aria-label": "Picture of " + nameOf(this.element) }, this.paper);
      this.percent = make("button", { type: "button", class: "percent", title: "Own size (1)",
        onclick: () => this.key("1") });
      this.listen();
    }

    prepareItem(node) {
      const target = this.items.get(Number(node.dataset.view));
      if (target === undefined || target === this.element || !node.querySelector(":not(title)")) return;
      node.classList.add("leads");
      node.setAttribute("tabindex", "0");
      node.setAttribute("role", "link");
      node.setAttribute("aria-label", wordOf(target) + " " + nameOf(target));
      node.dataset.element = target;
      for (const line of node.querySelectorAll("line, polyline[fill=none], path[fill=none]")) {
        const reach = line.cloneNode(); // a thin line is hard to hit
        reach.setAttribute("class", "reach");
        line.after(reach);
      }
    }

    // Called when it is in the page and has a size.
    place() {
      if (!this.svg) return;
      const old = positions.get(this.element);
      if (old && this.shown === undefined) this.move(...old);
      else this.fit();
      if (this.shown !== undefined) this.showItem();
    }

    move(x, y, scale) {
      [this.x, this.y, this.scale] = [x, y, scale];
      positions.set(this.element, [x, y, scale]);
      this.paper.style.transform = `translate(${x}px, ${y}px) scale(${scale})`;
      const percent = Math.round(scale * 100) + " %";
      this.percent.textContent = percent;
      this.percent.setAttribute("aria-label", percent + ", to own size");
    }

    center(scale) {
      const middle = (room, size) => Math.max(edge, (room - size * scale) / 2);
      this.move(middle(this.box.clientWidth, this.width), middle(this.box.clientHeight, this.height), scale);
    }

    fit() {
      const horizontal = (this.box.clientWidth - 2 * edge) / this.width;
      const vertical = (this.box.clientHeight - 2 * edge) / this.height;
      this.center(Math.max(leastScale, Math.min(horizontal, vertical, 1)));
    }

    zoom(factor, x = this.box.clientWidth / 2, y = this.box.clientHeight / 2) {
      const scale = Math.min(greatestScale, Math.max(leastScale, this.scale * factor));
      const ratio = scale / this.scale;
      this.move(x - (x - this.x) * ratio, y - (y - this.y) * ratio, scale);
    }

    // Marks what shows the element and brings the first of it to the middle.
    showItem() {
      const isIt = (node) => Number(node.dataset.element) === this.shown;
      const nodes = [...this.svg.querySelectorAll("[data-element]")].filter(isIt);
      if (nodes.length === 0) return;
      nodes.forEach((node) => node.append(halo(node.getBBox(), 4 * this.unit)));
      if (this.scale < 0.6) this.center(0.6);
      const outer = this.box.getBoundingClientRect();
      const inner = nodes[0].getBoundingClientRect();
      const isInside = inner.left >= outer.left && inner.right <= outer.right;
      if (isInside && inner.top >= outer.top && inner.bottom <= outer.bottom) return;
      const dx = outer.left + outer.width / 2 - inner.left - inner.width / 2;
      const dy = outer.top + outer.height / 2 - inner.top - inner.height / 2;
      this.move(this.x + dx, this.y + dy, this.scale);
    }

    listen() {
      const pointers = new Map();
      let wasMoved = false;
      this.box.addEventListener("wheel", (event) => {
        event.preventDefault();
        const outer = this.box.getBoundingClientRect();
        const amount = event.deltaY * (event.deltaMode === 1 ? 24 : 1);
        this.zoom(Math.exp(amount * -0.0015), event.clientX - outer.left, event.clientY - outer.top);
      }, { passive: false });
      this.box.addEventListener("pointerdown", ({ button, pointerId, clientX: x, clientY: y }) => {
        if (button !== 0) return;
        wasMoved = false;
        pointers.set(pointerId, { x, y, startX: x, startY: y });
      });
      this.box.addEventListener("pointermove", (event) => {
        const pointer = pointers.get(event.pointerId);
        if (!pointer) return;
        if (!wasMoved && Math.hypot(event.clientX - pointer.startX, event.clientY - pointer.startY) < 5) return;
        wasMoved = true;
        this.box.setPointerCapture(event.pointerId);
        this.box.classList.add("moving");
        this.drag([...pointers.values()].find((each) => each !== pointer), pointer, event);
      });
      for (const type of ["pointerup", "pointercancel"])
        this.box.addEventListener(type, (event) => {
          pointers.delete(event.pointerId);
          this.box.classList.remove("moving");
        });
      this.box.addEventListener("click", (event) => {
        const node = event.target.closest("[data-element]");
        if (node && !wasMoved) goTo(Number(node.dataset.element));
      });
      this.box.addEventListener("keydown", (event) => this.keyInside(event));
    }

    // One pointer moves the picture, two zoom it.
    drag(other, pointer, event) {
      const distance = () => (other ? Math.hypot(pointer.x - other.x, pointer.y - other.y) : 0);
      const before = Math.max(1, distance());
      const [dx, dy] = [event.clientX - pointer.x, event.clientY - pointer.y];
      [pointer.x, pointer.y] = [event.clientX, event.clientY];
      const outer = this.box.getBoundingClientRect();
      if (other) this.zoom(distance() / before, other.x - outer.left, other.y - outer.top);
      else this.move(this.x + dx, this.y + dy, this.scale);
    }

    keyInside(event) {
      if (event.ctrlKey || event.altKey || event.metaKey) return;
      const node = event.target.closest("[data-element]");
      const step = { ArrowLeft: [60, 0], ArrowRight: [-60, 0], ArrowUp: [0, 60], ArrowDown: [0, -60] }[event.key];
      if (event.key === "Enter" && node) goTo(Number(node.dataset.element));
      else if (step) this.move(this.x + step[0], this.y + step[1], this.scale);
      else return;
      event.preventDefault();
    }

    // Keys that hold wherever the focus is beside the tree. Returns whether it was one.
    key(key) {
      const work = { "+": () => this.zoom(1.25), "=": () => this.zoom(1.25), "-": () => this.zoom(0.8),
        0: () => this.fit(), 1: () => this.center(1) };
      if (!this.svg || !Object.hasOwn(work, key)) return false;
      work[key]();
      return true;
    }

    tools() {
      const button = (label, name, key) => make("button", { type: "button", "aria-label": label,
        title: label + " (" + key + ")", onclick: () => this.key(key) }, icon(name));
      return make("div", { class: "tools", role: "toolbar", "aria-label": "Size of the picture" },
        button("Smaller", "minus", "-"), this.percent, button("Larger", "plus", "+"),
        button("Whole picture", "fit", "0"));
    }
  }

  function halo({ x, y, width, height }, room) {
    const rectangle = document.createElementNS("http://www.w3.org/2000/svg", "rect");
    const shape = { x: x - room, y: y - room, width: width + 2 * room, height: height + 2 * room, rx: room };
    for (const [name, value] of Object.entries(shape)) rectangle.setAttribute(name, value);
    rectangle.setAttribute("class", "halo");
    return rectangle;
  }

  let picture = null; // that of the diagram shown

  function diagramPage(element, shown) {
    picture = new Picture(element, shown);
    const isListed = (target) => target !== element && groupOf(target) !== RELATION;
    const targets = [...new Set(picture.items.values())].filter(isListed)
      .sort((a, b) => groupOf(a) - groupOf(b) || collator.compare(nameOf(a), nameOf(b)));
    const list = limited(make("ul", { class: "links" }), targets, (each) => linkItem(each));
    return make("article", { class: "diagram" },
      make("header", { class: "diagram-head" },
        make("div", { class: "diagram-title" }, trail(element), heading(element), sortLine(element)),
        picture.svg ? picture.tools() : ""),
      make("div", { class: "diagram-body" }, picture.box,
        make("aside", { class: "beside", "aria-label": "About this diagram" },
          documentation(element), targets.length ? section("On this diagram", ...list) : "")));
  }

  // --- What the address says is shown ---

  const main = byId("main");
  const scrolled = new Map();
  let shownAddress = null;

  function pageOf(element, shown) {
    if (element === undefined) return make("p", { class: "message" }, "Nothing in this model has this address.");
    if (element === 0 && (!isUnit || !location.hash)) return overview();
    return diagramOf().has(element) ? diagramPage(element, shown) : sheetOf(element);
  }

  function show() {
    const isFirst = shownAddress === null;
    if (!isFirst) scrolled.set(shownAddress, main.scrollTop);
    shownAddress = location.hash;
    const [element, shown] = placeOfAddress();
    picture = null;
    main.replaceChildren(pageOf(element, shown));
    if (element !== undefined) tree.reveal(element);
    document.title = element ? nameOf(element) + " \u2013 " + model.title : model.title;
    main.scrollTop = scrolled.get(shownAddress) || 0;
    if (picture) picture.place();
    if (!isFirst && !tree.hasFocus()) focusTitle();
  }

  // --- Search ---

  const search = (() => {
    const input = byId("search");
    const found = byId("found");
    const list = byId("results");
    let results = [];
    let chosen = -1;

    const texts = once(() => ({
      names: elements.map(([, , name]) => name.toLowerCase()),
      words: elements.map(([, , , , details]) => (details.documentation || "").toLowerCase()),
    }));

    // 0 for the name itself, then beginnings, beginnings of words, parts, documentation; -1 for nothing of it.
    function rankOf(element, query, words) {
      const name = texts().names[element];
      const at = name.indexOf(query);
      if (at === 0) return name.length === query.length ? 0 : 1;
      if (at > 0) return /[\p{L}\p{N}]/u.test(name[at - 1]) ? 3 : 2;
      if (words.length > 1 && words.every((word) => name.includes(word))) return 3;
      const documented = texts().words[element];
      return documented && words.every((word) => documented.includes(word) || name.includes(word)) ? 4 : -1;
    }

    // By rank, features behind the rest, the shortest names first; alike ones keep the order of the file.
    function find(query, words) {
      const buckets = Array.from({ length: 10 }, () => []);
      let count = 0;
      for (let element = isUnit ? 0 : 1; query && element < elements.length; ++element) {
        const rank = rankOf(element, query, words);
        if (rank < 0) continue;
        ++count;
        const bucket = buckets[2 * rank + (groupOf(element) >= FEATURE ? 1 : 0)];
        if (bucket.length < mostSorted) bucket.push(element);
      }
      const byLength = (a, b) => texts().names[a].length - texts().names[b].length || a - b;
      return { count, elements: buckets.flatMap((bucket) => bucket.sort(byLength)).slice(0, mostResults) };
    }

    function marked(text, words) {
      const lower = text.toLowerCase();
      const word = words.find((each) => lower.includes(each));
      if (!word || lower.length !== text.length) return [text];
      const at = lower.indexOf(word);
      return [text.slice(0, at), make("mark", {}, text.slice(at, at + word.length)), text.slice(at + word.length)];
    }

    // Where the element is, or the piece of its documentation that was found.
    function placeText(element, words) {
      const text = detailsOf(element).documentation || "";
      const lower = text.toLowerCase();
      const name = texts().names[element];
      const word = words.find((each) => lower.includes(each) && !name.includes(each));
      if (!word) return [ancestorsOf(element).map(nameOf).join(" \u203a ")];
      const start = Math.max(0, lower.indexOf(word) - 40);
      return marked((start ? "\u2026" : "") + text.slice(start, start + 160), words);
    }

    function makeResult(element, index, words) {
      return make("div",
        { class: "result", role: "option", id: "result-" + index, "aria-selected": "false", "data-index": index },
        iconOf(element),
        make("div", { class: "result-text" },
          make("div", { class: "result-name", dir: "auto" }, ...marked(nameOf(element), words)),
          make("div", { class: "result-place", dir: "auto" }, ...placeText(element, words))),
        make("span", { class: "result-kind" }, wordOf(element)));
    }

    function choose(index) {
      list.children[chosen]?.setAttribute("aria-selected", "false");
      chosen = results.length ? (index + results.length) % results.length : -1;
      const row = list.children[chosen];
      if (!row) {
        input.removeAttribute("aria-activedescendant");
        return;
      }
      row.setAttribute("aria-selected", "true");
      row.scrollIntoView({ block: "nearest" });
      input.setAttribute("aria-activedescendant", row.id);
    }

    function setOpen(isOpen) {
      found.hidden = !isOpen;
      input.setAttribute("aria-expanded", String(isOpen));
      if (!isOpen) input.removeAttribute("aria-activedescendant");
    }

    function update() {
      const query = input.value.trim().toLowerCase();
      const words = query.split(/\s+/);
      const result = find(query, words);
      results = result.elements;
      list.replaceChildren(...results.map((element, index) => makeResult(element, index, words)));
      const more = result.count > results.length ? ", the first " + results.length + " shown" : "";
      const count = result.count ? result.count.toLocaleString("en") + " found" : "Nothing found";
      byId("found-count").textContent = count + more;
      setOpen(query !== "");
      chosen = -1;
      choose(0);
    }

    function take(index) {
      if (!(index in results)) return;
      setOpen(false);
      input.blur();
      goTo(results[index]);
    }

    // First the results go, then the search.
    function leave() {
      if (found.hidden) {
        input.value = "";
        tree.focus();
      }
      setOpen(false);
    }

    const keys = {
      ArrowDown: () => (found.hidden ? update() : choose(chosen + 1)),
      ArrowUp: () => choose(chosen - 1),
      Enter: () => (found.hidden ? update() : take(chosen)),
      Escape: leave,
    };
    input.addEventListener("input", update);
    input.addEventListener("focus", () => texts());
    input.addEventListener("blur", () => setOpen(false));
    input.addEventListener("keydown", (event) => {
      if (!Object.hasOwn(keys, event.key) || event.isComposing) return;
      event.preventDefault();
      event.stopPropagation();
      keys[event.key]();
    });
    list.addEventListener("pointerdown", (event) => event.preventDefault()); // the focus stays in the field
    list.addEventListener("click", (event) => {
      const row = event.target.closest(".result");
      if (row) take(Number(row.dataset.index));
    });
    return {
      start: () => {
        input.focus();
        input.select();
        if (input.value.trim()) update();
      },
    };
  })();

  // --- The bar and the divider ---

  // Some browsers keep nothing for pages that are opened from a disk; a choice then holds until the page is left.
  function kept(work) {
    try {
      return work(localStorage);
    } catch {
      return null;
    }
  }

  function setTheme(theme) {
    if (theme) document.documentElement.dataset.theme = theme;
    const isDark = theme ? theme === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
    byId("theme").setAttribute("aria-pressed", String(isDark));
  }

  function switchTheme() {
    const theme = byId("theme").getAttribute("aria-pressed") === "true" ? "light" : "dark";
    setTheme(theme);
    kept((storage) => storage.setItem("petal-theme", theme));
  }

  function switchTree() {
    const isHidden = byId("columns").classList.toggle("without-tree");
    byId("toggle-tree").setAttribute("aria-pressed", String(!isHidden));
  }

  const divider = byId("divider");
  function setTreeWidth(width) {
    const bounded = Math.min(700, Math.max(160, Math.round(width)));
    document.documentElement.style.setProperty("--tree-width", bounded + "px");
    divider.setAttribute("aria-valuenow", bounded);
  }
  divider.addEventListener("pointerdown", (event) => divider.setPointerCapture(event.pointerId));
  divider.addEventListener("pointermove", (event) => {
    if (divider.hasPointerCapture(event.pointerId)) setTreeWidth(event.clientX);
  });
  divider.addEventListener("keydown", (event) => {
    const step = { ArrowLeft: -20, ArrowRight: 20 }[event.key];
    if (step) setTreeWidth(Number(divider.getAttribute("aria-valuenow")) + step);
  });

  byId("model-title").textContent = model.title;
  byId("home").setAttribute("aria-label", "Overview of " + model.title);
  byId("skip").addEventListener("click", () => main.focus());
  byId("print").addEventListener("click", () => print());
  byId("show-keys").addEventListener("click", () => byId("keys").showModal());
  byId("toggle-tree").addEventListener("click", switchTree);
  byId("theme").addEventListener("click", switchTheme);
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () =>
    setTheme(document.documentElement.dataset.theme));

  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || event.target.matches("input") || byId("keys").open) return;
    if (event.key === "/") search.start();
    else if (event.key === "Escape") tree.focus();
    else if (!picture || tree.hasFocus() || !picture.key(event.key)) return;
    event.preventDefault();
  });
  addEventListener("hashchange", show);
  // The pictures stand behind this script.
  document.addEventListener("DOMContentLoaded", () => {
    if (picture && !picture.svg) show();
  });

  const keptTheme = kept((storage) => storage.getItem("petal-theme"));
  setTheme(["light", "dark"].includes(keptTheme) ? keptTheme : undefined);
  show();
})();
