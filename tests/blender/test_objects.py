"""What comes from the host goes into the objects that are there, which stay what they are."""

import numpy as np
import pytest

import cases

SENT = "sent; import them in Dorvia."


def near(found, wanted):
    assert len(found) == len(wanted)
    for name in wanted:
        assert sum(found[name], []) == pytest.approx(sum(wanted[name], []), abs=1e-5), name


def as_they_came(uvs):
    """A UV for each corner, made of the number of its vertex."""
    for vertex, u, v in uvs:
        assert (u, v) == pytest.approx((vertex / 100, vertex / 7))


def test_an_object_stays_in_its_place_with_all_that_holds_it(results):
    result = results("held")
    assert result.said[1:] == ["4 objects " + SENT, "4 objects received.", "4 objects received."]
    assert result.found["same shapes"]  # to the last bit, where the host has changed nothing
    assert result.found["same places"]
    assert result.found["settings"] == ["Parent", "COPY_TRANSFORMS", "location"]
    near(result.found["seen"], result.found["wanted"])


def test_an_object_that_is_scaled_to_nothing_stays_as_it_is(results):
    result = results("scaled to nothing")
    assert result.said[1] == ("Nothing was received; no mesh can be put into an object that is "
                              "scaled to nothing, so give it a size: Egg 0.")
    assert result.found["same"]


def test_hidden_objects_get_their_meshes_and_stay_hidden(results):
    result = results("hidden")
    assert result.said[1] == "There is nothing to send: select objects, or receive some first."
    assert result.said[2] == ("3 objects received; not shown, as you hid it: Egg 0, Egg 1, Egg 2.")
    assert result.found["hidden"] == [True, True, True]
    near(result.found["seen"], result.found["wanted"])


def test_what_hangs_on_the_mesh_of_another_comes_where_the_file_says(results):
    result = results("hanging")
    assert result.said[1:] == ["4 objects " + SENT, "4 objects received."]
    near(result.found["seen"], result.found["wanted"])


def test_hidden_objects_are_looked_for_where_they_are_held(results):
    result = results("hidden and held")
    assert result.said[2] == "2 objects received; not shown, as you hid it: Egg 0, Egg 1."
    assert result.found["hidden"] == [True, True] and result.found["scenes"] == 1
    near(result.found["seen"], result.found["wanted"])


def test_an_animated_object_is_taken_from_where_it_was_when_it_was_sent(results):
    result = results("another frame")
    assert result.said[2] == "1 object received."
    assert result.found["same"]


def test_objects_in_another_scene_get_their_meshes_there(results):
    result = results("other scene")
    assert result.said[1] == "2 objects received; in another scene of this file: Egg 0."
    assert result.found["objects"] == 2
    assert result.found["lifted"] == pytest.approx(4)


def test_other_objects_with_the_same_mesh_keep_it(results):
    result = results("linked duplicates")
    assert result.said[1:] == ["2 objects " + SENT, "1 object received; no longer sharing a mesh "
                               "with other objects: A."]
    assert result.found["same"] == [True, True, True]
    near({"it": result.found["seen"]}, {"it": result.found["wanted"]})


def test_a_mesh_takes_the_place_of_a_text(results):
    found = results("text back").found
    assert found["said"][1] == "1 object received; hidden, since a mesh takes the place: Text."
    assert (found["type"], found["slots"], found["hidden"]) == ("MESH", ["Ink"], True)
    near({"it": found["seen"]}, {"it": found["wanted"]})
    assert found["said"][2] == "1 object received."
    assert found["objects"] == found["again"] == 2


def test_a_text_that_is_shown_again_leaves_the_file_to_the_mesh(results):
    result = results("text back")
    assert result.said[3] == "1 object " + SENT
    assert result.host.names_back() == ["Text_2"]


def test_what_lies_on_a_mesh_stays_where_its_faces_do(results):
    result = results("moved by the host")
    assert result.said[1:] == ["1 object " + SENT, "1 object received."]
    assert result.found["after"] == result.found["before"]
    assert result.found["before"]["keys"] == {"Basis": 0.0, "Bent": 0.5}
    assert result.found["before"]["active key"] == "Bent"
    assert not result.found["before"]["off the basis"]
    near({"it": result.found["seen"]}, {"it": result.found["wanted"]})


ON_FACES = ("materials of single faces, smooth shading of single faces, UV maps, colors and "
            "attributes, face sets and marks of edges")


