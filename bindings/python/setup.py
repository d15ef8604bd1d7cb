"""Builds the extension against an installed library, which pkg-config knows: `pip install .`"""

import shlex
import subprocess

from setuptools import Extension, setup


def pkg_config(*options):
    done = subprocess.run(["pkg-config", *options, "korvane_gen_c"], stdout=subprocess.PIPE, text=True,
                          check=True)
    return shlex.split(done.stdout)  # it escapes the blanks of directories


setup(
    version=pkg_config("--modversion")[0],
    ext_modules=[
        Extension(
            "korvane_gen._gen",
            ["_gen.cpp", "_gen_call.cpp", "_gen_key.cpp", "_gen_value.cpp"],
            depends=["_gen_call.h", "_gen_key.h", "_gen_value.h"],
            language="c++",
            extra_compile_args=["-std=c++20", "-fvisibility=hidden", *pkg_config("--cflags")],
            extra_link_args=pkg_config("--libs"),
            runtime_library_dirs=pkg_config("--variable=libdir"),
        )
    ],
)
