"""Whatever goes wrong, the user sees one clear sentence, and nothing is lost."""

import os

import cases


def test_an_empty_list(results):
    result = results("empty list")
    assert result.said == ["The object list is empty: Dorvia has sent nothing."]
    assert results("list of blanks").said == result.said


def test_a_project_folder_that_went_away(results):
    result = results("missing project")
    path = result.host.root + "/gone/New.vek"
    assert result.said == [f"Nothing was sent; the file cannot be written, no such file or "
                           f"directory: {path}."]
    assert result.host.names_back() == []


def test_a_file_that_vanished(results):
    result = results("vanished")
    gone = result.host.line("Gone") + ".vek"
    assert result.said[0].startswith("3 of 4 objects received; ")
    assert gone in result.said[0]
    assert set(result.scene) == {"Egg 0", "Egg 1", "Egg 2"}
    assert result.host.names_back() == ["Egg 0", "Egg 1", "Egg 2"]


def test_a_damaged_file(results):
    result = results("damaged")
    damaged = result.host.line("Egg 2")
    assert result.said[0].startswith("2 of 3 objects received; ")
    assert damaged + ".vek" in result.said[0]
    assert len(result.host.bytes_of(damaged)) == 200
    assert result.host.names_back() == ["Egg 0", "Egg 1"]


def test_files_that_are_no_meshes(results):
    result = results("nonsense")
    assert result.said[0].startswith("Nothing was received; a position in this file is not a ")
    assert result.said[0].endswith("; 2 more could not be read.")
    assert "NotANumber.vek" in result.said[0]
    assert not result.scene


def test_an_object_with_a_vertex_nowhere(results):
    result = results("not a number")
    assert result.said[1:] == ["Nothing was sent; a position in this object is not a number or too "
                               "far away: Egg 0."] * 2
    assert result.host.bytes_back()["Egg 0"] == result.host.sent[result.host.line("Egg 0")]


def test_edges_without_faces(results):
    result = results("edges alone")
    assert result.said == ["1 object sent; only points of what has edges and no faces: Wire; "
                           "import them in Dorvia."]
    assert len(result.host.back("Wire").vertices) == 3


def test_faces_that_use_a_vertex_twice(results):
    result = results("twice")
    assert result.said[0] == "1 object received; 2 faces left out that used a vertex twice."
    back = result.host.back("Box")
    assert (back.faces == cases.BOX[1]).all()
    assert back.count(cases.CORNERS) == 6


def test_a_read_only_folder(results):
    result = results("read-only")
    first = result.host.line("Egg 0")
    assert result.said[1].startswith("Nothing was sent; ")
    assert first in result.said[1]
    assert result.said[2] == "2 objects sent; import them in Dorvia."
    assert len(result.scene) == 2
    assert not result.host.left_over()


def test_a_file_that_cannot_be_replaced_among_others(results):
    result = results("in the way")
    path = result.host.line("Egg 1") + ".vek"
    assert result.said[1] == (
        f"Not all files were replaced, and Dorvia is not told; the file cannot be replaced, is a "
        f"directory: {path}; replaced: Egg 0.vek; not replaced: Egg 1.vek, Egg 2.vek.")
    assert result.said[2] == (
        f"Nothing was sent; the file cannot be written, it is not a regular file: {path}.")
    assert result.said[3] == "3 objects sent; import them in Dorvia."
    assert not result.host.left_over()


def test_instances_do_not_empty_the_file_of_an_object(results):
    result = results("only instances")
    how = "not sent, having no mesh of their own (make instances real first): "
    assert result.said[1:] == [f"1 object sent; {how}Crowd, Egg 0; import them in Dorvia.",
                               f"Nothing was sent; {how}Crowd, Egg 0.",
                               f"Nothing was sent; {how}Crowd."]
    assert result.host.names_back() == ["Egg 1"]
    assert len(result.host.bytes_of(result.host.line("Egg 0"))) > 500


def test_names_that_are_not_utf_8(results):
    result = results("not UTF-8")
    assert result.said[0].startswith("2 of 3 objects received; ")
    assert result.said[0].endswith("/Gone\ufffd.vek.")
    assert set(result.scene) == {"Gr\ufffdn", "Plain"}
    assert result.said[1] == "2 objects sent; import them in Dorvia."
    assert result.host.names_back() == ["Gr\udcfcn", "Plain"]


def test_a_project_folder_that_is_not_utf_8(results):
    result = results("odd project")
    assert result.found["shown"] == result.host.root + "/Gr\ufffdn"
    assert result.said[0] == "1 object sent; import them in Dorvia."
    assert result.said[1].startswith("Nothing was received; ")
    assert result.said[1].endswith("/Gr\ufffdn/New.vek.")


def test_a_list_that_cannot_be_written(results):
    result = results("read-only hub")
    assert result.said[1].startswith("The files are written, but Dorvia is not told; ")
    assert result.host.names_back() == ["Egg 0"]


def test_a_full_disk(results):
    result = results("full disk")
    assert result.said[0].startswith("Nothing was sent; "), result.said
    assert "/full/Grid" in result.said[0]
    assert result.host.names_back() == []
    assert set(result.scene) == {"Grid"}
    assert os.listdir("/full") == []


def test_the_hand_back_command_is_run(results):
    result = results("command")
    assert result.said[1] == "1 object sent."
    assert result.host.root + "/handed back" in result.host.files()


def test_a_hand_back_command_that_fails(results):
    result = results("failing command")
    assert result.said[1] == ("1 object sent; import them in Dorvia, since the program that hands "
                              "them back failed with code 3.")
    assert result.host.names_back() == ["Egg 0"]


def test_the_helper_application_comes_before_the_command(results):
    result = results("helper")
    assert result.said[1] == "1 object sent."
    assert result.host.files()[result.host.root + "/handed back"] == b"back\n"


def test_work_that_is_stopped(results):
    result = results("stopped")
    assert result.said == ["1 of 3 objects received; you stopped it.", "3 objects received.",
                           "Nothing was sent; you stopped it."]
    assert len(result.scene) == 3
    assert result.host.names_back() == ["Egg 0", "Egg 1", "Egg 2"]
    for line, data in result.host.sent.items():
        assert result.host.bytes_back()[os.path.basename(line)] == data
    assert not result.host.left_over()


def test_a_step_that_fails_unforeseen(results):
    result = results("surprise")
    why = "the add-on failed, and Blender's console says where: No reason."
    assert result.said[1:] == [f"Nothing was sent; {why}", f"1 of 3 objects received; {why}"]
    assert result.found["files"] == ["Egg 0.vek", "Egg 1.vek", "Egg 2.vek"]
    assert result.host.names_back() == ["Egg 0", "Egg 1", "Egg 2"]


def test_what_dorvia_has_taken_over_is_not_received_turned(results):
    result = results("taken over")
    assert result.said[2] == "2 objects received."
    assert result.said[3] == ("Nothing was received: Dorvia has taken over what you sent, and has "
                              "sent nothing since.")
    assert result.found["same"]
    assert result.said[4] == "1 object received."


def test_nothing_to_send(results):
    sentence = "There is nothing to send: select objects, or receive some first."
    assert results("nothing to send").said == [sentence]
    assert results("camera").said == [sentence]


def test_every_message_is_one_sentence(results):
    for name in cases.CASES:
        for text in results(name).said:
            assert text.endswith("."), (name, text)
            assert "\n" not in text and ". " not in text, (name, text)
