"""The host's objects under their published names.

Positions and sizes are inches, y upward; a drop point is the pin. Collections count from 1, except Hyperlinks, and are
called or asked with Item, by number or by name. A call that the host refuses raises HostError and changes nothing. A
handle keeps its application alive, not its object: one to a deleted shape raises.
"""

import os
from collections.abc import Callable, Iterator
from contextlib import AbstractContextManager
from typing import Generic, NamedTuple, TypeVar

from . import host_objects as _h
from .forms import Form

FileName = str | os.PathLike[str]
Units = int | str
Item_ = TypeVar("Item_")

class Asked(NamedTuple):
    """One dialog, message or document that a user at a screen would have seen."""

    kind: str
    """"form", "message", "file", "browser" or "open"."""
    text: str
    """The form's name, the message, the file dialog's title, or what was to be opened."""

class IndexedNumbers:
    """A property with a unit or a place: read it as `Result(units)`, write it as `Result[units] = 3`."""

    def __call__(self, *places: Units) -> float:
        """Reads."""
    def __getitem__(self, places: Units | tuple[Units, ...]) -> float:
        """Reads."""
    def __setitem__(self, places: Units | tuple[Units, ...], value: float) -> None:
        """Writes."""

class Handle:
    """Any object of the host. Two handles to one object are equal."""

    @property
    def Application(self) -> _h.Application:
        """The application that the object belongs to."""
    def __eq__(self, other: object) -> bool:
        """Whether both name the same object."""
    def __hash__(self) -> int:
        """Equal for equal handles."""

class Collection(Handle, Generic[Item_]):
    """Objects by number or by name."""

    @property
    def Count(self) -> int:
        """How many there are."""
    def Item(self, index: int | str) -> Item_:
        """The object of that number, or the first of that name in any letter case."""
    def ItemU(self, index: int | str) -> Item_:
        """The same, but by universal names first where pages, masters and shapes have one of their own."""
    def __call__(self, index: int | str) -> Item_:
        """The same as Item."""
    def __getitem__(self, index: int | str) -> Item_:
        """The same as Item."""
    def __len__(self) -> int:
        """The same as Count."""
    def __iter__(self) -> Iterator[Item_]:
        """The objects that exist when the loop begins; a handle of one that is deleted meanwhile raises."""
    def __contains__(self, wanted: object) -> bool:
        """Whether the object, or one of that name, exists."""

