"""What an artist puts onto a mesh, and what is left of it when the host sends the mesh again."""

import bmesh
import bpy
import numpy as np
from vek_bridge import bridge
from vek_bridge.vek_exchange import read_mesh

from .common import (copy_of, host_changes, moved, positions_in_file, receive, seen_positions,
                     select, send)


def decorate(obj):
    mesh = obj.data
    mesh.materials.append(bpy.data.materials.new("Red"))
    mesh.materials.append(bpy.data.materials.new("Blue"))
    for face in list(mesh.polygons)[::2]:
        face.material_index, face.use_smooth = 1, True
    obj.vertex_groups.new(name="Top").add([1, 2, 3], 0.25, "ADD")
    mesh.uv_layers.new(name="Second")
    mesh.color_attributes.new("Paint", "BYTE_COLOR", "CORNER")
    mesh.color_attributes.new("Wear", "FLOAT_COLOR", "POINT").data[1].color = (0.5, 0, 0, 1)
    mesh.edges[3].use_seam = True
    mesh.attributes.new(".sculpt_face_set", "INT", "FACE")
    put_mask(mesh)
    obj.shape_key_add(name="Basis")
    key = obj.shape_key_add(name="Bent")
    for point in list(key.data)[:10]:
        point.co.x += 2
    key.value = 0.5
    obj.active_shape_key_index = 1
    bpy.context.view_layer.update()


def put_mask(mesh):
    work = bmesh.new()
    work.from_mesh(mesh)
    layer = work.verts.layers.paint_mask.new()
    work.verts.ensure_lookup_table()
    work.verts[5][layer] = 0.75
    work.to_mesh(mesh)
    work.free()


def told(obj):
    """What is on it now."""
    mesh, keys = obj.data, obj.data.shape_keys
    keys = keys.key_blocks if keys else []
    return {
        "materials": [face.material_index for face in mesh.polygons],
        "smooth": [face.use_smooth for face in mesh.polygons],
        "slots": [material.name for material in mesh.materials],
        "weights": {str(vertex.index): [group.weight for group in vertex.groups]
                    for vertex in mesh.vertices if len(vertex.groups)},
        "maps": sorted(layer.name for layer in mesh.uv_layers),
        "colors": sorted(each.name for each in mesh.color_attributes),
        "seams": [edge.index for edge in mesh.edges if edge.use_seam],
        "keys": {key.name: key.value for key in keys},
        "mask": mesh.vertex_paint_masks[0].data[5].value if mesh.vertex_paint_masks else 0,
        "way": [list(keys[1].data[at].co - keys[0].data[at].co) for at in (0, 20)] if keys else [],
        "active key": keys and obj.active_shape_key.name,
        "off the basis": [vertex.index for vertex in mesh.vertices
                          if keys and vertex.co != keys[0].data[vertex.index].co],
        "sides": [len(face.vertices) for face in mesh.polygons],
        "uvs": [[corner.vertex_index, *uvs.uv] for corner, uvs in
                zip(mesh.loops, mesh.uv_layers.active.data if mesh.uv_layers else [])],
    }


def result(obj, said, before):
    return {"said": said, "before": before, "after": told(obj),
            "seen": seen_positions(obj), "wanted": positions_in_file(obj.name)}


def decorated(change):
    said = [receive()]
    obj = bpy.data.objects["Egg"]
    decorate(obj)
    before = told(obj)
    said.append(send())
    host_changes(change=change)
    return result(obj, said + [receive()], before)


def moved_by_the_host(_case):
    return decorated(moved((1, 2, 3)))


def faces_turned_by_the_host(_case):
    def change(mesh):
        mesh.faces = mesh.faces.reshape(-1, 4)[::-1].ravel()
        mesh.corners[0].values = mesh.corners[0].values.reshape(-1, 4)[::-1].ravel()
        moved((1, 2, 3))(mesh)
    return decorated(change)


def vertices_added_by_the_host(_case):
    def change(mesh):
        mesh.vertices = np.concatenate([mesh.vertices, np.zeros(3, np.float32)])
        mesh.corners, mesh.uvs = [], None
    return decorated(change)


def doubles_by_the_host(_case):
    """Two faces have the same corners, which Blender's own tools do not make."""
    def change(mesh):
        mesh.faces = np.concatenate([mesh.faces, mesh.faces[:4]])
        mesh.corners, mesh.uvs = [], None
    return decorated(change)


