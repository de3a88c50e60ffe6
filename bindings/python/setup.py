"""Builds the wheel: the native half through CMake, and the shipped files beside it.

QUORVEL_NATIVE_MODULE names a native half that is built already; QUORVEL_SOURCE_FOLDER the sources, when this folder was
copied out of them.
"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.build_py import build_py

SOURCE = Path(os.environ.get("QUORVEL_SOURCE_FOLDER") or Path(__file__).resolve().parents[2])


class BuildPackage(build_py):
    def run(self):
        super().run()
        shutil.copytree(SOURCE / "data", Path(self.build_lib) / "quorvel" / "data", dirs_exist_ok=True)


class BuildNative(build_ext):
    def build_extension(self, extension):
        built = os.environ.get("QUORVEL_NATIVE_MODULE") or self.build_with_cmake()
        target = Path(self.get_ext_fullpath(extension.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(built, target)

    def build_with_cmake(self):
        folder = Path(self.build_temp).resolve()
        settings = ["-DCMAKE_BUILD_TYPE=Release", "-DQUORVEL_TESTS=OFF", f"-DPython3_EXECUTABLE={sys.executable}"]
        subprocess.run(["cmake", "-G", "Ninja", "-S", SOURCE, "-B", folder, *settings], check=True)
        subprocess.run(["cmake", "--build", folder, "--target", "quorvel_python"], check=True)
        return next((folder / "python" / "quorvel").glob("_quorvel*.so"))


setup(
    version=re.search(r"project\(Quorvel VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text()).group(1),
    ext_modules=[Extension("quorvel._quorvel", sources=[])],
    cmdclass={"build_py": BuildPackage, "build_ext": BuildNative},
)
