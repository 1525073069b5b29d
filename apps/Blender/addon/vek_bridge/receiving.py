"""Objects that the host sent come into the scene."""

import os

import bpy

from . import bridge, handed_over, mesh_in, objects, paths, replacing
from .bridge import EXTENSION
from .places import Places
from .vek_exchange import VekError
from .work import Work, counted, listed, sentence, shown


class Receiving(Work):
    """Each item is a line of the object list. An object that the host sent before gets the new
    mesh and stays what it is otherwise. Of files that are not the host's, whose paths are the items
    then, nothing is remembered, so that sending does not write over them."""

    def __init__(self, context, lines, from_the_host):
        super().__init__(lines)
        self._context = context
        self._from_the_host = from_the_host
        self._known = objects.originals(context.scene) if from_the_host else {}
        self._taken_over = handed_over.lines_taken_over() if from_the_host else set()
        self._note = handed_over.as_they_are(lines) if from_the_host else b""
        keys = [paths.key_of_line(line) for line in lines if self._known]
        self._places = Places({self._known[key] for key in keys if key in self._known}, context)
        self._received = []
        self._failures = []
        self._skipped = 0
        self._left_out = 0
        self._rested = 0
        self._replaced = []  # names of objects that are no meshes
        self._sculpts = []  # names of objects whose Multires modifier does not fit the new faces
        self._parted = []  # names of objects that shared their mesh with others
        self._lost = []  # words
        self._losers = 0

    def do(self, line):
        if line in self._taken_over:
            self._skipped += 1
            return
        path = paths.of_line(line) if self._from_the_host else line
        try:
            given = mesh_in.Given(path)
            obj = self._put(given, line, path)
        except VekError as error:
            self._failures.append(str(error))
            return
        if self._from_the_host:
            self._known[paths.key_of_line(line)] = obj
            objects.remember_line(obj, line)
        objects.remember_given(obj, given, mesh_in.mark_of(given.faces, given.uvs))
        self._left_out += given.left_out
        if obj not in self._received:
            self._received.append(obj)

    def _put(self, given, line, path):
        """The object that has the mesh now."""
        known = self._known.get(paths.key_of_line(line))
        if not known:
            name = shown(os.path.basename(path)[:-len(EXTENSION)])
            mesh = mesh_in.new_mesh(name, given.vertices, given.faces, given.uvs)
            obj = bpy.data.objects.new(name, mesh)
            self._collection.objects.link(obj)
            return obj
        matrix = self._places.of(known)
        replacing.check(known)
        if known.type != "MESH" or replacing.would_end_a_sculpt(known, given, matrix):
            obj = replacing.take_the_place_of(known, given, matrix)
            self._places.put_under(obj, known)
            (self._sculpts if known.type == "MESH" else self._replaced).append(known.name)
            return obj
        if known.data.users > 1:
            self._parted.append(known.name)
        words = replacing.put(known, given, matrix)
        self._rested += objects.rest_sent_modifiers(known)
        self._losers += bool(words)
        self._lost += [word for word in words if word not in self._lost]
        return known

    @property
    def _collection(self):
        """For new objects: the one that the user chose, unless it is part of another file."""
        chosen = self._context.collection
        if chosen.library or chosen.override_library:
            return self._context.scene.collection
        return chosen

    def outcome(self):
        self._places.hold(self._received)
        self._select_received()
        if self._from_the_host and not self.stopped_by:
            handed_over.remember_received(self._note)
        if not self.total:
            return "WARNING", "The object list is empty: Dorvia has sent nothing."
        if self._skipped == self.total:
            return "WARNING", ("Nothing was received: Dorvia has taken over what you sent, and has "
                               "sent nothing since.")
        if not self._received and self._failures:
            return "ERROR", sentence("Nothing was received", *self._said_failures())
        counts = counted(len(self._received), "object")
        if self.stopped_by or self._failures:
            counts = f"{len(self._received)} of {counted(self.total, 'object')}"
        notes = [clause for clause in self._notes() if clause]
        return "WARNING" if notes else "INFO", sentence(f"{counts} received", *notes)

    def _notes(self):
        """Clauses of what the user has to know."""
        yield self.stopped_by
        yield from self._said_failures()
        if self._skipped:
            yield f"{self._skipped} left out that Dorvia has taken over and not sent since"
        if self._left_out:
            yield f"{counted(self._left_out, 'face')} left out that used a vertex twice"
        if self._rested:
            yield (f"modifiers of {counted(self._rested, 'object')} switched off, since the mesh "
                   "has them in it")
        if self._lost:
            yield (f"{listed(self._lost)} of {counted(self._losers, 'object')} lost, since faces "
                   "or vertices are others now")
        if self._parted:
            yield f"no longer sharing a mesh with other objects: {', '.join(self._parted)}"
        if self._replaced:
            yield f"hidden, since a mesh takes the place: {', '.join(self._replaced)}"
        if self._sculpts:
            yield ("hidden with the sculpt of its Multires modifier, since a mesh with other faces "
                   f"takes the place: {', '.join(self._sculpts)}")
        hidden = [obj.name for obj in self._received
                  if not obj.visible_get() and self._is_in_this_scene(obj)]
        if hidden:
            yield f"not shown, as you hid it: {', '.join(hidden)}"
        elsewhere = [obj.name for obj in self._received if not self._is_in_this_scene(obj)]
        if elsewhere:
            yield f"in another scene of this file: {', '.join(elsewhere)}"

    def _is_in_this_scene(self, obj):
        return self._context.scene in obj.users_scene

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
