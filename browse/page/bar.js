// The bar and the divider, and the start.

function switchTree() {
  const isHidden = byId("columns").classList.toggle("without-tree");
  byId("toggle-tree").setAttribute("aria-pressed", String(!isHidden));
}

// In a narrow window the tree is a drawer, which lies over the page and is closed at first.
const isNarrow = matchMedia("screen and (max-width: 760px)");
const closeDrawer = () => {
  if (isNarrow.matches && !byId("columns").classList.contains("without-tree")) switchTree();
};

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
byId("print").addEventListener("click", () => {
  if (location.hash.length < 2) printModel();
  else byId("printing").showModal();
});
byId("printing").addEventListener("close", ({ target: dialog }) => {
  if (dialog.returnValue === "page") print();
  else if (dialog.returnValue === "model") printModel();
  dialog.returnValue = "";
});
byId("show-keys").addEventListener("click", () => byId("keys").showModal());
byId("toggle-tree").addEventListener("click", switchTree);

document.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.altKey || event.metaKey) return;
  if (event.target.matches("input") || document.querySelector("dialog[open]")) return;
  if (event.key === "/") search.start();
  else if (event.key === "?") byId("keys").showModal();
  else if (event.key === "Escape") tree.focus();
  else if (!picture || tree.hasFocus() || !picture.key(event.key)) return;
  event.preventDefault();
});
addEventListener("hashchange", () => {
  show();
  closeDrawer();
});
isNarrow.addEventListener("change", closeDrawer);
closeDrawer();

show();
