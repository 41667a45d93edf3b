"""Two plans side by side."""

import collections
from decimal import Decimal

from planning import kind_name
from rules import ACTUAL, BUDGET, ORDERS, delta_ratio, total


def side(budget, kind):
    """How a side is named on the command line."""
    type_, subtype, year, progressive = budget.key
    return f"{type_}/{subtype}@{year}/{progressive}:{kind_name(kind)}"


def columns_of(budget):
    """What tells the cards of a budget of type 4 or 5 apart."""
    own = ["BU65_INDCOSRIC_BU07", "BU65_SCHEDA_BU07"] if budget.type == 4 else []
    return {budget.account, *own, *["BU65_CODICE_CG31"] * budget.per_site}


def values(budget, kind, columns, by_month):
    """{(columns, period): amount} of a side; without periods the period is None."""
    name, result = {BUDGET: "BUDGET", ACTUAL: "CONSUNTIVO"}.get(kind) or f"FORECAST{kind - ORDERS}", collections.defaultdict(list)
    for card in budget.cards:
        for period in range(1, budget.calendar.count + 1) if by_month else (None,):
            key = (*(card[c] for c in columns), period)
            result[key].append(budget.sums(card, "BU66_IMPORTO", period and {period})[name])
    return {key: total(amounts) for key, amounts in result.items()}


class ComparisonChecks:
    """To be mixed into a check of a company."""

    def check_comparison(self, left):
        r, others = self.more, [b for b in self.budgets() if b.type in (4, 5)]
        right = r.choice([b for b in others if columns_of(b) & columns_of(left) - {"BU65_CODICE_CG31"}])
        kinds = [r.choice(self.kinds_of(b)) for b in (left, right)]
        by_month, only_changed = r.random() < 0.5, r.random() < 0.3
        refused = by_month and not left.calendar.same_periods(right.calendar)
        columns = sorted(columns_of(left) & columns_of(right))
        both = [values(b, k, columns, by_month) for b, k in zip((left, right), kinds)]
        expected, of_cards = {}, [{key[:-1] for key in found} for found in both]
        for key in {*both[0], *both[1]}:
            one, other = (found.get(key) for found in both)
            base, value = one or Decimal(0), other or Decimal(0)
            # A period without a value on either side has no line; what is blank counts 0.
            same = base == value and all(key[:-1] in cards for cards in of_cards)
            if not (only_changed and same) and not (by_month and one is None and other is None):
                expected[key] = {"SINISTRA": one, "DESTRA": other, "DELTA": value - base, "DELTAPERC": delta_ratio(value, base)}
        rows = self.run("compare", side(left, kinds[0]), side(right, kinds[1]), *["--by", "month"] * by_month, *["--only-changed"] * only_changed,
                        refused=refused)
        if rows is not None:
            self.compare({(*(row.get(c) for c in columns), row.get("PERIODO")): row for row in rows}, expected, [*columns, "period"])
