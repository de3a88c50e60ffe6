"""A new drawing from the template: the cells of its document and pages, and the decorations of each page."""

import pytest
from conftest import marked, normal_form, number, text

import quorvel


def test_cells_of_the_document(maps):
    maps.new_map()
    sheet = maps.doc.DocumentSheet
    assert maps.doc.Template == "Quorvel.vstx"
    expected = {
        "User.Quorvel_dll_Version": "2.16",
        "User.lstSpr": "LISTSEP()",
        "User.Based_On_ZNB": "1",
        "User.DocumentSaved": '"False"',
        "User.Time_Unit": '"Seconds;Minutes;Hours;Days;Weeks"',
        "User.Time_Unit_Disply": '"s;m;h;d;w"',
    }
    assert {cell: sheet.Cells(cell).Formula for cell in expected} == expected
    assert text(sheet, "User.RoleNames").startswith(";Account Executive;")
    assert text(sheet, "User.FreqSuggestions").startswith(";Ad Hoc;")
    assert maps.doc.Protection == 2
    with pytest.raises(quorvel.HostError, match="password"):
        maps.doc.Protection = 0
    with pytest.raises(quorvel.HostError):
        maps.app.Undo()  # making a drawing is not an undo step


def test_foreground_pages_have_cells_and_decorations_once(maps):
    first = maps.new_map("AB Order entry")
    second = maps.doc.Pages.Add()
    assert text(second.PageSheet, "User.PAGE_NAME") == "Page-2"
    for page in (first, second):
        sheet = page.PageSheet
        switches = ("Task_Visible", "Supporting_Role4", "Next_Task_Id")
        assert [number(sheet, "User." + name) for name in switches] == [1, 1, 0]
        assert page.Layers("VisibleLayer").CellsC(4).Result(0) == 1
        assert page.Layers("InvisibleLayer").CellsC(4).Result(0) == 0
        assert len(page.Shapes) == 3
        (logo,), (legend,), title = marked(page, "Logo"), marked(page, "Legend"), page.Shapes(3)
        with pytest.raises(quorvel.HostError):
            logo.Delete()
        assert len(logo.Hyperlinks) == 1
        assert legend.Hyperlinks(0).Description == "Double-click for a detailed explanation of the Task shape."
        assert title.Text == "Page Title"
        assert title.Cells("Char.Size[1]").Result("pt") == pytest.approx(18)
        # Decorations keep their distance to the edges of the page.
        sheet.Cells("PageWidth").Result["in"] = 20
        assert number(legend, "PinX") == 19


def test_a_logo_stays_on_its_page(maps):
    page = maps.new_map()
    (logo,) = marked(page, "Logo")
    width = number(page.PageSheet, "PageWidth")
    for moved, stays in ((width + 3, width - 0.5), (width - 0.6, width - 0.6), (0.2, 0.5)):
        logo.Cells("PinX").Result["in"] = moved
        assert number(logo, "PinX") == pytest.approx(stays)
    maps.app.Undo()
    assert number(logo, "PinX") == pytest.approx(width - 0.6), "the way back is part of the move"


def test_copies_of_decorations_are_removed(maps):
    page = maps.new_map()
    assert marked(page, "Logo")[0].Duplicate() is None
    window = maps.app.ActiveWindow
    for mark in ("Logo", "Legend"):
        window.Select(marked(page, mark)[0], quorvel.constants.visSelect)
    window.Selection.Copy()
    other = maps.doc.Pages.Add()
    other.Paste()
    assert len(other.Shapes) == 3


def test_saved_and_opened_again_every_cell_is_the_same(maps, tmp_path):
    page = maps.new_map("AB Order entry")
    task = maps.drop_task(page)
    maps.drop(page, "Task Link", 4)
    maps.drop(page, "Process Connector", 6)
    task.Cells("Prop.Notes").FormulaForce = '"a ""note"""'
    maps.doc.SaveAs(tmp_path / "map.vsdx")
    assert maps.doc.FullName == str(tmp_path / "map.vsdx")
    again = quorvel.Application(profile=tmp_path).Documents.Open(tmp_path / "map.vsdx")
    assert normal_form(again) == normal_form(maps.doc)
