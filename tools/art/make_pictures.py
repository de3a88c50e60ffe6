"""Makes the pictures of the install folder from drawings held here as SVG: python3 tools/art/make_pictures.py [folder].

Needs rsvg-convert, ImageMagick's convert and the font Liberation Sans.
"""

import pathlib
import subprocess
import sys

from document_part import INK, TASK_FILL, TEXT
from masters import UNLINKED_INK

DATA_FOLDER = pathlib.Path(__file__).resolve().parents[2] / "data"

# The colour that toolbars treat as transparent; in the order of a colour number, blue first, it is DCDCD4.
TOOLBAR_BACKGROUND = "#D4DCDC"

GUIDELINE_COLOR, RESOURCE_COLOR, ROLE_COLOR, LINK_COLOR = "#2F6DB5", "#C26A00", "#2C8557", "#1358B8"
GOLD = "#E9A320"

# --- Drawings on a field of 24 by 24 ----------------------------------------------------------------------------------

GUIDELINES = f"""
  <rect x="4.5" y="3.5" width="15" height="18" rx="1.5" fill="#fff" stroke="{GUIDELINE_COLOR}" stroke-width="2"/>
  <rect x="8.5" y="1.5" width="7" height="4" rx="1" fill="{GUIDELINE_COLOR}"/>
  <g fill="none" stroke="{GUIDELINE_COLOR}" stroke-width="1.7" stroke-linecap="round" stroke-linejoin="round">
    <path d="M7.2 10.2 l1.3 1.3 l2.2 -2.6 M7.2 16.2 l1.3 1.3 l2.2 -2.6"/><path d="M12.8 10.6 h4 M12.8 16.6 h4"/>
  </g>"""

RESOURCES = f"""
  <path d="M12 2 l9 4.6 v10.6 l-9 4.8 l-9 -4.8 v-10.6 z" fill="#FFE9C7"/>
  <path d="M12 2 l9 4.6 l-9 4.7 l-9 -4.7 z" fill="#FFD490"/>
  <g fill="none" stroke="{RESOURCE_COLOR}" stroke-width="1.9" stroke-linejoin="round" stroke-linecap="round">
    <path d="M12 2 l9 4.6 v10.6 l-9 4.8 l-9 -4.8 v-10.6 z"/><path d="M3 6.6 l9 4.7 l9 -4.7 M12 11.3 v10.7"/>
    <path d="M7.5 4.3 l9 4.7 v3.6"/>
  </g>"""

SUPPORTING_ROLE = f"""
  <circle cx="12" cy="7.2" r="4.7" fill="{ROLE_COLOR}"/>
  <path d="M3 22 c0 -6 3.6 -8.8 9 -8.8 s9 2.8 9 8.8 z" fill="{ROLE_COLOR}"/>"""

# A chain of two links; 24 wide, 10.7 high.
CHAIN = f"""
  <g fill="none" stroke="{LINK_COLOR}" stroke-width="2.4" stroke-linecap="round">
    <path d="M10.5 2.2 h-4.3 a3.15 3.15 0 0 0 0 6.3 h4.3"/><path d="M13.5 2.2 h4.3 a3.15 3.15 0 0 1 0 6.3 h-4.3"/>
    <path d="M8.6 5.35 h6.8"/>
  </g>"""

LINK_MARK = f'<rect width="24" height="10.7" rx="3" fill="#fff"/>{CHAIN}'

# The mark is in the upper right corner of a Task's dark header.
NOTES_MARK = f"""
  <path d="M1 1 h22 v22 h-14 l-8 -8 z" fill="#FFE27A" stroke="#8A6400" stroke-width="2" stroke-linejoin="round"/>
  <path d="M1 15 h8 v8 z" fill="#C99A1E" stroke="#8A6400" stroke-width="2" stroke-linejoin="round"/>
  <path d="M6 6.5 h12 M6 11 h12" stroke="#8A6400" stroke-width="2.2" stroke-linecap="round"/>"""


