"""Steps of the undo history."""

import os

import bpy

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
