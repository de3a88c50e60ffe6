"""The three masters of a process map: Task, Task Link and Process Connector.

A Task is a group whose members are found by their place: frame, lower box, sub-task box, description box. Its look
is set once, on the group: the members take fill, line and text settings from there, so that formatting a Task formats
all of it.
"""

import uuid

from document_part import CONNECTOR, FONT, INK, NORMAL, TASK_FILL, TEXT
from package_writer import (
    cell,
    element,
    field_text,
    named_row,
    numbered_row,
    point_cell,
    section,
    text_cell,
    user_row,
)

TASK_WIDTH, TASK_HEIGHT = 1.5, 1.1
HEADER_HEIGHT = 0.22
# Holds one line of 8 pt.
LOWER_BOX_HEIGHT = 0.18
# The description box takes in the header. Its pin is this far below its top edge.
PIN_BELOW_TOP = 0.07
SUB_TASK_HEIGHT = 0.22
# The mark of a hyperlink, 0.18 in wide, is put 0.1 in left of the sub-task's text, or at the box's pin less half its
# width where the text has more than one line. The pin, the margin and the text's place keep it inside the box.
SUB_TASK_PIN_RIGHT, SUB_TASK_MARGIN, SUB_TASK_INDENT = 0.09, 9, 0.1

TASK_ID, FRAME_ID, LOWER_BOX_ID, SUB_TASK_ID, DESCRIPTION_ID = 5, 6, 7, 8, 9

# What a master shows until its first drop; the add-in has the same texts and replaces them then.
TASK_PLACE_HOLDER, LINK_PLACE_HOLDER = "(Task Description)", "(Task Link)"

TIME_UNITS = "Seconds;Minutes;Hours;Days;Weeks"
TEXT_KIND, LIST_KIND, DURATION_KIND = 0, 1, 6

CONNECTOR_INK, CONNECTOR_FILL = "#9A5B00", "#FFF1D6"
UNLINKED_INK = "#B4C3CF"


def _identity(text):
    """An id that is the same in every build."""
    return "{" + str(uuid.uuid5(uuid.NAMESPACE_URL, "quorvel:master:" + text)).upper() + "}"


def _master(number, name, prompt, width, height, shape, version=1):
    return {
        "ID": number,
        "Name": name,
        "Prompt": prompt,
        "UniqueID": _identity(f"{name}:{version}"),
        "BaseID": _identity(name),
        "Width": width,
        "Height": height,
        "Shape": shape,
    }


def _property(name, label, prompt="", sort_key="", kind=TEXT_KIND, value="", list_or_format="", invisible=False):
    """One row of shape data. A duration starts as zero minutes."""
    zero_minutes = cell("Value", 0, "0 em.", unit="EM")
    return named_row(
        name,
        zero_minutes if kind == DURATION_KIND else text_cell("Value", value),
        cell("Prompt", prompt),
        cell("Label", label),
        cell("Format", list_or_format),
        cell("SortKey", sort_key),
        cell("Type", kind),
        cell("Invisible", invisible),
        cell("Verify", False),
        cell("LangID", "en-US"),
        cell("Calendar", 0),
    )


def _field(formula, shown):
    """The Field section of a shape whose text is one field, shown as it is."""
    kind = (cell("Type", 0), cell("UICat", 0), cell("UICod", 0), cell("UIFmt", 255), cell("Calendar", 0))
    return section("Field", numbered_row(0, text_cell("Value", shown, formula), text_cell("Format", ""), *kind))


def _placed(pin_x, pin_y, width, height, loc_pin_x=None, loc_pin_y=None):
    """The placing cells. Each argument is a value or a (value, formula) pair; a missing local pin is half the size."""

    def placing_cell(name, given):
        return cell(name, *given) if isinstance(given, tuple) else cell(name, given)

    def size(given):
        return given[0] if isinstance(given, tuple) else given

    return "".join(
        (
            placing_cell("PinX", pin_x),
            placing_cell("PinY", pin_y),
            placing_cell("Width", width),
            placing_cell("Height", height),
            placing_cell("LocPinX", loc_pin_x or (size(width) / 2, "Width*0.5")),
            placing_cell("LocPinY", loc_pin_y or (size(height) / 2, "Height*0.5")),
            cell("Angle", 0),
            cell("FlipX", 0),
            cell("FlipY", 0),
            cell("ResizeMode", 0),
        )
    )


