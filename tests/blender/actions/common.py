"""What actions are made of."""

import bpy
import numpy as np
from vek_bridge import bridge
from vek_bridge.vek_exchange import read_mesh, write_mesh


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


def copy_of(obj, name=""):
    copy = obj.copy()
    copy.data = obj.data.copy()
    copy.name = name or copy.name
    bpy.context.collection.objects.link(copy)
    return copy


def grid(size):
    at = lambda x, y: x * size + y  # noqa: E731
    faces = [(at(x, y), at(x + 1, y), at(x + 1, y + 1), at(x, y + 1))
             for x in range(size - 1) for y in range(size - 1)]
    return [(x, y, 0) for x in range(size) for y in range(size)], faces


def matrices():
    bpy.context.view_layer.update()
    return {obj.name: [list(row) for row in obj.matrix_world] for obj in bpy.data.objects}


def positions(obj):
    """Of its mesh, as it stands in the object."""
    return [list(vertex.co) for vertex in obj.data.vertices]


def seen_positions(obj):
    """In the world, with shape keys and modifiers."""
    seen = obj.evaluated_get(bpy.context.evaluated_depsgraph_get())
    return [list(seen.matrix_world @ vertex.co) for vertex in seen.data.vertices]


def host_changes(*names, change=lambda mesh: None):
    """The host sends objects of the list again, all of them where there are no names."""
    tree = bridge.tree()
    lines = [line for line in tree.object_list()
             if not names or line.rsplit("/", 1)[1] in names]
    for line in lines:
        changed(line, change)
    tree.write_object_list(lines)


def changed(line, change):
    """The host writes the file of the line anew."""
    path = bridge.tree().exchange_file(line)
    mesh = read_mesh(path)
    change(mesh)
    write_mesh(path, mesh)


def moved(way):
    """A change of the mesh."""
    def change(mesh):
        mesh.vertices = (mesh.vertices.reshape(-1, 3) + np.float32(way)).ravel()
    return change


def positions_in_file(name):
    tree = bridge.tree()
    line, = [line for line in tree.object_list() if line.rsplit("/", 1)[1] == name]
    return read_mesh(tree.exchange_file(line)).vertices.reshape(-1, 3).tolist()
