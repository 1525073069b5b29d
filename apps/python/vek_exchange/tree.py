"""The shared folder tree, where the host and the target applications meet.

A missing file reads as empty; one that is there and cannot be read is a VekError. Whatever is
written is written whole: a reader sees the old contents or the new ones. The two sides take turns,
and nothing is locked.
"""

from __future__ import annotations

import os
from typing import Iterable, List, Optional

from ._files import append_bytes, failure, read_bytes, shown, to_bytes, to_text, write_whole
from ._names import object_file_name, object_file_names
from .config import ConfigFile, lines_of
from .descriptor import Descriptor, read_descriptor
from .errors import VekError

DEFAULT_ROOT = "/Users/Shared/Kelvaro"

# The bridge reads no more of the files that hold one text.
_TEXT_LIMIT = 4096
_SPACE = b" \t\r\n"
_CONTROLS = bytes(range(32)) + b"\x7f"


class Tree:
    """The tree at `root`. Making one touches nothing. Object lines are the paths of exchange files
    without their extension."""

    def __init__(self, root: str = DEFAULT_ROOT) -> None:
        self.root = root
        self.hub_folder = root + "/VekHub"
        self.apps_folder = root + "/VekApps"
        self.projects_folder = root + "/VekProjects"
        self.default_project_folder = self.projects_folder + "/Default"
        self.application_file = self.hub_folder + "/Vek_Application.txt"
        self.project_path_file = self.hub_folder + "/Vek_ProjectPath.txt"
        self.object_path_file = self.hub_folder + "/Vek_ObjectPath.txt"
        self.object_list_file = self.hub_folder + "/Vek_ObjectList.txt"
        self.hub_config_file = self.hub_folder + "/Vek_Config.txt"

    def app_folder(self, app: str) -> str:
        return self.apps_folder + "/" + app

    def app_file(self, app: str, name: str) -> str:
        return self.app_folder(app) + "/" + name

    # The objects that travel

    def object_list(self) -> List[str]:
        """The lines of the object list, trimmed, without the empty ones."""
        return [_text_of(line) for line in _lines_in(self.object_list_file)]

    def write_object_list(self, objects: Iterable[str]) -> None:
        """Replaces the object list. VekError for an object that the list cannot hold faithfully:
        an empty one, one with a line break or a NUL, or with blanks at an end."""
        write_whole(self.object_list_file, [b"".join(_line_of(line) for line in objects)])

    def add_object(self, object_line: str) -> None:
        """Adds an object at the end of the list, and makes a missing list."""
        line = _line_of(object_line)
        old = read_bytes(self.object_list_file) or b""
        # A list that somebody wrote by hand may lack its last line break.
        append_bytes(self.object_list_file, b"\n" + line if old[-1:].strip(b"\r\n") else line)

    def add_object_first(self, object_line: str) -> bool:
        """Puts an object on top of the list. False, and nothing done, when there is no list."""
        line = _line_of(object_line)
        old = read_bytes(self.object_list_file)
        if old is None:
            return False
        write_whole(self.object_list_file, [line, old])
        return True

    def extract_object(self) -> Optional[str]:
        """Takes the first object off the list and makes it the object path. None when there is
        nothing to take.

        As the bridge does it: the line is not trimmed, exactly one line break is passed over at
        the very start, and one ends the line.
        """
        data = read_bytes(self.object_list_file) or b""
        begin = 1 if data[:1] in (b"\n", b"\r") else 0
        if begin == len(data):
            return None
        # The line has at least one byte: a second break in front is not passed over.
        breaks = [data.find(c, begin + 1) for c in (b"\n", b"\r")]
        end = min([place for place in breaks if place >= 0], default=len(data))
        # The object path first: if the list cannot be written, nothing is lost.
        write_whole(self.object_path_file, [data[begin:end]])
        write_whole(self.object_list_file, [data[end + 1:]])
        return to_text(data[begin:end])

    def object_path(self) -> str:
        """What the object path file says: the object that was taken off the list last."""
        return to_text((read_bytes(self.object_path_file) or b"").strip(_SPACE))

    def write_object_path(self, object_line: str) -> None:
        write_whole(self.object_path_file, [_line_of(object_line)[:-1]])

    @staticmethod
    def exchange_file(object_line: str, extension: str = ".vek") -> str:
        """The file of an object line: the line as the bridge takes it for a path, and the
        extension."""
        return valid_file_path(object_line) + extension

    @staticmethod
    def object_file_name(name: str) -> str:
        """A name for the exchange file of an object that a user called `name`, without extension:
        what neither a file system nor the list could hold is replaced by '_'."""
        return object_file_name(name)

    @staticmethod
    def object_file_names(names: Iterable[str]) -> List[str]:
        """As `object_file_name` for several objects, each with a name of its own, also where
        letter case makes no difference."""
        return object_file_names(names)

    # The project

    def project_path(self) -> str:
        """The project folder that the host named; empty when it named none."""
        text = _text_in(self.project_path_file)
        last_break = max(text.rfind(b"\n"), text.rfind(b"\r"))
        return to_text(text if last_break < 0 else text[:last_break])

    def project_folder(self) -> str:
        """`project_path()`, or the default project folder where there is none."""
        return self.project_path() or self.default_project_folder

    def write_project_path(self, path: str) -> None:
        """VekError for a path that the file cannot hold faithfully."""
        _write_text(self.project_path_file, path)

    # The applications

    def selected_application(self) -> str:
        """The id of the application that the user selected; empty when there is none."""
        return to_text(_text_in(self.application_file))

    def select_application(self, app: str) -> None:
        """An empty id selects none."""
        _write_text(self.application_file, app)

    def applications(self) -> List[Descriptor]:
        """The descriptors of all applications, in the order of their ids. Folders without one are
        passed over; an empty one has its defaults."""
        try:
            with os.scandir(self.apps_folder) as entries:
                folders = [entry.name for entry in entries if entry.is_dir(follow_symlinks=False)]
        except (FileNotFoundError, NotADirectoryError):
            return []
        except (OSError, ValueError) as error:
            raise failure("The folder cannot be read", self.apps_folder, error) from error
        result = []
        for app in sorted(folders):
            if os.path.isfile(self.app_file(app, "Vek_Info.txt")):
                result.append(self._descriptor_or_default(app))
        return result

    def descriptor(self, app: str) -> Descriptor:
        """VekError when the application has none."""
        descriptor = read_descriptor(self.app_file(app, "Vek_Info.txt"))
        descriptor.id = app
        return descriptor

    def _descriptor_or_default(self, app: str) -> Descriptor:
        if read_bytes(self.app_file(app, "Vek_Info.txt")):
            return self.descriptor(app)
        descriptor = Descriptor()
        descriptor.id = app
        return descriptor

    def app_config(self, app: str) -> ConfigFile:
        return ConfigFile(self.app_file(app, "Vek_Config.txt"))

    def hub_config(self) -> ConfigFile:
        return ConfigFile(self.hub_config_file)

    def app_path(self, app: str) -> Optional[str]:
        """Where the application is installed, as its configuration file says."""
        return _unquoted(self.app_config(app).find("PATH"))

    def write_app_path(self, app: str, path: str) -> None:
        self.app_config(app).replace_quoted("PATH", path)

    def host_path(self) -> Optional[str]:
        """Where the host is, as it said when it was started last."""
        return _unquoted(self.hub_config().find("PATH"))

    def installed_locations(self, app: str) -> List[str]:
        """The lines of the application's install list."""
        lines = _lines_in(self.app_file(app, "Vek_InstallList.txt"))
        return [_text_of(line) for line in lines]

    def is_installed(self, app: str, location: str) -> bool:
        """Whether `location` begins with one of them, in any letter case."""
        # A line with a NUL in it stands for a location that ends there.
        wanted = to_bytes(location).upper() + b"\0"
        lines = _lines_in(self.app_file(app, "Vek_InstallList.txt"))
        return any(wanted.startswith(_up_to_nul(line).upper()) for line in lines)

    def write_install_log(self, app: str, text: str = "") -> None:
        """Says that an installation has ended: well with no text, else with what the user is to
        see. The file is readable for everybody, since administrators write it for users."""
        write_whole(self.app_file(app, "Vek_InstallLog.txt"), [to_bytes(text)], mode=0o644)


