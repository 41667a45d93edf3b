"""Holds the demo database against writers until a file `release` appears."""
import os
import sqlite3
import time

database = sqlite3.connect("demo.db", isolation_level=None)
database.execute("BEGIN IMMEDIATE")
open("held", "w").close()
while not os.path.exists("release"):
    time.sleep(0.05)
database.execute("ROLLBACK")
