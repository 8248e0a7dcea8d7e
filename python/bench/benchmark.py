"""Measures what it takes to decode certificates and to read three fields of each: the number, the end of the
validity, the algorithm of the signature.

    python3 benchmark.py [PROGRAM] [--most RATIO]

The certificates are those of ORVELASN1_CORPUS, or else those that this machine trusts: each that everyone reads.
PROGRAM is decode.c, compiled. With --most, the status is 1 where decoding and reading takes more than RATIO times
the C calls for the same.
"""

import argparse
import os
import ssl
import subprocess
import sys
import tempfile
import time
import warnings
from pathlib import Path

import orvelasn1
from orvelasn1._orvelpki import ffi, lib

try:
    from cryptography import x509
except ImportError:
    x509 = None
try:
    from asn1crypto import x509 as asn1
except ImportError:
    asn1 = None

ROUNDS = 30
GROUP = 20


def certificates():
    corpus = os.environ.get("ORVELASN1_CORPUS")
    if corpus:
        return [path.read_bytes() for path in sorted(Path(corpus, "certificates").iterdir())]
    context = ssl.create_default_context()
    context.load_verify_locations("/etc/ssl/certs/ca-certificates.crt")
    return context.get_ca_certs(binary_form=True)


def c_decodes(octets):
    lib.py_release(lib.py_decode(TYPE, octets, len(octets), ffi.NULL))


def c_reads(octets):
    """The C calls that read the fields, through the same extension."""
    whole = lib.py_decode(TYPE, octets, len(octets), ffi.NULL)
    inside = lib.py_part(whole, 0)
    length = lib.py_length(inside, 1)
    if length:
        ffi.unpack(lib.py_octets(inside, 1), length)
    validity = lib.py_part(inside, 4)
    lib.py_seconds(validity, 1)
    algorithm = lib.py_part(whole, 1)
    length = lib.py_length(algorithm, 0)
    ffi.unpack(lib.py_octets(algorithm, 0), length)
    for value in (algorithm, validity, inside, whole):
        lib.py_release(value)


def decodes(octets):
    orvelasn1.Certificate.decode(octets)


def reads(octets):
    certificate = orvelasn1.Certificate.decode(octets)
    inside = certificate.tbsCertificate
    return inside.serialNumber, inside.validity.notAfter, certificate.signatureAlgorithm.algorithm


def shows(octets):
    return orvelasn1.Certificate.decode(octets).to_dict()


def cryptography_reads(octets):
    certificate = x509.load_der_x509_certificate(octets)
    return (certificate.serial_number, certificate.not_valid_after, certificate.signature_algorithm_oid.dotted_string)


def asn1crypto_reads(octets):
    certificate = asn1.Certificate.load(octets)
    inside = certificate["tbs_certificate"]
    return (inside["serial_number"].native, inside["validity"]["not_after"].native,
            certificate["signature_algorithm"]["algorithm"].dotted)


def asn1crypto_shows(octets):
    return asn1.Certificate.load(octets).native


TYPE = lib.pki_Type_find(b"pki_Certificate")


def works(function, octets):
    try:
        return function(octets) or True
    except Exception:  # a peer refuses it, in whatever way
        return None


def measure(rows, samples):
    """Returns the microseconds a certificate for each row. The certificates are measured in small groups, all rows
    in turn, and of each row the quickest round counts: what else the machine does is in none of them, or in all."""
    total = [0.0] * len(rows)
    for start in range(0, len(samples), GROUP):
        group, best = samples[start : start + GROUP], [float("inf")] * len(rows)
        for turn in range(max(rounds for _, _, rounds in rows)):
            for index, (_, function, rounds) in enumerate(rows):
                if turn >= rounds:
                    continue
                begin = time.perf_counter()
                for octets in group:
                    function(octets)
                best[index] = min(best[index], time.perf_counter() - begin)
        total = [sum(pair) for pair in zip(total, best)]
    return {label: taken / len(samples) * 1e6 for (label, _, _), taken in zip(rows, total)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program", nargs="?")
    parser.add_argument("--most", type=float)
    parser.add_argument("--rounds", type=int, default=ROUNDS)
    options = parser.parse_args()
    warnings.simplefilter("ignore")  # cryptography's, of certificates that are not as they should be
    peers = [function for module, function in ((x509, cryptography_reads), (asn1, asn1crypto_reads)) if module]
    samples = [octets for octets in certificates() if all(works(f, octets) for f in (reads, *peers))]
    if not samples:
        parser.error("there are no certificates that everyone reads")
    for octets in samples:
        number, end, algorithm = reads(octets)
        for peer in peers:
            assert peer(octets)[0] == number and peer(octets)[2] == algorithm
            assert peer(octets)[1].replace(tzinfo=end.tzinfo) == end
    rows = [
        ("C calls through the extension: decode and release", c_decodes, options.rounds),
        ("C calls through the extension: with the three fields", c_reads, options.rounds),
        ("orvelasn1: decode", decodes, options.rounds),
        ("orvelasn1: decode, three fields", reads, options.rounds),
        ("orvelasn1: decode, to_dict()", shows, 3),
    ]
    if x509:
        rows.append(("cryptography: load, three fields", cryptography_reads, options.rounds))
    if asn1:
        rows.append(("asn1crypto: load, three fields", asn1crypto_reads, max(options.rounds // 5, 1)))
    found = {}
    if options.program:
        with tempfile.NamedTemporaryFile() as file:
            file.write(b"".join(samples))
            file.flush()
            said = subprocess.run(
                [options.program, file.name, str(options.rounds)], capture_output=True, check=True, text=True
            ).stdout.split()
        found["C program: decode, three fields, release"], found["C program: decode and release"] = map(float, said)
    found.update(measure(rows, samples))
    unit = found["C calls through the extension: decode and release"]
    print(f"{len(samples)} certificates, {sum(map(len, samples)) // len(samples)} octets each on average")
    print(f"{'':54} {'us':>8} {'ratio':>7}")
    for label, taken in found.items():
        print(f"{label:54} {taken:8.2f} {taken / unit:7.2f}")
    # Against the C calls for the same: decoding and releasing, without the reading.
    ratio = found["orvelasn1: decode, three fields"] / unit
    if options.most and ratio > options.most:
        print(f"{ratio:.2f} times the C calls, where {options.most:.2f} are the most")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
