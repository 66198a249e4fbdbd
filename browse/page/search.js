// The field of the search and its results.

const search = (() => {
  const input = byId("search");
  const found = byId("found");
  const list = byId("results");
  let results = [];
  let chosen = -1;

  function marked(text, words) {
    const escaped = words.filter(Boolean).map((word) => word.replace(/[^\p{L}\p{N}\s]/gu, "\\$&"));
    if (escaped.length === 0) return [text];
    const pieces = text.split(new RegExp("(" + escaped.join("|") + ")", "i")); // every other one is a word
    return pieces.map((piece, i) => (i % 2 ? make("mark", {}, piece) : piece));
  }

  // Where the element is, or the piece of its documentation that was found.
  function placeText(element, words) {
    const text = proseOf(element);
    const lower = text.toLowerCase();
    const name = lowerName(element);
    const word = words.find((each) => lower.includes(each) && !name.includes(each));
    if (!word) return [ancestorsOf(element).map(nameOf).join(" \u203a ")];
    const start = Math.max(0, lower.indexOf(word) - 40);
    return marked((start ? "\u2026" : "") + text.slice(start, start + 160), words);
  }

  function makeResult(element, index, words) {
    return make("a", { class: "result", role: "option", id: "result-" + index, "aria-selected": "false",
      href: addressOf(element), tabindex: "-1", "data-index": index },
      iconOf(element),
      make("div", { class: "result-text" },
        make("div", { class: "result-name", dir: "auto" }, ...marked(nameOf(element), words)),
        make("div", { class: "result-place", dir: "auto" }, ...placeText(element, words))),
      make("span", { class: "result-kind" }, wordOf(element)));
  }

  function choose(index) {
    list.children[chosen]?.setAttribute("aria-selected", "false");
    chosen = results.length ? (index + results.length) % results.length : -1;
    const row = list.children[chosen];
    if (!row) {
      input.removeAttribute("aria-activedescendant");
      return;
    }
    row.setAttribute("aria-selected", "true");
    row.scrollIntoView({ block: "nearest" });
    input.setAttribute("aria-activedescendant", row.id);
  }

  function setOpen(isOpen) {
    found.hidden = !isOpen;
    input.setAttribute("aria-expanded", String(isOpen));
    if (!isOpen) input.removeAttribute("aria-activedescendant");
  }

  function update() {
    const query = input.value.trim().toLowerCase();
    const words = query.split(/\s+/);
    const result = find(query, words);
    results = result.elements;
    list.replaceChildren(...results.map((element, index) => makeResult(element, index, words)));
    const more = result.count > results.length ? ", the first " + results.length + " shown" : "";
    const count = result.count ? result.count.toLocaleString("en") + " found" : "Nothing found";
    byId("found-count").textContent = count + more;
    setOpen(query !== "");
    chosen = -1;
    choose(0);
  }

  function take(index) {
    if (!(index in results)) return;
    setOpen(false);
    input.blur();
    goTo(results[index]);
  }

  // First the results go, then the search.
  function leave() {
    if (found.hidden) {
      input.value = "";
      tree.focus();
    }
    setOpen(false);
  }

  const keys = {
    ArrowDown: () => (found.hidden ? update() : choose(chosen + 1)),
    ArrowUp: () => choose(chosen - 1),
    Enter: () => (found.hidden ? update() : take(chosen)),
    Escape: leave,
  };
  input.addEventListener("input", update);
  input.addEventListener("focus", () => searched());
  input.addEventListener("blur", () => setOpen(false));
  input.addEventListener("keydown", (event) => {
    if (!Object.hasOwn(keys, event.key) || event.isComposing) return;
    event.preventDefault();
    event.stopPropagation();
    keys[event.key]();
  });
  list.addEventListener("pointerdown", (event) => event.preventDefault()); // the focus stays in the field
  list.addEventListener("click", (event) => {
    const row = event.target.closest(".result");
    if (!row || opensElsewhere(event)) return;
    event.preventDefault();
    take(Number(row.dataset.index));
  });
  return {
    start: () => {
      input.focus();
      input.select();
      if (input.value.trim()) update();
    },
  };
})();
