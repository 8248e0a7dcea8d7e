"""to_dict() has what the command-line tool shows as JSON.

Each member of to_dict() is a member of the tool's JSON, with an equal value. The tool has more: what it finds
out about a record. What differs is named here, in DIFFERENT.
"""

import json
import subprocess

import orvelasn1
import pytest
from support import CERTIFICATE, certificates, element, files, sequence, tbs, tool

# Members that the tool shows otherwise than their type alone says, by the type and the path in it.
DIFFERENT = {
    ("OCSPResponse", "responseStatus"),  # as a word
    ("CRLDistributionPoints", "[].distributionPoint"),  # without its name
    ("CRLDistributionPoints", "[].reasons"),  # as words
    ("NameConstraints", "permittedSubtrees[].base.value"),  # addresses with their mask
    ("NameConstraints", "excludedSubtrees[].base.value"),
    ("ExtKeyUsageSyntax", "[]"),  # with their names
    ("SignedCertificateTimestampList", "[].hashAlgorithm"),  # as words
    ("SignedCertificateTimestampList", "[].signatureAlgorithm"),
    ("Certificate", "tbsCertificate.validity.notAfter.time"),  # of a GeneralizedTime without seconds
}


def differences(own, other, path=""):
    """Goes through the paths at which a value is not part of another one."""
    if isinstance(own, dict) and isinstance(other, dict):
        for name, value in own.items():
            where = f"{path}.{name}" if path else name
            if name not in other:
                yield where
            else:
                yield from differences(value, other[name], where)
    elif isinstance(own, list) and isinstance(other, list) and len(own) == len(other):
        for value, of_other in zip(own, other):
            yield from differences(value, of_other, path + "[]")
    elif own != other or type(own) is not type(other):
        yield path


def unexpected(type_name, own, other):
    return [path for path in differences(own, other) if (type_name, path) not in DIFFERENT]


def shown(program, kind, paths):
    """Returns the tool's JSON of files, by their paths."""
    done = subprocess.run(
        [program, "show", "--json", "--type", kind, *map(str, paths)], capture_output=True, check=False
    )
    lines = [json.loads(line) for line in done.stdout.decode().splitlines()]
    return {line["file"]: line for line in lines if "error" not in line and line["element"] == 1}


@pytest.fixture(name="program", scope="session")
def fixture_program():
    program = tool()
    if program is None:
        pytest.skip("the command-line tool is not there: ORVELASN1_TOOL says where it is")
    return program


def compare(program, folder, kind, type_name, samples):
    paths = {}
    for index, octets in enumerate(samples):
        path = folder / f"{index}.der"
        path.write_bytes(octets)
        paths[str(path)] = octets
    lines = shown(program, kind, paths)
    compared = 0
    for path, octets in paths.items():
        try:
            decoded = orvelasn1.decode(type_name, octets)
        except orvelasn1.Fault:
            continue
        line = lines[path]
        assert unexpected(type_name, decoded.to_dict(), line) == []
        assert json.loads(json.dumps(decoded.to_dict())) == decoded.to_dict()
        compared += 1
        if type_name != "Certificate":
            continue
        of_tool = line["tbsCertificate"].get("extensions", [])
        for extension, other in zip(decoded.tbsCertificate.extensions or (), of_tool):
            try:
                value = extension.decoded
            except orvelasn1.Error:
                assert "malformed" in other
                continue
            if isinstance(value, orvelasn1.Value):
                assert unexpected(type(value).__name__, value.to_dict(), other["decoded"]) == []
    return compared


def test_certificates(program, tmp_path):
    samples = [CERTIFICATE, *certificates(tmp_path).values()]
    assert compare(program, tmp_path, "certificate", "Certificate", samples) >= 4


def test_other_records(program, tmp_path):
    entries = sequence(
        sequence(element(0x02, "0102"), element(0x17, b"200131120000Z")),
        sequence(element(0x02, "FF"), element(0x18, b"20500131120000Z"),
                 sequence(sequence(element(0x06, "551D15"), element(0x04, "0A0101")))),
    )
    algorithm = sequence(element(0x06, "2A8648CE3D040302"), element(0x05))
    crl = sequence(
        sequence(element(0x02, "01"), algorithm, sequence(), element(0x17, b"200131120000Z"), entries),
        algorithm, element(0x03, "00AB"),
    )
    assert compare(program, tmp_path, "crl", "CertificateList", [crl, *files("crls").values()]) >= 1
    identifier = sequence(algorithm, element(0x04, "AA"), element(0x04, "BB"), element(0x02, "05"))
    request = sequence(sequence(element(0xA1, element(0x86, b"a")), sequence(sequence(identifier))))
    requests = [request, *files("ocsp-requests").values()]
    assert compare(program, tmp_path, "ocsp-request", "OCSPRequest", requests) >= 1
    response = element(0x30, element(0x0A, "06"))
    responses = [response, *files("ocsp-responses").values()]
    assert compare(program, tmp_path, "ocsp-response", "OCSPResponse", responses) >= 1
    key = sequence(element(0x02, "00C1"), element(0x02, "010001"))
    mapping = sequence(element(0x06, "2A0304"), element(0x06, "8FFFFFFF7F"))
    assert compare(program, tmp_path, "policy-mapping", "PolicyMapping", [mapping]) == 1
    assert compare(program, tmp_path, "dss-sig-value", "DssSigValue", [key]) == 1


def test_a_difference_is_seen(program, tmp_path):
    path = tmp_path / "certificate.der"
    path.write_bytes(CERTIFICATE)
    line = shown(program, "certificate", [path])[str(path)]
    changed = CERTIFICATE.replace(bytes.fromhex("02020A1B"), bytes.fromhex("02020A1C"))
    own = orvelasn1.Certificate.decode(changed).to_dict()
    assert unexpected("Certificate", own, line) == ["tbsEncoded", "tbsCertificate.serialNumber"]
    assert own["tbsEncoded"] == tbs(serial="0A1C").hex().upper()
