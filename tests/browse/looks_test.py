"""Uses the pages of `petal browse` in Chromium, as a reader would: looks_test.py PETAL [TEST...]

The environment variable PETAL_SCREENSHOTS names a folder for pictures of the pages, to be looked at.
"""

import base64
import pathlib
import sys
import time
import unittest

from pages import Pages, large_model, main, page_of

AXE = pathlib.Path(__file__).parent / "node_modules/axe-core/axe.min.js"


class Looks(Pages):
    """How the pages look, on what they are shown, for whom, and how fast."""

    def test_has_the_tree_as_a_drawer_when_narrow(self):
        def width():
            return self.browser.script("return document.getElementById('navigation').getBoundingClientRect().width")
        self.browser.devtools("Emulation.setDeviceMetricsOverride", width=400, height=800, deviceScaleFactor=1,
                              mobile=False)
        try:
            self.open(self.page.as_uri())
            self.assertEqual(width(), 0)
            self.browser.click("#toggle-tree")
            self.assertGreater(width(), 200)
            self.browser.click("#row-1")
            self.browser.wait_for("location.hash !== ''")
            self.assertEqual(width(), 0)
            self.go_to("Order")
            wide = "return document.documentElement.scrollWidth - document.documentElement.clientWidth"
            self.assertEqual(self.browser.script(wide), 0)
            self.keep("narrow")
        finally:
            self.browser.devtools("Emulation.clearDeviceMetricsOverride")

    def test_names_its_controls(self):
        for name in (None, "Order", "Orders at a glance"):
            if name:
                self.go_to(name)
            controls = self.browser.find_all("button, a, input, [tabindex='0'], [role=treeitem]")
            self.assertGreater(len(controls), 8)
            for control in controls:
                if self.browser.command("GET", f"/element/{control}/displayed"):
                    self.assertNotEqual(self.browser.label(control).strip(), "",
                                        self.browser.command("GET", f"/element/{control}/property/outerHTML"))
            landmarks = self.browser.find_all("header, nav, main, [role=search]")
            roles = [self.browser.role(landmark) for landmark in landmarks]
            for role in ("banner", "navigation", "main", "search"):
                self.assertIn(role, roles)

    def test_is_readable_in_both_themes(self):
        contrast = """
            const values = (color) => color.match(/[\\d.]+/g).slice(0, 3).map(Number);
            const light = (color) => values(color).map((each) => each / 255)
                .map((each) => each <= 0.04045 ? each / 12.92 : ((each + 0.055) / 1.055) ** 2.4)
                .reduce((sum, each, i) => sum + each * [0.2126, 0.7152, 0.0722][i], 0);
            const back = (node) => {
                const color = getComputedStyle(node).backgroundColor;
                return color === "rgba(0, 0, 0, 0)" ? back(node.parentElement) : color;
            };
            return arguments[0].map((selector) => {
                const node = document.querySelector(selector);
                const [a, b] = [light(getComputedStyle(node).color), light(back(node))].sort((a, b) => b - a);
                return [selector, (a + 0.05) / (b + 0.05)];
            });"""
        selectors = ["main h1", "main .sort", "main a", ".documentation", "td.sign", ".note", ".row-name",
                     "#search", ".home", "thead th", ".row .icon.of-package", ".row .icon.of-classifier"]
        self.go_to("Order")
        for theme in ("light", "dark"):
            self.browser.devtools("Emulation.setEmulatedMedia", media="",
                                  features=[{"name": "prefers-color-scheme", "value": theme}])
            self.keep("sheet-" + theme)
            for selector, ratio in self.browser.script(contrast, selectors):
                self.assertGreater(ratio, 4.5, f"{selector} {theme}")

    def test_changes_the_theme(self):
        def is_dark(selector):
            return self.browser.script("const [r, g, b] = getComputedStyle(document.querySelector(arguments[0]))"
                                       ".backgroundColor.match(/\\d+/g).map(Number); return r + g + b < 200", selector)
        self.go_to_diagram()
        for theme, other in (("light", "dark"), ("dark", "light")):
            self.browser.devtools("Emulation.setEmulatedMedia", media="",
                                  features=[{"name": "prefers-color-scheme", "value": theme}])
            self.browser.script("document.documentElement.removeAttribute('data-theme')")
            self.assertEqual(is_dark("body"), theme == "dark")
            self.browser.wait_for(f"document.getElementById('theme').ariaPressed === '{str(theme == 'dark').lower()}'")
            self.browser.click("#theme")
            self.assertEqual(is_dark("body"), other == "dark")
            self.assertFalse(is_dark(".paper"), "a picture stays on paper")
            self.keep("diagram-" + other)
            self.browser.script("localStorage.clear()")

    def test_prints_sheet_and_picture(self):
        for name, selector in (("Order", ".sheet"), ("Orders at a glance", ".paper svg")):
            self.go_to(name)
            self.browser.wait_for("document.querySelector('.sheet, .paper')")
            self.browser.devtools("Emulation.setEmulatedMedia", media="print", features=[])
            shown = "const node = document.querySelector(arguments[0]); return node.getBoundingClientRect().width"
            self.assertEqual(self.browser.script(shown, "#navigation"), 0)
            self.assertGreater(self.browser.script(shown, selector), 200)
            if self.browser.find_all(".paper"):
                style = "return getComputedStyle(document.querySelector('.paper')).transform"
                self.assertEqual(self.browser.script(style), "none")
            self.keep("print-" + name.split()[-1])
            self.browser.devtools("Emulation.setEmulatedMedia", media="", features=[])

    def test_prints_the_whole_model_as_one_document(self):
        parts = "return [...document.querySelectorAll('#printed h1')].map((each) => each.textContent)"
        self.browser.script("window.print = () => { window.printed = {"
                            " titles: [...document.querySelectorAll('#printed h1')].map((each) => each.textContent),"
                            " pictures: document.querySelectorAll('#printed .printed-picture').length,"
                            " broken: [...document.querySelectorAll('#printed a[href]')].filter((each) =>"
                            " !document.getElementById(each.getAttribute('href').slice(1))).length };"
                            " dispatchEvent(new Event('afterprint')); }")
        titles = ["shop.mdl", "Use Case View", "Logical View", "Orders", "Orders at a glance", "Item", "Order",
                  "Rush order", "Other", "Customer", "Component View", "Deployment View"]
        for way in ("from the first page", "from a sheet"):
            with self.subTest(way):
                if way == "from a sheet":
                    self.go_to("Order")
                self.browser.click("#print")
                if way == "from a sheet":
                    self.browser.click("#printing button[value=model]")
                self.browser.wait_for("window.printed")
                found = self.browser.script("const found = window.printed; delete window.printed; return found")
                self.assertEqual([title for title in titles if title not in found["titles"]], [])
                self.assertEqual((found["pictures"], found["broken"]), (1, 0))
                self.assertEqual(self.browser.script(parts), [])

    def test_is_printed_whole_by_the_browser(self):
        self.browser.wait_for("document.querySelector('.card img')?.naturalWidth > 100")
        pages = base64.b64decode(self.browser.devtools("Page.printToPDF")["data"])
        self.assertGreater(pages.count(b"/Type /Page\n"), 3)
        self.go_to("Order")
        pages = base64.b64decode(self.browser.devtools("Page.printToPDF")["data"])
        self.assertLess(pages.count(b"/Type /Page\n"), 3)

    @unittest.skipUnless(AXE.exists(), "axe-core is not there: npm ci --prefix tests/browse")
    def test_has_no_serious_barriers(self):
        check = """axe.run().then(({ violations }) => done(violations
            .filter(({ impact }) => ["serious", "critical"].includes(impact))
            .map(({ id, nodes }) => [id, nodes.map((node) => node.html)])));"""
        self.addCleanup(self.browser.devtools, "Emulation.clearDeviceMetricsOverride")
        for width in (400, 1400):
            self.browser.devtools("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1,
                                  mobile=False)
            for theme in ("light", "dark"):
                self.browser.devtools("Emulation.setEmulatedMedia", media="",
                                      features=[{"name": "prefers-color-scheme", "value": theme}])
                for name in ("", "Order", "Orders at a glance", "Progress"):
                    with self.subTest(name, width=width, theme=theme):
                        self.open(self.page.as_uri() + "#" + name.replace(" ", "%20"))
                        if name == "Orders at a glance":
                            self.browser.wait_for("document.querySelector('.leads')")
                        self.browser.script(AXE.read_text(encoding="utf-8"))
                        self.assertEqual(self.browser.after_script(check), [])
                self.search("order")
                self.assertEqual(self.browser.after_script(check), [])

    def test_is_fast_with_many_elements(self):
        page = page_of(self.petal, self.folder, "large", large_model(1450))
        self.browser.open("about:blank")
        start = time.monotonic()
        self.browser.open(page.as_uri())
        self.browser.wait_for("document.querySelector('main h1')")
        opened = time.monotonic() - start
        paint = self.browser.script("return performance.getEntriesByName('first-contentful-paint')[0]?.startTime")
        size = page.stat().st_size
        self.browser.press("/")
        seconds = []
        for words in ("c", "class14", "attribute7", "what class 777", "nothing of it"):
            seconds.append(self.browser.after_script("""
                const input = document.getElementById("search");
                input.value = arguments[0];
                const start = performance.now();
                input.dispatchEvent(new Event("input"));
                requestAnimationFrame(() => setTimeout(() => done((performance.now() - start) / 1000)));""", words))
        self.go_to("Class777")
        nodes = self.browser.script("return document.querySelectorAll('*').length")
        print(f"20,300 elements: {size / 1e6:.1f} MB, opened in {opened:.2f} s, first paint after "
              f"{(paint or 0) / 1000:.2f} s, searches in at most {max(seconds) * 1000:.0f} ms, {nodes} nodes",
              file=sys.stderr)
        self.assertLess(opened, 10)
        self.assertLess(size, 0.4 * (self.folder / "large.mdl").stat().st_size)
        self.assertLess(sorted(seconds)[2], 0.25)
        self.assertLess(nodes, 2000)


if __name__ == "__main__":
    main()
