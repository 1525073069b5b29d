"""Receive and Send, and their like in the File menu."""

import os
import time
import traceback

import bpy
from bpy.props import CollectionProperty, StringProperty
from bpy_extras.io_utils import ExportHelper, ImportHelper

from . import bridge, handed_over, receiving, sending
from .bridge import EXTENSION
from .vek_exchange import VekError
from .work import sentence, shown

_TICK = 0.01  # seconds in which Blender draws and hears the user
_BETWEEN_DRAWINGS = 0.1  # seconds of work; a step that takes longer is done all the same


class _LongWork:
    """Does its work at once when a script calls it, else step by step under a progress bar; the
    escape key stops it then."""

    _changes_the_scene = False
    _goes_back = False  # to the mode that the user was in

    def work(self, context):
        raise NotImplementedError

    def execute(self, context):
        if not self._begin(context):
            return {"CANCELLED"}
        windows = context.window_manager
        windows.progress_begin(0, max(self._work.total, 1))
        while self._goes_on():
            self._step()
            windows.progress_update(self._work.done)
        windows.progress_end()
        return self._end(context)

    def invoke(self, context, _event):
        if bpy.app.background or not context.window:
            return self.execute(context)
        if not self._begin(context):
            return {"CANCELLED"}
        windows = context.window_manager
        self._timer = windows.event_timer_add(_TICK, window=context.window)
        windows.modal_handler_add(self)
        return {"RUNNING_MODAL"}

    def modal(self, context, event):
        if event.type == "ESC" and self._goes_on():
            self._work.stop("you stopped it")
        elif event.type != "TIMER":
            return {"RUNNING_MODAL"}
        if not self._goes_on():
            self._stop_timer(context)
            return self._end(context)
        drawn = time.monotonic()
        while self._goes_on() and time.monotonic() - drawn < _BETWEEN_DRAWINGS:
            self._step()
        _show_progress(context, 100 * self._work.done / self._work.total)
        return {"RUNNING_MODAL"}

    def cancel(self, context):
        """Blender opens another scene, or ends."""
        self._work.give_up()
        self._stop_timer(context)

    def _begin(self, context):
        self._mode = _leave_other_modes(context)
        if self._changes_the_scene and self._mode != "OBJECT":
            # Otherwise undo would take back what was sculpted or painted in the mode too.
            bpy.ops.ed.undo_push(message="Leave the mode")
        try:
            self._work = self.work(context)
        except (VekError, OSError) as error:
            self._leave(context, "ERROR", sentence(str(error)))
            return False
        except Exception as error:
            traceback.print_exc()
            self._leave(context, "ERROR", sentence("The work did not begin", _surprise(error)))
            return False
        return True

    def _goes_on(self):
        return not (self._work.is_done or self._work.stopped_by)

    def _step(self):
        try:
            self._work.step()
        except Exception as error:
            traceback.print_exc()
            self._work.stop(_surprise(error))

    def _stop_timer(self, context):
        context.window_manager.event_timer_remove(self._timer)
        _show_progress(context, -1)

    def _end(self, context):
        try:
            level, text = self._work.outcome()
        except Exception as error:
            traceback.print_exc()
            level, text = "ERROR", sentence("The work did not end well", _surprise(error))
        self._leave(context, level, text)
        return {"CANCELLED"} if level == "ERROR" else {"FINISHED"}

    def _leave(self, context, level, text):
        if self._goes_back:
            _go_back_to(self._mode)
        _say(self, context, level, text)


def _surprise(error):
    said = " ".join(str(error).split()).rstrip(".") or type(error).__name__
    return f"the add-on failed, and Blender's console says where: {said}"


def _leave_other_modes(context):
    """Edits that are under way belong to the mesh only when their mode is left. The mode."""
    active = context.view_layer.objects.active
    mode = active.mode if active else "OBJECT"
    if context.mode != "OBJECT" and bpy.ops.object.mode_set.poll():
        bpy.ops.object.mode_set(mode="OBJECT")
    return mode


def _go_back_to(mode):
    if mode != "OBJECT" and bpy.ops.object.mode_set.poll():
        bpy.ops.object.mode_set(mode=mode)


def _say(operator, context, level, text):
    text = shown(text)
    context.window_manager.vek_message = text
    operator.report({level}, text)


def _show_progress(context, percent):
    context.window_manager.vek_progress = percent
    for window in context.window_manager.windows:
        for area in window.screen.areas:
            if area.type == "VIEW_3D":
                area.tag_redraw()


class VEK_OT_receive(_LongWork, bpy.types.Operator):
    """Bring the objects that Dorvia has sent into the scene"""
    bl_idname = "vek.receive"
    bl_label = "Receive"
    bl_options = {"REGISTER", "UNDO"}
    _changes_the_scene = True

    def work(self, context):
        return receiving.Receiving(context, receiving.lines_of_the_list(),
                                   from_the_host=True)


class VEK_OT_send(_LongWork, bpy.types.Operator):
    """Send the selected objects to Dorvia; where none is selected, all that came from there"""
    bl_idname = "vek.send"
    bl_label = "Send"
    bl_options = {"REGISTER", "UNDO"}  # a redo brings back what the objects remember
    _goes_back = True

    def work(self, context):
        handed_over.warn_of_waiting()
        chosen = sending.objects_to_send(context)
        lines = sending.lines_for(chosen, bridge.tree().project_folder(),
                                  context.scene)
        return sending.Sending(context, chosen, lines, to_the_host=True)


class VEK_OT_import(_LongWork, ImportHelper, bpy.types.Operator):
    """Import exchange files as they stand: z is up where the bridge has turned them for Blender"""
    bl_idname = "vek.import_files"
    bl_label = "Import Vek"
    bl_options = {"REGISTER", "UNDO"}
    _changes_the_scene = True
    filename_ext = EXTENSION
    filter_glob: StringProperty(default="*.vek;*.Vek;*.VEK", options={"HIDDEN"})
    files: CollectionProperty(type=bpy.types.OperatorFileListElement, options={"SKIP_SAVE"})
    directory: StringProperty(subtype="DIR_PATH", options={"SKIP_SAVE"})

    invoke = ImportHelper.invoke

    def work(self, context):
        paths = [os.path.join(self.directory, file.name) for file in self.files if file.name]
        paths = [receiving.checked(path) for path in paths or [self.filepath]]
        return receiving.Receiving(context, paths, from_the_host=False)


class VEK_OT_export(_LongWork, ExportHelper, bpy.types.Operator):
    """Export the selected objects: one under the name that you give, several under their own"""
    bl_idname = "vek.export_files"
    bl_label = "Export Vek"
    bl_options = {"REGISTER"}
    _goes_back = True
    filename_ext = EXTENSION
    filter_glob: StringProperty(default="*.vek", options={"HIDDEN"})

    invoke = ExportHelper.invoke

    def work(self, context):
        chosen = sending.objects_to_send(context)
        paths = [receiving.checked(self.filepath)]
        if len(chosen) != 1:
            paths = sending.paths_in(chosen, os.path.dirname(self.filepath))
        return sending.Sending(context, chosen, paths, to_the_host=False)


_CLASSES = (VEK_OT_receive, VEK_OT_send, VEK_OT_import, VEK_OT_export)


def register():
    for each in _CLASSES:
        bpy.utils.register_class(each)


def unregister():
    for each in reversed(_CLASSES):
        bpy.utils.unregister_class(each)
