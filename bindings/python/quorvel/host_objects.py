"""The classes of the host's objects.

They are built from the list of published members, which the native half has, and from the stub next to this file,
which says how each member is called and what it does. So the names, parameters and descriptions are in one place, and
a member without a description there is none.
"""

from __future__ import annotations

import ast
import contextlib
import os
from pathlib import Path
from typing import Any, Callable, Iterator, NamedTuple

from . import _quorvel
from .errors import HostError
from .forms import Form
from .install import find_install_folder, profile_folder

Reference = _quorvel.Reference

_UNITS = {
    "": 0, "in": 65, "in.": 65, '"': 65, "ft": 66, "ft.": 66, "mi": 68, "cm": 69, "mm": 70, "m": 71, "km": 72, "yd": 75,
    "pt": 50, "pt.": 50, "p": 51, "deg": 81, "deg.": 81, "rad": 83, "%": 33,
    "ew": 43, "ed": 44, "eh": 45, "em": 46, "es": 47,
}  # fmt: skip


def _units(units: object) -> object:
    if not isinstance(units, str):
        return units
    try:
        return _UNITS[units.lower()]
    except KeyError:
        raise ValueError(f'"{units}" is no unit; use one of {", ".join(filter(None, _UNITS))}') from None


class Asked(NamedTuple):
    kind: str
    text: str


class Handle:
    __slots__ = ("_app", "_ref")
    _app: Any
    _ref: Reference

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Handle) and self._app is other._app and self._ref == other._ref

    def __hash__(self) -> int:
        return hash(self._ref)

    def __repr__(self) -> str:
        name = type(self).__name__
        with contextlib.suppress(AttributeError, HostError):
            return f"<{name} {self.Name!r}>"  # type: ignore[attr-defined]
        return f"<{name}>"

    @property
    def Application(self) -> Any:
        return self._app

    def _bare(self, values: tuple[object, ...]) -> tuple[object, ...]:
        """The values as the native half takes them."""
        bare = []
        for value in values:
            if isinstance(value, Handle):
                if value._app is not self._app:
                    raise HostError(type(self).__name__, repr(value), "the object belongs to another application")
                value = value._ref
            bare.append(value)
        return tuple(bare)

    def _get(self, member: int, *arguments: object) -> Any:
        app = self._app
        value = app._host.get(self._ref, member, self._bare(arguments) if arguments else ())
        return app._wrap(value) if type(value) is Reference else value

    def _call(self, member: int, *arguments: object) -> Any:
        app = self._app
        value = app._host.call(self._ref, member, self._bare(arguments) if arguments else ())
        return app._wrap(value) if type(value) is Reference else value

    def _put(self, member: int, value: object, *indices: object) -> None:
        *places, put = self._bare((*indices, value))
        self._app._host.put(self._ref, member, tuple(places), put)


class Collection(Handle):
    __slots__ = ()
    _first = 1
    _by_number: int
    _by_name: int | None
    _by_universal_name: int | None
    _count: int

    @property
    def Count(self) -> int:
        return self._get(self._count)

    def Item(self, index: int | str) -> Any:
        if not isinstance(index, str):
            return self._get(self._by_number, index)
        if self._by_name is not None:
            return self._get(self._by_name, index)
        for item in self:
            if getattr(item, "Name", None) == index:
                return item
        raise HostError(f"{type(self).__name__}.Item", repr(self), f'there is nothing of the name "{index}"')

    __call__ = __getitem__ = Item

    def ItemU(self, index: int | str) -> Any:
        if not isinstance(index, str) or self._by_universal_name is None:
            return self.Item(index)
        return self._get(self._by_universal_name, index)

    def __len__(self) -> int:
        return self._get(self._count)

    def __iter__(self) -> Iterator[Any]:
        return iter([self._get(self._by_number, self._first + place) for place in range(len(self))])

    def __contains__(self, wanted: object) -> bool:
        if not isinstance(wanted, str):
            return any(item == wanted for item in self)
        try:
            self.Item(wanted)
        except HostError:
            return False
        return True


