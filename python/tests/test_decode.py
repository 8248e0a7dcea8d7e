"""Decoding, and what fields, lists and choices are in Python."""

from datetime import datetime, timezone

import orvelasn1
import pytest
from orvelasn1 import BitString, Certificate, ObjectIdentifier
from support import CERTIFICATE, COMMON_NAME, EXTENSIONS, attribute, certificate, element, name, sequence, tbs, use


@pytest.fixture(name="decoded")
def fixture_decoded():
    return Certificate.decode(CERTIFICATE)


def test_fields_have_the_names_of_the_asn1_and_values_of_python(decoded):
    inside = decoded.tbsCertificate
    assert inside.version == 2
    assert inside.serialNumber == 0x0A1B
    assert inside.signature.algorithm == "1.2.840.10045.4.3.2"
    assert inside.signature.parameters is None
    assert inside.validity.notBefore == datetime(2020, 1, 31, 12, tzinfo=timezone.utc)
    assert inside.validity.notAfter == datetime(2050, 1, 1, tzinfo=timezone.utc)
    assert inside.validity.notAfter.utcoffset().total_seconds() == 0
    assert inside.subjectPublicKeyInfo.algorithm.parameters == bytes.fromhex("06082A8648CE3D030107")
    assert bytes(inside.subjectPublicKeyInfo.subjectPublicKey) == b"\x04" + b"\x11" * 64
    assert inside.issuerUniqueID is None
    assert decoded.signatureValue == BitString(b"\xab" * 8)
    assert inside.extensions[0].critical is True
    assert inside.extensions[2].critical is False
    assert inside.extensions[3].extnValue == b"\xff"


def test_a_field_is_read_once(decoded):
    assert decoded.tbsCertificate is decoded.tbsCertificate
    assert "tbsCertificate" not in vars(Certificate.decode(CERTIFICATE))


def test_what_was_decoded_is_encoded_to_the_same_octets(decoded):
    assert decoded.encode() == decoded.der == CERTIFICATE
    assert decoded.tbsCertificate.der == decoded.tbsCertificate.encode() == tbs()
    assert decoded.tbsCertificate.extensions.der == sequence(*EXTENSIONS)
    assert decoded.tbsCertificate.extensions[1].der == EXTENSIONS[1]


def test_lists_are_sequences(decoded):
    extensions = decoded.tbsCertificate.extensions
    assert len(extensions) == 4
    assert extensions[-1] == extensions[3] == list(extensions)[3]
    assert extensions[1:3] == (extensions[1], extensions[2])
    assert [e.extnID for e in reversed(extensions)][0] == "1.2.3.4"
    assert extensions[2] in extensions and extensions.index(extensions[2]) == 2
    assert extensions == list(extensions) and extensions == tuple(extensions) and extensions != []
    for wrong in (4, -5, 2**40):
        with pytest.raises(IndexError):
            extensions[wrong]
    with pytest.raises(TypeError):
        extensions["0"]


def test_extensions_are_found_and_decoded(decoded):
    extensions = decoded.tbsCertificate.extensions
    names = extensions.find("2.5.29.17").decoded
    assert type(names) is orvelasn1.GeneralNames
    assert [(n.choice, n.value) for n in names] == [
        ("dNSName", "www.example.org"),
        ("iPAddress", b"\xc0\x00\x02\x01"),
        ("uniformResourceIdentifier", "https://example.org/"),
    ]
    constraints = extensions[0].decoded
    assert (constraints.cA, constraints.pathLenConstraint) == (True, 0)
    assert extensions[1].decoded.set == (5, 6)
    assert extensions[3].decoded is None
    assert extensions.find("2.5.29.99") is None
    broken = Certificate.decode(certificate(extensions=[sequence(element(0x06, "551D13"), element(0x04, "02"))]))
    with pytest.raises(orvelasn1.Fault):
        broken.tbsCertificate.extensions[0].decoded


