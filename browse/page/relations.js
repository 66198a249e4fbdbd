// Relations of an element, both ways.

const mostEnds = 100; // of an association, which has two

// An association as seen from each of its ends that is `element`.
function associationRows(element, association) {
  const ends = detailsOf(association).ends.slice(0, mostEnds);
  const words = (end) => [end[EndField.role], end[EndField.multiplicity]].filter(Boolean).join(" ");
  const leadsHere = (end) => end[EndField.target] === element;
  const isSeen = (own, i, other, k) => leadsHere(own) && k !== i && (!leadsHere(other) || k > i);
  return ends.flatMap((own, i) => ends.filter((other, k) => isSeen(own, i, other, k)).map((other) => {
    const note = [words(other), words(own) && "(this: " + words(own) + ")"].filter(Boolean).join(" ");
    return { phrase: forwardOf(association), via: association, note, role: words(other), ownRole: words(own),
      text: other[EndField.name], target: other[EndField.target], state: other[EndField.state] };
  }));
}

function rowsTo(element) {
  const relations = childrenOf(element).filter(isRelation);
  return [...(isRelation(element) ? [] : [element]), ...relations].filter((via) => detailsOf(via).to).map((via) => {
    const { to } = detailsOf(via);
    return { phrase: forwardOf(via), via: via === element ? -1 : via,
      text: targetName(to), target: to[TargetField.target], state: to[TargetField.state] };
  });
}

const placeOf = (element) => givenName(ancestorsOf(element).findLast(givenName) ?? 0);

function rowsFrom(element) {
  return (referrers().get(element) || []).flatMap((from) => {
    const { ends, to, type, parameters } = detailsOf(from);
    const inClass = { text: nameOf(parentOf(from)) + "." + nameOf(from), target: from, via: -1 };
    const backward = kindOf(from)[KindField.backward];
    const isParameter = (parameters || []).some((each) => each[ParameterField.target] === element);
    const rows = ends ? associationRows(element, from) : [];
    if (to && to[TargetField.target] === element)
      rows.push(isRelation(from)
        ? { phrase: backward, target: parentOf(from), via: from }
        : { phrase: backward, target: from, via: -1, note: "in " + placeOf(from) });
    if (type && type[TypeField.target] === element) rows.push({ phrase: backward, ...inClass });
    if (isParameter) rows.push({ phrase: "Parameter of", ...inClass });
    return rows;
  });
}

function relationItem({ text, target, state, via, note }) {
  const item = make("li", {}, target >= 0 ? iconOf(target) : "", reference(text, target), unresolved(state));
  if (note) item.append(noteOf(note));
  if (via >= 0) {
    const link = linkTo(via, givenName(via) || wordOf(via));
    link.setAttribute("aria-label", wordOf(via) + " " + nameOf(via));
    item.append(make("span", { class: "note" }, link));
  }
  return item;
}

function relationsSection(element) {
  const byPhrase = new Map();
  for (const row of [...rowsTo(element), ...rowsFrom(element)]) addTo(byPhrase, row.phrase, row);
  if (byPhrase.size === 0) return "";
  return section("Relations", ...[...byPhrase].flatMap(([phrase, rows]) =>
    [make("h3", {}, phrase), ...limited(make("ul", { class: "links" }), rows, relationItem)]));
}
