"""Elaborates the demo company's cards and compares every cell three ways: what the elaboration wrote, what the program
says stands behind it, and what this script sums up from the tables: cells.py DATABASE DATE_KIND [OPTION...]"""
import collections
import datetime
import decimal
import json
import sqlite3
import subprocess
import sys

DATABASE, BY_COMPETENCE, OPTIONS = sys.argv[1], sys.argv[2] == "1", sys.argv[2:]
RUN = ["-d", DATABASE, "--TipoDataMovimenti", sys.argv[2], *sys.argv[3:]]


def bukorval(*arguments):
    done = subprocess.run(["bukorval", *arguments, "--format", "json"], capture_output=True, text=True)
    if done.returncode:
        sys.exit(done.stderr)
    return json.loads(done.stdout)


def cents(amount):
    return None if amount is None else int(decimal.Decimal(str(amount)) * 100)


def day(number):
    return datetime.date(number // 10**10, number // 10**8 % 100, number // 10**6 % 100)


def half_up(numerator, denominator):
    """Cents, halves away from zero."""
    sign = -1 if numerator < 0 else 1
    return sign * ((2 * abs(numerator) + denominator) // (2 * denominator))


def shares(amount, registered, documented, begin, end, deferral):
    """Cents by calendar month."""
    if not BY_COMPETENCE:
        return {day(registered).month: amount}
    if deferral == 4 or (begin or end) is None:
        return {day(documented or registered).month: amount}
    begin, end = day(begin or end), day(end or begin)
    days = collections.Counter((begin + datetime.timedelta(n)).month for n in range((end - begin).days + 1))
    spread = {month: half_up(amount * count, sum(days.values())) for month, count in days.items()}
    spread[end.month] = spread.get(end.month, 0) + amount - sum(spread.values())
    return spread


def expected(database, account, site, kind, last):
    """Cents by period, that is by calendar month; nothing without movements."""
    cells = None
    for row in database.execute(
            "SELECT CG42_IMPTOTALE, CG41_DATAREG, CG41_DATADOC, CG42_DATAINICOMP, CG42_DATAFINCOMP, CG42_INDRATRIS, "
            "CG42_INDDAAV, CG42_CODICE_CG33 FROM CG42_MOVCONT JOIN CG41_PRIMANOTA ON CG41_NUMREG = CG42_NUMREG_CG41 "
            "WHERE CG41_ANNO_CG19 = 2025 AND CG41_INDPROVREG = 0 AND CG41_INDTIPOMOV IN (0, 1) "
            "AND CG42_CONTOPAR_CG24 LIKE ? AND CG41_CODICE_CG31 = ?", (account.rstrip("0") + "%", site)):
        *line, side, code = row
        begin, end = (line[3] or line[2] or line[1], line[4] or line[2] or line[1]) if BY_COMPETENCE else (line[1],) * 2
        if code.strip() in ("150", "151") or day(end).year < 2025 or begin // 10**6 > last:
            continue
        cells = cells or collections.Counter()
        for month, amount in shares(*line).items():
            cells[month] += -amount if side == (2 if kind == 0 else 1) else amount
    return cells


def with_percentages(amount, percentages):
    """The card's share, then its deviation, in hundredths of a per cent."""
    share, deviation = percentages
    if share is not None:
        amount = half_up(amount * share, 10000)
    return amount if deviation is None else half_up(amount * (10000 + deviation), 10000)


bukorval("elaborate-cards", "-t", "4", "-s", "01", "-y", "2025", *RUN)
database = sqlite3.connect(DATABASE)
database.create_collation("BK_ORDER", lambda a, b: (a > b) - (a < b))
last = database.execute("SELECT MAX(CG41_DATAREG) FROM CG41_PRIMANOTA WHERE CG41_ANNO_CG19 = 2025 "
                        "AND CG41_INDPROVREG = 0 AND CG41_INDTIPOMOV IN (0, 1)").fetchone()[0] // 10**6 // 100 * 100 + 31
percentages = {} if "--IsApplicaPercentuali" not in OPTIONS else {
    card: rest for card, *rest in database.execute("SELECT BU90_IDBUDGET, BU90_PERCRIP, BU90_PERCSCO FROM BU90_TABPERCBUD")}
cells = differences = 0
for card, account, site, kind in database.execute(
        "SELECT BU65_ID, BU65_CONTO_CG24, BU65_CODICE_CG31, BU65_INDCOSRIC_BU07 FROM BU65_TESBUDGET "
        "WHERE BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = 2025").fetchall():
    sums = expected(database, account, site, kind, last)
    behind = bukorval("movements", "--card", str(card), *RUN)
    told = {cell["PERIODO"]: cents(cell["TOTALE"]) for cell in behind["Cells"]}
    written = {row["PERIODO"]: cents(row["IMP_CONSUNTIVO"]) for row in bukorval("periods", str(card), "-d", DATABASE)}
    for period in range(1, 13):
        if sums is None or period > last // 100 % 100:
            wanted = None
        else:
            wanted = with_percentages(sums[period], percentages.get(card, (None, None)))
        cells += 1
        if not (told.get(period) == wanted and (wanted is None or written[period] == wanted)):
            differences += 1
            print(card, period, "sums", wanted, "told", told.get(period), "written", written[period])
    if sum(cents(line["QUOTA"]) for line in behind["Movements"]) != sum(cents(cell["MOVIMENTI"]) for cell in behind["Cells"]):
        print(card, "the shares do not add up")
print(cells, "cells,", differences, "differences")