class Application(Handle):
    """A host in memory with the add-in connected.

    version: the release that the host passes for: "12.0", "11.0" or "10.0".
    install_folder: the folder of stencil, template, icons and help; None for the one that came with the module.
    profile: the folder of Quorvel.ini, or that file; None for the user's own.
    answers: "defaults" accepts every form as it opens and says Yes; None leaves what no handler answers unanswered.
        The question whether a hyperlink may start a program is never accepted: without a handler's Yes it gets No and
        raises Unanswered.
    recovery: a folder for copies of unsaved drawings, written about every minute while there are changes and
        removed when they are saved or closed; None writes none. Those of drawings that are unsaved when the script
        ends stay, so a script that is done without saving calls Quit. See quorvel.copies_left_behind.
    """

    OnForm: Callable[[Form], object] | None
    """Called with each form that opens. A form that it leaves open is unanswered."""
    OnMessage: Callable[[str, str, str, str], str | None] | None
    """Called with text, title, buttons ("OK", "YesNo", "YesNoCancel", "OKCancel") and icon ("", "Stop", "Question",
    "Information"); gives "Yes", "No", "Cancel" or "OK", or None to leave the box unanswered."""
    OnFileDialog: Callable[[str, str, str], FileName | None] | None
    """Called with title, filter and start folder; gives the file chosen, or None to cancel."""
    OnShellOpen: Callable[[str], bool | None] | None
    """Called with the file or address that a hyperlink opens with another program; False means that it could not be
    opened. Without a handler nothing is opened, and following the link is refused."""
    OnDocumentCreated: Callable[[Document], object] | None
    """A drawing was made."""
    OnDocumentOpened: Callable[[Document], object] | None
    """A file was opened."""
    OnBeforeDocumentSave: Callable[[Document], object] | None
    """A document is about to be saved under its name."""
    OnBeforeDocumentSaveAs: Callable[[Document], object] | None
    """A document is about to be saved under another name."""
    OnDocumentSaved: Callable[[Document], object] | None
    """A document was saved under its name."""
    OnDocumentSavedAs: Callable[[Document], object] | None
    """A document was saved under another name."""
    OnBeforeDocumentClose: Callable[[Document], object] | None
    """A document is about to be closed."""
    OnPageAdded: Callable[[Page], object] | None
    """A page was added."""
    OnPageChanged: Callable[[Page], object] | None
    """A page's name or kind changed."""
    OnShapeAdded: Callable[[Shape], object] | None
    """A shape was dropped, pasted or drawn."""
    OnShapeParentChanged: Callable[[Shape], object] | None
    """A shape was grouped or ungrouped."""
    OnBeforeShapeDelete: Callable[[Shape], object] | None
    """A shape is about to be deleted."""
    OnBeforeShapeTextEdit: Callable[[Shape], object] | None
    """A user begins to edit a shape's text."""
    OnShapeExitedTextEdit: Callable[[Shape], object] | None
    """A user ended editing a shape's text."""
    OnTextChanged: Callable[[Shape], object] | None
    """A user's edit changed a shape's text."""
    OnCellChanged: Callable[[Cell], object] | None
    """A cell's value changed, by the user, the add-in or a script."""
    OnFormulaChanged: Callable[[Cell], object] | None
    """A cell's formula changed, by the user, the add-in or a script."""
    OnSelectionChanged: Callable[[Window], object] | None
    """The selection of a window changed."""
    OnWindowActivated: Callable[[Window], object] | None
    """A window got the focus."""
    OnAppActivated: Callable[[Application], object] | None
    """The host got the focus."""
    OnBeforeModal: Callable[[Application], object] | None
    """A modal dialog of the host opens."""
    OnAfterModal: Callable[[Application], object] | None
    """A modal dialog of the host closed."""
    OnClick: Callable[[CommandBarControl], object] | None
    """A toolbar button was clicked."""
    OnEnterScope: Callable[[int, str], object] | None
    """A unit of work begins: its number and description."""
    OnExitScope: Callable[[int, str], object] | None
    """A unit of work ended: its number and description."""
    OnMarkerEvent: Callable[[int, str], object] | None
    """A queued marker arrives: its number and text."""
    OnMouseDown: Callable[[int, int, float, float], object] | None
    """A mouse button was pressed in a drawing window: button, shift state, x and y."""
    OnMouseMove: Callable[[int, int, float, float], object] | None
    """The pointer moved in a drawing window: button, shift state, x and y."""

    def __init__(
        self,
        version: str = "12.0",
        install_folder: FileName | None = None,
        profile: FileName | None = None,
        answers: str | None = None,
        recovery: FileName | None = None,
    ) -> None:
        """Starts the host and connects the add-in."""
    @property
    def Asked(self) -> list[_h.Asked]:
        """What was asked so far, the oldest first."""
    @property
    def ActiveDocument(self) -> Document | None:
        """The document of the active window."""
    @property
    def ActivePage(self) -> Page | None:
        """The page that the active window shows."""
    @property
    def ActiveWindow(self) -> Window | None:
        """The window that has the focus."""
    @property
    def Windows(self) -> _h.Windows:
        """The windows of all documents."""
    @property
    def Documents(self) -> _h.Documents:
        """The documents that are open."""
    @property
    def Version(self) -> str:
        """The release, such as "12.0"."""
    @property
    def WindowHandle32(self) -> int:
        """0: the host has no windows on a screen."""
    @property
    def CommandBars(self) -> _h.CommandBars:
        """Toolbars and menus."""
    def BeginUndoScope(self, name: str) -> int:
        """Opens a scope that undoes as one step, and gives its number. Scopes nest."""
    def EndUndoScope(self, scope: int, commit: bool) -> None:
        """Closes the innermost scope; without `commit` all that was done in it is rolled back."""
    def UndoScope(self, name: str) -> AbstractContextManager[int]:
        """A scope for `with`: committed at its end, rolled back by an exception."""
    def Undo(self) -> None:
        """Undoes the last step of the active document."""
    def Redo(self) -> None:
        """Redoes the last undone step."""
    UndoLimits: tuple[int, int]
    """How much of each document can be undone: steps and bytes. Beyond that the oldest steps are removed."""
    def DoCmd(self, command: int) -> None:
        """Runs a command of the host by its number, such as 1312, the shape data window."""
    def QueueMarkerEvent(self, context: str) -> int:
        """Raises MarkerEvent with the text, and gives its number."""
    def Activate(self) -> None:
        """Activates the host, as when a user returns to it."""
    def WriteRecoveryCopies(self) -> None:
        """Updates the recovery copies now, without waiting for the minute."""
    def MouseDown(self, button: int, shift: int = 0, x: float = 0, y: float = 0) -> None:
        """Presses a mouse button in the drawing window: 1 left, 2 right."""
    def ReplaceText(
        self,
        find: str,
        replacement: str,
        *,
        match_case: bool = False,
        whole_words: bool = False,
        all_pages: bool = True,
    ) -> int:
        """Replaces text as a user does with Find and Replace, on the pages of the active document or on the active page;
        how many times. Fields and shapes with locked text are left as they are."""
    def Quit(self) -> None:
        """Closes every document. What was not saved is lost."""

