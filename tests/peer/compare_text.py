"""Says what the tool's JSON has of an extension in the words of `openssl x509 -text`.

For what python3-cryptography does not read. A value that this file has no words for is refused.
"""
import ipaddress

import compare_openssl as openssl
from compare_der import Refused


SHORT_NAMES = {
    "2.5.4.3": "CN", "2.5.4.4": "SN", "2.5.4.5": "serialNumber", "2.5.4.6": "C", "2.5.4.7": "L",
    "2.5.4.8": "ST", "2.5.4.9": "street", "2.5.4.10": "O", "2.5.4.11": "OU",
    "2.5.4.17": "postalCode", "1.2.840.113549.1.9.1": "emailAddress"}


def colons(digits):
    return ":".join(digits[i:i + 2] for i in range(0, len(digits), 2))


def number(value):
    """Returns a number that the tool shows in decimals, or negative in hexadecimal digits."""
    return str(value if isinstance(value, int) else int(value, 16))


def lines(words):
    return "\n".join(words)


def address(text):
    """Returns an address without the shortened zeros of IPv6."""
    parsed = ipaddress.ip_address(text)
    if parsed.version == 4:
        return str(parsed)
    return ":".join(f"{int(part, 16):X}" for part in parsed.exploded.split(":"))


def other_name(value):
    kind = {"1.3.6.1.5.5.7.8.9": "SmtpUTF8Mailbox"}.get(value["type"], value["type"])
    return f"othername: {kind}::{value.get('text', '<unsupported>')}"


def general_name(value, one_line=True):
    kind = value["kind"]
    if kind == 0:
        return other_name(value)
    if kind in (3, 5):
        return f"{'X400Name' if kind == 3 else 'EdiPartyName'}:<unsupported>"
    if kind == 4:
        parts = [f"{SHORT_NAMES.get(one[0], one[0])}{'=' if one_line else ' = '}{one[2]}"
                 for rdn in value["value"] for one in rdn]
        return "DirName:" + ("".join("/" + part for part in parts) if one_line
                             else ", ".join(parts))
    words = {1: "email", 2: "DNS", 6: "URI", 7: "IP Address", 8: "Registered ID"}
    text = address(value["value"]) if kind == 7 else value["value"]
    return f"{words[kind]}:{text}"


def general_names(value):
    return ", ".join(map(general_name, value)) or "<EMPTY>\n"


def titled(title, names):
    return [f"{title}:", *("  " + one for one in names)]


def policy(value):
    words = [f"Policy: {openssl.identifier_text(value['policyIdentifier'])}"]
    for qualifier in value.get("policyQualifiers", []):
        if not isinstance(qualifier.get("decoded"), str):
            raise Refused("a notice, whose text may have any of four kinds of characters")
        words.append(f"  CPS: {qualifier['decoded']}")
    return lines(words)


def pss(value):
    """Returns the text of the parameters of RSASSA-PSS, one blank between two words."""
    def name(algorithm):
        return algorithm["algorithmName"] if algorithm else "sha1 (default)"
    mask = value.get("maskGenAlgorithm")
    salt = f"{value['saltLength']:X}" if "saltLength" in value else "14 (default)"
    trailer = f"{value['trailerField']:02X}" if "trailerField" in value else "01 (default)"
    return (f"Signature Algorithm: rsassaPss Hash Algorithm: {name(value.get('hashAlgorithm'))} "
            f"Mask Algorithm: mgf1 with {name(mask and mask['decoded'])} "
            f"Salt Length: 0x{salt} Trailer Field: 0x{trailer}")


def subtree(value):
    base = value["base"]
    if base["kind"] != 7:
        return general_name(base, one_line=False)
    host, _, mask = base["value"].partition("/")
    if mask.isdigit():
        mask = ipaddress.ip_network(f"{host}/{mask}", strict=False).netmask
    return f"IP:{address(host)}/{address(str(mask))}"


def name_constraints(value):
    return lines(line for part, title in (("permittedSubtrees", "Permitted:"),
                                          ("excludedSubtrees", "Excluded:")) if part in value
                 for line in [title, *("  " + subtree(one) for one in value[part])])


