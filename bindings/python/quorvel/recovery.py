"""Copies of unsaved drawings that were left behind by a process that ended without saving or closing them."""

from __future__ import annotations

import os
from typing import NamedTuple

from . import _quorvel


class LeftBehind(NamedTuple):
    """A copy, to be opened with Documents.Open, saved under the name of the original, and discarded."""

    copy: str
    """Its full name."""
    original: str
    """Where the drawing was saved last; empty when it never was, or when that is unknown."""
    name: str
    """The name of the drawing."""


def copies_left_behind(folder: str | os.PathLike[str]) -> list[LeftBehind]:
    """The copies in a folder that was given to Application(recovery=...), without those of processes that still run."""
    return [LeftBehind(*each) for each in _quorvel.copies_left_behind(os.fspath(folder))]


def discard_copy(copy: str | os.PathLike[str]) -> None:
    """Removes a copy and what belongs to it, after it was restored or when it is not needed.

    Raises HostError for a file that is no such copy, and for a copy that belongs to a drawing that is still open.
    """
    _quorvel.discard_copy(os.fspath(copy))
