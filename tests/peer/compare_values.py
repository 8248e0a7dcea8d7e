"""What python3-cryptography says of a part of an object, in the form that the tool's JSON has."""
import datetime
import re
import warnings

from cryptography import x509
from cryptography.hazmat.primitives import serialization
from cryptography.hazmat.primitives.asymmetric import ec, rsa
from cryptography.hazmat.primitives.asymmetric.dsa import DSAPublicKey
from cryptography.x509 import ocsp

import compare_der as der
from compare_der import Refused, Unknown

warnings.simplefilter("ignore")  # it warns of what RFC 5280 forbids, and reads it

# The last two are no public attributes where the key agrees on none.
KEY_USAGES = {
    "digitalSignature": "digital_signature", "nonRepudiation": "content_commitment",
    "keyEncipherment": "key_encipherment", "dataEncipherment": "data_encipherment",
    "keyAgreement": "key_agreement", "keyCertSign": "key_cert_sign", "cRLSign": "crl_sign",
    "encipherOnly": "_encipher_only", "decipherOnly": "_decipher_only"}
CPS, NOTICE = "1.3.6.1.5.5.7.2.1", "1.3.6.1.5.5.7.2.2"


def load(function, octets):
    """Returns what a function of cryptography makes of these octets."""
    try:
        return function(octets)
    except Exception as error:  # of many types
        raise Refused(str(error)) from error


def attempt(object, attribute):
    """Returns an attribute of an object, which is read only now."""
    return load(lambda name: getattr(object, name), attribute)


def utc(object, attribute):
    """Returns the moment that an attribute holds, as recent releases and as old ones have it."""
    if hasattr(type(object), attribute + "_utc"):
        return attempt(object, attribute + "_utc")
    moment = attempt(object, attribute)
    return moment and moment.replace(tzinfo=datetime.timezone.utc)


def without_null(members):
    return {name: value for name, value in members.items() if value is not None}


def hexadecimal(octets):
    return None if octets is None else octets.hex().upper()


def attribute(value):
    return (value.oid.dotted_string, value._type.value,
            value.value if isinstance(value.value, str) else hexadecimal(value.value))


def name(value):
    """Returns the relative names of a Name, which are sets of attributes: identifier, tag and value."""
    return [sorted(attribute(one) for one in rdn) for rdn in value.rdns]


STRINGS = {0x0C: "utf-8", 0x13: "ascii", 0x16: "ascii", 0x1A: "ascii", 0x14: "latin-1",
           0x1E: "utf-16-be", 0x1C: "utf-32-be"}


def string(octets):
    """Returns the text of a character string in DER; None of anything else."""
    return der.content(octets).decode(STRINGS[octets[0]]) if octets[0] in STRINGS else None


def general_name(value):
    kinds = {x509.OtherName: 0, x509.RFC822Name: 1, x509.DNSName: 2, x509.DirectoryName: 4,
             x509.UniformResourceIdentifier: 6, x509.IPAddress: 7, x509.RegisteredID: 8}
    members = {"kind": kinds[type(value)]}
    if isinstance(value, x509.OtherName):
        return without_null({**members, "type": value.type_id.dotted_string,
                             "value": hexadecimal(value.value), "text": string(value.value)})
    if isinstance(value, x509.DirectoryName):
        return {**members, "value": name(value.value)}
    if isinstance(value, x509.RegisteredID):
        return {**members, "value": value.value.dotted_string}
    return {**members, "value": str(value.value)}


def general_names(values):
    return None if values is None else [general_name(value) for value in values]


def qualifier(value):
    if isinstance(value, str):
        return {"policyQualifierId": CPS, "decoded": value}
    reference = value.notice_reference
    return {"policyQualifierId": NOTICE, "decoded": without_null({
        "noticeRef": reference and {"organization": reference.organization,
                                    "noticeNumbers": reference.notice_numbers},
        "explicitText": value.explicit_text})}


def policy(value):
    qualifiers = value.policy_qualifiers
    return without_null({
        "policyIdentifier": value.policy_identifier.dotted_string,
        "policyQualifiers": None if qualifiers is None else [qualifier(one) for one in qualifiers]})


REASON_FLAGS = ("unused", "keyCompromise", "cACompromise", "affiliationChanged", "superseded",
                "cessationOfOperation", "certificateHold", "privilegeWithdrawn", "aACompromise")


