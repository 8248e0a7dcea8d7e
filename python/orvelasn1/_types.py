"""The types of the library, from its own description of them, and the values that are decoded.

A value is a view into a tree of records in C. It holds the tree, and the tree goes with the last value that
holds it. Nothing changes a tree, so that values may be read from any thread. All checks on which octets are
read are made in C, against the type that the tree itself has at that place.
"""

from __future__ import annotations

import keyword
import re
import threading
from collections import abc
from datetime import datetime, timedelta, timezone
from functools import cached_property
from typing import Any, Callable, Dict, Iterator, List, NamedTuple, Optional, Tuple

from ._errors import Error, Fault, Missing, Unreadable
from ._orvelpki import ffi, lib
from ._scalars import BitString, read_identifier
from ._text import text_of

_new = object.__new__
_keep = object.__setattr__
_gc = ffi.gc
_release = lib.py_release
_part, _number, _seconds, _length, _octets, _unpack = (
    lib.py_part, lib.py_number, lib.py_seconds, lib.py_length, lib.py_octets, ffi.unpack,
)
_decode = lib.py_decode
_NULL = ffi.NULL
_ABSENT, _OTHER, _NUMBERS, _SELF = lib.PY_ABSENT, lib.PY_OTHER, lib.PY_NUMBERS, lib.PY_SELF
_from_bytes = int.from_bytes
_from_timestamp = datetime.fromtimestamp
_UTC = timezone.utc
_EPOCH = datetime(1970, 1, 1, tzinfo=_UTC)
_MOST_EXPLAINED = 0xFFFFFFFF  # octets whose offsets a fault can tell

_LISTS = frozenset((lib.PKI_SEQUENCE_OF, lib.PKI_SET_OF, lib.PKI_TLS_LIST))
_STRINGS = frozenset((lib.PKI_ANY, lib.PKI_OCTET_STRING))
_TIMES = frozenset((lib.PKI_UTC_TIME, lib.PKI_GENERALIZED_TIME))
_RECORDS = frozenset((lib.PKI_SEQUENCE, lib.PKI_CHOICE, lib.PKI_CARD_OBJECT))


# ----------------------------------------------------------------------------------------------
# Descriptions
# ----------------------------------------------------------------------------------------------


class Field(NamedTuple):
    """A component of a SEQUENCE, or an alternative of a CHOICE."""

    name: str  # as the ASN.1 has it
    attribute: str  # the same for Python
    number: int  # by which it is read
    type: "Type"
    tagging: int
    tag: int
    required: bool
    kept: bool  # whether its octets are kept beside its value
    has_text: bool  # whether a name is kept as a text, too
    kind: int  # the number of an alternative


class Type:
    """A type of the library."""

    def __init__(self, pointer: Any) -> None:
        self.pointer = pointer
        self.name = _string(lib.pki_Type_name(pointer))
        self.record = _string(lib.pki_Type_record(pointer))
        self.kind: int = lib.pki_Type_kind(pointer)
        self.identifier: int = lib.pki_Type_identifier(pointer)
        self.is_decoded = bool(lib.py_is_decoded(pointer))
        self.is_encoded = bool(lib.py_is_encoded(pointer))
        self._class: Optional[type] = None

    @cached_property
    def is_form(self) -> bool:
        """Whether it is the form of an RFC."""
        return self.record.startswith("pki_")

    @cached_property
    def is_list(self) -> bool:
        return self.kind in _LISTS

    @cached_property
    def is_time(self) -> bool:
        """Whether its values are times: also of the CHOICE of the two kinds."""
        return self.kind in _TIMES or (
            self.kind == lib.PKI_CHOICE and all(field.type.kind in _TIMES for field in self.fields)
        )

    @cached_property
    def is_part(self) -> bool:
        """Whether its values are objects that hold others."""
        return (self.is_list or self.kind in _RECORDS) and not self.is_time

    @cached_property
    def element(self) -> Optional["Type"]:
        """The type of a list's elements."""
        pointer = lib.pki_Type_element(self.pointer)
        return type_at(pointer) if pointer else None

    @cached_property
    def fields(self) -> Tuple[Field, ...]:
        return tuple(self._read_fields())

    def _read_fields(self) -> Iterator[Field]:
        place = ffi.new("pki_Field *")
        for index in range(lib.pki_Type_field_count(self.pointer)):
            lib.pki_Type_field(self.pointer, index, place)
            name = _string(place.name)
            yield Field(
                name, as_attribute(name), index, type_at(place.type), place.tagging, place.tag,
                place.presence == lib.PKI_ALWAYS,
                place.encoded_offset != lib.PKI_NO_MEMBER,
                place.text_offset != lib.PKI_NO_MEMBER,
                place.kind,
            )

    @cached_property
    def python_name(self) -> str:
        """The name of the class: that of the ASN.1 as an identifier; of the objects of a card, which share
        one, that of the functions."""
        if self.kind == lib.PKI_CARD_OBJECT:
            return self.record
        return as_attribute(re.sub("[- ]", "_", self.name) or self.record)

    @property
    def value_class(self) -> Any:
        """The class of its values."""
        if self._class is None:
            with _making:
                if self._class is None:
                    self._class = _make_class(self)
        return self._class

    def __repr__(self) -> str:
        return f"<type {self.name or 'without a name'}>"


