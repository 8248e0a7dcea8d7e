"""Reads and writes as much DER as it takes to take an object apart, and to build one around a part.

A part that a peer does not reach, since it refuses another part of the same object, is put into an object
that is otherwise sound.
"""


class Refused(Exception):
    """A peer does not read these octets."""


class Unknown(Refused):
    """A peer does not know their type."""


def wrap(tag, *contents):
    """Returns the element with this tag and content."""
    content = b"".join(contents)
    size = len(content)
    if size < 0x80:
        return bytes([tag, size]) + content
    digits = size.to_bytes((size.bit_length() + 7) // 8, "big")
    return bytes([tag, 0x80 | len(digits)]) + digits + content


def elements(octets):
    """Returns the elements that follow each other in these octets, each with its header."""
    found = []
    while octets:
        if len(octets) < 2 or octets[0] & 0x1F == 0x1F:
            raise Refused("a header")
        size, start = octets[1], 2
        if size == 0x80:
            raise Refused("an indefinite length")
        if size > 0x80:
            start += size & 0x7F
            size = int.from_bytes(octets[2:start], "big")
        if len(octets) < start + size:
            raise Refused("a length")
        found.append(octets[:start + size])
        octets = octets[start + size:]
    return found


def first(octets):
    """Returns the first element of these octets."""
    size, start = octets[1], 2
    if size > 0x80:
        start += size & 0x7F
        size = int.from_bytes(octets[2:start], "big")
    return octets[:start + size]


def content(element):
    """Returns the octets after the header of an element."""
    return element[2 if element[1] < 0x80 else 2 + (element[1] & 0x7F):]


def inside(element):
    """Returns the elements inside an element."""
    return elements(content(element))


def integer(element):
    return int.from_bytes(content(element), "big", signed=True)


def dotted(element):
    """Returns an OBJECT IDENTIFIER in its dotted form."""
    arcs, arc = [], 0
    for octet in content(element):
        arc = arc << 7 | octet & 0x7F
        if octet < 0x80:
            arcs.append(arc)
            arc = 0
    first = min(arcs[0] // 40, 2)
    return ".".join(map(str, [first, arcs[0] - 40 * first] + arcs[1:]))


NULL = bytes([5, 0])
ED25519 = wrap(0x30, bytes([6, 3, 0x2B, 0x65, 0x70]))
NAME = wrap(0x30)
KEY = wrap(0x30, ED25519, wrap(3, bytes(33)))
VALIDITY = wrap(0x30, wrap(0x17, b"250101000000Z"), wrap(0x17, b"350101000000Z"))
SIGNATURE = wrap(3, bytes(65))


def extension(identifier, value, critical=False):
    """Returns an Extension with the content of an identifier, and a value."""
    return wrap(0x30, wrap(6, identifier), wrap(1, b"\xFF") if critical else b"", wrap(4, value))


def certificate(serial=bytes([2, 1, 1]), issuer=NAME, validity=VALIDITY, subject=NAME, key=KEY,
                extensions=()):
    """Returns a certificate with these parts, and sound ones otherwise."""
    more = wrap(0xA3, wrap(0x30, *extensions)) if extensions else b""
    return wrap(0x30, wrap(0x30, bytes([0xA0, 3, 2, 1, 2]), serial, ED25519, issuer, validity,
                           subject, key, more), ED25519, SIGNATURE)


def crl(issuer=NAME, updates=inside(VALIDITY), entries=(), extensions=()):
    """Returns a CRL with these parts, and sound ones otherwise."""
    return wrap(0x30, wrap(0x30, bytes([2, 1, 1]), ED25519, issuer, *updates,
                           wrap(0x30, *entries) if entries else b"",
                           wrap(0xA0, wrap(0x30, *extensions)) if extensions else b""),
                ED25519, SIGNATURE)


def crl_entry(extension):
    """Returns an entry of a CRL with one extension."""
    return wrap(0x30, bytes([2, 1, 1]), inside(VALIDITY)[0], wrap(0x30, extension))


DIGEST = wrap(4, bytes(20))
CERTIFICATE_ID = wrap(0x30, wrap(0x30, bytes.fromhex("06052B0E03021A"), NULL), DIGEST, DIGEST,
                      bytes([2, 1, 1]))


def ocsp_request(certificate=CERTIFICATE_ID, extensions=()):
    """Returns an OCSP request for a certificate."""
    return wrap(0x30, wrap(0x30, wrap(0x30, wrap(0x30, certificate)),
                           wrap(0xA2, wrap(0x30, *extensions)) if extensions else b""))
