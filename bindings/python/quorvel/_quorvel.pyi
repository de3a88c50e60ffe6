"""The native half of the module; see quorvel.host_objects and quorvel.forms for what scripts use."""

from typing import Any, ClassVar

def members() -> list[tuple[int, int, str, str, str]]:
    """Number, kind, object, member and access ("G", "P", "GP" or "C") of each published member."""

def event_names() -> tuple[str, ...]:
    """The events in the order of their numbers."""

def copies_left_behind(folder: str) -> list[tuple[str, str, str]]:
    """Copy, original and name of each copy whose process is gone."""

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
        """`application` is held weakly; its _answer_... and _tell are called."""
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
    def export_pages(self, pages: list[Reference], file: str, caller: str) -> None:
        """Draws the pages into one file."""
    def read_map(self, document: Reference) -> dict[str, Any]:
        """The document read as a process map, see quorvel.maps."""
    def unknown_names(self) -> list[str]:
        """What was refused to the add-in because no cell, row or member has the name."""
    def undo_limits(self) -> tuple[int, int]:
        """Steps and bytes that undo keeps of each document."""
    def set_undo_limits(self, steps: int, bytes: int) -> None:
        """Changes them; what is beyond is forgotten at once."""
