"""Percentages on a selection of cards, an amount spread over periods, values from a file: what these must leave."""

import collections
import math
from decimal import Decimal
from fractions import Fraction

from elaborations import details
from expected import Budget
from rules import ACTUAL, BUDGET, MEASURES, ORDERS, month_end, rounded

OPTION = {"IMP": "amount", "QTA1": "qty1", "QTA2": "qty2"}
COLUMNS = {"card": "BU65_SCHEDA_BU07", "card_kind": "BU65_INDCOSRIC_BU07", "account": "BU65_CONTO_CG24", "site": "BU65_CODICE_CG31"}
PLACE = {measure: place for place, measure in enumerate(MEASURES)}


def kind_name(kind):
    return {BUDGET: "budget", ACTUAL: "actual"}.get(kind) or f"forecast{kind - ORDERS}"


def replaced(values, place, value):
    return (*values[:place], value, *values[place + 1:])


def days_of_periods(calendar):
    """{period: its days in the accounting year}."""
    result = collections.Counter()
    for month in calendar.months:
        first, last = max(month, calendar.start), min(month_end(month), calendar.end)
        result[calendar.period(month.month)] += (last - first).days + 1
    return result


def shares(amount, weights, digits):
    """{period: share}: cut to the last digit, what is left goes to the largest fractions, of equal ones to the first period."""
    units = Fraction(abs(amount)) * 10**digits
    exact = {period: units * weight / sum(weights.values()) for period, weight in weights.items()}
    whole = {period: math.floor(value) for period, value in exact.items()}
    for period in sorted(exact, key=lambda p: (whole[p] - exact[p], p))[:int(units - sum(whole.values()))]:
        whole[period] += 1
    return {period: Decimal(int(math.copysign(1, amount)) * count).scaleb(-digits) for period, count in whole.items()}


def card_before(budget, card):
    """The same budget in the accounting year before, and its only card that is like this one; None without one."""
    years = sorted(budget.tables["CG19_ANADITTAESER"], key=lambda y: y["CG19_DATAINIZIO"])
    place = years.index(budget.year)
    if place == 0:
        return None
    before = Budget(budget.tables, *budget.key[:2], years[place - 1]["CG19_ANNO"], years[place - 1]["CG19_PROGESER"])
    # A budget by areas alone does not tell the parties of its cards apart.
    blind = ("BU65_CLIFOR_CG44", "BU65_TIPOCF_CG44") if budget.definition["BU01_STRUTTURA"] == "ARE" else ()
    own = lambda c: {k: v for k, v in c.items() if k not in ("BU65_ID", "BU65_ANNO", "BU65_PROGESER", "BU65_DATAULTAGG", *blind)}
    same = [c for c in before.cards if own(c) == own(card)]
    return (before, same[0]) if len(same) == 1 else None


def sums_by_period(budget, card, kind, column):
    result = collections.defaultdict(Fraction)
    for detail in budget.details[card["BU65_ID"], kind]:
        result[detail["BU66_PERIODO"]] += Fraction(detail[column] or 0)
    return result


