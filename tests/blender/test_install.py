"""The descriptor's commands, as the host runs them. Where the real Blender does not matter, a
script that says it is one stands in for it."""

import os
import pathlib
import shutil
import subprocess
import tempfile

import pytest

SHIPPED = os.environ["VEK_APP"]


class App:
    """A folder of the application in a tree of its own."""

    def __init__(self, root):
        self.folder = root / "tree/VekApps/Blender"
        self.home = root / "home"
        self.home.mkdir()
        shutil.copytree(SHIPPED, self.folder)

    def run(self, command, path=os.environ["PATH"]):
        return subprocess.run(["sh", self.folder / command], capture_output=True, timeout=60,
                              env={"HOME": str(self.home), "PATH": path})

    def configure(self, text):
        (self.folder / "Vek_Config.txt").write_text(text)

    def config(self):
        return (self.folder / "Vek_Config.txt").read_text()

    def install_log(self):
        """The text, which a NUL ends for the host's buffer."""
        self.run("init.sh")
        text = (self.folder / "Vek_InstallLog.txt").read_text()
        assert text.count("\0") == 1 and text.endswith("\0")
        return text[:-1]

    def fake(self, place, version="3.4.1"):
        program = self.home / place
        program.parent.mkdir(parents=True, exist_ok=True)
        program.write_text(f"#!/bin/sh\necho 'Blender {version}'\n")
        program.chmod(0o755)
        return str(program)


@pytest.fixture
def app(tmp_path):
    return App(tmp_path)


def test_locate_finds_blender_and_keeps_what_else_is_noted(app):
    app.configure("OTHER = 1\nPATH = \"/gone\"\n")
    assert app.run("locate.sh").returncode == 0
    assert app.config() == (f'PATH = "{shutil.which("blender")}"\nUSER_HOME = "{app.home}"\n'
                            "OTHER = 1\n")


def test_locate_keeps_what_is_not_utf_8(app, monkeypatch):
    monkeypatch.setenv("LC_ALL", "C.UTF-8")
    others = b'COMMAND = "touch /Gr\xfcn"\nNUL = \0\nLAST = 1\n'
    chosen = app.fake("blender").encode()
    (app.folder / "Vek_Config.txt").write_bytes(b'PATH = "' + chosen + b'"\n' + others)
    subprocess.run(["sh", app.folder / "locate.sh"], check=True)
    written = (app.folder / "Vek_Config.txt").read_bytes()
    assert written.startswith(b'PATH = "' + chosen) and written.endswith(others)


def test_locate_keeps_the_blender_that_was_chosen(app):
    chosen = app.fake("my blender/blender")
    app.configure(f'path = "{chosen}"\n')
    app.run("locate.sh")
    assert app.config().startswith(f'PATH = "{chosen}"\n')


def test_locate_finds_a_bundle(app):
    app.fake("Applications/Blender 3.6.app/Contents/MacOS/Blender")
    if shutil.which("blender", path="/usr/bin:/usr/local/bin:/snap/bin"):
        bundle = app.home / "Applications/Blender 3.6.app"
        app.configure(f'PATH = "{bundle}"\n')
    app.run("locate.sh", "/bin:/usr/bin")
    assert app.config().startswith(f'PATH = "{app.home}/Applications/Blender 3.6.app"\n')


def test_init_wants_a_place(app):
    assert app.install_log() == "It is not known where Blender is. Locate it first."


def test_init_says_that_blender_is_gone(app):
    app.configure('PATH = "/gone/Blender.app"\n')
    assert app.install_log() == "Blender is no longer where it was located: /gone/Blender.app"


def test_init_rejects_an_old_blender(app):
    for version in ("2.79 (sub 0)", "3.1.2"):
        app.configure(f'PATH = "{app.fake("blender", version)}"\n')
        assert app.install_log() == (f"Blender {version.split()[0]} is too old; the bridge needs "
                                     "Blender 3.2 or later.")


def test_init_says_that_blender_does_not_start(app):
    program = app.fake("blender")
    with open(program, "w") as file:
        file.write("#!/bin/sh\nexit 1\n")
    app.configure(f'PATH = "{program}"\n')
    assert app.install_log() == f"Blender does not start. Try it by hand: {program}"


# Nobody may write there, not even root.
def test_init_says_which_folder_cannot_be_written(app):
    app.configure(f'PATH = "{shutil.which("blender")}"\nUSER_HOME = "/proc"\n')
    assert app.install_log().startswith(
        "Blender's folder for add-ons cannot be written: /proc/.config/blender/")


# An `su` that needs no entry for the user in the system's lists.
SU = """#!/bin/sh
[ "$2" = -c ] || exit 1
export HOME='%s'
exec setpriv --reuid "$1" --regid "$1" --clear-groups sh -c "$3"
"""


@pytest.mark.skipif(os.getuid() != 0, reason="only root can act for another user")
def test_init_writes_as_the_user_whose_blender_it_is(home, installed):
    """Also where that user has put a link in the add-on's place: what it leads to stays."""
    with tempfile.TemporaryDirectory(prefix="it's ") as root:
        os.chmod(root, 0o755)
        app = App(pathlib.Path(root))
        version, = os.listdir(home / ".config/blender")
        addons = app.home / ".config/blender" / version / "scripts/addons"
        (app.home / "elsewhere").mkdir()
        addons.mkdir(parents=True)
        (addons / "vek_bridge").symlink_to(app.home / "elsewhere")
        for folder in (app.home, *app.home.glob("**/")):
            os.chown(folder, 54321, 54321)
        su = app.fake("bin/su")
        with open(su, "w", encoding="utf-8") as file:
            file.write(SU % str(app.home).replace("'", "'\\''"))
        app.configure(f'PATH = "{shutil.which("blender")}"\nUSER_HOME = "{app.home}"\n')
        app.run("init.sh", os.path.dirname(su) + ":" + os.environ["PATH"])
        assert (app.folder / "Vek_InstallLog.txt").read_text() == ""
        assert (app.home / "elsewhere").is_dir() and not (addons / "vek_bridge").is_symlink()
        addon = list(app.home.glob(".config/blender/*/scripts/addons/vek_bridge/__init__.py"))
        assert [file.stat().st_uid for file in addon] == [54321]
        assert list(app.home.glob(".config/blender/*/config/userpref.blend"))


def test_edit_says_that_blender_is_not_located(app):
    assert app.run("edit.sh").returncode == 1
    written = app.folder / "Blender_Report.txt"
    report = written.read_text()
    # the next user's order is reported there too
    assert written.stat().st_mode & 0o777 == 0o666
    assert report == "It is not known where Blender is. Locate it first.\nexit_code: 1\n"


def test_edit_runs_a_script_unattended(app, home, installed):
    script = app.home / "script.py"
    script.write_text("import bpy\nprint('there is', bpy.ops.vek.receive.idname_py())\n")
    app.home = home
    app.configure(f'PATH = "{shutil.which("blender")}"\nEDIT_SCRIPT = "{script}"\n')
    assert app.run("edit.sh").returncode == 0
    report = (app.folder / "Blender_Report.txt").read_text()
    assert "there is vek.receive\n" in report
    assert report.endswith("exit_code: 0\n")
