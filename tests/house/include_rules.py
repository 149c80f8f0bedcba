#!/usr/bin/env python3
"""Fails on an include that crosses the house the wrong way. usage: include_rules.py SOURCE-FOLDER

Each folder lists the folders whose headers it may include besides its own; every include of the house is written from
the root of the tree. What a folder may not see by way of another is forbidden just the same, so the table is complete.
"""
import pathlib
import re
import sys

HOST = ["host/projectmodel", "host/languagecore", "host/components"]

MAY_INCLUDE = {
    "sdk": [],
    "protocol": [],
    "host/projectmodel": ["sdk", "protocol"],
    "host/languagecore": ["sdk", "protocol", "host/projectmodel"],
    "host/components": ["sdk", "protocol", "host/projectmodel", "host/languagecore"],
    "host/communication": ["sdk", "protocol"],
    "axisdata": ["sdk", *HOST],
    "pages": ["axisdata", "sdk", *HOST],
    "online": ["axisdata", "sdk", "protocol", *HOST, "host/communication"],
    "editor": ["pages", "online", "axisdata", "sdk", *HOST],
    "plugin": ["editor", "online", "axisdata", "sdk", *HOST],
    "resources": [],
    "workbench": ["sdk", "protocol", *HOST, "host/communication"],
    "controller": ["protocol"],
    "examples": ["sdk", *HOST],
}

# Of protocol, only the plain headers may reach code that is no end of the line.
PLAIN_PROTOCOL = {"protocol/AxisRefLayout.h", "protocol/DiagnosisCodes.h"}
KNOWS_MESSAGES = {"protocol", "host/communication", "controller"}

# The plug-in's own folders use Qt and the contract only.
PLUGIN_FOLDERS = {"axisdata", "pages", "online", "editor", "plugin"}
SYSTEM_HEADER = re.compile(r"^(grpc|google/|unistd\.h|sys/|pthread\.h|windows\.h|sqlite3\.h|dlfcn\.h|fcntl\.h)")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def folder_of(path, folders):
    return max((f for f in folders if path == f or path.startswith(f + "/")), key=len, default=None)


def faults_of(path, text):
    """The forbidden includes of one file, as texts. path is relative to the root of the tree."""
    folder = folder_of(path, MAY_INCLUDE)
    if folder is None:
        return
    allowed = {folder, *MAY_INCLUDE[folder]}
    for quote, target in INCLUDE.findall(text):
        if quote == "<":
            if folder in PLUGIN_FOLDERS and SYSTEM_HEADER.match(target):
                yield f"{path}: {target}: the plug-in reaches the system through Qt and the contract only"
            continue
        if target.startswith("ui_") or target.endswith(".moc"):
            continue
        owner = folder_of(target, MAY_INCLUDE)
        if owner is None:
            if "/" in target and not target.startswith(("tests/", "qwt")) and folder not in KNOWS_MESSAGES:
                yield f"{path}: {target}: no folder of the house"
            continue
        if owner not in allowed:
            yield f"{path}: {target}: {folder} may not know {owner}"
        elif owner == "protocol" and folder not in KNOWS_MESSAGES and target not in PLAIN_PROTOCOL:
            yield f"{path}: {target}: only plain headers of protocol leave the communication"


def main(root):
    faults = []
    count = 0
    for folder in MAY_INCLUDE:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                count += 1
                faults += faults_of(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"))
    print("\n".join(faults) or f"{count} files keep the rules")
    return 1 if faults or not count else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
