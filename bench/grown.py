"""The demo company with as many cards as a measurement wants."""
import sqlite3


def grown(file, cards):
    """Copies of the budget's cards until there are that many in its grid, each with its details."""
    with sqlite3.connect(file) as database:
        # For the texts that are added here the engine's own order is that of their bytes.
        database.create_collation("BK_ORDER", lambda a, b: (a.rstrip() > b.rstrip()) - (a.rstrip() < b.rstrip()))
        columns = {table: [row[1] for row in database.execute(f"PRAGMA table_info({table})") if row[1] != f"{table[:4]}_ID"]
                   for table in ("BU65_TESBUDGET", "BU66_DETBUDGET")}
        where = ("BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = 2025 AND BU65_INDCOSRIC_BU07 = 0 "
                 "AND BU65_CODICE_CG31 = 1")
        [(first, there)] = database.execute(f"SELECT MIN(BU65_ID), COUNT(*) FROM BU65_TESBUDGET WHERE {where}")
        [(last,)] = database.execute("SELECT MAX(BU65_ID) FROM BU65_TESBUDGET")
        names = ", ".join(columns["BU65_TESBUDGET"])
        values = names.replace("BU65_SCHEDA_BU07", "printf('C%07d', i)")
        numbers = f"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {cards - there}) "
        database.execute(f"{numbers} INSERT INTO BU65_TESBUDGET (BU65_ID, {names}) SELECT {last} + i, {values} "
                         f"FROM n, BU65_TESBUDGET WHERE BU65_ID = {first}")
        names = ", ".join(columns["BU66_DETBUDGET"])
        values = names.replace("BU66_ID_BU65", f"{last} + i")
        database.execute(f"{numbers} INSERT INTO BU66_DETBUDGET ({names}) SELECT {values} "
                         f"FROM n, BU66_DETBUDGET WHERE BU66_ID_BU65 = {first}")
