"""The panel in the sidebar of the 3-D view, and the entries of the File menu."""

import blf
import bpy
from bpy.props import BoolProperty, FloatProperty, StringProperty

from . import operators

WAITING = ("Dorvia has sent objects; they come when you end the running tool and go back to "
           "Object Mode.")


_FONT = 0  # Blender's own
_BESIDE_A_LINE = 62  # pixels of a region that margins and tabs have


class VEK_PT_panel(bpy.types.Panel):
    bl_idname = "VEK_PT_panel"
    bl_label = "Vek"
    bl_category = "Vek"
    bl_space_type = "VIEW_3D"
    bl_region_type = "UI"

    def draw(self, context):
        windows = context.window_manager
        layout = self.layout
        layout.label(text="Project folder:")
        row = layout.row()
        row.label(text=_end_of(windows.vek_project) or "none", icon="FILE_FOLDER")
        if windows.vek_project:
            row.operator("wm.path_open", text="", icon="FILEBROWSER").filepath = windows.vek_project
        buttons = layout.column(align=True)
        buttons.enabled = windows.vek_progress < 0
        buttons.scale_y = 1.3
        buttons.operator(operators.VEK_OT_receive.bl_idname, icon="IMPORT")
        buttons.operator(operators.VEK_OT_send.bl_idname, icon="EXPORT")
        if windows.vek_progress >= 0:
            layout.prop(windows, "vek_progress", text="Esc stops", slider=True)
        elif windows.vek_waiting:
            _paragraph(layout.box().column(), WAITING, context.region.width)
        elif windows.vek_message:
            _paragraph(layout.box().column(), windows.vek_message, context.region.width)


def _end_of(path):
    """Of a long path the end tells most."""
    parts = path.split("/")
    return path if len(path) <= 24 else "…/" + "/".join(parts[-2:])


def _paragraph(column, text, region_width):
    """A label does not break its text by itself."""
    scale = bpy.context.preferences.system.ui_scale
    size = bpy.context.preferences.ui_styles[0].widget.points * scale
    blf.size(_FONT, size, *([72] if bpy.app.version < (3, 4, 0) else []))
    column.scale_y = 0.7
    for line in lines_of(text, region_width - _BESIDE_A_LINE * scale,
                         lambda words: blf.dimensions(_FONT, words)[0]):
        column.label(text=line)


def lines_of(text, width, width_of):
    """The text in lines no wider than that, broken at blanks. Wider words, as paths are, are cut."""
    lines = []
    while text and width_of(text) > width:
        end = 1
        while width_of(text[:end + 1]) <= width:
            end += 1
        blank = text.rfind(" ", 1, end + 1)
        end = blank if blank > 0 else end
        lines.append(text[:end])
        text = text[end:].lstrip(" ")
    return lines + [text] if text or not lines else lines


def _import_entry(self, _context):
    self.layout.operator(operators.VEK_OT_import.bl_idname, text="Vek (.vek)")


def _export_entry(self, _context):
    self.layout.operator(operators.VEK_OT_export.bl_idname, text="Vek (.vek)")


def register():
    manager = bpy.types.WindowManager
    manager.vek_message = StringProperty(name="What was done last", options={"SKIP_SAVE"})
    manager.vek_project = StringProperty(name="Project folder", options={"SKIP_SAVE"})
    manager.vek_waiting = BoolProperty(name="Objects wait", options={"SKIP_SAVE"})
    manager.vek_progress = FloatProperty(name="Progress", subtype="PERCENTAGE", min=-1, max=100,
                                         soft_min=0, precision=0, default=-1,
                                         options={"SKIP_SAVE"})
    bpy.utils.register_class(VEK_PT_panel)
    bpy.types.TOPBAR_MT_file_import.append(_import_entry)
    bpy.types.TOPBAR_MT_file_export.append(_export_entry)


def unregister():
    bpy.types.TOPBAR_MT_file_export.remove(_export_entry)
    bpy.types.TOPBAR_MT_file_import.remove(_import_entry)
    bpy.utils.unregister_class(VEK_PT_panel)
    for name in ("vek_progress", "vek_waiting", "vek_project", "vek_message"):
        delattr(bpy.types.WindowManager, name)
