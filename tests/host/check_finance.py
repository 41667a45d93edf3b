#!/usr/bin/env python3
"""Compares the program with the finance CSV files, by an independent calculation.

check_finance.py PROGRAM DATABASE FINANCE_DIR [--year 2011] [--actuals]

For every site and card kind the grid's amounts must equal the sums of amounts.csv, card by card and in total; every
card of the CSV must be there, and no other. With --actuals the elaborated actuals are compared as well, for a few
cards of each site also period by period. Exit code 0 when everything agrees.
"""

import argparse
import collections
import csv
import datetime
import io
import subprocess
import sys
from decimal import Decimal
from pathlib import Path

REVENUE_SIDE = {"Liabilities", "Revenue"}


def month_of(text):
    """A day near a month end stands for its month: the first days belong to the month before."""
    day = datetime.date.fromisoformat(text)
    if day.day <= 15:
        day = day.replace(day=1) - datetime.timedelta(days=1)
    return day.year, day.month


def read_amounts(folder):
    """{(scenario, site, kind): {card: {(year, month): amount}}}"""
    with open(folder / "accounts.csv", newline="", encoding="utf-8") as f:
        kinds = {r["code"]: int(r["type"] in REVENUE_SIDE) for r in csv.DictReader(f)}
    sums = collections.defaultdict(lambda: collections.defaultdict(lambda: collections.defaultdict(Decimal)))
    with open(folder / "amounts.csv", newline="", encoding="utf-8") as f:
        for r in csv.DictReader(f):
            card = f"{r['account']}{int(r['department']):02d}"
            sums[r["scenario"], int(r["site"]), kinds[r["account"]]][card][month_of(r["date"])] += Decimal(r["amount"])
    return sums


class Program:
    def __init__(self, program, database, year):
        self.program, self.database, self.year = program, database, year

    def rows(self, *command):
        result = subprocess.run([self.program, *command, "-d", self.database, "--format", "csv", "--all"],
                                check=True, capture_output=True, text=True)
        return list(csv.DictReader(io.StringIO(result.stdout)))

    def grid(self, site, kind):
        return self.rows("grid", "-t", "4", "-s", "01", "-y", str(self.year),
                         "--CodiceSede", str(site), "--BdgTipoScheda", str(kind))


def amount(text):
    return Decimal(text) if text else None


def year_totals(cards, year):
    totals = {card: sum(v for (y, _), v in months.items() if y == year) for card, months in cards.items()
              if any(y == year for y, _ in months)}
    return totals


def compare(what, expected, actual, problems):
    for card in sorted(expected.keys() | actual.keys()):
        if expected.get(card) != actual.get(card):
            problems.append(f"{what} card {card}: CSV {expected.get(card)}, program {actual.get(card)}")


def check_periods(program, site, kind, rows, months, problems):
    """Every card's twelve actuals against the CSV's monthly sums."""
    for row in rows:
        card = row["BU65_SCHEDA_BU07"]
        periods = program.rows("periods", row["BU65_ID"])
        actual = {int(p["PERIODO"]): amount(p["IMP_CONSUNTIVO"]) or 0 for p in periods}
        expected = {m: months.get(card, {}).get((program.year, m), 0) for m in range(1, 13)}
        compare(f"site {site} kind {kind} {card} period", expected, actual, problems)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("database")
    parser.add_argument("folder", type=Path)
    parser.add_argument("--year", type=int, default=2011)
    parser.add_argument("--actuals", action="store_true")
    args = parser.parse_args()

    sums = read_amounts(args.folder)
    program = Program(args.program, args.database, args.year)
    problems, cards, grids, total = [], 0, 0, Decimal(0)
    sites = sorted({site for _, site, _ in sums})
    for site in sites:
        for kind in (0, 1):
            rows = program.grid(site, kind)
            budget = year_totals(sums["budget", site, kind], args.year)
            actuals = year_totals(sums["actual", site, kind], args.year)
            forecasts = year_totals(sums["forecast", site, kind], args.year)
            wanted = budget.keys() | actuals.keys() | forecasts.keys()
            grid = {r["BU65_SCHEDA_BU07"]: amount(r["IMP_BUDGET"]) for r in rows}
            compare(f"site {site} kind {kind} budget", {c: budget.get(c) for c in wanted}, grid, problems)
            if len(rows) != len(grid) or grid.keys() != wanted:
                problems.append(f"site {site} kind {kind}: {len(rows)} cards, CSV has {len(wanted)}")
            if sum(v for v in grid.values() if v is not None) != sum(budget.values()):
                problems.append(f"site {site} kind {kind}: the totals differ")
            if args.actuals:
                compare(f"site {site} kind {kind} actuals", {c: actuals.get(c) for c in grid},
                        {r["BU65_SCHEDA_BU07"]: amount(r["IMP_CONSUNTIVO"]) for r in rows}, problems)
                check_periods(program, site, kind, rows, sums["actual", site, kind], problems)
            cards, grids, total = cards + len(rows), grids + 1, total + sum(budget.values())
    for problem in problems[:50]:
        print(problem, file=sys.stderr)
    print(f"{len(sites)} sites, {grids} grids, {cards} cards, budget {total}: " +
          ("all equal" if not problems else f"{len(problems)} differences"))
    return 1 if problems or cards == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
