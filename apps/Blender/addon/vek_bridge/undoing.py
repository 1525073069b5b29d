"""Undo takes back what was done in the scene, and not that an object has a file: what is sent,
undone and sent again would get a second file else."""

import bpy
from bpy.app.handlers import persistent

from . import objects

_before = {}  # lines by the names of objects, as they were before the step
_gone = {}  # of objects that an undo took away, in case that a redo brings them back


def _lines():
    return {obj.name: objects.line_of(obj) for obj in bpy.data.objects if objects.line_of(obj)}


@persistent
def _note_lines(*_):
    _before.clear()
    _before.update(_lines())


@persistent
def _keep_lines(*_):
    _gone.update((name, line) for name, line in _before.items() if name not in bpy.data.objects)
    _give(_before)


@persistent
def _keep_lines_in_redo(*_):
    _give({**_gone, **_before})


def _give(wanted):
    now = _lines()
    in_use = set(now.values())
    for name, line in wanted.items():
        obj = bpy.data.objects.get(name)
        if obj and not obj.library and now.get(name) != line and line not in in_use:
            objects.remember_line(obj, line)


_HANDLERS = (("undo_pre", _note_lines), ("undo_post", _keep_lines), ("redo_pre", _note_lines),
             ("redo_post", _keep_lines_in_redo))


def register():
    for when, handler in _HANDLERS:
        getattr(bpy.app.handlers, when).append(handler)


def unregister():
    for when, handler in _HANDLERS:
        getattr(bpy.app.handlers, when).remove(handler)
