"""Objects that the host sent come into the scene."""

import os

import bpy
from mathutils import Matrix

from . import bridge, mesh_in, objects
from .vek_exchange import VekError
from .work import Work, counted, sentence, shown

EXTENSION = ".vek"


class Receiving(Work):
    """Each item is a line of the object list. An object that the host sent before gets the new
    mesh; what it is called and what it is made of stay. Of files that are not the host's, whose
    paths are the items then, nothing is remembered, so that sending does not write over them."""

    def __init__(self, context, lines, from_the_host):
        super().__init__(lines)
        self._context = context
        self._from_the_host = from_the_host
        self._known = {}
        if from_the_host:
            self._known = objects.originals(obj for obj in context.scene.objects
                                            if obj.type == "MESH")
        self._received = []
        self._failures = []
        self._left_out = 0
        self._rested = 0

    def do(self, line):
        path = bridge.tree().exchange_file(line, EXTENSION) if self._from_the_host else line
        try:
            given = mesh_in.Given(path)
        except VekError as error:
            self._failures.append(str(error))
            return
        name = shown(os.path.basename(path)[:-len(EXTENSION)])
        mesh = mesh_in.new_mesh(name, given)
        obj = self._known.get(objects.same_file(line))
        if obj:
            self._rested += objects.rest_sent_modifiers(obj)
            _replace_mesh(obj, mesh)
        else:
            obj = bpy.data.objects.new(name, mesh)
            self._context.collection.objects.link(obj)
        if self._from_the_host:
            self._known[objects.same_file(line)] = obj
            objects.remember_line(obj, line)
        objects.remember_given(obj, given, mesh_in.mark_of(given.faces, given.uvs))
        self._left_out += given.left_out
        if obj not in self._received:
            self._received.append(obj)

    def outcome(self):
        self._select_received()
        if not self.total:
            return "WARNING", "The object list is empty: Dorvia has sent nothing."
        if not self._received and self._failures:
            return "ERROR", sentence("Nothing was received", *self._said_failures())
        stopped = not self.is_done
        counts = counted(len(self._received), "object")
        if stopped or self._failures:
            counts = f"{len(self._received)} of {counted(self.total, 'object')}"
        clauses = [f"{counts} received", "you stopped it" if stopped else ""]
        clauses += self._said_failures()
        if self._left_out:
            clauses.append(f"{counted(self._left_out, 'face')} left out that used a vertex twice")
        if self._rested:
            clauses.append(f"modifiers of {counted(self._rested, 'object')} switched off, since "
                           "the mesh has them in it")
        all_well = len([clause for clause in clauses if clause]) == 1
        return "INFO" if all_well else "WARNING", sentence(*clauses)

    def _said_failures(self):
        more = len(self._failures) - 1
        if more < 0:
            return []
        return [self._failures[0], f"{more} more could not be read" if more else ""]

    def _select_received(self):
        if not self._received:
            return
        for obj in self._context.selected_objects:
            obj.select_set(False)
        for obj in self._received:
            try:
                obj.select_set(True)
            except RuntimeError:
                continue  # its collection is not in this view layer
            self._context.view_layer.objects.active = obj


def lines_of_the_list():
    return bridge.tree().object_list()


def checked(path):
    """The path of an exchange file. VekError when it has another extension."""
    if os.path.splitext(path)[1].lower() != EXTENSION:
        raise VekError(f"This is not a {EXTENSION} file: {path}")
    return path


def _replace_mesh(obj, mesh):
    old = obj.data
    name = old.name
    for material in old.materials:
        mesh.materials.append(material)
    obj.data = mesh
    if not old.users:
        bpy.data.meshes.remove(old)
        mesh.name = name
    obj.matrix_world = Matrix.Identity(4)  # files hold positions in the world
