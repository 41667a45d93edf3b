"""Makes a database lose a cent of what is written on a card: tamper.py DATABASE CARD"""
import sqlite3
import sys

with sqlite3.connect(sys.argv[1]) as database:
    database.execute(
        "CREATE TRIGGER lose AFTER UPDATE OF BU66_IMPORTO ON BU66_DETBUDGET "
        f"WHEN NEW.BU66_ID_BU65 = {int(sys.argv[2])} AND NEW.BU66_IMPORTO > 100 BEGIN "
        "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = NEW.BU66_IMPORTO - 1 WHERE ROWID = NEW.ROWID; END")
