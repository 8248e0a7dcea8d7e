"""What nobody should do raises an exception, and never ends the interpreter."""

import array
import copy
import gc
import inspect
import mmap
import pickle
import random
import resource
import subprocess
import sys
import threading
import time
import weakref
from datetime import datetime, timezone

import orvelasn1
import pytest
from orvelasn1 import Certificate
from support import CERTIFICATE, ECDSA, EXTENSIONS, certificate, element, extension, name, sequence, tbs, use, walk


@pytest.mark.parametrize(
    "data", [None, 1, 10**30, -1, 1.5, "text", [], [1, 2], {}, object(), Certificate, iter(b""), True]
)
def test_what_are_no_octets(data):
    with pytest.raises(TypeError):
        Certificate.decode(data)
    with pytest.raises(TypeError):
        Certificate.decode_first(data)
    with pytest.raises(TypeError):
        orvelasn1.KeyUsage.decode(data)


def test_every_buffer_is_read_as_it_is_when_the_call_is_made():
    expected = Certificate.decode(CERTIFICATE)
    mapped = mmap.mmap(-1, len(CERTIFICATE))
    mapped.write(CERTIFICATE)
    strided = memoryview(bytes(octet for pair in zip(CERTIFICATE, CERTIFICATE) for octet in pair))[::2]
    for data in (bytearray(CERTIFICATE), memoryview(CERTIFICATE), array.array("B", CERTIFICATE), mapped, strided):
        assert Certificate.decode(data) == expected
    changed = bytearray(CERTIFICATE)
    decoded = Certificate.decode(changed)
    changed[:] = bytes(len(changed))
    del changed[:]
    use(decoded)
    assert decoded == expected
    released = memoryview(bytearray(CERTIFICATE))
    released.release()
    with pytest.raises((ValueError, TypeError)):
        Certificate.decode(released)


def test_a_buffer_that_changes_while_it_is_decoded():
    data, stop = bytearray(CERTIFICATE), threading.Event()

    def change():
        random_ = random.Random(1)
        while not stop.is_set():
            data[random_.randrange(len(data))] ^= 1 << random_.randrange(8)
            if random_.randrange(10) == 0:
                data[:] = CERTIFICATE

    thread = threading.Thread(target=change)
    thread.start()
    try:
        end = time.monotonic() + 0.5
        while time.monotonic() < end:
            try:
                use(Certificate.decode(data))
            except orvelasn1.Error:
                pass
    finally:
        stop.set()
        thread.join()


def test_records_do_not_change():
    decoded = Certificate.decode(CERTIFICATE)
    for act in (
        lambda: setattr(decoded, "tbsCertificate", 1), lambda: setattr(decoded, "other", 1),
        lambda: setattr(decoded, "_handle", None), lambda: delattr(decoded, "tbsCertificate"),
        lambda: delattr(decoded, "_handle"), lambda: setattr(decoded, "__class__", orvelasn1.Validity),
        lambda: delattr(decoded.tbsCertificate.extensions, "_handle"),
    ):
        with pytest.raises((AttributeError, TypeError)):
            act()
    with pytest.raises(TypeError):
        decoded.tbsCertificate.extensions[0] = 1
    with pytest.raises(TypeError):
        del decoded.tbsCertificate.extensions[0]
    vars(decoded)["tbsCertificate"] = "mine"
    vars(decoded).clear()
    use(decoded)


def test_values_with_the_parts_of_others():
    decoded = Certificate.decode(CERTIFICATE)
    others = [
        decoded.tbsCertificate, decoded.tbsCertificate.extensions, decoded.tbsCertificate.extensions[2].decoded[0],
        decoded.signatureAlgorithm, orvelasn1.SignedCertificateTimestampList,
    ]
    handles = [getattr(other, "_handle", None) for other in others] + [None, 0, b"", "x", object()]
    values = [decoded, decoded.tbsCertificate, decoded.tbsCertificate.extensions,
              decoded.tbsCertificate.validity, decoded.tbsCertificate.extensions[2].decoded[0]]
    for value in values:
        for handle in handles:
            odd = object.__new__(type(value))
            odd._attach(odd, handle)
            for read in (
                *(lambda name=name: getattr(odd, name) for name in getattr(odd, "fields", ())),
                lambda: odd.choice, lambda: odd.value, lambda: list(odd), lambda: len(odd), lambda: odd[0],
                lambda: odd.to_dict(), lambda: odd.encode(), lambda: repr(odd), lambda: hash(odd), lambda: str(odd),
            ):
                try:
                    read()
                except Exception:  # any, and the next one is tried
                    pass
    use(decoded)


