"""The wheel: built without a network, it contains all that a script needs."""

import os
import shutil
import subprocess
import sys
import zipfile

from conftest import SOURCE, environment_for_children
from test_surface import SCRIPT


def test_the_wheel_is_complete(tmp_path):
    sources = tmp_path / "python"  # a copy, because building writes files
    shutil.copytree(SOURCE / "bindings" / "python", sources)
    environment = environment_for_children() | {"PIP_NO_INDEX": "1", "QUORVEL_SOURCE_FOLDER": str(SOURCE)}
    built = subprocess.run(
        [sys.executable, "-m", "build", "--wheel", "--no-isolation", "--outdir", tmp_path, sources],
        env=environment,
        capture_output=True,
        text=True,
    )
    assert built.returncode == 0, built.stdout + built.stderr
    (wheel,) = tmp_path.glob("quorvel-*.whl")
    place = tmp_path / "installed"
    zipfile.ZipFile(wheel).extractall(place)
    for part in ("py.typed", "host_objects.pyi", "data/Quorvel.vstx", "data/Icons/hyperlink.gif"):
        assert (place / "quorvel" / part).exists(), part
    script = tmp_path / "script.py"
    script.write_text(SCRIPT + "import sys\nassert quorvel.template_path().startswith(sys.argv[1])\n")
    environment["PYTHONPATH"] = str(place)
    environment.pop("QUORVEL_HOME", None)
    subprocess.run([sys.executable, script, place], cwd=tmp_path, env=environment, check=True)
    assert os.path.getsize(tmp_path / "map.vsdx") > 0
