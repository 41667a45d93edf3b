"""The movements behind the cells of a card."""

import collections

from elaborations import CardRun
from rules import DAY, ORDERS, month_end, rounded


class DrillDownChecks:
    """To be mixed into a check of a company."""

    def check_movements(self, budget):
        r, calendar = self.more, budget.calendar
        if calendar.comes_round:
            return
        first, last = calendar.start, calendar.end
        if r.random() < 0.6:
            first, last = sorted(r.choices(calendar.months, k=2))
            first, last = max(first + DAY * r.choice((0, 0, 12)), calendar.start), month_end(last) - DAY * r.choice((0, 0, 9))
            last = max(first, last)
        options = dict(first=first, last=last, by_competence=r.random() < 0.6)
        words = ["--DaData", f"#{first}#", "--AData", f"#{last}#", "--TipoDataMovimenti", str(int(options["by_competence"]))]
        words += self.choose_movements(options)
        options["kind_written"] = r.choice([k for k in range(3 + budget.forecasts) if k != ORDERS])
        words += ["--TipoDettaglioDestinazione", str(options["kind_written"])]
        run = CardRun(budget.tables, budget, **options)
        cards, reached = list(run.cards()), {p for _, _, periods in run.legs() for p in periods & calendar.existing}
        for card, terms in r.sample(cards, min(2, len(cards))):
            period = r.choice((None, r.choice(sorted(calendar.existing))))
            # A card without an account, and a period that the dates do not reach, have nothing behind them.
            refused = not run.takes_any(card) or period not in (None, *reached)
            answer = self.run("movements", "--card", str(card["BU65_ID"]), *words, *(["--period", str(period)] if period else []), refused=refused)
            if answer is not None:
                lines, cells = self.behind(run, card, terms, period)
                self.compare({(m["CG41_NUMREG"], m["CG42_NUMRIGACONT"]): m for m in answer["Movements"]}, lines, ["registration", "line"])
                self.compare({c["PERIODO"]: c for c in answer["Cells"]}, cells, ["period"])

    @staticmethod
    def behind(run, card, terms, period):
        """The lines with their amounts and shares, and the cells that they make."""
        lines, counts, cost = {}, collections.Counter(), card["BU65_INDCOSRIC_BU07"]
        for first, last, periods in run.legs():
            for line in run.movements:
                if not run.takes(card, terms, line, first, last):
                    continue
                shares = {p: run.part(line, cost, {p}) for p in periods if period in (None, p)}
                shares = {p: share for p, share in shares.items() if share}
                counts.update(shares.keys())
                if shares:
                    row = lines.setdefault((line["CG42_NUMREG_CG41"], line["CG42_NUMRIGACONT"]),
                                           {"IMPORTO": run.part(line, cost, set(range(1, 13))), "QUOTA": rounded(0)})
                    row["QUOTA"] += sum(shares.values())
        held = {d["BU66_PERIODO"]: d["BU66_IMPORTO"] for d in run.budget.details[card["BU65_ID"], run.kind_written]}
        bare = run.written(False)
        cells = {p: {"RIGHE": counts[p], "MOVIMENTI": bare[c, p], "TOTALE": total, "SCHEDA": held.get(p),
                     "DIFFERENZA": (total - (held.get(p) or 0)) or None}
                 for (c, p), total in run.written().items() if c == card["BU65_ID"] and period in (None, p)}
        return lines, cells
