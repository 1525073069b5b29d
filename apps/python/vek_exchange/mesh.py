"""The mesh in an exchange file.

    mesh = read_mesh("/p/torus.vek")
    mesh.vertices[0:3]            # x, y, z of the first vertex
    mesh.faces[0:4]               # its vertex numbers; a fourth of -1 marks a triangle
    write_mesh("/p/torus.vek", mesh)

Number lists are flat. Where numpy is there they are one-dimensional numpy arrays (float32, int32;
`mesh.vertices.reshape(-1, 3)` is the table of points), elsewhere `array.array`s. Either can be
given, and any other sequence of numbers.
"""

from __future__ import annotations

from typing import Any, List, Optional, Sequence, Tuple, Union

from .errors import VekError
from .exchange_file import Block, ExchangeFile, Path

Numbers = Any  # a flat numpy array, an array.array, or another sequence of numbers


class MapName:
    """The file name of a map that goes with the mesh. `kind` is the id of its block: MAP_0, ..."""

    def __init__(self, kind: int, name: str, param: float = 0.0) -> None:
        self.kind = kind
        self.name = name
        self.param = param


class Corners:
    """One 4-byte value for each of the four corner places of each face, as int32.

    Where the face is a triangle the fourth stands for nothing. What the values mean is between
    those who write and read them; in the files of the tool `vek` they are indices into `Mesh.uvs`,
    -1 for none. `kind` is the id of the block: CORNERS_1 or CORNERS_2.
    """

    def __init__(self, values: Numbers, kind: int = 25001, count: int = 0,
                 param: float = 0.0) -> None:
        self.values = values
        self.kind = kind
        self.count = count
        self.param = param


class Mesh:
    """A mesh of triangles and quads.

    vertices     3 float32 for each vertex
    faces        4 int32 for each face: vertex indices, the fourth -1 for a triangle
    face_kind    the id of the block that holds the faces in the file. FACES_NEGATIVE holds every
                 mesh; TRIANGLES holds triangles only, and writing quads so is a VekError.
    corners      the blocks of corner values; of several the bridge turns only the last
    uvs          2 float32 for each entry of the tool's UV list; None: there is no such block
    maps         the map file names
    other_blocks every other block, to be handed back as it came
    """

    def __init__(self, vertices: Numbers = (), faces: Numbers = (), *,
                 face_kind: int = 20001, corners: Sequence[Corners] = (),
                 uvs: Optional[Numbers] = None, maps: Sequence[MapName] = (),
                 other_blocks: Sequence[Block] = ()) -> None:
        raise NotImplementedError

    @property
    def vertex_count(self) -> int:
        raise NotImplementedError

    @property
    def face_count(self) -> int:
        raise NotImplementedError

    @property
    def triangle_count(self) -> int:
        raise NotImplementedError

    def loops(self) -> Tuple[Numbers, Numbers, Numbers]:
        """The faces as many programs hold them: the vertex index of each corner, without the empty
        places; where each face begins in that list; how many corners it has. All int32."""
        raise NotImplementedError

    def loop_values(self, corners: Corners) -> Numbers:
        """The corner values in the order of `loops()`, without the empty places."""
        raise NotImplementedError

    @staticmethod
    def faces_from_loops(loop_vertices: Numbers, loop_totals: Numbers) -> Numbers:
        """The reverse of `loops()`: `faces` of a mesh. `loop_totals` is the number of corners of
        each face, in order and without gaps. VekError for a face with other than 3 or 4."""
        raise NotImplementedError

    @staticmethod
    def values_from_loops(loop_values: Numbers, loop_totals: Numbers) -> Numbers:
        """Corner values for `Corners`, from a value for each corner; -1 in the empty places."""
        raise NotImplementedError

    def check(self) -> None:
        """VekError when a face names a vertex that is not there, or a list has a wrong length."""
        raise NotImplementedError


def read_mesh(path: Path) -> Mesh:
    """Reads the mesh. VekError when the file is missing, no exchange file, or damaged: an
    incomplete block, a count that its block does not hold, a face with a vertex that is not there,
    no end block. Takes no more memory than a few times what the file holds."""
    raise NotImplementedError


def write_mesh(path: Path, mesh: Mesh) -> None:
    """Writes the mesh: vertices, faces, corner values, UV list, maps, other blocks. A reader sees
    the old file or the new one, never a half. VekError when it cannot be written or the mesh is
    wrong (`Mesh.check`); the old file is then as it was."""
    raise NotImplementedError


def mesh_of(file: ExchangeFile) -> Mesh:
    """The mesh in blocks that were read before."""
    raise NotImplementedError


def file_of(mesh: Mesh) -> ExchangeFile:
    """The blocks that `write_mesh` writes."""
    raise NotImplementedError
