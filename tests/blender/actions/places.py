"""Objects that something else moves."""

import math

import bpy
from mathutils import Matrix

from .common import (host_changes, matrices, moved, positions, positions_in_file, receive,
                     seen_positions, select, send)

HELD = ("Egg 0", "Egg 1", "Egg 2", "Egg 3")
SKEWED = Matrix.Rotation(1, 4, "X") @ Matrix.Diagonal((1, -2, 0.3, 1)) @ Matrix.Rotation(2, 4, "Z")


def arrange():
    """A child under a skewed parent, a copy of another's place, one that is animated, one that is
    mirrored and has a child of its own."""
    parent = bpy.data.objects.new("Parent", None)
    parent.matrix_world = Matrix.Translation((5, -3, 2)) @ Matrix.Diagonal((3, 0.5, 1, 1))
    child = bpy.data.objects.new("Child", None)
    for obj in (parent, child):
        bpy.context.collection.objects.link(obj)
    eggs = [bpy.data.objects[name] for name in HELD]
    eggs[0].parent = parent
    eggs[0].rotation_euler = (0.3, 0.2, 0.1)
    eggs[1].constraints.new("COPY_TRANSFORMS").target = parent
    eggs[2].location = (1, 2, 3)
    eggs[2].keyframe_insert("location", frame=1)
    eggs[2].rotation_euler.z = math.radians(30)
    eggs[3].matrix_world = SKEWED
    child.parent, child.location = eggs[3], (1, 1, 1)


def held(_case):
    said = [receive()]
    arrange()
    bpy.context.view_layer.update()
    said.append(send())
    before, shapes = matrices(), [positions(bpy.data.objects[name]) for name in HELD]
    host_changes()
    said.append(receive())
    unchanged = [positions(bpy.data.objects[name]) for name in HELD]
    host_changes(change=moved((10, 0, 0.5)))
    said.append(receive())
    seen = {name: seen_positions(bpy.data.objects[name]) for name in HELD}
    return {"said": said, "same shapes": unchanged == shapes, "same places": before == matrices(),
            "seen": seen, "wanted": {name: positions_in_file(name) for name in HELD},
            "settings": [bpy.data.objects["Egg 0"].parent.name,
                         bpy.data.objects["Egg 1"].constraints[0].type,
                         bpy.data.objects["Egg 2"].animation_data.action.fcurves[0].data_path]}


def other_scene(_case):
    """One of the two objects goes to another scene, and the host sends both again."""
    said = [receive()]
    there = bpy.data.scenes.new("There")
    egg = bpy.data.objects["Egg 0"]
    bpy.context.scene.collection.objects.unlink(egg)
    there.collection.objects.link(egg)
    bpy.context.view_layer.update()
    before = positions(egg)
    host_changes(change=moved((0, 0, 4)))
    said.append(receive())
    return {"said": said, "objects": len(bpy.data.objects),
            "lifted": positions(egg)[0][2] - before[0][2]}


def hanging(_case):
    """Each of the objects hangs on the mesh of the one before it: by a vertex, by a vertex group,
    and by an empty that does."""
    said = [receive()]
    eggs = [bpy.data.objects["Egg %d" % number] for number in range(4)]
    eggs[1].parent, eggs[1].parent_type, eggs[1].parent_vertices = eggs[0], "VERTEX", (5, 5, 5)
    eggs[1].vertex_groups.new(name="Top").add([5], 1, "ADD")
    constraint = eggs[2].constraints.new("COPY_LOCATION")
    constraint.target, constraint.subtarget = eggs[1], "Top"
    between = bpy.data.objects.new("Between", None)
    bpy.context.collection.objects.link(between)
    between.parent, between.parent_type, between.parent_vertices = eggs[2], "VERTEX", (1, 1, 1)
    eggs[3].parent = between
    bpy.context.view_layer.update()
    said.append(send())
    host_changes(change=moved((0, 0, 10)))
    return {"said": said + [receive()], **seen_and_wanted(eggs)}


