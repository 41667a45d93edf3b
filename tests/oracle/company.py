"""Makes a random but plausible company from a seed, in a database that `bukorval create` made.

    company.py PROGRAM SEED DATABASE
"""

import datetime
import random
import subprocess
import sys
from decimal import Decimal

from rules import DAY, LEVELS, add_months, columns, connect, month_end, to_stored

YEAR_STYLES = ("calendar", "calendar", "july", "any month", "short", "long", "split", "within")


def accounting_years(r):
    """Rows of (year, progressive, first day, last day), one after the other, around a leap year."""
    style, date = r.choice(YEAR_STYLES), datetime.date
    if style == "short":
        return [(2023, 1, date(2023, r.randint(5, 9), 1), date(2023, 12, 31)),
                (2024, 1, date(2024, 1, 1), date(2024, 12, 31)), (2025, 1, date(2025, 1, 1), date(2025, 12, 31))]
    if style == "long":
        return [(2023, 1, date(2023, r.randint(5, 9), 1), date(2024, 12, 31)), (2025, 1, date(2025, 1, 1), date(2025, 12, 31))]
    if style == "split":
        return [(2023, 1, date(2023, 1, 1), date(2023, 6, 30)), (2023, 2, date(2023, 7, 1), date(2023, 12, 31)),
                (2024, 1, date(2024, 1, 1), date(2024, 12, 31))]
    first = {"calendar": 1, "july": 7}.get(style) or r.randint(2, 12)
    day = r.randint(2, 27) if style == "within" else 1
    starts = [date(year, first, day) for year in (2023, 2024, 2025, 2026)]
    return [(a.year, 1, a, b - DAY) for a, b in zip(starts, starts[1:])]


