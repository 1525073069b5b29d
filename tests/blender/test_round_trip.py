"""What comes back from Blender is what was sent, in every form that a mesh can have."""

import numpy as np
import pytest

import cases
import meshes
from meshes import CORNERS, TRIANGLES, UNKNOWN, UV_LIST

SENT = "sent; import them in Dorvia."


@pytest.mark.parametrize("name", ["Box", "Mixed", "Repeated", "Triangles", "WithUVs", "NoFaces",
                                  "Nothing"])
def test_every_byte_comes_back(results, name):
    host = results("kinds").host
    assert host.bytes_back()[name] == host.sent[host.line(name)]


def test_the_object_list_names_them_in_order(results):
    kinds = results("kinds")
    assert kinds.host.names_back() == ["Box", "Mixed", "Repeated", "Triangles", "WithUVs", "Three",
                                       "NoFaces", "Points", "Nothing"]
    assert kinds.said == ["9 objects received.", "9 objects " + SENT]


def test_blender_shows_triangles_and_quads(results):
    shown = results("kinds").scene
    assert shown["Box"]["sides"] == [4] * 6
    assert shown["Mixed"]["sides"] == shown["Repeated"]["sides"] == [3] * 16 + [4] * 16
    assert shown["Three"]["sides"] == [3] * 48
    assert shown["NoFaces"]["sides"] == shown["Points"]["sides"] == []


# Three indices a face are rewound wrongly by the bridge, so Blender hands back four.
def test_triangles_of_three_come_back_as_records_of_four(results):
    back = results("kinds").host.back("Three")
    assert not back.has(TRIANGLES)
    assert (back.faces == meshes.only_triangles(cases.EGG[1])).all()
    values = np.frombuffer(back.payload(CORNERS), "<i4").reshape(-1, 4)
    assert (values[:, :3].ravel() == np.arange(3 * 48) * 1000003).all()


def test_points_without_faces_come_back(results):
    back = results("kinds").host.back("Points")
    assert (back.vertices == cases.EGG[0]).all()
    assert len(back.faces) == 0


@pytest.mark.parametrize("count", [1, 10, 200])
def test_objects_come_back(results, count):
    result = results("1 object" if count == 1 else "%d objects" % count)
    noun = "object" if count == 1 else "objects"
    assert result.said == [f"{count} {noun} received.", f"{count} {noun} {SENT}"]
    assert result.host.names_back() == ["Egg %d" % number for number in range(count)]
    for line, data in result.host.sent.items():
        assert result.host.bytes_back()[line.rsplit("/", 1)[1]] == data


def test_names_come_back(results):
    result = results("names")
    assert result.host.names_back() == cases.ODD_NAMES
    assert {"with blanks  inside", "dots.in.it.001", "Blumentöpfe 花"} <= set(result.scene)


def test_large_faces_are_split_and_it_says_so(results):
    result = results("n-gons")
    assert result.said == ["1 object sent; 2 faces with more than four corners split into "
                           "triangles; import them in Dorvia."]
    back = result.host.back("Prism")
    assert len(back.faces) == 6 + 2 * 4
    assert meshes.open_edges(back.faces) == 0
    assert meshes.inward_faces(back.vertices, back.faces) == 0
    assert meshes.volume(back.vertices, back.faces) == pytest.approx(2 * 1.5 * np.sqrt(3), 1e-5)


def uvs_of(back):
    """A UV for each corner, and the vertex there."""
    uvs = np.frombuffer(back.payload(UV_LIST), "<f4").reshape(-1, 2)
    values = np.frombuffer(back.payload(CORNERS), "<i4").reshape(-1, 4)
    is_corner = back.faces >= 0
    return uvs[values[is_corner]], back.faces[is_corner]


def test_large_faces_keep_their_uvs(results):
    uvs, vertices = uvs_of(results("n-gons").host.back("Prism"))
    assert uvs == pytest.approx(np.column_stack([vertices / 100, vertices / 7]))


def test_corners_out_of_order_are_sent_with_their_faces(results):
    back = results("corners out of order").host.back("Folded")
    assert back.faces.tolist() == [[1, 3, 2, -1], [0, 1, 2, -1]]
    uvs, vertices = uvs_of(back)
    assert uvs == pytest.approx(np.column_stack([vertices / 100, vertices / 7]))


