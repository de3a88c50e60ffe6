"""The native half of the module; see quorvel.host_objects and quorvel.forms for what scripts use."""

from typing import Any, ClassVar

def members() -> list[tuple[int, int, str, str, str]]:
    """Number, kind, object, member and access ("G", "P", "GP" or "C") of each published member."""

def event_names() -> tuple[str, ...]:
    """The events in the order of their numbers."""

def copies_left_behind(folder: str) -> list[tuple[str, str, str]]:
    """Copy, original and name of each copy whose process has ended."""

def discard_copy(copy: str) -> None:
    """Removes a copy and what belongs to it."""

class Reference:
    """Names one host object."""

    @property
    def kind(self) -> int:
        """The kind's number."""

class Host:
    """A session with the add-in connected."""

    application_reference: ClassVar[Reference]
    """The application object."""
    def __init__(self, application: object, version: str, install_folder: str, profile_folder: str, answers_defaults: bool, recovery_folder: str) -> None:
        """`application` is held weakly; its _answer_... and _notify are called."""
    def get(self, object: Reference, member: int, arguments: tuple[object, ...]) -> object:
        """Reads; raises HostError."""
    def put(self, object: Reference, member: int, indices: tuple[object, ...], value: object) -> None:
        """Writes; raises HostError."""
    def call(self, object: Reference, member: int, arguments: tuple[object, ...]) -> object:
        """Acts; raises HostError."""
    def activate_page(self, page: Reference) -> None:
        """Shows the page in its window."""
    def activate_application(self) -> None:
        """Raises AppActivated."""
    def mouse_down(self, button: int, shift: int, x: float, y: float) -> None:
        """Raises MouseDown."""
    def mouse_move(self, button: int, shift: int, x: float, y: float) -> None:
        """Raises MouseMove."""
    def edit_shape_data(self, shape: Reference, values: list[tuple[str, object]]) -> None:
        """Types into cells in the dialog of shape data."""
    def replace_text(self, find: str, replacement: str, match_case: bool, whole_words: bool, all_pages: bool) -> int:
        """Find and Replace; how many times."""
    def export_pages(self, pages: list[Reference], file: str, caller: str) -> None:
        """Draws the pages into one file."""
    def read_map(self, document: Reference) -> dict[str, Any]:
        """The document read as a process map, see quorvel.maps."""
    def report_definitions(self, document: Reference) -> list[tuple[int, str, str, str]]:
        """Number, title, description and problem of each definition."""
    def write_report(self, document: Reference, definition: str, file: str, page: str) -> None:
        """Runs a report and writes the table."""
    def unknown_names(self) -> list[str]:
        """What was refused to the add-in because no cell, row or member has the name."""
    def undo_limits(self) -> tuple[int, int]:
        """Steps and bytes that undo keeps of each document."""
    def set_undo_limits(self, steps: int, bytes: int) -> None:
        """Changes them; steps beyond them are removed at once."""
    def write_recovery_copies(self) -> None:
        """Updates the copies."""
    def listen(self, event: int, on: bool) -> None:
        """Whether _notify is called for the event."""
    def asked(self) -> list[tuple[str, str]]:
        """Kind and text of what was asked."""
    def ask(self, text: str, buttons: int) -> str:
        """Asks as the add-in does: buttons 0 OK, 1 Yes and No, 2 Yes, No and Cancel, 3 OK and Cancel."""
    def choose_file(self, title: str) -> str | None:
        """Asks for a file as the add-in does."""
    def show_form(self, controls: list[tuple[int, str, list[str], bool, bool]]) -> list[str]:
        """Shows a form of those controls (kind, name, items, enabled, multiple selection); returns its events."""

class FormAccess:
    """An open form."""

    @property
    def name(self) -> str:
        """Its name."""
    @property
    def caption(self) -> str:
        """Its title."""
    @property
    def is_open(self) -> bool:
        """Whether it is still open."""
    @property
    def control_names(self) -> list[str]:
        """Names of its controls."""
    def find(self, name: str) -> str:
        """The name as the form spells it, or an empty text."""
    def control(self, name: str) -> ControlAccess:
        """The control of that name."""
    def close(self) -> None:
        """Closes by the close box."""

class ControlAccess:
    """A control of an open form."""

    @property
    def name(self) -> str:
        """Its name."""
    @property
    def kind(self) -> str:
        """Its kind."""
    @property
    def caption(self) -> str:
        """Its caption."""
    @property
    def text(self) -> str:
        """Its text."""
    @property
    def is_on(self) -> bool | None:
        """Its state."""
    @property
    def enabled(self) -> bool:
        """Whether it accepts input."""
    @property
    def visible(self) -> bool:
        """Whether it is visible."""
    @property
    def read_only(self) -> bool:
        """Whether its text cannot be changed."""
    @property
    def multiple_selection(self) -> bool:
        """Whether several rows can be selected."""
    @property
    def has_focus(self) -> bool:
        """Whether keys go to it."""
    @property
    def tag(self) -> str:
        """Its tag."""
    @property
    def rows(self) -> list[tuple[tuple[str, ...], bool]]:
        """Columns of each row, and whether it is selected."""
    @property
    def tabs(self) -> list[str]:
        """Captions of its tabs."""
    @property
    def current_tab(self) -> int:
        """The current tab."""
    def click(self) -> bool:
        """Whether it was clicked."""
    def double_click(self) -> bool:
        """Whether it was clicked."""
    def focus(self) -> bool:
        """Whether it took the focus."""
    def type(self, text: str) -> bool:
        """Whether it took the text."""
    def set_on(self, on: bool) -> bool:
        """Whether it took the state."""
    def select_row(self, row: int, selected: bool) -> bool:
        """Whether the row was selected."""
    def show_tab(self, tab: int) -> bool:
        """Whether the tab is now current."""
    def press_key(self, key: int) -> bool:
        """Whether the key was accepted."""
    def drop_down(self) -> bool:
        """Whether its list opened. A list may be filled only then."""
    def key_down(self, key: int) -> bool:
        """Whether the key was taken."""
