"""Events for scripts, and exceptions that pass through the host."""

import gc
import threading
import weakref

import pytest
from conftest import normal_form, number

import quorvel


def test_handlers_get_events(maps):
    page = maps.new_map("AB Order entry")
    app, recorded = maps.app, []
    app.OnShapeAdded = lambda shape: recorded.append(("added", shape.Name))
    app.OnBeforeShapeDelete = lambda shape: recorded.append(("going", shape.Name))
    app.OnMarkerEvent = lambda number, context: recorded.append(("marker", context))
    app.OnMouseDown = lambda *mouse: recorded.append(("mouse", *mouse))
    app.OnAppActivated = lambda who: recorded.append(("activated", who is app))
    app.OnBeforeShapeTextEdit = app.OnShapeExitedTextEdit = lambda shape: recorded.append(("text", shape.Text))
    app.OnTextChanged = lambda shape: recorded.append(("changed", shape.Text))
    app.OnEnterScope = lambda number, name: recorded.append(("scope", name))
    task = maps.drop_task(page)
    assert ("added", "AB01") in recorded, "the add-in gets the event first"
    recorded.clear()
    task.Delete()
    app.QueueMarkerEvent("/soln=Quorvel.Quorvel /cmd=9")
    app.MouseDown(1, x=2)
    app.Activate()
    title = page.Shapes(3)
    title.BeginTextEdit()
    title.EndTextEdit("Orders")
    app.DoCmd(1312)
    assert recorded == [
        ("going", "AB01"),
        ("marker", "/soln=Quorvel.Quorvel /cmd=9"),
        ("mouse", 1, 0, 2.0, 0.0),
        ("activated", True),
        ("text", "Page Title"),
        ("changed", "Orders"),
        ("text", "Orders"),
        ("scope", "Shape Data"),
    ]
    app.OnMouseDown = None
    app.MouseDown(1)
    assert len(recorded) == 8 and app.OnMouseDown is None


def test_the_pointer_moves_over_a_window(maps):
    page = maps.new_map("AB Order entry")
    task = maps.drop_task(page)
    window, moved = maps.app.ActiveWindow, []
    maps.app.OnMouseMove = lambda *mouse: moved.append(mouse)
    maps.app.Documents.Add("")
    assert maps.app.ActiveWindow != window
    window.MouseMove(task.Cells("PinX").ResultIU, task.Cells("PinY").ResultIU)
    assert maps.app.ActiveWindow == window
    assert [mouse[:2] for mouse in moved] == [(0, 0)] and moved[0][2] > 0


def test_dialogs_of_the_program_are_used_as_a_user_does(maps):
    page = maps.new_map("AB Order entry")
    app, recorded = maps.app, []
    box = page.DrawRectangle(1, 1, 2, 2)
    box.Text = "orders of an order"
    box.AddNamedRow(242, "Note")
    box.AddNamedRow(242, "Size")
    app.OnEnterScope = app.OnExitScope = lambda number, name: recorded.append(number)
    app.OnBeforeModal = lambda who: recorded.append("before")
    app.OnAfterModal = lambda who: recorded.append("after")
    box.EditShapeData({"User.Note": 'a "note"', "User.Size": 1.5})
    assert (box.Cells("User.Note").ResultStr(0), box.Cells("User.Size").Formula) == ('a "note"', "1.5")
    assert app.ReplaceText("ORDER", "task", whole_words=True) == 1
    assert box.Text == "orders of an task"
    assert recorded == [1312, "before", "after", 1312, 1179, "before", "after", 1179]
    assert app.ReplaceText("Task", "", match_case=True, all_pages=False) == 0
    characters = box.Characters
    characters.Begin = 7
    characters.AddCustomField("User.Size", 0)
    assert (box.Text, characters.End) == ("orders 1.5of an task", 20)
    with pytest.raises(quorvel.HostError, match="no cell User.None"):
        box.EditShapeData({"User.None": ""})
    with pytest.raises(quorvel.HostError, match="no text to find"):
        app.ReplaceText("", "x")


def test_windows_and_pages_are_activated(maps):
    first = maps.new_map("AB Order entry")
    other = maps.app.Documents.Add()
    recorded = []
    maps.app.OnWindowActivated = lambda window: recorded.append(window.Page.Name)
    first.Activate()
    assert (maps.app.ActiveDocument, maps.app.ActivePage, recorded) == (maps.doc, first, ["AB Order entry"])
    other.Pages(1).Activate()
    maps.drop_task(first)
    assert maps.app.ActivePage == first and recorded == ["AB Order entry", "Page-1", "AB Order entry"]
    with pytest.raises(quorvel.HostError, match="no window"):
        maps.stencil.Pages(1).Activate()
    assert [window.Document for window in maps.app.Windows] == [maps.doc, other]
    assert maps.app.ActiveWindow == maps.app.Windows(1)


class Mistake(Exception):
    pass


def fail(*_):
    raise Mistake("in a handler")


@pytest.mark.parametrize("handler", ["OnForm", "OnShapeAdded", "OnCellChanged", "OnSelectionChanged", "OnEnterScope"])
def test_what_a_handler_throws_is_raised_by_the_call_and_the_host_works_on(maps, handler):
    page = maps.new_map("AB Order entry")
    maps.drop_task(page)
    page = maps.doc.Pages.Add()
    before = normal_form(maps.doc)
    kept = getattr(maps.app, handler)
    setattr(maps.app, handler, fail)
    with pytest.raises(Mistake) as thrown:
        with maps.app.UndoScope("Whatever"):
            maps.drop_task(page)
            page.DrawRectangle(1, 1, 2, 2).Cells("PinX").FormulaForce = "3 in"
    assert thrown.traceback[-1].name == "fail"
    setattr(maps.app, handler, kept)
    if handler != "OnEnterScope":
        assert normal_form(maps.doc) == before, "the scope was rolled back"
        task = maps.drop_task(page)
        maps.app.Undo()
        with pytest.raises(quorvel.HostError):
            task.Name
        assert normal_form(maps.doc) == before


