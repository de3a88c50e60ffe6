"""The examples, run on real drawings as their first lines say."""

import os
import shutil
import subprocess

import pytest
from conftest import SAMPLE, SOURCE, environment_for_children

import quorvel


def run(*arguments, cwd, expect=0):
    """With the module that the program finds, not the one that this process was given."""
    done = subprocess.run(
        [os.environ["QUORVEL_PROGRAM"], "run", *map(str, arguments)],
        cwd=cwd,
        env=environment_for_children(),
        capture_output=True,
        text=True,
    )
    assert done.returncode == expect, done.stdout + done.stderr
    return done


def example(name):
    return SOURCE / "examples" / name


def test_map_from_csv(tmp_path):
    said = run(example("map_from_csv.py"), example("steps.csv"), "requests.vsdx", cwd=tmp_path).stdout
    assert said.splitlines()[0] == "RQ01 Receive the request"
    read = quorvel.Map(quorvel.Application(profile=tmp_path).Documents.Open(tmp_path / "requests.vsdx"))
    assert [task.id for task in read.tasks] == ["RQ01", "RQ02", "RQ03", "RQ04", "HD01", "HD02", "HD03"]
    assert read.task("RQ02").supporting_roles == ("Team Lead",)
    assert {(str(link.start), str(link.end)) for link in read.links} == {
        ("RQ01", "RQ02"),
        ("RQ02", "RQ04"),
        ("RQ02", "RQ03"),
        ("HD01", "HD02"),
        ("HD02", "HD03"),
    }
    assert [role.name for role in read.roles] == ["Service Desk", "Team Lead", "Technician"]


def test_tasks_by_role(tmp_path):
    said = run(example("tasks_by_role.py"), SAMPLE, cwd=tmp_path).stdout
    assert "Packer\n  SH03  Pack the goods and hand them to the carrier\n  SH01  Pick the goods (supports" in said


def test_broken_links(tmp_path):
    intact = run(example("broken_links.py"), SAMPLE, cwd=tmp_path)
    assert intact.stdout.endswith("0 broken links\n")
    # The same map with a page renamed, a Task deleted and a file missing.
    app = quorvel.Application(profile=tmp_path, answers="defaults")
    doc = app.Documents.Open(SAMPLE)
    doc.Pages("SH Shipping").Shapes("SH01").Name = "SH99"
    link = doc.Pages("OH Order handling").Shapes("OH01").AddHyperlink()
    link.Address = "missing.docx"
    for address, place in (("BROKEN.vsdx#mark", "sh shipping/sh99"), ("www.example.org", ""), ("http:", "")):
        link = doc.Pages("OH Order handling").Shapes("OH01").AddHyperlink()
        link.Address, link.SubAddress = address, place
    doc.SaveAs(tmp_path / "broken.vsdx")
    broken = run(example("broken_links.py"), "broken.vsdx", cwd=tmp_path, expect=1).stdout
    assert 'the page "SH Shipping" has no shape "SH01"' in broken and "missing.docx does not exist" in broken
    assert '"http:" is not followed' in broken and broken.endswith("3 broken links\n")


def test_upgrade_folder(tmp_path):
    old = tmp_path / "old"
    old.mkdir()
    shutil.copy(SAMPLE, old / "orders.vsdx")
    app = quorvel.Application(profile=tmp_path, answers="defaults")
    app.Documents.Open(SAMPLE).SaveAs(old / "older.vdx")
    (old / "broken.vsdx").write_text("no drawing")
    said = run(example("upgrade_folder.py"), old, tmp_path / "new", cwd=tmp_path, expect=1).stdout
    assert "orders.vsdx: map, 3 pages" in said and "older.vdx: map, 3 pages" in said
    assert sorted(os.listdir(tmp_path / "new")) == ["older.vsdx", "orders.vsdx"]
    opened = quorvel.Application(profile=tmp_path).Documents.Open(tmp_path / "new" / "older.vsdx")
    assert len(quorvel.Map(opened).tasks) == 16


def test_run_passes_arguments_and_the_exit_code(tmp_path):
    script = tmp_path / "script.py"
    script.write_text("import sys, quorvel\nprint(sys.argv[1:], quorvel.__name__)\nsys.exit(7)\n")
    done = run(script, "--help", "two words", cwd=tmp_path, expect=7)
    assert done.stdout == "['--help', 'two words'] quorvel\n"


@pytest.mark.parametrize(
    "arguments, environment, code, sentence",
    [
        (["missing.py"], {}, 3, "missing.py is no script that can be read."),
        ([], {}, 2, "SCRIPT.py"),
        (["script.py"], {"QUORVEL_PYTHON": "no-such-python"}, 3, "Python was not found"),
        (["script.py"], {"QUORVEL_PYTHON": "false"}, 3, "Python has no module quorvel"),
    ],
)
def test_run_says_in_one_sentence_what_is_missing(tmp_path, arguments, environment, code, sentence):
    (tmp_path / "script.py").write_text("print('never')\n")
    done = subprocess.run(
        [os.environ["QUORVEL_PROGRAM"], "run", *arguments],
        cwd=tmp_path,
        env=environment_for_children() | environment,
        capture_output=True,
        text=True,
    )
    assert (done.returncode, done.stdout) == (code, "")
    assert sentence in done.stderr
