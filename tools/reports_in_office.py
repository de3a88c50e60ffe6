"""Opens reports with LibreOffice and compares its totals: quorvel run tools/reports_in_office.py [DRAWING [FOLDER]]

Writes each report of the drawing (the sample map without one) as a workbook, takes the results out of its formulas, so
that LibreOffice Calc must compute them, and compares what it shows in the rows of totals with the .csv of the same
report. A .csv is opened as well, and must show the same rows. The files are kept when a folder is given. Needs
libreoffice-calc; no test runs it. Ends with 1 when something differs.
"""

import csv
import re
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

import quorvel

SAMPLE = Path(quorvel.template_path()).parent / "Samples" / "Order handling.vsdx"
FORMULA = re.compile(r"<f>([^<]*)</f><v>[^<]*</v>")
# Comma, quotation mark, UTF-8, and cells as they are shown.
UTF8_CSV = "--infilter=csv:44,34,76"
CSV_FILTER = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false"


def without_results(workbook, target):
    """A copy of the workbook whose formulas have no results; returns the formulas."""
    formulas = []
    with zipfile.ZipFile(workbook) as source, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as copy:
        for name in source.namelist():
            content = source.read(name)
            if name == "xl/worksheets/sheet1.xml":
                text = content.decode()
                formulas += FORMULA.findall(text)
                content = FORMULA.sub(r"<f>\1</f>", text).encode()
            copy.writestr(name, content)
    return formulas


def opened(file, folder):
    """The rows that LibreOffice shows of the file."""
    profile = f"-env:UserInstallation={(folder / 'office').resolve().as_uri()}"
    shown = folder / "shown"
    encoding = [UTF8_CSV] if file.suffix == ".csv" else []
    command = ["soffice", profile, "--headless", *encoding, "--convert-to", CSV_FILTER, "--outdir", shown, file]
    subprocess.run(command, check=True, capture_output=True)
    return rows(shown / f"{file.stem}.csv")


def rows(file):
    with open(file, newline="", encoding="utf-8-sig") as source:
        return list(csv.reader(source))


def number(text):
    """The number of a cell, without the label of a total."""
    found = re.fullmatch(r"(?:(?:Count|Mean|Min|Max): )?(-?\d+(?:\.\d+)?)", text)
    return float(found[1]) if found else None


def is_same(ours, shown):
    a, b = number(ours), number(shown)
    if a is None or b is None:
        return ours == shown
    decimals = len(shown.partition(".")[2])
    return abs(a - b) <= 0.5000001 * 10**-decimals


def main(drawing, folder):
    doc = quorvel.Application().Documents.Open(drawing)
    wrong = 0
    for definition in quorvel.report_definitions(doc):
        name = re.sub(r"\W+", "_", definition.title)
        table, workbook, bare = folder / f"{name}.csv", folder / f"{name}.xlsx", folder / f"{name}_bare.xlsx"
        for file in (table, workbook):
            quorvel.report(doc, definition.number, file)
        formulas = without_results(workbook, bare)
        ours, in_workbook, in_table = rows(table), opened(bare, folder), opened(table, folder)
        differing = [
            f"  {kind}, row {i + 1}: {a} is shown as {b}"
            for kind, shown in (("workbook", in_workbook), ("csv", in_table))
            for i, (a, b) in enumerate(zip(ours, shown, strict=False))
            if len(a) != len(b) or not all(map(is_same, a, b))
        ]
        if not len(ours) == len(in_workbook) == len(in_table):
            differing.append(f"  {len(ours)} rows, {len(in_workbook)} in the workbook, {len(in_table)} in the csv")
        total = [each for each in (in_workbook[-1] if formulas else []) if each]
        print(f"{definition.title}: {len(ours) - 1} rows, {len(formulas)} formulas, {len(differing)} differences; {total}")
        print(*differing, sep="\n", end="\n" if differing else "")
        wrong += len(differing)
    return 1 if wrong else 0


if __name__ == "__main__":
    drawing = sys.argv[1] if len(sys.argv) > 1 else str(SAMPLE)
    if len(sys.argv) > 2:
        kept = Path(sys.argv[2])
        kept.mkdir(parents=True, exist_ok=True)
        sys.exit(main(drawing, kept))
    with tempfile.TemporaryDirectory() as temporary:
        sys.exit(main(drawing, Path(temporary)))
