// Addresses: #Name~ID, and #Name~ID@ID for a diagram with an element in it.

const encoded = (text) => encodeURIComponent(text).replaceAll("~", "%7E").replaceAll("'", "%27");

function addressOf(element, shown) {
  if (element === 0 && !isUnit) return "#";
  const name = Array.from(nameOf(element).trim().replace(/[\s/]+/g, "-")).slice(0, 40).join("");
  const at = shown === undefined ? "" : "@" + encoded(elements[shown][ElementField.id]);
  return "#" + encoded(name) + "~" + encoded(elements[element][ElementField.id]) + at;
}

function decoded(text) {
  try {
    return decodeURIComponent(text);
  } catch {
    return text;
  }
}

// `#Customer`, as people type it: the element of that name, the classes first.
function placeOfName(name) {
  const wanted = name.toLowerCase();
  const named = elements.flatMap((each, element) => (nameOf(element).toLowerCase() === wanted ? [element] : []));
  const rankOf = (element) => (groupOf(element) === Group.classifier ? -1 : groupOf(element));
  return [named.sort((a, b) => rankOf(a) - rankOf(b) || a - b)[0]];
}

// [element, element shown in it]; undefined for what is not in this model.
function placeOfAddress() {
  const address = location.hash.slice(1);
  if (!address) return [0];
  if (!address.includes("~")) return placeOfName(decoded(address));
  const [id, shown] = address.slice(address.lastIndexOf("~") + 1).split("@").map(decoded);
  return [elementById().get(id), shown === undefined ? undefined : elementById().get(shown)];
}

const focusTitle = () => document.querySelector("main h1")?.focus({ preventScroll: true });

function goTo(element) {
  const address = addressOf(element);
  if (location.hash === address) focusTitle(); // it is there already
  else location.hash = address;
}

const opensElsewhere = (event) => event.ctrlKey || event.metaKey || event.shiftKey || event.altKey;

const linkTo = (element, text = nameOf(element), shown = undefined) =>
  make("a", { href: addressOf(element, shown), dir: "auto" }, text);
