"""Reading and writing whole files. Failures are sentences."""

from __future__ import annotations

import contextlib
import os
import stat
import sys
from typing import BinaryIO, Optional, Sequence, Union

from .errors import VekError

Path = Union[str, "os.PathLike[str]"]
Bytes = Union[bytes, bytearray, memoryview]
_SystemPath = Union[str, bytes]


def to_bytes(text: str) -> bytes:
    """The bytes that a text of this package stands for in a file."""
    try:
        return text.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError:
        raise VekError("A text holds half a character: " + _ascii(text)) from None


def to_text(data: bytes) -> str:
    """The reverse of `to_bytes`, whatever the bytes."""
    return data.decode("utf-8", "surrogateescape")


def shown(path: Path) -> str:
    """A path as a message can hold it, whatever its bytes."""
    text = os.fspath(path)
    try:
        return text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")
    except UnicodeEncodeError:
        return _ascii(text)


def failure(what: str, path: Path, error: Exception) -> VekError:
    """VekError with a sentence such as "The file cannot be read, permission denied: /p"."""
    reason = getattr(error, "strerror", None) or str(error) or "out of memory"
    return VekError("{}, {}: {}".format(what, reason[0].lower() + reason[1:], shown(path)))


def open_to_read(path: Path) -> BinaryIO:
    """OSError or ValueError when there is no such regular file."""
    return os.fdopen(_open_regular(_for_system(path), os.O_RDONLY), "rb")


def read_bytes(path: Path, limit: Optional[int] = None) -> Optional[bytes]:
    """The contents, or None when there is no such file. A file above the limit reads as empty.
    VekError when it cannot be read."""
    try:
        with open_to_read(path) as file:
            if limit is None:
                return file.read()
            data = file.read(limit + 1)
            return data if len(data) <= limit else b""
    except (FileNotFoundError, NotADirectoryError):
        return None
    except (OSError, ValueError, MemoryError) as error:
        raise failure("The file cannot be read", path, error) from error


def write_whole(path: Path, pieces: Sequence[Bytes], mode: Optional[int] = None) -> None:
    """Writes a file so that a reader sees the old contents or the new ones.

    The new contents are written beside the file and then take its name, with the permissions and
    the owner that the file had; `mode` gives it other permissions. Where that cannot be done but
    the file can be written, as in a folder of somebody else's, it is overwritten. VekError when
    the file cannot be written.
    """
    try:
        target = os.path.realpath(_for_system(path))
        old = _status_of(target)
        try:
            _replace(target, pieces, old, mode)
        except PermissionError:
            if old is None:
                raise
            _overwrite(target, pieces)
    except (OSError, ValueError) as error:
        raise failure("The file cannot be written", path, error) from error


class StagedFile:
    """New contents of a file, written beside it. They take its place when all else is ready."""

    def __init__(self, path: Path, pieces: Sequence[Bytes]) -> None:
        """VekError when they cannot be written, or the file must not be."""
        self.path = path
        try:
            self._target = os.path.realpath(_for_system(path))
            self._temporary = _write_beside(self._target, pieces, _status_of(self._target))
        except (OSError, ValueError) as error:
            raise failure("The file cannot be written", path, error) from error

    def take_place(self) -> None:
        """VekError when that cannot be; the file is then as it was."""
        try:
            os.replace(self._temporary, self._target)
        except OSError as error:
            raise failure("The file cannot be replaced", self.path, error) from error

    def drop(self) -> None:
        """Takes away what did not take the file's place."""
        _remove(self._temporary)


def append_bytes(path: Path, data: bytes) -> None:
    """Adds to the end of the file in one piece, and makes a missing file."""
    try:
        flags = os.O_WRONLY | os.O_CREAT | os.O_APPEND
        descriptor = _open_regular(_for_system(path), flags)
        try:
            before = os.fstat(descriptor).st_size
            if os.write(descriptor, data) != len(data):
                # A part of a line would join the next one.
                os.ftruncate(descriptor, before)
                raise OSError(0, "No space left on device")
        finally:
            os.close(descriptor)
    except (OSError, ValueError) as error:
        raise failure("The file cannot be written", path, error) from error


