"""The tree where the package has a mind of its own."""

import os

import pytest

from vek_exchange import Dispatcher, Tree, VekError, read_descriptor


@pytest.fixture
def place(tmp_path):
    tree = Tree(str(tmp_path))
    for folder in (tree.hub_folder, tree.apps_folder, tree.default_project_folder):
        os.makedirs(folder)
    return tree


def put(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)


def test_the_tree_is_at_its_place():
    tree = Tree()
    assert tree.object_list_file == "/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt"
    assert tree.app_file("A", "b") == "/Users/Shared/Kelvaro/VekApps/A/b"
    assert tree.default_project_folder == "/Users/Shared/Kelvaro/VekProjects/Default"


def test_an_object_is_added_behind_a_line_without_an_end(place):
    put(place.object_list_file, b"/p/a")
    place.add_object("/p/b")
    assert place.object_list() == ["/p/a", "/p/b"]


def test_the_project_folder_is_the_default_where_none_is_named(place):
    assert place.project_folder() == place.default_project_folder
    place.write_project_path("/p/Mine")
    assert place.project_folder() == "/p/Mine"


def test_the_object_path_is_what_was_extracted(place):
    assert place.object_path() == ""
    place.write_object_list(["/p/a", "/p/b"])
    assert place.extract_object() == "/p/a" == place.object_path()
    assert place.object_list() == ["/p/b"]
    place.write_object_path("/p/c")
    assert place.object_path() == "/p/c"


def test_an_object_whose_path_cannot_be_noted_stays_in_the_list(place):
    place.write_object_list(["/p/a"])
    os.mkdir(place.object_path_file)
    with pytest.raises(VekError):
        place.extract_object()
    assert place.object_list() == ["/p/a"]


def test_the_exchange_file_of_a_line_is_where_the_bridge_looks(place):
    assert place.exchange_file("/p/a") == "/p/a.vek"
    assert place.exchange_file("Disk:/p/a", ".ma") == "/p/a.ma"


@pytest.mark.parametrize("name, expected", [
    ("Torus", "Torus"), ("two words", "two words"), ("Cube.001", "Cube.001"), ("\u00e4\u4e2d", "\u00e4\u4e2d"),
    ("a/b\\c:d", "a_b_c_d"), ("a\nb\tc\0", "a_b_c_"), ("end ", "end_"), ("  ", "__"), ("", "_"),
    (" front", " front"), ("\udcff", "_"), ("x" * 300, "x" * 230), ("\u4e2d" * 100, "\u4e2d" * 76)])
def test_a_file_name_is_made_of_what_users_call_their_objects(place, name, expected):
    assert place.object_file_name(name) == expected
    place.add_object("/p/" + expected)
    assert place.object_list() == ["/p/" + expected]
    put(place.default_project_folder + "/" + expected + ".vek", b"")


def test_each_object_gets_a_file_name_of_its_own(place):
    assert place.object_file_names(["a", "A", "a/b", "a:b", "a_1", "a"]) == [
        "a", "A_1", "a_b", "a_b_1", "a_1_1", "a_2"]


def test_applications_are_the_folders_with_a_descriptor(place):
    put(place.app_file("B", "Vek_Info.txt"), b"NAME Bee\nEXTENSION .vek")
    put(place.app_file("A", "Vek_Info.txt"), b"")
    os.mkdir(place.app_folder("C"))
    put(place.apps_folder + "/file", b"")
    assert [(app.id, app.name, app.ext) for app in place.applications()] == [
        ("A", "", ""), ("B", "Bee", ".vek")]
    assert place.descriptor("B").name == "Bee"
    for app in ("A", "C", "D"):
        with pytest.raises(VekError, match="The descriptor is missing or empty: /"):
            place.descriptor(app)


def test_a_descriptor_is_named_after_its_folder(place):
    put(place.app_file("Alpha", "Vek_Info.txt"), b"VEK_VERSION 2\nEXPORT_FLIP_X\nIMPORT_SWITCH_YZ\n"
                                                 b"IMPORT_FLIP_Y\nEDIT_COMMAND \"edit.sh\"-v\"\"")
    app = read_descriptor(place.app_file("Alpha", "Vek_Info.txt"))
    assert (app.id, app.version, app.edit_command) == ("Alpha", 2, 'edit.sh"-v"')
    assert app.export_mirrors and not app.import_mirrors


def test_a_dispatcher_tries_the_later_key_first(tmp_path):
    put(str(tmp_path / "file"), b"NAMESPACE = a\nname\n name :=\nNAMES 3\nother\n")
    for order, expected in ((("NAME", "NAMESPACE"), [("NAMESPACE", "a"), ("NAME", ""), ("NAME", "S 3")]),
                            (("NAMESPACE", "NAME"), [("NAME", "SPACE = a"), ("NAME", ""),
                                                     ("NAME", "S 3")])):
        said = []
        dispatcher = Dispatcher()
        for key in order:
            dispatcher.add(key, lambda text, key=key: said.append((key, text)))
        assert dispatcher.parse_file(str(tmp_path / "file"))
        assert said == expected
    assert not dispatcher.parse_file(str(tmp_path / "missing"))
    with pytest.raises(VekError):
        dispatcher.add("", print)
