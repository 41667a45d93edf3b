#!/usr/bin/env python3
"""Compares proposed budget rows with the finance CSV files, by an independent calculation.

check_balances.py PROPOSED.csv FINANCE_DIR DEVIATIONS.csv [--year 2011] [--site 3] [--grid GRID.csv]

PROPOSED.csv is what `bukorval elaborate-balances --format csv` printed for a quarterly budget. Every account and
quarter must carry the sum of its months' balances, each month raised by its account's percentage (the nearest of the
account and the levels above it, four and two digits) and rounded to cents; no row may be missing. GRID.csv is the
budget's grid after the rows were written: one card an account, holding the sum of its quarters. Exit code 0 when all
agree.
"""

import argparse
import collections
import csv
import datetime
import sys
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

CREDIT_SIDE = {"Liabilities", "Revenue"}


def month_of(text):
    day = datetime.date.fromisoformat(text)
    if day.day <= 15:
        day = day.replace(day=1) - datetime.timedelta(days=1)
    return day.year, day.month


def differences(what, found, expected):
    wrong = [(k, found.get(k), expected.get(k)) for k in sorted(set(found) | set(expected)) if found.get(k) != expected.get(k)]
    for key, is_, should in wrong[:20]:
        print(f"{key}: {is_}, should be {should}")
    print(f"{len(expected)} {what}, {len(wrong)} differ")
    return len(wrong)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("proposed", type=Path)
    parser.add_argument("finance", type=Path)
    parser.add_argument("deviations", type=Path)
    parser.add_argument("--year", type=int, default=2011)
    parser.add_argument("--site")
    parser.add_argument("--column", default="IMPORTO", help="PRESENTE for what the cards hold")
    parser.add_argument("--grid", type=Path)
    options = parser.parse_args()
    rows = lambda path: list(csv.DictReader(open(path, newline="", encoding="utf-8")))

    credit = {r["code"]: r["type"] in CREDIT_SIDE for r in rows(options.finance / "accounts.csv")}
    percent = {r["account"]: Decimal(r["percent"]) for r in rows(options.deviations)}
    months = collections.defaultdict(Decimal)
    for r in rows(options.finance / "amounts.csv"):
        year, month = month_of(r["date"])
        if r["scenario"] == "actual" and year == options.year and options.site in (None, r["site"]):
            account = f"{r['account']}{int(r['department']):04d}"
            months[account, month] += -Decimal(r["amount"]) if credit[r["account"]] else Decimal(r["amount"])

    expected = collections.defaultdict(Decimal)
    for account in {a for a, _ in months}:
        for quarter in range(1, 5):
            expected[account, quarter] = Decimal(0)
    for (account, month), balance in months.items():
        p = percent.get(account) or percent.get(account[:4] + "0000") or percent.get(account[:2] + "000000") or Decimal(0)
        value = (balance * (1 + p / 100)).quantize(Decimal("0.01"), ROUND_HALF_UP)
        expected[account, (month + 2) // 3] += value

    found = {(r["CONTO"], int(r["PERIODO"])): Decimal(r[options.column]) for r in rows(options.proposed)}
    wrong = differences("proposed rows", found, expected)
    if options.grid:
        cards = collections.defaultdict(Decimal)
        for (account, _), amount in expected.items():
            cards[account] += amount
        grid = {r["BU65_CONTO_CG24"]: Decimal(r["IMP_BUDGET"]) for r in rows(options.grid)}
        wrong += differences("cards of the grid", grid, cards)
    return 1 if wrong or not expected else 0


if __name__ == "__main__":
    sys.exit(main())
