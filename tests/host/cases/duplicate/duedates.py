"""The due dates of 2026 beside the budget amounts of their cards and periods."""
import sqlite3
import sys

db = sqlite3.connect(sys.argv[1])
rows = db.execute("""
    SELECT BU65_ID, BU14_PERIODO, COUNT(*), SUM(BU14_IMPORTO),
           (SELECT SUM(BU66_IMPORTO) FROM BU66_DETBUDGET
            WHERE BU66_ID_BU65 = BU65_ID AND BU66_TIPO = 0 AND BU66_PERIODO = BU14_PERIODO)
    FROM BU14_SCADCFLOW JOIN BU65_TESBUDGET ON BU65_ID = BU14_IDBUDGET
    WHERE BU65_ANNO = 2026 GROUP BY 1, 2 ORDER BY 1, 2""").fetchall()
print(len(rows), "periods,", sum(r[2] for r in rows), "due dates,", sum(r[3] for r in rows) / 100)
print(sum(r[3] != r[4] for r in rows), "differ from their amounts")
