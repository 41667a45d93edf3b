"""The C library: where it is found, and how its functions are called (see bukorval.h)."""

import ctypes
import os
from ctypes import POINTER, byref, c_char_p, c_double, c_int, c_int32, c_int64, c_size_t, c_uint8, c_void_p

MISUSED = 2
NO_LENGTH = ctypes.c_size_t(-1)


class Failure(Exception):
    """A call that failed outside the object: no database, a value that does not fit."""


class Misuse(TypeError, Failure):
    """A call that is wrong in itself; nothing has run."""


class Date(ctypes.Structure):
    _fields_ = [(name, c_int) for name in ("year", "month", "day", "hour", "minute", "second")]


class Member(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("signature", c_char_p), ("description", c_char_p), ("is_method", c_int),
                ("readable", c_int), ("writable", c_int), ("parameters", c_size_t)]


class Parameter(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("type", c_char_p), ("in_out", c_int), ("optional", c_int)]


class Field(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("type", c_int32), ("size", c_int32), ("precision", c_uint8), ("scale", c_uint8),
                ("nullable", c_int)]


class Column(ctypes.Structure):
    _fields_ = [("kind", c_int), ("rows", c_size_t), ("nulls", POINTER(c_uint8)), ("integers", POINTER(c_int64)),
                ("scale", c_int), ("doubles", POINTER(c_double)), ("dates", POINTER(Date)), ("text", c_void_p),
                ("offsets", POINTER(c_size_t))]


BEGIN = ctypes.CFUNCTYPE(c_int, c_void_p, c_char_p, c_int64)
STEP = ctypes.CFUNCTYPE(c_int, c_void_p, c_int64)
END = ctypes.CFUNCTYPE(None, c_void_p)
MESSAGE = ctypes.CFUNCTYPE(None, c_void_p, c_char_p, c_int, c_char_p)


class Events(ctypes.Structure):
    _fields_ = [("user", c_void_p), ("begin", BEGIN), ("step", STEP), ("end", END)]


# What each function takes; those that return a code are checked by call().
_SIGNATURES = {
    "open": [c_char_p, c_char_p, POINTER(c_void_p)],
    "execute": [c_void_p, c_char_p, POINTER(c_void_p)],
    "begin": [c_void_p],
    "commit": [c_void_p],
    "rollback": [c_void_p],
    "messages": [c_void_p, MESSAGE, c_void_p],
    "object_new": [c_void_p, POINTER(c_void_p)],
    "get": [c_void_p, c_char_p, c_void_p],
    "set": [c_void_p, c_char_p, c_void_p],
    "call": [c_void_p, c_char_p, POINTER(c_void_p), c_size_t, c_void_p],
    "listen": [c_void_p, POINTER(Events)],
    "member_at": [c_size_t, POINTER(Member)],
    "parameter_at": [c_size_t, c_size_t, POINTER(Parameter)],
    "put_empty": [c_void_p],
    "put_null": [c_void_p],
    "put_integer": [c_void_p, c_int64],
    "put_double": [c_void_p, c_double],
    "put_decimal": [c_void_p, c_char_p],
    "put_date": [c_void_p, POINTER(Date)],
    "put_text": [c_void_p, c_char_p, c_size_t],
    "put_boolean": [c_void_p, c_int],
    "put_recordset": [c_void_p, c_void_p],
    "put_dictionary": [c_void_p, c_void_p],
    "take_integer": [c_void_p, POINTER(c_int64)],
    "take_double": [c_void_p, POINTER(c_double)],
    "take_boolean": [c_void_p, POINTER(c_int)],
    "take_date": [c_void_p, POINTER(Date)],
    "take_text": [c_void_p, POINTER(c_void_p), POINTER(c_size_t)],
    "take_recordset": [c_void_p, POINTER(c_void_p)],
    "take_dictionary": [c_void_p, POINTER(c_void_p)],
    "recordset_new": [POINTER(c_void_p)],
    "recordset_append": [c_void_p, POINTER(Field)],
    "recordset_open": [c_void_p],
    "recordset_rows": [c_void_p, POINTER(c_size_t)],
    "recordset_fields": [c_void_p, POINTER(c_size_t)],
    "recordset_field": [c_void_p, c_size_t, POINTER(Field)],
    "recordset_column": [c_void_p, c_size_t, POINTER(Column)],
    "recordset_put": [c_void_p, c_size_t, c_char_p, c_void_p],
    "recordset_add": [c_void_p, POINTER(c_void_p), c_size_t],
    "dictionary_new": [POINTER(c_void_p)],
    "dictionary_put": [c_void_p, c_void_p, c_void_p],
    "dictionary_at": [c_void_p, c_size_t, c_void_p, c_void_p],
}
_OTHERS = {
    "version": (c_char_p, []),
    "error": (c_char_p, []),
    "close": (None, [c_void_p]),
    "object_free": (None, [c_void_p]),
    "member_count": (c_size_t, []),
    "variant_new": (c_void_p, []),
    "variant_free": (None, [c_void_p]),
    "variant_kind": (c_int, [c_void_p]),
    "recordset_free": (None, [c_void_p]),
    "dictionary_free": (None, [c_void_p]),
    "dictionary_count": (c_size_t, [c_void_p]),
}


def _load():
    # BUKORVAL_LIBRARY names a library that is not installed.
    library = ctypes.CDLL(os.environ.get("BUKORVAL_LIBRARY") or "libbukorval.so.0")
    functions = {}
    for name, (result, arguments) in {**{n: (c_int, a) for n, a in _SIGNATURES.items()}, **_OTHERS}.items():
        function = getattr(library, "bukorval_" + name)
        function.restype, function.argtypes = result, arguments
        functions[name] = function
    return functions


_functions = _load()


def plain(name, *arguments):
    """Calls a function that cannot fail."""
    return _functions[name](*arguments)


def call(name, *arguments):
    """Calls a function and raises what its code says."""
    code = _functions[name](*arguments)
    if code:
        text = _functions["error"]().decode()
        raise Misuse(text) if code == MISUSED else Failure(text)


def text(value):
    """A text for a function that reads up to the first zero, which would end it early."""
    encoded = value.encode()
    if b"\0" in encoded:
        raise ValueError("A zero character inside a text")
    return encoded


def made(name, *arguments, kind=c_void_p):
    """What a function hands out through its last argument."""
    result = kind()
    call(name, *arguments, byref(result))
    return result if isinstance(result, ctypes.Structure) else result.value


class Handle:
    """Owns what a function has handed out."""

    _free = None

    def __init__(self, handle):
        self._handle = handle

    def __reduce__(self):
        # A copy would free the handle once more.
        raise TypeError(f"A {type(self).__name__} cannot be copied or pickled")

    def __del__(self):
        if getattr(self, "_handle", None):
            plain(self._free, self._handle)
            self._handle = None
