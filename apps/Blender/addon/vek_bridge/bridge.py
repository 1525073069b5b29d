"""The shared tree as this add-on sees it, and how work is handed back to the host."""

import os
import plistlib
import subprocess
import sys

from .vek_exchange import DEFAULT_ROOT, Tree, VekError

APP = "Blender"
EXTENSION = ".vek"
_NOTE = os.path.join(os.path.dirname(__file__), "Vek_Tree.txt")
_PATIENCE = 5.0  # seconds that a hand-back may take before it is left to itself


def tree():
    """The tree that the installer noted, or where trees are by themselves."""
    try:
        with open(_NOTE, encoding="utf-8", errors="surrogateescape") as note:
            root = note.readline().rstrip("\n")
    except OSError:
        root = ""
    return Tree(root or DEFAULT_ROOT)


def app_file(name):
    return tree().app_file(APP, name)


def hand_back():
    """Tells the host that objects wait for it: by the helper application of the hub where there is
    one, else by the HAND_BACK_COMMAND of this application's Vek_Config.txt. False when there is
    neither. VekError when it failed."""
    command = _helper() or _command()
    if not command:
        return False
    try:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        code = process.wait(_PATIENCE)
    except subprocess.TimeoutExpired:
        return True  # it runs
    except OSError as error:
        raise VekError(f"the program that hands them back does not start: {error.strerror}")
    if code:
        raise VekError(f"the program that hands them back failed with code {code}")
    return True


def _helper():
    bundle = tree().hub_folder + "/VekHubFromApp.app"
    if not os.path.isdir(bundle):
        return None
    if sys.platform == "darwin":
        return ["open", bundle]
    try:
        with open(bundle + "/Contents/Info.plist", "rb") as info:
            return [bundle + "/Contents/MacOS/" + plistlib.load(info)["CFBundleExecutable"]]
    except Exception:  # the reader of such lists has a dozen of its own
        raise VekError(f"this helper application is damaged: {bundle}")


def _command():
    command = tree().app_config(APP).find("HAND_BACK_COMMAND")
    return ["sh", "-c", command] if command else None
