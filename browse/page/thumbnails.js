// Small pictures of diagrams, made when they come into sight.

const pictureText = (diagram) => unpacked("picture-" + diagramOf().get(diagram));
const asImage = (text) => "data:image/svg+xml;charset=utf-8," + encodeURIComponent(text);

const thumbnailObserver = new IntersectionObserver(async (entries) => {
  for (const { target, isIntersecting } of entries) {
    if (!isIntersecting) continue;
    thumbnailObserver.unobserve(target);
    const text = await pictureText(Number(target.dataset.diagram));
    if (text) target.setAttribute("src", asImage(text));
  }
}, { root: byId("main"), rootMargin: "300px" });

function thumbnail(diagram) {
  if (isEmpty(diagram)) return make("span", { class: "thumbnail" });
  const image = make("img", { class: "thumbnail", alt: "", decoding: "async", "data-diagram": diagram });
  thumbnailObserver.observe(image);
  return image;
}

const isEmpty = (diagram) => diagrams[diagramOf().get(diagram)]?.[DiagramField.items].length === 0;

// A diagram with its picture, in which `shown` is to be marked.
function diagramCard(diagram, note, shown) {
  const words = [note, isEmpty(diagram) ? "empty" : ""].filter(Boolean).join(", ");
  return make("li", {}, make("a", { class: "card", href: addressOf(diagram, shown) }, thumbnail(diagram),
    make("span", { class: "card-name", dir: "auto" }, iconOf(diagram), nameOf(diagram)),
    make("span", { class: "note", dir: "auto" }, words)));
}

const cards = (list, noteOf, shown) =>
  limited(make("ul", { class: "cards" }), list, (each) => diagramCard(each, noteOf(each), shown));
