"""The elaborations from the trial to the write, beside the same runs on the command line."""
import contextlib
import json
import os
import shutil
import sqlite3
import subprocess

from case import DEMO, FOLDER, PROGRAM, Page, shown

# The view, the options that are filled in, the same on the command line with what makes it write, what it writes into.
COSTS = ["-t", "4", "-s", "01", "-y", "2025", "-k", "0", "-b", "1"]
RUNS = {
    "elaborate-cards": ("4/01/2025?site=1&kind=0",
                        {"CodiceSede": "1", "BdgTipoScheda": "0", "TipoDettaglioDestinazione": "0"},
                        [*COSTS, "--TipoDettaglioDestinazione", "0"], ["--yes"], "4 01 2025"),
    "elaborate-balances": ("5/01/2026", {"AnnoEsercizioMovimenti": "2025", "percent": "2,5"},
                           ["-t", "5", "-s", "01", "-y", "2026", "--AnnoEsercizioMovimenti", "2025", "--percent", "2,5"],
                           ["--write"], "5 01 2026"),
    "duplicate": ("4/01/2025?site=1&kind=0",
                  {"BdgDestinazioneSottoTipo": "02", "BdgDestinazioneAnnoEsercizio": "2025",
                   "BdgDestinazioneCodiceSede": "2", "percent": "10"},
                  [*COSTS, "--BdgDestinazioneSottoTipo", "02", "--BdgDestinazioneAnnoEsercizio", "2025",
                   "--BdgDestinazioneCodiceSede", "2", "--percent", "10"], [], "4 02 2025"),
}


class Runs(Page):
    name = "runs"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.twin = os.path.join(FOLDER, "twin.db")
        shutil.copy(DEMO, cls.twin)

    def on_twin(self, *words):
        return subprocess.run([PROGRAM, *words, "-d", self.twin], capture_output=True, text=True, check=True).stdout

    def figures(self, run, budget):
        kind, subtype, year = budget.split()
        return run("report", "-t", kind, "-s", subtype, "-y", year, "--rows", "id", "--columns", "period", "--values",
                   "budget,actual,orders", "--format", "csv")

    def test_runs(self):
        b = self.browser
        for command, (place, options, words, writes, written) in RUNS.items():
            with self.subTest(command):
                b.go(f"#/elaborate/{place}{'&' if '?' in place else '?'}run={command}")
                for name, value in options.items():
                    self.option(name, value)
                b.js("""window.told = [];
                        new MutationObserver(() => told.push(document.querySelector(".progress").textContent))
                          .observe(document.querySelector(".progress"), {childList: true});""")
                before = self.figures(self.server.run, written)
                self.try_run()
                self.assertRegex(" ".join(b.js("return told")), r"\d+/\d+|Working")
                self.assertTrue(self.figures(self.server.run, written) == before, "a trial writes nothing")
                expected = json.loads(self.on_twin(command, *words, "--dry-run", "--format", "json"))
                lines = expected if isinstance(expected, list) else next(iter(expected.values()))
                grid = b.grid(".result")
                after = [row[grid["columns"].index("DOPO")] for row in grid["rows"]]
                self.assertGreater(len(after), 12)
                self.assertEqual(after, [shown(str(line["DOPO"])) for line in lines[:len(after)]])
                self.write_run()
                self.on_twin(command, *words, *writes)
                now = self.figures(self.server.run, written)
                self.assertTrue(now != before, "it is written")
                self.assertTrue(now == self.figures(self.on_twin, written), "as the program writes it")
                last = self.csv("history")[0]
                self.assertIn(command, last["COMANDO"])

    def test_stop(self):
        """Of a run that waits for others: what is stopped, or left before it wrote, is ended on the server."""
        b = self.browser
        place = "#/elaborate/4/01/2025?site=1&kind=0&run=elaborate-cards"
        ended = lambda: b.js("return window.ended")
        with contextlib.closing(sqlite3.connect(self.server.database, isolation_level=None)) as other:
            for leave in (lambda: b.click(".run button", "Stop"), lambda: b.go("#/")):
                b.go(place)
                b.js("""window.ended = 0;
                        const real = window.fetch;
                        window.fetch = async (path, options) => {
                          const answer = await real(path, options);
                          if (options?.method === "DELETE") {
                            const job = await answer.clone().json();
                            if (job.error?.message.startsWith("Ended from outside")) ++window.ended;
                          }
                          return answer;
                        };""")
                other.execute("BEGIN IMMEDIATE")
                b.click(".run button", "Try")
                b.element(".progress", "Working")
                leave()
                other.execute("ROLLBACK")
                b.wait(lambda: ended() == 1, "the end of the job")
                if b.js("return location.hash") == place:
                    b.element(".result", "Ended from outside: nothing was written")
                    b.element(".run button:enabled", "Try")
                b.driver.refresh()
