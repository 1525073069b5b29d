"""Where objects are that get meshes from the host."""

import bpy
import numpy as np
from mathutils import Matrix

from . import objects

_NOWHERE = np.identity(4)
_ROUNDS = 10  # more than one object hangs on another, as a rule


class Places:
    """The matrices of objects as they are when the work begins."""

    def __init__(self, objs, context):
        self._context = context
        self._found = world_matrices(objs, context)

    def of(self, obj):
        """The matrix under which the object was when its file was made."""
        if self._is_of_another_frame(obj):
            return np.array(objects.sent_matrix(obj)).reshape(4, 4)
        return self._found.get(obj, _NOWHERE)

    def put_under(self, obj, other):
        """A new object that is where the other is."""
        self._found[obj] = self.of(other)

    def hold(self, objs):
        """What hangs on the mesh of another object moves when that gets a new one, which the files
        know nothing of: the meshes stay in their places in the world."""
        held = [obj for obj in objs if obj in self._found and _is_held(obj)
                and not self._is_of_another_frame(obj)]
        for _ in range(_ROUNDS if held else 0):
            self._context.view_layer.update()
            now = world_matrices(held, self._context)
            moved = [obj for obj in held if not np.allclose(now[obj], self._found[obj], 0, 1e-6)]
            if not moved:
                return
            for obj in moved:
                _keep_in_place(obj, self._found[obj], now[obj])
                self._found[obj] = now[obj]

    def _is_of_another_frame(self, obj):
        """Whether it was sent at another point of its animation."""
        frame = objects.sent_frame(obj)
        return frame is not None and frame != self._context.scene.frame_float and _is_held(obj)


def world_matrices(objs, context):
    """By the objects. Blender does not keep up those of objects that are not shown at all."""
    depsgraph = context.evaluated_depsgraph_get()
    shown = [obj for obj in objs if obj.evaluated_get(depsgraph).is_evaluated]
    found = {obj: np.array(obj.matrix_world) for obj in shown}
    hidden = [obj for obj in objs if obj not in found]
    return {**found, **_hidden_matrices(hidden, context.scene)} if hidden else found


def _hidden_matrices(objs, scene):
    """They are shown for a moment, in a scene of their own."""
    own = bpy.data.scenes.new("Vek")
    switched_off = [obj for obj in objs if obj.hide_viewport and not obj.library]
    try:
        own.frame_float = scene.frame_float
        for obj in objs:
            own.collection.objects.link(obj)
        for obj in switched_off:
            obj.hide_viewport = False
        layer = own.view_layers[0]
        layer.update()
        return {obj: np.array(obj.evaluated_get(layer.depsgraph).matrix_world) for obj in objs}
    finally:
        for obj in switched_off:
            obj.hide_viewport = True
        bpy.data.scenes.remove(own)


def _is_held(obj):
    """Whether something else has a say in where it is."""
    return bool(obj.parent or obj.constraints or obj.animation_data)


def _keep_in_place(obj, old, new):
    try:
        way = np.linalg.inv(new) @ old
    except np.linalg.LinAlgError:
        return  # it is scaled to nothing now
    obj.data.transform(Matrix(way), shape_keys=True)
    obj.data.update()
