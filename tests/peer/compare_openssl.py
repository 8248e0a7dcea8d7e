"""What OpenSSL's libcrypto says of a part of an object: the functions that `openssl x509 -text` calls."""
import ctypes
import ctypes.util
import datetime

from compare_der import Refused

_lib = ctypes.CDLL(ctypes.util.find_library("crypto"))
_pointer = ctypes.c_void_p


def _function(name, result, *arguments):
    function = getattr(_lib, name)
    function.restype = result
    function.argtypes = arguments
    return function


_bio_new = _function("BIO_new", _pointer, _pointer)
_bio_memory = _function("BIO_s_mem", _pointer)
_bio_ctrl = _function("BIO_ctrl", ctypes.c_long, _pointer, ctypes.c_int, ctypes.c_long, _pointer)
_bio_free = _function("BIO_free", ctypes.c_int, _pointer)
_print_extension = _function("X509V3_EXT_print", ctypes.c_int, _pointer, _pointer, ctypes.c_ulong,
                             ctypes.c_int)
_print_algorithm = _function("X509_signature_print", ctypes.c_int, _pointer, _pointer, _pointer)
_entry_count = _function("X509_NAME_entry_count", ctypes.c_int, _pointer)
_entry = _function("X509_NAME_get_entry", _pointer, _pointer, ctypes.c_int)
_entry_object = _function("X509_NAME_ENTRY_get_object", _pointer, _pointer)
_entry_data = _function("X509_NAME_ENTRY_get_data", _pointer, _pointer)
_entry_set = _function("X509_NAME_ENTRY_set", ctypes.c_int, _pointer)
_object_text = _function("OBJ_obj2txt", ctypes.c_int, ctypes.c_char_p, ctypes.c_int, _pointer,
                         ctypes.c_int)
_object = _function("OBJ_txt2obj", _pointer, ctypes.c_char_p, ctypes.c_int)
_object_free = _function("ASN1_OBJECT_free", None, _pointer)
_number = _function("OBJ_txt2nid", ctypes.c_int, ctypes.c_char_p)
_short_name = _function("OBJ_nid2sn", ctypes.c_char_p, ctypes.c_int)
_long_name = _function("OBJ_nid2ln", ctypes.c_char_p, ctypes.c_int)
_string_type = _function("ASN1_STRING_type", ctypes.c_int, _pointer)
_to_utf8 = _function("ASN1_STRING_to_UTF8", ctypes.c_int, ctypes.POINTER(_pointer), _pointer)
_free = _function("CRYPTO_free", None, _pointer, ctypes.c_char_p, ctypes.c_int)
_time_to_tm = _function("ASN1_TIME_to_tm", ctypes.c_int, _pointer, _pointer)


class _Decoded:
    """A value that libcrypto decoded from octets, and how many of these are left over."""

    def __init__(self, name, octets):
        decode = _function("d2i_" + name, _pointer, _pointer, ctypes.POINTER(ctypes.c_char_p),
                           ctypes.c_long)
        self.release = _function(name + "_free", None, _pointer)
        cursor = ctypes.c_char_p(octets)
        start = ctypes.cast(cursor, _pointer).value
        self.value = decode(None, ctypes.byref(cursor), len(octets))
        if not self.value:
            raise Refused(name)
        self.left = len(octets) - (ctypes.cast(cursor, _pointer).value - start)

    def __enter__(self):
        return self.value

    def __exit__(self, *_):
        self.release(self.value)


def accepts(name, octets):
    """Whether libcrypto decodes all of these octets as a type such as X509."""
    try:
        decoded = _Decoded(name, octets)
    except Refused:
        return False
    with decoded:
        return decoded.left == 0


def _printed(print_to):
    """Returns what a function prints."""
    bio = _bio_new(_bio_memory())
    try:
        if not print_to(bio):
            raise Refused("it does not print it")
        data = ctypes.c_char_p()
        get_data = 3
        size = _bio_ctrl(bio, get_data, 0, ctypes.byref(data))
        return ctypes.string_at(data, size).decode("utf-8", "replace") if size > 0 else ""
    finally:
        _bio_free(bio)


def extension_text(extension):
    """Returns the text of an Extension's value; refuses one that it does not know or read.

    Some functions take it for a failure where there is nothing to print in front of a line.
    """
    with _Decoded("X509_EXTENSION", extension) as value:
        text = _printed(lambda bio: _print_extension(bio, value, 0, 1))
    return "\n".join(line.removeprefix(" ") for line in text.split("\n"))


def algorithm_text(algorithm):
    """Returns the text of an AlgorithmIdentifier of signatures."""
    with _Decoded("X509_ALGOR", algorithm) as value:
        return _printed(lambda bio: _print_algorithm(bio, value, None))


def _utf8(string):
    out = _pointer()
    size = _to_utf8(ctypes.byref(out), string)
    if size < 0:
        raise Refused("a string that is not one")
    octets = ctypes.string_at(out, size)
    _free(out, None, 0)
    return octets.decode()


def _identifier(identifier, dotted):
    size = _object_text(None, 0, identifier, dotted)
    out = ctypes.create_string_buffer(size + 1)
    _object_text(out, size + 1, identifier, dotted)
    return out.value.decode()


def identifier_text(dotted):
    """Returns the name that an identifier has in texts, or the identifier."""
    made = _object(dotted.encode(), 1)
    text = _identifier(made, 0)
    _object_free(made)
    return text


def identifier_names(dotted):
    """Returns the names that an identifier has, if any: the short one and the long one."""
    number = _number(dotted.encode())
    return [] if number == 0 else [_short_name(number).decode(), _long_name(number).decode()]


def name(octets):
    """Returns the relative names of a Name, each a list of identifier, tag and value."""
    with _Decoded("X509_NAME", octets) as value:
        sets = {}
        for i in range(_entry_count(value)):
            entry = _entry(value, i)
            data = _entry_data(entry)
            sets.setdefault(_entry_set(entry), []).append(
                (_identifier(_entry_object(entry), 1), _string_type(data), _utf8(data)))
        return list(sets.values())


class _Tm(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int) for name in ("sec", "min", "hour", "day", "month", "year",
                                                  "weekday", "yearday", "daylight")] + [
        ("offset", ctypes.c_long), ("zone", ctypes.c_char_p)]


def moment(time):
    """Returns the moment of a Time, in UTC."""
    with _Decoded("ASN1_TIME", time) as value:
        tm = _Tm()
        if not _time_to_tm(value, ctypes.byref(tm)):
            raise Refused("a time that is none")
        return datetime.datetime(tm.year + 1900, tm.month + 1, tm.day, tm.hour, tm.min, tm.sec,
                                 tzinfo=datetime.timezone.utc)
