"""Identifiers and bit strings."""

import orvelasn1
import pytest
from orvelasn1 import BitString, ObjectIdentifier
from support import element


def test_identifiers_are_texts_with_arcs():
    oid = ObjectIdentifier("2.5.29.17")
    assert oid == "2.5.29.17" and hash(oid) == hash("2.5.29.17") and str(oid) == "2.5.29.17"
    assert oid.arcs == (2, 5, 29, 17) and oid.name == "id_ce_subjectAltName"
    assert ObjectIdentifier((2, 999, 3)) == "2.999.3" and ObjectIdentifier([1, 2]).name is None
    assert repr(oid) == "ObjectIdentifier('2.5.29.17') <id_ce_subjectAltName>"
    assert {oid: 1}["2.5.29.17"] == 1


def test_identifiers_are_ordered_by_their_arcs():
    oids = [ObjectIdentifier(text) for text in ("2.5.29.17", "2.5.4.3", "2.999", "1.2", "2.5.29")]
    assert sorted(oids) == ["1.2", "2.5.4.3", "2.5.29", "2.5.29.17", "2.999"]
    assert oids[1] < "2.5.29" <= oids[4]
    with pytest.raises(TypeError):
        oids[0] < 5


@pytest.mark.parametrize(
    "octets, text",
    [("551D11", "2.5.29.17"), ("883703", "2.999.3"), ("00", "0.0"), ("4F", "1.39"),
     ("8FFFFFFF7F", "2.4294967215"), ("2A8FFFFFFF7F", "1.2.4294967295"), ("2A9080808000", "1.2.4294967296"),
     ("6982808080808080808000", "2.25.18446744073709551616"[:5] + "18446744073709551616")],
)
def test_identifiers_are_decoded_and_encoded(octets, text):
    decoded = orvelasn1.AlgorithmIdentifier.decode(element(0x30, element(0x06, octets)))
    assert decoded.algorithm == text
    made = orvelasn1.AlgorithmIdentifier(algorithm=text)
    assert made == decoded and made.encode() == element(0x30, element(0x06, octets))


def test_the_same_identifier_is_the_same_object():
    octets = element(0x30, element(0x06, "2A0304"))
    first, second = (orvelasn1.AlgorithmIdentifier.decode(octets).algorithm for _ in range(2))
    assert first is second


def test_an_identifier_that_is_too_long_for_digits():
    content = "2A" + "FF" * 200 + "7F"
    octets = element(0x30, element(0x06, content))
    decoded = orvelasn1.AlgorithmIdentifier.decode(octets)
    assert decoded.algorithm == "#" + content and decoded.algorithm.arcs == ()
    assert decoded.to_dict() == {"algorithm": "an identifier of 202 octets"}
    assert orvelasn1.AlgorithmIdentifier(algorithm=decoded.algorithm).encode() == octets
    assert len(repr(decoded)) < 200


@pytest.mark.parametrize(
    "text", ["", "1", "3.1", "1.40", "1.2.", ".1.2", "1..2", "1.02", "-1.2", "1.2\0", "1.2 ", "\u0661.2", "#", "x",
             "#2A", "1." + "9" * 4000, (1,), (), (1, -2), "\ud800"]
)
def test_what_is_no_identifier(text):
    with pytest.raises(ValueError):
        ObjectIdentifier(text)


def test_bit_strings():
    bits = orvelasn1.KeyUsage.decode(element(0x03, "0106"))
    assert len(bits) == 7 and bits.set == (5, 6) and bytes(bits) == b"\x06"
    assert list(bits) == [False] * 5 + [True] * 2 and bits[5] and not bits[0] and bits[-1]
    assert bits == BitString.of(5, 6) == BitString(b"\x06", 7) != BitString(b"\x06")
    assert hash(bits) == hash(BitString.of(6, 5))
    assert BitString.of() == BitString() and len(BitString()) == 0
    assert orvelasn1.encode("KeyUsage", BitString.of(0, 8)) == element(0x03, "078080")
    for wrong in (7, -8, 2**70):
        with pytest.raises(IndexError):
            bits[wrong]


@pytest.mark.parametrize(
    "octets, length, error",
    [(b"", 1, ValueError), (b"a", 9, ValueError), (b"ab", 8, ValueError), (b"", -1, ValueError), (1, None, TypeError),
     ("a", None, TypeError), (b"a", "7", TypeError), (None, None, TypeError)],
)
def test_what_is_no_bit_string(octets, length, error):
    with pytest.raises(error):
        BitString(octets, length)


def test_bits_out_of_reach():
    for bits in ((-1,), (2**40,), (70000,)):
        with pytest.raises(ValueError):
            BitString.of(*bits)
