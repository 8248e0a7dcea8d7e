"""to_dict() has what the command-line tool shows as JSON.

Each member of to_dict() is a member of the tool's JSON, with an equal value. The tool has more: what it finds
out about a record.
"""

import json
import subprocess

import orvelasn1
import pytest
from support import CERTIFICATE, certificates, element, files, sequence, tbs, tool


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


def shown(program, kind, paths):
    """Returns the tool's JSON of files, by their paths."""
    done = subprocess.run(
        [program, "show", "--json", "--secrets", "--type", kind, *map(str, paths)], capture_output=True, check=False
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
        assert list(differences(decoded.to_dict(), line)) == []
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
                assert list(differences(value.to_dict(), other["decoded"])) == []
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


def made(folder, *command):
    """Returns what openssl writes into a file."""
    path = folder / "made.der"
    subprocess.run(["openssl", *map(str, command), "-out", path], check=True, capture_output=True)
    return path.read_bytes()


def test_keys_and_messages(program, tmp_path):
    key, certificate, text = tmp_path / "key.pem", tmp_path / "certificate.pem", tmp_path / "text"
    made(tmp_path, "genpkey", "-algorithm", "RSA", "-pkeyopt", "rsa_keygen_bits:2048")
    key.write_bytes((tmp_path / "made.der").read_bytes())
    made(tmp_path, "req", "-x509", "-key", key, "-subj", "/CN=a")
    certificate.write_bytes((tmp_path / "made.der").read_bytes())
    text.write_text("text")
    der = ("-outform", "DER")
    for kind, type_name, octets in (
        ("rsa-public-key", "RSAPublicKey", made(tmp_path, "rsa", "-in", key, "-RSAPublicKey_out", *der)),
        ("rsa-private-key", "RSAPrivateKey", made(tmp_path, "rsa", "-in", key, "-traditional", *der)),
        ("ec-private-key", "ECPrivateKey", made(tmp_path, "ecparam", "-name", "prime256v1", "-genkey", "-noout", *der)),
        ("pfx", "PFX", made(tmp_path, "pkcs12", "-export", "-in", certificate, "-inkey", key, "-passout", "pass:a")),
    ):
        assert compare(program, tmp_path, kind, type_name, [octets]) == 1
    for kind, type_name, options in (
        ("signed-data", "SignedData", ("-sign", "-nodetach", "-signer", certificate, "-inkey", key)),
        ("enveloped-data", "EnvelopedData", ("-encrypt", "-recip", certificate)),
        ("digested-data", "DigestedData", ("-digest_create",)),
    ):
        message = made(tmp_path, "cms", *options, "-in", text, *der)
        assert compare(program, tmp_path, "content-info", "ContentInfo", [message]) == 1
        content = orvelasn1.ContentInfo.decode(message).content
        assert compare(program, tmp_path, kind, type_name, [content]) == 1


def test_words(program, tmp_path):
    uri = element(0x86, b"http://example.org/")
    point = sequence(element(0xA0, element(0xA0, uri)), element(0x81, "0560"), element(0xA2, uri))
    relative = sequence(element(0xA0, element(0xA1, sequence(element(0x06, "550403"), element(0x0C, b"a")))))
    assert compare(program, tmp_path, "distribution-point", "DistributionPoint", [point, relative]) == 2
    issuing = sequence(element(0xA0, element(0xA0, uri)), element(0x83, "0460"))
    assert compare(program, tmp_path, "issuing-distribution-point", "IssuingDistributionPoint", [issuing])
    networks = ("C0000200FFFFFF00", "C0000200FF00FF00", "C0000201", "20010DB8" + "00" * 12 + "FF" * 4 + "00" * 12, "01")
    trees = [sequence(element(0xA0, *(sequence(element(0x87, digits)) for digits in networks)))]
    assert compare(program, tmp_path, "name-constraints", "NameConstraints", trees)
    revoked = sequence(element(0x18, b"20300102030405Z"), element(0xA0, element(0x0A, "01")))
    assert compare(program, tmp_path, "revoked-info", "RevokedInfo", [revoked])
    states = [b"\x80\0", b"\xa1" + revoked[1:], b"\x82\0"]
    assert compare(program, tmp_path, "cert-status", "CertStatus", states) == 3
    text = element(0x0C, b"text")
    notice = sequence(sequence(text, sequence(element(0x02, "01"))), text)
    assert compare(program, tmp_path, "user-notice", "UserNotice", [notice])
    statuses = [sequence(element(0x0A, f"{number:02X}")) for number in range(9)]
    assert compare(program, tmp_path, "ocsp-response", "OCSPResponse", statuses) == 9
    validity = sequence(*(element(0x18, time) for time in (b"203001020304Z", b"20300102030405+0100")))
    assert compare(program, tmp_path, "validity", "Validity", [validity])


def prefix(bits, unused=0):
    return element(0x03, f"{unused:02X}{bits}")


def test_addresses(program, tmp_path):
    blocks = (prefix("C00002"), prefix("0A20", 4), prefix(""), sequence(prefix("0A"), prefix("0A0000", 1)))
    longer = prefix("0A0000000080", 7)
    wide = (prefix("20010DB8"), sequence(prefix("2001"), prefix("20010D", 2)), prefix("FF" * 16))
    families = [
        sequence(element(0x04, family), choice)
        for family, choice in (
            ("0001", sequence(*blocks)), ("0001", sequence(longer)), ("000101", sequence(prefix("7F"))),
            ("0002", sequence(*wide)), ("0003", sequence(*blocks)), ("0002", element(0x05, "")),
        )
    ]
    assert compare(program, tmp_path, "ip-address-family", "IPAddressFamily", families) == len(families)
    first, second = (orvelasn1.IPAddressFamily.decode(families[i]).to_dict() for i in (0, 3))
    assert first == {
        "addressFamily": "0001",
        "addresses": ["192.0.2.0/24", "10.32.0.0/12", "0.0.0.0/0", "10.0.0.0-10.0.1.255"],
    }
    assert second["addresses"][1] == "2001::-2001:fff:ffff:ffff:ffff:ffff:ffff:ffff"


def test_systems(program, tmp_path):
    numbers = [element(0x02, digits) for digits in ("01", "00FFFFFFFE", "00FFFFFFFF", "FF", "00", "010000000000")]
    ranges = [sequence(numbers[0], number) for number in numbers]
    both = element(0xA0, sequence(*numbers, *ranges)) + element(0xA1, element(0x05, ""))
    assert compare(program, tmp_path, "as-identifiers", "ASIdentifiers", [sequence(both)]) == 1
    own = orvelasn1.ASIdentifiers.decode(sequence(both)).to_dict()
    assert own["asnum"][:7] == ["1", "4294967294", "0xFFFFFFFF", "0x-01", "0", "0x010000000000", "1-1"]
    assert own["rdi"] == ["inherit"]


def test_a_difference_is_seen(program, tmp_path):
    path = tmp_path / "certificate.der"
    path.write_bytes(CERTIFICATE)
    line = shown(program, "certificate", [path])[str(path)]
    changed = CERTIFICATE.replace(bytes.fromhex("02020A1B"), bytes.fromhex("02020A1C"))
    own = orvelasn1.Certificate.decode(changed).to_dict()
    assert list(differences(own, line)) == ["tbsEncoded", "tbsCertificate.serialNumber"]
    assert own["tbsEncoded"] == tbs(serial="0A1C").hex().upper()