def seen_and_wanted(eggs):
    bpy.context.view_layer.update()
    return {"seen": {egg.name: seen_positions(egg) for egg in eggs},
            "wanted": {egg.name: positions_in_file(egg.name) for egg in eggs}}


def hidden_and_held(_case):
    """Objects that are hidden in all views, by a constraint somewhere else or on a bone."""
    said = [receive()]
    eggs = [bpy.data.objects["Egg %d" % number] for number in range(2)]
    target = bpy.data.objects.new("Target", None)
    target.location = (7, 0, 0)
    bpy.context.collection.objects.link(target)
    eggs[0].constraints.new("COPY_LOCATION").target = target
    bones = bpy.data.objects.new("Bones", bpy.data.armatures.new("Bones"))
    bpy.context.collection.objects.link(bones)
    select(bones)
    bpy.ops.object.mode_set(mode="EDIT")
    bpy.context.object.data.edit_bones.new("Bone").tail = (0, 0, 3)
    bpy.ops.object.mode_set(mode="OBJECT")
    eggs[1].parent, eggs[1].parent_type, eggs[1].parent_bone = bones, "BONE", "Bone"
    bpy.context.view_layer.update()
    select(*eggs)
    said.append(send())
    for egg in eggs:
        egg.hide_viewport = True
    for holder in (target, bones):
        holder.location.y = 3
    bpy.context.view_layer.update()
    host_changes(change=moved((0, 0, 1)))
    said.append(receive())
    is_hidden = [egg.hide_viewport for egg in eggs]
    for egg in eggs:
        egg.hide_viewport = False
    return {"said": said, "hidden": is_hidden, "scenes": len(bpy.data.scenes),
            **seen_and_wanted(eggs)}


def another_frame(_case):
    """Sent at one point of an animation, and received at another."""
    said = [receive()]
    egg, scene = bpy.data.objects["Egg 0"], bpy.context.scene
    for frame, place in ((1, 0), (50, 100)):
        egg.location.x = place
        egg.keyframe_insert("location", frame=frame)
    scene.frame_set(1)
    before = positions(egg)
    said.append(send())
    scene.frame_set(50)
    host_changes()
    said.append(receive())
    return {"said": said, "same": positions(egg) == before}


def scaled_to_nothing(_case):
    said = [receive()]
    egg = bpy.data.objects["Egg 0"]
    before = positions(egg)
    egg.scale.z = 0
    host_changes()
    said.append(receive())
    return {"said": said, "same": positions(egg) == before}


def hidden(_case):
    """The objects are hidden, each in another way, and moved then, below a parent that is too."""
    said = [receive()]
    eggs = [bpy.data.objects["Egg %d" % number] for number in range(3)]
    closed = bpy.data.collections.new("Closed")
    bpy.context.scene.collection.children.link(closed)
    for egg in list(bpy.context.collection.objects):
        egg.select_set(False)
    bpy.context.collection.objects.unlink(eggs[2])
    closed.objects.link(eggs[2])
    eggs[2].parent = eggs[1]
    eggs[2].matrix_parent_inverse = Matrix.Translation((1, 2, 3))
    bpy.context.view_layer.update()
    eggs[0].hide_set(True)
    eggs[1].hide_viewport = True
    bpy.context.view_layer.layer_collection.children["Closed"].exclude = True
    for egg in eggs:
        egg.location.x = 7
    said.append(send())
    host_changes(change=moved((0, 0, 1)))
    said.append(receive())
    wanted = {egg.name: positions_in_file(egg.name) for egg in eggs}
    is_hidden = [not egg.visible_get() for egg in eggs]
    eggs[0].hide_set(False)
    eggs[1].hide_viewport = False
    bpy.context.view_layer.layer_collection.children["Closed"].exclude = False
    bpy.context.view_layer.update()
    return {"said": said, "hidden": is_hidden, "wanted": wanted,
            "seen": {egg.name: seen_positions(egg) for egg in eggs}}