class IndexedNumbers:
    __slots__ = ("_handle", "_member")

    def __init__(self, handle: Handle, member: int) -> None:
        self._handle = handle
        self._member = member

    def __call__(self, *places: object) -> Any:
        return self._handle._get(self._member, *map(_units, places))

    def __getitem__(self, places: object) -> Any:
        return self(*places) if isinstance(places, tuple) else self(places)

    def __setitem__(self, places: object, value: object) -> None:
        indices = places if isinstance(places, tuple) else (places,)
        self._handle._put(self._member, value, *map(_units, indices))


class _Application:
    """The application's members that need code of their own."""

    def __init__(
        self,
        version: str = "12.0",
        install_folder: Any = None,
        profile: Any = None,
        answers: str | None = None,
        recovery: Any = None,
    ) -> None:
        if answers not in (None, "defaults"):
            raise ValueError(f'answers is None or "defaults", not {answers!r}')
        folder = os.fspath(install_folder) if install_folder is not None else find_install_folder() or ""
        self._app = self
        self._ref = _quorvel.Host.application_reference
        self._handlers: dict[str, Callable[..., Any]] = {}
        copies = os.fspath(recovery) if recovery is not None else ""
        self._host = _quorvel.Host(self, version, folder, profile_folder(profile), answers == "defaults", copies)

    @property
    def Asked(self) -> list[Asked]:
        return [Asked(kind, text) for kind, text in self._host.asked()]

    @contextlib.contextmanager
    def UndoScope(self: Any, name: str) -> Iterator[int]:
        scope = self.BeginUndoScope(name)
        try:
            yield scope
        except BaseException:
            self.EndUndoScope(scope, False)
            raise
        self.EndUndoScope(scope, True)

    @property
    def UndoLimits(self) -> tuple[int, int]:
        return self._host.undo_limits()

    @UndoLimits.setter
    def UndoLimits(self, limits: tuple[int, int]) -> None:
        self._host.set_undo_limits(*limits)

    def Activate(self) -> None:
        self._host.activate_application()

    def WriteRecoveryCopies(self) -> None:
        self._host.write_recovery_copies()

    def MouseDown(self, button: int, shift: int = 0, x: float = 0, y: float = 0) -> None:
        self._host.mouse_down(button, shift, x, y)

    def ReplaceText(
        self,
        find: str,
        replacement: str,
        *,
        match_case: bool = False,
        whole_words: bool = False,
        all_pages: bool = True,
    ) -> int:
        return self._host.replace_text(find, replacement, match_case, whole_words, all_pages)

    def Quit(self: Any) -> None:
        for document in self.Documents:
            document.Close()

    def _wrap(self, value: object) -> Any:
        if type(value) is not Reference:
            return value
        kind = _classes[value.kind]
        if kind is Application:
            return self
        handle = object.__new__(kind)
        handle._app = self
        handle._ref = value
        return handle

    def _notify(self, event: int, *values: object) -> None:
        handler = self._handlers.get("On" + _event_names[event])
        if handler:
            handler(*map(self._wrap, values))

    def _answer_form(self, native: _quorvel.FormAccess) -> None:
        handler = self._handlers.get("OnForm")
        if handler:
            handler(Form(native))

    def _answer_message(self, text: str, title: str, buttons: str, icon: str) -> object:
        handler = self._handlers.get("OnMessage")
        return handler(text, title, buttons, icon) if handler else None

    def _answer_file_dialog(self, title: str, filter: str, start_folder: str) -> str | None:
        handler = self._handlers.get("OnFileDialog")
        if not handler:
            return None
        chosen = handler(title, filter, start_folder)
        return "" if chosen is None else os.fspath(chosen)

    def _answer_shell_open(self, target: str) -> bool:
        handler = self._handlers.get("OnShellOpen")
        return handler is not None and handler(target) is not False


