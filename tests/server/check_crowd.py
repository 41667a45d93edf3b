#!/usr/bin/env python3
"""What many at once, slow ones and those who leave do to the others, and how the server ends: check_crowd.py PROGRAM DEMO_DB"""
import concurrent.futures
import contextlib
import http.client
import signal
import socket
import sqlite3
import sys
import tempfile
import time

from running import BUDGET, GRID, Server, copied, grown

program, demo = sys.argv[1:3]
problems = []
PLACES, WAITING = 96, 64  # connections at once, commands that wait for a worker
EDIT = {"CARD": 1, "PERIOD": 1, "VALUE": "1"}


def check(what, good, shown=""):
    if not good:
        problems.append(f"{what}: {str(shown)[:300]}")


@contextlib.contextmanager
def held(where):
    """Another program writes meanwhile."""
    with contextlib.closing(sqlite3.connect(where[1], isolation_level=None)) as other:
        other.execute("BEGIN IMMEDIATE")
        yield
        other.execute("ROLLBACK")


def knock(server, sent=b"", source="127.0.0.1"):
    client = socket.create_connection(("127.0.0.1", server.port), 20, (source, 0))
    client.sendall(sent)
    return client


def rest(client):
    """All that comes until the server closes. @return its first line, and the seconds that it took."""
    begun, got = time.monotonic(), b""
    with contextlib.suppress(ConnectionError):
        while more := client.recv(65536):
            got += more
    client.close()
    return got.split(b"\r\n")[0].decode().strip(), time.monotonic() - begun


def drip(client, text):
    """A byte at a time, for longer than anybody waits. @return as rest()."""
    begun = time.monotonic()
    with contextlib.suppress(OSError):
        for byte in text:
            client.sendall(bytes([byte]))
            time.sleep(0.1)
    return rest(client)[0], time.monotonic() - begun


