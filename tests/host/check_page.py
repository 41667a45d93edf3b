#!/usr/bin/env python3
"""Compares the pages that reports write with the CSV of the same reports, and looks for what a page must not have:
check_page.py PROGRAM DEMO_DB
"""
import base64
import csv
import hashlib
import html.parser
import io
import pathlib
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from decimal import Decimal

HOSTILE = "</text></svg></script><script>alert(1)</script>\"'><img src=x onerror=alert(2)> & \u202e\x1b[31m"
# Options of a report, its axes' CSV columns, and the columns that the trend goes by.
REPORTS = [
    (["-t", "4", "-s", "01", "--rows", "site,account", "--to", "2025-09", "--values",
      "budget,actual,delta,delta%,forecast2,forecast2.from"], ["BU65_CODICE_CG31", "BU65_CONTO_CG24"], "period"),
    (["-t", "4", "-s", "01", "--rows", "card", "--columns", "quarter", "--where", "kind=1", "--top", "3"],
     ["BU65_SCHEDA_BU07"], "quarter"),
    (["-t", "5", "-s", "01", "--rows", "level:1", "--columns", "half"], ["LIVELLO1"], "half"),
    (["-t", "0", "-s", "01", "--rows", "area", "--measure", "qty1"], ["BU65_AREA_MG08"], "period"),
    (["-t", "4", "-s", "01"], [], "period"),
]
HTML, SVG = "{http://www.w3.org/1999/xhtml}", "{http://www.w3.org/2000/svg}"


class Marks(html.parser.HTMLParser):
    """What a browser's parser finds."""

    def __init__(self):
        super().__init__()
        self.tags, self.attributes, self.scripts, self.styles, self.inside = [], [], [], [], ""

    def handle_starttag(self, tag, attrs):
        self.tags.append(tag)
        self.attributes += attrs
        self.inside = tag

    def handle_data(self, data):
        if self.inside == "script":
            self.scripts.append(data)
        if self.inside == "style":
            self.styles.append(data)

    def handle_endtag(self, tag):
        self.inside = ""


def check_policy(text, problems):
    marks = Marks()
    marks.feed(text)
    policy = next(value for name, value in marks.attributes if name == "content" and "default-src" in value)
    for kind, texts in (("script", marks.scripts), ("style", marks.styles)):
        known = re.findall(kind + r"-src 'sha256-([^']+)'", policy)
        found = [base64.b64encode(hashlib.sha256(t.encode()).digest()).decode() for t in texts]
        if found != known:
            problems.append(f"the policy knows {known}, the {kind} is {found}")
    if not policy.startswith("default-src 'none';") or "unsafe" in policy:
        problems.append(f"policy {policy}")
    for name, value in marks.attributes:
        if name.startswith("on") or name in ("style", "src", "href", "xlink:href", "action"):
            problems.append(f"attribute {name}={value}")
    problems += [f"a {tag}" for tag in marks.tags if tag in ("img", "link", "iframe", "object", "embed", "form")]


def rows_of(program, database, options, *more):
    result = subprocess.run([program, "report", "-d", database, "-y", "2025", *options, *more, "--format", "csv", "--all"],
                            check=True, capture_output=True, text=True)
    return list(csv.DictReader(io.StringIO(result.stdout)))


def check_table(page, rows, axes, problems):
    """The innermost rows are those of the CSV, or the total where there is no other."""
    table = page.find(f".//{HTML}table")
    fields = {int(th.get("data-column")): th.get("data-field") for th in table.iter(HTML + "th") if th.get("data-column")}
    lines = [tr for tr in table.find(HTML + "tbody") if tr.get("class") != "sub"] if axes else \
        list(table.find(HTML + "tfoot"))
    if len(lines) != len(rows):
        problems.append(f"{len(lines)} lines, CSV {len(rows)}")
    for line, row in zip(lines, rows):
        for position, cell in enumerate(line):
            field = fields[position]
            if field in axes:
                shown, wanted = cell.text or "", row[field]
                if not (shown == wanted or shown.startswith(wanted + " - ") or (wanted == "" and shown == "(none)")):
                    problems.append(f"{field} '{shown}', CSV '{wanted}'")
            elif (cell.get("data-value") if "num" in cell.get("class", "") else cell.text or "") != row[field]:
                problems.append(f"{field} {cell.get('data-value')} '{cell.text}', CSV {row[field]}")
    return len(rows) * len(fields)