def reasons(flags):
    if flags is None:
        return None
    names = {flag.value for flag in flags}
    return [flag for flag in REASON_FLAGS if flag in names]


def point_name(point):
    return {"fullName": general_names(point.full_name),
            "nameRelativeToCRLIssuer": point.relative_name and sorted(
                attribute(one) for one in point.relative_name)}


def distribution_point(point):
    return without_null({**point_name(point), "reasons": reasons(point.reasons),
                         "cRLIssuer": general_names(point.crl_issuer)})


def issuing_distribution_point(point):
    names = without_null(point_name(point))
    return without_null({
        "distributionPoint": names or None,
        "onlyContainsUserCerts": point.only_contains_user_certs,
        "onlyContainsCACerts": point.only_contains_ca_certs,
        "onlySomeReasons": reasons(point.only_some_reasons),
        "indirectCRL": point.indirect_crl,
        "onlyContainsAttributeCerts": point.only_contains_attribute_certs})


def access_descriptions(values):
    return [{"accessMethod": value.access_method.dotted_string,
             "accessLocation": general_name(value.access_location)} for value in values]


def timestamps(values):
    return [without_null({
        "version": value.version.value, "logID": hexadecimal(value.log_id),
        "timestamp": milliseconds(value.timestamp),
        "extensions": hexadecimal(value.extension_bytes) or None,
        "signatureAlgorithm": f"{value.signature_algorithm.name.lower()} with "
                              f"{value.signature_hash_algorithm.name}",
        "signature": hexadecimal(value.signature)}) for value in values]


def milliseconds(moment):
    since = moment.replace(tzinfo=None) - datetime.datetime(1970, 1, 1)
    return since // datetime.timedelta(milliseconds=1)


def key_usage(value):
    return [usage for usage, member in KEY_USAGES.items() if getattr(value, member)]


READERS = {
    x509.AuthorityInformationAccess: access_descriptions,
    x509.AuthorityKeyIdentifier: lambda value: without_null({
        "keyIdentifier": hexadecimal(value.key_identifier),
        "authorityCertIssuer": general_names(value.authority_cert_issuer),
        "authorityCertSerialNumber": value.authority_cert_serial_number}),
    x509.BasicConstraints: lambda value: without_null({
        "cA": value.ca, "pathLenConstraint": value.path_length}),
    x509.CRLDistributionPoints: lambda value: [distribution_point(one) for one in value],
    x509.CRLNumber: lambda value: value.crl_number,
    x509.CRLReason: lambda value: value.reason.value,
    x509.CertificateIssuer: general_names,
    x509.CertificatePolicies: lambda value: [policy(one) for one in value],
    x509.DeltaCRLIndicator: lambda value: value.crl_number,
    x509.ExtendedKeyUsage: lambda value: [{"keyPurposeId": one.dotted_string} for one in value],
    x509.FreshestCRL: lambda value: [distribution_point(one) for one in value],
    x509.InhibitAnyPolicy: lambda value: value.skip_certs,
    x509.InvalidityDate: lambda value: utc(value, "invalidity_date"),
    x509.IssuerAlternativeName: general_names,
    x509.IssuingDistributionPoint: issuing_distribution_point,
    x509.KeyUsage: key_usage,
    x509.NameConstraints: lambda value: without_null({
        part: names and [{"base": general_name(one)} for one in names]
        for part, names in (("permittedSubtrees", value.permitted_subtrees),
                            ("excludedSubtrees", value.excluded_subtrees))}),
    x509.OCSPNoCheck: lambda value: True,
    x509.OCSPNonce: lambda value: hexadecimal(value.nonce),
    x509.PolicyConstraints: lambda value: without_null({
        "requireExplicitPolicy": value.require_explicit_policy,
        "inhibitPolicyMapping": value.inhibit_policy_mapping}),
    x509.PrecertPoison: lambda value: True,
    x509.PrecertificateSignedCertificateTimestamps: timestamps,
    x509.SignedCertificateTimestamps: timestamps,
    x509.SubjectAlternativeName: general_names,
    x509.SubjectInformationAccess: access_descriptions,
    x509.SubjectKeyIdentifier: lambda value: hexadecimal(value.digest),
    x509.TLSFeature: lambda value: [one.value for one in value],
}


