#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the includes of the program against the floors drawn in docs/architecture.md and against what the libraries
link: a file includes its own folder and folders further down only, and only those that its library links."""
import re, subprocess, sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
GROUND = ("tests", "tools", "bench", "fuzz") # they may use everything


def read_floors():
    """The number of each folder's floor, 0 the highest: one line of the drawing a floor, folders in its first column."""
    page = (ROOT / "docs/architecture.md").read_text()
    drawing = re.search(r"## Floors\n.*?```\n(.*?)```", page, re.S)
    floors = {}
    for number, line in enumerate(drawing[1].strip("\n").split("\n")):
        for folder in re.split(r"\s{3,}", line.strip())[0].split("  "):
            floors[folder.strip()] = number
    return floors


def read_libraries():
    """The folder of each library, and what it links, by name."""
    folders, links = {}, {}
    text = (ROOT / "CMakeLists.txt").read_text()
    for name, folder, rest in re.findall(r"^gaugewell_part\((\w+)\s+([\w/]+)\s+([^)]*)\)", text, re.M):
        folders[name], links[name] = folder, rest.split()
    for path in (ROOT / "platform").glob("*/CMakeLists.txt"):
        name = re.search(r"gaugewell_platform_library\((\w+)\)", path.read_text())[1]
        folders[name] = f"platform/{path.parent.name}"
        links[name] = " ".join(re.findall(r"target_link_libraries\(\w+([^)]*)\)", path.read_text())).split()
    return folders, links


def reachable(name, links):
    found, waiting = set(), [name]
    while waiting:
        for other in links.get(waiting.pop(), []):
            if other not in found:
                found.add(other)
                waiting.append(other)
    return found


floors = read_floors()
folders, links = read_libraries()
allowed = {folder: {folders[name] for name in reachable(library, links) if name in folders}
           for library, folder in folders.items()}
faults = [f"{folder}/ is a library and stands on no floor." for folder in allowed if folder not in floors]
faults += [f"{folder}/ stands on a floor and is no library." for folder in floors if folder not in allowed]
faults += [f"{folder}/ works without a window, yet its library links Qt Widgets." for library, folder in folders.items()
           if "/" in folder and not folder.startswith(("platform/", "core/base")) and "Qt6::Widgets" in reachable(library, links)]
names = subprocess.run(["git", "-C", ROOT, "ls-files", "*.cpp", "*.h"], capture_output=True, text=True, check=True)
for name in names.stdout.split():
    folder = str(Path(name).parent)
    if name.split("/")[0] in GROUND or folder == ".":
        continue
    for include in re.findall(r'^#include "([^"]+)"', (ROOT / name).read_text(), re.M):
        target = str(Path(include).parent)
        if target in (".", folder): # a generated header, or its own folder
            continue
        if target not in floors:
            faults.append(f"{name} includes {include}, whose folder stands on no floor.")
        elif floors[target] <= floors.get(folder, -1):
            faults.append(f"{name} includes {include}, which is not further down.")
        elif target not in allowed[folder]:
            faults.append(f"{name} includes {include}, which its library does not link.")
print("\n".join(faults))
sys.exit(1 if faults else 0)
