"""What the elaborations must write, calculated from the raw tables."""

import collections
import itertools
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


def accrued(amount, start, end, until):
    """{(year, month): share}: the months' shares, between the years of a longer interval by the days passed; to `until`."""
    shares, days, result = spread(amount, start, end), days_by_month(start, end), {}
    reached = days_by_month(start, min(end, until))
    for month, share in shares.items():
        every, passed = sum(n for (_, m), n in days.items() if m == month), 0
        for year, _ in sorted(k for k in days if k[1] == month):
            before = rounded(Fraction(share) * passed / every)
            result[year, month] = rounded(Fraction(share) * (passed + reached[year, month]) / every) - before
            passed += days[year, month]
    return result


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
        self.in_two = True
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
        if not self.below(card, line["CG42_CONTOPAR_CG24"]) or not self.of_range(line, first, last) or line["CG41_INDTIPOMOV"] not in self.kinds:
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
        """The dates and the periods of each part of the run.

        A range that turns around the calendar is run in two by the program; the object takes the periods between its ends.
        """
        calendar = self.budget.calendar
        first, last = calendar.period(self.first.month), calendar.period(self.last.month)
        if first <= last:
            return [(self.first, self.last, set(range(first, last + 1)))]
        if not self.in_two:
            return [(self.first, self.last, set(range(last, first + 1)))]
        turn = self.first.replace(month=12, day=31)
        return [(self.first, turn, set(range(first, calendar.count + 1))), (turn + DAY, self.last, set(range(1, last + 1)))]

    def below(self, card, account):
        """Whether movements of an account are the card's."""
        own = card["BU65_CONTO_CG24"]
        prefix = own and prefix_of(own, self.budget.structure)
        return self.takes_any(card) and (account == own if prefix is None else account.startswith(prefix))

    def takes_any(self, card):
        """Whether a card has an account that movements could be on."""
        own = card["BU65_CONTO_CG24"]
        return bool(own) and prefix_of(own, self.budget.structure) != ""

    def reconciliation(self):
        """{card kind: totals}, and None for balance sheet accounts beside them; nothing where an account has cards of both kinds."""
        result, found = collections.defaultdict(lambda: collections.defaultdict(lambda: rounded(0))), self.written()
        kinds = {c["BU65_ID"]: c["BU65_INDCOSRIC_BU07"] for c in self.budget.cards}
        for (card, _), amount in found.items():
            result[kinds[card]]["landed on cards"] += amount
        for (card, period), amount in self.written(False).items():
            result[kinds[card]]["correction: percentages of the cards"] += amount - found[card, period]
        natures = {a["CG24_CONTO"]: a["CG24_INDCONTORICAV"] for a in self.tables["CG24_TABPDC"]}
        cards = list(self.cards())
        sheet = any(natures.get(c["BU65_CONTO_CG24"], 2) == 0 for c, _ in cards)
        for first, last, periods in self.legs():
            for line in self.movements:
                if not self.of_range(line, first, last):
                    continue
                account = line["CG42_CONTOPAR_CG24"]
                own = {c["BU65_INDCOSRIC_BU07"] for c, _ in cards if self.below(c, account)}
                nature = natures.get(account, 2)
                if len(own) > 1:
                    return None
                kind = own.pop() if own else None if nature == 0 and not sheet else int(nature == 1)
                part, takers = self.part(line, kind or 0, periods), sum(self.takes(c, t, line, first, last) for c, t in cards)
                if kind is None:
                    result[kind]["balance sheet, beside these"] += part
                    continue
                result[kind]["movements of the range"] += part
                result[kind]["landed nowhere"] += 0 if takers else part
                result[kind]["correction: landed on several cards"] += part * (1 - takers) if takers > 1 else 0
        return result

    def written(self, percentages=None):
        """{(card, period): amount} of the periods written."""
        result, percentages = {}, self.percentages if percentages is None else percentages
        shares = {r["BU90_IDBUDGET"]: r for r in sorted(self.tables["BU90_TABPERCBUD"], key=lambda r: -r["BU90_PROGR"])}
        for first, last, periods in self.legs():
            for card, terms in self.cards():
                lines = [l for l in self.movements if self.takes(card, terms, l, first, last)]
                if not lines:
                    continue
                for period in periods & self.budget.calendar.existing:
                    amount = sum((self.part(l, card["BU65_INDCOSRIC_BU07"], {period}) for l in lines), rounded(0))
                    if percentages and card["BU65_ID"] in shares:
                        row = shares[card["BU65_ID"]]
                        if row["BU90_PERCRIP"] is not None:
                            amount = rounded(Fraction(amount) * Fraction(row["BU90_PERCRIP"]) / 100)
                        if row["BU90_PERCSCO"] is not None:
                            amount = rounded(Fraction(amount) + Fraction(amount) * Fraction(row["BU90_PERCSCO"]) / 100)
                    result[card["BU65_ID"], period] = amount
        return result


