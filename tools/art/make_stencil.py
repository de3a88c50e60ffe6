"""Makes the stencil Quorvel.vssx and the template Quorvel.vstx: python3 tools/art/make_stencil.py [output folder]."""

import pathlib
import sys

from document_part import document_part
from masters import all_masters
from package_writer import DOCUMENT_CONTENT_TYPES, Package, add_masters, add_page, add_properties, add_windows, user_row

DATA_FOLDER = pathlib.Path(__file__).resolve().parents[2] / "data"
VERSION = "2.16"


def stencil():
    package = Package()
    add_properties(package, "Quorvel")
    document = document_part(user_row("Quorvel_Stencil_Version", VERSION))
    package.add("visio/document.xml", DOCUMENT_CONTENT_TYPES[".vssx"], document)
    add_masters(package, all_masters())
    add_page(package, "Page-1", 8.5, 11)
    return package


def template():
    """A letter page across. The masters are inside too, so a drawing made from it needs no stencil for its drops."""
    package = Package()
    add_properties(package, "Quorvel process map")
    document = document_part(user_row("Quorvel_Template_Version", VERSION))
    package.add("visio/document.xml", DOCUMENT_CONTENT_TYPES[".vstx"], document)
    add_masters(package, all_masters())
    add_page(package, "Page-1", 11, 8.5)
    drawing = {"ID": 0, "WindowType": "Drawing", "ContainerType": "Page", "Page": 0, "ViewScale": -1}
    docked_stencil = {"ID": 1, "WindowType": "Stencil", "Document": "Quorvel.vssx", "ParentWindow": 0}
    add_windows(package, drawing, docked_stencil)
    return package


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    stencil().save(folder / "Quorvel.vssx")
    template().save(folder / "Quorvel.vstx")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else DATA_FOLDER)
