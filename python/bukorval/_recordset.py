"""Record sets: a table whose columns are read at once."""

import ctypes
import decimal
from typing import NamedTuple

from . import _library as lib
from . import _values as values

_TYPES = {"integer": 3, "double": 5, "boolean": 11, "date": 135, "decimal": 131, "text": 202}


class Field(NamedTuple):
    """A field: its type is "integer", "double", "boolean", "date", "decimal" or "text", or the standard's number."""

    name: str
    type: object
    size: int = 0
    precision: int = 0
    scale: int = 0
    nullable: bool = True


class RecordSet(lib.Handle):
    """Rows of the object. len() is their number, iteration gives a dict a row, ["FIELD"] a list, the column."""

    _free = "recordset_free"

    def __init__(self, fields):
        """A set of one's own, without rows: RecordSet([Field("CONTO", "text", 8), ...])."""
        super().__init__(lib.made("recordset_new"))
        for field in fields:
            name, type_, *rest = Field(*field)
            lib.call("recordset_append", self._handle,
                     ctypes.byref(lib.Field(lib.text(name), _TYPES.get(type_, type_), *rest)))
        lib.call("recordset_open", self._handle)

    @classmethod
    def _of(cls, handle):
        made = cls.__new__(cls)
        made._handle = handle
        return made

    @property
    def fields(self):
        count = lib.made("recordset_fields", self._handle, kind=ctypes.c_size_t)
        found = (lib.made("recordset_field", self._handle, place, kind=lib.Field) for place in range(count))
        return [Field(f.name.decode(), f.type, f.size, f.precision, f.scale, bool(f.nullable)) for f in found]

    def __len__(self):
        return lib.made("recordset_rows", self._handle, kind=ctypes.c_size_t)

    def __iter__(self):
        names = [field.name for field in self.fields]
        columns = [self._column(place) for place in range(len(names))]
        return (dict(zip(names, row)) for row in zip(*columns))

    def __getitem__(self, name):
        for place, field in enumerate(self.fields):
            if field.name.casefold() == name.casefold():
                return self._column(place)
        raise KeyError(name)

    def rows(self):
        """A list of dicts, in the order of the rows."""
        return list(self)

    def to_pandas(self):
        """A DataFrame; decimals stay exact, as Python's."""
        import pandas

        return pandas.DataFrame({field.name: self._column(place) for place, field in enumerate(self.fields)})

    def put(self, row, field, value):
        """Writes a cell; row counts from 0."""
        cell = values.variant(value)
        lib.call("recordset_put", self._handle, row, lib.text(field), cell._handle)

    def add(self, row):
        """Adds a row, a dict by field; what it leaves out is None."""
        unknown = set(row) - {field.name for field in self.fields}
        if unknown:
            raise KeyError(*unknown)
        cells = [values.variant(row.get(field.name)) for field in self.fields]
        lib.call("recordset_add", self._handle, values.handles(cells), len(cells))

    def _column(self, place):
        column = lib.made("recordset_column", self._handle, place, kind=lib.Column)
        rows, nulls = column.rows, column.nulls
        if column.kind == values.TEXT:
            offsets = column.offsets[:rows + 1]
            text = ctypes.string_at(column.text, offsets[-1])
            found = (text[begin:end - 1].decode() for begin, end in zip(offsets, offsets[1:]))
        elif column.kind == values.DECIMAL:
            scale = -column.scale
            found = (decimal.Decimal(units).scaleb(scale, _EXACT) for units in column.integers[:rows])
        elif column.kind == values.DATE:
            found = (None if null else values.date_of(column.dates[row]) for row, null in enumerate(nulls[:rows]))
        elif column.kind == values.DOUBLE:
            found = column.doubles[:rows]
        else:
            found = map(bool if column.kind == values.BOOLEAN else int, column.integers[:rows])
        return [None if null else value for value, null in zip(found, nulls[:rows])]


_EXACT = decimal.Context(prec=30)