def test_geometry_that_was_added_comes_back_with_its_uvs(results):
    back = results("uvs").host.back("Egg")
    vertices, faces = cases.EGG
    assert (back.faces == np.concatenate([faces, np.where(faces < 0, -1, faces + len(vertices))])
            ).all()
    assert (back.vertices[:len(vertices)] == vertices).all()
    assert back.vertices[len(vertices):] == pytest.approx(vertices + (0, 1.5 * 6, 0), abs=1e-5)
    uvs, origin = uvs_of(back)
    origin = origin % len(vertices)
    assert uvs == pytest.approx(np.column_stack([origin / 100, origin / 7]))
    assert back.payload(UNKNOWN)[:10] == b"somebody's"


def test_an_object_that_was_mirrored_keeps_its_outside_and_its_uvs(results):
    back = results("mirrored").host.back("Egg")
    assert back.vertices == pytest.approx(cases.EGG[0] * (-1, 1, 1))
    assert meshes.inward_faces(back.vertices, back.faces) == 0
    assert (back.faces[:, 0] == cases.EGG[1][:, 0]).all()
    uvs, vertices = uvs_of(back)
    assert uvs == pytest.approx(np.column_stack([vertices / 100, vertices / 7]))


def test_objects_that_are_no_meshes_are_sent_as_they_look(results):
    result = results("text")
    assert result.said[0].startswith("1 object sent; ")
    assert len(result.host.back("Text").faces) > 20


def test_corner_values_without_a_meaning_are_left_out_of_other_faces(results):
    result = results("corners")
    assert result.said[1] == ("1 object sent; corner values of 1 object left out, since the faces "
                              "changed; import them in Dorvia.")
    back = result.host.back("Egg")
    assert len(back.faces) == 64
    assert not back.has(CORNERS)
    assert back.payload(UNKNOWN)[:10] == b"somebody's"


def test_an_object_that_comes_again_takes_its_place(results):
    result = results("modifiers")
    assert result.found["objects"] == 1
    assert result.said[2] == ("1 object received; modifiers of 1 object switched off, since the "
                              "mesh has them in it.")
    assert result.found["shown"] == [[False, False], [True, True]]  # that one keeps the mesh
    assert result.scene["Egg"]["sides"] == [3] * 32 + [4] * 32


def test_edits_that_are_under_way_are_sent(results):
    back = results("edit mode").host.back("Egg 0")
    assert back.vertices == pytest.approx(cases.EGG[0] + (0, 10, 0), abs=1e-5)


def test_sending_leaves_the_user_in_the_mode(results):
    result = results("modes")
    assert result.said == (["2 objects received."] + ["2 objects " + SENT] * 5
                           + ["This is not a .vek file: /x.obj.", "2 objects received."])
    assert result.found["after"] == ["EDIT", "SCULPT", "VERTEX_PAINT", "WEIGHT_PAINT",
                                     "TEXTURE_PAINT", "EDIT", "OBJECT"]


def test_copies_get_files_of_their_own(results):
    result = results("copies")
    assert result.said[1] == "3 objects " + SENT
    assert sorted(result.host.names_back()) == ["Egg 0", "Egg 0.001", "Egg 0.002"]
    assert len(set(result.host.bytes_back().values())) == 1


def test_new_objects_go_to_the_project_folder(results):
    result = results("added")
    names = result.host.names_back()
    assert names[0] == "Egg 0" and len(names) == 2
    assert names[1].startswith("Bär") and "/" not in names[1] and names[1] == names[1].strip()
    assert len(result.host.back(names[1]).faces) == 1


def test_receiving_can_be_undone(results):
    result = results("undo")
    assert result.found["counts"] == [10, 0, 10]
    assert len(result.scene) == 10


def test_files_are_imported_and_exported_by_the_menu(results):
    result = results("file menu")
    assert result.said[:3] == ["2 objects received.", "2 objects exported.", "1 object exported."]
    assert set(result.scene) == {"A", "B c"}
    exported = {name.rsplit("/", 1)[1]: data for name, data in result.host.files().items()
                if name.startswith(result.host.root + "/") and name.count("/") ==
                result.host.root.count("/") + 1}
    assert set(exported) == {"A.vek", "B c.vek", "One.vek"}
    assert len(set(exported.values())) == 1
    assert result.said[4].startswith("This is not a .vek file: ")


def test_the_file_menu_takes_paths_as_they_are(results):
    result = results("odd paths")
    assert result.said == ["1 object received.", "1 object exported.", "2 objects exported."]
    assert "x:y" in result.scene
    assert result.found["files"] == ["C_1.vek", "One.VEK", "x:y.Vek", "x_y.vek"]


def test_sending_does_not_write_over_what_was_imported(results):
    result = results("file menu")
    assert result.said[3] == "1 object " + SENT
    assert result.host.names_back() == ["A_2"]