def with_chain(drawing):
    """The icon of a detail that has a hyperlink: twice as wide, the chain before the drawing.

    The drawing lies exactly where the plain icon has it, and the chain covers the dash that leads to the line.
    """
    return f'<g transform="translate(1.5,7.4) scale(0.86)">{LINK_MARK}</g><g transform="translate(24,0)">{drawing}</g>'


# Name, drawing, the drawing's size in its own units, size in pixels.
ICONS = [
    ("GuideLines.gif", GUIDELINES, (24, 24), (120, 120)),
    ("Resources.gif", RESOURCES, (24, 24), (120, 120)),
    ("Supporting Role.gif", SUPPORTING_ROLE, (24, 24), (120, 120)),
    ("Guidelineslink.gif", with_chain(GUIDELINES), (48, 24), (240, 120)),
    ("Resourceslink.gif", with_chain(RESOURCES), (48, 24), (240, 120)),
    ("Supporting Rolelink.gif", with_chain(SUPPORTING_ROLE), (48, 24), (240, 120)),
    ("hyperlink.gif", LINK_MARK, (24, 10.7), (216, 96)),
    ("notes indicator.gif", NOTES_MARK, (24, 24), (96, 96)),
]

# --- Toolbar faces on a field of 16 by 16 -----------------------------------------------------------------------------


def small_task(x, y, width, height):
    return f"""
  <rect x="{x + 0.5}" y="{y + 0.5}" width="{width - 1}" height="{height - 1}" fill="#fff" stroke="{INK}"/>
  <rect x="{x}" y="{y}" width="{width}" height="3" fill="{INK}"/>"""


def small_person(color):
    head = '<circle cx="6" cy="4.5" r="3"/>'
    return f'<g fill="{color}">{head}<path d="M0.5 14 c0 -4.5 2 -6 5.5 -6 s5.5 1.5 5.5 6 z"/></g>'


def letter(text, x, y, size, color, weight="bold"):
    return (
        f'<text x="{x}" y="{y}" font-family="Liberation Sans" font-weight="{weight}" font-size="{size}" '
        f'text-anchor="middle" fill="{color}">{text}</text>'
    )


