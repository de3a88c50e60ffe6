"""Dialogs for scripts: the same forms that a user sees, with controls by name."""

from __future__ import annotations

from collections.abc import Iterator

from . import _quorvel
from .errors import HostError


class Control:
    """A control of an open form. What it can't do now, disabled or hidden or not of that kind, raises HostError."""

    __slots__ = ("_native", "_form")

    def __init__(self, native: _quorvel.ControlAccess, form: str) -> None:
        self._native = native
        self._form = form

    def __repr__(self) -> str:
        return f"<Control {self._form}.{self._native.name}>"

    @property
    def Name(self) -> str:
        """Such as "BtnOK"."""
        return self._native.name

    @property
    def Kind(self) -> str:
        """"Label", "TextBox", "Button", "CheckBox", "OptionButton", "ListBox", "ListView", "ComboBox", "Frame",
        "TabStrip" or "Picture"."""
        return self._native.kind

    @property
    def Caption(self) -> str:
        """What is written on it."""
        return self._native.caption

    @property
    def Tag(self) -> str:
        """A text that the form keeps with it."""
        return self._native.tag

    @property
    def Enabled(self) -> bool:
        """Whether it accepts input."""
        return self._native.enabled

    @property
    def Visible(self) -> bool:
        """Whether it is visible."""
        return self._native.visible

    @property
    def Text(self) -> str:
        """The text in it. A put is typing over it: it takes the focus and raises the change handler."""
        return self._native.text

    @Text.setter
    def Text(self, text: str) -> None:
        if self.Kind not in ("TextBox", "ComboBox"):
            raise self._refused("Text", f"a {self.Kind} takes no text")
        if self._native.read_only:
            raise self._refused("Text", "the control is for reading only")
        self._need("Text", self._native.type(text))

    @property
    def Value(self) -> bool | None:
        """Whether a check box or option button is on; None for a grey one. A put is a click."""
        return self._native.is_on

    @Value.setter
    def Value(self, on: bool) -> None:
        if self.Kind not in ("CheckBox", "OptionButton"):
            raise self._refused("Value", f"a {self.Kind} is neither on nor off")
        self._need("Value", self._native.set_on(bool(on)))

    @property
    def Items(self) -> list[str]:
        """The rows of a list, each by its first column."""
        return [columns[0] for columns, _ in self._native.rows]

    @property
    def Rows(self) -> list[tuple[str, ...]]:
        """The rows of a list with all their columns."""
        return [columns for columns, _ in self._native.rows]

    @property
    def Selected(self) -> str | list[str] | None:
        """The selected row's first column, or None; in a list of multiple selection all of them."""
        texts = [columns[0] for columns, selected in self._native.rows if selected]
        if self._native.multiple_selection:
            return texts
        return texts[0] if texts else None

    def Select(self, row: str | int, selected: bool = True) -> None:
        """Selects the row of that text, or of that place in Items, counted from 0; `selected` False takes it out."""
        if isinstance(row, str):
            items = self.Items
            if row not in items:
                raise self._refused("Select", f'there is no row "{row}"')
            place = items.index(row)
        else:
            place = row
            if not 0 <= place < len(self._native.rows):
                raise self._refused("Select", f"there is no row {row}")
        self._need("Select", self._native.select_row(place, selected))

    @property
    def Tabs(self) -> list[str]:
        """The tabs of a tab strip by caption."""
        return self._native.tabs

    @property
    def CurrentTab(self) -> str | None:
        """The current tab."""
        tabs = self.Tabs
        return tabs[self._native.current_tab] if tabs else None

    def ShowTab(self, tab: str) -> None:
        """Shows the tab of that caption."""
        tabs = self.Tabs
        if tab not in tabs:
            raise self._refused("ShowTab", f'there is no tab "{tab}"')
        self._need("ShowTab", self._native.show_tab(tabs.index(tab)))

    @property
    def HasFocus(self) -> bool:
        """Whether keys go to it."""
        return self._native.has_focus

    def Focus(self) -> None:
        """Takes the focus; the control that had it loses it first."""
        self._need("Focus", self._native.focus())

    def Click(self) -> None:
        """Takes the focus and clicks."""
        self._need("Click", self._native.click())

    def DoubleClick(self) -> None:
        """Takes the focus and double-clicks."""
        self._need("DoubleClick", self._native.double_click())

    def PressKey(self, keys: str | int) -> bool:
        """Presses the keys of a text one after the other, or one key by its code (8 backspace, 13 enter, 27 escape).
        Whether all of them were let through."""
        if not (self.Enabled and self.Visible):
            raise self._refused("PressKey", "the control is disabled or hidden")
        codes = [ord(key) for key in keys] if isinstance(keys, str) else [keys]
        return all([self._native.press_key(code) for code in codes])

    def DropDown(self) -> None:
        """Opens the list of a combo box, which may be filled only then."""
        self._need("DropDown", self._native.drop_down())

    def KeyDown(self, code: int) -> None:
        """Presses a key that enters no text, such as 46, Delete, in a list."""
        self._need("KeyDown", self._native.key_down(code))

    def _refused(self, member: str, reason: str) -> HostError:
        return HostError(f"Control.{member}", f"{self._form}.{self.Name}", reason)

    def _need(self, member: str, done: bool) -> None:
        if not done:
            raise self._refused(member, "the control is disabled or hidden")


class Form:
    """An open form. It ends with the call of OnForm; a form that is kept longer raises."""

    __slots__ = ("_native",)

    def __init__(self, native: _quorvel.FormAccess) -> None:
        self._native = native

    def __repr__(self) -> str:
        return f"<Form {self._native.name}>"

    @property
    def Name(self) -> str:
        """Such as "frmTaskIdSuggestion"."""
        return self._native.name

    @property
    def Caption(self) -> str:
        """The title."""
        return self._native.caption

    @property
    def IsOpen(self) -> bool:
        """False once it was accepted, cancelled or closed."""
        return self._native.is_open

    def __getitem__(self, name: str) -> Control:
        """The control of that name, in any letter case."""
        found = self._native.find(name)
        if not found:
            raise KeyError(f"the form {self.Name} has no control {name}")
        return Control(self._native.control(found), self.Name)

    def __contains__(self, name: object) -> bool:
        """Whether the form has a control of that name."""
        return isinstance(name, str) and bool(self._native.find(name))

    def __iter__(self) -> Iterator[Control]:
        """The controls."""
        return iter([self[name] for name in self._native.control_names])

    def __len__(self) -> int:
        """How many controls there are."""
        return len(self._native.control_names)

    def Close(self) -> None:
        """Closes it by its close box."""
        self._native.close()
