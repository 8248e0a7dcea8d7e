"""Records in the types of JSON, as `orvelasn1 show --json` has them.

What the tool finds out about a record is not here: names of identifiers, decoded values of extensions, the
standing of a validity, the kind of a key, the facts at the head of a certificate.
"""

from __future__ import annotations

import socket
from typing import Any, Callable, Dict, List, Tuple

from ._cards import CardAttribute, CardObject
from ._orvelpki import ffi, lib
from ._scalars import BitString, content_of_large, read_identifier
from ._text import is_clean, shown, text_of
from ._types import NameValue, Timestamp, Type, Value
from ._writer import element

_SMALL = 0xFFFFFFFF

# The fields with an INTEGER that counts something: a number. Any other is the digits of its octets.
_COUNTS = {
    "ASRange": ("min", "max"),
    "AuthenticatedData": ("version",),
    "BasicConstraints": ("pathLenConstraint",),
    "CertificationRequestInfo": ("version",),
    "DigestedData": ("version",),
    "ECPrivateKey": ("version",),
    "EncryptedData": ("version",),
    "EnvelopedData": ("version",),
    "GeneralSubtree": ("minimum", "maximum"),
    "KeyTransRecipientInfo": ("version",),
    "MacData": ("iterations",),
    "MonetaryValue": ("amount", "exponent"),
    "PFX": ("version",),
    "PolicyConstraints": ("requireExplicitPolicy", "inhibitPolicyMapping"),
    "RSAPrivateKey": ("version", "publicExponent"),
    "RSAPublicKey": ("publicExponent",),
    "RSASSA-PSS-params": ("saltLength", "trailerField"),
    "ResponseData": ("version",),
    "SignedData": ("version",),
    "SignerInfo": ("version",),
    "TBSCertList": ("version",),
    "TBSCertificate": ("version",),
    "TBSRequest": ("version",),
    "ValidationParms": ("pgenCounter",),
    "pkcs-12PbeParams": ("iterations",),
}

# The fields with words: of the bits that are set, or of the number.
_REASON_FLAGS = (
    "unused", "keyCompromise", "cACompromise", "affiliationChanged", "superseded", "cessationOfOperation",
    "certificateHold", "privilegeWithdrawn", "aACompromise",
)
_REASONS = (
    "unspecified", "keyCompromise", "cACompromise", "affiliationChanged", "superseded", "cessationOfOperation",
    "certificateHold", "reason 7", "removeFromCRL", "privilegeWithdrawn", "aACompromise",
)
_STATUSES = (
    "successful", "malformedRequest", "internalError", "tryLater", "status 4", "sigRequired", "unauthorized",
)
_WORDS = {
    ("DistributionPoint", "reasons"): (_REASON_FLAGS, "bit"),
    ("IssuingDistributionPoint", "onlySomeReasons"): (_REASON_FLAGS, "bit"),
    ("OCSPResponse", "responseStatus"): (_STATUSES, "status"),
    ("RevokedInfo", "revocationReason"): (_REASONS, "reason"),
}
_ADDRESS = 7  # the kind of a GeneralName that is an address, in NameConstraints with its mask
_SIGNATURES = ("anonymous", "rsa", "dsa", "ecdsa")
_HASHES = ("none", "md5", "sha1", "sha224", "sha256", "sha384", "sha512")

# What the octets that are kept beside a field are called.
_KEPT = {"signedAttrs": "signedAttrsEncoded", "tbsResponseData": "tbsResponseDataBytes"}


def _hex(octets: bytes) -> str:
    return octets.hex().upper()


def _octets(handle: Any, index: int) -> Any:
    length = lib.py_length(handle, index)
    if length < 0:
        return None
    return bytes(ffi.unpack(lib.py_octets(handle, index), length)) if length else b""


def _integer(handle: Any, index: int) -> str:
    octets = _octets(handle, index)
    number = lib.py_number(handle, index)
    is_negative = number < 0 if number >= lib.PY_NUMBERS else (number - lib.PY_OTHER) % 2 != 0
    if not octets:
        return "00"
    if not is_negative:
        return _hex(octets)
    amount = -int.from_bytes(octets, "big", signed=True)
    return "-" + _hex(amount.to_bytes(len(octets), "big"))


def _count(handle: Any, index: int) -> Any:
    number = lib.py_number(handle, index)
    return number if 0 <= number < _SMALL else _integer(handle, index)