def _string(pointer: Any) -> str:
    text: str = ffi.string(pointer).decode("ascii")
    return text


def as_attribute(name: str) -> str:
    """Returns a name of the ASN.1 as one of Python: "type-id" is type_id, "from" is from_."""
    name = name.replace("-", "_")
    return name + "_" if keyword.iskeyword(name) else name


_types: Dict[int, Type] = {}
_making = threading.RLock()


def type_at(pointer: Any) -> Type:
    """Returns the type of a pointer; always the same object."""
    address = int(ffi.cast("uintptr_t", pointer))
    found = _types.get(address)
    if found is None:
        found = _types.setdefault(address, Type(pointer))
    return found


def _is_harmless(type_: Type) -> bool:
    """Tells whether a type that is no form of an RFC ends the process for no input: it holds neither a
    name nor a message."""
    if type_.kind in (lib.PKI_NAME, lib.PKI_ATTRIBUTE_VALUE, lib.PKI_TYPED_CONTENT):
        return False
    if type_.element is not None and not _is_harmless(type_.element):
        return False
    return all(_is_harmless(field.type) for field in type_.fields)


def _all_types() -> Dict[str, Type]:
    """Returns the types that can be decoded, by the names of their classes: the forms of the RFCs, and
    what has no form and ends no process."""
    every = [type_at(lib.pki_Type_get(index)) for index in range(lib.pki_Type_count())]
    forms = [type_ for type_ in every if type_.is_form and type_.is_decoded]
    records = {type_.record[len("pki_") :] for type_ in forms}
    found = {type_.python_name: type_ for type_ in forms}
    for type_ in every:
        if type_.is_form or type_.record in records or not type_.is_decoded:
            continue
        if _is_harmless(type_):
            found.setdefault(type_.python_name, type_)
    return found


TYPES = _all_types()


def _words(name: str) -> str:
    return re.sub("[-_ ]", "", name).lower()


def _all_names() -> Dict[str, Type]:
    names: Dict[str, Type] = {}
    for type_ in TYPES.values():
        for name in (type_.name, type_.record, type_.record.replace("pki_", "", 1)):
            names.setdefault(_words(name), type_)
    names["crl"] = names["certificatelist"]
    return names


_NAMES = _all_names()


def find(name: str) -> Type:
    """Finds a type by its name in the ASN.1, in any case and with or without hyphens, or by that of its
    functions in C. Raises LookupError where there is none."""
    if not isinstance(name, str):
        raise TypeError(f"a type has a name, not a {type(name).__name__}")
    found = _NAMES.get(_words(name))
    if found is None:
        raise LookupError(f"no type is called {name[:80]!r}")
    return found


# ----------------------------------------------------------------------------------------------
# Reading
# ----------------------------------------------------------------------------------------------

