"""A mesh from the host takes the place of the one that an object has.

The object stays where it is, with its parent, constraints and animation: the mesh is put so that it
lies in the world where the file says. Where faces have the same corners as before, everything that
lies on the mesh stays; where only the vertices are as many, what lies on them.
"""

import bmesh
import bpy
import numpy as np

from . import details, mesh_in, mesh_out, objects, placing
from .vek_exchange import VekError


def check(obj):
    """VekError for an object that nothing can be put into."""
    if obj.library:
        raise VekError(f"The object is part of another Blender file and stays as it is: {obj.name}")
    if obj.mode != "OBJECT":
        raise VekError(f"The object is worked on in another scene and stays as it is: {obj.name}")


def would_end_a_sculpt(obj, given, matrix):
    """A Multires modifier has its sculpt by the faces of the mesh, and loses it with them."""
    if not any(each.type == "MULTIRES" and each.total_levels for each in obj.modifiers):
        return False
    mesh = obj.data
    return (len(mesh.vertices) != len(given.vertices)
            or not np.array_equal(mesh_out.faces_of(mesh)[0], _turned(given, matrix)[0]))


def put(obj, given, matrix):
    """Words for what the object lost. VekError when it cannot have the mesh; it is then as it
    was."""
    local = placing.to_local(given.vertices, matrix, obj.name)
    faces, uvs = _turned(given, matrix)
    mesh = _own_mesh(obj)
    own, places, _ = mesh_out.faces_of(mesh)
    stay = len(mesh.vertices) == len(local)
    if stay and np.array_equal(own, faces):
        _move(obj, given.vertices, local, matrix)
        _set_uvs(mesh, uvs, places, faces)
        return []
    stay = stay and bool(details.on_vertices(obj)) and not _has_doubles(faces)
    words = details.lost(obj, uvs is not None, stay)
    map_name = mesh.uv_layers.active.name if mesh.uv_layers.active else "UVMap"
    shading = details.shading(mesh)
    if stay:
        _give_new_faces(mesh, faces)
        _move(obj, given.vertices, local, matrix)
    else:
        obj.shape_key_clear()
        mesh.clear_geometry()
        mesh_in.fill(mesh, local, faces)
    details.shade(mesh, *shading)
    if uvs is not None and len(faces):
        mesh_in.set_uvs(mesh.uv_layers.new(name=map_name), uvs)
    return words


def take_the_place_of(other, given, matrix):
    """A new object with the mesh, in place of one that cannot have it, as a text or a curve, which
    is hidden. It is the child of the other, so that it is where that is."""
    local = placing.to_local(given.vertices, matrix, other.name)
    mesh = mesh_in.new_mesh(other.name, local, *_turned(given, matrix))
    for slot in other.material_slots:
        mesh.materials.append(slot.material)
    obj = bpy.data.objects.new(other.name, mesh)
    for collection in other.users_collection:
        collection.objects.link(obj)
    obj.parent = other
    objects.forget(other)
    other.hide_render = True
    try:
        other.hide_set(True)
    except RuntimeError:
        pass  # it is not in this view layer, and not hidden in others
    return obj


def _turned(given, matrix):
    """Faces and UVs as they have to be under the matrix."""
    if placing.mirrors(matrix):
        return placing.rewound(given.faces, given.uvs)
    return given.faces, given.uvs


def _own_mesh(obj):
    """Other objects with the same mesh keep it as it is."""
    if obj.data.users > 1 or obj.data.library:
        obj.data = obj.data.copy()
    return obj.data


def _set_uvs(mesh, uvs, places, faces):
    """A file without UVs takes none away. For `places` see mesh_out."""
    if uvs is None or not len(faces):
        return
    layer = mesh.uv_layers.active or mesh.uv_layers.new()
    if places is not None:
        ordered = np.zeros((len(mesh.loops), 2), np.float32)
        ordered[places[faces >= 0]] = uvs
        uvs = ordered
    mesh_in.set_uvs(layer, uvs)


def _move(obj, world, local, matrix):
    """Vertices that have not moved in the world keep their positions to the last bit."""
    mesh, keys = obj.data, obj.data.shape_keys
    old = _seen_positions(obj)
    moved = (placing.to_world(old, matrix) != world).any(axis=1)
    if not moved.any():
        return
    if not keys:
        old[moved] = local[moved]
        mesh_in.set_positions(mesh.vertices, old)
    else:
        way = np.where(moved[:, None], local - old, np.float32(0))
        for key in keys.key_blocks:
            mesh_in.set_positions(key.data, mesh_out.positions_of(key.data) + way)
        basis = mesh_out.positions_of(keys.reference_key.data)
        mesh_in.set_positions(mesh.vertices, basis)
        keys.update_tag()
    mesh.update()


def _seen_positions(obj):
    """With the shape keys as they are set, without modifiers."""
    if not obj.data.shape_keys:
        return mesh_out.positions_of(obj.data.vertices)
    active = obj.active_shape_key_index
    mix = obj.shape_key_add(from_mix=True)
    positions = mesh_out.positions_of(mix.data)
    obj.shape_key_remove(mix)
    obj.active_shape_key_index = active
    return positions


def _has_doubles(faces):
    return len(np.unique(np.sort(faces, axis=1), axis=0)) != len(faces)


def _give_new_faces(mesh, faces):
    """The vertices stay, with all that lies on them."""
    details.strip_faces(mesh)
    work = bmesh.new()
    work.from_mesh(mesh)
    bmesh.ops.delete(work, geom=work.edges[:], context="EDGES_FACES")
    work.to_mesh(mesh)
    work.free()
    mesh_in.fill_faces(mesh, faces)
