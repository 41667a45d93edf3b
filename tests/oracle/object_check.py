#!/usr/bin/env python3
"""The same companies through the object's own calls: properties, methods and record sets of the Python package.

    object_check.py PROGRAM SEED... [--jobs N]    with BUKORVAL_LIBRARY and PYTHONPATH set

The program only makes the empty database. What the program does around the object is not there: it fills differences,
runs a range in two, raises copies, marks what is to be overwritten, proposes budgets by months; reports, plans and the
movements behind a cell are its own.
"""

import collections
import csv
import datetime
import sys
from decimal import Decimal

import bukorval
from check import Check, main

PROPERTIES = {"-t": "TipoBudget", "-s": "SottoTipoBudget", "-y": "AnnoEsercizio", "-p": "ProgressivoEsercizio", "-k": "BdgTipoScheda",
              "-b": "CodiceSede"}
TEXTS = ("SottoTipoBudget", "BdgDestinazioneSottoTipo", "TipoMovimenti", "DaConto", "AConto", "DaScheda", "AScheda")
KINDS = ("MovimentiConsolidati", "MovimentiDaConsolidare", "MovimentiPrevisionali")
OWN = ("--yes", "--write", "--percent", "--percent-file", "--percent-periods")


def properties_of(words):
    """The object's properties from a command line of the program, and the options that are none."""
    result, own, words = {}, {}, collections.deque(words)
    while words:
        word = words.popleft()
        value = words.popleft() if words and not words[0].startswith("--") and words[0] not in PROPERTIES else True
        if word in OWN:
            own[word] = value
            continue
        name = PROPERTIES.get(word, word[2:])
        if value is not True and name not in TEXTS:
            value = (datetime.date.fromisoformat(value.strip("#")) if value.startswith("#") else
                     {int(site): None for site in value.split(",")} if name == "ElencoSedi" else int(value))
        result[name] = value
    return result, own


def deviations(path):
    """The two record sets of deviations from a file of the program's: by account, and by account and period."""
    field = bukorval.Field
    accounts = bukorval.RecordSet([field("CONTO", "text", 15), field("FLGPERIODI", "integer"), field("PERCSCOST", "decimal", 0, 6, 2)])
    months = bukorval.RecordSet([field("CONTO", "text", 15), field("PERIODO", "integer"), field("PERCSCOST", "decimal", 0, 6, 2)])
    by_account = collections.defaultdict(list)
    with open(path, encoding="utf-8") as file:
        for row in csv.DictReader(file):
            by_account[row["account"]].append(row)
    for account, rows in by_account.items():
        by_month = bool(rows[0]["period"])
        accounts.add({"CONTO": account, "FLGPERIODI": int(by_month), "PERCSCOST": None if by_month else Decimal(rows[0]["percent"])})
        for row in rows if by_month else ():
            months.add({"CONTO": account, "PERIODO": int(row["period"]), "PERCSCOST": Decimal(row["percent"])})
    return accounts, months


class ObjectCheck(Check):
    deviations = Check.deviations + ("periods",)
    raised_copies, orders_repeat, overwrites, in_two = 0, True, False, False

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.company = bukorval.connect(f"Provider=SQLite;Data Source={self.database}")

    def check_report(self, budget):
        pass

    def plans(self):
        pass

    def check_balances(self, budget):
        if budget.calendar.months_per_period > 1:
            super().check_balances(budget)

    def compare(self, found, expected, where):
        super().compare(found, {k: {f: None if f.startswith("DELTA") else v for f, v in row.items()} for k, row in expected.items()}, where)

    def run(self, *words, refused=False):
        self.command = " ".join(words)
        try:
            answer = getattr(self, "run_" + words[0].replace("-", "_"))(words[1:])
        except bukorval.Outcome as outcome:
            if not refused or outcome.Stato != 1:
                self.report("outcome", {}, outcome, "a refusal" if refused else "success")
            return None
        if refused:
            self.report("outcome", {}, "success", "a refusal")
            return None
        return answer

    def run_grid(self, words):
        return self.company.budget(**properties_of(words)[0]).RecordSetBudget().rows()

    def run_periods(self, words):
        card = next(c for b in self.budgets() for c in b.cards if c["BU65_ID"] == int(words[0]))
        return self.company.budget(TipoBudget=card["BU65_INDTIPO_BU01"], SottoTipoBudget=card["BU65_SOTTOTIPO_BU01"]).RecSetPeriodiBudget(
            card["BU65_ID"]).rows()

    def run_elaborate_cards(self, words):
        properties, _ = properties_of(words)
        kinds = [str(k) for k, name in enumerate(KINDS) if properties.pop(name, False)] or ["0", "1"]
        defaults = dict(AnnoEsercizioMovimenti=properties["AnnoEsercizio"], ProgressivoEsercizioMovimenti=properties["ProgressivoEsercizio"],
                        TipoMovimenti=f"CG41_INDTIPOMOV IN ({','.join(kinds)})", TipoDettaglioDestinazione=1, DaScheda=" ",
                        AScheda="ZZZZZZZZZZ")
        if "ElencoSedi" not in properties:
            defaults["ElencoSedi"] = {site["CG31_CODICE"]: None for site in self.budgets()[0].tables["CG31_SEDI"]}
        for cost in [properties["BdgTipoScheda"]] if "BdgTipoScheda" in properties else (0, 1):
            self.company.budget(**{**defaults, **properties, "BdgTipoScheda": cost}).BdgElaSchede_Elaborazione()
        return {"Reconciliation": [], "Landed nowhere": []}

    def run_elaborate_balances(self, words):
        properties, own = properties_of(words)
        year = next(y for y in self.budgets()[0].tables["CG19_ANADITTAESER"]
                    if (y["CG19_ANNO"], y["CG19_PROGESER"]) == (properties["AnnoEsercizioMovimenti"], properties["ProgressivoEsercizioMovimenti"]))
        defaults = dict(DaData=year["CG19_DATAINIZIO"], AData=year["CG19_DATAFINE"], TipoDettaglioDestinazione=0, TipoElaborazioneBO=10,
                        TipoScostamento=99, CodicePdcCoGeDitta=1)
        if "--percent" in own:
            defaults.update(TipoScostamento=0, PercentualeScostamento=Decimal(own["--percent"].replace(",", ".")))
        if "--percent-file" in own:
            accounts, months = deviations(own["--percent-file"])
            defaults.update(TipoScostamento=2, RstScostPerConto=accounts, RstScostPerPeriodo=months)
        if "--percent-periods" in own:
            defaults.update(TipoScostamento=3, RstScostPerPeriodo=deviations(own["--percent-periods"])[1])
        budget = self.company.budget(**{**defaults, **properties})
        budget.BdgElaEco_PopolaRstSaldiElaEco()
        rows = budget.RstSaldiElaEco.rows()
        if "--write" in own:
            budget.BdgElaEco_ScriviBudget_DaRstSaldiElaEco()
        return rows

    def run_duplicate(self, words):
        properties, _ = properties_of(words)
        self.company.budget(**{"DaScheda": " ", "AScheda": "ZZZZZZZZZZ", **properties}).BdgDupSchede_Duplicazione()
        return []


if __name__ == "__main__":
    sys.exit(main(ObjectCheck))