Reader = Callable[[Any, int], Any]


def _read_flag(handle: Any, index: int) -> Any:
    number = _number(handle, index)
    return None if number == _ABSENT else number != 0


def _read_integer(handle: Any, index: int) -> Any:
    number = _number(handle, index)
    if number >= _NUMBERS:
        return number
    if number == _ABSENT:
        return None
    length, negative = divmod(number - _OTHER, 2)
    return _from_bytes(_unpack(_octets(handle, index), length), "big", signed=negative != 0)


def _read_octets(handle: Any, index: int) -> Any:
    length = _length(handle, index)
    if length > 0:
        return _unpack(_octets(handle, index), length)
    return b"" if length == 0 else None


def _read_bits(handle: Any, index: int) -> Any:
    bits = lib.py_bits(handle, index)
    return None if bits == _ABSENT else BitString(_read_octets(handle, index), bits)


def _read_text(handle: Any, index: int) -> Any:
    octets = _read_octets(handle, index)
    return None if octets is None else text_of(lib.py_identifier(handle, index), octets)


def _read_attribute_value(handle: Any, index: int) -> Any:
    octets = _read_octets(handle, index)
    if octets is None:
        return None
    text = text_of(lib.py_identifier(handle, index), octets)
    return octets if text is None else text


def datetime_of(seconds: int) -> datetime:
    """Returns a time that is given in seconds since 1970."""
    try:
        return _from_timestamp(seconds, _UTC)
    except (ValueError, OverflowError, OSError):  # a year that no datetime has
        raise Unreadable("time", str(seconds).encode()) from None


def _read_time(handle: Any, index: int) -> Any:
    seconds = _seconds(handle, index)
    if seconds > _OTHER:
        try:
            return _from_timestamp(seconds, _UTC)
        except (ValueError, OverflowError, OSError):  # a year that no datetime has
            pass
    elif seconds == _ABSENT:
        return None
    raise Unreadable("time", _read_octets(handle, index))


def _read_nothing(handle: Any, index: int) -> None:
    return None


def _read_part(class_: type, kept: bool = False) -> Reader:
    """Returns what reads a record or a list of a class."""
    attach, set_origin = getattr(class_, "_attach"), _set_origin

    def read(handle: Any, index: int) -> Any:
        part = _part(handle, index)
        if not part:
            if lib.py_has(handle, index):
                raise MemoryError
            return None
        made: Any = _new(class_)
        attach(made, _gc(part, _release))
        if kept:
            set_origin(made, (handle, index))
        return made

    return read


def reader(type_: Type, kept: bool = False) -> Reader:
    """Returns what reads a part of a type: it takes the handle of what the part is in, and its index."""
    if type_.is_time:
        return _read_time
    if type_.is_part:
        return _read_part(type_.value_class, kept)
    return {
        lib.PKI_BOOLEAN: _read_flag,
        lib.PKI_INTEGER: _read_integer,
        lib.PKI_ENUMERATED: _read_integer,
        lib.PKI_NULL: _read_nothing,
        lib.PKI_OBJECT_IDENTIFIER: read_identifier,
        lib.PKI_BIT_STRING: _read_bits,
        lib.PKI_CHARACTER_STRING: _read_text,
        lib.PKI_ATTRIBUTE_VALUE: _read_attribute_value,
    }.get(type_.kind, _read_octets)


# ----------------------------------------------------------------------------------------------
# Values
# ----------------------------------------------------------------------------------------------


def octets_from(data: Any) -> bytes:
    """Returns the octets of any buffer, as they are now; raises TypeError for anything else."""
    if type(data) is bytes:
        return data
    try:
        return memoryview(data).tobytes()
    except TypeError:
        raise TypeError(f"octets are bytes or a buffer, not {type(data).__name__}") from None


