"""Following hyperlinks from a script: to a Task, and out of the drawing with the script's consent."""

import pytest

import quorvel


def test_a_link_to_a_task_shows_and_selects_it(maps, tmp_path):
    page = maps.new_map("AB Order entry")
    task = maps.drop_task(page)
    other = maps.doc.Pages.Add()
    maps.doc.SaveAs(tmp_path / "map.vsdx")
    link = other.DrawRectangle(1, 1, 2, 2).AddHyperlink()
    link.SubAddress, link.ExtraInfo = "AB Order entry/AB01", "zoom=150"
    other.Activate()
    maps.doc.Saved = True
    link.Follow()
    window = maps.app.ActiveWindow
    assert (window.Page, list(window.Selection), window.Zoom) == (page, [task], 1.5)
    assert maps.doc.Saved
    window.ViewFit = quorvel.constants.visFitWidth
    assert window.Zoom == -2
    with pytest.raises(quorvel.HostError, match="0.05 to 9.99"):
        window.Zoom = 20
    link.SubAddress = "AB Order entry/AB09"
    with pytest.raises(quorvel.HostError, match='no shape "AB09"') as refused:
        link.Follow()
    assert refused.value.call == "Hyperlink.Follow"
    maps.doc.FollowHyperlink("", "AB Order entry", new_window=True)
    assert len(maps.app.Windows) == 2 and maps.app.ActiveWindow.Page == page
    maps.app.ActiveWindow.Close()
    assert maps.app.ActiveWindow == window


def test_other_targets_are_opened_by_the_script(maps, tmp_path):
    maps.new_map()
    maps.doc.SaveAs(tmp_path / "map.vsdx")
    (tmp_path / "tool.sh").write_text("")
    with pytest.raises(quorvel.HostError, match="could not be opened"):
        maps.doc.FollowHyperlink("https://example.org", "")
    opened = []
    maps.app.OnShellOpen = opened.append
    maps.doc.FollowHyperlink("https://example.org", "mark")
    with pytest.raises(quorvel.Unanswered, match="starts the program"):
        maps.doc.FollowHyperlink("tool.sh", "")
    maps.app.OnMessage = lambda text, title, buttons, icon: "Yes"
    maps.doc.FollowHyperlink("tool.sh", "")
    assert opened == ["https://example.org#mark", str(tmp_path / "tool.sh")]
    assert ("open", opened[-1]) == maps.app.Asked[-1]
    maps.app.OnShellOpen = lambda target: False
    with pytest.raises(quorvel.HostError, match="could not be opened"):
        maps.doc.FollowHyperlink("mailto:a@example.org", "")
    maps.app.OnShellOpen = lambda target: 1 / 0
    with pytest.raises(ZeroDivisionError):
        maps.doc.FollowHyperlink("mailto:a@example.org", "")


def test_defaults_start_no_program(tmp_path):
    app = quorvel.Application(profile=tmp_path, answers="defaults")
    opened = []
    app.OnShellOpen = opened.append
    doc = app.Documents.Add("")
    doc.SaveAs(tmp_path / "map.vsdx")
    (tmp_path / "tool.exe").write_text("")
    with pytest.raises(quorvel.Unanswered, match=r"starts the program.* \[No, because it was not answered\]"):
        doc.FollowHyperlink("tool.exe", "")
    app.OnMessage = lambda *box: "Yes"
    doc.FollowHyperlink("tool.exe", "")
    assert opened == [str(tmp_path / "tool.exe")]
