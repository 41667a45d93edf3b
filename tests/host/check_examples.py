#!/usr/bin/env python3
"""Checks that every block of the pages is run by a test: it is replayed (console, see page_tour, with its csv files), it
is a file of examples/, which tests build and run, or it stands below with the reason why not."""
import re
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent.parent
PAGES = [root / "README.md", root / "CONTRIBUTING.md", *sorted(root.glob("docs/*.md"))]

# The page and how the block begins.
NOT_RUN = {
    ("README.md", "./demo "): "installs packages and builds",
    ("README.md", "bukorval serve -d demo.db"): "runs until it is ended; tests/server, tests/page",
    ("docs/architecture.md", " host/server/ "): "a picture",
    ("docs/embed.md", "cmake --preset release"): "installs on the machine; tests/install does so into a folder",
    ("docs/embed.md", "find_package(bukorval"): "lines of tests/install/client/CMakeLists.txt",
    ("docs/providers.md", 'ado::registerProvider("NAME"'): "a pattern; the three providers are registered like this",
    ("docs/reports.md", "bukorval::report::Query query;"): "a part of a function; tests/report runs the like",
    ("docs/serve.md", "curl -H "): "asks a server that runs; tests/server",
    ("docs/servers.md", "createdb budget"): "needs a server of one's own; tests/postgres starts one",
    ("docs/storage.md", "bukorval budgets --connection"): "needs a SQL Server",
    ("docs/storage.md", "BUKORVAL_SQLSERVER="): "needs a SQL Server",
    ("docs/windows.md", "./test --windows"): "cross-builds; .ci/run",
    ("docs/windows.md", "regsvr32 bukorval.dll"): "needs Windows; tools/windows registers under Wine",
    ("docs/windows.md", "Dim WithEvents bo"): "needs an office program",
    ("docs/windows.md", "dynamic cn ="): "needs .NET on Windows",
    ("docs/windows.md", "import win32com.client"): "needs Python on Windows",
}

examples = {file.read_text() for file in root.glob("examples/*") if file.suffix in (".cpp", ".c", ".py", ".vbs")}
used, wrong = set(), []
for page in PAGES:
    name = str(page.relative_to(root))
    blocks = re.findall(r"^```([^\n]*)\n(.*?)^```$", page.read_text(), re.MULTILINE | re.DOTALL)
    replayed = any(kind == "console" for kind, _ in blocks)
    for kind, text in blocks:
        reasons = {key for key in NOT_RUN if key[0] == name and text.startswith(key[1])}
        used |= reasons
        if not (kind == "console" or (kind.startswith("csv ") and replayed) or text in examples or reasons):
            wrong.append(f"{name}: no test runs {text.splitlines()[0]!r}")
wrong += [f"{page}: no block begins with {text!r}" for page, text in NOT_RUN.keys() - used]
print("\n".join(wrong))
sys.exit(bool(wrong))
