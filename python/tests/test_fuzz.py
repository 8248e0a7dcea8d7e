"""Octets at random, and samples with random changes, for every type."""

import random

import orvelasn1
import pytest
from support import CERTIFICATE, EXTENSIONS, NAMES, certificate, element, files, sequence, use

TAGS = bytes((0x02, 0x03, 0x04, 0x05, 0x06, 0x0A, 0x0C, 0x13, 0x16, 0x17, 0x18, 0x30, 0x31, 0x80, 0x81, 0x82, 0xA0, 0xA1))


def read(class_, octets):
    """Uses what octets are, if anything. Returns whether they are something."""
    try:
        value = class_.decode(octets)
    except orvelasn1.Fault as fault:
        assert 0 <= fault.offset <= len(octets)
        assert isinstance(fault.found, str)
        return False
    except orvelasn1.Unreadable:
        return True
    use(value)
    return True


def some_element(random_, depth):
    """Returns an element at random, such as often is of some type."""
    tag = random_.choice(TAGS)
    if tag & 0x20 and depth:
        return element(tag, *(some_element(random_, depth - 1) for _ in range(random_.randrange(4))))
    if tag in (0x17, 0x18):
        return element(tag, b"200131120000Z" if tag == 0x17 else b"20500101000000Z")
    if tag == 0x06:
        return element(tag, random_.choice(["2A0304", "551D11", "550403", "2A864886F70D010701"]))
    return element(tag, bytes(random_.randrange(256) for _ in range(random_.randrange(5))))


@pytest.mark.parametrize("type_name", orvelasn1.types())
def test_elements_at_random(type_name):
    random_ = random.Random(type_name)
    class_ = orvelasn1.type_named(type_name)
    for _ in range(150):
        read(class_, some_element(random_, 4))
        read(class_, bytes(random_.randrange(256) for _ in range(random_.randrange(40))))


def changed(random_, octets):
    """Returns octets with some changes."""
    copy = bytearray(octets)
    for _ in range(random_.randrange(1, 4)):
        at = random_.randrange(len(copy))
        act = random_.randrange(4)
        if act == 0:
            copy[at] = random_.randrange(256)
        elif act == 1:
            copy[at] ^= 1 << random_.randrange(8)
        elif act == 2:
            copy[at : at + random_.randrange(4)] = b""
        else:
            copy[at:at] = some_element(random_, 1)
        if not copy:
            return b""
    return bytes(copy)


@pytest.mark.parametrize(
    "type_name, sample",
    [("Certificate", CERTIFICATE), ("Extensions", sequence(*EXTENSIONS)), ("GeneralNames", NAMES),
     ("Certificate", certificate(extensions=None))],
    ids=["Certificate", "Extensions", "GeneralNames", "without extensions"],
)
def test_samples_with_changes(type_name, sample):
    random_ = random.Random(len(sample))
    class_ = orvelasn1.type_named(type_name)
    assert read(class_, sample)
    good = sum(read(class_, changed(random_, sample)) for _ in range(1500))
    assert 0 < good < 1500


@pytest.mark.parametrize(
    "kind, type_name",
    [("hostile-certificates", "Certificate"), ("hostile-crls", "CertificateList"), ("crls", "CertificateList"),
     ("ocsp-requests", "OCSPRequest"), ("ocsp-responses", "OCSPResponse"), ("certificates", "Certificate")],
)
def test_files_of_the_corpus(kind, type_name):
    for octets in files(kind).values():
        if read(orvelasn1.type_named(type_name), octets):
            decoded = orvelasn1.decode(type_name, octets)
            if type_name == "Certificate":
                for extension in decoded.tbsCertificate.extensions or ():
                    try:
                        use(extension.decoded)
                    except orvelasn1.Error:
                        pass
            if type_name == "OCSPResponse" and decoded.responseBytes is not None:
                use(decoded.responseBytes.decoded)
