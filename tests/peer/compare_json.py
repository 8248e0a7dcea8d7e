"""The tool's JSON, in the form that the peers' values have."""
import datetime
import re

# The short names of attributes in the textual form of a name.
SHORT_NAMES = {
    "c": "2.5.4.6", "cn": "2.5.4.3", "g": "2.5.4.44", "gn": "2.5.4.42", "i": "2.5.4.43",
    "l": "2.5.4.7", "m": "1.2.840.113549.1.9.1", "n": "2.5.4.41", "o": "2.5.4.10",
    "ou": "2.5.4.11", "s": "2.5.4.4", "sn": "2.5.4.5", "sp": "2.5.4.8", "t": "2.5.4.12"}
DIRECTORY_NAME = 4


def name_of_text(text):
    """Returns the relative names of "/cn(12)=a,o(19)=b", each sorted: a slash escapes slash and comma."""
    rdns = []
    for opening, kind, tag, value in re.findall(
            r"([/,])([a-z]+|[0-9.]+)\((\d+)\)=((?:/[/,]|[^/,])*)", text):
        if opening == "/":
            rdns.append([])
        rdns[-1].append((SHORT_NAMES.get(kind, kind), int(tag), re.sub(r"/([/,])", r"\1", value)))
    return [sorted(rdn) for rdn in rdns]


def moment(time):
    """Returns the moment of a time, or its text where the tool says that it is none."""
    return iso(time["time"]) if "time" in time else time["value"]


def iso(text):
    """Returns the moment of "2026-01-31T12:00:00Z"."""
    return text and datetime.datetime.fromisoformat(text.replace("Z", "+00:00"))


def number(value):
    """Returns a number that the tool shows as such, or in hexadecimal digits."""
    if not isinstance(value, str):
        return value
    return -int(value[1:], 16) if value.startswith("-") else int(value, 16)


def _helps(name, value):
    """Whether a member only helps the reader: the name of what an identifier beside it identifies."""
    return (name.endswith("Name") and name[:-len("Name")] in value
            or name == "qualifier" and "decoded" in value)


def _member(name, value, beside):
    if name in ("authorityCertSerialNumber", "pathLenConstraint"):
        return number(value)
    if name == "noticeNumbers" and isinstance(value, list):
        return [number(one) for one in value]
    if name == "value" and beside.get("kind") == DIRECTORY_NAME:
        return name_of_text(value)
    if name == "nameRelativeToCRLIssuer":
        return sorted(comparable(value))
    return comparable(value)


def comparable(value):
    """Returns a value without what only helps its reader, with attributes as tuples, and moments."""
    if isinstance(value, list):
        return [comparable(one) for one in value]
    if not isinstance(value, dict):
        return value
    if "valueTag" in value:
        return (value["type"], value["valueTag"], value["value"])
    if value.keys() == {"kind", "value", "time"}:
        return moment(value)
    return {name: _member(name, one, value) for name, one in value.items()
            if not _helps(name, value)}


def name(rdns):
    """Returns the relative names of a name, each a list of identifier, tag and value."""
    return [[comparable(attribute) for attribute in rdn] for rdn in rdns]


NUMBERS = ("2.5.29.20", "2.5.29.27", "2.5.29.54")


def extension_value(identifier, decoded):
    """Returns the value of an extension; a number that is one."""
    return number(decoded) if identifier in NUMBERS else comparable(decoded)


KINDS_OF_NAMES = ("other name", "email", "DNS", "X.400", "directory", "EDI party", "URI", "IP",
                  "identifier")


def named(value):
    """Yields what has a name beside it in a value, and the name: identifiers, and kinds of names."""
    if isinstance(value, list):
        for one in value:
            yield from named(one)
    if isinstance(value, dict):
        for name, one in value.items():
            yield from named(one)
            if name.endswith("Name") and name[:-len("Name")] in value:
                yield value[name[:-len("Name")]], one


def is_malformed(value):
    """Whether the tool marks a value, or a part of it, as malformed."""
    if isinstance(value, dict):
        return "malformed" in value or any(map(is_malformed, value.values()))
    return isinstance(value, list) and any(map(is_malformed, value))
