"""The note that tells which Blender answers to the host's orders: the first one that was started."""

import contextlib
import functools
import os
import subprocess

from . import bridge


def _note():
    return bridge.app_file("Blender_Running.txt")


def answers():
    """Whether it is this Blender that answers. Where none does, it is from now on."""
    process, written = _noted()
    if process == os.getpid():
        return True
    if process is not None and _is_alive(process) and _is_blender(process, written):
        return False
    try:
        _write(f"PID = {os.getpid()}\n")
    except OSError:
        return False
    return True


def take_the_note_away():
    if _noted()[0] == os.getpid():
        try:
            os.remove(_note())
        except OSError:
            pass  # the process is soon gone, which says the same


def _noted():
    """The process, and when that was written down."""
    try:
        with open(_note(), encoding="ascii") as note:
            return int(note.read().split("=")[1]), os.fstat(note.fileno()).st_mtime_ns
    except (OSError, ValueError, IndexError):
        return None, 0


def _write(text):
    """Beside it first: the old one may be another user's, as the new one is for others."""
    fresh = f"{_note()}.{os.getpid()}"
    try:
        with open(fresh, "w", encoding="ascii") as note:
            note.write(text)
        os.chmod(fresh, 0o666)
        os.replace(fresh, _note())
    except OSError:
        with contextlib.suppress(OSError):
            os.remove(fresh)
        raise


def _is_alive(process):
    try:
        os.kill(process, 0)
    except (OSError, OverflowError):
        return False  # or another user's, who answers to that user alone
    return True


@functools.lru_cache(maxsize=1)
def _is_blender(process, _written):
    """Another program may have the number by now. Asked once for each note, as it takes a while."""
    try:
        said = subprocess.run(["ps", "-p", str(process), "-o", "comm="], timeout=5,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout
    except (OSError, subprocess.SubprocessError):
        return True  # as far as can be told
    return b"blender" in os.path.basename(said.lower())
