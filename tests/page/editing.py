"""One card as a spreadsheet."""
import json

from browser import Keys
from case import BUDGET, GRID, Page, shown


class Editing(Page):
    name = "editing"

    def test_1_card(self):
        b = self.browser
        self.open_card(52)
        self.same_figures(b.grid(), self.periods(52))
        b.cell(2, "IMP_BUDGET").click()
        b.click("button", "Movements")
        b.element(".drill .grid-body .row")
        text = self.server.run("movements", "--card", "52", "--period", "3", "--format", "json")
        shares = [shown(line["QUOTA"]) for line in json.loads(text)["Movements"]]
        drill = b.grid(".drill")
        self.assertEqual([row[drill["columns"].index("QUOTA")] for row in drill["rows"]], shares)
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
        block = [["1000.10", "1000.20"], ["2000.00", "2000.50"], ["3000.00", ""]]
        held = lambda: [[line["IMP_FORECAST1"], line["IMP_FORECAST2"]] for line in self.periods(53)[4:7]]
        b.wait(lambda: held() == block, "the block")
        b.wait(lambda: b.cell_text(6, "IMP_FORECAST1").lstrip("✓ ") == "3.000,00", "the block on the page")
        b.shot("pasted")
        b.chord(Keys.CONTROL, "z")
        b.wait(lambda: self.figures(self.periods(53)) == self.figures(before), "what was there before")
        b.wait(lambda: b.state(4, "IMP_FORECAST1") == "", "the end of the undo")
        self.same_figures(b.grid(), self.periods(53))
        # A block is copied as spreadsheets read it.
        b.cell(0, "IMP_BUDGET").click()
        b.chord(Keys.SHIFT, Keys.ARROW_DOWN)
        b.chord(Keys.CONTROL, "c")
        text = b.driver.execute_async_script("navigator.clipboard.readText().then(arguments[0])")
        self.assertEqual(text.split("\n"), [shown(line["IMP_BUDGET"]) for line in self.periods(53)[:2]])

    @staticmethod
    def figures(lines):
        return [{name: value for name, value in line.items() if not name.startswith("ID_")} for line in lines]

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
        self.open_card(54)
        b.slow(800, 60000)
        try:
            self.type_into(1, "IMP_BUDGET", "12,5")
            self.type_into(2, "IMP_BUDGET", "13,5")
            self.assertEqual(b.state(2, "IMP_BUDGET"), "saving")
            self.saved(1, "IMP_BUDGET", "12,50")
            self.saved(2, "IMP_BUDGET", "13,50")
        finally:
            b.slow()
        self.assertEqual([line["IMP_BUDGET"] for line in self.periods(54)[1:3]], ["12.50", "13.50"])

    def test_5_undo_at_once(self):
        """What is still being written is what undo takes back."""
        b = self.browser
        self.open_card(54)
        held = lambda: self.periods(54)[3]["IMP_BUDGET"]
        before = held()
        self.type_into(3, "IMP_BUDGET", "21")
        self.saved(3, "IMP_BUDGET", "21,00")
        b.hold("set")
        self.addCleanup(b.driver.refresh)
        self.type_into(3, "IMP_BUDGET", "22")
        b.wait(lambda: held() == "22.00", "what was typed")
        b.chord(Keys.CONTROL, "z")
        b.wait(lambda: b.js("window.release(); return !document.querySelector('button[title=\"Ctrl+Y\"]').disabled"), "the undo")
        b.wait(lambda: held() == "21.00", "what was there before it")
        b.js("window.release = null")
        for key, expected in (("z", before), ("y", "21.00"), ("y", "22.00")):
            b.chord(Keys.CONTROL, key)
            b.wait(lambda: b.js("window.release?.()") or held() == expected, expected)

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

    def test_7_several_details(self):
        """Each order of a period is written by itself."""
        b = self.browser
        self.open_card(52)
        lines = self.periods(52)
        second = next(i for i, line in enumerate(lines) if i and line["PERIODO"] == lines[i - 1]["PERIODO"])
        before = lines[second - 1]["IMP_ORDINI"]
        self.type_into(second, "IMP_ORDINI", "123,45")
        self.saved(second, "IMP_ORDINI", "123,45")
        self.assertEqual([line["IMP_ORDINI"] for line in self.periods(52)[second - 1:second + 1]], [before, "123.45"])
        self.type_into(second - 1, "IMP_ORDINI", "0,5")
        self.saved(second - 1, "IMP_ORDINI", "0,50")
        self.assertEqual([line["IMP_ORDINI"] for line in self.periods(52)[second - 1:second + 1]], ["0.50", "123.45"])
        self.type_into(second, "IMP_BUDGET", "7")
        self.assertEqual(self.periods(52)[second]["IMP_BUDGET"], "")

    def test_8_locked(self):
        b = self.browser
        self.server.run("lock", "4/01@2025")
        try:
            self.open_card(56)
            b.element(".badge.locked", "Locked")
            b.cell(1, "IMP_BUDGET").click()
            b.keys("5", Keys.ENTER)
            self.assertEqual(b.count(".editable, .edit"), 0)
        finally:
            self.server.run("unlock", "4/01@2025")