class Documents(Collection[Document]):
    """The documents that are open, in order of opening."""

    def Add(self, template: FileName = "") -> Document:
        """A new drawing from the template file; without one, an empty drawing."""
    def Open(self, file: FileName) -> Document:
        """Opens a file; gives the existing document when it is open already."""
    def OpenEx(self, file: FileName, flags: int) -> Document:
        """Opens a file; flags: 1 as a copy, 2 for reading only, 8 not listed, 64 hidden."""

class Document(Handle):
    """A drawing, template or stencil that is open."""

    Saved: bool
    """False when there are unsaved changes."""
    HyperlinkBase: str
    """The folder or web address that relative addresses of hyperlinks start from; empty: the drawing's folder."""
    Protection: int
    """The bits of protection; 2: shapes. A password is set with SetProtection."""
    @property
    def Pages(self) -> _h.Pages:
        """The pages, background pages among them."""
    @property
    def Masters(self) -> _h.Masters:
        """The masters."""
    @property
    def Name(self) -> str:
        """File name with its ending; for a new document the host's default name."""
    @property
    def NameU(self) -> str:
        """The same as Name."""
    @property
    def Path(self) -> str:
        """Folder with a trailing separator; empty for a document never saved."""
    @property
    def FullName(self) -> str:
        """Path and Name."""
    @property
    def Template(self) -> str:
        """File name of the template that the document is based on; empty without one."""
    @property
    def DocumentSheet(self) -> Shape:
        """The sheet with the document's own cells."""
    def SetProtection(self, password: str, bits: int) -> None:
        """Sets Protection with a password, which later changes need."""
    def Save(self) -> None:
        """Saves under the current name."""
    def SaveAs(self, file: FileName) -> None:
        """Saves under another name, whose ending decides the format."""
    def Close(self) -> None:
        """Closes. What was not saved is lost."""
    def FollowHyperlink(
        self, address: str, sub_address: str, extra_info: str = "", frame: str = "", new_window: bool = False
    ) -> None:
        """Goes where a hyperlink of this document with these columns leads, see Hyperlink.Follow."""
    def ExportAsFixedFormat(
        self,
        format: int,
        file: FileName,
        intent: int = 1,
        print_range: int = 0,
        from_page: int = 1,
        to_page: int = -1,
    ) -> None:
        """Writes foreground pages into one PDF (format 1). print_range: 0 all, 1 from `from_page` to `to_page`, 2 the
        page that is shown; -1 for the last page. `intent` is taken and makes no difference."""

class Pages(Collection[Page]):
    """The pages of a document."""

    def Add(self) -> Page:
        """A new page at the end."""