def test_a_handler_may_catch_what_its_own_call_threw(maps):
    page = maps.new_map("AB Order entry")
    caught = []

    def answer(form):
        try:
            maps.app._host.ask("Sure?", 1)
        except Mistake as mistake:
            caught.append(mistake)
        form["BtnOK"].Click()

    maps.app.OnForm, maps.app.OnMessage = answer, fail
    assert maps.drop_task(page).Name == "AB01" and len(caught) == 1


def test_after_a_throw_no_handler_runs_until_the_call_is_over(maps):
    page = maps.new_map("AB Order entry")
    recorded = []

    def throw_once(shape):
        raise Mistake

    maps.app.OnShapeAdded = throw_once
    maps.app.OnExitScope = lambda *scope: recorded.append(scope)
    with pytest.raises(Mistake):
        page.DrawRectangle(1, 1, 2, 2)
    assert recorded == []
    maps.app.OnShapeAdded = None
    page.DrawRectangle(1, 1, 2, 2)


def test_an_endless_exchange_ends(maps):
    shape = maps.new_map().DrawRectangle(1, 1, 2, 2)
    cell = shape.Cells("PinX")
    depth = []

    def write_again(changed):
        depth.append(1)
        cell.ResultForce["in"] = len(depth)

    maps.app.OnCellChanged = write_again
    with pytest.raises((quorvel.HostError, RecursionError)):
        cell.ResultForce["in"] = 50
    assert 10 < len(depth) <= 201
    maps.app.OnCellChanged = None
    cell.ResultForce["in"] = 2
    assert number(shape, "PinX") == 2


def test_a_handler_may_delete_its_shape_but_not_close_the_document(maps):
    page = maps.new_map("AB Order entry")
    maps.app.OnShapeAdded = lambda shape: shape.Delete()
    assert page.DrawRectangle(1, 1, 2, 2) is None
    maps.app.OnShapeAdded = lambda shape: shape.Document.Close()
    with pytest.raises(quorvel.HostError, match="inside a command"):
        page.DrawRectangle(1, 1, 2, 2)
    assert page.Name == "AB Order entry"


def test_another_thread_may_call_between_calls_but_not_inside_one(maps):
    page = maps.new_map("AB Order entry")
    found = []

    def read():
        try:
            found.append(page.Name)
        except quorvel.HostError as error:
            found.append(error.reason)

    def in_thread(*_):
        thread = threading.Thread(target=read)
        thread.start()
        thread.join()

    in_thread()
    maps.app.OnShapeAdded = in_thread
    page.DrawRectangle(1, 1, 2, 2)
    assert found == ["AB Order entry", "another thread is inside a call"]


def test_handles_are_freed_in_any_order_and_nothing_remains(tmp_path):
    def session():
        app = quorvel.Application(profile=tmp_path, answers="defaults")
        doc = app.Documents.Add(quorvel.template_path())
        page = doc.Pages(1)
        task = page.Drop(app.Documents.Open(quorvel.stencil_path()).Masters("Task"), 3, 6)
        # A circle: the handler holds the page, which holds the application, which holds the handler.
        app.OnShapeAdded = lambda shape, page=page: page.Name
        return [app, doc, page, page.Shapes, task, task.Cells("PinX"), app.ActiveWindow.Selection]

    size = len(session())
    for kept in range(size):
        handles = session()
        app = weakref.ref(handles[0])
        last = handles[kept]
        del handles
        gc.collect()
        assert last.Application.Documents.Count == 2, "one handle keeps its application"
        last.Application.Documents(1).Pages(1).DrawRectangle(1, 1, 2, 2)
        del last
        gc.collect()
        assert app() is None
    # An application that is freed inside its own handler's exception, and one in the middle of many.
    many = [session() for _ in range(5)]
    for handles in many:
        handles[0].OnShapeAdded = fail
        with pytest.raises(Mistake):
            handles[2].DrawRectangle(1, 1, 2, 2)
    many.reverse()
    many[1].clear()
    gc.collect()
    assert many[0][2].Name == "Page-1"


def test_what_a_handler_does_on_selecting_is_a_step_and_undo_is_bounded(maps):
    page = maps.new_map("AB Order entry")
    task, box = maps.drop_task(page), page.DrawRectangle(1, 1, 2, 2)
    window = maps.app.ActiveWindow
    window.DeselectAll()
    maps.doc.Saved = True

    def delete_box(_):
        maps.app.OnSelectionChanged = None
        box.Delete()

    maps.app.OnSelectionChanged = delete_box
    window.Select(task, 2)
    assert maps.doc.Saved is False
    maps.app.Undo()
    assert box.Name and [shape.Name for shape in window.Selection] == [task.Name]

    steps, size = maps.app.UndoLimits
    assert steps >= 100 and size > 0
    maps.app.UndoLimits = (2, size)
    for width in range(3, 8):
        box.Cells("Width").FormulaForce = f"{width} in"
    maps.app.Undo()
    maps.app.Undo()
    with pytest.raises(quorvel.HostError, match="nothing to undo"):
        maps.app.Undo()
    assert box.Cells("Width").Result("in") == 5
