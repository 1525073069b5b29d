"""Runs in Blender, without a window: every case of the suite in a scene of its own.

    blender -b --addons vek_bridge --python in_blender.py -- CASES.json RESULTS.json
"""

import ctypes
import json
import os
import sys
import traceback

import bpy
from vek_bridge import bridge
from vek_bridge.vek_exchange import Tree

sys.path.insert(0, os.path.dirname(__file__))
from actions import copies, details, failures, files, objects, places, round_trip  # noqa: E402
from actions import sculpts, undo  # noqa: E402

ACTIONS = {}
for module in (copies, details, failures, files, objects, places, round_trip, sculpts,
               undo):
    ACTIONS.update(vars(module))


def obey_permissions():
    """From here on they count for root too."""
    ctypes.CDLL(None).capset((ctypes.c_uint32 * 2)(0x20080522, 0), (ctypes.c_uint32 * 6)())


def run(case):
    bpy.ops.wm.read_homefile(use_empty=True)
    bridge.tree = lambda: Tree(case["root"])
    try:
        return ACTIONS[case["action"]](case)
    except Exception:
        return {"failed": traceback.format_exc(), "said": []}


cases, results = sys.argv[sys.argv.index("--") + 1:]
obey_permissions()
with open(cases, encoding="utf-8") as file:
    done = {name: run(case) for name, case in json.load(file).items()}
with open(results, "w", encoding="utf-8") as file:
    json.dump(done, file)