class Company:
    """Rows by table; `budgets` are (type, subtype), `years` as above."""

    def __init__(self, seed):
        self.r = random.Random(seed)
        self.rows = {}
        self.structure = self.r.choice(list(LEVELS))
        self.years = accounting_years(self.r)
        self.sites = sorted(self.r.sample(range(1, 15), self.r.randint(2, 3)))
        self.make_frame()
        self.make_charts()
        self.make_budgets()
        self.make_movements()

    def add(self, table, **row):
        self.rows.setdefault(table, []).append(row)
        return row

    def maybe(self, chance, value):
        return value if self.r.random() < chance else None

    def money(self):
        r = self.r
        return r.choice((Decimal(r.randint(-500000, 2000000)), Decimal(r.randint(-999, 999)), Decimal(r.randint(1, 90000) * 100),
                         Decimal(r.randint(10**8, 10**11)), Decimal(0))).scaleb(-2)

    def quantity(self):
        return Decimal(self.r.choice((0, self.r.randint(-5000, 900000), self.r.randint(1, 99)))).scaleb(-3)

    def day(self, first, last):
        """Borders of months as often as any day."""
        r = self.r
        day = first + DAY * r.randint(0, (last - first).days)
        return r.choice((day, day.replace(day=1), month_end(day)))

    def make_frame(self):
        for year, progressive, first, last in self.years:
            self.add("CG19_ANADITTAESER", CG19_DITTA_CG18=1, CG19_ANNO=year, CG19_PROGESER=progressive, CG19_DATAINIZIO=first,
                     CG19_DATAFINE=last)
        for site in self.sites:
            self.add("CG31_SEDI", CG31_DITTA_CG18=1, CG31_CODICE=site, CG31_DESCR=f"Sede {site}")
        self.parties = [101, 102, 103]
        for kind in (0, 1):
            for party in self.parties:
                self.add("CG44_CLIFOR", CG44_DITTA_CG18=1, CG44_TIPOCF=kind, CG44_CLIFOR=party, CG44_RAGSOC=f"Parte {party}")

    def make_charts(self):
        """Totals and accounts of each nature, and where balances go in two other charts."""
        r, lengths = self.r, LEVELS[self.structure]
        self.accounts, self.totals = {}, {}
        for nature, digit, groups in ((0, "1", 1), (2, "6", 2), (1, "7", 1)):
            for group in range(groups):
                stem = ""
                for level, length in enumerate(lengths[:-1]):
                    code = digit if level == 0 else str(r.choice((0, group + 1, group + 1)))
                    if level == 0 and length > 1:
                        code = digit + str(group + r.randint(1, 2) * 2).rjust(length - 1, "0")
                    elif level > 0:
                        code = code.rjust(length, "0")
                    stem += code
                    self.totals[stem.ljust(8, "0")] = nature
                stem = stem if stem[1:].strip("0") or group == 0 else stem[:-1] + str(group)
                for leaf in r.sample(range(1, 10**lengths[-1]), r.randint(2, 4)):
                    self.accounts[stem + str(leaf).rjust(lengths[-1], "0")] = nature
        for kind, codes in ((1, self.totals), (2, self.accounts)):
            for account in sorted(set(codes) - (set(self.accounts) if kind == 1 else set())):
                self.add("CG24_TABPDC", CG24_GRUPPO_CG10=1, CG24_CONTO=account, CG24_DESCR=f"Conto {account}",
                         CG24_INDTIPOCONTO=kind, CG24_INDCONTORICAV=codes[account])
        self.add("CG21_SCHEMIRICL", CG21_CODICE=7)
        self.add("PC01_PIANIANALITICI", PC01_CODICE=9)
        self.other = {2: ["A1", "A2", "B1", "B2"], 3: ["100", "200", "210"]}
        for code in self.other[2]:
            self.add("CG23_RICLBILCEE", CG23_CODICE_CG21=7, CG23_CODICE=code, CG23_DESCR=f"Voce {code}")
        for code in self.other[3]:
            self.add("PC03_ANAGPDC", PC03_CODICE_PC01=9, PC03_CONTO=code, PC03_DESCR=f"Voce {code}", PC03_INDSEGNO=r.choice((1, 2)))
        for account in sorted(self.accounts):
            for sign in (1, 2):
                if r.random() < 0.8:
                    self.add("CG20_COLLPDCRICL", CG20_GRUPPO_CG10=1, CG20_CONTO_CG24=account, CG20_CODICE_CG21=7, CG20_INDSEGNO=sign,
                             CG20_CODICE_CG23=self.maybe(0.9, r.choice(self.other[2])))
                if r.random() < 0.8:
                    self.add("CG83_COLLRICL", CG83_CODICE_CG10=1, CG83_CONTO_CG24=account, CG83_CODICERICL_PC01=9, CG83_INDSEGNO=sign,
                             CG83_CONTORICL_PC03=self.maybe(0.9, r.choice(self.other[3])))

    def define(self, kind, subtype, structure, **more):
        r = self.r
        row = dict(BU01_INDTIPO=kind, BU01_SOTTOTIPO=subtype, BU01_DESCR=f"Budget {kind}/{subtype}", BU01_STRUTTURA=structure,
                   BU01_FLGSEDI=r.choice((0, 1)), BU01_FLGMASTRO=0, BU01_FLGGESQTA=r.choice((0, 1)), BU01_FLGGESQTA2=r.choice((0, 1)),
                   BU01_INDPERIODO=r.choice((0, 0, 0, 1, 2, 3, 4, 5)), BU01_INDPERFISO=r.choice((0, 1)),
                   BU01_NUMFORECAST=r.choice((None, 0, 1, 2, 3)), BU01_INDMULTIATTIVITA=0, BU01_INDTIPOPDC=1)
        return self.add("BU01_ANABUDGET", **{**row, **more})

    def make_budgets(self):
        r = self.r
        self.card_id = 0
        expenses = self.define(4, "01", "CON")
        same = {c: expenses[c] for c in ("BU01_INDPERIODO", "BU01_INDPERFISO") if r.random() < 0.95}
        self.define(4, "02", "CON", **same)
        chart = r.choice((1, 2, 3))
        self.define(5, "01", None, BU01_INDTIPOPDC=chart, BU01_CODICE_CG21=7, BU01_CODICE_PC01=9)
        self.define(r.choice((0, 1, 3, 6, 7, 8, 9)), "01", r.choice(("ARE", "ARECLF")), BU01_FLGSEDI=0)
        for code in ("NOR", "SUD", "EST"):
            self.add("MG08_AREE", MG08_CODICE=code, MG08_DESCR=f"Area {code}")
        for definition in self.rows["BU01_ANABUDGET"]:
            chosen = self.years if r.random() < 0.5 else [r.choice(self.years)]
            for year in chosen if (definition["BU01_INDTIPO"], definition["BU01_SOTTOTIPO"]) != (4, "02") else chosen[:1]:
                for site in self.sites if definition["BU01_FLGSEDI"] else [None]:
                    self.make_cards(definition, year, site)

    def make_cards(self, definition, year, site):
        r, kind = self.r, definition["BU01_INDTIPO"]
        seen = set()
        for number in range(r.randint(2, 6)):
            columns_, cost = dict(BU65_CODICE_CG31=site), None
            if kind == 4:
                account = r.choice(sorted(self.accounts)) if r.random() < 0.7 else r.choice(sorted(self.totals))
                cost = r.choice((0, 1)) if r.random() < 0.1 else int(account[0] == "7")
                columns_.update(BU65_INDCOSRIC_BU07=cost, BU65_GRUPPO_CG10=1, BU65_CONTO_CG24=self.maybe(0.95, account),
                                BU65_SCHEDA_BU07=r.choice(("S", "S", "S", "A", "Z")) + str(number))
                self.rows.setdefault("BU07_SCHEDECOSGEN", [])
                code = dict(BU07_DITTA_CG18=1, BU07_INDCOSRIC=cost, BU07_SCHEDA=columns_["BU65_SCHEDA_BU07"])
                if code not in self.rows["BU07_SCHEDECOSGEN"]:
                    self.add("BU07_SCHEDECOSGEN", **code)
            elif kind == 5:
                chart = definition["BU01_INDTIPOPDC"]
                columns_.update({1: lambda: dict(BU65_GRUPPO_CG10=1, BU65_CONTO_CG24=r.choice(sorted(self.accounts))),
                                 2: lambda: dict(BU65_CODICE_CG21=7, BU65_CODICE_CG23=r.choice(self.other[2])),
                                 3: lambda: dict(BU65_CODICE_PC01=9, BU65_CONTO_PC03=r.choice(self.other[3]))}[chart]())
            else:
                columns_.update(BU65_AREA_MG08=r.choice(("NOR", "SUD", "EST")), BU65_CLIFOR_CG44=self.maybe(0.8, r.choice(self.parties)),
                                BU65_TIPOCF_CG44={0: 0, 1: 1, 7: 1}.get(kind))
            if str(columns_) in seen and r.random() < 0.9:
                continue
            seen.add(str(columns_))
            self.card_id += 1
            self.add("BU65_TESBUDGET", BU65_ID=self.card_id, BU65_DITTA_CG18=1, BU65_INDTIPO_BU01=kind,
                     BU65_SOTTOTIPO_BU01=definition["BU01_SOTTOTIPO"], BU65_ANNO=year[0], BU65_PROGESER=year[1],
                     BU65_FLGBUDGET=int(kind == 4), BU65_FLGCFLOW=0, **columns_)
            self.make_details(definition, self.card_id)
            if kind == 4:
                self.make_terms(definition, year, cost)

    def make_details(self, definition, card):
        r = self.r
        forecasts = 1 if definition["BU01_NUMFORECAST"] is None else definition["BU01_NUMFORECAST"]
        periods = (12, 6, 4, 3, 2, 1)[definition["BU01_INDPERIODO"]]
        for kind in range(3 + forecasts):
            orders = kind == 2
            if orders and r.random() < 0.6 or r.random() < 0.05:
                continue
            closed = r.randint(0, periods) if kind == 1 else periods
            for period in range(1, periods + 1):
                for _ in range(r.choice((0, 1, 1, 2)) if orders else int(r.random() < 0.92)):
                    filled = period <= closed and r.random() < 0.9
                    self.add("BU66_DETBUDGET", BU66_ID_BU65=card, BU66_TIPO=kind, BU66_PERIODO=period,
                             BU66_IMPORTO=self.money() if filled else None,
                             BU66_QTA1=self.quantity() if filled and r.random() < 0.5 else None,
                             BU66_QTA2=self.quantity() if r.random() < 0.1 else None)

    def make_terms(self, definition, year, cost):
        r, card = self.r, self.card_id
        if r.random() < 0.93:
            self.add("BU67_BDGCASHFLOW", BU67_ID_BU65=card, BU67_FLGSCADMAN=int(r.random() < 0.1), BU67_TIPOCF_CG44=1 - cost,
                     BU67_CLIFOR_CG44=self.maybe(0.5, r.choice(self.parties)), BU67_DATAINIVAL=self.maybe(0.5, self.day(*year[2:])),
                     BU67_NUMRATE=self.maybe(0.8, r.randint(1, 4)), BU67_MESIRATA=self.maybe(0.7, r.randint(1, 3)),
                     BU67_GIORNISCAD=self.maybe(0.8, r.choice((0, 30, 45, 60))))
        for progressive in range(1, 1 + r.choice((0, 0, 1, 1, 2))):
            self.add("BU90_TABPERCBUD", BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01=definition["BU01_SOTTOTIPO"],
                     BU90_IDBUDGET=card, BU90_PROGR=progressive, BU90_PERCRIP=self.maybe(0.7, Decimal(r.randint(0, 12000)).scaleb(-2)),
                     BU90_PERCSCO=self.maybe(0.7, Decimal(r.randint(-3000, 3000)).scaleb(-2)))
        if r.random() < 0.4:
            for period in range(1, r.randint(2, 5)):
                self.add("BU14_SCADCFLOW", BU14_IDBUDGET=card, BU14_PERIODO=period, BU14_DATASCAD=self.day(*year[2:]),
                         BU14_IMPORTO=self.money(), BU14_FLGMANUAL=int(r.random() < 0.3))

    def make_movements(self):
        r, number = self.r, 0
        for year in self.years:
            first, last = year[2:]
            for _ in range(r.randint(15, 60)):
                number += 1
                day = self.day(first, last) if r.random() < 0.93 else self.day(add_months(first, -3), add_months(last, 4) - DAY)
                party = r.random() < 0.5
                self.add("CG41_PRIMANOTA", CG41_DITTA_CG18=1, CG41_NUMREG=number, CG41_DATAREG=day, CG41_ANNO_CG19=year[0],
                         CG41_PROGESER_CG19=year[1], CG41_INDPROVREG=r.choice((0,) * 12 + (1, 3)),
                         CG41_CODICE_CG31=self.maybe(0.9, r.choice(self.sites)), CG41_INDTIPOMOV=r.choice((0, 0, 0, 1, 2)),
                         CG41_DATADOC=self.maybe(0.6, day - DAY * r.randint(0, 40)), CG41_DITTACF_CG18=1 if party else None,
                         CG41_TIPOCF_CG44=r.choice((0, 1)) if party else None,
                         CG41_CLIFOR_CG44=r.choice(self.parties) if party else None, CG41_FLGRETTIF=int(r.random() < 0.15))
                for line in range(1, r.randint(2, 4)):
                    self.make_line(number, line, day)

    def make_line(self, number, line, day):
        r = self.r
        start = self.day(day - DAY * 200, day + DAY * 60)
        end = self.day(start, start + DAY * r.choice((0, 20, 45, 100, 366, 800)))
        account = r.choice(sorted(self.accounts) + (["19990001"] if r.random() < 0.1 else []))
        if r.random() < 0.05:
            account = r.choice(sorted(self.totals))
        shape = r.random()
        self.add("CG42_MOVCONT", CG42_DITTA_CG18=1, CG42_NUMREG_CG41=number, CG42_NUMRIGACONT=line, CG42_GRUPPO_CG10=1,
                 CG42_CONTOPAR_CG24=account, CG42_INDDAAV=r.choice((1, 2)), CG42_IMPTOTALE=self.money(),
                 CG42_INDRATRIS=r.choice((None, None, 1, 4)), CG42_CODICE_CG31=self.maybe(0.15, r.choice(self.sites)),
                 CG42_DATAINICOMP=start if shape < 0.5 or shape > 0.95 else None, CG42_DATAFINCOMP=end if shape < 0.45 or shape > 0.96 else None,
                 CG42_CODICE_CG33=r.choice(("",) * 14 + ("150", "151", "152")))

    def write(self, path):
        """Into a database that holds the tables and a company."""
        db = connect(path)
        db.execute("PRAGMA synchronous=OFF")
        db.execute("BEGIN")
        db.execute("DELETE FROM CG19_ANADITTAESER")
        db.execute("UPDATE CG18_ANADITTE SET CG18_STRUTTCONTI = ?", (self.structure,))
        for table, rows in self.rows.items():
            types = columns(db, table)
            for row in rows:
                db.execute(f'INSERT INTO {table} ({",".join(row)}) VALUES ({",".join("?" * len(row))})',
                           [to_stored(value, types[name]) for name, value in row.items()])
        db.execute("COMMIT")
        db.close()


if __name__ == "__main__":
    subprocess.run([sys.argv[1], "create", sys.argv[3], "--name", f"Oracle {sys.argv[2]}", "-y", "2024"], check=True)
    Company(int(sys.argv[2])).write(sys.argv[3])
