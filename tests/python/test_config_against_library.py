"""The package and the library read and write the same key/value files."""

import os
import random
import struct

import pytest

from vek_exchange import ConfigFile, IOPref, VekError
from vek_exchange.config import param_to_bool, param_to_float, param_to_int

PIECES = [b"KEY", b"key", b"Key two", b"=", b"=", b" ", b"\t", b"\n", b"\r", b"\n", b'"', b"/x y",
          b"\0", b"\xff", b":", b"KE"]


LINES = [b'KEY="\n', b'KEY=""\n', b'key = "/x"\r\n', b"Key two=a=b\n", b" KEY \n", b"=x\n",
         b'KEY = ""/y""\n']


def random_lines(generator):
    pieces = generator.choice((PIECES, LINES, PIECES + LINES))
    return b"".join(generator.choice(pieces) for _ in range(generator.randint(0, 16)))


@pytest.mark.parametrize("seed", range(500))
def test_keys_are_found_and_replaced_alike(bridge, tmp_path, seed):
    generator = random.Random(seed)
    data = random_lines(generator)
    ours, theirs = tmp_path / "ours.txt", tmp_path / "theirs.txt"
    ours.write_bytes(data)
    theirs.write_bytes(data)
    for key in ("key", "KEY TWO", "ke", "x"):
        found, value, _ = bridge.preference("ReadConfigPrefAsString", str(theirs), key)
        assert ConfigFile(str(ours)).find(key) == (value or "" if found else None), key
    key = generator.choice(["key", "Key Two", "new"])
    replaced = bridge.call("WriteConfigPrefAsString", str(theirs), 0.0, key, 'a "b"')
    assert ConfigFile(str(ours)).replace(key, 'a "b"') == (replaced == 1.0)
    assert ours.read_bytes() == theirs.read_bytes()


def test_a_missing_file_is_begun_alike(bridge, tmp_path):
    assert ConfigFile(str(tmp_path / "ours")).find("key") is None
    assert ConfigFile(str(tmp_path / "ours")).replace_quoted("key", "/a") is False
    bridge.call("WriteConfigPrefAsString", str(tmp_path / "theirs"), 0.0, "key", '"/a"')
    assert (tmp_path / "ours").read_bytes() == (tmp_path / "theirs").read_bytes() == \
        b'KEY = "/a"\n'


NUMBERS = ["0", "3.9", "-3.9", "+7", " 12", "1e3", "1e", "1e+", "1E-2x", "0x10", "0x1.8p1", "0x", "0xg",
           "0x.p1", "-0x2", ".5", "5.", ".", "-", "+", "e5", "inf", "-INF", "infinity", "infinit", "infx",
           "nan", "nanx", "in", "1,5", "1.5.5", "99999999999", "-99999999999", "16777217", "1e39",
           "-1e39", "1e-50", "12abc", "TRUE", "#f", "No", "yes", "0.1", "3 4", "2147483647", "- 1", "1 e5"]


@pytest.mark.parametrize("text", NUMBERS)
def test_numbers_are_read_alike(bridge, tmp_path, text):
    path = str(tmp_path / "config")
    ConfigFile(path).replace("k", text)
    config = ConfigFile(path)
    _, _, number = bridge.preference("ReadConfigPrefAsFloat", path, "k")
    expected = struct.unpack("<f", number)[0]
    found = config.find_float("k")
    assert found == expected or (found != found and expected != expected)
    _, _, number = bridge.preference("ReadConfigPrefAsInt", path, "k")
    assert config.find_int("k") == struct.unpack("<i", number)[0]
    _, _, number = bridge.preference("ReadConfigPrefAsBool", path, "k")
    assert config.find_bool("k") == (struct.unpack("<i", number)[0] != 0)


@pytest.mark.parametrize("seed", range(200))
def test_random_numbers_are_read_alike(bridge, tmp_path, seed):
    generator = random.Random(seed)
    text = "".join(generator.choice("0123456789+-.eExXpPinfaN ") for _ in range(
        generator.randint(1, 8))).strip() or "0"
    test_numbers_are_read_alike(bridge, tmp_path, text)


