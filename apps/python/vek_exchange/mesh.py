"""The mesh in an exchange file.

    mesh = read_mesh("/p/torus.vek")
    mesh.vertices[0:3]            # x, y, z of the first vertex
    mesh.faces[0:4]               # its vertex numbers; a fourth of -1 marks a triangle
    write_mesh("/p/torus.vek", mesh)

Number lists are flat. Where numpy is there they are one-dimensional numpy arrays (float32, int32;
`mesh.vertices.reshape(-1, 3)` is the table of points), elsewhere `array.array`s. Either can be
given, and any other flat sequence of numbers.
"""

from __future__ import annotations

from typing import Any, Iterable, List, Optional, Tuple

from ._files import Bytes, Path, shown, to_bytes, to_text
from ._numbers import numbers
from .errors import VekError
from .exchange_file import (CORNERS_1, CORNERS_2, FACES_NEGATIVE, FACES_REPEATED, MAP_0, MAP_1,
                            MAP_2, TRIANGLES, UV_LIST, VERTICES, Block, ExchangeFile, WithParam,
                            read_file, write_file)

Numbers = Any  # a flat numpy array, an array.array, or another sequence of numbers

_FACES = (FACES_NEGATIVE, FACES_REPEATED, TRIANGLES)
_CORNERS = (CORNERS_1, CORNERS_2)
_MAPS = (MAP_0, MAP_1, MAP_2)


class MapName(WithParam):
    """The file name of a map that goes with the mesh. `kind` is the id of its block: MAP_0, ..."""

    __slots__ = ("kind", "name")

    def __init__(self, kind: int, name: str, param: float = 0.0) -> None:
        super().__init__(param)
        self.kind = kind
        self.name = name


class Corners(WithParam):
    """One 4-byte value for each of the four corner places of each face, as int32.

    Where the face is a triangle the fourth stands for nothing. What the values mean is between
    those who write and read them; in the files of the tool `vek` they are indices into `Mesh.uvs`,
    -1 for none. `kind` is the id of the block, CORNERS_1 or CORNERS_2; `count` is the number in
    its header, None for the number of faces.
    """

    __slots__ = ("values", "kind", "count")

    def __init__(self, values: Numbers, kind: int = CORNERS_1, count: Optional[int] = None,
                 param: float = 0.0) -> None:
        super().__init__(param)
        self.values = values
        self.kind = kind
        self.count = count


