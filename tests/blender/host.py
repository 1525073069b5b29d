"""The host's side of a case: a tree of its own, whose files the library turns there and back."""

import os

from meshes import Back
from vek_exchange import DEFAULT_ROOT, Tree

KEYS = ("FLIP_X", "FLIP_Y", "FLIP_Z", "SWITCH_YZ")


def describe(bridge, descriptor):
    """Tells the library which way files are turned from now on."""
    folder = DEFAULT_ROOT + "/VekApps/Turns"
    os.makedirs(folder, exist_ok=True)
    with open(folder + "/Vek_Info.txt", "w", encoding="utf-8") as file:
        file.write(descriptor)
    assert bridge.call("InitializeVek", "/") >= 1
    index = bridge.call("FindVekApp", "Turns")
    assert index >= 0
    bridge.switches(index)
    bridge.call("VekSetExportScale", value=1.0)


def describe_as_shipped(bridge):
    with open(os.environ["VEK_APP"] + "/Vek_Info.txt", encoding="utf-8") as file:
        describe(bridge, file.read())


class Host:
    def __init__(self, root, bridge):
        self.root = str(root)
        self.tree = Tree(self.root)
        self.bridge = bridge
        self.sent = {}  # the bytes of each file as the host wrote it, by the object's line
        for folder in (self.tree.hub_folder, self.tree.app_folder("Blender"),
                       self.tree.default_project_folder):
            os.makedirs(folder)

    def line(self, name):
        return self.tree.default_project_folder + "/" + name

    def send(self, name, data, listed=True):
        line = self.line(name)
        self.write(line, data)
        self.sent[line] = data
        assert self.bridge.call("VekPostExport", line + ".vek") == 0
        if listed:
            self.tree.add_object(line)

    @staticmethod
    def write(line, data):
        with open(line + ".vek", "wb") as file:
            file.write(data)

    @staticmethod
    def bytes_of(line):
        with open(line + ".vek", "rb") as file:
            return file.read()

    def names_back(self):
        return [os.path.basename(line) for line in self.tree.object_list()]

    def bytes_back(self):
        """The bytes of each file that the list names, by name; the library turns each once."""
        if not hasattr(self, "_back"):
            self._back = {}
            describe_as_shipped(self.bridge)
            for line in self.tree.object_list():
                assert self.bridge.call("VekPreImport", line + ".vek") == 0
                self._back[os.path.basename(line)] = self.bytes_of(line)
        return self._back

    def back(self, name):
        return Back(self.bytes_back()[name])

    def left_over(self):
        """Files in the project folder that are no exchange files."""
        return [name for name in os.listdir(self.tree.default_project_folder)
                if name.startswith(".") or not name.endswith(".vek")]

    def files(self):
        """Every file below the tree and its bytes."""
        found = {}
        for folder, _, names in os.walk(self.root):
            for name in names:
                with open(os.path.join(folder, name), "rb") as file:
                    found[os.path.join(folder, name)] = file.read()
        return found
