"""Values that are no records: identifiers, bit strings."""

from __future__ import annotations

import struct
from typing import Any, Dict, Iterable, Iterator, List, Optional, Tuple, Union

from ._orvelpki import ffi, lib

_MOST_OCTETS = 128  # of an identifier that is written in digits: their time is quadratic
_LARGE = 0xFFFFFFFF  # the first word of an identifier that is kept as octets

_names: Dict[str, str] = {}


def _fill_names() -> None:
    for index in range(lib.py_name_count()):
        text = lib.py_name_identifier(index)
        if text:
            _names.setdefault(ffi.string(text).decode(), ffi.string(lib.py_name(index)).decode())
            lib.py_free_text(text)
    _names.setdefault("", "")


class ObjectIdentifier(str):
    """An OBJECT IDENTIFIER: its dotted text, such as "2.5.29.17", with its arcs and its name.

    It equals and hashes like that text. One of more than 128 octets with an arc above 2^32 - 1 is "#"
    and the hexadecimal digits of its content, since its decimal digits would take too long.
    """

    __slots__ = ()

    def __new__(cls, text: Union[str, Iterable[int]]) -> "ObjectIdentifier":
        if not isinstance(text, str):
            text = ".".join(str(int(arc)) for arc in text)
        if isinstance(text, ObjectIdentifier):
            return text
        try:
            octets = text.encode("ascii")
        except UnicodeEncodeError:
            octets = b""
        # The time to read digits is quadratic.
        own = ffi.NULL
        if 0 < len(octets) <= 4 * _MOST_OCTETS and b"\0" not in octets:
            own = lib.py_identifier_parse(octets)
        if not own:
            raise ValueError(f"no object identifier: {text[:80]!r}")
        try:
            return str.__new__(cls, ffi.string(own).decode())
        finally:
            lib.py_free_text(own)

    @property
    def arcs(self) -> Tuple[int, ...]:
        """The arcs as numbers; none of one that is too long."""
        return () if self.startswith("#") else tuple(map(int, self.split(".")))

    @property
    def name(self) -> Optional[str]:
        """The name of the library's constant, such as "id_ce_subjectAltName"; or None."""
        if not _names:
            _fill_names()
        return _names.get(str(self))

    def __lt__(self, other: str) -> bool:
        return self._key(self) < self._key(other)

    def __le__(self, other: str) -> bool:
        return self._key(self) <= self._key(other)

    def __gt__(self, other: str) -> bool:
        return self._key(self) > self._key(other)

    def __ge__(self, other: str) -> bool:
        return self._key(self) >= self._key(other)

    @staticmethod
    def _key(text: Any) -> Tuple[Any, ...]:
        """Orders by the arcs, as numbers."""
        if not isinstance(text, str):
            raise TypeError(f"an object identifier is not compared with {type(text).__name__}")
        if not isinstance(text, ObjectIdentifier):
            text = ObjectIdentifier(text)
        return (text.arcs or (_LARGE,), str(text))

    def __str__(self) -> str:
        return str.__str__(self)

    def __repr__(self) -> str:
        name = self.name
        return f"ObjectIdentifier({str.__repr__(self)})" + (f" <{name}>" if name else "")

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restore, (str(self),)


def _restore(text: str) -> ObjectIdentifier:
    if text.startswith("#"):
        return str.__new__(ObjectIdentifier, "#" + bytes.fromhex(text[1:]).hex().upper())
    return ObjectIdentifier(text)


def content_of_large(words: bytes) -> Optional[bytes]:
    """Returns the content octets of an identifier that is kept as such; None of any other."""
    numbers = struct.unpack(f"={len(words) // 4}I", words)
    if len(numbers) < 3 or numbers[0] != _LARGE:
        return None
    return struct.pack(f">{len(numbers) - 2}I", *numbers[2:])[: numbers[1]]


_number = lib.py_known
_known: List[Optional[ObjectIdentifier]] = [None] * lib.PY_MOST_KNOWN


