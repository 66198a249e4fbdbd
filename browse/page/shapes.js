// Shapes and pictures as SVG.

function makeShape(tag, properties, ...content) {
  const node = document.createElementNS("http://www.w3.org/2000/svg", tag);
  for (const [key, value] of Object.entries(properties)) node.setAttribute(key, value);
  node.append(...content);
  return node;
}

// Only shapes, texts and images are taken from a picture.
function pictureFrom(text) {
  if (!text) return null;
  const parsed = new DOMParser().parseFromString(text, "image/svg+xml");
  const root = parsed.documentElement;
  if (root.localName !== "svg" || parsed.querySelector("parsererror")) return null;
  parsed.querySelectorAll("script, foreignObject, style, animate, set").forEach((node) => node.remove());
  for (const node of [root, ...root.querySelectorAll("*")])
    for (const { name, value } of [...node.attributes])
      if (/^on/i.test(name) || (/href$/i.test(name) && !/^(#|data:image\/(png|jpeg|gif);)/.test(value)))
        node.removeAttribute(name);
  return document.importNode(root, true);
}

function halo({ x, y, width, height }, room) {
  return makeShape("rect", { class: "halo", x: x - room, y: y - room, width: width + 2 * room,
    height: height + 2 * room, rx: room });
}
