"""Exchange files (".Vek") block by block, byte for byte.

    file   = "Vekb", 28 bytes, block ..., end block
    block  = id, size, count: uint32; param: float32; payload and padding
    end block = 16 zero bytes

All numbers are little-endian. A block's size counts its 16-byte header, its payload and the zeros
that bring it to a multiple of 4. Whoever wants the mesh takes `vek_exchange.mesh`; this module is
for those who want to keep or look at every block.
"""

from __future__ import annotations

import os
from typing import List, Union

from .errors import VekError

Path = Union[str, "os.PathLike[str]"]

END = 0
VERTICES = 10001
FACES_NEGATIVE = 20001
FACES_REPEATED = 20002
TRIANGLES = 20003
CORNERS_1 = 25001
CORNERS_2 = 25002
MAP_0 = 45001
MAP_1 = 50001
MAP_2 = 55001
UV_LIST = 90001


class Block:
    """One block: `id`, `count`, `param` as they stand in its header, and the payload.

    A block that was read has its padding at the end of its payload, since a file does not say
    where one ends and the other begins.
    """

    __slots__ = ("id", "count", "param", "payload")

    def __init__(self, id: int, payload: Union[bytes, bytearray, memoryview] = b"",
                 count: int = 0, param: float = 0.0) -> None:
        self.id = id
        self.payload = payload
        self.count = count
        self.param = param


class ExchangeFile:
    """A whole file: the 28 reserved bytes of its header, and its blocks without the end block."""

    def __init__(self) -> None:
        self.reserved = bytes(28)
        self.blocks: List[Block] = []


def read_file(path: Path) -> ExchangeFile:
    """Reads the file whole. VekError when it is missing, no exchange file, or damaged."""
    raise NotImplementedError


def write_file(path: Path, file: ExchangeFile) -> None:
    """Writes the file so that a reader sees the old one or the new one, never a half.

    VekError when it cannot be written, or when a block is beyond the 4 GiB that the format can
    state; the old file is then as it was.
    """
    raise NotImplementedError
