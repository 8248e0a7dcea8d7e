"""Writes orvelasn1/__init__.pyi, the type hints of the package, from the library's description of its types.

    python3 scripts/make_hints.py [FILE]

The package that it finds must be built.
"""

import sys
from pathlib import Path

from orvelasn1 import _types
from orvelasn1._orvelpki import lib

HEAD = '''\
# Made by scripts/make_hints.py from the library's description of its types.
import builtins as _b
import enum as _enum
from collections.abc import Iterable as _Iterable
from collections.abc import Iterator as _Iterator
from collections.abc import Mapping as _Mapping
from collections.abc import Sequence as _Sequence
from datetime import datetime as _datetime
from ipaddress import IPv4Address as _IPv4Address
from ipaddress import IPv6Address as _IPv6Address
from mmap import mmap as _mmap
from typing import Any as _Any
from typing import Generic as _Generic
from typing import NamedTuple as _NamedTuple
from typing import TypeVar as _TypeVar
from typing import overload as _overload

from typing_extensions import Self as _Self

_E = _TypeVar("_E", covariant=True)
_Octets = _b.bytes | _b.bytearray | _b.memoryview
_T = _TypeVar("_T", covariant=True)
'''
STAMPS = "_Iterable[Timestamp | _Mapping[_b.str, _Any]]"


def python_type(type_, hold="read"):
    """Returns the hint for a value of a type: one that is read, or one that a record is made of."""
    if type_.is_time:
        return "_datetime"
    if type_.kind == lib.PKI_SEQUENCE:
        name = class_name(type_)
        return name if hold == "read" else f"{name} | _Mapping[_b.str, _Any]"
    if type_.kind == lib.PKI_CHOICE:
        name = class_name(type_)
        if hold == "read":
            return name
        return f"{name} | _Mapping[_b.str, _Any] | _b.tuple[_b.str, _Any]"
    if type_.kind == lib.PKI_CARD_OBJECT:
        name = class_name(type_)
        return name if hold == "read" else f"{name} | _Mapping[_b.str, _Any]"
    if type_.kind == lib.PKI_TLS_LIST:
        return class_name(type_) if hold == "read" else STAMPS
    if type_.is_list:
        if hold == "read":
            return class_name(type_) if type_.record else f"ListValue[{python_type(type_.element)}]"
        text = " | _b.str" if type_.name == "RDNSequence" else ""
        return f"_Iterable[{python_type(type_.element, hold)}]{text}"
    if type_.kind == lib.PKI_BOOLEAN:
        return "_b.bool"
    if type_.kind in (lib.PKI_INTEGER, lib.PKI_ENUMERATED):
        return "_b.int"
    if type_.kind == lib.PKI_NULL:
        return "None"
    if type_.kind == lib.PKI_OBJECT_IDENTIFIER:
        return "ObjectIdentifier" if hold == "read" else "_b.str | _Sequence[_b.int]"
    if type_.kind == lib.PKI_BIT_STRING:
        return "BitString" if hold == "read" else "BitString | _Octets"
    if type_.kind == lib.PKI_CHARACTER_STRING:
        return "_b.str"
    if type_.kind == lib.PKI_ATTRIBUTE_VALUE:
        return "_b.str | _b.bytes" if hold == "read" else "_b.str | _Octets"
    return "_b.bytes" if hold == "read" else "_Octets | Value"


def class_name(type_):
    """Returns the name of a class: of one of liborvelasn1's inside another, that of the form."""
    own = _types.TYPES.get(type_.python_name)
    return type_.python_name if own is not None else "_Any"


def optional(hint, required):
    return hint if required or hint == "None" else f"{hint} | None"


