"""The type hints are those of the types, and mypy knows them."""

import importlib.util
import os
import subprocess
import sys
from pathlib import Path

import orvelasn1
import pytest

SOURCE = Path(__file__).parent.parent

GOOD = """
from datetime import datetime

import orvelasn1
from orvelasn1 import Certificate, Extension, GeneralName, GeneralNames, KeyUsage, Validity

certificate = Certificate.decode(b"")
when: datetime = certificate.tbsCertificate.validity.notAfter
number: int = certificate.tbsCertificate.serialNumber
for extension in certificate.tbsCertificate.extensions or ():
    identifier: str = extension.extnID
    critical: bool = extension.critical
relative = certificate.tbsCertificate.subject[0][0]
value: str | bytes = relative.value
bits: orvelasn1.BitString = KeyUsage.decode(b"")
validity = Validity(notBefore=when, notAfter=when)
GeneralName(dNSName="a")
GeneralName("dNSName", "a")
Extension(extnID="2.5.29.17", extnValue=GeneralNames([GeneralName(dNSName="a")]))
dns: str = certificate.dns_names()[0]
unreadable: int = certificate.dns_names().unreadable
usage = certificate.key_usage()
signs: bool = usage is not None and orvelasn1.Usage.CRL_SIGN in usage
octets: memoryview = Certificate.view(b"").octets
reasons = [entry.reason for entry in orvelasn1.CrlReader(b"") if entry.serialNumber > 5]
leaf = orvelasn1.GDOObjectSetOf(1, b"abc")
card = orvelasn1.GDO(root=leaf, set1={"id": 1, "value": b""}, set2={}, set3={})
role: str = card.root.role
stamps = orvelasn1.SignedCertificateTimestampList([orvelasn1.Timestamp(version=1, opaque=b"")])
try:
    certificate, end = Certificate.decode_first(bytearray(), 2)
except orvelasn1.Fault as fault:
    offset: int = fault.offset
"""

WRONG = """
from orvelasn1 import Certificate, GeneralName, Validity

certificate = Certificate.decode(b"")
Certificate.decode("text")
certificate.nothing
certificate.tbsCertificate.version + 1
certificate.tbsCertificate.validity.notAfter = 1
Validity(notBefore=1, notAfter=2)
Validity(notBefore=certificate.tbsCertificate.validity.notBefore)
GeneralName(nothing="a")
certificate.tbsCertificate.extensions = None
certificate.allows_purpose(5)
"".join(certificate.ip_addresses())
certificate.key_usage() | 1
Certificate.view("text")
"""


def test_the_hints_are_those_of_the_types():
    if not (SOURCE / "scripts").exists():
        pytest.skip("the script that makes the hints is not beside the tests")
    spec = importlib.util.spec_from_file_location("make_hints", SOURCE / "scripts" / "make_hints.py")
    made = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(made)
    kept = (SOURCE / "orvelasn1" / "__init__.pyi").read_text(encoding="utf-8")
    assert made.hints() == kept, "run python3 scripts/make_hints.py"


def mypy(folder, *arguments):
    pytest.importorskip("mypy")
    package = Path(orvelasn1.__file__).parent.parent
    return subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--cache-dir", str(folder / "cache"), *arguments],
        capture_output=True, text=True, check=False, cwd=folder, env={**os.environ, "MYPYPATH": str(package)},
    )


def test_programs_are_checked(tmp_path):
    (tmp_path / "good.py").write_text(GOOD)
    done = mypy(tmp_path, "good.py")
    assert done.returncode == 0, done.stdout
    (tmp_path / "wrong.py").write_text(WRONG)
    done = mypy(tmp_path, "wrong.py")
    wrong = {int(line.split(":")[1]) for line in done.stdout.splitlines() if ": error:" in line}
    assert wrong == set(range(5, WRONG.count("\n") + 1)), done.stdout


def test_the_package_itself_is_checked(tmp_path):
    done = mypy(tmp_path, "-p", "orvelasn1")
    assert done.returncode == 0, done.stdout
