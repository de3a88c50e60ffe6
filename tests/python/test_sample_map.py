"""The sample map, as a script reads it."""

import pytest
from conftest import SAMPLE

import quorvel


@pytest.fixture
def sample(tmp_path):
    return quorvel.Application(profile=tmp_path).Documents.Open(SAMPLE)


def test_the_drawing_shows_the_values_of_its_cells(sample):
    shapes = sample.Pages("OH Order handling").Shapes
    task = shapes("OH02")
    assert [task.Shapes(member).Text for member in (1, 3, 4)] == ["OH02", "CR01", "Check the customer's credit"]
    assert shapes("Connector.SH01").Text == "Connector.SH01"
    assert any(shape.Text.startswith("Refused") for shape in shapes)


def test_read_as_a_map(sample):
    read = quorvel.Map(sample)
    assert [task.id for task in read.tasks if task.page == "SH Shipping"] == ["SH01", "SH02", "SH03", "SH04", "SH05"]
    task = read.task("OH02")
    assert task.responsible_role == "Credit Controller"
    assert task.supporting_roles == ("Finance Manager", "Accounts Clerk")
    assert (task.completion_time, task.sub_task, task.frequency) == ("1 eh.", "CR01", "Daily")
    ways = [(str(link.start), str(link.end), link.description) for link in read.links if link.page == "OH Order handling"]
    assert ("OH02", "OH04", "Refused") in ways and ("OH03", "SH01", "Confirmed order") in ways
    assert [c.sub_address for c in read.connectors][0] == "SH Shipping/SH01"
    clerk = next(role for role in read.roles if role.name == "Warehouse Clerk")
    assert [task.id for task in clerk.responsible_for] == ["SH01", "SH02"]
    assert [task.id for task in clerk.supports] == ["SH03", "SH04"]
    with pytest.raises(KeyError):
        read.task("ZZ99")
