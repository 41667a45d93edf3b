"""What one looks at, in the order of a working day."""
import os
import re
import shutil

from browser import Keys
from case import BUDGET, SOURCES, Page, shown


class Walk(Page):
    name = "walk"

    def test_1_grid(self):
        b = self.browser
        b.element(".budget")
        self.assertEqual(b.count(".budget"), len(self.csv("budgets")))
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
        greatest = sorted((line["IMP_BUDGET"] for line in lines), key=float, reverse=True)
        b.wait(lambda: [row[2] for row in b.grid()["rows"]] == [shown(text) for text in greatest], "the greatest first")
        # One comes back to what was searched for, in its order.
        b.element("input[type=search]").send_keys("consulenze")
        b.wait(lambda: "consulenze&" in b.js("return location.hash"), "the search in the address")
        left = b.grid()
        self.assertEqual(len(left["rows"]), 2)
        b.click(".grid-body a")
        b.element(".facts")
        b.driver.back()
        b.wait(lambda: b.count(".grid-body .row") == 2, "the same two cards")
        again = b.grid()
        self.assertEqual((again["rows"], again["columns"]), (left["rows"], left["columns"]))
        self.assertEqual(b.element("input[type=search]").get_attribute("value"), " consulenze")

    def test_2_report(self):
        b = self.browser
        b.go("#/report/4/01/2025?rows=site&values=budget,actual,delta")
        b.element(".grid-body .row")
        b.drag(b.element("[data-zone=free] .chip", "Account"), b.element("[data-zone=rows]"))
        b.wait(lambda: b.count(".grid-body [aria-level='2']") > 10, "accounts below sites")
        lines = self.csv("report", *BUDGET, "--rows", "site,account", "--values", "budget,actual,delta")
        grid = b.grid()
        inner = [row for row in grid["rows"] if re.match(r"\d{8} ", row[0])]
        self.assertGreater(len(inner), 15)
        for row, line in zip(inner, lines):
            self.assertEqual(row[1:], [shown(line[name]) for name in ("IMP_BUDGET", "IMP_CONSUNTIVO", "DELTAIMP_CONS")])
        self.assertEqual(b.count("figure > svg"), 2)
        b.js("document.activeElement.blur()")
        picture = b.shot("report")
        if os.environ.get("UPDATE"):
            shutil.copy(picture, SOURCES / "docs/page.png")
        # By keyboard: the values are chosen, the quarters go into the columns.
        b.js("document.querySelector('.report summary').focus()")
        b.keys(Keys.ENTER, Keys.TAB, Keys.ESCAPE)
        self.assertEqual(b.js("return [document.querySelector('.report .menu').open, document.activeElement.tagName]"),
                         [False, "SUMMARY"])
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
