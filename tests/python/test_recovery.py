"""A script that dies leaves copies of its unsaved drawings, and the next one takes them back."""

import os
import subprocess
import sys

import pytest
from conftest import environment_for_children

import quorvel

DYING = """
import os, sys
import quorvel
folder, saved = sys.argv[1:]
app = quorvel.Application(answers="defaults", profile=folder, recovery=os.path.join(folder, "copies"))
doc = app.Documents.Add(quorvel.template_path())
doc.SaveAs(saved)
task = app.Documents.Open(quorvel.stencil_path()).Masters("Task")
doc.Pages(1).Drop(task, 3, 6)
app.WriteRecoveryCopies()
os._exit(1)
"""


def test_work_of_a_script_that_died_is_taken_back(tmp_path):
    saved, copies = str(tmp_path / "map.vsdx"), tmp_path / "copies"
    died = subprocess.run([sys.executable, "-c", DYING, str(tmp_path), saved], env=environment_for_children())
    assert died.returncode == 1
    (left,) = quorvel.copies_left_behind(copies)
    assert (left.original, left.name) == (saved, "map.vsdx")

    app = quorvel.Application(profile=tmp_path)
    assert len(app.Documents.Open(saved).Pages(1).Shapes) == 3
    shapes = app.Documents.Open(left.copy).Pages(1).Shapes
    assert len(shapes) == 4 and shapes(4).Cells("Prop.Task_ID").ResultStr(0) == shapes(4).Name
    quorvel.discard_copy(left.copy)
    assert quorvel.copies_left_behind(copies) == [] and os.listdir(copies) == []


def test_no_copies_without_a_folder(tmp_path):
    app = quorvel.Application(profile=tmp_path)
    with pytest.raises(quorvel.HostError, match="no folder"):
        app.WriteRecoveryCopies()
    assert quorvel.copies_left_behind(tmp_path / "nowhere") == []
