"""ASN.1 records of public-key infrastructures.

    >>> import orvelasn1
    >>> certificate = orvelasn1.Certificate.decode(der)
    >>> certificate.tbsCertificate.validity.notAfter
    datetime.datetime(2040, 1, 1, 0, 0, tzinfo=datetime.timezone.utc)

Every type of liborvelpki is a class here, called as in the ASN.1: a SEQUENCE is a Record with the fields as
attributes, a CHOICE has `choice` and `value`, a SEQUENCE OF is a sequence. INTEGER is int, OCTET STRING is
bytes, times are datetimes in UTC. Octets that are no value raise Fault, which says where and why.
"""

from __future__ import annotations

from typing import Any, List, Optional, Tuple

from ._cards import CardAttribute, CardObject
from ._errors import Error, Fault, Missing, Unreadable
from ._orvelpki import lib as _lib
from ._pem import read_pem
from ._questions import CertificateRecord, Names, Usage
from ._scalars import BitString, ObjectIdentifier
from ._types import TYPES as _TYPES
from ._types import Choice, ListValue, Record, Scalar, Timestamp, Value
from ._types import find as _find
from ._types import type_at as _type_at
from ._views import CrlEntry, CrlReader, View, elements

__version__ = "1.0.0"

__all__ = [
    "BitString", "CardAttribute", "CardObject", "CertificateRecord", "Choice", "CrlEntry", "CrlReader", "Error",
    "Fault", "ListValue", "Missing", "Names", "ObjectIdentifier", "Record", "Scalar", "Timestamp", "Unreadable",
    "Usage", "Value", "View", "decode", "defined_by", "elements", "encode", "read_pem", "type_named", "types",
]


def types() -> Tuple[str, ...]:
    """Returns the names of all types."""
    return tuple(_TYPES)


def type_named(name: str) -> Any:
    """Returns the class of a type: "Certificate", "certificate", "tbs-certificate", "crl". Raises
    LookupError for other names."""
    return _find(name).value_class


def decode(type_name: str, data: Any) -> Any:
    """Decodes octets that are one value of a type, in DER or BER. Raises Fault for others."""
    return _find(type_name).value_class.decode(data)


def encode(type_name: str, value: Any) -> bytes:
    """Encodes a value of Python as a type, in DER: orvelasn1.encode("KeyUsage", BitString.of(5, 6))."""
    from ._writer import write

    type_ = _find(type_name)
    octets = write(type_, value)
    type_.value_class.decode(octets)
    return octets


def defined_by(identifier: str) -> Optional[Any]:
    """Returns the class of the values that an identifier stands in front of, such as that of an extension,
    an attribute or the parameters of an algorithm; None where the library has none."""
    pointer = _lib.py_defined_by(ObjectIdentifier(identifier).encode("ascii"))
    return _type_at(pointer).value_class if pointer else None


def __getattr__(name: str) -> Any:
    found = _TYPES.get(name)
    if found is None:
        raise AttributeError(f"module 'orvelasn1' has no type {name!r}")
    made = globals()[name] = found.value_class
    return made


def __dir__() -> List[str]:
    return sorted({*globals(), *_TYPES})
