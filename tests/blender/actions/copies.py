"""Copies of objects, and pieces of them."""

import os

import bpy
from mathutils import Matrix
from vek_bridge import bridge, objects, paths

from .common import (copy_of, host_changes, moved, positions, positions_in_file, receive, scene,
                     seen_positions, select, send)


def copies(_case):
    said = [receive()]
    first = bpy.context.view_layer.objects.active
    for _ in range(2):
        copy = first.copy()
        bpy.context.collection.objects.link(copy)
        copy.select_set(True)
    select(*bpy.context.scene.objects)
    return {"said": said + [send()]}


def lone_copy(case):
    """The copy comes before its original by name, and goes alone; later another, and the original,
    which has a new name."""
    path = case["folder"] + "/Egg 0.vek"
    said, lists = [receive()], []
    first = bpy.context.view_layer.objects.active

    def send_one(obj):
        select(obj)
        bpy.context.view_layer.update()
        said.append(send())
        lists.append([os.path.basename(line) for line in bridge.tree().object_list()])

    given = open(path, "rb").read()
    copy = copy_of(first, "A copy")
    copy.location.x = 10
    send_one(copy)
    send_one(copy)
    second = copy_of(first)
    first.name = "A longer name than the copy has"
    second.location.x = 20
    send_one(second)
    is_untouched = open(path, "rb").read() == given
    send_one(first)
    return {"said": said, "lists": lists, "is untouched": is_untouched}


def letter_case_of_a_copy(case):
    """On a Mac it is the same file."""
    said = [receive()]
    copy = copy_of(bpy.data.objects["Egg 0"], "EGG 0")
    objects.forget(copy)
    select(copy)
    real, paths._tells_letter_case = paths._tells_letter_case, lambda folder: False
    said.append(send())
    paths._tells_letter_case = real
    return {"said": said, "files": sorted(os.listdir(case["folder"]))}


def linked(case):
    """An object, and the mesh of another, are those of a Blender file, and the host changes both.
    """
    said = [receive()]
    path = case["root"] + "/eggs.blend"
    bpy.ops.wm.save_as_mainfile(filepath=path, copy=True)
    for egg in list(bpy.data.objects):
        bpy.data.objects.remove(egg)
    bpy.data.batch_remove(list(bpy.data.meshes))
    with bpy.data.libraries.load(path, link=True) as (_, wanted):
        wanted.objects, wanted.meshes = ["Egg 0"], ["Egg 1"]
    own = bpy.data.objects.new("Egg 1", wanted.meshes[0])
    objects.remember_line(own, case["folder"] + "/Egg 1")
    for egg in (wanted.objects[0], own):
        bpy.context.collection.objects.link(egg)
    bpy.context.view_layer.update()
    before = [positions(wanted.objects[0]), positions(own)]
    host_changes(change=moved((0, 0, 3)))
    said.append(receive())
    after = [positions(wanted.objects[0]), positions(own)]
    return {"said": said, "same": [one == other for one, other in zip(before, after)],
            "lifted": after[1][0][2] - before[1][0][2], "linked": bool(own.data.library)}


def copy_in_the_scene(_case):
    """The original is what comes again."""
    said = [receive()]
    first = bpy.context.view_layer.objects.active
    for name in ("A copy", "Z copy"):
        copy_of(first, name).data.transform(Matrix.Translation((0, 0, 50)))
    first.data.transform(Matrix.Translation((0, 0, 90)))
    said.append(receive())
    return {"said": said, "scene": scene()}


def copy_of_a_scene(_case):
    """The user goes on in a full copy of the scene, whose object is the one that is sent then, and
    that comes again."""
    said = [receive()]
    bpy.ops.scene.new(type="FULL_COPY")
    copy, = bpy.context.scene.objects
    select(copy)
    said.append(send())
    host_changes(change=moved((0, 0, 5)))
    said.append(receive())
    return {"said": said, "seen": seen_positions(copy), "wanted": positions_in_file("Egg 0"),
            "objects": len(bpy.data.objects)}


def separated(_case):
    said = [receive()]
    obj = bpy.context.view_layer.objects.active
    for items in (obj.data.vertices, obj.data.edges, obj.data.polygons):
        items.foreach_set("select", [False] * len(items))
    obj.data.polygons[0].select = True
    bpy.ops.object.mode_set(mode="EDIT")
    bpy.ops.mesh.select_mode(type="FACE")
    bpy.ops.mesh.separate(type="SELECTED")
    bpy.ops.object.mode_set(mode="OBJECT")
    pieces = [piece for piece in bpy.context.scene.objects if piece != obj]
    select(*pieces)
    said.append(send())
    return {"said": said, "pieces": len(pieces)}


def linked_collection(case):
    """The collection that the user has chosen is that of another Blender file."""
    said = [receive()]
    path = case["root"] + "/library.blend"
    bpy.context.scene.collection.children.link(bpy.data.collections.new("Library"))
    bpy.ops.wm.save_as_mainfile(filepath=path, copy=True)
    bpy.ops.wm.read_homefile(use_empty=True)
    with bpy.data.libraries.load(path, link=True) as (_, wanted):
        wanted.collections = ["Library"]
    bpy.context.scene.collection.children.link(wanted.collections[0])
    layer = bpy.context.view_layer
    layer.active_layer_collection = layer.layer_collection.children["Library"]
    said.append(receive())
    return {"said": said, "where": {obj.name: [each.name for each in obj.users_collection]
                                    for obj in bpy.data.objects}}
