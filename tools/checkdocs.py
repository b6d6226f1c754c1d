#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks that every file, class and name in backticks in docs/architecture.md and docs/decisions.md exists."""
import re, subprocess, sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FILES = subprocess.run(["git", "-C", ROOT, "ls-files"], capture_output=True, text=True, check=True).stdout.split("\n")
CODE = "\n".join((ROOT / name).read_text(errors="replace") for name in FILES
                 if name.endswith((".h", ".cpp", ".sql", ".txt", ".sh", ".py")) and name != "tools/checkdocs.py")
PAGES = ("docs/architecture.md", "docs/decisions.md")
STEMS = {Path(name).stem for name in FILES} | {Path(name).name for name in FILES}


def is_there(name, folder):
    name = name.strip("()")
    if "/" in name:
        return (ROOT / name).exists()
    if folder and any((ROOT / folder).glob(name + "*")):
        return True
    return name in STEMS or re.search(rf"(?<!\w){re.escape(name)}(?!\w)", CODE) is not None


missing = []
for line in "".join((ROOT / page).read_text() for page in PAGES).split("\n"):
    folder = re.match(r"\| `([^`]+/)` \|", line)
    for name in re.findall(r"`([^`]+)`", line):
        if name.startswith("-D"):
            name = name[2:].split("=")[0]
        if not name.startswith("frmX") and not is_there(name, folder and folder[1]): # frmX stands for any form
            missing.append(name)
print("\n".join("The docs name something that does not exist: " + name for name in missing))
sys.exit(1 if missing else 0)
