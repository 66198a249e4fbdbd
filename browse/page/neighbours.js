// A class among those beside it: supertypes above, subtypes below, associations at its sides.

const mostBeside = 6; // associations at one side
const mostInRow = 4;
const [leastWidth, greatestWidth] = [90, 220]; // of a box
const boxHeight = 30;
const lineHeight = 44; // from one association to the next
const lineLength = 130;
const betweenBoxes = 24;
const betweenRows = 56;

const measuring = once(() => {
  const context = document.createElement("canvas").getContext("2d");
  context.font = "13px system-ui, sans-serif";
  return context;
});

// As much of the text as there is room for.
function fitting(text, width) {
  const widthOf = (part) => measuring().measureText(part).width;
  if (widthOf(text) <= width) return text;
  let length = text.length - 1;
  while (length > 1 && widthOf(text.slice(0, length) + "\u2026") > width) --length;
  return text.slice(0, length) + "\u2026";
}

// The boxes of the picture and the lines between them. `x` and `y` are the middle of a box.
class Neighbourhood {
  constructor(element, names) {
    this.element = element;
    const widths = names.map((name) => measuring().measureText(name).width + 16);
    this.boxWidth = Math.ceil(Math.min(greatestWidth, Math.max(leastWidth, ...widths)));
    this.lines = [];
    this.boxes = [];
    [this.left, this.right, this.top, this.bottom] = [0, 0, 0, 0];
  }

  grow(x, y, width, height) {
    this.left = Math.min(this.left, x - width / 2);
    this.right = Math.max(this.right, x + width / 2);
    this.top = Math.min(this.top, y - height / 2);
    this.bottom = Math.max(this.bottom, y + height / 2);
  }

  box(target, text, x, y, type = "", height = boxHeight) {
    const { boxWidth } = this;
    this.grow(x, y, boxWidth, height);
    const name = fitting(text, boxWidth - 14);
    const shapes = [makeShape("rect", { x: x - boxWidth / 2, y: y - height / 2, width: boxWidth, height, rx: 4 }),
      makeShape("text", { x, y: y + 4.5, "text-anchor": "middle" }, name)];
    if (name !== text) shapes.push(makeShape("title", {}, text));
    const isLink = target >= 0 && target !== this.element;
    this.boxes.push(isLink ? makeShape("a", { href: addressOf(target), "aria-label": text }, ...shapes)
      : makeShape("g", { class: target < 0 ? "elsewhere" : type }, ...shapes));
  }

  line(path, isDashed) {
    this.lines.push(makeShape("path", { d: path, class: isDashed ? "dashed" : "" }));
  }

  label(text, x, y, anchor) {
    if (text) this.lines.push(makeShape("text", { class: "label", x, y, "text-anchor": anchor },
      fitting(text, lineLength - 10)));
  }

  // Rows of what inherits or is inherited, away from the class. The triangle points at who is inherited.
  addRows(list, direction, height) {
    if (list.length === 0) return;
    const rowCount = Math.ceil(list.length / mostInRow);
    const inRow = Math.ceil(list.length / rowCount);
    const start = direction * height / 2;
    const trunk = start + direction * (betweenRows / 2);
    const isAbove = direction < 0;
    const { boxWidth } = this;
    if (!isAbove) this.lines.push(makeShape("path", { class: "triangle", d: `M0 ${start}l-7 11h14z` }));
    list.forEach(({ target, text, isRealized }, i) => {
      const row = Math.floor(i / inRow);
      const inThis = Math.min(inRow, list.length - row * inRow);
      const x = (i % inRow - (inThis - 1) / 2) * (boxWidth + betweenBoxes);
      const y = start + direction * (betweenRows + boxHeight / 2 + row * (boxHeight + 20));
      const end = y - direction * boxHeight / 2;
      const begin = `M0 ${isAbove ? start : start + 11}V${trunk}`;
      if (row > 0) {
        const rail = x - boxWidth / 2 - betweenBoxes / 2;
        this.grow(rail, y, 2, 0);
        this.line(`${begin}H${rail}V${y}h${betweenBoxes / 2}`, isRealized);
      } else {
        this.line(`${begin}H${x}V${isAbove ? end + 11 : end}`, isRealized);
        if (isAbove) this.lines.push(makeShape("path", { class: "triangle", d: `M${x} ${end}l-7 11h14z` }));
      }
      this.box(target, text, x, y);
    });
  }