def _identifier(handle: Any, index: int) -> str:
    words = _octets(handle, index)
    content = content_of_large(words) if words else None
    if content is not None and len(content) > 128:
        return f"an identifier of {len(content)} octets"
    return str(read_identifier(handle, index) or "")


def _time(handle: Any, index: int) -> Dict[str, Any]:
    text = _octets(handle, index).decode("utf-8", "surrogateescape")
    time: Dict[str, Any] = {"kind": lib.py_identifier(handle, index), "value": shown(text)}
    seconds = lib.py_seconds(handle, index)
    is_whole = time["kind"] == 0x17 or text[12:14].isdigit()  # seconds, which X.680, 46.2 lets out
    if seconds > lib.PY_OTHER and is_whole:
        time["time"] = _iso(seconds)
    return time


def _iso(seconds: int) -> str:
    """Returns a time of any year."""
    days, rest = divmod(seconds, 86400)
    # From the first of March of the year 0, so that a leap day ends its year.
    era, day = divmod(days + 719468, 146097)
    year = (day - day // 1460 + day // 36524 - day // 146096) // 365
    day -= 365 * year + year // 4 - year // 100
    month = (5 * day + 2) // 153
    date = day - (153 * month + 2) // 5 + 1
    month = month + 3 if month < 10 else month - 9
    year += era * 400 + (month <= 2)
    return (
        f"{year:04}-{month:02}-{date:02}T{rest // 3600:02}:{rest % 3600 // 60:02}:{rest % 60:02}Z"
    )


def _characters(handle: Any, index: int) -> str:
    octets = _octets(handle, index)
    identifier = lib.py_identifier(handle, index)
    text = None if identifier == 0x15 else text_of(identifier, octets)
    return _hex(octets) if text is None else shown(text)


def _attribute(handle: Any) -> Dict[str, Any]:
    octets, tag = _octets(handle, 1), lib.py_identifier(handle, 1)
    text = None if tag & ~0x20 == 0x15 else text_of(tag, octets)
    found = {
        "type": _identifier(handle, 0),
        "valueTag": tag,
        "value": None if text is None else shown(text),
    }
    if text is None or not is_clean(text):
        found["valueOctets"] = _hex(octets)
    return found


def name_text(name: NameValue) -> str:
    """Returns the library's text of a name whose values are UTF-8, whatever they are in the name."""
    relatives: List[Any] = []
    for relative in name:
        attributes = []
        for attribute in relative:
            handle = attribute._handle
            octets, tag = _octets(handle, 1), lib.py_identifier(handle, 1)
            text = None if tag & ~0x20 == 0x15 else text_of(tag, octets)
            value = "#" + _hex(octets) if text is None else shown(text.replace("\0", "\ufffd"))
            attributes.append(
                element(0x30, attribute_type(attribute) + element(tag or 0x04, value.encode()))
            )
        relatives.append(element(0x31, b"".join(attributes)))
    copy = type(name).decode(element(0x30, b"".join(relatives)))
    return shown(copy.own_text())


def attribute_type(attribute: Any) -> bytes:
    """Returns the element of an attribute's type."""
    octets: bytes = attribute.encode()
    at = 2 if octets[1] < 0x80 else 2 + (octets[1] & 0x7F)
    length = octets[at + 1]
    if length < 0x80:
        return octets[at : at + 2 + length]
    count = length & 0x7F
    length = int.from_bytes(octets[at + 2 : at + 2 + count], "big")
    return octets[at : at + 2 + count + length]


def _part(type_: Type, handle: Any, index: int) -> Any:
    """Describes a part of a value; None where it is not there."""
    kind = type_.kind
    if kind == lib.PKI_NULL:
        return True
    if not lib.py_has(handle, index):
        return None
    if type_.is_time:
        return _time(handle, index)
    if type_.is_part:
        return _whole(type_, ffi.gc(lib.py_part(handle, index), lib.py_release))
    if kind == lib.PKI_BOOLEAN:
        return lib.py_number(handle, index) != 0
    if kind == lib.PKI_ENUMERATED:
        return lib.py_number(handle, index)
    if kind == lib.PKI_INTEGER:
        return _integer(handle, index)
    if kind == lib.PKI_OBJECT_IDENTIFIER:
        return _identifier(handle, index)
    if kind == lib.PKI_BIT_STRING:
        return {"length": lib.py_bits(handle, index), "data": _hex(_octets(handle, index))}
    if kind == lib.PKI_CHARACTER_STRING:
        return _characters(handle, index)
    return _hex(_octets(handle, index))


def _record(type_: Type, handle: Any) -> Dict[str, Any]:
    found: Dict[str, Any] = {}
    counts = _COUNTS.get(type_.name, ())
    for field in type_.fields:
        kept = lib.py_kept_length(handle, field.number) if field.kept else -1
        if kept >= 0:
            octets = bytes(ffi.unpack(lib.py_kept_octets(handle, field.number), kept)) if kept else b""
            called = _KEPT.get(field.name, "tbsEncoded")
            found[field.name + "Encoded" if field.has_text else called] = _hex(octets)
        if field.name in counts and lib.py_has(handle, field.number):
            found[field.name] = _count(handle, field.number)
            continue
        value = _part(field.type, handle, field.number)
        if value is None:
            continue
        words = _WORDS.get((type_.name, field.name))
        if words is not None:
            found[field.name] = _worded(field.type, handle, field.number, *words)
            continue
        if type_.name == "DistributionPoint" and field.name == "distributionPoint":
            found.update(value)  # the alternative, which needs no name around it
            continue
        if field.type.name in ("DisplayText", "EncapsulatedContent"):  # whose alternatives need no name
            (value,) = value.values()
        if type_.name == "GeneralSubtree" and field.name == "base" and value.get("kind") == _ADDRESS:
            part = ffi.gc(lib.py_part(handle, field.number), lib.py_release)
            value["value"] = _network(field.type.value_class._of(part).value)
        if field.type.name == "RDNSequence":
            found[field.name + "Sequence"] = value
            part = ffi.gc(lib.py_part(handle, field.number), lib.py_release)
            value = name_text(field.type.value_class._of(part))
        found[field.name] = value
    return found


def _word(number: int, words: Tuple[str, ...], otherwise: str) -> str:
    return words[number] if 0 <= number < len(words) else f"{otherwise} {number}"


def _worded(type_: Type, handle: Any, index: int, words: Tuple[str, ...], otherwise: str) -> Any:
    """Describes a number by its word, and bits by those of the ones that are set."""
    if type_.kind != lib.PKI_BIT_STRING:
        return _word(lib.py_number(handle, index), words, otherwise)
    bits = BitString(_octets(handle, index), lib.py_bits(handle, index))
    return [_word(bit, words, otherwise) for bit in bits.set]


def _network(octets: bytes) -> str:
    """Returns "192.0.2.0/24" for an address and its mask; the mask itself where it has gaps."""
    half = len(octets) // 2
    family = {8: socket.AF_INET, 32: socket.AF_INET6}.get(len(octets))
    if family is None:
        return _hex(octets)
    mask = int.from_bytes(octets[half:], "big")
    bits = bin(mask).count("1")
    is_whole = mask == ((1 << bits) - 1) << (8 * half - bits)
    length = str(bits) if is_whole else socket.inet_ntop(family, octets[half:])
    return f"{socket.inet_ntop(family, octets[:half])}/{length}"


def _blocks(type_: Type, handle: Any, text_of_end: Callable[[Any, int], str]) -> List[str]:
    """Describes the blocks of a choice of RFC 3779: single ones, and ranges, which have two ends."""
    index = lib.py_alternative(handle)
    if type_.fields[index].name == "inherit":
        return ["inherit"]
    blocks = ffi.gc(lib.py_part(handle, index), lib.py_release)
    words = []
    for number in range(lib.py_count(blocks)):
        block = ffi.gc(lib.py_part(blocks, number), lib.py_release)
        if lib.py_alternative(block) == 0:
            words.append(text_of_end(block, 0))
        else:
            ends = ffi.gc(lib.py_part(block, 1), lib.py_release)
            words.append(f"{text_of_end(ends, 0)}-{text_of_end(ends, 1)}")
    return words


def _as_number(handle: Any, index: int) -> str:
    number = _count(handle, index)
    return f"0x{number}" if isinstance(number, str) else str(number)


def _addresses(type_: Type, handle: Any) -> List[str]:
    """Describes the blocks of a family of addresses. The bits that are not there are 0, but 1 at the end of a range."""
    family = {b"\0\1": socket.AF_INET, b"\0\2": socket.AF_INET6}.get(_octets(handle, 0)[:2])
    size = 32 if family == socket.AF_INET else 128
    choice_type = type_.fields[1].type
    choice = ffi.gc(lib.py_part(handle, 1), lib.py_release)

    def address(holder: Any, index: int) -> str:
        octets, length = _octets(holder, index), lib.py_bits(holder, index)
        is_prefix = lib.py_alternative(holder) == 0
        if family is None or length > size:
            text = _hex(octets)
        else:
            free = (1 << (size - length)) - 1
            number = int.from_bytes(octets.ljust(size // 8, b"\0"), "big") & ~free
            text = socket.inet_ntop(family, (number | (free if index == 1 else 0)).to_bytes(size // 8, "big"))
        return f"{text}/{length}" if is_prefix else text

    return _blocks(choice_type, choice, address)


def _timestamp(stamp: Timestamp) -> Dict[str, Any]:
    found: Dict[str, Any] = {"version": stamp.version}
    if stamp.version != 0:
        return {**found, "opaque": _hex(stamp.opaque or b"")}
    found.update(logID=_hex(stamp.logID), timestamp=stamp.timestamp)
    if stamp.extensions is not None:
        found["extensions"] = _hex(stamp.extensions)
    signature = _word(stamp.signatureAlgorithm, _SIGNATURES, "signature")
    found["signatureAlgorithm"] = f"{signature} with {_word(stamp.hashAlgorithm, _HASHES, 'hash')}"
    return {**found, "signature": _hex(stamp.signature or b"")}


def _general_name(type_: Type, handle: Any) -> Dict[str, Any]:
    index = lib.py_alternative(handle)
    if index == lib.PY_SELF:
        return {}
    field = type_.fields[index]
    found: Dict[str, Any] = {"kind": field.kind}
    if field.type.name == "AnotherName":
        return {**found, **_part(field.type, handle, index)}
    if field.type.name == "RDNSequence":
        part = ffi.gc(lib.py_part(handle, index), lib.py_release)
        return {**found, "value": name_text(field.type.value_class._of(part))}
    if field.type.name == "IA5String":  # as UTF-8, which some write there
        return {**found, "value": shown(_octets(handle, index).decode("utf-8", "surrogateescape"))}
    if field.name == "iPAddress":
        octets = _octets(handle, index)
        family = {4: socket.AF_INET, 16: socket.AF_INET6}.get(len(octets))
        return {**found, "value": socket.inet_ntop(family, octets) if family else _hex(octets)}
    return {**found, "value": _part(field.type, handle, index)}


def _object(value: CardObject) -> Dict[str, Any]:
    found: Dict[str, Any] = {"id": f"{value.id:02X}", "role": value.role}
    if value.value is not None:
        return {**found, "value": _hex(value.value)}
    return {**found, "children": [_child(child) for child in value.children or ()]}


def _child(child: Any) -> Any:
    """Describes an object, an attribute, or a set of objects."""
    if isinstance(child, CardObject):
        return _object(child)
    if isinstance(child, CardAttribute):
        return {"id": f"{child.id:08X}", "value": _hex(child.value)}
    return [_object(each) for each in child]


def _whole(type_: Type, handle: Any) -> Any:
    if type_.name == "GeneralName":
        return _general_name(type_, handle)
    if type_.kind == lib.PKI_SEQUENCE:
        if any(field.type.kind == lib.PKI_ATTRIBUTE_VALUE for field in type_.fields):
            return _attribute(handle)
        if type_.name == "IPAddressFamily":
            return {"addressFamily": _hex(_octets(handle, 0)), "addresses": _addresses(type_, handle)}
        return _record(type_, handle)
    if type_.kind == lib.PKI_CHOICE:
        index = lib.py_alternative(handle)
        if index == lib.PY_SELF:
            return {}
        if type_.name == "ASIdentifierChoice":
            return _blocks(type_, handle, _as_number)
        field = type_.fields[index]
        value = _part(field.type, handle, index)
        if type_.name == "CertStatus":
            return {"status": field.name, **({"revoked": value} if field.name == "revoked" else {})}
        return {field.name: value}
    if type_.kind == lib.PKI_CARD_OBJECT:
        return _object(type_.value_class._of(handle))
    if type_.element is None:
        return [_timestamp(timestamp) for timestamp in type_.value_class._of(handle)]
    if type_.name == "ExtKeyUsageSyntax":
        return [{"keyPurposeId": _identifier(handle, i)} for i in range(lib.py_count(handle))]
    return [_part(type_.element, handle, index) for index in range(lib.py_count(handle))]


def json_of(value: Value) -> Any:
    """Describes a value: a dict for a record or a choice, a list for a list."""
    return _whole(value._type, value._handle)
