#!/usr/bin/env python3
"""Exports a budget to a spreadsheet, changes cells in the office suite's own format, lets the suite write the
spreadsheet again, imports it, and checks that exactly the changed cells have changed: check_office.py PROGRAM DEMO_DB
"""
import csv
import io
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.dom.minidom

SELECTION = ["-t", "4", "-s", "01", "-y", "2025", "-b", "1", "-k", "0"]
# By card of the file and period: a typed number, the outcome of arithmetic, a formula, nothing.
CHANGES = {(0, 1): ("12345.67", ""), (1, 3): ("0.30000000000000004", ""), (2, 12): (None, "of:=20/4"), (3, 2): (None, "")}
AFTER = {(0, 1): "12345.67", (1, 3): "0.30", (2, 12): "5.00", (3, 2): ""}


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def convert(folder, file, to):
    """Into the folder `to`, so that what is there afterwards was written by the suite."""
    run("soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", to, "--outdir",
        str(folder / to), str(folder / file))
    return folder / to / pathlib.Path(file).with_suffix("." + to).name


def spread(parent, tag, attribute):
    """The children of that name, after giving every repeated one elements of its own, but for the endless ones."""
    elements = []
    for element in [child for child in parent.childNodes if child.nodeName == tag]:
        count = int(element.getAttribute(attribute) or 1)
        if 1 < count < 500:
            element.removeAttribute(attribute)
            elements += [parent.insertBefore(element.cloneNode(True), element) for _ in range(count - 1)]
        elements.append(element)
    return elements


def change(file):
    document = xml.dom.minidom.parse(str(file))
    table = document.getElementsByTagName("table:table")[0]
    rows = [spread(row, "table:table-cell", "table:number-columns-repeated")
            for row in table.getElementsByTagName("table:table-row")]
    names = ["".join(text.firstChild.data for text in cell.getElementsByTagName("text:p")) for cell in rows[0]]
    for (card, period), (value, formula) in CHANGES.items():
        cell = rows[2 + card][names.index(f"p{period}")]
        for child in list(cell.childNodes):
            cell.removeChild(child)
        for name in ("office:value", "office:value-type", "calcext:value-type"):
            if cell.hasAttribute(name):
                cell.removeAttribute(name)
        if value is not None:
            cell.setAttribute("office:value-type", "float")
            cell.setAttribute("office:value", value)
        if formula:
            cell.setAttribute("table:formula", formula)
    file.write_text(document.toxml(), encoding="utf-8")


def values(program, database):
    wide = run(program, "export", "-d", str(database), *SELECTION, "--csv", "plain")
    rows = list(csv.DictReader(io.StringIO(wide)))
    return {(card, period): row[f"p{period}"] for card, row in enumerate(rows) for period in range(1, 13)}


def main(program, demo):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        database = folder / "demo.db"
        shutil.copy(demo, database)
        before = values(program, database)
        run(program, "export", "-d", str(database), *SELECTION, "-o", str(folder / "budget.xlsx"))
        opened = convert(folder, "budget.xlsx", "fods")
        change(opened)
        saved = convert(folder, "fods/budget.fods", "xlsx")
        print(run(program, "import", "-d", str(database), "--sheet", str(saved)), end="")
        after = values(program, database)
        changed = {place: value for place, value in after.items() if value != before[place]}
        assert changed == AFTER, changed
        assert "0 values" in run(program, "import", "-d", str(database), "--sheet", str(saved))


main(*sys.argv[1:])