def explain(type_: Type, octets: bytes, whole: bool = True) -> Exception:
    """Returns the exception for octets that a decoder refused."""
    name = type_.name or type_.record
    fault = ffi.new("pki_Fault *")
    explained = octets if len(octets) <= _MOST_EXPLAINED else octets[:_MOST_EXPLAINED]
    start = ffi.from_buffer("uint8_t[]", explained)
    if lib.pki_explain(type_.pointer, start, start + len(explained), fault):
        path, sentence = (
            ffi.string(text).decode("utf-8", "replace") for text in (fault.path, fault.sentence)
        )
        return Fault(name, fault.offset, path, sentence)
    if whole and fault.offset < len(octets):
        buffer = ffi.new("char[48]")
        lib.pki_identifier_name(octets[fault.offset], buffer, 48)
        return Fault(name, fault.offset, "", f"expected the end, found {_string(buffer)}")
    if lib.py_nests_too_deeply(type_.pointer, octets, len(octets)):
        return Fault(name, 0, "", f"objects in more than {lib.PY_DEEPEST} others")
    return MemoryError()


def _decode_all(type_: Type, data: Any) -> Any:
    octets = octets_from(data)
    handle = _decode(type_.pointer, octets, len(octets), _NULL)
    if not handle:
        raise explain(type_, octets)
    return _gc(handle, _release)


def _decode_first(type_: Type, data: Any, start: int) -> Tuple[Any, int]:
    octets = octets_from(data)
    if not isinstance(start, int):
        raise TypeError("an offset is an int")
    if not 0 <= start <= len(octets):
        raise ValueError(f"no offset into {len(octets)} octets: {start}")
    if start:
        octets = octets[start:]
    taken = ffi.new("size_t *")
    handle = _decode(type_.pointer, octets, len(octets), taken)
    if not handle:
        fault = explain(type_, octets, whole=False)
        if isinstance(fault, Fault) and start:
            fault = Fault(fault.type_name, fault.offset + start, fault.path, fault.sentence)
        raise fault
    return _gc(handle, _release), start + taken[0]


def _restore(record: str, octets: bytes) -> Any:
    """Makes a value again, of the type with this record."""
    pointer = lib.pki_Type_find(record.encode("ascii"))
    if not pointer:
        raise LookupError(f"no type has the record {record[:80]!r}")
    type_ = type_at(pointer)
    if not type_.is_form and not _is_harmless(type_):
        raise LookupError(f"{record[:80]} is not for the octets of strangers")
    return type_.value_class.decode(octets)


