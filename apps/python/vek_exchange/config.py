"""Key/value text files, one key a line, in the two dialects of the bridge.

`ConfigFile` looks up and rewrites one key of a file; key and value are separated by '=' alone, so
that keys can have blanks in them. `Dispatcher` reads a whole file, such as a descriptor; keys are
known by their beginning and separated by tabs, blanks, ':' and '='. Keys are compared without
regard to the letter case of ASCII letters. Texts are bytes in the files: UTF-8 here, with bytes
that are none kept by surrogates. A line, a key and a value end at a NUL.
"""

from __future__ import annotations

import math
import re
import struct
from typing import Callable, List, Optional, Tuple

from ._files import Path, read_bytes, shown, to_bytes, to_text, write_whole
from .errors import VekError

_BLANKS = b" \t"
_BREAKS = b"\r\n"
_NO = (b"NO", b"0", b"FALSE", b"#F")
_YES = (b"YES", b"1", b"TRUE", b"#T")

# A line with the breaks that end it, the last one perhaps without.
_LINE = re.compile(rb"[^\r\n]*[\r\n]+|[^\r\n]+")
_NUMBER = re.compile(
    r"[ \t\n\v\f\r]*(?:([-+]?0x(?:[0-9a-f]+\.?[0-9a-f]*|\.[0-9a-f]+)(?:p[-+]?[0-9]+)?)|"
    r"([-+]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:e[-+]?[0-9]+)?)|"
    r"([-+]?(?:inf(?:inity|(?!i))|nan)))", re.IGNORECASE | re.ASCII)


class ConfigFile:
    """One key/value file, such as a "Vek_Config.txt". Each operation reads the file anew."""

    def __init__(self, path: Path) -> None:
        self.path = path

    def find(self, key: str) -> Optional[str]:
        """The value of the first line with this key, without one pair of enclosing double quotes.
        None when there is no such line, or no such file. VekError when it cannot be read."""
        wanted = to_bytes(key).upper()
        for line in lines_of(read_bytes(self.path) or b""):
            found, value = split_line(line)
            if not found or found != wanted:
                continue
            if len(value) >= 2 and value.startswith(b'"') and value.endswith(b'"'):
                value = value[1:-1]
            return to_text(value)
        return None

    def replace(self, key: str, value: str) -> bool:
        """Puts the line KEY = value on top and drops every older line of the key; makes a missing
        file. Whether there was an older line. VekError when the file cannot be read or written,
        and for a key or value that the file cannot hold: one with a line break or a NUL, a key
        that is empty, or has blanks at an end or a '=' in it."""
        wanted = to_bytes(key).upper()
        new_line = wanted + b" = " + to_bytes(value) + b"\n"
        bad_key = not wanted or b"=" in wanted or wanted != wanted.strip(_BLANKS)
        if bad_key or new_line.count(b"\n") != 1 or b"\r" in new_line or b"\0" in new_line:
            raise VekError("The key {!r} cannot be written with this value: {}".format(
                shown(key), shown(self.path)))
        old_lines = lines_of(read_bytes(self.path) or b"")
        kept = [line for line in old_lines if split_line(line)[0] != wanted]
        write_whole(self.path, [new_line, b"".join(kept)])
        return len(kept) < len(old_lines)

    def replace_quoted(self, key: str, value: str) -> bool:
        """As `replace`, with the value in double quotes, as paths are written."""
        return self.replace(key, '"' + value + '"')

    def find_bool(self, key: str) -> Optional[bool]:
        """None when there is no such line, or nothing in it. So the next two."""
        value = self.find(key)
        return param_to_bool(value) if value else None

    def find_int(self, key: str) -> Optional[int]:
        value = self.find(key)
        return param_to_int(value) if value else None

    def find_float(self, key: str) -> Optional[float]:
        value = self.find(key)
        return param_to_float(value) if value else None

    def replace_bool(self, key: str, value: bool) -> bool:
        return self.replace(key, "TRUE" if value else "FALSE")

    def replace_int(self, key: str, value: int) -> bool:
        if not -0x80000000 <= value <= 0x7FFFFFFF:
            raise VekError("The number {} does not fit into 32 bits.".format(value))
        return self.replace(key, str(int(value)))

    def replace_float(self, key: str, value: float) -> bool:
        return self.replace(key, "%f" % _as_float32(value))


