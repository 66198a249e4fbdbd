"""Uses the pages of `petal browse` in Chromium, as a reader would: browser_test.py PETAL [TEST...]

The environment variable PETAL_SCREENSHOTS names a folder for pictures of the pages, to be looked at.
"""

import json
import subprocess
import time

from pages import HOSTILE, WORDS, Pages, main


class Reading(Pages):
    """What is in the pages, and how it is found."""

    def test_opens_from_disk(self):
        rows = self.browser.script("return [...document.querySelectorAll('[role=treeitem]')].map((row) =>"
                                   " [row.textContent, row.getAttribute('aria-level')])")
        self.assertEqual(rows, [["Use Case View", "1"], ["Logical View", "1"], ["Orders", "2"], ["Other", "2"],
                                ["Component View", "1"], ["Deployment View", "1"]])
        self.assertEqual(self.browser.script("return document.title"), "shop.mdl")
        self.assertIn("Orders at a glance", self.text("main"))
        self.keep("overview")

    def test_shows_the_sheet_of_an_element(self):
        self.go_to("Order")
        self.keep("sheet")
        sheet = self.text("main")
        for part in (WORDS, "What it costs.", "pay(amount : ", "items 0..n", "Inherited by",
                     "Logical View::Orders::Order"):
            with self.subTest(part):
                self.assertIn(part, sheet)

    def test_shows_whole_types_and_literals(self):
        self.go_to("Order")
        self.assertIn("std::vector<std::byte>", self.text("main"))
        self.go_to("Progress")
        self.assertIn("enumeration", self.text("main .sort"))
        cells = self.browser.script("return [...document.querySelectorAll(\"[aria-label='Literals'] td\")]"
                                    ".map((cell) => cell.textContent)")
        self.assertEqual([cell for cell in cells if cell not in ("Name", "Value")], ["begun", "'B'", "paused", "','"])

    def test_tells_the_faults_of_a_file(self):
        broken = self.folder / "broken.mdl"
        broken.write_text('(object Petal version 42)\n(object Design "Logical View"\n  is_unit = TRUE\n')
        result = subprocess.run([self.petal, "browse", broken.name], cwd=self.folder, stderr=subprocess.PIPE, text=True)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.open((self.folder / "broken.html").as_uri())
        self.assertIn("Faults of the file", self.text("main"))
        self.assertIn("broken.mdl:4:1", self.text("main"))

    def test_searches_as_you_type(self):
        for words, first, count in (("ord", "Order", None), ("ITEM", "Item", None), ("rush ord", "Rush order", None),
                                    ("placed customer", "Order", 1), ("what it costs", "price", 1), ("zzz", None, 0),
                                    ("orders::order", "Order", None), ("order.price", "price", 1),
                                    ("other::order", None, 0), ("paused", "Progress", 1), ("order price", "price", 1)):
            with self.subTest(words):
                self.search(words)
                names = self.found_names()
                self.assertEqual(names[0] if names else None, first)
                if count is not None:
                    self.assertEqual(len(names), count)
                self.browser.press("Escape")
                self.assertEqual(self.browser.script("return document.getElementById('found').hidden"), True)
                self.browser.press("Escape")
                self.assertEqual(self.browser.script("return document.activeElement.id"), "tree")

    def test_chooses_a_result_by_keys(self):
        self.search("ord")
        self.keep("search")
        names = self.found_names()
        self.browser.press("Down", "Down", "Up", "Enter")
        self.wait_for_title(names[1])

    def test_clicks_through_and_goes_back(self):
        self.go_to("Order")
        sheet = self.browser.script("return location.hash")
        self.assertRegex(sheet, "^#Order~[0-9A-F]{12}$")
        self.browser.click("section[aria-label='Shown in'] a")
        self.wait_for_title("Orders at a glance")
        self.browser.wait_for("document.querySelector('[data-element] .halo')")
        self.keep("diagram")
        item = ".leads[aria-label='class Item']"
        self.browser.click(item)
        self.wait_for_title("Item")
        self.browser.back()
        self.wait_for_title("Orders at a glance")
        self.browser.back()
        self.wait_for_title("Order")
        self.assertEqual(self.browser.script("return location.hash"), sheet)
        self.browser.forward()
        self.wait_for_title("Orders at a glance")
        self.browser.wait_for(f"document.querySelector({json.dumps(item)})")
        self.browser.script("document.querySelector(arguments[0]).focus()", item)
        self.browser.press("Enter")
        self.wait_for_title("Item")

    def test_draws_the_neighbourhood_of_a_class(self):
        self.go_to("Order")
        section = "section[aria-label='Neighbourhood'] "
        names = self.browser.script("return [...document.querySelectorAll(arguments[0])].map((each) =>"
                                    " each.getAttribute('aria-label'))", section + "a")
        self.assertEqual(names, ["Item", "Rush order"])
        self.assertEqual(self.text(section + ".self text"), "Order")
        self.assertIn("items 0..n", self.text(section + ".label"))
        self.keep("neighbourhood")
        self.browser.click(section + "a[aria-label='Rush order']")
        self.wait_for_title("Rush order")
        middles = self.browser.script("return [...document.querySelectorAll(arguments[0])].map((box) => {"
                                      " const { top, bottom } = box.getBoundingClientRect();"
                                      " return (top + bottom) / 2; })", section + "a, " + section + ".self")
        self.assertLess(*middles, "the supertype stands above")

    def test_has_figures_that_lead_somewhere(self):
        figures = self.browser.script("return [...document.querySelectorAll('.figures a')].map((each) =>"
                                      " each.textContent)")
        self.assertEqual(figures[:5], ["4packages", "5classes", "1enumeration", "1association", "4diagrams"])
        self.assertIn("1relation", figures)
        self.browser.script("[...document.querySelectorAll('.figures a')][4].click()")
        self.wait_for_title("Orders at a glance")

    def test_shows_the_diagrams_small(self):
        self.browser.wait_for("document.querySelector('.card img')?.complete &&"
                              " document.querySelector('.card img').naturalWidth > 100")
        self.go_to("Order")
        self.browser.script("document.querySelector('.card').scrollIntoView()")
        self.browser.wait_for("document.querySelector('.card img').naturalWidth > 100")
        self.browser.click("section[aria-label='Shown in'] .card")
        self.wait_for_title("Orders at a glance")

    def test_has_real_links(self):
        self.search("order")
        for selector in (".result", ".row", "a.card", ".leads"):
            with self.subTest(selector):
                if selector == ".leads":
                    self.go_to_diagram()
                self.browser.script("document.querySelector(arguments[0]).addEventListener('auxclick',"
                                    " (event) => { window.opened = event.target.closest('a').href?.baseVal"
                                    " ?? event.target.closest('a').href; event.preventDefault(); })", selector)
                before = self.browser.script("return location.hash")
                self.browser.middle_click(selector)
                self.assertIn("#", self.browser.script("return window.opened"))
                self.assertEqual(self.browser.script("return location.hash"), before)
                if selector == ".result":
                    self.browser.press("Escape", "Escape")

    def test_copies_a_link_and_saves_a_diagram(self):
        self.go_to("Order")
        self.browser.script("navigator.clipboard.writeText = async (text) => { window.copied = text; }")
        self.browser.click("button[aria-label='Copy link']")
        self.browser.wait_for("window.copied === location.href")
        self.browser.wait_for("document.getElementById('status').textContent === 'Link copied'")
        self.browser.devtools("Browser.setDownloadBehavior", behavior="allow", downloadPath=str(self.folder))
        self.go_to_diagram()
        for ending, start in (("SVG", b"<"), ("PNG", b"\x89PNG")):
            with self.subTest(ending):
                self.browser.click(f"button[title='Save as {ending}']")
                saved = self.folder / ("Logical-View-Orders-Orders-at-a-glance." + ending.lower())
                end = time.monotonic() + 10
                while not saved.exists() and time.monotonic() < end:
                    time.sleep(0.05)
                self.assertTrue(saved.read_bytes().startswith(start))

    def test_keeps_zoom_and_place_for_the_way_back(self):
        self.go_to("Order")
        self.browser.click("section[aria-label='Shown in'] a")
        self.browser.wait_for("document.querySelector('.halo')")
        self.browser.press("+", "+")
        transform = self.transform()
        self.browser.click("section[aria-label='On this diagram'] a")
        self.browser.wait_for("document.querySelector('.sheet')")
        self.browser.back()
        self.browser.wait_for("document.querySelector('.halo')")
        self.assertEqual(self.transform(), transform)

    def test_shows_the_keys(self):
        self.browser.press("?")
        self.assertTrue(self.browser.script("return document.getElementById('keys').open"))
        self.browser.press("Escape")
        self.assertFalse(self.browser.script("return document.getElementById('keys').open"))

    def test_opens_an_address(self):
        self.go_to("Order")
        address = self.browser.script("return location.href")
        for where, title in ((address, "Order"), (address.replace("#Order~", "#Old-name~"), "Order")):
            self.open(where)
            self.assertEqual(self.text("main h1"), title, where)
        self.open(self.page.as_uri() + "#rush%20order")
        self.assertEqual(self.text("main h1"), "Rush order")
        for wrong in ("#Order~000000000BAD", "#%E0%A4%A", "#~"):
            self.browser.open(self.page.as_uri() + wrong)
            self.browser.wait_for("document.querySelector('main .message')")

    def test_moves_in_the_tree_by_keys(self):
        self.browser.script("document.getElementById('tree').focus()")
        for keys, row in ((["Down"], "package Logical View"), (["Left", "Right"], "package Logical View"),
                          (["Right", "Down"], "package Other"), (["Left"], "package Logical View"),
                          (["Left", "Down"], "component package Component View"), (["End"], "view Deployment View"),
                          (["Home"], "package Use Case View"), (["l"], "package Logical View"),
                          (["*", "Right", "Right", "Right"], "class diagram Orders at a glance")):
            with self.subTest(keys):
                self.browser.press(*keys)
                self.assertEqual(self.active_row(), row)
        self.browser.press("Enter")
        self.wait_for_title("Orders at a glance")
        self.assertEqual(self.browser.script("return document.activeElement.id"), "tree")

    def test_zooms_and_moves_a_picture(self):
        self.go_to_diagram()
        whole = self.transform()
        center = self.browser.script("const box = document.querySelector('.picture').getBoundingClientRect();"
                                     "return [box.left + box.width / 2, box.top + box.height / 2].map(Math.round)")
        ways = {"+": lambda: self.browser.press("+"), "-": lambda: self.browser.press("-"),
                "1": lambda: self.browser.press("+", "1"),
                "button": lambda: self.browser.click("button[aria-label='Larger']"),
                "wheel": lambda: self.browser.wheel(*center, -200),
                "drag": lambda: self.browser.drag(*center, 80, 60),
                "arrow": lambda: (self.browser.script("document.querySelector('.picture').focus()"),
                                  self.browser.press("Left"))}
        for name, way in ways.items():
            with self.subTest(name):
                way()
                self.browser.wait_for("document.querySelector('.paper').style.transform !== " + json.dumps(whole)
                                      if name != "1" else "document.querySelector('.percent').textContent === '100 %'")
                self.assertEqual(self.text("main h1"), "Orders at a glance")
                self.browser.press("0")
                self.assertEqual(self.transform(), whole)

    def test_keeps_hostile_names_as_texts(self):
        self.go_to(HOSTILE)
        for selector, text in (("main h1", HOSTILE), (".documentation", HOSTILE)):
            self.assertEqual(self.text(selector), text)
        self.browser.click("section[aria-label='Shown in'] a")
        self.wait_for_title("Orders at a glance")
        self.browser.wait_for("document.querySelector('.paper svg')")
        self.assertEqual(self.browser.script("return document.querySelectorAll('img').length"), 0)
        self.assertNotIn("taken", self.browser.script("return document.title"))


if __name__ == "__main__":
    main()
