"""Meshes in memory and in files. Each test runs with numpy and without."""

import math
import os
import random
import struct
from array import array

import pytest

from random_files import block, exchange_file
from vek_exchange import (Block, Corners, MapName, Mesh, VekError, file_of, mesh_of, read_file,
                          read_mesh, write_mesh)

try:
    import numpy
except ImportError:
    numpy = None

SQUARE = [0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0]
needs_numpy = pytest.mark.skipif(numpy is None, reason="without numpy")


@pytest.fixture
def path(tmp_path):
    return str(tmp_path / "mesh.vek")


def ints(*values):
    return struct.pack("<%di" % len(values), *values)


def floats(*values):
    return struct.pack("<%df" % len(values), *values)


def write_blocks(path, *blocks):
    with open(path, "wb") as file:
        file.write(exchange_file(*blocks))


def test_lists_are_numpy_arrays_where_numpy_is_there(path):
    write_mesh(path, Mesh(SQUARE, [0, 1, 2, 3], uvs=[0, 1]))
    mesh = read_mesh(path)
    kind = array if numpy is None else numpy.ndarray
    assert all(type(x) is kind for x in (mesh.vertices, mesh.faces, mesh.uvs, *mesh.loops()))


def test_the_numpy_tests_have_numpy():
    assert (numpy is None) == bool(os.environ.get("VEK_TEST_WITHOUT_NUMPY"))


def test_a_mesh_is_written_block_by_block(path):
    write_mesh(path, Mesh([1, 2, 3], [0, 0, 0, -1], corners=[Corners([4, 5, 6, 7], 25002)],
                          uvs=[0.5, 1], maps=[MapName(50001, "a")], other_blocks=[Block(9, b"xyz", 2)]))
    with open(path, "rb") as file:
        assert file.read() == exchange_file(
            block(10001, floats(1, 2, 3), 1), block(20001, ints(0, 0, 0, -1), 1),
            block(25002, ints(4, 5, 6, 7), 1), block(90001, floats(0.5, 1), 1),
            block(50001, b"a\0"), block(9, b"xyz", 2))


@pytest.mark.parametrize("kind, four, corners", [
    (20001, ints(0, 1, 2, -5), ints(1, 2, 3, 9)),
    (20002, ints(0, 1, 2, 2), ints(1, 2, 3, 9)),
    (20003, ints(0, 1, 2), ints(1, 2, 3))])
def test_a_triangle_reads_the_same_from_every_kind_of_faces(path, kind, four, corners):
    write_blocks(path, block(10001, floats(*SQUARE), 4), block(kind, four, 1),
                 block(25001, corners, 1))
    mesh = read_mesh(path)
    assert mesh.face_kind == kind and mesh.triangle_count == mesh.face_count == 1
    assert list(mesh.faces) == [0, 1, 2, -1]
    assert list(mesh.loop_values(mesh.corners[0])) == [1, 2, 3]


@pytest.mark.parametrize("kind, written", [(20001, ints(0, 1, 2, -1)), (20002, ints(0, 1, 2, 2)),
                                           (20003, ints(0, 1, 2))])
def test_a_triangle_is_written_in_every_kind_of_faces(path, kind, written):
    write_mesh(path, Mesh(SQUARE, [0, 1, 2, -1], face_kind=kind, corners=[Corners([1, 2, 3, 4])]))
    file = read_file(path)
    assert file.last(kind).payload == written
    assert len(file.last(25001).payload) == len(written)


def test_quads_are_not_written_as_triangles(path):
    with pytest.raises(VekError, match="The mesh has quads and is to be written as triangles."):
        write_mesh(path, Mesh(SQUARE, [0, 1, 2, 3], face_kind=20003))
    assert not os.path.exists(path)


def test_faces_become_loops_and_loops_become_faces():
    faces = [0, 1, 2, 3, 0, 1, 2, -1, 3, 2, 1, 0]
    mesh = Mesh(SQUARE, faces, corners=[Corners(range(12))])
    vertices, starts, totals = mesh.loops()
    assert list(vertices) == [0, 1, 2, 3, 0, 1, 2, 3, 2, 1, 0]
    assert list(starts) == [0, 4, 7]
    assert list(totals) == [4, 3, 4]
    assert list(mesh.loop_values(mesh.corners[0])) == [0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11]
    assert list(Mesh.faces_from_loops(vertices, totals)) == faces
    assert list(Mesh.values_from_loops(mesh.loop_values(mesh.corners[0]), totals)) == [
        0, 1, 2, 3, 4, 5, 6, -1, 8, 9, 10, 11]


