"""One Blender for all cases: it is installed as a user does it, and starts once."""

import json
import os
import shutil
import subprocess

import pytest

import cases
from bridge import Bridge
from host import Host, describe_as_shipped
from vek_exchange import DEFAULT_ROOT, Tree

HERE = os.path.dirname(__file__)
SHIPPED = os.environ["VEK_APP"]

needs_blender = pytest.mark.skipif(not shutil.which("blender"),
                                   reason="Blender is not installed here")


def pytest_collection_modifyitems(items):
    for item in items:
        item.add_marker(needs_blender)


class Result:
    """What the host sent, and what Blender did with it."""

    def __init__(self, host, found):
        assert "failed" not in found, found["failed"]
        self.host = host
        self.said = found["said"]
        self.scene = found.get("scene")
        self.found = found


@pytest.fixture(scope="session")
def bridge():
    return Bridge(os.environ["VEK_LIBRARY"])


@pytest.fixture(scope="session")
def home(tmp_path_factory):
    """The home folder of a user who has never started Blender."""
    folder = tmp_path_factory.mktemp("home")
    os.environ["HOME"] = str(folder)
    for name in [name for name in os.environ if name.startswith(("XDG_", "BLENDER_"))]:
        del os.environ[name]
    return folder


@pytest.fixture(scope="session")
def tree(home):
    """The shared tree at its real place, with Blender's folder in it."""
    assert os.environ.get("VEK_VIEW"), "run by scripts/private-view"
    tree = Tree()
    for folder in (tree.hub_folder, tree.default_project_folder):
        os.makedirs(folder, exist_ok=True)
    shutil.copytree(SHIPPED, tree.app_folder("Blender"))
    yield tree
    for entry in os.scandir(DEFAULT_ROOT):
        if entry.is_dir():
            shutil.rmtree(entry.path)


@pytest.fixture(scope="session")
def installed(tree, bridge):
    """The index of Blender in the application table, with the add-on installed."""
    assert bridge.call("InitializeVek", "/") >= 1
    index = bridge.call("FindVekApp", "Blender")
    assert bridge.call("CallVekAppCommand", "LOCATE_COMMAND", index) == 0
    failed, why = bridge.text("VekAppInstall", tree.app_path("Blender"), index)
    assert failed == 0, why
    return index


@pytest.fixture(scope="session")
def results(installed, bridge, tmp_path_factory):
    """All cases of cases.py, done in one Blender."""
    folder = tmp_path_factory.mktemp("cases")
    hosts, orders = {}, {}
    for name, (send, action) in cases.CASES.items():
        describe_as_shipped(bridge)
        host = hosts[name] = Host(folder / name, bridge)
        send(host)
        orders[name] = {"root": host.root, "action": action, "matrices": cases.matrices(),
                        "folder": host.tree.default_project_folder, "names": ["A.vek", "B c.vek"],
                        "out": host.root}
    (folder / "cases.json").write_text(json.dumps(orders))
    run = subprocess.run(
        ["blender", "-b", "--addons", "vek_bridge", "--python-exit-code", "1", "--python",
         HERE + "/in_blender.py", "--", folder / "cases.json", folder / "results.json"],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=200)
    assert run.returncode == 0, run.stdout.decode()
    found = json.loads((folder / "results.json").read_text())
    return lambda name: Result(hosts[name], found[name])
