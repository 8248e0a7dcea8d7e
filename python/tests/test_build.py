"""Records that are made of values of Python."""

from datetime import datetime, timedelta, timezone

import orvelasn1
import pytest
from orvelasn1 import BitString, Certificate, Extension, GeneralName, Missing, Validity
from support import CERTIFICATE, COMMON_NAME, ECDSA, EXTENSIONS, KEY, attribute, element, name, sequence, tbs

FROM = datetime(2020, 1, 31, 12, tzinfo=timezone.utc)
UNTIL = datetime(2050, 1, 1, tzinfo=timezone.utc)
STAMP = orvelasn1.Timestamp(0, b"\x22" * 32, 1577836800123, None, 4, 3, b"\x30\x00")


def test_a_certificate():
    made = Certificate(
        tbsCertificate=orvelasn1.TBSCertificate(
            version=2,
            serialNumber=0x0A1B,
            signature={"algorithm": "1.2.840.10045.4.3.2"},
            issuer=[
                [{"type": "2.5.4.6", "value": "DE"}],
                [{"type": "2.5.4.3", "value": "Example CA", "valueTag": 0x13}],
            ],
            validity=Validity(notBefore=FROM, notAfter=UNTIL),
            subject="CN=Some One",
            subjectPublicKeyInfo=orvelasn1.SubjectPublicKeyInfo.decode(KEY),
            extensions=[
                Extension(
                    extnID="2.5.29.19", critical=True,
                    extnValue=orvelasn1.BasicConstraints(cA=True, pathLenConstraint=0),
                ),
                Extension(
                    extnID="2.5.29.15", critical=True, extnValue=orvelasn1.encode("KeyUsage", BitString.of(5, 6))
                ),
                Extension(
                    extnID="2.5.29.17", critical=False,
                    extnValue=orvelasn1.GeneralNames([
                        GeneralName(dNSName="www.example.org"),
                        ("iPAddress", b"\xc0\x00\x02\x01"),
                        {"uniformResourceIdentifier": "https://example.org/"},
                    ]),
                ),
                {"extnID": "1.2.3.4", "extnValue": b"\xff"},
            ],
        ),
        signatureAlgorithm=orvelasn1.AlgorithmIdentifier.decode(ECDSA),
        signatureValue=b"\xab" * 8,
    )
    assert made.encode() == CERTIFICATE
    assert made == Certificate.decode(CERTIFICATE)


def test_a_record_with_some_fields_changed():
    decoded = Certificate.decode(CERTIFICATE)
    inside = decoded.tbsCertificate
    other = inside.replace(serialNumber=1, extensions=None)
    assert other.der == tbs(serial="01", extensions=None)
    assert inside.serialNumber == 0x0A1B
    attribute_value = inside.issuer[0][0].replace(value="FR")
    assert attribute_value.der == attribute("550406", 0x13, b"FR")


def test_what_is_missing_is_named():
    with pytest.raises(Missing) as caught:
        Validity(notBefore=FROM)
    assert (caught.value.path, str(caught.value)) == ("notAfter", "Validity: notAfter is missing")
    with pytest.raises(Missing) as caught:
        Certificate(
            tbsCertificate={"serialNumber": 1, "signature": {"algorithm": "1.2"}, "issuer": "",
                            "validity": {"notBefore": FROM}},
            signatureAlgorithm=ECDSA, signatureValue=b"",
        )
    assert caught.value.path == "tbsCertificate.validity.notAfter"
    with pytest.raises(Missing):
        GeneralName(dNSName=None)


@pytest.mark.parametrize(
    "time, octets",
    [
        (datetime(1950, 1, 1, tzinfo=timezone.utc), element(0x17, b"500101000000Z")),
        (datetime(2049, 12, 31, 23, 59, 59, 999999, tzinfo=timezone.utc), element(0x17, b"491231235959Z")),
        (datetime(1949, 12, 31, tzinfo=timezone.utc), element(0x18, b"19491231000000Z")),
        (datetime(1, 1, 1, tzinfo=timezone.utc), element(0x18, b"00010101000000Z")),
        (datetime(2020, 1, 1, 1, tzinfo=timezone(timedelta(hours=2))), element(0x17, b"191231230000Z")),
    ],
)
def test_times(time, octets):
    assert orvelasn1.encode("Time", time) == octets


