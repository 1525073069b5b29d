"""What the host sends in each case, and what Blender then does (a function of in_blender.py)."""

import numpy as np

import meshes
from host import describe
from meshes import CORNERS, NEGATIVE, REPEATED, TRIANGLES, UNKNOWN, UV_LIST, file_bytes

EGG, BOX = meshes.egg(), meshes.box()
ODD_NAMES = ["with blanks  inside", "dots.in.it.001", "Blumentöpfe 花", "a" * 100,
             "it's 100 % \"$HOME\""]
LONG_NAME = "n" * 251  # and the extension
UNKNOWN_BLOCK = meshes.block(UNKNOWN, b"somebody's", 3, 0.5)
ODD_NUMBER = b"\x01\x00\xa0\x7f"  # a number that arithmetic changes
ODD_BLOCK = UNKNOWN_BLOCK[:12] + ODD_NUMBER + UNKNOWN_BLOCK[16:]
SWITCHES = range(16)


def corner_block(faces, stride=4):
    values = np.arange(stride * len(faces), dtype="<i4") * 1000003
    return meshes.block(CORNERS, values.tobytes(), len(faces))


def uv_blocks(faces):
    """A UV for each corner that depends on nothing but its vertex."""
    faces = np.asarray(faces)
    uvs = np.column_stack([np.arange(faces.max() + 1) / 100, np.arange(faces.max() + 1) / 7])
    return [meshes.block(CORNERS, faces.astype("<i4").tobytes(), len(faces)),
            meshes.block(UV_LIST, uvs.astype("<f4").tobytes(), len(uvs))]


def send_kinds(host):
    vertices, faces = EGG
    more = [corner_block(faces), UNKNOWN_BLOCK]
    host.send("Box", file_bytes(*BOX, more=[UNKNOWN_BLOCK, ODD_BLOCK]))
    host.send("Mixed", file_bytes(vertices, faces, NEGATIVE, more))
    host.send("Repeated", file_bytes(vertices, faces, REPEATED, more))
    host.send("Triangles", file_bytes(vertices, meshes.only_triangles(faces)))
    host.send("WithUVs", file_bytes(vertices, faces, more=uv_blocks(faces)))
    host.send("Three", file_bytes(vertices, meshes.only_triangles(faces), TRIANGLES,
                                  [corner_block(meshes.only_triangles(faces), 3)]))
    host.send("NoFaces", file_bytes(vertices, np.empty((0, 4))))
    host.send("Points", file_bytes(vertices, None))
    host.send("Nothing", file_bytes(np.empty((0, 3)), np.empty((0, 4))))


def send_eggs(count):
    def send(host):
        for number in range(count):
            vertices, faces = EGG
            host.send("Egg %d" % number, file_bytes(vertices + np.float32(number), faces))
    return send


def send_names(host):
    for name in ODD_NAMES:
        host.send(name, file_bytes(*BOX))


def send_a_long_name(host):
    host.send(LONG_NAME, file_bytes(*EGG))


def send_with_a_vanished_one(host):
    send_eggs(3)(host)
    host.tree.add_object(host.line("Gone"))


def send_with_a_damaged_one(host):
    send_eggs(2)(host)
    host.send("Egg 2", file_bytes(*EGG))
    host.write(host.line("Egg 2"), host.bytes_of(host.line("Egg 2"))[:200])


def send_names_that_are_not_utf_8(host):
    host.send("Gr\udcfcn", file_bytes(*EGG))
    host.tree.add_object(host.line("Gone\udcff"))
    host.send("Plain", file_bytes(*EGG))


def send_with_nonsense(host):
    vertices = EGG[0].copy()
    vertices[3, 1] = np.nan
    host.send("NotANumber", file_bytes(vertices, EGG[1]))
    host.send("FarVertex", file_bytes(EGG[0], [(0, 1, 99999, -1)]))
    host.write(host.line("NoVek"), b"something else")
    host.tree.add_object(host.line("NoVek"))


def send_faces_that_use_a_vertex_twice(host):
    faces = np.concatenate([BOX[1], [(0, 1, 1, -1), (0, 1, 3, 0)]])
    host.send("Box", file_bytes(BOX[0], faces, more=[corner_block(faces)]))


