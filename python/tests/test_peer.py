"""The same certificates and revocation lists as `cryptography` reads them."""

from datetime import timezone

import orvelasn1
import pytest
from support import certificates, files

x509 = pytest.importorskip("cryptography.x509")
serialization = pytest.importorskip("cryptography.hazmat.primitives.serialization")

# It warns of certificates that are not as they should be, such as many of the corpus are.
pytestmark = pytest.mark.filterwarnings("ignore::UserWarning")

REFUSALS = (ValueError, x509.DuplicateExtension, x509.UnsupportedGeneralNameType)


def utc(time):
    return time.replace(tzinfo=timezone.utc)


def attributes_of(name):
    """Returns the types and values of a name of this package, and of cryptography."""
    if isinstance(name, x509.Name):
        return [[(a.oid.dotted_string, a.value) for a in relative] for relative in name.rdns]
    return [[(str(a.type), a.value) for a in relative] for relative in name]


def in_order(name):
    """A relative name is a set, in which it keeps the same attribute once."""
    return [sorted(set(relative), key=repr) for relative in name]


def read(load, octets):
    """Returns what cryptography reads; None where it refuses."""
    try:
        return load(octets)
    except (ValueError, x509.InvalidVersion):
        return None


def same_name(own, of_peer):
    """Compares two names; those that cryptography refuses, when it looks at them, are not compared."""
    try:
        expected = attributes_of(of_peer())
    except (ValueError, KeyError):  # the latter for the tag of a value that it does not know
        return
    assert in_order(attributes_of(own)) == in_order(expected)


def check_names(names, of_peer):
    for own, other in zip(names, of_peer):
        if own.choice in ("dNSName", "rfc822Name", "uniformResourceIdentifier"):
            # It takes UTF-8 where only ASCII may be.
            assert own.value.encode("ascii", "surrogateescape") == other.value.encode()
        elif own.choice == "iPAddress":
            assert own.value == other.value.packed
        elif own.choice == "registeredID":
            assert own.value == other.value.dotted_string
        elif own.choice == "otherName":
            assert own.value.type == other.type_id.dotted_string and own.value.value == other.value
        elif own.choice == "directoryName":
            assert in_order(attributes_of(own.value)) == in_order(attributes_of(other.value))


def check_extension(own, other):
    """Compares what is in an extension that both know."""
    assert own.extnID == other.oid.dotted_string
    assert own.critical == other.critical
    value = other.value
    if isinstance(value, x509.UnrecognizedExtension):
        assert own.extnValue == value.value
        return 0
    if isinstance(value, x509.BasicConstraints):
        assert (own.decoded.cA, own.decoded.pathLenConstraint) == (value.ca, value.path_length)
    elif isinstance(value, x509.SubjectKeyIdentifier):
        assert own.decoded == value.digest
    elif isinstance(value, x509.AuthorityKeyIdentifier):
        assert own.decoded.keyIdentifier == value.key_identifier
        assert own.decoded.authorityCertSerialNumber == value.authority_cert_serial_number
    elif isinstance(value, x509.ExtendedKeyUsage):
        assert list(own.decoded) == [purpose.dotted_string for purpose in value]
    elif isinstance(value, x509.KeyUsage):
        bits = own.decoded.set
        assert (0 in bits, 5 in bits, 6 in bits) == (value.digital_signature, value.key_cert_sign, value.crl_sign)
    elif isinstance(value, (x509.SubjectAlternativeName, x509.IssuerAlternativeName)):
        check_names(own.decoded, list(value))
        assert len(own.decoded) == len(list(value))
    elif isinstance(value, x509.CertificatePolicies):
        assert [p.policyIdentifier for p in own.decoded] == [p.policy_identifier.dotted_string for p in value]
    elif isinstance(value, x509.AuthorityInformationAccess):
        assert [a.accessMethod for a in own.decoded] == [a.access_method.dotted_string for a in value]
        check_names([a.accessLocation for a in own.decoded], [a.access_location for a in value])
    elif isinstance(value, x509.PrecertificateSignedCertificateTimestamps):
        assert [(t.logID, t.time) for t in own.decoded] == [(t.log_id, utc(t.timestamp)) for t in value]
    elif isinstance(value, x509.CRLNumber):
        assert own.decoded == value.crl_number
    else:
        return 0
    return 1


def check_extensions(own, of_peer):
    try:
        expected = list(of_peer())
    except REFUSALS:  # in parts of an extension at which this package does not look by itself
        return 0
    assert len(own or ()) == len(expected)
    return sum(check_extension(*pair) for pair in zip(own or (), expected))


def test_certificates(tmp_path):
    compared = extensions = refused = 0
    for octets in certificates(tmp_path).values():
        peer = read(x509.load_der_x509_certificate, octets)
        try:
            own = orvelasn1.Certificate.decode(octets)
        except orvelasn1.Fault:
            refused += 1
            continue
        assert own.encode() == octets
        if peer is None:
            continue
        inside = own.tbsCertificate
        assert inside.serialNumber == peer.serial_number
        assert own.tbsCertificate.der == peer.tbs_certificate_bytes
        assert bytes(own.signatureValue) == peer.signature
        assert own.signatureAlgorithm.algorithm == peer.signature_algorithm_oid.dotted_string
        assert (inside.version or 0) == peer.version.value
        assert inside.validity.notBefore == utc(peer.not_valid_before)
        assert inside.validity.notAfter == utc(peer.not_valid_after)
        same_name(inside.issuer, lambda peer=peer: peer.issuer)
        same_name(inside.subject, lambda peer=peer: peer.subject)
        extensions += check_extensions(inside.extensions, lambda peer=peer: peer.extensions)
        try:
            key = peer.public_key()
        except (ValueError, TypeError):
            pass
        except Exception as error:
            assert type(error).__name__ == "UnsupportedAlgorithm"
        else:
            spki = key.public_bytes(serialization.Encoding.DER, serialization.PublicFormat.SubjectPublicKeyInfo)
            if inside.subjectPublicKeyInfo.der == spki:
                compared += 1
    total = len(certificates(tmp_path))
    assert refused <= total // 100 + 1
    assert compared >= total // 2 and extensions >= total


def test_revocation_lists():
    crls = files("crls")
    for octets in crls.values():
        peer = read(x509.load_der_x509_crl, octets)
        try:
            own = orvelasn1.CertificateList.decode(octets)
        except orvelasn1.Fault:
            continue
        if peer is None:
            continue
        inside = own.tbsCertList
        assert inside.der == peer.tbs_certlist_bytes
        assert inside.thisUpdate == utc(peer.last_update)
        assert (inside.nextUpdate is None) == (peer.next_update is None)
        same_name(inside.issuer, lambda peer=peer: peer.issuer)
        entries = list(peer)
        assert [(e.userCertificate, e.revocationDate) for e in inside.revokedCertificates or ()] == [
            (e.serial_number, utc(e.revocation_date)) for e in entries
        ]
        check_extensions(inside.crlExtensions, lambda peer=peer: peer.extensions)
