#!/usr/bin/env python3
"""Fails on a text of the sources that a translation file lacks, and on one that has to read the same in two contexts
but does not. usage: translations_test.py SOURCE-FOLDER LUPDATE
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

# Each translation file with the folders whose texts it carries.
FILES = {
    "plugin/translations/motioncontrol.axis.plugin_zh_CN.ts": ["plugin", "editor", "pages", "online", "axisdata"],
    "workbench/translations/kestrun_zh_CN.ts": [
        "workbench", "host/projectmodel", "host/languagecore", "host/components", "host/communication"],
}

# One class makes these tabs and the other finds them again by their titles.
SAME_IN = ("MotionControlAxisEditor", "BasicSetWidget")
SAME_TITLES = ["document setting", "origin return setting", "online debug setting"]
SAME_FILE = "plugin/translations/motioncontrol.axis.plugin_zh_CN.ts"


def lacking(root, lupdate, name, folders):
    """Context and text of what the sources hold and the file does not translate."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "copy.ts"
        shutil.copy(root / name, copy)
        subprocess.run(
            [lupdate, "-silent", "-no-obsolete", "-locations", "none", "-recursive",
             *[str(root / f) for f in folders if (root / f).is_dir()], "-ts", str(copy)],
            check=True, stderr=subprocess.DEVNULL)
        for context in ElementTree.parse(copy).getroot().findall("context"):
            for message in context.findall("message"):
                translation = message.find("translation")
                if translation.get("type") == "unfinished" or not (translation.text or translation.findall("numerusform")):
                    yield f"{name}: {context.findtext('name')}: {message.findtext('source')!r}"


def differing(root):
    """The titles that are not the same, or not there, in both contexts."""
    contexts = {context.findtext("name"): {message.findtext("source"): message.findtext("translation")
                                           for message in context.findall("message")}
                for context in ElementTree.parse(root / SAME_FILE).getroot().findall("context")}
    for title in SAME_TITLES:
        made, sought = (contexts.get(context, {}).get(title) for context in SAME_IN)
        if not made or made != sought:
            yield f"{SAME_FILE}: {title!r}: {made!r} in {SAME_IN[0]}, {sought!r} in {SAME_IN[1]}"


def main(root, lupdate):
    faults = [fault for name, folders in FILES.items() for fault in lacking(root, lupdate, name, folders)]
    faults += differing(root)
    print("\n".join(faults) or "every text is translated, and titles agree")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2]))