TOOLBAR = {
    "01.Task Link Display Options": small_task(0, 8, 5, 7)
    + small_task(11, 8, 5, 7)
    + f'<path d="M5 11.5 h3" stroke="{INK}"/><path d="M7.5 9 l3.5 2.5 l-3.5 2.5 z" fill="{INK}"/>'
    + f'<path d="M2 2.5 h12 M4 5.5 h8" stroke="{RESOURCE_COLOR}" stroke-width="1.4"/>',
    "02.Task Display On_Off": small_task(0, 0, 12, 10)
    + f'<circle cx="11" cy="11" r="4.6" fill="#fff"/><g fill="none" stroke="{ROLE_COLOR}" stroke-width="1.6" '
    + 'stroke-linecap="round"><path d="M8.9 8.9 a3.2 3.2 0 1 0 4.2 0"/><path d="M11 7 v3.4"/></g>',
    "03.Task Display Options": small_task(0, 0, 16, 16)
    + f'<g fill="none" stroke="{ROLE_COLOR}" stroke-width="1.5">'
    + '<path d="M2.5 6.8 l1.3 1.4 l2.4 -2.9 M2.5 11.8 l1.3 1.4 l2.4 -2.9"/></g>'
    + f'<path d="M8 7.5 h5.5 M8 12.5 h5.5" stroke="{TEXT}"/>',
    "04.Renumber Tasks": letter("1", 3, 7, 8.5, INK)
    + letter("2", 13, 15, 8.5, INK)
    + f'<path d="M6 3.5 h4 a3 3 0 0 1 3 2.5" fill="none" stroke="{RESOURCE_COLOR}" stroke-width="1.6"/>'
    + f'<path d="M10.4 5.2 h5.2 l-2.6 3 z" fill="{RESOURCE_COLOR}"/>'
    + f'<path d="M10 12.5 h-4 a3 3 0 0 1 -3 -1.5" fill="none" stroke="{UNLINKED_INK}" stroke-width="1.6"/>'
    + f'<path d="M0.6 11.6 h5 l-2.5 -2.8 z" fill="{UNLINKED_INK}"/>',
    "05.Customize Role Names": small_person(ROLE_COLOR)
    + f'<path d="M8 15.5 l0.8 -3 l5 -5 l2.2 2.2 l-5 5 z" fill="{GOLD}" stroke="#7A5200" stroke-width="0.9"/>',
    "06.Quorvel Options": f'<g stroke="{INK}" stroke-width="1.6"><path d="M1 3 h14 M1 8 h14 M1 13 h14"/></g>'
    + f'<g fill="{GOLD}" stroke="{INK}"><circle cx="5" cy="3" r="2.2"/><circle cx="11" cy="8" r="2.2"/>'
    + '<circle cx="6" cy="13" r="2.2"/></g>',
    "08.Quorvel Reports": f'<path d="M2.5 0.5 h8 l3 3 v12 h-11 z" fill="#fff" stroke="{INK}"/>'
    + f'<path d="M10.5 0.5 v3 h3" fill="{TASK_FILL}" stroke="{INK}"/>'
    + f'<rect x="4.5" y="9" width="2" height="5" fill="{GUIDELINE_COLOR}"/>'
    + f'<rect x="7" y="6" width="2" height="8" fill="{ROLE_COLOR}"/>'
    + f'<rect x="9.5" y="8" width="2" height="6" fill="{GOLD}"/>',
    "09.Ask Quorvel Expert": f'<g transform="translate(0,-0.5)" fill="#fff" stroke="{ROLE_COLOR}" stroke-width="1.2">'
    + '<path d="M2.5 1.5 h11 a2 2 0 0 1 2 2 v6 a2 2 0 0 1 -2 2 h-5 l-4 3.8 v-3.8 h-2 a2 2 0 0 1 -2 -2 v-6 '
    + 'a2 2 0 0 1 2 -2 z"/></g>'
    + letter("?", 8, 9.6, 9.5, ROLE_COLOR),
    "10.Quorvel Help": f'<circle cx="8" cy="8" r="7.5" fill="{GUIDELINE_COLOR}"/>' + letter("?", 8, 12.2, 12, "#fff"),
    "11.About Quorvel": f'<circle cx="8" cy="8" r="7.5" fill="{INK}"/>'
    + '<rect x="7" y="7" width="2" height="5.5" fill="#fff"/>'
    + '<circle cx="8" cy="4.4" r="1.3" fill="#fff"/>',
}

# --- Logo and legend --------------------------------------------------------------------------------------------------


def text(value, x, y, size, *, color=TEXT, weight="normal", anchor="start"):
    return (
        f'<text x="{x}" y="{y}" font-family="Liberation Sans" font-size="{size}" font-weight="{weight}" '
        f'text-anchor="{anchor}" fill="{color}">{value}</text>'
    )


def logo():
    """A ring that opens into an arrow, and the name. 600 by 210."""
    return f"""
  <rect width="600" height="210" fill="#fff"/>
  <path d="M 143 146 A 62 62 0 1 1 160 105" fill="none" stroke="{INK}" stroke-width="25"/>
  <path d="M 96 111 l 48 46" stroke="{GOLD}" stroke-width="25"/>
  <path d="M 172 184 l -50 -10 l 38 -40 z" fill="{GOLD}"/>
  {text("Quorvel", 200, 133, 98, color=INK, weight="bold")}
  <path d="M 204 163 h 370" stroke="{GOLD}" stroke-width="6"/>"""