def two_maps(_case):
    """The second UV map is the active one. Then the host takes a face away."""
    said = [receive()]
    obj = bpy.data.objects["Egg"]
    layer = obj.data.uv_layers.new(name="Second")
    obj.data.uv_layers.active = layer
    for corner in obj.data.loops:
        layer.data[corner.index].uv = corner.vertex_index / 10, 0.5
    bpy.context.view_layer.update()
    said.append(send())
    path = bridge.tree().exchange_file(bridge.tree().object_list()[0])
    mesh = read_mesh(path)
    sent = mesh.uvs.reshape(-1, 2).tolist(), mesh.faces[mesh.faces >= 0].tolist()

    def change(mesh):
        mesh.faces = mesh.faces[:-4]
        mesh.corners[0].values = mesh.corners[0].values[:-4]
        mesh.corners[0].count -= 1
    host_changes(change=change)
    said.append(receive())
    return {"said": said, "sent": sent, "after": told(obj)}


def uvs_out_of_the_list(_case):
    """Corner values that no UV has."""
    said = [receive()]
    return {"said": said, "after": told(bpy.data.objects["Egg"])}


def marked_vertices(_case):
    """Weights that Blender does not count among its attributes."""
    said = [receive()]
    bpy.data.objects["Egg 0"].data.vertices[2].bevel_weight = 0.5

    def change(mesh):
        mesh.vertices = np.concatenate([mesh.vertices, np.zeros(3, np.float32)])
    host_changes(change=change)
    return {"said": said + [receive()]}


def plain_shading(_case):
    """One material for all, and smooth: so are the new faces."""
    said = [receive()]
    obj = bpy.data.objects["Egg"]
    for name in ("Red", "Blue"):
        obj.data.materials.append(bpy.data.materials.new(name))
    for face in obj.data.polygons:
        face.material_index, face.use_smooth = 1, True
    before = told(obj)

    def change(mesh):
        mesh.faces, mesh.corners, mesh.uvs = mesh.faces[:-4], [], None
    host_changes(change=change)
    return result(obj, said + [receive()], before)


def many_corners(_case):
    """A face with six corners is split for the way, and whole again when it comes back."""
    mesh = bpy.data.meshes.new("Six")
    mesh.from_pydata([(np.sin(i), np.cos(i), 0) for i in np.arange(6) * np.pi / 3], [],
                     [tuple(range(6))])
    uvs = mesh.uv_layers.new().data
    for corner in mesh.loops:
        uvs[corner.index].uv = corner.vertex_index / 100, corner.vertex_index / 7
    obj = bpy.data.objects.new("Six", mesh)
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    before = told(obj)
    said = [send()]
    host_changes(change=moved((0, 0, 4)))
    said.append(receive())
    return result(obj, said, before)


def linked_duplicates(_case):
    """Three objects with one mesh: the first and the second go, the third stays as it is."""
    said = [receive()]
    first = bpy.data.objects["Egg 0"]
    others = []
    for number, name in enumerate("AB", 1):  # shorter names than that of the first
        other = copy_of(first, name)
        other.data, other.location.x = first.data, 10 * number
        others.append(other)
    bpy.context.view_layer.update()
    still = seen_positions(others[1])
    select(first, others[0])
    said.append(send())
    host_changes(others[0].name, change=moved((0, 0, 5)))
    said.append(receive())
    return {"said": said, "seen": seen_positions(others[0]),
            "wanted": positions_in_file(others[0].name),
            "same": [seen_positions(others[1]) == still, first.data == others[1].data,
                     first.data != others[0].data]}


def marks_of_faces(_case):
    """A face map, and later a face that is marked; at last an edge without a face."""
    said = [receive()]
    obj = bpy.data.objects["Egg 0"]

    def fewer(mesh):
        mesh.faces = mesh.faces[:-4]

    obj.face_maps.new(name="Map").add([0, 1])
    host_changes(change=fewer)
    said.append(receive())
    obj.data.polygons[2].use_freestyle_mark = True
    host_changes(change=fewer)
    said.append(receive())
    obj.data.edges.add(1)
    obj.data.edges[-1].vertices = (0, 1)
    obj.data.update()
    host_changes(change=fewer)
    return {"said": said + [receive()]}


def other_modifier(_case):
    """The modifier that was sent is gone, and another is there when the mesh comes again."""
    said = [receive()]
    obj = bpy.data.objects["Egg 0"]
    obj.modifiers.new("Mirror", "MIRROR")
    bpy.context.view_layer.update()
    said.append(send())
    obj.modifiers.clear()
    bevel = obj.modifiers.new("Bevel", "BEVEL")
    host_changes()
    return {"said": said + [receive()], "shown": bevel.show_viewport}
