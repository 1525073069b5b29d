"""Runs in Blender, without a window: every case of the suite in a scene of its own.

    blender -b --addons vek_bridge --python in_blender.py -- CASES.json RESULTS.json
"""

import ctypes
import json
import os
import sys
import traceback

import bpy
import numpy as np
from mathutils import Matrix
from vek_bridge import bridge, receiving, sending
from vek_bridge.vek_exchange import Tree


def obey_permissions():
    """From here on they count for root too."""
    ctypes.CDLL(None).capset((ctypes.c_uint32 * 2)(0x20080522, 0), (ctypes.c_uint32 * 6)())


def message(operator, **options):
    """What the user sees."""
    bpy.context.window_manager.vek_message = ""
    try:
        operator(**options)
    except RuntimeError as error:  # how a script learns of an error
        assert bpy.context.window_manager.vek_message in str(error), str(error)
    return bpy.context.window_manager.vek_message


def receive():
    return message(bpy.ops.vek.receive)


def send():
    return message(bpy.ops.vek.send)


def select(*objs):
    for obj in bpy.context.view_layer.objects:
        obj.select_set(False)
    for obj in objs:
        obj.select_set(True)
        bpy.context.view_layer.objects.active = obj


def scene():
    """The objects: corners of each face, and the box around each."""
    found = {}
    for obj in bpy.context.scene.objects:
        corners = [tuple(obj.matrix_world @ vertex.co) for vertex in obj.data.vertices]
        found[obj.name] = {
            "sides": sorted(len(face.vertices) for face in obj.data.polygons),
            "low": [min(axis) for axis in zip(*corners)],
            "high": [max(axis) for axis in zip(*corners)],
        }
    return found


def new_object(name, vertices, faces):
    mesh = bpy.data.meshes.new(name)
    mesh.from_pydata(vertices, [], faces)
    obj = bpy.data.objects.new(name, mesh)
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    return obj


def there_and_back(_case):
    said = [receive()]
    return {"scene": scene(), "said": said + [send()]}


def only_receive(_case):
    return {"said": [receive()], "scene": scene()}


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


def array(_case):
    said = [receive()]
    for obj in bpy.context.selected_objects:
        obj.modifiers.new("Twice", "ARRAY").relative_offset_displace = (0, 0, 1.5)
    return {"said": said + [send()]}


def array_twice(case):
    """What was sent with a modifier comes from the host again."""
    said = array(case)["said"]
    said += [receive()]
    obj = bpy.data.objects["Egg"]
    return {"said": said, "objects": len(bpy.data.objects),
            "shown": [modifier.show_viewport for modifier in obj.modifiers], "scene": scene()}


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


def text(_case):
    curve = bpy.data.curves.new("Text", "FONT")
    curve.body, curve.extrude = "Vek", 0.1
    obj = bpy.data.objects.new("Text", curve)
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    return {"said": [send()]}


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


def edit_mode(_case):
    import bmesh
    said = [receive()]
    obj = bpy.context.view_layer.objects.active
    bpy.ops.object.mode_set(mode="EDIT")
    for vertex in bmesh.from_edit_mesh(obj.data).verts:
        vertex.co.z += 10
    return {"said": said + [send()]}


def copies(_case):
    said = [receive()]
    first = bpy.context.view_layer.objects.active
    for _ in range(2):
        copy = first.copy()
        bpy.context.collection.objects.link(copy)
        copy.select_set(True)
    select(*bpy.context.scene.objects)
    return {"said": said + [send()]}


def copy_of(obj, name=""):
    copy = obj.copy()
    copy.data = obj.data.copy()
    copy.name = name or copy.name
    bpy.context.collection.objects.link(copy)
    return copy


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
    first.name = "Renamed"
    second.location.x = 20
    send_one(second)
    is_untouched = open(path, "rb").read() == given
    send_one(first)
    return {"said": said, "lists": lists, "is untouched": is_untouched}


def copy_in_the_scene(_case):
    """The original is what comes again."""
    said = [receive()]
    first = bpy.context.view_layer.objects.active
    for name in ("A copy", "Z copy"):
        copy_of(first, name).data.transform(Matrix.Translation((0, 0, 50)))
    first.data.transform(Matrix.Translation((0, 0, 90)))
    said.append(receive())
    return {"said": said, "scene": scene()}


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


def added(_case):
    said = [receive()]
    obj = new_object("Bär / 1.5 ", [(0, 0, 0), (1, 0, 0), (0, 1, 0)], [(0, 1, 2)])
    select(*bpy.context.scene.objects)
    return {"said": said + [send(), send()], "objects": [obj.name]}


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


def only_instances(_case):
    """One of two objects shows nothing but a cone on each of its points, and a collection stands in
    the scene as an instance; then all but the instances are deselected."""
    said = [receive()]
    group = bpy.data.node_groups.new("Cones", "GeometryNodeTree")
    group.inputs.new("NodeSocketGeometry", "Geometry")
    group.outputs.new("NodeSocketGeometry", "Geometry")
    first, last = group.nodes.new("NodeGroupInput"), group.nodes.new("NodeGroupOutput")
    cone = group.nodes.new("GeometryNodeMeshCone")
    on_points = group.nodes.new("GeometryNodeInstanceOnPoints")
    group.links.new(first.outputs[0], on_points.inputs["Points"])
    group.links.new(cone.outputs[0], on_points.inputs["Instance"])
    group.links.new(on_points.outputs[0], last.inputs[0])
    cones = bpy.data.objects["Egg 0"]
    cones.modifiers.new("Cones", "NODES").node_group = group
    crowd = bpy.data.objects.new("Crowd", None)
    crowd.instance_type = "COLLECTION"
    crowd.instance_collection = bpy.data.collections.new("Crowd")
    bpy.context.collection.objects.link(crowd)
    bpy.context.view_layer.update()
    select(cones, bpy.data.objects["Egg 1"], crowd)
    said.append(send())
    select(cones, crowd)
    said.append(send())
    select(crowd)
    return {"said": said + [send()]}


def odd_project(case):
    """The project folder's name is not UTF-8, and the panel shows it all the same."""
    from vek_bridge import session
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


def grid(size):
    at = lambda x, y: x * size + y  # noqa: E731
    faces = [(at(x, y), at(x + 1, y), at(x + 1, y + 1), at(x, y + 1))
             for x in range(size - 1) for y in range(size - 1)]
    return [(x, y, 0) for x in range(size) for y in range(size)], faces


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


def only_send(_case):
    return {"said": [send()]}


def camera(_case):
    obj = bpy.data.objects.new("Camera", bpy.data.cameras.new("Camera"))
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    return {"said": [send()]}


def run(case):
    bpy.ops.wm.read_homefile(use_empty=True)
    bridge.tree = lambda: Tree(case["root"])
    try:
        return globals()[case["action"]](case)
    except Exception:
        return {"failed": traceback.format_exc(), "said": []}


cases, results = sys.argv[sys.argv.index("--") + 1:]
obey_permissions()
with open(cases, encoding="utf-8") as file:
    done = {name: run(case) for name, case in json.load(file).items()}
with open(results, "w", encoding="utf-8") as file:
    json.dump(done, file)