  addSide(list, direction) {
    list.forEach(({ target, text, role, ownRole }, i) => {
      const y = (i - (list.length - 1) / 2) * lineHeight;
      const near = direction * this.boxWidth / 2;
      const far = near + direction * lineLength;
      this.line(`M${near} ${y}H${far}`, false);
      this.label(role, far - direction * 5, y - 5, direction > 0 ? "end" : "start");
      this.label(ownRole, near + direction * 5, y + 14, direction > 0 ? "start" : "end");
      this.box(target, text, far + direction * this.boxWidth / 2, y);
    });
  }

  svg() {
    const [width, height] = [this.right - this.left + 4, this.bottom - this.top + 4];
    const svg = makeShape("svg", { class: "neighbours", role: "group", "aria-label": "Neighbourhood of " +
      nameOf(this.element), width, height, viewBox: [this.left - 2, this.top - 2, width, height].join(" ") },
    ...this.lines, ...this.boxes);
    svg.style.minWidth = 0.7 * width + "px"; // smaller it would be hard to read
    return svg;
  }
}

const isInheritance = (via) => ["generalization", "realization"].includes(kindOf(via)[KindField.icon]);
const isRealization = (via) => kindOf(via)[KindField.icon] === "realization";

// Each of them once, however many relations lead there.
function distinct(list) {
  const seen = new Set();
  return list.filter(({ target, text }) => {
    const key = target >= 0 ? target : text;
    return seen.has(key) ? false : seen.add(key);
  });
}

function neighboursSection(element) {
  if (groupOf(element) !== Group.classifier) return "";
  const supertypes = distinct(childrenOf(element).filter((via) => isInheritance(via) && detailsOf(via).to)
    .map((via) => ({ target: detailsOf(via).to[TargetField.target], text: targetName(detailsOf(via).to),
      isRealized: isRealization(via) })));
  const from = referrers().get(element) || [];
  const subtypes = distinct(from.filter(isInheritance).map((via) =>
    ({ target: parentOf(via), text: nameOf(parentOf(via)), isRealized: isRealization(via) })));
  const associations = from.filter((each) => detailsOf(each).ends).flatMap((each) => associationRows(element, each));
  const all = [supertypes, subtypes, associations];
  if (all.every((list) => list.length === 0)) return "";
  const shown = [supertypes.slice(0, 2 * mostInRow), subtypes.slice(0, 3 * mostInRow),
    associations.slice(0, 2 * mostBeside)];
  const count = Math.ceil(shown[2].length / (shown[2].length > 3 ? 2 : 1));
  const height = Math.max(40, count * lineHeight);
  const drawn = new Neighbourhood(element, [nameOf(element), ...shown.flat().map((each) => each.text)]);
  drawn.addSide(shown[2].slice(0, count), 1);
  drawn.addSide(shown[2].slice(count), -1);
  drawn.addRows(shown[0], -1, height);
  drawn.addRows(shown[1], 1, height);
  drawn.box(element, nameOf(element), 0, 0, "self", height);
  const left = all.map((list, i) => list.length - shown[i].length);
  const names = ["supertype", "subtype", "association"];
  const more = left.flatMap((count, i) => (count > 0 ? [`${count} more ${names[i]}${count > 1 ? "s" : ""}`] : []))
    .join(", ");
  return section("Neighbourhood", make("div", { class: "scrolled" }, drawn.svg()),
    more ? make("p", { class: "note" }, more + " below") : "");
}
