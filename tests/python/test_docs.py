"""The programs of docs/python.md work as they stand."""

import os
import re
import subprocess
import sys

from vek_exchange import Mesh, Tree, read_mesh, write_mesh

PAGE = os.path.join(os.path.dirname(__file__), "../../docs/python.md")


def blocks():
    with open(PAGE, encoding="utf-8") as file:
        found = re.findall(r"(?:^    .*\n|^\n(?=    ))+", file.read(), re.MULTILINE)
    return [re.sub(r"^    ", "", text, flags=re.MULTILINE).strip() + "\n" for text in found]


def run(program):
    return subprocess.run([sys.executable, "-c", program], stderr=subprocess.PIPE)


def test_the_edit_command_edits_what_the_list_names(tree, tmp_path):
    program, = [text for text in blocks() if text.startswith("#!")]
    for name in ("a", "b"):
        write_mesh(str(tmp_path / name) + ".vek", Mesh([1, 2, 3, 4, 5, 6], []))
        tree.add_object(str(tmp_path / name))
    assert run(program).returncode == 0
    for name in ("a", "b"):
        assert list(read_mesh(str(tmp_path / name) + ".vek").vertices) == [1, 3, 3, 4, 6, 6]
    tree.add_object(str(tmp_path / "c"))
    ended = run(program)
    assert ended.returncode == 1
    assert ended.stderr.decode() == ("The exchange file cannot be read, no such file or directory: "
                                     "{}\n".format(tmp_path / "c.vek"))


def test_a_mesh_made_anew_keeps_what_came_along(tmp_path):
    program, = [text for text in blocks() if text.startswith("old = ")]
    path = str(tmp_path / "mesh.vek")
    from vek_exchange import Block, MapName
    write_mesh(path, Mesh([0, 0, 0], [], maps=[MapName(45001, "m")], other_blocks=[Block(7, b"1234")]))
    exec(program, dict(Mesh=Mesh, read_mesh=read_mesh, write_mesh=write_mesh, path=path,
                       vertices=[1, 1, 1], faces=[0, 0, 0, -1]))
    mesh = read_mesh(path)
    assert (list(mesh.faces), mesh.maps[0].name) == ([0, 0, 0, -1], "m")
    assert mesh.other_blocks[0].payload == b"1234"


def test_all_operations_that_the_page_names_are_there():
    with open(PAGE, encoding="utf-8") as file:
        rows = re.findall(r"^\| (?:objects|the file|project|applications|installation|key).*", file.read(),
                          re.MULTILINE)
    names = [name for row in rows for name in re.findall(r"`([a-z_]+)", row.split("|")[2])]
    assert len(rows) == 6 and len(names) > 20
    for name in names:
        assert hasattr(Tree, name) or name in ("find", "replace"), name