class Value:
    """What every record, choice and list is."""

    __slots__ = ("_handle", "_origin", "__dict__", "__weakref__")

    _type: Type
    _handle: Any
    _origin: Any

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError(f"a {type(self).__name__} does not change: make a new one")

    def __delattr__(self, name: str) -> None:
        raise AttributeError(f"a {type(self).__name__} does not change: make a new one")

    @classmethod
    def _of(cls, handle: Any) -> Any:
        made: Any = _new(cls)
        cls._attach(made, handle)
        return made

    @staticmethod
    def _attach(made: Any, handle: Any) -> None:
        """Gives a new object the value that it holds."""
        _set_handle(made, handle)

    def _kept_at(self) -> Optional[Tuple[Any, int]]:
        """Returns where the octets may be kept: a handle and an index; None for a whole."""
        return getattr(self, "_origin", None)

    @classmethod
    def decode(cls, data: Any) -> Any:
        """Decodes octets that are one value, in DER or BER. Raises Fault for others."""
        type_ = cls._type
        if type(data) is not bytes:
            data = octets_from(data)
        handle = _decode(type_.pointer, data, len(data), _NULL)
        if not handle:
            raise explain(type_, data)
        made: Any = _new(cls)
        cls._attach(made, _gc(handle, _release))
        return made

    @classmethod
    def decode_first(cls, data: Any, start: int = 0) -> Tuple[Any, int]:
        """Decodes the value at an offset. Returns it, and the offset past it."""
        handle, end = _decode_first(cls._type, data, start)
        return cls._of(handle), end

    @classmethod
    def view(cls, data: Any) -> Any:
        """Returns a View of octets that are one value, in which nothing is decoded yet."""
        from ._views import view

        return view(cls._type, data)

    def encode(self) -> bytes:
        """Returns the value in DER. What was decoded from DER is encoded to the same octets."""
        handle = self._handle
        size = lib.py_size(handle)
        if size == 0:
            if not self._type.is_encoded:
                return self._encode_by_parts()
            raise self._missing()
        out = ffi.new("uint8_t[]", size)
        if lib.py_encode(handle, out) != size:
            raise MemoryError
        return bytes(ffi.buffer(out))

    def _encode_by_parts(self) -> bytes:
        raise Error(f"the library does not write {self._type.name or 'this type'}")

    def _missing(self) -> Exception:
        fault = ffi.new("pki_Fault *")
        if lib.py_find_missing(self._handle, fault):
            return Missing(self._type.name, _string(fault.path), _string(fault.sentence))
        return MemoryError()

    @property
    def der(self) -> bytes:
        """The octets of the value: as they were read, where the record keeps them, as it does for what is
        signed and for names; else as encode() makes them."""
        origin = self._kept_at()
        if origin is not None:
            handle, index = origin
            length = lib.py_kept_length(handle, index)
            if length > 0:
                octets: bytes = _unpack(lib.py_kept_octets(handle, index), length)
                return octets
        return self.encode()

    def to_dict(self) -> Any:
        """Returns the value in the types of JSON, as the command-line tool shows it."""
        from ._json import json_of

        return json_of(self)

    def __eq__(self, other: object) -> bool:
        if self is other:
            return True
        if not isinstance(other, Value) or self._type.record != other._type.record:
            return NotImplemented
        return self.der == other.der

    def __hash__(self) -> int:
        return hash((self._type.record, self.der))

    def __copy__(self) -> Any:
        return self

    def __deepcopy__(self, memo: Any) -> Any:
        return self

    def __reduce__(self) -> Tuple[Any, ...]:
        class_ = type(self)
        if class_ is self._type._class:
            return _restore, (self._type.record, self.der)
        return class_.decode, (self.der,)

    def __reduce_ex__(self, protocol: Any) -> Any:
        return self.__reduce__()

    def __dir__(self) -> List[str]:
        return [name for name in object.__dir__(self) if not name.startswith("_") or name[:2] == "__"]


_set_handle = Value.__dict__["_handle"].__set__
_get_handle = Value.__dict__["_handle"].__get__
_set_origin = Value.__dict__["_origin"].__set__
_LEVEL = lib.PY_LEVEL
_MOST_LEVELS = 1 << 4 * _LEVEL  # the first index that has no level left above it


class _Lazy:
    # A field, which is read when it is first asked for, and then kept.
    __slots__ = ("name", "index", "read", "__doc__")

    def __init__(self, field: Field) -> None:
        self.name = field.attribute
        self.index = field.number
        self.read = reader(field.type, field.kept)
        self.__doc__ = f"{field.name} {field.type.name}"

    def __get__(self, record: Any, owner: Any = None) -> Any:
        if record is None:
            return self
        value = self.read(record._base, record._prefix | self.index)
        _keep(record, self.name, value)
        return value


class _LazyRecord(_Lazy):
    # A record in a record. It is no value of its own in C before it is needed as such: its fields are read
    # by the levels that lead to them.
    __slots__ = ("class_", "is_always_there", "__doc__")

    def __init__(self, field: Field) -> None:
        super().__init__(field)
        self.class_ = field.type.value_class
        self.is_always_there = field.required and field.type.is_form

    def __get__(self, record: Any, owner: Any = None) -> Any:
        if record is None:
            return self
        base, at = record._base, record._prefix | self.index
        if at >= _MOST_LEVELS or not (self.is_always_there or lib.py_has(base, at)):
            return _Lazy.__get__(self, record)
        value: Any = _new(self.class_)
        _set_base(value, base)
        _set_prefix(value, (at + 1) << _LEVEL)
        _keep(record, self.name, value)
        return value


