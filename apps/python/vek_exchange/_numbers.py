"""The work on long lists of numbers: in bulk where numpy is there."""

from __future__ import annotations

from typing import Any


def _choose() -> Any:
    try:
        from . import _numbers_numpy
        return _numbers_numpy
    except ImportError:
        from . import _numbers_plain
        return _numbers_plain


numbers = _choose()