def legend():
    """A Task with the name of each part on it. 600 by 852, shown one inch wide, so no letter is below 40."""
    frame = f'stroke="{INK}" stroke-width="5" stroke-linejoin="round"'
    details = [("Guideline", GUIDELINES), ("Resource", RESOURCES), ("Supporting role", SUPPORTING_ROLE)]
    rows = "".join(
        f'<path d="M48 {y} h40" stroke="#000" stroke-width="4"/>'
        f'<g transform="translate(96,{y - 33}) scale(2.75)">{icon}</g>{text(name, 180, y + 15, 44)}'
        for y, (name, icon) in zip((660, 734, 808), details)
    )
    return f"""
  <rect x="2" y="2" width="596" height="848" fill="#fff" stroke="{UNLINKED_INK}" stroke-width="4"/>
  <path d="M20 142 A 330 190 0 0 1 580 142 z" fill="{TASK_FILL}" {frame}/>
  {text("Responsible role", 300, 116, 44, anchor="middle")}
  <rect x="20" y="142" width="560" height="396" fill="#fff" {frame}/>
  <rect x="20" y="142" width="560" height="78" fill="{INK}"/>
  {text("Task ID", 300, 197, 48, color="#fff", weight="bold", anchor="middle")}
  <g transform="translate(42,161) scale(3.6)">{LINK_MARK}</g>
  <g transform="translate(524,148) scale(2.1)">{NOTES_MARK}</g>
  <rect x="20" y="220" width="560" height="240" fill="{TASK_FILL}" {frame}/>
  {text("Task", 300, 330, 52, anchor="middle")}{text("description", 300, 390, 52, anchor="middle")}
  {text("Frequency: time", 40, 516, 44)}
  <path d="M290 538 v70 l16 16 h214 l16 -16 v-70 z" fill="{TASK_FILL}" {frame}/>
  <path d="M308 572 l15 15 l15 -15" fill="none" {frame}/>
  {text("Sub-task", 520, 597, 40, weight="bold", anchor="end")}
  <path d="M48 538 v270" stroke="#000" stroke-width="4"/>
  {rows}"""


# --- From drawing to file ---------------------------------------------------------------------------------------------


def rasterize(drawing, units, pixels, *, background=None):
    """A PNG of the drawing, as bytes; transparent where nothing is drawn unless a background is given."""
    svg = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {units[0]} {units[1]}">{drawing}</svg>'
    command = ["rsvg-convert", "--width", str(pixels[0]), "--height", str(pixels[1]), "--format", "png"]
    if background:
        command += ["--background-color", background]
    return subprocess.run(command, input=svg.encode(), stdout=subprocess.PIPE, check=True).stdout


def convert(png, path, *options):
    """Writes the picture in the format of the target's name, without anything that differs between two runs."""
    subprocess.run(["convert", "png:-", *options, "-strip", str(path)], input=png, check=True)


def main(folder):
    for name in ("Icons/Toolbar", "Images"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    for name, drawing, units, pixels in ICONS:
        # A GIF has no half transparency: pixels that are at least half covered are opaque.
        png = rasterize(drawing, units, pixels)
        convert(png, folder / "Icons" / name, "-channel", "A", "-threshold", "50%", "+channel", "-colors", "64")
    for name, drawing in TOOLBAR.items():
        png = rasterize(drawing, (16, 16), (16, 16), background=TOOLBAR_BACKGROUND)
        bitmap = f"BMP3:{folder / 'Icons/Toolbar' / name}.bmp"
        convert(png, bitmap, "-alpha", "off", "-type", "TrueColor")
    logo_png = rasterize(logo(), (600, 210), (600, 210))
    dense = ("-density", "600", "-units", "PixelsPerInch")
    convert(logo_png, folder / "Images/Quorvel Logo.jpg", "-quality", "92", *dense)
    legend_png = rasterize(legend(), (600, 852), (600, 852))
    convert(legend_png, folder / "Images/Quorvel Legend.gif", "-alpha", "off", "-colors", "128", "+dither")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else DATA_FOLDER)