def test_a_mesh_of_no_faces_has_no_loops(path):
    write_mesh(path, Mesh(SQUARE))
    mesh = read_mesh(path)
    assert [list(x) for x in mesh.loops()] == [[], [], []]
    assert mesh.vertex_count == 4 and mesh.face_count == mesh.triangle_count == 0
    assert list(Mesh.faces_from_loops([], [])) == []
    write_mesh(path, Mesh())
    assert read_mesh(path).vertex_count == 0


@pytest.mark.parametrize("totals", [[5], [2], [3, 1], [0], [-3]])
def test_other_faces_than_triangles_and_quads_are_refused(totals):
    with pytest.raises(VekError, match="corners: split it into triangles and quads first."):
        Mesh.faces_from_loops(list(range(sum(totals))), totals)


def test_loops_that_do_not_add_up_are_refused():
    with pytest.raises(VekError, match="The faces have 7 corners together, and 6 are given."):
        Mesh.faces_from_loops([0] * 6, [3, 4])


@pytest.mark.parametrize("change", [
    dict(vertices=[0, 0]), dict(faces=[0, 1, 2]), dict(uvs=[0]), dict(faces=[0, 1, 2, 4]),
    dict(faces=[0, -1, 2, 3]), dict(faces=[-1, 0, 2, 3]), dict(faces=[0, 1, -1, -1]),
    dict(faces=[0, 1, 4, -1]), dict(face_kind=20004), dict(corners=[Corners([1, 2, 3])]),
    dict(corners=[Corners([1, 2, 3, 4], kind=25003)])])
def test_a_wrong_mesh_is_refused_and_the_file_stays(path, change):
    write_mesh(path, Mesh(SQUARE, [0, 1, 2, 3]))
    with open(path, "rb") as file:
        before = file.read()
    mesh = Mesh(**dict(dict(vertices=SQUARE, faces=[0, 1, 2, 3]), **change))
    for use in (mesh.check, lambda: file_of(mesh), lambda: write_mesh(path, mesh)):
        with pytest.raises(VekError, match="^The mesh"):
            use()
    with open(path, "rb") as file:
        assert file.read() == before
    assert os.listdir(os.path.dirname(path)) == ["mesh.vek"]


@pytest.mark.parametrize("faces", [[0, 1, 2, 2 ** 31], [0, 1, 2, 1.5], [0, 1, 2, "3"], "0123", 7,
                                   None, [0, 1, 2, 2 ** 70]])
def test_faces_that_are_no_whole_numbers_are_refused(faces):
    with pytest.raises(VekError, match="The mesh's faces are not a .*list of whole numbers"):
        Mesh(SQUARE, faces)


@pytest.mark.parametrize("vertices", [["a"], ["1"], [7j], 7, object(), "1", [[0], [1, 2]]])
def test_vertices_that_are_no_numbers_are_refused(vertices):
    with pytest.raises(VekError, match="The mesh's vertices are not a .*list of numbers"):
        Mesh(vertices)


@pytest.mark.parametrize("kind, name", [(45002, "a"), (45001, "a\0b"), (45001, "\ud800")])
def test_a_wrong_map_is_refused(path, kind, name):
    with pytest.raises(VekError):
        write_mesh(path, Mesh(SQUARE, maps=[MapName(kind, name)]))


def test_lists_can_be_replaced_by_lists_of_any_kind(path):
    mesh = Mesh()
    mesh.vertices = array("d", SQUARE)
    mesh.faces = (0, 1, 2, 3)
    mesh.corners = [Corners(range(4))]
    write_mesh(path, mesh)
    assert list(read_mesh(path).vertices) == SQUARE
    assert list(read_mesh(path).corners[0].values) == [0, 1, 2, 3]


@needs_numpy
def test_tables_and_foreign_arrays_are_taken(path):
    vertices = numpy.array(SQUARE, ">f8").reshape(-1, 3)
    faces = numpy.array([[0, 1, 2, 3], [0, 1, 2, -1]], numpy.int64)[::-1]
    write_mesh(path, Mesh(vertices, faces))
    assert list(read_mesh(path).vertices) == SQUARE
    assert list(read_mesh(path).faces) == [0, 1, 2, -1, 0, 1, 2, 3]
    with pytest.raises(VekError):
        Mesh(vertices, numpy.array([2 ** 32], numpy.uint64))


def test_positions_beyond_float32_and_no_numbers_are_kept(path):
    values = [math.inf, -math.inf, 1e-45, 3.4028234e38, -0.0, 1.0000001]
    write_mesh(path, Mesh(values))
    assert floats(*read_mesh(path).vertices) == floats(*values)
    bits = ints(0x7F800001, 0x7FC12345, -1)  # not-a-numbers
    write_blocks(path, block(10001, bits, 1), block(20001, b"", 0))
    assert file_of(read_mesh(path)).last(10001).payload == bits


