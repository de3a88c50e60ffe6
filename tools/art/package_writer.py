"""Writes drawing packages (.vsdx, .vssx, .vstx): the XML of sheets, and the zip with its parts and relationships."""

import zipfile
from xml.sax.saxutils import escape, quoteattr

MAIN_NAMESPACE = "http://schemas.microsoft.com/office/visio/2012/main"
RELATION_NAMESPACE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
VISIO_RELATION = "http://schemas.microsoft.com/visio/2010/relationships/"
OFFICE_RELATION = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
PACKAGE_RELATION = "http://schemas.openxmlformats.org/package/2006/relationships"

# A fixed date in every zip entry: the same sources give the same bytes, so a rebuild is a change in version control only
# when the drawing itself changed.
ENTRY_DATE = (2024, 1, 1, 0, 0, 0)

DOCUMENT_CONTENT_TYPES = {
    ".vsdx": "application/vnd.ms-visio.drawing.main+xml",
    ".vssx": "application/vnd.ms-visio.stencil.main+xml",
    ".vstx": "application/vnd.ms-visio.template.main+xml",
}


def number_text(value):
    """A number as short as it can be written; True and False as 1 and 0."""
    if isinstance(value, str):
        return value
    rounded = round(float(value), 10)
    return str(int(rounded)) if rounded == int(rounded) else repr(rounded)


def element(name, attributes=None, *children):
    """One XML element. Attributes that are None are left out; children are XML text."""
    given = {key: str(value) for key, value in (attributes or {}).items() if value is not None}
    written = "".join(f" {key}={quoteattr(value)}" for key, value in given.items())
    body = "".join(children)
    return f"<{name}{written}>{body}</{name}>" if body else f"<{name}{written}/>"


def cell(name, value, formula=None, unit=None):
    """A cell with its last value and, where it is more than a constant, its formula. Lengths are inches."""
    return element("Cell", {"N": name, "V": number_text(value), "U": unit, "F": formula})


def text_cell(name, text, formula=None):
    """A cell whose value is a text even when it is empty or looks like a number."""
    return element("Cell", {"N": name, "V": text, "U": "STR", "F": formula})


def point_cell(name, points):
    """A size given in points; the file holds inches."""
    return cell(name, points / 72, unit="PT")


def section(name, *rows, index=None, cells=""):
    return element("Section", {"N": name, "IX": index}, cells, *rows)


def named_row(name, *cells):
    return element("Row", {"N": name}, *cells)


def numbered_row(index, *cells, kind=None):
    return element("Row", {"T": kind, "IX": index}, *cells)


def user_row(name, value, formula=None):
    return named_row(name, cell("Value", value, formula), cell("Prompt", ""))


def user_text_row(name, text):
    """A row whose value is a text constant."""
    return named_row(name, text_cell("Value", text), cell("Prompt", ""))


def field_text(shown, before=""):
    """The text of a shape that ends with its first field, the only one."""
    return f"<Text>{escape(before)}<fld IX='0'>{escape(shown)}</fld></Text>"


def part(root, *children):
    """A whole part of the drawing vocabulary."""
    namespaces = {"xmlns": MAIN_NAMESPACE, "xmlns:r": RELATION_NAMESPACE}
    return "<?xml version='1.0' encoding='utf-8'?>\n" + element(root, namespaces, *children)


