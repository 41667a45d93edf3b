"""Says whether the readers of each kind of file find the same description: same.py DESCRIPTION, in files made before."""
import csv
import html.parser
import json
import sys

wanted = "AFFITTI - " + sys.argv[1].encode().decode("unicode_escape").encode("latin-1").decode()


class Cells(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.cells, self.tags = [], []

    def handle_starttag(self, tag, attributes):
        self.tags.append(tag)
        self.cells += [value for _, value in attributes if value] + [""]

    def handle_data(self, data):
        self.cells[-1:] = [self.cells[-1] + data] if self.cells else [data]


def texts(name):
    if name.endswith(".json"):
        return [str(value) for row in json.load(open(name)) for value in row.values()]
    if name.endswith(".html"):
        page = Cells()
        page.feed(open(name).read())
        assert "b" not in page.tags and "script" not in page.tags, page.tags
        return page.cells
    text = open(name, newline="", encoding="utf-8-sig").read()
    return [cell for row in csv.reader(text.splitlines(keepends=True), delimiter=";" if "it" in name else ",") for cell in row]


for name in sys.argv[2:]:
    found = texts(name)
    shown = wanted.replace("\n", "\\n") if name.endswith(".html") else wanted  # people are shown where a line ends
    print(name, "same" if shown in found else found[:40])