def class_of(name, type_):
    """Returns the lines of a class."""
    base = type_.value_class.__mro__[1].__name__
    if base == "Scalar":
        hint = python_type(type_)
        return [
            f"class {name}(Scalar):",
            "    @classmethod",
            f"    def decode(cls, data: _Octets) -> {hint}: ...",
            "    @classmethod",
            f"    def decode_first(cls, data: _Octets, start: _b.int = ...) -> _b.tuple[{hint}, _b.int]: ...",
        ]
    if type_.kind == lib.PKI_CARD_OBJECT:
        return [f"class {name}(CardObject): ..."]
    if type_.kind == lib.PKI_TLS_LIST:
        return [
            f"class {name}(ListValue[Timestamp]):",
            f"    def __new__(cls, elements: {STAMPS} = ...) -> _Self: ...",
        ]
    if type_.is_list:
        text = " | _b.str" if type_.name == "RDNSequence" else ""
        base = {"ListValue": f"ListValue[{python_type(type_.element)}]"}.get(base, base)
        return [
            f"class {name}({base}):",
            f"    def __new__(cls, elements: _Iterable[{python_type(type_.element, 'write')}]{text} = ...)"
            " -> _Self: ...",
        ]
    lines = [f"class {name}({base}):"]
    if base == "Choice":
        for field in type_.fields:
            lines += [
                "    @property",
                f"    def {field.attribute}(self) -> {optional(python_type(field.type), False)}: ...",
            ]
        lines += [
            "    @_overload",
            f"    def __new__(cls, value: {name} | _Mapping[_b.str, _Any], /) -> _Self: ...",
            "    @_overload",
            "    def __new__(cls, choice: _b.str, value: _Any, /) -> _Self: ...",
        ]
        for field in type_.fields:
            lines += [
                "    @_overload",
                f"    def __new__(cls, *, {field.attribute}: {python_type(field.type, 'write')}) -> _Self: ...",
            ]
        if len(type_.fields) == 1:
            raise AssertionError(name)
        return lines
    writes = []
    for field in type_.fields:
        required = field.required or field.type.kind == lib.PKI_BOOLEAN
        lines += [
            "    @property",
            f"    def {field.attribute}(self) -> {optional(python_type(field.type), required)}: ...",
        ]
        hint = optional(python_type(field.type, "write"), field.required)
        writes.append(f"{field.attribute}: {hint}{'' if field.required else ' = ...'}")
    if hasattr(type_.value_class, "valueTag"):
        lines += ["    @property", "    def valueTag(self) -> _b.int: ..."]
        writes.append("valueTag: _b.int | None = ...")
    lines.append(f"    def __new__(cls, *, {', '.join(writes)}) -> _Self: ...")
    return lines


