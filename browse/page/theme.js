// Light and dark.

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

byId("theme").addEventListener("click", switchTheme);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () =>
  setTheme(document.documentElement.dataset.theme));
const keptTheme = kept((storage) => storage.getItem("petal-theme"));
setTheme(["light", "dark"].includes(keptTheme) ? keptTheme : undefined);
