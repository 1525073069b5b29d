"""There and back."""

import bmesh
import bpy
import numpy as np
from mathutils import Matrix

from .common import message, new_object, receive, scene, select, send


def there_and_back(_case):
    said = [receive()]
    return {"scene": scene(), "said": said + [send()]}


def only_receive(_case):
    return {"said": [receive()], "scene": scene()}


def only_send(_case):
    return {"said": [send()]}


def prism(_case):
    low = [(np.sin(i), np.cos(i), -1) for i in np.arange(6) * np.pi / 3]
    high = [(x, y, 1) for x, y, _ in low]
    sides = [((i + 1) % 6, i, 6 + i, 6 + (i + 1) % 6) for i in range(6)]
    obj = new_object("Prism", low + high, [tuple(range(6)), tuple(range(11, 5, -1)), *sides])
    uvs = obj.data.uv_layers.new().data
    for corner in obj.data.loops:
        uvs[corner.index].uv = corner.vertex_index / 100, corner.vertex_index / 7
    select(obj)
    return {"said": [send()]}


def corners_out_of_order(_case):
    """The first face has the last corners, as Blender before 4 allows it."""
    obj = new_object("Folded", [(0, 0, 0), (1, 0, 0), (0, 1, 0), (1, 1, 1)], [(0, 1, 2), (1, 3, 2)])
    uvs = obj.data.uv_layers.new().data
    obj.data.polygons.foreach_set("loop_start", [3, 0])
    for corner in obj.data.loops:
        uvs[corner.index].uv = corner.vertex_index / 100, corner.vertex_index / 7
    select(obj)
    return {"said": [send()]}


def array(_case):
    said = [receive()]
    for obj in bpy.context.selected_objects:
        obj.modifiers.new("Twice", "ARRAY").relative_offset_displace = (0, 0, 1.5)
    return {"said": said + [send()]}


def array_twice(case):
    """What was sent with a modifier comes from the host again."""
    said = array(case)["said"]
    obj = bpy.data.objects["Egg"]
    obj.modifiers.new("Solid", "COLLISION")
    said += [receive()]
    return {"said": said, "objects": len(bpy.data.objects),
            "shown": [[modifier.show_viewport, modifier.show_render]
                      for modifier in obj.modifiers], "scene": scene()}


def told_to_undo(case):
    """Each object gets the matrix that goes with its name."""
    said = [receive()]
    for name, matrix in case["matrices"].items():
        bpy.data.objects[name].matrix_world = Matrix(matrix)
    bpy.context.view_layer.update()
    return {"said": said + [send()]}


def mirrored(_case):
    said = [receive()]
    bpy.data.objects["Egg"].scale.x = -1
    bpy.context.view_layer.update()
    return {"said": said + [send()]}


def edit_mode(_case):
    said = [receive()]
    obj = bpy.context.view_layer.objects.active
    bpy.ops.object.mode_set(mode="EDIT")
    for vertex in bmesh.from_edit_mesh(obj.data).verts:
        vertex.co.z += 10
    return {"said": said + [send()]}


def modes(_case):
    """Sending while the user edits, sculpts or paints, and exporting to a file of no such kind."""
    said, after = [receive()], []
    for mode in ("EDIT", "SCULPT", "VERTEX_PAINT", "WEIGHT_PAINT", "TEXTURE_PAINT"):
        bpy.ops.object.mode_set(mode=mode)
        said.append(send())
        after.append(bpy.context.object.mode)
        bpy.ops.object.mode_set(mode="OBJECT")
    bpy.ops.object.mode_set(mode="EDIT")
    said.append(message(bpy.ops.vek.export_files, filepath="/x.obj"))
    after.append(bpy.context.object.mode)
    said.append(receive())
    after.append(bpy.context.object.mode)
    return {"said": said, "after": after}


def added(_case):
    said = [receive()]
    obj = new_object("Bär / 1.5 ", [(0, 0, 0), (1, 0, 0), (0, 1, 0)], [(0, 1, 2)])
    select(*bpy.context.scene.objects)
    return {"said": said + [send(), send()], "objects": [obj.name]}
