"""Blender with a window, on a virtual display: it is started, reached, and undoes what it did."""

import glob
import json
import os
import shutil
import subprocess
import time

import pytest

import cases
from host import describe_as_shipped
from meshes import file_bytes

pytestmark = pytest.mark.skipif(not shutil.which("Xvfb"), reason="there is no Xvfb here")
PATIENCE = 60.0  # seconds, where the machine is busy with other tests


@pytest.fixture
def display():
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as number:
        os.environ["DISPLAY"] = ":" + number.readline().strip()
    os.environ["LIBGL_ALWAYS_SOFTWARE"] = "1"
    yield
    server.terminate()
    server.wait()


class Window:
    def __init__(self, folder):
        self._folder = folder

    def state(self):
        try:
            return json.loads((self._folder / "state.json").read_text())
        except OSError:
            return {}

    def wait_for(self, holds):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            assert not (self._folder / "failed.txt").exists(), \
                (self._folder / "failed.txt").read_text()
            state = self.state()
            if state and holds(state):
                return state
            time.sleep(0.05)
        pytest.fail(f"It never came to that: {self.state()}")

    def do(self, order):
        (self._folder / "order.new").write_text(order)
        os.rename(self._folder / "order.new", self._folder / "order.py")


@pytest.fixture
def window(home, tree, installed, display, tmp_path):
    scripts = glob.glob(str(home / ".config/blender/*/scripts"))[0]
    os.makedirs(scripts + "/startup", exist_ok=True)
    probe = shutil.copy(os.path.dirname(__file__) + "/window_probe.py", scripts + "/startup")
    os.environ["VEK_PROBE"] = str(tmp_path)
    window = Window(tmp_path)
    yield window
    os.remove(probe)
    if window.state():
        window.do("bpy.ops.wm.quit_blender()")
        wait_for_the_end(tree)


def wait_for_the_end(tree):
    """Until no Blender answers to orders."""
    running = tree.app_file("Blender", "Blender_Running.txt")
    end = time.monotonic() + PATIENCE
    while os.path.exists(running) and time.monotonic() < end:
        time.sleep(0.05)
    assert not os.path.exists(running)


def test_orders_start_blender_and_reach_the_one_that_runs(tree, bridge, window):
    running = tree.app_file("Blender", "Blender_Running.txt")
    hosted(tree, bridge, ["First", "Second"])
    edit(bridge)
    state = window.wait_for(lambda state: "received" in state["message"] and not state["busy"])
    assert state["message"] == "2 objects received."
    assert {"First", "Second"} <= set(state["objects"])
    assert state["project"] == tree.default_project_folder
    with open(running, encoding="ascii") as note:
        assert note.read() == f"PID = {state['process']}\n"

    hosted(tree, bridge, ["Third"])
    edit(bridge)
    later = window.wait_for(lambda state: "Third" in state["objects"] and not state["busy"])
    assert later["process"] == state["process"]

    window.do("bpy.ops.ed.undo()")
    window.wait_for(lambda state: "Third" not in state["objects"] and "First" in state["objects"])
    window.do("bpy.ops.ed.redo()")
    window.wait_for(lambda state: "Third" in state["objects"])

    window.do("for obj in bpy.data.objects: obj.select_set(obj.name in ('First', 'Third'))\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: state["message"] == "2 objects sent; import them in Dorvia.")
    assert [os.path.basename(line) for line in tree.object_list()] == ["First", "Third"]

    window.do("bpy.ops.wm.quit_blender()")
    wait_for_the_end(tree)


def test_an_order_waits_for_the_end_of_an_edit(tree, bridge, window):
    hosted(tree, bridge, ["First"])
    edit(bridge)
    window.wait_for(lambda state: "First" in state["objects"] and not state["busy"])
    window.do("bpy.ops.object.mode_set(mode='EDIT')")
    window.wait_for(lambda state: state["mode"] == "EDIT_MESH")

    hosted(tree, bridge, ["Second"])
    edit(bridge)
    state = window.wait_for(lambda state: state["waiting"])
    time.sleep(1.5)  # several looks at the order
    state = window.state()
    assert state["waiting"] and state["mode"] == "EDIT_MESH" and "Second" not in state["objects"]
    assert os.path.exists(tree.app_file("Blender", "Blender_Order.txt"))

    window.do("bpy.ops.object.mode_set(mode='OBJECT')")
    window.wait_for(lambda state: "Second" in state["objects"] and not state["waiting"])


def test_a_redo_brings_back_what_was_sent_with_modifiers(tree, bridge, window):
    hosted(tree, bridge, ["First"])
    edit(bridge)
    window.wait_for(lambda state: "First" in state["objects"] and not state["busy"])
    window.do("bpy.ops.object.modifier_add('EXEC_DEFAULT', True, type='ARRAY')")
    window.wait_for(lambda state: state["modifiers"] == [True])
    window.do("bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: "1 object sent" in state["message"] and not state["busy"])
    window.do("bpy.ops.ed.undo(); bpy.context.window_manager.vek_message = 'undone'")
    state = window.wait_for(lambda state: state["message"] == "undone")
    assert state["modifiers"] == [True]  # it is the sending that was undone
    window.do("bpy.ops.ed.redo(); bpy.context.window_manager.vek_message = 'redone'")
    window.wait_for(lambda state: state["message"] == "redone")
    window.do("bpy.ops.vek.receive('INVOKE_DEFAULT', True)")
    state = window.wait_for(lambda state: "1 object received" in state["message"])
    assert state["modifiers"] == [False]


def edit(bridge):
    index = bridge.call("FindVekApp", "Blender")
    assert bridge.call("CallVekAppCommand", "EDIT_COMMAND", index) == 0


def hosted(tree, bridge, names):
    describe_as_shipped(bridge)
    tree.write_object_list([])
    for name in names:
        line = tree.default_project_folder + "/" + name
        with open(line + ".vek", "wb") as file:
            file.write(file_bytes(*cases.EGG))
        assert bridge.call("VekPostExport", line + ".vek") == 0
        tree.add_object(line)