def test_other_fields_that_an_identifier_defines(decoded):
    key = decoded.tbsCertificate.subjectPublicKeyInfo.algorithm
    assert key.decoded.choice == "namedCurve" and key.decoded.value == "1.2.840.10045.3.1.7"
    assert decoded.signatureAlgorithm.decoded is None
    request = orvelasn1.Attribute.decode(
        sequence(element(0x06, "2A864886F70D01090E"), element(0x31, sequence(*EXTENSIONS)))
    )
    assert request.decoded[0] == decoded.tbsCertificate.extensions
    with pytest.raises(AttributeError):
        decoded.decoded


def test_choices(decoded):
    names = decoded.tbsCertificate.extensions[2].decoded
    assert names[0].dNSName == "www.example.org"
    assert names[0].iPAddress is None
    with pytest.raises(AttributeError):
        names[0].nothing
    assert orvelasn1.CertStatus.decode(b"\x80\x00").choice == "good"
    assert orvelasn1.CertStatus.decode(b"\x80\x00").value is None
    revoked = orvelasn1.CertStatus.decode(
        element(0xA1, element(0x18, b"20300102030405Z"), element(0xA0, element(0x0A, "01")))
    )
    assert revoked.revoked.revocationTime == datetime(2030, 1, 2, 3, 4, 5, tzinfo=timezone.utc)
    assert revoked.revoked.revocationReason == 1


def test_names_have_texts(decoded):
    subject, issuer = decoded.tbsCertificate.subject, decoded.tbsCertificate.issuer
    assert str(subject) == "CN=Some One"
    assert issuer.rfc4514() == "CN=Example CA,C=DE"
    assert issuer.own_text() == "/c(19)=DE/cn(19)=Example CA"
    assert issuer[0][0].type == "2.5.4.6" and issuer[0][0].value == "DE" and issuer[0][0].valueTag == 0x13
    assert str(Certificate.decode(certificate(subject=name())).tbsCertificate.subject) == ""


@pytest.mark.parametrize(
    "tag, octets, text",
    [
        (0x0C, "C3A4F09F9880", "\u00e4\U0001f600"),
        (0x0C, "61FF62", "a\udcff" "b"),
        (0x13, "C4", "\udcc4"),
        (0x14, "C4", "\u00c4"),
        (0x1E, "00C4D83DDE00", "\u00c4\U0001f600"),
        (0x1E, "0041DC0042", "A\udcdc\udc00\udc42"),
        (0x1C, "0001F600", "\U0001f600"),
        (0x1C, "0041110000", "\udc00\udc41\udc11\udc00\udc00"),
        (0x02, "0A1B", b"\x0a\x1b"),
        (0x9F - 0x10, "00", b"\0"),
    ],
)
def test_values_of_names(tag, octets, text):
    decoded = orvelasn1.AttributeTypeAndValue.decode(attribute(COMMON_NAME, tag, bytes.fromhex(octets)))
    assert decoded.value == text
    assert decoded.valueTag == tag
    use(decoded)


@pytest.mark.parametrize(
    "octets, number",
    [
        ("00", 0), ("01", 1), ("7F", 127), ("0080", 128), ("80", -128), ("FF", -1), ("FF7F", -129),
        ("00FFFFFFFFFFFFFFFF", 2**64 - 1), ("7FFFFFFFFFFFFF", 2**55 - 1), ("80000000000000", -(2**55)),
        ("8000000000000000", -(2**63)), ("00" + "FF" * 40, 2**320 - 1), ("80" + "00" * 40, -(2**327)),
    ],
)
def test_integers(octets, number):
    assert orvelasn1.CRLNumber.decode(element(0x02, octets)) == number
    assert Certificate.decode(certificate(serial=octets)).tbsCertificate.serialNumber == number
    assert orvelasn1.encode("CRLNumber", number) == element(0x02, octets)


