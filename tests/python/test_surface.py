"""The surface that scripts work on: names, collections, values, and messages of refusals."""

import subprocess
import sys
from pathlib import Path

import pytest
from conftest import SAMPLE, environment_for_children, number

import quorvel

SCRIPT = '''
import quorvel
app = quorvel.Application()
def answer(form):
    if form.Name == "frmTaskIdSuggestion":
        form["txtTaskIdLetters"].Text = "A"
        form["txtTaskNumber"].Text = "1"
        form["BtnOK"].Click()
app.OnForm = answer
app.OnMessage = lambda text, title, buttons, icon: "Yes"
doc = app.Documents.Add(quorvel.template_path())
page = doc.Pages(1)
masters = app.Documents.Open(quorvel.stencil_path()).Masters
task = page.Drop(masters("Task"), 3, 6)
assert task.Cells("Prop.Task_ID").ResultStr(0) == "A01" and task.Name == "A01"
app.Undo()
assert len(page.Shapes) == 3        # logo, legend, title box
doc.SaveAs("map.vsdx")
'''


def test_a_script_runs_with_plain_python(tmp_path):
    script = tmp_path / "script.py"
    script.write_text(SCRIPT)
    subprocess.run([sys.executable, script], cwd=tmp_path, env=environment_for_children(), check=True)
    assert (tmp_path / "map.vsdx").stat().st_size > 0


def test_a_refusal_names_the_call_the_object_and_the_reason(maps, tmp_path):
    page = maps.new_map("AB Order entry")
    task = maps.drop_task(page)
    with pytest.raises(quorvel.HostError) as refused:
        task.Cells("Prop.Nothing")
    error = refused.value
    assert (error.call, error.object) == ("Shape.Cells", "page AB Order entry, shape AB01")
    assert error.reason == 'the cell "Prop.Nothing" does not exist'
    assert str(error) == f"{error.call} on {error.object}: {error.reason}"
    cases = (
        ("Pages.Item", lambda: maps.doc.Pages("nowhere")),
        ("Pages.Item", lambda: maps.doc.Pages(0)),
        ("Layers.Item", lambda: page.Layers(9)),
        ("Cell.Formula", lambda: setattr(task.Cells("PinX"), "Formula", "1 +")),
        ("Page.Name", lambda: setattr(page, "Name", "")),
        ("Documents.Open", lambda: maps.app.Documents.Open(tmp_path / "missing.vsdx")),
        ("Document.Save", maps.doc.Save),
        ("Application.DoCmd", lambda: maps.app.DoCmd(-1)),
    )
    for call, act in cases:
        with pytest.raises(quorvel.HostError) as refused:
            act()
        assert refused.value.call == call and refused.value.reason


def test_wrong_python_calls_raise_pythons_own_errors(maps):
    page = maps.new_map()
    shape = page.DrawRectangle(1, 1, 2, 2)
    for mistake, act in (
        (AttributeError, lambda: setattr(shape, "Txet", "x")),
        (AttributeError, lambda: shape.Cells("PinX").FormulaForce),
        (AttributeError, lambda: setattr(shape, "ID", 7)),
        (AttributeError, lambda: setattr(maps.app, "OnFrom", print)),
        (TypeError, lambda: setattr(maps.app, "OnForm", "answer")),
        (TypeError, lambda: page.DrawLine(1, 2)),
        (TypeError, lambda: page.Drop(object(), 1, 1)),
        (ValueError, lambda: shape.Cells("PinX").Result("furlong")),
        (OverflowError, lambda: page.Shapes(1 << 80)),
        (UnicodeEncodeError, lambda: setattr(shape, "Text", "\ud800")),
        (ValueError, lambda: quorvel.Application(answers="always")),
        (ValueError, lambda: quorvel.Application(profile="other.ini")),
    ):
        with pytest.raises(mistake):
            act()


def test_a_handle_to_a_deleted_object_raises(maps):
    page = maps.new_map("AB Order entry")
    task = maps.drop_task(page)
    kept = [task, task.Shapes(1), task.Cells("PinX"), task.Characters, task.Shapes]
    task.Delete()
    for act in (
        lambda: kept[0].Name,
        lambda: kept[0].Delete(),
        lambda: kept[1].Text,
        lambda: setattr(kept[2], "FormulaForce", "1"),
        lambda: kept[3].Text,
        lambda: len(kept[4]),
        lambda: page.DropConnected(maps.stencil.Masters("Task"), kept[0], 4),
        lambda: maps.app.ActiveWindow.Select(kept[0], 2),
    ):
        with pytest.raises(quorvel.HostError):
            act()
    assert repr(kept[0]) == "<Shape>"
    other = quorvel.Application(profile=maps.app.Documents(1).Path)
    with pytest.raises(quorvel.HostError, match="another application"):
        other.Documents.Add().Pages(1).Drop(maps.stencil.Masters("Task"), 1, 1)
    maps.doc.Close()
    for act in (lambda: page.Name, lambda: maps.doc.Pages, page.Activate, lambda: page.Export("x.svg")):
        with pytest.raises(quorvel.HostError):
            act()


