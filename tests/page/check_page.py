#!/usr/bin/env python3
"""Walks through the page in a browser and compares what it shows with what the program says:
check_page.py PROGRAM DEMO_DB FOLDER SOURCES [TEST…]. Pictures of what was seen stay in FOLDER; UPDATE=1 takes the one of
the report into the docs.
"""
import base64
import csv
import io
import json
import os
import pathlib
import re
import shutil
import sqlite3
import sys
import time
import unittest

sys.path.insert(0, os.path.dirname(__file__))
from browser import Browser, Keys  # noqa: E402
from server import Server  # noqa: E402

PROGRAM, DEMO, FOLDER = sys.argv[1:4]
SOURCES = pathlib.Path(sys.argv[4])
BUDGET = ["-t", "4", "-s", "01", "-y", "2025"]
GRID = "#/grid/4/01/2025?site=1&kind=0"
CARD = "#/card/{}?budget=4%2F01%402025&site=1&kind=0"
HOSTILE = "<script>alert(2)</script>\u202e"
FORMULA = "=1+1|cmd"


def shown(text, decimals=2, percent=False):
    """A figure of CSV as the page writes it."""
    if text == "":
        return ""
    value = f"{float(text) * 100:,.2f}" if percent else f"{float(text):,.{decimals}f}"
    return value.translate(str.maketrans(",.", ".,"))


browser = None


def setUpModule():
    global browser
    browser = Browser(FOLDER)


def tearDownModule():
    browser.quit()


class Page(unittest.TestCase):
    """A server on a database of its own, and the one browser."""
    name, language = "page", "en"

    @classmethod
    def setUpClass(cls):
        cls.server = Server(PROGRAM, cls.database(), FOLDER, cls.name, cls.language)
        cls.browser = browser
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

    def periods(self, card):
        return self.csv("periods", str(card))

    def open_card(self, card):
        self.browser.go(CARD.format(card))
        self.browser.element("main .grid-body .row")

    def same_figures(self, grid, lines):
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
        self.assertGreater(figures, 50)

    def type_into(self, row, column, text, end=Keys.ENTER):
        self.browser.cell(row, column).click()
        self.browser.keys(text, end)

    def saved(self, row, column, text):
        self.browser.wait(lambda: self.browser.cell_text(row, column).lstrip("✓ ") == text
                          and self.browser.state(row, column) in ("saved", ""), f"{text} in {column}")


