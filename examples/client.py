"""Shows the cards of a budget: client.py FILE, where FILE was made by `bukorval create FILE --demo`."""

import sys

import bukorval

with bukorval.connect(f"Provider=SQLite;Data Source={sys.argv[1]}") as company:
    # General expenses, kept per site and card kind; 1 is revenue.
    budget = company.budget(TipoBudget=4, SottoTipoBudget="01", AnnoEsercizio=2025, ProgressivoEsercizio=1,
                            CodiceSede=1, BdgTipoScheda=1)
    for row in budget.RecordSetBudget():
        delta = budget.CalcolaDelta(row["IMP_CONSUNTIVO"], row["IMP_BUDGET"])
        print(f"{row['BU65_SCHEDA_BU07'].rstrip()}: budget {row['IMP_BUDGET']}, delta {delta}")
