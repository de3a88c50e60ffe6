"""Finds hyperlinks of drawings that cannot be followed: a page, a shape or a file is missing, or an address is wrong.

    quorvel run examples/broken_links.py DRAWING...

Web and mail addresses, programs and other files are not opened. Ends with 1 when a broken link was found.
"""

import os
import sys

import quorvel


def shapes_of(collection):
    for shape in collection:
        yield shape
        yield from shapes_of(shape.Shapes)


def fault(doc, link):
    """Why the link is broken; None when its target exists or can't be checked."""
    try:
        doc.FollowHyperlink(link.Address, link.SubAddress)
    except quorvel.HostError as error:
        return error.reason
    return None


def main(*drawings):
    app = quorvel.Application()
    app.OnShellOpen = lambda target: True
    app.OnMessage = lambda text, title, buttons, icon: "No" if "No" in buttons else "OK"
    found = 0
    for drawing in drawings:
        doc = app.Documents.Open(os.path.abspath(drawing))
        for page in doc.Pages:
            for shape in shapes_of(page.Shapes):
                for link in shape.Hyperlinks:
                    wrong = fault(doc, link)
                    if wrong:
                        found += 1
                        print(f"{drawing}: {page.Name}, {shape.Name}: {wrong}")
    print(f"{found} broken links")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
