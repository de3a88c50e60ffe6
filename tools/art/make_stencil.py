"""Makes the stencil Quorvel.vssx and the template Quorvel.vstx: python3 tools/art/make_stencil.py [output folder].

The masters' icons are drawn by master_icons of build/dev, or by the program that QUORVEL_MASTER_ICONS names."""

import os
import pathlib
import subprocess
import sys
import tempfile

from document_part import document_part
from masters import all_masters
from package_writer import (
    DOCUMENT_CONTENT_TYPES,
    Package,
    add_masters,
    add_page,
    add_properties,
    add_windows,
    user_row,
    user_text_row,
)

ROOT = pathlib.Path(__file__).resolve().parents[2]
DATA_FOLDER = ROOT / "data"
MASTER_ICONS = os.environ.get("QUORVEL_MASTER_ICONS", ROOT / "build" / "dev" / "tools" / "master_icons")
VERSION = "2.16"


def masters_with_icons():
    """The masters with their icons, as a stencil of them without icons is drawn."""
    masters = all_masters()
    with tempfile.TemporaryDirectory() as folder:
        sketch = pathlib.Path(folder) / "sketch.vssx"
        stencil(masters).save(sketch)
        said = subprocess.run([MASTER_ICONS, sketch], check=True, capture_output=True, text=True).stdout
    icons = dict(line.split("\t") for line in said.splitlines())
    return [{**master, "Icon": icons[master["Name"]]} for master in masters]


def stencil(masters):
    package = Package()
    add_properties(package, "Quorvel", ["Page-1"], [master["Name"] for master in masters])
    document = document_part(user_row("Quorvel_Stencil_Version", VERSION))
    package.add("visio/document.xml", DOCUMENT_CONTENT_TYPES[".vssx"], document)
    add_masters(package, masters)
    add_page(package, "Page-1", 8.5, 11)
    return package


def report_rows():
    """A row for each installed report definition, in the order of the files' names."""
    files = sorted((DATA_FOLDER / "Reports").iterdir())
    return [
        user_text_row(f"visPropRpt{number}", file.read_text(encoding="utf-8")) for number, file in enumerate(files, start=1)
    ]


def template(masters):
    """A letter page across. The masters are inside too, so a drawing made from it needs no stencil for its drops, and so
    are the report definitions."""
    package = Package()
    add_properties(package, "Quorvel process map", ["Page-1"], [master["Name"] for master in masters])
    document = document_part(user_row("Quorvel_Template_Version", VERSION), *report_rows())
    package.add("visio/document.xml", DOCUMENT_CONTENT_TYPES[".vstx"], document)
    add_masters(package, masters)
    add_page(package, "Page-1", 11, 8.5)
    drawing = {"ID": 0, "WindowType": "Drawing", "ContainerType": "Page", "Page": 0, "ViewScale": -1}
    docked_stencil = {"ID": 1, "WindowType": "Stencil", "Document": "Quorvel.vssx", "ParentWindow": 0}
    add_windows(package, drawing, docked_stencil)
    return package


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    masters = masters_with_icons()
    stencil(masters).save(folder / "Quorvel.vssx")
    template(masters).save(folder / "Quorvel.vstx")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else DATA_FOLDER)
