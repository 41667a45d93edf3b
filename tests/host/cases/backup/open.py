"""Keeps the demo database open, idle, until a file `release` appears."""
import os
import sqlite3
import time

database = sqlite3.connect("demo.db")
database.execute("SELECT COUNT(*) FROM BU66_DETBUDGET").fetchall()
open("held", "w").close()
while not os.path.exists("release"):
    time.sleep(0.05)