@pytest.mark.parametrize(
    "tag, text, time",
    [
        (0x17, "490101000000Z", (2049, 1, 1)), (0x17, "500101000000Z", (1950, 1, 1)),
        (0x17, "2001311200Z", (2020, 1, 31, 12)), (0x17, "200131120000+0130", (2020, 1, 31, 10, 30)),
        (0x18, "00010101000000Z", (1, 1, 1)), (0x18, "99991231235959Z", (9999, 12, 31, 23, 59, 59)),
        (0x18, "19000228235959Z", (1900, 2, 28, 23, 59, 59)), (0x18, "20000229000000Z", (2000, 2, 29)),
    ],
)
def test_times(tag, text, time):
    validity = orvelasn1.Validity.decode(sequence(element(tag, text.encode()), element(0x17, b"490101000000Z")))
    assert validity.notBefore == datetime(*time, tzinfo=timezone.utc)


@pytest.mark.parametrize(
    "tag, octets",
    [(0x17, b"200230000000Z"), (0x17, b"tomorrow"), (0x18, b"20200101000000"), (0x18, b"00000101000000Z"),
     (0x18, b"00010101000000+0100"), (0x18, b"99991231235959-0001")],
)
def test_a_time_that_is_none_is_an_exception_when_it_is_read(tag, octets):
    validity = orvelasn1.Validity.decode(sequence(element(0x17, b"490101000000Z"), element(tag, octets)))
    assert validity.notBefore.year == 2049
    with pytest.raises(orvelasn1.Unreadable) as caught:
        validity.notAfter
    assert caught.value.octets == octets
    assert validity.to_dict()["notAfter"]["value"] == octets.decode()
    use(validity)


@pytest.mark.parametrize("octets", [b"", b"\xff", b"200101\0"])
def test_octets_that_no_time_has_are_a_fault(octets):
    with pytest.raises(orvelasn1.Fault) as caught:
        orvelasn1.Validity.decode(sequence(element(0x17, b"490101000000Z"), element(0x17, octets)))
    assert caught.value.path == "notAfter.utcTime"


def test_types_are_found_by_all_their_names():
    for called in ("certificate", "Certificate", "pki_Certificate", "CERTIFICATE"):
        assert type(orvelasn1.decode(called, CERTIFICATE)) is Certificate
    assert orvelasn1.type_named("tbs-certificate") is orvelasn1.TBSCertificate
    assert orvelasn1.type_named("crl") is orvelasn1.CertificateList
    assert orvelasn1.type_named("rsassa_pss_params") is orvelasn1.RSASSA_PSS_params
    for wrong in ("", "nothing", "Name", "ContentInfoX"):
        with pytest.raises(LookupError):
            orvelasn1.decode(wrong, CERTIFICATE)
    with pytest.raises(AttributeError):
        orvelasn1.Nothing


def test_only_types_that_end_no_process_are_there():
    for type_name in orvelasn1.types():
        type_ = orvelasn1.type_named(type_name)._type
        assert type_.is_form or type_.name not in (
            "Certificate", "Name", "ContentInfo", "RDNSequence", "GeneralName", "PFX"
        )
    assert orvelasn1.ContentInfo._type.record == "pki_ContentInfo"
    assert {"DssParms", "SignedPublicKeyAndChallenge", "CardInfo", "INTEGER"} < set(orvelasn1.types())


def test_no_field_is_hidden_by_a_method():
    for type_name in orvelasn1.types():
        class_ = orvelasn1.type_named(type_name)
        own = set(getattr(class_, "fields", ()))
        assert not own & (set(dir(class_.__base__)) | {"valueTag"}), type_name
        assert not set(getattr(class_, "alternatives", ())) & set(dir(orvelasn1.Choice)), type_name


