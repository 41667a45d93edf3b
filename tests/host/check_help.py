#!/usr/bin/env python3
"""Reads every command's help and runs its examples, one after the other in one folder: check_help.py PROGRAM"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

program = Path(sys.argv[1]).resolve()

# How the example begins, and why it is not run or does not succeed here.
NOT_RUN = {
    "create --demo --connection": "needs a server of one's own",
    "import -d acme.db --": "needs files of one's own; docs/imports.md is replayed",
    "batches --remove march": "takes back one of those imports",
    "elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent-file": "needs a file; the case elaborate_balances",
    "spread 52 120000,50 --like weights.csv": "needs a file; the case spread",
    "undo 17": "names an entry of one's own",
    "completion": "writes into the shell's folders; check_completion",
    "serve": "runs until it is ended; tests/server",
}


def run(command, folder):
    """A command as it is typed, with nobody to answer."""
    found = dict(os.environ, PATH=f"{folder / 'bin'}:{os.environ['PATH']}", LC_ALL="C.UTF-8")
    for name in ("BUKORVAL_DATABASE", "BUKORVAL_CONNECTION"):
        found.pop(name, None)
    return subprocess.run(["bash", "-c", command], cwd=folder, env=found, stdin=subprocess.DEVNULL, capture_output=True,
                          text=True)


with tempfile.TemporaryDirectory() as scratch:
    folder = Path(scratch)
    (folder / "bin").mkdir()
    (folder / "bin/bukorval").symlink_to(program)
    listed = run("bukorval --help", folder).stdout.split("Subcommands:")[1].split("A first tour:")[0]
    commands = re.findall(r"^  (\S+)", listed, re.MULTILINE)
    wrong, used = [], set()
    for command in commands:
        options, _, text = run(f"bukorval {command} --help", folder).stdout.partition("\nExample:\n")
        # What options do stands in one column.
        wrong += [option for option in re.findall(r"^  -.*\S  .*", options, re.MULTILINE)
                  if re.match(r"  -.*?\S(  +)", option).end() != 36]
        text = re.sub(r"\\\n +", "", text)
        examples = re.findall(r"^  bukorval (.*?)(?:   +[^-].*)?$", text, re.MULTILINE)
        wrong += [] if examples else [f"{command} has no example"]
        for example in examples:
            reasons = {start for start in NOT_RUN if example.startswith(start)}
            used |= reasons
            if reasons:
                continue
            done = run(f"bukorval {example}", folder)
            if done.returncode != 0:
                wrong.append(f"bukorval {example}\n  {done.returncode}: {done.stderr.strip()}")
wrong += [f"No example begins with {start!r}" for start in NOT_RUN.keys() - used]
print("\n".join(wrong))
sys.exit(bool(wrong) or len(commands) < 30)