def apply(tables, budget, kind, written, every_period=True):
    """The details of the whole database as they must be then: {(card, kind, period): [(amount, qty1, qty2)]}.

    The card elaboration makes the missing ones of `every_period`, the writing of balances those that it writes.
    """
    result = details(tables)
    for card in {c for c, _ in written}:
        for period in range(1, budget.calendar.count + 1):
            if every_period or (card, period) in written:
                result.setdefault((card, kind, period), [(None, None, None)])
    for (card, period), amount in written.items():
        result[card, kind, period] = [(amount, *old[1:]) for old in result[card, kind, period]]
    return result


def details(tables):
    result = {}
    for d in tables["BU66_DETBUDGET"]:
        result.setdefault((d["BU66_ID_BU65"], d["BU66_TIPO"], d["BU66_PERIODO"]), []).append((d["BU66_IMPORTO"], d["BU66_QTA1"], d["BU66_QTA2"]))
    return result


class BalanceRun:
    """One proposal of a budget from balances: months `first` to `last` of the movements' year."""

    def __init__(self, tables, budget, movement_year, **options):
        self.tables, self.budget, self.movement_year = tables, budget, movement_year
        self.kind_written, self.by_registration, self.kinds, self.site = BUDGET, True, (0, 1), None
        self.accruals = self.depreciation = self.adjustments = False
        self.account_from, self.account_to, self.overwrite, self.only_budgeted = None, None, False, False
        self.percent, self.percents, self.inherited = None, {}, True
        self.first, self.last = movement_year["CG19_DATAINIZIO"], movement_year["CG19_DATAFINE"]
        self.__dict__.update(options)

    def lines(self):
        year = (self.movement_year["CG19_ANNO"], self.movement_year["CG19_PROGESER"])
        for line in Movements(self.tables).lines:
            site = first_of(line["CG42_CODICE_CG31"], line["CG41_CODICE_CG31"])
            if ((line["CG41_ANNO_CG19"], line["CG41_PROGESER_CG19"]) == year and line["CG41_INDTIPOMOV"] in self.kinds
                    and line["CG41_INDPROVREG"] in ((0, 3) if self.depreciation else (0,)) and (self.site is None or site == self.site)):
                yield line

    def spreads(self, line):
        start, end = line["CG42_DATAINICOMP"], line["CG42_DATAFINCOMP"]
        return self.accruals and line["CG42_INDRATRIS"] != 4 and start is not None and end is not None and start <= end

    def dated(self, line, until):
        """[(day or month, amount)] of a line: by its days in each month, to `until`, where accruals count."""
        amount = line["CG42_IMPTOTALE"] * (1 if line["CG42_INDDAAV"] == 1 else -1)
        start, end = line["CG42_DATAINICOMP"], line["CG42_DATAFINCOMP"]
        if self.spreads(line):
            return [(start.replace(year=y, month=m, day=1), a) for (y, m), a in accrued(amount, start, end, until).items()]
        if self.by_registration:
            return [(line["CG41_DATAREG"], amount)]
        return [(first_of(start, line["CG41_DATADOC"], line["CG41_DATAREG"]), amount)]

    def raised(self, account, month, amount):
        percent = self.percent or 0
        if self.percents:
            for above in parents_of(account, self.budget.structure) if self.inherited else [account]:
                percent = self.percents.get((above, month.month), 0) or self.percents.get((above, None), 0)
                if percent:
                    break
        return rounded(Fraction(amount) * (1 + Fraction(percent) / 100))

    def monthly(self):
        """{(account, month): balance} of the general ledger, deviations applied."""
        sums = collections.defaultdict(lambda: rounded(0))
        year_end, first, last, reach = self.movement_year["CG19_DATAFINE"], self.first.replace(day=1), self.last, None
        if self.adjustments and year_end == month_end(year_end) and first <= year_end and last >= year_end.replace(day=1):
            # The last month is read whole, with the adjusting entries of the month after it: those count nowhere else.
            last, reach = max(last, year_end), month_end(year_end + DAY)
        for line in self.lines():
            adjusts = reach and line["CG41_FLGRETTIF"] == 1 and not self.spreads(line)
            for day, amount in self.dated(line, last):
                counted = year_end if adjusts and year_end < day <= reach else day
                if first <= counted <= last:
                    sums[line["CG42_CONTOPAR_CG24"], counted.replace(day=1)] += amount
        return {(a, m): self.raised(a, m, s) for (a, m), s in sums.items() if self.budget.account != "BU65_CONTO_CG24" or self.in_range(a)}

    def in_range(self, account):
        return (self.account_from is None or account >= self.account_from) and (self.account_to is None or account <= self.account_to)

    def links(self):
        """{(general-ledger account, sign): account of the budget's chart}."""
        if self.budget.account == "BU65_CODICE_CG23":
            return {(r["CG20_CONTO_CG24"], r["CG20_INDSEGNO"]): r["CG20_CODICE_CG23"] for r in self.tables["CG20_COLLPDCRICL"]}
        return {(r["CG83_CONTO_CG24"], r["CG83_INDSEGNO"]): r["CG83_CONTORICL_PC03"] for r in self.tables["CG83_COLLRICL"]}

    def by_target(self, monthly):
        """(account, month, account of the budget's chart or None, balance) of each balance."""
        ledger, links = {r["CG24_CONTO"] for r in self.tables["CG24_TABPDC"] if r["CG24_INDTIPOCONTO"] == 2}, self.links()
        for (account, month), balance in monthly.items():
            yield account, month, account in ledger and links.get((account, 1 if balance >= 0 else 2)) or None, balance

    def unlinked(self):
        """{(general-ledger account, sign): months and amount} of the balances that go nowhere."""
        result = {}
        for account, _, target, balance in self.by_target(self.monthly()):
            if balance and not target:
                row = result.setdefault((account, 1 if balance > 0 else 2), {"MESI": 0, "IMPORTO": rounded(0)})
                row.update(MESI=row["MESI"] + 1, IMPORTO=row["IMPORTO"] + balance)
        return result

    def proposed(self):
        """{(account, period): amount}, a row for every period of an account."""
        monthly, calendar = self.monthly(), self.budget.calendar
        if self.budget.account != "BU65_CONTO_CG24":
            linked = collections.defaultdict(lambda: rounded(0))
            for _, month, target, balance in self.by_target(monthly):
                if target and self.in_range(target):
                    linked[target, month] += balance
            monthly = linked
        result = {(account, period): rounded(0) for account, _ in monthly for period in range(1, calendar.count + 1)}
        for (account, month), balance in monthly.items():
            result[account, self.period(month.month)] += balance
        return result

    def period(self, month):
        """Months are counted from the first of the budget's year, by months as the budget counts them."""
        calendar = self.budget.calendar
        if calendar.months_per_period == 1:
            return calendar.period(month)
        return (month - calendar.start.month) % 12 // calendar.months_per_period + 1

    def cards(self):
        """{account: its cards, the oldest first}."""
        result = collections.defaultdict(list)
        for card in sorted(self.budget.cards, key=lambda c: c["BU65_ID"]):
            if self.site is None or card["BU65_CODICE_CG31"] == self.site:
                result[card[self.budget.account]].append(card["BU65_ID"])
        return result

    def rows(self):
        """The proposal: {(account, period): columns}."""
        cards, result = self.cards(), {}
        held = {(d["BU66_ID_BU65"], d["BU66_PERIODO"]): d["BU66_IMPORTO"] for (_, kind), rows in self.budget.details.items()
                for d in rows if kind == self.kind_written}
        for (account, period), amount in self.proposed().items():
            present = any(held.get((card, period)) is not None for card in cards[account])
            result[account, period] = {"IMPORTO": amount, "BUDGETPRESENTE": int(present), "SOVRASCRIVI": int(not present or self.overwrite)}
        return result

    def written(self):
        """What --write changes: {(card, period): amount} of cards there are, {account: {period: amount}} of new ones."""
        old, new, cards = {}, collections.defaultdict(dict), self.cards()
        for (account, period), row in self.rows().items():
            if row["SOVRASCRIVI"] and cards[account]:
                old[cards[account][0], period] = row["IMPORTO"]
            elif row["SOVRASCRIVI"] and not self.only_budgeted:
                new[account][period] = row["IMPORTO"]
        return old, new