class Page(Handle):
    """A page of a drawing."""

    Name: str
    """As people read it: unique in the document, and not empty."""
    NameU: str
    """The universal name, which formulas use in every language. A put of Name changes it too as long as they are one."""
    Background: bool
    """Whether it is a background page."""
    BackPage: Page | None
    """The background page behind it."""
    @property
    def Document(self) -> _h.Document:
        """The document that holds it."""
    @property
    def Shapes(self) -> _h.Shapes:
        """The shapes on it, the lowest first; members of groups are in their groups."""
    @property
    def PageSheet(self) -> Shape:
        """The sheet with the page's own cells."""
    @property
    def Layers(self) -> _h.Layers:
        """The layers."""
    @property
    def Connects(self) -> _h.Connects:
        """All glued ends."""
    def DrawRectangle(self, x1: float, y1: float, x2: float, y2: float) -> Shape | None:
        """Draws a rectangle from corner to corner."""
    def DrawLine(self, x1: float, y1: float, x2: float, y2: float) -> Shape | None:
        """Draws a line."""
    def Import(self, file: FileName) -> Shape | None:
        """Puts a PNG, JPEG, GIF or BMP picture in the middle of the page."""
    def Drop(self, master: Master, x: float, y: float) -> Shape | None:
        """Places an instance of the master with its pin at x, y, on this page, which is made the active one. One undo
        step with all that follows from it. None when a handler removed the shape, as a refused first Task is."""
    def DropConnected(self, master: Master, target: Shape, direction: int, connector: Master | None = None) -> Shape | None:
        """Drops next to the target and connects the two with an instance of `connector`, else with a line. direction:
        1 above, 2 below, 3 left, 4 right."""
    def Paste(self) -> None:
        """Pastes what Selection.Copy took."""
    def Delete(self) -> None:
        """Deletes the page; the last one stays."""
    def Activate(self) -> None:
        """Shows the page, and makes its window the active one."""
    def Export(self, file: FileName) -> None:
        """Draws the page into a file: .svg, .png or .pdf."""

class Masters(Collection[Master]):
    """The masters of a document."""

class Master(Handle):
    """What shapes are instances of."""

    @property
    def Name(self) -> str:
        """The name, such as "Task"."""
    @property
    def NameU(self) -> str:
        """The universal name, which is the same in every language."""

class Shapes(Collection[Shape]):
    """The shapes of a page or a group, the lowest first."""

    def ItemFromID(self, id: int) -> Shape:
        """The shape of that ID, also in a group."""

