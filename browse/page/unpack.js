// What the page holds is packed: deflated, in the characters of Base64.

if (!("DecompressionStream" in window)) {
  byId("main").append(make("p", { class: "message" }, "This browser is too old to unpack the page."));
  return;
}

function bytesOf(text) {
  const characters = atob(text);
  const bytes = new Uint8Array(characters.length);
  for (let i = 0; i < characters.length; ++i) bytes[i] = characters.charCodeAt(i);
  return bytes;
}

// Pictures stand behind the script.
const allIsRead = new Promise((resolve) => {
  if (document.readyState === "loading") document.addEventListener("DOMContentLoaded", resolve);
  else resolve();
});

// The text that the element holds; the empty one when there is none.
async function unpacked(id) {
  if (!byId(id)) await allIsRead;
  const packed = byId(id)?.textContent.trim();
  if (!packed) return "";
  const stream = new Blob([bytesOf(packed)]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Response(stream).text();
}