class Walk(Page):
    """What one looks at, in the order of a working day."""
    name = "walk"

    def test_1_grid(self):
        b = self.browser
        self.assertEqual(len(self.csv("budgets")), len(b.js("return document.querySelectorAll('.budget')")) if b.element(".budget") else 0)
        b.shot("budgets")
        b.click(".year[href*='4/01/2025']")
        lines = self.csv("grid", *BUDGET, "-k", "0", "-b", "1")
        b.element(".grid-body .row")
        grid = b.grid()
        self.same_figures(grid, lines)
        total = dict(zip(grid["columns"], grid["totals"][0]))
        self.assertEqual(total["IMP_BUDGET"], shown(str(sum(float(line["IMP_BUDGET"]) for line in lines))))
        b.shot("grid")
        # Totals of what is found, with the object's deltas.
        b.element("input[type=search]").send_keys("consulenze")
        b.wait(lambda: len(b.grid()["rows"]) == 2, "two cards found")
        b.wait(lambda: b.grid()["totals"][0][b.grid()["columns"].index("DELTAPERCIMP_CONS")], "their delta")
        found = dict(zip(grid["columns"], b.grid()["totals"][0]))
        some = [line for line in lines if line["BU65_SCHEDA_BU07"].startswith("CONS")]
        budget, actual = (sum(float(line[name]) for line in some) for name in ("IMP_BUDGET", "IMP_CONSUNTIVO"))
        self.assertEqual(found["DELTAIMP_CONS"], shown(str(actual - budget)))
        self.assertEqual(found["DELTAPERCIMP_CONS"], shown(str(actual / budget - 1), percent=True))
        b.element("input[type=search]").clear()
        b.element("input[type=search]").send_keys(" ")
        b.click("[role=columnheader][data-name=IMP_BUDGET]")
        b.wait(lambda: [row[2] for row in b.grid()["rows"]] == [
            shown(text) for text in sorted((line["IMP_BUDGET"] for line in lines), key=float, reverse=True)], "the greatest first")

    def test_2_report(self):
        b = self.browser
        b.go("#/report/4/01/2025?rows=site&values=budget,actual,delta")
        b.element(".grid-body .row")
        b.drag(b.element("[data-zone=free] .chip", "Account"), b.element("[data-zone=rows]"))
        b.wait(lambda: b.js("return document.querySelectorAll('.grid-body [aria-level=\"2\"]').length") > 10, "accounts below sites")
        lines = self.csv("report", *BUDGET, "--rows", "site,account", "--values", "budget,actual,delta")
        grid = b.grid()
        inner = [row for row in grid["rows"] if re.match(r"\d{8} ", row[0])]
        self.assertGreater(len(inner), 15)
        for row, line in zip(inner, lines):
            self.assertEqual(row[1:], [shown(line[name]) for name in ("IMP_BUDGET", "IMP_CONSUNTIVO", "DELTAIMP_CONS")])
        self.assertEqual(len(b.js("return document.querySelectorAll('figure > svg')")), 2)
        b.js("document.activeElement.blur()")
        picture = b.shot("report")
        if os.environ.get("UPDATE"):
            shutil.copy(picture, SOURCES / "docs/page.png")
        # By keyboard: the quarters go into the columns.
        b.js("document.querySelector('[data-axis=quarter]').focus()")
        b.keys(Keys.ENTER)
        b.wait(lambda: any(name.startswith("Q3_") for name in b.grid()["columns"]), "quarters")

    def test_3_compare(self):
        b = self.browser
        b.go("#/compare?left=4/01%402024:actual&right=4/01%402025:budget")
        b.element(".grid-body .row")
        lines = self.csv("compare", "4/01@2024:actual", "4/01@2025:budget")
        row, line = b.grid()["rows"][0], lines[0]
        self.assertEqual(row[-4:-1], [shown(line[name]) for name in ("SINISTRA", "DESTRA", "DELTA")])
        b.shot("compare")

    def test_4_elaboration(self):
        b = self.browser
        before = self.server.run("history", "--format", "csv").count("\n")
        b.go("#/elaborate/4/01/2025?run=raise&site=1&kind=0")
        b.element("input[required]").send_keys("10", Keys.ENTER)
        b.element(".result h2", "What it would write")
        self.assertEqual(self.server.run("history", "--format", "csv").count("\n"), before)
        changes = self.csv("raise", "10", *BUDGET, "-k", "0", "-b", "1", "--dry-run")
        self.assertIn(shown(changes[0]["DOPO"]), b.text(".result .grid-body"))
        b.shot("elaboration")
        b.click(".result button", "Write it")
        b.click("dialog button", "Write it")
        b.element(".result h2", "Written")
        self.assertEqual(self.server.run("history", "--format", "csv").count("\n"), before + 1)
        # And back, after a question.
        b.go("#/history?budget=4%2F01%402025")
        b.click(".entries button", "Undo")
        b.shot("history")
        b.click("dialog button", "Take it back")
        b.element(".notice", "was taken back")
        held = {line["PERIODO"]: line["IMP_BUDGET"] for line in reversed(self.periods(52))}
        for line in changes:
            if line["BU65_ID"] == "52":
                self.assertEqual(held[line["PERIODO"]], line["PRIMA"])


