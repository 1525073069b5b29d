"""`make demo APP=Blender`, with a picture."""

import os
import shutil
import struct
import subprocess

import pytest

SOURCE = os.path.dirname(__file__) + "/../.."


@pytest.fixture
def place_of_the_app(tree, tmp_path):
    """Free for the demo to set up. What other tests have located and installed comes back."""
    folder, aside = tree.app_folder("Blender"), tmp_path / "aside"
    shutil.move(folder, aside)
    yield
    shutil.rmtree(folder, ignore_errors=True)
    shutil.move(aside, folder)


def test_the_demo_brings_ten_objects_back_and_takes_a_picture(place_of_the_app, home, tmp_path):
    said = subprocess.run(
        [os.environ["VEK_TOOL"], "run", SOURCE + "/demo/blender.lua", "--app",
         os.environ["VEK_APP"], "--out", tmp_path, "--faces", "200"],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120, encoding="utf-8")
    assert said.returncode == 0, said.stdout
    assert "Blender received: 10 objects received." in said.stdout
    assert "Vase 10 came back" in said.stdout
    head = (tmp_path / "blender.png").read_bytes()[:24]
    assert head[:8] == b"\x89PNG\r\n\x1a\n"
    assert struct.unpack(">II", head[16:]) == (1440, 400)
