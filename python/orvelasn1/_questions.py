"""The common questions about a certificate, one call each."""

from __future__ import annotations

import enum
import ipaddress
from datetime import datetime
from typing import Any, List, Optional, Tuple

from ._errors import Error
from ._orvelpki import ffi, lib
from ._scalars import ObjectIdentifier
from ._types import Record


class Usage(enum.IntFlag):
    """What a key may be used for (RFC 5280, 4.2.1.3)."""

    DIGITAL_SIGNATURE = 1 << 0
    NON_REPUDIATION = 1 << 1
    KEY_ENCIPHERMENT = 1 << 2
    DATA_ENCIPHERMENT = 1 << 3
    KEY_AGREEMENT = 1 << 4
    KEY_CERT_SIGN = 1 << 5
    CRL_SIGN = 1 << 6
    ENCIPHER_ONLY = 1 << 7
    DECIPHER_ONLY = 1 << 8


class Names(Tuple[Any, ...]):
    """The names of one kind that can be read, and the number of those of any kind that cannot."""

    unreadable: int

    def __new__(cls, names: Any = (), unreadable: int = 0) -> "Names":
        made = super().__new__(cls, names)
        made.unreadable = unreadable
        return made

    def __reduce__(self) -> Tuple[Any, ...]:
        return Names, (tuple(self), self.unreadable)


def _list(certificate: Any, which: int) -> Tuple[List[bytes], int]:
    unreadable = ffi.new("uint32_t *")
    names = lib.py_list(certificate._handle, which, unreadable)
    if not names:
        raise MemoryError
    try:
        found = [lib.py_list_octets(names, index) for index in range(lib.py_list_count(names))]
        return [bytes(ffi.buffer(name.data, name.length)) if name.length else b"" for name in found], unreadable[0]
    finally:
        lib.py_free_list(names)


def _texts(certificate: Any, which: int) -> Names:
    names, unreadable = _list(certificate, which)
    return Names((name.decode("ascii") for name in names), unreadable)


class CertificateRecord(Record):
    """A certificate, and answers to the common questions about it. Of several extensions with the same
    identifier the first counts. Whether the certificate is valid now is not asked here, nor whether its
    signature is good."""

    __slots__ = ()

    tbsCertificate: Any

    def extension(self, identifier: str) -> Any:
        """Returns the first extension with an identifier; None where there is none."""
        extensions = self.tbsCertificate.extensions
        return None if extensions is None else extensions.find(identifier)

    def dns_names(self) -> Names:
        """Returns the DNS names in subjectAltName; none from the subject."""
        return _texts(self, lib.PY_DNS_NAMES)

    def mail_addresses(self) -> Names:
        """Returns the mail addresses in subjectAltName; none from the subject."""
        return _texts(self, lib.PY_MAIL_ADDRESSES)

    def uris(self) -> Names:
        """Returns the URIs in subjectAltName."""
        return _texts(self, lib.PY_URIS)

    def ip_addresses(self) -> Names:
        """Returns the addresses in subjectAltName, as the module ipaddress has them."""
        names, unreadable = _list(self, lib.PY_IP_ADDRESSES)
        return Names(map(ipaddress.ip_address, names), unreadable)

    def crl_places(self) -> Names:
        """Returns the URIs of the revocation lists."""
        return _texts(self, lib.PY_CRL_PLACES)

    def ocsp_places(self) -> Names:
        """Returns the URIs of the OCSP responders."""
        return _texts(self, lib.PY_OCSP_PLACES)

    def issuer_places(self) -> Names:
        """Returns the URIs of the issuer's certificates."""
        return _texts(self, lib.PY_ISSUER_PLACES)

    def key_usage(self) -> Optional[Usage]:
        """Returns the named bits of keyUsage; None without the extension, which allows every use. Raises Error
        where the extension cannot be read."""
        usage = ffi.new("uint32_t *")
        answer = lib.py_key_usage(self._handle, usage)
        return Usage(usage[0]) if self._answered(answer, "2.5.29.15") else None

    def allows_purpose(self, purpose: str) -> bool:
        """Tells whether extKeyUsage has a purpose, such as "1.3.6.1.5.5.7.3.1" for id_kp_serverAuth, or
        anyExtendedKeyUsage, or is not there. Raises Error where the extension cannot be read."""
        text = ObjectIdentifier(purpose)
        if text.startswith("#"):  # which no purpose is
            raise ValueError(f"no purpose: {text[:80]!r}")
        answer = lib.py_allows_purpose(self._handle, text.encode("ascii"))
        return self._answered(answer, "2.5.29.37")

    def may_issue(self) -> bool:
        """Tells whether the subject may issue certificates: basicConstraints has cA, and keyUsage has
        keyCertSign or is not there. Raises Error where one of the two cannot be read."""
        return self._issues()[0]

    def path_length(self) -> Optional[int]:
        """Returns the number of certificates of other issuers that may follow one that may issue; None where
        there is no limit below 2^32 - 1, and for a certificate that may not issue."""
        may, length = self._issues()
        return length if may and length != 0xFFFFFFFF else None

    def _issues(self) -> Tuple[bool, int]:
        length = ffi.new("uint32_t *")
        answer = lib.py_may_issue(self._handle, length)
        return self._answered(answer, "2.5.29.19", "2.5.29.15"), length[0]

    def subject_key_identifier(self) -> Optional[bytes]:
        """Returns the content of subjectKeyIdentifier; None where it is not there or cannot be read."""
        return self._key_identifier(0)

    def authority_key_identifier(self) -> Optional[bytes]:
        """Returns keyIdentifier in authorityKeyIdentifier; None where it is not there or cannot be read."""
        return self._key_identifier(1)

    def _key_identifier(self, of_issuer: int) -> Optional[bytes]:
        found = lib.py_key_identifier(self._handle, of_issuer)
        if not found.data:
            return None
        return bytes(ffi.buffer(found.data, found.length)) if found.length else b""

    def period(self) -> Tuple[datetime, datetime]:
        """Returns the two times of the validity. Raises Unreadable where one of them is none."""
        validity = self.tbsCertificate.validity
        return validity.notBefore, validity.notAfter

    def _answered(self, answer: int, *extensions: str) -> bool:
        """Returns a yes or no of the library. Raises Error where it has no answer."""
        if answer >= 0:
            return answer != 0
        for identifier in extensions:
            extension = self.extension(identifier)
            if extension is not None:
                extension.decoded
        raise Error(f"{' or '.join(ObjectIdentifier(e).name or e for e in extensions)} cannot be read")
