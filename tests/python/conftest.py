"""A session with the stencil open, a user who answers its dialogs, and helpers to read a drawing."""

import os
import subprocess
import zipfile
from pathlib import Path

import pytest

import quorvel

SOURCE = Path(__file__).resolve().parents[2]
SAMPLE = SOURCE / "data" / "Samples" / "Order handling.vsdx"


@pytest.fixture(autouse=True)
def saved_packages_are_sound(tmp_path):
    """What a test saved is checked as a strict reader does."""
    yield
    program = os.environ.get("QUORVEL_CHECK_PACKAGE")
    saved = [str(file) for file in tmp_path.rglob("*.vs[dst][xm]") if zipfile.is_zipfile(file)]
    if program and saved:
        said = subprocess.run([program, *saved], capture_output=True, text=True)
        assert said.returncode == 0, said.stdout + said.stderr


class Person:
    """What is typed into the dialog of the first Task; None leaves what is suggested, accept False closes it."""

    def __init__(self):
        self.accept = True
        self.letters = None
        self.number = None
        self.letters_seen = []

    def __call__(self, form):
        if form.Name != "frmTaskIdSuggestion":
            return
        self.letters_seen.append(form["txtTaskIdLetters"].Text)
        if self.letters is not None:
            form["txtTaskIdLetters"].Text = self.letters
        if self.number is not None:
            form["txtTaskNumber"].Text = self.number
        if self.accept:
            form["BtnOK"].Click()
        else:
            form.Close()


class Maps:
    """Makes maps and drops on them."""

    def __init__(self, profile):
        self.app = quorvel.Application(profile=profile)
        self.person = Person()
        self.app.OnForm = self.person
        self.stencil = self.app.Documents.Open(quorvel.stencil_path())
        self.doc = None

    def new_map(self, page_name=None):
        self.doc = self.app.Documents.Add(quorvel.template_path())
        page = self.doc.Pages(1)
        if page_name:
            page.Name = page_name
        return page

    def drop(self, page, master, x=3, y=6):
        return page.Drop(self.stencil.Masters(master), x, y)

    def drop_task(self, page, x=3, y=6):
        return self.drop(page, "Task", x, y)


@pytest.fixture
def maps(tmp_path):
    maps = Maps(tmp_path)
    yield maps
    assert maps.app._host.unknown_names() == []


@pytest.fixture
def app(maps):
    return maps.app


def text(shape, cell):
    return shape.Cells(cell).ResultStr(0) if shape.CellExists(cell) else "(none)"


def number(shape, cell):
    return shape.Cells(cell).Result(0)


def marked(page, mark):
    return [shape for shape in page.Shapes if shape.Data1 == mark]


def normal_form(doc):
    """All that a script can see of a document, to check whether anything changed."""
    lines = []

    def sheet(name, shape):
        for section in (1, 10, 240, 242, 243, 244):
            for row in range(max(shape.RowCount(section), 1)):
                for column in range(8):
                    try:
                        cell = shape.CellsSRC(section, row, column)
                        lines.append(f"{name} {cell.Name} {cell.Formula} {cell.ResultStr(0)}")
                    except quorvel.HostError:
                        break

    def shapes(name, collection):
        for shape in collection:
            here = f"{name}/{shape.ID} {shape.Name} {shape.Text!r} {shape.Data1}"
            lines.append(here)
            sheet(here, shape)
            shapes(here, shape.Shapes)

    sheet("document", doc.DocumentSheet)
    # A row that is deleted and added at each opening changes its place.
    lines.sort()
    for page in doc.Pages:
        sheet(page.Name, page.PageSheet)
        shapes(page.Name, page.Shapes)
    return lines


def environment_for_children():
    """The environment for child processes: the same, which includes the settings of the sanitizers."""
    return dict(os.environ)
