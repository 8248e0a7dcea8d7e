"""What the tests share: elements by hand, a walk over all that a value holds, files to read."""

from __future__ import annotations

import os
import shutil
import ssl
import subprocess
from pathlib import Path
from typing import Any, Dict, List

import orvelasn1

TRUST_STORE = Path("/etc/ssl/certs/ca-certificates.crt")


def element(tag: int, *parts: Any) -> bytes:
    """Returns an element, whose content is octets, or hexadecimal digits."""
    content = b"".join(bytes.fromhex(part) if isinstance(part, str) else part for part in parts)
    size = len(content)
    if size < 0x80:
        return bytes([tag, size]) + content
    length = size.to_bytes((size.bit_length() + 7) // 8, "big")
    return bytes([tag, 0x80 + len(length)]) + length + content


def sequence(*parts: Any) -> bytes:
    return element(0x30, *parts)


def name(*attributes: bytes) -> bytes:
    return sequence(*(element(0x31, attribute) for attribute in attributes))


def attribute(oid: str, tag: int, value: bytes) -> bytes:
    return sequence(element(0x06, oid), element(tag, value))


def extension(oid: str, value: bytes, critical: bool = False) -> bytes:
    flag = element(0x01, "FF") if critical else b""
    return sequence(element(0x06, oid), flag, element(0x04, value))


COMMON_NAME = "550403"
ECDSA = sequence(element(0x06, "2A8648CE3D040302"))  # ecdsa-with-SHA256
KEY = sequence(
    sequence(element(0x06, "2A8648CE3D0201"), element(0x06, "2A8648CE3D030107")),
    element(0x03, "00", "04" + "11" * 64),
)
NAMES = sequence(
    element(0x82, b"www.example.org"), element(0x87, "C0000201"), element(0x86, b"https://example.org/")
)
EXTENSIONS = (
    extension("551D13", sequence(element(0x01, "FF"), element(0x02, "00")), critical=True),
    extension("551D0F", element(0x03, "0106"), critical=True),  # keyCertSign, cRLSign
    extension("551D11", NAMES),
    extension("2A0304", b"\xff"),  # 1.2.3.4, which nobody knows
)


def tbs(
    serial: str = "0A1B",
    not_before: bytes = element(0x17, b"200131120000Z"),
    not_after: bytes = element(0x18, b"20500101000000Z"),
    subject: bytes = name(attribute(COMMON_NAME, 0x0C, b"Some One")),
    extensions: Any = EXTENSIONS,
) -> bytes:
    return sequence(
        element(0xA0, element(0x02, "02")),
        element(0x02, serial),
        ECDSA,
        name(attribute("550406", 0x13, b"DE"), attribute(COMMON_NAME, 0x13, b"Example CA")),
        sequence(not_before, not_after),
        subject,
        KEY,
        element(0xA3, sequence(*extensions)) if extensions else b"",
    )


def certificate(**changes: Any) -> bytes:
    return sequence(tbs(**changes), ECDSA, element(0x03, "00", "AB" * 8))


CERTIFICATE = certificate()


def walk(value: Any) -> int:
    """Reads all that a value holds. Returns the number of values in it."""
    count = 1
    if isinstance(value, orvelasn1.Record):
        for field in value.fields:
            try:
                count += walk(getattr(value, field))
            except orvelasn1.Unreadable:
                count += 1
    elif isinstance(value, orvelasn1.Choice):
        assert value.choice in value.alternatives
        try:
            count += walk(value.value)
        except orvelasn1.Unreadable:
            count += 1
    elif isinstance(value, orvelasn1.ListValue):
        for index in range(len(value)):
            try:
                count += walk(value[index])
            except orvelasn1.Unreadable:
                count += 1
    elif isinstance(value, orvelasn1.CardObject):
        assert value.role == ("leaf" if value.children is None else value.role)
        count += walk(value.value) if value.children is None else sum(map(walk, value.children))
    elif isinstance(value, tuple):  # a set of objects, an attribute of one, a timestamp
        count += sum(map(walk, value))
    elif not isinstance(value, int):  # Python refuses the decimal digits of large numbers
        repr(value)
    return count


def use(value: Any) -> None:
    """Does all that can be done with a value."""
    walk(value)
    hash(value)
    if not isinstance(value, int):
        repr(value)
        str(value)
    if isinstance(value, orvelasn1.Value):
        value.to_dict()
        value.encode()
        assert value == value


def from_pem(text: str) -> List[bytes]:
    end = "-----END CERTIFICATE-----"
    blocks = text.split("-----BEGIN CERTIFICATE-----")[1:]
    return [
        ssl.PEM_cert_to_DER_cert("-----BEGIN CERTIFICATE-----" + block.split(end)[0] + end) for block in blocks
    ]


def files(kind: str) -> Dict[str, bytes]:
    """Returns the files of a kind in the corpus, by their names; none where there is no corpus."""
    folder = os.environ.get("ORVELASN1_CORPUS")
    if not folder:
        return {}
    return {path.name: path.read_bytes() for path in sorted(Path(folder, kind).iterdir())}


def made_certificates(folder: Path) -> Dict[str, bytes]:
    """Returns certificates that openssl makes."""
    made = {}
    subjects = ["/C=DE/O=Example, Ltd./CN=www.example.org", "/", "/CN=\u00c4\u00f6\u00fc/O=a\\+b"]
    extensions = [
        "subjectAltName=DNS:www.example.org,IP:2001:db8::1,email:a@example.org,URI:https://example.org/",
        "keyUsage=critical,digitalSignature,keyEncipherment",
        "extendedKeyUsage=serverAuth,clientAuth",
        "crlDistributionPoints=URI:http://example.org/ca.crl",
        "authorityInfoAccess=OCSP;URI:http://ocsp.example.org/",
        "nameConstraints=critical,permitted;DNS:example.org,excluded;IP:192.0.2.0/255.255.255.0",
        "certificatePolicies=1.2.3.4",
    ]
    config = folder / "empty.cnf"
    config.write_text("[req]\ndistinguished_name=dn\n[dn]\n")
    for index, subject in enumerate(subjects):
        command = [
            "openssl", "req", "-config", config, "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
            "-nodes", "-keyout", folder / "key.pem", "-utf8", "-subj", subject, "-days", str(10 + 9000 * index),
            "-outform", "DER", "-set_serial", str(3 ** (20 * index + 1)),
        ]
        for extension_text in extensions[: 3 * index + 1]:
            command += ["-addext", extension_text]
        done = subprocess.run(command, capture_output=True, check=True)
        made[f"made {index}"] = done.stdout
    return made


def certificates(folder: Path) -> Dict[str, bytes]:
    """Returns real certificates: those of the corpus, or else those that this machine trusts, and in any
    case some that openssl makes."""
    found = made_certificates(folder)
    corpus = files("certificates")
    if not corpus and TRUST_STORE.exists():
        blocks = from_pem(TRUST_STORE.read_text(encoding="utf-8"))
        corpus = {f"trusted {index}": der for index, der in enumerate(blocks)}
    return {**found, **corpus}


def tool() -> Any:
    """Returns the command-line tool, or None."""
    return os.environ.get("ORVELASN1_TOOL") or shutil.which("orvelasn1")
