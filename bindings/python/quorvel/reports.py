"""Reports: tables of a drawing's Tasks, links or shapes, written as web pages, workbooks or comma-separated values."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, NamedTuple

if TYPE_CHECKING:
    from .host_objects import Document


class ReportDefinition(NamedTuple):
    """A report that a drawing offers: one of its own, or an installed one when it has none."""

    number: int
    """Counted from 1."""
    title: str
    description: str
    problem: str
    """Why it can't be used; empty when it can."""


def report_definitions(document: Document) -> list[ReportDefinition]:
    """The definitions that there are for the drawing, by number."""
    return [ReportDefinition(*each) for each in document.Application._host.report_definitions(document._ref)]


def report(document: Document, definition: str | int, path: str | os.PathLike[str], page: str = "") -> None:
    """Runs a report and writes the table; the ending of `path`, .html, .csv or .xlsx, decides the format.

    `definition` is a title or number of report_definitions, or the file of a definition. With `page` only the shapes of
    the page of that name count. A file that exists is replaced.
    """
    document.Application._host.write_report(document._ref, str(definition), os.fspath(path), page)
