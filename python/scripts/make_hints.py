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
from collections.abc import Iterable as _Iterable
from collections.abc import Iterator as _Iterator
from collections.abc import Mapping as _Mapping
from collections.abc import Sequence as _Sequence
from datetime import datetime as _datetime
from typing import Any as _Any
from typing import Generic as _Generic
from typing import NamedTuple as _NamedTuple
from typing import TypeVar as _TypeVar
from typing import overload as _overload

from typing_extensions import Self as _Self

_E = _TypeVar("_E", covariant=True)
_Octets = _b.bytes | _b.bytearray | _b.memoryview
'''


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
    if type_.kind == lib.PKI_TLS_LIST:
        return class_name(type_)
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
    if type_.kind == lib.PKI_TLS_LIST:
        return [f"class {name}(ListValue[Timestamp]): ..."]
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
    version: _b.int
    logID: _b.bytes
    timestamp: _b.int
    extensions: _b.bytes | None
    hashAlgorithm: _b.int
    signatureAlgorithm: _b.int
    signature: _b.bytes | None
    opaque: _b.bytes | None
    @property
    def time(self) -> _datetime: ...

__version__: _b.str

def types() -> _b.tuple[_b.str, ...]: ...
def type_named(name: _b.str) -> _Any: ...
def decode(type_name: _b.str, data: _Octets) -> _Any: ...
def encode(type_name: _b.str, value: _Any) -> _b.bytes: ...
def defined_by(identifier: _b.str) -> _Any: ...
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
