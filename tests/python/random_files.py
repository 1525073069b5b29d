"""Exchange files at random, sound and damaged."""

import struct

FACE_KINDS = (20001, 20002, 20003)


def block(id, payload, count=0, param=0):
    """A block as it lies in a file; `param` is the float's bits."""
    size = len(payload) + 19 & ~3
    return struct.pack("<4I", id, size, count, param) + payload + bytes(size - 16 - len(payload))


def exchange_file(*blocks):
    return b"Vekb" + bytes(28) + b"".join(blocks) + bytes(16)


def random_blocks(random):
    """The blocks of a sound mesh of any kind, with others among them."""
    kind = random.choice(FACE_KINDS)
    vertex_count = random.randint(4, 30)
    face_count = random.randint(0, 40)
    stride = 3 if kind == 20003 else 4
    positions = [random.uniform(-100, 100) for _ in range(3 * vertex_count)]
    faces, corners = [], []
    for _ in range(face_count):
        face = [random.randrange(vertex_count) for _ in range(stride)]
        if kind == 20001 and random.random() < 0.4:
            face[3] = random.choice((-1, -1, -7, -2 ** 31))
        if kind == 20002 and random.random() < 0.4:
            face[3] = face[2]
        faces += face
        corners += [random.randrange(-2 ** 31, 2 ** 31) for _ in range(stride)]
    blocks = [
        block(10001, struct.pack("<%df" % len(positions), *positions), vertex_count),
        block(kind, struct.pack("<%di" % len(faces), *faces), face_count),
    ]
    for id in random.sample((25001, 25002), random.choice((0, 1, 1, 2))):
        blocks.append(block(id, struct.pack("<%di" % len(corners), *corners), face_count,
                            random.getrandbits(32)))
    if random.random() < 0.5:
        uvs = [random.random() for _ in range(2 * random.randint(0, 20))]
        blocks.append(block(90001, struct.pack("<%df" % len(uvs), *uvs), len(uvs) // 2))
    for _ in range(random.choice((0, 0, 1, 3))):
        name = bytes(random.choice(b"abc/\\ \xc3\xa4\xff.") for _ in range(random.randint(0, 20)))
        blocks.append(block(random.choice((45001, 50001, 55001)), name + b"\0", 0,
                            random.getrandbits(32)))
    for _ in range(random.choice((0, 0, 1, 3))):
        blocks.append(block(random.choice((1, 77, 10002, 2 ** 32 - 1)),
                            random.randbytes(random.randint(0, 50)), random.getrandbits(32),
                            random.getrandbits(32)))
    return blocks


def damaged(random, blocks):
    """The bytes of a file with a fault, or two; a few of them still do no harm."""
    blocks = list(blocks)
    for _ in range(random.choice((1, 1, 2))):
        random.choice(_DAMAGES)(random, blocks)
    data = exchange_file(*blocks)
    if random.random() < 0.3:
        data = data[:random.randrange(len(data))]
    return data


def _drop(random, blocks):
    if blocks:
        del blocks[random.randrange(len(blocks))]


def _repeat(random, blocks):
    if blocks:
        blocks.insert(random.randrange(len(blocks) + 1), random.choice(blocks))


def _shuffle(random, blocks):
    random.shuffle(blocks)


def _header_field(random, blocks):
    if not blocks:
        return
    at = random.randrange(len(blocks))
    field = random.choice((0, 4, 4, 8, 8))
    old = struct.unpack_from("<I", blocks[at], field)[0]
    new = random.choice((0, 1, 15, 16, 17, 2 ** 31, 2 ** 32 - 1, 20001, 20002, 20003, 25001, 90001,
                         max(old - 1, 0), min(old + 1, 2 ** 32 - 1), random.getrandbits(32)))
    blocks[at] = blocks[at][:field] + struct.pack("<I", new) + blocks[at][field + 4:]


def _payload_number(random, blocks):
    if not blocks:
        return
    at = random.randrange(len(blocks))
    if len(blocks[at]) < 20:
        return
    place = 16 + 4 * random.randrange((len(blocks[at]) - 16) // 4)
    new = random.choice((-1, -2, 0, 3, 30, 1000, 2 ** 31 - 1, -2 ** 31))
    blocks[at] = blocks[at][:place] + struct.pack("<i", new) + blocks[at][place + 4:]


_DAMAGES = (_drop, _repeat, _shuffle, _header_field, _header_field, _payload_number,
            _payload_number)