class Mesh:
    """A mesh of triangles and quads.

    vertices     3 float32 for each vertex
    faces        4 int32 for each face: vertex indices, the fourth -1 for a triangle
    face_kind    the id of the block that holds the faces in the file. FACES_NEGATIVE holds every
                 mesh. TRIANGLES holds triangles only, and writing quads so is a VekError.
                 FACES_REPEATED takes a quad whose last two corners are one vertex for a triangle.
    corners      the blocks of corner values; of several the bridge turns only the last
    uvs          2 float32 for each entry of the tool's UV list; None: there is no such block
    maps         the map file names
    other_blocks every other block, to be handed back as it came
    """

    def __init__(self, vertices: Numbers = (), faces: Numbers = (), *,
                 face_kind: int = FACES_NEGATIVE, corners: Iterable[Corners] = (),
                 uvs: Optional[Numbers] = None, maps: Iterable[MapName] = (),
                 other_blocks: Iterable[Block] = ()) -> None:
        self.vertices = numbers.floats(vertices, "vertices")
        self.faces = numbers.ints(faces, "faces")
        self.face_kind = face_kind
        self.corners: List[Corners] = list(corners)
        self.uvs = None if uvs is None else numbers.floats(uvs, "UVs")
        self.maps: List[MapName] = list(maps)
        self.other_blocks: List[Block] = list(other_blocks)

    @property
    def vertex_count(self) -> int:
        return len(self.vertices) // 3

    @property
    def face_count(self) -> int:
        return len(self.faces) // 4

    @property
    def triangle_count(self) -> int:
        count: int = numbers.triangle_count(numbers.ints(self.faces, "faces"))
        return count

    def loops(self) -> Tuple[Numbers, Numbers, Numbers]:
        """The faces as many programs hold them: the vertex index of each corner, without the empty
        places; where each face begins in that list; how many corners it has. All int32."""
        loops: Tuple[Numbers, Numbers, Numbers] = numbers.loops(numbers.ints(self.faces, "faces"))
        return loops

    def loop_values(self, corners: Corners) -> Numbers:
        """The corner values in the order of `loops()`, without the empty places."""
        faces = numbers.ints(self.faces, "faces")
        return numbers.loop_values(faces, self._checked_values(corners, faces))

    @staticmethod
    def faces_from_loops(loop_vertices: Numbers, loop_totals: Numbers) -> Numbers:
        """The reverse of `loops()`: `faces` of a mesh. `loop_totals` is the number of corners of
        each face, in order and without gaps. VekError for a face with other than 3 or 4."""
        return numbers.from_loops(numbers.ints(loop_vertices, "corners"),
                                  numbers.ints(loop_totals, "numbers of corners"))

    @staticmethod
    def values_from_loops(loop_values: Numbers, loop_totals: Numbers) -> Numbers:
        """Corner values for `Corners`, from a value for each corner; -1 in the empty places."""
        return Mesh.faces_from_loops(loop_values, loop_totals)

    def check(self) -> None:
        """VekError when a face names a vertex that is not there, or a list has a wrong length."""
        self._checked()

    def _checked(self) -> Tuple[Numbers, Numbers, List[Numbers], Optional[Numbers]]:
        """The vertices, faces, corner values and UVs as they are written."""
        vertices = numbers.floats(self.vertices, "vertices")
        faces = numbers.ints(self.faces, "faces")
        uvs = None if self.uvs is None else numbers.floats(self.uvs, "UVs")
        if len(vertices) % 3 != 0:
            raise VekError("The mesh's vertices are not three numbers each.")
        if len(faces) % 4 != 0:
            raise VekError("The mesh's faces are not four numbers each.")
        if uvs is not None and len(uvs) % 2 != 0:
            raise VekError("The mesh's UVs are not two numbers each.")
        faces = numbers.negative_to_minus_one(faces)
        bad = _face_beyond(faces, len(vertices) // 3)
        if bad is not None:
            raise VekError("The mesh has a vertex that is not there in face {}.".format(bad))
        if self.face_kind not in _FACES:
            raise VekError("The mesh's faces are of an unknown kind, {}.".format(self.face_kind))
        if self.face_kind == TRIANGLES and numbers.triangle_count(faces) * 4 != len(faces):
            raise VekError("The mesh has quads and is to be written as triangles.")
        values = [self._checked_values(corners, faces) for corners in self.corners]
        return vertices, faces, values, uvs

    @staticmethod
    def _checked_values(corners: Corners, faces: Numbers) -> Numbers:
        values = numbers.ints(corners.values, "corner values")
        if len(values) != len(faces):
            raise VekError("The mesh's corner values are not four for each face.")
        if corners.kind not in _CORNERS:
            raise VekError("The mesh's corner values are of an unknown kind, {}.".format(
                corners.kind))
        return values


def read_mesh(path: Path) -> Mesh:
    """Reads the mesh. VekError when the file is missing, no exchange file, or damaged: an
    incomplete block, a count that its block does not hold, a face with a vertex that is not there,
    no end block. Takes no more memory than a few times what the file holds."""
    file = read_file(path)
    try:
        return _mesh_of(file)
    except VekError as error:
        raise VekError("The exchange file {}: {}".format(error, shown(path))) from None
    except MemoryError:
        raise VekError("The mesh needs more memory than there is: " + shown(path)) from None


def write_mesh(path: Path, mesh: Mesh) -> None:
    """Writes the mesh: vertices, faces, corner values, UV list, maps, other blocks. A reader sees
    the old file or the new one, never a half. VekError when it cannot be written or the mesh is
    wrong (`Mesh.check`); the old file is then as it was."""
    write_file(path, file_of(mesh))


def mesh_of(file: ExchangeFile) -> Mesh:
    """The mesh in blocks that were read before. VekError as for `read_mesh`."""
    try:
        return _mesh_of(file)
    except VekError as error:
        raise VekError("The exchange file {}.".format(error)) from None


def file_of(mesh: Mesh) -> ExchangeFile:
    """The blocks that `write_mesh` writes. VekError when the mesh is wrong."""
    vertices, faces, all_values, uvs = mesh._checked()
    face_count = len(faces) // 4
    file = ExchangeFile()

    def add(id: int, values: Numbers, count: int) -> Block:
        file.blocks.append(Block(id, numbers.payload_of(values), count))
        return file.blocks[-1]

    add(VERTICES, vertices, len(vertices) // 3)
    if mesh.face_kind == FACES_REPEATED:
        faces = numbers.minus_one_to_repeated(faces)
    if mesh.face_kind == TRIANGLES:
        faces = numbers.without_fourth(faces)
    add(mesh.face_kind, faces, face_count)
    for corners, values in zip(mesh.corners, all_values):
        if mesh.face_kind == TRIANGLES:
            values = numbers.without_fourth(values)
        count = face_count if corners.count is None else corners.count
        add(corners.kind, values, count).param_bits = corners.param_bits
    if uvs is not None:
        add(UV_LIST, uvs, len(uvs) // 2)
    for name in mesh.maps:
        file.blocks.append(_map_block(name))
    file.blocks += mesh.other_blocks
    return file


# What follows raises VekErrors that are the end of a sentence about a file.


def _mesh_of(file: ExchangeFile) -> Mesh:
    vertex_block, face_block = file.last(VERTICES), file.last(*_FACES)
    if vertex_block is None:
        raise VekError("holds no vertices")
    if face_block is None:
        raise VekError("holds no faces")
    mesh = Mesh(face_kind=face_block.id)
    mesh.vertices = _floats_of(vertex_block, 3, "vertices")
    mesh.faces = _faces_of(face_block, mesh.vertex_count)
    mesh.corners = _corners_of(file, mesh)
    uv_block = file.last(UV_LIST)
    if uv_block is not None:
        mesh.uvs = _floats_of(uv_block, 2, "UVs")
    for block in file.blocks:
        if block.id in _MAPS:
            mesh.maps.append(_map_name(block))
        elif block.id not in (VERTICES, UV_LIST) + _FACES + _CORNERS:
            mesh.other_blocks.append(block)
    return mesh


def _floats_of(block: Block, size: int, what: str) -> Numbers:
    if block.count > _payload_size(block) // (4 * size):
        raise VekError("claims more {} than it holds".format(what))
    return numbers.floats_from(block.payload, block.count * size)


def _faces_of(block: Block, vertex_count: int) -> Numbers:
    faces = _laid_out_like_faces(block, block.id, block.count)
    if faces is None:
        raise VekError("claims more faces than it holds")
    # A fourth index below zero marks a triangle in one kind of faces only.
    if block.id == FACES_REPEATED:
        fourth = numbers.places(faces, 3)
        if len(fourth) and numbers.least(fourth) < 0:
            raise VekError("has a face with a vertex that is not there")
        faces = numbers.repeated_to_minus_one(faces)
    if block.id == FACES_NEGATIVE:
        faces = numbers.negative_to_minus_one(faces)
    bad = _face_beyond(faces, vertex_count)
    if bad is not None:
        raise VekError("has a vertex that is not there in face {}".format(bad))
    return faces


def _laid_out_like_faces(block: Block, face_kind: int, face_count: int) -> Optional[Numbers]:
    """None when the block does not hold as many."""
    size = 3 if face_kind == TRIANGLES else 4
    if face_count > _payload_size(block) // (4 * size):
        return None
    values = numbers.ints_from(block.payload, face_count * size)
    return numbers.with_fourth(values) if size == 3 else values


def _corners_of(file: ExchangeFile, mesh: Mesh) -> List[Corners]:
    """The last block of each kind, in the order of the file."""
    result: List[Corners] = []
    for block in reversed([block for block in file.blocks if block.id in _CORNERS]):
        if any(corners.kind == block.id for corners in result):
            continue
        values = _laid_out_like_faces(block, mesh.face_kind, mesh.face_count)
        if values is not None:
            result.append(Corners(values, block.id, block.count))
            result[-1].param_bits = block.param_bits
        elif not result:
            raise VekError("holds fewer corner values than faces need")
    return result[::-1]


def _face_beyond(faces: Numbers, vertex_count: int) -> Optional[int]:
    """The first face with a vertex that is not there. The usual answer is found fast."""
    if len(faces) == 0:
        return None
    fine = numbers.greatest(faces) < vertex_count and all(
        numbers.least(numbers.places(faces, place)) >= 0 for place in range(3))
    return None if fine else numbers.first_face_beyond(faces, vertex_count)


def _map_name(block: Block) -> MapName:
    name = MapName(block.id, to_text(bytes(block.payload).split(b"\0", 1)[0]))
    name.param_bits = block.param_bits
    return name


def _map_block(name: MapName) -> Block:
    if name.kind not in _MAPS:
        raise VekError("The mesh has a map of an unknown kind, {}.".format(name.kind))
    text = to_bytes(name.name)
    if b"\0" in text:
        raise VekError("The mesh has a map whose file name has a NUL in it.")
    block = Block(name.kind, text + b"\0")
    block.param_bits = name.param_bits
    return block


def _payload_size(block: Block) -> int:
    payload: Bytes = block.payload
    return memoryview(payload).nbytes
