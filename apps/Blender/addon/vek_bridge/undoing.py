"""Undo takes back what was done in the scene, and not that Send has made a file for an object: what
is sent, undone and sent again would get a second file else. Nor does it take back what was in the
files that are out: which modifiers, and the place at which frame.

An object is known again by its place in memory, which Blender keeps where an undo finds the object
before and after; names may go over to other objects. Only files that Blender has made are given
again: the host's must never go to an object that is not theirs."""

import bpy
from bpy.app.handlers import persistent

from . import objects

_made = set()  # lines of files that Send has made for objects since this scene was opened
_before = {}  # lines by the objects' places in memory, as they were before the step
_sent = {}  # likewise, what objects remember of what was sent


def remember_made(line):
    _made.add(line)


@persistent
def _note_lines(*_):
    _before.clear()
    for obj in bpy.data.objects:
        if objects.line_of(obj) in _made:
            _before[obj.as_pointer()] = objects.line_of(obj)


@persistent
def _note_sent(*_):
    _sent.clear()
    for obj in bpy.data.objects:
        if objects.line_of(obj):
            _sent[obj.as_pointer()] = (objects.line_of(obj), objects.sent_of(obj))


@persistent
def _give_sent(*_):
    for obj in bpy.data.objects:
        line, sent = _sent.get(obj.as_pointer(), ("", {}))
        if line and line == objects.line_of(obj) and not obj.library:
            objects.give_missing(obj, sent)


@persistent
def _give_lines(*_):
    in_use = {objects.line_of(obj) for obj in bpy.data.objects}
    for obj in bpy.data.objects:
        line = _before.get(obj.as_pointer())
        if line and line not in in_use and not obj.library:
            objects.remember_line(obj, line)


@persistent
def _forget(*_):
    _made.clear()
    _before.clear()
    _sent.clear()


# A redo of Receive is right to forget what was sent.
_HANDLERS = (("undo_pre", _note_lines), ("undo_pre", _note_sent), ("undo_post", _give_lines),
             ("undo_post", _give_sent), ("redo_pre", _note_lines), ("redo_post", _give_lines),
             ("load_post", _forget))


def register():
    for when, handler in _HANDLERS:
        getattr(bpy.app.handlers, when).append(handler)


def unregister():
    for when, handler in _HANDLERS:
        getattr(bpy.app.handlers, when).remove(handler)
