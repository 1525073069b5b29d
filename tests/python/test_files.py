"""How files are written: whole, and with what they had."""

import itertools
import os
import stat
import subprocess
import sys
import threading
import time

import pytest

from vek_exchange import Block, ConfigFile, ExchangeFile, Mesh, Tree, VekError, read_file, read_mesh
from vek_exchange import write_file, write_mesh

SQUARE = [0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0]


def put(path, data=b"before"):
    with open(path, "wb") as file:
        file.write(data)


def contents(path):
    with open(path, "rb") as file:
        return file.read()


def test_a_reader_sees_the_old_file_or_the_new_one(tmp_path):
    path = str(tmp_path / "mesh.vek")
    meshes = [Mesh(SQUARE * n, [0, 1, 2, 3] * n) for n in (1000, 2000)]
    write_mesh(path, meshes[0])
    stop = threading.Event()
    seen = set()

    def read():
        while not stop.is_set():
            try:
                seen.add(read_mesh(path).face_count)
            except VekError as error:
                seen.add(str(error))

    reader = threading.Thread(target=read)
    reader.start()
    try:
        deadline = time.monotonic() + 60
        for turn in itertools.count():
            write_mesh(path, meshes[turn % 2])
            if turn > 200 and len(seen) > 1 or time.monotonic() > deadline:
                break
    finally:
        stop.set()
        reader.join()
    assert seen == {1000, 2000}
    assert os.listdir(str(tmp_path)) == ["mesh.vek"]


def test_permissions_and_links_stay(tmp_path):
    real, link = str(tmp_path / "real"), str(tmp_path / "link")
    put(real)
    os.chmod(real, 0o664)
    os.symlink("real", link)
    write_file(link, ExchangeFile())
    assert os.path.islink(link) and stat.S_IMODE(os.stat(real).st_mode) == 0o664
    assert contents(real) == b"Vekb" + bytes(44)


def test_a_new_file_has_the_permissions_that_the_mask_leaves(tmp_path):
    path = str(tmp_path / "file")
    old = os.umask(0o027)
    try:
        write_file(path, ExchangeFile())
    finally:
        os.umask(old)
    assert stat.S_IMODE(os.stat(path).st_mode) == 0o640


@pytest.mark.skipif(os.geteuid() != 0, reason="only root can give files away")
def test_the_owner_stays(tmp_path):
    path = str(tmp_path / "Vek_Config.txt")
    put(path, b"A = 1\n")
    os.chown(path, 12345, 23456)
    ConfigFile(path).replace("B", "2")
    assert (os.stat(path).st_uid, os.stat(path).st_gid) == (12345, 23456)


def test_a_read_only_file_stays_as_it_was(tmp_path, unprivileged):
    path = str(tmp_path / "mesh.vek")
    put(path)
    os.chmod(path, 0o444)

    def check():
        with pytest.raises(VekError) as error:
            write_mesh(path, Mesh(SQUARE))
        assert str(error.value) == "The file cannot be written, permission denied: " + path

    unprivileged(check)
    assert contents(path) == b"before" and os.listdir(str(tmp_path)) == ["mesh.vek"]


def test_a_file_in_a_read_only_folder_is_overwritten(tmp_path, unprivileged):
    paths = [str(tmp_path / "longer"), str(tmp_path / "shorter")]
    put(paths[0], b"x")
    put(paths[1], b"x" * 1000)
    os.chmod(str(tmp_path), 0o555)

    def check():
        for path in paths:
            write_file(path, ExchangeFile([Block(7, b"abcd")]))
            assert [b.payload for b in read_file(path).blocks] == [b"abcd"]
            assert os.path.getsize(path) == 68

    try:
        unprivileged(check)
    finally:
        os.chmod(str(tmp_path), 0o755)


def test_a_new_file_in_a_read_only_folder_is_refused(tmp_path, unprivileged):
    os.chmod(str(tmp_path), 0o555)
    path = str(tmp_path / "mesh.vek")

    def check():
        with pytest.raises(VekError) as error:
            write_mesh(path, Mesh(SQUARE))
        assert str(error.value) == "The file cannot be written, permission denied: " + path

    unprivileged(check)