def _outline(points, index=0, filled=True, closed=True, hidden_if=None):
    """A Geometry section from points given as ((x, formula), (y, formula)) pairs; `hidden_if` is a formula."""
    rows = []
    for number, (x, y) in enumerate(list(points) + ([points[0]] if closed else []), start=1):
        rows.append(
            numbered_row(number, cell("X", *x), cell("Y", *y), kind="MoveTo" if number == 1 else "LineTo"),
        )
    unset = ("NoLine", "NoSnap", "NoQuickDrag")
    no_show = cell("NoShow", 0, hidden_if) if hidden_if else cell("NoShow", 0)
    switches = cell("NoFill", not filled) + no_show + "".join(cell(name, 0) for name in unset)
    return section("Geometry", *rows, index=index, cells=switches)


def _rectangle(width, height, top=None):
    """The whole box, or up to `top`, a (value, formula) pair."""
    left, right, bottom, top = (0, "Width*0"), (width, "Width*1"), (0, "Height*0"), top or (height, "Height*1")
    return _outline([(left, bottom), (right, bottom), (right, top), (left, top)])


def _connection_points(*points):
    """Points as (x, y, direction x, direction y); x and y are (value, formula) pairs, directions point inwards."""
    rows = []
    for index, (x, y, dir_x, dir_y) in enumerate(points):
        cells = (cell("X", *x), cell("Y", *y), cell("DirX", dir_x), cell("DirY", dir_y), cell("Type", 0))
        rows.append(numbered_row(index, *cells, kind="Connection"))
    return section("Connection", *rows)


def _sides(width, height):
    middle_x, middle_y = (width / 2, "Width*0.5"), (height / 2, "Height*0.5")
    return (
        ((0, "Width*0"), middle_y, 1, 0),
        ((width, "Width*1"), middle_y, -1, 0),
        (middle_x, (0, "Height*0"), 0, 1),
        (middle_x, (height, "Height*1"), 0, -1),
    )


def _text_block(*, pin_x, pin_y, width, height):
    """A text block of its own size, centred on its pin; arguments are (value, formula) pairs."""
    return (
        cell("TxtPinX", *pin_x)
        + cell("TxtPinY", *pin_y)
        + cell("TxtWidth", *width)
        + cell("TxtHeight", *height)
        + cell("TxtLocPinX", width[0] / 2, "TxtWidth*0.5")
        + cell("TxtLocPinY", height[0] / 2, "TxtHeight*0.5")
        + cell("TxtAngle", 0)
    )


def _margins(left=0, right=0, top=0, bottom=0):
    sizes = (("LeftMargin", left), ("RightMargin", right), ("TopMargin", top), ("BottomMargin", bottom))
    return "".join(point_cell(name, points) for name, points in sizes)


# --- Task -------------------------------------------------------------------------------------------------------------


def _of_task(cell_name):
    return f"GUARD(Sheet.{TASK_ID}!{cell_name})"


def _line_of_task():
    return (
        cell("LineWeight", 0.75 / 72, _of_task("LineWeight"), unit="PT")
        + cell("LineColor", INK, _of_task("LineColor"))
        + cell("LinePattern", 1, _of_task("LinePattern"))
    )


# Members belong to their group: the user neither moves nor deletes them, because they are found by their place.
MEMBER_LOCKS = "".join(
    cell(name, 1) for name in ("LockMoveX", "LockMoveY", "LockWidth", "LockHeight", "LockDelete", "LockRotate")
)


def _member(identity, name, *content):
    attributes = {"ID": identity, "NameU": name, "Name": name, "Type": "Shape"}
    attributes.update(LineStyle=NORMAL, FillStyle=NORMAL, TextStyle=NORMAL)
    return element("Shape", attributes, *content)


def _frame():
    """The whole Task's outline. Its dark fill shows only in the header, which shows the Task ID."""
    return _member(
        FRAME_ID,
        "Frame",
        _placed(
            (TASK_WIDTH / 2, f"GUARD(Sheet.{TASK_ID}!Width*0.5)"),
            (TASK_HEIGHT / 2, f"GUARD(Sheet.{TASK_ID}!Height*0.5)"),
            (TASK_WIDTH, _of_task("Width")),
            (TASK_HEIGHT, _of_task("Height")),
        ),
        _text_block(
            pin_x=(TASK_WIDTH / 2, "Width*0.5"),
            pin_y=(TASK_HEIGHT - HEADER_HEIGHT / 2, f"GUARD(Height-{HEADER_HEIGHT / 2})"),
            width=(TASK_WIDTH, "Width*1"),
            height=(HEADER_HEIGHT, f"GUARD({HEADER_HEIGHT})"),
        ),
        MEMBER_LOCKS,
        cell("LockTextEdit", 1),
        cell("LockSelect", 1),
        cell("FillForegnd", INK, _of_task("LineColor")),
        _line_of_task(),
        _margins(),
        _field(f"Sheet.{TASK_ID}!Prop.Task_ID", "A00"),
        section(
            "Character",
            numbered_row(0, cell("Font", FONT), cell("Color", "#FFFFFF"), cell("Style", 1), point_cell("Size", 9)),
        ),
        _rectangle(TASK_WIDTH, TASK_HEIGHT),
        field_text("A00"),
    )


