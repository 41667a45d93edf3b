#!/usr/bin/env python3
"""The Python package against the program: check.py PROGRAM DATABASE, a copy of the demo company"""

import copy
import csv
import datetime
import gc
import io
import pickle
import subprocess
import sys
import threading
import types
import weakref
from decimal import Decimal

import bukorval

try:
    import pandas  # noqa: F401
except ImportError:
    # A frame is made of a dict of columns, which stands for it where there are no frames.
    sys.modules["pandas"] = types.SimpleNamespace(DataFrame=dict)

program, database = sys.argv[1:]
where = f"Provider=SQLite;Data Source={database}"
selection = dict(TipoBudget=4, SottoTipoBudget="01", AnnoEsercizio=2025, ProgressivoEsercizio=1, CodiceSede=1,
                 BdgTipoScheda=0)


def printed(*arguments):
    """The rows that the program prints as CSV."""
    command = [program, *arguments, "-d", database, "--format", "csv"]
    return list(csv.DictReader(io.StringIO(subprocess.run(command, check=True, capture_output=True, text=True).stdout)))


def text(value):
    if isinstance(value, datetime.date):
        return value.strftime("%d/%m/%Y")
    return "" if value is None else str(value).rstrip()


def raised(kind, call, *arguments):
    try:
        call(*arguments)
    except kind as error:
        return error
    raise AssertionError(f"No {kind.__name__}")


def same_as_the_program(company):
    """Grids and record sets hold what the program prints, exact to the cent."""
    budget = company.budget(**selection)
    grid = budget.RecordSetBudget()
    expected = printed("grid", "-t", "4", "-s", "01", "-y", "2025", "-k", "0", "-b", "1", "--all")
    # The program fills the deltas, which the object leaves to its client.
    names = [field.name for field in grid.fields if not field.name.startswith("DELTA") and field.name in expected[0]]
    assert len(names) > 10 and len(expected) == len(grid) > 5
    found = [[text(row[name]) for name in names] for row in grid]
    assert sorted(found) == sorted([row[name].rstrip() for name in names] for row in expected)
    assert sum(grid["imp_budget"]) == sum(Decimal(row["IMP_BUDGET"]) for row in expected)
    assert all(isinstance(amount, Decimal) for amount in grid["IMP_BUDGET"])

    periods = budget.RecSetPeriodiBudget(59)
    amounts = [[text(row["PERIODO"]), text(row["IMP_BUDGET"]), text(row["IMP_CONSUNTIVO"])] for row in periods]
    assert amounts == [[row["PERIODO"], row["IMP_BUDGET"], row["IMP_CONSUNTIVO"]] for row in printed("periods", "59")]
    frame = grid.to_pandas()
    assert list(frame) == [field.name for field in grid.fields] and len(frame["BU65_ID"]) == len(grid)
    assert sum(frame["IMP_BUDGET"]) == sum(grid["IMP_BUDGET"])


def members(company):
    """Every member that the program knows is there, with its text; values come back as they went."""
    budget = company.budget(raises=False)
    for member in printed("call", "--list"):
        described = getattr(type(budget), next(iter(member.values())).split("(")[0].split(" ")[0])
        assert len(described.__doc__.splitlines()) == 3, described
    assert {"TipoBudget", "RecordSetBudget", "AggiornaSingoloValoreBU66"} <= set(dir(budget))
    for value in (0, -2**31, 0.5, Decimal("12.50"), "perché €", "", True, datetime.date(2025, 2, 28), None,
                  datetime.datetime(2025, 2, 28, 10, 30)):
        budget.DaConto = value
        assert budget.DaConto == value and type(budget.DaConto) is type(value), value
    assert budget.DeterminaDateInizioFineEsercizio(1, 2025, 1) == (datetime.date(2025, 1, 1), datetime.date(2025, 12, 31))
    assert budget.GetDescrizionePeriodo(1, 2, 1, 3, 2025, 1) == "3° Trimestre"
    assert budget.CalcolaDelta(bukorval.EMPTY, Decimal("0.10")) == Decimal("-0.10")
    budget.ElencoSedi = {1: "Lecco", 2: None}
    assert budget.ElencoSedi == {1: "Lecco", 2: None}
    rows = bukorval.RecordSet([bukorval.Field("CONTO", "text", 8), bukorval.Field("IMPORTO", "decimal", 0, 15, 2)])
    rows.add({"CONTO": "71020001", "IMPORTO": Decimal("1.005")})
    budget.RstSaldiElaEco = rows
    budget.RstSaldiElaEco.put(0, "CONTO", "72")
    assert rows.rows() == [{"CONTO": "72", "IMPORTO": Decimal("1.01")}]
    # Two owners of one handle would free it twice.
    for copied in (copy.copy, copy.deepcopy, pickle.dumps):
        for owner in (rows, budget, company):
            raised(TypeError, copied, owner)
    assert copy.deepcopy(rows.rows()) == rows.rows()