def test_records_with_the_levels_of_others():
    for name_ in ("Certificate", "Validity", "GDO"):
        class_ = orvelasn1.type_named(name_)
        for base in (Certificate.decode(CERTIFICATE), Certificate.decode(CERTIFICATE).tbsCertificate.extensions):
            for prefix in (*(level << 6 for level in (1, 2, 4, 63, 64, 65, 1 << 18, 0xFFFFF)), 1, 1 << 26, 1 << 31,
                           0xFFFFFFFF, 1 << 40, -1, "x", None, 1.5):
                odd = object.__new__(class_)
                class_._attach(odd, base._handle)
                object.__setattr__(odd, "_prefix", prefix)
                for read in (lambda: walk(odd), lambda: odd.der, lambda: odd.to_dict(), lambda: repr(odd)):
                    try:
                        read()
                    except Exception:  # any, and the next one is tried
                        pass


def test_values_without_anything():
    for class_ in (Certificate, orvelasn1.GeneralName, orvelasn1.Extensions, orvelasn1.RDNSequence):
        empty = object.__new__(class_)
        for read in (repr, str, hash, len, list, lambda v: v.der, lambda v: v.encode(), lambda v: v.to_dict()):
            with pytest.raises((AttributeError, TypeError)):
                read(empty)


def test_values_are_released_in_any_order():
    for _ in range(50):
        decoded = Certificate.decode(CERTIFICATE)
        parts = [
            decoded, decoded.tbsCertificate, decoded.tbsCertificate.extensions, decoded.tbsCertificate.extensions[0],
            decoded.tbsCertificate.issuer, decoded.tbsCertificate.issuer[0], decoded.tbsCertificate.issuer[0][0],
            decoded.signatureAlgorithm, decoded.tbsCertificate.validity,
        ]
        del decoded
        random.shuffle(parts)
        while parts:
            parts.pop()
            gc.collect(0)
            for part in parts:
                vars(part).clear()
                use(part)


def test_a_part_keeps_the_whole():
    decoded = Certificate.decode(CERTIFICATE)
    gone = weakref.ref(decoded)
    last = decoded.tbsCertificate.extensions[-1]
    elements = iter(decoded.tbsCertificate.extensions)
    next(elements)
    del decoded
    gc.collect()
    assert gone() is None
    assert last.extnValue == b"\xff" and last.der == EXTENSIONS[3]
    assert [e.der for e in elements] == list(EXTENSIONS[1:])


def test_values_in_cycles_are_released():
    decoded = Certificate.decode(CERTIFICATE)
    gone = weakref.ref(decoded)
    vars(decoded)["itself"] = decoded
    del decoded
    gc.collect()
    assert gone() is None


def test_copies_are_the_same_object():
    decoded = Certificate.decode(CERTIFICATE)
    for value in (decoded, decoded.tbsCertificate, decoded.tbsCertificate.extensions):
        assert copy.copy(value) is value and copy.deepcopy(value) is value
    assert copy.deepcopy([decoded])[0] is decoded


def test_values_are_pickled():
    decoded = Certificate.decode(CERTIFICATE)
    for value in (
        decoded, decoded.tbsCertificate, decoded.tbsCertificate.extensions, decoded.tbsCertificate.extensions[2],
        decoded.tbsCertificate.extensions[2].decoded[0], decoded.tbsCertificate.issuer[0][0],
        decoded.signatureValue, decoded.signatureAlgorithm.algorithm,
    ):
        for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
            again = pickle.loads(pickle.dumps(value, protocol))
            assert again == value and type(again) is type(value)
    with pytest.raises(LookupError):
        orvelasn1._types._restore("Certificate", CERTIFICATE)
    with pytest.raises(LookupError):
        orvelasn1._types._restore("nothing", CERTIFICATE)


class Mine(Certificate):
    """A class of a user."""

    def name(self):
        return str(self.tbsCertificate.subject)


class Loud(orvelasn1.Validity):
    def __init__(self, *arguments, **named):
        self.said = True

    def __del__(self):
        self.notBefore


