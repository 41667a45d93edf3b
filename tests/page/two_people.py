"""Two browsers on one card."""
import contextlib
import sqlite3
import time

from browser import Browser, Keys
from case import BUDGET, CARD, FOLDER, GRID, Page


class TwoPeople(Page):
    def test_conflict(self):
        b, other = self.browser, Browser(FOLDER, 1100, 700)
        self.addCleanup(other.quit)
        other.open(self.server.address)
        self.open_card(52)
        other.go(CARD.format(52))
        other.element(".grid-body .row")
        # A page in the background does not look for changes: here it is until it has written.
        other.js("Object.defineProperty(document, 'hidden', {get: () => true, configurable: true})")
        self.type_into(4, "IMP_BUDGET", "100,25")
        self.saved(4, "IMP_BUDGET", "100,25")
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
        self.assertEqual([cell.text for cell in other.all("dialog .theirs")], ["2,00", "0,00"])
        other.all("dialog input[type=radio]")[3].click()
        other.click("dialog button", "As chosen")
        held = lambda: [line["IMP_BUDGET"] for line in self.periods(52)[5:8]]
        other.wait(lambda: held() == ["1.00", "2.00", "30.00"], "the choice")
        # A grid tells which cards are not as they were, and loads them when asked.
        b.come_back()
        b.element(".notice", "Somebody has changed a card")
        self.assertEqual(b.count(".row.changed"), 1)
        b.click(".notice button", "Show the changes")
        b.absent(".row.changed")
        self.same_figures(b.grid(), self.csv("grid", *BUDGET, "-k", "0", "-b", "1"))
        self.assertEqual(other.complaints(), [])

    def test_which_is_later(self):
        """Of last changes: the entry decides, without one the date."""
        for change, than, later in (("2025-10-06 09:30:01", "2025-10-06 09:30:00", True), ("2025-10-06 09:30:00", "-", True),
                                    ("2025-10-06 09:30:00 #18", "2025-10-06 09:31:00 #17", True),
                                    ("2025-10-06 09:30:01", "2025-10-06 09:30:00 #17", True),
                                    ("2025-10-06 09:30:00", "2025-10-06 09:30:00 #17", False),
                                    ("2025-10-06 09:31:00 #16", "2025-10-06 09:30:00 #17", False)):
            script = "import('/edits.js').then((edits) => arguments[2](edits.isLater(arguments[0], arguments[1])))"
            self.assertEqual(self.browser.driver.execute_async_script(script, change, than), later, (change, than))

    def test_undo_after_theirs(self):
        """What somebody else has written over is not taken back unasked, the rest is."""
        b = self.browser
        self.open_card(56)
        before = self.periods(56)[1]["IMP_BUDGET"]
        for row in (1, 2):
            self.type_into(row, "IMP_BUDGET", str(row))
            self.saved(row, "IMP_BUDGET", f"{row},00")
        b.click(".check", "Explain forecasts")
        b.wait(lambda: "IMP_CONS_FORE1" in b.grid()["columns"], "a grid that was made anew")
        self.server.run("set", "56", "3", "300")
        b.come_back()
        b.element(".notice", "Somebody else has changed a value")
        b.wait(lambda: b.cell_text(2, "IMP_BUDGET") == "300,00", "theirs")
        b.click("button", "Undo")
        self.assertEqual(b.text("dialog .theirs"), "300,00")
        b.click("dialog button", "Keep theirs")
        b.absent("dialog")
        b.click("button", "Undo")
        b.wait(lambda: self.periods(56)[1]["IMP_BUDGET"] == before, "the other value")
        self.assertEqual(self.periods(56)[2]["IMP_BUDGET"], "300.00")

    def test_typing_meanwhile(self):
        """What was begun before theirs was seen is not written over it, even where theirs is loaded while one types."""
        b = self.browser
        self.open_card(54)
        self.type_into(1, "IMP_BUDGET", "1")
        self.saved(1, "IMP_BUDGET", "1,00")
        b.hold("card")
        self.addCleanup(b.driver.refresh)
        # One's own change is in the history, theirs is not.
        time.sleep(1.1)
        self.server.run("set", "54", "3", "300", "--no-history")
        b.come_back()
        b.wait(lambda: b.js("return Boolean(window.release)"), "the look at the card")
        b.cell(2, "IMP_BUDGET").click()
        b.keys("5")
        b.js("window.release()")
        b.element(".notice", "Somebody else has changed a value")
        b.keys(Keys.ENTER)
        b.wait(lambda: b.js("window.release(); return Boolean(document.querySelector('dialog'))"), "the question")
        self.assertEqual((b.text("dialog .theirs"), b.text("dialog .mine")), ("300,00", "5"))
        b.click("dialog button", "Keep theirs")
        b.wait(lambda: b.cell_text(2, "IMP_BUDGET") == "300,00", "theirs")
        self.assertEqual(self.periods(54)[2]["IMP_BUDGET"], "300.00")

    def test_question_while_typing(self):
        """Whose value stays is asked when one has done typing: no half of a number is written."""
        b = self.browser
        self.open_card(57)
        b.js("Object.defineProperty(document, 'hidden', {get: () => true, configurable: true})")
        self.addCleanup(b.driver.refresh)
        self.server.run("set", "57", "2", "300")
        b.hold("set")
        self.type_into(1, "IMP_BUDGET", "5")
        b.wait(lambda: b.js("return Boolean(window.release)"), "the refusal")
        b.cell(3, "IMP_BUDGET").click()
        b.keys("12")
        b.js("window.release()")
        time.sleep(1)
        b.keys("00", Keys.ENTER)
        b.wait(lambda: b.js("window.release(); return Boolean(document.querySelector('dialog'))"), "the question")
        b.click("dialog button", "Write mine")
        held = lambda: [self.periods(57)[row]["IMP_BUDGET"] for row in (1, 3)]
        b.wait(lambda: b.js("window.release()") or held() == ["5.00", "1200.00"], "both")

    def test_typing_while_rows_come(self):
        """An order that somebody has added makes the grid anew: what is being typed goes on in its cell."""
        b = self.browser
        self.open_card(58)
        b.js("Object.defineProperty(document, 'hidden', {get: () => true, configurable: true})")
        self.addCleanup(b.driver.refresh)
        with contextlib.closing(sqlite3.connect(self.server.database)) as database, database:
            database.executemany("""INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1,
                                 BU66_QTA2) VALUES (58, 2, 3, ?, 0, 0)""", [(1,), (2,)])
        rows = len(b.grid()["rows"])
        b.hold("periods")
        self.type_into(1, "IMP_BUDGET", "1")
        b.wait(lambda: b.js("return Boolean(window.release)"), "the values")
        b.cell(5, "IMP_BUDGET").click()
        b.keys("57", Keys.HOME)
        b.js("window.release()")
        b.wait(lambda: len(b.grid()["rows"]) == rows + 1, "the added order")
        b.keys("4", Keys.ENTER)
        held = lambda: [line["IMP_BUDGET"] for line in self.periods(58) if line["PERIODO"] in "26" and line["IMP_BUDGET"]]
        b.wait(lambda: b.js("window.release()") or held() == ["1.00", "457.00"], "both")

    def test_what_goes(self):
        """A card that is written as it was, one that is deleted, a year that is closed."""
        b = self.browser
        self.open_card(55)
        self.server.run("set", "55", "1", self.periods(55)[0]["IMP_BUDGET"])
        b.come_back()
        b.element(".notice", "Somebody else has changed this card")
        self.server.run("delete", "55", "--yes")
        b.come_back()
        b.element(".notice.bad", "Somebody else has deleted this card")
        self.server.run("years", "close", "2025")
        b.go(GRID)
        b.element(".badge.locked", "Year closed")
