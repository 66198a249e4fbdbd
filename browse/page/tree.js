// The tree.

const rowHeight = 26;

const tree = (() => {
  const box = byId("tree");
  const holder = byId("rows");
  const expanded = new Set([0]);
  // Open to where there is more than one way to go on.
  for (let each = elements.findIndex((_, element) => element > 0 && nameOf(element) === "Logical View"); each > 0;) {
    expanded.add(each);
    const packages = childrenOf(each).filter((child) => groupOf(child) === Group.package);
    each = packages.length === 1 ? packages[0] : 0;
  }
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
    const row = make("a", {
      class: index === active ? "row active" : "row",
      id: "row-" + element,
      role: "treeitem",
      href: addressOf(element),
      tabindex: "-1",
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
  // Rows are links that others than the first button of the mouse may open elsewhere; the focus stays with the tree.
  box.addEventListener("mousedown", (event) => {
    if (event.button !== 0 || !event.target.closest(".row")) return;
    event.preventDefault();
    box.focus({ preventScroll: true });
  });
  box.addEventListener("click", (event) => {
    const row = event.target.closest(".row");
    if (!row || opensElsewhere(event)) return;
    event.preventDefault();
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