def test_a_file_that_cannot_be_read_is_refused(tmp_path, unprivileged):
    tree = Tree(str(tmp_path))
    os.mkdir(tree.hub_folder)
    for path in (tree.object_list_file, tree.project_path_file, tree.hub_config_file):
        put(path)
        os.chmod(path, 0)

    def check():
        for use in (tree.object_list, tree.project_path, tree.host_path, tree.extract_object,
                    lambda: tree.hub_config().replace("a", "b")):
            with pytest.raises(VekError, match="The file cannot be read, permission denied: /"):
                use()

    unprivileged(check)


@pytest.mark.skipif(os.environ.get("VEK_VIEW") != "private", reason="there is no /full")
def test_a_full_disk_leaves_the_old_file(tmp_path):
    path = "/full/mesh.vek"
    write_mesh(path, Mesh(SQUARE))
    before = contents(path)
    with pytest.raises(VekError) as error:
        write_mesh(path, Mesh(SQUARE * 10000))
    assert str(error.value) == "The file cannot be written, no space left on device: " + path
    assert contents(path) == before and os.listdir("/full") == ["mesh.vek"]
    os.unlink(path)


def test_a_folder_and_a_pipe_are_no_files(tmp_path):
    """A pipe in particular is not waited for."""
    os.mkdir(str(tmp_path / "folder"))
    os.mkfifo(str(tmp_path / "pipe"))
    for name in ("folder", "pipe"):
        path = str(tmp_path / name)
        for use in (lambda: read_file(path), lambda: write_file(path, ExchangeFile()),
                    lambda: ConfigFile(path).find("a"), lambda: ConfigFile(path).replace("a", "b")):
            with pytest.raises(VekError) as error:
                use()
            assert str(error.value).endswith(": " + path)
    assert sorted(os.listdir(str(tmp_path))) == ["folder", "pipe"]


@pytest.mark.parametrize("name", ["a\0b", "\ud800", "x" * 300])
def test_a_name_that_no_file_has_is_refused(tmp_path, name):
    path = str(tmp_path) + "/" + name
    for use in (lambda: read_mesh(path), lambda: write_mesh(path, Mesh(SQUARE)),
                lambda: ConfigFile(path).find("a")):
        with pytest.raises(VekError) as error:
            use()
        str(error.value).encode("utf-8")  # can be shown


def test_names_of_any_bytes_are_reached(tmp_path):
    path = str(tmp_path) + "/\udcff \u00e4.vek"
    write_mesh(path, Mesh(SQUARE))
    assert os.listdir(os.fsencode(str(tmp_path))) == [b"\xff \xc3\xa4.vek"]
    assert read_mesh(path).vertex_count == 4


def test_a_path_object_is_a_path(tmp_path):
    write_mesh(tmp_path / "mesh.vek", Mesh(SQUARE))
    assert read_mesh(tmp_path / "mesh.vek").vertex_count == 4


def test_names_do_not_depend_on_the_locale(tmp_path):
    program = ("from vek_exchange import Mesh, write_mesh\n"
               "write_mesh({!a} + '/\\u00e4.vek', Mesh([0, 0, 0]))").format(str(tmp_path))
    environment = dict(os.environ, LC_ALL="C", PYTHONCOERCECLOCALE="0", PYTHONUTF8="0")
    subprocess.run([sys.executable, "-c", program], env=environment, check=True)
    assert os.listdir(os.fsencode(str(tmp_path))) == ["\u00e4.vek".encode()]


def test_the_install_log_is_readable_for_everybody(tmp_path):
    tree = Tree(str(tmp_path))
    os.makedirs(tree.app_folder("App"))
    old = os.umask(0o077)
    try:
        tree.write_install_log("App")
        assert contents(tree.app_file("App", "Vek_InstallLog.txt")) == b""
        tree.write_install_log("App", "Too old.")
    finally:
        os.umask(old)
    path = tree.app_file("App", "Vek_InstallLog.txt")
    assert contents(path) == b"Too old." and stat.S_IMODE(os.stat(path).st_mode) == 0o644
