"""What is done in Blender in the demo, in place of a user: receive, a modifier for each object that
adds geometry, send."""

import bpy
from vek_bridge import bridge


def stacked(obj):
    array = obj.modifiers.new("Twice", "ARRAY")
    array.use_relative_offset = True
    array.relative_offset_displace = (0, 0, 1)


def mirrored(obj):
    mirror = obj.modifiers.new("Mirror", "MIRROR")
    middle = bpy.data.objects.new(obj.name + " mirror", None)
    bpy.context.collection.objects.link(middle)
    middle.location.x = max(corner[0] for corner in obj.bound_box) + 0.05 * obj.dimensions.x
    mirror.mirror_object = middle
    mirror.use_mirror_merge = False


def subdivided(obj):
    smooth = obj.modifiers.new("Finer", "SUBSURF")
    smooth.subdivision_type = "SIMPLE"
    smooth.levels = 1


EDITS = (stacked, mirrored, subdivided)


def said():
    return bpy.context.window_manager.vek_message


for obj in list(bpy.data.objects):
    bpy.data.objects.remove(obj)  # the cube, the light and the camera of a new scene
bpy.ops.vek.receive()
print("received:", said())
for number, obj in enumerate(bpy.context.selected_objects):
    EDITS[number % len(EDITS)](obj)
bpy.ops.vek.send()
print("sent:", said())
scene = bridge.tree().app_config(bridge.APP).find("DEMO_SCENE")
if scene:
    bpy.ops.wm.save_as_mainfile(filepath=scene)
