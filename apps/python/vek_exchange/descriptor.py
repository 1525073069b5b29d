"""Descriptors of target applications, "Vek_Info.txt"."""

from __future__ import annotations

import enum
import os
from typing import Callable

from ._files import Path, shown
from .config import Dispatcher, param_to_bool, param_to_int, param_to_string
from .errors import VekError


class IOPref(enum.IntFlag):
    """The switches of a descriptor. The flips and switches without an M say how the bridge turns
    exchange files; the others are the host's scripts' to act on."""

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


_IMPORT_MIRRORS = (IOPref.IMPORT_FLIP_X | IOPref.IMPORT_FLIP_Y | IOPref.IMPORT_FLIP_Z |
                   IOPref.IMPORT_SWITCH_YZ)
_EXPORT_MIRRORS = (IOPref.EXPORT_FLIP_X | IOPref.EXPORT_FLIP_Y | IOPref.EXPORT_FLIP_Z |
                   IOPref.EXPORT_SWITCH_YZ)

_TEXT_FIELDS = (("NAME", "name"), ("EXTENSION", "ext"), ("TAMPLATE", "tamplate"),
                ("LOCATE_COMMAND", "locate_command"), ("INIT_COMMAND", "init_command"),
                ("EDIT_COMMAND", "edit_command"))


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
        """Whether an odd number of flips and switches mirrors what the application is given. The
        bridge then rewinds the faces as well, so that what was outside stays outside."""
        return _is_odd(self.io_prefs & _EXPORT_MIRRORS)

    @property
    def import_mirrors(self) -> bool:
        """The same for what the application hands back."""
        return _is_odd(self.io_prefs & _IMPORT_MIRRORS)


def read_descriptor(path: Path) -> Descriptor:
    """Reads a descriptor; its `id` is the name of the folder that the file is in. VekError when
    the file is missing or empty or cannot be read."""
    descriptor = Descriptor()
    descriptor.id = os.path.basename(os.path.dirname(os.path.abspath(path)))
    if not _dispatcher(descriptor).parse_file(path):
        raise VekError("The descriptor is missing or empty: " + shown(path))
    return descriptor


def _dispatcher(descriptor: Descriptor) -> Dispatcher:
    def set_text(field: str) -> Callable[[str], None]:
        return lambda parameter: setattr(descriptor, field, param_to_string(parameter))

    def set_version(parameter: str) -> None:
        descriptor.version = param_to_int(parameter)

    def set_switch(switch: IOPref) -> Callable[[str], None]:
        def set_it(parameter: str) -> None:
            if param_to_bool(parameter):
                descriptor.io_prefs |= switch
            else:
                descriptor.io_prefs &= ~switch
        return set_it

    dispatcher = Dispatcher()
    for key, field in _TEXT_FIELDS:
        dispatcher.add(key, set_text(field))
    dispatcher.add("VEK_VERSION", set_version)
    # NORMAL_MAP_FLIP_XY is tried before NORMAL_MAP_FLIP_X, which begins it, since it comes later.
    for switch in IOPref:
        dispatcher.add(str(switch.name), set_switch(switch))
    return dispatcher


def _is_odd(switches: IOPref) -> bool:
    return bin(int(switches)).count("1") % 2 == 1
