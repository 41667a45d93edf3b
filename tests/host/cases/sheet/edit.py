#!/usr/bin/env python3
"""Changes a spreadsheet as a spreadsheet program would: edit.py FROM TO [CELL=VALUE | PART<FILE | PART-]…

CELL=12.5 is a number, CELL='abc a text (inline), CELL= nothing, CELL=~SUM(A1:B2)~12.5 a formula with its value, CELL=!TYPE!V
a cell of another type. PART<FILE puts a file in the place of a part, PART- leaves it out, LINE>LINE copies a line's
cells into another line.
"""
import re
import sys
import zipfile
from xml.sax.saxutils import escape

SHEET = "xl/worksheets/sheet1.xml"


def cell(place, style, value):
    start = f'<c r="{place}"{style}'
    if value == "":
        return start + "/>"
    if value.startswith("'"):
        return f'{start} t="inlineStr"><is><r><t>{escape(value[1:2])}</t></r><r><t>{escape(value[2:])}</t></r></is></c>'
    if value.startswith("~"):
        formula, number = value[1:].split("~")
        return f"{start}><f>{escape(formula)}</f>" + (f"<v>{number}</v></c>" if number else "</c>")
    if value.startswith("!"):
        kind, content = value[1:].split("!", 1)
        return f'{start} t="{kind}"><v>{content}</v></c>'
    return f"{start}><v>{value}</v></c>"


def change(sheet, place, value):
    found = re.search(rf'<c r="{place}"( s="\d+")?[^>]*?(/>|>.*?</c>)', sheet)
    assert found, place
    return sheet[: found.start()] + cell(place, found.group(1) or "", value) + sheet[found.end() :]


def copy_line(sheet, source, target):
    row = re.search(rf'<row r="{source}".*?</row>', sheet).group(0)
    copy = re.sub(rf'r="([A-Z]*){source}"', rf'r="\g<1>{target}"', row)
    return re.sub(rf'<row r="{target}".*?</row>', "", sheet).replace("</sheetData>", copy + "</sheetData>")


source, target, *changes = sys.argv[1:]
with zipfile.ZipFile(source) as book:
    parts = {name: book.read(name) for name in book.namelist()}
for item in changes:
    if item.endswith("-"):
        del parts[item[:-1]]
    elif "<" in item:
        part, file = item.split("<")
        parts[part] = open(file, "rb").read()
    elif ">" in item:
        parts[SHEET] = copy_line(parts[SHEET].decode(), *item.split(">")).encode()
    else:
        parts[SHEET] = change(parts[SHEET].decode(), *item.split("=", 1)).encode()
with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as book:
    for name, content in parts.items():
        book.writestr(name, content)
