"""`make demo APP=Blender`, with a picture."""

import os
import shutil
import struct
import subprocess

SOURCE = os.path.dirname(__file__) + "/../.."


def test_the_demo_brings_ten_objects_back_and_takes_a_picture(tree, home, tmp_path):
    said = subprocess.run(
        [os.environ["VEK_TOOL"], "run", SOURCE + "/demo/blender.lua", "--app",
         os.environ["VEK_APP"], "--out", tmp_path, "--faces", "200"],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120, encoding="utf-8")
    shutil.rmtree(tree.app_folder("Blender"))  # which the demo has set up for itself
    shutil.copytree(os.environ["VEK_APP"], tree.app_folder("Blender"))
    assert said.returncode == 0, said.stdout
    assert "Blender received: 10 objects received." in said.stdout
    assert "Vase 10 came back" in said.stdout
    head = (tmp_path / "blender.png").read_bytes()[:24]
    assert head[:8] == b"\x89PNG\r\n\x1a\n"
    assert struct.unpack(">II", head[16:]) == (1440, 400)
