"""A digest of every table but the history itself; stamps of time are left out."""
import hashlib
import sqlite3
import sys

OWN = {"BK03_STORICO", "BK04_MODIFICHE", "sqlite_sequence"}
STAMPS = {"BU65_DATAULTAGG"}

db = sqlite3.connect(sys.argv[1])
db.create_collation("BK_ORDER", lambda a, b: (a.upper() > b.upper()) - (a.upper() < b.upper()))
digest = hashlib.sha256()
for (table,) in db.execute("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name").fetchall():
    if table in OWN:
        continue
    columns = [c[1] for c in db.execute(f"PRAGMA table_info({table})") if c[1] not in STAMPS]
    rows = sorted(map(repr, db.execute(f"SELECT {', '.join(columns)} FROM {table}")))
    digest.update(repr((table, rows)).encode())
print(digest.hexdigest()[:12])
