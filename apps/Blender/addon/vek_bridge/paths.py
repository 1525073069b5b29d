"""Exchange files by their paths: which lines mean the same one, and which names are free."""

import os
import sys
import unicodedata

from .bridge import EXTENSION
from .vek_exchange import Tree


def of_line(line):
    return Tree.exchange_file(line, EXTENSION)


def of_export(line):
    """Where the user chose the folder: every colon in it stands for itself."""
    return line + EXTENSION


def key(path):
    """Equal for paths of the same file, whether it is there or not."""
    path = os.path.realpath(path)
    if _tells_letter_case(os.path.dirname(path)):
        return path
    return unicodedata.normalize("NFC", path).casefold()


def key_of_line(line):
    return key(of_line(line))


def _tells_letter_case(folder):
    """Whether "a" and "A" are two names in there."""
    parent, name = os.path.split(folder)
    while name and name.swapcase() == name:  # no letters, which tells nothing
        parent, name = os.path.split(parent)
    if not name:
        return sys.platform != "darwin"
    try:
        return not os.path.samefile(os.path.join(parent, name),
                                    os.path.join(parent, name.swapcase()))
    except OSError:
        return os.path.isdir(folder) or sys.platform != "darwin"


def free_line(folder, name, used, path_of):
    """A line for a new file of this name, whose key is not used, and that has no file already.
    `path_of`: see above."""
    base = f"{folder.rstrip('/')}/{Tree.object_file_name(name)}"
    line, number = base, 1
    while key(path_of(line)) in used or os.path.lexists(path_of(line)):
        number += 1
        line = f"{base}_{number}"
    return line
