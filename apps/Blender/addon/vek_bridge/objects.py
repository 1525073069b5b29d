"""What an object in the scene remembers of the exchange file that it came from.

It stands in the object's custom properties, so it is saved with the scene and copied with the
object.
"""

import struct

import bpy

from . import paths
from .vek_exchange import exchange_file as blocks

_LINE = "vek_object"  # its line in the object list
_NAME = "vek_name"  # what the object was called then
_FACE_KIND = "vek_face_kind"
_GIVEN_MARK = "vek_given"
_KEPT = "vek_blocks"
_SENT_MODIFIERS = "vek_sent_modifiers"
_SENT_FRAME = "vek_sent_frame"
_SENT_MATRIX = "vek_sent_matrix"
_HEAD = "<IIII"
_BESIDE_THE_MESH = {"COLLISION", "PARTICLE_SYSTEM", "SURFACE"}

SENDABLE = {"MESH", "CURVE", "SURFACE", "FONT", "META"}
SEEN_AND_NO_MESH = {"GPENCIL", "GREASEPENCIL", "VOLUME", "POINTCLOUD", "CURVES"}


def is_empty(obj):
    """Whether there is nothing to see of it without its modifiers."""
    return obj.type == "MESH" and not obj.data.vertices


def line_of(obj):
    line = obj.get(_LINE, b"")
    return line.decode("utf-8", "surrogateescape") if isinstance(line, bytes) else ""


def remember_line(obj, line):
    obj[_LINE] = line.encode("utf-8", "surrogateescape")
    obj[_NAME] = obj.name


def sent_of(obj):
    """What it remembers of what was sent, by the names under which it does."""
    return {key: _plain(obj[key]) for key in (_SENT_MODIFIERS, _SENT_FRAME, _SENT_MATRIX)
            if key in obj}


def _plain(value):
    """A copy: lists of numbers go with the object's state, which an undo takes away."""
    return list(value) if hasattr(value, "typecode") else value


def give_missing(obj, sent):
    for key, value in sent.items():
        if key not in obj:
            obj[key] = value


def forget(obj):
    """It is a thing of Blender's alone from now on."""
    for key in (_LINE, _NAME, _FACE_KIND, _GIVEN_MARK, _KEPT, _SENT_MODIFIERS, _SENT_FRAME,
                _SENT_MATRIX):
        if key in obj:
            del obj[key]


def originals(scene):
    """By the keys of their files (see paths) the objects that had them first: copies, and pieces
    that were cut off, remember the same line. Blender gave those other names, and their meshes too.
    An object in the scene, which is the user's, goes before those in others."""
    objs = {obj for each in bpy.data.scenes for obj in each.objects if line_of(obj)}
    found = {}
    for obj in sorted(objs, key=lambda obj: _likeness(obj, scene), reverse=True):
        found[paths.key_of_line(line_of(obj))] = obj
    return found


def _likeness(obj, scene):
    """The least for the original."""
    name = obj.get(_NAME, "")
    return (scene not in obj.users_scene, obj.name != name,
            not obj.data or obj.data.name != name, len(obj.name), obj.name)


def remember_given(obj, given, mark):
    obj[_FACE_KIND] = given.face_kind
    obj[_GIVEN_MARK] = mark
    obj[_KEPT] = b"".join(part for block in given.kept for part in (
        struct.pack(_HEAD, block.id, len(block.payload), block.count, block.param_bits),
        block.payload))


def face_kind(obj):
    return obj.get(_FACE_KIND, blocks.FACES_NEGATIVE)


def given_mark(obj):
    return obj.get(_GIVEN_MARK, "")


def kept_blocks(obj):
    kept, packed, at = [], obj.get(_KEPT, b""), 0
    head = struct.calcsize(_HEAD)
    while at < len(packed):
        number, size, count, bits = struct.unpack_from(_HEAD, packed, at)
        block = blocks.Block(number, packed[at + head:at + head + size], count)
        block.param_bits = bits
        kept.append(block)
        at += head + size
    return kept


def remember_sent(obj, line, frame):
    remember_line(obj, line)
    obj[_SENT_FRAME] = float(frame)
    obj[_SENT_MATRIX] = [number for row in obj.matrix_world for number in row]
    obj[_SENT_MODIFIERS] = "\n".join(modifier.name for modifier in _shown_modifiers(obj))


def _shown_modifiers(obj):
    """Those that the mesh has in it when it is sent."""
    return [modifier for modifier in obj.modifiers
            if modifier.show_viewport and modifier.type not in _BESIDE_THE_MESH
            and getattr(modifier, "levels", 1)]


def hidden_levels(obj):
    """Of a sculpt that is not shown in full: what is shown, as "level 1 of 3". Else empty."""
    for each in _shown_multires(obj):
        if each.levels < each.total_levels:
            return f"level {each.levels} of {each.total_levels}"
    return ""


def _shown_multires(obj):
    return [each for each in obj.modifiers if each.type == "MULTIRES" and each.show_viewport]


def sent_frame(obj):
    """The frame of the scene when it was sent; None where it was not."""
    return obj.get(_SENT_FRAME)


def sent_matrix(obj):
    """The sixteen numbers of its matrix in the world then, row by row."""
    return list(obj[_SENT_MATRIX])


def rest_sent_modifiers(obj):
    """Switches off what the mesh that comes back has in it already. Whether there was any."""
    sent = str(obj.get(_SENT_MODIFIERS, "")).split("\n")
    obj[_SENT_MODIFIERS] = ""
    shown = [modifier for modifier in _shown_modifiers(obj) if modifier.name in sent]
    for modifier in shown:
        modifier.show_viewport = False
        modifier.show_render = False
    return len(shown) > 0
