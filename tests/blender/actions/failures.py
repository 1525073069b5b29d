"""Whatever goes wrong."""

import os

import bpy
from vek_bridge import bridge, mesh_in, mesh_out, receiving, sending

from .common import grid, new_object, receive, scene, select, send


def stopped(_case):
    """As the escape key does it, after the first of three."""
    lines = receiving.lines_of_the_list()
    work = receiving.Receiving(bpy.context, lines, from_the_host=True)
    work.step()
    work.stop("you stopped it")
    said = [work.outcome()[1], receive()]
    shown = scene()
    work = sending.Sending(bpy.context, bpy.context.selected_objects, lines, to_the_host=True)
    work.step()
    work.stop("you stopped it")
    return {"said": said + [work.outcome()[1]], "scene": shown}


def read_only(case):
    """The folder may not be written any more when Blender sends."""
    said = [receive()]
    os.chmod(case["folder"], 0o555)
    said.append(send())
    os.chmod(case["folder"], 0o755)
    return {"said": said + [send()], "scene": scene()}


def in_the_way(case):
    """A folder takes the place of the second of three files when all are written already."""
    said = [receive()]
    path = case["folder"] + "/Egg 1.vek"
    lines = bridge.tree().object_list()
    work = sending.Sending(bpy.context, bpy.context.selected_objects, lines, to_the_host=True)
    while not work.is_done:
        work.step()
    os.remove(path)
    os.mkdir(path)
    said += [work.outcome()[1], send()]
    os.rmdir(path)
    return {"said": said + [send()]}


def not_a_number(_case):
    """A vertex is nowhere, and later further away than a number of the file can be."""
    said = [receive()]
    egg = bpy.data.objects["Egg 0"]
    egg.data.vertices[3].co.y = float("nan")
    said.append(send())
    egg.data.vertices[3].co.y = 1e38
    egg.scale.y = 1e10
    bpy.context.view_layer.update()
    return {"said": said + [send()]}


def read_only_hub(case):
    said = [receive()]
    hub = case["root"] + "/VekHub"
    os.chmod(hub + "/Vek_ObjectList.txt", 0o444)
    os.chmod(hub, 0o555)
    said.append(send())
    os.chmod(hub, 0o755)
    return {"said": said}


def elsewhere(_case):
    new_object("Grid", *grid(60))
    select(*bpy.context.scene.objects)
    return {"said": [send()], "scene": scene()}


def surprise(case):
    """A step fails as nobody foresaw: sending the second of three, then receiving it."""
    said = [receive()]

    def failing(function):
        def second(*words, **named):
            second.calls += 1
            if second.calls == 2:
                raise RuntimeError("No reason.")
            return function(*words, **named)
        second.calls = 0
        return second

    for module, name, act in ((mesh_out, "Taken", send), (mesh_in, "Given", receive)):
        real = getattr(module, name)
        setattr(module, name, failing(real))
        said.append(act())
        setattr(module, name, real)
    return {"said": said, "files": sorted(os.listdir(case["folder"]))}
