"""The work on long lists of numbers with numpy: as `_numbers_plain`, in bulk."""

from __future__ import annotations

from typing import Any, Optional, Tuple

import numpy as np

from ._files import Bytes
from .errors import VekError

_LIMITS = np.iinfo(np.int32)


def floats(values: Any, what: str) -> Any:
    numbers = _array(values)
    if numbers is None or numbers.dtype.kind not in "fiu":
        raise VekError("The mesh's {} are not a list of numbers.".format(what))
    # Beyond float32 is infinite, without a word about it.
    with np.errstate(over="ignore"):
        return np.ascontiguousarray(numbers, dtype=np.float32).reshape(-1)


def ints(values: Any, what: str) -> Any:
    numbers = _array(values)
    if numbers is not None and numbers.size == 0:
        return np.zeros(0, np.int32)
    if numbers is None or numbers.dtype.kind not in "iu" or not _fits(numbers):
        raise VekError("The mesh's {} are not a list of whole numbers of 32 bits.".format(what))
    return np.ascontiguousarray(numbers, dtype=np.int32).reshape(-1)


def _array(values: Any) -> Any:
    """None when it is no list, or none of things alike."""
    try:
        numbers = np.asarray(values)
    except (TypeError, ValueError, OverflowError):
        return None
    return None if numbers.ndim == 0 else numbers


def _fits(numbers: Any) -> bool:
    if numbers.dtype == np.int32:
        return True
    return bool(numbers.min() >= _LIMITS.min and numbers.max() <= _LIMITS.max)


def floats_from(payload: Bytes, count: int) -> Any:
    return np.frombuffer(payload, "<f4", count).astype(np.float32)


def ints_from(payload: Bytes, count: int) -> Any:
    return np.frombuffer(payload, "<i4", count).astype(np.int32)


def payload_of(values: Any) -> Bytes:
    little = values.dtype.newbyteorder("<")
    return memoryview(np.ascontiguousarray(values, dtype=little)).cast("B")


def least(values: Any) -> int:
    return int(values.min())


def greatest(values: Any) -> int:
    return int(values.max())


def places(values: Any, place: int) -> Any:
    return values[place::4]


def with_fourth(threes: Any) -> Any:
    fours = np.full((len(threes) // 3, 4), -1, np.int32)
    fours[:, :3] = threes.reshape(-1, 3)
    return fours.reshape(-1)


def without_fourth(fours: Any) -> Any:
    return np.ascontiguousarray(fours.reshape(-1, 4)[:, :3]).reshape(-1)


def negative_to_minus_one(faces: Any) -> Any:
    if len(faces) == 0 or faces[3::4].min() >= -1:
        return faces
    faces = faces.copy()
    np.maximum(faces[3::4], -1, out=faces[3::4])
    return faces


def repeated_to_minus_one(faces: Any) -> Any:
    faces = faces.copy()
    faces[3::4][faces[3::4] == faces[2::4]] = -1
    return faces


def minus_one_to_repeated(faces: Any) -> Any:
    faces = faces.copy()
    faces[3::4] = np.where(faces[3::4] < 0, faces[2::4], faces[3::4])
    return faces


def first_face_beyond(faces: Any, vertex_count: int) -> Optional[int]:
    table = faces.reshape(-1, 4)
    bad = (table[:, :3] < 0).any(axis=1) | (table >= vertex_count).any(axis=1)
    first = int(bad.argmax()) if len(bad) else 0
    return first if len(bad) and bad[first] else None


def triangle_count(faces: Any) -> int:
    return int(np.count_nonzero(faces[3::4] < 0))


def loops(faces: Any) -> Tuple[Any, Any, Any]:
    totals = (3 + (faces[3::4] >= 0)).astype(np.int32)
    starts = np.cumsum(totals, dtype=np.int32) - totals
    return loop_values(faces, faces), starts, totals


def loop_values(faces: Any, values: Any) -> Any:
    if triangle_count(faces) == 0:
        return values.copy()
    return values[_kept(faces[3::4] >= 0)]


def from_loops(values: Any, totals: Any) -> Any:
    odd = np.flatnonzero((totals != 3) & (totals != 4))
    if len(odd):
        raise VekError("A face has {} corners: split it into triangles and quads first.".format(
            int(totals[odd[0]])))
    if int(totals.sum()) != len(values):
        raise VekError("The faces have {} corners together, and {} are given.".format(
            int(totals.sum()), len(values)))
    if int(totals.sum()) == 4 * len(totals):
        return values.copy()
    fours = np.full(4 * len(totals), -1, np.int32)
    fours[_kept(totals == 4)] = values
    return fours


def _kept(has_fourth: Any) -> Any:
    keeps = np.ones((len(has_fourth), 4), bool)
    keeps[:, 3] = has_fourth
    return keeps.reshape(-1)
