"""The package and the library read and write the same tree."""

import itertools
import os
import random

import pytest

from vek_exchange import (Corners, MapName, Mesh, Tree, VekError, read_mesh, valid_file_path,
                          write_mesh)

# What files are made of: lines, and what is odd about them.
PIECES = [b"/p/a", b"/P/A", b"b c", b" ", b"\t", b"\n", b"\r", b"\r\n", b"\0", b"\xff\xc3\xa4", b"A",
          b"\x7f", b"\x01", b"Maya"]


def random_bytes(generator, longest=8):
    return b"".join(generator.choice(PIECES) for _ in range(generator.randint(0, longest)))


def put(path, data):
    with open(path, "wb") as file:
        file.write(data)


def contents(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except FileNotFoundError:
        return None


def library_list(bridge):
    count = int(bridge.call("ReadVekObjectList"))
    return [bridge.text("GetVekObjectPath", value=i)[1] for i in range(count)]


@pytest.mark.parametrize("seed", range(300))
def test_object_lists_read_alike(tree, bridge, seed):
    put(tree.object_list_file, random_bytes(random.Random(seed)))
    assert tree.object_list() == library_list(bridge)


def test_a_missing_list_reads_as_empty(tree, bridge):
    assert tree.object_list() == library_list(bridge) == []


def test_the_library_reads_the_list_that_was_written(tree, bridge):
    objects = ["/p/torus", "/p/two words", "/p/\u00e4.b", "/p/\udcff"]
    tree.write_object_list(objects)
    assert library_list(bridge) == objects
    assert contents(tree.object_list_file) == "/p/torus\n/p/two words\n/p/\u00e4.b\n/p/".encode() + b"\xff\n"


@pytest.mark.parametrize("seed", range(300))
def test_an_object_is_extracted_alike(tree, bridge, seed):
    data = random_bytes(random.Random(seed))
    put(tree.object_list_file, data)
    taken = bridge.call("ExtractVekObject")
    expected = contents(tree.object_list_file), contents(tree.object_path_file)

    put(tree.object_list_file, data)
    if os.path.exists(tree.object_path_file):
        os.remove(tree.object_path_file)
    assert (tree.extract_object() is not None) == (taken == 1.0)
    assert (contents(tree.object_list_file), contents(tree.object_path_file)) == expected


@pytest.mark.parametrize("before", [None, b"", b"/p/b\n", b"/p/b\r\n\n"])
def test_objects_are_added_alike(tree, bridge, before):
    results = []
    for by_library, first in itertools.product((True, False), (True, False)):
        if os.path.exists(tree.object_list_file):
            os.remove(tree.object_list_file)
        if before is not None:
            put(tree.object_list_file, before)
        if by_library:
            added = bridge.call("AddVekObject" if first else "AddVekObjectToList", "/p/a b")
            results.append((added == 1.0 if first else None, contents(tree.object_list_file)))
        else:
            added = tree.add_object_first("/p/a b") if first else tree.add_object("/p/a b")
            results.append((added, contents(tree.object_list_file)))
    assert results[:2] == results[2:]


@pytest.mark.parametrize("seed", range(200))
def test_the_project_path_reads_alike(tree, bridge, seed):
    generator = random.Random(seed)
    put(tree.project_path_file, random_bytes(generator, generator.choice((6, 2000))))
    assert tree.project_path() == (bridge.text("ReadVekProjectPath")[1] or "")


@pytest.mark.parametrize("size", [4095, 4096, 4097])
def test_a_text_beyond_the_limit_reads_as_empty(tree, bridge, size):
    put(tree.project_path_file, b"a" * size)
    assert tree.project_path() == (bridge.text("ReadVekProjectPath")[1] or "")
    assert len(tree.project_path()) == (size if size <= 4096 else 0)


def test_a_text_that_would_read_as_another_is_not_written(tree):
    tree.write_project_path("a" * 4096)
    for text in ("a" * 4097, "a\nb", "a\r", "a\0b", "a\x7f"):
        with pytest.raises(VekError):
            tree.write_project_path(text)
    assert len(tree.project_path()) == 4096


def test_the_library_reads_the_project_path_that_was_written(tree, bridge):
    tree.write_project_path("/p/My Project \u00e4")
    assert bridge.text("ReadVekProjectPath")[1] == "/p/My Project \u00e4" == tree.project_path()


def test_the_selected_application_is_the_same(tree, bridge):
    for app in ("Alpha", "Beta"):
        os.mkdir(tree.app_folder(app))
        put(tree.app_file(app, "Vek_Info.txt"), b"NAME x\n")
    assert bridge.call("InitializeVek", "/Applications") == 2.0
    for app in ("Alpha", "Beta"):
        index = bridge.call("FindVekApp", app)
        bridge.call("SetVekAppIndex", value=index)
        assert tree.selected_application() == app
        tree.select_application("")
        assert bridge.call("GetVekAppIndex") == -1.0
        tree.select_application(app.upper())
        assert bridge.call("GetVekAppIndex") == index


@pytest.mark.parametrize("value", ["/A/B.app", "", '"', '"/A"', "/ä b", 'a"b'])
def test_application_paths_read_alike(tree, bridge, value):
    os.mkdir(tree.app_folder("App"))
    put(tree.app_file("App", "Vek_Info.txt"), b"NAME x\n")
    bridge.call("InitializeVek", "/Applications")
    bridge.call("WriteVekAppPath", value, 0)
    written = contents(tree.app_file("App", "Vek_Config.txt"))
    assert tree.app_path("App") == (bridge.text("ReadVekAppPath", value=0)[1] or "")
    tree.write_app_path("App", value)
    assert contents(tree.app_file("App", "Vek_Config.txt")) == written


def test_the_host_path_is_what_the_library_recorded(tree, bridge):
    assert tree.host_path() is None
    bridge.call("InitializeVek", "/Applications/Host")
    assert tree.host_path() == "/Applications/Host/Dorvia64.app"


@pytest.mark.parametrize("seed", range(200))
def test_install_lists_read_alike(tree, bridge, seed):
    os.mkdir(tree.app_folder("App"))
    put(tree.app_file("App", "Vek_Info.txt"), b"NAME x\n")
    bridge.call("InitializeVek", "/Applications")
    put(tree.app_file("App", "Vek_InstallList.txt"), random_bytes(random.Random(seed)))
    for location in ("/p/a", "/P/A/b", "b c", "A", "", "/p"):
        installed = bridge.call("VekAppIsInstalled", location, 0) == 1.0
        assert tree.is_installed("App", location) == installed, location


@pytest.mark.parametrize("seed", range(100))
def test_paths_in_texts_mean_the_same(tree, bridge, seed, tmp_path):
    generator = random.Random(seed)
    text = "".join(generator.choice(["/", ":", "a", "Volume", " "]) for _ in range(6))
    text += generator.choice(["", str(tmp_path / "file")])
    put(str(tmp_path / "file"), b"x")
    path = valid_file_path(text)
    there = os.path.isfile(path) and os.path.getsize(path) > 0
    assert (bridge.call("IsVekFilePathValid", text) == 1.0) == there


def test_map_names_are_what_the_library_finds(tree, bridge, tmp_path):
    maps = [MapName(45001, "maps\\colour \u00e4.tif"), MapName(50001, "/n.tif"),
            MapName(55001, "d.tif", 0.5)]
    tree.write_object_list([str(tmp_path / "object")])
    write_mesh(tree.exchange_file(tree.object_list()[0]), Mesh([0, 0, 0], [], maps=maps))
    for kind, name, number in ((0, "maps/colour \u00e4.tif", None), (1, "/n.tif", None),
                               (2, "d.tif", "0.500000")):
        found = bridge.two_texts("GetFirstObjectTextureFileName", kind)
        assert found == (0.0, name, number)


SWITCHES = ["FLIP_X", "FLIP_Y", "FLIP_Z", "SWITCH_YZ"]


@pytest.mark.parametrize("kind", [20001, 20002])
def test_the_library_turns_a_mesh_there_and_back(tree, bridge, tmp_path, kind):
    """By each of the sixteen orientations. The package sees whether faces were rewound."""
    path = str(tmp_path / "mesh.vek")
    mesh = Mesh([1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12], [0, 1, 2, 3, 3, 1, 0, -1], face_kind=kind,
                corners=[Corners([1, 2, 3, 4, 5, 6, 7, 7], count=2)])
    os.mkdir(tree.app_folder("App"))
    for chosen in itertools.product((False, True), repeat=4):
        lines = ["{}_{} {}\n".format(way, key, on) for way in ("EXPORT", "IMPORT")
                 for key, on in zip(SWITCHES, chosen)]
        put(tree.app_file("App", "Vek_Info.txt"), "".join(lines).encode())
        bridge.call("InitializeVek", "/Applications")
        bridge.switches(0)
        write_mesh(path, mesh)
        before = contents(path)
        assert bridge.call("VekPostExport", path) == 0.0
        turned = read_mesh(path)
        rewound = list(turned.faces[:4]) == [0, 3, 2, 1]
        assert rewound == (sum(chosen) % 2 == 1) == tree.descriptor("App").export_mirrors
        assert list(turned.vertices[:3]) == turned_position([1, 2, 3], chosen)
        assert bridge.call("VekPreImport", path) == 0.0
        assert contents(path) == before


def turned_position(position, chosen):
    if chosen[3]:
        position = [position[0], position[2], position[1]]
    return [-value if flip else value for value, flip in zip(position, chosen)]


def test_the_library_leaves_a_file_without_switches_as_it_was(tree, bridge, tmp_path):
    os.mkdir(tree.app_folder("App"))
    put(tree.app_file("App", "Vek_Info.txt"), b"NAME x\n")
    bridge.call("InitializeVek", "/Applications")
    bridge.switches(0)
    path = str(tmp_path / "mesh.vek")
    write_mesh(path, Mesh([0, 0, 0], []))
    before = contents(path)
    assert bridge.call("VekPostExport", path) == 0.0
    assert contents(path) == before


def test_a_list_longer_than_memory_pieces_reads_alike(tree, bridge):
    objects = ["/p/{}/{}".format("x" * (i % 300), i) for i in range(5000)]
    tree.write_object_list(objects)
    assert library_list(bridge) == objects == tree.object_list()


def test_an_object_that_a_line_cannot_hold_is_refused(tree):
    for line in ("", " /p", "/p ", "/p\n/q", "/p\r", "/p\0q", "/p\t"):
        for write in (tree.add_object, tree.add_object_first, tree.write_object_path,
                      lambda line: tree.write_object_list(["/a", line])):
            with pytest.raises(VekError):
                write(line)
    assert not os.path.exists(tree.object_list_file)


def test_a_tree_elsewhere_is_a_tree_too(tmp_path):
    tree = Tree(str(tmp_path))
    assert tree.object_list() == [] and tree.project_path() == "" and tree.applications() == []
    with pytest.raises(VekError, match="No such file|no such file"):
        tree.write_object_list(["/p/a"])