def outcomes(company):
    """A refusal is raised, or told when that was asked for; a wrong call is an error either way."""
    budget = company.budget(**{**selection, "SottoTipoBudget": None})
    error = raised(bukorval.Outcome, budget.AllineaBU65_A_StrutturaBU60)
    assert error.Stato == 1 and "non definito" in error.errore == budget.errore
    assert budget.NVL(None, 5) == 5
    budget.raises = False
    assert budget.AllineaBU65_A_StrutturaBU60() is None and budget.Stato == 1
    raised(bukorval.Misuse, budget.GetBdgPeriodo)
    raised(bukorval.Misuse, budget.BFill, "x", "many")
    raised(AttributeError, setattr, budget, "TipoBudge", 4)
    raised(AttributeError, setattr, budget, "Stato", 0)
    raised(OverflowError, setattr, budget, "DaConto", 2**63)
    raised(bukorval.Failure, company.execute, "SELECT X FROM NESSUNA")
    # A statement that a zero would cut short is not run.
    raised(ValueError, company.execute, "DELETE FROM BU66_DETBUDGET\0 WHERE 1 = 2")
    company.begin()
    company.execute("DELETE FROM BU66_DETBUDGET")
    company.rollback()
    assert company.execute("SELECT COUNT(*) AS N FROM BU66_DETBUDGET")["n"][0] > 1000


def events(company):
    """An elaboration tells its progress; what a handler raises stops it and comes out."""
    budget = company.budget(**selection, AnnoEsercizioMovimenti=2025, ProgressivoEsercizioMovimenti=1,
                            DaData=datetime.date(2025, 1, 1), AData=datetime.date(2025, 12, 31), TipoMovimenti="1 = 1",
                            TipoDettaglioDestinazione=1, ElencoSedi={1: 1, 9: 9})
    told, messages = [], []
    budget.on_begin = lambda description, steps: told.append(steps)
    budget.on_step = told.append
    budget.on_end = lambda: told.append("end")
    company.on_message(lambda text, style, title: messages.append(style))
    budget.BdgElaSchede_Elaborazione()
    assert told[:2] == [told[0], 1] and told[told[0]:told[0] + 2] == [told[0], "end"] and messages == [48], told
    budget.on_step = lambda number: 1 // (3 - number)
    raised(ZeroDivisionError, budget.BdgElaSchede_Elaborazione)
    assert budget.Stato == 99
    budget.on_step, budget.on_end = None, lambda: 1 // 0
    raised(ZeroDivisionError, budget.BdgElaSchede_Elaborazione)
    assert budget.Stato == 0
    company.on_message(None)


def lifetime(company):
    """A budget goes with its last name, and its connection with it."""
    budget = company.budget(**selection)
    budget.RecordSetBudget()
    budget.on_step = lambda number: None
    gone = weakref.ref(budget)
    gc.disable()
    del budget
    assert gone() is None
    gc.enable()


def threads():
    """Each thread works with a session of its own."""
    found = {}

    def count(site):
        with bukorval.connect(where) as own:
            found[site] = len(own.budget(**{**selection, "CodiceSede": site}).RecordSetBudget())

    workers = [threading.Thread(target=count, args=[site]) for site in (1, 2, 3)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    for site in (1, 2, 3):
        assert found[site] == len(printed("grid", "-t", "4", "-s", "01", "-y", "2025", "-k", "0", "-b", str(site)))


with bukorval.connect(where) as company:
    for case in (same_as_the_program, members, outcomes, events, lifetime):
        case(company)
threads()
raised(bukorval.Failure, company.execute, "SELECT 1")
raised(bukorval.Failure, bukorval.connect, "Provider=Nessuno")
