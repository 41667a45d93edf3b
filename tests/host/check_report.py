#!/usr/bin/env python3
"""Compares reports with the finance CSV files, cell by cell, by an independent calculation.

check_report.py PROGRAM DATABASE FINANCE_DIR [--year 2011] [--forecast SUBTYPE]

The actuals must have been elaborated. With --forecast it compares instead what grid, periods and report say a
forecast is made of, in that budget. Exit code 0 when every cell of every report agrees.
"""

import argparse
import collections
import sys
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

from check_finance import Program, amount, read_amounts

# Rows, columns, further options, and what they keep.
REPORTS = [
    ("site,kind,card", "month", [], lambda p: True),
    ("site,account", "quarter", ["--to", "{year}-09"], lambda p: p["month"] <= 9),
    ("kind,level:1", "half", ["--where", "account=6*,7*"], lambda p: p["account"][0] in "67"),
    ("card", "site", ["--where", "kind=0"], lambda p: p["kind"] == 0),
    ("level:2,site", "kind", ["--to", "{year}-02"], lambda p: p["month"] <= 2),
    ("", "year", [], lambda p: True),
]
FIELDS = {"site": "BU65_CODICE_CG31", "kind": "BU65_INDCOSRIC_BU07", "card": "BU65_SCHEDA_BU07",
          "account": "BU65_CONTO_CG24", "level:1": "LIVELLO1", "level:2": "LIVELLO2"}
KEYS = {"level:1": lambda p: p["account"][:2] + "000000", "level:2": lambda p: p["account"][:4] + "0000"}
COLUMNS = {"month": lambda p: f"M{p['month']:02d}_", "quarter": lambda p: f"Q{(p['month'] + 2) // 3}_",
           "half": lambda p: f"H{(p['month'] + 5) // 6}_", "site": lambda p: f"SITE{p['site']}_",
           "kind": lambda p: f"KIND{p['kind']}_", "year": lambda p: ""}


def points(sums, year):
    """Every amount of the year with its place."""
    for (scenario, site, kind), cards in sums.items():
        for card, months in cards.items():
            for (y, month), value in months.items():
                if y == year:
                    yield scenario, dict(site=site, kind=kind, card=card, account=f"{card[:-2]}{int(card[-2:]):04d}",
                                         month=month), value


def expected(sums, year, axes, columns, keeps):
    """{row: {column: {scenario: amount}}}"""
    rows = collections.defaultdict(lambda: collections.defaultdict(lambda: collections.defaultdict(Decimal)))
    for scenario, place, value in points(sums, year):
        if keeps(place):
            row = rows[tuple(str(KEYS.get(axis, lambda p: p[axis])(place)) for axis in axes)]
            for column in {COLUMNS[columns](place), ""}:
                row[column][scenario] += value
    return rows


def check_cell(row, column, amounts, problems, where):
    """The actuals of a period without movements are 0, or nothing on a card without any."""
    budget, actual = amounts.get("budget"), amounts.get("actual")
    shown = {name: amount(row[column + name]) for name in ("IMP_BUDGET", "IMP_CONSUNTIVO", "DELTAIMP_CONS",
                                                            "DELTAPERCIMP_CONS")}
    both = shown["IMP_BUDGET"] is not None and shown["IMP_CONSUNTIVO"] is not None
    delta = (actual or 0) - (budget or 0) if both else None
    percent = (delta / budget).quantize(Decimal("0.0001"), ROUND_HALF_UP) if delta is not None and budget else None
    wanted = {"IMP_BUDGET": budget or 0, "IMP_CONSUNTIVO": actual or 0, "DELTAIMP_CONS": delta,
              "DELTAPERCIMP_CONS": percent}
    if any((value or 0) != wanted[name] if name.startswith("IMP") else value != wanted[name]
           for name, value in shown.items()):
        problems.append(f"{where} {column or 'total'}: CSV {dict(amounts)}, report {shown}")


PARTS = ["IMP_FORECAST1", "IMP_CONS_FORE1", "IMP_PREV_FORE1", "IMP_DA_FORE1"]


