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
IN_THE_VIEW = """
view = next(area for area in bpy.context.window.screen.areas if area.type == "VIEW_3D")
with bpy.context.temp_override(area=view, region=view.regions[-1]):
"""


@pytest.fixture(scope="module")
def display():
    """The server chooses a number that is free, also among those of other tests at work."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "640x400x24"],
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
            time.sleep(0.02)
        pytest.fail(f"It never came to that: {self.state()}")

    def do(self, order):
        (self._folder / "order.new").write_text(order)
        os.rename(self._folder / "order.new", self._folder / "order.py")


@pytest.fixture(scope="module")
def running(home, tree, installed, display, bridge, tmp_path_factory):
    """The one Blender of these tests, which the first of them starts by an order."""
    folder = tmp_path_factory.mktemp("window")
    scripts = glob.glob(str(home / ".config/blender/*/scripts"))[0]
    os.makedirs(scripts + "/startup", exist_ok=True)
    probe = shutil.copy(os.path.dirname(__file__) + "/window_probe.py", scripts + "/startup")
    os.environ["VEK_PROBE"] = str(folder)
    window = Window(folder)
    hosted(tree, bridge, ["First", "Second"])
    edit(bridge)
    window.wait_for(lambda state: "received" in state["message"] and not state["busy"])
    yield window
    window.do("bpy.ops.wm.quit_blender()")
    wait_for_the_end(tree)
    os.remove(probe)


@pytest.fixture
def window(running, tree, bridge):
    """With the objects First and Second in the scene, and nothing else."""
    running.do("bpy.ops.wm.read_homefile(use_empty=True); "
               "bpy.context.window_manager.vek_message = 'fresh'")
    running.wait_for(lambda state: state["message"] == "fresh" and not state["objects"])
    running.do("bpy.ops.ed.undo_push(message='fresh')")
    hosted(tree, bridge, ["First", "Second"])
    edit(bridge)
    running.wait_for(lambda state: state["message"] == "2 objects received." and not state["busy"])
    return running


def wait_for_the_end(tree):
    """Until no Blender answers to orders."""
    running = tree.app_file("Blender", "Blender_Running.txt")
    until(lambda: not os.path.exists(running))


def test_an_order_starts_blender(tree, running):
    state = running.state()
    assert state["message"] == "2 objects received."
    assert {"First", "Second"} <= set(state["objects"])
    assert state["project"] == tree.default_project_folder
    with open(tree.app_file("Blender", "Blender_Running.txt"), encoding="ascii") as note:
        assert note.read() == f"PID = {state['process']}\n"


def test_an_order_reaches_the_blender_that_runs(tree, bridge, window):
    before = window.state()
    hosted(tree, bridge, ["Third"])
    edit(bridge)
    later = window.wait_for(lambda state: "Third" in state["objects"] and not state["busy"])
    assert later["process"] == before["process"]

    window.do("bpy.ops.ed.undo()")
    window.wait_for(lambda state: "Third" not in state["objects"] and "First" in state["objects"])
    window.do("bpy.ops.ed.redo()")
    window.wait_for(lambda state: "Third" in state["objects"])

    window.do("for obj in bpy.data.objects: obj.select_set(obj.name in ('First', 'Third'))\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: state["message"] == "2 objects sent; import them in Dorvia.")
    assert [os.path.basename(line) for line in tree.object_list()] == ["First", "Third"]


def test_an_order_waits_for_the_end_of_an_edit(tree, bridge, window):
    window.do("bpy.ops.object.mode_set(mode='EDIT')")
    window.wait_for(lambda state: state["mode"] == "EDIT_MESH")
    hosted(tree, bridge, ["Third"])
    edit(bridge)
    window.wait_for(lambda state: state["waiting"])
    state = after_several_looks(window)
    assert state["waiting"] and state["mode"] == "EDIT_MESH" and "Third" not in state["objects"]
    assert os.path.exists(tree.app_file("Blender", "Blender_Order.txt"))

    leave_order(tree, age=100)  # nearly too old, and kept young while it waits
    until(lambda: age_of_order(tree) < 50)
    window.do("bpy.ops.object.mode_set(mode='OBJECT')")
    window.wait_for(lambda state: "Third" in state["objects"] and not state["waiting"])


@pytest.mark.parametrize("mode", ["OBJECT", "EDIT"])
def test_an_old_order_is_taken_away_and_not_obeyed(tree, bridge, window, mode):
    window.do(f"bpy.ops.object.mode_set(mode='{mode}')")
    window.wait_for(lambda state: state["mode"].startswith(mode))
    hosted(tree, bridge, ["Third"])
    leave_order(tree, age=1000)
    until(lambda: age_of_order(tree) is None)
    state = after_several_looks(window)
    assert "Third" not in state["objects"] and not state["waiting"]
    assert state["mode"].startswith(mode)
    assert state["message"] == "Dorvia sent objects some time ago; press Receive to get them."


def test_sending_does_not_drop_what_waits(tree, bridge, window):
    window.do("bpy.ops.object.mode_set(mode='EDIT')")
    window.wait_for(lambda state: state["mode"] == "EDIT_MESH")
    hosted(tree, bridge, ["Third"])
    edit(bridge)
    window.wait_for(lambda state: state["waiting"])
    window.do("try: bpy.ops.vek.send('INVOKE_DEFAULT', True)\nexcept RuntimeError: pass")
    state = window.wait_for(lambda state: "have not received (Third)" in state["message"])
    assert state["waiting"] and state["mode"] == "EDIT_MESH"
    assert [os.path.basename(line) for line in tree.object_list()] == ["Third"]
    window.do("bpy.ops.object.mode_set(mode='OBJECT')")
    window.wait_for(lambda state: "Third" in state["objects"] and not state["waiting"])


@pytest.mark.parametrize("process", [1, 999999999])
def test_blender_answers_where_a_note_of_another_program_is_left(tree, bridge, window, process):
    """Also where it is another user's, and not to be written."""
    running = tree.app_file("Blender", "Blender_Running.txt")
    with open(running + ".new", "w", encoding="ascii") as note:
        note.write(f"PID = {process}\n")
    os.rename(running + ".new", running)
    os.chmod(running, 0o444)
    hosted(tree, bridge, ["Third"])
    leave_order(tree, age=0)
    window.wait_for(lambda state: "Third" in state["objects"])
    with open(running, encoding="ascii") as note:
        assert note.read() == f"PID = {window.state()['process']}\n"
    assert os.stat(running).st_mode & 0o777 == 0o666