def _ascii(text: str) -> str:
    return text.encode("ascii", "backslashreplace").decode("ascii")


def _for_system(path: Path) -> _SystemPath:
    # Paths come out of shared files as bytes, and go to the system as the same ones.
    text = os.fspath(path)
    return text if sys.platform == "win32" else to_bytes(text)


def _open_regular(path: _SystemPath, flags: int) -> int:
    # Opening does not wait: a pipe without a partner would never let go of the caller.
    for name in ("O_CLOEXEC", "O_NONBLOCK", "O_NOCTTY", "O_BINARY", "O_NOINHERIT"):
        flags |= getattr(os, name, 0)
    descriptor = os.open(path, flags, 0o666)
    if stat.S_ISREG(os.fstat(descriptor).st_mode):
        return descriptor
    os.close(descriptor)
    raise OSError(0, "It is not a regular file")


def _status_of(target: _SystemPath) -> Optional[os.stat_result]:
    """None when there is no such file. OSError when it must not be written."""
    try:
        status = os.stat(target)
    except (FileNotFoundError, NotADirectoryError):
        return None
    if not stat.S_ISREG(status.st_mode):
        raise OSError(0, "It is not a regular file")
    # Taking over its name would get round the permissions that the file has.
    if not os.access(target, os.W_OK):
        raise OSError(0, "Permission denied")
    return status


def _beside(target: _SystemPath) -> _SystemPath:
    # Short: the file's own name may be as long as names can be.
    name = ".vek-" + os.urandom(8).hex()
    if isinstance(target, bytes):
        return os.path.join(os.path.dirname(target), name.encode("ascii"))
    return os.path.join(os.path.dirname(target), name)


def _replace(target: _SystemPath, pieces: Sequence[Bytes], old: Optional[os.stat_result],
             mode: Optional[int]) -> None:
    temporary = _write_beside(target, pieces, old, mode, must_own=True)
    try:
        os.replace(temporary, target)
    except BaseException:
        _remove(temporary)
        raise


def _write_beside(target: _SystemPath, pieces: Sequence[Bytes], old: Optional[os.stat_result],
                  mode: Optional[int] = None, must_own: bool = False) -> _SystemPath:
    """The path of the file that was written."""
    temporary = _beside(target)
    descriptor = _open_regular(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL)
    try:
        with os.fdopen(descriptor, "wb") as file:
            for piece in pieces:
                file.write(piece)
            file.flush()
            _take_after(descriptor, old, mode, must_own)
    except BaseException:
        _remove(temporary)
        raise
    return temporary


def _remove(path: _SystemPath) -> None:
    with contextlib.suppress(OSError):
        os.unlink(path)


def _take_after(descriptor: int, old: Optional[os.stat_result], mode: Optional[int],
                must_own: bool) -> None:
    """Gives the new file the owner and the permissions of the old one. PermissionError when it
    must have the owner and cannot."""
    if sys.platform == "win32":
        return
    if old is not None:
        new = os.fstat(descriptor)
        if (new.st_uid, new.st_gid) != (old.st_uid, old.st_gid):
            with contextlib.nullcontext() if must_own else contextlib.suppress(PermissionError):
                os.fchown(descriptor, old.st_uid, old.st_gid)
        os.fchmod(descriptor, stat.S_IMODE(old.st_mode))
    if mode is not None:
        os.fchmod(descriptor, mode)


def _overwrite(target: _SystemPath, pieces: Sequence[Bytes]) -> None:
    size = sum(memoryview(piece).nbytes for piece in pieces)
    with os.fdopen(_open_regular(target, os.O_WRONLY), "wb") as file:
        old_size = os.fstat(file.fileno()).st_size
        # Room first: where there is none, the file is still untouched.
        if sys.platform == "linux" and size > old_size:
            try:
                os.posix_fallocate(file.fileno(), 0, size)
            except OSError:
                os.ftruncate(file.fileno(), old_size)
                raise
        for piece in pieces:
            file.write(piece)
        file.flush()
        os.ftruncate(file.fileno(), size)
