"""Exchange files whose names or places are odd."""

import pytest

import cases


def test_a_name_as_long_as_names_can_be(results):
    result = results("long name")
    assert result.said == ["1 object received.", "1 object sent; import them in Dorvia."]
    assert result.found["files"] == [cases.LONG_NAME + ".vek"]
    assert result.host.bytes_back()[cases.LONG_NAME] == result.host.sent[result.host.line(
        cases.LONG_NAME)]


def test_a_file_that_is_a_link_is_written_where_it_leads(results):
    result = results("linked file")
    assert result.said[1] == "1 object sent; import them in Dorvia."
    assert result.found["link"] == result.host.root + "/real.vek"
    assert result.found["written"] and result.found["mode"] == 0o640
    assert not result.host.left_over()


def test_what_is_sent_again_after_an_undo_keeps_its_file(results):
    result = results("sent, undone, sent")
    assert result.said[1:] == ["2 objects sent; import them in Dorvia."] * 3
    assert result.found["files"] == ["Egg 0.001.vek", "Egg 0.vek", "New.vek"]
    assert result.found["place"] == 0
    assert sorted(result.host.names_back()) == ["Egg 0.001", "New"]


@pytest.mark.parametrize("case", ["own after undo", "own in another scene file",
                                  "own after deleting"])
def test_undo_gives_no_file_of_the_host_to_an_object_of_the_users(results, case):
    result = results(case)
    assert result.said[1] == "1 object sent; import them in Dorvia."
    assert result.found["lost"] == []
    assert result.host.names_back() == ["Egg 0_2"]


def test_a_modifier_that_was_sent_is_switched_off_though_sending_was_undone(results):
    result = results("sent modifier undone")
    assert result.found["shown"] is False, result.said


def test_an_object_that_undo_names_otherwise_keeps_its_file(results):
    assert results("renamed and undone").found["files"] == ["Other.vek"]


def test_a_volume_in_the_project_path_hides_no_file(results):
    result = results("volume in the project path")
    assert result.said == ["1 object sent; import them in Dorvia.", "1 object received."]
    assert result.found["same"]
    assert result.found["files"] == ["Egg 0.vek", "Egg 0_2.vek"]
    assert result.found["objects"] == 1


@pytest.mark.parametrize("case", ["volume in a line", "letter case"])
def test_lines_of_the_same_file_are_one_object(results, case):
    result = results(case)
    assert set(result.said) == {"1 object received."}
    assert result.found["objects"] == 1


def test_letter_case_makes_two_objects_where_it_makes_two_files(results):
    result = results("letter case told")
    assert result.said == ["4 objects received."]
    assert result.found["objects"] == 4


def test_what_is_not_received_is_not_written_over_unawares(results):
    result = results("not received")
    sent, warning = "2 objects sent; import them in Dorvia.", (
        "Nothing was sent, since Dorvia has sent what you have not received (Egg 0); press Receive "
        "first, or Send again to go without it.")
    assert result.said[1:] == [warning, sent, sent, sent, "1 object received.",
                               "1 object sent; import them in Dorvia."]
    assert result.found["same"]


def test_the_panel_breaks_its_sentence_into_lines(results):
    assert results("paragraph").found["lines"] == [
        [""], ["one two", "three"], ["one two th", "ree"],
        ["/a/path/of", "/many/lett", "ers.vek is", "gone."]]
    assert results("paragraph").found["narrow"] == ["o", "n", "e"]
