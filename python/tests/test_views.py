"""Views: what is read without decoding the whole."""

import gc
import mmap
import pickle
import random
import weakref
from datetime import datetime, timezone

import orvelasn1
import pytest
from orvelasn1 import Certificate, CertificateList, CrlReader, View
from support import (
    CERTIFICATE, ECDSA, EXTENSIONS, certificates, certificate, element, extension, files, name, sequence, tbs, walk,
)

ENTRIES = sequence(
    sequence(element(0x02, "0102"), element(0x17, b"200131120000Z")),
    sequence(element(0x02, "00FF"), element(0x18, b"20500131120000Z"),
             sequence(extension("551D15", element(0x0A, "01")))),
    sequence(element(0x02, "FF"), element(0x17, b"700101000000Z")),
    sequence(element(0x02, "7F"), element(0x17, b"no time")),
)


def crl(entries=ENTRIES):
    inside = sequence(element(0x02, "01"), ECDSA, name(), element(0x17, b"200131120000Z"), entries)
    return sequence(inside, ECDSA, element(0x03, "00AB"))


def test_fields_are_places_in_the_octets():
    view = Certificate.view(CERTIFICATE)
    assert type(view) is View and view.octets == CERTIFICATE and view.type_name == "Certificate"
    inside = view.tbsCertificate
    assert bytes(inside) == tbs() and inside.octets.obj is CERTIFICATE
    assert inside.issuerUniqueID is None
    assert bytes(inside.version) == b"\x02\x01\x02" and inside.version.decode() == 2
    assert inside.serialNumber.contents == b"\x0a\x1b" and inside.serialNumber.decode() == 0x0A1B
    assert inside.validity.notAfter.decode() == datetime(2050, 1, 1, tzinfo=timezone.utc)
    assert inside.signature.algorithm.decode() == "1.2.840.10045.4.3.2"
    assert inside.subjectPublicKeyInfo.subjectPublicKey.decode() == orvelasn1.BitString(b"\x04" + b"\x11" * 64)
    assert str(inside.subject.decode()) == "CN=Some One"
    assert [bytes(each) for each in inside.extensions] == list(EXTENSIONS)
    assert [each.extnID.decode() for each in inside.extensions][3] == "1.2.3.4"
    assert view.decode() == Certificate.decode(CERTIFICATE)
    assert repr(inside.validity) == "<view of Validity, 34 octets>"
    assert "tbsCertificate" in dir(view) and "serialNumber" in dir(inside)


def test_extensions_are_found():
    extensions = Certificate.view(CERTIFICATE).tbsCertificate.extensions
    found = extensions.find("2.5.29.15")
    assert bytes(found) == EXTENSIONS[1] and found.critical.decode() is True
    assert found.extnValue.decode() == bytes.fromhex("03020106")
    assert extensions.find("1.2.3") is None and extensions.find("1.2.3.4").critical is None
    for wrong in ("", "x", "1"):
        with pytest.raises(ValueError):
            extensions.find(wrong)
    with pytest.raises(TypeError):
        Certificate.view(CERTIFICATE).tbsCertificate.subject.find("1.2.3")
    broken = Certificate.view(certificate(extensions=[b"\x02\x01\x05", EXTENSIONS[0]]))
    with pytest.raises(orvelasn1.Fault):
        broken.tbsCertificate.extensions.find("2.5.29.15")


def same(view, value):
    """Compares all that a view holds with a value that is decoded. Returns the number of values."""
    count = 1
    if isinstance(value, orvelasn1.Record):
        for field in value.fields:
            inner = getattr(view, field)
            try:
                expected = getattr(value, field)
            except orvelasn1.Unreadable:
                with pytest.raises(orvelasn1.Unreadable):
                    inner.decode()
                continue
            if inner is None:
                assert expected in (None, False)
            else:
                count += same(inner, expected)
    elif isinstance(value, orvelasn1.ListValue):
        inside = list(view)
        assert len(inside) == len(value)
        count += sum(same(*pair) for pair in zip(inside, value))
    else:
        assert view.decode() == value
    return count


def test_views_hold_what_is_decoded(tmp_path):
    assert same(Certificate.view(CERTIFICATE), Certificate.decode(CERTIFICATE)) > 40
    for kind, samples in (("Certificate", certificates(tmp_path)), ("CertificateList", files("crls")),
                          ("OCSPRequest", files("ocsp-requests"))):
        class_ = orvelasn1.type_named(kind)
        for octets in list(samples.values())[:150]:
            try:
                value = class_.decode(octets)
            except orvelasn1.Fault:
                continue
            same(class_.view(octets), value)


