"""Gives the cost card AFFITTI a description: rename.py DATABASE TEXT, where \\n and \\xC3 are one byte each."""
import sqlite3
import sys

database = sqlite3.connect(sys.argv[1])
database.create_collation("BK_ORDER", lambda a, b: (a > b) - (a < b))
database.execute(
    "UPDATE BU07_SCHEDECOSGEN SET BU07_DESCR = CAST(? AS TEXT) WHERE BU07_INDCOSRIC = 0 AND BU07_SCHEDA = 'AFFITTI'",
    [sys.argv[2].encode().decode("unicode_escape").encode("latin-1")],
)
database.commit()