class Package:
    """Parts with their content types and relationships, saved as one zip."""

    def __init__(self):
        self._parts = {}
        self._content_types = {}
        self._relations = {}

    def add(self, name, content_type, content):
        """Adds a part; its name has no leading slash."""
        self._parts[name] = content
        self._content_types[name] = content_type

    def relate(self, source, kind, target):
        """Relates the part `source` ("" is the package) to a target path relative to it; returns the relation's id."""
        relations = self._relations.setdefault(source, [])
        relations.append((kind, target))
        return f"rId{len(relations)}"

    def save(self, path):
        entries = {"[Content_Types].xml": self._content_types_xml()}
        for source in self._relations:
            folder, _, file_name = source.rpartition("/")
            entries[f"{folder + '/' if folder else ''}_rels/{file_name}.rels"] = self._relations_xml(source)
        entries.update(self._parts)
        with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
            for name, content in entries.items():
                entry = zipfile.ZipInfo(name, ENTRY_DATE)
                entry.compress_type = zipfile.ZIP_DEFLATED
                archive.writestr(entry, content)

    def _content_types_xml(self):
        overrides = [
            element("Override", {"PartName": "/" + name, "ContentType": content_type})
            for name, content_type in self._content_types.items()
        ]
        relation_type = "application/vnd.openxmlformats-package.relationships+xml"
        return _package_xml(
            "Types",
            "http://schemas.openxmlformats.org/package/2006/content-types",
            element("Default", {"Extension": "rels", "ContentType": relation_type}),
            element("Default", {"Extension": "xml", "ContentType": "application/xml"}),
            *overrides,
        )

    def _relations_xml(self, source):
        relations = [
            element("Relationship", {"Id": f"rId{number}", "Type": kind, "Target": target})
            for number, (kind, target) in enumerate(self._relations[source], start=1)
        ]
        return _package_xml("Relationships", PACKAGE_RELATION, *relations)


def _package_xml(root, namespace, *children):
    declaration = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
    return declaration + element(root, {"xmlns": namespace}, *children)


def add_properties(package, title, pages, masters):
    """The file's own properties, with the names of its pages and masters. The template name stays empty: a stencil or a
    template is based on none."""
    core_types = {
        "xmlns:cp": "http://schemas.openxmlformats.org/package/2006/metadata/core-properties",
        "xmlns:dc": "http://purl.org/dc/elements/1.1/",
        "xmlns:dcterms": "http://purl.org/dc/terms/",
        "xmlns:xsi": "http://www.w3.org/2001/XMLSchema-instance",
    }
    date = "2024-01-01T00:00:00Z"
    core = element(
        "cp:coreProperties",
        core_types,
        element("dc:title", None, escape(title)),
        element("dc:creator", None, "Quorvel"),
        element("dcterms:created", {"xsi:type": "dcterms:W3CDTF"}, date),
        element("dcterms:modified", {"xsi:type": "dcterms:W3CDTF"}, date),
        element("dc:language", None, "en-US"),
    )
    declaration = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
    package.add("docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml", declaration + core)

    def vector(kind, items):
        return element("vt:vector", {"size": len(items), "baseType": kind}, *items)

    headings = [
        element("vt:variant", None, item)
        for heading, names in (("Pages", pages), ("Masters", masters))
        for item in (element("vt:lpstr", None, heading), element("vt:i4", None, str(len(names))))
    ]
    titles = [element("vt:lpstr", None, escape(name)) for name in (*pages, *masters)]
    app_types = {
        "xmlns": "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties",
        "xmlns:vt": "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes",
    }
    app = element(
        "Properties",
        app_types,
        element("Template"),
        element("Application", None, "Quorvel"),
        element("ScaleCrop", None, "false"),
        element("HeadingPairs", None, vector("variant", headings)),
        element("TitlesOfParts", None, vector("lpstr", titles)),
        element("LinksUpToDate", None, "false"),
        element("SharedDoc", None, "false"),
        element("HyperlinksChanged", None, "false"),
    )
    package.add("docProps/app.xml", "application/vnd.openxmlformats-officedocument.extended-properties+xml", declaration + app)
    package.relate("", VISIO_RELATION + "document", "visio/document.xml")
    package.relate("", PACKAGE_RELATION + "/metadata/core-properties", "docProps/core.xml")
    package.relate("", OFFICE_RELATION + "extended-properties", "docProps/app.xml")


