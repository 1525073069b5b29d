"""Exchange files into Blender meshes. All work on faces and vertices is numpy's: a mesh may have
millions of them."""

import zlib

import bpy
import numpy as np

from .vek_exchange import VekError
from .vek_exchange import exchange_file as blocks
from .vek_exchange.mesh import mesh_of
from .work import shown

_FACES = (blocks.FACES_NEGATIVE, blocks.FACES_REPEATED, blocks.TRIANGLES)
_GEOMETRY = (blocks.VERTICES,) + _FACES
CORNER_BLOCKS = (blocks.CORNERS_1, blocks.CORNERS_2)
OF_CORNERS = CORNER_BLOCKS + (blocks.UV_LIST,)


class Given:
    """What an exchange file held.

    faces        rows of four vertex indices, the fourth negative for a triangle
    face_kind    the id of the block to hand the faces back in
    uvs          rows of two numbers, one for each corner; None where the file has no UVs
    kept         the blocks that are no geometry, to be handed back as they came
    left_out     how many faces were left out because they use a vertex twice
    """

    def __init__(self, path):
        file = blocks.read_file(path)
        if not any(block.id in _FACES for block in file.blocks):
            file.blocks.append(blocks.Block(blocks.FACES_NEGATIVE))  # points alone
        mesh = _mesh_of(file, path)
        self.vertices = np.asarray(mesh.vertices, np.float32).reshape(-1, 3)
        self.faces = np.asarray(mesh.faces, np.int32).reshape(-1, 4)
        if not np.isfinite(self.vertices).all():
            raise VekError(f"A position in this file is not a number: {shown(path)}")
        good = ~_uses_a_vertex_twice(self.faces)
        self.left_out = int(len(good) - np.count_nonzero(good))
        self.kept = [_kept(block, mesh.face_kind, good, self.left_out)
                     for block in file.blocks if block.id not in _GEOMETRY]
        if self.left_out:
            self.faces = self.faces[good]
        self.uvs = _uvs(mesh, good)
        # Triangles of three indices are rewound wrongly by the bridge, so they go back as four.
        self.face_kind = (blocks.FACES_NEGATIVE if mesh.face_kind == blocks.TRIANGLES
                          else mesh.face_kind)


def _mesh_of(file, path):
    try:
        return mesh_of(file)
    except VekError as error:
        raise VekError(f"{str(error).rstrip('.')}: {shown(path)}") from None


def mark_of(faces, uvs):
    """A short text that differs for other faces or UVs."""
    mark = zlib.crc32(np.ascontiguousarray(faces, np.int32))
    if uvs is not None:
        mark = zlib.crc32(np.ascontiguousarray(uvs, np.float32), mark)
    return "%d:%08x" % (len(faces), mark)


def new_mesh(name, vertices, faces, uvs):
    mesh = bpy.data.meshes.new(name)
    fill(mesh, vertices, faces)
    if uvs is not None and len(faces):
        set_uvs(mesh.uv_layers.new(), uvs)
    return mesh


def fill(mesh, vertices, faces):
    """A mesh without geometry gets one."""
    mesh.vertices.add(len(vertices))
    set_positions(mesh.vertices, vertices)
    fill_faces(mesh, faces)


def set_positions(points, positions):
    """Of vertices, or of the points of a shape key."""
    points.foreach_set("co", positions.ravel())


def set_uvs(layer, uvs):
    layer.data.foreach_set("uv", uvs.ravel())


def fill_faces(mesh, faces):
    """A mesh that has vertices alone gets faces and their edges."""
    if len(faces):
        _add_faces(mesh, faces)
    mesh.update(calc_edges=True)


def _add_faces(mesh, faces):
    # Blender takes whole arrays of these when they are unsigned, and number by number when not.
    totals = np.where(faces[:, 3] >= 0, np.uint32(4), np.uint32(3))
    starts = np.zeros(len(faces), np.uint32)
    np.cumsum(totals[:-1], out=starts[1:])
    corners = _corners(faces, faces).view(np.uint32)
    mesh.loops.add(len(corners))
    mesh.loops.foreach_set("vertex_index", corners)
    mesh.polygons.add(len(faces))
    mesh.polygons.foreach_set("loop_start", starts)
    if bpy.app.version < (4, 0, 0):  # later it follows from the starts
        mesh.polygons.foreach_set("loop_total", totals)


def _uvs(mesh, good):
    """A UV for each corner, by the UV list; corners without one have (0, 0)."""
    if mesh.uvs is None or not mesh.corners:
        return None
    uvs = np.asarray(mesh.uvs, np.float32).reshape(-1, 2)
    uvs = np.concatenate([uvs, np.zeros((1, 2), np.float32)])
    indices = np.asarray(mesh.corners[-1].values, np.int32).reshape(-1, 4)
    faces = np.asarray(mesh.faces, np.int32).reshape(-1, 4)
    if not good.all():
        indices, faces = indices[good], faces[good]
    indices = _corners(indices, faces)
    if len(indices) and (indices.min() < 0 or indices.max() >= len(uvs)):
        indices = np.where((indices < 0) | (indices >= len(uvs)), len(uvs) - 1, indices)
    pairs = uvs.view(np.complex64).ravel()  # numpy takes pairs faster than rows of two
    return np.take(pairs, indices).view(np.float32).reshape(-1, 2)


def _corners(rows, faces):
    """What stands in rows of four for the corners of the faces, without the empty places."""
    is_corner = faces >= 0
    return rows.ravel() if is_corner[:, 3].all() else rows[is_corner]


def _uses_a_vertex_twice(faces):
    a, b, c, d = faces.T
    return (a == b) | (b == c) | (c == a) | (d == a) | (d == b) | (d == c)


def _kept(block, face_kind, good, left_out):
    """The block, with corner values laid out for the faces that are handed back."""
    stride = 3 if face_kind == blocks.TRIANGLES else 4
    if block.id not in CORNER_BLOCKS or len(block.payload) < 4 * stride * len(good):
        return block
    if stride == 4 and not left_out:
        return block
    values = np.frombuffer(block.payload, "<i4", stride * len(good)).reshape(-1, stride)[good]
    if stride == 3:
        values = np.column_stack([values, np.full(len(values), -1, "<i4")])
    count = block.count - left_out if block.count == len(good) else block.count
    kept = blocks.Block(block.id, values.astype("<i4").tobytes(), count)
    kept.param_bits = block.param_bits
    return kept
