"""The examples of the manual print what it says."""

import contextlib
import io
import re
import subprocess
from pathlib import Path

import pytest

MANUAL = Path(__file__).parent.parent.parent / "docs" / "python.md"


def test_the_examples(tmp_path, monkeypatch):
    if not MANUAL.exists():
        pytest.skip("the manual is not beside the package")
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"^``` ?(\w+)\n(.*?)^```$", MANUAL.read_text(encoding="utf-8"), flags=re.M | re.S)
    (make,) = (text for kind, text in blocks if kind == "sh" and "openssl req" in text)
    subprocess.run(["sh", "-ec", make], check=True, capture_output=True)
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