class CopyRun:
    """A duplication of the cards of `source` into the budget `target`, which may be the same one."""

    def __init__(self, tables, source, target, **options):
        self.tables, self.source, self.target = tables, source, target
        self.cost, self.site, self.target_site = 0, None, None
        self.cards_from, self.cards_to, self.percent = "", "~", None
        self.kind_read = self.kind_written = BUDGET
        self.overwrite = self.due_dates = self.manual_too = False
        self.__dict__.update(options)

    def fits(self):
        """Whether both have the same periods, counted from the same month."""
        first = lambda calendar: calendar.start.month if calendar.fiscal else 1
        a, b = self.source.calendar, self.target.calendar
        return a.count == b.count and first(a) == first(b)

    def cards(self):
        for card in self.source.cards:
            if (card["BU65_INDCOSRIC_BU07"] == self.cost and (not self.source.per_site or card["BU65_CODICE_CG31"] == self.site)
                    and self.cards_from.ljust(10) <= card["BU65_SCHEDA_BU07"].ljust(10) <= self.cards_to.ljust(10)):
                yield card

    def target_of(self, card, cards):
        same = [c for c in cards if c["BU65_INDCOSRIC_BU07"] == self.cost and c["BU65_SCHEDA_BU07"] == card["BU65_SCHEDA_BU07"]
                and (not self.target.per_site or c["BU65_CODICE_CG31"] == self.target_site)]
        return same[0]["BU65_ID"] if same else None

    def raised(self, amount):
        return amount if amount is None or not self.percent else rounded(Fraction(amount) * (1 + Fraction(self.percent) / 100))

    def moved(self, day):
        """A date in the target's year: the same months from its start, the end of a month stays one."""
        if day is None:
            return None
        month = add_months(self.target.calendar.start, months_between(self.source.calendar.start, day))
        return month_end(month) if day == month_end(day) else month + DAY * (day.day - 1)

    def details(self, made):
        """The details of the database as they must be then; `made` tells the target of each source card now."""
        result = details(self.tables)
        before = {c["BU65_ID"] for c in self.tables["BU65_TESBUDGET"]}
        for card in self.cards():
            old, new = card["BU65_ID"], made.get(card["BU65_ID"])
            if new is None or (old == new and self.kind_read == self.kind_written):
                continue
            if new not in before:
                for kind in (0, 1, *range(3, 3 + self.target.forecasts)):
                    for period in range(1, self.target.calendar.count + 1):
                        result.setdefault((new, kind, period), [(None, None, None)])
            for detail in self.source.details[old, self.kind_read]:
                values = (self.raised(detail["BU66_IMPORTO"]), detail["BU66_QTA1"], detail["BU66_QTA2"])
                key = (new, self.kind_written, detail["BU66_PERIODO"])
                there = result.get(key, [(None, None, None)])[0]
                result[key] = [values if self.overwrite else tuple(v if t is None else t for v, t in zip(values, there))]
        return result

    def terms(self, made):
        """{card: first day of its terms} of the cards that were made."""
        before = {c["BU65_ID"] for c in self.tables["BU65_TESBUDGET"]}
        terms = {t["BU67_ID_BU65"]: t for t in self.tables["BU67_BDGCASHFLOW"]}
        return {made[c["BU65_ID"]]: {**{k: terms[c["BU65_ID"]][k] for k in TERMS}, "BU67_DATAINIVAL": self.moved(terms[c["BU65_ID"]]["BU67_DATAINIVAL"])}
                for c in self.cards() if made[c["BU65_ID"]] not in before and c["BU65_ID"] in terms}

    def dues(self, made):
        """{card: its due dates} of the cards that were made: the source's, else those of its terms."""
        before, result = {c["BU65_ID"] for c in self.tables["BU65_TESBUDGET"]}, {}
        if not self.due_dates or self.kind_read or self.kind_written:
            return result
        terms = {t["BU67_ID_BU65"]: t for t in self.tables["BU67_BDGCASHFLOW"]}
        for card in self.cards():
            if made[card["BU65_ID"]] in before:
                continue
            rows = [d for d in self.tables["BU14_SCADCFLOW"] if d["BU14_IDBUDGET"] == card["BU65_ID"]]
            rows = ([{**d, "BU14_DATASCAD": self.moved(d["BU14_DATASCAD"])} for d in rows if self.manual_too or not d["BU14_FLGMANUAL"]]
                    if rows else list(self.instalments(card["BU65_ID"], terms.get(card["BU65_ID"]))))
            result[made[card["BU65_ID"]]] = sorted((d["BU14_PERIODO"], d["BU14_DATASCAD"], amount, d["BU14_FLGMANUAL"])
                                                   for d, amount in self.raised_together(rows))
        return result

    def instalments(self, card, terms):
        """Due dates from a card's terms: so many instalments of each amount, counted from the end of its period."""
        if not terms or terms["BU67_FLGSCADMAN"] or all(terms[k] is None for k in ("BU67_NUMRATE", "BU67_MESIRATA", "BU67_GIORNISCAD")):
            return
        calendar, begin = self.target.calendar, self.moved(terms["BU67_DATAINIVAL"])
        months = [add_months(calendar.start, i) for i in range(12)]
        ends = {calendar.period(m.month): month_end(m) for m in months}
        count, step = terms["BU67_NUMRATE"] or 1, 1 if terms["BU67_MESIRATA"] is None else terms["BU67_MESIRATA"]
        for detail in sorted(self.source.details[card, BUDGET], key=lambda d: d["BU66_PERIODO"]):
            period, rest = detail["BU66_PERIODO"], detail["BU66_IMPORTO"]
            if not rest or (begin and ends[period] < begin):
                continue
            each, first = rounded(Fraction(rest) / count), ends[period] + DAY * (terms["BU67_GIORNISCAD"] or 0)
            for i in range(count):
                month, amount = add_months(first, i * step), rest if i == count - 1 else each
                rest -= amount
                day = month_end(month) if first == month_end(first) else min(month + DAY * (first.day - 1), month_end(month))
                yield dict(BU14_ID=i, BU14_PERIODO=period, BU14_DATASCAD=day, BU14_IMPORTO=amount, BU14_FLGMANUAL=0)

    def raised_together(self, rows):
        """Due dates with their amounts: those of a period add up, the manual ones among them, and the last takes the rest."""
        rows = sorted(rows, key=lambda d: (d["BU14_PERIODO"], d["BU14_FLGMANUAL"] != 0, d["BU14_ID"]))
        for _, group in itertools.groupby(rows, lambda d: d["BU14_PERIODO"]):
            group = list(group)
            counted = [d for d in group if d["BU14_IMPORTO"] is not None]
            rest = self.raised(sum((d["BU14_IMPORTO"] for d in counted), rounded(0)))
            for due in group:
                amount = rest if counted and due is counted[-1] else self.raised(due["BU14_IMPORTO"])
                rest -= amount or 0
                yield due, amount


TERMS = ("BU67_FLGSCADMAN", "BU67_TIPOCF_CG44", "BU67_CLIFOR_CG44", "BU67_NUMRATE", "BU67_MESIRATA", "BU67_GIORNISCAD")
