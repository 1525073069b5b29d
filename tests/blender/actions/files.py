"""The File menu, and files and folders with odd names."""

import os
import shutil

import bpy
from vek_bridge import bridge, interface, paths, session

from .common import changed, grid, message, moved, new_object, receive, scene, select, send


def file_menu(case):
    """Import, change, export; sending afterwards must not touch what was imported."""
    files = [{"name": name} for name in case["names"]]
    said = [message(bpy.ops.vek.import_files, directory=case["folder"], files=files)]
    shown = scene()
    said.append(message(bpy.ops.vek.export_files, filepath=case["out"] + "/any.vek"))
    select(bpy.context.selected_objects[0])
    said.append(message(bpy.ops.vek.export_files, filepath=case["out"] + "/One.vek"))
    said.append(send())
    said.append(message(bpy.ops.vek.import_files, filepath=case["folder"] + "/x.obj"))
    return {"said": said, "scene": shown}


def odd_paths(case):
    """Letter case and colons of a path stay as the user chose them."""
    folder = case["out"] + "/a:b"
    os.mkdir(folder)
    os.rename(case["folder"] + "/A.vek", folder + "/x:y.Vek")
    said = [message(bpy.ops.vek.import_files, filepath=folder + "/x:y.Vek")]
    said.append(message(bpy.ops.vek.export_files, filepath=folder + "/One.VEK"))
    select(new_object("C:1", *grid(3)), bpy.context.scene.objects[0])
    said.append(message(bpy.ops.vek.export_files, filepath=folder + "/any.vek"))
    return {"said": said, "files": sorted(os.listdir(folder)), "scene": scene()}


def odd_project(case):
    """The project folder's name is not UTF-8, and the panel shows it all the same."""
    folder = case["root"] + "/Gr\udcfcn"
    os.mkdir(folder)
    bridge.tree().write_project_path(folder)
    session._show_project()
    shown = bpy.context.window_manager.vek_project
    new_object("New", *grid(3))
    select(bpy.data.objects["New"])
    said = [send()]
    os.remove(folder + "/New.vek")
    return {"said": said + [receive()], "shown": shown}


def paragraph(_case):
    """As the panel shows it, where all letters have one width; and where there is no room."""
    return {"said": [], "narrow": interface.lines_of("one", -5, len), "lines": [
        interface.lines_of(text, 10, len) for text in
        ("", "one two three", "one two th ree", "/a/path/of/many/letters.vek is gone.")]}


def long_name(case):
    """As long as a name can be with the extension."""
    said = [receive(), send()]
    return {"said": said, "files": os.listdir(case["folder"])}


def linked_file(case):
    """The exchange file is a link to one in another folder."""
    said = [receive()]
    path, real = case["folder"] + "/Egg 0.vek", case["root"] + "/real.vek"
    os.rename(path, real)
    os.symlink(real, path)
    os.chmod(real, 0o640)
    before = open(real, "rb").read()
    bpy.data.objects["Egg 0"].location.x = 1
    said.append(send())
    return {"said": said, "link": os.readlink(path), "mode": os.stat(real).st_mode & 0o777,
            "written": open(real, "rb").read() != before}


def missing_project(case):
    """Its folder went away."""
    bridge.tree().write_project_path(case["root"] + "/gone")
    new_object("New", *grid(3))
    select(bpy.data.objects["New"])
    return {"said": [send()]}


def empty_list(_case):
    """There is a list, but nothing in it."""
    with open(bridge.tree().object_list_file, "w") as file:
        file.write(" \n\n")
    return {"said": [receive()]}


def taken_over(_case):
    """The host takes over what was sent, and turns it; then it sends one of the two again."""
    said = [receive(), send(), receive()]
    before = scene()
    lines = bridge.tree().object_list()
    for line in lines:
        changed(line, moved((0, 0, 9)))
    said.append(receive())
    is_same = scene() == before
    bridge.tree().write_object_list(lines[:1])
    return {"said": said + [receive()], "same": is_same}


def volume_in_the_project_path(case):
    """As an older Mac writes it, and with a slash at its end; a file of the host's is there."""
    bridge.tree().write_object_list([])
    bridge.tree().write_project_path("Macintosh HD:" + case["folder"] + "/")
    before = open(case["folder"] + "/Egg 0.vek", "rb").read()
    select(new_object("Egg 0", *grid(3)))
    said = [send()]
    bridge.tree().write_object_list([case["folder"] + "/Egg 0_2"])
    said.append(receive())
    return {"said": said, "same": open(case["folder"] + "/Egg 0.vek", "rb").read() == before,
            "files": sorted(os.listdir(case["folder"])), "objects": len(bpy.data.objects)}


def volume_in_a_line(_case):
    """The host names the same file in another way."""
    said = [receive()]
    line, = bridge.tree().object_list()
    for other in ("Macintosh HD:" + line, line.replace("/Egg", "//Egg"),
                  line.replace("/Egg", "/../Default/Egg")):
        bridge.tree().write_object_list([other])
        said.append(receive())
    return {"said": said, "objects": len(bpy.data.objects)}


def letter_case(case):
    """On a disk where letter case and the way an accent is written make no difference."""
    real, paths._tells_letter_case = paths._tells_letter_case, lambda folder: False
    try:
        os.rename(case["folder"] + "/Egg 0.vek", case["folder"] + "/\u00c4gg.vek")
        bridge.tree().write_object_list([case["folder"] + "/\u00c4gg"])
        said = [receive()]
        shutil.copy(case["folder"] + "/\u00c4gg.vek", case["folder"] + "/a\u0308GG.vek")
        bridge.tree().write_object_list([case["folder"] + "/a\u0308GG"])
        return {"said": said + [receive()], "objects": len(bpy.data.objects)}
    finally:
        paths._tells_letter_case = real


def letter_case_told(case):
    """On this disk they do, and these are two objects; in a folder without letters two more."""
    shutil.copy(case["folder"] + "/Egg 0.vek", case["folder"] + "/EGG 0.vek")
    bridge.tree().add_object(case["folder"] + "/EGG 0")
    os.mkdir(case["folder"] + "/2024")
    for name in ("/2024/cup", "/2024/CUP"):
        shutil.copy(case["folder"] + "/Egg 0.vek", case["folder"] + name + ".vek")
        bridge.tree().add_object(case["folder"] + name)
    said = [receive()]
    shutil.rmtree(case["folder"] + "/2024")
    return {"said": said, "objects": len(bpy.data.objects)}


def not_received(case):
    """The host sends objects, one of them anew, and the user sends before receiving them."""
    said = [receive()]
    first, second = bridge.tree().object_list()
    changed(first, moved((0, 0, 9)))
    bridge.tree().write_object_list([first, second])
    before = open(first + ".vek", "rb").read()
    said.append(send())
    is_same = open(first + ".vek", "rb").read() == before
    said += [send(), send()]
    bridge.tree().write_object_list([second])  # the host has taken the first from the list
    said.append(send())
    changed(second, moved((0, 0, 9)))
    bridge.tree().write_object_list([second])
    return {"said": said + [receive(), send()], "same": is_same}
