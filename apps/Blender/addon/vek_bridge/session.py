"""A Blender with a window answers to the host's orders: edit.sh leaves a file, and the Blender
whose process id is noted beside it takes the file away and receives the objects of the list."""

import atexit
import os
import time
import traceback

import bpy

from . import bridge, running
from .vek_exchange import VekError
from .work import shown

_INTERVAL = 0.5  # seconds
_OLD = 120.0  # seconds after which an order is no longer what the user waits for
_LATE = "Dorvia sent objects some time ago; press Receive to get them."


def _order():
    return bridge.app_file("Blender_Order.txt")


def _took_an_order():
    """Whether there was one that the user still waits for."""
    try:
        age = time.time() - os.stat(_order()).st_mtime
        os.remove(_order())
    except OSError:
        return False
    if age >= _OLD:
        bpy.context.window_manager.vek_message = _LATE
        _redraw()
    return age < _OLD


def _keep_order():
    """The user was told that it waits, so however long that takes it does not become old."""
    try:
        if time.time() - os.stat(_order()).st_mtime < _OLD:
            os.utime(_order())
        else:
            _took_an_order()
    except OSError:
        pass  # taken away, or not ours to change


def _receive():
    windows = bpy.context.window_manager.windows
    with bpy.context.temp_override(window=windows[0]):
        try:
            bpy.ops.vek.receive("INVOKE_DEFAULT", True)
        except RuntimeError:
            pass  # the panel has the sentence


def _show_project():
    try:
        folder = shown(bridge.tree().project_folder())
    except VekError:
        folder = ""
    manager = bpy.context.window_manager
    if manager.vek_project != folder:
        manager.vek_project = folder


def _is_user_busy():
    """Whether a tool runs or a mode is on: Blender crashes where the mode is left under a tool."""
    manager = bpy.context.window_manager
    if manager.vek_progress >= 0:
        return True
    for window in manager.windows:
        active = window.view_layer.objects.active
        if active and active.mode != "OBJECT":
            return True
        if len(getattr(window, "modal_operators", ())):  # Blender 3.4 does not tell them
            return True
    return False


def _show_waiting(is_waiting):
    manager = bpy.context.window_manager
    if manager.vek_waiting != is_waiting:
        manager.vek_waiting = is_waiting
        _redraw()


def _redraw():
    for window in bpy.context.window_manager.windows:
        for area in window.screen.areas:
            if area.type == "VIEW_3D":
                area.tag_redraw()


def _watch():
    try:
        _look()
    except Exception:
        traceback.print_exc()  # and looks again: a timer that raises is run no more
    return _INTERVAL


def _look():
    _show_project()
    has_window = bool(bpy.context.window_manager.windows)
    ordered = has_window and running.answers() and os.path.exists(_order())
    must_wait = ordered and _is_user_busy()
    _show_waiting(must_wait)
    if must_wait:
        _keep_order()
    elif ordered and _took_an_order():
        _receive()


def register():
    if not bpy.app.background:
        bpy.app.timers.register(_watch, first_interval=_INTERVAL, persistent=True)
        atexit.register(running.take_the_note_away)


def unregister():
    if bpy.app.timers.is_registered(_watch):
        bpy.app.timers.unregister(_watch)
    atexit.unregister(running.take_the_note_away)
    running.take_the_note_away()
