#!/usr/bin/env python3
"""Compares proposed budget rows with the finance CSV files, by an independent calculation.

check_balances.py PROPOSED.csv FINANCE_DIR DEVIATIONS.csv [--year 2011]

PROPOSED.csv is what `bukorval elaborate-balances --format csv` printed for a quarterly budget of all sites. Every
account and quarter must carry the sum of its months' balances, each month raised by its account's percentage (the
nearest of the account and the levels above it, four and two digits) and rounded to cents; no row may be missing. Exit code 0 when all agree.
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


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("proposed", type=Path)
    parser.add_argument("finance", type=Path)
    parser.add_argument("deviations", type=Path)
    parser.add_argument("--year", type=int, default=2011)
    options = parser.parse_args()
    rows = lambda path: list(csv.DictReader(open(path, newline="", encoding="utf-8")))

    credit = {r["code"]: r["type"] in CREDIT_SIDE for r in rows(options.finance / "accounts.csv")}
    percent = {r["account"]: Decimal(r["percent"]) for r in rows(options.deviations)}
    months = collections.defaultdict(Decimal)
    for r in rows(options.finance / "amounts.csv"):
        year, month = month_of(r["date"])
        if r["scenario"] == "actual" and year == options.year:
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

    found = {(r["CONTO"], int(r["PERIODO"])): Decimal(r["IMPORTO"]) for r in rows(options.proposed)}
    wrong = [(k, found.get(k), expected.get(k)) for k in sorted(set(found) | set(expected)) if found.get(k) != expected.get(k)]
    for key, is_, should in wrong[:20]:
        print(f"{key[0]} quarter {key[1]}: {is_}, should be {should}")
    print(f"{len(expected)} rows of {len(expected) // 4} accounts, {len(wrong)} differ")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
