"""Blender objects into exchange files."""

import numpy as np

from . import placing
from .vek_exchange import Corners, Mesh, VekError
from .vek_exchange import exchange_file as blocks
from .vek_exchange.mesh import file_of

from .mesh_in import CORNER_BLOCKS, OF_CORNERS, mark_of


class Taken:
    """The mesh of an object as it looks in the scene, its modifiers applied, in world coordinates.

    faces        rows of four vertex indices, -1 the fourth of a triangle
    uvs          rows of two numbers, one for each corner of `faces`; None where it has no UVs
    split        how many faces with more than four corners were split into triangles
    has_edges_alone    whether it has edges, which files do not hold, and no faces
    """

    def __init__(self, obj, depsgraph):
        seen = obj.evaluated_get(depsgraph)
        mesh = seen.to_mesh()
        try:
            self.vertices = positions_of(mesh.vertices)
            self.faces, places, self.split = faces_of(mesh)
            self.uvs = _uvs(mesh, self.faces, places)
            self.has_edges_alone = len(mesh.edges) > 0 and not len(mesh.polygons)
        finally:
            seen.to_mesh_clear()
        matrix = np.array(obj.matrix_world)
        self.vertices = placing.to_world(self.vertices, matrix)
        if not np.isfinite(self.vertices).all():
            raise VekError(f"A position in this object is not a number or too far away: {obj.name}")
        if placing.mirrors(matrix):
            self.faces, self.uvs = placing.rewound(self.faces, self.uvs)


def exchange_file(taken, face_kind, kept, given_mark):
    """The file of an object, and whether corner values had to be left out: they belong to the faces
    that were given. UVs are known for all faces, and are written anew where something changed."""
    if mark_of(taken.faces, taken.uvs) == given_mark:
        file = file_of(Mesh(taken.vertices.ravel(), taken.faces.ravel(), face_kind=face_kind))
        file.blocks += kept
        return file, False
    mesh = Mesh(taken.vertices.ravel(), taken.faces.ravel(), face_kind=face_kind)
    if taken.uvs is not None:
        mesh.uvs = taken.uvs.ravel()
        mesh.corners = [Corners(_own_uvs(taken.faces), count=len(taken.faces))]
    file = file_of(mesh)
    file.blocks += [block for block in kept if block.id not in OF_CORNERS]
    ids = {block.id for block in kept}
    were_uvs = blocks.UV_LIST in ids and taken.uvs is not None
    return file, bool(ids.intersection(CORNER_BLOCKS)) and not were_uvs


def _own_uvs(faces):
    """Corner values that give each corner the UV of its own number."""
    values = np.full(faces.shape, -1, np.int32)
    is_corner = faces >= 0
    values[is_corner] = np.arange(np.count_nonzero(is_corner), dtype=np.int32)
    return values.ravel()


def _uvs(mesh, faces, places):
    """`places` says for each row of faces which of Blender's corners it has; None: all in order."""
    layer = mesh.uv_layers.active
    if not layer:
        return None
    uvs = np.empty(2 * len(mesh.loops), np.float32)
    layer.data.foreach_get("uv", uvs)
    uvs = uvs.reshape(-1, 2)
    return uvs if places is None else uvs[places[faces >= 0]]


def positions_of(points):
    """Of vertices, or of the points of a shape key."""
    positions = np.empty(3 * len(points), np.float32)
    points.foreach_get("co", positions)
    return positions.reshape(-1, 3)


def _numbers(collection, name, count):
    numbers = np.empty(count, np.uint32)  # see mesh_in
    collection.foreach_get(name, numbers)
    return numbers.view(np.int32)


def faces_of(mesh):
    """Faces, the corner of Blender's at each of their places (None: all in order), and how many
    faces had to be split."""
    count = len(mesh.polygons)
    corners = _numbers(mesh.loops, "vertex_index", len(mesh.loops))
    totals = _numbers(mesh.polygons, "loop_total", count)
    starts = _numbers(mesh.polygons, "loop_start", count)
    largest = int(totals.max(initial=0))
    if largest <= 4 and (starts[1:] == np.cumsum(totals[:-1])).all():
        return _rows(corners, totals), None, 0
    places = starts[:, None] + np.arange(4, dtype=np.int32)
    places[totals == 3, 3] = -1
    is_large = totals > 4
    if largest > 4:
        places = _with_triangles(mesh, places, is_large)
    faces = np.where(places >= 0, corners[places], np.int32(-1))
    return faces, places, int(np.count_nonzero(is_large))


def _rows(corners, totals):
    """Rows of four, from corners that lie one behind another."""
    if len(corners) == 4 * len(totals):
        return corners.reshape(-1, 4)
    rows = np.full((len(totals), 4), -1, np.int32)
    rows[np.arange(4) < totals[:, None]] = corners
    return rows


def _with_triangles(mesh, places, is_large):
    """Blender's own triangles where the large faces were."""
    mesh.calc_loop_triangles()
    count = len(mesh.loop_triangles)
    owners = _numbers(mesh.loop_triangles, "polygon_index", count)
    triangles = np.full((count, 4), -1, np.int32)
    triangles[:, :3] = _numbers(mesh.loop_triangles, "loops", 3 * count).reshape(-1, 3)
    wanted = is_large[owners]
    order = np.concatenate([np.flatnonzero(~is_large), owners[wanted]])
    rows = np.concatenate([places[~is_large], triangles[wanted]])
    return rows[np.argsort(order, kind="stable")]
