"""A drawing read as a map: `quorvel info --json` and Map agree on every drawing."""

import json
import os
import random
import re
import subprocess
from pathlib import Path

import pytest
from conftest import SAMPLE, SOURCE

import quorvel

DRAWINGS = sorted((SOURCE / "tests" / "data" / "drawings").rglob("*.v[sd]*x")) + [SAMPLE]
# More random maps than a test run needs can be tried with QUORVEL_RANDOM_MAPS=200.
RANDOM_MAPS = int(os.environ.get("QUORVEL_RANDOM_MAPS", "10"))


def read_by_the_command(file):
    said = subprocess.run([os.environ["QUORVEL_PROGRAM"], "info", "--json", file], capture_output=True, check=True).stdout
    found = {"tasks": [], "links": [], "connectors": [], "hyperlinks": []}
    read = json.loads(said)
    for page in read["pages"]:
        name = page["name"]
        for task in page["tasks"]:
            roles = tuple(task["supportingRoles"])
            found["tasks"].append((name, task["shapeId"], task["id"], task["description"], roles, task["notes"],
                                  task["linkedTask"] or "", page["background"]))  # fmt: skip
        for link in page["links"]:
            ends = [(end["kind"], end["label"], end["shapeId"]) if (end := link[which]) else ("loose", "", 0)
                    for which in ("from", "to")]  # fmt: skip
            found["links"].append((name, link["shapeId"], link["description"], *ends))
        for connector in page["connectors"]:
            address = (connector["address"] or "", connector["subAddress"] or "")
            found["connectors"].append((name, connector["shapeId"], connector["shownId"], *address))
        for link in page["hyperlinks"]:
            found["hyperlinks"].append((name, link["shapeId"], link["on"], link["description"], link["subAddress"]))
    return found | {"roles": read["roles"]}


def read_by_map(doc):
    read = quorvel.Map(doc)
    return {
        "tasks": [(t.page, t.shape.ID, t.id, t.description, t.supporting_roles, t.notes, t.sub_task, t.on_background)
                  for t in read.tasks],
        "links": [(k.page, k.shape.ID, k.description, tuple(k.start), tuple(k.end)) for k in read.links],
        "connectors": [(c.page, c.shape.ID, c.shown_id, c.address, c.sub_address) for c in read.connectors],
        "hyperlinks": [(h.page, h.shape.ID, h.owner, h.description, h.sub_address) for h in read.hyperlinks],
        "roles": read.role_names,
    }  # fmt: skip


@pytest.mark.parametrize("file", DRAWINGS, ids=lambda file: file.name)
def test_the_command_and_a_script_read_the_same_of_a_drawing(file, tmp_path):
    found = read_by_the_command(file)
    assert read_by_map(quorvel.Application(profile=tmp_path).Documents.Open(file)) == found
    if file == SAMPLE:
        assert len(found["tasks"]) == 16


def scatter(maps, chance):
    """A map of Tasks, links and other shapes, grouped, glued and on background pages at random."""
    pages = [maps.new_map("AB One"), maps.doc.Pages.Add()]
    pages[1].Name = "CD Two"
    for page in pages:
        shapes = [page.DrawRectangle(1, 1, 2, 2)]
        for _ in range(chance.randrange(2, 6)):
            kind = chance.choice(["Task", "Task", "Process Connector"])
            shapes.append(maps.drop(page, kind, chance.uniform(1, 7), chance.uniform(1, 9)))
        for _ in range(chance.randrange(1, 4)):
            link = maps.drop(page, "Task Link")
            for end in ("BeginX", "EndX"):
                if chance.random() < 0.8:
                    link.Cells(end).GlueTo(chance.choice(shapes).Cells("PinX"))
        for shape in shapes[1:]:
            if chance.random() < 0.3:
                shape.Hyperlinks.Add().SubAddress = chance.choice(["AB One/AB01", "CD Two/CD01", "nowhere"])
            if shape.CellExists("Prop.Notes") and chance.random() < 0.3:
                shape.Cells("Prop.Notes").FormulaForce = '"two\nlines & <more>"'
            if shape.CellExists("Prop.SupportingRole_1") and chance.random() < 0.4:
                shape.Cells("Prop.SupportingRole_1").FormulaForce = '"Clerk"'
        if chance.random() < 0.3:
            window = maps.app.ActiveWindow
            window.Page = page
            window.DeselectAll()
            for shape in chance.sample(shapes, 2):
                window.Select(shape, 2)
            window.Selection.Group()
    if chance.random() < 0.3:
        # Any change of a page asks about the links to it.
        maps.app.OnMessage = lambda *asked: "Yes"
        pages[1].Background = True