def check_periods(program, card, wanted, problems):
    """The parts add up to those of the year, and the forecast's own begin where it says."""
    periods = program.rows("periods", card, "--explain")
    sums = [sum((amount(p[name]) or 0 for p in periods), Decimal()) for name in PARTS[1:3]]
    if sums != [amount(value) or 0 for value in wanted[1:3]]:
        problems.append(f"periods of card {card}: {sums}, report {wanted}")
    own = [p["DESCRIZIONE"] for p in periods if p["IMP_PREV_FORE1"]]
    marked = [(p["DESCRIZIONE"], p["IMP_DA_FORE1"]) for p in periods if p["IMP_DA_FORE1"]]
    if marked != ([(own[0], wanted[3])] if own else []):
        problems.append(f"periods of card {card}: from {marked}, own values in {own}, report {wanted[3]}")


def check_forecasts(program, year, subtype, problems):
    """Grid, periods and report give one figure, and it is the sum of its parts."""
    budget = ["-t", "4", "-s", subtype, "-y", str(year)]
    cards = {row["BU65_ID"]: [row[name] for name in PARTS] for row in program.rows(
        "report", *budget, "--rows", "id", "--values", "forecast1,forecast1.actual,forecast1.forecast,forecast1.from")}
    shown = {}
    for place in program.rows("report", *budget, "--rows", "site,kind", "--values", "budget"):
        grid = program.rows("grid", *budget, "--explain", "--CodiceSede", place["BU65_CODICE_CG31"],
                            "--BdgTipoScheda", place["BU65_INDCOSRIC_BU07"])
        shown.update({row["BU65_ID"]: [row[name] for name in PARTS] for row in grid})
    if shown != cards:
        problems.append(f"grid and report differ in {[c for c in cards if shown.get(c) != cards[c]][:5]}")
    for card, (whole, actual, own, _) in cards.items():
        if (amount(whole) or 0) != (amount(actual) or 0) + (amount(own) or 0):
            problems.append(f"card {card}: {whole} is not {actual} + {own}")
    mixed = [card for card, parts in cards.items() if parts[1] and parts[2]]
    for card in mixed[:5] + list(cards)[:5]:
        check_periods(program, card, cards[card], problems)
    if not mixed:
        problems.append("no forecast has actuals and values of its own")
    return 4 * len(cards)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("database")
    parser.add_argument("folder", type=Path)
    parser.add_argument("--year", type=int, default=2011)
    parser.add_argument("--forecast")
    args = parser.parse_args()

    sums = read_amounts(args.folder)
    program = Program(args.program, args.database, args.year)
    problems, cells = [], 0
    if args.forecast:
        cells = check_forecasts(program, args.year, args.forecast, problems)
    for rows, columns, options, keeps in [] if args.forecast else REPORTS:
        axes = rows.split(",") if rows else []
        wanted = expected(sums, args.year, axes, columns, keeps)
        options = [option.format(year=args.year) for option in options]
        shown = program.rows("report", "-t", "4", "-s", "01", "-y", str(args.year), "--rows", rows, "--columns",
                             columns, *options)
        found = {tuple(row[FIELDS[axis]] for axis in axes): row for row in shown}
        if len(found) != len(shown) or wanted.keys() - found.keys():
            problems.append(f"{rows} by {columns}: rows that are missing or stand twice")
        for key, row in found.items():
            names = {name[:-len("IMP_BUDGET")] for name in row if name.endswith("IMP_BUDGET")}
            for column in names:
                check_cell(row, column, wanted[key][column], problems, f"{rows} {key} by {columns}")
            problems.extend(f"{rows} {key}: no column {c}" for c in wanted[key].keys() - names)
            cells += 4 * len(names)
    for problem in problems[:20]:
        print(problem, file=sys.stderr)
    what = "forecasts" if args.forecast else f"{len(REPORTS)} reports"
    print(f"{what}, {cells} cells: " + ("all equal" if not problems else f"{len(problems)} differences"))
    return 1 if problems or cells == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
