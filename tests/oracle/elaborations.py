"""What the elaborations must write, calculated from the raw tables."""

import collections
from fractions import Fraction

from expected import Budget
from rules import ACTUAL, BUDGET, DAY, add_months, month_end, months_between, parents_of, prefix_of, rounded

NEVER_BUDGETED = ("150", "151")


def first_of(*values):
    return next((v for v in values if v is not None), None)


def days_by_month(start, end):
    """{(year, month): days} of the days from start to end."""
    result = collections.Counter()
    while start <= end:
        last = min(month_end(start), end)
        result[start.year, start.month] += (last - start).days + 1
        start = last + DAY
    return result


def spread(amount, start, end):
    """{calendar month: share} by days; the month of the end takes the rest."""
    if end < start:
        return {end.month: amount}
    days = collections.Counter()
    for (_, month), count in days_by_month(start, end).items():
        days[month] += count
    shares = {month: rounded(Fraction(amount) * count / sum(days.values())) for month, count in days.items()}
    shares[end.month] += amount - sum(shares.values())
    return shares


class Movements:
    """Lines with their registrations; `by_account` finds those of an account."""

    def __init__(self, tables):
        registrations = {(r["CG41_DITTA_CG18"], r["CG41_NUMREG"]): r for r in tables["CG41_PRIMANOTA"]}
        self.lines = [{**l, **registrations[l["CG42_DITTA_CG18"], l["CG42_NUMREG_CG41"]]} for l in tables["CG42_MOVCONT"]]
        self.lines = [l for l in self.lines if l["CG41_DITTA_CG18"] == 1]


def interval(line):
    """What a line's dates are when it is selected by competence."""
    document = first_of(line["CG41_DATADOC"], line["CG41_DATAREG"])
    return first_of(line["CG42_DATAINICOMP"], document), first_of(line["CG42_DATAFINCOMP"], document)


