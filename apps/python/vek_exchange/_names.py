"""Names for the exchange files of objects."""

from __future__ import annotations

import re
from typing import Iterable, List

# Room for the extension and a number in the 255 bytes of a file name.
_LONGEST = 230
# The bridge cuts a path at ':', file systems at '/' (Windows also at others), lines at breaks.
_BAD = re.compile(r'[\x00-\x1f\x7f/\\:\ud800-\udfff]')


def object_file_name(name: str) -> str:
    """What `Tree.object_file_name` says."""
    clean = _BAD.sub("_", name)
    clean = clean.encode("utf-8")[:_LONGEST].decode("utf-8", "ignore")
    # Blanks at the end would be trimmed off the line, and a name of none is no file's.
    ends = len(clean) - len(clean.rstrip(" "))
    clean = clean[:len(clean) - ends] + "_" * ends
    return clean or "_"


def object_file_names(names: Iterable[str]) -> List[str]:
    """What `Tree.object_file_names` says."""
    result: List[str] = []
    taken = set()
    for name in names:
        clean = unique = object_file_name(name)
        number = 1
        while unique.casefold() in taken:
            unique = "{}_{}".format(clean, number)
            number += 1
        taken.add(unique.casefold())
        result.append(unique)
    return result
