"""A server of the program on a copy of the demo company, and how to ask it."""
import http.client
import json
import os
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import urllib.parse

BUDGET = {"type": 4, "subtype": "01", "year": 2025}
GRID = BUDGET | {"BdgTipoScheda": 0, "CodiceSede": 1}


class Answer:
    def __init__(self, response):
        self.status, self.headers, self.raw = response.status, response.headers, response.read()

    @property
    def json(self):
        return json.loads(self.raw)

    @property
    def error(self):
        return self.json["error"]

    def table(self, number=0):
        """Rows as dictionaries."""
        table = self.json["tables"][number]
        names = [column["name"] for column in table["columns"]]
        return [dict(zip(names, row)) for row in table["rows"]]


class Server:
    def __init__(self, program, where, *options, log=None):
        self.log = open(log, "w+") if log else subprocess.DEVNULL
        environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        self.process = subprocess.Popen([program, "serve", *where, "--port", "0", *options], stdout=subprocess.PIPE,
                                        stderr=self.log, text=True, env=environment)
        address = urllib.parse.urlsplit(self.process.stdout.readline().strip())
        self.port = address.port
        self.token = urllib.parse.parse_qs(address.query)["token"][0]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.end()

    def end(self):
        """@return the program's exit code."""
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(20)

    def ask(self, method, path, body=None, headers=None, host=None):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=30)
        connection.putrequest(method, path, skip_host=True, skip_accept_encoding=True)
        data = body if isinstance(body, (bytes, type(None))) else json.dumps(body).encode()
        own = {"Host": host or f"127.0.0.1:{self.port}", "Connection": "close"} | (headers or {})
        if data is not None:
            own.setdefault("Content-Length", str(len(data)))
        for name, value in own.items():
            connection.putheader(name, value)
        connection.endheaders()
        try:
            if data:
                connection.send(data)
            return Answer(connection.getresponse())
        finally:
            connection.close()

    def bearer(self):
        return {"Authorization": f"Bearer {self.token}"}

    def run(self, command, options=None, **more):
        return self.ask("POST", f"/api/v1/run/{command}", {"options": options or {}} | more, self.bearer())

    def enter(self):
        """Opens a session as a browser does. @return the headers that its page sends."""
        cookie = self.ask("GET", f"/?token={self.token}").headers["Set-Cookie"].split(";")[0]
        csrf = self.ask("GET", "/api/v1/session", headers={"Cookie": cookie}).json["csrf"]
        return {"Cookie": cookie, "X-Bukorval-Csrf": csrf}


def copied(demo, folder):
    """A new file each time: the log of another one may be left beside it."""
    file = pathlib.Path(folder) / f"budget{len(list(pathlib.Path(folder).iterdir()))}.db"
    shutil.copy(demo, file)
    return ["-d", str(file)]


def grown(file, cards):
    """Copies of the budget's cards until there are that many in its grid, each with its details."""
    with sqlite3.connect(file) as database:
        # For the texts that are added here the engine's own order is that of their bytes.
        database.create_collation("BK_ORDER", lambda a, b: (a.rstrip() > b.rstrip()) - (a.rstrip() < b.rstrip()))
        columns = {table: [row[1] for row in database.execute(f"PRAGMA table_info({table})") if row[1] != f"{table[:4]}_ID"]
                   for table in ("BU65_TESBUDGET", "BU66_DETBUDGET")}
        where = ("BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = 2025 AND BU65_INDCOSRIC_BU07 = 0 "
                 "AND BU65_CODICE_CG31 = 1")
        [(first, there)] = database.execute(f"SELECT MIN(BU65_ID), COUNT(*) FROM BU65_TESBUDGET WHERE {where}")
        [(last,)] = database.execute("SELECT MAX(BU65_ID) FROM BU65_TESBUDGET")
        names = ", ".join(columns["BU65_TESBUDGET"])
        values = names.replace("BU65_SCHEDA_BU07", "printf('C%07d', i)")
        numbers = f"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {cards - there}) "
        database.execute(f"{numbers} INSERT INTO BU65_TESBUDGET (BU65_ID, {names}) SELECT {last} + i, {values} "
                         f"FROM n, BU65_TESBUDGET WHERE BU65_ID = {first}")
        names = ", ".join(columns["BU66_DETBUDGET"])
        values = names.replace("BU66_ID_BU65", f"{last} + i")
        database.execute(f"{numbers} INSERT INTO BU66_DETBUDGET ({names}) SELECT {values} "
                         f"FROM n, BU66_DETBUDGET WHERE BU66_ID_BU65 = {first}")