class CardRun:
    """One run of the card elaboration: `first` to `last` by registration or by competence."""

    def __init__(self, tables, budget, **options):
        self.tables, self.budget = tables, budget
        self.by_competence = True
        self.kinds, self.cost, self.sites, self.cards_from, self.cards_to = (0, 1), (0, 1), None, "", "~"
        self.percentages = self.only_party = False
        self.kind_written, self.year = ACTUAL, budget.key[2:]
        self.first, self.last = budget.calendar.year_start, budget.calendar.end
        self.__dict__.update(options)
        self.movements = Movements(tables).lines

    def cards(self):
        budget = self.budget
        terms = {t["BU67_ID_BU65"]: t for t in self.tables["BU67_BDGCASHFLOW"]}
        for card in budget.cards:
            code = (card["BU65_SCHEDA_BU07"] or "").ljust(10)
            if (card["BU65_ID"] in terms and card["BU65_INDCOSRIC_BU07"] in self.cost
                    and self.cards_from.ljust(10) <= code <= self.cards_to.ljust(10)
                    and (not budget.per_site or self.sites is None or card["BU65_CODICE_CG31"] in self.sites)):
                yield card, terms[card["BU65_ID"]]

    def in_dates(self, line, first, last):
        if not self.by_competence:
            return first <= line["CG41_DATAREG"] <= last
        start, end = interval(line)
        return start <= first <= end or start <= last <= end or (first <= start <= last and first <= end <= last)

    def of_range(self, line, first, last):
        return ((line["CG41_ANNO_CG19"], line["CG41_PROGESER_CG19"]) == self.year and line["CG41_INDPROVREG"] == 0
                and self.in_dates(line, first, last))

    def takes(self, card, terms, line, first, last):
        account = card["BU65_CONTO_CG24"]
        if not account or not self.of_range(line, first, last) or line["CG41_INDTIPOMOV"] not in self.kinds:
            return False
        prefix = prefix_of(account, self.budget.structure)
        if prefix == "" or (line["CG42_CONTOPAR_CG24"] != account if prefix is None else not line["CG42_CONTOPAR_CG24"].startswith(prefix)):
            return False
        if self.only_party and terms["BU67_CLIFOR_CG44"] is not None:
            party = (1 - card["BU65_INDCOSRIC_BU07"], terms["BU67_CLIFOR_CG44"])
            if (line["CG41_TIPOCF_CG44"], line["CG41_CLIFOR_CG44"]) != party:
                return False
        return (line["CG42_CODICE_CG33"] not in NEVER_BUDGETED
                and (not self.budget.per_site or line["CG41_CODICE_CG31"] == card["BU65_CODICE_CG31"]))

    def shares(self, line):
        """{calendar month: amount} without a sign."""
        amount = line["CG42_IMPTOTALE"]
        if not self.by_competence:
            return {line["CG41_DATAREG"].month: amount}
        start, end = line["CG42_DATAINICOMP"], line["CG42_DATAFINCOMP"]
        if line["CG42_INDRATRIS"] == 4 or (start is None and end is None):
            return {first_of(line["CG41_DATADOC"], line["CG41_DATAREG"]).month: amount}
        return spread(amount, first_of(start, end), first_of(end, start))

    def part(self, line, cost, periods):
        """What of a line lies in these periods, with the sign of a card kind."""
        sign = -1 if line["CG42_INDDAAV"] == (2 if cost == 0 else 1) else 1
        period = self.budget.calendar.period
        return sign * sum((a for m, a in self.shares(line).items() if period(m) in periods), rounded(0))

    def legs(self):
        """The dates and the periods of each part of the run: a range that turns around the calendar is run in two."""
        calendar = self.budget.calendar
        first, last = calendar.period(self.first.month), calendar.period(self.last.month)
        if first == last and months_between(self.first, self.last) >= calendar.months_per_period:
            return [(self.first, self.last, calendar.existing)]
        if first <= last:
            return [(self.first, self.last, set(range(first, last + 1)))]
        turn = self.first.replace(month=12, day=31)
        return [(self.first, turn, set(range(first, calendar.count + 1))), (turn + DAY, self.last, set(range(1, last + 1)))]

    def written(self):
        """{(card, period): amount} of the periods written."""
        result = {}
        shares = {r["BU90_IDBUDGET"]: r for r in sorted(self.tables["BU90_TABPERCBUD"], key=lambda r: -r["BU90_PROGR"])}
        for first, last, periods in self.legs():
            for card, terms in self.cards():
                lines = [l for l in self.movements if self.takes(card, terms, l, first, last)]
                if not lines:
                    continue
                for period in periods & self.budget.calendar.existing:
                    amount = sum((self.part(l, card["BU65_INDCOSRIC_BU07"], {period}) for l in lines), rounded(0))
                    if self.percentages and card["BU65_ID"] in shares:
                        row = shares[card["BU65_ID"]]
                        if row["BU90_PERCRIP"] is not None:
                            amount = rounded(Fraction(amount) * Fraction(row["BU90_PERCRIP"]) / 100)
                        if row["BU90_PERCSCO"] is not None:
                            amount = rounded(Fraction(amount) + Fraction(amount) * Fraction(row["BU90_PERCSCO"]) / 100)
                    result[card["BU65_ID"], period] = amount
        return result


def apply(tables, budget, kind, written):
    """The details of the whole database as they must be then: {(card, kind, period): [(amount, qty1, qty2)]}."""
    result = details(tables)
    for card in {c for c, _ in written}:
        for period in range(1, budget.calendar.count + 1):
            result.setdefault((card, kind, period), [(None, None, None)])
    for (card, period), amount in written.items():
        result[card, kind, period] = [(amount, *old[1:]) for old in result[card, kind, period]]
    return result


def details(tables):
    result = {}
    for d in tables["BU66_DETBUDGET"]:
        result.setdefault((d["BU66_ID_BU65"], d["BU66_TIPO"], d["BU66_PERIODO"]), []).append((d["BU66_IMPORTO"], d["BU66_QTA1"], d["BU66_QTA2"]))
    return result
