"""A script that ends with unsaved drawings leaves copies of them, and the next script restores them."""

import os
import signal
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
"""
# How a script may end before it saved, and with what status.
ENDS = {
    "killed": ("import signal\nos.kill(os.getpid(), signal.SIGKILL)", -signal.SIGKILL),
    "exit without cleaning up": ("os._exit(1)", 1),
    "error": ("raise RuntimeError('no more')", 1),
    "error in a function": ("def work():\n    inner = app\n    inner.Documents('nowhere')\nwork()", 1),
    "exit": ("sys.exit('no more')", 1),
    "error while a child was made": (
        "child = os.fork()\nif not child:\n    sys.exit(0)\nos.waitpid(child, 0)\nraise RuntimeError('no more')",
        1,
    ),
}


def run_script(text, *arguments):
    script = [sys.executable, "-c", text, *map(str, arguments)]
    return subprocess.run(script, env=environment_for_children(), stderr=subprocess.DEVNULL).returncode


@pytest.mark.parametrize("end", ENDS)
def test_work_of_a_script_that_crashed_is_restored(tmp_path, end):
    saved, copies = str(tmp_path / "map.vsdx"), tmp_path / "copies"
    last_words, status = ENDS[end]
    assert run_script(DYING + last_words, tmp_path, saved) == status
    (left,) = quorvel.copies_left_behind(copies)
    assert (left.original, left.name) == (saved, "map.vsdx")

    app = quorvel.Application(profile=tmp_path)
    assert len(app.Documents.Open(saved).Pages(1).Shapes) == 3
    shapes = app.Documents.Open(left.copy).Pages(1).Shapes
    assert len(shapes) == 4 and shapes(4).Cells("Prop.Task_ID").ResultStr(0) == shapes(4).Name
    quorvel.discard_copy(left.copy)
    assert quorvel.copies_left_behind(copies) == [] and os.listdir(copies) == []
    with pytest.raises(quorvel.HostError, match="no copy that was written for recovery"):
        quorvel.discard_copy(saved)
    assert os.path.exists(saved)


def test_no_copies_after_a_save_or_quit(tmp_path):
    for last_words in ("doc.Save()", "app.Quit()"):
        assert run_script(DYING + last_words, tmp_path, tmp_path / "map.vsdx") == 0
        assert os.listdir(tmp_path / "copies") == []


def test_no_copies_without_a_folder(tmp_path):
    app = quorvel.Application(profile=tmp_path)
    with pytest.raises(quorvel.HostError, match="no folder"):
        app.WriteRecoveryCopies()
    assert quorvel.copies_left_behind(tmp_path / "nowhere") == []
