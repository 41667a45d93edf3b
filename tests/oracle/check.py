#!/usr/bin/env python3
"""Compares every figure of a random company with an independent calculation.

    check.py PROGRAM SEED... [--jobs N]

Each seed is a company of its own. What differs is printed with its seed, the command that showed it, card, period,
field and both values. `company.py PROGRAM SEED FILE` makes the company, to try the command on it; of elaborations the
ones that the seed ran before have to run first. Exit code 0 when nothing differs.
"""

import argparse
import concurrent.futures
import functools
import json
import os
import random
import shlex
import shutil
import subprocess
import sys
import tempfile
from decimal import Decimal
from pathlib import Path

from company import Company
from comparison import ComparisonChecks
from drill_down import DrillDownChecks
from elaborations import BalanceRun, CardRun, CopyRun, apply, details
from expected import Budget, Report, grid, periods
from planning import PlanningChecks
from rules import DAY, MEASURES, ORDERS, add_months, month_end, months_between, read_tables

class Check(PlanningChecks, ComparisonChecks, DrillDownChecks):
    """One company: its database, what was compared, what differs."""

    raised_copies = 0.5  # how many duplications have a percentage
    orders_repeat = False  # whether a further order repeats its period's other values
    overwrites = True  # whether a proposal overwrites by itself what is there, when that is asked for
    in_two = True  # whether a range that turns around the calendar is run in two
    deviations = ("none", "one", "file", "file")  # where the percentages of a proposal come from

    def __init__(self, program, seed, template, folder):
        self.program, self.seed = program, seed
        self.folder, self.database = Path(folder), str(Path(folder) / f"{seed}.db")
        self.where = ["-d", self.database]
        self.make(template)
        self.random, self.more = random.Random(-seed - 1), random.Random(10**6 + seed)
        self.cells, self.differences = 0, []

    def make(self, template):
        shutil.copy(template, self.database)
        Company(self.seed).write(self.database)

    def tables(self):
        return read_tables(self.database)

    def end(self):
        os.remove(self.database)

    def run(self, *words, refused=False):
        """The program's answer in JSON, or its words where it has no rows to show; None when it refused or failed."""
        command = [self.program, *words, *self.where, "--format", "json", "--lang", "en"]
        done = subprocess.run(command, capture_output=True, text=True, stdin=subprocess.DEVNULL)
        self.command = shlex.join(words)
        if refused or done.returncode:
            if done.returncode != int(refused):
                self.report("exit code", {}, done.returncode, f"{int(refused)}; {done.stderr.strip()[-300:]}")
            return None
        return json.loads(done.stdout, parse_float=Decimal) if done.stdout[:1] in ("[", "{") else done.stdout

    def file(self, header, rows):
        """The path of a CSV file with these rows."""
        path = self.folder / f"{self.seed}.csv"
        path.write_text("\n".join([header, *(",".join(map(str, row)) for row in rows)]) + "\n", encoding="utf-8")
        return str(path)

    def report(self, what, where, found, expected):
        place = " ".join(f"{k}={v}" for k, v in where.items())
        self.differences.append(f"seed {self.seed}: {self.command}\n    {place} {what}: {found}, should be {expected}")

    def compare(self, found, expected, where):
        """Two tables {key: {field: value}}; `where` names the parts of a key."""
        same = lambda field, row, value: (None if row.get(field) == "" else row.get(field)) == value
        wrong = found.keys() ^ expected.keys()
        for key in found.keys() & expected.keys():
            self.cells += len(expected[key])
            if not all(same(field, found[key], value) for field, value in expected[key].items()):
                wrong.add(key)
        for key in sorted(wrong, key=str):
            place = dict(zip(where, key if isinstance(key, tuple) else (key,)))
            if key not in found or key not in expected:
                self.report("the row", place, "there" if key in found else "missing", "missing" if key in found else f"there: {expected[key]}")
                continue
            for field, value in expected[key].items():
                if not same(field, found[key], value):
                    self.report(field, place, found[key].get(field), value)

    def budgets(self):
        tables = self.tables()
        keys = {(c["BU65_INDTIPO_BU01"], c["BU65_SOTTOTIPO_BU01"], c["BU65_ANNO"], c["BU65_PROGESER"]) for c in tables["BU65_TESBUDGET"]}
        return [Budget(tables, *key) for key in sorted(keys)]

    def check_grids(self, budget):
        for site in budget.sites if budget.per_site else [None]:
            for cost in (0, 1) if budget.type == 4 else [None]:
                chosen = (["-b", str(site)] if budget.per_site else []) + (["-k", str(cost)] if cost is not None else [])
                rows = self.run("grid", *budget.options, *chosen)
                if rows is not None:
                    expected = {k: {f: v for f, v in r.items() if "_FORE" not in f or "DELTA" in f or "FORECAST" in f}
                                for k, r in grid(budget, site, cost).items()}
                    self.compare({r["BU65_ID"]: r for r in rows}, expected, ["card"])

    def check_periods(self, budget):
        for card in self.random.sample(budget.cards, 1):
            rows = self.run("periods", str(card["BU65_ID"]))
            found, seen = {}, {}
            for row in rows or []:
                seen[row["PERIODO"]] = seen.get(row["PERIODO"], -1) + 1
                found[row["PERIODO"], seen[row["PERIODO"]]] = row
            self.compare(found, periods(budget, card, self.orders_repeat), ["period", "line"])

    def check_report(self, budget):
        r, calendar = self.random, budget.calendar
        axes = ["site"] * budget.per_site + (["kind", "card", "account", "id"] if budget.type == 4 else
                                             ["account", "id"] if budget.type == 5 else ["area", "id"])
        if budget.account == "BU65_CONTO_CG24" and budget.type in (4, 5):
            axes.append("level:1")
        rows = r.sample(axes, r.randint(0, 2))
        fitting = [c for c, m in (("month", 1), ("quarter", 3), ("half", 6), ("year", 12)) if m % calendar.months_per_period == 0]
        to = r.choice((None, r.choice([m for m in calendar.months if calendar.whole_to(m)])))
        report = Report(budget, rows, r.choice(fitting + ["period"]), r.choice(list(MEASURES)), to)
        values = ["budget", "actual", "delta", "delta%", "orders", "available"]
        values += [f"forecast{n}{part}" for n in range(1, budget.forecasts + 1) for part in ("", ".delta", ".delta%", ".actual", ".forecast")]
        words = ["report", *budget.options, "--columns", report.columns, "--values", ",".join(values),
                 "--measure", {"IMP": "amount", "QTA1": "qty1", "QTA2": "qty2"}[report.measure]]
        if rows:
            words += ["--rows", ",".join(rows)]
        if to:
            words += ["--to", to.strftime("%Y-%m")]
        found = self.run(*words)
        if found is not None:
            self.compare({tuple(row[n] for n in report.names()): row for row in found}, report.expected(), rows)

    def compare_details(self, expected):
        """Every detail of the database, those that should be as they were too."""
        found = details(self.tables())
        if found == expected:
            self.cells += 3 * sum(map(len, found.values()))
            return
        flat = lambda all_: {(*key, i): dict(zip(("IMPORTO", "QTA1", "QTA2"), v)) for key, values in all_.items() for i, v in enumerate(values)}
        self.compare(flat(found), flat(expected), ["card", "kind", "period", "row"])

    def check_cards(self, budget):
        """Elaborates the cards of a budget from movements, with options left to chance."""
        if budget.calendar.comes_round:
            return  # its first period is its last one too, and the object keeps to the periods between the two
        r, calendar, words, options = self.random, budget.calendar, [], {}
        months = [m for m in calendar.months]
        if r.random() < 0.6:
            first, last = sorted(r.choices(months, k=2))
            first, last = (first, month_end(last)) if r.random() < 0.7 else (first + DAY * r.randint(0, 27), month_end(last) - DAY * r.randint(0, 5))
            first, last = max(min(first, last), calendar.start), last
        else:
            first, last = calendar.start, calendar.end
        words += ["--DaData", f"#{first}#", "--AData", f"#{last}#"]
        options.update(first=first, last=last, by_competence=r.random() < 0.6)
        words += ["--TipoDataMovimenti", str(int(options["by_competence"]))]
        words += self.choose_movements(options)
        if r.random() < 0.3:
            options["cost"] = [r.choice((0, 1))]
            words += ["-k", str(options["cost"][0])]
        if budget.per_site and r.random() < 0.4:
            options["sites"] = r.sample(budget.sites, r.randint(1, len(budget.sites)))
            words += ["--ElencoSedi", ",".join(map(str, options["sites"]))]
        if r.random() < 0.3:
            options["cards_from"], options["cards_to"] = r.choice((("S1", "S3"), ("A", "Z9"), ("S2", "Z")))
            words += ["--DaScheda", options["cards_from"], "--AScheda", options["cards_to"]]
        if r.random() < 0.3:
            options["kind_written"] = r.choice([k for k in range(3 + budget.forecasts) if k != ORDERS])
            words += ["--TipoDettaglioDestinazione", str(options["kind_written"])]
        run = CardRun(budget.tables, budget, in_two=self.in_two, **options)
        expected = apply(budget.tables, budget, run.kind_written, run.written())
        answer = self.run("elaborate-cards", *budget.options, "--yes", *words)
        if answer is not None:
            self.compare_details(expected)
            self.check_reconciliation(run, answer, not {"cost", "sites", "cards_from"} & set(options))

    def check_reconciliation(self, run, answer, everything):
        """What the program says of where the movements landed: that it adds up, and each of its totals."""
        names = {"cost": 0, "revenue": 1}
        found = {}
        for row in answer["Reconciliation"]:
            found.setdefault(names.get(row["SCHEDE"]), {})[row["VOCE"]] = row["IMPORTO"]
        for kind in {0, 1} & set(found):
            totals = found[kind]
            rest = sum(v for k, v in totals.items() if k != "movements of the range")
            nowhere = sum((r["IMPORTO"] for r in answer["Landed nowhere"] if names.get(r["SCHEDE"]) == kind), Decimal(0))
            totals.update({"all but the movements": rest, "lines that landed nowhere": nowhere})
        expected = run.reconciliation() if everything else None
        for kind in found if expected else ():
            totals = {k: expected[kind][k] for k in {*found[kind], *expected[kind]} if k in found[kind] or expected[kind][k]}
            if kind is not None:
                totals.update({"all but the movements": totals["movements of the range"], "lines that landed nowhere": totals["landed nowhere"]})
            self.compare({(kind, k): {"amount": found[kind].get(k)} for k in totals}, {(kind, k): {"amount": v} for k, v in totals.items()},
                         ["cards", "total"])
        if not expected:
            self.compare({k: {"total": v["all but the movements"]} for k, v in found.items() if k is not None},
                         {k: {"total": v["movements of the range"]} for k, v in found.items() if k is not None}, ["cards"])

    def check_balances(self, budget):
        """Proposes a budget from balances, with options left to chance, and writes it or not."""
        r, options, words = self.random, {}, []
        year = r.choice(budget.tables["CG19_ANADITTAESER"])
        words += ["--AnnoEsercizioMovimenti", str(year["CG19_ANNO"]), "--ProgressivoEsercizioMovimenti", str(year["CG19_PROGESER"])]
        first, last = year["CG19_DATAINIZIO"], year["CG19_DATAFINE"]
        options["accruals"] = r.random() < 0.4
        if r.random() < 0.5:
            months = sorted(add_months(first, r.randint(0, months_between(first, last))) for _ in range(2))
            first = months[0] + DAY * r.randint(0, 20)
            last = max(month_end(months[1]) - DAY * (0 if options["accruals"] else r.choice((0, 0, 9))), first)
        if r.random() < 0.15:
            last = month_end(add_months(year["CG19_DATAFINE"], r.randint(1, 4))) - DAY * (0 if options["accruals"] else r.choice((0, 0, 9)))
        if (first, last) != (year["CG19_DATAINIZIO"], year["CG19_DATAFINE"]):
            words += ["--DaData", f"#{first}#", "--AData", f"#{last}#"]
            options.update(first=first, last=last)
        options["by_registration"] = r.random() < 0.5
        words += ["--TipoDataMovimenti", str(int(not options["by_registration"]))]
        options["kinds"] = r.choice(([0, 1], [0], [0, 1, 2]))
        words += ["--TipoMovimenti", f"CG41_INDTIPOMOV IN ({','.join(map(str, options['kinds']))})"]
        for chance, word, name in ((0.3, "--GestioneAmmortamenti", "depreciation"), (0.3, "--GestioneRettifiche", "adjustments"),
                                   (0.3, "--IsSovrascriviEsistenti", "overwrite"), (0.3, "--ElaboraSoloContiBudgettizzati", "only_budgeted")):
            if r.random() < chance:
                options[name] = True
                words.append(word)
        if options["accruals"]:
            words.append("--GestioneRateiRisconti")
        if budget.per_site:
            options["site"] = r.choice(budget.sites)
            words += ["-b", str(options["site"])]
        if r.random() < 0.3:
            pair = {"BU65_CONTO_CG24": ("6", "7Z"), "BU65_CODICE_CG23": ("A2", "B1"), "BU65_CONTO_PC03": ("150", "205")}[budget.account]
            options["account_from"], options["account_to"] = pair
            words += ["--DaConto", pair[0], "--AConto", pair[1]]
        words += self.choose_deviation(budget, options)
        run = BalanceRun(budget.tables, budget, year, **{**options, "overwrite": self.overwrites and "overwrite" in options})
        rows = self.run("elaborate-balances", *budget.options, *words)
        if rows is not None:
            rows, unlinked = (rows, None) if isinstance(rows, list) else list(rows.values())[:2]
            self.compare({(row["CONTO"], row["PERIODO"]): row for row in rows}, run.rows(), ["account", "period"])
            if unlinked is not None:
                self.compare({(row["CONTO"], row["SEGNO"]): row for row in unlinked}, run.unlinked(), ["account", "sign"])
        if self.run("elaborate-balances", *budget.options, *words, "--write") is not None:
            old, new = run.written()
            self.compare_details(self.with_new_cards(apply(budget.tables, budget, run.kind_written, old, False), budget, run, new))

    def choose_movements(self, options):
        """Chooses which movements a card run takes, and how. @return its options in words"""
        words = []
        kinds = [k for k in (0, 1, 2) if self.random.random() < 0.6]
        if kinds:
            options["kinds"] = kinds
            words += [("--MovimentiConsolidati", "--MovimentiDaConsolidare", "--MovimentiPrevisionali")[k] for k in kinds]
        for chance, word, name in ((0.5, "--IsApplicaPercentuali", "percentages"), (0.3, "--IsSoloMovCliFor", "only_party")):
            if self.random.random() < chance:
                options[name] = True
                words.append(word)
        return words

    def choose_deviation(self, budget, options):
        r, shape = self.random, self.random.choice(self.deviations)
        if shape == "none":
            return []
        if shape == "one":
            options["percent"] = Decimal(r.randint(-3000, 3000)).scaleb(-2)
            return ["--percent", str(options["percent"]).replace(".", ",")]
        options["inherited"] = shape == "file"
        accounts = [a["CG24_CONTO"] for a in budget.tables["CG24_TABPDC"]]
        percents = options["percents"] = {}
        for account in r.sample(accounts, min(8, len(accounts))):
            for month in [None] if shape == "file" and r.random() < 0.6 else r.sample(range(1, 13), 4):
                percents[account, month] = Decimal(r.choice((0, r.randint(-3000, 3000), r.randint(1, 99)))).scaleb(-2)
        return ["--percent-" + shape, self.file("account,period,percent", [(a, month or "", percent) for (a, month), percent in percents.items()])]

    def with_new_cards(self, expected, budget, run, new):
        """Adds the cards that must have been made: which identifiers they got is not ours to say."""
        made = {c[budget.account]: c["BU65_ID"] for c in Budget(self.tables(), *budget.key).cards
                if c["BU65_ID"] not in {old["BU65_ID"] for old in budget.cards}}
        self.compare({a: {} for a in made}, {a: {} for a in new}, ["new card of account"])
        for account, amounts in new.items():
            for kind in [k for k in range(3 + budget.forecasts) if k != ORDERS]:
                for period in range(1, budget.calendar.count + 1):
                    amount = amounts.get(period) if kind == run.kind_written else None
                    expected[made.get(account), kind, period] = [(amount, None, None)]
        return expected

    def check_copy(self, source):
        """Duplicates cards into another budget or year, with options left to chance."""
        r, tables, words, options = self.random, source.tables, [], {}
        targets = [Budget(tables, 4, subtype, y["CG19_ANNO"], y["CG19_PROGESER"]) for subtype in ("01", "02") for y in tables["CG19_ANADITTAESER"]]
        fitting = [t for t in targets if CopyRun(tables, source, t).fits()]
        target = r.choice(fitting if r.random() < 0.9 else targets)
        words += ["--BdgDestinazioneSottoTipo", target.key[1], "--BdgDestinazioneAnnoEsercizio", str(target.key[2]),
                  "--BdgDestinazioneProgressivoEsercizio", str(target.key[3])]
        options["cost"] = r.choice((0, 0, 1))
        words += ["-k", str(options["cost"])]
        sites = [s["CG31_CODICE"] for s in tables["CG31_SEDI"]]
        if source.per_site:
            options["site"] = r.choice(source.sites)
            words += ["-b", str(options["site"])]
        if target.per_site:
            options["target_site"] = r.choice(sites)
            words += ["--BdgDestinazioneCodiceSede", str(options["target_site"])]
        kinds = lambda budget: [k for k in range(3 + budget.forecasts) if k != ORDERS]
        if r.random() < 0.4:
            options.update(kind_read=r.choice(kinds(source)), kind_written=r.choice(kinds(target)))
        words += ["--TipoDettaglioOrigine", str(options.get("kind_read", 0)), "--TipoDettaglioDestinazione", str(options.get("kind_written", 0))]
        if r.random() < self.raised_copies:
            options["percent"] = Decimal(r.randint(-3000, 3000)).scaleb(-2)
            words += ["--percent", str(options["percent"]).replace(".", ",")]
        for chance, word, name in ((0.4, "--IsSovrascriviEsistenti", "overwrite"), (0.5, "--IsDuplicaScadenzeCashFlow", "due_dates"),
                                   (0.3, "--IsDuplicaScadenzeManualiCashFlow", "manual_too")):
            if r.random() < chance:
                options[name] = True
                words.append(word)
        run = CopyRun(tables, source, target, **options)
        if self.run("duplicate", *source.options, *words, refused=not run.fits()) is None:
            if not run.fits():
                self.compare_details(details(tables))
            return
        now = self.tables()
        cards = Budget(now, *target.key).cards
        made = {card["BU65_ID"]: run.target_of(card, cards) for card in run.cards()}
        self.compare_details(run.details(made))
        found = {t["BU67_ID_BU65"]: t for t in now["BU67_BDGCASHFLOW"]}
        self.compare({c: found.get(c, {}) for c in run.terms(made)}, run.terms(made), ["terms of card"])
        for card, dues in run.dues(made).items():
            rows = sorted((d["BU14_PERIODO"], d["BU14_DATASCAD"], d["BU14_IMPORTO"], d["BU14_FLGMANUAL"]) for d in now["BU14_SCADCFLOW"] if d["BU14_IDBUDGET"] == card)
            self.compare({i: {"due": d} for i, d in enumerate(rows)}, {i: {"due": d} for i, d in enumerate(dues)}, [f"due dates of card {card}"])

    def everything(self):
        for budget in self.budgets():
            self.check_grids(budget)
            self.check_periods(budget)
            self.check_report(budget)
        for budget in self.budgets():
            if budget.type == 4:
                for _ in range(2):
                    self.check_cards(Budget(self.tables(), *budget.key))
                for _ in range(2):
                    self.check_copy(Budget(self.tables(), *budget.key))
            elif budget.type == 5:
                for _ in range(2):
                    self.check_balances(Budget(self.tables(), *budget.key))
        self.plans()

    def plans(self):
        """What fills plans and what explains them, on what the elaborations left."""
        for budget in self.budgets():
            for check in (self.check_raise, self.check_spread, self.check_spread):
                check(Budget(self.tables(), *budget.key))
            if budget.type == 4:
                self.check_values(Budget(self.tables(), *budget.key))
                self.check_movements(Budget(self.tables(), *budget.key))
            if budget.type in (4, 5):
                self.check_comparison(Budget(self.tables(), *budget.key))


