"""Objects from Dorvia and back: the Blender side of the bridge."""

bl_info = {
    "name": "Vek",
    "description": "Receives objects from Dorvia and sends them back",
    "version": (0, 1, 0),
    "blender": (3, 2, 0),
    "location": "3D Viewport > Sidebar > Vek; File > Import and Export",
    "category": "Import-Export",
}

from . import interface, operators, session, undoing


def register():
    operators.register()
    interface.register()
    undoing.register()
    session.register()


def unregister():
    session.unregister()
    undoing.unregister()
    interface.unregister()
    operators.unregister()
