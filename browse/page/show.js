// What the address says is shown.

let picture = null; // that of the diagram shown

function diagramPage(element, shown) {
  picture = new Picture(element, shown);
  const isListed = (target) => target !== element && groupOf(target) !== Group.relation;
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
