"""Opens every drawing of a folder with the add-in connected and saves it as .vsdx into another folder.

    quorvel run examples/upgrade_folder.py OLD NEW

The add-in brings a map up to date when it is opened; drawings that are no maps only change their format. What a drawing
asks is answered with Yes and printed. A drawing that can't be read is reported, and the others are done.
"""

import os
import sys

import quorvel

DRAWINGS = (".vsdx", ".vdx")


def version_of(doc):
    sheet = doc.DocumentSheet
    cell = "User.Quorvel_dll_Version"
    return sheet.Cells(cell).ResultStr(0) if sheet.CellExists(cell) else "none"


def upgrade(source, target):
    app = quorvel.Application(answers="defaults")
    doc = app.Documents.Open(source)
    doc.SaveAs(target)
    questions = [asked.text for asked in app.Asked]
    kind = "map" if "quorvel" in doc.Template.lower() else "drawing"
    shapes = sum(len(page.Shapes) for page in doc.Pages)
    return f"{kind}, {len(doc.Pages)} pages, {shapes} shapes, version {version_of(doc)}", questions


def main(old, new):
    os.makedirs(new, exist_ok=True)
    failed = 0
    for name in sorted(os.listdir(old)):
        stem, ending = os.path.splitext(name)
        if ending.lower() not in DRAWINGS:
            continue
        try:
            line, questions = upgrade(os.path.join(old, name), os.path.join(new, stem + ".vsdx"))
        except quorvel.HostError as error:
            failed += 1
            line, questions = error.reason, []
        print(f"{name}: {line}")
        for text in questions:
            print(f"  asked: {text}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
