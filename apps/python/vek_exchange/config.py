"""Key/value text files, one key a line, in the two dialects of the bridge.

`ConfigFile` looks up and rewrites one key of a file; key and value are separated by '=' alone, so
that keys can have blanks in them. `Dispatcher` reads a whole file, such as a descriptor; keys are
known by their beginning and separated by tabs, blanks, ':' and '='. Keys are compared without
regard to the letter case of ASCII letters. Texts are bytes in the files: UTF-8 here, with bytes
that are none kept by surrogates.
"""

from __future__ import annotations

from typing import Callable, Optional

from .exchange_file import Path


class ConfigFile:
    """One key/value file, such as a "Vek_Config.txt". Each operation reads the file anew."""

    def __init__(self, path: Path) -> None:
        raise NotImplementedError

    def find(self, key: str) -> Optional[str]:
        """The value of the first line with this key, without one pair of enclosing double quotes.
        None when there is no such line, or no such file. VekError when it cannot be read."""
        raise NotImplementedError

    def replace(self, key: str, value: str) -> bool:
        """Puts the line KEY = value on top and drops every older line of the key; makes a missing
        file. Whether there was an older line. VekError when the file cannot be read or written."""
        raise NotImplementedError

    def replace_quoted(self, key: str, value: str) -> bool:
        """As `replace`, with the value in double quotes, as paths are written."""
        raise NotImplementedError

    def find_bool(self, key: str) -> Optional[bool]:
        raise NotImplementedError

    def find_int(self, key: str) -> Optional[int]:
        raise NotImplementedError

    def find_float(self, key: str) -> Optional[float]:
        raise NotImplementedError

    def replace_bool(self, key: str, value: bool) -> bool:
        raise NotImplementedError

    def replace_int(self, key: str, value: int) -> bool:
        raise NotImplementedError

    def replace_float(self, key: str, value: float) -> bool:
        raise NotImplementedError


class Dispatcher:
    """Reads a whole file and hands each line to the key that it begins with."""

    def add(self, key: str, callback: Callable[[str], None]) -> None:
        """A later key is tried before an earlier one: add a longer key after one that begins it.
        The callback gets the rest of the line."""
        raise NotImplementedError

    def parse_file(self, path: Path) -> bool:
        """False when the file is missing or empty. VekError when it cannot be read."""
        raise NotImplementedError


def param_to_string(text: str) -> str:
    """The text without a double quote in front and, where there is one, its partner at the end."""
    raise NotImplementedError


def param_to_bool(text: str) -> bool:
    """False for No, 0, False and #f in any letter case; True for everything else."""
    raise NotImplementedError


def param_to_bool_or_none(text: str) -> Optional[bool]:
    """As `param_to_bool`, with True for Yes, 1, True and #t alone, and None for anything else."""
    raise NotImplementedError


def param_to_int(text: str) -> int:
    """The number that the text begins with, read as a float32 and cut; 0 where it is none."""
    raise NotImplementedError


def param_to_float(text: str) -> float:
    """The number that the text begins with, rounded to float32; 0.0 where it is none."""
    raise NotImplementedError
