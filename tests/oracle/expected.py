"""What grids, periods and reports must show, calculated from the raw tables."""

import collections

from rules import ACTUAL, BUDGET, MEASURES, ORDERS, Calendar, LEVELS, delta, delta_ratio, months_between, rounded, total

ACCOUNT_COLUMN = {1: "BU65_CONTO_CG24", 2: "BU65_CODICE_CG23", 3: "BU65_CONTO_PC03"}


class Budget:
    """The cards of one budget in one accounting year, with their details."""

    def __init__(self, tables, kind, subtype, year, progressive):
        one = lambda table, **wanted: next(r for r in tables[table] if all(r[k] == v for k, v in wanted.items()))
        self.key = (kind, subtype, year, progressive)
        self.tables, self.type = tables, kind
        self.structure = tables["CG18_ANADITTE"][0]["CG18_STRUTTCONTI"]
        self.definition = one("BU01_ANABUDGET", BU01_INDTIPO=kind, BU01_SOTTOTIPO=subtype)
        self.year = one("CG19_ANADITTAESER", CG19_ANNO=year, CG19_PROGESER=progressive)
        self.calendar = Calendar(self.definition, self.year)
        self.per_site = bool(self.definition["BU01_FLGSEDI"])
        forecasts = self.definition["BU01_NUMFORECAST"]
        self.forecasts = 1 if forecasts is None else forecasts
        self.account = ACCOUNT_COLUMN[self.definition["BU01_INDTIPOPDC"] if kind == 5 else 1]
        self.cards = [c for c in tables["BU65_TESBUDGET"] if (c["BU65_INDTIPO_BU01"], c["BU65_SOTTOTIPO_BU01"], c["BU65_ANNO"],
                                                              c["BU65_PROGESER"]) == self.key and c["BU65_DITTA_CG18"] == 1]
        ids = {c["BU65_ID"] for c in self.cards}
        self.details = collections.defaultdict(list)
        for detail in tables["BU66_DETBUDGET"]:
            if detail["BU66_ID_BU65"] in ids:
                self.details[detail["BU66_ID_BU65"], detail["BU66_TIPO"]].append(detail)

    @property
    def options(self):
        kind, subtype, year, progressive = self.key
        return ["-t", str(kind), "-s", subtype, "-y", str(year), "-p", str(progressive)]

    @property
    def sites(self):
        return sorted({c["BU65_CODICE_CG31"] for c in self.cards})

    def sums(self, card, column, periods=None, counted=None):
        """The budget, actuals, orders and the parts of each forecast of a card, in the periods given.

        The latest order is looked for in the periods `counted`: it counts where it stands.
        """
        inside = lambda d: periods is None or d["BU66_PERIODO"] in periods
        values = lambda kind: [d for d in self.details[card["BU65_ID"], kind] if inside(d)]
        orders = [d for d in self.details[card["BU65_ID"], ORDERS] if d[column] is not None and (counted is None or d["BU66_PERIODO"] in counted)]
        latest = max(orders, key=lambda d: d["BU66_ID"], default=None)
        result = {"BUDGET": total(d[column] for d in values(BUDGET)), "CONSUNTIVO": total(d[column] for d in values(ACTUAL)),
                  "ORDINI": latest[column] if latest and inside(latest) else None}
        actuals = {d["BU66_PERIODO"]: d[column] for d in self.details[card["BU65_ID"], ACTUAL]}
        for n in range(1, self.forecasts + 1):
            rows = values(ORDERS + n)
            taken = [actuals.get(d["BU66_PERIODO"]) for d in rows]
            result[f"CONS_FORE{n}"] = total(taken)
            result[f"PREV_FORE{n}"] = total(d[column] for d, a in zip(rows, taken) if a is None)
            result[f"FORECAST{n}"] = total((result[f"CONS_FORE{n}"], result[f"PREV_FORE{n}"]))
        return result


def with_deltas(measure, sums, forecasts):
    """A grid's columns of one measure: values, differences from the budget, and these as parts of it."""
    budget = sums["BUDGET"]
    row = {f"{measure}_{name}": value for name, value in sums.items()}
    for name, suffix in [("CONSUNTIVO", "CONS")] + [(f"FORECAST{n}", f"FORE{n}") for n in range(1, forecasts + 1)]:
        row[f"DELTA{measure}_{suffix}"] = delta(sums[name], budget)
        row[f"DELTAPERC{measure}_{suffix}"] = delta_ratio(sums[name], budget)
    return row


