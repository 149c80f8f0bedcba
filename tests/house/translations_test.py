#!/usr/bin/env python3
"""Fails on a text of the sources that a translation file lacks. usage: translations_test.py SOURCE-FOLDER LUPDATE"""
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


def main(root, lupdate):
    faults = [fault for name, folders in FILES.items() for fault in lacking(root, lupdate, name, folders)]
    print("\n".join(faults) or "every text is translated")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2]))