class Record(Value):
    """A SEQUENCE. Its fields are attributes with the names of the ASN.1; one that is not there is None."""

    __slots__ = ("_base", "_prefix")

    #: the names of the fields
    fields: Tuple[str, ...] = ()

    _base: Any  # the handle of a value that holds the record
    _prefix: int  # the levels that lead to it from there; 0 for that value itself

    @staticmethod
    def _attach(made: Any, handle: Any) -> None:
        _set_base(made, handle)
        _set_prefix(made, 0)

    @property
    def _handle(self) -> Any:
        """The handle of the record itself."""
        prefix = self._prefix
        if prefix == 0:
            return self._base
        try:
            return _get_handle(self)
        except AttributeError:
            part = _part(self._base, (prefix >> _LEVEL) - 1)
            if not part:
                raise MemoryError from None
            handle = _gc(part, _release)
            _set_handle(self, handle)
            return handle

    def _kept_at(self) -> Optional[Tuple[Any, int]]:
        if self._prefix:
            return self._base, (self._prefix >> _LEVEL) - 1
        return Value._kept_at(self)

    def __new__(cls, **fields: Any) -> Any:
        if cls is Record:
            raise TypeError("Record is what records are, and is no type by itself")
        from ._writer import write_record

        return cls.decode(write_record(cls._type, fields))

    def replace(self, **fields: Any) -> Any:
        """Returns a record with some fields changed. None leaves a field out."""
        return type(self)(**{**{name: getattr(self, name) for name in self.fields}, **fields})

    def __iter__(self) -> Iterator[Tuple[str, Any]]:
        """Goes through the fields that are there: pairs of name and value."""
        for name in self.fields:
            value = getattr(self, name)
            if value is not None:
                yield name, value

    def _encode_by_parts(self) -> bytes:
        from ._writer import write_record

        return write_record(self._type, {name: getattr(self, name) for name in self.fields})

    @property
    def decoded(self) -> Any:
        """The value of the field whose type an identifier in front of it says, such as that of an
        extension, of the parameters of an algorithm, the list of those of an attribute. None where the
        library does not know the identifier, or the field is not there. Raises Fault where the octets are
        no value of that type."""
        pair = _open_fields(self._type)
        if pair is None:
            raise AttributeError(f"no field of {type(self).__name__} says what another one is")
        identifier, field = (getattr(self, name) for name in pair)
        pointer = lib.py_defined_by(identifier.encode("ascii")) if identifier else _NULL
        if field is None or not pointer:
            return None
        class_ = type_at(pointer).value_class
        if isinstance(field, Choice):  # of the forms that octets may have in a message
            field = field.value
        if isinstance(field, bytes):
            return class_.decode(field)
        return tuple(class_.decode(octets) for octets in field)

    def __repr__(self) -> str:
        from ._show import shown

        return shown(self)


_set_base = Record.__dict__["_base"].__set__
_set_prefix = Record.__dict__["_prefix"].__set__

# The OCTET STRINGs that hold a value of the type that an identifier in front of them says. An ANY always
# does.
_WRAPPED = frozenset(("extnValue", "response", "eContent"))


def _open_fields(type_: Type) -> Optional[Tuple[str, str]]:
    """Returns the names of an identifier, and of the field whose type it says; or None."""
    identifier = None
    for field in type_.fields:
        if field.type.kind == lib.PKI_OBJECT_IDENTIFIER and identifier is None:
            identifier = field.attribute
        elif identifier is not None:
            element = field.type.element or field.type
            if element.kind == lib.PKI_ANY or field.name in _WRAPPED:
                return identifier, field.attribute
    return None


