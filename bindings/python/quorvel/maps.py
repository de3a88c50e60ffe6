"""A process map as plain values: its Tasks, Task Links, Process Connectors, hyperlinks and roles.

The drawing owns what a map says. The values are read from it once, when the Map is made, and do not follow it.
"""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any, NamedTuple

if TYPE_CHECKING:
    from .host_objects import Document, Shape


class LinkEnd(NamedTuple):
    """What an end of a Task Link is glued to."""

    kind: str
    """"task", "connector", "shape" for any other shape, or "loose"."""
    label: str
    """The Task's ID, the ID that the connector shows, or the shape's name; empty for a loose end."""
    shape_id: int
    """On the link's page; 0 for a loose end. For a member of a group, its outermost group."""

    def __str__(self) -> str:
        return self.label


@dataclass(frozen=True)
class Task:
    """A step of the process."""

    id: str
    description: str
    page: str
    responsible_role: str
    supporting_roles: tuple[str, ...]
    guidelines: str
    resources: str
    completion_time: str
    """Number and unit, such as "15 em." for fifteen minutes; empty for none."""
    frequency: str
    notes: str
    sub_task: str
    """The ID of the lower-level Task that it opens; empty for none."""
    unique_id: str
    """Never changes; empty when it has none."""
    on_background: bool
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Link:
    """A link from one Task to the next."""

    page: str
    description: str
    time: str
    """Between the two, as a Task's completion_time."""
    start: LinkEnd
    end: LinkEnd
    unique_id: str
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Connector:
    """A connector to another page or drawing."""

    page: str
    shown_id: str
    """The ID that it shows."""
    address: str
    """The other drawing; empty for this one."""
    sub_address: str
    """Page name, "/", Task ID; empty without a target."""
    unique_id: str
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class MapHyperlink:
    """A hyperlink of any shape."""

    page: str
    owner: str
    """The label, as a link's end has it, of the shape, or of the outermost group around it."""
    description: str
    address: str
    sub_address: str
    extra_info: str
    record: str
    """What the map keeps on the link's kind."""
    is_default: bool
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Role:
    """A role that does a Task, or may do one."""

    name: str
    responsible_for: tuple[Task, ...]
    supports: tuple[Task, ...]


class Map:
    """A drawing read as a process map. Lists are in the order of pages and stacks; shapes in groups are left out, but
    hyperlinks are those of all shapes. Background pages are read too."""

    def __init__(self, document: Document) -> None:
        self.document = document
        read = document.Application._host.read_map(document._ref)
        self.title: str = read["title"]
        self.is_process_map: bool = read["is_process_map"]
        """Whether it is based on Quorvel's template."""
        self.role_names: list[str] = read["roles"]
        """The document's list; see roles for who does what."""
        self.time_units: list[str] = read["time_units"]
        self.time_unit_abbreviations: list[str] = read["time_unit_abbreviations"]
        self.frequencies: list[str] = read["frequencies"]
        self.frequency_abbreviations: list[str] = read["frequency_abbreviations"]
        self.tasks: list[Task] = []
        self.links: list[Link] = []
        self.connectors: list[Connector] = []
        self.hyperlinks: list[MapHyperlink] = []
        for number, page in enumerate(read["pages"], start=1):
            self._add_page(document.Pages(number), page)

    def _add_page(self, sheet: Any, page: dict[str, Any]) -> None:
        name, background = page["name"], page["background"]

        def values(read: dict[str, Any]) -> dict[str, Any]:
            return {**read, "page": name, "shape": sheet.Shapes.ItemFromID(read["shape"][1])}

        self.tasks += [Task(**values(task), on_background=background) for task in page["tasks"]]
        for link in page["links"]:
            ends = {"start": LinkEnd(*link["start"]), "end": LinkEnd(*link["end"])}
            self.links.append(Link(**{**values(link), **ends}))
        self.connectors += [Connector(**values(connector)) for connector in page["connectors"]]
        for hyperlink in page["hyperlinks"]:
            found = values(hyperlink)
            del found["owner_id"]
            self.hyperlinks.append(MapHyperlink(**found))

    @property
    def roles(self) -> list[Role]:
        """The roles of the document's list, then those that only Tasks name."""
        names = list(self.role_names)
        for task in self.tasks:
            names += [role for role in (task.responsible_role, *task.supporting_roles) if role]
        return [
            Role(
                name,
                tuple(task for task in self.tasks if task.responsible_role == name),
                tuple(task for task in self.tasks if name in task.supporting_roles),
            )
            for name in dict.fromkeys(names)
        ]

    def task(self, id: str) -> Task:
        """The first Task of that ID; a KeyError for none."""
        for task in self.tasks:
            if task.id == id:
                return task
        raise KeyError(id)
