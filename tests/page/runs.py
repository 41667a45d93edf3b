"""The elaborations from the trial to the write, beside the same runs on the command line."""
import json
import os
import shutil
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
