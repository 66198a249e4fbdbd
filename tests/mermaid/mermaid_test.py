"""Lets Mermaid read and draw in Chromium what `petal convert --to mermaid` writes: mermaid_test.py PETAL FILE..."""

import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).parent
sys.path.insert(0, str(HERE.parent / "browse"))

from webdriver import Browser, missing_programs  # noqa: E402

MERMAID = HERE / "node_modules/mermaid/dist/mermaid.min.js"
SKIPPED = 77

# Names that would mean something in one kind of diagram or another.
HOSTILE = ['"quoted"', "end", "note", "a;b", "x: y", "--> z", "<b>", "{}", "%% comment", "%%{init: {}}%%", "#35;", "*",
           "[x]", "class", "~T~", "a::b", "[*]", "`x`", "$$", "\\", "()", " ", "'", "@", "---", "-", "+"]
# Names in the model of everything that is drawn.
REPLACED = ["Order", "desk", "order", "receipt", "check", "open", "paid", "done", "reserve goods", "pack", "complete?",
            "Store", "number", "cancel", "holds", "lines", "Steps", "Classes", "Life of an order"]

READ = """
const text = arguments[1];
mermaid.initialize({startOnLoad: false, securityLevel: "strict"});
mermaid.parse(text)
    .then(() => mermaid.render("drawing", text))
    .then(() => done(""))
    .catch(fault => done(String(fault && fault.message || fault)));
"""


def hostile_models(text):
    for hostile in HOSTILE:
        escaped = hostile.replace("\\", "\\\\").replace('"', '\\"')
        changed = text
        for name in REPLACED:
            changed = changed.replace(f'"{name}"', f'"{escaped}"')
        yield hostile, changed


def texts_of(petal, folder, model):
    made = folder / "made"
    result = subprocess.run([petal, "convert", str(model), "--to", "mermaid", "-o", f"{made}/", "-q"],
                            capture_output=True, text=True)
    files = sorted(made.glob("*.mmd")) if made.exists() else []
    texts = [(f"{model.name}: {file.name}", file.read_text(encoding="utf-8")) for file in files]
    for file in files:
        file.unlink()
    if result.returncode != 0 and "there is nothing in it" not in result.stderr:
        raise SystemExit(f"{model}: {result.stderr}")
    return texts


def all_texts(petal, folder, models):
    for model in models:
        yield from texts_of(petal, folder, model)
    everything = models[0].read_text(encoding="utf-8")
    for hostile, text in hostile_models(everything):
        model = folder / "hostile.mdl"
        model.write_text(text, encoding="utf-8")
        for name, made in texts_of(petal, folder, model):
            yield f"{hostile!r} in {name}", made


def main():
    petal, *models = sys.argv[1:]
    missing = missing_programs() + ([] if MERMAID.exists() else ["mermaid (npm install --prefix tests/mermaid)"])
    if missing:
        print("skipped, for these are missing:", ", ".join(missing))
        return SKIPPED
    faults = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        page = folder / "page.html"
        page.write_text(f"<!DOCTYPE html><meta charset='utf-8'><script src='{MERMAID.as_uri()}'></script><body></body>", encoding="utf-8")
        browser = Browser(folder / "profile")
        try:
            browser.open(page.as_uri())
            count = 0
            for name, text in all_texts(petal, folder, [pathlib.Path(each) for each in models]):
                count += 1
                fault = browser.after_script(READ, name, text)
                if fault:
                    faults.append(f"{name}: {fault}\n{text}")
        finally:
            browser.close()
    print(*faults, sep="\n")
    print(f"{count} texts, {len(faults)} faults")
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
