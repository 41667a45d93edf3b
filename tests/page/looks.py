"""What it looks like: on a phone, in the dark, in Italian, on paper, with texts that want to be more than text."""
import base64
import contextlib
import os
import pathlib
import re
import shutil
import sqlite3
import time

from case import CARD, DEMO, FOLDER, GRID, SOURCES, Page

HOSTILE = "<script>alert(2)</script>\u202e"
FORMULA = "=1+1|cmd"
PLACES = {
    "budgets": "#/",
    "grid": GRID,
    "card": CARD.format(52),
    "report": "#/report/4/01/2025?rows=site,account",
    "compare": "#/compare?left=4/01%402025",
    "elaborate": "#/elaborate/4/01/2025",
    "history": "#/history",
    "years": "#/years",
}
# Controls that a screen reader has no name for, and an order of the keyboard's own beside the page's.
NAMELESS = """
const named = (each) => each.ariaLabel || each.labels?.length || each.title || each.textContent.trim();
const wrong = (each) => each.checkVisibility() && each.tabIndex >= 0 && each.id !== "main" && !named(each);
return [...document.querySelectorAll("button, a, input, select, summary, [role=grid], [role=treegrid], [tabindex]")]
  .filter((each) => wrong(each) || each.tabIndex > 0)
  .map((each) => each.outerHTML.slice(0, 120));
"""
# What is written on what: texts of the page by the names of its colours.
WRITTEN = {"ink": "paper panel stripe wash theirs", "muted": "paper panel stripe", "accent": "paper panel wash",
           "bad": "paper panel stripe", "good": "panel", "on-accent": "accent", "panel": "bad"}
ITALIAN = {
    "grid": "Schede",
    "report": "Dal budget al consuntivo",
    "card": "Movimenti",
    "elaborate": "Una prova non scrive nulla",
}


class Looks(Page):
    name, language = "hostile", "it"

    @classmethod
    def database(cls):
        path = os.path.join(FOLDER, "hostile-texts.db")
        shutil.copy(DEMO, path)
        with contextlib.closing(sqlite3.connect(path)) as db, db:
            db.create_collation("BK_ORDER", lambda a, b: (a > b) - (a < b))
            db.execute("UPDATE BU07_SCHEDECOSGEN SET BU07_DESCR = ?", (HOSTILE,))
        return path

    def test_1_hostile(self):
        b = self.browser
        invented = f"#/grid/4/01/{HOSTILE}", f"#/card/{FORMULA}"
        for place in (GRID, CARD.format(52), "#/report/4/01/2025?rows=card", *invented):
            b.go(place)
            self.assertEqual(b.count("main img, main script"), 0)
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
            for name, place in PLACES.items():
                b.go(place)
                time.sleep(0.15)
                self.assertLessEqual(b.wide(), 0, name)
                self.assertEqual(b.js(NAMELESS), [], name)
                b.shot("phone-" + name)
        finally:
            b.size(1280, 800)

    def test_3_italian_and_dark(self):
        b = self.browser
        b.media(dark=True)
        for name, word in ITALIAN.items():
            b.go(PLACES[name])
            self.assertIn(word, b.js("return document.body.textContent"))
            time.sleep(0.1)
            b.shot("dark-" + name)
        b.media()
        self.assertEqual(b.js("return document.documentElement.lang"), "it")

    def test_4_paper(self):
        b = self.browser
        for place, chosen in (("#/report/4/01/2025?rows=site,account&to=2025-09&where=site%3D1", "Fino al mese: 2025-09 · Solo: site=1 · "),
                              (GRID, "Sede: 1 - Stabilimento di Lecco · Tipo di scheda: Costi")):
            b.go(place)
            b.element(".grid-body .row")
            b.js("dispatchEvent(new Event('beforeprint')); dispatchEvent(new Event('afterprint'))")
            self.assertIn(chosen, b.js("return [...document.querySelectorAll('.printed')].map((line) => line.textContent).join()"))
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
        self.assertEqual(b.count(".editable"), 0)
        self.assertNotIn("Elaborazioni", b.text(".tabs"))

    def test_6_sources(self):
        """Every module is loaded at once, every text of the page's own has its Italian."""
        sources = {path.name: path.read_text() for path in (SOURCES / "src/page").glob("*.js")}
        loaded = re.findall(r'(?:href|src)="(\w+\.js)"', (SOURCES / "src/page/index.html").read_text())
        self.assertEqual(sorted(loaded), sorted(sources))
        known = set(re.findall(r'^  "((?:[^"\\]|\\.)*)":', sources["words.js"], re.M))
        said = {text for name, source in sources.items() for text in re.findall(r'\bt\("([^"]*)"', source)}
        tables = set(re.findall(r'^    title: "([^"]+)",$', sources["elaborate.js"], re.M))
        tables |= set(re.findall(r'^ +\["[^"]+", "([^"]+)"\],$', sources["frame.js"] + sources["reportdata.js"], re.M))
        self.assertEqual(sorted((said | tables) - known), [])

    def test_7_contrast(self):
        """4.5 to 1 for every text, in the light and in the dark."""
        style = (SOURCES / "src/page/style.css").read_text()
        for block in re.findall(r":root \{(.*?)\}", style, re.S):
            colours = dict(re.findall(r"--([\w-]+): (#\w{6});", block))
            for text, grounds in WRITTEN.items():
                for ground in grounds.split():
                    ratio = contrast(colours[text], colours[ground])
                    self.assertGreaterEqual(ratio, 4.5, f"{text} {colours[text]} on {ground} {colours[ground]}")


def contrast(*colours):
    def light(colour):
        parts = [int(colour[i:i + 2], 16) / 255 for i in (1, 3, 5)]
        red, green, blue = (part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts)
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue
    dark, bright = sorted(light(colour) for colour in colours)
    return (bright + 0.05) / (dark + 0.05)
