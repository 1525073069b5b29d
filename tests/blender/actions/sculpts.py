"""What was sculpted with a Multires modifier, whose shape hangs on the faces of the mesh."""

import bpy
import numpy as np
from vek_bridge import objects

from .common import host_changes, moved, positions_in_file, receive, seen_positions, select, send

FEWER = (1, 2)  # levels that are shown, of those that were sculpted


def sculpt(obj):
    """The shape of the finest level is set from another mesh, as a brush would."""
    select(obj)
    modifier = obj.modifiers.new("Multires", "MULTIRES")
    for _ in range(FEWER[1]):
        bpy.ops.object.multires_subdivide(modifier="Multires", mode="CATMULL_CLARK")
    modifier.levels = FEWER[1]
    bpy.context.view_layer.update()
    seen = obj.evaluated_get(bpy.context.evaluated_depsgraph_get())
    mesh = bpy.data.meshes.new_from_object(seen)
    for vertex in mesh.vertices:
        vertex.co.z += 0.3 * np.sin(7 * vertex.co.x + 5 * vertex.co.y)
    other = bpy.data.objects.new("Shape", mesh)
    bpy.context.collection.objects.link(other)
    bpy.context.view_layer.update()
    select(other, obj)
    bpy.ops.object.multires_reshape(modifier="Multires")
    bpy.data.objects.remove(other)
    bpy.context.view_layer.update()
    return modifier


def shape_of(obj):
    """The finest level, whether the object is shown or not."""
    obj.hide_set(False)
    modifier = obj.modifiers["Multires"]
    modifier.levels, modifier.show_viewport = FEWER[1], True
    bpy.context.view_layer.update()
    return seen_positions(obj)


def turn_faces(mesh):
    mesh.faces = mesh.faces.reshape(-1, 4)[::-1].ravel()


def sculpt_and_other_faces(_case):
    """The host sends the object with other faces than the sculpt hangs on. It has a vertex group,
    for whose sake vertices would stay else."""
    said = [receive()]
    obj = bpy.data.objects["Egg 0"]
    obj.vertex_groups.new(name="Top").add([1, 2], 0.5, "ADD")
    sculpt(obj)
    obj.location.x = 3
    bpy.context.view_layer.update()
    before = shape_of(obj)
    host_changes(change=turn_faces)
    said.append(receive())
    new, = bpy.context.selected_objects
    is_hidden = obj.hide_get()
    return {"said": said, "is hidden": is_hidden, "same shape": shape_of(obj) == before,
            "is new": new != obj, "its line": objects.line_of(obj), "seen": seen_positions(new),
            "wanted": positions_in_file("Egg 0")}


def sculpt_sent(_case):
    """At its first level: the faces that come back are others. At none, they are its own."""
    said, same = [receive()], []
    for name, level in (("Egg 0", FEWER[0]), ("Egg 1", 0)):
        obj = bpy.data.objects[name]
        modifier = sculpt(obj)
        before = shape_of(obj)
        modifier.levels = level
        bpy.context.view_layer.update()
        select(obj)
        said.append(send())
        host_changes()
        said.append(receive())
        is_shown = obj.visible_get() and modifier.show_viewport
        same.append([is_shown, shape_of(obj) == before])
    return {"said": said, "same": same, "objects": len(bpy.data.objects)}


def sculpt_moved(_case):
    """The host has moved the mesh, and its faces are the same: the sculpt goes along."""
    said = [receive()]
    obj = bpy.data.objects["Egg 0"]
    sculpt(obj)
    before = np.array(shape_of(obj))
    host_changes(change=moved((0, 0, 4)))
    said.append(receive())
    way = np.array(shape_of(obj)) - before
    return {"said": said, "way": [way.min(axis=0).tolist(), way.max(axis=0).tolist()]}