class Editing(Page):
    """One card as a spreadsheet."""
    name = "editing"

    def test_1_card(self):
        b = self.browser
        self.open_card(52)
        self.same_figures(b.grid(), self.periods(52))
        b.click("button", "Movements") if not b.cell(2, "IMP_BUDGET").click() else None
        b.element(".drill .grid-body .row")
        movements = json.loads(self.server.run("movements", "--card", "52", "--period", "3", "--format", "json"))["Movements"]
        drill = b.grid(".drill")
        self.assertEqual([row[drill["columns"].index("QUOTA")] for row in drill["rows"]], [shown(line["QUOTA"]) for line in movements])
        b.shot("card")
        b.click(".check", "Explain forecasts")
        b.wait(lambda: "IMP_CONS_FORE1" in b.grid("main > .grid-box")["columns"], "the parts of forecasts")

    def test_2_edit(self):
        b = self.browser
        self.open_card(52)
        b.cell(2, "IMP_BUDGET").click()
        b.keys("7250,5")
        line = self.periods(52)[2]
        delta = float(line["IMP_CONSUNTIVO"]) - 7250.5
        b.wait(lambda: b.cell_text(2, "DELTAIMP_CONS") == shown(str(delta)), "the delta as one types")
        self.assertEqual(self.periods(52)[2]["IMP_BUDGET"], line["IMP_BUDGET"])
        b.keys(Keys.ESCAPE)
        self.assertEqual(b.cell_text(2, "IMP_BUDGET"), shown(line["IMP_BUDGET"]))
        b.keys("7250,5", Keys.ENTER)
        self.saved(2, "IMP_BUDGET", "7.250,50")
        b.wait(lambda: b.grid()["rows"][2][3] == shown(str(delta)), "the delta")
        self.assertEqual(self.periods(52)[2]["IMP_BUDGET"], "7250.50")
        self.assertEqual(b.js("return document.activeElement.dataset.row"), "3")
        # What is no number is refused, and told in its cell.
        for text in ("many", "1.250"):
            self.type_into(3, "IMP_BUDGET", text)
            b.wait(lambda: b.state(3, "IMP_BUDGET") == "refused", "the refusal of " + text)
            self.assertIn(text, b.cell(3, "IMP_BUDGET").get_attribute("title"))
        b.keys(Keys.ARROW_UP, Keys.ESCAPE)
        b.wait(lambda: b.state(3, "IMP_BUDGET") == "", "the value that was there")
        self.same_figures(b.grid(), self.periods(52))

    def test_3_paste_and_undo(self):
        b = self.browser
        self.open_card(53)
        before = self.periods(53)
        b.copy("1.000,10\t1.000,20\r\n2000\t2.000,5\r\n 3000,00 € \t\r\n")
        b.cell(4, "IMP_FORECAST1").click()
        b.paste()
        b.wait(lambda: [line["IMP_FORECAST1"] for line in self.periods(53)[4:7]] == ["1000.10", "2000.00", "3000.00"], "the block")
        b.wait(lambda: [line["IMP_FORECAST2"] for line in self.periods(53)[4:7]] == ["1000.20", "2000.50", ""], "its second column")
        b.wait(lambda: b.cell_text(6, "IMP_FORECAST1").lstrip("✓ ") == "3.000,00", "the block on the page")
        b.shot("pasted")
        b.chord(Keys.CONTROL, "z")
        b.wait(lambda: self.periods(53) == [{**line, **ids} for line, ids in zip(before, self.ids(53))], "what was there before")
        b.wait(lambda: b.state(4, "IMP_FORECAST1") == "", "the end of the undo")
        self.same_figures(b.grid(), self.periods(53))
        # A block is copied as spreadsheets read it.
        b.cell(0, "IMP_BUDGET").click()
        b.chord(Keys.SHIFT, Keys.ARROW_DOWN)
        b.chord(Keys.CONTROL, "c")
        text = b.driver.execute_async_script("navigator.clipboard.readText().then(arguments[0])")
        self.assertEqual(text.split("\n"), [shown(line["IMP_BUDGET"]) for line in self.periods(53)[:2]])

    def ids(self, card):
        return [{name: value for name, value in line.items() if name.startswith("ID_")} for line in self.periods(card)]

    def test_4_keyboard_alone(self):
        b = self.browser
        b.go(GRID)
        b.element(".grid-body .row")
        b.js("document.activeElement.blur(); document.querySelector('.home').focus()")
        for _ in range(20):
            if b.js("return document.activeElement.closest('.grid') !== null"):
                break
            b.keys(Keys.TAB)
        b.keys(Keys.ARROW_DOWN, Keys.ARROW_DOWN, Keys.END, Keys.HOME, Keys.ENTER)
        b.element(".facts")
        card = b.js("return location.hash.match(/card\\/(\\d+)/)[1]")
        self.assertEqual(card, self.csv("grid", *BUDGET, "-k", "0", "-b", "1")[2]["BU65_ID"])
        for _ in range(30):
            if b.js("return document.activeElement.closest('.grid') !== null"):
                break
            b.keys(Keys.TAB)
        b.keys(Keys.ARROW_RIGHT, Keys.F2)
        self.assertEqual(b.js("return document.activeElement.className"), "edit")
        b.chord(Keys.CONTROL, "a")
        b.keys("11", Keys.TAB)
        self.saved(0, "IMP_BUDGET", "11,00")
        self.assertEqual(b.js("return document.activeElement.dataset.column"), "2")
        b.chord(Keys.CONTROL, "z")
        b.wait(lambda: self.periods(card)[0]["IMP_BUDGET"] != "11.00", "the undo")
        b.chord(Keys.CONTROL, Keys.ENTER)
        b.element(".drill h2")

    def test_5_slow_network(self):
        b = self.browser
        b.slow(300, 60000)
        try:
            self.open_card(54)
            self.type_into(1, "IMP_BUDGET", "12,5")
            self.type_into(2, "IMP_BUDGET", "13,5")
            self.assertEqual(b.state(2, "IMP_BUDGET"), "saving")
            self.saved(1, "IMP_BUDGET", "12,50")
            self.saved(2, "IMP_BUDGET", "13,50")
        finally:
            b.slow()
        self.assertEqual([line["IMP_BUDGET"] for line in self.periods(54)[1:3]], ["12.50", "13.50"])

    def test_6_restart(self):
        b = self.browser
        self.open_card(55)
        self.server.stop()
        self.type_into(1, "IMP_BUDGET", "77,7")
        b.element(".connection", "does not answer")
        b.shot("lost")
        address = self.server.start()
        b.element(".connection input").send_keys(address, Keys.ENTER)
        b.absent(".connection")
        self.saved(1, "IMP_BUDGET", "77,70")
        self.assertEqual(self.periods(55)[1]["IMP_BUDGET"], "77.70")

    def test_7_locked(self):
        b = self.browser
        self.server.run("lock", "4/01@2025")
        try:
            self.open_card(56)
            b.element(".badge.locked", "Locked")
            b.cell(1, "IMP_BUDGET").click()
            b.keys("5", Keys.ENTER)
            self.assertEqual(b.js("return document.querySelectorAll('.editable, .edit').length"), 0)
        finally:
            self.server.run("unlock", "4/01@2025")


