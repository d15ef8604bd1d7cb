#!/usr/bin/env python3
"""Installs a build, moves the tree, and builds a program against it by each way that we promise.

    consume.py BUILD COMPILER [FLAG...]
"""

import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).parent


def run(*command, **more):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **more)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def with_cmake(tree, work, compiler, flags):
    build = work / "bin"
    run("cmake", "-G", "Ninja", "-S", HERE, "-B", build, f"-DCMAKE_PREFIX_PATH={tree}",
        f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={' '.join(flags)}")
    run("cmake", "--build", build)
    return build / "consumer"


def with_pkg_config(tree, work, compiler, flags):
    directory = next(tree.rglob("korvane_gen.pc")).parent
    environment = {**os.environ, "PKG_CONFIG_PATH": str(directory)}

    def ask(*question):
        return run("pkg-config", *question, "korvane_gen", env=environment).split()

    program = work / "bin" / "consumer"
    program.parent.mkdir()
    run(compiler, *flags, "-std=c++20", HERE / "main.cpp", "-o", program,
        *ask("--cflags"), *ask("--libs"), "-Wl,-rpath," + ask("--variable=libdir")[0])
    return program


def main(build, compiler, flags):
    with tempfile.TemporaryDirectory() as directory:
        scratch = pathlib.Path(os.path.realpath(directory))
        run("cmake", "--install", build, "--prefix", scratch / "staged")
        tree = (scratch / "staged").rename(scratch / "moved")
        for way in (with_cmake, with_pkg_config):
            work = scratch / way.__name__
            work.mkdir()
            program = way(tree, work, compiler, flags)
            output = run(program, "argument")
            expected = f"2 argument\nconsumer\n{work}/\n0\n"
            if output != expected:
                sys.exit(f"{way.__name__}: {output!r}, not {expected!r}")
        answer = run(tree / "bin" / "gen_query", "where")
        if f"{tree}/bin/gen_query" not in answer:
            sys.exit(f"gen_query of the moved tree: {answer}")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3:])