def check_seed(kind, program, template, folder, seed):
    """The figures compared and what differs."""
    check = kind(program, seed, template, folder)
    try:
        check.everything()
    finally:
        check.end()
    return check.cells, check.differences


def seeds_of(words):
    for word in words:
        first, _, last = word.partition("-")
        yield from range(int(first), int(last or first) + 1)


def make_template(program, folder):
    """An empty company, to be copied: making a database takes longer than filling one."""
    template = os.path.join(folder, "template.db")
    subprocess.run([program, "create", template, "--name", "Oracle", "-y", "2024"], check=True, stdout=subprocess.DEVNULL)
    return template


def main(kind=Check):
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("seeds", nargs="+", help="7, or 1-2000")
    parser.add_argument("--jobs", type=int, default=1)
    options = parser.parse_args()
    companies = cells = wrong = 0
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ProcessPoolExecutor(options.jobs) as pool:
        one = functools.partial(check_seed, kind, options.program, make_template(options.program, folder), folder)
        for compared, differences in pool.map(one, seeds_of(options.seeds)):
            companies, cells, wrong = companies + 1, cells + compared, wrong + len(differences)
            for difference in differences[:10]:
                print(difference, flush=True)
    print(f"{companies} companies, {cells} figures compared, {wrong} differ")
    return 1 if wrong or not cells else 0


if __name__ == "__main__":
    sys.exit(main())