class TwoPeople(Page):
    def test_conflict(self):
        b, other = self.browser, Browser(FOLDER, 1100, 700)
        self.addCleanup(other.quit)
        other.open(self.server.address)
        self.open_card(52)
        other.go(CARD.format(52))
        other.element(".grid-body .row")
        self.type_into(4, "IMP_BUDGET", "100,25")
        self.saved(4, "IMP_BUDGET", "100,25")
        # The other one has not seen it yet.
        other.cell(4, "IMP_BUDGET").click()
        other.keys("200,75", Keys.ENTER)
        other.element("dialog", "Somebody else has changed this card")
        self.assertEqual(other.text("dialog .theirs"), "100,25")
        self.assertEqual(other.text("dialog .mine"), "200,75")
        self.assertEqual(self.periods(52)[4]["IMP_BUDGET"], "100.25")
        other.shot("conflict")
        other.click("dialog button", "Write mine")
        other.wait(lambda: self.periods(52)[4]["IMP_BUDGET"] == "200.75", "mine")
        # The first one is told, and sees it.
        b.element(".notice", "Somebody else has changed a value")
        b.wait(lambda: b.cell_text(4, "IMP_BUDGET") == "200,75", "theirs")
        self.assertEqual(b.state(4, "IMP_BUDGET"), "theirs")
        b.go(GRID)
        # Of a block, each one has its choice; what both wrote alike is none.
        self.server.run("set", "52", "6", "1")
        self.server.run("set", "52", "7", "2")
        other.copy("1\n20\n30")
        other.cell(5, "IMP_BUDGET").click()
        other.paste()
        other.element("dialog", "Somebody else has changed this card")
        self.assertEqual([cell.text for cell in other.driver.find_elements("css selector", "dialog .theirs")], ["2,00", "0,00"])
        other.driver.find_elements("css selector", "dialog input[type=radio]")[3].click()
        other.click("dialog button", "As chosen")
        other.wait(lambda: [line["IMP_BUDGET"] for line in self.periods(52)[5:8]] == ["1.00", "2.00", "30.00"], "the choice")
        # A grid tells which cards are not as they were, and loads them when asked.
        b.element(".notice", "Somebody has changed a card")
        self.assertEqual(len(b.js("return document.querySelectorAll('.row.changed')")), 1)
        b.click(".notice button", "Show the changes")
        b.absent(".row.changed")
        self.same_figures(b.grid(), self.csv("grid", *BUDGET, "-k", "0", "-b", "1"))
        self.assertEqual(other.complaints(), [])