@pytest.mark.parametrize("seed", range(RANDOM_MAPS))
def test_a_random_map_reads_the_same_from_its_file_as_from_memory(seed, maps, tmp_path):
    scatter(maps, random.Random(seed))
    in_memory = read_by_map(maps.doc)
    assert any(in_memory.values())
    for ending in ("vsdx", "vdx"):
        file = tmp_path / f"map.{ending}"
        maps.doc.SaveAs(str(file))
        assert read_by_the_command(file) == in_memory, f"{ending}, seed {seed}"


def test_an_end_has_the_kind_of_the_shape_that_shows_the_id(maps):
    page = maps.new_map("OH Orders")
    task, connector, box = maps.drop_task(page, 2), maps.drop(page, "Process Connector", 5), page.DrawRectangle(7, 1, 8, 2)
    connector.Cells("Prop.Connecting_TaskID").FormulaForce = '"OH01"'
    ends = []
    for target in (task, connector, box):
        link = maps.drop(page, "Task Link", 4)
        link.Cells("EndX").GlueTo(target.Cells("PinX"))
        ends.append((*quorvel.Map(maps.doc).links[-1].end[:2], quorvel.Map(maps.doc).links[-1].start.kind))
    link.Cells("EndX").GlueTo(task.Shapes(2).Cells("PinX"))
    ends.append((*quorvel.Map(maps.doc).links[-1].end[:2], "loose"))
    task_end = ("task", "OH01", "loose")
    assert ends == [task_end, ("connector", "OH01", "loose"), ("shape", box.Name, "loose"), task_end]

def test_each_task_link_and_connector_has_a_unique_id_of_its_own(maps, tmp_path):
    page = maps.new_map("OH Orders")
    made = [maps.drop(page, master) for master in ("Task", "Task", "Task Link", "Process Connector")]
    ids = [shape.UniqueID() for shape in made]
    assert all(len(each) == 38 for each in ids) and len(set(ids)) == 4
    assert page.DrawRectangle(1, 1, 2, 2).UniqueID() == ""
    copy = made[0].Duplicate()
    assert copy.UniqueID() and copy.UniqueID() not in ids
    made[0].Cells("Prop.Task_Description").FormulaForce = '"Another"'
    before = {task.shape.ID: task.unique_id for task in quorvel.Map(maps.doc).tasks}
    for ending in ("vdx", "vsdx"):
        maps.doc.SaveAs(str(tmp_path / f"map.{ending}"))
        opened = quorvel.Application(profile=tmp_path).Documents.Open(tmp_path / f"map.{ending}")
        assert {task.shape.ID: task.unique_id for task in quorvel.Map(opened).tasks} == before
    made[3].UniqueID(quorvel.constants.visDeleteGUID)
    assert made[3].UniqueID() == ""
    maps.app.Undo()
    assert made[3].UniqueID() == ids[3]


def test_pictures_name_the_shapes_of_a_map_and_keep_their_ids_apart(maps, tmp_path):
    page = maps.new_map("OH Orders")
    task, link, connector = (maps.drop(page, master) for master in ("Task", "Task Link", "Process Connector"))
    page.DrawRectangle(1, 1, 2, 2)
    second = maps.doc.Pages.Add()
    drawn = []
    for each in (page, second):
        each.DrawRectangle(4, 1, 5, 2).Cells("FillPattern").FormulaForce = "3"  # a hatch is defined by an id
    for each in (page, second):
        each.Export(str(tmp_path / "page.svg"))
        drawn.append((tmp_path / "page.svg").read_text())
    found = re.findall(r'<g data-shape="\d+" data-name="[^"]*" data-class="([^"]*)"(?: data-task-id="([^"]*)")?'
                       r' data-unique-id="([^"]*)"', drawn[0])  # fmt: skip
    assert sorted(found) == sorted([("task", "OH01", task.UniqueID()), ("task-link", "", link.UniqueID()),
                                    ("process-connector", "", connector.UniqueID())])  # fmt: skip
    ids = [set(re.findall(r' id="([^"]*)"', text)) for text in drawn]
    assert ids[0] and ids[1] and not ids[0] & ids[1]
