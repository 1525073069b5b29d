"""The shared folder tree, where the host and the target applications meet.

A missing file reads as empty; one that is there and cannot be read is a VekError. Whatever is
written is written whole: a reader sees the old contents or the new ones. The two sides take turns,
and nothing is locked.
"""

from __future__ import annotations

from typing import Iterable, List, Optional

from .config import ConfigFile
from .descriptor import Descriptor
from .errors import VekError

DEFAULT_ROOT = "/Users/Shared/Kelvaro"


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
        raise NotImplementedError

    def write_object_list(self, objects: Iterable[str]) -> None:
        """Replaces the object list. VekError for an object that the list cannot hold faithfully:
        an empty one, one with a line break or a NUL, or with blanks at an end."""
        raise NotImplementedError

    def add_object(self, object_line: str) -> None:
        """Adds an object at the end of the list, and makes a missing list."""
        raise NotImplementedError

    def add_object_first(self, object_line: str) -> bool:
        """Puts an object on top of the list. False, and nothing done, when there is no list."""
        raise NotImplementedError

    def extract_object(self) -> Optional[str]:
        """Takes the first object off the list and makes it the object path. None when there is
        nothing to take."""
        raise NotImplementedError

    def object_path(self) -> str:
        """What the object path file says: the object that was taken off the list last."""
        raise NotImplementedError

    def write_object_path(self, object_line: str) -> None:
        raise NotImplementedError

    @staticmethod
    def exchange_file(object_line: str, extension: str = ".vek") -> str:
        """The file of an object line: the line as the system takes it for a path, and the
        extension."""
        raise NotImplementedError

    @staticmethod
    def object_file_name(name: str) -> str:
        """A name for the exchange file of an object that a user called `name`, without extension:
        what neither a file system nor the list could hold is replaced by '_'."""
        raise NotImplementedError

    # The project

    def project_path(self) -> str:
        """The project folder that the host named; empty when it named none."""
        raise NotImplementedError

    def project_folder(self) -> str:
        """`project_path()`, or the default project folder where there is none."""
        raise NotImplementedError

    def write_project_path(self, path: str) -> None:
        raise NotImplementedError

    # The applications

    def selected_application(self) -> str:
        """The id of the application that the user selected; empty when there is none."""
        raise NotImplementedError

    def select_application(self, app: str) -> None:
        raise NotImplementedError

    def applications(self) -> List[Descriptor]:
        """The descriptors of all applications, by their ids. Folders without one are passed
        over."""
        raise NotImplementedError

    def descriptor(self, app: str) -> Descriptor:
        """VekError when the application has none."""
        raise NotImplementedError

    def app_config(self, app: str) -> ConfigFile:
        raise NotImplementedError

    def hub_config(self) -> ConfigFile:
        raise NotImplementedError

    def app_path(self, app: str) -> Optional[str]:
        """Where the application is installed, as its configuration file says."""
        raise NotImplementedError

    def write_app_path(self, app: str, path: str) -> None:
        raise NotImplementedError

    def host_path(self) -> Optional[str]:
        """Where the host is, as it said when it was started last."""
        raise NotImplementedError

    def installed_locations(self, app: str) -> List[str]:
        """The lines of the application's install list."""
        raise NotImplementedError

    def is_installed(self, app: str, location: str) -> bool:
        """Whether `location` begins with one of them, in any letter case."""
        raise NotImplementedError

    def write_install_log(self, app: str, text: str = "") -> None:
        """Says that an installation has ended: well with no text, else with what the user is to
        see."""
        raise NotImplementedError


def valid_file_path(text: str) -> str:
    """The part of a text that the bridge takes for a path: what follows its first ':', if there is
    one, from its first '/' on, if there is one."""
    raise NotImplementedError
