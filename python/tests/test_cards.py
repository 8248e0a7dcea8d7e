"""Objects of smart cards."""

import json
import subprocess
import threading

import orvelasn1
import pytest
from orvelasn1 import GDO, CardAttribute, GDOObjectSetOf, GDOObjectSetOfSetOf
from support import element, sequence, tool, use


def an_object(id_, *content):
    return sequence(element(0x06, bytes([id_])), *content)


def octets(*content):
    return element(0x04, *content)


def a_set(*content):
    return element(0x31, *content)


LEAF = an_object(0x01, octets(b"abc"))
HOLDER = an_object(
    0x20, element(0x03, a_set(sequence(element(0x06, "78563412"), octets("AA")),
                              sequence(element(0x06, "FFFFFFFF"), octets())))
)
CONTAINER = an_object(0x10, octets(a_set(LEAF, HOLDER)))
SETS = an_object(0x21, octets(a_set(a_set(LEAF, CONTAINER), a_set())))
CARD = sequence(CONTAINER, SETS, LEAF, an_object(0x14, octets(a_set())))


def test_objects_hold_what_their_identifiers_say():
    leaf = GDOObjectSetOf.decode(LEAF)
    assert (leaf.id, leaf.role, leaf.value, leaf.children) == (1, "leaf", b"abc", None)
    container = GDOObjectSetOf.decode(CONTAINER)
    assert (container.id, container.role, container.value) == (0x10, "container", None)
    assert container.children == (leaf, GDOObjectSetOf.decode(HOLDER))
    holder = container.children[1]
    assert (holder.role, holder.value) == ("attribute holder", None)
    assert holder.children == (CardAttribute(0x12345678, b"\xaa"), CardAttribute(0xFFFFFFFF, b""))
    sets = GDOObjectSetOfSetOf.decode(SETS)
    assert sets.children == ((leaf, container), ())
    assert GDOObjectSetOf.decode(an_object(0x02, octets())).value == b""


def test_a_card():
    card = GDO.decode(CARD)
    assert card.root.children[0].value == b"abc" and card.set1.children[0][1] == card.root
    assert type(card.set1) is GDOObjectSetOfSetOf and type(card.set1.children[0][1]) is GDOObjectSetOf
    assert card.set3.children == () and card.set4 is None
    assert card.der == CARD and card.set1.der == SETS and card.root.der == CONTAINER
    assert orvelasn1.decode("GDOObject", LEAF) == card.root.children[0]
    assert repr(card.root) == "<GDOObjectSetOf 0x10 container of 2>"
    assert repr(card.set2) == "<GDOObjectSetOfSetOf 0x01 leaf <616263>>"
    use(card)


def test_objects_are_made():
    leaf = GDOObjectSetOf(1, b"abc")
    holder = GDOObjectSetOf(0x20, children=[(0x12345678, b"\xaa"), CardAttribute(0xFFFFFFFF, b"")])
    container = GDOObjectSetOf(0x10, children=[leaf, holder])
    assert (leaf.der, holder.der, container.der) == (LEAF, HOLDER, CONTAINER)
    made = GDO(
        root=container,
        set1=GDOObjectSetOfSetOf(0x21, children=[[{"id": 1, "value": b"abc"}, container], []]),
        set2={"id": 1, "value": b"abc"}, set3=GDOObjectSetOfSetOf(0x14, children=[]),
    )
    assert made.der == CARD and made == GDO.decode(CARD)
    assert made.replace(set4={"id": 2, "value": b""}).set4.value == b""


@pytest.mark.parametrize(
    "make",
    [
        lambda: GDOObjectSetOf("1", b""), lambda: GDOObjectSetOf(True, b""), lambda: GDOObjectSetOf(1, "abc"),
        lambda: GDOObjectSetOf(1, children=[]), lambda: GDOObjectSetOf(0x10, b""), lambda: GDOObjectSetOf(),
        lambda: GDOObjectSetOf(0x10, children=b""), lambda: GDOObjectSetOf(0x10, children=[1]),
        lambda: GDOObjectSetOf(0x10, children=[GDOObjectSetOfSetOf(1, b"")]), lambda: GDOObjectSetOf(0x10, children=5),
        lambda: GDOObjectSetOfSetOf(0x10, children=[GDOObjectSetOf(1, b"")]),
        lambda: GDOObjectSetOf(0x20, children=[1]), lambda: GDOObjectSetOf(0x20, children=[("1", b"")]),
        lambda: GDOObjectSetOf(0x20, children=[(1, "x")]), lambda: orvelasn1.CardObject(1, b""),
        lambda: GDOObjectSetOf(0x10, children=[{"id": 1, "value": b"", "more": 1}]),
    ],
)
def test_arguments_of_other_types(make):
    with pytest.raises(TypeError):
        make()


@pytest.mark.parametrize(
    "make",
    [
        lambda: GDOObjectSetOf(256, b""), lambda: GDOObjectSetOf(-1, b""), lambda: GDOObjectSetOf(1),
        lambda: GDOObjectSetOf(0x10), lambda: GDOObjectSetOf(0x20, children=[(1 << 32, b"")]),
    ],
)
def test_objects_that_there_are_not(make):
    with pytest.raises(ValueError):
        make()


def nested(levels):
    inside = LEAF
    for _ in range(levels):
        inside = an_object(0x10, octets(a_set(inside)))
    return inside


def test_objects_in_objects():
    deepest = GDOObjectSetOf.decode(nested(32))
    use(deepest)
    inner = deepest
    while inner.role == "container":
        (inner,) = inner.children
    assert inner.value == b"abc"
    for levels in (33, 100, 2000):
        with pytest.raises(orvelasn1.Fault):
            GDOObjectSetOf.decode(nested(levels))
        with pytest.raises(orvelasn1.Fault):
            GDO.decode(sequence(nested(levels), LEAF, LEAF, LEAF))
    with pytest.raises(orvelasn1.Fault) as caught:
        GDOObjectSetOfSetOf.decode(an_object(0x10, octets(a_set(a_set(), a_set(nested(33))))))
    assert "32 others" in str(caught.value)


def test_what_one_thread_read_another_one_with_little_stack_releases():
    kept = [GDOObjectSetOf.decode(nested(32)) for _ in range(4)]
    before = threading.stack_size(64 << 10)
    try:
        thread = threading.Thread(target=kept.clear)
        thread.start()
        thread.join()
    finally:
        threading.stack_size(before)
    assert kept == []


def test_the_tool_shows_the_same(tmp_path):
    program = tool()
    if program is None:
        pytest.skip("the command-line tool is not there: ORVELASN1_TOOL says where it is")

    def same(own, other):
        """Tells whether each member is one of the tool's, which adds the text in octets."""
        if isinstance(own, dict):
            return own.keys() <= other.keys() <= own.keys() | {"text"} and all(same(own[k], other[k]) for k in own)
        if isinstance(own, list):
            return len(own) == len(other) and all(map(same, own, other))
        return own == other

    for kind, value in (("gdo", GDO.decode(CARD)), ("gdo-object", GDOObjectSetOf.decode(nested(32))),
                        ("gdo-object-of-sets", GDOObjectSetOfSetOf.decode(SETS))):
        path = tmp_path / kind
        path.write_bytes(value.der)
        done = subprocess.run([program, "show", "--json", "--type", kind, path], capture_output=True, check=True)
        line = {k: v for k, v in json.loads(done.stdout).items() if k not in ("file", "element", "type", "octets")}
        assert same(value.to_dict(), line), line
