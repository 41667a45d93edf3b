"""The budget object, with its Italian names:

    import bukorval

    company = bukorval.connect("Provider=SQLite;Data Source=demo.db")
    budget = company.budget(TipoBudget=4, SottoTipoBudget="01", AnnoEsercizio=2025, ProgressivoEsercizio=1,
                            CodiceSede=1, BdgTipoScheda=1)
    for row in budget.RecordSetBudget():
        print(row["BU65_SCHEDA_BU07"], row["IMP_BUDGET"])

Amounts are decimal.Decimal, dates datetime.date, None is Null. A method with in/out arguments returns a tuple: its
result, when it has one, then what the arguments have received. help(bukorval.Budget) lists every member.
"""

import ctypes
import weakref

from . import _library as lib
from ._library import Failure, Misuse
from ._recordset import Field, RecordSet
from ._values import EMPTY, Variant, handles, variant

__all__ = ["Budget", "EMPTY", "Failure", "Field", "Misuse", "Outcome", "RecordSet", "Session", "connect"]
__version__ = lib.plain("version").decode()


class Outcome(Exception):
    """What the object has refused (Stato 1) or what failed in it (Stato 99)."""

    def __init__(self, stato, errore):
        super().__init__(errore)
        self.Stato = stato
        self.errore = errore


def connect(connection_string, company=None):
    """Opens a database and the session of a company, by default the first one stored."""
    return Session(connection_string, company)


class Session(lib.Handle):
    """A connection and the suite's session on it; for one thread at a time. As a context it is closed at the end; what
    still uses it keeps the connection open."""

    _free = "close"

    def __init__(self, connection_string, company=None):
        number = None if company is None else lib.text(str(company))
        super().__init__(lib.made("open", lib.text(connection_string), number))
        self._message = lib.MESSAGE()

    def budget(self, raises=True, **properties):
        """An object on this session, with the given properties. raises: whether an outcome that is not 0 is raised as
        Outcome; else Stato and errore tell it."""
        made = Budget(self, raises)
        for name, value in properties.items():
            if name not in Budget._properties:
                raise AttributeError(f"There is no property {name}")
            setattr(made, name, value)
        return made

    def execute(self, statement):
        """Runs one statement; the record set of a query has its rows."""
        return RecordSet._of(lib.made("execute", self._open(), lib.text(statement)))

    def begin(self):
        lib.call("begin", self._open())

    def commit(self):
        lib.call("commit", self._open())

    def rollback(self):
        lib.call("rollback", self._open())

    def on_message(self, told):
        """told(text, style, title) for each message to the user; None drops them. Style 48 is a warning."""
        message = lib.MESSAGE(lambda _, text, style, title: told(text.decode(), style, title.decode())) if told \
            else lib.MESSAGE()
        lib.call("messages", self._open(), message, None)
        self._message = message

    def close(self):
        self.__del__()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _open(self):
        if not self._handle:
            raise Failure("The session is closed")
        return self._handle


def _weak(method):
    """The method as the library calls it, which alone does not keep the object alive."""
    found = weakref.WeakMethod(method)
    return lambda *arguments: found()(*arguments)


class _Base(lib.Handle):
    """The budget object."""

    _free = "object_free"
    _properties = frozenset()

    def __init__(self, session, raises=True):
        super().__init__(lib.made("object_new", session._open()))
        self.session = session
        self.raises = raises
        #: Progress of long operations: begin(description, steps), step(number), end(). What the first two raise stops
        #: the operation, which takes everything back, and comes out of the call; so does what end raises, which stops
        #: nothing.
        self.on_begin = self.on_step = self.on_end = None
        self._raised = None
        self._events = lib.Events(None, lib.BEGIN(_weak(self._begin)), lib.STEP(_weak(self._step)),
                                  lib.END(_weak(self._end)))
        lib.call("listen", self._handle, ctypes.byref(self._events))

    def __setattr__(self, name, value):
        # A misspelt property is an error.
        if not name.startswith("_") and name not in self._properties and name not in _OWN:
            raise AttributeError(f"There is no property {name}")
        super().__setattr__(name, value)

    def _tell(self, handler, *arguments):
        try:
            if handler:
                handler(*arguments)
            return 0
        except BaseException as error:  # whatever it is, it must not pass through the library
            self._raised = self._raised or error
            return 1

    def _begin(self, _, description, steps):
        return self._tell(self.on_begin, description.decode(), steps)

    def _step(self, _, number):
        return self._tell(self.on_step, number)

    def _end(self, _):
        self._tell(self.on_end)

    def _get(self, name):
        value = Variant()
        lib.call("get", self._handle, name, value._handle)
        return value.take()

    def _set(self, name, value):
        value = variant(value)
        lib.call("set", self._handle, name, value._handle)

    def _call(self, member, given):
        if len(given) > len(member.in_out):
            raise Misuse(f"Too many arguments for {member.signature}")
        arguments = [variant(value) for value in given] + [Variant() for _ in member.in_out[len(given):]]
        if len(given) < member.least:
            raise Misuse(f"Too few arguments for {member.signature}")
        result = Variant()
        self._raised = None
        lib.call("call", self._handle, member.name, handles(arguments), len(arguments), result._handle)
        if self._raised:
            try:
                raise self._raised
            finally:
                self._raised = None  # its frames hold this object
        if self.raises and member.name not in _WITHOUT_OUTCOME and self.Stato:
            raise Outcome(self.Stato, self.errore)
        left = [argument.take() for argument, in_out in zip(arguments, member.in_out) if in_out]
        if member.returns:
            left.insert(0, result.take())
        return tuple(left) if len(left) > 1 else left[0] if left else None


#: These leave the outcome of the last operation alone.
_WITHOUT_OUTCOME = {b"NVL", b"BFill"}
_OWN = {"session", "raises", "on_begin", "on_step", "on_end"}


class _Member:
    def __init__(self, place):
        found = lib.made("member_at", place, kind=lib.Member)
        parameters = [lib.made("parameter_at", place, i, kind=lib.Parameter) for i in range(found.parameters)]
        self.name = found.name
        self.signature = found.signature.decode()
        self.text = f"{self.signature}\n\n{found.description.decode()}"
        self.is_method, self.readable, self.writable = found.is_method, found.readable, found.writable
        self.in_out = [bool(parameter.in_out) for parameter in parameters]
        needed = [i for i, parameter in enumerate(parameters) if not (parameter.in_out or parameter.optional)]
        self.least = needed[-1] + 1 if needed else 0
        self.returns = not self.signature.endswith(")")


def _method(member):
    def method(self, *arguments):
        return self._call(member, arguments)

    method.__name__ = method.__qualname__ = member.name.decode()
    method.__doc__ = member.text
    return method


def _property(member):
    name = member.name
    read = (lambda self: self._get(name)) if member.readable else None
    write = (lambda self, value: self._set(name, value)) if member.writable else None
    return property(read, write, doc=member.text)


def _budget():
    members = [_Member(place) for place in range(lib.plain("member_count"))]
    made = {m.name.decode(): _method(m) if m.is_method else _property(m) for m in members}
    made["__doc__"] = _Base.__doc__
    made["_properties"] = frozenset(m.name.decode() for m in members if not m.is_method)
    return type("Budget", (_Base,), made)


#: The budget object: every property and method of the table of members.
Budget = _budget()
