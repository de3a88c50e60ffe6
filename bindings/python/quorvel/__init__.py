"""Quorvel for scripts: draws process maps, keeps them up to date, and reads them, without a window.

    import quorvel
    app = quorvel.Application(answers="defaults")
    doc = app.Documents.Add(quorvel.template_path())
    masters = app.Documents.Open(quorvel.stencil_path()).Masters
    task = doc.Pages(1).Drop(masters("Task"), 3, 6)
    print(task.Cells("Prop.Task_ID").ResultStr(0))
    doc.SaveAs("map.vsdx")
"""

from . import constants
from .errors import HostError, Unanswered
from .forms import Control, Form
from .host_objects import (
    Application,
    Asked,
    Cell,
    Characters,
    Collection,
    CommandBar,
    CommandBarControl,
    CommandBarControls,
    CommandBars,
    Connect,
    Connects,
    Document,
    Documents,
    Handle,
    Hyperlink,
    Hyperlinks,
    IndexedNumbers,
    Layer,
    Layers,
    Master,
    Masters,
    Page,
    Pages,
    Row,
    Section,
    Selection,
    Shape,
    Shapes,
    Window,
    Windows,
)
from .install import stencil_path, template_path
from .maps import Connector, Link, LinkEnd, Map, MapHyperlink, Role, Task
from .recovery import LeftBehind, copies_left_behind, discard_copy
from .reports import ReportDefinition, report, report_definitions

__all__ = [
    "Application", "Asked", "Cell", "Characters", "Collection", "CommandBar", "CommandBarControl",
    "CommandBarControls", "CommandBars", "Connect", "Connector", "Connects", "Control", "Document", "Documents",
    "Form", "Handle", "HostError", "Hyperlink", "Hyperlinks", "IndexedNumbers", "Layer", "Layers", "LeftBehind", "Link", "LinkEnd", "Map",
    "MapHyperlink", "Master", "Masters", "Page", "Pages", "ReportDefinition", "Role", "Row", "Section", "Selection", "Shape", "Shapes", "Task",
    "Unanswered", "Window", "Windows", "constants", "copies_left_behind", "discard_copy", "report",
    "report_definitions", "stencil_path", "template_path",
]  # fmt: skip
