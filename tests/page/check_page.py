#!/usr/bin/env python3
"""Walks through the page in a browser and compares what it shows with what the program says:
check_page.py PROGRAM DEMO_DB FOLDER SOURCES [TEST…]. Pictures of what was seen stay in FOLDER; with UPDATE=1 the one
of the report goes into the docs.
"""
import sys
import unittest

from case import Page

TESTS = ["walk", "editing", "two_people", "cards", "runs", "signing", "looks"]

if __name__ == "__main__":
    try:
        ran = unittest.main(None, argv=sys.argv[:1] + (sys.argv[5:] or TESTS), verbosity=2, exit=False)
    finally:
        if Page.one:
            Page.one.quit()
    sys.exit(not ran.result.wasSuccessful())