class Dispatcher:
    """Reads a whole file and hands each line to the key that it begins with."""

    def __init__(self) -> None:
        self._keys: List[Tuple[bytes, Callable[[str], None]]] = []

    def add(self, key: str, callback: Callable[[str], None]) -> None:
        """A later key is tried before an earlier one: add a longer key after one that begins it.
        The callback gets the rest of the line. It is called with an empty text for a key alone on
        its line, and not at all for one with nothing but separators behind it."""
        if not key:
            raise VekError("A key cannot be empty.")
        self._keys.insert(0, (to_bytes(key).upper(), callback))

    def parse_file(self, path: Path) -> bool:
        """False when the file is missing or empty. VekError when it cannot be read."""
        data = read_bytes(path)
        if not data:
            return False
        for line in re.split(rb"[\r\n]+", _up_to_nul(data)):
            self._offer(line.strip(_BLANKS))
        return True

    def _offer(self, line: bytes) -> None:
        for key, callback in self._keys:
            if line[:len(key)].upper() != key:
                continue
            rest = line[len(key):]
            parameter = rest.lstrip(b" \t:=")
            if parameter or not rest:
                callback(to_text(parameter))
            return


def param_to_string(text: str) -> str:
    """The text without a double quote in front and, where there is one, its partner at the end."""
    if not text.startswith('"'):
        return text
    return text[1:-1] if text.endswith('"') else text[1:]


def param_to_bool(text: str) -> bool:
    """False for No, 0, False and #f in any letter case; True for everything else."""
    return to_bytes(text).upper() not in _NO


def param_to_bool_or_none(text: str) -> Optional[bool]:
    """As `param_to_bool`, with True for Yes, 1, True and #t alone, and None for anything else."""
    word = to_bytes(text).upper()
    if word in _NO:
        return False
    return True if word in _YES else None


def param_to_int(text: str) -> int:
    """The number that the text begins with, read as a float32 and cut; 0 where it is none. What 32
    bits do not hold becomes the nearest that they do."""
    number = param_to_float(text)
    if math.isnan(number):
        return 0
    return int(max(-2147483648.0, min(2147483647.0, number)))


def param_to_float(text: str) -> float:
    """The number that the text begins with, rounded to float32; 0.0 where it is none."""
    match = _NUMBER.match(text)
    if not match:
        return 0.0
    hexadecimal, decimal, word = match.groups()
    try:
        number = float.fromhex(hexadecimal) if hexadecimal else float(decimal or word)
    except OverflowError:
        number = -math.inf if hexadecimal.startswith("-") else math.inf
    return _as_float32(number)


def lines_of(data: bytes) -> List[bytes]:
    """The lines of a file with the breaks that end them; a break more belongs to the line before."""
    return _LINE.findall(data)


def split_line(line: bytes) -> Tuple[bytes, bytes]:
    """The key in upper case, and the value. The key is empty when there is none."""
    key, _, value = line.rstrip(_BLANKS + _BREAKS).lstrip(_BLANKS).partition(b"=")
    return _up_to_nul(key.rstrip(_BLANKS)).upper(), _up_to_nul(value.lstrip(_BLANKS))


def _up_to_nul(data: bytes) -> bytes:
    return data.split(b"\0", 1)[0]


def _as_float32(value: float) -> float:
    try:
        number: float = struct.unpack("<f", struct.pack("<f", value))[0]
        return number
    except OverflowError:
        return math.copysign(math.inf, value)
