"""What is wrong, and where."""

import pickle

import orvelasn1
import pytest
from support import CERTIFICATE, certificate, element, extension, sequence


def fault_of(type_name, octets):
    with pytest.raises(orvelasn1.Fault) as caught:
        orvelasn1.decode(type_name, octets)
    return caught.value


def test_a_fault_says_where_and_what():
    at = CERTIFICATE.index(bytes.fromhex("02020A1B"))
    damaged = CERTIFICATE[:at] + b"\x30" + CERTIFICATE[at + 1 :]
    fault = fault_of("certificate", damaged)
    assert fault.offset == at
    assert fault.path == "tbsCertificate.serialNumber"
    assert fault.expected == "INTEGER (02)"
    assert fault.found == "SEQUENCE (30)"
    assert fault.type_name == "Certificate"
    assert str(fault) == (
        f"Certificate: offset {at}, tbsCertificate.serialNumber: expected INTEGER (02), found SEQUENCE (30)"
    )
    assert isinstance(fault, orvelasn1.Error) and isinstance(fault, ValueError)


def test_a_fault_in_a_list_has_its_index():
    broken = sequence(element(0x06, "2A0304"), element(0x02, "00"))
    fault = fault_of("Certificate", certificate(extensions=[extension("2A03", b""), broken]))
    assert fault.path == "tbsCertificate.extensions[1].extnValue"
    assert fault.expected == "OCTET STRING (04)" and fault.found == "INTEGER (02)"


def test_octets_left_over_are_a_fault():
    fault = fault_of("Certificate", CERTIFICATE + b"\x05\0")
    assert (fault.offset, fault.path) == (len(CERTIFICATE), "")
    assert (fault.expected, fault.found) == ("the end", "NULL (05)")


@pytest.mark.parametrize(
    "octets, expected, found",
    [
        ("", "SEQUENCE (30)", None),
        ("30", None, "the input ends after the identifier octet 30"),
        ("3005", None, "the header 30 05 promises 5 octets, but only 0 are left"),
        ("0500", "SEQUENCE (30)", "NULL (05)"),
        ("3000", "one of several alternatives", "the enclosing element ends"),
    ],
)
def test_inputs_that_end_early(octets, expected, found):
    fault = fault_of("Validity", bytes.fromhex(octets))
    assert fault.expected == expected
    assert fault.found == found or found is None and fault.found


def test_every_truncation_is_a_fault():
    for size in range(len(CERTIFICATE)):
        fault = fault_of("Certificate", CERTIFICATE[:size])
        assert 0 <= fault.offset <= size and fault.sentence


def test_faults_are_pickled():
    fault = fault_of("Certificate", b"")
    missing = orvelasn1.Missing("Validity", "notAfter", "is missing")
    unreadable = orvelasn1.Unreadable("time", b"x")
    for error in (fault, missing, unreadable):
        again = pickle.loads(pickle.dumps(error))
        assert type(again) is type(error) and vars(again) == vars(error) and str(again) == str(error)
