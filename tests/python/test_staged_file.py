"""Files that are written beside the ones that are there, and take their places together."""

import os
import stat

import pytest

from vek_exchange import Block, ExchangeFile, VekError, read_file, stage_file

FILE = ExchangeFile([Block(7, b"four")])


def put(path):
    with open(path, "wb") as file:
        file.write(b"before")


def contents(path):
    with open(path, "rb") as file:
        return file.read()


def test_a_staged_file_leaves_the_old_one_until_it_takes_its_place(tmp_path):
    path = str(tmp_path / ("m" * 251 + ".vek"))
    put(path)
    staged = stage_file(path, FILE)
    assert contents(path) == b"before"
    staged.take_place()
    assert read_file(path).blocks[0].payload == b"four"
    staged.drop()
    assert os.listdir(str(tmp_path)) == [os.path.basename(path)]


def test_a_dropped_one_leaves_nothing(tmp_path):
    path = str(tmp_path / "m.vek")
    stage_file(path, FILE).drop()
    assert os.listdir(str(tmp_path)) == []


def test_links_are_followed_and_permissions_stay(tmp_path):
    real, link = str(tmp_path / "real"), str(tmp_path / "link.vek")
    put(real)
    os.chmod(real, 0o640)
    os.symlink("real", link)
    stage_file(link, FILE).take_place()
    assert os.readlink(link) == "real"
    assert read_file(real).blocks[0].payload == b"four"
    assert stat.S_IMODE(os.stat(real).st_mode) == 0o640


def test_what_is_in_the_way_is_named(tmp_path):
    path = str(tmp_path / "m.vek")
    staged = stage_file(path, FILE)
    os.mkdir(path)
    with pytest.raises(VekError, match="^The file cannot be replaced, is a directory: .*/m.vek$"):
        staged.take_place()
    staged.drop()
    assert os.listdir(str(tmp_path)) == ["m.vek"]
    with pytest.raises(VekError, match="^The file cannot be written, it is not a regular file: "):
        stage_file(path, FILE)


def test_a_read_only_file_is_not_replaced(tmp_path, unprivileged):
    path = str(tmp_path / "m.vek")
    put(path)
    os.chmod(path, 0o444)

    def check():
        with pytest.raises(VekError, match="permission denied"):
            stage_file(path, FILE)

    unprivileged(check)
    assert contents(path) == b"before"
    assert os.listdir(str(tmp_path)) == ["m.vek"]
