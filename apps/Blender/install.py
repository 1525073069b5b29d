"""Run in the user's Blender by init.sh: puts the add-on where Blender looks for it and
switches it on.

    blender -b --python install.py -- FOLDER_OF_THE_ADD-ON TREE

Says why it failed in a line that begins with "Not installed: ".
"""

import os
import shutil
import sys

import bpy


def install(source, tree):
    name = os.path.basename(source)
    try:
        addons = bpy.utils.user_resource("SCRIPTS", path="addons", create=True)
        if not addons:
            raise OSError("no folder for add-ons")
        put_in_place(source, os.path.join(addons, name), tree)
    except OSError:
        wanted = bpy.utils.user_resource("SCRIPTS", path="addons")
        sys.exit(f"Not installed: Blender's folder for add-ons cannot be written: {wanted}")
    bpy.utils.refresh_script_paths()
    if bpy.ops.preferences.addon_enable(module=name) != {"FINISHED"}:
        sys.exit("Not installed: Blender does not accept the add-on; install it again.")
    try:
        bpy.ops.wm.save_userpref()
    except RuntimeError:
        config = bpy.utils.user_resource("CONFIG")
        sys.exit(f"Not installed: Blender's preferences cannot be saved: {config}")


def put_in_place(source, target, tree):
    """Copies beside the old one first, so that a full disk leaves that in place."""
    fresh = target + ".new"
    shutil.rmtree(fresh, ignore_errors=True)
    shutil.copytree(source, fresh, ignore=shutil.ignore_patterns("__pycache__"))
    with open(os.path.join(fresh, "Vek_Tree.txt"), "w", encoding="utf-8",
              errors="surrogateescape") as note:
        note.write(tree + "\n")
    if os.path.islink(target):
        os.unlink(target)
    elif os.path.isdir(target):
        shutil.rmtree(target)
    os.rename(fresh, target)


install(*sys.argv[sys.argv.index("--") + 1:])
