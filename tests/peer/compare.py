"""Compares what the tool shows with what python3-cryptography and OpenSSL read.

    python3 compare.py TOOL

TOOL is the built orvelasn1. Compares objects that openssl makes on the spot, the certificates that this
system trusts, and the folder of the environment variable ORVELASN1_CORPUS where it is set. Prints each
difference as `file: path: ours != theirs`, and the number of compared values of each kind. Fails where
there is a difference that compare_accepted.py does not explain, where one that it explains is not there,
and where a kind of values was not compared at all.
"""
import base64
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import compare_accepted as accepted
import compare_fresh as fresh
import compare_objects as objects
from compare_report import Report

TRUST_STORE = pathlib.Path("/etc/ssl/certs/ca-certificates.crt")
# The folders of the corpus: what is in their files, and the label of that in PEM.
FOLDERS = {"certificates": ("certificate", "CERTIFICATE"),
           "hostile-certificates": ("certificate", "CERTIFICATE"),
           "crls": ("crl", "X509 CRL"), "hostile-crls": ("crl", "X509 CRL"),
           "ocsp-requests": ("ocsp-request", "OCSP REQUEST"),
           "ocsp-responses": ("ocsp-response", "OCSP RESPONSE")}


def elements(path):
    """Returns the octets of each PEM block of a file; those of a file in DER."""
    octets = path.read_bytes()
    blocks = re.findall(rb"-----BEGIN [^-]+-----([^-]+)-----END", octets)
    return [decoded(block) for block in blocks] or [octets]


def decoded(base):
    """Returns what base64 is decoded to, or no octets where it is none."""
    try:
        return base64.b64decode(base)
    except ValueError:
        return b""


def run(tool, *words):
    """Runs the tool, which may refuse what it is given. Returns its lines of JSON."""
    process = subprocess.run([tool, *map(str, words)], check=False, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE)
    if process.returncode not in (0, 1, 2) or b"Sanitizer" in process.stderr:
        sys.exit(f"{tool}: status {process.returncode}: {process.stderr.decode()}")
    return [json.loads(line) for line in process.stdout.splitlines()]


def compare_searches(report, tool, path, octets, crls):
    """Compares what the command `crl` says of each CRL of a file, and of what is in a single one."""
    for summary in run(tool, "crl", "--json", path):
        number = summary["element"]
        if number in crls:
            report.file, answers = crls[number][0], []
            if len(octets) == 1:
                serials = [word for entry in
                           crls[number][1]["tbsCertList"].get("revokedCertificates", [])
                           for word in ("--serial", entry["userCertificate"])]
                answers = run(tool, "crl", "--json", path, *serials) if serials else []
            objects.compare_search(report, [summary, *answers], octets[number - 1])


def compare_file(report, tool, path, octets, names, kind=None):
    """Compares the elements of a file, each of which has a name and octets."""
    found = {}
    for line in run(tool, "show", "--json", path):
        found.setdefault(line["element"], line)  # a second line is of what follows the element
    crls = {}
    for number, (name, element) in enumerate(zip(names, octets), 1):
        report.file = name
        ours = found.get(number, {})
        report.compare("element", "", bool(ours), True)
        if ours.get("type") in objects.OBJECTS:
            report.compare("object: " + ours["type"], "", ours["type"], kind or ours["type"])
            objects.compare_object(report, ours, element)
        elif kind and objects.is_object(kind, element):
            report.differ("", ours.get("error", ours.get("type")), f"OpenSSL reads a {kind}")
        else:
            report.counts["object that is refused"] += 1
        if ours.get("type") == "crl" and not report.hostile:
            crls[number] = name, ours
    if crls:
        compare_searches(report, tool, path, octets, crls)


def compare_folder(report, tool, folder, kind, label, scratch):
    """Compares the files of a folder, which are in one file for the tool: a process takes longer."""
    files = sorted(folder.iterdir())
    octets = [elements(path)[0] for path in files]
    bundle = scratch / f"{folder.name}.pem"
    with bundle.open("wb") as out:
        for one in octets:
            out.write(f"-----BEGIN {label}-----\n".encode() + base64.encodebytes(one)
                      + f"-----END {label}-----\n".encode())
    report.hostile = folder.name.startswith("hostile")
    compare_file(report, tool, bundle, octets, [path.name for path in files], kind)


def failures(report, corpus):
    """Returns what is wrong with the result, as lines."""
    explained = {place: reason for reason, places in accepted.DIFFERENCES.items()
                 for place in places}
    wrong = [f"{file}: {path}: {one}" for (file, path), found in report.differences.items()
             if (file, path) not in explained for one in found]
    wanted = accepted.KINDS + (accepted.KINDS_OF_THE_CORPUS if corpus else ())
    wrong += [f"no {kind} was compared" for kind in wanted if not report.counts[kind]]
    if corpus:
        wrong += [f"{file}: {path}: there is no such difference: {reason}"
                  for (file, path), reason in explained.items()
                  if (file, path) not in report.differences]
    return wrong


def main():
    tool = sys.argv[1]
    report = Report()
    corpus = os.environ.get("ORVELASN1_CORPUS")
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        for path in fresh.objects(scratch):
            compare_file(report, tool, path, elements(path), [path.name])
        octets = elements(TRUST_STORE)
        names = [f"{TRUST_STORE.name} {number}" for number in range(1, len(octets) + 1)]
        compare_file(report, tool, TRUST_STORE, octets, names, "certificate")
        for folder, (kind, label) in FOLDERS.items() if corpus else ():
            compare_folder(report, tool, pathlib.Path(corpus) / folder, kind, label, scratch)
    for kind, count in sorted(report.counts.items()):
        print(f"{count:7} {kind}")
    for kind, count in sorted(report.alone.items()):
        print(f"{count:7} {kind}: no peer reads it")
    wrong = failures(report, corpus)
    print("\n".join(wrong))
    print(f"{sum(report.counts.values())} values compared, {len(report.differences)} differences, "
          f"{len(wrong)} failures")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
