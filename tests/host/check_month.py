#!/usr/bin/env python3
"""Closes one month of a budget with forecasts, and compares it with the finance CSV files.

check_month.py PROGRAM DATABASE FINANCE_DIR [--year 2011]

The budget 4/02 must be there with cards, budget amounts and the same amounts as forecast 1. After the elaboration of
the first month that has actuals every forecast is as it was, actuals stand in that month alone, and what landed on cards is the CSV's sum of
the month, card kind by card kind, with nothing left over. Exit code 0 when everything agrees.
"""

import argparse
import calendar
import json
import sqlite3
import subprocess
import sys
from decimal import Decimal
from pathlib import Path

from check_finance import read_amounts

FORECAST, ACTUAL = 3, 1


def values(database, kind):
    with sqlite3.connect(database) as db:
        db.create_collation("BK_ORDER", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
        return db.execute("""SELECT BU65_ID, BU65_INDCOSRIC_BU07, BU66_PERIODO, BU66_IMPORTO
                             FROM BU66_DETBUDGET JOIN BU65_TESBUDGET ON BU65_ID = BU66_ID_BU65
                             WHERE BU65_SOTTOTIPO_BU01 = '02' AND BU66_TIPO = ? ORDER BY 1, 3""", (kind,)).fetchall()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("database")
    parser.add_argument("folder", type=Path)
    parser.add_argument("--year", type=int, default=2011)
    args = parser.parse_args()

    sums = read_amounts(args.folder)
    first = min(m for (scenario, _, _), cards in sums.items() if scenario == "actual"
                for months in cards.values() for y, m in months if y == args.year)
    forecasts = values(args.database, FORECAST)
    month = f"{args.year}-{first:02d}"
    run = subprocess.run([args.program, "elaborate-cards", "-d", args.database, "-t", "4", "-s", "02", "-y",
                          str(args.year), "--DaData", f"#{month}-01#", "--AData", f"#{month}-{calendar.monthrange(args.year, first)[1]}#", "--strict",
                          "--format", "json"], check=True, capture_output=True, text=True)
    totals = {(r["SCHEDE"], r["VOCE"]): Decimal(str(r["IMPORTO"]))
              for r in json.loads(run.stdout, parse_float=Decimal)["Reconciliation"]}

    problems, landed = [], Decimal(0)
    if not forecasts or values(args.database, FORECAST) != forecasts:
        problems.append("the forecasts have changed, or there are none")
    actuals = values(args.database, ACTUAL)
    for kind, name in enumerate(("cost", "revenue")):
        wanted = sum((cards[c].get((args.year, first), 0) for (scenario, _, k), cards in sums.items()
                      if scenario == "actual" and k == kind for c in cards), Decimal(0))
        written = Decimal(sum(a or 0 for _, k, period, a in actuals if k == kind and period == first)) / 100
        for what, found in (("cards", written), ("movements of the range", totals[name, "movements of the range"]),
                            ("landed on cards", totals[name, "landed on cards"])):
            if found != wanted:
                problems.append(f"{name}: {what} {found}, CSV {wanted}")
        if totals[name, "landed nowhere"]:
            problems.append(f"{name}: {totals[name, 'landed nowhere']} landed nowhere")
        landed += wanted
    if any(a for _, _, period, a in actuals if period != first):
        problems.append("there are actuals in other months")
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"Month {month}: {landed} landed, {len(forecasts)} forecasts untouched" if not problems
          else f"{len(problems)} differences")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
