"""Uses the page of `petal diff --html` in Chromium, as a reader would: page_test.py PETAL [TEST...]

The environment variable PETAL_SCREENSHOTS names a folder for pictures of the page, to be looked at.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).parent
sys.path.insert(0, str(HERE.parent / "browse"))
from webdriver import Browser, missing_programs  # noqa: E402

PETAL = None
AXE = HERE.parent / "browse/node_modules/axe-core/axe.min.js"
HOSTILE = "</script><img src=x onerror=document.title='taken'>"


def a_class(identity, name, x, y, attributes=(), **more):
    return {"kind": "class", "id": identity, "name": name, **more,
            "attributes": [{"name": each, "type": "money"} for each in attributes],
            "projections": [{"diagram": "d", "x": x, "y": y, "width": 500, "height": 420}]}


def association(identity, one, other):
    return {"kind": "association", "id": identity, "projections": [{"diagram": "d"}],
            "roles": [{"name": "", "participant": each, "multiplicity": {"lower": 1, "upper": 1}}
                      for each in (one, other)]}


def model(*elements):
    return {"format": "kiv-model", "version": 1, "name": "Shop",
            "types": [{"id": "money", "name": "Money", "dataType": "NUMERIC", "length": 10}],
            "childPackages": [{"name": "Orders", "modelElements": list(elements), "diagrams": [
                {"id": "d", "name": "Main", "elements": [each["id"] for each in elements]}]}]}


OLD = model(a_class("order", "Order", 500, 500, ["price"], description="An order of a customer."),
            a_class("item", "Item", 1500, 500, ["count"]),
            a_class("gone", "Obsolete", 500, 1300, ["reason", "since"]),
            a_class("kept", "Kept", 2500, 500, ["a", "b", "c", "d", "e", "f"]),
            a_class("bill", "Bill", 2500, 1300, ["sum", "tax"]))
NEW = model(a_class("order", "Order", 500, 500, ["price", "total"], description="An order of a person."),
            a_class("item", "Item", 1700, 700, ["count"]),
            a_class("kept", "Kept", 2500, 500, ["a", "b", "c", "d", "e", "f", "g"]),
            a_class("bill", "Bill", 2500, 1300, ["sum"]),
            a_class("fresh", HOSTILE, 500, 1300, ["number", "date"]),
            association("bond", "fresh", "order"))


class Changes(unittest.TestCase):
    """The page is made once; each test starts with it anew and may leave nothing on the console."""

    @classmethod
    def setUpClass(cls):
        holder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        cls.addClassCleanup(holder.cleanup)
        cls.folder = pathlib.Path(holder.name)
        for name, content in (("old", OLD), ("new", NEW)):
            (cls.folder / f"{name}.model.json").write_text(json.dumps(content))
            cls.petal("export", f"{name}.model.json", "-q")
        cls.petal("diff", "old.mdl", "new.mdl", "--html", "changes.html", "-q", code=1)
        cls.petal("diff", "old.mdl", "old.mdl", "--html", "same.html", "-q")
        cls.browser = Browser(cls.folder / "profile")
        cls.addClassCleanup(cls.browser.close)

    @classmethod
    def petal(cls, *arguments, code=0):
        result = subprocess.run([PETAL, *arguments], cwd=cls.folder, check=False)
        assert result.returncode == code, arguments

    def setUp(self):
        self.open("changes")
        self.browser.console()

    def tearDown(self):
        self.assertEqual(self.browser.console(), [])

    def open(self, name):
        self.browser.open("about:blank")
        self.browser.open((self.folder / f"{name}.html").as_uri())
        self.browser.wait_for("document.querySelector('main h1')")

    def texts(self, selector):
        return self.browser.script("return [...document.querySelectorAll(arguments[0])].map((each) => each.textContent)",
                                   selector)

    def keep(self, name):
        if folder := os.environ.get("PETAL_SCREENSHOTS"):
            self.browser.screenshot(pathlib.Path(folder) / f"{name}.png")

    def show_pictures(self):
        self.browser.script("document.querySelector('.pair').scrollIntoView()")
        self.browser.wait_for("document.querySelectorAll('.pair .stage > svg').length === 2")

    def test_lists_all_changes(self):
        lines = self.texts(".all ul li")
        for line in ("\u2212class Obsolete", "+class " + HOSTILE, "+attribute total : long", "\u2192Item moved"):
            self.assertIn(line, lines)
        self.assertEqual(self.browser.script("return document.title"), "old.mdl \u2192 new.mdl")
        self.assertEqual(self.browser.find_all("img"), [])
        self.keep("changes")

    def test_shows_sheets_side_by_side(self):
        rows = self.browser.script("""return [...document.querySelectorAll("section[aria-label='class Order'] tbody tr")]
            .map((row) => [row.className, ...[...row.cells].map((cell) => cell.textContent)])""")
        self.assertIn(["is-changed", "~", "documentation", "An order of a customer.", "An order of a person."], rows)
        self.assertIn(["is-added", "+", "", "", "attribute total : long"], rows)
        self.assertIn("\u2212attribute tax : long", self.texts("section[aria-label='class Bill'] tbody tr"))
        self.assertEqual(self.texts("section[aria-label='class Order'] mark")[:2], ["customer", "person"])

    def test_folds_what_is_the_same(self):
        rows = "section[aria-label='class Kept'] tbody tr"
        before = len(self.texts(rows))
        self.browser.click("section[aria-label='class Kept'] .unchanged button")
        self.assertGreater(len(self.texts(rows)), before + 4)

    def test_marks_both_pictures(self):
        self.show_pictures()
        marks = self.browser.script("""return [...document.querySelectorAll('.stage > svg')].map((svg) =>
            [...svg.querySelectorAll('[data-mark]')].map((mark) => mark.dataset.mark).sort())""")
        self.assertEqual(marks[0], ["changed"] * 3 + ["moved", "removed"])
        self.assertEqual(marks[1], ["added"] * 3 + ["changed"] * 3 + ["moved"])
        # They are told from each other without colours: by their signs and by their lines.
        self.assertEqual(set(self.texts(".stage .badge text")), {"+", "\u2212", "~", "\u2192"})
        dashes = self.browser.script("""return [...document.querySelectorAll('.stage .frame')].map((frame) =>
            frame.parentNode.dataset.mark + getComputedStyle(frame).strokeDasharray)""")
        self.assertEqual(len(set(dashes)), 4)
        self.assertEqual(len({each[len("removed"):] if each.startswith("removed") else each for each in dashes}), 4)
        self.keep("changes-pictures")

    def test_filters(self):
        self.browser.click("#filters button.is-added")
        self.assertNotIn("+attribute total : long", self.texts(".all ul li"))
        self.assertIn("\u2212attribute tax : long", self.texts(".all ul li"))
        self.assertEqual(self.browser.find_all("tr.is-added"), [])
        self.browser.click("#filters button.is-added")
        self.assertIn("+attribute total : long", self.texts(".all ul li"))
        self.browser.script("const choice = document.querySelector('#filters select'); choice.value = 'view';"
                            "choice.dispatchEvent(new Event('change'))")
        self.assertEqual(self.texts("section.changed h2"), ["diagram Logical View::Orders::Main"])

    def test_follows_a_link_of_the_list(self):
        self.browser.script("[...document.querySelectorAll('.all a')].find((each) =>"
                            " each.textContent === 'class Obsolete').click()")
        self.browser.wait_for("document.getElementById(location.hash.slice(1)).getBoundingClientRect().top < 400")
        heading = self.browser.script("return document.getElementById(location.hash.slice(1)).ariaLabel")
        self.assertEqual(heading, "class Obsolete")

    def test_says_that_nothing_is_different(self):
        self.open("same")
        self.assertIn("Nothing is different.", self.texts("main")[0])

    def test_fits_narrow_windows(self):
        self.addCleanup(self.browser.devtools, "Emulation.clearDeviceMetricsOverride")
        self.browser.devtools("Emulation.setDeviceMetricsOverride", width=400, height=800, deviceScaleFactor=1,
                              mobile=False)
        self.open("changes")
        self.show_pictures()
        self.assertEqual(self.browser.script("const main = document.getElementById('main');"
                                             "return main.scrollWidth - main.clientWidth"), 0)
        self.keep("changes-narrow")

    @unittest.skipUnless(AXE.exists(), "axe-core is not there: npm ci --prefix tests/browse")
    def test_has_no_serious_barriers(self):
        self.addCleanup(self.browser.devtools, "Emulation.setEmulatedMedia", media="", features=[])
        for theme in ("light", "dark"):
            self.browser.devtools("Emulation.setEmulatedMedia", media="",
                                  features=[{"name": "prefers-color-scheme", "value": theme}])
            self.open("changes")
            self.show_pictures()
            self.browser.script(AXE.read_text(encoding="utf-8"))
            found = self.browser.after_script("""axe.run().then(({ violations }) => done(violations
                .filter(({ impact }) => ["serious", "critical"].includes(impact))
                .map(({ id, nodes }) => [id, nodes.map((node) => node.html)])));""")
            self.assertEqual(found, [], theme)


if __name__ == "__main__":
    if missing := missing_programs():
        print("skipped: these programs of Debian's packages chromium and chromium-driver are not installed: "
              + ", ".join(missing))
        sys.exit(77)
    PETAL = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
