"""Spreads amounts many times and compares with exact fractions: check.py DATABASE CARD"""
import fractions
import json
import os
import random
import subprocess
import sys

where = [] if "BUKORVAL_CONNECTION" in os.environ else ["-d", sys.argv[1]]
random.seed(20250101)
for round_ in range(6):
    weights = [random.choice((0, 1, 1, random.randint(0, 10**9))) for _ in range(12)]
    weights[round_] += 1
    cents = random.choice((1, -1)) * random.choice((7, 100, random.randint(1, 10**12)))
    with open("random.csv", "w") as file:
        file.write("period,weight\n" + "".join(f"{i + 1},{w // 1000}.{w % 1000:03}\n" for i, w in enumerate(weights)))
    told = json.loads(subprocess.run(
        ["bukorval", "spread", sys.argv[2], f"{'-' if cents < 0 else ''}{abs(cents) // 100},{abs(cents) % 100:02}",
         "--like", "random.csv", *where, "--format", "json"],
        capture_output=True, text=True, check=True).stdout)
    exact = [fractions.Fraction(abs(cents) * w, sum(weights)) for w in weights]
    shares = [int(share) for share in exact]
    for i in sorted(range(12), key=lambda i: (shares[i] - exact[i], i))[:abs(cents) - sum(shares)]:
        shares[i] += 1
    written = [round(row["DOPO"] * 100) for row in told]
    if written != [share if cents > 0 else -share for share in shares]:
        print("weights", weights, "cents", cents, "written", written, "wanted", shares)
print("checked")
