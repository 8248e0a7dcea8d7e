"""Texts with octets in them (RFC 7468)."""

from __future__ import annotations

import binascii
import re
from typing import Any, Iterator, Tuple

from ._errors import Error
from ._types import octets_from

# Lines in front of the octets, such as "Proc-Type: 4,ENCRYPTED", end with an empty line (RFC 1421, 4.4).
_BEGIN = re.compile(rb"^-----BEGIN ([ -~]*?)-----[ \t]*\r?$", re.M)
_HEADERS = re.compile(rb"\s*(?:[!-9;-~]+:[^\n]*\n(?:[ \t]+[^\n]*\n)*)+[ \t]*\r?\n")


def read_pem(text: Any) -> Iterator[Tuple[str, bytes]]:
    """Goes through the blocks of a text, as str or octets: the label of each, such as "CERTIFICATE", and its
    octets. What stands between the blocks is passed over. Raises Error for a block that is broken."""
    data = text.encode("utf-8", "replace") if isinstance(text, str) else octets_from(text)
    return _blocks(data)


def _blocks(data: bytes) -> Iterator[Tuple[str, bytes]]:
    at = 0
    while begin := _BEGIN.search(data, at):
        label = begin[1]
        end = data.find(b"-----END " + label + b"-----", begin.end())
        name = label.decode("ascii")
        if end < 0:
            raise Error(f"offset {begin.start()}: a block {name!r} without an end")
        at = end + len(label) + 14
        content = begin.end()
        headers = _HEADERS.match(data, content, end)
        if headers:
            content = headers.end()
        digits = b"".join(data[content:end].split())
        try:
            octets = binascii.a2b_base64(digits)
        except binascii.Error:
            octets = b""
        if binascii.b2a_base64(octets, newline=False) != digits:
            raise Error(f"offset {begin.start()}: a block {name!r} whose content is not base64")
        yield name, octets

