#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the includes of the program against the layers drawn in docs/architecture.md and the link lists of the libraries:
a file may include files of its own folder, and of folders in lower layers that its library links."""
import re, subprocess, sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
UNCHECKED = ("tests", "tools", "bench", "fuzz") # may include everything


def read_layers():
    """The layer of each folder, 0 the highest: one line of the drawing per layer, its folders in the first column."""
    page = (ROOT / "docs/architecture.md").read_text()
    drawing = re.search(r"## (?:Floors|Layers)\n.*?```\n(.*?)```", page, re.S)
    layers = {}
    for number, line in enumerate(drawing[1].strip("\n").split("\n")):
        for folder in re.split(r"\s{3,}", line.strip())[0].split("  "):
            layers[folder.strip()] = number
    return layers


def read_libraries():
    """The folder and the link list of each library, by its name."""
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


layers = read_layers()
folders, links = read_libraries()
allowed = {folder: {folders[name] for name in reachable(library, links) if name in folders}
           for library, folder in folders.items()}
faults = [f"{folder}/ is a library without a layer." for folder in allowed if folder not in layers]
faults += [f"{folder}/ has a layer and is no library." for folder in layers if folder not in allowed]
faults += [f"{folder}/ must not use windows, but its library links Qt Widgets." for library, folder in folders.items()
           if "/" in folder and not folder.startswith(("platform/", "core/base")) and "Qt6::Widgets" in reachable(library, links)]
names = subprocess.run(["git", "-C", ROOT, "ls-files", "*.cpp", "*.h"], capture_output=True, text=True, check=True)
for name in names.stdout.split():
    folder = str(Path(name).parent)
    if name.split("/")[0] in UNCHECKED or folder == ".":
        continue
    for include in re.findall(r'^#include "([^"]+)"', (ROOT / name).read_text(), re.M):
        target = str(Path(include).parent)
        if target in (".", folder): # a generated header, or its own folder
            continue
        if target not in layers:
            faults.append(f"{name} includes {include}, whose folder has no layer.")
        elif layers[target] <= layers.get(folder, -1):
            faults.append(f"{name} includes {include}, which is not in a lower layer.")
        elif target not in allowed[folder]:
            faults.append(f"{name} includes {include}, which its library does not link.")
print("\n".join(faults))
sys.exit(1 if faults else 0)