class Shape(Handle):
    """A shape, or the sheet of a page or document."""

    Name: str
    """Any text but the empty one; two shapes may have the same name. A Task's name is its Task ID."""
    NameU: str
    """The universal name, which formulas use in every language. A put of Name changes it too as long as they are one."""
    Text: str
    """The text with its fields expanded."""
    Data1: str
    """A free text; the add-in marks its own shapes by it."""
    Data2: str
    """A free text."""
    Data3: str
    """A free text."""
    Style: str
    """Write only: applies a style of the document."""
    @property
    def ID(self) -> int:
        """Unique on the page; 0 for the sheet of a page or document."""
    @property
    def NameID(self) -> str:
        """"Sheet." and the ID."""
    @property
    def Master(self) -> _h.Master | None:
        """The master that it is an instance of; None for a drawn shape."""
    @property
    def Parent(self) -> Shape | Page | None:
        """The group that holds it, else its page; None for the sheet of a page or document."""
    @property
    def ContainingPage(self) -> Page:
        """The page that it is on."""
    @property
    def ContainingShape(self) -> Shape:
        """The group that holds it, else the page's sheet."""
    @property
    def Document(self) -> _h.Document:
        """The document that holds it."""
    @property
    def Shapes(self) -> _h.Shapes:
        """The members of a group."""
    @property
    def OneD(self) -> bool:
        """Whether it has a begin and an end, as a line has."""
    def Cells(self, name: str) -> Cell:
        """The cell of that name, such as "Prop.Task_ID" or "PinX", its own or its master's."""
    def CellsU(self, name: str) -> Cell:
        """The same as Cells."""
    def CellsSRC(self, section: int, row: int, column: int) -> Cell:
        """The cell by numbers; rows and columns count from 0."""
    def CellExists(self, name: str, local_only: int = 0) -> bool:
        """Whether there is such a cell; with local_only, one that is not its master's."""
    def CellExistsU(self, name: str, local_only: int = 0) -> bool:
        """The same as CellExists."""
    def AddNamedRow(self, section: int, name: str, tag: int = 0) -> int:
        """Adds a row of that name to section 242 (User) or 243 (Prop), and gives its number."""
    def AddRow(self, section: int, row: int, tag: int = 0) -> int:
        """Adds a row at a place that counts from 0, or at the end for -2, and gives its number."""
    def AddSection(self, section: int) -> int:
        """Adds a Geometry section, and gives its number."""
    def DeleteRow(self, section: int, row: int) -> None:
        """Deletes a row."""
    def DeleteSection(self, section: int) -> None:
        """Deletes a section with all its rows."""
    def RowCount(self, section: int) -> int:
        """How many rows the section has; 0 for one that is not there."""
    @property
    def RowType(self) -> IndexedNumbers:
        """The kind of a row by section and row: `RowType(10, 1)`; written as `RowType[10, 1] = 139`."""
    def SetRowType(self, section: int, row: int, tag: int) -> None:
        """Changes a Geometry row's kind."""
    def Section(self, number: int) -> _h.Section:
        """The section of that number."""
    @property
    def Hyperlinks(self) -> _h.Hyperlinks:
        """The hyperlinks, counted from 0."""
    @property
    def Connects(self) -> _h.Connects:
        """The glued ends of this shape."""
    @property
    def FromConnects(self) -> _h.Connects:
        """The ends of other shapes that are glued to this one."""
    def AddHyperlink(self) -> Hyperlink:
        """Adds a hyperlink at the end."""
    @property
    def Characters(self) -> _h.Characters:
        """The text as characters and fields."""
    @property
    def LayerCount(self) -> int:
        """How many layers it belongs to."""
    def Layer(self, index: int) -> _h.Layer:
        """One of the layers that it belongs to, counted from 1."""
    def DrawLine(self, x1: float, y1: float, x2: float, y2: float) -> Shape | None:
        """Draws a line inside the group, in its own inches."""
    def DrawRectangle(self, x1: float, y1: float, x2: float, y2: float) -> Shape | None:
        """Draws a rectangle inside the group, in its own inches."""
    def Import(self, file: FileName) -> Shape | None:
        """Puts a picture into the group."""
    def Duplicate(self) -> Shape | None:
        """A selected copy on the same page, with a name of its own; None when a handler removed it."""
    def Delete(self) -> None:
        """Deletes the shape; refused while LockDelete is 1, and while LockGroup of a group that holds it is 1."""
    def Group(self) -> None:
        """Makes a drawn shape a group that has no members yet."""
    def Ungroup(self) -> None:
        """Ungroups; the members stay where they are. Refused while LockGroup is 1."""
    def BringForward(self) -> None:
        """One step up in the stack."""
    def BringToFront(self) -> None:
        """To the top of the stack."""
    def FlipHorizontal(self) -> None:
        """Flips left and right."""
    def ReverseEnds(self) -> None:
        """Swaps begin and end."""
    def UniqueID(self, request: int = 0) -> str:
        """Its unique ID, "{...}", which never changes; empty when it has none. With request 1 it is made
        when it has none, with 2 it is deleted."""
    def UpdateAlignmentBox(self) -> None:
        """Accepted, and changes nothing: a group keeps the box that its formulas give it."""
    def BeginTextEdit(self) -> None:
        """Begins a user's edit of the text; refused when LockTextEdit is 1 after OnBeforeShapeTextEdit."""
    def EndTextEdit(self, typed: str) -> None:
        """Ends it with the text typed."""
    def EditShapeData(self, values: dict[str, str | float]) -> None:
        """Types into cells as a user does in the dialog of shape data: texts come into quotation marks."""

class Section(Handle):
    """A section of a shape's cells."""

    @property
    def Count(self) -> int:
        """How many rows it has."""
    def Row(self, index: int) -> _h.Row:
        """The row of that number, counted from 0."""

class Row(Handle):
    """A row of a section."""

    Name: str
    """The row's name as people read it; a new one must be free and fit for a cell name."""
    NameU: str
    """The universal name, by which cells are named. A put of Name changes it too as long as they are one."""
    def Cell(self, column: int) -> _h.Cell:
        """The cell in that column, counted from 0."""

