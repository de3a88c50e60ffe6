"""Reports: the shipped definitions on the sample map, definitions of a drawing's own, and the Reports command."""

import csv
import re
import zipfile
from collections import Counter

import pytest
from conftest import SAMPLE, SOURCE

import quorvel

MINUTES = {"es": 1 / 60, "em": 1, "eh": 60, "ed": 1440, "ew": 10080}


def minutes(task):
    return float(task.completion_time.split()[0]) * MINUTES[task.completion_time[-3:-1]] if task.completion_time else 0


def entries(text):
    return [entry.strip() for entry in text.split(";") if entry.strip()]


class Table:
    """A report as it was written, its totals apart."""

    def __init__(self, doc, definition, folder, page=""):
        file = folder / "report.csv"
        quorvel.report(doc, definition, file, page)
        with open(file, newline="", encoding="utf-8-sig") as source:
            self.titles, *rows = csv.reader(source)
        is_total = [any(cell.endswith(" total") or cell == "Total" for cell in row[:3]) for row in rows]
        self.rows = [row for row, total in zip(rows, is_total, strict=True) if not total]
        self.totals = [row for row, total in zip(rows, is_total, strict=True) if total]

    def column(self, title):
        return [row[self.titles.index(title)] for row in self.rows]


@pytest.fixture
def sample(tmp_path):
    app = quorvel.Application(profile=tmp_path)
    app.OnMessage = lambda *box: "Yes" if box[2] == "YesNo" else "OK"
    return app.Documents.Open(SAMPLE)


def natural(text):
    return [(piece.isdigit(), int(piece) if piece.isdigit() else piece) for piece in re.split(r"(\d+)", text) if piece]


def test_the_shipped_reports_of_the_sample_say_what_the_map_says(sample, tmp_path):
    read = quorvel.Map(sample)
    tasks = sorted(read.tasks, key=lambda task: natural(task.id))
    every_role = {role for task in tasks for role in (task.responsible_role, *task.supporting_roles) if role}

    table = Table(sample, "Task list", tmp_path)
    assert table.column("ID") == [task.id for task in tasks]
    assert [float(cell or 0) for cell in table.column("Time (minutes)")] == pytest.approx([minutes(t) for t in tasks])
    assert table.totals[0][1] == str(len(tasks))
    assert float(table.totals[0][5]) == pytest.approx(sum(map(minutes, tasks)))

    table = Table(sample, "Tasks by role", tmp_path)
    done = [(task.responsible_role, "Responsible", task.id) for task in tasks if task.responsible_role]
    done += [(role, "Supporting", task.id) for task in tasks for role in task.supporting_roles]
    done += [("", "", task.id) for task in tasks if not task.responsible_role and not task.supporting_roles]
    assert sorted(map(tuple, (row[:3] for row in table.rows))) == sorted(done)
    assert {row[0]: int(row[3]) for row in table.totals} == {
        f"{role or '(none)'} total": n for role, n in Counter(role for role, _, _ in done).items()
    }

    table = Table(sample, "Role matrix", tmp_path)
    assert set(table.titles[2:]) == every_role and table.column("ID") == [task.id for task in tasks]
    for task, row in zip(tasks, table.rows, strict=True):
        expected = {role: "S" for role in task.supporting_roles} | {task.responsible_role: "R"}
        assert {t: cell for t, cell in zip(table.titles[2:], row[2:], strict=True) if cell} == expected

    table = Table(sample, "Times by role and frequency", tmp_path)
    assert sorted(table.column("ID"), key=natural) == [task.id for task in tasks]
    sums = Counter()
    for task in tasks:
        sums[f"{task.responsible_role} total"] += minutes(task)
    found = {row[0]: float(row[4]) for row in table.totals if row[0].endswith(" total")}
    assert found == pytest.approx(dict(sums))
    assert float(table.totals[-1][5]) == pytest.approx(sum(map(minutes, tasks)) / 60)

    table = Table(sample, "Guidelines and resources used", tmp_path)
    used = [("Guideline", entry, task.id) for task in tasks for entry in entries(task.guidelines)]
    used += [("Resource", entry, task.id) for task in tasks for entry in entries(task.resources)]
    assert sorted(map(tuple, (row[:3] for row in table.rows))) == sorted(used)

    table = Table(sample, "Links and connectors", tmp_path)
    assert Counter(table.column("Kind")) == {"Task Link": len(read.links), "Process Connector": len(read.connectors)}
    assert set(table.column("Target exists")) == {"Yes"}
    assert len(Table(sample, "Hyperlinks", tmp_path).rows) == len(read.hyperlinks)
    lacking = [t.id for t in tasks if not (t.responsible_role and t.frequency and t.completion_time)]
    assert Table(sample, "Missing details", tmp_path).column("ID") == lacking


def test_a_report_follows_the_drawing(sample, tmp_path):
    connector = next(each for each in quorvel.Map(sample).connectors if not each.address)
    connector.shape.Hyperlinks(0).SubAddress = f"{connector.page}/Nothing"
    table = Table(sample, "Links and connectors", tmp_path)
    assert Counter(table.column("Target exists"))["No"] == 1
    first = sample.Pages(1).Name
    on_page = [task.id for task in quorvel.Map(sample).tasks if task.page == first]
    assert Counter(Table(sample, "Task list", tmp_path, page=first).column("ID")) == Counter(on_page)


