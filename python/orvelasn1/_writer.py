"""Writes values of Python in DER (X.690), as the types say.

What is written here is decoded by the library before anyone sees it, so that no record comes to be that
the library would not read.
"""

from __future__ import annotations

from collections import abc
from datetime import datetime, timezone
from typing import Any, Dict, List, Tuple

from ._errors import Error, Missing
from ._orvelpki import ffi, lib
from ._scalars import BitString, ObjectIdentifier
from ._text import octets_of
from ._types import ListValue, Timestamp, Type, Value, octets_from

_UTF8, _PRINTABLE, _IA5 = 0x0C, 0x13, 0x16
# The attributes of names that RFC 5280, appendix A.1 does not have as DirectoryString.
_STRINGS = {
    "2.5.4.5": _PRINTABLE,  # serialNumber
    "2.5.4.6": _PRINTABLE,  # countryName
    "2.5.4.46": _PRINTABLE,  # dnQualifier
    "0.9.2342.19200300.100.1.25": _IA5,  # domainComponent
    "1.2.840.113549.1.9.1": _IA5,  # emailAddress
}
_UTC_TIME, _GENERALIZED_TIME = 0x17, 0x18
_OBJECT = frozenset(("id", "value", "children"))


def element(identifier: int, content: bytes) -> bytes:
    """Returns an element: its identifier octet, the length in the shortest form, its content."""
    size = len(content)
    if size < 0x80:
        return bytes((identifier, size)) + content
    length = size.to_bytes((size.bit_length() + 7) // 8, "big")
    return bytes((identifier, 0x80 | len(length))) + length + content


def wrong(path: str, wanted: str, value: Any) -> TypeError:
    """Returns the exception for a value of a wrong type."""
    return TypeError(f"{path or 'the value'}: {wanted} is needed, not {type(value).__name__}")


def _at(path: str, name: str) -> str:
    return f"{path}.{name}" if path else name


def _same(type_: Type, value: Value) -> bool:
    """Tells whether a value is of a type, or of one that is written alike."""
    own = value._type
    if own.kind == lib.PKI_CARD_OBJECT:  # of which one has objects where another has sets of them
        return own is type_
    return own is type_ or (own.name == type_.name != "" and own.kind == type_.kind)


def write(type_: Type, value: Any, path: str = "") -> bytes:
    """Returns the element of a value."""
    if isinstance(value, Value) and _same(type_, value):
        return value.der
    if type_.is_time:
        return _time(type_, value, path)
    if type_.kind == lib.PKI_SEQUENCE:
        if isinstance(value, Value) or not isinstance(value, abc.Mapping):
            raise wrong(path, f"a {type_.name} or a mapping of its fields", value)
        return write_record(type_, dict(value), path)
    if type_.kind == lib.PKI_CHOICE:
        if isinstance(value, Value):
            raise wrong(path, f"a {type_.name}", value)
        if isinstance(value, abc.Mapping):
            return write_choice(type_, (), dict(value), path)
        if isinstance(value, tuple) and len(value) == 2:
            return write_choice(type_, value, {}, path)
        raise wrong(path, f"a {type_.name}, or the name of an alternative and its value,", value)
    if type_.is_list:
        return write_list(type_, value, path)
    if type_.kind == lib.PKI_CARD_OBJECT:
        from ._cards import write_object

        if isinstance(value, Value) or not isinstance(value, abc.Mapping) or not {*value} <= _OBJECT:
            raise wrong(path, f"a {type_.python_name} or a mapping of its fields", value)
        return write_object(type_, value.get("id"), value.get("value"), value.get("children"), path)
    return _scalar(type_, value, path)


def write_record(type_: Type, fields: Dict[str, Any], path: str = "") -> bytes:
    """Returns the SEQUENCE of some fields; those that are None are left out."""
    content: List[bytes] = []
    fields = dict(fields)
    has_tag = any(field.type.kind == lib.PKI_ATTRIBUTE_VALUE for field in type_.fields)
    tag = fields.pop("valueTag", None) if has_tag else None
    known = {name for field in type_.fields for name in (field.name, field.attribute)}
    for name in fields:
        if name not in known:
            raise TypeError(f"{_at(path, str(name))}: {type_.name} has no such field")
    for field in type_.fields:
        value = fields.pop(field.attribute, None)
        if field.attribute != field.name and field.name in fields:
            value = fields.pop(field.name)
        where = _at(path, field.name)
        if value is None:
            if field.required and field.type.kind != lib.PKI_NULL:
                raise Missing(type_.name, where, "is missing")
            continue
        if field.type.kind == lib.PKI_BOOLEAN and not field.required and not value:
            continue  # its DEFAULT is FALSE (X.690, 11.5)
        if field.type.kind == lib.PKI_ATTRIBUTE_VALUE:
            written = _attribute_value(value, tag, content[0], where)
        else:
            written = write(field.type, value, where)
        content.append(_tagged(field, written))
    return element(type_.identifier or 0x30, b"".join(content))


def _tagged(field: Any, written: bytes) -> bytes:
    if field.tagging == lib.PKI_IMPLICIT:
        return bytes((field.tag,)) + written[1:]
    if field.tagging == lib.PKI_EXPLICIT:
        return element(field.tag or 0xA0, written)
    return written


def write_choice(type_: Type, arguments: Tuple[Any, ...], named: Dict[str, Any], path: str = "") -> bytes:
    """Returns the element of an alternative, given as its name and value or by keyword."""
    if len(arguments) == 1 and not named and isinstance(arguments[0], (Value, abc.Mapping)):
        return write(type_, arguments[0], path)
    if len(arguments) == 2 and not named:
        named = {arguments[0]: arguments[1]}
    elif arguments or len(named) != 1:
        raise TypeError(f"{path or type_.name}: one alternative is needed")
    ((name, value),) = named.items()
    for field in type_.fields:
        if name in (field.attribute, field.name):
            where = _at(path, field.name)
            if value is None and field.type.kind != lib.PKI_NULL:
                raise Missing(type_.name, where, "is missing")
            return _tagged(field, write(field.type, value, where))
    raise TypeError(f"{path or type_.name}: there is no alternative {name!r}")


def write_list(type_: Type, elements: Any, path: str = "") -> bytes:
    """Returns the list of some elements; those of a SET OF in the order of DER."""
    if isinstance(elements, str) and type_.name == "RDNSequence":
        return _name(elements, path)
    if isinstance(elements, (str, bytes, bytearray, memoryview, abc.Mapping)) or not isinstance(
        elements, abc.Iterable
    ):
        raise wrong(path, "a list of elements", elements)
    if type_.element is None:
        stamps = [_timestamp(value, f"{path}[{index}]") for index, value in enumerate(elements)]
        return element(type_.identifier, _counted(b"".join(stamps), path))
    written = [
        write(type_.element, value, f"{path}[{index}]") for index, value in enumerate(elements)
    ]
    if type_.kind == lib.PKI_SET_OF and not isinstance(elements, ListValue):
        written.sort()  # X.690, 11.6
    return element(type_.identifier, b"".join(written))


def _counted(octets: bytes, path: str) -> bytes:
    """Returns octets after their number, as TLS has them (RFC 5246, 4.3)."""
    if len(octets) > 0xFFFF:
        raise ValueError(f"{path or 'the value'}: {len(octets)} octets, where 65535 are the most")
    return len(octets).to_bytes(2, "big") + octets


def _timestamp(value: Any, path: str) -> bytes:
    """Returns a signed certificate timestamp (RFC 6962, 3.2 and 3.3)."""
    if isinstance(value, abc.Mapping):
        value = Timestamp(**value)
    if not isinstance(value, Timestamp):
        raise wrong(path, "a Timestamp or a mapping of its fields", value)

    def number(name: str, size: int) -> bytes:
        part = getattr(value, name)
        if not isinstance(part, int) or isinstance(part, bool):
            raise wrong(_at(path, name), "an int", part)
        if not 0 <= part < 1 << 8 * size:
            raise ValueError(f"{_at(path, name)}: {size} octets do not hold the number")
        return part.to_bytes(size, "big")

    version = number("version", 1)
    if value.version != 0:
        return _counted(version + octets_from(value.opaque or b""), path)
    log = octets_from(value.logID)
    if len(log) != 32:
        raise ValueError(f"{_at(path, 'logID')}: 32 octets are needed, not {len(log)}")
    stamp = version + log + number("timestamp", 8) + _counted(octets_from(value.extensions or b""), path)
    algorithms = number("hashAlgorithm", 1) + number("signatureAlgorithm", 1)
    return _counted(stamp + algorithms + _counted(octets_from(value.signature or b""), path), path)


def _name(text: str, path: str) -> bytes:
    octets = text.encode("utf-8", "surrogateescape")
    if b"\0" in octets:
        raise Error(f"{path or 'the name'}: no name has the text {text[:80]!r}")
    handle = lib.py_name_parse(octets)
    if not handle:
        raise Error(f"{path or 'the name'}: no name has the text {text[:80]!r}")
    handle = ffi.gc(handle, lib.py_release)
    out = ffi.new("uint8_t[]", max(lib.py_size(handle), 1))
    size = lib.py_encode(handle, out)
    if size == 0:
        raise MemoryError
    return bytes(ffi.buffer(out, size))


def _attribute_value(value: Any, tag: Any, type_octets: bytes, path: str) -> bytes:
    if tag is not None and not (isinstance(tag, int) and 0 < tag < 0x100 and tag & 0x1F != 0x1F):
        raise ValueError(f"{path}: no identifier octet: {tag!r}")
    if not isinstance(value, str):
        octets = octets_from(value)
        return element(tag, octets) if tag is not None else octets
    if tag is None:
        tag = next(
            (tag for text, tag in _STRINGS.items() if write_identifier(text) == type_octets), _UTF8
        )
    return element(tag, _characters(tag, value, path))


def _characters(identifier: int, text: str, path: str) -> bytes:
    try:
        return octets_of(identifier, text)
    except UnicodeEncodeError as error:
        character = text[error.start : error.start + 1]
        raise ValueError(f"{path or 'the value'}: the string has no character {character!r}") from None


def write_identifier(value: Any) -> bytes:
    """Returns the element of an identifier."""
    identifier = value if isinstance(value, ObjectIdentifier) else ObjectIdentifier(value)
    if identifier.startswith("#"):
        return element(0x06, bytes.fromhex(identifier[1:]))
    arcs = identifier.arcs
    content = bytearray()
    for arc in (arcs[0] * 40 + arcs[1], *arcs[2:]):
        sevens = [arc & 0x7F]
        while arc := arc >> 7:
            sevens.append(0x80 | arc & 0x7F)
        content += bytes(reversed(sevens))
    return element(0x06, bytes(content))


def _time(type_: Type, value: Any, path: str) -> bytes:
    if not isinstance(value, datetime):
        raise wrong(path, "a datetime", value)
    if value.tzinfo is None or value.utcoffset() is None:
        raise ValueError(f"{path or 'the value'}: a datetime without a time zone")
    value = value.astimezone(timezone.utc)
    identifier = type_.identifier
    if type_.kind == lib.PKI_CHOICE:  # RFC 5280, 4.1.2.5
        identifier = _UTC_TIME if 1950 <= value.year < 2050 else _GENERALIZED_TIME
    if identifier == _UTC_TIME and not 1950 <= value.year < 2050:
        raise ValueError(f"{path or 'the value'}: no UTCTime has the year {value.year}")
    year = f"{value.year % 100:02}" if identifier == _UTC_TIME else f"{value.year:04}"
    return element(identifier, (year + value.strftime("%m%d%H%M%SZ")).encode())


def _scalar(type_: Type, value: Any, path: str) -> bytes:
    kind, identifier = type_.kind, type_.identifier
    if kind == lib.PKI_BOOLEAN:
        if not isinstance(value, bool):
            raise wrong(path, "a bool", value)
        return element(identifier, b"\xff" if value else b"\0")
    if kind in (lib.PKI_INTEGER, lib.PKI_ENUMERATED):
        if not isinstance(value, int) or isinstance(value, bool):
            raise wrong(path, "an int", value)
        size = (value if value >= 0 else ~value).bit_length() // 8 + 1
        return element(identifier, value.to_bytes(size, "big", signed=True))
    if kind == lib.PKI_NULL:
        if value not in (None, True):
            raise wrong(path, "None", value)
        return element(identifier, b"")
    if kind == lib.PKI_OBJECT_IDENTIFIER:
        if not isinstance(value, (str, tuple, list)):
            raise wrong(path, "an ObjectIdentifier", value)
        return write_identifier(value)
    if kind == lib.PKI_BIT_STRING:
        bits = value if isinstance(value, BitString) else BitString(octets_from(value))
        return element(identifier, bytes((-len(bits) % 8,)) + bytes(bits))
    if kind == lib.PKI_CHARACTER_STRING:
        if not isinstance(value, str):
            raise wrong(path, "a str", value)
        return element(identifier, _characters(identifier, value, path))
    octets = value.der if isinstance(value, Value) else octets_from(value)
    return octets if kind == lib.PKI_ANY else element(identifier, octets)
