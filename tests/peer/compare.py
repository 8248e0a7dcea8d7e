"""Compares what the tool shows with what python3-cryptography and OpenSSL read.

    python3 compare.py TOOL

TOOL is the built orvelasn1. Compares objects that openssl makes on the spot, the certificates that this
system trusts, and the folder of the environment variable ORVELASN1_CORPUS where it is set. Prints each
difference as `file: path: ours != theirs`, and the number of compared values of each kind. Fails where
there is a difference that compare_accepted.py does not explain, where one that it explains is not there,
and where a kind of values was not compared at all.
"""
import base64
import collections
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import compare_accepted as accepted
import compare_der as der
import compare_fresh as fresh
import compare_objects as objects
from compare_report import Report

TRUST_STORE = pathlib.Path("/etc/ssl/certs/ca-certificates.crt")
FOLDERS = {"certificates": "certificate", "hostile-certificates": "certificate",
           "crls": "crl", "hostile-crls": "crl",
           "ocsp-requests": "ocsp-request", "ocsp-responses": "ocsp-response"}


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


def shown(tool, files):
    """Returns the lines of JSON of each file, under its path."""
    lines = {}
    for line in run(tool, "show", "--json", *files):
        lines.setdefault(line["file"], []).append(line)
    return lines


def compare_searches(report, tool, path, crl):
    """Compares what the command `crl` says of a CRL, and of the first certificates in it."""
    most_words = 100
    serials = collections.Counter(entry["userCertificate"] for entry in
                                  crl["tbsCertList"].get("revokedCertificates", []))
    asked = [word for serial, count in serials.items() if count == 1 and serial[0] != "-"
             for word in ("--serial", serial)][:most_words]
    summary = run(tool, "crl", "--json", path)
    answers = run(tool, "crl", "--json", path, *asked) if asked else []
    objects.compare_search(report, summary + answers, elements(path)[0])


def compare_file(report, path, lines, kind):
    """Compares the elements of a file. In a file in DER only the first one is an object."""
    octets = elements(path)
    report.file = path.name
    report.compare("file", "", min(len(lines), len(octets)), len(octets))
    for ours in lines[:len(octets)]:
        element = octets[ours["element"] - 1]
        report.file = f"{path.name} {ours['element']}" if len(octets) > 1 else path.name
        if ours.get("type") in objects.OBJECTS:
            report.compare("object: " + ours["type"], "", ours["type"], kind or ours["type"])
            objects.compare_object(report, ours, element)
        elif kind and objects.is_object(kind, element):
            report.differ("", ours.get("error", ours.get("type")), f"OpenSSL reads a {kind}")
        else:
            report.counts["object that is refused"] += 1


def compare_files(report, tool, files, kind=None):
    lines = shown(tool, files)
    for path in files:
        found = lines.get(str(path), [])
        compare_file(report, path, found, kind)
        if found and found[0].get("type") == "crl" and not report.hostile:
            compare_searches(report, tool, path, found[0])


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
    with tempfile.TemporaryDirectory() as folder:
        compare_files(report, tool, fresh.objects(pathlib.Path(folder)))
    compare_files(report, tool, [TRUST_STORE], "certificate")
    corpus = os.environ.get("ORVELASN1_CORPUS")
    for folder, kind in FOLDERS.items() if corpus else ():
        report.hostile = folder.startswith("hostile")
        compare_files(report, tool, sorted((pathlib.Path(corpus) / folder).iterdir()), kind)
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
