"""The first map: what a user finds when Tasks, Task Links and Process Connectors are dropped on a page."""

import pytest
from conftest import number, text

import quorvel


def test_asks_for_letters_once_and_numbers_on(maps):
    page = maps.new_map("AB Order entry")
    sheet = page.PageSheet
    first = maps.drop_task(page)
    assert maps.person.letters_seen == ["AB"]
    assert (text(first, "Prop.Task_ID"), first.Name, number(sheet, "User.Next_Task_Id")) == ("AB01", "AB01", 2)
    second = maps.drop_task(page, 6)
    assert (second.Name, len(maps.person.letters_seen)) == ("AB02", 1)
    # Each page has its own letters, and a drop on a page that is not shown shows the page.
    following = maps.doc.Pages.Add()
    following.Name = "Shipping"
    page.Activate()
    maps.person.number = "7"
    assert maps.drop_task(following).Name == "Z07"
    assert maps.app.ActivePage == following
    assert maps.person.letters_seen == ["AB", "Z"]
    assert number(sheet, "User.Next_Task_Id") == 3


def test_a_refusal_removes_the_task_and_the_next_drop_asks_again(maps):
    page = maps.new_map("AB Order entry")
    before = len(page.Shapes)
    maps.person.accept = False
    assert maps.drop_task(page) is None
    assert len(page.Shapes) == before
    assert text(page.PageSheet, "User.Task_Id_Letters") == ""
    maps.person.accept, maps.person.letters, maps.person.number = True, 'Q"', "12"
    assert maps.drop_task(page).Name == 'Q"12'
    assert len(maps.person.letters_seen) == 2


def test_undo_removes_the_task_and_its_number_in_one_step(maps):
    page = maps.new_map("AB Order entry")
    maps.drop_task(page)
    before = len(page.Shapes)
    second = maps.drop_task(page, 6)
    maps.app.Undo()
    assert len(page.Shapes) == before
    with pytest.raises(quorvel.HostError):
        second.Name
    assert number(page.PageSheet, "User.Next_Task_Id") == 2
    maps.app.Redo()
    assert second.Name == "AB02"
    maps.app.Undo()
    maps.app.Undo()
    assert text(page.PageSheet, "User.Task_Id_Letters") == ""
    assert maps.drop_task(page).Name == "AB01", "the page is empty again, so it asks again"
    assert len(maps.person.letters_seen) == 2


def test_other_drawings_and_background_pages_are_not_changed(maps):
    foreign = maps.app.Documents.Add()
    task = maps.drop_task(foreign.Pages(1))
    assert not task.CellExists("User.AlreadyAdded", 1)
    assert foreign.DocumentSheet.RowCount(quorvel.constants.visSectionUser) == 0
    maps.new_map()
    background = maps.doc.Pages.Add()
    background.Background = True
    assert not maps.drop_task(background).CellExists("User.AlreadyAdded", 1)
    assert maps.person.letters_seen == []


def formulas(shape, *cells):
    return [shape.Cells(cell).Formula for cell in cells]


def test_cells_of_each_kind_of_shape(maps):
    page = maps.new_map("AB Order entry")
    page.PageSheet.Cells("User.Resources").Result[0] = 0
    task = maps.drop_task(page)
    assert formulas(task, "Prop.Notes", "User.TimeValue", "Prop.SupportingRole_4.Invisible", "Actions.Action[1]") == [
        '""',
        '"0 em."',
        "0",
        "docmd(1312)",
    ]
    assert text(task, "Prop.SupportingRole_3.Format") == text(maps.doc.DocumentSheet, "User.RoleNames")
    assert number(task, "User.Resources") == 0, "as its page has it"
    description, cover = task.Shapes(4), task.Shapes(len(task.Shapes))
    task.Cells("Prop.Task_Description").FormulaForce = '"Check the order"'
    assert description.Text == "Check the order"
    task.Cells("Width").Result["in"] = 3.5
    assert number(cover, "Width") == 3.5
    with pytest.raises(quorvel.HostError):
        cover.Delete()

    link = maps.drop(page, "Task Link")
    assert formulas(link, "Prop.Task_Link", "Prop.Time_Str.Label", "LockTextEdit", "User.TimeValue") == [
        '"Task Link"',
        '"Time_Str"',
        "1",
        '"0 em."',
    ]
    connector = maps.drop(page, "Process Connector")
    assert connector.Data1 == "Process Connector"
    assert connector.Name == "Connector." + text(connector, "Prop.Connecting_TaskID")
    assert formulas(connector, "Actions.Menu[1]", "Actions.Action[2]") == ['"Define Connector Link..."', "docmd(1312)"]


def test_a_link_follows_the_tasks_that_it_is_glued_to(maps):
    page = maps.new_map("AB Order entry")
    start, end, link = maps.drop_task(page, 2), maps.drop_task(page, 6), maps.drop(page, "Task Link", 4)
    link.Cells("BeginX").GlueTo(start.Cells("PinX"))
    link.Cells("EndX").GlueTo(end.Cells("PinX"))
    x, y = number(link, "EndX"), number(link, "EndY")
    end.Cells("PinX").Result["in"] = 8
    end.Cells("PinY").Result["in"] = 7
    assert (number(link, "EndX"), number(link, "EndY")) == pytest.approx((x + 2, y + 1))
    assert [(c.FromCell.Name, c.ToSheet.Name) for c in link.Connects] == [("BeginX", "AB01"), ("EndX", "AB02")]


def test_drop_connected_makes_the_next_task_and_the_link_to_it_in_one_step(maps):
    page = maps.new_map("AB Order entry")
    first = maps.drop_task(page)
    task, link = maps.stencil.Masters("Task"), maps.stencil.Masters("Task Link")
    right = quorvel.constants.visAutoConnectDirRight
    second = page.DropConnected(task, first, right, link)
    assert second.Name == "AB02"
    assert number(second, "PinX") > number(first, "PinX") and number(second, "PinY") == number(first, "PinY")
    (made,) = quorvel.Map(maps.doc).links
    assert (str(made.start), str(made.end)) == ("AB01", "AB02")
    maps.app.Undo()
    assert [shape.Name for shape in page.Shapes if shape.Name.startswith("AB")] == ["AB01"]
    assert quorvel.Map(maps.doc).links == []
