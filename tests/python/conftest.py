"""What the tests share. They run in the private view, where the tree is theirs alone."""

import ctypes
import os
import shutil
import sys
import traceback

import pytest

if os.environ.get("VEK_TEST_WITHOUT_NUMPY"):
    sys.modules["numpy"] = None  # type: ignore[assignment]

from bridge import Bridge  # noqa: E402
from vek_exchange import DEFAULT_ROOT, Tree  # noqa: E402


@pytest.fixture
def tree():
    """An empty shared tree at its real place."""
    assert os.environ.get("VEK_VIEW"), "run by scripts/private-view"
    tree = Tree()
    _empty_tree()
    for folder in (tree.hub_folder, tree.apps_folder, tree.default_project_folder):
        os.makedirs(folder)
    yield tree
    _empty_tree()


def _empty_tree():
    os.makedirs(DEFAULT_ROOT, exist_ok=True)
    for entry in os.scandir(DEFAULT_ROOT):
        if entry.name != ".made-by-vek-tests":
            shutil.rmtree(entry.path)


@pytest.fixture(scope="session")
def bridge():
    return Bridge(os.environ["VEK_LIBRARY"])


@pytest.fixture
def unprivileged():
    """Runs a function in a process that permissions count for, also where the tests are root's."""
    return run_unprivileged


def run_unprivileged(function):
    child = os.fork()
    if child == 0:
        try:
            _drop_capabilities()
            function()
            os._exit(0)
        except BaseException:
            traceback.print_exc()
            os._exit(1)
    assert os.waitpid(child, 0)[1] == 0


def _drop_capabilities():
    header = (ctypes.c_uint32 * 2)(0x20080522, 0)
    nothing = (ctypes.c_uint32 * 6)()
    assert ctypes.CDLL(None).capset(header, nothing) == 0
