#!/usr/bin/env python3
"""What the server lets in, what it answers and what it leaves alone: check_server.py PROGRAM DEMO_DB
With POSTGRES=STATE (see tests/postgres/cluster) only what a database server may change is looked at."""
import concurrent.futures
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import socket
import sqlite3
import ssl
import subprocess
import sys
import tempfile
import time
import urllib.parse

from running import BUDGET, GRID, Server, copied
from shapes import problems_of

program, demo = sys.argv[1:3]
problems = []
CARD = 47  # of the budget that is looked at


def check(what, good, shown=""):
    if not good:
        problems.append(f"{what}: {str(shown)[:300]}")


DEEP = b'{"options":' + b"[" * 50000 + b"]" * 50000 + b"}"
RUN = "/api/v1/run/"
# Who comes how: nobody, a session without and with its sign, the token itself. Then method, path, body, further headers,
# and status and kind of the answer.
DOORS = [
    ("none", "GET", "/", None, {}, 401, None),
    ("none", "GET", "/?token=wrong", None, {}, 401, None),
    ("none", "GET", "/api/v1/session", None, {}, 401, "unauthorized"),
    ("none", "GET", "/openapi.json", None, {}, 401, "unauthorized"),
    ("none", "POST", RUN + "grid", {"options": GRID}, {}, 401, "unauthorized"),
    ("none", "GET", "/api/v1/nothing", None, {}, 401, "unauthorized"),
    ("none", "GET", "/login", None, {}, 404, "notFound"),
    ("none", "GET", "/door.css", None, {}, 200, None),
    ("none", "POST", RUN + "grid", {"options": GRID}, {"Authorization": "Bearer "}, 401, "unauthorized"),
    ("none", "POST", RUN + "grid", {"options": GRID}, {"Cookie": "bukorvalPORT="}, 401, "unauthorized"),
    ("cookie", "GET", "/", None, {}, 200, None),
    ("cookie", "POST", RUN + "grid", {"options": GRID}, {}, 403, "forbidden"),
    ("cookie", "DELETE", "/api/v1/jobs/1", None, {}, 403, "forbidden"),
    ("cookie", "POST", RUN + "grid", {"options": GRID}, {"X-Bukorval-Csrf": "0" * 48}, 403, "forbidden"),
    ("page", "POST", RUN + "grid", {"options": GRID}, {}, 200, None),
    ("page", "POST", RUN + "grid", {"options": GRID}, {"Origin": "http://evil.example"}, 403, "forbidden"),
    ("page", "POST", RUN + "grid", {"options": GRID}, {"Origin": "null"}, 403, "forbidden"),
    ("page", "GET", "/api/v1/session", None, {"Host": "evil.example"}, 403, "forbidden"),
    ("page", "GET", "/api/v1/session", None, {"Host": "evil.example:PORT"}, 403, "forbidden"),
    ("page", "GET", "/api/v1/session", None, {"Host": "127.0.0.1:1"}, 403, "forbidden"),
    ("page", "GET", "/api/v1/session", None, {"Host": "localhost:PORT", "Origin": "http://localhost:PORT"}, 200, None),
    ("page", "GET", "/api/v1/session", None, {"Host": "budget.example", "Origin": "https://budget.example"}, 200, None),
    ("page", "GET", "/../../../etc/passwd", None, {}, 404, "notFound"),
    ("page", "GET", "/%2e%2e/%2e%2e/etc/passwd.txt", None, {}, 404, "notFound"),
    ("page", "GET", "/..%5c..%5cbudget.db", None, {}, 404, "notFound"),
    ("page", "GET", "/" + "a/" * 3000, None, {}, 404, "notFound"),
    ("page", "PUT", RUN + "grid", {"options": GRID}, {}, 404, "notFound"),
    ("token", "POST", RUN + "a" * 5000, {}, {}, 404, "notFound"),
    ("token", "POST", RUN + "backup", {"options": {"FILE": "/tmp/x"}}, {}, 404, "notFound"),
    ("token", "POST", RUN + "call", {}, {}, 404, "notFound"),
    ("token", "POST", RUN + "serve", {}, {}, 404, "notFound"),
    ("token", "POST", RUN + "grid", {"options": GRID}, {"Range": "bytes=0-1,2-3"}, 200, None),
    ("token", "POST", RUN + "grid", b"x" * 10_000_000, {}, 413, "tooLarge"),
    ("token", "POST", RUN + "grid", DEEP, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", b"", {}, 400, "usage"),
    ("token", "POST", RUN + "grid", b"[]", {}, 400, "usage"),
    ("token", "POST", RUN + "grid", b'{"options":{"year":1e999}}', {}, 400, "usage"),
    ("token", "POST", RUN + "grid", b'{"options":{"subtype":"\xff\xfe"}}', {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": []}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"other": 1}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"year": 2025.5}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"year": 10**30}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"subtype": "0\0"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"explain": "yes"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"subtype": {"a": 1}}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"AnnoEsercizio": 2025}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"database": "other.db"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"CodiceSede": "1; DROP TABLE BU65_TESBUDGET"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"fields": "NOSUCH"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "grid", {"options": GRID | {"subtype": "' OR '1'='1"}}, {}, 422, "refused"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1}}, {}, 400, "usage"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1, "PERIOD": 99, "VALUE": "1"}}, {}, 422, "refused"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 10**9, "PERIOD": 1, "VALUE": "1"}}, {}, 422, "refused"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1, "PERIOD": 1, "VALUE": "1.250"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1, "PERIOD": 1, "VALUE": "1e400"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1, "PERIOD": 1, "VALUE": "9" * 20}}, {}, 422, "refused"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 52, "PERIOD": 10, "VALUE": "1", "kind": "orders"}}, {}, 422, "refused"),
    ("token", "POST", RUN + "set", {"options": {"CARD": 1, "PERIOD": 1, "VALUE": "1", "force": True}}, {}, 400, "usage"),
    ("token", "POST", RUN + "spread", {"options": {"CARD": 1, "TOTAL": "1", "like": "/etc/x.csv"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "delete", {"options": {"CARD": 1}}, {}, 422, "question"),
    ("token", "POST", RUN + "report", {"options": BUDGET | {"html": "/tmp/x.html"}}, {}, 400, "usage"),
    ("token", "POST", RUN + "report", {"options": BUDGET | {"top": 0}}, {}, 400, "usage"),
    ("token", "POST", RUN + "years", {"options": {"ACTION": "remove", "YEAR": 2025}}, {}, 400, "usage"),
    ("token", "POST", "/api/v1/deltas", {"rows": [{"IMP_BUDGET": "x"}]}, {}, 400, "usage"),
    ("token", "POST", "/api/v1/deltas", {"rows": [{}] * 201}, {}, 400, "usage"),
    ("token", "POST", "/api/v1/deltas", {"rows": 1}, {}, 400, "usage"),
    ("token", "POST", "/api/v1/picture/report", {"options": BUDGET, "chart": [1]}, {}, 400, "usage"),
    *(("token", "GET", f"/api/v1/changes?type=4&subtype=01&year=2025&since={since}", None, {}, 400, "usage")
      for since in ("never", "2025-01-01+@0", "2025-01-01+@1+OR+1=1", "2025-01-01+%23x")),
    ("token", "GET", "/api/v1/jobs/0", None, {}, 404, "notFound"),
]


POST = "POST /api/v1/run/budgets HTTP/1.1\r\nHOST\r\nKEY\r\n"
DOOR = "GET /door.css HTTP/1.1\r\nHOST\r\n"
# What no client of good will sends, and the statuses of the answers.
RAW = [
    ("\r\n\r\n", [400]), ("GET\r\n\r\n", [400]), ("\0\1\2\xff\r\n\r\n", [400]), ("GET / HTTP/9.9\r\nHOST\r\n\r\n", [400]),
    ("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", [400]), ("CONNECT a:1 HTTP/1.1\r\nHOST\r\n\r\n", [400]), ("OPTIONS * HTTP/1.1\r\nHOST\r\n\r\n", [404]),
    ("GET http://evil.example/ HTTP/1.1\r\nHOST\r\n\r\n", [404]), ("GET /%00door.css HTTP/1.1\r\nHOST\r\n\r\n", [404]),
    ("GET /door.css%00 HTTP/1.1\r\nHOST\r\n\r\n", [404]), ("GET /%zz%u1234% HTTP/1.1\r\nHOST\r\n\r\n", [404]),
    ("GET /%252e%252e/door.css HTTP/1.1\r\nHOST\r\n\r\n", [404]), ("GET //door.css HTTP/1.1\r\nHOST\r\n\r\n", [404]),
    ("GET / HTTP/1.0\r\n\r\n", [403]), ("GET / HTTP/1.0\r\nHOST\r\n\r\n" + DOOR + "\r\n", [401]), ("GET / HTTP/1.1\r\n\r\n", [403]),
    (DOOR + "Upgrade: websocket\r\nConnection: Upgrade\r\n\r\n", [200]), (DOOR + "Host: evil.example\r\n\r\n", [400]),
    (DOOR + "no colon\r\nA: b\0c\r\n folded\r\n\r\n", [200]), (DOOR + "Range: bytes=a-b\r\n\r\n", [416]),
    ("HEAD /door.css HTTP/1.1\r\nHOST\r\n\r\n" + DOOR + "\r\n", [200, 200]), ((DOOR + "\r\n") * 3, [200, 200, 200]),
    (DOOR + "A: b\r\n" * 20000 + "\r\n", [431]), ("GET /" + "a" * 200000, [431]), ("GET /" + "a" * 9000 + " HTTP/1.1\r\nHOST\r\n\r\n", [414]),
    ("GET /api/v1/session HTTP/1.1\r\nHOST\r\nCookie: bukorval=x; =; ;;bukorval\r\nAuthorization: Bearer x\r\nKEY\r\n\r\n", [401]),
    (POST + "\r\n{}", [400]), (POST + "Content-Length: 50\r\n\r\n{}", [400]), (POST + "Content-Length: 2\r\nContent-Length: 3\r\n\r\n{}", [400]),
    *((POST + f"Content-Length: {length}\r\n\r\n{{}}", [status]) for length, status in (("-1", 400), ("abc", 400), ("2x", 400), ("9" * 30, 413))),
    (POST + "Content-Length: 2\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n", [400]),
    *((POST + f"Transfer-Encoding: chunked\r\n\r\n{size}\r\n{{}}\r\n0\r\n\r\n" + DOOR + "\r\n", statuses)
      for size, statuses in (("2", [200]), ("9", [400]), ("zz", [400]), ("-2", [400]), ("f" * 16, [400]))),
    (POST + "Transfer-Encoding: chunked\r\n\r\n" + ("8000\r\n" + " " * 0x8000 + "\r\n") * 40 + "0\r\n\r\n", [413]),
    (POST + "Transfer-Encoding: gzip, chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n", [400]), (POST + "Content-Encoding: gzip\r\nContent-Length: 2\r\n\r\n{}", [415]),
    (POST + "Content-Type: multipart/form-data\r\nContent-Length: 2\r\n\r\n{}", [400]),
    (POST + "Expect: 100-continue\r\nContent-Length: 2\r\n\r\n{}", [100, 200]),
]


def check_raw(where, folder):
    with Server(program, where, log=folder / "raw") as server:
        job = server.ask("POST", "/api/v1/jobs/elaborate-cards", {"options": BUDGET | {"dry-run": True}}, server.bearer()).json["id"]

        def answered(text):
            text = text.replace("HOST", f"Host: 127.0.0.1:{server.port}").replace("KEY", f"Authorization: Bearer {server.token}")
            got = b""
            with socket.create_connection(("127.0.0.1", server.port), 20) as client:
                try:
                    client.sendall(text.encode("latin1"))
                    client.shutdown(socket.SHUT_WR)
                    while more := client.recv(65536):
                        got += more
                except ConnectionError:
                    pass
            return [int(status) for status in re.findall(rb"HTTP/1\.1 (\d+)", got)]
        with concurrent.futures.ThreadPoolExecutor(100) as pool:
            for (text, statuses), got in zip(RAW * 4, pool.map(answered, [text for text, _ in RAW * 4])):
                check(f"{text[:40]!r}…{text[-60:]!r}", got == statuses, got)
        check("the job meanwhile", finished(server, job).json["state"] == "done")
        check("and the server", server.end() == 0)
    check("the log says nothing of it", (folder / "raw").read_text() == "", (folder / "raw").read_text())


def check_doors(where, folder):
    with Server(program, where, "--name", "budget.example", log=folder / "log") as server:
        page = server.enter()
        comers = {"none": {}, "cookie": {"Cookie": page["Cookie"]}, "page": page, "token": server.bearer()}
        for who, method, path, body, headers, status, kind in DOORS:
            what = f"{who} {method} {path[:60]} {str(body)[:80]} {headers}"
            own = {name: value.replace("PORT", str(server.port)) for name, value in headers.items()}
            answer = server.ask(method, path, body, comers[who] | own)
            check(what, answer.status == status, f"{answer.status} instead of {status}: {answer.raw[:200]}")
            check(f"{what}: policy", "script-src 'self'" in answer.headers.get("Content-Security-Policy", ""))
            check(f"{what}: sniffing", answer.headers.get("X-Content-Type-Options") == "nosniff")
            if kind and answer.status == status:
                error = answer.error
                check(f"{what}: kind", error["kind"] == kind, error)
                check(f"{what}: words", error["message"] and not re.search(r"SELECT |UPDATE |\.cpp|/tmp", error["message"]),
                      error["message"])
        check("a cookie is a session's own", server.token not in page["Cookie"])
        set_cookie = server.ask("GET", f"/?token={server.token}").headers["Set-Cookie"]
        check("the cookie is for pages of ours alone", "HttpOnly" in set_cookie and "SameSite=Strict" in set_cookie, set_cookie)
        [script] = re.findall(r'src="(/v\d+/main\.js)"', server.ask("GET", "/", headers=page).raw.decode())
        kept = server.ask("GET", script)
        check("files of the page are kept", "immutable" in kept.headers["Cache-Control"], kept.headers)
        check("and are the same", kept.raw == server.ask("GET", "/main.js").raw != b"")
        check("by no other name", server.ask("GET", "/v1/main.js").status == 404)
        check("nothing was written", server.run("history").table() == [])
        with Server(program, where) as second:
            both = {"Cookie": f"{page['Cookie']}; {second.enter()['Cookie']}"}
            statuses = [each.ask("GET", "/api/v1/session", headers=both).status for each in (server, second)]
            check("one browser on two servers", statuses == [200, 200], statuses)
        other = subprocess.run([program, "serve", *where, "--port", str(server.port)], capture_output=True, text=True)
        check("a port is for one", other.returncode == 1 and "Cannot listen" in other.stderr, other)
        check("it ends", server.end() == 0)
    check("the log says nothing", (folder / "log").read_text() == "", (folder / "log").read_text())
    with Server(program, where) as again:
        check("a session ends with its server", again.ask("GET", "/api/v1/session", headers=page).status == 401)


# Options with which each command does something; commands that need none are not here. The later ones find what the
# earlier ones left.
OPTIONS = {
    "list": {"WHAT": "sites"}, "grid": GRID | {"stamps": True, "explain": True}, "periods": {"CARD": 1, "explain": True},
    "report": BUDGET | {"rows": "site,account", "columns": "quarter"}, "card": {"CARD": 1},
    "movements": {"card": CARD, "excluded": True}, "compare": {"LEFT": "4/01@2025", "RIGHT": "4/01@2025:actual"},
    "set": {"CARD": 2, "PERIOD": 1, "VALUE": "12,50"}, "spread": {"CARD": 2, "TOTAL": "1200", "like": "even"},
    "raise": GRID | {"PERCENT": "5", "dry-run": True}, "clear": {"CARD": 3, "yes": True},
    "new": BUDGET | {"NAME=VALUE": ["BU65_INDCOSRIC_BU07=0", "BU65_SCHEDA_BU07='PROVA'", "BU65_CODICE_CG31=1",
                                    "BU65_CONTO_CG24='62050002'"]}, "delete": {"CARD": 4, "yes": True},
    "align": GRID, "elaborate-cards": BUDGET | {"dry-run": True},
    "elaborate-balances": {"type": 5, "subtype": "01", "year": 2025, "dry-run": True},
    "duplicate": GRID | {"TipoDettaglioOrigine": 0, "TipoDettaglioDestinazione": 3, "BdgDestinazioneSottoTipo": "01",
                         "BdgDestinazioneAnnoEsercizio": 2026, "BdgDestinazioneCodiceSede": 1, "dry-run": True},
    "lock": {"BUDGET": "4/01@2025", "reason": "closed"}, "unlock": {"BUDGET": "4/01@2025"},
}


def finished(server, job):
    for _ in range(400):
        answer = server.ask("GET", f"/api/v1/jobs/{job}", headers=server.bearer())
        if answer.json["state"] != "running":
            return answer
        time.sleep(0.02)
    raise TimeoutError(job)


def check_described(where):
    """Every operation that the document lists answers, as it says."""
    with Server(program, where) as server:
        document = server.ask("GET", "/openapi.json", headers=server.bearer()).json
        for path, operations in document["paths"].items():
            name = path.rsplit("/", 1)[1]
            for method, operation in operations.items():
                if method == "parameters" or "{id}" in path:
                    continue
                options = OPTIONS.get(name, {})
                body = None
                if "requestBody" in operation:
                    body = {"rows": [{"IMP_BUDGET": "100"}]} if name == "deltas" else {"options": options}
                    described = operation["requestBody"]["content"]["application/json"]["schema"]
                    problems.extend(problems_of(body, described, document, f"request of {path}"))
                query = "?type=4&subtype=01&year=2025&since=2025-01-01" if name == "changes" else ""
                answer = server.ask(method.upper(), path + query, body, server.bearer())
                status = next(iter(operation["responses"]))
                if str(answer.status) != status:
                    problems.append(f"{method} {path}: {answer.status} {answer.raw[:300]}")
                    continue
                content = operation["responses"][status]["content"]
                if "application/json" in content:
                    problems.extend(problems_of(answer.json, content["application/json"]["schema"], document, path))
                if status == "202":
                    ended = finished(server, answer.json["id"])
                    problems.extend(problems_of(ended.json, {"$ref": "#/components/schemas/Job"}, document, path))
                    server.ask("DELETE", "/api/v1/jobs/" + answer.json["id"], headers=server.bearer())
        check("the document lists the commands", len(document["paths"]) > 50, len(document["paths"]))
    with Server(program, where, "--read-only") as server:
        paths = server.ask("GET", "/openapi.json", headers=server.bearer()).json["paths"]
        for command in ("set", "spread", "raise", "clear", "new", "delete", "align", "elaborate-cards", "elaborate-balances",
                        "duplicate", "lock", "unlock", "undo"):
            check(f"{command} is not offered", RUN + command not in paths)
            for kind in ("run", "jobs"):
                answer = server.ask("POST", f"/api/v1/{kind}/{command}", {"options": OPTIONS.get(command, {})}, server.bearer())
                check(f"{kind} {command}, only read", answer.status == 403, answer.raw)
        check("others are", server.run("grid", GRID).status == 200)
        check("years are shown", server.run("years").status == 200)
        check("and not closed", server.run("years", {"ACTION": "close", "YEAR": 2025}).status == 400)


def check_values(where):
    """The answers are those of the command line."""
    with Server(program, where) as server:
        for command, options, words in (
                ("grid", GRID, "-t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1"),
                ("periods", {"CARD": 1}, "1"),
                ("report", BUDGET | {"rows": "site"}, "-t 4 -s 01 -y 2025 --rows site")):
            line = subprocess.run([program, command, *words.split(), *where, "--format", "json", "--all"],
                                  capture_output=True, text=True, check=True).stdout
            told = json.loads(line, parse_float=str)
            rows = [{name: row[name] for name in told[0]} for row in server.run(command, options).table()]
            check(f"{command} as on the command line", rows == told, rows[:1] + told[:1])
        deltas = server.ask("POST", "/api/v1/deltas", {"cells": {"IMP_BUDGET": "80", "IMP_CONSUNTIVO": "100.50",
                                                                 "IMP_FORECAST2": "60"}}, server.bearer()).json["rows"][0]
        expected = {"DELTAIMP_CONS": "20.50", "DELTAPERCIMP_CONS": "0.2563", "DELTAIMP_FORE2": "-20.00",
                    "DELTAPERCIMP_FORE2": "-0.2500", "DELTAIMP_FORE1": None}
        check("deltas", {name: deltas[name] for name in expected} == expected, deltas)
        picture = server.ask("GET", "/api/v1/picture/report?type=4&subtype=01&year=2025&rows=site&chart=deltas",
                             headers=server.bearer())
        check("a picture", picture.headers["Content-Type"] == "image/svg+xml" and picture.raw.startswith(b"<svg"), picture.raw[:99])


def check_two(where):
    """Two people on one card, and what a third one hears of it."""
    with Server(program, where) as server:
        seen = next(row for row in server.run("grid", GRID | {"stamps": True}).table() if row["BU65_ID"] == CARD)["ULTIMAMODIFICA"]
        poll = "/api/v1/changes?type=4&subtype=01&year=2025"
        now = server.ask("GET", poll, headers=server.bearer()).json["now"]
        edit = {"CARD": CARD, "PERIOD": 3, "seen": seen}
        first = server.run("set", edit | {"VALUE": "100,10"})
        check("the first edit", first.status == 200 and first.table()[0]["DOPO"] == "100.10", first.raw)
        second = server.run("set", edit | {"VALUE": "200,20"})
        check("the second edit", second.status == 409 and second.error["kind"] == "conflict", second.raw)
        check("shows what has changed", "100.10" in json.dumps(second.error["tables"]), second.raw)
        value = server.run("periods", {"CARD": CARD}).table()[2]["IMP_BUDGET"]
        check("is not written", value == "100.10", value)
        def look(since):
            heard = server.ask("GET", f"{poll}&since={urllib.parse.quote(since)}", headers=server.bearer()).json
            return heard["cards"], heard["now"]
        heard, now = look(now)
        stamp = next(row for row in server.run("grid", GRID | {"stamps": True}).table() if row["BU65_ID"] == CARD)["ULTIMAMODIFICA"]
        check("the change is heard of", heard == [{"id": CARD, "lastChange": stamp}], heard)
        # A server commits for other databases too, and then a card of the running second is told again.
        alone = "--connection" not in where
        heard, now = look(now)
        check("once", not alone or heard == [], heard)
        # Programs that keep no history leave nothing but the second; each look is as near behind the change as can be.
        for number in range(30):
            card = CARD + 1 + number % 5
            subprocess.run([program, "set", str(card), "1", str(number), *where, "--no-history"], check=True, capture_output=True)
            heard, now = look(now)
            check("a change without history", card in [one["id"] for one in heard], (number, card, heard))
            check("and no other one is told twice", not alone or look(now)[0] == [])
        check("in the history", server.run("history").table()[0]["COMANDO"].startswith(f"set {CARD} 3 100,10 --seen"))

        def write(number):
            return server.run("set", {"CARD": CARD + 1 + number % 2, "PERIOD": 1 + number // 2, "VALUE": str(number)}).status

        with concurrent.futures.ThreadPoolExecutor(60) as pool:
            reads = [pool.submit(lambda: server.run("periods", {"CARD": CARD}).status) for _ in range(100)]
            writes = [pool.submit(write, number) for number in range(8)]
            statuses = [one.result() for one in reads + writes]
        check("many at once", set(statuses) == {200}, statuses)


def check_jobs(where):
    """A run that is watched, one that is ended from outside, and one beside another program that holds the file."""
    with Server(program, where, "--wait", "0") as server:
        body = {"options": BUDGET | {"dry-run": True}}
        job = server.ask("POST", "/api/v1/jobs/elaborate-cards", body, server.bearer()).json["id"]
        done = finished(server, job).json
        check("a job", done["state"] == "done" and done["progress"]["done"] == done["progress"]["steps"] > 0, done)
        direct = server.run("elaborate-cards", BUDGET | {"dry-run": True})
        check("says the same as a run", done["result"] == direct.json, done["result"])
        wrong = server.ask("POST", "/api/v1/jobs/elaborate-cards", {"options": {}}, server.bearer()).json["id"]
        failed = finished(server, wrong).json
        check("a job that fails", failed["state"] == "failed" and failed["error"]["kind"] == "usage", failed)
        check("is forgotten", server.ask("DELETE", "/api/v1/jobs/" + wrong, headers=server.bearer()).status == 200
              and server.ask("GET", "/api/v1/jobs/" + wrong, headers=server.bearer()).status == 404)
        with sqlite3.connect(where[1], isolation_level=None) as other:
            other.execute("BEGIN IMMEDIATE")
            busy = server.run("set", {"CARD": 1, "PERIOD": 1, "VALUE": "1"})
            check("a busy database", busy.status == 503 and busy.error["kind"] == "busy", busy.raw)
            other.execute("ROLLBACK")
        check("afterwards", server.run("set", {"CARD": 1, "PERIOD": 1, "VALUE": "1"}).status == 200)


def check_ended(where, folder):
    """A run that waits for another program and is ended meanwhile; and what the server says when it is gone."""
    with sqlite3.connect(where[1], isolation_level=None) as other, concurrent.futures.ThreadPoolExecutor() as pool:
        with Server(program, where, "--wait", "30", log=folder / "ended") as server:
            other.execute("BEGIN IMMEDIATE")
            job = server.ask("POST", "/api/v1/jobs/elaborate-cards", {"options": BUDGET}, server.bearer()).json["id"]
            time.sleep(0.3)
            ended = pool.submit(server.ask, "DELETE", "/api/v1/jobs/" + job, None, server.bearer())
            time.sleep(0.3)
            other.execute("ROLLBACK")
            check("a job is ended", ended.result().status == 200, ended.result().raw)
            left = server.run("history").table()
            check("and leaves nothing behind", left == [], left)
            check("nor in the log", (folder / "ended").read_text() == "", (folder / "ended").read_text())


def check_accidents(where, folder):
    """The file is moved away, another one is put there, and there is no room for what is written."""
    edit = {"CARD": 1, "PERIOD": 1, "VALUE": "1"}
    file = pathlib.Path(where[1])
    with Server(program, where, log=folder / "gone") as server:
        poll = "/api/v1/changes?type=4&subtype=01&year=2025"
        now = server.ask("GET", poll, headers=server.bearer()).json["now"]
        check("before", server.run("set", edit).status == 200)
        file.rename(folder / "moved.db")
        for command, options in (("set", edit), ("grid", GRID)):
            gone = server.run(command, options)
            check(f"{command} of nothing", gone.status == 422 and "not where it was" in gone.error["message"], gone.raw)
        file.with_name(file.name + "-wal").unlink(missing_ok=True)
        file.with_name(file.name + "-shm").unlink(missing_ok=True)
        shutil.copy(demo, file)
        check("another file", server.run("history").table() == [])
        heard = server.ask("GET", f"{poll}&since={urllib.parse.quote(now)}", headers=server.bearer())
        check("which is looked at", heard.status == 200, heard.raw)
        check("and written", server.run("set", edit).status == 200 and len(server.run("history").table()) == 1)
    check("the log says nothing of the file", (folder / "gone").read_text() == "", (folder / "gone").read_text())

    def crammed():
        """As on a full disk: files do not grow."""
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (64 << 10, 64 << 10))
    with Server(program, where, log=folder / "full", preexec_fn=crammed, restore_signals=False) as server:
        full = server.run("duplicate", OPTIONS["duplicate"] | {"dry-run": False})
        check("no room", full.status == 500 and full.error["kind"] == "failed", full.raw)
        check("to read is possible", server.run("grid", GRID).status == 200)
        check("nothing was written", len(server.run("history").table()) == 1)
        check("and it ends", server.end() == 0)
    said = (folder / "full").read_text()
    check("the log says why", "cannot be read or written" in said, said)


def check_password(where, folder):
    (folder / "password").write_text("open sesame!\n")
    bare = subprocess.run([program, "serve", *where, "--bind", "0.0.0.0", "--port", "0"], capture_output=True, text=True)
    check("no address for others without a password", bare.returncode == 2, bare)
    with Server(program, where, "--bind", "0.0.0.0", "--password-file", str(folder / "password")) as server:
        def enter(password):
            return server.ask("POST", "/login", f"password={password}".encode(),
                              {"Content-Type": "application/x-www-form-urlencoded"})
        check("the form", b'action="/login"' in server.ask("GET", "/login").raw)
        wrong, soon = enter("open").status, enter("open+sesame%21").status
        check("a wrong password", (wrong, soon) == (401, 429), (wrong, soon))
        time.sleep(0.6)
        right = enter("open+sesame%21")
        check("the right one", right.status == 303, right.raw)
        cookie = {"Cookie": right.headers["Set-Cookie"].split(";")[0]}
        check("opens", server.ask("GET", "/api/v1/session", headers=cookie).status == 200)
    check_users(where, folder / "users")


def check_users(where, file):
    """Each by a password of their own, and told apart in what they write."""
    def line(user, method="-6"):
        return user + ":" + subprocess.run(["openssl", "passwd", method, f"{user}'s own"], capture_output=True, text=True).stdout
    file.write_text("# Who may enter\n" + line("anna") + line("bruno", "-5"))
    with Server(program, where, "--password-file", str(file)) as server:
        def enter(user, password):
            return server.ask("POST", "/login", {"user": user, "password": password}, {"Content-Type": "application/json"})
        check("the form asks who", b'name="user"' in server.ask("GET", "/login").raw)
        pages = {}
        for card, user in enumerate(("anna", "bruno"), 1):
            pages[user] = server.session(enter(user, f"{user}'s own").headers["Set-Cookie"])
            told = server.ask("GET", "/api/v1/session", headers=pages[user]).json["user"]
            written = [server.ask("POST", f"/api/v1/{kind}/set", {"options": {"CARD": card, "PERIOD": period, "VALUE": "5"}}, pages[user])
                       for period, kind in ((1, "run"), (2, "jobs"))]
            finished(server, written[1].json["id"])
            check(f"{user} enters", (told, *[one.status for one in written]) == (user, 200, 202), told)
        server.ask("POST", RUN + "lock", {"options": {"BUDGET": "4/01@2025"}}, pages["bruno"])
        by = [row["UTENTE"] for row in server.run("history").table()]
        check("each has written", by == ["bruno", "bruno", "anna", "anna"], by)
        check("and locked", server.run("lock").table()[0]["UTENTE"] == "bruno")
        for user, password, pause in (("anna", "bruno's own", 0.6), ("carla", "anna's own", 1.1), ("anna", "x" * 1000, 0)):
            answer = enter(user, password)
            check(f"{user} does not enter", answer.status == 401, answer.raw)
            time.sleep(pause)
    for wrong in ("anna:$nosuch$x\n", "", "# nobody\n", "anna:$6$\nopen sesame!\n"):
        file.write_text(wrong)
        refused = subprocess.run([program, "serve", *where, "--port", "0", "--password-file", str(file)], capture_output=True, text=True)
        check(f"no users in {wrong!r}", refused.returncode in (1, 2) and str(file) in refused.stderr, refused)


def certified(folder, name, by=None):
    """A key and a certificate, of its own authority or by another one. @return its file's name without the ending."""
    file = str(folder / name)
    signed = ["-CA", f"{by}.pem", "-CAkey", f"{by}.key"] if by else []
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj", f"/CN={name}",
                    "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", f"{file}.key", "-out", f"{file}.pem", *signed],
                   check=True, capture_output=True)
    return file


def check_encrypted(where, folder):
    authority = certified(folder, "authority")
    own, guest, stranger = certified(folder, "server", authority), certified(folder, "guest", authority), certified(folder, "stranger")

    def context(comer=None, version=ssl.TLSVersion.TLSv1_2):
        made = ssl.create_default_context(cafile=f"{authority}.pem")
        made.minimum_version = made.maximum_version = version
        if comer:
            made.load_cert_chain(f"{comer}.pem", f"{comer}.key")
        return made

    encrypted = "--certificate", f"{own}.pem", "--key", f"{own}.key"
    with Server(program, where, *encrypted, "--patience", "1", context=context()) as server:
        page = server.enter()
        check("encrypted", server.ask("POST", RUN + "grid", {"options": GRID}, page).status == 200)
        check("the cookie as well", "; Secure" in server.ask("GET", f"/?token={server.token}").headers["Set-Cookie"])
        for what, said in (("in plain", b"GET / HTTP/1.1\r\n\r\n"), ("half a greeting", b"\x16\x03\x01\x02\x00\x01")):
            with socket.create_connection(("127.0.0.1", server.port), 10) as plain:
                plain.sendall(said)
                plain.settimeout(8)
                check(f"{what}, and let go", b"HTTP/" not in plain.recv(1000))
        server.context = context(version=ssl.TLSVersion.TLSv1_3)
        big = server.ask("POST", RUN + "grid", b"x" * 3_000_000, server.bearer())
        check("too much, encrypted", big.status == 413, big.raw)
        for version in (ssl.TLSVersion.TLSv1_2, ssl.TLSVersion.TLSv1_3):
            server.context = context(version=version)
            much = server.ask("GET", "/openapi.json", headers=server.bearer())
            check(f"much comes back, {version}", much.status == 200 and len(much.raw) > 50000 and much.json, much.raw)
    with Server(program, where, *encrypted, "--bind", "0.0.0.0", "--client-ca", f"{authority}.pem", context=context(guest)) as server:
        check("with a certificate", server.run("budgets").status == 200)
        for comer in (None, stranger):
            server.context = context(comer, ssl.TLSVersion.TLSv1_2)
            try:
                check(f"with that of {comer}", not server.run("budgets"))
            except (ssl.SSLError, ConnectionError):
                pass
    for wrong in (encrypted[:2], (*encrypted[:3], f"{guest}.key"), ("--certificate", f"{own}.key", *encrypted[2:]),
                  (*encrypted, "--client-ca", f"{own}.key"), ("--client-ca", f"{authority}.pem")):
        refused = subprocess.run([program, "serve", *where, "--port", "0", *wrong], capture_output=True, text=True)
        check(f"no {wrong}", refused.returncode in (1, 2) and refused.stderr, refused)


def check_long(where, sql):
    """What a client that keeps no history and takes no turn writes for long is told when it is there, whatever its clock says."""
    query = "/api/v1/changes?type=4&subtype=01&year=2025&since="
    stamp = "UPDATE bu65_tesbudget SET bu65_dataultagg = '{}' WHERE bu65_id = {};"
    with Server(program, where) as server, subprocess.Popen(sql[:-1], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as slow:
        def look(since):
            heard = server.ask("GET", query + urllib.parse.quote(since), headers=server.bearer()).json
            return {one["id"] for one in heard["cards"]}, heard["now"]

        def tell(text):
            print(text, "\\echo done", sep="\n", file=slow.stdin, flush=True)
            slow.stdout.readline()
        tell("BEGIN; SAVEPOINT a; " + stamp.format("2020-01-01", CARD))
        _, now = look("")
        subprocess.run([*sql, stamp.format("2030-01-01", CARD + 1)], check=True)
        heard, now = look(now)
        check("a short write beside a long one", CARD + 1 in heard and CARD not in heard, heard)
        tell("COMMIT;")
        heard, now = look(now)
        check("the long write", CARD in heard, heard)
        subprocess.run([*sql, stamp.format("2020-01-01", CARD + 2)], check=True)
        heard, now = look(now)
        check("a write by a slow clock", CARD + 2 in heard, heard)
        slow.stdin.close()


def check_away(where, sql, database):
    """The server of the database is away for a while."""
    with Server(program, where) as server:
        check("before", server.run("grid", GRID).status == 200)
        for allowed, statuses in ((False, {503}), (True, {200})):
            subprocess.run([*sql, f"ALTER DATABASE {database} ALLOW_CONNECTIONS {allowed}"], check=True)
            subprocess.run([*sql, f"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname = '{database}'"],
                           check=True, capture_output=True)
            answers = [server.run("grid", GRID) for _ in range(2)]
            got = {answer.status for answer in answers}
            check(f"allowed {allowed}", got == statuses, answers[0].raw)
            if not allowed:
                check("says so and no more", re.fullmatch(r"The database cannot be reached; [^/]*under number \d+", answers[0].error["message"]),
                      answers[0].raw)


def on_postgres(state):
    folder, database = pathlib.Path(state).read_text(), f"serve_{os.getpid()}"
    sql = ["psql", "-qXh", folder, "-U", "bukorval", "postgres", "-c"]
    subprocess.run([*sql, f"CREATE DATABASE {database} TEMPLATE bk_demo"], check=True)
    where = ["--connection", f"Provider=PostgreSQL;Host={folder};User=bukorval;Database={database}"]
    try:
        check_values(where)
        check_two(where)
        check_long(where, ["psql", "-qXh", folder, "-U", "bukorval", database, "-c"])
        check_away(where, sql, database)
        empty = subprocess.run([program, "budgets", "--connection", where[1].replace(f"Database={database}", "Database=postgres")],
                               capture_output=True, text=True)
        check("a database without a company", "The database holds no company" in empty.stderr, empty)
    finally:
        subprocess.run([*sql, f"DROP DATABASE {database} WITH (FORCE)"], check=True)


with tempfile.TemporaryDirectory() as name:
    scratch = pathlib.Path(name)
    if "POSTGRES" in os.environ:
        on_postgres(os.environ["POSTGRES"])
    else:
        check_doors(copied(demo, scratch), scratch)
        check_raw(copied(demo, scratch), scratch)
        check_described(copied(demo, scratch))
        check_values(copied(demo, scratch))
        check_two(copied(demo, scratch))
        check_jobs(copied(demo, scratch))
        check_ended(copied(demo, scratch), scratch)
        check_accidents(copied(demo, scratch), scratch)
        check_password(copied(demo, scratch), scratch)
        check_encrypted(copied(demo, scratch), scratch)
print("\n".join(problems))
sys.exit(bool(problems))