def test_of_blocks_of_one_kind_the_last_counts(path):
    write_blocks(path, block(10001, floats(*SQUARE), 4), block(20003, ints(0, 1, 2), 1),
                 block(10001, floats(9, 9, 9) + floats(*SQUARE), 5), block(20001, ints(4, 3, 2, 1), 1))
    mesh = read_mesh(path)
    assert mesh.vertex_count == 5 and list(mesh.faces) == [4, 3, 2, 1]
    assert mesh.other_blocks == []


def test_both_kinds_of_corner_values_are_kept_in_their_order(path):
    write_blocks(path, block(10001, floats(*SQUARE), 4), block(20001, ints(0, 1, 2, 3), 1),
                 block(25002, ints(1, 2, 3, 4), 7, 0x3F800000), block(25001, ints(5, 6, 7, 8), 1))
    corners = read_mesh(path).corners
    assert [(c.kind, list(c.values), c.count, c.param) for c in corners] == [
        (25002, [1, 2, 3, 4], 7, 1.0), (25001, [5, 6, 7, 8], 1, 0.0)]


VERTICES = block(10001, floats(*SQUARE), 4)
FACES = block(20001, ints(0, 1, 2, 3), 1)


@pytest.mark.parametrize("blocks, sentence", [
    ([FACES], "The exchange file holds no vertices"),
    ([VERTICES], "The exchange file holds no faces"),
    ([block(10001, floats(*SQUARE), 5), FACES], "The exchange file claims more vertices than it holds"),
    ([VERTICES, block(20001, ints(0, 1, 2, 3), 2)], "The exchange file claims more faces than it holds"),
    ([VERTICES, block(20002, ints(0, 1, 2, -1), 1)],
     "The exchange file has a face with a vertex that is not there"),
    ([VERTICES, block(20003, ints(0, 1, 2, 0, 4, 0), 2)],
     "The exchange file has a vertex that is not there in face 1"),
    ([VERTICES, FACES, block(25001, ints(1, 2, 3), 1)],
     "The exchange file holds fewer corner values than faces need"),
    ([VERTICES, FACES, block(90001, floats(1), 1)], "The exchange file claims more UVs than it holds")])
def test_a_damaged_mesh_is_refused_with_a_sentence(path, blocks, sentence):
    write_blocks(path, *blocks)
    with pytest.raises(VekError) as error:
        read_mesh(path)
    assert str(error.value) == "{}: {}".format(sentence, path)
    with pytest.raises(VekError) as error:
        mesh_of(read_file(path))
    assert str(error.value) == sentence + "."


@needs_numpy
def test_numpy_and_the_standard_library_do_the_same():
    from vek_exchange import _numbers_numpy as fast, _numbers_plain as plain
    generator = random.Random(1)
    for count in [0, 1, 2, 3] + [generator.randrange(200) for _ in range(60)]:
        faces = [generator.randrange(-3, 30) for _ in range(4 * count)]
        values = [generator.randrange(-2 ** 31, 2 ** 31) for _ in range(4 * count)]
        threes = values[:3 * count]
        a, b = fast.ints(faces, ""), plain.ints(faces, "")
        x, y = fast.ints(values, ""), plain.ints(values, "")
        for name in ("negative_to_minus_one", "repeated_to_minus_one", "minus_one_to_repeated",
                     "without_fourth"):
            assert list(getattr(fast, name)(a)) == list(getattr(plain, name)(b)), name
        assert list(a) == list(b) == faces  # as they were
        assert list(fast.with_fourth(fast.ints(threes, ""))) == list(
            plain.with_fourth(plain.ints(threes, "")))
        assert fast.triangle_count(a) == plain.triangle_count(b)
        assert [list(l) for l in fast.loops(a)] == [list(l) for l in plain.loops(b)]
        assert list(fast.loop_values(a, x)) == list(plain.loop_values(b, y))
        totals = fast.loops(a)[2]
        assert list(fast.from_loops(fast.loop_values(a, x), totals)) == list(
            plain.from_loops(plain.loop_values(b, y), plain.ints(list(totals), "")))
        for vertex_count in (0, 10, 29, 30):
            assert fast.first_face_beyond(a, vertex_count) == plain.first_face_beyond(b, vertex_count)
        assert bytes(fast.payload_of(x)) == bytes(plain.payload_of(y)) == ints(*values)
