"""Dialogs and questions: with an answer of the script, without one, and with objects that it kept too long."""

import pytest
from conftest import text

import quorvel


def test_what_is_not_answered_is_closed_and_raised(maps):
    page = maps.new_map("AB Order entry")
    maps.app.OnForm = None
    before = len(page.Shapes)
    with pytest.raises(quorvel.Unanswered, match="frmTaskIdSuggestion") as unanswered:
        maps.drop_task(page)
    assert len(unanswered.value.texts) == 1
    assert len(page.Shapes) == before and text(page.PageSheet, "User.Task_Id_Letters") == ""
    assert maps.app.Asked[-1] == quorvel.Asked("form", "frmTaskIdSuggestion")
    # A handler that leaves the form open has not answered it; one that closes it has.
    maps.app.OnForm = lambda form: None
    with pytest.raises(quorvel.Unanswered):
        maps.drop_task(page)
    maps.app.OnForm = lambda form: form.Close()
    assert maps.drop_task(page) is None
    # It is raised once: the next call does not raise it again.
    maps.app.OnForm = maps.person
    assert maps.drop_task(page).Name == "AB01"


OK, YES_NO, YES_NO_CANCEL, OK_CANCEL = range(4)


def test_questions(app):
    for buttons, careful in ((OK, "OK"), (YES_NO, "No"), (YES_NO_CANCEL, "Cancel"), (OK_CANCEL, "Cancel")):
        with pytest.raises(quorvel.Unanswered, match=rf"Renumber\? \[{careful}, because it was not answered\]"):
            app._host.ask("Renumber?", buttons)
    recorded = []
    app.OnMessage = lambda *box: recorded.append(box) or "yes"
    assert app._host.ask("Renumber?", YES_NO) == "Yes"
    assert recorded == [("Renumber?", "Quorvel", "YesNo", "")]
    for answer, error in (("Cancel", ValueError), ("Maybe", ValueError), (None, quorvel.Unanswered)):
        app.OnMessage = lambda *box: answer
        with pytest.raises(error):
            app._host.ask("Renumber?", YES_NO)
    assert [asked.kind for asked in app.Asked] == ["message"] * 8


def test_files(app, tmp_path):
    with pytest.raises(quorvel.Unanswered, match="Pick a list"):
        app._host.choose_file("Pick a list")
    app.OnFileDialog = lambda title, filter, folder: tmp_path / title
    assert app._host.choose_file("roles.txt") == str(tmp_path / "roles.txt")
    app.OnFileDialog = lambda *dialog: None
    assert app._host.choose_file("Pick a list") is None


def test_what_is_not_answered_inside_a_call_is_raised_at_its_end(maps):
    page = maps.new_map("AB Order entry")
    answers = []

    def ask_twice(form):
        answers.append(maps.app._host.ask("First?", YES_NO))
        answers.append(maps.app._host.ask("Second?", OK_CANCEL))
        form["BtnOK"].Click()

    maps.app.OnForm = ask_twice
    with pytest.raises(quorvel.Unanswered) as unanswered:
        maps.drop_task(page)
    assert answers == ["No", "Cancel"]
    assert [text.split("?")[0] for text in unanswered.value.texts] == ["First", "Second"]
    assert "AB01" in page.Shapes, "the form itself was answered"


def test_defaults_accept_every_form_as_it_opens(tmp_path):
    app = quorvel.Application(profile=tmp_path, answers="defaults")
    doc = app.Documents.Add(quorvel.template_path())
    masters = app.Documents.Open(quorvel.stencil_path()).Masters
    page = doc.Pages(1)
    page.Name = "AB Order entry"
    assert page.Drop(masters("Task"), 3, 6).Name == "AB01"
    assert [asked.text for asked in app.Asked] == ["frmTaskIdSuggestion"]
    boxes = (OK, YES_NO, YES_NO_CANCEL, OK_CANCEL)
    assert [app._host.ask("?", buttons) for buttons in boxes] == ["OK", "Yes", "Yes", "OK"]
    with pytest.raises(quorvel.Unanswered):
        app._host.choose_file("Which?")  # a file has no default
    app.OnMessage = lambda *box: "No"
    assert app._host.ask("?", YES_NO) == "No", "a handler comes first"
    # Deleting a Task that a connector shows asks in a form of its own, with Yes as the answer that it accepts.
    connector = page.Drop(masters("Process Connector"), 5, 5)
    connector.AddHyperlink().SubAddress = f"{page.Name}/AB01"
    assert connector.Text == "Connector.AB01"
    page.Shapes("AB01").Delete()
    assert connector.Text == "Connector.Z99"