@pytest.mark.parametrize("change", [b"", b"\x30", CERTIFICATE[:-1], CERTIFICATE + b"\0", b"\x02\x01\x05", tbs()])
def test_octets_that_are_no_value(change):
    with pytest.raises(orvelasn1.Fault):
        Certificate.view(change)


def test_a_view_takes_its_own_level():
    octets = certificate(subject=sequence(b"\x05\x00"))
    with pytest.raises(orvelasn1.Fault):
        Certificate.decode(octets)
    view = Certificate.view(octets)
    assert view.tbsCertificate.serialNumber.decode() == 0x0A1B
    with pytest.raises(orvelasn1.Fault):
        view.tbsCertificate.subject.decode()
    with pytest.raises(orvelasn1.Fault):
        list(Certificate.view(certificate(extensions=[b"\x30\x05"])).tbsCertificate.extensions)


def test_strings_in_segments_and_implicit_tags():
    segments = element(0x24, element(0x04, "0102"), b"\x24\x80" + element(0x04, "03") + b"\0\0")
    value = sequence(element(0x06, "2A"), segments)
    assert orvelasn1.Extension.view(value).extnValue.decode() == b"\1\2\3" == orvelasn1.Extension.decode(value).extnValue
    bits = sequence(ECDSA, element(0x23, element(0x03, "00AB"), element(0x03, "04F0")))
    key = orvelasn1.SubjectPublicKeyInfo
    assert key.view(bits).subjectPublicKey.decode() == key.decode(bits).subjectPublicKey
    implicit = sequence(element(0x80, "0102"), element(0xA1, element(0x82, b"a")), element(0x82, "05"))
    view, value = (make(implicit) for make in (orvelasn1.AuthorityKeyIdentifier.view, orvelasn1.AuthorityKeyIdentifier.decode))
    assert same(view, value) > 4 and bytes(view.keyIdentifier) == element(0x80, "0102")


def test_views_keep_the_octets():
    data = bytes(bytearray(CERTIFICATE))
    view = Certificate.view(data)
    place, elements = view.tbsCertificate.serialNumber, iter(view.tbsCertificate.extensions)
    mapped = mmap.mmap(-1, len(CERTIFICATE))
    mapped.write(CERTIFICATE)
    read_only = memoryview(mapped).toreadonly()
    of_map, gone = Certificate.view(read_only).tbsCertificate.validity, weakref.ref(mapped)
    with pytest.raises(BufferError):
        mapped.close()
    del data, view, mapped, read_only
    gc.collect()
    assert place.decode() == 0x0A1B and [bytes(each) for each in elements] == list(EXTENSIONS)
    assert gone() is not None and of_map.notAfter.decode().year == 2050
    del of_map
    gc.collect()
    assert gone() is None


def test_octets_that_may_change_are_copied():
    data = bytearray(CERTIFICATE)
    views = [Certificate.view(data), Certificate.view(memoryview(data).toreadonly()), Certificate.view(memoryview(data)[::1])]
    data[:] = bytes(len(data))
    data.clear()
    for view in views:
        assert view.octets == CERTIFICATE and view.tbsCertificate.serialNumber.decode() == 0x0A1B


def test_what_views_are_not():
    view = Certificate.view(CERTIFICATE)
    for wrong in (None, 1, "text", [], object()):
        for make in (Certificate.view, CrlReader, orvelasn1.elements):
            with pytest.raises(TypeError):
                make(wrong)
    for act in (
        lambda: View(), lambda: pickle.dumps(view), lambda: setattr(view, "octets", b""), lambda: delattr(view, "octets"),
        lambda: list(view), lambda: view.nothing, lambda: view._nothing, lambda: View.decode(5),
        lambda: object.__new__(View).decode(), lambda: repr(object.__new__(View)), lambda: object.__new__(View).serialNumber,
        lambda: orvelasn1.DssParms.view(b"\x30\0"), lambda: orvelasn1.Record.view(b"\x30\0"),
    ):
        with pytest.raises((TypeError, AttributeError)):
            act()
    assert view == Certificate.view(CERTIFICATE) != view.tbsCertificate and len({view, view.tbsCertificate}) == 2
    assert view != CERTIFICATE
    view.octets.release()
    for act in (lambda: view.tbsCertificate, lambda: view.decode(), lambda: bytes(view), lambda: view.contents):
        with pytest.raises(ValueError):
            act()