def test_what_lies_on_vertices_stays_where_faces_are_others(results):
    result = results("faces turned by the host")
    before, after = result.found["before"], result.found["after"]
    assert result.said[2] == (f"1 object received; {ON_FACES} of 1 object lost, since faces or "
                              "vertices are others now.")
    for what in ("weights", "keys", "way", "slots", "mask"):
        assert after[what] == before[what]
    assert before["mask"] == 0.75
    assert before["weights"] == {"1": [0.25], "2": [0.25], "3": [0.25]}
    assert after["sides"] == before["sides"][::-1]
    assert after["colors"] == ["Wear"]
    assert not any(after["materials"] + after["smooth"] + after["seams"])
    assert after["maps"] == ["UVMap"]
    as_they_came(after["uvs"])
    near({"it": result.found["seen"]}, {"it": result.found["wanted"]})


@pytest.mark.parametrize("case", ["vertices added by the host", "doubles by the host"])
def test_what_is_lost_with_the_vertices_is_told(results, case):
    result = results(case)
    assert result.said[2] == (
        "1 object received; vertex groups, shape keys, attributes of vertices, sculpt masks, "
        f"{ON_FACES} of 1 object lost, since faces or vertices are others now.")
    after = result.found["after"]
    assert after["slots"] == ["Red", "Blue"]
    assert not any(after[what] for what in ("weights", "keys", "colors", "maps", "mask"))
    near({"it": result.found["seen"]}, {"it": result.found["wanted"]})


def test_the_active_uv_map_travels(results):
    found = results("two maps").found
    uvs, vertices = found["sent"]
    assert np.array(uvs) == pytest.approx(np.array([(each / 10, 0.5) for each in vertices]))
    assert found["said"][2] == ("1 object received; UV maps of 1 object lost, since faces or "
                                "vertices are others now.")
    assert found["after"]["maps"] == ["Second"]
    assert [each[1:] for each in found["after"]["uvs"]] == pytest.approx(
        np.array(uvs[:len(found["after"]["uvs"])]))


def test_corners_without_a_uv_have_zeros(results):
    uvs = results("UVs out of the list").found["after"]["uvs"]
    assert [each[1:] for each in uvs[:2]] == [[0, 0], [0, 0]]
    as_they_came(uvs[3:])


def test_what_is_linked_from_another_blender_file_stays_as_it_is(results):
    result = results("linked")
    assert result.said[1] == ("1 of 2 objects received; the object is part of another Blender file "
                              "and stays as it is: Egg 0.")
    assert result.found["same"] == [True, False]
    assert result.found["lifted"] == pytest.approx(3)
    assert not result.found["linked"]


def test_a_text_that_is_not_in_the_view_layer_is_replaced_too(results):
    result = results("text elsewhere")
    assert result.said[1] == ("1 object received; hidden, since a mesh takes the place: Text; not "
                              "shown, as you hid it: Text.001.")
    assert result.found["types"] == ["FONT", "MESH"]


def test_weights_of_vertices_are_attributes_too(results):
    assert results("marked vertices").said[1] == (
        "1 object received; attributes of vertices of 1 object lost, since faces or vertices are "
        "others now.")


def test_new_faces_are_smooth_and_of_a_material_where_all_were(results):
    found = results("plain shading").found
    count = len(cases.EGG[1]) - 1
    assert found["said"][1] == ("1 object received; UV maps of 1 object lost, since faces or "
                                "vertices are others now.")
    assert found["after"]["materials"] == [1] * count
    assert found["after"]["smooth"] == [True] * count


def test_faces_with_many_corners_come_back_whole(results):
    found = results("many corners").found
    assert found["said"] == ["1 object sent; 1 face with more than four corners split into "
                             "triangles; import them in Dorvia.", "1 object received."]
    assert found["after"]["sides"] == [6]
    as_they_came(found["after"]["uvs"])
    near({"it": found["seen"]}, {"it": found["wanted"]})


def test_all_that_lies_on_faces_is_told(results):
    lost = "1 object received; %s of 1 object lost, since faces or vertices are others now."
    marks = lost % "marks and maps of faces"
    assert results("marks of faces").said[1:] == [marks, marks, lost % "edges without faces"]


def test_a_modifier_that_was_not_sent_stays_on(results):
    result = results("other modifier")
    assert result.said[2] == "1 object received."
    assert result.found["shown"]


def test_new_objects_do_not_go_into_a_collection_of_another_file(results):
    result = results("linked collection")
    assert result.said[1] == "1 object received."
    assert result.found["where"] == {"Egg 0": ["Scene Collection"]}


def test_instances_beside_the_mesh_of_an_object_are_told(results):
    assert results("mixed with instances").said[1] == (
        "2 objects sent; without their instances (make them real first): Egg 0; import them in "
        "Dorvia.")


def test_what_is_no_mesh_or_goes_with_another_is_told(results):
    result = results("without a mesh")
    assert result.said == ["1 object sent; not sent by itself, being part of another metaball: "
                           "Mball.001; not sent, being no mesh: Drawing; import them in Dorvia."]
    assert result.host.names_back() == ["Mball"]