def test_classes_of_users():
    mine = Mine.decode(CERTIFICATE)
    assert type(mine) is Mine and mine.name() == "CN=Some One" and mine == Certificate.decode(CERTIFICATE)
    again = pickle.loads(pickle.dumps(mine))
    assert type(again) is Mine and again == mine
    validity = mine.tbsCertificate.validity
    with pytest.raises(AttributeError):
        Loud(notBefore=validity.notBefore, notAfter=validity.notAfter)
    with pytest.raises(AttributeError):
        del Loud.decode(validity.der).__dict__
    with pytest.raises(TypeError):
        type("Both", (Certificate, orvelasn1.GeneralName, bytes), {})


def test_methods_without_their_object():
    for call in (
        lambda: Certificate.encode(None), lambda: Certificate.encode(1), lambda: Certificate.to_dict(b""),
        lambda: Certificate.tbsCertificate.__get__(5),
        lambda: orvelasn1.Extensions.__len__([]), lambda: orvelasn1.Extensions.__getitem__((), 0),
        lambda: orvelasn1.GeneralName.choice.__get__("x"),
    ):
        with pytest.raises((AttributeError, TypeError)):
            call()
    assert orvelasn1.Record.decode is not None
    with pytest.raises((AttributeError, TypeError)):
        orvelasn1.Record.decode(CERTIFICATE)
    with pytest.raises((AttributeError, TypeError)):
        orvelasn1.Value.decode(CERTIFICATE)


def test_sizes_that_are_too_large():
    for length in ("84FFFFFFFF", "847FFFFFFF", "8480000000", "85FFFFFFFFFF", "88FFFFFFFFFFFFFFFF", "FF"):
        for tag in ("30", "04", "02", "31", "A0", "03", "06"):
            for type_name in ("Certificate", "INTEGER", "OCTET STRING", "GeneralNames", "BIT STRING", "ANY"):
                with pytest.raises(orvelasn1.Fault):
                    orvelasn1.decode(type_name, bytes.fromhex(tag + length) + b"\0" * 16)


def test_a_number_of_many_octets():
    octets = element(0x02, b"\x7f" + b"\xff" * (1 << 22))
    number = orvelasn1.INTEGER.decode(octets)
    assert number.bit_length() == 7 + (8 << 22) and orvelasn1.encode("INTEGER", number) == octets
    use(Certificate.decode(certificate(serial="7F" + "FF" * 100000)))


def test_depth():
    for tag in (b"\x30\x80", b"\x24\x80", b"\xa0\x80"):
        deep = tag * 100000
        for type_name in orvelasn1.types():
            with pytest.raises(orvelasn1.Fault):
                orvelasn1.decode(type_name, deep)


def test_paths_and_sentences_with_odd_names():
    for type_name in ("a" * 10**6, "\0", "\ud800", "pki_Certificate\0"):
        with pytest.raises(LookupError):
            orvelasn1.decode(type_name, b"")


