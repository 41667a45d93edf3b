"""What is done with cards, budgets and years as a whole."""
import sys

from browser import Keys
from case import BUDGET, CARD, GRID, SOURCES, Page, shown

sys.path.append(str(SOURCES / "tests/server"))
from running import grown  # noqa: E402


class Cards(Page):
    name = "cards"

    def test_1_new_spread_delete(self):
        b = self.browser
        b.go(GRID)
        b.click("button", "New card")
        self.option("Card", "PROVA")
        self.option("Account", "99999999")
        b.click("dialog button", "Create")
        b.element("dialog [role=alert]", "99999999")
        self.option("Account", "62050002")
        b.shot("new-card")
        b.click("dialog button", "Create")
        b.element(".facts", "62050002")
        card = b.js("return location.hash.match(/card\\/(\\d+)/)[1]")
        line = next(each for each in self.csv("grid", *BUDGET, "-k", "0", "-b", "1") if each["BU65_ID"] == card)
        self.assertEqual((line["BU65_SCHEDA_BU07"], line["BU65_CONTO_CG24"]), ("PROVA", "62050002"))
        # An amount goes over the periods after a trial that shows where.
        b.click("button", "Spread…")
        self.option("Amount or quantity", "1000,01")
        self.option("How", "days")
        self.option("To period", "6")
        self.try_run()
        self.assertEqual({each["IMP_BUDGET"] for each in self.periods(card)}, {""})
        trial = self.csv("spread", card, "1000,01", "--like", "days", "--to", "6", "--dry-run")
        after = b.js("return [...document.querySelectorAll('.result tbody td:last-child')].map((c) => c.textContent)")
        self.assertEqual(after, [shown(each["DOPO"]) for each in trial])
        self.write_run()
        b.click(".result button", "Show the card")
        b.wait(lambda: b.cell_text(0, "IMP_BUDGET") == shown(trial[0]["DOPO"]), "the spread values")
        self.same_figures(b.grid(), self.periods(card), 10)
        # It goes after the program's own question, and no other way.
        b.click("button", "Delete…")
        b.element("dialog", f"Delete card {card}")
        b.click("dialog button", "No")
        self.assertEqual(len(self.periods(card)), 12)
        b.click("button", "Delete…")
        b.click("dialog button", "Delete")
        b.element(".notice", "was deleted")
        b.wait(lambda: len(b.grid()["rows"]) == 12, "the cards without it")
        self.assertNotIn("PROVA", self.server.run("grid", *BUDGET, "-k", "0", "-b", "1"))

    def test_2_locks_and_years(self):
        b = self.browser
        b.go(GRID)
        b.click(".title button", "Lock")
        self.option("Reason", "approved <b>twice</b>")
        b.keys(Keys.ENTER)
        b.element(".badge.locked", "Locked")
        self.assertEqual(self.csv("lock")[0]["MOTIVO"], "approved <b>twice</b>")
        b.absent(".grid-bar button")
        b.click(".title button", "Open the lock")
        b.click("dialog button", "Open")
        b.absent(".badge.locked")
        self.assertEqual(self.csv("lock"), [])
        b.go("#/years")
        b.click("button", "New year")
        b.keys(Keys.ENTER)
        b.element(".notice", "was added")
        added = self.csv("years")[-1]
        b.element("tbody tr:last-child th", added["ANNO"])
        for word, state in (("Close the year", "closed"), ("Open again", "open")):
            b.click("tbody tr:last-child button", word)
            b.click("dialog button", word)
            b.element("tbody tr:last-child td", state)
            self.assertEqual(self.csv("years")[-1]["STATO"], state)

    def test_3_report_of_some(self):
        b = self.browser
        b.go("#/report/4/01/2025?rows=account&values=budget,actual")
        b.element(".grid-body .row")
        b.element("input[placeholder*='=1,2']").send_keys("site=1; account=62*", Keys.TAB)
        b.wait(lambda: len(b.grid()["rows"]) == 10, "some accounts")
        b.js("""const sort = [...document.querySelectorAll("select")].find((each) => each.value === "");
                sort.value = "actual:asc"; sort.dispatchEvent(new Event("change"));""")
        b.element("input.short").send_keys("3", Keys.TAB)
        lines = self.csv("report", *BUDGET, "--rows", "account", "--values", "budget,actual", "--where", "site=1", "--where",
                         "account=62*", "--sort", "actual:asc", "--top", "3")
        expected = [[shown(line["IMP_BUDGET"]), shown(line["IMP_CONSUNTIVO"])] for line in lines]
        b.wait(lambda: [row[1:] for row in b.grid()["rows"]] == expected, "the least, and the others in one")
        b.shot("report-of-some")
        # What the program tells beside the figures.
        b.js("""const only = document.querySelector("input[placeholder*='=1,2']");
                only.value = "account=62010000,99999999"; only.dispatchEvent(new Event("change"));""")
        b.element(".report p", "The chart of accounts has no account 99999999")
        b.go("#/grid/4/01/2025?site=77&kind=0")
        b.element("main > p", "The company has no site 77")


# The whole grid comes when it is let through.
HELD = """
const real = window.fetch;
window.fetch = async (path, options) => {
  const whole = String(path).endsWith("/run/grid") && !options.body.includes('"first"');
  if (whole) await new Promise((go) => (window.release = go));
  return real(path, options);
};
"""


class Many(Page):
    name = "many"
    cards = 1600

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        grown(cls.server.database, cls.cards)

    def asked(self):
        return self.browser.js("return performance.getEntriesByType('resource').map((each) => each.name)")

    def test_many(self):
        """The first rows come before the others, a card without any of them."""
        b = self.browser
        b.open("about:blank")
        held = b.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": HELD})
        b.open(self.server.root + GRID)
        b.element(".count", "The first 60")
        b.element(".grid-body .row")
        self.assertEqual(b.count(".grid-foot .row"), 0)
        first = b.grid()
        b.js("window.release()")
        b.driver.execute_cdp_cmd("Page.removeScriptToEvaluateOnNewDocument", held)
        b.element(".count", f"{self.cards} rows")
        whole = b.grid()
        for one, other in zip(first["rows"][:10], whole["rows"]):
            all_of_it = dict(zip(whole["columns"], other))
            self.assertEqual(dict(zip(first["columns"], one)), {name: all_of_it[name] for name in first["columns"]})
        lines = self.csv("grid", *BUDGET, "-k", "0", "-b", "1")
        total = dict(zip(b.grid()["columns"], b.grid()["totals"][0]))
        cents = sum(round(float(line["IMP_BUDGET"]) * 100) for line in lines)
        self.assertEqual(total["IMP_BUDGET"], shown(str(cents / 100)))
        printed = b.js("""dispatchEvent(new Event("beforeprint"));
                          const rows = document.querySelectorAll(".grid-body .row").length;
                          dispatchEvent(new Event("afterprint"));
                          return rows;""")
        self.assertEqual(printed, self.cards)
        b.open("about:blank")
        b.open(self.server.root + CARD.format(lines[-1]["BU65_ID"]))
        b.element(".facts")
        self.assertTrue(any(name.endswith("/run/periods") for name in self.asked()))
        self.assertFalse(any(name.endswith("/run/grid") for name in self.asked()))
