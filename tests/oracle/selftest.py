#!/usr/bin/env python3
"""Looks whether the check notices one figure that is a hundredth (or a thousandth) off.

    selftest.py PROGRAM SEED...

The figure is changed behind the program's back: before it is read, when the expectation stands already, and after it was
written. Exit code 0 when every one is noticed.
"""

import sys
import tempfile

from check import Check, make_template, seeds_of
from rules import MEASURES, connect


class Spoiled(Check):
    """A company in which one figure of a budget is changed during the first command that is run."""

    def prepare(self, budget, column):
        cards = ",".join(str(card["BU65_ID"]) for card in budget.cards)
        db = connect(self.database)
        ids = [i for i, in db.execute(f"SELECT BU66_ID FROM BU66_DETBUDGET WHERE {column} IS NOT NULL AND BU66_TIPO IN (0, 1)"
                                      f" AND BU66_ID_BU65 IN ({cards})")]
        db.close()
        self.statement = f"UPDATE BU66_DETBUDGET SET {column} = {column} + 1 WHERE BU66_ID = {self.random.choice(ids)}" if ids else None
        return bool(ids)

    def spoil(self):
        if self.statement:
            db = connect(self.database)
            db.execute(self.statement)
            db.close()
            self.statement = None

    def run(self, *words, **more):
        writes = words[0] in ("elaborate-cards", "duplicate", "raise", "spread", "import") or "--write" in words
        if not writes:
            self.spoil()
        answer = super().run(*words, **more)
        if writes:
            # A written figure may have been Null until now: any figure of the budget will do.
            self.spoil()
        return answer


def trials(check):
    """(name, what runs the comparison) for each way in which a figure is looked at."""
    for budget in check.budgets():
        for measure, (column, _) in MEASURES.items():
            yield f"grid {budget.key} {measure}", check.check_grids, budget, column
        if budget.type == 4:
            yield f"cards {budget.key}", check.check_cards, budget, "BU66_IMPORTO"
            yield f"copy {budget.key}", check.check_copy, budget, "BU66_QTA1"
            yield f"values {budget.key}", check.check_values, budget, "BU66_QTA2"
        yield f"raise {budget.key}", check.check_raise, budget, "BU66_IMPORTO"
        yield f"spread {budget.key}", check.check_spread, budget, "BU66_IMPORTO"


def main():
    program, tried, missed = sys.argv[1], 0, 0
    with tempfile.TemporaryDirectory() as folder:
        template = make_template(program, folder)
        for seed in seeds_of(sys.argv[2:]):
            check = Spoiled(program, seed, template, folder)
            for name, compare, _, column in list(trials(check)):
                budget = next(b for b in check.budgets() if f"{b.key}" in name)
                if not check.prepare(budget, column):
                    continue
                check.differences.clear()
                compare(budget)
                tried += 1
                if not check.differences:
                    missed += 1
                    print(f"seed {seed}: {name} is off, and nothing was noticed")
    print(f"{tried} figures spoiled, {missed} not noticed")
    return 1 if missed or not tried else 0


if __name__ == "__main__":
    sys.exit(main())
