// What the address says is shown.

let picture = null; // that of the diagram shown

function diagramPage(element, shown) {
  picture = new Picture(element, shown, shownEntry);
  const isListed = (target) => target !== element && groupOf(target) !== Group.relation;
  const targets = [...new Set(picture.items.values())].filter(isListed)
    .sort((a, b) => groupOf(a) - groupOf(b) || collator.compare(nameOf(a), nameOf(b)));
  const list = limited(make("ul", { class: "links" }), targets, (each) => linkItem(each));
  return make("article", { class: "diagram" },
    make("header", { class: "diagram-head" },
      make("div", { class: "diagram-title" }, trail(element), heading(element), sortLine(element)),
      isEmpty(element) ? "" : picture.tools()),
    make("div", { class: "diagram-body" }, picture.box,
      make("aside", { class: "beside", tabindex: "0", "aria-label": "About this diagram" },
        documentation(element), targets.length ? section("On this diagram", ...list) : "")));
}

const main = byId("main");
const scrolled = new Map(); // by entry of the history
let shownEntry = null;
let entryCount = 0;

// What tells this step of the reader's way from others, so that Back leads to what was seen there.
function currentEntry() {
  if (!history.state?.entry) history.replaceState({ entry: Date.now() + "-" + entryCount++ }, "");
  return history.state.entry;
}

function pageOf(element, shown) {
  if (element === undefined) return make("p", { class: "message" }, "Nothing in this model has this address.");
  if (element === 0 && (!isUnit || !location.hash)) return overview();
  return diagramOf().has(element) ? diagramPage(element, shown) : sheetOf(element);
}

function show() {
  const isFirst = shownEntry === null;
  if (!isFirst) scrolled.set(shownEntry, main.scrollTop);
  shownEntry = currentEntry();
  const [element, shown] = placeOfAddress();
  picture = null;
  main.replaceChildren(pageOf(element, shown));
  if (element !== undefined) tree.reveal(element);
  document.title = element ? nameOf(element) + " \u2013 " + model.title : model.title;
  main.scrollTop = scrolled.get(shownEntry) || 0;
  if (picture) picture.load();
  else if (printsByItself()) (window.requestIdleCallback || setTimeout)(() => unpackAll(ready));
  if (!isFirst && !tree.hasFocus()) focusTitle();
}
