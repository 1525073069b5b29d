"""The library, called as the host calls it."""

import ctypes
import struct

BLOCK = 65536


class Bridge:
    def __init__(self, path):
        self._library = ctypes.CDLL(path)

    def call(self, name, text=None, value=0.0, in1=None, in2=None):
        """The result of an export, with blocks that hold `in1` and `in2`."""
        return self._call(name, text, value, _block(in1), _block(in2))

    def text(self, name, text=None, value=0.0):
        """The result of an export and the text in its first block; None when it left the block."""
        block = ctypes.create_string_buffer(b"\x5a" * BLOCK, BLOCK)
        result = self._call(name, text, value, block, None)
        return result, _written(block)

    def preference(self, name, file, key):
        """The result of a read export and the bytes of its second block, with None as above."""
        block = ctypes.create_string_buffer(b"\x5a" * BLOCK, BLOCK)
        result = self._call(name, file, 0.0, _block(key), block)
        return result, _written(block), block.raw[:4]

    def two_texts(self, name, value):
        blocks = [ctypes.create_string_buffer(b"\x5a" * BLOCK, BLOCK) for _ in range(2)]
        result = self._call(name, None, value, *blocks)
        return (result,) + tuple(_written(block) for block in blocks)

    def switches(self, value):
        """The switches that the host's scripts are told of."""
        block = ctypes.create_string_buffer(BLOCK)
        self._call("GetVekAppIOPrefs", None, value, block, None)
        low, high = struct.unpack_from("<I4xI", block.raw)
        return low | high << 16

    def _call(self, name, text, value, block1, block2):
        export = getattr(self._library, name)
        export.restype = ctypes.c_float
        export.argtypes = [ctypes.c_char_p, ctypes.c_double, ctypes.c_char_p, ctypes.c_int,
                           ctypes.c_char_p, ctypes.c_int, ctypes.c_void_p]
        return export(_bytes(text), value, block1, BLOCK, block2, BLOCK, None)


def _bytes(text):
    return text.encode("utf-8", "surrogateescape") if isinstance(text, str) else text


def _block(text):
    return None if text is None else ctypes.create_string_buffer(_bytes(text))


def _written(block):
    if block.raw[:1] == b"\x5a" and block.raw == b"\x5a" * len(block.raw):
        return None
    return block.value.decode("utf-8", "surrogateescape")