class Cell(Handle):
    """A cell with its formula and its value."""

    Formula: str
    """As written, without a leading "="; a put is refused on a guarded cell."""
    FormulaU: str
    """The same as Formula."""
    FormulaForce: str
    """Write only: the formula, also on a guarded cell."""
    FormulaForceU: str
    """Write only: the same as FormulaForce."""
    ResultIU: float
    """The value in inches, radians or days."""
    @property
    def Result(self) -> IndexedNumbers:
        """The value in units, by number or by name: `Result(65)`, `Result("mm")`; written as `Result["mm"] = 30`."""
    @property
    def ResultForce(self) -> IndexedNumbers:
        """Write only, also on a guarded cell: `ResultForce["mm"] = 30`."""
    def SetResult(self, units: Units, value: float) -> None:
        """Sets the value in units."""
    def SetResultForce(self, units: Units, value: float) -> None:
        """The same, also on a guarded cell."""
    def ResultInt(self, units: Units, round: int = 0) -> int:
        """The value as a whole number, rounded when `round` is not 0, else truncated."""
    def ResultStr(self, units: Units = 0) -> str:
        """The value as text."""
    @property
    def Name(self) -> str:
        """The short form of its name, such as "Prop.Task_ID"."""
    @property
    def Shape(self) -> _h.Shape:
        """The shape that holds it."""
    @property
    def Section(self) -> int:
        """The number of its section."""
    @property
    def Row(self) -> int:
        """The number of its row, counted from 0."""
    @property
    def Column(self) -> int:
        """The number of its column, counted from 0."""
    def GlueTo(self, target: Cell) -> None:
        """Glues an end (BeginX or EndX) to a connection point's cell, or by PinX to a whole shape."""

class Characters(Handle):
    """A part of a shape's text; at first all of it."""

    Begin: int
    """Where it begins: a place between characters, counted from 0, with the fields expanded."""
    End: int
    """Where it ends."""
    @property
    def Text(self) -> str:
        """With the fields expanded."""
    def AddCustomField(self, formula: str, format: int) -> None:
        """Inserts a field at Begin."""

class Selection(Collection[Shape]):
    """Shapes that were selected when the window was asked; in order of selecting."""

    IterationMode: int
    """256: lists a selected member of a group, and not its group."""
    def Delete(self) -> None:
        """Deletes the shapes."""
    def Copy(self) -> None:
        """Takes the shapes for Page.Paste."""
    def Group(self) -> Shape | None:
        """The new group of the shapes; None when a handler removed it. Members are grouped without their group."""
    def Ungroup(self) -> None:
        """Ungroups every selected group; the members stay where they are."""

class Windows(Collection[Window]):
    """The windows of the documents that have one, in order of opening."""

class Window(Handle):
    """The window of a document; there is none on a screen."""

    Page: _h.Page
    """The page that it shows; a put shows another, with nothing selected."""
    Zoom: float
    """1 is 100 %, from 0.05 to 9.99; -1 while the whole page fits the window, -2 while its width does."""
    ViewFit: int
    """What fits the window: 0 nothing, 1 the whole page, 2 its width."""
    @property
    def Type(self) -> int:
        """1: a drawing window."""
    @property
    def SubType(self) -> int:
        """128: it shows a page."""
    @property
    def Caption(self) -> str:
        """Document and page."""
    @property
    def Document(self) -> _h.Document:
        """The document that it shows."""
    @property
    def Selection(self) -> _h.Selection:
        """What is selected now."""
    def Select(self, shape: Shape, action: int) -> None:
        """Adds the shape to the selection (action 2) or takes it out (1)."""
    def MouseMove(self, x: float, y: float, button: int = 0, shift: int = 0) -> None:
        """Moves the pointer to a place on the page, in inches; the window becomes the active one. `button` is held."""
    def DeselectAll(self) -> None:
        """Selects nothing."""
    def Activate(self) -> None:
        """Gives it the focus."""
    def Close(self) -> None:
        """Closes it; the last window of a document closes the document, without asking."""

class Layers(Collection[Layer]):
    """The layers of a page."""

    def Add(self, name: str) -> Layer:
        """The layer of that name, made when it is missing."""

class Layer(Handle):
    """A layer of a page."""

    @property
    def Name(self) -> str:
        """The name."""
    def Add(self, shape: Shape, keep_members: int) -> None:
        """Puts the shape on the layer."""
    def Remove(self, shape: Shape, keep_members: int) -> None:
        """Takes the shape off the layer."""
    def CellsC(self, column: int) -> Cell:
        """A cell of the layer; column 4 says whether it is visible."""