BODY = '''
class Error(ValueError): ...

class Fault(Error):
    type_name: _b.str
    offset: _b.int
    path: _b.str
    sentence: _b.str
    def __init__(self, type_name: _b.str, offset: _b.int, path: _b.str, sentence: _b.str) -> None: ...
    @property
    def expected(self) -> _b.str | None: ...
    @property
    def found(self) -> _b.str: ...

class Missing(Error):
    type_name: _b.str
    path: _b.str
    sentence: _b.str
    def __init__(self, type_name: _b.str, path: _b.str, sentence: _b.str) -> None: ...

class Unreadable(Error):
    what: _b.str
    octets: _b.bytes
    def __init__(self, what: _b.str, octets: _b.bytes) -> None: ...

class ObjectIdentifier(_b.str):
    def __new__(cls, text: _b.str | _Iterable[_b.int]) -> ObjectIdentifier: ...
    @property
    def arcs(self) -> _b.tuple[_b.int, ...]: ...
    @property
    def name(self) -> _b.str | None: ...

class BitString:
    def __init__(self, octets: _Octets = ..., length: _b.int | None = ...) -> None: ...
    @classmethod
    def of(cls, *bits: _b.int) -> BitString: ...
    @property
    def set(self) -> _b.tuple[_b.int, ...]: ...
    def __len__(self) -> _b.int: ...
    def __getitem__(self, bit: _b.int) -> _b.bool: ...
    def __iter__(self) -> _Iterator[_b.bool]: ...
    def __bytes__(self) -> _b.bytes: ...

class Value:
    @classmethod
    def decode(cls, data: _Octets) -> _Self: ...
    @classmethod
    def decode_first(cls, data: _Octets, start: _b.int = ...) -> _b.tuple[_Self, _b.int]: ...
    @classmethod
    def view(cls, data: _Octets | _mmap) -> View: ...
    def encode(self) -> _b.bytes: ...
    @property
    def der(self) -> _b.bytes: ...
    def to_dict(self) -> _Any: ...

class Record(Value):
    fields: _b.tuple[_b.str, ...]
    def replace(self, **fields: _Any) -> _Self: ...
    def __iter__(self) -> _Iterator[_b.tuple[_b.str, _Any]]: ...
    @property
    def decoded(self) -> _Any: ...

class Choice(Value):
    __match_args__ = ("choice", "value")
    alternatives: _b.tuple[_b.str, ...]
    @property
    def choice(self) -> _b.str: ...
    @property
    def value(self) -> _Any: ...

class ListValue(Value, _Sequence[_E], _Generic[_E]):
    def __len__(self) -> _b.int: ...
    @_overload
    def __getitem__(self, index: _b.int) -> _E: ...
    @_overload
    def __getitem__(self, index: _b.slice) -> _b.tuple[_E, ...]: ...

class ExtensionList(ListValue[Extension]):
    def find(self, identifier: _b.str) -> Extension | None: ...

class NameValue(ListValue[RelativeDistinguishedName]):
    def rfc4514(self) -> _b.str | None: ...
    def own_text(self) -> _b.str: ...

class Scalar: ...

class Timestamp(_NamedTuple):
    version: _b.int = ...
    logID: _b.bytes = ...
    timestamp: _b.int = ...
    extensions: _b.bytes | None = ...
    hashAlgorithm: _b.int = ...
    signatureAlgorithm: _b.int = ...
    signature: _b.bytes | None = ...
    opaque: _b.bytes | None = ...
    @property
    def time(self) -> _datetime: ...

class CardAttribute(_NamedTuple):
    id: _b.int
    value: _b.bytes

class CardObject(Value):
    def __new__(cls, id: _b.int, value: _Octets | None = ..., children: _Iterable[_Any] | None = ...) -> _Self: ...
    @property
    def id(self) -> _b.int: ...
    @property
    def role(self) -> _b.str: ...
    @property
    def value(self) -> _b.bytes | None: ...
    @property
    def children(self) -> _b.tuple[_Any, ...] | None: ...

class Usage(_enum.IntFlag):
    DIGITAL_SIGNATURE = ...
    NON_REPUDIATION = ...
    KEY_ENCIPHERMENT = ...
    DATA_ENCIPHERMENT = ...
    KEY_AGREEMENT = ...
    KEY_CERT_SIGN = ...
    CRL_SIGN = ...
    ENCIPHER_ONLY = ...
    DECIPHER_ONLY = ...

class Names(_b.tuple[_T, ...]):
    unreadable: _b.int
    def __new__(cls, names: _Iterable[_T] = ..., unreadable: _b.int = ...) -> Names[_T]: ...

class CertificateRecord(Record):
    def extension(self, identifier: _b.str) -> Extension | None: ...
    def dns_names(self) -> Names[_b.str]: ...
    def mail_addresses(self) -> Names[_b.str]: ...
    def uris(self) -> Names[_b.str]: ...
    def ip_addresses(self) -> Names[_IPv4Address | _IPv6Address]: ...
    def crl_places(self) -> Names[_b.str]: ...
    def ocsp_places(self) -> Names[_b.str]: ...
    def issuer_places(self) -> Names[_b.str]: ...
    def key_usage(self) -> Usage | None: ...
    def allows_purpose(self, purpose: _b.str) -> _b.bool: ...
    def may_issue(self) -> _b.bool: ...
    def path_length(self) -> _b.int | None: ...
    def subject_key_identifier(self) -> _b.bytes | None: ...
    def authority_key_identifier(self) -> _b.bytes | None: ...
    def period(self) -> _b.tuple[_datetime, _datetime]: ...

class View:
    @property
    def octets(self) -> _b.memoryview: ...
    @property
    def contents(self) -> _b.memoryview: ...
    @property
    def type_name(self) -> _b.str: ...
    def __getattr__(self, name: _b.str) -> _Any: ...
    def __iter__(self) -> _Iterator[View]: ...
    def __bytes__(self) -> _b.bytes: ...
    def find(self, identifier: _b.str) -> View | None: ...
    def decode(self) -> _Any: ...

class CrlEntry(_NamedTuple):
    serialNumber: _b.int
    revocationDate: _datetime | None
    reason: _b.int | None
    extensions: View | None

class CrlReader:
    @property
    def view(self) -> View: ...
    def __init__(self, data: _Octets | _mmap) -> None: ...
    def __iter__(self) -> _Iterator[CrlEntry]: ...
    def find(self, serial: _b.int) -> CrlEntry | None: ...

__version__: _b.str

def types() -> _b.tuple[_b.str, ...]: ...
def type_named(name: _b.str) -> _Any: ...
def decode(type_name: _b.str, data: _Octets) -> _Any: ...
def encode(type_name: _b.str, value: _Any) -> _b.bytes: ...
def defined_by(identifier: _b.str) -> _Any: ...
def elements(data: _Octets | _mmap) -> _Iterator[_b.memoryview]: ...
def read_pem(text: _b.str | _Octets) -> _Iterator[_b.tuple[_b.str, _b.bytes]]: ...
'''


def hints():
    """Returns the whole of the file."""
    lines = [HEAD + BODY]
    for name, type_ in sorted(_types.TYPES.items()):
        lines += ["", *class_of(name, type_)]
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    target = sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent / "orvelasn1" / "__init__.pyi"
    Path(target).write_text(hints(), encoding="utf-8")