def in_certificate(extension):
    return x509.load_der_x509_certificate(der.certificate(extensions=[extension])).extensions


def in_crl(extension):
    return x509.load_der_x509_crl(der.crl(extensions=[extension])).extensions


def in_crl_entry(extension):
    return x509.load_der_x509_crl(der.crl(entries=[der.crl_entry(extension)]))[0].extensions


def in_ocsp_request(extension):
    return ocsp.load_der_ocsp_request(der.ocsp_request(extensions=[extension])).extensions


# What the peers do not know, and is no more than a string or an INTEGER.
ELEMENTS = {"1.3.6.1.4.1.311.20.2": string, "1.3.6.1.4.1.311.21.1": der.integer}
# What has the syntax of another extension.
LIKE = {"1.3.6.1.4.1.311.21.10": bytes.fromhex("0603551D20")}


def extension_value(extension, place):
    """Returns the value of an Extension that stands in such a place: in_certificate and so on."""
    parts = der.inside(extension)
    element = ELEMENTS.get(der.dotted(parts[0]))
    if element is not None:
        return element(der.content(parts[-1]))
    identifier = LIKE.get(der.dotted(parts[0]), parts[0])
    value = load(lambda octets: place(octets)[0].value, der.wrap(0x30, identifier, parts[-1]))
    reader = READERS.get(type(value))
    if reader is None:
        raise Unknown("an extension")
    return reader(value)


def reason_of(entry):
    """Returns why the certificate of an entry was revoked; None where that is not said."""
    extensions = [one.value.reason.value for one in attempt(entry, "extensions")
                  if isinstance(one.value, x509.CRLReason)]
    return extensions[0] if extensions else None


def subject(octets):
    """Returns the relative names of a Name, see name()."""
    return load(lambda one: name(x509.load_der_x509_certificate(one).subject),
                der.certificate(subject=octets))


# The attributes that have a short name in RFC 4514, 3. Others are written in other ways by cryptography.
SHORT = ("2.5.4.3", "2.5.4.7", "2.5.4.8", "2.5.4.10", "2.5.4.11", "2.5.4.6", "2.5.4.9",
         "0.9.2342.19200300.100.1.25", "0.9.2342.19200300.100.1.1")


def subject_text(octets):
    """Returns the text of a Name by RFC 4514, of one whose relative names have one attribute each."""
    found = load(lambda one: x509.load_der_x509_certificate(one).subject,
                 der.certificate(subject=octets))
    if any(len(der.inside(rdn)) != 1 for rdn in der.inside(octets)) or \
            any(one.oid.dotted_string not in SHORT for one in found):
        raise Refused("a name without one text")
    return found.rfc4514_string()


PSS = der.wrap(6, bytes.fromhex("2A864886F70D01010A"))
RSA = der.wrap(0x30, der.wrap(6, bytes.fromhex("2A864886F70D010101")), der.NULL)


def public_key(octets):
    """Returns what the tool says of a SubjectPublicKeyInfo as `key`."""
    algorithm, bits = der.inside(octets)
    if der.inside(algorithm)[0] == PSS:
        return {**public_key(der.wrap(0x30, RSA, bits)), "kind": "RSA (rsassa-pss)"}
    key = load(serialization.load_der_public_key, octets)
    if isinstance(key, rsa.RSAPublicKey):
        numbers = key.public_numbers()
        return {"kind": "RSA", "bits": key.key_size, "exponent": numbers.e, "modulus": numbers.n}
    if isinstance(key, ec.EllipticCurvePublicKey):
        point = key.public_bytes(serialization.Encoding.X962,
                                 serialization.PublicFormat.UncompressedPoint)
        return {"kind": "EC", "bits": key.key_size, "curve": key.curve.name,
                "point": hexadecimal(point)}
    if isinstance(key, DSAPublicKey):
        return {"kind": "DSA", "bits": key.key_size, "point": key.public_numbers().y}
    raw = key.public_bytes(serialization.Encoding.Raw, serialization.PublicFormat.Raw)
    kind = type(key).__name__.lstrip("_").replace("PublicKey", "")
    return {"kind": re.sub(r"^ML(DSA|KEM)", r"ML-\1-", kind), "point": hexadecimal(raw)}
