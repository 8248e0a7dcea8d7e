"""Views: the parts of a value as places in its octets, in which nothing is decoded before it is asked for.

A view holds the octets, so that they live as long as it does. It borrows bytes, and a file that is mapped for
reading. Others may change: they are copied once, when the view is made.
"""

from __future__ import annotations

import mmap
from datetime import datetime
from typing import Any, Callable, Iterator, NamedTuple, Optional, Tuple

from ._errors import Fault, Unreadable
from ._orvelpki import ffi, lib
from ._scalars import BitString, ObjectIdentifier
from ._text import text_of
from ._types import TYPES, Field, Type, datetime_of, explain
from ._writer import element, write_identifier

_new = object.__new__


def borrow(data: Any) -> memoryview:
    """Returns the octets of a buffer as they are, or a copy where they may change."""
    try:
        octets = memoryview(data)
    except TypeError:
        raise TypeError(f"octets are bytes or a buffer, not {type(data).__name__}") from None
    if octets.readonly and octets.c_contiguous and isinstance(octets.obj, (bytes, mmap.mmap)):
        return octets.cast("B")
    return memoryview(octets.tobytes())


def _start(octets: memoryview) -> Any:
    return ffi.from_buffer("uint8_t[]", octets)


def _place(octets: memoryview, place: Any) -> memoryview:
    offset = place.offset
    return octets[offset : offset + place.length]


def _first(octets: memoryview, name: str = "element") -> Tuple[memoryview, memoryview]:
    """Returns the first element, and its content."""
    places = ffi.new("py_Place[2]")
    if lib.py_view_element(_start(octets), len(octets), places, places + 1) != 1:
        raise Fault(name, 0, "", "the octets are no element")
    return _place(octets, places[0]), _place(octets, places[1])


def elements(data: Any) -> Iterator[memoryview]:
    """Goes through the elements that follow one another in octets, such as the certificates in a file. Nothing is
    decoded or copied. Raises Fault at octets that are no element."""
    return _elements(borrow(data))


def _elements(octets: memoryview) -> Iterator[memoryview]:
    offset, size, place = 0, len(octets), ffi.new("py_Place *")
    while offset < size:
        rest = octets[offset:]
        if lib.py_view_element(_start(rest), len(rest), place, ffi.NULL) != 1:
            raise Fault("element", offset, "", "the octets are no element")
        yield rest[: place.length]
        offset += place.length


def view(type_: Type, data: Any) -> "View":
    """Returns a view of octets that are one value of a type."""
    if not type_.is_form:
        raise TypeError(f"only forms of the RFCs have views, and {type_.name} is none")
    octets = borrow(data)
    whole, _ = _first(octets, type_.name)
    if len(whole) != len(octets):
        raise Fault(type_.name, len(whole), "", "expected the end")
    made = View._of(type_, whole, None)
    made._check()
    return made


