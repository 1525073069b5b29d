"""The target application's side of Vek: exchange files, the shared tree, descriptors.

    from vek_exchange import Tree, VekError, read_mesh, write_mesh

    tree = Tree()
    for line in tree.object_list():
        path = tree.exchange_file(line)
        mesh = read_mesh(path)
        ...
        write_mesh(path, mesh)

Every failure is a VekError, whose text can be shown to the user. Nothing but the standard library
is needed; numpy is used where it is there.
"""

from ._files import StagedFile, write_whole
from .config import ConfigFile, Dispatcher
from .descriptor import Descriptor, IOPref, read_descriptor
from .errors import VekError
from .exchange_file import Block, ExchangeFile, read_file, stage_file, write_file
from .mesh import Corners, MapName, Mesh, file_of, mesh_of, read_mesh, write_mesh
from .tree import DEFAULT_ROOT, Tree, valid_file_path

__all__ = [
    "Block", "ConfigFile", "Corners", "DEFAULT_ROOT", "Descriptor", "Dispatcher", "ExchangeFile",
    "IOPref", "MapName", "Mesh", "StagedFile", "Tree", "VekError", "file_of", "mesh_of",
    "read_descriptor", "read_file", "read_mesh", "stage_file", "valid_file_path", "write_file",
    "write_mesh", "write_whole",
]