def valid_file_path(text: str) -> str:
    """The part of a text that the bridge takes for a path: what follows its first ':', if there is
    one, from its first '/' on, if there is one."""
    path = text.split(":", 1)[-1]
    slash = path.find("/")
    return path if slash < 0 else path[slash:]


def _lines_in(path: str) -> List[bytes]:
    """The lines of a file, trimmed, without those that are empty then."""
    lines = [line.rstrip(_SPACE).lstrip(b" \t") for line in lines_of(read_bytes(path) or b"")]
    return [line for line in lines if line]


def _text_of(line: bytes) -> str:
    # What is behind a NUL is lost to the bridge, and so here.
    return to_text(line.split(b"\0", 1)[0])


def _up_to_nul(line: bytes) -> bytes:
    """The line with its NUL, if it has one, and without what follows."""
    return line[:line.find(b"\0") + 1] or line


def _line_of(object_line: str) -> bytes:
    line = to_bytes(object_line)
    faithful = line and line == line.strip(_SPACE) and not any(c in line for c in b"\r\n\0")
    if not faithful:
        raise VekError("The object list cannot hold this path, which is empty, has a line break in "
                       "it or blanks at an end: \"{}\"".format(shown(object_line)))
    return line + b"\n"


def _text_in(path: str) -> bytes:
    data = (read_bytes(path, _TEXT_LIMIT) or b"").rstrip(_CONTROLS)
    return data.split(b"\0", 1)[0]


def _write_text(path: str, text: str) -> None:
    data = to_bytes(text)
    if len(data) > _TEXT_LIMIT or any(c in data for c in b"\r\n\0") or data != data.rstrip(_CONTROLS):
        raise VekError("This text is too long for a file of the hub, or has a line break in it: "
                       "\"{}\"".format(shown(text)))
    write_whole(path, [data])


def _unquoted(text: Optional[str]) -> Optional[str]:
    # The bridge takes quotes off once more than the lookup does.
    if text and text.startswith('"') and text.endswith('"'):
        return text[1:-1]
    return text