def test_times_that_cannot_be_written():
    with pytest.raises(ValueError):
        orvelasn1.encode("Time", datetime(2020, 1, 1))
    with pytest.raises(ValueError):
        orvelasn1.encode("UTCTime", datetime(2050, 1, 1, tzinfo=timezone.utc))
    with pytest.raises((ValueError, OverflowError)):
        orvelasn1.encode("Time", datetime(1, 1, 1, tzinfo=timezone(timedelta(hours=2))))


@pytest.mark.parametrize(
    "fields, octets",
    [
        ({"type": "2.5.4.6", "value": "DE"}, attribute("550406", 0x13, b"DE")),
        ({"type": "2.5.4.3", "value": "\u00e4"}, attribute(COMMON_NAME, 0x0C, b"\xc3\xa4")),
        ({"type": "1.2.840.113549.1.9.1", "value": "a@b"}, attribute("2A864886F70D010901", 0x16, b"a@b")),
        ({"type": "2.5.4.3", "value": "\u00e4", "valueTag": 0x1E}, attribute(COMMON_NAME, 0x1E, b"\0\xe4")),
        ({"type": "2.5.4.3", "value": b"\x02\x01\x05"}, attribute(COMMON_NAME, 0x02, b"\x05")),
        ({"type": "2.5.4.3", "value": b"\x05", "valueTag": 2}, attribute(COMMON_NAME, 0x02, b"\x05")),
    ],
)
def test_attributes_of_names(fields, octets):
    made = orvelasn1.AttributeTypeAndValue(**fields)
    assert made.der == octets


def test_names_are_made_of_their_text():
    assert orvelasn1.RDNSequence("CN=Some One,C=DE").der == name(
        attribute("550406", 0x13, b"DE"), attribute(COMMON_NAME, 0x0C, b"Some One")
    )
    assert orvelasn1.RDNSequence("") == orvelasn1.RDNSequence([]) and orvelasn1.RDNSequence("").der == b"\x30\0"
    for wrong in ("no name", "CN", "CN=a\0b", "CN=\ud800"):
        with pytest.raises(ValueError):
            orvelasn1.RDNSequence(wrong)


def test_a_set_is_written_in_the_order_of_der():
    first, second = attribute(COMMON_NAME, 0x0C, b"b"), attribute(COMMON_NAME, 0x0C, b"aa")
    decoded = [orvelasn1.AttributeTypeAndValue.decode(octets) for octets in (second, first)]
    assert orvelasn1.RelativeDistinguishedName(decoded).der == element(0x31, first, second)
    as_read = orvelasn1.RelativeDistinguishedName.decode(element(0x31, second, first))
    assert orvelasn1.RDNSequence([as_read]).der == sequence(element(0x31, second, first))


def test_choices():
    assert GeneralName(dNSName="a").der == GeneralName("dNSName", "a").der == element(0x82, b"a")
    assert GeneralName(directoryName="CN=a").der == element(0xA4, name(attribute(COMMON_NAME, 0x0C, b"a")))
    assert GeneralName(GeneralName(dNSName="a")).dNSName == "a"
    assert GeneralName(registeredID="1.2.3").der == element(0x88, "2A03")
    assert orvelasn1.CertStatus(good=None).der == b"\x80\0"
    other = GeneralName(otherName={"type": "1.2.3", "value": b"\x05\0"})
    assert other.der == element(0xA0, element(0x06, "2A03"), element(0xA0, b"\x05\0"))


def test_timestamps():
    made = orvelasn1.SignedCertificateTimestampList([STAMP, {"version": 1, "opaque": b"rest"}])
    one = "00" + "22" * 32 + "0000016F5E66E87B" + "0000" + "0403" + "00023000"
    assert made.der == element(0x04, "003A", "0031", one, "0005", b"\x01rest")
    assert made[0] == STAMP and made[1].opaque == b"rest"
    with_octets = STAMP._replace(extensions=b"abc", signature=b"s" * 60000)
    assert orvelasn1.SignedCertificateTimestampList([with_octets])[0] == with_octets
    assert orvelasn1.Extension(extnID="1.3.6.1.4.1.11129.2.4.2", extnValue=made).decoded == made
    for wrong in (STAMP._replace(logID=b"x"), STAMP._replace(timestamp=-1), STAMP._replace(timestamp=1 << 64),
                  STAMP._replace(version=256), STAMP._replace(signature=b"s" * 65536),
                  STAMP._replace(signature=b"s" * 65500), STAMP._replace(hashAlgorithm=256)):
        with pytest.raises(ValueError):
            orvelasn1.SignedCertificateTimestampList([wrong])
    with pytest.raises(orvelasn1.Fault):
        orvelasn1.SignedCertificateTimestampList([])


