"""Objects that something else moves."""

import math

import bpy
from mathutils import Matrix

from .common import (host_changes, matrices, moved, positions, positions_in_file, receive,
                     seen_positions, send)

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


def scaled_to_nothing(_case):
    said = [receive()]
    egg = bpy.data.objects["Egg 0"]
    before = positions(egg)
    egg.scale.z = 0
    host_changes()
    said.append(receive())
    return {"said": said, "same": positions(egg) == before}


def hidden_and_held(_case):
    """One object follows another, one is on a bone, and then both are hidden."""
    said = [receive()]
    first, second = bpy.data.objects["Egg 0"], bpy.data.objects["Egg 1"]
    armature = bpy.data.objects.new("Arm", bpy.data.armatures.new("Arm"))
    bpy.context.collection.objects.link(armature)
    bpy.context.view_layer.objects.active = armature
    bpy.ops.object.mode_set(mode="EDIT")
    armature.data.edit_bones.new("Bone").tail = (0, 1, 4)
    bpy.ops.object.mode_set(mode="OBJECT")
    armature.location = (1, 2, 3)
    first.constraints.new("COPY_LOCATION").target = armature
    second.parent, second.parent_type, second.parent_bone = armature, "BONE", "Bone"
    bpy.context.view_layer.update()
    for egg in (first, second):
        egg.hide_viewport = True
    bpy.context.view_layer.update()
    host_changes(change=moved((0, 0, 1)))
    said.append(receive())
    for egg in (first, second):
        egg.hide_viewport = False
    bpy.context.view_layer.update()
    return {"said": said, "seen": {egg.name: seen_positions(egg) for egg in (first, second)},
            "wanted": {egg.name: positions_in_file(egg.name) for egg in (first, second)}}


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