def test_decoding_where_more_follows():
    decoded, end = Certificate.decode_first(b"--" + CERTIFICATE + b"more", 2)
    assert decoded == Certificate.decode(CERTIFICATE) and end == 2 + len(CERTIFICATE)
    number, end = orvelasn1.INTEGER.decode_first(b"\x02\x01\x05\x00")
    assert (number, end) == (5, 3)
    with pytest.raises(orvelasn1.Fault) as caught:
        Certificate.decode_first(b"--" + b"\x30\x01", 2)
    assert caught.value.offset == 2
    for wrong in (-1, 5, 2**70):
        with pytest.raises(ValueError):
            Certificate.decode_first(b"1234", wrong)


def test_ber_is_read_and_der_is_written():
    indefinite = b"\x30\x80" + element(0x17, b"200131120000Z") * 2 + b"\0\0"
    validity = orvelasn1.Validity.decode(indefinite)
    assert validity.encode() == validity.der == sequence(element(0x17, b"200131120000Z") * 2)


def test_what_is_signed_stays_as_it_was_read():
    inside = tbs()
    assert inside[:2] == b"\x30\x82"
    signed = b"\x30\x80" + inside[4:] + b"\0\0"
    decoded = Certificate.decode(sequence(signed, ECDSA_AND_SIGNATURE))
    assert decoded.tbsCertificate.der == signed
    assert decoded.tbsCertificate.encode() == inside


ECDSA_AND_SIGNATURE = sequence(element(0x06, "2A8648CE3D040302")) + element(0x03, "00AB")


def test_timestamps():
    one = b"\0" + b"\x22" * 32 + (1577836800123).to_bytes(8, "big") + b"\0\0" + b"\x04\x03" + b"\0\x02\x30\x00"
    both = b"".join(len(part).to_bytes(2, "big") + part for part in (one, b"\x01rest"))
    octets = element(0x04, len(both).to_bytes(2, "big") + both)
    first, second = timestamps = orvelasn1.SignedCertificateTimestampList.decode(octets)
    assert first.logID == b"\x22" * 32 and first.signature == b"\x30\x00"
    assert (first.hashAlgorithm, first.signatureAlgorithm, first.extensions, first.opaque) == (4, 3, None, None)
    assert first.time == datetime(2020, 1, 1, 0, 0, 0, 123000, tzinfo=timezone.utc)
    assert (second.version, second.opaque) == (1, b"rest")
    assert timestamps.encode() == octets
    use(timestamps)


def test_records_show_what_they_are(decoded):
    line = repr(decoded)
    for part in ("<Certificate tbsCertificate=<TBSCertificate version=2 serialNumber=2587 ", "'CN=Some One'",
                 "notAfter=2050-01-01T00:00:00+00:00", "1.2.840.10045.4.3.2"):
        assert part in line
    assert len(line) < 2000
    assert repr(decoded.tbsCertificate.extensions[1]) == (
        "<Extension extnID=2.5.29.15 (id_ce_keyUsage) critical=True extnValue=<03020106>>"
    )
    assert dict(decoded.tbsCertificate.validity) == {
        "notBefore": decoded.tbsCertificate.validity.notBefore,
        "notAfter": decoded.tbsCertificate.validity.notAfter,
    }


def test_records_are_compared_by_their_octets(decoded):
    same, other = Certificate.decode(CERTIFICATE), Certificate.decode(certificate(serial="01"))
    assert decoded == same and hash(decoded) == hash(same) and decoded != other
    assert decoded != decoded.tbsCertificate and decoded != 1
    assert len({decoded, same, other}) == 2
    assert decoded.tbsCertificate.validity == other.tbsCertificate.validity


def test_identifiers_say_the_types_of_values():
    assert orvelasn1.defined_by("2.5.29.17") is orvelasn1.GeneralNames
    assert orvelasn1.defined_by("1.2.3") is None
    assert orvelasn1.defined_by(ObjectIdentifier((2, 5, 29, 15))) is orvelasn1.KeyUsage
