"""Copies and pieces of an object remember where it came from, and leave its file to it."""

import pytest

import cases

SENT = "1 object sent; import them in Dorvia."


def vertices(result, name):
    return result.host.back(name).vertices


def test_a_copy_that_goes_alone_leaves_the_file_of_its_original(results):
    result = results("lone copy")
    assert result.said[1:3] == [SENT, SENT]
    assert result.found["lists"][:2] == [["A copy"], ["A copy"]]
    assert result.found["is untouched"]


def test_a_renamed_original_keeps_its_file(results):
    result = results("lone copy")
    assert result.said[3:] == [SENT, SENT]
    assert result.found["lists"][2:] == [["Egg 0.001"], ["Egg 0"]]
    assert (vertices(result, "Egg 0") == cases.EGG[0]).all()


def test_names_that_differ_in_letter_case_have_different_files(results):
    result = results("letter case of a copy")
    assert result.found["files"] == ["EGG 0_2.vek", "Egg 0.vek"]


def test_the_original_is_what_comes_again(results):
    shown = results("copy in the scene").scene
    assert set(shown) == {"Egg 0", "A copy", "Z copy"}
    assert shown["Egg 0"]["high"][2] < 10
    assert shown["A copy"]["high"][2] > 40 and shown["Z copy"]["high"][2] > 40


def test_a_piece_that_was_cut_off_gets_a_file_of_its_own(results):
    result = results("separated")
    assert result.found["pieces"] == 1
    assert result.said[1] == SENT
    assert result.host.names_back() == ["Egg 0.001"]
    assert len(result.host.back("Egg 0.001").faces) == 1


def test_in_a_copy_of_the_scene_its_own_object_is_the_original(results):
    result = results("copy of a scene")
    assert result.said == ["1 object received.", SENT, "1 object received."]
    assert result.found["objects"] == 2
    assert sum(result.found["seen"], []) == pytest.approx(sum(result.found["wanted"], []), abs=1e-5)