def test_no_field_is_hidden():
    for type_name in orvelasn1.types():
        assert not set(getattr(orvelasn1.type_named(type_name), "fields", ())) & set(dir(View)), type_name


def test_views_of_parts_with_other_places():
    view, other = Certificate.view(CERTIFICATE), CertificateList.view(crl())
    for places in (((0, 10**9),) * 3, ((5, 2),) * 3, ((-5, -1),) * 3, (), None, 5):
        for value in (view, other):
            odd = View._of(value._type, value.octets, None)
            object.__setattr__(odd, "_places", places)
            for field in odd._type.fields:
                try:
                    walk_view(getattr(odd, field.attribute))
                except Exception:  # any, and the next one is tried
                    pass


def walk_view(view):
    """Reads all that a view holds."""
    if view is None:
        return
    for act in (view.decode, lambda: bytes(view.contents), lambda: repr(view)):
        try:
            walk(act())
        except orvelasn1.Error:
            pass
    for field in view._type.fields:
        try:
            walk_view(getattr(view, field.attribute))
        except (orvelasn1.Error, AttributeError):
            pass
    try:
        for each in view:
            walk_view(each)
    except (orvelasn1.Error, TypeError):
        pass


def test_octets_with_changes():
    random_ = random.Random(5)
    opened = 0
    for _ in range(250):
        octets = bytearray(CERTIFICATE)
        for _ in range(random_.randrange(1, 4)):
            octets[random_.randrange(len(octets))] ^= 1 << random_.randrange(8)
        try:
            view = Certificate.view(bytes(octets))
        except orvelasn1.Fault:
            continue
        walk_view(view)
        opened += 1
    assert opened > 100
    for size in range(0, len(CERTIFICATE), 3):
        with pytest.raises(orvelasn1.Fault):
            Certificate.view(CERTIFICATE[:size])


def test_elements():
    both = CERTIFICATE + b"\x05\x00" + CERTIFICATE
    assert list(orvelasn1.elements(both)) == [CERTIFICATE, b"\x05\0", CERTIFICATE]
    assert list(orvelasn1.elements(b"")) == []
    through = orvelasn1.elements(CERTIFICATE + b"\x30")
    assert next(through).obj is not None
    with pytest.raises(orvelasn1.Fault) as caught:
        next(through)
    assert caught.value.offset == len(CERTIFICATE)


def test_revocation_lists():
    reader = CrlReader(crl())
    entries = list(reader)
    assert [(e.serialNumber, e.revocationDate, e.reason) for e in entries] == [
        (0x0102, datetime(2020, 1, 31, 12, tzinfo=timezone.utc), None),
        (0xFF, datetime(2050, 1, 31, 12, tzinfo=timezone.utc), 1),
        (-1, datetime(1970, 1, 1, tzinfo=timezone.utc), None),
        (0x7F, None, None),
    ]
    assert entries[0].extensions is None and entries[1].extensions.find("2.5.29.21").extnValue.decode() == b"\x0a\1\1"
    assert reader.find(0xFF) == entries[1] and reader.find(-1) == entries[2] and reader.find(1) is None
    assert reader.find(2**4000) is None
    assert reader.view.tbsCertList.thisUpdate.decode().year == 2020
    for wrong in ("1", None, 1.5, True):
        with pytest.raises(TypeError):
            reader.find(wrong)
    assert list(CrlReader(crl(entries=b""))) == [] and CrlReader(crl(entries=sequence())).find(1) is None


def test_revocation_lists_that_are_broken():
    reader = CrlReader(crl(entries=sequence(sequence(element(0x02, "05"), element(0x17, b"200131120000Z")), b"\x30\0")))
    entries = iter(reader)
    assert next(entries).serialNumber == 5 and reader.find(5).serialNumber == 5
    for act in (lambda: next(entries), lambda: reader.find(6)):
        with pytest.raises(orvelasn1.Fault) as caught:
            act()
    assert "revokedCertificates[1]" in caught.value.path
    for size in range(len(crl())):
        with pytest.raises(orvelasn1.Fault):
            CrlReader(crl()[:size])


def test_revocation_lists_of_the_corpus():
    for octets in files("crls").values():
        try:
            decoded = CertificateList.decode(octets)
        except orvelasn1.Fault:
            continue
        entries = list(CrlReader(octets))
        assert [(e.serialNumber, e.revocationDate) for e in entries] == [
            (e.userCertificate, e.revocationDate) for e in decoded.tbsCertList.revokedCertificates or ()
        ]
