// What a search finds. Many elements have the same name, so each name is compared once.

const mostResults = 60;
const mostSorted = 5000; // of alike results
const mostWords = 30;

// What is searched beside the name.
const proseOf = (element) => [detailsOf(element).documentation || "",
  ...(literals().get(element) || []).map(([name]) => name)].filter(Boolean).join("\n");

// Different texts, and which of them each element has.
function textTable(textOf) {
  const places = new Map();
  const texts = [];
  const of = new Int32Array(elements.length);
  for (let element = 0; element < elements.length; ++element) {
    const text = textOf(element).toLowerCase();
    let place = places.get(text);
    if (place === undefined) {
      place = texts.length;
      places.set(text, place);
      texts.push(text);
    }
    of[element] = place;
  }
  return { texts, of };
}
const searched = once(() => ({ names: textTable(givenName), prose: textTable(proseOf) }));
const lowerName = (element) => searched().names.texts[searched().names.of[element]];

// 0 for the name itself, then beginnings, beginnings of words, parts; -1 for nothing of it.
function rankInName(name, query) {
  const at = name.indexOf(query);
  if (at <= 0) return at < 0 ? -1 : Number(name.length !== query.length);
  return /[\p{L}\p{N}]/u.test(name[at - 1]) ? 3 : 2;
}

const ranksOf = (texts, query) => Int8Array.from(texts, (name) => rankInName(name, query));

// Which of the words are in each text, as bits.
const hitsOf = (texts, words) =>
  Int32Array.from(texts, (text) => words.reduce((hits, word, i) => (text.includes(word) ? hits | (1 << i) : hits), 0));

// `Package::Class` and `Class.member`: the parts in front of the last one must begin the names around the element.
function isWithin(element, owners) {
  let each = element;
  return owners.every((owner) => {
    each = parentOf(each);
    return each > 0 && lowerName(each).startsWith(owner);
  });
}

// Returns the rank of an element: in its name; as a path; several words in its name and in that of its owner, or also
// in what is written about it, which is rank 4.
function ranking(query, words) {
  const { names, prose } = searched();
  const ranks = ranksOf(names.texts, query);
  const inNames = hitsOf(names.texts, words);
  const inProse = hitsOf(prose.texts, words);
  const all = 2 ** words.length - 1;
  const parts = query.split(/::|\./).map((part) => part.trim());
  const isPath = parts.length > 1 && parts.every(Boolean);
  const lastRanks = isPath ? ranksOf(names.texts, parts[parts.length - 1]) : ranks;
  const owners = parts.slice(0, -1).reverse();
  return (element) => {
    const name = names.of[element];
    if (ranks[name] >= 0) return ranks[name];
    if (isPath && lastRanks[name] >= 0 && isWithin(element, owners)) return lastRanks[name];
    const hits = inNames[name];
    if (hits !== 0 && (hits | inNames[names.of[parentOf(element)]]) === all) return 3;
    return inProse[prose.of[element]] !== 0 && (hits | inProse[prose.of[element]]) === all ? 4 : -1;
  };
}

// By rank, features behind the rest, the shortest names first; alike ones keep the order of the file.
function find(query, allWords) {
  const words = allWords.slice(0, mostWords);
  const buckets = Array.from({ length: 10 }, () => []);
  const rankOf = ranking(query, words);
  let count = 0;
  for (let element = isUnit ? 0 : 1; query && element < elements.length; ++element) {
    const rank = rankOf(element);
    if (rank < 0) continue;
    ++count;
    const bucket = buckets[2 * rank + (groupOf(element) >= Group.feature ? 1 : 0)];
    if (bucket.length < mostSorted) bucket.push(element);
  }
  const byLength = (a, b) => lowerName(a).length - lowerName(b).length || a - b;
  return { count, elements: buckets.flatMap((bucket) => bucket.sort(byLength)).slice(0, mostResults) };
}
