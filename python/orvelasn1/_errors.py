"""What goes wrong."""

from __future__ import annotations

import re
from typing import Any, Optional, Tuple

_EXPECTED = re.compile(r"expected (.*?)(?:, found (.*)|, but (.*))?$", re.S)
_FOUND = re.compile(r"found (.*), where the value ends$", re.S)


class Error(ValueError):
    """What every exception of this package is, apart from TypeError for arguments of wrong types and
    MemoryError."""


class Fault(Error):
    """Octets are no value of a type, or a record has no encoding."""

    def __init__(self, type_name: str, offset: int, path: str, sentence: str) -> None:
        super().__init__(type_name, offset, path, sentence)
        #: the type that was asked for, such as "Certificate"
        self.type_name = type_name
        #: octets from the start of the input to where it goes wrong
        self.offset = offset
        #: the field, such as "tbsCertificate.extensions[3].extnValue"; "" for the value itself
        self.path = path
        #: what was expected and what was found
        self.sentence = sentence

    def _parts(self) -> Tuple[Optional[str], str]:
        match = _EXPECTED.match(self.sentence)
        if match:
            return match[1], match[2] or match[3] or "something else"
        match = _FOUND.match(self.sentence)
        if match:
            return "the end of the value", match[1]
        return None, self.sentence

    @property
    def expected(self) -> Optional[str]:
        """What should stand there, such as "INTEGER (02)"; None where no one thing should."""
        return self._parts()[0]

    @property
    def found(self) -> str:
        """What stands there, such as "SEQUENCE (30)"."""
        return self._parts()[1]

    def __str__(self) -> str:
        place = f"offset {self.offset}" + (f", {self.path}" if self.path else "")
        return f"{self.type_name}: {place}: {self.sentence}"

    def __reduce__(self) -> Tuple[Any, ...]:
        return Fault, (self.type_name, self.offset, self.path, self.sentence)


class Missing(Error):
    """A record cannot be made or encoded, since a field is missing or has no encoding."""

    def __init__(self, type_name: str, path: str, sentence: str) -> None:
        super().__init__(type_name, path, sentence)
        #: the type of the record
        self.type_name = type_name
        #: the field, such as "validity.notAfter"
        self.path = path
        #: what is wrong with it
        self.sentence = sentence

    def __str__(self) -> str:
        return f"{self.type_name}: {self.path or 'the value'} {self.sentence}"

    def __reduce__(self) -> Tuple[Any, ...]:
        return Missing, (self.type_name, self.path, self.sentence)


class Unreadable(Error):
    """A field that was decoded has no value in Python, such as a time of the 30th of February."""

    def __init__(self, what: str, octets: bytes) -> None:
        super().__init__(what, octets)
        #: what it should be
        self.what = what
        #: the octets that it has
        self.octets = octets

    def __str__(self) -> str:
        return f"no {self.what}: {self.octets!r}"

    def __reduce__(self) -> Tuple[Any, ...]:
        return Unreadable, (self.what, self.octets)
