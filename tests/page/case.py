"""What the tests of the page have in common: a server, the browser, the program's own figures."""
import csv
import io
import pathlib
import re
import sys
import unittest

from browser import Browser, Keys
from server import Server

PROGRAM, DEMO, FOLDER = sys.argv[1:4]
SOURCES = pathlib.Path(sys.argv[4])
BUDGET = ["-t", "4", "-s", "01", "-y", "2025"]
GRID = "#/grid/4/01/2025?site=1&kind=0"
CARD = "#/card/{}?budget=4%2F01%402025&site=1&kind=0"


def shown(text, decimals=2, percent=False):
    """A figure of CSV as the page writes it."""
    if text == "":
        return ""
    value = f"{float(text) * 100:,.2f}" if percent else f"{float(text):,.{decimals}f}"
    return value.translate(str.maketrans(",.", ".,"))


class Page(unittest.TestCase):
    """A server on a database of its own, and the one browser."""
    name, language, options = "page", "en", ()
    one = None

    @staticmethod
    def shared():
        Page.one = Page.one or Browser(FOLDER)
        return Page.one

    @classmethod
    def setUpClass(cls):
        cls.server = Server(PROGRAM, cls.database(), FOLDER, cls.name, cls.language, options=cls.options)
        cls.browser = Page.shared()
        cls.browser.open(cls.server.address)

    @classmethod
    def database(cls):
        return DEMO

    @classmethod
    def tearDownClass(cls):
        cls.browser.open("about:blank")
        cls.server.stop()
        complaints = cls.browser.complaints()
        if complaints:
            raise AssertionError("the console told: " + "\n".join(complaints))

    def csv(self, *words):
        return list(csv.DictReader(io.StringIO(self.server.run(*words, "--format", "csv", "--all"))))

    def option(self, name, value):
        """Fills in an option of a run, by the name that stands below it or the label above."""
        self.browser.element(".run .field, dialog .field")
        self.browser.js("""
            const names = (each) => [...each.querySelectorAll("small, label")].map((text) => text.textContent);
            const field = [...document.querySelectorAll(".run .field, dialog .field")]
              .find((each) => names(each).includes(arguments[0]));
            const control = field.querySelector("input, select");
            control.closest("details")?.setAttribute("open", "");
            control.value = arguments[1];
            control.dispatchEvent(new Event("change"));
            if (control.value !== arguments[1]) throw new Error("no such choice: " + arguments[1]);
            """, name, value)

    def try_run(self):
        self.browser.click(".run button", "Try")
        self.browser.element(".result h2", "What it would write")

    def write_run(self):
        self.browser.click(".result button", "Write it")
        self.browser.click("dialog button", "Write it")
        self.browser.element(".result h2", "Written")

    def periods(self, card):
        return self.csv("periods", str(card))

    def open_card(self, card):
        self.browser.go(CARD.format(card))
        self.browser.element("main .grid-body .row")

    def same_figures(self, grid, lines, least=50):
        """Every figure of a grid is the one of the CSV's line in its place."""
        self.assertEqual(len(grid["rows"]), len(lines))
        figures = 0
        for row, line in zip(grid["rows"], lines):
            for name, text in zip(grid["columns"], row):
                if not re.match(r"IMP|QTA|DELTA", name):
                    continue
                figures += 1
                expected = shown(line[name], 3 if "QTA" in name else 2, "PERC" in name)
                self.assertEqual(text.lstrip("✓ "), expected, f"{name} of {line}")
        self.assertGreater(figures, least)

    def type_into(self, row, column, text, end=Keys.ENTER):
        self.browser.cell(row, column).click()
        self.browser.keys(text, end)

    def saved(self, row, column, text):
        self.browser.wait(lambda: self.browser.cell_text(row, column).lstrip("✓ ") == text
                          and self.browser.state(row, column) in ("saved", ""), f"{text} in {column}")
