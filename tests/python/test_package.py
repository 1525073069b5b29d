"""The package as a whole."""

import ast
import glob
import os
import subprocess
import sys

import vek_exchange

FOLDER = os.path.dirname(vek_exchange.__file__)


def test_the_sources_are_python_3_7():
    sources = glob.glob(FOLDER + "/*.py")
    assert len(sources) > 8
    for source in sources:
        with open(source, encoding="utf-8") as file:
            ast.parse(file.read(), source, feature_version=(3, 7))


def test_nothing_but_the_standard_library_is_needed():
    """Without site-packages there is nothing else."""
    program = ("import sys; sys.path.insert(0, {!r})\n"
               "import vek_exchange; print('numpy' in sys.modules)").format(os.path.dirname(FOLDER))
    said = subprocess.run([sys.executable, "-I", "-S", "-c", program], check=True,
                          stdout=subprocess.PIPE)
    assert said.stdout == b"False\n"


def test_all_that_is_offered_is_there_and_documented():
    for name in vek_exchange.__all__:
        thing = getattr(vek_exchange, name)
        assert isinstance(thing, str) or thing.__doc__, name


def test_the_package_says_that_it_is_typed():
    assert os.path.exists(FOLDER + "/py.typed")
