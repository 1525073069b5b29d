"""Exchange files block by block."""

import mmap
import struct
import tracemalloc

import pytest

from random_files import block, exchange_file
from vek_exchange import Block, ExchangeFile, VekError, read_file, read_mesh, write_file


@pytest.fixture
def path(tmp_path):
    return str(tmp_path / "mesh.vek")


def put(path, data):
    with open(path, "wb") as file:
        file.write(data)


def test_a_file_of_no_blocks_is_48_bytes(path):
    write_file(path, ExchangeFile())
    with open(path, "rb") as file:
        assert file.read() == b"Vekb" + bytes(44)


def test_a_block_is_padded_to_a_multiple_of_four(path):
    for size, whole in ((0, 16), (1, 20), (4, 20), (5, 24), (12, 28)):
        write_file(path, ExchangeFile([Block(7, b"x" * size, 3, 0.5)]))
        with open(path, "rb") as file:
            data = file.read()[32:-16]
        padding = bytes(whole - 16 - size)
        assert data == struct.pack("<3If", 7, whole, 3, 0.5) + b"x" * size + padding


def test_reserved_bytes_and_odd_numbers_are_kept(path):
    data = b"Vekb" + bytes(range(28)) + block(5, b"abcd", 1, 0x7F800001) + bytes(16)
    put(path, data)
    file = read_file(path)
    write_file(path, file)
    with open(path, "rb") as copy:
        assert copy.read() == data


def test_what_follows_the_end_block_is_passed_over(path):
    put(path, exchange_file(block(5, b"")) + b"more")
    assert [b.id for b in read_file(path).blocks] == [5]


@pytest.mark.parametrize("data, sentence", [
    (b"", "This is not a mesh exchange file: "),
    (b"Vekb" + bytes(27), "This is not a mesh exchange file: "),
    (b"VEKB" + bytes(44), "This is not a mesh exchange file: "),
    (bytes(48), "The exchange file was being rewritten when something went wrong, and has to be "
                "exported again: "),
    (b"Vekb" + bytes(28), "The exchange file is damaged, it has no end block at offset 32: "),
    (b"Vekb" + bytes(43), "The exchange file is damaged, it has no end block at offset 32: "),
    (exchange_file(block(5, b"abcd"))[:-16],
     "The exchange file is damaged, it has no end block at offset 52: "),
    (exchange_file(block(5, b"")[:4] + struct.pack("<3I", 15, 0, 0)),
     "The exchange file is damaged, it holds a block with an impossible size at offset 32: "),
    (exchange_file(block(5, b"")[:4] + struct.pack("<3I", 33, 0, 0)),
     "The exchange file is damaged, it ends inside a block at offset 32: ")])
def test_a_damaged_file_is_refused_with_a_sentence(path, data, sentence):
    put(path, data)
    with pytest.raises(VekError) as error:
        read_file(path)
    assert str(error.value) == sentence + path


@pytest.mark.parametrize("wrong", [Block(0, b"x"), Block(-1), Block(2 ** 32), Block(5, b"", -1)])
def test_a_block_that_the_format_cannot_state_is_refused(path, wrong):
    put(path, b"before")
    with pytest.raises(VekError):
        write_file(path, ExchangeFile([wrong]))
    with open(path, "rb") as file:
        assert file.read() == b"before"


def test_a_block_beyond_four_gib_is_refused(path):
    file = ExchangeFile([Block(5, _huge_view())])
    with pytest.raises(VekError, match="A block is too large for an exchange file: "):
        write_file(path, file)


def _huge_view():
    """4 GiB of address space and no memory."""
    return memoryview(mmap.mmap(-1, 2 ** 32 - 16, prot=mmap.PROT_READ))


def test_a_number_that_is_no_float32_is_refused():
    with pytest.raises(VekError):
        Block(5, param=1e39)


@pytest.mark.parametrize("field", [4, 8])
@pytest.mark.parametrize("id", [10001, 20001, 20003, 25001, 90001])
def test_a_damaged_number_takes_no_memory(path, id, field):
    """A block that says it is 4 GiB long, or has 4294967295 elements."""
    blocks = [block(10001, bytes(48), 4), block(20001, bytes(64), 4), block(20003, bytes(48), 4),
              block(25001, bytes(64), 4), block(90001, bytes(64), 4)]
    at = [10001, 20001, 20003, 25001, 90001].index(id)
    blocks[at] = blocks[at][:field] + b"\xff\xff\xff\xff" + blocks[at][field + 4:]
    put(path, exchange_file(*blocks))
    tracemalloc.start()
    try:
        try:
            read_mesh(path)
        except VekError:
            pass
        assert tracemalloc.get_traced_memory()[1] < 1000000
    finally:
        tracemalloc.stop()


def test_a_long_file_of_nothing_but_blocks_ends(path):
    put(path, exchange_file(*[block(5, b"")] * 100000))
    assert len(read_file(path).blocks) == 100000
