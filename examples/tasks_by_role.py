"""Lists every role of a map with the Tasks that it is responsible for and those that it supports.

    quorvel run examples/tasks_by_role.py "data/Samples/Order handling.vsdx"
"""

import sys

import quorvel


def main(drawing):
    doc = quorvel.Application().Documents.Open(drawing)
    for role in quorvel.Map(doc).roles:
        if not role.responsible_for and not role.supports:
            continue
        print(role.name)
        for task in role.responsible_for:
            print(f"  {task.id}  {task.description}")
        for task in role.supports:
            print(f"  {task.id}  {task.description} (supports {task.responsible_role or 'nobody'})")


if __name__ == "__main__":
    main(*sys.argv[1:])
