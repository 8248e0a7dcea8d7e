"""What repr() shows: the fields that are there, of long ones the start."""

from __future__ import annotations

from datetime import datetime
from typing import Any

from ._errors import Error
from ._scalars import BitString, ObjectIdentifier

_MOST_OCTETS = 16
_MOST_CHARACTERS = 80
_MOST_ELEMENTS = 4
_DEPTH = 3


def shown(value: Any, depth: int = _DEPTH) -> str:
    """Returns a line that shows a value, for people."""
    from ._cards import CardObject
    from ._types import Choice, ListValue, Record, NameValue

    if isinstance(value, Record):
        if depth == 0:
            return f"<{type(value).__name__} ...>"
        fields = []
        for name in value.fields:
            try:
                field = getattr(value, name)
            except Error as error:
                fields.append(f"{name}=<{error}>")
                continue
            if field is not None:
                fields.append(f"{name}={shown(field, depth - 1)}")
        return f"<{' '.join([type(value).__name__, *fields])}>"
    if isinstance(value, Choice):
        inner = shown(value.value, depth - 1) if depth > 0 else "..."
        return f"<{type(value).__name__} {value.choice}={inner}>"
    if isinstance(value, CardObject):
        parts, count = [f"{value.id:#04x}", value.role], len(value.children or ())
        if value.value is not None:
            parts.append(shown(value.value))
        else:
            parts.append(f"of {count}")
        return f"<{type(value).__name__} {' '.join(parts)}>"
    if isinstance(value, NameValue):
        return f"<{type(value).__name__} {_cut(str(value))}>"
    if isinstance(value, ListValue):
        name, count = type(value).__name__, len(value)
        if depth == 0 and count:
            return f"<{name} of {count}>"
        elements = [shown(value[i], depth - 1) for i in range(min(count, _MOST_ELEMENTS))]
        if count > _MOST_ELEMENTS:
            elements.append(f"... {count} in all")
        return f"<{name} [{', '.join(elements)}]>"
    if isinstance(value, bytes):
        if len(value) <= _MOST_OCTETS:
            return f"<{value.hex()}>"
        return f"<{value[:_MOST_OCTETS].hex()}... {len(value)} octets>"
    if isinstance(value, ObjectIdentifier):
        return _cut(value, quoted=False) + (f" ({value.name})" if value.name else "")
    if isinstance(value, datetime):
        return value.isoformat()
    if isinstance(value, BitString):
        return repr(value)
    if isinstance(value, str):
        return _cut(value)
    if isinstance(value, int) and not isinstance(value, bool) and value.bit_length() > 64:
        digits = f"{value:#x}" if value.bit_length() <= 256 else f"{value >> (value.bit_length() - 64):#x}..."
        return digits
    return repr(value)


def _cut(text: str, quoted: bool = True) -> str:
    cut = str(text[:_MOST_CHARACTERS])
    line = repr(cut) if quoted else cut
    return line + ("..." if len(text) > _MOST_CHARACTERS else "")