def test_controls_accept_what_a_user_does(maps):
    page = maps.new_map("AB Order entry")
    seen = {}

    def answer(form):
        letters, digits = form["TXTTASKIDLETTERS"], form["txtTaskNumber"]
        seen["names"] = "BtnOK" in form and "btnNothing" not in form and len(form) == len(list(form))
        with pytest.raises(KeyError):
            form["btnNothing"]
        letters.Text = ""
        seen["let through"] = letters.PressKey("xy"), digits.PressKey("a"), digits.PressKey(8), digits.PressKey("42")
        seen["focus"] = digits.HasFocus, letters.HasFocus
        with pytest.raises(quorvel.HostError, match="takes no text"):
            form["BtnOK"].Text = "no"
        with pytest.raises(quorvel.HostError, match="there is no row"):
            digits.Select("row")
        seen["kinds"] = letters.Kind, form["BtnOK"].Kind, letters.Items, letters.Selected
        seen["form"], seen["control"] = form, letters
        form["BtnOK"].Click()
        assert not form.IsOpen and form["txtTaskNumber"].Text == digits.Text
        with pytest.raises(quorvel.HostError, match="closed"):
            letters.Click()

    maps.app.OnForm = answer
    task = maps.drop_task(page)
    assert seen["names"] and seen["focus"] == (True, False)
    assert seen["let through"] == (True, False, True, True)
    assert seen["kinds"] == ("TextBox", "Button", [], None)
    assert text(task, "Prop.Task_ID").endswith("42")
    # What a script keeps of a dialog is invalid after its end.
    assert not seen["form"].IsOpen and seen["form"].Name == "frmTaskIdSuggestion"
    for act in (lambda: seen["form"].Caption, lambda: seen["control"].Text, lambda: seen["form"]["BtnOK"]):
        with pytest.raises(quorvel.HostError, match="closed"):
            act()


def test_lists_checks_tabs_and_focus(app):
    label, text_box, button, check, option, list_box, list_view, combo, _, tabs = range(10)
    controls = [
        (text_box, "txtName", [], True, False),
        (button, "BtnOff", [], False, False),
        (check, "chkAll", [], True, False),
        (option, "optOne", [], True, False),
        (option, "optTwo", [], True, False),
        (list_box, "lstRoles", ["Clerk", "Packer"], True, False),
        (list_view, "lvwTasks", ["A01", "A02", "A03"], True, True),
        (combo, "cboUnit", ["Hours", "Days"], True, False),
        (tabs, "tabPages", ["Roles", "Units"], True, False),
        (label, "lblNote", [], True, False),
    ]

    def answer(form):
        name, roles, tasks = form["txtName"], form["lstRoles"], form["lvwTasks"]
        assert name.PressKey("a?b") is False and name.Text == "ab", "the form swallows the question mark"
        assert roles.Items == ["Clerk", "Packer"] and roles.Selected is None
        roles.Select("Packer")
        roles.Select(0)
        assert roles.Selected == "Clerk" and roles.HasFocus and not name.HasFocus
        tasks.Select("A01")
        tasks.Select("A03")
        tasks.Select("A01", False)
        assert tasks.Selected == ["A03"] and tasks.Rows[0] == ("A01", "second column")
        form["chkAll"].Value = True
        form["chkAll"].Click()
        form["optOne"].Value = form["optTwo"].Value = True
        assert [form[each].Value for each in ("chkAll", "optOne", "optTwo")] == [False, False, True]
        form["cboUnit"].Select("Days")
        assert form["cboUnit"].Text == form["cboUnit"].Selected == "Days"
        form["tabPages"].ShowTab("Units")
        assert form["tabPages"].CurrentTab == "Units" and form["tabPages"].Tabs == ["Roles", "Units"]
        roles.KeyDown(46)
        roles.DoubleClick()
        for refused in (
            form["BtnOff"].Click,
            form["BtnOff"].Focus,
            lambda: form["BtnOff"].PressKey("x"),
            lambda: roles.Select("Nobody"),
            lambda: roles.Select(2),
            lambda: form["tabPages"].ShowTab("Nothing"),
            lambda: setattr(form["lblNote"], "Text", "x"),
            lambda: setattr(name, "Value", True),
        ):
            with pytest.raises(quorvel.HostError):
                refused()
        form.Close()

    app.OnForm = answer
    recorded = app._host.show_form(controls)
    typed = ["got focus txtName", "change txtName", "change txtName"]
    assert recorded[:5] == [*typed, "lost focus txtName", "got focus lstRoles"]
    assert recorded[-3:] == ["got focus lstRoles", "key down lstRoles", "double click lstRoles"]
    assert recorded.count("click chkAll") == 2 and "select cboUnit" in recorded and "click tabPages" in recorded
