// The whole model as one document, for printing: contents, sheets and diagrams.

const mostByItself = 1500; // sheets that are printed without being asked for

// What has a page of its own; the others are told on the sheets of these.
const printed = once(() => {
  const hasSheet = (element) => [Group.package, Group.classifier].includes(groupOf(element)) ||
    diagramOf().has(element) || (groupOf(element) !== Group.feature && detailsOf(element).documentation);
  const result = [];
  const open = [0];
  while (open.length > 0) {
    const element = open.pop();
    if ((element > 0 || isUnit) && hasSheet(element)) result.push(element);
    open.push(...sortedChildren(element).reverse());
  }
  return result;
});

function withAllRows(work) {
  const usual = mostLinks;
  mostLinks = Infinity;
  try {
    return work();
  } finally {
    mostLinks = usual;
  }
}

const anchorOf = (element) => "printed-" + element;

// Links lead to places of the document, where it has the element.
const isPrinted = once(() => new Set(printed()));
function directed(article) {
  const byAddress = (href) => elementById().get(decoded(href.slice(href.lastIndexOf("~") + 1).split("@")[0]));
  for (const link of article.querySelectorAll("a[href^='#']")) {
    const element = byAddress(link.getAttribute("href"));
    if (isPrinted().has(element)) link.setAttribute("href", "#" + anchorOf(element));
    else link.removeAttribute("href");
  }
  return article;
}

function printedContents() {
  const levels = printed().map((element) => ancestorsOf(element).length);
  const list = make("ul", { class: "links contents" });
  printed().forEach((element, i) => {
    const link = make("a", { href: "#" + anchorOf(element), dir: "auto" }, nameOf(element));
    const item = make("li", {}, iconOf(element), link);
    item.style.paddingLeft = 16 * levels[i] + "px";
    list.append(item);
  });
  return section("Contents", list);
}

function printedDiagram(element, text) {
  const svg = pictureFrom(text);
  const size = svg?.viewBox.baseVal;
  if (svg && size?.width) svg.classList.add("printed-picture");
  return make("article", { class: "sheet" }, trail(element), heading(element), sortLine(element),
    documentation(element), svg || make("p", { class: "message" }, "There is no picture of this diagram."));
}

// `pictures` are the texts of those that are unpacked, by diagram.
function printedModel(pictures) {
  return withAllRows(() => {
    const first = overview(true);
    first.querySelector(".head").after(printedContents());
    const holder = make("div", { id: "printed" }, directed(first));
    for (const element of printed()) {
      const isPicture = diagramOf().has(element) && pictures.has(element) && !isEmpty(element);
      const article = isPicture ? printedDiagram(element, pictures.get(element)) : sheetOf(element, true);
      article.id = anchorOf(element);
      holder.append(directed(article));
    }
    return holder;
  });
}

const ready = new Map(); // pictures that are unpacked for a print of the first page
async function unpackAll(target) {
  for (const diagram of diagramOf().keys())
    if (!target.has(diagram)) target.set(diagram, await pictureText(diagram));
  return target;
}

function removePrinted() {
  byId("printed")?.remove();
  document.body.classList.remove("prints-model");
}

function addPrinted(pictures) {
  removePrinted();
  document.body.append(printedModel(pictures));
  document.body.classList.add("prints-model");
}

async function printModel() {
  const pictures = await unpackAll(new Map());
  addPrinted(pictures);
  print();
}

// The browser's own printing of the first page takes the whole model, too, unless it is a very large one.
const printsByItself = () => location.hash.length < 2 && printed().length <= mostByItself;
addEventListener("beforeprint", () => {
  if (!byId("printed") && printsByItself()) addPrinted(ready);
});
addEventListener("afterprint", removePrinted);
