"""The common questions about a certificate."""

import ipaddress
import pickle
from datetime import datetime, timezone

import orvelasn1
import pytest
from orvelasn1 import Certificate, Usage
from support import CERTIFICATE, attribute, certificate, element, extension, name, sequence

OCSP, ISSUERS = "2B06010505073001", "2B06010505073002"
URI = element(0x86, b"http://example.org/")


def asked(*extensions):
    return Certificate.decode(certificate(extensions=extensions))


def test_names():
    names = sequence(
        element(0x82, b"a.example"), element(0x81, b"a@example.org"), element(0x87, "C0000201"),
        element(0x87, "20010DB8" + "00" * 11 + "01"), URI, element(0x82, b"\xff"), element(0x82, b""),
        element(0xA4, name(attribute("550403", 0x0C, b"x"))),
    )
    it = asked(extension("551D11", names))
    assert it.dns_names() == ("a.example", "") and it.dns_names().unreadable == 1
    assert it.mail_addresses() == ("a@example.org",)
    assert it.uris() == ("http://example.org/",)
    assert it.ip_addresses() == (ipaddress.ip_address("192.0.2.1"), ipaddress.ip_address("2001:db8::1"))
    again = pickle.loads(pickle.dumps(it.dns_names()))
    assert (again, again.unreadable) == (("a.example", ""), 1)
    none = asked(extension("2A", b""))
    assert none.dns_names() == () and none.dns_names().unreadable == 0
    assert asked(extension("551D11", b"\x30\x05")).uris().unreadable == 1


def test_what_a_key_is_for():
    plain = Certificate.decode(certificate(extensions=None))
    assert plain.key_usage() is None and plain.allows_purpose("1.2.3") and not plain.may_issue()
    assert plain.path_length() is None
    it = Certificate.decode(CERTIFICATE)
    assert it.key_usage() == Usage.KEY_CERT_SIGN | Usage.CRL_SIGN and Usage.CRL_SIGN in it.key_usage()
    assert it.may_issue() and it.path_length() == 0
    purposes = extension("551D25", sequence(element(0x06, "2B06010505070301")))
    it = asked(purposes, extension("551D0F", element(0x03, "0780")), extension("551D13", sequence(element(0x01, "FF"))))
    assert it.allows_purpose("1.3.6.1.5.5.7.3.1") and not it.allows_purpose("1.3.6.1.5.5.7.3.2")
    assert it.key_usage() == Usage.DIGITAL_SIGNATURE and not it.may_issue() and it.path_length() is None
    it = asked(extension("551D13", sequence(element(0x01, "FF"))))
    assert it.may_issue() and it.path_length() is None


def test_extensions_that_cannot_be_read():
    broken = asked(*(extension(oid, b"\x30\x05") for oid in ("551D0F", "551D25", "551D13")))
    for ask in (broken.key_usage, lambda: broken.allows_purpose("1.2.3"), broken.may_issue, broken.path_length):
        with pytest.raises(orvelasn1.Error):
            ask()
    for wrong in ("", "1", "x", "#2A", "1.2\0"):
        with pytest.raises(ValueError):
            broken.allows_purpose(wrong)
    for wrong in (None, 5, b"1.2"):
        with pytest.raises((TypeError, ValueError)):
            broken.allows_purpose(wrong)


def test_keys_and_places():
    access = sequence(
        sequence(element(0x06, OCSP), URI), sequence(element(0x06, ISSUERS), element(0x86, b"http://ca.example.org/"))
    )
    points = sequence(sequence(element(0xA0, element(0xA0, URI))))
    it = asked(
        extension("551D0E", element(0x04, "0102")), extension("551D23", sequence(element(0x80, "0304"))),
        extension("2B06010505070101", access), extension("551D1F", points),
    )
    assert (it.subject_key_identifier(), it.authority_key_identifier()) == (b"\x01\x02", b"\x03\x04")
    assert it.ocsp_places() == it.crl_places() == ("http://example.org/",)
    assert it.issuer_places() == ("http://ca.example.org/",)
    assert it.extension("2.5.29.14").extnValue == b"\x04\x02\x01\x02" and it.extension("1.2.3") is None
    plain = Certificate.decode(certificate(extensions=None))
    assert plain.subject_key_identifier() is None and plain.authority_key_identifier() is None
    assert plain.extension("2.5.29.14") is None
    assert asked(extension("551D0E", element(0x04))).subject_key_identifier() == b""


def test_the_period():
    assert Certificate.decode(CERTIFICATE).period() == (
        datetime(2020, 1, 31, 12, tzinfo=timezone.utc), datetime(2050, 1, 1, tzinfo=timezone.utc)
    )
    with pytest.raises(orvelasn1.Unreadable):
        Certificate.decode(certificate(not_after=element(0x17, b"200230000000Z"))).period()


def test_certificates_alone_are_asked():
    other = orvelasn1.Validity.decode(orvelasn1.Certificate.decode(CERTIFICATE).tbsCertificate.validity.der)
    odd = object.__new__(Certificate)
    odd._attach(odd, other._handle)
    for ask in (odd.dns_names, odd.key_usage, odd.may_issue, lambda: odd.allows_purpose("1.2.3")):
        with pytest.raises((AttributeError, TypeError, MemoryError, orvelasn1.Error)):
            ask()
    assert odd.subject_key_identifier() is None
