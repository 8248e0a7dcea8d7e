"""The objects of a smart card: a tree of leaves, containers and holders of attributes."""

from __future__ import annotations

from typing import Any, NamedTuple, Optional, Tuple

from ._errors import Missing
from ._orvelpki import ffi, lib
from ._types import Type, Value, octets_from

_SELF = lib.PY_SELF
_ROLES = {
    lib.PY_LEAF: "leaf", lib.PY_CONTAINER: "container", lib.PY_ATTRIBUTES: "attribute holder",
}


class CardAttribute(NamedTuple):
    """An attribute of an object: its identifier, of 32 bits, and its octets."""

    id: int
    value: bytes


def _octets(handle: Any, index: int) -> Optional[bytes]:
    found = lib.py_object_octets(handle, index)
    return bytes(ffi.buffer(found.data, found.length)) if found.data else None


class CardObject(Value):
    """An object of a smart card. Its identifier says what it holds: a leaf octets, a container objects or, at
    the places of GDO that are called so, sets of objects, and an attribute holder attributes."""

    __slots__ = ()

    def __new__(cls, id: int, value: Any = None, children: Any = None) -> Any:
        if getattr(cls, "_type", None) is None:
            raise TypeError("CardObject is what the objects of a card are, and is no type by itself")
        return cls.decode(write_object(cls._type, id, value, children))

    @property
    def id(self) -> int:
        """The identifier, one octet."""
        return _known(lib.py_object_id(self._handle))

    @property
    def role(self) -> str:
        """What the object holds: "leaf", "container" or "attribute holder"."""
        return _ROLES[_known(lib.py_object_role(self._handle))]

    @property
    def value(self) -> Optional[bytes]:
        """The octets of a leaf; None for another object."""
        return (_octets(self._handle, _SELF) or b"") if self.role == "leaf" else None

    @property
    def children(self) -> Optional[Tuple[Any, ...]]:
        """What a container or an attribute holder holds; None for a leaf."""
        handle, role = self._handle, self.role
        if role == "leaf":
            return None
        count = lib.py_object_count(handle, _SELF)
        if role == "attribute holder":
            return tuple(
                CardAttribute(lib.py_object_attribute(handle, index), _octets(handle, index) or b"")
                for index in range(count)
            )
        if not lib.py_object_has_sets(handle):
            return tuple(_child(handle, _SELF, index) for index in range(count))
        return tuple(
            tuple(_child(handle, set_, index) for index in range(lib.py_object_count(handle, set_)))
            for set_ in range(count)
        )

    def _encode_by_parts(self) -> bytes:
        return write_object(self._type, self.id, self.value, self.children)

    def __repr__(self) -> str:
        from ._show import shown

        return shown(self)


def _known(answer: int) -> int:
    if answer < 0:
        raise TypeError("this is no object of a card")
    return answer


def _child(handle: Any, set_: int, index: int) -> Any:
    child = lib.py_object_child(handle, set_, index)
    if not child:
        raise MemoryError
    return plain_type().value_class._of(ffi.gc(child, lib.py_release))


def plain_type() -> Type:
    """Returns the type of an object in another one."""
    from ._types import TYPES

    return TYPES["GDOObjectSetOf"]


def write_object(type_: Type, id_: Any, value: Any, children: Any, path: str = "") -> bytes:
    """Returns the element of an object."""
    from ._writer import element, wrong

    if not isinstance(id_, int) or isinstance(id_, bool):
        raise wrong(path, "an identifier, an int,", id_)
    if not 0 <= id_ <= 0xFF:
        raise ValueError(f"{path or 'the value'}: an identifier is one octet, not {id_}")
    is_leaf = not (0x10 <= id_ <= 0x14 or id_ in (0x20, 0x21))
    if (children if is_leaf else value) is not None:
        raise TypeError(f"{path or 'the value'}: an object {id_:#04x} has {'a value' if is_leaf else 'children'}")
    if (value if is_leaf else children) is None:
        raise Missing("GDOObject", f"{path}.{'value' if is_leaf else 'children'}".lstrip("."), "is missing")
    head = element(0x06, bytes((id_,)))
    if is_leaf:
        return element(0x30, head + element(0x04, octets_from(value)))
    if isinstance(children, (str, bytes, bytearray, memoryview)):
        raise wrong(path, "a list of children", children)
    if id_ == 0x20:
        written = [_write_attribute(attribute, path) for attribute in children]
    elif type_ is plain_type():
        written = _write_objects(children, path)
    else:
        written = [element(0x31, b"".join(_write_objects(set_, path))) for set_ in children]
    return element(
        0x30, head + element(0x03 if id_ == 0x20 else 0x04, element(0x31, b"".join(written)))
    )


def _write_objects(children: Any, path: str) -> Any:
    from ._writer import write

    return [write(plain_type(), child, f"{path}.children[{index}]".lstrip(".")) for index, child in enumerate(children)]


def _write_attribute(attribute: Any, path: str) -> bytes:
    from ._writer import element, wrong

    if not isinstance(attribute, tuple) or len(attribute) != 2:
        raise wrong(path, "a pair of an identifier and octets", attribute)
    id_, value = attribute
    if not isinstance(id_, int) or isinstance(id_, bool):
        raise wrong(path, "an identifier, an int,", id_)
    if not 0 <= id_ <= 0xFFFFFFFF:
        raise ValueError(f"{path or 'the value'}: an identifier of an attribute has 32 bits")
    return element(0x30, element(0x06, id_.to_bytes(4, "little")) + element(0x04, octets_from(value)))
