"""The characters of strings, by their identifier octet (X.690, 8.23)."""

from __future__ import annotations

import re
from typing import Optional

_CONSTRUCTED = 0x20
_ASCII = frozenset((0x12, 0x13, 0x15, 0x16, 0x19, 0x1A, 0x1B))
_UTF8, _LATIN1, _UNIVERSAL, _BMP = 0x0C, 0x14, 0x1C, 0x1E

_MARKS = re.compile("[\udc00-\udcff]")


def _units(octets: bytes, size: int) -> str:
    """Reads units of 2 or 4 octets; an octet that makes no character is marked."""
    codec = "utf-16-be" if size == 2 else "utf-32-be"
    try:
        return octets.decode(codec)
    except UnicodeDecodeError:
        pass
    text, at = [], 0
    while at < len(octets):
        for taken in (size, 4) if size == 2 else (size,):
            unit = octets[at : at + taken]
            try:
                text.append(unit.decode(codec))
                break
            except UnicodeDecodeError:
                continue
        else:
            unit = octets[at : at + size]
            text.extend(chr(0xDC00 + octet) for octet in unit)
        at += len(unit)
    return "".join(text)


def text_of(identifier: int, octets: bytes) -> Optional[str]:
    """Returns the characters of a string; None where it is none that is known.

    An octet that makes no character is the lone surrogate U+DC00 + octet, as with Python's error handler
    "surrogateescape": nothing is lost, and no two strings are taken for each other.
    """
    identifier &= ~_CONSTRUCTED
    if identifier == _UTF8:
        return octets.decode("utf-8", "surrogateescape")
    if identifier in _ASCII:
        return octets.decode("ascii", "surrogateescape")
    if identifier == _LATIN1:
        return octets.decode("latin-1")
    if identifier == _BMP:
        return _units(octets, 2)
    if identifier == _UNIVERSAL:
        return _units(octets, 4)
    return None


def octets_of(identifier: int, text: str) -> bytes:
    """Returns the octets of a string. Raises ValueError for characters that it does not have."""
    identifier &= ~_CONSTRUCTED
    if identifier == _UTF8:
        return text.encode("utf-8", "surrogateescape")
    if identifier in _ASCII:
        return text.encode("ascii", "surrogateescape")
    if identifier == _LATIN1:
        return text.encode("latin-1")
    if identifier == _BMP:
        return text.encode("utf-16-be")
    if identifier == _UNIVERSAL:
        return text.encode("utf-32-be")
    raise ValueError(f"no string has the identifier octet {identifier:02X}")


def is_clean(text: str) -> bool:
    """Tells whether all octets made characters."""
    return _MARKS.search(text) is None


def shown(text: str) -> str:
    """Returns the text, with U+FFFD for each octet that makes no character."""
    return _MARKS.sub("\ufffd", text)