def send_all_switches(host):
    """An object for each way there and each way back."""
    for there in SWITCHES:
        describe(host.bridge, descriptor("EXPORT", there))
        for back in SWITCHES:
            host.send(turned_name(there, back), file_bytes(*EGG))


def turned_name(there, back):
    return "there %d back %d" % (there, back)


def descriptor(way, switches):
    keys = ("FLIP_X", "FLIP_Y", "FLIP_Z", "SWITCH_YZ")
    return "EXTENSION .vek\n" + "".join(
        f"{way}_{key} {'Yes' if switches >> bit & 1 else 'No'}\n" for bit, key in enumerate(keys))


def turn(switches):
    """The matrix of the switches, from the host to the application."""
    matrix = np.diag([-1.0 if switches >> bit & 1 else 1.0 for bit in range(3)] + [1.0])
    return matrix[:, [0, 2, 1, 3]] if switches >> 3 & 1 else matrix


def matrices():
    """What an object has to be turned by in Blender so that the way back undoes the way there."""
    return {turned_name(there, back): (turn(back) @ np.linalg.inv(turn(there))).tolist()
            for there in SWITCHES for back in SWITCHES}


def send_uvs(host):
    host.send("Egg", file_bytes(*EGG, more=uv_blocks(EGG[1]) + [UNKNOWN_BLOCK]))


def send_uvs_out_of_the_list(host):
    """The first face has neither a number before the list nor one behind it."""
    faces = EGG[1]
    values = faces.astype("<i4")
    values[0, :3] = -5, 26, 2
    blocks = uv_blocks(faces)
    blocks[0] = meshes.block(CORNERS, values.tobytes(), len(faces))
    host.send("Egg", file_bytes(*EGG, more=blocks))


def send_corners(host):
    host.send("Egg", file_bytes(*EGG, more=[corner_block(EGG[1]), UNKNOWN_BLOCK]))


def project_on_a_small_disk(host):
    host.tree.write_project_path("/full")


def hand_back(command):
    def send(host):
        send_eggs(1)(host)
        config = host.tree.app_config("Blender")
        config.replace_quoted("HAND_BACK_COMMAND", command % {"root": host.root})
    return send


def helper(host):
    """A helper application and a command: the helper counts."""
    hand_back("false")(host)
    import os
    contents = host.tree.hub_folder + "/VekHubFromApp.app/Contents"
    os.makedirs(contents + "/MacOS")
    with open(contents + "/Info.plist", "w", encoding="utf-8") as file:
        file.write('<plist version="1.0"><dict><key>CFBundleExecutable</key>'
                   "<string>Helper</string></dict></plist>")
    with open(contents + "/MacOS/Helper", "w", encoding="utf-8") as file:
        file.write(f"#!/bin/sh\necho back >'{host.root}/handed back'\n")
    os.chmod(contents + "/MacOS/Helper", 0o755)


def unlisted_files(host):
    for name in ("A", "B c"):
        host.send(name, file_bytes(*BOX), listed=False)


def nothing(_host):
    pass