class Hyperlinks(Collection[Hyperlink]):
    """The hyperlinks of a shape, counted from 0."""

    def Add(self) -> Hyperlink:
        """A new hyperlink at the end."""

class Hyperlink(Handle):
    """A hyperlink of a shape."""

    Description: str
    """What is shown for it."""
    Address: str
    """The file or web address; empty for this drawing."""
    SubAddress: str
    """The place in it: page name, "/", shape name."""
    NewWindow: bool
    """Whether it opens a window of its own."""
    ExtraInfo: str
    """The zoom for a page or shape: "zoom=150" in percent, "zoom=-1" the whole page, "zoom=-2" its width."""
    Frame: str
    """The add-in's record of the kind of link."""
    IsDefaultLink: bool
    """Whether a click on the shape follows it."""
    def Follow(self) -> None:
        """Shows the page and selects the shape that it leads to, here or in a drawing that is opened for it. Files and
        addresses go to OnShellOpen, programs only when OnMessage says Yes before. Refused when the target does not
        exist."""
    def Delete(self) -> None:
        """Deletes it."""

class Connects(Collection[Connect]):
    """Glued ends."""

class Connect(Handle):
    """An end of a line (From) that is glued to a shape (To)."""

    @property
    def FromSheet(self) -> Shape:
        """The line."""
    @property
    def FromCell(self) -> Cell:
        """Its BeginX or EndX."""
    @property
    def FromPart(self) -> int:
        """9 the begin, 12 the end."""
    @property
    def ToSheet(self) -> Shape:
        """The shape that it is glued to."""
    @property
    def ToCell(self) -> Cell:
        """The connection point's cell, or PinX."""
    @property
    def ToPart(self) -> int:
        """3 the whole shape; 100 plus the number of a connection point, counted from 0."""

class CommandBars(Collection[CommandBar]):
    """Toolbars by number or name."""

    def Add(self, name: str, position: int = 1, menu_bar: bool = False, temporary: bool = True) -> CommandBar:
        """A new toolbar. position: 0 left, 1 top, 2 right, 3 bottom, 4 floating."""
    def FindControl(self, id: int) -> CommandBarControl:
        """A menu of the host by its number."""

class CommandBar(Handle):
    """A toolbar."""

    Context: str
    """Whether it is visible and where."""
    Height: int
    """Screen pixels."""
    Left: int
    """Screen pixels."""
    Position: int
    """0 left, 1 top, 2 right, 3 bottom, 4 floating."""
    RowIndex: int
    """The row among docked toolbars."""
    Top: int
    """Screen pixels."""
    Width: int
    """Screen pixels."""
    Protection: int
    """The changes that a user may not make."""
    Visible: bool
    """Whether it is visible."""
    @property
    def Controls(self) -> CommandBarControls:
        """Buttons and menus on it."""
    @property
    def Name(self) -> str:
        """The name."""
    @property
    def Enabled(self) -> bool:
        """Whether it can be used."""
    @property
    def Index(self) -> int:
        """Its place among the toolbars."""
    def Delete(self) -> None:
        """Removes it."""

class CommandBarControls(Collection[CommandBarControl]):
    """Buttons and menus by number, or by caption without its "&"."""

    def Add(self, type: int, before: int = 0) -> CommandBarControl:
        """A new button (type 1) or menu (10), before that place or at the end."""

class CommandBarControl(Handle):
    """A button or a menu; what only buttons have is refused by a menu."""

    BeginGroup: bool
    """Whether a separator line is before it."""
    Caption: str
    """The text, with "&" before its access key."""
    OnAction: str
    """What a click runs."""
    Parameter: str
    """The parameter of that macro."""
    Tag: str
    """A free text."""
    TooltipText: str
    """The text under the pointer."""
    State: int
    """-1 down, 0 up."""
    @property
    def Controls(self) -> CommandBarControls:
        """The items of a menu."""
    @property
    def Id(self) -> int:
        """The number of the host's command; 1 for a button of one's own."""
    def Delete(self) -> None:
        """Removes it; the host's own items stay."""
    def Execute(self) -> None:
        """Has the effect of a click."""
    def Reset(self) -> None:
        """Restores the action of the host's item."""
    def PasteFace(self) -> None:
        """Takes the picture from the clipboard."""
