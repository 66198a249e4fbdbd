// The bar and the divider, and the start.

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
byId("print").addEventListener("click", () => (location.hash.length < 2 ? printModel() : byId("printing").showModal()));
byId("printing").addEventListener("close", ({ target: dialog }) => {
  if (dialog.returnValue === "page") print();
  else if (dialog.returnValue === "model") printModel();
  dialog.returnValue = "";
});
byId("show-keys").addEventListener("click", () => byId("keys").showModal());
byId("toggle-tree").addEventListener("click", switchTree);
byId("theme").addEventListener("click", switchTheme);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () =>
  setTheme(document.documentElement.dataset.theme));

document.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.altKey || event.metaKey || event.target.matches("input") || document.querySelector("dialog[open]")) return;
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

const keptTheme = kept((storage) => storage.getItem("petal-theme"));
setTheme(["light", "dark"].includes(keptTheme) ? keptTheme : undefined);
show();
