"""Exchange files (".Vek") block by block, byte for byte.

    file   = "Vekb", 28 bytes, block ..., end block
    block  = id, size, count: uint32; param: float32; payload and padding
    end block = 16 zero bytes

All numbers are little-endian. A block's size counts its 16-byte header, its payload and the zeros
that bring it to a multiple of 4. Whoever wants the mesh takes `vek_exchange.mesh`; this module is
for those who want to look at every block, or to hand a file on with one block changed.
"""

from __future__ import annotations

import os
import struct
from typing import BinaryIO, List, Optional, Sequence

from ._files import Bytes, Path, StagedFile, failure, open_to_read, shown, write_whole
from .errors import VekError

END = 0
VERTICES = 10001  # count x 3 float32: x, y, z
FACES_NEGATIVE = 20001  # count x 4 int32; a negative fourth index marks a triangle
FACES_REPEATED = 20002  # count x 4 int32; a fourth index equal to the third marks a triangle
TRIANGLES = 20003  # count x 3 int32
CORNERS_1 = 25001  # one 4-byte value for each face corner, laid out like the faces
CORNERS_2 = 25002  # as CORNERS_1
MAP_0 = 45001  # map file name: NUL-terminated 8-bit text, padded
MAP_1 = 50001  # as MAP_0
MAP_2 = 55001  # as MAP_0; its param is reported with the name
UV_LIST = 90001  # count x 2 float32; the tool's own, to all others an unknown block

_FILE_HEADER_SIZE = 32
_MAGIC = b"Vekb"
_BLOCK_HEADER = struct.Struct("<IIII")
_FLOAT = struct.Struct("<f")
_LARGEST_PAYLOAD = 0xFFFFFFFF - 19


class WithParam:
    """Holds a float32 by its bits, so that it is handed back as it came, whatever it is."""

    __slots__ = ("param_bits",)

    def __init__(self, param: float) -> None:
        self.param = param

    @property
    def param(self) -> float:
        value: float = _FLOAT.unpack(self.param_bits.to_bytes(4, "little"))[0]
        return value

    @param.setter
    def param(self, value: float) -> None:
        try:
            self.param_bits = int.from_bytes(_FLOAT.pack(value), "little")
        except (OverflowError, struct.error):
            raise VekError("A block's number does not fit into 32 bits: {}".format(value)) from None


class Block(WithParam):
    """One block: `id`, `count`, `param` as they stand in its header, and the payload.

    A block that was read has its padding at the end of its payload, since a file does not say
    where the one ends and the other begins.
    """

    __slots__ = ("id", "count", "payload")

    def __init__(self, id: int, payload: Bytes = b"", count: int = 0, param: float = 0.0) -> None:
        super().__init__(param)
        self.id = id
        self.payload = payload
        self.count = count


class ExchangeFile:
    """A whole file: the 28 reserved bytes of its header, and its blocks without the end block."""

    def __init__(self, blocks: Sequence[Block] = ()) -> None:
        self.reserved = bytes(28)
        self.blocks: List[Block] = list(blocks)

    def last(self, *ids: int) -> Optional[Block]:
        """The last block with one of these ids: of several, the one that counts."""
        for block in reversed(self.blocks):
            if block.id in ids:
                return block
        return None


def read_file(path: Path) -> ExchangeFile:
    """Reads the file whole. VekError when it is missing, no exchange file, or damaged. Takes no
    more memory than the file is long, whatever its blocks say of their sizes."""
    try:
        with open_to_read(path) as file:
            return _Reader(path, file).read()
    except (OSError, ValueError, MemoryError) as error:
        raise failure("The exchange file cannot be read", path, error) from error


def write_file(path: Path, file: ExchangeFile) -> None:
    """Writes the file so that a reader sees the old one or the new one, never a half.

    VekError when it cannot be written, or when a block is beyond the 4 GiB that the format can
    state; the old file is then as it was.
    """
    write_whole(path, _pieces(path, file))


def stage_file(path: Path, file: ExchangeFile) -> StagedFile:
    """Writes the file beside the one that is there, where it waits to take its place: so several
    files change only when all could be written. VekError as for `write_file`. A link is followed,
    and permissions stay."""
    return StagedFile(path, _pieces(path, file))


def _pieces(path: Path, file: ExchangeFile) -> List[Bytes]:
    if len(file.reserved) != 28:
        raise VekError("The header of an exchange file has 28 reserved bytes: " + shown(path))
    pieces: List[Bytes] = [_MAGIC, file.reserved]
    for block in file.blocks:
        pieces += _block_pieces(path, block)
    pieces.append(bytes(_BLOCK_HEADER.size))
    return pieces


def _block_pieces(path: Path, block: Block) -> List[Bytes]:
    size = memoryview(block.payload).nbytes
    if size > _LARGEST_PAYLOAD:
        raise VekError("A block is too large for an exchange file: " + shown(path))
    whole = (size + 19) & ~3
    if block.id == END:
        raise VekError("A block with the id 0 would end the exchange file: " + shown(path))
    try:
        header = _BLOCK_HEADER.pack(block.id, whole, block.count, block.param_bits)
    except struct.error:
        raise VekError("A block's id and count are numbers of 32 bits: " + shown(path)) from None
    return [header, block.payload, bytes(whole - 16 - size)]


class _Reader:
    def __init__(self, path: Path, file: BinaryIO) -> None:
        self._path = path
        self._file = file
        self._size = os.fstat(file.fileno()).st_size

    def read(self) -> ExchangeFile:
        result = ExchangeFile()
        result.reserved = self._read_header()
        offset = _FILE_HEADER_SIZE
        while True:
            header = self._file.read(_BLOCK_HEADER.size)
            if len(header) < _BLOCK_HEADER.size:
                raise self._damaged("it has no end block", offset)
            id, size, count, param_bits = _BLOCK_HEADER.unpack(header)
            if id == END:
                return result
            if size < _BLOCK_HEADER.size:
                raise self._damaged("it holds a block with an impossible size", offset)
            if size > self._size - offset:
                raise self._damaged("it ends inside a block", offset)
            block = Block(id, self._file.read(size - _BLOCK_HEADER.size), count)
            block.param_bits = param_bits
            if len(block.payload) < size - _BLOCK_HEADER.size:
                raise self._damaged("it ends inside a block", offset)
            result.blocks.append(block)
            offset += size

    def _read_header(self) -> bytes:
        header = self._file.read(_FILE_HEADER_SIZE)
        if len(header) == _FILE_HEADER_SIZE and header.startswith(_MAGIC):
            return header[len(_MAGIC):]
        if header.startswith(bytes(4)):
            raise VekError("The exchange file was being rewritten when something went wrong, and "
                           "has to be exported again: " + shown(self._path))
        raise VekError("This is not a mesh exchange file: " + shown(self._path))

    def _damaged(self, what: str, offset: int) -> VekError:
        return VekError("The exchange file is damaged, {} at offset {}: {}".format(
            what, offset, shown(self._path)))
