"""Steps of the undo history."""

import os

import bpy
from vek_bridge import bridge

from .common import grid, new_object, receive, scene, select, send


def undone(_case):
    bpy.ops.ed.undo_push(message="before")
    said = [receive()]
    bpy.ops.ed.undo_push(message="after")
    counts = [len(bpy.data.objects)]
    bpy.ops.ed.undo()
    counts.append(len(bpy.data.objects))
    bpy.ops.ed.redo()
    counts.append(len(bpy.data.objects))
    return {"said": said, "counts": counts, "scene": scene()}


def sent_undone_sent(case):
    """A new object and a copy are sent, that is undone, sent again, undone with the change before
    it, and sent again."""
    said = [receive()]
    bpy.ops.ed.undo_push(message="received")
    obj = new_object("New", *grid(3))
    copy = bpy.data.objects["Egg 0"].copy()
    bpy.context.collection.objects.link(copy)
    bpy.ops.ed.undo_push(message="added")
    obj.location.x = 1
    bpy.ops.ed.undo_push(message="moved")

    def send_both():
        select(bpy.data.objects["New"], bpy.data.objects["Egg 0.001"])
        said.append(send())
        bpy.ops.ed.undo_push(message="sent")

    send_both()
    bpy.ops.ed.undo()
    send_both()
    for _ in range(2):
        bpy.ops.ed.undo()
    place = bpy.data.objects["New"].location.x
    send_both()
    return {"said": said, "files": sorted(os.listdir(case["folder"])), "place": place}


def sent_modifier_undone(case):
    """What comes back has the modifier in it that was sent, though sending it was undone."""
    said = [receive()]
    egg = bpy.data.objects["Egg 0"]
    egg.modifiers.new("Array", "ARRAY")
    push("array")
    select(egg)
    said.append(send())
    push("sent")
    bpy.ops.ed.undo()
    said.append(receive_anew())
    return {"said": said, "shown": bpy.data.objects["Egg 0"].modifiers["Array"].show_viewport}


def receive_anew():
    """The host has taken over what was sent, and sends it again."""
    lines = bridge.tree().object_list()
    os.utime(lines[0] + ".vek", (1, 1))
    bridge.tree().write_object_list([])
    bridge.tree().write_object_list(lines)
    return receive()


def push(message):
    bpy.ops.ed.undo_push(message=message)


def own_and_undone(name):
    """The user's own object of that name is moved, and that is undone and done again."""
    new_object(name, *grid(3))
    push("added")
    bpy.data.objects[name].location.x = 1
    push("moved")
    bpy.ops.ed.undo()
    bpy.ops.ed.redo()
    select(bpy.data.objects[name])


def files_are(folder):
    return {name: open(folder + "/" + name, "rb").read().hex() for name in os.listdir(folder)}


def own_after_undo(case):
    """What was received is undone, and the user has an object of the same name."""
    push("begun")
    said = [receive()]
    push("received")
    before = files_are(case["folder"])
    bpy.ops.ed.undo()
    own_and_undone("Egg 0")
    said.append(send())
    after = files_are(case["folder"])
    return {"said": said, "lost": [name for name in before if after[name] != before[name]]}


def own_in_another_scene_file(case):
    """As before, and another scene was opened between."""
    before = files_are(case["folder"])
    push("begun")
    said = [receive()]
    push("received")
    bpy.ops.ed.undo()
    bpy.ops.wm.read_homefile(use_empty=True)
    push("opened")
    own_and_undone("Egg 0")
    said.append(send())
    after = files_are(case["folder"])
    return {"said": said, "lost": [name for name in before if after[name] != before[name]]}


def own_after_deleting(case):
    """The object that was received is deleted for one of the user's own, there and back in the
    history by many steps."""
    before = files_are(case["folder"])
    push("begun")
    said = [receive()]
    push("received")
    bpy.data.objects.remove(bpy.data.objects["Egg 0"])
    push("deleted")
    own_and_undone("Egg 0")
    for step in (bpy.ops.ed.undo, bpy.ops.ed.redo):
        for _ in range(4):
            step()
    bpy.ops.ed.undo_history(item=0)
    bpy.ops.ed.undo_history(item=4)
    select(bpy.data.objects["Egg 0"])
    said.append(send())
    after = files_are(case["folder"])
    return {"said": said, "lost": [name for name in before if after[name] != before[name]]}


def renamed_and_undone(case):
    """An object is sent under a name that undo takes back, and sent again."""
    push("begun")
    new_object("New", *grid(3))
    push("added")
    bpy.data.objects["New"].name = "Other"
    push("renamed")
    select(bpy.data.objects["Other"])
    said = [send()]
    push("sent")
    for _ in range(2):
        bpy.ops.ed.undo()
    select(bpy.data.objects["New"])
    said.append(send())
    return {"said": said, "files": os.listdir(case["folder"])}