def walk_with_all_threads(work, count=4):
    errors = []

    def run():
        try:
            work()
        except Exception as error:  # told to the test
            errors.append(error)

    threads = [threading.Thread(target=run) for _ in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert errors == []


def test_threads_read_the_same_value():
    for _ in range(20):
        decoded = Certificate.decode(CERTIFICATE)
        holder = [decoded]
        del decoded

        def work():
            for _ in range(10):
                use(holder[0])
                parts = list(holder[0].tbsCertificate.extensions)
                vars(holder[0]).clear()
                use(parts[-1])

        walk_with_all_threads(work)


def others_run_during(act):
    """Tells whether this thread runs while another one is in the middle of a call. The interpreter takes the lock
    from no thread here: one that runs on has it until it lets it go by itself."""
    state, kept = [], []

    def work():
        state.append("begun")
        kept.append(act())
        state.append("done")

    before = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    try:
        thread = threading.Thread(target=work)
        thread.start()
        seen = False
        while thread.is_alive():
            seen = seen or state == ["begun"]
            time.sleep(0)
        thread.join()
        return seen
    finally:
        sys.setswitchinterval(before)


def test_other_threads_run_while_one_decodes():
    entry = sequence(element(0x02, "01"), element(0x17, b"200131120000Z"))
    inside = sequence(ECDSA, name(), element(0x17, b"200131120000Z"), sequence(entry * 50000))
    octets = sequence(inside, ECDSA, element(0x03, "00AB"))
    assert any(others_run_during(lambda: orvelasn1.CertificateList.decode(octets)) for _ in range(100))
    # What keeps the lock is told from what lets it go.
    many = bytes(1 << 22)
    assert not any(others_run_during(lambda: many.count(b"x")) for _ in range(5))


def test_nothing_is_kept():
    def work():
        for _ in range(60):
            use(Certificate.decode(CERTIFICATE))
            for octets in (CERTIFICATE[:-1], CERTIFICATE + b"\0", tbs()):
                try:
                    Certificate.decode(octets)
                except orvelasn1.Fault:
                    pass

    work()
    gc.collect()
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    for _ in range(6):
        work()
    gc.collect()
    assert resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before < 4096  # KiB


def test_the_octets_of_extensions_are_not_followed_forever():
    octets = extension("551D11", sequence(element(0xA4, sequence())))
    for _ in range(50):
        octets = extension("551D11", octets)
    use(Certificate.decode(certificate(extensions=[octets])))


ODD = [
    None, True, -1, 0, 7, 2**200, -(2**200), 1.5, float("nan"), "", "x", "\ud800", "a\0b", "2.5.29.17", b"", b"\xff" * 5,
    bytearray(b"\x30\0"), memoryview(b"\x30\0"), memoryview(b"abcd")[::2], [], (), (1,), ("dNSName", 5), {}, {"a": 1},
    {1: 2}, set(), object(), object, Certificate, len, ..., range(10), slice(None), slice(2**70, -5, -1), CERTIFICATE,
    Certificate.decode(CERTIFICATE), Certificate.view(CERTIFICATE), datetime.max, timezone.utc,
]


def own_members(value):
    """Goes through what a value can do by the package, not by Python alone."""
    for class_ in type(value).__mro__:
        if class_.__module__.split(".")[0] == "orvelasn1":
            for called in vars(class_):
                if called not in ("__init_subclass__", "__subclasshook__", "__class__"):
                    yield called


def test_every_function_with_odd_arguments():
    decoded = Certificate.decode(CERTIFICATE)
    leaf = orvelasn1.GDOObjectSetOf(1, b"abc")
    values = [
        decoded, decoded.tbsCertificate, decoded.tbsCertificate.extensions, decoded.tbsCertificate.extensions[2].decoded[0],
        decoded.tbsCertificate.issuer, decoded.signatureValue, decoded.signatureAlgorithm.algorithm, leaf,
        orvelasn1.GDOObjectSetOf(0x10, children=[leaf]), orvelasn1.Timestamp(), decoded.dns_names(),
        Certificate.view(CERTIFICATE), Certificate.view(CERTIFICATE).tbsCertificate.extensions, orvelasn1.Fault("", 1, "", ""),
        orvelasn1.Missing("", "", ""), orvelasn1.Unreadable("", b""),
    ]
    calls = [getattr(orvelasn1, called) for called in orvelasn1.__all__]
    calls += [orvelasn1.type_named(called) for called in ("Certificate", "GeneralName", "Extensions", "RDNSequence", "Time",
                                                          "INTEGER", "GDO", "GDOObjectSetOf", "AttributeTypeAndValue")]
    for value in values:
        calls += [getattr(value, called) for called in own_members(value) if callable(getattr(value, called, None))]
    random_, made = random.Random(3), 0
    for call in calls:
        for arguments in [(), *((one,) for one in ODD), *(random_.choices(ODD, k=2 + n % 3) for n in range(30))]:
            for keywords in ({}, {random_.choice(["id", "value", "data", "start", "x", "dNSName"]): random_.choice(ODD)}):
                try:
                    result = call(*arguments, **keywords)
                    if isinstance(result, (orvelasn1.Value, orvelasn1.BitString)):
                        use(result)
                except Exception:  # any, and the next one is tried
                    pass
                made += 1
    assert made > 10000
    use(decoded)


def test_numbers_that_are_too_large():
    inside = Certificate.decode(CERTIFICATE).tbsCertificate
    for number in (1 << 1000000, -(1 << 1000000), 2**63, -(2**63), 2**64):
        assert inside.replace(serialNumber=number).serialNumber == number
        assert inside.replace(version=number).to_dict()["version"] is not None
    for number in (2**32, -(2**32), 2**200, 256, -1):
        with pytest.raises(ValueError):
            orvelasn1.OCSPResponse(responseStatus=number)
    for arcs in ((2, 10**5000), (2**64, 1), (1, 2**64), (1, 2, -(2**64))):
        with pytest.raises(ValueError):
            orvelasn1.ObjectIdentifier(arcs)
    assert orvelasn1.ObjectIdentifier((2, 2**128, 2**64)).arcs == (2, 2**128, 2**64)


def test_surrogates_in_texts():
    for text in ("\ud800", "a\udfff", "\udc80\ud800"):
        for type_name in ("UTF8String", "IA5String", "PrintableString", "VisibleString", "UniversalString"):
            with pytest.raises(ValueError):
                orvelasn1.encode(type_name, text)
        for make in (
            lambda text=text: orvelasn1.GeneralName(dNSName=text), lambda text=text: orvelasn1.RDNSequence("CN=" + text),
            lambda text=text: orvelasn1.AttributeTypeAndValue(type="2.5.4.3", value=text),
            lambda text=text: orvelasn1.ObjectIdentifier("1.2" + text), lambda text=text: orvelasn1.decode(text, b""),
        ):
            with pytest.raises((ValueError, LookupError)):
                make()
    # An octet that is no character is read as a surrogate, and written as that octet.
    assert orvelasn1.GeneralName(dNSName="\udcff").der == b"\x82\1\xff"


def test_the_deepest_values_where_little_stack_is_left():
    inside = orvelasn1.GDOObjectSetOf(1, b"")
    for _ in range(32):
        inside = orvelasn1.GDOObjectSetOf(0x10, children=[inside])
    decoded = Certificate.decode(CERTIFICATE)
    outcomes = set()

    def below(levels, act):
        return below(levels - 1, act) if levels else act()

    for left in range(5, 180, 5):
        for act in (inside.to_dict, inside.encode, lambda: repr(inside), decoded.to_dict, lambda: use(decoded)):
            try:
                below(sys.getrecursionlimit() - left - len(inspect.stack(0)), act)
                outcomes.add("done")
            except RecursionError:
                outcomes.add("refused")
    assert outcomes == {"done", "refused"}
    use(decoded)


def run(program, *arguments):
    """Returns the end of an interpreter of its own: its status, and what it said."""
    done = subprocess.run(
        [sys.executable, "-c", program, CERTIFICATE.hex(), *arguments], capture_output=True, text=True, check=False
    )
    return done.returncode, done.stdout + done.stderr


def test_the_end_of_the_interpreter():
    assert run(
        """
import atexit, sys, threading, orvelasn1
octets = bytes.fromhex(sys.argv[1])
kept = orvelasn1.Certificate.decode(octets)
part = kept.tbsCertificate.extensions[0]
kept.__dict__["itself"] = kept

class Late:
    def __init__(self): self.value = orvelasn1.Certificate.decode(octets)
    def __del__(self): self.value.tbsCertificate.serialNumber

late = Late()
sys.modules["late"] = late
atexit.register(lambda: part.extnID)

def forever():
    while True:
        orvelasn1.Certificate.decode(octets).tbsCertificate.validity.notAfter

for _ in range(3):
    threading.Thread(target=forever, daemon=True).start()
"""
    ) == (0, "")


def test_a_process_that_forks():
    assert run(
        """
import os, sys, orvelasn1
kept = orvelasn1.Certificate.decode(bytes.fromhex(sys.argv[1]))
child = os.fork()
assert kept.tbsCertificate.serialNumber == 0x0A1B
del kept
if child:
    assert os.waitpid(child, 0)[1] == 0
"""
    ) == (0, "")


def test_exhausted_memory():
    status, said = run(
        """
import resource, sys, orvelasn1
entry = bytes.fromhex("3012020101170d") + b"200131120000Z"
def element(tag, content):
    return bytes([tag, 0x84]) + len(content).to_bytes(4, "big") + content
algorithm = bytes.fromhex("300a06082a8648ce3d040302")
inside = algorithm + bytes.fromhex("3000170d") + b"200131120000Z" + element(0x30, entry * 200000)
octets = element(0x30, element(0x30, inside) + algorithm + bytes.fromhex("030200ab"))
whole = orvelasn1.CertificateList.decode(octets)
assert len(whole.tbsCertList.revokedCertificates) == 200000
del whole
outcomes = set()
with open("/proc/self/statm") as statm:
    used = int(statm.read().split()[0]) * resource.getpagesize()
for room in range(0, 64 << 20, 1 << 20):
    resource.setrlimit(resource.RLIMIT_AS, (used + room, resource.RLIM_INFINITY))
    try:
        orvelasn1.CertificateList.decode(octets).encode()
        outcomes.add("decoded")
    except MemoryError:
        outcomes.add("no memory")
resource.setrlimit(resource.RLIMIT_AS, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
print(sorted(outcomes))
"""
    )
    assert (status, said) == (0, "['decoded', 'no memory']\n")
