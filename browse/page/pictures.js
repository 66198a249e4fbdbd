// Pictures: moved and zoomed, with links to what they show.

// What the item of a picture is called: what it shows, and all that can be read in it.
function spokenName(element, node) {
  const isSeen = (part) => part.localName !== "title";
  const textOf = (each) => [...each.childNodes].filter(isSeen).map((part) => part.textContent).join("").trim();
  const texts = [...node.querySelectorAll("text")].map(textOf).filter(Boolean).join(" ");
  return [wordOf(element), texts.includes(nameOf(element)) ? "" : nameOf(element), texts].filter(Boolean).join(" ");
}

const positions = new Map(); // of the pictures that were seen, by diagram and by entry of the history
const [leastScale, greatestScale, edge] = [0.02, 8, 16];

class Picture {
  constructor(element, shown, entry) {
    this.element = element;
    this.shown = shown;
    this.entry = entry;
    this.items = new Map();
    const items = diagrams[diagramOf().get(element)][DiagramField.items];
    for (let i = 0; i < items.length; i += 2) this.items.set(items[i], items[i + 1]);
    this.box = make("div", { class: "picture", tabindex: "0", role: "group", "aria-label": "Picture of " +
      nameOf(element) });
    this.percent = make("button", { type: "button", class: "percent", title: "Own size (1)",
      onclick: () => this.key("1") });
  }

  // Called when the box is in the page and has a size.
  async load() {
    const svg = pictureFrom(await pictureText(this.element));
    if (!this.box.isConnected) return;
    if (!svg) {
      this.box.replaceWith(make("p", { class: "message" }, "There is no picture of this diagram."));
      document.querySelector(".tools")?.remove();
      return;
    }
    this.svg = svg;
    this.prepare();
    this.place();
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
    this.box.append(this.paper);
    this.listen();
  }

  prepareItem(node) {
    const target = this.items.get(Number(node.dataset.view));
    if (target === undefined || target === this.element || !node.querySelector(":not(title)")) return;
    const link = makeShape("a", { class: "leads", href: addressOf(target), "data-element": target,
      "aria-label": spokenName(target, node) });
    node.replaceWith(link);
    link.append(node);
    for (const line of node.querySelectorAll("line, polyline[fill=none], path[fill=none]")) {
      const reach = line.cloneNode(); // a thin line is hard to hit
      reach.setAttribute("class", "reach");
      line.after(reach);
    }
  }

  // Where it was when the reader left it, by Back or by another way.
  place() {
    const old = positions.get(this.entry) || (this.shown === undefined && positions.get(this.element));
    if (old) this.move(...old);
    else this.fit();
    if (this.shown !== undefined) this.showItem(!old);
  }

  move(x, y, scale) {
    [this.x, this.y, this.scale] = [x, y, scale];
    for (const key of [this.element, this.entry]) positions.set(key, [x, y, scale]);
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

  // Marks what shows the element, and brings the first of it to the middle.
  showItem(isToMove) {
    const isIt = (node) => Number(node.dataset.element) === this.shown;
    const nodes = [...this.svg.querySelectorAll("[data-element]")].filter(isIt);
    if (nodes.length === 0) return;
    nodes.forEach((node) => node.append(halo(node.getBBox(), 4 * this.unit)));
    if (!isToMove) return;
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
      if (wasMoved) event.preventDefault(); // it was no click on the link below
    });
    this.box.addEventListener("dragstart", (event) => event.preventDefault());
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
    const step = { ArrowLeft: [60, 0], ArrowRight: [-60, 0], ArrowUp: [0, 60], ArrowDown: [0, -60] }[event.key];
    if (!step) return;
    this.move(this.x + step[0], this.y + step[1], this.scale);
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
    return make("div", { class: "tools", role: "toolbar", "aria-label": "Picture" },
      button("Smaller", "minus", "-"), this.percent, button("Larger", "plus", "+"),
      button("Whole picture", "fit", "0"),
      make("button", { type: "button", title: "Save as SVG", onclick: () => saveSvg(this.element) }, "SVG"),
      make("button", { type: "button", title: "Save as PNG",
        onclick: () => this.svg && savePng(this.element, this.width, this.height) }, "PNG"));
  }
}
