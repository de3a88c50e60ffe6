"""A process map as plain values: its Tasks, Task Links, Process Connectors and roles.

The drawing owns what a map says. The values are read from its cells when they are asked for, and do not follow it.
"""

from __future__ import annotations

from collections.abc import Iterator
from dataclasses import dataclass, field
from typing import TYPE_CHECKING

from .errors import HostError

if TYPE_CHECKING:
    from .host_objects import Document, Shape


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
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Link:
    """A way from one Task to the next."""

    page: str
    description: str
    time: str
    """Between the two, as a Task's completion_time."""
    start: str
    """The Task's ID, a connector's shown ID, or another shape's name; empty for a loose end."""
    end: str
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Connector:
    """A way on to another page or drawing."""

    page: str
    shown_id: str
    """The ID that stands in it."""
    address: str
    """The other drawing; empty for this one."""
    sub_address: str
    """Page name, "/", Task ID; empty without a target."""
    shape: Shape = field(repr=False, compare=False)


@dataclass(frozen=True)
class Role:
    """Somebody who does something, or could."""

    name: str
    responsible_for: tuple[Task, ...]
    supports: tuple[Task, ...]


class Map:
    """A drawing read as a process map."""

    def __init__(self, document: Document) -> None:
        self.document = document

    @property
    def tasks(self) -> list[Task]:
        """The Tasks of all foreground pages, in the order of pages and stacks."""
        return [
            Task(
                id=_text(shape, "Prop.Task_ID"),
                description=_text(shape, "Prop.Task_Description"),
                page=page,
                responsible_role=_text(shape, "Prop.Responsible_Role"),
                supporting_roles=tuple(
                    filter(None, (_text(shape, f"Prop.SupportingRole_{number}") for number in range(1, 5)))
                ),
                guidelines=_text(shape, "Prop.Guidelines"),
                resources=_text(shape, "Prop.Resources"),
                completion_time=_duration(shape, "Prop.Task_Completion_Time"),
                frequency=_text(shape, "Prop.Frequency_Of_Occurrence"),
                notes=_text(shape, "Prop.Notes"),
                sub_task=_text(shape, "Prop.Linked"),
                shape=shape,
            )
            for page, shape in self._shapes("Task")
        ]

    @property
    def links(self) -> list[Link]:
        """The Task Links of all foreground pages."""
        found = []
        for page, shape in self._shapes("Task Link"):
            ends = {"BeginX": "", "EndX": ""}
            for connect in shape.Connects:
                ends[connect.FromCell.Name] = _label(connect.ToSheet)
            description, time = _text(shape, "Prop.Task_Link"), _duration(shape, "Prop.Time_Between_Tasks")
            found.append(Link(page, description, time, ends["BeginX"], ends["EndX"], shape))
        return found

    @property
    def connectors(self) -> list[Connector]:
        """The Process Connectors of all foreground pages."""
        found = []
        for page, shape in self._shapes("Process Connector", "Connector"):
            links = list(shape.Hyperlinks)
            address, sub_address = (links[0].Address, links[0].SubAddress) if links else ("", "")
            found.append(Connector(page, _text(shape, "Prop.Connecting_TaskID"), address, sub_address, shape))
        return found

    @property
    def roles(self) -> list[Role]:
        """The roles of the document's list, then those that only Tasks name."""
        tasks = self.tasks
        names = [name for name in _text(self.document.DocumentSheet, "User.RoleNames").split(";") if name]
        for task in tasks:
            names += [role for role in (task.responsible_role, *task.supporting_roles) if role]
        return [
            Role(
                name,
                tuple(task for task in tasks if task.responsible_role == name),
                tuple(task for task in tasks if name in task.supporting_roles),
            )
            for name in dict.fromkeys(names)
        ]

    def task(self, id: str) -> Task:
        """The first Task of that ID; a KeyError for none."""
        for task in self.tasks:
            if task.id == id:
                return task
        raise KeyError(id)

    def _shapes(self, *classes: str) -> Iterator[tuple[str, Shape]]:
        for page in self.document.Pages:
            if page.Background:
                continue
            for shape in page.Shapes:
                master = shape.Master
                # The host numbers a master that came twice: "Task.12" is a Task.
                if master is not None and master.Name.split(".")[0] in classes:
                    yield page.Name, shape


def _text(shape: Shape, cell: str) -> str:
    return shape.Cells(cell).ResultStr(0) if shape.CellExists(cell) else ""


def _duration(shape: Shape, cell: str) -> str:
    """A time of zero is no time, and a text that is none neither."""
    try:
        value = shape.Cells(cell)
        return value.ResultStr(0) if value.Result(0) > 0 else ""
    except HostError:
        return ""


def _label(shape: Shape) -> str:
    while isinstance(group := shape.Parent, type(shape)):
        shape = group
    return _text(shape, "Prop.Task_ID") or _text(shape, "Prop.Connecting_TaskID") or shape.Name
