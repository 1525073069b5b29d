"""Meshes as the host has them, right-handed with y up, and their exchange files."""

import struct

import numpy as np

VERTICES, NEGATIVE, REPEATED, TRIANGLES = 10001, 20001, 20002, 20003
CORNERS, UV_LIST, UNKNOWN = 25001, 90001, 77


def block(number, payload, count=0, param=0.0):
    payload = bytes(payload)
    size = len(payload) + 19 & ~3
    padding = bytes(size - 16 - len(payload))
    return struct.pack("<IIIf", number, size, count, param) + payload + padding


def file_bytes(vertices, faces, kind=NEGATIVE, more=()):
    """`faces` has rows of four, -1 the fourth of a triangle; None: the file has no faces."""
    blocks = [block(VERTICES, np.asarray(vertices, "<f4").tobytes(), len(vertices))]
    if faces is not None:
        blocks.append(block(kind, records(faces, kind).tobytes(), len(faces)))
    return b"Vekb" + bytes(28) + b"".join([*blocks, *more]) + bytes(16)


def records(faces, kind):
    rows = np.asarray(faces, "<i4").reshape(-1, 4).copy()
    if kind == REPEATED:
        is_triangle = rows[:, 3] < 0
        rows[is_triangle, 3] = rows[is_triangle, 2]
    return rows[:, :3].copy() if kind == TRIANGLES else rows


class Back:
    """What a file holds."""

    def __init__(self, data):
        self.blocks, at = [], 32
        while True:
            number, size, count, param = struct.unpack_from("<IIIf", data, at)
            if number == 0:
                break
            self.blocks.append((number, count, param, data[at + 16:at + size]))
            at += size
        self.vertices = np.frombuffer(self.payload(VERTICES), "<f4").reshape(-1, 3)
        self.faces = np.frombuffer(self.payload(NEGATIVE), "<i4").reshape(-1, 4)

    def payload(self, number):
        return b"".join(block[3] for block in self.blocks if block[0] == number)

    def count(self, number):
        return sum(block[1] for block in self.blocks if block[0] == number)

    def has(self, number):
        return any(block[0] == number for block in self.blocks)


def triangles(faces):
    faces = np.asarray(faces)
    quads = faces[faces[:, 3] >= 0]
    return np.concatenate([faces[:, :3], quads[:, [0, 2, 3]]])


def volume(vertices, faces):
    a, b, c = (np.asarray(vertices, "f8")[triangles(faces)[:, i]] for i in range(3))
    return float(np.einsum("ij,ij->", a, np.cross(b, c)) / 6)


def inward_faces(vertices, faces):
    """How many faces of a convex mesh do not point away from its middle."""
    points = np.asarray(vertices, "f8")
    a, b, c = (points[np.asarray(faces)[:, i]] for i in range(3))
    middles = (a + b + c) / 3 - points.mean(axis=0)
    return int(np.count_nonzero(np.einsum("ij,ij->i", np.cross(b - a, c - a), middles) <= 0))


def open_edges(faces):
    """How many edges have no partner that runs the other way."""
    edges = {}
    for face in np.asarray(faces):
        corners = [int(vertex) for vertex in face if vertex >= 0]
        for edge in zip(corners, corners[1:] + corners[:1]):
            edges[edge] = edges.get(edge, 0) + 1
    return sum(count != edges.get(edge[::-1], 0) for edge, count in edges.items())


def egg(around=8, rings=4):
    """Closed and convex, of quads with triangles at the top and the bottom; as wide, high and deep
    as nothing else, beside the origin."""
    vertices = [(0, -1, 0), (0, 1, 0)]
    for ring in range(1, rings):
        height = -np.cos(np.pi * ring / rings)
        for step in range(around):
            angle = 2 * np.pi * step / around
            radius = np.sqrt(1 - height * height)
            vertices.append((radius * np.sin(angle), height, radius * np.cos(angle)))
    at = lambda ring, step: 2 + (ring - 1) * around + step % around  # noqa: E731
    faces = []
    for step in range(around):
        faces.append((0, at(1, step + 1), at(1, step), -1))
        for ring in range(1, rings - 1):
            faces.append((at(ring, step), at(ring, step + 1), at(ring + 1, step + 1),
                          at(ring + 1, step)))
        faces.append((1, at(rings - 1, step), at(rings - 1, step + 1), -1))
    places = np.array(vertices) * (1, 3, 2) + (0.5, 4, -0.25)
    return places.astype("f4"), np.array(faces)


def box():
    """Of quads alone."""
    vertices = [(x, y, z) for x in (0, 1) for y in (0, 3) for z in (0, 2)]
    faces = [(0, 1, 3, 2), (4, 6, 7, 5), (0, 4, 5, 1), (2, 3, 7, 6), (0, 2, 6, 4), (1, 5, 7, 3)]
    return np.array(vertices, "f4"), np.array(faces)


def only_triangles(faces):
    parts = triangles(faces)
    return np.column_stack([parts, np.full(len(parts), -1)])