def add_masters(package, masters):
    """Adds the masters part and one part for each master. A master is a dict: ID, Name, UniqueID, BaseID, Prompt,
    Width and Height of its page in inches, Shape, the XML of its one shape, and Icon when it is drawn."""
    entries = []
    for number, master in enumerate(masters, start=1):
        file_name = f"master{number}.xml"
        package.add(
            f"visio/masters/{file_name}",
            "application/vnd.ms-visio.master+xml",
            part("MasterContents", element("Shapes", None, master["Shape"])),
        )
        relation = package.relate("visio/masters/masters.xml", VISIO_RELATION + "master", file_name)
        attributes = {
            "ID": master["ID"],
            "NameU": master["Name"],
            "IsCustomNameU": 1,
            "Name": master["Name"],
            "IsCustomName": 1,
            "Prompt": master["Prompt"],
            "IconSize": 1,
            "AlignName": 2,
            # A drop from the stencil into a drawing that already has the master uses the drawing's own.
            "MatchByName": 1,
            "IconUpdate": 1,
            "UniqueID": master["UniqueID"],
            "BaseID": master["BaseID"],
            "PatternFlags": 0,
            "Hidden": 0,
            "MasterType": 2,
        }
        sheet = page_sheet(master["Width"], master["Height"])
        icon = (element("Icon", None, master["Icon"]),) if "Icon" in master else ()
        entries.append(element("Master", attributes, sheet, *icon, element("Rel", {"r:id": relation})))
    package.add("visio/masters/masters.xml", "application/vnd.ms-visio.masters+xml", part("Masters", *entries))
    package.relate("visio/document.xml", VISIO_RELATION + "masters", "masters/masters.xml")


def add_page(package, name, width, height, contents="", master_count=0):
    """Adds the one page of the document. `contents` is the XML of its shapes and connects."""
    package.add("visio/pages/page1.xml", "application/vnd.ms-visio.page+xml", part("PageContents", contents))
    relation = package.relate("visio/pages/pages.xml", VISIO_RELATION + "page", "page1.xml")
    attributes = {
        "ID": 0,
        "NameU": name,
        "Name": name,
        "ViewScale": -1,
        "ViewCenterX": number_text(width / 2),
        "ViewCenterY": number_text(height / 2),
    }
    orientation = 2 if width > height else 1
    sheet = page_sheet(width, height, cell("PrintPageOrientation", orientation))
    page = element("Page", attributes, sheet, element("Rel", {"r:id": relation}))
    package.add("visio/pages/pages.xml", "application/vnd.ms-visio.pages+xml", part("Pages", page))
    package.relate("visio/document.xml", VISIO_RELATION + "pages", "pages/pages.xml")
    for number in range(1, master_count + 1):
        package.relate("visio/pages/page1.xml", VISIO_RELATION + "master", f"../masters/master{number}.xml")


def page_sheet(width, height, *more_cells):
    return element(
        "PageSheet",
        {"LineStyle": 0, "FillStyle": 0, "TextStyle": 0},
        cell("PageWidth", width),
        cell("PageHeight", height),
        cell("ShdwOffsetX", 0.125),
        cell("ShdwOffsetY", -0.125),
        cell("PageScale", 1, unit="IN"),
        cell("DrawingScale", 1, unit="IN"),
        cell("DrawingSizeType", 0),
        cell("DrawingScaleType", 0),
        cell("InhibitSnap", 0),
        cell("UIVisibility", 0),
        cell("ShdwType", 0),
        cell("ShdwObliqueAngle", 0),
        cell("ShdwScaleFactor", 1),
        cell("DrawingResizeType", 0),
        *more_cells,
    )


def add_windows(package, *windows):
    """What opens with the file: each window is a dict of attributes."""
    size = {"ClientWidth": 1400, "ClientHeight": 800, "xmlns": MAIN_NAMESPACE, "xmlns:r": RELATION_NAMESPACE}
    content = element("Windows", size, *(element("Window", window) for window in windows))
    declaration = "<?xml version='1.0' encoding='utf-8'?>\n"
    package.add("visio/windows.xml", "application/vnd.ms-visio.windows+xml", declaration + content)
    package.relate("visio/document.xml", VISIO_RELATION + "windows", "windows.xml")
