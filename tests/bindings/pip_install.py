#!/usr/bin/env python3
"""Installs the library somewhere and the Python package beside it with pip, without a network, and asks it.

    pip_install.py BUILD PACKAGE SUITE
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, timeout=250,
                          **options).stdout


def main(build, package, suite):
    with tempfile.TemporaryDirectory() as directory:
        scratch = pathlib.Path(os.path.realpath(directory))
        run("cmake", "--install", build, "--prefix", scratch / "usr")
        pkg_config = next((scratch / "usr").rglob("korvane_gen_c.pc")).parent
        source = shutil.copytree(package, scratch / "source") # pip builds in place
        run(sys.executable, "-m", "pip", "install", "--no-index", "--no-build-isolation", "--no-deps",
            "--quiet", "--root-user-action=ignore", "--target", scratch / "site", source,
            env={**os.environ, "PKG_CONFIG_PATH": str(pkg_config), "CFLAGS": "-O0",
                 "PIP_DISABLE_PIP_VERSION_CHECK": "1"})
        shown = run(sys.executable, "-c",
                    f"import korvane_gen as gen; gen.start({str(suite)!r}); print(gen.find('mux.sv'))",
                    cwd=scratch, env={**os.environ, "PYTHONPATH": str(scratch / "site")})
    expected = f"{suite}/libraries/parablocks/gates/mux.sv\n"
    print(shown, end="")
    return 0 if shown == expected else 1


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