FILTERS = {
    "<where value='Prop.Task_Completion_Time' as='duration' unit='minutes' is='more' to='10'/>": lambda t: minutes(t) > 10,
    "<where value='Prop.Task_Completion_Time' as='duration' unit='hours' is='at-most' to='0.25'/>": lambda t: 0 < minutes(t) <= 15,
    "<where value='id' is='less' to='oh10'/>": lambda t: natural(t.id) < natural("OH10"),
    "<where value='supporting-roles' is='not-empty'/><where value='description' is='contains' to='ORDER'/>":
        lambda t: t.supporting_roles and "order" in t.description.lower(),
    "<any><where value='id' is='equal' to='OH01'/><all><where value='id' is='not-equal' to='OH02'/>"
    "<where value='page' is='begins-with' to='oh'/></all></any>":
        lambda t: t.id != "OH02" and t.page.lower().startswith("oh"),
}  # fmt: skip


@pytest.mark.parametrize("conditions", FILTERS)
def test_a_filter_leaves_what_fits(conditions, sample, tmp_path):
    definition = tmp_path / "filter.xml"
    definition.write_text(
        f"<report title='F'><scope shapes='tasks'/><filter>{conditions}</filter><columns><column title='ID' value='id'/>"
        "</columns><sort value='id' order='descending'/></report>"
    )
    fitting = [task.id for task in quorvel.Map(sample).tasks if FILTERS[conditions](task)]
    assert 0 < len(fitting) < len(quorvel.Map(sample).tasks)
    assert Table(sample, definition, tmp_path).column("ID") == sorted(fitting, key=natural, reverse=True)


def test_a_workbook_has_numbers_and_formulas_and_no_text_becomes_one(sample, tmp_path):
    quorvel.Map(sample).task("OH01").shape.Cells("Prop.Notes").FormulaForce = '"=HYPERLINK(""http://x"")"'
    quorvel.report(sample, "Task list", tmp_path / "report.xlsx")
    with zipfile.ZipFile(tmp_path / "report.xlsx") as book:
        sheet = book.read("xl/worksheets/sheet1.xml").decode()
        assert "=HYPERLINK(" in book.read("xl/sharedStrings.xml").decode()
    last = 1 + len(quorvel.Map(sample).tasks)
    assert re.findall("<f>(.*?)</f>", sheet) == [f"SUBTOTAL(3,B2:B{last})", f"SUBTOTAL(9,F2:F{last})"]
    assert f'<autoFilter ref="A1:H{last}"/>' in sheet and 'state="frozen"' in sheet
    assert re.search(r'<c r="F2" s="\d+"><v>[\d.]+</v></c>', sheet)


def test_a_new_map_has_the_shipped_definitions_and_its_own_come_first(maps, tmp_path):
    maps.new_map("OH Orders")
    installed = sorted((SOURCE / "data" / "Reports").iterdir())
    cells = [maps.doc.DocumentSheet.Cells(f"User.visPropRpt{n}").ResultStr(0) for n in range(1, len(installed) + 1)]
    assert cells == [file.read_text() for file in installed], "run tools/art/make_stencil.py"
    assert all(not each.problem for each in quorvel.report_definitions(maps.doc))
    sheet = maps.doc.DocumentSheet
    sheet.Cells("User.visPropRpt2").FormulaForce = '"<report title=""Broken"">"'
    own = "<report title='Mine'><scope shapes='shapes'/><columns><column title='A' value='Prop.A'/></columns></report>"
    sheet.Cells("User.visPropRpt1").FormulaForce = f'"{own}"'
    assert quorvel.report_definitions(maps.doc)[0].title == "Mine"
    broken = quorvel.report_definitions(maps.doc)[1]
    assert broken.number == 2 and "row User.visPropRpt2 can't be used: it is not well-formed" in broken.problem
    with pytest.raises(quorvel.HostError, match="visPropRpt2"):
        quorvel.report(maps.doc, 2, tmp_path / "a.csv")
    box = maps.doc.Pages(1).DrawRectangle(1, 1, 2, 2)
    box.AddNamedRow(243, "A")
    box.Cells("Prop.A").FormulaForce = '"-5+x"'
    assert Table(maps.doc, "mine", tmp_path).rows == [["'-5+x"]]


def test_the_reports_command_writes_the_chosen_report_and_opens_it(sample, tmp_path):
    app = sample.Application
    answers = {"file": tmp_path / "tasks.html", "report": "Role matrix"}
    shown, opened = [], []

    def choose(form):
        form["lstReports"].Select(answers["report"])
        shown.append((form.Name, form["lblDescription"].Caption))
        form["btnOK"].Click()

    app.OnForm, app.OnFileDialog, app.OnShellOpen = choose, lambda *_: answers["file"], lambda t: opened.append(t) or True
    items = app.CommandBars.FindControl(50244).Controls
    run = next(item for item in items if item.Id == 8).Execute
    run()
    assert shown == [("frmReports", "Tasks down, roles across: R is responsible, S supports. "
                                    "The last row counts the Tasks of each role.")]  # fmt: skip
    assert opened == [str(answers["file"])] and "<h1>Role matrix</h1>" in answers["file"].read_text()
    assert sample.Saved
    # No to the question whether to replace it, then a name without a known ending.
    app.OnMessage = lambda text, *_: shown.append(text) or "No"
    answers["report"] = "Task list"
    run()
    answers["file"] = tmp_path / "tasks.txt"
    app.OnMessage = lambda text, *_: shown.append(text) or "OK"
    run()
    assert "exists already" in shown[2] and "no ending of a report" in shown[4] and len(opened) == 1
    assert "<h1>Role matrix</h1>" in (tmp_path / "tasks.html").read_text()
    # The drawing is closed while its list is open.
    app.OnForm = lambda form: (sample.Close(), form["btnOK"].Click())
    run()
    assert len(opened) == 1
    with pytest.raises(quorvel.HostError, match="no active drawing"):
        run()
