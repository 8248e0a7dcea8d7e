"""The examples of the manual print what it says."""

import contextlib
import io
import re
import subprocess
from pathlib import Path

import pytest

PROJECT = Path(__file__).parent.parent.parent
MANUAL = PROJECT / "docs" / "python.md"


def blocks_of(path):
    """Returns the kinds and texts of the blocks of a manual."""
    return re.findall(r"^``` ?(\w+)\n(.*?)^```$", path.read_text(encoding="utf-8"), flags=re.M | re.S)


@pytest.fixture(name="blocks")
def fixture_blocks(tmp_path, monkeypatch):
    """The blocks of the manual, in a folder with the certificate that it reads."""
    if not MANUAL.exists():
        pytest.skip("the manual is not beside the package")
    monkeypatch.chdir(tmp_path)
    blocks = blocks_of(MANUAL)
    (make,) = (text for kind, text in blocks if kind == "sh" and "openssl req" in text)
    subprocess.run(["sh", "-ec", make], check=True, capture_output=True)
    return blocks


@pytest.mark.parametrize("page", ["README.md", "python/README.md"])
def test_the_first_example(blocks, page):
    (example,) = (text for kind, text in blocks_of(PROJECT / page) if kind == "python")
    output = io.StringIO()
    with contextlib.redirect_stdout(output):
        exec(compile(example, page, "exec"), {})
    assert output.getvalue().startswith("CN=www.example.org,O=Example\\, Ltd.,C=DE ")


def test_the_examples(blocks):
    names, compared = {}, 0
    for (kind, text), (next_kind, expected) in zip(blocks, blocks[1:]):
        if kind != "python":
            continue
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            exec(compile(text, str(MANUAL), "exec"), names)
        assert next_kind == "text"
        assert output.getvalue() == expected
        compared += 1
    assert compared >= 5