def points_of(page, picture):
    """The points of a picture, the same in both of its widths."""
    svg = {width: [(g.get("data-name"), Decimal(g.get("data-value"))) for g in page.find(f".//*[@id='{picture}-{width}']")
                   if g.get("class") == "point"] for width in ("wide", "narrow")}
    return svg["wide"] if svg["wide"] == svg["narrow"] else None


def filters(options):
    kept = []
    for name, value in zip(options, options[1:]):
        if name in ("-t", "-s", "--to", "--where", "--measure"):
            kept += [name, value]
    return kept


def check_trend(page, program, database, options, columns, problems):
    number = re.search("forecast([0-9])", " ".join(options))
    number = number.group(1) if number else "1"
    row = rows_of(program, database, filters(options), "--columns", columns, "--values",
                  f"budget,actual,forecast{number}")[0]
    measure = "QTA1" if "qty1" in options else "IMP"
    wanted = [Decimal(value) for field in ("BUDGET", "CONSUNTIVO", f"FORECAST{number}") for name, value in row.items()
              if name.endswith(f"_{measure}_{field}") and value]
    found = [value for _, value in points_of(page, "trend") or []]
    if found != wanted:
        problems.append(f"trend {found}, CSV {wanted}")
    return len(found)


def check_deltas(page, program, database, options, axes, problems):
    measure = "QTA1" if "qty1" in options else "IMP"
    names = ["--rows", options[options.index("--rows") + 1]] if axes else ["--columns", "period"]
    rows = rows_of(program, database, filters(options), *names, "--values", "budget,actual,delta")
    found = [value for _, value in points_of(page, "deltas") or []]
    if axes:
        deltas = [Decimal(row[f"DELTA{measure}_CONS"]) for row in rows if row[f"DELTA{measure}_CONS"]]
        wanted = sorted((d for d in deltas if d), key=lambda d: -abs(d))[:10]
    else:
        wanted = [Decimal(v) for k, v in rows[0].items() if k.endswith(f"_DELTA{measure}_CONS") and v and Decimal(v)]
    total = rows_of(program, database, filters(options), "--values", "budget,actual")[0]
    budget, actual = Decimal(total[f"{measure}_BUDGET"]), Decimal(total[f"{measure}_CONSUNTIVO"])
    rest = actual - budget - sum(wanted)
    wanted = [budget, *wanted, *([rest] if rest else []), actual]
    if found != wanted:
        problems.append(f"deltas {found}, CSV {wanted}")
    return len(found)


def make_hostile(database):
    with sqlite3.connect(database) as connection:
        connection.create_collation("BK_TEXT", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
        connection.execute("UPDATE CG24_TABPDC SET CG24_DESCR = ?", [HOSTILE])
        connection.execute("UPDATE BU01_ANABUDGET SET BU01_DESCR = ?", [HOSTILE])
    connection.close()


def check(program, database, file, options, axes, columns):
    problems = []
    subprocess.run([program, "report", "-d", database, "-y", "2025", *options, "--html", str(file)], check=True)
    text = file.read_text(encoding="utf-8")
    page = ElementTree.fromstring(text)
    check_policy(text, problems)
    figures = check_table(page, rows_of(program, database, options), axes, problems)
    figures += check_trend(page, program, database, options, columns, problems)
    figures += check_deltas(page, program, database, options, axes, problems)
    for svg in page.iter(SVG + "svg"):
        if svg.get("role") == "img" and not all(svg.findtext(SVG + name) for name in ("title", "desc")):
            problems.append("a picture without title or description")
    return figures, [f"{' '.join(options)}: {problem}" for problem in problems]


def main():
    program, demo = sys.argv[1:]
    with tempfile.TemporaryDirectory() as scratch:
        file = pathlib.Path(scratch) / "report.html"
        database = str(pathlib.Path(scratch) / "demo.db")
        shutil.copy(demo, database)
        figures, problems = 0, []
        for report in REPORTS:
            count, found = check(program, database, file, *report)
            figures += count
            problems += found
        make_hostile(database)
        count, found = check(program, database, file, *REPORTS[0])
        problems += found
        shown = HOSTILE.replace("\u202e", "\ufffd").replace("\x1b", "\ufffd")
        titles = [e.text or "" for e in ElementTree.parse(file).iter() if e.tag == HTML + "h1"]
        if titles != [shown]:
            problems.append(f"the hostile title reads {titles}")
    for problem in problems[:20]:
        print(problem, file=sys.stderr)
    print(f"{len(REPORTS)} pages, {figures} figures: " + ("all equal" if not problems else f"{len(problems)} problems"))
    return 1 if problems or figures == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