class Choice(Value):
    """A CHOICE: the name of its alternative, and the value of that."""

    __slots__ = ()

    __match_args__ = ("choice", "value")

    #: the names of the alternatives
    alternatives: Tuple[str, ...] = ()
    _readers: Tuple[Reader, ...] = ()

    def __new__(cls, *arguments: Any, **alternative: Any) -> Any:
        if cls is Choice:
            raise TypeError("Choice is what choices are, and is no type by itself")
        from ._writer import write_choice

        return cls.decode(write_choice(cls._type, arguments, alternative))

    @property
    def choice(self) -> str:
        """The name of the alternative that is there."""
        index: int = lib.py_alternative(self._handle)
        return self.alternatives[index]

    @property
    def value(self) -> Any:
        """Its value."""
        index = lib.py_alternative(self._handle)
        return self._readers[index](self._handle, index)

    def __getattr__(self, name: str) -> Any:
        """Returns the value of an alternative; None where another one is there."""
        if name not in type(self).alternatives:
            raise AttributeError(f"{type(self).__name__} has no alternative {name!r}")
        return self.value if name == self.choice else None

    def __repr__(self) -> str:
        from ._show import shown

        return shown(self)


class ListValue(Value, abc.Sequence):  # type: ignore[type-arg]
    """A SEQUENCE OF or SET OF: a sequence of its elements, which are read when they are asked for."""

    __slots__ = ()

    _read: Reader = staticmethod(_read_octets)

    def __new__(cls, elements: Any = ()) -> Any:
        if getattr(cls, "_type", None) is None:
            raise TypeError("ListValue is what lists are, and is no type by itself")
        from ._writer import write_list

        return cls.decode(write_list(cls._type, elements))

    def __len__(self) -> int:
        count: int = lib.py_count(self._handle)
        return count

    def __getitem__(self, index: Any) -> Any:
        if isinstance(index, slice):
            return tuple(self[i] for i in range(*index.indices(len(self))))
        try:
            index = index.__index__()
        except AttributeError:
            raise TypeError(f"an element has a number, not a {type(index).__name__}") from None
        count = lib.py_count(self._handle)
        if index < 0:
            index += count
        if not 0 <= index < count:
            raise IndexError("there is no such element")
        return self._read(self._handle, index)

    def __iter__(self) -> Iterator[Any]:
        handle, read = self._handle, self._read
        for index in range(lib.py_count(handle)):
            yield read(handle, index)

    def __eq__(self, other: object) -> bool:
        if isinstance(other, (list, tuple)) or (
            isinstance(other, ListValue) and other._type is not self._type
        ):
            return len(self) == len(other) and all(a == b for a, b in zip(self, other))
        return Value.__eq__(self, other)

    def __hash__(self) -> int:
        return hash(tuple(self))

    def _encode_by_parts(self) -> bytes:
        from ._writer import write_list

        return write_list(self._type, self)

    def __reduce__(self) -> Tuple[Any, ...]:
        if self._type.is_decoded:
            return Value.__reduce__(self)
        return tuple, (tuple(self),)

    def __repr__(self) -> str:
        from ._show import shown

        return shown(self)


class Timestamp(NamedTuple):
    """A signed certificate timestamp (RFC 6962, 3.2)."""

    version: int = 0
    logID: bytes = b""
    timestamp: int = 0  # milliseconds since 1970 in UTC
    extensions: Optional[bytes] = None
    hashAlgorithm: int = 0
    signatureAlgorithm: int = 0
    signature: Optional[bytes] = None
    opaque: Optional[bytes] = None  # what follows another version than 0

    @property
    def time(self) -> datetime:
        """The timestamp as a datetime."""
        try:
            return _EPOCH + timedelta(milliseconds=self.timestamp)
        except OverflowError:
            raise Unreadable("time", str(self.timestamp).encode()) from None


def _read_timestamp(handle: Any, index: int) -> Timestamp:
    place = ffi.new("py_Timestamp *")
    if not lib.py_timestamp(handle, index, place):
        raise IndexError("there is no such element")

    def octets(of: Any) -> Optional[bytes]:
        if of.data:
            return bytes(ffi.buffer(of.data, of.length))
        return None

    return Timestamp(
        place.version, bytes(ffi.buffer(place.logID)), place.timestamp, octets(place.extensions),
        place.hashAlgorithm, place.signatureAlgorithm, octets(place.signature), octets(place.opaque),
    )


class ExtensionList(ListValue):
    """A list of extensions."""

    __slots__ = ()

    def find(self, identifier: str) -> Any:
        """Returns the first extension with an identifier; None where there is none."""
        return next((extension for extension in self if extension.extnID == identifier), None)


