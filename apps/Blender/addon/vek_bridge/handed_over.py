"""Whose turn it is: what stands on the object list and in its files may come from Blender, from the
host, or from Blender and be taken over by the host. That turns the files to its own axes then, so
they do not fit Blender any more until it sends them again."""

import os

from . import bridge, paths
from .vek_exchange import VekError, write_whole

_SENT, _RECEIVED = "Blender_Sent.txt", "Blender_Received.txt"
_last = {}  # the notes by their names, for where they cannot be written
_warned_of = b""  # the mark of the list that the user was warned of


def _mark(path):
    """Differs when the file was written again. Empty when there is none."""
    try:
        status = os.stat(path)
    except OSError:
        return b""
    return b"%d-%d-%d" % (status.st_ino, status.st_size, status.st_mtime_ns)


def as_they_are(lines):
    """A note of the object list and of the files of the lines."""
    notes = [_mark(bridge.tree().object_list_file)]
    notes += [_mark(paths.of_line(line)) + b" " + line.encode("utf-8", "surrogateescape")
              for line in lines]
    return b"\n".join(notes)


def remember_sent(lines):
    """To be called when files and object list are written."""
    _keep(_SENT, as_they_are(lines))


def remember_received(note):
    """The note was made before the files were read."""
    _keep(_RECEIVED, note)


def _keep(name, note):
    path = bridge.app_file(name)
    try:
        write_whole(path, [note], mode=0o666)  # other users write it too
        _last.pop(path, None)
    except VekError:
        _last[path] = note


def _noted(name):
    """The mark of the list, and those of the files by their lines."""
    path = bridge.app_file(name)
    try:
        with open(path, "rb") as file:
            note = file.read()
    except OSError:
        note = b""
    of_list, *of_files = _last.get(path, note).split(b"\n")
    marks = (each.split(b" ", 1) for each in of_files if b" " in each)
    return of_list, {line.decode("utf-8", "surrogateescape"): mark for mark, line in marks}


def lines_taken_over():
    """The lines of the object list whose files the host has taken over. Empty when the list is not
    the one that Blender wrote: the host has sent objects since."""
    of_list, marks = _noted(_SENT)
    if not of_list or of_list != _mark(bridge.tree().object_list_file):
        return set()
    return {line for line, mark in marks.items() if _mark(paths.of_line(line)) not in (mark, b"")}


def warn_of_waiting():
    """VekError when the host has sent objects that are not received: they would be lost from the
    list, and files perhaps written over. Said once for each list, since the user may want that."""
    global _warned_of
    of_list = _mark(bridge.tree().object_list_file)
    if of_list == _warned_of:
        return
    waiting = _waiting(of_list)
    if waiting:
        _warned_of = of_list
        raise VekError(f"Nothing was sent, since Dorvia has sent what you have not received "
                       f"({_named(waiting)}); press Receive first, or Send again to go without it")


def _waiting(of_list):
    notes = [_noted(name) for name in (_SENT, _RECEIVED)]
    if not of_list or any(noted == of_list for noted, _ in notes):
        return []
    lines = {line: _mark(paths.of_line(line)) for line in bridge.tree().object_list()}
    return [line for line, mark in lines.items()
            if mark and all(marks.get(line) != mark for _, marks in notes)]


def _named(lines):
    names = [line.rsplit("/", 1)[-1] for line in lines]
    return ", ".join(names[:3]) + (f" and {len(names) - 3} more" if len(names) > 3 else "")