def test_collections(maps):
    page = maps.new_map("AB Order entry")
    first, second = maps.drop_task(page), maps.drop_task(page, 6)
    shapes = page.Shapes
    assert shapes("ab02") == shapes.Item("AB02") == shapes.ItemU("AB02") == shapes["AB02"] == second
    assert shapes(len(shapes)) == second and shapes.Count == len(shapes)
    assert "AB01" in shapes and first in shapes and "AB03" not in shapes and first.Shapes(1) not in shapes
    assert len({first, shapes("AB01"), second}) == 2
    # A loop visits what existed when it began.
    for shape in shapes:
        if shape.Name.startswith("AB"):
            shape.Delete()
    assert len(shapes) == 3
    # Only hyperlinks count from 0.
    for description in ("one", "two"):
        page.DrawRectangle(1, 1, 2, 2)
    box = page.Shapes(len(page.Shapes))
    for description in ("one", "two"):
        box.AddHyperlink().Description = description
    assert [link.Description for link in box.Hyperlinks] == ["one", "two"] and box.Hyperlinks(1).Description == "two"
    bars = maps.app.CommandBars
    bars.Add("Mine").Controls.Add(1).Caption = "&Do it"
    assert [bar.Name for bar in bars] == [bars(place).Name for place in range(1, len(bars) + 1)]
    assert bars("mine").Controls("do it").Id == 1
    assert maps.app.Documents(maps.doc.Name) == maps.doc
    maps.app.ActiveWindow.Select(box, 2)
    assert box in maps.app.ActiveWindow.Selection and box.Application is maps.app


def test_values_by_unit_and_by_place(maps):
    shape = maps.new_map().DrawRectangle(1, 1, 3, 2)
    pin = shape.Cells("PinX")
    pin.Result["mm"] = 50.8
    assert (pin.ResultIU, pin.Result(65), pin.Result["cm"], pin.ResultInt("mm", 1)) == pytest.approx((2, 2, 5.08, 51))
    pin.SetResult("in", 3)
    pin.FormulaForce = "GUARD(4 in)"
    with pytest.raises(quorvel.HostError):
        pin.Result["in"] = 5
    pin.ResultForce["in"] = 5
    assert pin.ResultIU == 5
    assert shape.RowType(10, 1) == quorvel.constants.visTagMoveTo
    shape.RowType[10, 2] = quorvel.constants.visTagArcTo
    assert shape.RowType[10, 2] == quorvel.constants.visTagArcTo


def test_a_scope_is_committed_or_rolled_back(maps):
    page = maps.new_map()
    before = len(page.Shapes)
    with maps.app.UndoScope("Two boxes"):
        page.DrawRectangle(1, 1, 2, 2)
        page.DrawRectangle(3, 3, 4, 4)
    maps.app.Undo()
    assert len(page.Shapes) == before
    with pytest.raises(ZeroDivisionError), maps.app.UndoScope("A box"):
        page.DrawRectangle(1, 1, 2, 2)
        1 / 0
    assert len(page.Shapes) == before
    maps.app.Redo()
    assert len(page.Shapes) == before + 2


def test_versions_and_folders(tmp_path):
    (tmp_path / "Quorvel.ini").write_text("[Uninstall]\nQuorvel Path=somewhere\n")
    for profile in (tmp_path, tmp_path / "Quorvel.ini"):
        app = quorvel.Application(version="11.0", install_folder=SAMPLE.parents[1], profile=profile)
        assert app.Version == "11.0"
    assert Path(quorvel.template_path()).exists() and Path(quorvel.stencil_path()).exists()


def test_where_the_shipped_files_are_missing_one_sentence_says_so(monkeypatch, tmp_path):
    monkeypatch.setenv("QUORVEL_HOME", str(tmp_path))
    with pytest.raises(FileNotFoundError, match="QUORVEL_HOME"):
        quorvel.template_path()


def test_pictures(maps, tmp_path):
    page = maps.new_map("AB Order entry")
    maps.drop_task(page)
    page.Export(tmp_path / "page.svg")
    drawn = (tmp_path / "page.svg").read_text()
    assert "AB01" in drawn
    maps.app.ActiveWindow.DeselectAll()
    page.Export(tmp_path / "page.svg")
    assert (tmp_path / "page.svg").read_text() == drawn, "a picture does not show what is selected"
    page.Export(tmp_path / "page.png")
    assert (tmp_path / "page.png").read_bytes().startswith(b"\x89PNG")
    maps.doc.Pages.Add()
    maps.doc.ExportAsFixedFormat(quorvel.constants.visFixedFormatPDF, tmp_path / "map.pdf")
    maps.doc.ExportAsFixedFormat(1, tmp_path / "second.pdf", print_range=1, from_page=2)
    whole, second = (tmp_path / "map.pdf").read_bytes(), (tmp_path / "second.pdf").read_bytes()
    assert whole.startswith(b"%PDF") and second.startswith(b"%PDF") and len(second) < len(whole)
    for arguments in ((2, "map.xps"), (1, "map.svg"), (1, "map.pdf", 1, 7), (1, "map.pdf", 1, 1, 9)):
        with pytest.raises(quorvel.HostError):
            maps.doc.ExportAsFixedFormat(*arguments)
    with pytest.raises(quorvel.HostError, match="end its name with"):
        page.Export(tmp_path / "page.doc")
    with pytest.raises(quorvel.HostError) as refused:
        page.Export(tmp_path / "nowhere" / "page.svg")
    assert refused.value.call == "Page.Export" and not (tmp_path / "nowhere").exists()
    assert number(page.PageSheet, "User.Next_Task_Id") == 2