class _Document:
    def ExportAsFixedFormat(
        self: Any,
        format: int,
        file: Any,
        intent: int = 1,
        print_range: int = 0,
        from_page: int = 1,
        to_page: int = -1,
    ) -> None:
        caller, name = "Document.ExportAsFixedFormat", os.fspath(file)
        if format != 1 or not name.lower().endswith(".pdf"):
            raise HostError(caller, self.Name, "only PDF, format 1, is written, to a file whose name ends with .pdf")
        pages = [page for page in self.Pages if not page.Background]
        if print_range == 1:
            pages = pages[max(from_page - 1, 0) : to_page if to_page >= 0 else None]
        elif print_range == 2:
            shown = self._app.ActivePage
            pages = [page for page in self.Pages if page == shown]
        elif print_range != 0:
            raise HostError(caller, self.Name, "print_range is 0 (all), 1 (from, to) or 2 (the page that is shown)")
        if not pages:
            raise HostError(caller, self.Name, "there is no such page")
        self._app._host.export_pages([page._ref for page in pages], name, caller)


class _Page:
    def Activate(self: Any) -> None:
        self._app._host.activate_page(self._ref)

    def Export(self: Any, file: Any) -> None:
        self._app._host.export_pages([self._ref], os.fspath(file), "Page.Export")


class _Shape:
    def EditShapeData(self: Any, values: dict[str, Any]) -> None:
        self._app._host.edit_shape_data(self._ref, list(values.items()))


class _Window:
    def MouseMove(self: Any, x: float, y: float, button: int = 0, shift: int = 0) -> None:
        if self != self._app.ActiveWindow:
            self.Activate()
        self._app._host.mouse_move(button, shift, x, y)


_extras: dict[str, type] = {
    "Application": _Application,
    "Document": _Document,
    "Page": _Page,
    "Shape": _Shape,
    "Window": _Window,
}
_event_names = _quorvel.event_names()
_classes: dict[int, type] = {}


class _Described(NamedTuple):
    """A member as the stub has it."""

    doc: str | None
    annotation: str
    parameters: ast.arguments | None  # None for a property


def _described(body: list[ast.stmt]) -> dict[str, _Described]:
    found = {}
    for node, after in zip(body, [*body[1:], ast.Pass()]):
        if isinstance(node, ast.FunctionDef):
            is_property = any(isinstance(d, ast.Name) and d.id == "property" for d in node.decorator_list)
            annotation = ast.unparse(node.returns) if node.returns else ""
            parameters = None if is_property else node.args
            found[node.name] = _Described(ast.get_docstring(node), annotation, parameters)
        elif isinstance(node, ast.AnnAssign) and isinstance(node.target, ast.Name):
            is_text = isinstance(after, ast.Expr) and isinstance(after.value, ast.Constant)
            doc = str(after.value.value) if is_text else None  # type: ignore[attr-defined]
            found[node.target.id] = _Described(doc, ast.unparse(node.annotation), None)
    return found


def _function(name: str, parameters: ast.arguments, forward: str) -> Any:
    """A function of the stub's parameters; `forward` is the call before its arguments, such as "self._get(12"."""
    names = []
    for parameter in parameters.args[1:]:
        kind = ast.unparse(parameter.annotation) if parameter.annotation else ""
        convert = {"Units": "_units", "FileName": "_fspath"}.get(kind, "")
        names.append(f"{convert}({parameter.arg})")
    bare = ast.arguments([], [ast.arg(p.arg) for p in parameters.args], None, [], [], None, parameters.defaults)
    space: dict[str, Any] = {"_units": _units, "_fspath": os.fspath}
    if forward.startswith("self._put"):
        names.insert(0, names.pop())  # the value comes first, then its places
    exec(f"def {name}({ast.unparse(bare)}): return {', '.join([forward, *names])})", space)
    return space[name]


