"""Dialogs and questions: what the script answers, what it does not, and what it kept too long."""

import pytest
from conftest import text

import quorvel


def test_what_nobody_answers_is_closed_and_told(maps):
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
    # It is told once: the next call begins afresh.
    maps.app.OnForm = maps.person
    assert maps.drop_task(page).Name == "AB01"


def test_a_question_that_nobody_answers_gets_no(maps):
    page = maps.new_map("AB Order entry")

    def letters_missing(form):
        form["txtTaskIdLetters"].Text = ""
        form["BtnOK"].Click()
        form.Close()

    maps.app.OnForm = letters_missing
    with pytest.raises(quorvel.Unanswered) as unanswered:
        maps.drop_task(page)
    asked = [asked.text for asked in maps.app.Asked if asked.kind == "message"]
    assert asked and asked[0] in str(unanswered.value)
    heard = []
    maps.app.OnMessage = lambda *box: heard.append(box) or "ok"
    maps.drop_task(page)
    assert heard[0] == (asked[0], "Quorvel", heard[0][2], heard[0][3])
    maps.app.OnMessage = lambda *box: "Maybe"
    with pytest.raises(ValueError, match="Maybe"):
        maps.drop_task(page)
    maps.app.OnMessage = lambda *box: None
    with pytest.raises(quorvel.Unanswered):
        maps.drop_task(page)


def test_defaults_accept_every_form_as_it_opens(tmp_path):
    app = quorvel.Application(profile=tmp_path, answers="defaults")
    doc = app.Documents.Add(quorvel.template_path())
    masters = app.Documents.Open(quorvel.stencil_path()).Masters
    page = doc.Pages(1)
    page.Name = "AB Order entry"
    assert page.Drop(masters("Task"), 3, 6).Name == "AB01"
    assert [asked.text for asked in app.Asked] == ["frmTaskIdSuggestion"]


def test_controls_take_what_a_user_does(maps):
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
    # What a script keeps of a dialog does not reach past its end.
    assert not seen["form"].IsOpen and seen["form"].Name == "frmTaskIdSuggestion"
    for act in (lambda: seen["form"].Caption, lambda: seen["control"].Text, lambda: seen["form"]["BtnOK"]):
        with pytest.raises(quorvel.HostError, match="closed"):
            act()
