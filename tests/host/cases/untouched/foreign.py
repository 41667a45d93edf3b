"""Makes two databases of another program, one of them with a log."""
import sqlite3

for name, mode in (("foreign.db", "delete"), ("logged.db", "wal")):
    database = sqlite3.connect(name)
    database.execute(f"PRAGMA journal_mode = {mode}")
    database.execute("CREATE TABLE notes (text)")
    database.commit()
    database.close()
