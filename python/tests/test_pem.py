"""Octets in texts (RFC 7468)."""

import ssl

import orvelasn1
import pytest
from support import CERTIFICATE

ONE = "-----BEGIN X-----\nAQID\n-----END X-----\n"


def test_blocks_are_read_with_their_labels():
    text = "a comment\n" + ssl.DER_cert_to_PEM_cert(CERTIFICATE) + "\n" + ONE
    expected = [("CERTIFICATE", CERTIFICATE), ("X", b"\1\2\3")]
    assert list(orvelasn1.read_pem(text)) == expected
    assert list(orvelasn1.read_pem(text.encode())) == list(orvelasn1.read_pem(bytearray(text.encode()))) == expected
    assert list(orvelasn1.read_pem(text.replace("\n", "\r\n"))) == expected


def test_what_stands_around_the_octets():
    assert list(orvelasn1.read_pem("")) == list(orvelasn1.read_pem(b"\xff\0")) == []
    headers = "-----BEGIN X-----\nProc-Type: 4,ENCRYPTED\nDEK-Info: A,\n  B\n\nAQ ID\n-----END X-----"
    assert list(orvelasn1.read_pem(headers)) == [("X", b"\1\2\3")]
    assert list(orvelasn1.read_pem("-----BEGIN -----\n-----END -----")) == [("", b"")]
    assert list(orvelasn1.read_pem("\ud800\n" + ONE.replace("AQID", "A\n\tQ\nID"))) == [("X", b"\1\2\3")]


@pytest.mark.parametrize("digits", ["A", "AQ", "AQI", "AQ==AQ==", "AQJ=", "AQID=", "AQ*D", "AQ-D", "\xff", "=", "AQID\0"])
def test_blocks_that_are_broken(digits):
    with pytest.raises(orvelasn1.Error) as caught:
        list(orvelasn1.read_pem("\n" + ONE.replace("AQID", digits)))
    assert "offset 1" in str(caught.value)


def test_a_block_without_an_end():
    for text in ("-----BEGIN X-----\nAQID\n", "-----BEGIN X-----\nAQID\n-----END Y-----"):
        with pytest.raises(orvelasn1.Error):
            list(orvelasn1.read_pem(text))


def test_what_is_no_text():
    for wrong in (None, 1, [], object()):
        with pytest.raises(TypeError):
            orvelasn1.read_pem(wrong)
