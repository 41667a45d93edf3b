#!/usr/bin/env python3
"""Finds what the program would say in English to an Italian: check_language.py PROGRAM SOURCE_DIR

The catalogue is read from its source. Every text that passes through it must stand there with the same arguments: the
texts of tr() and counted(), titles of columns and names of tables, and those that the tables below name. Then the help
of every command is read in both languages: a line of prose that is the same in both was forgotten."""
import re
import subprocess
import sys
from pathlib import Path

program, source = sys.argv[1], Path(sys.argv[2])
STRING = r'"(?:\\.|[^"\\])*"'
STRINGS = rf"(?:{STRING}\s*)+"


def joined(literals):
    return "".join(part[1:-1] for part in re.findall(STRING, literals))


def table(text, name):
    """The texts between a name and the end of its braces."""
    begin = text.index(name)
    return [part[1:-1] for part in re.findall(STRING, text[begin:text.index("};", begin)])]


def catalogue():
    text = (source / "language/Italian.cpp").read_text()
    pairs = re.findall(rf"\{{\s*({STRINGS}),\s*({STRINGS})\}}", text)
    return {joined(english): joined(italian) for english, italian in pairs}


def keys():
    for file in sorted([*source.glob("**/*.cpp"), *source.glob("**/*.h")]):
        if file.relative_to(source).parts[0] not in ("dati", "sheet", "report", "picture", "demo", "host"):
            continue
        text = file.read_text()
        found = [joined(m) for m in re.findall(rf"\b(?:tr|translated)\(\s*({STRINGS})", text)]
        for pair in re.findall(rf"\btr\([^\"();]*\?\s*({STRING})\s*:\s*({STRING})", text):
            found += [joined(one) for one in pair]
        for noun in re.findall(r'\bcounted\((?:[^"();]|\([^()]*\))*,\s*"([^"]+)"\)', text):
            found += [noun, noun + "s"]
        if file.parent.name == "commands":
            found += re.findall(r'\{"[A-Z0-9_]+",\s*"([^"]+)"(?=[,}])', text)
            found += re.findall(r'\.title = "([^"]+)"', text)
            found += re.findall(r'\.tables\.emplace_back\("([^"]+)"', text)
        if file.name == "Outcome.cpp":
            found += table(text, "kOfOthers[]")[1::2] + table(text, "kOfValues[]")[1::2]
        if file.name == "Titles.cpp":
            found += re.findall(r'Word\{"[^"]+", "([^"]+)"\}', text)
        if file.name == "Landing.cpp":
            found += table(text, "kTexts[]")
        if file.name == "CodeLists.cpp":
            found += re.findall(r'"([A-Z][^"]* \{\})"', text)
        if file.name == "CommandLine.cpp":
            found += table(text, "kLabels{") + table(text, "kLibraryTexts{")
        if file.name == "TypedNumber.cpp":
            found += table(text, "kNumberTexts{")
        if file.name == "FinanceFolder.cpp":
            found += re.findall(r'require\([^"]*"([^"]+)"', text)
        for key in found:
            # Flags and metavariables of options stand in braces too.
            if re.search(r"[a-z]{2}", key) and not re.fullmatch(r"[A-Z0-9_]+", key):
                yield file.relative_to(source), key


def help_of(language, *command):
    shown = subprocess.run([program, "--lang", language, *command, "--help"], capture_output=True, text=True, check=True)
    return shown.stdout.splitlines()


def is_prose(line):
    text = re.sub(r"^\s+(-\S+|[a-z-]+|[A-Z]+)(,\S+)?\s{2,}", "", re.sub(r"\{\S*", "", line))
    return italian.get(text.strip()) != text.strip() and not line.startswith("  bukorval") and len(re.findall(r"\b[a-z]{3,}\b(?![:}])", text)) > 3


italian, problems = catalogue(), []
for where, key in keys():
    if key not in italian:
        problems.append(f"{where}: no Italian for \"{key}\"")
for key, text in italian.items():
    if sorted(re.findall(r"\{\d?\}", key)) != sorted(re.findall(r"\{\d?\}", text)) and "{1}" not in text:
        problems.append(f"other arguments: \"{key}\"")

english = help_of("en")
listed = english[english.index("Subcommands:"):]
commands = [m[1] for line in listed[:listed.index("")] if (m := re.match(r"  ([a-z][a-z-]*) ", line))]
for command in [[], *([name] for name in commands)]:
    same = set(help_of("en", *command)) & set(help_of("it", *command))
    problems += [f"{' '.join(command) or 'bukorval'} --help: {line.strip()}" for line in sorted(same) if is_prose(line)]
if len(commands) < 20 or len(italian) < 300:
    problems.append("nothing to look at")
print("\n".join(problems))
sys.exit(1 if problems else 0)
