"""Shows which hyperlinks of a map another program keeps: quorvel run tools/links_in_office.py [FOLDER]

Saves a map with a link of each kind on a box, a Task, a member of a group and a line, lets LibreOffice Draw make a PDF
of it, and counts the links that arrive there. Two files are for comparison: our own PDF of the map, and a drawing in
LibreOffice's format, which shows that its PDFs have links at all. The files are kept when a folder is given. Needs
libreoffice-draw; no test runs it.

LibreOffice 7.4 keeps no link of a map: libvisio 0.1.7, which reads the drawings for it, does not read hyperlinks.
"""

import re
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

import quorvel

LINKS = {  # kind: address, sub-address, and what a PDF has for it
    "Task": ("", "Second page/Target", ""),
    "drawing": ("other map.vsdx", "Page-1", "other%20map.vsdx#Page-1"),
    "document": ("notes #1.doc", "", "notes%20%231.doc"),
    "program": ("/opt/tools/calc.exe", "", "file:///opt/tools/calc.exe"),
    "web page": ("https://example.org/a b", "part", "https://example.org/a%20b#part"),
    "mail": ("mailto:someone@example.org", "", "mailto:someone@example.org"),
}
DRAWINGS = (".vsdx", ".vdx")

OWN_DRAWING = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
  xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
  xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0" xmlns:xlink="http://www.w3.org/1999/xlink"
  office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.graphics">
<office:body><office:drawing><draw:page draw:name="p"><draw:a xlink:href="mailto:someone@example.org">
<draw:rect svg:x="1cm" svg:y="1cm" svg:width="3cm" svg:height="1cm"/></draw:a></draw:page></office:drawing></office:body>
</office:document>
"""
SHAPES = 4  # that have a link of each kind


def add_link(shape, address, place):
    link = shape.Hyperlinks.Add()
    link.Description, link.Address, link.SubAddress = "A link", address, place


def make_map(folder):
    """The drawing in each format, and our PDF of it."""
    app = quorvel.Application(answers="defaults", profile=folder)
    app.OnMessage = lambda text, title, buttons, icon: "OK" if buttons == "OK" else "Yes"
    doc = app.Documents.Add(quorvel.template_path())
    page, other = doc.Pages(1), doc.Pages.Add()
    page.Name, other.Name = "First page", "Second page"
    other.DrawRectangle(3, 3, 5, 4).Name = "Target"
    masters = app.Documents.Open(quorvel.stencil_path()).Masters
    for row, (kind, (address, place, _)) in enumerate(LINKS.items()):
        y = 7.6 - row * 1.1
        box = page.DrawRectangle(0.3, y - 0.2, 1.3, y + 0.2)
        box.Text = kind
        add_link(box, address, place)
        task = page.Drop(masters("Task"), 3, y)
        add_link(task, address, place)
        window = app.ActiveWindow
        window.DeselectAll()
        for x in (4.8, 5.8):
            window.Select(page.DrawRectangle(x, y - 0.2, x + 0.8, y + 0.2), quorvel.constants.visSelect)
        add_link(window.Selection.Group().Shapes(1), address, place)
        add_link(page.DrawLine(7, y - 0.2, 8, y + 0.2), address, place)
    files = [folder / f"map{ending}" for ending in DRAWINGS]
    for file in files:
        doc.SaveAs(file)
    exported = folder / "exported.pdf"
    doc.ExportAsFixedFormat(quorvel.constants.visFixedFormatPDF, exported)
    return files, exported


def targets(pdf):
    """Addresses of the links in a PDF, and the number of those that lead to a place in it."""
    data = pdf.read_bytes()
    texts = [data]
    for stream in re.finditer(rb"stream\r?\n(.*?)\r?\nendstream", data, re.S):
        try:
            texts.append(zlib.decompress(stream.group(1)))
        except zlib.error:
            continue
    everything = b"\n".join(texts)
    uris = [re.sub(rb"\\(.)", rb"\1", uri).decode("latin-1") for uri in re.findall(rb"/URI ?\(((?:\\.|[^\\)])*)\)", everything)]
    links = len(re.findall(rb"/Subtype ?/Link\b", everything))
    return uris, links - len(uris)


def report(name, pdf):
    uris, places = targets(pdf)
    print(f"{name}:")
    for kind, (address, _, expected) in LINKS.items():
        count = sum(uri.endswith(expected) for uri in uris) if address else places
        print(f"  {kind:10}{count:3}")


def pdf_by_office(file, folder):
    profile = f"-env:UserInstallation={(folder / 'profile').as_uri()}"
    made = folder / "by_office" / f"{file.stem}{file.suffix.replace('.', '-')}.pdf"
    command = ["soffice", profile, "--headless", "--convert-to", "pdf:draw_pdf_Export", "--outdir", made.parent, file]
    subprocess.run(command, check=True, capture_output=True)
    (made.parent / f"{file.stem}.pdf").rename(made)
    return made


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    drawings, exported = make_map(folder)
    own = folder / "own.fodg"
    own.write_text(OWN_DRAWING, encoding="utf-8")
    print(f"How many links of each kind arrive; {SHAPES} shapes of the map have one.")
    report("Our PDF", exported)
    for file in (*drawings, own):
        report(f"{file.name} through LibreOffice", pdf_by_office(file, folder))


if __name__ == "__main__":
    if len(sys.argv) > 1:
        main(Path(sys.argv[1]).resolve())
    else:
        with tempfile.TemporaryDirectory() as temporary:
            main(Path(temporary))
