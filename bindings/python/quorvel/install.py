"""Where the shipped files and the user's profile are."""

from __future__ import annotations

import os
from pathlib import Path

_TEMPLATE, _STENCIL = "Quorvel.vstx", "Quorvel.vssx"


def find_install_folder() -> str | None:
    """QUORVEL_HOME where it is set, else the folder in the installed module, else "data" or "share/quorvel" above."""
    home = os.environ.get("QUORVEL_HOME")
    if home:
        return home
    package = Path(__file__).absolute().parent
    for folder in [package, *package.parents]:
        for candidate in (folder / "data", folder / "share" / "quorvel"):
            if (candidate / _TEMPLATE).exists():
                return str(candidate)
    return None


def _shipped(name: str) -> str:
    folder = find_install_folder()
    if folder is None or not os.path.exists(os.path.join(folder, name)):
        raise FileNotFoundError(f"{name} was not found; set QUORVEL_HOME to the folder that holds it.")
    return os.path.join(folder, name)


def template_path() -> str:
    """The template that new maps are made from, for Documents.Add."""
    return _shipped(_TEMPLATE)


def stencil_path() -> str:
    """The stencil with the masters "Task", "Task Link" and "Process Connector", for Documents.Open."""
    return _shipped(_STENCIL)


def profile_folder(profile: str | os.PathLike[str] | None) -> str:
    """The folder of Quorvel.ini, from it or from the file's own path; empty for the user's own."""
    if profile is None:
        return ""
    path = Path(profile)
    if path.name.lower() == "quorvel.ini":
        return str(path.parent)
    if path.suffix.lower() == ".ini":
        raise ValueError(f"the profile file is named Quorvel.ini, not {path.name}")
    return str(path)
