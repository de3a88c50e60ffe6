"""Finds hyperlinks of drawings whose target is missing: a page, a shape or a file.

    quorvel run examples/broken_links.py DRAWING...

Web and mail addresses are not followed. Ends with 1 when a broken link was found.
"""

import os
import sys
from urllib.parse import unquote

import quorvel


def shapes_of(collection):
    for shape in collection:
        yield shape
        yield from shapes_of(shape.Shapes)


def has_place(doc, sub_address):
    """Whether the document has the page, and the shape on it: "Page-1/A01", or a page alone."""
    page_name, _, shape_name = sub_address.partition("/")
    if page_name and page_name not in doc.Pages:
        return False
    if not shape_name:
        return True
    pages = [doc.Pages(page_name)] if page_name else list(doc.Pages)
    return any(shape.Name == shape_name for page in pages for shape in shapes_of(page.Shapes))


def fault(app, doc, link):
    """Why the link is broken; None when its target exists or can't be checked."""
    address = link.Address
    if address.lower().startswith("file:///"):
        address = unquote(address[len("file://") :])
    if ":" in address[2:]:
        return None
    if not address:
        return None if has_place(doc, link.SubAddress) else f"there is no {link.SubAddress!r} in the drawing"
    file = os.path.join(doc.Path, address.replace("\\", "/"))
    if not os.path.exists(file):
        return f"there is no file {address!r}"
    if not link.SubAddress or os.path.splitext(file)[1].lower() not in (".vsdx", ".vdx"):
        return None
    try:
        other = app.Documents.OpenEx(file, quorvel.constants.visOpenRO | quorvel.constants.visOpenHidden)
    except quorvel.HostError as error:
        return error.reason
    return None if has_place(other, link.SubAddress) else f"there is no {link.SubAddress!r} in {address!r}"


def main(*drawings):
    app = quorvel.Application()
    found = 0
    for drawing in drawings:
        doc = app.Documents.Open(os.path.abspath(drawing))
        for page in doc.Pages:
            for shape in shapes_of(page.Shapes):
                for link in shape.Hyperlinks:
                    wrong = fault(app, doc, link)
                    if wrong:
                        found += 1
                        print(f"{drawing}: {page.Name}, {shape.Name}: {wrong}")
    print(f"{found} broken links")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