# Blender has no way to ask for a tool that runs in Object Mode, where receiving does not harm it.
def test_an_order_comes_beside_a_tool_that_moves_objects(tree, bridge, window):
    move(window)
    hosted(tree, bridge, ["First", "Third"])
    edit(bridge)
    window.wait_for(lambda state: "Third" in state["objects"] and not state["busy"])
    assert after_several_looks(window)["message"] == "2 objects received."


def test_a_step_that_fails_ends_the_work(tree, window):
    window.do("import vek_bridge.mesh_out as out\n"
              "out.Real, out.Taken = out.Taken, None\n"
              "bpy.ops.object.select_all(action='SELECT')\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    state = window.wait_for(lambda state: "the add-on failed" in state["message"])
    assert state["message"].startswith("Nothing was sent; the add-on failed, ")
    assert not after_several_looks(window)["busy"]
    window.do("import vek_bridge.mesh_out as out\nout.Taken = out.Real\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: state["message"] == "2 objects sent; import them in Dorvia.")


def begin_sending_and_stay(window):
    """The sending does its first step, and then no more until `o.go_on()`."""
    window.do("""
import vek_bridge.operators as o
real = o._LongWork._step

def first_alone(self):
    if not self._work.done:
        real(self)

def go_on():
    o._LongWork._step = real

o._LongWork._step, o.go_on = first_alone, go_on
bpy.ops.object.select_all(action='SELECT')
bpy.ops.vek.send('INVOKE_DEFAULT', True)
""")
    window.wait_for(lambda state: state["busy"])


def half_written(tree):
    return [name for name in os.listdir(tree.default_project_folder) if not name.endswith(".vek")
            or name.startswith(".")]


def test_the_escape_key_stops_the_work(tree, window):
    begin_sending_and_stay(window)
    assert half_written(tree)
    window.do("""
import types, vek_bridge.operators as o
modal = o.VEK_OT_send.modal

def pressed(self, context, event):
    o.VEK_OT_send.modal = modal
    o.go_on()
    return modal(self, context, types.SimpleNamespace(type="ESC"))

o.VEK_OT_send.modal = pressed
""")
    state = window.wait_for(lambda state: "stopped" in state["message"])
    assert state["message"] == "Nothing was sent; you stopped it."
    assert not after_several_looks(window)["busy"]
    assert not half_written(tree)


def test_work_ends_where_another_scene_is_opened(tree, window):
    begin_sending_and_stay(window)
    assert half_written(tree)
    window.do("import vek_bridge.operators as o\no.go_on()\n"
              "bpy.ops.wm.read_homefile(use_empty=True)")
    window.wait_for(lambda state: not state["objects"])
    state = after_several_looks(window)
    assert not state["busy"] and "sent" not in state["message"]
    assert not half_written(tree)


def test_sending_leaves_the_user_in_the_mode(window):
    """And undo takes back the edit that was made before."""
    window.do("bpy.ops.object.mode_set(mode='EDIT'); bpy.ops.ed.undo_push(message='entered')\n"
              "bpy.ops.mesh.select_all(action='SELECT'); bpy.ops.mesh.delete(type='VERT')\n"
              "bpy.ops.ed.undo_push(message='deleted')\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    state = window.wait_for(lambda state: "sent" in state["message"])
    assert state["message"].startswith("2 objects sent; ")
    assert state["mode"] == "EDIT_MESH"
    assert after_several_looks(window)["vertices"] == 0
    window.do("bpy.ops.ed.undo(); bpy.ops.ed.undo()\n"
              "bpy.ops.object.mode_set(mode='OBJECT')")
    window.wait_for(lambda state: state["vertices"] == 2 * len(cases.EGG[0]))


def test_undo_takes_back_the_receiving_and_not_the_sculpt(tree, bridge, window):
    """Blender notes a sculpt in a history of its own, which ends with the mode."""
    window.do(IN_THE_VIEW + "    bpy.ops.object.mode_set('EXEC_DEFAULT', True, mode='SCULPT')\n"
              "    bpy.ops.paint.mask_flood_fill('EXEC_DEFAULT', True, mode='VALUE', value=0.75)\n")
    window.wait_for(lambda state: state["mode"] == "SCULPT")
    hosted(tree, bridge, ["First", "Second"], cases.BOX)
    window.do("bpy.ops.vek.receive('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: "received" in state["message"] and not state["busy"]
                    and state["vertices"] == 2 * len(cases.BOX[0]))
    window.do("bpy.ops.ed.undo()\n"
              "masks = bpy.context.view_layer.objects.active.data.vertex_paint_masks\n"
              "said = masks[0].data[3].value if masks else 'no mask'\n"
              "bpy.context.window_manager.vek_message = f'after undo: {said}'")
    state = window.wait_for(lambda state: state["message"].startswith("after undo"))
    assert state["message"] == "after undo: 0.75"
    assert state["vertices"] == 2 * len(cases.EGG[0])


def test_undo_goes_on_after_sending_while_sculpting(window):
    window.do("bpy.ops.object.mode_set(mode='SCULPT'); bpy.ops.ed.undo_push(message='entered')\n"
              "bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: "2 objects sent" in state["message"]
                    and state["mode"] == "SCULPT")
    window.do("bpy.ops.ed.undo(); bpy.ops.ed.undo()\n"
              "bpy.context.window_manager.vek_message = 'undone'")
    assert window.wait_for(lambda state: state["message"] == "undone")["mode"] == "OBJECT"
    window.do("bpy.ops.ed.redo(); bpy.ops.ed.redo()\n"
              "bpy.context.window_manager.vek_message = 'redone'")
    state = window.wait_for(lambda state: state["message"] == "redone")
    assert state["mode"] == "SCULPT" and len(state["objects"]) == 2


def test_a_redo_brings_back_what_was_sent_with_modifiers(tree, bridge, window):
    window.do("bpy.ops.object.modifier_add('EXEC_DEFAULT', True, type='ARRAY')")
    window.wait_for(lambda state: state["modifiers"] == [True])
    window.do("bpy.ops.vek.send('INVOKE_DEFAULT', True)")
    window.wait_for(lambda state: "2 objects sent" in state["message"] and not state["busy"])
    window.do("bpy.ops.ed.undo(); bpy.context.window_manager.vek_message = 'undone'")
    state = window.wait_for(lambda state: state["message"] == "undone")
    assert state["modifiers"] == [True]  # it is the sending that was undone
    window.do("bpy.ops.ed.redo(); bpy.context.window_manager.vek_message = 'redone'")
    window.wait_for(lambda state: state["message"] == "redone")
    window.do("bpy.ops.vek.receive('INVOKE_DEFAULT', True)")
    state = window.wait_for(lambda state: "2 objects received" in state["message"])
    assert state["modifiers"] == [False]


# The last one: nothing but the end of Blender ends its tool.
def test_an_order_waits_where_a_tool_runs_in_an_edit(tree, bridge, window):
    window.do("bpy.ops.object.mode_set(mode='EDIT')")
    window.wait_for(lambda state: state["mode"] == "EDIT_MESH")
    move(window)
    hosted(tree, bridge, ["Third"])
    edit(bridge)
    window.wait_for(lambda state: state["waiting"])
    state = after_several_looks(window)
    assert state["waiting"] and state["mode"] == "EDIT_MESH" and "Third" not in state["objects"]


def move(window):
    """Begins the tool that lets what is selected follow the mouse."""
    window.do(IN_THE_VIEW + "    began = bpy.ops.transform.translate('INVOKE_DEFAULT', True)\n"
              "bpy.context.window_manager.vek_message = str(began)")
    window.wait_for(lambda state: state["message"] == "{'RUNNING_MODAL'}")


def after_several_looks(window):
    """The state when Blender has looked for orders some more times."""
    looks = window.state()["looks"]
    return window.wait_for(lambda state: state["looks"] >= looks + 5)


def leave_order(tree, age):
    """As edit.sh does it, and some seconds ago."""
    order = tree.app_file("Blender", "Blender_Order.txt")
    with open(order + ".new", "w", encoding="ascii"):
        pass
    os.utime(order + ".new", (time.time() - age,) * 2)
    os.rename(order + ".new", order)


def age_of_order(tree):
    try:
        return time.time() - os.stat(tree.app_file("Blender", "Blender_Order.txt")).st_mtime
    except OSError:
        return None


def until(holds):
    end = time.monotonic() + PATIENCE
    while not holds():
        assert time.monotonic() < end, "It never came to that."
        time.sleep(0.02)


def edit(bridge):
    index = bridge.call("FindVekApp", "Blender")
    assert bridge.call("CallVekAppCommand", "EDIT_COMMAND", index) == 0


def hosted(tree, bridge, names, mesh=cases.EGG):
    describe_as_shipped(bridge)
    tree.write_object_list([])
    for name in names:
        line = tree.default_project_folder + "/" + name
        with open(line + ".vek", "wb") as file:
            file.write(file_bytes(*mesh))
        assert bridge.call("VekPostExport", line + ".vek") == 0
        tree.add_object(line)