def _lower_box():
    """The band at the bottom in which frequency and completion time are shown."""
    return _member(
        LOWER_BOX_ID,
        "Lower box",
        _placed(
            (TASK_WIDTH / 2, f"GUARD(Sheet.{TASK_ID}!Width*0.5)"),
            (LOWER_BOX_HEIGHT / 2, "GUARD(Height*0.5)"),
            (TASK_WIDTH, _of_task("Width")),
            (LOWER_BOX_HEIGHT, f"GUARD({LOWER_BOX_HEIGHT})"),
        ),
        MEMBER_LOCKS,
        cell("LockTextEdit", 1),
        cell("LockSelect", 1),
        cell("FillForegnd", "#FFFFFF"),
        _line_of_task(),
        _rectangle(TASK_WIDTH, LOWER_BOX_HEIGHT),
    )


def _sub_task_box():
    """A tab under the Task. It is pale until the Task is linked to a lower-level one, whose ID it shows."""
    width, height, corner = TASK_WIDTH / 2, SUB_TASK_HEIGHT, 0.05
    text_width = width - SUB_TASK_INDENT
    unlinked = f'STRSAME(Sheet.{TASK_ID}!Prop.Linked,"")'
    left, right, top = (0, "Width*0"), (width, "Width*1"), (height, "Height*1")
    tab = [
        (left, top),
        (left, (corner, str(corner))),
        ((corner, str(corner)), (0, "Height*0")),
        ((width - corner, f"Width-{corner}"), (0, "Height*0")),
        (right, (corner, str(corner))),
        (right, top),
    ]
    zigzag = ((0.08, 0.025), (0.13, -0.025), (0.18, 0.025))
    chevron = [((x, str(x)), (height / 2 + up, f"Height*0.5{up:+}")) for x, up in zigzag]
    return _member(
        SUB_TASK_ID,
        "Sub-task box",
        _placed(
            # Its right edge is 0.1 in left of the Task's.
            (
                TASK_WIDTH - 0.1 - width / 2 + SUB_TASK_PIN_RIGHT,
                f"GUARD(Sheet.{TASK_ID}!Width-0.1-Width*0.5+{SUB_TASK_PIN_RIGHT})",
            ),
            (-height / 2, "GUARD(-Height*0.5)"),
            (width, f"GUARD(Sheet.{TASK_ID}!Width*0.5)"),
            (height, f"GUARD(MAX({height},TxtHeight))"),
            loc_pin_x=(width / 2 + SUB_TASK_PIN_RIGHT, f"GUARD(Width*0.5+{SUB_TASK_PIN_RIGHT})"),
        ),
        _text_block(
            pin_x=(width - text_width / 2, "Width-TxtWidth*0.5"),
            pin_y=(height / 2, "Height*0.5"),
            width=(text_width, f"Width-{SUB_TASK_INDENT}"),
            # The add-in reads from this height whether the text has one line.
            height=(0.1333333333, "GUARD(TEXTHEIGHT(TheText,TxtWidth))"),
        ),
        MEMBER_LOCKS,
        cell("LockTextEdit", 1),
        cell("FillForegnd", "#FFFFFF", f"IF({unlinked},RGB(255,255,255),Sheet.{TASK_ID}!FillForegnd)"),
        cell("LineWeight", 0.75 / 72, _of_task("LineWeight"), unit="PT"),
        cell("LineColor", UNLINKED_INK, f"IF({unlinked},RGB(180,195,207),Sheet.{TASK_ID}!LineColor)"),
        _margins(left=SUB_TASK_MARGIN, right=3),
        _field(f"sheet.{TASK_ID}!Prop.Linked", ""),
        section(
            "Character",
            numbered_row(0, cell("Font", FONT), cell("Color", TEXT), cell("Style", 1), point_cell("Size", 8)),
        ),
        section("Paragraph", numbered_row(0, cell("HorzAlign", 2))),
        _outline(tab),
        # Where the text is long, its hyperlink's mark replaces the chevron.
        _outline(chevron, index=1, filled=False, closed=False, hidden_if="TEXTWIDTH(TheText)>Width-0.3"),
        field_text(""),
    )