class NameValue(ListValue):
    """A distinguished name: a sequence of relative ones, with a text."""

    __slots__ = ()

    def rfc4514(self) -> Optional[str]:
        """Returns the text of RFC 4514, such as "CN=www.example.org,O=Example,C=DE"; None where the name
        has none."""
        return _take_text(lib.py_name_text(self._handle))

    def own_text(self) -> str:
        """Returns the text that the records of the library keep, such as "/cn(19)=Some One/c(19)=DE"."""
        text = _take_text(lib.py_name_own_text(self._handle))
        if text is None:
            raise MemoryError
        return text

    def __str__(self) -> str:
        """Returns the text of RFC 4514, or else the library's own."""
        text = self.rfc4514()
        return self.own_text() if text is None else text


def _take_text(text: Any) -> Optional[str]:
    """Returns a text that C made, and releases it."""
    if not text:
        return None
    try:
        octets: bytes = ffi.string(text)
        return octets.decode("utf-8", "surrogateescape")
    finally:
        lib.py_free_text(text)


class Scalar:
    """A type whose values are Python's own: int, bytes, str, datetime, BitString, ObjectIdentifier."""

    __slots__ = ()

    _type: Type
    _read: Reader = staticmethod(_read_octets)

    def __new__(cls, *arguments: Any, **named: Any) -> Any:
        raise TypeError(f"{cls.__name__} has no values of its own: decode and encode Python's")

    @classmethod
    def decode(cls, data: Any) -> Any:
        """Decodes octets that are one value. Raises Fault for others."""
        return cls._read(_decode_all(cls._type, data), _SELF)

    @classmethod
    def decode_first(cls, data: Any, start: int = 0) -> Tuple[Any, int]:
        """Decodes the value at an offset. Returns it, and the offset past it."""
        handle, end = _decode_first(cls._type, data, start)
        return cls._read(handle, _SELF), end


def _make_class(type_: Type) -> type:
    body: Dict[str, Any] = {"__slots__": (), "_type": type_, "__module__": "orvelasn1"}
    name = type_.python_name if type_.name or type_.record else "ListValue"
    body["__qualname__"] = name
    body["__doc__"] = f"{type_.name or 'A list'}."
    if not type_.is_part:
        body["_read"] = staticmethod(reader(type_))
        return type(name, (Scalar,), body)
    if type_.kind == lib.PKI_TLS_LIST:
        body["_read"] = staticmethod(_read_timestamp)
        return type(name, (ListValue,), body)
    if type_.is_list:
        assert type_.element is not None
        body["_read"] = staticmethod(reader(type_.element))
        base = {"RDNSequence": NameValue, "Extensions": ExtensionList}.get(type_.name, ListValue)
        return type(name, (base,), body)
    if type_.kind == lib.PKI_CARD_OBJECT:
        from ._cards import CardObject

        return type(name, (CardObject,), body)
    names = tuple(field.attribute for field in type_.fields)
    if type_.kind == lib.PKI_CHOICE:
        body["alternatives"] = names
        body["_readers"] = tuple(reader(field.type) for field in type_.fields)
        return type(name, (Choice,), body)
    assert len(names) < lib.PY_MOST_FIELDS
    body["fields"] = names
    for field in type_.fields:
        is_record = field.type.kind == lib.PKI_SEQUENCE
        body[field.attribute] = (_LazyRecord if is_record else _Lazy)(field)
    if any(field.type.kind == lib.PKI_ATTRIBUTE_VALUE for field in type_.fields):
        body["valueTag"] = property(_value_tag)
    if type_.record == "pki_Certificate":
        from ._questions import CertificateRecord

        return type(name, (CertificateRecord,), body)
    return type(name, (Record,), body)


def _value_tag(record: Any) -> int:
    """The identifier octet of the value."""
    index = record.fields.index("value")
    tag: int = lib.py_identifier(record._base, record._prefix | index)
    return tag