def grid(budget, site=None, cost=None):
    """{card: columns} of the cards of a site (of a budget by site) and a card kind (of type 4)."""
    result = {}
    for card in budget.cards:
        if (budget.per_site and card["BU65_CODICE_CG31"] != site) or (budget.type == 4 and card["BU65_INDCOSRIC_BU07"] != cost):
            continue
        row = result[card["BU65_ID"]] = {}
        for measure, (column, _) in MEASURES.items():
            row.update(with_deltas(measure, budget.sums(card, column), budget.forecasts))
    return result


def periods(budget, card, repeated=False):
    """{(period, how many before it): columns}: a line for each period, and one for each further order.

    That has the order alone, or, `repeated`, the other values once more.
    """
    result = {}
    for period in range(1, budget.calendar.count + 1):
        rows = {kind: [d for d in budget.details[card["BU65_ID"], kind] if d["BU66_PERIODO"] == period]
                for kind in range(ORDERS + budget.forecasts + 1)}
        for place, order in enumerate(sorted(rows[ORDERS], key=lambda d: d["BU66_ID"]) or [None]):
            row = {}
            names = {BUDGET: "BUDGET", ACTUAL: "CONSUNTIVO", ORDERS: "ORDINI"}
            names.update({ORDERS + n: f"FORECAST{n}" for n in range(1, budget.forecasts + 1)})
            chosen = {kind: order if kind == ORDERS else (rows[kind] or [None])[0] if place == 0 or repeated else None for kind in names}
            for kind, name in names.items():
                row[f"ID_{name}"] = chosen[kind] and chosen[kind]["BU66_ID"]
            for measure, (column, _) in MEASURES.items():
                values = {name: chosen[kind] and chosen[kind][column] for kind, name in names.items()}
                if values["ORDINI"] is not None:
                    values["ORDINI"] = rounded(values["ORDINI"], 2)
                row.update(with_deltas(measure, values, budget.forecasts))
            result[period, place] = row
    return result


REPORT_COLUMNS = {"year": (12, ""), "half": (6, "H{}_"), "quarter": (3, "Q{}_"), "month": (1, "M{:02}_"), "period": (0, "P{:02}_")}


class Report:
    """One report: axes of the rows, what the columns are, which measure, up to which period."""

    AXES = {"site": "BU65_CODICE_CG31", "kind": "BU65_INDCOSRIC_BU07", "card": "BU65_SCHEDA_BU07", "id": "BU65_ID",
            "area": "BU65_AREA_MG08", "clifor": "BU65_CLIFOR_CG44"}

    def __init__(self, budget, rows, columns, measure, to=None, where=()):
        self.budget, self.rows, self.columns, self.measure, self.to, self.where = budget, rows, columns, measure, to, where

    def names(self):
        """The columns that tell rows apart."""
        return [f"LIVELLO{a[6:]}" if a.startswith("level:") else self.budget.account if a == "account" else self.AXES[a] for a in self.rows]

    def code(self, axis, card):
        if axis.startswith("level:"):
            account, lengths = card[self.budget.account], LEVELS[self.budget.structure]
            return account and account[:sum(lengths[:int(axis[6:])])].ljust(8, "0")
        return card[self.budget.account if axis == "account" else self.AXES[axis]]

    def parts(self, counted):
        """Prefix and periods (None for all, with those beyond the last) of each column."""
        calendar = self.budget.calendar
        months, pattern = REPORT_COLUMNS[self.columns]
        if months != 12 and calendar.count > 1:
            size = max(months // calendar.months_per_period, 1) if months else 1
            for index in range(calendar.count // size):
                inside = set(range(index * size + 1, index * size + size + 1))
                if counted is not None:
                    inside &= counted
                if inside:
                    yield pattern.format(index + 1), inside
        yield "", counted

    def expected(self):
        budget, (column, _) = self.budget, MEASURES[self.measure]
        counted = self.to and budget.calendar.periods_to(self.to)
        groups = collections.defaultdict(list)
        for card in budget.cards:
            if all(card[self.AXES[axis]] in codes for axis, codes in self.where):
                groups[tuple(self.code(axis, card) for axis in self.rows)].append(card)
        result = {}
        for key, cards in groups.items():
            row = result[key] = {}
            for prefix, inside in self.parts(counted):
                each = [budget.sums(card, column, inside, counted) for card in cards]
                sums = {name: total(s[name] for s in each) for name in each[0]}
                cell = with_deltas(self.measure, sums, budget.forecasts)
                parts = (sums["BUDGET"], *(None if sums[n] is None else -sums[n] for n in ("CONSUNTIVO", "ORDINI")))
                cell[f"{self.measure}_DISPONIBILE"] = total(parts)
                row.update({prefix + name: value for name, value in cell.items()})
        return result