def test_numbers_are_written_alike(bridge, tmp_path):
    ours, theirs = str(tmp_path / "ours"), str(tmp_path / "theirs")
    for number in (0.0, 1.5, -2.25, 0.1, 1e10, 3.4e38, -1e-9):
        ConfigFile(ours).replace_float("k", number)
        bridge.call("WriteConfigPrefAsFloat", theirs, 0.0, "k", struct.pack("<f", number))
        assert ConfigFile(ours).find("k") == ConfigFile(theirs).find("k")
    for whole in (0, -1, 2147483647, -2147483648):
        ConfigFile(ours).replace_int("k", whole)
        bridge.call("WriteConfigPrefAsInt", theirs, 0.0, "k", struct.pack("<i", whole))
        assert ConfigFile(ours).find("k") == ConfigFile(theirs).find("k") == str(whole)
    for truth in (True, False):
        ConfigFile(ours).replace_bool("k", truth)
        bridge.call("WriteConfigPrefAsBool", theirs, 0.0, "k", struct.pack("<i", truth))
        assert ConfigFile(ours).find("k") == ConfigFile(theirs).find("k")


KEYS = [b"NAME", b"name", b"NORMAL_MAP_FLIP_X", b"NORMAL_MAP_FLIP_XY", b"export_flip_x",
        b"EXTENSION", b"VEK_VERSION", b"TAMPLATE", b"EDIT_COMMAND", b"INIT_COMMAND",
        b"IMPORT_SWITCH_YZ", b"EXPORT_MSWITCH_YZ", b"// note", b"", b" NAME"]
SEPARATORS = [b" ", b"\t", b"=", b" = ", b":", b"", b" =\t:"]
VALUES = [b"", b"No", b"false", b"0", b"#F", b"TRUE", b"3.9", b'".vek"', b"x y", b'"', b'"a', b'a"',
          b"\xff", b'"No"']
ENDS = [b"\n", b"\n", b"\r\n", b"\r", b" \n\n", b"\n", b"", b"\0"]


@pytest.mark.parametrize("seed", range(400))
def test_descriptors_read_alike(tree, bridge, seed):
    generator = random.Random(seed)
    weights = [8] * (len(ENDS) - 2) + [1, 1]
    data = b"".join(generator.choice(KEYS) + generator.choice(SEPARATORS) + generator.choice(VALUES)
                    + generator.choices(ENDS, weights)[0] for _ in range(generator.randint(0, 12)))
    os.mkdir(tree.app_folder("App"))
    with open(tree.app_file("App", "Vek_Info.txt"), "wb") as file:
        file.write(data)
    assert bridge.call("InitializeVek", "/Applications") == 1.0
    app, = tree.applications()
    assert app.id == bridge.text("GetVekAppId", value=0)[1] == "App"
    assert app.name == bridge.text("GetVekAppName", value=0)[1]
    assert app.ext == bridge.text("GetVekAppExt", value=0)[1]
    assert app.tamplate == bridge.text("GetVekAppTamplate", value=0)[1]
    expected = bridge.switches(0)
    if app.ext.lower() == ".vek":
        expected |= int(app.io_prefs) & 0xFF  # the library keeps these to itself
    assert int(app.io_prefs) == expected


def test_every_switch_of_a_descriptor_has_its_bit(tree, bridge):
    os.mkdir(tree.app_folder("App"))
    assert len(IOPref) == 26
    for switch in IOPref:
        with open(tree.app_file("App", "Vek_Info.txt"), "w") as file:
            file.write("{} yes\n".format(switch.name))
        bridge.call("InitializeVek", "/Applications")
        assert tree.descriptor("App").io_prefs == switch == bridge.switches(0)


@pytest.mark.parametrize("key, value", [("", "x"), ("a=b", "x"), (" a", "x"), ("a\n", "x"),
                                        ("a", "x\ny"), ("a", "x\0"), ("a", "\r")])
def test_a_key_or_value_that_a_file_cannot_hold_is_refused(tmp_path, key, value):
    (tmp_path / "config").write_bytes(b"A = 1\n")
    with pytest.raises(VekError):
        ConfigFile(str(tmp_path / "config")).replace(key, value)
    assert (tmp_path / "config").read_bytes() == b"A = 1\n"


def test_parameters_of_no_number_are_zero():
    assert param_to_float("x") == 0.0 and param_to_int("nan") == 0
    assert param_to_int("1e30") == 2147483647 and param_to_int("-1e30") == -2147483648
    assert param_to_bool("") is True
