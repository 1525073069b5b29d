"""Where meshes are: files hold positions in the world, an object holds its own and a matrix."""

import numpy as np

from .vek_exchange import VekError


def to_world(vertices, matrix):
    return _moved(vertices, matrix)


def to_local(vertices, matrix, name):
    """VekError where the object, whose name is for the sentence, has no room for them."""
    try:
        inverse = np.linalg.inv(matrix)
        moved = _moved(vertices, inverse)
    except np.linalg.LinAlgError:
        moved = None
    if moved is None or not np.isfinite(moved).all():
        raise VekError(f"No mesh can be put into an object that is scaled to nothing, so give it "
                       f"a size: {name}")
    return moved


def _moved(vertices, matrix):
    if np.array_equal(matrix, np.identity(4)):
        return vertices
    with np.errstate(over="ignore", invalid="ignore"):  # whoever asks looks at what comes out
        return (vertices @ matrix[:3, :3].T + matrix[:3, 3]).astype(np.float32)


def mirrors(matrix):
    """Whether it turns faces inside out."""
    return np.linalg.det(matrix[:3, :3]) < 0


def rewound(faces, uvs):
    """Faces and UVs with the other side of each face outside. Twice gives what was there."""
    order = np.where(faces[:, 3:] >= 0, [0, 3, 2, 1], [0, 2, 1, 3])
    turned = np.take_along_axis(faces, order, 1)
    if uvs is not None:
        rows = np.zeros(faces.shape + (2,), np.float32)
        rows[faces >= 0] = uvs
        rows = np.take_along_axis(rows, order[:, :, None], 1)
        uvs = rows[turned >= 0]
    return turned, uvs