class Looks(Page):
    """What it looks like: on a phone, in the dark, in Italian, on paper, with texts that want to be more than text."""

    name, language = "hostile", "it"

    @classmethod
    def database(cls):
        path = os.path.join(FOLDER, "hostile.db")
        shutil.copy(DEMO, path)
        with sqlite3.connect(path) as db:
            db.create_collation("BK_ORDER", lambda a, b: (a > b) - (a < b))
            db.execute("UPDATE BU07_SCHEDECOSGEN SET BU07_DESCR = ?", (HOSTILE,))
        return path

    def test_1_hostile(self):
        b = self.browser
        for place in (GRID, CARD.format(52), "#/report/4/01/2025?rows=card", f"#/grid/4/01/{HOSTILE}", f"#/card/{FORMULA}"):
            b.go(place)
            self.assertEqual(b.js("return document.querySelectorAll('main img, main script').length"), 0)
        b.go(GRID)
        self.assertIn("<script>alert(2)", b.text(".grid-body .row"))
        self.assertNotIn("\u202e", b.text(".grid-body .row"))
        b.element("input[type=search]").send_keys(HOSTILE)
        self.open_card(52)
        for text in (HOSTILE, FORMULA, "'; DROP TABLE BU65_TESBUDGET --"):
            self.type_into(1, "IMP_BUDGET", text)
            b.wait(lambda: b.state(1, "IMP_BUDGET") == "refused", "the refusal of " + text)

    def test_2_phone(self):
        b = self.browser
        b.size(375, 740, mobile=True)
        try:
            for name, place in (("budgets", "#/"), ("grid", GRID), ("card", CARD.format(52)), ("report", "#/report/4/01/2025"),
                                ("compare", "#/compare?left=4/01%402025"), ("elaborate", "#/elaborate/4/01/2025"), ("history", "#/history")):
                b.go(place)
                time.sleep(0.15)
                self.assertLessEqual(b.wide(), 0, name)
                b.shot("phone-" + name)
        finally:
            b.size(1280, 800)

    def test_3_italian_and_dark(self):
        b = self.browser
        b.media(dark=True)
        for name, place, word in (("grid", GRID, "Schede"), ("report", "#/report/4/01/2025?rows=site,account", "Dal budget al consuntivo"),
                                  ("card", CARD.format(52), "Movimenti"), ("elaborate", "#/elaborate/4/01/2025", "Una prova non scrive nulla")):
            b.go(place)
            self.assertIn(word, b.js("return document.body.textContent"))
            time.sleep(0.1)
            b.shot("dark-" + name)
        b.media()
        self.assertEqual(b.js("return document.documentElement.lang"), "it")

    def test_4_paper(self):
        b = self.browser
        b.go("#/report/4/01/2025?rows=site,account")
        b.element(".grid-body .row")
        pdf = b.driver.execute_cdp_cmd("Page.printToPDF", {"printBackground": True, "preferCSSPageSize": True})
        path = os.path.join(FOLDER, "report.pdf")
        pathlib.Path(path).write_bytes(base64.b64decode(pdf["data"]))

    def test_5_read_only(self):
        b = self.browser
        self.server.stop()
        b.open(self.server.start("--read-only"))
        self.open_card(52)
        b.element(".badge", "Sola lettura")
        self.assertEqual(b.js("return document.querySelectorAll('.editable').length"), 0)
        self.assertNotIn("Elaborazioni", b.text(".tabs"))

    def test_6_sources(self):
        """Every module is loaded at once, every text of the page's own has its Italian."""
        sources = {path.name: path.read_text() for path in (SOURCES / "src/page").glob("*.js")}
        loaded = re.findall(r'(?:href|src)="(\w+\.js)"', (SOURCES / "src/page/index.html").read_text())
        self.assertEqual(sorted(loaded), sorted(sources))
        known = set(re.findall(r'^  "((?:[^"\\]|\\.)*)":', sources["words.js"], re.M))
        said = {text for name, source in sources.items() for text in re.findall(r'\bt\("([^"]*)"', source)}
        tables = set(re.findall(r'title: "([^"]+)", trial', sources["elaborate.js"])) | set(
            re.findall(r'^  \["[^"]+", "([^"]+)"\],$', sources["frame.js"], re.M)) | set(
            re.findall(r'\["[a-z]+", "([A-Z][a-z-]+)"\]', sources["frame.js"] + sources["reportdata.js"]))
        self.assertEqual(sorted((said | tables) - known), [])


if __name__ == "__main__":
    os.makedirs(FOLDER, exist_ok=True)
    unittest.main(argv=sys.argv[:1] + sys.argv[5:], verbosity=2)