CASES = {
    "kinds": (send_kinds, "there_and_back"),
    "n-gons": (nothing, "prism"),
    "corners out of order": (nothing, "corners_out_of_order"),
    "1 object": (send_eggs(1), "there_and_back"),
    "10 objects": (send_eggs(10), "there_and_back"),
    "200 objects": (send_eggs(200), "there_and_back"),
    "names": (send_names, "there_and_back"),
    "empty list": (nothing, "only_receive"),
    "vanished": (send_with_a_vanished_one, "there_and_back"),
    "damaged": (send_with_a_damaged_one, "there_and_back"),
    "nonsense": (send_with_nonsense, "only_receive"),
    "twice": (send_faces_that_use_a_vertex_twice, "there_and_back"),
    "switches": (send_all_switches, "told_to_undo"),
    "uvs": (send_uvs, "array"),
    "corners": (send_corners, "array"),
    "modifiers": (send_uvs, "array_twice"),
    "mirrored": (send_uvs, "mirrored"),
    "text": (nothing, "text"),
    "text back": (nothing, "text_back"),
    "held": (send_eggs(4), "held"),
    "scaled to nothing": (send_eggs(1), "scaled_to_nothing"),
    "hidden": (send_eggs(3), "hidden"),
    "hanging": (send_eggs(4), "hanging"),
    "hidden and held": (send_eggs(2), "hidden_and_held"),
    "another frame": (send_eggs(1), "another_frame"),
    "other scene": (send_eggs(2), "other_scene"),
    "modes": (send_eggs(2), "modes"),
    "not a number": (send_eggs(1), "not_a_number"),
    "edges alone": (nothing, "edges_alone"),
    "moved by the host": (send_uvs, "moved_by_the_host"),
    "faces turned by the host": (send_uvs, "faces_turned_by_the_host"),
    "vertices added by the host": (send_uvs, "vertices_added_by_the_host"),
    "doubles by the host": (send_uvs, "doubles_by_the_host"),
    "two maps": (send_uvs, "two_maps"),
    "UVs out of the list": (send_uvs_out_of_the_list, "uvs_out_of_the_list"),
    "letter case of a copy": (send_eggs(1), "letter_case_of_a_copy"),
    "linked": (send_eggs(2), "linked"),
    "text elsewhere": (nothing, "text_elsewhere"),
    "marked vertices": (send_eggs(1), "marked_vertices"),
    "plain shading": (send_uvs, "plain_shading"),
    "many corners": (nothing, "many_corners"),
    "linked duplicates": (send_eggs(1), "linked_duplicates"),
    "sculpt and other faces": (send_eggs(1), "sculpt_and_other_faces"),
    "sculpt sent": (send_eggs(2), "sculpt_sent"),
    "sculpt moved": (send_eggs(1), "sculpt_moved"),
    "stopped": (send_eggs(3), "stopped"),
    "edit mode": (send_eggs(1), "edit_mode"),
    "copies": (send_eggs(1), "copies"),
    "lone copy": (send_eggs(1), "lone_copy"),
    "copy in the scene": (send_eggs(1), "copy_in_the_scene"),
    "separated": (send_eggs(1), "separated"),
    "added": (send_eggs(1), "added"),
    "undo": (send_eggs(10), "undone"),
    "sent, undone, sent": (send_eggs(1), "sent_undone_sent"),
    "sent modifier undone": (send_eggs(1), "sent_modifier_undone"),
    "own after undo": (send_eggs(1), "own_after_undo"),
    "own in another scene file": (send_eggs(1), "own_in_another_scene_file"),
    "own after deleting": (send_eggs(1), "own_after_deleting"),
    "renamed and undone": (nothing, "renamed_and_undone"),
    "volume in the project path": (send_eggs(1), "volume_in_the_project_path"),
    "volume in a line": (send_eggs(1), "volume_in_a_line"),
    "letter case": (send_eggs(1), "letter_case"),
    "letter case told": (send_eggs(1), "letter_case_told"),
    "copy of a scene": (send_eggs(1), "copy_of_a_scene"),
    "marks of faces": (send_eggs(1), "marks_of_faces"),
    "other modifier": (send_eggs(1), "other_modifier"),
    "linked collection": (send_eggs(1), "linked_collection"),
    "mixed with instances": (send_eggs(2), "mixed_with_instances"),
    "without a mesh": (nothing, "without_a_mesh"),
    "paragraph": (nothing, "paragraph"),
    "long name": (send_a_long_name, "long_name"),
    "linked file": (send_eggs(1), "linked_file"),
    "missing project": (nothing, "missing_project"),
    "list of blanks": (nothing, "empty_list"),
    "not received": (send_eggs(2), "not_received"),
    "taken over": (send_eggs(2), "taken_over"),
    "surprise": (send_eggs(3), "surprise"),
    "read-only": (send_eggs(2), "read_only"),
    "not UTF-8": (send_names_that_are_not_utf_8, "there_and_back"),
    "odd project": (nothing, "odd_project"),
    "in the way": (send_eggs(3), "in_the_way"),
    "only instances": (send_eggs(2), "only_instances"),
    "read-only hub": (send_eggs(1), "read_only_hub"),
    "full disk": (project_on_a_small_disk, "elsewhere"),
    "command": (hand_back("touch '%(root)s/handed back'"), "there_and_back"),
    "failing command": (hand_back("exit 3"), "there_and_back"),
    "helper": (helper, "there_and_back"),
    "file menu": (unlisted_files, "file_menu"),
    "odd paths": (unlisted_files, "odd_paths"),
    "nothing to send": (nothing, "only_send"),
    "camera": (nothing, "camera"),
}
