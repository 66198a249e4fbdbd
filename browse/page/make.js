// Making elements of the page. Whatever comes from the model gets into the page as text only.

const byId = (id) => document.getElementById(id);

function make(tag, properties = {}, ...content) {
  const node = document.createElement(tag);
  for (const [key, value] of Object.entries(properties)) {
    if (key === "class") node.className = value;
    else if (key === "onclick") node.addEventListener("click", value);
    else if (value !== undefined) node.setAttribute(key, value);
  }
  node.append(...content.filter((part) => part !== "" && part !== undefined));
  return node;
}

function icon(name, extra = "") {
  const namespace = "http://www.w3.org/2000/svg";
  const svg = document.createElementNS(namespace, "svg");
  svg.setAttribute("class", "icon " + extra);
  svg.setAttribute("aria-hidden", "true");
  const use = document.createElementNS(namespace, "use");
  use.setAttribute("href", "#icon-" + name);
  svg.append(use);
  return svg;
}
