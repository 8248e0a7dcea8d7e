"""Tells whether the libraries leak when Python uses them. Run with libraries that are built with
AddressSanitizer:

    python3 leak_check.py /path/to/libasan.so
"""

import os
import re
import subprocess
import sys
from pathlib import Path

WORK = """
import random, sys
sys.path.insert(0, {tests!r})
import orvelasn1
from orvelasn1._orvelpki import ffi, lib
from support import CERTIFICATE, certificate, element, use
from test_fuzz import changed

random_ = random.Random(1)
samples = [CERTIFICATE, certificate(extensions=None)]
for round in range(60):
    octets = CERTIFICATE if round % 10 == 0 else changed(random_, CERTIFICATE)
    try:
        decoded = orvelasn1.Certificate.decode(octets)
        use(decoded)
        decoded.tbsCertificate.replace(serialNumber=5)
        orvelasn1.RDNSequence("CN=a,C=DE").own_text()
        use(decoded.tbsCertificate.extensions[2].decoded)
        decoded.dns_names(), decoded.ip_addresses(), decoded.uris(), decoded.allows_purpose("1.2.3")
        decoded.may_issue(), decoded.subject_key_identifier()
        view = orvelasn1.Certificate.view(octets)
        list(view.tbsCertificate.extensions), view.tbsCertificate.extensions.find("2.5.29.17")
    except (orvelasn1.Error, TypeError, IndexError, AttributeError):
        pass
leaf = orvelasn1.GDOObjectSetOf(1, b"abc")
sets = orvelasn1.GDOObjectSetOfSetOf(0x10, children=[[leaf, leaf], []])
use(orvelasn1.GDO(root=leaf, set1=sets, set2=sets, set3=sets))
for levels in (31, 40):
    deep = leaf.der
    for _ in range(levels):
        deep = element(0x30, "060110", element(0x04, element(0x31, deep)))
    try:
        use(orvelasn1.GDOObjectSetOf.decode(deep))
    except orvelasn1.Fault:
        pass
for name in orvelasn1.types():
    for octets in (b"", b"\\x30\\x80\\0\\0", CERTIFICATE, b"\\x02\\x01\\x05", b"\\x30\\x03\\x06\\x01\\x2a"):
        try:
            use(orvelasn1.decode(name, octets))
        except orvelasn1.Error:
            pass
decoded = octets = None
if {leak}:
    for _ in range(8):
        lib.py_decode(lib.pki_Type_find(b"pki_Certificate"), CERTIFICATE, len(CERTIFICATE), ffi.NULL)
"""


def leaks(asan: str, leak: bool) -> list:
    """Returns the stacks of what is not released that go through the libraries."""
    tests = str(Path(__file__).parent)
    done = subprocess.run(
        [sys.executable, "-c", WORK.format(tests=tests, leak=leak)],
        capture_output=True, text=True, check=False,
        env={**os.environ, "LD_PRELOAD": asan, "PYTHONMALLOC": "malloc",
             "ASAN_OPTIONS": "detect_leaks=1:exitcode=0:fast_unwind_on_malloc=0"},
    )
    if done.returncode != 0 or "Traceback" in done.stderr or "AddressSanitizer" in done.stderr.replace(
        "SUMMARY: AddressSanitizer: ", "", 1
    ).replace("LeakSanitizer", ""):
        sys.exit("it failed:\n" + done.stderr)
    stacks = re.split(r"\n\s*\n", done.stderr)
    return [stack for stack in stacks if re.search(r"/liborvel\w+\.so| in py_\w+ ", stack) and "leak of" in stack]


def main() -> int:
    asan = sys.argv[1]
    if not leaks(asan, leak=True):
        print("what is left on purpose is not found")
        return 1
    found = leaks(asan, leak=False)
    print("\n\n".join(found) if found else "nothing leaks")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
