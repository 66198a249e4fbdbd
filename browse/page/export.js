// What leaves the page: links and pictures.

const mostPixels = 8000; // a side of a PNG picture

let statusTimer = 0;
function tell(text) {
  const status = byId("status");
  status.textContent = text;
  status.hidden = false;
  clearTimeout(statusTimer);
  statusTimer = setTimeout(() => {
    status.hidden = true;
  }, 4000);
}

async function copy(text) {
  try {
    await navigator.clipboard.writeText(text);
  } catch { // not allowed for this page, or not known
    const field = make("textarea", { class: "copied", "aria-label": "Link" }, text);
    document.body.append(field);
    field.select();
    const isCopied = document.execCommand("copy");
    field.remove();
    return isCopied;
  }
  return true;
}

const copyButton = (element) => make("button", { type: "button", class: "quiet", "aria-label": "Copy link",
  title: "Copy link", onclick: async ({ currentTarget: button }) => {
    const address = location.href.split("#")[0] + addressOf(element);
    tell(await copy(address) ? "Link copied" : "This browser lets no link be copied: " + address);
    button.focus();
  } }, icon("link"));

function offer(blob, name) {
  const link = make("a", { href: URL.createObjectURL(blob), download: name });
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

const fileName = (element, ending) => fullName(element).replace(/[\\/:*?"<>|\s]+/g, "-").slice(-80) + ending;

async function asPng(text, width, height) {
  const image = new Image();
  image.src = asImage(text);
  await image.decode();
  const scale = Math.min(2, mostPixels / width, mostPixels / height);
  const canvas = make("canvas", { width: Math.round(width * scale), height: Math.round(height * scale) });
  canvas.getContext("2d").drawImage(image, 0, 0, canvas.width, canvas.height);
  return new Promise((resolve) => {
    canvas.toBlob(resolve, "image/png");
  });
}

async function saveSvg(diagram) {
  offer(new Blob([await pictureText(diagram)], { type: "image/svg+xml" }), fileName(diagram, ".svg"));
}

async function savePng(diagram, width, height) {
  const blob = await asPng(await pictureText(diagram), width, height).catch(() => null);
  if (blob) offer(blob, fileName(diagram, ".png"));
  else tell("This browser makes no PNG picture of this diagram.");
}
