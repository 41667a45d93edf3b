"""Two browsers on one card."""
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
        b.element(".notice", "Somebody has changed a card")
        self.assertEqual(b.count(".row.changed"), 1)
        b.click(".notice button", "Show the changes")
        b.absent(".row.changed")
        self.same_figures(b.grid(), self.csv("grid", *BUDGET, "-k", "0", "-b", "1"))
        self.assertEqual(other.complaints(), [])