def _description_box(shown):
    """From the lower box up to the Task's top edge, without painting the header. A long text makes it higher.

    The Task is as high as this box and the lower box; neither looks at the Task's height, which the add-in relies on.
    """
    height = round(TASK_HEIGHT - LOWER_BOX_HEIGHT, 6)
    painted = (round(height - HEADER_HEIGHT, 6), f"Height-{HEADER_HEIGHT}")
    return _member(
        DESCRIPTION_ID,
        "Description box",
        _placed(
            (TASK_WIDTH / 2, f"GUARD(Sheet.{TASK_ID}!Width*0.5)"),
            (
                height - PIN_BELOW_TOP + LOWER_BOX_HEIGHT,
                f"GUARD(Height-{PIN_BELOW_TOP}+Sheet.{LOWER_BOX_ID}!Height)",
            ),
            (TASK_WIDTH, _of_task("Width")),
            (height, f"GUARD(MAX({height},TEXTHEIGHT(TheText,TxtWidth)+{HEADER_HEIGHT}))"),
            loc_pin_y=(height - PIN_BELOW_TOP, f"GUARD(Height-{PIN_BELOW_TOP})"),
        ),
        _text_block(
            pin_x=(TASK_WIDTH / 2, "Width*0.5"),
            pin_y=(painted[0] / 2, f"GUARD((Height-{HEADER_HEIGHT})*0.5)"),
            width=(TASK_WIDTH, "Width*1"),
            height=(painted[0], f"GUARD(Height-{HEADER_HEIGHT})"),
        ),
        MEMBER_LOCKS,
        cell("FillForegnd", TASK_FILL, _of_task("FillForegnd")),
        cell("FillPattern", 1, _of_task("FillPattern")),
        _line_of_task(),
        _margins(left=4, right=4, top=2, bottom=2),
        _field(f"Sheet.{TASK_ID}!Prop.Task_Description", shown),
        section(
            "Character",
            numbered_row(
                0,
                cell("Font", FONT, f"Sheet.{TASK_ID}!Char.Font"),
                cell("Color", TEXT, f"Sheet.{TASK_ID}!Char.Color"),
                cell("Style", 0, f"Sheet.{TASK_ID}!Char.Style"),
                cell("Size", 9 / 72, f"Sheet.{TASK_ID}!Char.Size", unit="PT"),
            ),
        ),
        _rectangle(TASK_WIDTH, height, top=painted),
        field_text(shown),
    )


def _task_properties(description):
    supporting_roles = [
        _property(f"SupportingRole_{n}", f"Supporting Role {n}", f"Select supporting role {n}.", f"2{n}", LIST_KIND)
        for n in range(1, 5)
    ]
    # The ten rows of single guidelines and resources must be rows 18 to 27 of the section, counted from 0; the four
    # rows that this leaves over are free for an organisation's own data.
    spare = [
        _property(f"Custom_{n}", f"Custom {n}", "Free for your own data.", f"5{n}", invisible=True) for n in range(1, 5)
    ]
    guidelines = [_property(f"controls{n}", "", invisible=True) for n in range(1, 6)]
    resources = [_property(f"Resources{n}", "", invisible=True) for n in range(1, 6)]
    rows = [
        _property("Task_ID", "Task ID", "ID of this Task: letters and a number.", "10", value="A00"),
        _property("Task_Description", "Task Description", "What is done in this Task.", "11", value=description),
        _property("Responsible_Role", "Responsible Role", "Select the role that answers for it.", "20", LIST_KIND),
        *supporting_roles,
        _property("Guidelines", "Guidelines", "Up to five guidelines, separated by semicolons.", "25"),
        _property("Resources", "Resources", "Up to five resources, separated by semicolons.", "26"),
        _property("Frequency_Of_Occurrence", "Frequency of Occurrence", "How often it is done.", "30", LIST_KIND),
        _property(
            "Task_Completion_Time",
            "Task Completion Time",
            "Time from start to completion, in the Time Units immediately below.",
            "31",
            DURATION_KIND,
            list_or_format="#,###.####",
        ),
        _property(
            "Time_Units",
            "Time Units",
            "Select units to be used for the Task Completion Time immediately above.",
            "32",
            LIST_KIND,
            value="Minutes",
            list_or_format=TIME_UNITS,
        ),
        _property("Notes", "Notes", "Notes on this Task.", "40"),
        _property("Linked", "Linked Task ID", "ID of the lower-level Task that this Task opens into.", "41"),
        *spare,
        *guidelines,
        *resources,
    ]
    assert rows.index(guidelines[0]) == 18 and rows.index(resources[0]) == 23
    return section("Property", *rows)


