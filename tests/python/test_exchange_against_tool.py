"""The same files go through the package and through the tool's own reader and writer."""

import os
import random
import subprocess

import pytest

import random_files
from vek_exchange import Corners, VekError, read_file, read_mesh, write_file, write_mesh

FILES = 600


def copy_with_tool(pairs):
    """What the tool said of each pair of files: nothing, or why it refused the first."""
    lines = "".join("{}\n{}\n".format(source, target) for source, target in pairs)
    result = subprocess.run([os.environ["VEK_MESH_COPY"]], input=lines.encode(), check=True,
                            stdout=subprocess.PIPE)
    said = result.stdout.decode("utf-8", "replace").split("\n")
    assert len(said) == len(pairs) + 1
    return said[:-1]


def make_files(folder, make):
    paths = []
    for number in range(FILES):
        generator = random.Random(number)
        path = folder / "{}.vek".format(number)
        path.write_bytes(make(generator, random_files.random_blocks(generator)))
        paths.append(str(path))
    return paths


def as_the_tool_holds_it(mesh):
    """One kind of faces, one block of corner values with -1 in the empty places, and a UV list."""
    mesh.face_kind = 20001
    places = list(mesh.corners[-1].values) if mesh.corners else [-1] * len(mesh.faces)
    for fourth in range(3, len(places), 4):
        if mesh.faces[fourth] < 0:
            places[fourth] = -1
    mesh.corners = [Corners(places)]
    if mesh.uvs is None:
        mesh.uvs = []
    return mesh


def compare(paths):
    """Copies each file both ways. How many both took, and how many both refused."""
    taken = refused = 0
    for path, sentence in zip(paths, copy_with_tool([(p, p + ".tool") for p in paths])):
        try:
            mesh = read_mesh(path)
        except VekError as error:
            assert sentence, "the package alone refuses {}: {}".format(path, error)
            refused += 1
            continue
        assert not sentence, "the tool alone refuses {}: {}".format(path, sentence)
        write_mesh(path + ".package", as_the_tool_holds_it(mesh))
        with open(path + ".tool", "rb") as ours, open(path + ".package", "rb") as theirs:
            assert ours.read() == theirs.read(), path
        taken += 1
    return taken, refused


def test_sound_files_are_written_to_the_byte(tmp_path):
    paths = make_files(tmp_path, lambda _, blocks: random_files.exchange_file(*blocks))
    assert compare(paths) == (FILES, 0)


def test_damaged_files_are_refused_by_both_or_by_neither(tmp_path):
    taken, refused = compare(make_files(tmp_path, random_files.damaged))
    assert refused > FILES // 3
    assert taken > FILES // 10


def test_files_of_random_bytes_are_refused_by_both(tmp_path):
    def make(generator, _):
        return b"Vekb" * generator.getrandbits(1) + generator.randbytes(generator.randint(0, 200))

    assert compare(make_files(tmp_path, make)) == (0, FILES)


def test_block_by_block_a_sound_file_is_copied_to_the_byte(tmp_path):
    for path in make_files(tmp_path, lambda _, blocks: random_files.exchange_file(*blocks)):
        write_file(path + ".copy", read_file(path))
        with open(path, "rb") as original, open(path + ".copy", "rb") as copy:
            assert original.read() == copy.read(), path


def test_a_mesh_that_nobody_edited_is_written_as_it_was(tmp_path):
    """Where the blocks are in the order in which the package writes them."""
    for path in make_files(tmp_path, lambda _, blocks: random_files.exchange_file(
            *sorted(blocks, key=_place))):
        write_mesh(path + ".copy", read_mesh(path))
        expected = read_file(path)
        _canonical_fourths(expected)
        write_file(path, expected)
        with open(path, "rb") as original, open(path + ".copy", "rb") as copy:
            assert original.read() == copy.read(), path


def _place(block):
    id = int.from_bytes(block[:4], "little")
    order = {10001: 0, 20001: 1, 20002: 1, 20003: 1, 25001: 2, 25002: 2, 90001: 3, 45001: 4,
             50001: 4, 55001: 4}
    return order.get(id, 5)


def _canonical_fourths(file):
    """Any negative fourth index becomes -1, and the corner value of a place of three stays."""
    for block in file.blocks:
        if block.id == 20001:
            numbers = [int.from_bytes(block.payload[i:i + 4], "little", signed=True)
                       for i in range(0, len(block.payload), 4)]
            numbers[3::4] = [max(number, -1) for number in numbers[3::4]]
            block.payload = b"".join(n.to_bytes(4, "little", signed=True) for n in numbers)


def test_the_tool_reads_what_the_package_wrote(tmp_path):
    from vek_exchange import Mesh

    mesh = Mesh([0, 0, 0, 1, 0, 0, 1, 1, 0], [0, 1, 2, -1])
    write_mesh(str(tmp_path / "a.vek"), mesh)
    assert copy_with_tool([(tmp_path / "a.vek", tmp_path / "b.vek")]) == [""]
    copy = read_mesh(str(tmp_path / "b.vek"))
    assert list(copy.vertices) == [0, 0, 0, 1, 0, 0, 1, 1, 0]
    assert list(copy.faces) == [0, 1, 2, -1]


@pytest.mark.parametrize("where", ["missing.vek", "."])
def test_what_is_no_file_is_refused_by_both(tmp_path, where):
    with pytest.raises(VekError):
        read_mesh(str(tmp_path / where))
    assert copy_with_tool([(tmp_path / where, tmp_path / "out")]) != [""]
