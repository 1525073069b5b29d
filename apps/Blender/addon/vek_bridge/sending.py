"""Objects of the scene go to the host."""

import os

from . import bridge, handed_over, mesh_out, objects, paths, undoing
from .vek_exchange import VekError, stage_file
from .work import Work, counted, sentence


class Sending(Work):
    """Each item is an object; `lines` are those of the object list, or the paths of files that do
    not go to the host. Every file is written beside its place first, and takes it only when all are
    written; so where one cannot be written, the files and the object list stay as they were."""

    def __init__(self, context, objs, lines, to_the_host):
        super().__init__(objs)
        self._written = []  # object, line, its staged file
        self._instances = [obj.name for obj in context.selected_objects
                           if obj.instance_type == "COLLECTION"]
        self._frame = context.scene.frame_float
        self._drawings = [obj.name for obj in context.selected_objects
                          if obj.type in objects.SEEN_AND_NO_MESH]
        self._metaballs = []  # names of those that Blender melts into another
        self._incomplete = []  # names of objects that show instances beside their meshes
        self._depsgraph = context.evaluated_depsgraph_get()
        self._instancers = {each.parent.original for each in self._depsgraph.object_instances
                            if each.is_instance and each.parent}
        self._lines = lines
        self._to_the_host = to_the_host
        self._problem = ""
        self._split = 0
        self._without_corners = 0
        self._low = []  # names of objects whose sculpt is not sent in full, and how much is
        self._points = []  # names of objects that have edges and no faces

    def do(self, obj):
        if self._problem:
            return
        line = self._lines[self.done - 1]
        path = paths.of_line(line) if self._to_the_host else line
        try:
            self._write(obj, line, path)
        except VekError as error:
            self._problem = str(error)

    def _write(self, obj, line, path):
        taken = mesh_out.Taken(obj, self._depsgraph)
        if not len(taken.vertices) and obj.type == "META":
            self._metaballs.append(obj.name)
            return
        if not len(taken.vertices) and not objects.is_empty(obj):
            self._instances.append(obj.name)  # an empty mesh would take the place of what it is
            return
        file, dropped = mesh_out.exchange_file(taken, objects.face_kind(obj),
                                               objects.kept_blocks(obj), objects.given_mark(obj))
        self._written.append((obj, line, stage_file(path, file)))
        if obj in self._instancers and obj.type == "MESH":  # letters of a text are its own
            self._incomplete.append(obj.name)
        self._split += taken.split
        if objects.hidden_levels(obj):
            self._low.append(f"{obj.name} ({objects.hidden_levels(obj)})")
        if taken.has_edges_alone:
            self._points.append(obj.name)
        self._without_corners += dropped

    def give_up(self):
        for _, _, staged in self._written:
            staged.drop()

    def outcome(self):
        try:
            return self._outcome()
        finally:
            self.give_up()

    def _outcome(self):
        if not self.total and not self._instances and not self._drawings:
            return "ERROR", "There is nothing to send: select objects, or receive some first."
        if self._problem or self.stopped_by:
            return "ERROR", sentence("Nothing was sent", self._problem or self.stopped_by)
        if not self._written:
            return "ERROR", sentence("Nothing was sent", *self._said_left_out())
        problem = self._replace_files()
        if problem:
            return "ERROR", problem
        if self._to_the_host:
            lines = [line for _, line, _ in self._written]
            try:
                bridge.tree().write_object_list(lines)
            except VekError as error:
                return "WARNING", sentence("The files are written, but Dorvia is not told",
                                           str(error))
            handed_over.remember_sent(lines)
        return self._said_success()

    def _replace_files(self):
        """Each file takes its place. A sentence when one cannot, and all behind it did not."""
        for number, (obj, line, staged) in enumerate(self._written):
            try:
                staged.take_place()
            except VekError as error:
                return self._said_replaced(number, str(error))
            if self._to_the_host:
                if objects.line_of(obj) != line:
                    undoing.remember_made(line)
                objects.remember_sent(obj, line, self._frame)
        return ""

    def _said_replaced(self, number, why):
        if not number:
            return sentence("Nothing was sent", why)
        names = [os.path.basename(staged.path) for _, _, staged in self._written]
        return sentence("Not all files were replaced, and Dorvia is not told" if self._to_the_host
                        else "Not all files were replaced", why,
                        f"replaced: {', '.join(names[:number])}",
                        f"not replaced: {', '.join(names[number:])}")

    def _said_left_out(self):
        return [f"{why}: {', '.join(names)}" for why, names in (
            ("not sent, having no mesh of their own (make instances real first)", self._instances),
            ("not sent by itself, being part of another metaball", self._metaballs),
            ("not sent, being no mesh", self._drawings),
            ("without their instances (make them real first)", self._incomplete),
            ("less than the whole sculpt, as the Multires modifier shows less", self._low),
            ("only points of what has edges and no faces", self._points)) if names]

    def _said_success(self):
        verb = "sent" if self._to_the_host else "exported"
        left_out = self._said_left_out()
        level = "WARNING" if left_out else "INFO"
        clauses = [f"{counted(len(self._written), 'object')} {verb}"] + left_out
        if self._split:
            clauses.append(f"{counted(self._split, 'face')} with more than four corners split "
                           "into triangles")
        if self._without_corners:
            level = "WARNING"
            clauses.append(f"corner values of {counted(self._without_corners, 'object')} left out, "
                           "since the faces changed")
        if self._to_the_host:
            try:
                if not bridge.hand_back():
                    clauses.append("import them in Dorvia")
            except VekError as error:
                level = "WARNING"
                clauses.append(f"import them in Dorvia, since {error}")
        return level, sentence(*clauses)


def objects_to_send(context):
    """The selected ones, or all that were received where none is selected."""
    chosen = [obj for obj in context.selected_objects if obj.type in objects.SENDABLE]
    if chosen or context.selected_objects:
        return chosen
    return [obj for obj in context.visible_objects
            if obj.type in objects.SENDABLE and objects.line_of(obj)]


def lines_for(objs, folder, scene):
    """A line for each object: where it came from, or a free place in the folder. A copy of a
    received object remembers the same place, and gets one of its own, also where it goes alone."""
    originals = objects.originals(scene)
    used, lines = set(originals), []
    for obj in objs:
        line = objects.line_of(obj)
        if not line or originals.get(paths.key_of_line(line)) != obj:
            line = paths.free_line(folder, obj.name, used, paths.of_line)
        used.add(paths.key_of_line(line))
        lines.append(line)
    return lines


def paths_in(objs, folder):
    """A path for each object, in the folder, for a file that is not there yet."""
    used, found = set(), []
    for obj in objs:
        path = paths.of_export(paths.free_line(folder, obj.name, used, paths.of_export))
        used.add(paths.key(path))
        found.append(path)
    return found
