"""What the tests of the pages of `petal browse` have in common: models, their pages, and the way through them."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

from webdriver import Browser, missing_programs

HOSTILE = "</script><img src=x onerror=document.title='taken'>"
WORDS = "An order is <b>placed</b> by a customer.\nIt has items."


def attribute(name, kind, **more):
    return {"name": name, "type": kind, "visibility": 2, **more}


def small_model():
    """Two packages; a class diagram with three classes, an inheritance and an association."""
    def shown(x, y):
        return [{"diagram": "d", "x": x, "y": y, "width": 500, "height": 420}]

    order = {"kind": "class", "id": "order", "name": "Order", "description": WORDS,
             "attributes": [attribute("price", "money", description="What it costs."),
                            attribute("seal", "bytes"), attribute("progress", "progress")],
             "operations": [{"name": "pay", "returnType": "money", "arguments": [{"name": "amount", "type": "money"}]}],
             "projections": shown(500, 500)}
    item = {"kind": "class", "id": "item", "name": "Item", "attributes": [], "projections": shown(1500, 500)}
    rush = {"kind": "class", "id": "rush", "name": "Rush order", "attributes": [], "projections": shown(500, 1300)}
    hostile = {"kind": "class", "id": "hostile", "name": HOSTILE, "description": HOSTILE, "attributes": [],
               "projections": shown(1500, 1300)}
    inheritance = {"kind": "generalization", "id": "g", "supertypes": ["order"], "subtypes": ["rush"],
                   "projections": [{"diagram": "d"}]}
    association = {"kind": "association", "id": "a", "name": "contains", "projections": [{"diagram": "d"}],
                   "roles": [{"name": "order", "participant": "order", "multiplicity": {"lower": 1, "upper": 1}},
                             {"name": "items", "participant": "item", "multiplicity": {"lower": 0, "upper": -1}}]}
    elements = [order, item, rush, hostile, inheritance, association]
    orders = {"name": "Orders", "modelElements": elements,
              "diagrams": [{"id": "d", "name": "Orders at a glance", "elements": [each["id"] for each in elements]}]}
    other = {"name": "Other", "modelElements": [{"kind": "class", "id": "x", "name": "Customer", "attributes": []}]}
    return {"format": "kiv-model", "version": 1, "name": "Shop", "childPackages": [orders, other],
            "types": [{"id": "money", "name": "Money", "dataType": "NUMERIC", "length": 10},
                      {"id": "bytes", "name": "Bytes", "dataType": "VARBINARY", "length": 9},
                      {"id": "progress", "name": "Progress", "kind": "derivedType", "dataType": "CHAR",
                       "typeValues": [{"name": "begun", "value": "'B'"}, {"name": "paused", "value": "','"}]}]}


def large_model(class_count):
    """Packages of 50 classes, each class with 8 attributes and 5 operations, and a diagram for every package."""
    packages = []
    for first in range(0, class_count, 50):
        diagram = f"d{first}"
        elements = [{
            "kind": "class", "id": f"c{number}", "name": f"Class{number}",
            "description": f"What class {number} is for.",
            "attributes": [attribute(f"attribute{k}", "text") for k in range(8)],
            "operations": [{"name": f"operation{k}", "returnType": "text"} for k in range(5)],
            "projections": [{"diagram": diagram, "x": 300 + 700 * (number % 7), "y": 400 + 900 * (number % 50 // 7),
                             "width": 500, "height": 700}],
        } for number in range(first, first + 50)]
        packages.append({"name": f"Package{first // 50}", "modelElements": elements,
                         "diagrams": [{"id": diagram, "name": "Main", "elements": [each["id"] for each in elements]}]})
    return {"format": "kiv-model", "version": 1, "name": "Large", "childPackages": packages,
            "types": [{"id": "text", "name": "Text", "dataType": "VARCHAR", "length": 10}]}


def page_of(petal, folder, name, model):
    source = folder / f"{name}.model.json"
    source.write_text(json.dumps(model))
    for command in (["export", source, "-q"], ["browse", folder / f"{name}.mdl"]):
        subprocess.run([petal, *command], cwd=folder, check=True)
    return folder / f"{name}.html"


class Pages(unittest.TestCase):
    """The pages are made once; each test starts at the overview and may leave nothing on the console."""

    petal = None

    @classmethod
    def setUpClass(cls):
        cls.folder_holder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        cls.addClassCleanup(cls.folder_holder.cleanup)
        cls.folder = pathlib.Path(cls.folder_holder.name)
        cls.page = page_of(cls.petal, cls.folder, "shop", small_model())
        cls.browser = Browser(cls.folder / "profile")
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.open("about:blank")
        self.browser.devtools("Emulation.setEmulatedMedia", media="", features=[])
        self.open(self.page.as_uri())
        self.browser.console()

    def open(self, address):
        """Opens a page anew; it unpacks its model before it shows anything."""
        self.browser.open("about:blank")
        self.browser.open(address)
        self.browser.wait_for("document.querySelector('main h1, main .message')")

    def tearDown(self):
        self.assertEqual(self.browser.console(), [])

    def text(self, selector):
        return self.browser.script("return document.querySelector(arguments[0])?.textContent ?? null", selector)

    def wait_for_title(self, title):
        self.browser.wait_for("document.querySelector('main h1')?.textContent === " + json.dumps(title))

    def search(self, words):
        self.browser.press("/")
        self.browser.script("document.getElementById('search').value = ''")
        self.browser.press(words)

    def found_names(self):
        return self.browser.script(
            "return [...document.querySelectorAll('.result-name')].map((name) => name.textContent)")

    def go_to(self, name):
        self.search(name)
        self.browser.press("Enter")
        self.wait_for_title(name)

    def go_to_diagram(self):
        self.go_to("Orders at a glance")
        self.browser.wait_for("document.querySelector('.paper')")

    def active_row(self):
        return self.browser.script(
            "const tree = document.getElementById('tree');"
            "return document.getElementById(tree.getAttribute('aria-activedescendant'))?.getAttribute('aria-label')")

    def transform(self):
        return self.browser.script("return document.querySelector('.paper').style.transform")

    def keep(self, name):
        if folder := os.environ.get("PETAL_SCREENSHOTS"):
            self.browser.screenshot(pathlib.Path(folder) / f"{name}.png")


def main():
    """Runs the tests of the program: TEST PETAL [TEST...]"""
    if missing := missing_programs():
        print("skipped: these programs of Debian's packages chromium and chromium-driver are not installed: "
              + ", ".join(missing))
        sys.exit(77)
    Pages.petal = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
