"""Whether the host has taken over what Blender sent. It turns the files to its own axes then, so
they do not fit Blender any more until it sends them again."""

import os

from . import bridge, paths


def _note():
    return bridge.app_file("Blender_Sent.txt")


def _mark(path):
    """Differs when the file was written again. Empty when there is none."""
    try:
        status = os.stat(path)
    except OSError:
        return b""
    return b"%d-%d-%d" % (status.st_ino, status.st_size, status.st_mtime_ns)


def remember(lines):
    """To be called when files and object list are written."""
    notes = [_mark(bridge.tree().object_list_file)]
    notes += [_mark(paths.of_line(line)) + b" " + line.encode("utf-8", "surrogateescape") for line in lines]
    try:
        with open(_note(), "wb") as note:
            note.write(b"\n".join(notes))
        os.chmod(_note(), 0o666)  # other users write it too
    except OSError:
        pass  # an older note does not fit the list any more


def lines_taken_over():
    """The lines of the object list whose files the host has taken over. Empty when the list is not
    the one that Blender wrote: the host has sent objects since."""
    try:
        with open(_note(), "rb") as note:
            of_list, *of_files = note.read().split(b"\n")
    except OSError:
        return set()
    if not of_list or of_list != _mark(bridge.tree().object_list_file):
        return set()
    taken = set()
    for mark, line in (each.split(b" ", 1) for each in of_files):
        line = line.decode("utf-8", "surrogateescape")
        if _mark(paths.of_line(line)) not in (mark, b""):
            taken.add(line)
    return taken