def task():
    description = TASK_PLACE_HOLDER
    attributes = {"ID": TASK_ID, "NameU": "Task", "Name": "Task", "Type": "Group"}
    attributes.update(LineStyle=NORMAL, FillStyle=NORMAL, TextStyle=NORMAL)
    middle_x = (TASK_WIDTH / 2, "Width*0.5")
    # The role is drawn as an arch on top of the Task; a link that comes from above ends on the fifth point, over it.
    over_the_role = (middle_x, (TASK_HEIGHT + 0.31, "Height+0.31"), 0, -1)
    shape = element(
        "Shape",
        attributes,
        # As high as its two boxes, so a user cannot drag its height.
        _placed(
            1.25,
            1.25,
            TASK_WIDTH,
            (TASK_HEIGHT, f"GUARD(Sheet.{LOWER_BOX_ID}!Height+Sheet.{DESCRIPTION_ID}!Height)"),
        ),
        cell("LockHeight", 1),
        cell("LockTextEdit", 1),
        cell("LockRotate", 1),
        cell("ObjType", 1),
        cell("DontMoveChildren", 1),
        text_cell("EventDrop", ""),
        cell("EventDblClick", 0, "DOCMD(1312)"),
        cell("FillForegnd", TASK_FILL),
        cell("FillPattern", 1),
        cell("LineColor", INK),
        cell("LinePattern", 1),
        point_cell("LineWeight", 0.75),
        cell("LineCap", 0),
        section(
            "Character",
            numbered_row(0, cell("Font", FONT), cell("Color", TEXT), cell("Style", 0), point_cell("Size", 9)),
        ),
        _connection_points(*_sides(TASK_WIDTH, TASK_HEIGHT), over_the_role),
        _task_properties(description),
        element("Shapes", None, _frame(), _lower_box(), _sub_task_box(), _description_box(description)),
    )
    prompt = "A step of the process. Drag it onto the page; its Task ID is assigned on the drop."
    return _master(1, "Task", prompt, 2.5, 2.5, shape, version=2)


# --- Task Link --------------------------------------------------------------------------------------------------------