class View:
    """A value in octets. The fields of a SEQUENCE are attributes, views in turn; one that is not there is None. A
    list is gone through. decode() returns the value.

    A view takes what stands on its own level: there may be a view of what decode() refuses."""

    __slots__ = ("octets", "_type", "_field", "_places")

    #: the element, without the explicit tag of its field
    octets: memoryview
    _type: Type
    _field: Optional[Field]
    _places: Any

    def __new__(cls, *arguments: Any, **named: Any) -> Any:
        raise TypeError("views are made by the method view() of a type")

    @classmethod
    def _of(cls, type_: Type, octets: memoryview, field: Optional[Field]) -> "View":
        made = _new(cls)
        for name, value in (("octets", octets), ("_type", type_), ("_field", field), ("_places", None)):
            object.__setattr__(made, name, value)
        return made

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError("a View does not change")

    def __delattr__(self, name: str) -> None:
        raise AttributeError("a View does not change")

    def _own_octets(self) -> Any:
        """Returns the element under the identifier octet of its type: a copy, where another one stands there."""
        field = self._field
        if field is None or field.tagging != lib.PKI_IMPLICIT:
            return self.octets
        own = self._type.identifier | (self.octets[0] & 0x20)
        return bytes((own,)) + self.octets[1:]

    def _check(self) -> None:
        """Raises Fault where the octets do not begin as a value of the type does."""
        type_ = self._type
        if type_.kind == lib.PKI_SEQUENCE:
            self._read_places()
        elif type_.identifier and not type_.is_time and self.octets[0] & ~0x20 != type_.identifier & ~0x20:
            raise self._fault()

    def _fault(self) -> Exception:
        fault = explain(self._type, bytes(self._own_octets()))
        return fault if isinstance(fault, Fault) else Fault(self._type.name, 0, "", "the octets are no such value")

    def _read_places(self) -> Any:
        type_, octets = self._type, self._own_octets()
        count = len(type_.fields)
        places = ffi.new("py_Place[]", count)
        if not lib.py_view_fields(type_.pointer, _start(octets), len(octets), places, count):
            raise self._fault()
        return tuple((place.offset, place.offset + place.length) for place in places)

    @property
    def contents(self) -> memoryview:
        """The contents octets of the element."""
        return _first(self.octets, self._type.name)[1]

    @property
    def type_name(self) -> str:
        """The name of the type, such as "Validity"."""
        return self._type.name

    def __getattr__(self, name: str) -> Any:
        """Returns the view of a field; None where it is not there."""
        if name.startswith("_"):
            raise AttributeError(name)
        field = next((field for field in self._type.fields if field.attribute == name), None)
        if field is None or self._type.kind != lib.PKI_SEQUENCE:
            raise AttributeError(f"a view of {self._type.name or 'a list'} has no field {name!r}")
        places = self._places
        if places is None:
            places = self._read_places()
            object.__setattr__(self, "_places", places)
        begin, end = places[field.number]
        if begin == end:
            return None
        octets = self.octets[begin:end]
        if field.tagging == lib.PKI_EXPLICIT:
            inner = _first(octets, field.name)[1]
            octets, _ = _first(inner, field.name)
            if len(octets) != len(inner):
                raise Fault(self._type.name, end, field.name, "expected the end of the tag")
        return View._of(field.type, octets, field)

    def __dir__(self) -> Any:
        return [*object.__dir__(self), *(field.attribute for field in self._type.fields)]

    def __iter__(self) -> Iterator["View"]:
        """Goes through the elements of a list."""
        inner = self._type.element
        if inner is None:
            raise TypeError(f"a view of {self._type.name} is no list")
        return (View._of(inner, octets, None) for octets in _elements(self.contents))

    def find(self, identifier: str) -> Optional["View"]:
        """Returns the view of the first extension with an identifier; None where there is none."""
        if self._type.element is None or self._type.element.name != "Extension":
            raise TypeError(f"a view of {self._type.name or 'a list'} holds no extensions")
        octets, content, place = self._own_octets(), content_of(identifier), ffi.new("py_Place *")
        found = lib.py_view_extension(_start(octets), len(octets), content, len(content), place)
        if found < 0:
            raise self._fault()
        return View._of(self._type.element, _place(self.octets, place), None) if found else None

    def decode(self) -> Any:
        """Decodes the value. Raises Fault where the octets are none."""
        type_, octets = self._type, self._own_octets()
        if type_.is_decoded:
            return type_.value_class.decode(octets)
        if type_.is_list:
            return tuple(each.decode() for each in self)
        return _scalar(type_, memoryview(octets), self._fault)

    def __bytes__(self) -> bytes:
        return bytes(self.octets)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, View):
            return NotImplemented
        return self._type is other._type and self.octets == other.octets

    def __hash__(self) -> int:
        return hash((self._type.record, self.octets))

    def __copy__(self) -> "View":
        return self

    def __deepcopy__(self, memo: Any) -> "View":
        return self

    def __reduce__(self) -> Any:
        raise TypeError("a view is not pickled: pickle its octets")

    def __repr__(self) -> str:
        return f"<view of {self._type.name or 'a list'}, {len(self.octets)} octets>"


