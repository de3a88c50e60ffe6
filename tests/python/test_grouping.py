"""Shapes are grouped and ungrouped from a script, and stay where they are."""

import pytest
from conftest import number

import quorvel


def test_a_task_stays_a_task_in_a_group(maps):
    page = maps.new_map()
    task = maps.drop_task(page)
    label = page.DrawRectangle(1, 1, 2, 2)
    name, before = task.Name, len(page.Shapes)
    window = maps.app.ActiveWindow
    window.DeselectAll()
    with pytest.raises(quorvel.HostError, match="nothing is selected"):
        window.Selection.Group()
    for shape in (task, label):
        window.Select(shape, 2)
    group = window.Selection.Group()
    assert len(page.Shapes) == before - 1 and [shape.Name for shape in group.Shapes] == [name, label.Name]
    group.Cells("PinX").Result["in"] = number(group, "PinX") + 2
    group.Ungroup()
    assert (number(task, "PinX"), number(task, "PinY")) == pytest.approx((5, 6))
    assert task.Name == name and task in page.Shapes
    with pytest.raises(quorvel.HostError):
        group.Name
    maps.app.Undo()
    maps.app.Undo()
    maps.app.Undo()
    assert len(page.Shapes) == before and number(task, "PinX") == pytest.approx(3)
