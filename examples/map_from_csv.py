"""Makes a map from a table of steps.

    quorvel run examples/map_from_csv.py examples/steps.csv requests.vsdx

Each row is a Task: its page, a name for the step, what is done, by whom, with whose support (names divided
by ";"), how many minutes it takes, how often, and the steps that follow it (divided by ";").
"""

import csv
import sys

import quorvel

ACROSS, DOWN = 2.7, 2.8  # inches from pin to pin; the space under a Task is for its details
FIRST_X, FIRST_Y, IN_A_ROW = 1.4, 6.35, 4


def quoted(text):
    return '"' + text.replace('"', '""') + '"'


def write(shape, cell, text):
    if text:
        shape.Cells(cell).FormulaForce = quoted(text)


def make_map(app, rows):
    doc = app.Documents.Add(quorvel.template_path())
    masters = app.Documents.Open(quorvel.stencil_path()).Masters
    roles = {name for row in rows for name in [row["role"], *row["supporting"].split(";")] if name}
    write(doc.DocumentSheet, "User.RoleNames", "".join(";" + name for name in sorted(roles)))

    tasks = {}
    for name in dict.fromkeys(row["page"] for row in rows):
        page = doc.Pages(1) if not tasks else doc.Pages.Add()
        page.Name = name
        here = [row for row in rows if row["page"] == name]
        for place, row in enumerate(here):
            x = FIRST_X + place % IN_A_ROW * ACROSS
            task = page.Drop(masters("Task"), x, FIRST_Y - place // IN_A_ROW * DOWN)
            write(task, "Prop.Task_Description", row["description"])
            write(task, "Prop.Responsible_Role", row["role"])
            for number, support in enumerate(filter(None, row["supporting"].split(";")), start=1):
                write(task, f"Prop.SupportingRole_{number}", support)
            if row["minutes"]:
                task.Cells("Prop.Task_Completion_Time").Formula = f"{row['minutes']} em."
            write(task, "Prop.Frequency_Of_Occurrence", row["frequency"])
            tasks[row["step"]] = task
        for row in here:
            for step in filter(None, row["next"].split(";")):
                link = page.Drop(masters("Task Link"), FIRST_X, 0.5)
                link.Cells("BeginX").GlueTo(tasks[row["step"]].Cells("PinX"))
                link.Cells("EndX").GlueTo(tasks[step].Cells("PinX"))
    return doc


def main(table, target):
    with open(table, newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    # The first Task of a page asks for its letters: those suggested by the page's name are used.
    app = quorvel.Application(answers="defaults")
    doc = make_map(app, rows)
    doc.SaveAs(target)
    for task in quorvel.Map(doc).tasks:
        print(task.id, task.description)


if __name__ == "__main__":
    main(*sys.argv[1:])
