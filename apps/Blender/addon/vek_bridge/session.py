"""A Blender with a window answers to the host's orders: edit.sh leaves a file, and the Blender
whose process id is noted beside it takes the file away and receives the objects of the list."""

import atexit
import os
import time

import bpy

from . import bridge
from .vek_exchange import VekError

_INTERVAL = 0.5  # seconds
_OLD = 120.0  # seconds after which an order is no longer what the user waits for


def _note():
    return bridge.app_file("Blender_Running.txt")


def _order():
    return bridge.app_file("Blender_Order.txt")


def _noted_process():
    try:
        with open(_note(), encoding="ascii") as note:
            return int(note.read().split("=")[1])
    except (OSError, ValueError, IndexError):
        return None


def _is_alive(process):
    try:
        os.kill(process, 0)
    except ProcessLookupError:
        return False
    except OSError:
        pass  # somebody else's
    return True


def _answers():
    """Whether it is this Blender that answers. Where none does, it is from now on."""
    process = _noted_process()
    if process == os.getpid():
        return True
    if process is not None and _is_alive(process):
        return False
    try:
        with open(_note(), "w", encoding="ascii") as note:
            note.write(f"PID = {os.getpid()}\n")
    except OSError:
        return False
    return True


def _took_an_order():
    try:
        age = time.time() - os.stat(_order()).st_mtime
        os.remove(_order())
    except OSError:
        return False
    return age < _OLD


def _receive():
    windows = bpy.context.window_manager.windows
    if not windows:
        return
    with bpy.context.temp_override(window=windows[0]):
        try:
            bpy.ops.vek.receive("INVOKE_DEFAULT", True)
        except RuntimeError:
            pass  # the panel has the sentence


def _show_project():
    try:
        folder = bridge.tree().project_folder()
    except VekError:
        folder = ""
    manager = bpy.context.window_manager
    if manager.vek_project != folder:
        manager.vek_project = folder


def _watch():
    _show_project()
    if _answers() and _took_an_order():
        _receive()
    return _INTERVAL


def register():
    if not bpy.app.background:
        bpy.app.timers.register(_watch, first_interval=_INTERVAL, persistent=True)
        atexit.register(_take_the_note_away)


def unregister():
    if bpy.app.timers.is_registered(_watch):
        bpy.app.timers.unregister(_watch)
    atexit.unregister(_take_the_note_away)
    _take_the_note_away()


def _take_the_note_away():
    if _noted_process() == os.getpid():
        try:
            os.remove(_note())
        except OSError:
            pass  # the process is soon gone, which says the same