def test_what_the_library_refuses_is_not_made():
    with pytest.raises(orvelasn1.Fault):
        orvelasn1.AlgorithmIdentifier(algorithm="1.2.3", parameters=b"no element")
    with pytest.raises(orvelasn1.Fault):
        orvelasn1.encode("QCStatement", {"statementId": "1.2.3", "statementInfo": b"\x30\x05"})


@pytest.mark.parametrize(
    "make",
    [
        lambda: Validity(FROM, UNTIL), lambda: Validity(notBefore=1, notAfter=2), lambda: Validity(other=1),
        lambda: Validity(notBefore=FROM, notAfter=UNTIL, more=1), lambda: GeneralName(), lambda: GeneralName("a"),
        lambda: GeneralName(dNSName="a", rfc822Name="b"), lambda: GeneralName(nothing=1),
        lambda: GeneralName(dNSName=b"a"), lambda: GeneralName(iPAddress="1.2.3.4"), lambda: GeneralName(1, 2, 3),
        lambda: GeneralName(Validity(notBefore=FROM, notAfter=UNTIL)), lambda: orvelasn1.GeneralNames("abc"),
        lambda: orvelasn1.GeneralNames(b"abc"), lambda: orvelasn1.GeneralNames(5),
        lambda: orvelasn1.GeneralNames({"dNSName": "a"}), lambda: Extension(extnID=5, extnValue=b""),
        lambda: Extension(extnID="1.2", critical=1, extnValue=b""), lambda: Extension(extnID="1.2", extnValue="x"),
        lambda: orvelasn1.encode("INTEGER", True), lambda: orvelasn1.encode("INTEGER", 1.5),
        lambda: orvelasn1.encode("Validity", b""), lambda: orvelasn1.encode(1, 1), lambda: orvelasn1.Record(),
        lambda: orvelasn1.Choice(), lambda: orvelasn1.ListValue(), lambda: orvelasn1.KeyUsage(),
        lambda: orvelasn1.SignedCertificateTimestampList([b"x"]),
        lambda: orvelasn1.encode("SignedCertificateTimestampList", b"x"),
        lambda: orvelasn1.SignedCertificateTimestampList([{"more": 1}]),
        lambda: orvelasn1.SignedCertificateTimestampList([STAMP._replace(timestamp="1")]),
        lambda: orvelasn1.SignedCertificateTimestampList([STAMP._replace(signature=1)]),
        lambda: orvelasn1.AlgorithmIdentifier(algorithm="1.2", valueTag=2),
    ],
)
def test_arguments_of_other_types(make):
    with pytest.raises(TypeError):
        make()


@pytest.mark.parametrize(
    "make",
    [
        lambda: GeneralName(dNSName="\u00e4"), lambda: Extension(extnID="1", extnValue=b""),
        lambda: orvelasn1.AttributeTypeAndValue(type="2.5.4.3", value="a", valueTag=0x1F),
        lambda: orvelasn1.AttributeTypeAndValue(type="2.5.4.3", value="a", valueTag=-1),
        lambda: orvelasn1.AttributeTypeAndValue(type="2.5.4.3", value="a", valueTag="x"),
        lambda: orvelasn1.AttributeTypeAndValue(type="2.5.4.3", value="a", valueTag=2),
        lambda: orvelasn1.AttributeTypeAndValue(type="2.5.4.6", value="\u00e4"),
    ],
)
def test_values_that_cannot_be_written(make):
    with pytest.raises(ValueError):
        make()


def test_a_list_of_extensions_is_iterable_once():
    extensions = (Extension.decode(octets) for octets in EXTENSIONS)
    assert orvelasn1.Extensions(extensions).der == sequence(*EXTENSIONS)