def read_identifier(handle: Any, index: int) -> Optional[ObjectIdentifier]:
    """Reads an identifier. The same one is the same object, as long as there are not too many."""
    number = _number(handle, index)
    if number < 0:
        return _read_identifier(handle, index)
    found: Optional[ObjectIdentifier] = _known[number]
    if found is None:
        found = _known[number] = _read_identifier(handle, index)
    return found


def _read_identifier(handle: Any, index: int) -> Optional[ObjectIdentifier]:
    length = lib.py_length(handle, index)
    if length <= 0:
        return None
    words = ffi.unpack(lib.py_octets(handle, index), length)
    content = content_of_large(words) if length > 8 else None
    if content is not None and len(content) > _MOST_OCTETS:
        return str.__new__(ObjectIdentifier, "#" + content.hex().upper())
    text = lib.py_identifier_text(handle, index)
    if not text:
        raise MemoryError
    try:
        made: ObjectIdentifier = str.__new__(ObjectIdentifier, ffi.string(text).decode())
        return made
    finally:
        lib.py_free_text(text)


class BitString:
    """A BIT STRING: its octets, and the number of its bits.

    The bits are numbered as in ASN.1: bit 0 is the first one. `bits[n]` is whether the bit n is set, `n in
    bits.set` whether it is there and set; `bytes(bits)` are the octets, whose last one may have unused
    bits at its end.
    """

    __slots__ = ("_octets", "_length")

    _octets: bytes
    _length: int

    def __init__(self, octets: Union[bytes, bytearray, memoryview] = b"",
                 length: Optional[int] = None) -> None:
        octets = bytes(memoryview(octets))
        if length is None:
            length = 8 * len(octets)
        if not isinstance(length, int):
            raise TypeError("the number of bits is an int")
        if not 8 * len(octets) - 7 <= length <= 8 * len(octets) or length < 0:
            raise ValueError(f"{len(octets)} octets do not hold {length} bits")
        object.__setattr__(self, "_octets", octets)
        object.__setattr__(self, "_length", length)

    @classmethod
    def of(cls, *bits: int) -> "BitString":
        """Returns the shortest BIT STRING in which these bits are set, as for named bits."""
        if not bits:
            return cls(b"", 0)
        most = 65536
        if min(bits) < 0 or max(bits) >= most:
            raise ValueError(f"bits are numbered from 0 to {most - 1} here")
        length = max(bits) + 1
        octets = bytearray((length + 7) // 8)
        for bit in bits:
            octets[bit // 8] |= 0x80 >> bit % 8
        return cls(bytes(octets), length)

    @property
    def set(self) -> Tuple[int, ...]:
        """The numbers of the bits that are set."""
        return tuple(bit for bit, is_set in enumerate(self) if is_set)

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError("a BitString does not change")

    def __delattr__(self, name: str) -> None:
        raise AttributeError("a BitString does not change")

    def __len__(self) -> int:
        return self._length

    def __getitem__(self, bit: int) -> bool:
        if not isinstance(bit, int):
            raise TypeError("a bit is picked by its number")
        if bit < 0:
            bit += self._length
        if not 0 <= bit < self._length:
            raise IndexError("there is no such bit")
        return bool(self._octets[bit // 8] & 0x80 >> bit % 8)

    def __iter__(self) -> Iterator[bool]:
        octets = self._octets
        return (bool(octets[bit // 8] & 0x80 >> bit % 8) for bit in range(self._length))

    def __bytes__(self) -> bytes:
        return self._octets

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, BitString):
            return NotImplemented
        return self._octets == other._octets and self._length == other._length

    def __hash__(self) -> int:
        return hash((self._octets, self._length))

    def __repr__(self) -> str:
        if self._length <= 64:
            return f"<BitString {''.join('01'[bit] for bit in self) or 'without bits'}>"
        return f"<BitString of {self._length} bits {self._octets[:8].hex()}...>"

    def __reduce__(self) -> Tuple[Any, ...]:
        return BitString, (self._octets, self._length)
