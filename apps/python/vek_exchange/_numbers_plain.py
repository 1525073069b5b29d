"""The work on long lists of numbers, with nothing but the standard library.

Lists are flat `array.array`s in the processor's byte order; payloads are little-endian bytes.
Faces have four places each, the fourth -1 for a triangle. `_numbers_numpy` has the same functions.
"""

from __future__ import annotations

import itertools
import sys
from array import array
from typing import Any, Optional, Tuple

from ._files import Bytes
from .errors import VekError

_INT = "i" if array("i").itemsize == 4 else "l"


def floats(values: Any, what: str) -> Any:
    return _converted("f", values, what, "numbers")


def ints(values: Any, what: str) -> Any:
    return _converted(_INT, values, what, "whole numbers of 32 bits")


def floats_from(payload: Bytes, count: int) -> Any:
    return _from_payload("f", payload, count)


def ints_from(payload: Bytes, count: int) -> Any:
    return _from_payload(_INT, payload, count)


def payload_of(values: Any) -> Bytes:
    if sys.byteorder == "big":
        values = array(values.typecode, values)
        values.byteswap()
    data: bytes = values.tobytes()
    return data


def least(values: Any) -> int:
    number: int = min(values)
    return number


def greatest(values: Any) -> int:
    number: int = max(values)
    return number


def places(values: Any, place: int) -> Any:
    """One place of each face."""
    return values[place::4]


def with_fourth(threes: Any) -> Any:
    """Four places from three: -1 in the fourth."""
    fours = array(_INT, [-1]) * (len(threes) // 3 * 4)
    for place in range(3):
        fours[place::4] = threes[place::3]
    return fours


def without_fourth(fours: Any) -> Any:
    threes = array(_INT, [0]) * (len(fours) // 4 * 3)
    for place in range(3):
        threes[place::3] = fours[place::4]
    return threes


def negative_to_minus_one(faces: Any) -> Any:
    fourth = faces[3::4]
    if not fourth or min(fourth) >= -1:
        return faces
    faces = array(_INT, faces)
    faces[3::4] = array(_INT, [max(index, -1) for index in fourth])
    return faces


def repeated_to_minus_one(faces: Any) -> Any:
    faces = array(_INT, faces)
    pairs = zip(faces[2::4], faces[3::4])
    faces[3::4] = array(_INT, [-1 if third == fourth else fourth for third, fourth in pairs])
    return faces


def minus_one_to_repeated(faces: Any) -> Any:
    faces = array(_INT, faces)
    pairs = zip(faces[2::4], faces[3::4])
    faces[3::4] = array(_INT, [third if fourth < 0 else fourth for third, fourth in pairs])
    return faces


def first_face_beyond(faces: Any, vertex_count: int) -> Optional[int]:
    """The first face with a vertex that is not there."""
    for face in range(len(faces) // 4):
        corners = faces[4 * face:4 * face + 4]
        if min(corners[:3]) < 0 or max(corners) >= vertex_count:
            return face
    return None


def triangle_count(faces: Any) -> int:
    return sum(1 for fourth in faces[3::4] if fourth < 0)


def loops(faces: Any) -> Tuple[Any, Any, Any]:
    totals = array(_INT, [3 if fourth < 0 else 4 for fourth in faces[3::4]])
    starts = array(_INT, [0])
    starts.extend(itertools.accumulate(totals))
    starts.pop()
    return loop_values(faces, faces), starts, totals


def loop_values(faces: Any, values: Any) -> Any:
    if triangle_count(faces) == 0:
        return array(_INT, values)
    keeps = bytearray(b"\1" * len(faces))
    keeps[3::4] = bytes(0 if fourth < 0 else 1 for fourth in faces[3::4])
    return array(_INT, itertools.compress(values, keeps))


def from_loops(values: Any, totals: Any) -> Any:
    for total in totals:
        if total not in (3, 4):
            raise _corners_error(total)
    if sum(totals) != len(values):
        raise VekError("The faces have {} corners together, and {} are given.".format(
            sum(totals), len(values)))
    fours = array(_INT)
    at = 0
    for total in totals:
        fours.extend(values[at:at + total])
        if total == 3:
            fours.append(-1)
        at += total
    return fours


def _corners_error(total: int) -> VekError:
    return VekError("A face has {} corners: split it into triangles and quads first.".format(total))


def _converted(typecode: str, values: Any, what: str, kind: str) -> Any:
    if isinstance(values, array) and values.typecode == typecode:
        return values
    try:
        return array(typecode, values)
    except (TypeError, ValueError, OverflowError):
        raise VekError("The mesh's {} are not a flat list of {}.".format(what, kind)) from None


def _from_payload(typecode: str, payload: Bytes, count: int) -> Any:
    values = array(typecode)
    values.frombytes(memoryview(payload).cast("B")[:4 * count])
    if sys.byteorder == "big":
        values.byteswap()
    return values