def key_identifier(value):
    words = []
    if "keyIdentifier" in value:
        words.append(f"keyid:{colons(value['keyIdentifier'])}")
    words += [general_name(one) for one in value.get("authorityCertIssuer", [])]
    if "authorityCertSerialNumber" in value:
        digits = f"{value['authorityCertSerialNumber']:X}"
        words.append(f"serial:{colons(digits.zfill(len(digits) + len(digits) % 2))}")
    return lines(words)


def basic_constraints(value):
    path = value.get("pathLenConstraint")
    return f"CA:{str(value['cA']).upper()}" + ("" if path is None else f", pathlen:{number(path)}")


CERTIFICATE_TYPES = {
    "sslClient": "SSL Client", "sslServer": "SSL Server", "smime": "S/MIME",
    "objectSigning": "Object Signing", "reserved": "Unused", "sslCA": "SSL CA",
    "smimeCA": "S/MIME CA", "objectSigningCA": "Object Signing CA"}


def address_blocks(value):
    words = []
    for one in value:
        family = one["family"].replace("(SAFI 01)", "(Unicast)")
        if one["addresses"] == ["inherit"]:
            words.append(f"{family}: inherit")
        else:
            words += titled(family, one["addresses"])
    return "".join(word + "\n" for word in words)


def system_numbers(value):
    words = []
    for part, title in (("asnum", "Autonomous System Numbers"),
                        ("rdi", "Routing Domain Identifiers")):
        if part in value:
            words += titled(title, value[part])
    return "".join(word + "\n" for word in words)


def moment(time):
    return f"{time:%b} {time.day:2} {time:%H:%M:%S %Y} GMT"


def usage_period(value):
    parts = []
    if "notBefore" in value:
        parts.append(f"Not Before: {moment(value['notBefore'])}")
    if "notAfter" in value:
        parts.append(f"Not After: {moment(value['notAfter'])}")
    return ", ".join(parts)


def crl_identifier(value):
    return (f"crlUrl: {value['crlUrl']}\ncrlNum: {value['crlNum']}\n"
            f"crlTime: {moment(value['crlTime'])}\n")


def service_locator(value):
    issuer = general_name({"kind": 4, "value": value["issuerSequence"]}, one_line=False)
    words = [f"Issuer: {issuer.removeprefix('DirName:')}"]
    for one in value["locator"]:
        method = openssl.identifier_text(one["accessMethod"])
        words.append(f" {method} - {general_name(one['accessLocation'])}")
    return lines(words)


def itself(value):
    return value


TEXTS = {
    "1.3.6.1.5.5.7.1.7": address_blocks,
    "1.3.6.1.5.5.7.1.8": system_numbers,
    "1.3.6.1.5.5.7.48.1.3": crl_identifier,
    "1.3.6.1.5.5.7.48.1.4": lambda value: ", ".join(map(openssl.identifier_text, value)),
    "1.3.6.1.5.5.7.48.1.6": moment,
    "1.3.6.1.5.5.7.48.1.7": service_locator,
    "2.16.840.1.113730.1.1": lambda value: ", ".join(CERTIFICATE_TYPES[one] for one in value),
    **{f"2.16.840.1.113730.1.{arc}": itself for arc in (2, 3, 8, 13)},
    "2.5.29.16": usage_period,
    "2.5.29.17": general_names,
    "2.5.29.18": general_names,
    "2.5.29.19": basic_constraints,
    "2.5.29.20": number,
    "2.5.29.23": openssl.identifier_text,
    "2.5.29.30": name_constraints,
    "2.5.29.32": lambda value: lines(map(policy, value)),
    "2.5.29.33": lambda value: ", ".join(
        f"{openssl.identifier_text(one['issuerDomainPolicy'])}:"
        f"{openssl.identifier_text(one['subjectDomainPolicy'])}" for one in value),
    "2.5.29.35": key_identifier,
}


def text_of(identifier, value):
    """Returns the text of an extension's value."""
    words = TEXTS.get(identifier)
    if words is None:
        raise Refused(identifier)
    try:
        return words(value)
    except (AttributeError, KeyError, TypeError, ValueError) as error:
        return f"a value that there are no words for: {error!r}"