def _scalar(type_: Type, octets: memoryview, fault: Callable[[], Exception]) -> Any:
    """Reads a value whose type has no decoder of its own, since it is always a part of another."""
    kind = type_.kind
    if kind == lib.PKI_ATTRIBUTE_VALUE:
        content = bytes(_first(octets)[1])
        text = text_of(octets[0], content)
        return content if text is None else text
    place = ffi.new("pki_Fault *")
    start = _start(octets)
    if lib.pki_explain(type_.pointer, start, start + len(octets), place) or place.offset != len(octets):
        raise fault()
    if kind == lib.PKI_NULL:
        return None
    if kind == lib.PKI_ANY:
        return bytes(octets)
    if kind == lib.PKI_OBJECT_IDENTIFIER:
        return TYPES["AlgorithmIdentifier"].value_class.decode(element(0x30, bytes(octets))).algorithm
    if type_.is_time:
        return TYPES["Validity"].value_class.decode(element(0x30, bytes(octets) * 2)).notBefore
    if kind == lib.PKI_BIT_STRING:
        segments = list(_segments(octets))
        joined = b"".join(segment[1:] for segment in segments)
        return BitString(joined, 8 * len(joined) - (segments[-1][0] if segments else 0))
    joined = b"".join(_segments(octets))
    if kind == lib.PKI_OCTET_STRING:
        return joined
    if kind == lib.PKI_CHARACTER_STRING:
        return text_of(type_.identifier, joined)
    number = int.from_bytes(joined, "big", signed=True)
    return number != 0 if kind == lib.PKI_BOOLEAN else number


def _segments(octets: memoryview) -> Iterator[memoryview]:
    """Goes through the segments of a string (X.690, 8.7.3), which the library has found to be right."""
    content = _first(octets)[1]
    if octets[0] & 0x20:
        for segment in _elements(content):
            yield from _segments(segment)
    else:
        yield content


def content_of(identifier: str) -> bytes:
    """Returns the content octets of an identifier."""
    return bytes(_first(memoryview(write_identifier(ObjectIdentifier(identifier))))[1])


class CrlEntry(NamedTuple):
    """An entry of a revocation list."""

    serialNumber: int
    revocationDate: Optional[datetime]  # None for what is no time
    reason: Optional[int]  # CRLReason (RFC 5280, 5.3.1); None where none is given
    extensions: Optional[View]


class CrlReader:
    """A revocation list of any size, entry by entry, where it stands. Nothing is kept of what was read."""

    __slots__ = ("view",)

    #: the view of the whole list, for what is no entry
    view: View

    def __init__(self, data: Any) -> None:
        self.view = view(TYPES["CertificateList"], data)
        self.view.tbsCertList._check()

    def __iter__(self) -> Iterator[CrlEntry]:
        """Goes through the entries. Raises Fault at octets that are none."""
        return _entries(self.view.octets)

    def find(self, serial: int) -> Optional[CrlEntry]:
        """Returns the entry of a serial number; None where there is none. The time is linear in the list."""
        if not isinstance(serial, int) or isinstance(serial, bool):
            raise TypeError(f"a serial number is an int, not {type(serial).__name__}")
        size = (serial if serial >= 0 else ~serial).bit_length() // 8 + 1
        content, octets, entry = serial.to_bytes(size, "big", signed=True), self.view.octets, ffi.new("py_Entry *")
        found = lib.py_crl_find(_start(octets), len(octets), content, size, entry)
        if found < 0:
            for _ in self:
                pass
        return _entry(octets, entry) if found > 0 else None


def _entries(octets: memoryview) -> Iterator[CrlEntry]:
    entry, offset = ffi.new("py_Entry *"), ffi.new("uint64_t *")
    while True:
        found = lib.py_crl_next(_start(octets), len(octets), offset, entry)
        if found == 0:
            return
        if found < 0:
            fault = explain(TYPES["CertificateList"], bytes(octets))
            raise fault if isinstance(fault, Fault) else Fault(
                "CertificateList", offset[0], "tbsCertList.revokedCertificates", "the octets are no entry"
            )
        yield _entry(octets, entry)


def _entry(octets: memoryview, entry: Any) -> CrlEntry:
    serial = int.from_bytes(_place(octets, entry.serialNumber), "big", signed=True)
    date: Optional[datetime] = None
    # The library has the same number for no time and for that with which all counting begins.
    if entry.revoked or bytes(_place(octets, entry.revocationDate)).startswith((b"700101", b"19700101")):
        try:
            date = datetime_of(entry.revoked)
        except Unreadable:
            pass
    extensions = None
    if entry.extensions.length:
        extensions = View._of(TYPES["Extensions"], _place(octets, entry.extensions), None)
    return CrlEntry(serial, date, entry.reason if entry.reason >= 0 else None, extensions)
