"""Values between Python and the library."""

import ctypes
import datetime
import decimal

from . import _library as lib

EMPTY_KIND, NULL, INTEGER, DOUBLE, DECIMAL, DATE, TEXT, BOOLEAN, RECORDSET, DICTIONARY, NOTHING = range(11)


class _Empty:
    def __repr__(self):
        return "bukorval.EMPTY"


#: A value that was not set: beside None, the database's Null, for members that tell one from the other.
EMPTY = _Empty()


class Variant(lib.Handle):
    """A value of the library. Only sessions and connections are seen as one, to be handed on."""

    _free = "variant_free"

    def __init__(self, value=EMPTY):
        super().__init__(lib.plain("variant_new"))
        if self._handle is None:
            raise MemoryError
        if value is not EMPTY:
            self.put(value)

    def put(self, value):
        handle = self._handle
        if value is None:
            lib.call("put_null", handle)
        elif isinstance(value, bool):
            lib.call("put_boolean", handle, value)
        elif isinstance(value, int):
            if not -2**63 <= value < 2**63:
                raise OverflowError("A whole number has at most 64 bits")
            lib.call("put_integer", handle, value)
        elif isinstance(value, float):
            lib.call("put_double", handle, value)
        elif isinstance(value, decimal.Decimal):
            lib.call("put_decimal", handle, format(value, "f").encode())
        elif isinstance(value, datetime.date):
            time = [getattr(value, name, 0) for name in ("hour", "minute", "second")]
            lib.call("put_date", handle, ctypes.byref(lib.Date(value.year, value.month, value.day, *time)))
        elif isinstance(value, str):
            text = value.encode()
            lib.call("put_text", handle, text, len(text))
        else:
            self._put_object(value)

    def _put_object(self, value):
        from ._recordset import RecordSet

        if isinstance(value, RecordSet):
            lib.call("put_recordset", self._handle, value._handle)
        elif isinstance(value, dict):
            dictionary = Dictionary.of(value)
            lib.call("put_dictionary", self._handle, dictionary._handle)
        else:
            raise TypeError(f"No value of the object: {value!r}")

    def take(self):
        kind = lib.plain("variant_kind", self._handle)
        if kind in (EMPTY_KIND, NULL, NOTHING):
            return None
        if kind in (INTEGER, DOUBLE, BOOLEAN):
            name, type_, result = {INTEGER: ("take_integer", ctypes.c_int64, int),
                                   DOUBLE: ("take_double", ctypes.c_double, float),
                                   BOOLEAN: ("take_boolean", ctypes.c_int, bool)}[kind]
            return result(lib.made(name, self._handle, kind=type_))
        if kind == DATE:
            return date_of(lib.made("take_date", self._handle, kind=lib.Date))
        if kind in (DECIMAL, TEXT):
            return decimal.Decimal(self._text()) if kind == DECIMAL else self._text()
        if kind == RECORDSET:
            from ._recordset import RecordSet

            return RecordSet._of(lib.made("take_recordset", self._handle))
        if kind == DICTIONARY:
            return Dictionary(lib.made("take_dictionary", self._handle)).dict()
        return self

    def _text(self):
        text, length = ctypes.c_void_p(), ctypes.c_size_t()
        lib.call("take_text", self._handle, ctypes.byref(text), ctypes.byref(length))
        return ctypes.string_at(text.value, length.value).decode()


def variant(value):
    return value if isinstance(value, Variant) else Variant(value)


def handles(variants):
    """The array of handles that functions take."""
    return (ctypes.c_void_p * len(variants))(*(v._handle for v in variants))


class Dictionary(lib.Handle):
    _free = "dictionary_free"

    @classmethod
    def of(cls, items):
        made = cls(lib.made("dictionary_new"))
        for key, item in items.items():
            key, item = variant(key), variant(item)
            lib.call("dictionary_put", made._handle, key._handle, item._handle)
        return made

    def dict(self):
        result, key, item = {}, Variant(), Variant()
        for place in range(lib.plain("dictionary_count", self._handle)):
            lib.call("dictionary_at", self._handle, place, key._handle, item._handle)
            result[key.take()] = item.take()
        return result


def date_of(date):
    """A date without a time is a calendar date."""
    if date.hour or date.minute or date.second:
        return datetime.datetime(date.year, date.month, date.day, date.hour, date.minute, date.second)
    return datetime.date(date.year, date.month, date.day)