def _property(number: int, access: str, annotation: str) -> property:
    if annotation.endswith("IndexedNumbers"):
        return property(lambda self: IndexedNumbers(self, number))
    fget = (lambda self: self._get(number)) if "G" in access else None
    fset = (lambda self, value: self._put(number, value)) if "P" in access else None
    return property(fget, fset)


def _handler_property(name: str) -> property:
    def fget(self: Any) -> Any:
        return self._handlers.get(name)

    def fset(self: Any, handler: Any) -> None:
        if handler is not None and not callable(handler):
            raise TypeError(f"{name} takes a function or None")
        if handler is None:
            self._handlers.pop(name, None)
        else:
            self._handlers[name] = handler
        if name[2:] in _event_names:
            self._host.listen(_event_names.index(name[2:]), handler is not None)

    return property(fget, fset)


def _member(name: str, stub: _Described, members: dict[str, tuple[int, str]]) -> Any:
    """The host's member for a member of the stub; None when it has none."""
    if name not in members and name.endswith("U"):
        name = name[:-1]
    if name in members:
        number, access = members[name]
        if stub.parameters is None:
            return _property(number, access, stub.annotation)
        return _function(name, stub.parameters, f"self._{'call' if access == 'C' else 'get'}({number}")
    if name.startswith("Set") and name[3:] in members and stub.parameters:
        return _function(name, stub.parameters, f"self._put({members[name[3:]][0]}")
    if name.startswith("On"):
        return _handler_property(name)
    return None


def _with_doc(value: Any, doc: str | None) -> Any:
    if isinstance(value, property):
        return property(value.fget, value.fset, None, doc)
    value.__doc__ = doc
    return value


def _build() -> None:
    members: dict[str, dict[str, tuple[int, str]]] = {}
    kinds: dict[str, int] = {}
    for number, kind, object_name, member, access in _quorvel.members():
        members.setdefault(object_name, {})[member] = (number, access)
        kinds[object_name] = kind
    tree = ast.parse(Path(__file__).with_suffix(".pyi").read_text(encoding="utf-8"))
    for node in tree.body:
        if not isinstance(node, ast.ClassDef):
            continue
        stub = _described(node.body)
        if node.name not in kinds:
            # The classes of this file take their descriptions from the stub too.
            made = globals()[node.name]
            made.__doc__ = ast.get_docstring(node)
            for name, described in stub.items():
                if isinstance(made.__dict__.get(name), property):
                    setattr(made, name, _with_doc(made.__dict__[name], described.doc))
                elif callable(made.__dict__.get(name)):
                    made.__dict__[name].__doc__ = described.doc
            continue
        own = members[node.name]
        is_collection = isinstance(node.bases[0], ast.Subscript)
        space: dict[str, Any] = {"__slots__": (), "__doc__": ast.get_docstring(node), "__module__": __name__}
        for name, value in vars(_extras.get(node.name, object)).items():
            if not name.startswith("__") or name == "__init__":
                if _extras.get(node.name):
                    space[name] = value
        for name, described in stub.items():
            value = space.get(name) or _member(name, described, own)
            if value is None:
                raise ImportError(f"{node.name}.{name} is in the stub, and the host has no such member")
            space[name] = _with_doc(value, described.doc)
        if is_collection:
            swapped = "ItemByIndex" in own  # Layers' own Item takes names
            by_name = own.get("Item" if swapped else "ItemByName")
            space |= {"_by_number": own["ItemByIndex" if swapped else "Item"][0], "_count": own["Count"][0]}
            space |= {"_by_name": by_name[0] if by_name else None, "_first": 0 if node.name == "Hyperlinks" else 1}
            space |= {"_by_universal_name": own["ItemU"][0] if "ItemU" in own else None}
        if node.name == "Application":
            space["__slots__"] = ("_host", "_handlers", "__weakref__")
        made = type(node.name, (Collection if is_collection else Handle,), space)
        globals()[node.name] = _classes[kinds[node.name]] = made


_build()
