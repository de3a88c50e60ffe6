"""The descriptions: every member that the host publishes has one, and so has everything else that scripts see."""

import ast
import importlib.util
import inspect
from pathlib import Path

import quorvel
from quorvel import _quorvel, forms, host_objects, maps

PACKAGE = Path(quorvel.__file__).parent


def test_every_published_member_is_there_with_a_description():
    missing = []
    for _, _, kind, member, _ in _quorvel.members():
        name = member.removesuffix("ByName").removesuffix("ByIndex")
        if not getattr(getattr(getattr(quorvel, kind), name, None), "__doc__", None):
            missing.append(f"{kind}.{member}")
    assert missing == [], "describe them in host_objects.pyi"


def test_everything_that_scripts_see_has_a_description_and_a_type():
    for name in quorvel.__all__:
        value = getattr(quorvel, name)
        assert inspect.getdoc(value), name
        for member, what in vars(value).items() if inspect.isclass(value) else ():
            if not member.startswith("_") and (callable(what) or isinstance(what, property)):
                assert inspect.getdoc(what), f"{name}.{member}"
    for module in (forms, maps, host_objects):
        spec = importlib.util.find_spec(module.__name__)
        source = Path(spec.origin)
        stub = source.with_suffix(".pyi")
        tree = ast.parse((stub if stub.exists() else source).read_text())
        for node in ast.walk(tree):
            if isinstance(node, ast.FunctionDef) and not node.name.startswith("_"):
                assert node.returns is not None, f"{module.__name__}: {node.name}"
    assert (PACKAGE / "py.typed").exists()


def test_the_native_stub_lists_every_member():
    tree = ast.parse((PACKAGE / "_quorvel.pyi").read_text())
    for node in tree.body:
        if isinstance(node, ast.ClassDef):
            named = {n.name for n in node.body if isinstance(n, ast.FunctionDef)}
            there = {name for name in vars(getattr(_quorvel, node.name)) if not name.startswith("_")}
            assert there <= named | {"application_reference"}, node.name
            assert named <= there | {"__init__"}, node.name
        elif isinstance(node, ast.FunctionDef):
            assert hasattr(_quorvel, node.name)


def test_parameters_have_their_names():
    assert str(inspect.signature(quorvel.Page.Drop)) == "(self, master, x, y)"
    assert str(inspect.signature(quorvel.Shape.AddNamedRow)) == "(self, section, name, tag=0)"
