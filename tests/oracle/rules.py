"""What every figure rests on: rounding, the calendar of a budget, the levels of an account, the raw tables.

Written from the rules the system documents, on exact fractions; nothing here asks the program.
"""

import datetime
import sqlite3
from decimal import Decimal
from fractions import Fraction

BUDGET, ACTUAL, ORDERS = 0, 1, 2
MEASURES = {"IMP": ("BU66_IMPORTO", 2), "QTA1": ("BU66_QTA1", 3), "QTA2": ("BU66_QTA2", 3)}
LEVELS = {2: (3, 5), 3: (2, 2, 4), 4: (1, 1, 2, 4), 5: (1, 1, 2, 2, 2)}
DAY = datetime.timedelta(days=1)


def rounded(value, digits=2):
    """Halves go away from zero."""
    scaled = Fraction(value) * 10**digits
    whole = int(abs(scaled) + Fraction(1, 2))
    return Decimal(-whole if scaled < 0 else whole).scaleb(-digits)


def total(values):
    """The sum of the values that are there, None when none is."""
    present = [v for v in values if v is not None]
    return sum(present, Decimal(0)) if present else None


def delta(value, base):
    return None if value is None or base is None else value - base


def delta_ratio(value, base):
    return None if value is None or not base else rounded(Fraction(value - base) / Fraction(base), 4)


def month_end(day):
    return (day.replace(day=1) + 32 * DAY).replace(day=1) - DAY


def months_between(first, last):
    return (last.year - first.year) * 12 + last.month - first.month


def add_months(day, months):
    """The first of the month that is so many months later."""
    index = day.year * 12 + day.month - 1 + months
    return datetime.date(index // 12, index % 12 + 1, 1)


def prefix_of(account, structure):
    """What accounts below this one begin with, '' for one of zeros alone; None when it stands for itself."""
    tail = {2: 5, 3: 4, 4: 4, 5: 2}[structure]
    if account[-tail:].strip("0"):
        return None
    lengths = list(LEVELS[structure])
    while lengths and not account[sum(lengths[:-1]):sum(lengths)].strip("0"):
        lengths.pop()
    return account[:sum(lengths)]


def parents_of(account, structure):
    """The account itself, then those above it, level by level."""
    yield account
    lengths = list(LEVELS[structure])
    while len(lengths) > 1:
        lengths.pop()
        above = account[:sum(lengths)].ljust(len(account), "0")
        if above != account:
            yield above
            account = above


class Calendar:
    """The periods of a budget in one accounting year."""

    def __init__(self, definition, year):
        self.months_per_period = (1, 2, 3, 4, 6, 12)[definition["BU01_INDPERIODO"]]
        self.count = 12 // self.months_per_period
        self.year_start, end = year["CG19_DATAINIZIO"], year["CG19_DATAFINE"]
        self.start, self.end = self.year_start, end
        if months_between(self.start, end) + 1 > 12:
            self.start = self.start.replace(day=1)
            self.end = add_months(self.start, 12) - DAY
        self.fiscal = definition["BU01_INDPERFISO"] != 1 and self.start.month != 1

    @property
    def comes_round(self):
        """Whether the year ends in the period that it began in: calendar quarters from June to May."""
        return months_between(self.start, self.end) >= self.months_per_period and self.period(self.start.month) == self.period(self.end.month)

    def period(self, month):
        position = (month - self.start.month) % 12 + 1 if self.fiscal else month
        return (position - 1) // self.months_per_period + 1

    def same_periods(self, other):
        """Whether each calendar month lies in the same period of both."""
        return self.count == other.count and all(self.period(m) == other.period(m) for m in range(1, 13))

    @property
    def months(self):
        """The first days of the months of the year, in the order of time."""
        return [add_months(self.start, i) for i in range(months_between(self.start, self.end) + 1)]

    @property
    def existing(self):
        """The periods that have a month in the year."""
        return {self.period(m.month) for m in self.months}

    def periods_to(self, last):
        """The periods of the months up to this one."""
        return {self.period(m.month) for m in self.months if m <= last}

    def whole_to(self, last):
        """Whether no period has months on both sides of the end of this month."""
        return not self.periods_to(last) & {self.period(m.month) for m in self.months if m > last}


def collate(left, right):
    """The order of texts, as far as these companies use it: blanks at the end do not count, signs before digits."""
    key = lambda text: [(c.isalnum(), c) for c in text.rstrip(" ").upper()]
    return (key(left) > key(right)) - (key(left) < key(right))


def connect(path):
    db = sqlite3.connect(path, isolation_level=None)
    db.create_collation("BK_ORDER", collate)
    return db


def columns(db, table):
    """Each column's name with its declared type."""
    result = {}
    for _, name, declared, *_ in db.execute(f'PRAGMA table_info("{table}")'):
        result[name] = "DECIMAL(10,0)" if declared == "INTEGER" else declared
    return result


def scale_of(declared):
    return int(declared.split(",")[1].rstrip(")")) if declared.startswith(("DECIMAL", "NUMERIC")) else None


def as_date(stored):
    return datetime.date(stored // 10**10, stored // 10**8 % 100, stored // 10**6 % 100)


def reader_of(declared):
    """Makes a column's value of a stored one that is not None; None where the two are the same."""
    if declared == "INTDATETIME":
        return as_date
    scale = scale_of(declared)
    if scale:
        return lambda stored: Decimal(stored).scaleb(-scale)
    return None


def to_stored(value, declared):
    if isinstance(value, datetime.date):
        return ((value.year * 100 + value.month) * 100 + value.day) * 10**6
    scale = scale_of(declared)
    if value is not None and scale is not None:
        return int(Decimal(value).scaleb(scale))
    if isinstance(value, str) and declared.startswith(("CHAR", "NCHAR")):
        return value.ljust(int(declared.split("(")[1].rstrip(")")))
    return value


TABLES = ("CG18_ANADITTE", "CG19_ANADITTAESER", "CG31_SEDI", "CG24_TABPDC", "CG20_COLLPDCRICL", "CG83_COLLRICL",
          "CG41_PRIMANOTA", "CG42_MOVCONT", "BU01_ANABUDGET", "BU65_TESBUDGET", "BU66_DETBUDGET", "BU67_BDGCASHFLOW",
          "BU14_SCADCFLOW", "BU90_TABPERCBUD")


def read_tables(path):
    """The raw tables, each a list of rows by column name, with decimals and calendar dates."""
    db = connect(path)
    result = {}
    for table in TABLES:
        types = columns(db, table)
        readers = [(n, reader_of(declared)) for n, declared in types.items() if reader_of(declared)]
        # Blanks behind a text do not count.
        texts = [n for n, declared in types.items() if "CHAR" in declared]
        names = ",".join(f"rtrim({n}, ' ')" if n in texts else n for n in types)
        rows = [dict(zip(types, row)) for row in db.execute(f"SELECT {names} FROM {table}")]
        for name, reader in readers:
            for row in rows:
                if row[name] is not None:
                    row[name] = reader(row[name])
        result[table] = rows
    db.close()
    return result