def task_link():
    begin_x, end_x, level = 0.5, 2.0, 0.5
    length = end_x - begin_x
    shown = LINK_PLACE_HOLDER
    attributes = {"ID": 5, "NameU": "Task Link", "Name": "Task Link", "Type": "Shape"}
    attributes.update(LineStyle=CONNECTOR, FillStyle=CONNECTOR, TextStyle=CONNECTOR)
    text_width = 0.56
    # Two bends half way. A link that is nearly vertical leaves at the top or bottom, any other at the side.
    bends = [
        ((0, "0"), (0, "0")),
        ((length / 2, "IF(User.Upright,0,Width*0.5)"), (0, "IF(User.Upright,Height*0.5,0)")),
        ((length / 2, "IF(User.Upright,Width,Width*0.5)"), (0, "IF(User.Upright,Height*0.5,Height)")),
        ((length, "Width"), (0, "Height")),
    ]
    shape = element(
        "Shape",
        attributes,
        cell("PinX", (begin_x + end_x) / 2, "GUARD((BeginX+EndX)/2)"),
        cell("PinY", level, "GUARD((BeginY+EndY)/2)"),
        cell("Width", length, "GUARD(EndX-BeginX)"),
        cell("Height", 0, "GUARD(EndY-BeginY)"),
        cell("LocPinX", length / 2, "GUARD(Width*0.5)"),
        cell("LocPinY", 0, "GUARD(Height*0.5)"),
        cell("Angle", 0, "GUARD(0 deg)"),
        cell("FlipX", 0, "GUARD(FALSE)"),
        cell("FlipY", 0, "GUARD(FALSE)"),
        cell("ResizeMode", 0),
        cell("BeginX", begin_x),
        cell("BeginY", level),
        cell("EndX", end_x),
        cell("EndY", level),
        _text_block(
            pin_x=(length / 2, "Width*0.5"),
            pin_y=(0, "Height*0.5"),
            width=(text_width, "MIN(TEXTWIDTH(TheText),1.2)"),
            height=(0.1333333333, "TEXTHEIGHT(TheText,TxtWidth)"),
        ),
        cell("LockHeight", 1),
        cell("LockCalcWH", 1),
        cell("LockTextEdit", 1),
        cell("NoAlignBox", 1),
        cell("DynFeedback", 2),
        cell("GlueType", 2),
        cell("ObjType", 2),
        cell("NoLiveDynamics", 1),
        # Processes run from left to right; where they do, links leave and reach Tasks by their sides.
        cell("ShapeRouteStyle", 6),
        text_cell("EventDrop", ""),
        cell("EventDblClick", 0, "DOCMD(1312)"),
        cell("LineColor", INK),
        cell("EndArrow", 13),
        cell("EndArrowSize", 1),
        cell("TextBkgnd", 2),
        _margins(left=2, right=2),
        _field("Prop.Task_Link", shown),
        section("Character", numbered_row(0, cell("Font", FONT), cell("Color", TEXT), point_cell("Size", 8))),
        section(
            "Property",
            _property("Task_Link", "Task Link Description", "What passes on to the next Task.", "10", value=shown),
            _property(
                "Time_Between_Tasks",
                "Time Between Tasks",
                "Time that passes between the two Tasks, in the Time Units immediately below.",
                "31",
                DURATION_KIND,
                list_or_format="#,##0.####",
            ),
            _property(
                "Time_Units",
                "Time Units",
                "Select units to be used for the Time Between Tasks immediately above.",
                "32",
                LIST_KIND,
                value="Minutes",
                list_or_format=TIME_UNITS,
            ),
        ),
        section("User", user_row("Upright", 0, "AND(ABS(Width)<0.3,ABS(Height)>ABS(Width))")),
        _outline(bends, filled=False, closed=False),
        field_text(shown),
    )
    prompt = "The way from one Task to the next. Glue both ends to connection points."
    return _master(2, "Task Link", prompt, 2.5, 1, shape)


# --- Process Connector ------------------------------------------------------------------------------------------------


def process_connector():
    # Wide enough for "Connector.AB01" in 12 pt, the longest text that is shown in that size.
    width, height = 1.5, 0.45
    tip = height / 2
    attributes = {"ID": 5, "NameU": "Process Connector", "Name": "Process Connector", "Type": "Shape"}
    attributes.update(LineStyle=NORMAL, FillStyle=NORMAL, TextStyle=NORMAL)
    pentagon = [
        ((0, "Width*0"), (0, "Height*0")),
        ((width - tip, "Width-Height*0.5"), (0, "Height*0")),
        ((width, "Width*1"), (height / 2, "Height*0.5")),
        ((width - tip, "Width-Height*0.5"), (height, "Height*1")),
        ((0, "Width*0"), (height, "Height*1")),
    ]
    text_width = width - height * 0.3
    shape = element(
        "Shape",
        attributes,
        _placed(1.25, 0.75, width, height),
        _text_block(
            pin_x=(text_width / 2, "TxtWidth*0.5"),
            pin_y=(height / 2, "Height*0.5"),
            width=(text_width, "Width-Height*0.3"),
            height=(height, "Height*1"),
        ),
        cell("LockTextEdit", 1),
        cell("LockRotate", 1),
        cell("ObjType", 1),
        cell("FillForegnd", CONNECTOR_FILL),
        cell("LineColor", CONNECTOR_INK),
        point_cell("LineWeight", 1),
        _margins(left=2, right=2),
        _field("Prop.Connecting_TaskID", "Z99"),
        section("Character", numbered_row(0, cell("Font", FONT), cell("Color", TEXT), point_cell("Size", 12))),
        _connection_points(*_sides(width, height)),
        section(
            "Property",
            _property(
                "Connecting_TaskID",
                "Connecting Task ID",
                "ID of the Task where the process continues. It follows the connector's first hyperlink unless you type "
                "another; Z99 means that there is no target yet.",
                "10",
                value="Z99",
            ),
        ),
        _outline(pentagon),
        # The add-in compares the text with this one and builds it again when a user has typed over it.
        field_text("Z99", before="Connector."),
    )
    prompt = "The process goes on at a Task on another page or in another drawing."
    return _master(3, "Process Connector", prompt, 2.5, 1.5, shape)


def all_masters():
    return [task(), task_link(), process_connector()]
