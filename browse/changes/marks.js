// Diagrams as they were and as they are, with marks on what is different.

const badgeRadius = 9; // in pixels of the picture's own size

// What is there besides the labels of a line, whose grounds have no edges.
const isBox = (node) =>
  node.querySelector("rect[stroke]:not([stroke=none]), ellipse, circle, image, polygon[stroke]") !== null &&
  !/\b(role|inherit|realize|uses|dependency|association)view/.test(node.getAttribute("class"));
const strokesOf = (node) => [...node.querySelectorAll("line, polyline, path")].filter((shape) =>
  shape.localName === "line" || shape.getAttribute("fill") === "none");

function badge(x, y, sort, unit) {
  const radius = badgeRadius * unit;
  return makeShape("g", { class: "badge" },
    makeShape("circle", { cx: x, cy: y, r: radius, "stroke-width": unit }),
    makeShape("text", { x, y: y + radius * 0.5, "font-size": radius * 1.5 }, sorts[sort].sign));
}

// A line is traced, anything else framed.
function markNode(node, sort, unit, hasBadge) {
  const layer = makeShape("g", { class: classOf(sort), "data-mark": sorts[sort].name, role: "img",
    "aria-label": sorts[sort].word });
  const strokes = isBox(node) ? [] : strokesOf(node);
  const { x, y, width, height } = node.getBBox();
  if (strokes.length === 0 && width === 0) return;
  if (strokes.length > 0) {
    for (const stroke of strokes) {
      const trace = stroke.cloneNode();
      for (const name of ["stroke", "stroke-width", "stroke-dasharray", "id"]) trace.removeAttribute(name);
      trace.setAttribute("class", "trace");
      layer.append(trace);
    }
    const middle = strokes[0].getPointAtLength(strokes[0].getTotalLength() / 2);
    if (hasBadge) layer.append(badge(middle.x, middle.y, sort, unit));
  } else {
    const room = 4 * unit;
    layer.append(makeShape("rect", { class: "frame", x: x - room, y: y - room, width: width + 2 * room,
      height: height + 2 * room, rx: room }));
    if (hasBadge) layer.append(badge(x, y, sort, unit));
  }
  node.ownerSVGElement.append(layer);
}

function markViews(svg, marks) {
  const width = parseFloat(svg.getAttribute("width")) || 0;
  const unit = width > 0 ? svg.viewBox.baseVal.width / width : 1;
  const sortOf = new Map();
  for (let i = 0; i < marks.length; i += 2) sortOf.set(String(marks[i]), marks[i + 1]);
  const hasBadge = new Set(); // the lines and the name of an association are one thing
  for (const node of svg.querySelectorAll("[data-view]")) {
    const sort = sortOf.get(node.dataset.view);
    if (sort === undefined) continue;
    const key = !isBox(node) && node.dataset.quid;
    markNode(node, sort, unit, !key || !hasBadge.has(key));
    hasBadge.add(key);
  }
}

async function pictureIn(stage) {
  const svg = pictureFrom(await unpacked(stage.dataset.picture));
  if (!svg) {
    stage.replaceChildren(make("p", { class: "message" }, "There is no picture of this diagram."));
    return null;
  }
  for (const name of ["role", "aria-label", "aria-labelledby"]) svg.removeAttribute(name);
  stage.replaceChildren(svg);
  markViews(svg, JSON.parse(stage.dataset.marks));
  return svg;
}

// Both pictures of a pair in one scale.
async function showPair(pair) {
  const pictures = await Promise.all([...pair.querySelectorAll("[data-picture]")].map(pictureIn));
  const shown = pictures.filter(Boolean);
  const widthOf = (svg) => parseFloat(svg.getAttribute("width")) || 1;
  const widest = Math.max(...shown.map(widthOf));
  for (const svg of shown) svg.style.width = 100 * widthOf(svg) / widest + "%";
}

const pairObserver = new IntersectionObserver((entries) => {
  for (const { target, isIntersecting } of entries) {
    if (!isIntersecting) continue;
    pairObserver.unobserve(target);
    showPair(target);
  }
}, { root: byId("main"), rootMargin: "400px" });

function figure(caption, picture, marks, isThere) {
  if (!isThere) {
    return make("figure", {}, make("figcaption", {}, caption),
      make("div", { class: "stage nothing" }, "not there"));
  }
  return make("figure", {}, make("figcaption", { dir: "auto" }, caption),
    make("div", { class: "stage", tabindex: "0", role: "group", "aria-label": "Picture: " + caption,
      "data-picture": picture, "data-marks": JSON.stringify(marks) }));
}

function legend(pair) {
  const used = new Set([...pair[PairField.marksBefore], ...pair[PairField.marksAfter]].filter((_, i) => i % 2));
  if (used.size === 0) return "";
  return make("ul", { class: "legend" }, ...[...used].sort().map((sort) =>
    make("li", { class: classOf(sort) }, make("span", { class: "mark", "aria-hidden": "true" }, sorts[sort].sign),
      sorts[sort].word)));
}

function pairSection(pair, index) {
  const sort = pair[PairField.sort];
  const title = "diagram " + pair[PairField.title];
  const box = make("div", { class: "pair" },
    figure("before: " + data.old, "before-" + index, pair[PairField.marksBefore], pair[PairField.before] === 1),
    figure("after: " + data.new, "after-" + index, pair[PairField.marksAfter], pair[PairField.after] === 1));
  pairObserver.observe(box);
  const larger = make("button", { type: "button", "aria-pressed": "false", onclick: () => {
    const isLarge = box.classList.toggle("is-large");
    larger.setAttribute("aria-pressed", String(isLarge));
  } }, "In its own size");
  return make("section", { class: "changed " + classOf(sort), id: "diagram-" + index, "aria-label": title },
    make("h2", {}, sort === RowSort.changed ? "" : markOf(sort), icon(pair[PairField.icon], "of-diagram"),
      make("span", { dir: "auto" }, title)),
    legend(pair), larger, box);
}
