"""A sculpt is never lost, whatever the host sends."""

import pytest

SENT = "1 object sent; import them in Dorvia."
BESIDE = ("1 object received; hidden with the sculpt of its Multires modifier, since a mesh with "
          "other faces takes the place: %s.")


def test_a_mesh_with_other_faces_comes_beside_the_sculpt(results):
    result = results("sculpt and other faces")
    found = result.found
    assert result.said[1] == BESIDE % "Egg 0"
    assert found["is new"] and found["is hidden"] and found["same shape"]
    assert found["its line"] == ""
    assert sum(found["seen"], []) == pytest.approx(sum(found["wanted"], []), abs=1e-5)


def test_a_sculpt_that_is_not_sent_in_full_is_told_and_stays(results):
    result = results("sculpt sent")
    assert result.said[1] == ("1 object sent; less than the whole sculpt, as the Multires modifier "
                              "shows less: Egg 0 (level 1 of 2); import them in Dorvia.")
    assert result.said[2] == BESIDE % "Egg 0"
    assert "Egg 1 (level 0 of 2)" in result.said[3]
    assert result.said[4] == "1 object received."
    assert result.found["same"] == [[False, True], [True, True]]
    assert result.found["objects"] == 3


def test_a_sculpt_goes_along_with_a_mesh_that_has_moved(results):
    result = results("sculpt moved")
    assert result.said[1] == "1 object received."
    for way in result.found["way"]:
        assert way == pytest.approx([0, 0, 4], abs=1e-4)