def check_slow(where):
    with Server(program, where, "--patience", "1") as server, concurrent.futures.ThreadPoolExecutor(8) as pool:
        key = f"POST /api/v1/run/grid HTTP/1.1\r\nHost: 127.0.0.1:{server.port}\r\nAuthorization: Bearer {server.token}\r\n".encode()
        reader = knock(server)
        reader.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
        slow = {what: pool.submit(drip, knock(server, sent), text) for what, sent, text in (
            ("headers", b"GET / HTTP/1.1\r\n", b"A: b\r\n" * 20), ("a body", key + b"Content-Length: 90\r\n\r\n", b" " * 90),
            ("a body in parts", key + b"Transfer-Encoding: chunked\r\n\r\n", b"1\r\n \r\n" * 20))}
        for what, one in slow.items():
            line, taken = one.result()
            check(f"{what}, byte by byte", line == "HTTP/1.1 408" and 0.9 < taken < 3, (line, taken))
        # More than there are places, none of which ever says all; the one who comes after them is served all the same.
        crowd = [knock(server, b"GET / HTTP/1.1\r\n") for _ in range(PLACES + 60)]
        begun = time.monotonic()
        status = server.run("budgets").status
        taken = time.monotonic() - begun
        check("served among slow ones", status == 200 and taken < 2, (status, taken))
        ends = [rest(client)[0] for client in crowd]
        check("who are let go", set(ends) <= {"HTTP/1.1 408", "HTTP/1.1 503"}, ends)
        # One address has half of the places.
        crowd = [knock(server, b"GET / HTTP/1.1\r\n", "127.0.0.2") for _ in range(PLACES)]
        begun = time.monotonic()
        check("others are served at once", server.run("budgets").status == 200 and time.monotonic() - begun < 0.5)
        ends = [rest(client)[0] for client in crowd]
        check("half of them", ends.count("HTTP/1.1 503") == PLACES // 2, ends)


def check_crowded(where):
    """One worker, who waits for another program; some more wait for the worker, the others are told to come back."""
    with Server(program, where, "--workers", "1", "--wait", "30") as server, concurrent.futures.ThreadPoolExecutor(90) as pool:
        with held(where):
            first = pool.submit(server.run, "set", EDIT)
            time.sleep(0.3)
            others = [pool.submit(server.run, "grid", GRID) for _ in range(WAITING + 10)]
            ended, _ = concurrent.futures.wait(others, 1)
            told = [one.result() for one in ended]
            check("too many", len(told) == 10 and {(one.status, one.error["kind"]) for one in told} == {(503, "busy")}, told)
        check("the first one", first.result().status == 200)
        statuses = [one.result().status for one in others]
        check("those who waited", statuses.count(200) == WAITING, statuses)


def check_jobs(where):
    with Server(program, where, "--workers", "3", "--wait", "30") as server:
        def start(card):
            return server.ask("POST", "/api/v1/jobs/set", {"options": EDIT | {"CARD": card}}, server.bearer())
        with held(where):
            begun = [start(card) for card in (1, 2, 3)]
            check("jobs at once", [one.status for one in begun] == [202, 202, 503], [one.raw for one in begun])
            check("a worker is left for the others", server.run("grid", GRID).status == 200)
            check("one is ended", server.ask("GET", "/api/v1/jobs/" + begun[1].json["id"], headers=server.bearer()).json["state"] == "running")
        for one in begun[:2]:
            while server.ask("GET", "/api/v1/jobs/" + one.json["id"], headers=server.bearer()).json["state"] == "running":
                time.sleep(0.02)
        # Whoever leaves without waiting for the answer has begun the job, or the command, all the same.
        for kind, card in (("jobs", 5), ("run", 6)):
            body = f'{{"options": {{"CARD": {card}, "PERIOD": 1, "VALUE": "7"}}}}'
            head = f"Host: 127.0.0.1:{server.port}\r\nAuthorization: Bearer {server.token}\r\nContent-Length: {len(body)}"
            knock(server, f"POST /api/v1/{kind}/set HTTP/1.1\r\n{head}\r\n\r\n{body}".encode()).close()
        for _ in range(100):
            written = [row["COMANDO"] for row in server.run("history").table()]
            if len(written) == 4:
                break
            time.sleep(0.02)
        check("they are written", sorted(written) == [f"set {card} 1 {value}" for card, value in ((1, 1), (2, 1), (5, 7), (6, 7))], written)


def whole_or_lost(reading, rows):
    """Whether there is no answer, or one that came in time and lacks no row."""
    if lost := reading.exception():
        return isinstance(lost, (ConnectionError, http.client.HTTPException))
    return reading.result().status == 200 and len(reading.result().table()) == rows


def check_end(where, large):
    def ended(server):
        begun = time.monotonic()
        code = server.end()
        return code, time.monotonic() - begun

    with Server(program, where) as server:
        kept = http.client.HTTPConnection("127.0.0.1", server.port)
        kept.request("GET", "/door.css")
        kept.getresponse().read()
        half = knock(server, b"GET / HT")
        code, taken = ended(server)
        check("with a browser connected", code == 0 and taken < 1, (code, taken))
        kept.close()
        half.close()
    grown(large[1], 20000)
    with Server(program, large) as server, concurrent.futures.ThreadPoolExecutor() as pool:
        reading = pool.submit(server.run, "grid", GRID)
        time.sleep(0.5)
        code, taken = ended(server)
        check("with somebody who reads", code == 0 and taken < 1, (code, taken))
        check("who gets all of it or nothing", whole_or_lost(reading, 20000), reading.exception() or reading.result().status)
    with Server(program, where, "--wait", "30") as server, concurrent.futures.ThreadPoolExecutor() as pool:
        with held(where):
            writing = pool.submit(server.run, "set", EDIT | {"VALUE": "77"})
            job = server.ask("POST", "/api/v1/jobs/elaborate-cards", {"options": BUDGET}, server.bearer())
            time.sleep(0.2)
            server.process.send_signal(signal.SIGTERM)
            time.sleep(1.2)
            check("with somebody who writes", job.status == 202 and server.process.poll() is None)
        check("they are waited for", writing.result().status == 200 and server.process.wait(5) == 0, writing.result().raw)
    with Server(program, where) as server:
        written = [row["COMANDO"] for row in server.run("history").table()]
        check("the job left nothing behind", written == ["set 1 1 77"], written)


with tempfile.TemporaryDirectory() as scratch:
    for part in (check_slow, check_crowded, check_jobs):
        part(copied(demo, scratch))
    check_end(copied(demo, scratch), copied(demo, scratch))
print("\n".join(problems))
sys.exit(bool(problems))
