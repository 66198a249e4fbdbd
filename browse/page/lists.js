// Long lists, and what stands below a title.

let mostLinks = 200; // in one list, until the others are asked for

// `holder` with the first of `items`, and a button that brings the others.
function limited(holder, items, makeItem) {
  const add = (each) => holder.append(makeItem(each));
  items.slice(0, mostLinks).forEach(add);
  if (items.length <= mostLinks) return [holder];
  const button = make("button", { type: "button", class: "more", onclick: () => {
    items.slice(mostLinks).forEach(add);
    button.remove();
  } }, "Show all " + items.length);
  return [holder, button];
}

const section = (title, ...content) => make("section", { "aria-label": title }, make("h2", {}, title), ...content);