class PlanningChecks:
    """To be mixed into a check of a company."""

    def kinds_of(self, budget):
        return [k for k in range(3 + budget.forecasts) if k != ORDERS]

    def check_raise(self, budget):
        r, words, chosen = self.more, [], budget.cards
        measure, kind = r.choice(list(MEASURES)), r.choice(self.kinds_of(budget))
        percent = Decimal(r.choice((r.randint(-10000, 20000), r.randint(-500, 500), 0))).scaleb(-2)
        if budget.type == 4 and r.random() < 0.5:
            cost = r.choice((0, 1))
            words += ["-k", str(cost)]
            chosen = [c for c in chosen if c["BU65_INDCOSRIC_BU07"] == cost]
        if budget.per_site and r.random() < 0.5:
            site = r.choice(budget.sites)
            words += ["-b", str(site)]
            chosen = [c for c in chosen if c["BU65_CODICE_CG31"] == site]
        if budget.type == 4 and r.random() < 0.5:
            first, last = r.choice((("S1", "S3"), ("A", "Z9"), ("S2", "Z")))
            words += ["--DaScheda", first, "--AScheda", last]
            chosen = [c for c in chosen if first.ljust(10) <= c["BU65_SCHEDA_BU07"].ljust(10) <= last.ljust(10)]
        expected, ids, place = details(budget.tables), {c["BU65_ID"] for c in chosen}, PLACE[measure]
        for key, rows in expected.items():
            if key[0] in ids and key[1] == kind:
                expected[key] = [replaced(row, place, row[place] if row[place] is None else
                                          rounded(Fraction(row[place]) * (100 + Fraction(percent)) / 100, MEASURES[measure][1])) for row in rows]
        self.run("raise", str(percent).replace(".", ","), *budget.options, *words, "--kind", kind_name(kind), "--measure", OPTION[measure],
                 refused=not chosen)
        self.compare_details(expected)

    def weights_of(self, budget, card, kind, column):
        """What `--like` is given, and {period: weight}."""
        r, calendar, before = self.more, budget.calendar, card_before(budget, card)
        like = r.choice(("even", "days", "actual", "card", "file", *["last-year"] * (before is not None)))
        if like == "even":
            return like, {p: Fraction(1) for p in range(1, calendar.count + 1)}
        if like == "days":
            return like, days_of_periods(calendar)
        if like == "actual":
            return like, sums_by_period(budget, card, ACTUAL, column)
        if like == "card":
            other = r.choice(budget.cards)
            return f"card:{other['BU65_ID']}", sums_by_period(budget, other, kind, column)
        if like == "last-year":
            # Periods of other months are no weights.
            return like, sums_by_period(*before, ACTUAL, column) if before[0].calendar.same_periods(budget.calendar) else {}
        weights = {p: Decimal(r.randint(0, 9999)).scaleb(-r.randint(0, 2)) for p in r.sample(range(1, calendar.count + 1), r.randint(1, calendar.count))}
        return self.file("period,weight", weights.items()), {p: Fraction(w) for p, w in weights.items()}

    def check_spread(self, budget):
        r, card, words = self.more, self.more.choice(budget.cards), []
        measure, kind = r.choice(list(MEASURES)), r.choice(self.kinds_of(budget))
        column, digits = MEASURES[measure]
        like, weights = self.weights_of(budget, card, kind, column)
        first, last = 1, budget.calendar.count
        if r.random() < 0.3:
            first, last = sorted(r.choices(range(1, last + 1), k=2))
            words += ["--from", str(first), "--to", str(last)]
        weights = {p: Fraction(weights.get(p, 0)) for p in range(first, last + 1)}
        amount = Decimal(r.choice((r.randint(-10**6, 10**7), r.randint(-20, 20), 0))).scaleb(-digits)
        refused = min(weights.values()) < 0 or not sum(weights.values())
        expected = details(budget.tables)
        for period, share in () if refused else shares(amount, weights, digits).items():
            key = (card["BU65_ID"], kind, period)
            expected[key] = [replaced(row, PLACE[measure], share) for row in expected.get(key, [(None, None, None)])]
        self.run("spread", str(card["BU65_ID"]), str(amount).replace(".", ","), *words, "--like", like, "--kind", kind_name(kind),
                 "--measure", OPTION[measure], refused=refused)
        self.compare_details(expected)

    def check_values(self, budget):
        """A file of values for cards that there are, told apart by all their columns."""
        r, columns = self.more, {name: column for name, column in COLUMNS.items() if name != "site" or budget.per_site}
        key = lambda card: tuple(card[c] for c in columns.values())
        counts = collections.Counter(key(c) for c in budget.cards)
        cards = [c for c in budget.cards if counts[key(c)] == 1 and c["BU65_CONTO_CG24"] is not None]
        if not cards:
            return
        given = r.sample(list(MEASURES), r.randint(1, 3))
        cells = {(r.choice(cards)["BU65_ID"], r.choice(self.kinds_of(budget)), r.randint(1, budget.calendar.count)): None for _ in range(12)}
        expected, by_id = details(budget.tables), {c["BU65_ID"]: c for c in cards}
        header = ",".join(["period", "kind", *({"IMP": "amount", "QTA1": "quantity1", "QTA2": "quantity2"}[m] for m in given), *columns])
        lines = []
        for card, kind, period in cells:
            values = {m: Decimal(r.randint(-10**6, 10**7)).scaleb(-MEASURES[m][1]) for m in given}
            rows = expected.get((card, kind, period), [(None, None, None)])
            for measure, value in values.items():
                rows = [replaced(row, PLACE[measure], value) for row in rows]
            expected[card, kind, period] = rows
            lines.append((period, kind, *values.values(), *key(by_id[card])))
        self.run("import", "--values", self.file(header, lines), *budget.options)
        self.compare_details(expected)
