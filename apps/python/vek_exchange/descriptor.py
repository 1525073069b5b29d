"""Descriptors of target applications, "Vek_Info.txt"."""

from __future__ import annotations

import enum

from .exchange_file import Path


class IOPref(enum.IntFlag):
    """The switches of a descriptor."""

    IMPORT_FLIP_X = 0x1
    IMPORT_FLIP_Y = 0x2
    IMPORT_FLIP_Z = 0x4
    EXPORT_FLIP_X = 0x8
    EXPORT_FLIP_Y = 0x10
    EXPORT_FLIP_Z = 0x20
    IMPORT_SWITCH_YZ = 0x40
    EXPORT_SWITCH_YZ = 0x80
    IMPORT_FLIP_NORMALS = 0x100
    EXPORT_FLIP_NORMALS = 0x200
    IMPORT_POLYGROUPS = 0x400
    IMPORT_MAT_AS_GROUPS = 0x800
    GROUP_NSIDED_POLYS = 0x1000
    NORMAL_MAP_FLIP_X = 0x2000
    NORMAL_MAP_FLIP_Y = 0x4000
    NORMAL_MAP_FLIP_Z = 0x8000
    NORMAL_MAP_FLIP_XY = 0x10000
    NORMAL_MAP_FLIP_VERT = 0x20000
    IMPORT_MFLIP_X = 0x40000
    IMPORT_MFLIP_Y = 0x80000
    IMPORT_MFLIP_Z = 0x100000
    IMPORT_MSWITCH_YZ = 0x200000
    EXPORT_MFLIP_X = 0x400000
    EXPORT_MFLIP_Y = 0x800000
    EXPORT_MFLIP_Z = 0x1000000
    EXPORT_MSWITCH_YZ = 0x2000000


class Descriptor:
    """What a descriptor says; the defaults are those of an empty one."""

    def __init__(self) -> None:
        self.id = ""  # the name of the application's folder; not from the file
        self.name = ""
        self.ext = ""
        self.tamplate = ""  # spelled as its key
        self.locate_command = ""
        self.init_command = ""
        self.edit_command = ""
        self.version = 1
        self.io_prefs = IOPref(0)

    @property
    def export_mirrors(self) -> bool:
        """Whether what the application is given was mirrored, so that its faces were rewound."""
        raise NotImplementedError

    @property
    def import_mirrors(self) -> bool:
        """Whether what the application hands back is mirrored on its way to the host."""
        raise NotImplementedError


def read_descriptor(path: Path) -> Descriptor:
    """Reads a descriptor. VekError when the file is missing, empty, or cannot be read."""
    raise NotImplementedError
