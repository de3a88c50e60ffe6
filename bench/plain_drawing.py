"""Writes a drawing of many boxes for compare.sh: it has no cells of the add-in, so that every program reads the same.

    python3 bench/plain_drawing.py OUT.vsdx BOXES

Boxes are in rows of a hundred, each with formulas for its size and outline, a place that depends on its left neighbour,
three cells of a user's own, two of shape data and a text; a connector is glued between each two neighbours.
"""

import sys
import zipfile

MAIN = "http://schemas.microsoft.com/office/visio/2012/main"
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006/"
KINDS = "http://schemas.microsoft.com/visio/2010/relationships/"
ROW = 100


def cells(**values):
    """Cells from numbers, texts, or pairs of value and formula."""
    text = ""
    for name, value in values.items():
        value, formula = value if isinstance(value, tuple) else (value, "")
        text += f'<Cell N="{name}" V="{value}"' + (f' F="{formula}"' if formula else "") + "/>"
    return text


def rows(kind, *each):
    return f'<Section N="{kind}">' + "".join(f'<Row N="{name}">{content}</Row>' for name, content in each) + "</Section>"


def outline(no_fill, *points):
    text = f'<Section N="Geometry" IX="0">{cells(NoFill=no_fill, NoLine=0)}'
    for index, (x, y) in enumerate(points, 1):
        text += f'<Row T="{"MoveTo" if index == 1 else "LineTo"}" IX="{index}">{cells(X=x, Y=y)}</Row>'
    return text + "</Section>"


def shape(number, content):
    return f'<Shape ID="{number}" Type="Shape" LineStyle="0" FillStyle="0" TextStyle="0">{content}</Shape>'


def box(index):
    number, column = index + 1, index % ROW
    x = (1 + 2 * column, f"Sheet.{number - 1}!PinX+2") if column else 1
    left, right, low, high = (0, "Width*0"), (1, "Width*1"), (0, "Height*0"), (0.5, "Height*1")
    return shape(
        number,
        cells(PinX=x, PinY=1 + index // ROW, Width=1, Height=(0.5, "Width*0.5"))
        + cells(LocPinX=(0.5, "Width*0.5"), LocPinY=(0.25, "Height*0.5"), Angle=0)
        + rows(
            "User",
            ("Cost", cells(Value=number % 7, Prompt="")),
            ("Count", cells(Value=(2, "IF(Width&gt;0.5,2,1)"), Prompt="")),
            ("Total", cells(Value=(number % 7 * 2, "User.Cost*User.Count"), Prompt="")),
        )
        + rows(
            "Property",
            ("Owner", cells(Value=f"Team {number % 12}", Label="Owner", Type=0)),
            ("Minutes", cells(Value=number % 60, Label="Minutes", Type=2)),
        )
        + outline(0, (left, low), (right, low), (right, high), (left, high), (left, low))
        + f"<Text>Step {number}</Text>",
    )


def connector(number, left):
    x, y = 1.5 + 2 * (left % ROW), 1 + left // ROW
    return shape(
        number,
        cells(PinX=(x + 0.5, "(BeginX+EndX)/2"), PinY=(y, "(BeginY+EndY)/2"), Width=(1, "EndX-BeginX"), Height=0)
        + cells(LocPinX=(0.5, "Width*0.5"), LocPinY=(0, "Height*0.5"), EndArrow=4)
        + cells(BeginX=(x, f"Sheet.{left + 1}!PinX+0.5"), BeginY=(y, f"Sheet.{left + 1}!PinY"))
        + cells(EndX=(x + 1, f"Sheet.{left + 2}!PinX-0.5"), EndY=(y, f"Sheet.{left + 2}!PinY"))
        + outline(1, (0, 0), ((1, "Width*1"), 0)),
    )


def page(boxes):
    text = f'<PageContents xmlns="{MAIN}" xml:space="preserve"><Shapes>'
    text += "".join(box(index) for index in range(boxes))
    glued = [index for index in range(boxes - 1) if index % ROW < ROW - 1]
    text += "".join(connector(boxes + 1 + place, left) for place, left in enumerate(glued)) + "</Shapes><Connects>"
    for place, left in enumerate(glued):
        for cell, part, to in (("BeginX", 9, left + 1), ("EndX", 12, left + 2)):
            text += f'<Connect FromSheet="{boxes + 1 + place}" FromCell="{cell}" FromPart="{part}"'
            text += f' ToSheet="{to}" ToCell="PinX" ToPart="3"/>'
    return text + "</Connects></PageContents>"


def relationships(kind, target):
    link = f'<Relationship Id="rId1" Type="{KINDS}{kind}" Target="{target}"/>'
    return f'<Relationships xmlns="{PACKAGE}relationships">{link}</Relationships>'


def parts(boxes):
    types = {"document.xml": "drawing.main", "pages/pages.xml": "pages", "pages/page1.xml": "page"}
    overrides = "".join(
        f'<Override PartName="/visio/{part}" ContentType="application/vnd.ms-visio.{kind}+xml"/>'
        for part, kind in types.items()
    )
    yield "[Content_Types].xml", (
        f'<Types xmlns="{PACKAGE}content-types"><Default Extension="rels" '
        'ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
        f'<Default Extension="xml" ContentType="application/xml"/>{overrides}</Types>'
    )
    yield "_rels/.rels", relationships("document", "visio/document.xml")
    yield "visio/_rels/document.xml.rels", relationships("pages", "pages/pages.xml")
    yield "visio/pages/_rels/pages.xml.rels", relationships("page", "page1.xml")
    style = cells(LineWeight=0.01, LineColor=0, LinePattern=1, FillForegnd=1, FillPattern=1, VerticalAlign=1)
    style += f'<Section N="Character"><Row IX="0">{cells(Font=0, Color=0, Size=0.1111)}</Row></Section>'
    yield "visio/document.xml", (
        f'<VisioDocument xmlns="{MAIN}"><FaceNames><FaceName NameU="DejaVu Sans"/></FaceNames><StyleSheets>'
        f'<StyleSheet ID="0" NameU="No Style" Name="No Style">{style}</StyleSheet></StyleSheets></VisioDocument>'
    )
    size = cells(PageWidth=2 * ROW + 1, PageHeight=boxes // ROW + 2, PageScale=1, DrawingScale=1)
    yield "visio/pages/pages.xml", (
        f'<Pages xmlns="{MAIN}" xmlns:r="{RELATIONSHIPS}"><Page ID="0" NameU="Page-1" Name="Page-1">'
        f'<PageSheet>{size}</PageSheet><Rel r:id="rId1"/></Page></Pages>'
    )
    yield "visio/pages/page1.xml", page(boxes)


def main(out, boxes):
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as package:
        for name, text in parts(int(boxes)):
            package.writestr(zipfile.ZipInfo(name), '<?xml version="1.0" encoding="utf-8"?>\n' + text, zipfile.ZIP_DEFLATED)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
