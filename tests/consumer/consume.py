#!/usr/bin/env python3
"""Installs a build, moves the tree, and builds the program that README shows against it, by each way
that README promises.

    consume.py BUILD README COMPILER [FLAG...]
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile


def run(*command, **more):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **more)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def shown_in(readme, language):
    return re.search(rf"^```{language}\n(.*?)^```$", readme.read_text(), re.M | re.S)[1]


def with_cmake(tree, source, build, compiler, flags):
    run("cmake", "-G", "Ninja", "-S", source, "-B", build, f"-DCMAKE_PREFIX_PATH={tree}",
        f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={' '.join(flags)}")
    run("cmake", "--build", build)
    return build / "adder"


def with_pkg_config(tree, source, build, compiler, flags):
    directory = next(tree.rglob("korvane_gen.pc")).parent
    environment = {**os.environ, "PKG_CONFIG_PATH": str(directory)}

    def ask(*question):
        return run("pkg-config", *question, "korvane_gen", env=environment).split()

    build.mkdir()
    run(compiler, *flags, "-std=c++20", source / "main.cpp", "-o", build / "adder",
        *ask("--cflags"), *ask("--libs"), "-Wl,-rpath," + ask("--variable=libdir")[0])
    return build / "adder"


def main(build, readme, compiler, flags):
    with tempfile.TemporaryDirectory() as directory:
        scratch = pathlib.Path(os.path.realpath(directory))
        run("cmake", "--install", build, "--prefix", scratch / "staged")
        tree = (scratch / "staged").rename(scratch / "moved")
        (scratch / "main.cpp").write_text(shown_in(readme, "cpp"))
        (scratch / "CMakeLists.txt").write_text(shown_in(readme, "cmake"))
        (scratch / "project").mkdir()
        (scratch / "project" / "adder.v").touch()
        for way in (with_cmake, with_pkg_config):
            program = way(tree, scratch, scratch / way.__name__, compiler, flags)
            for output in (run(program, scratch / "project"), run(program, cwd=scratch / "project")):
                if output != f"adder.v is {scratch}/project/adder.v\n":
                    sys.exit(f"{way.__name__}: {output}")
        answer = run(tree / "bin" / "gen_query", "where")
        if f"{tree}/bin/gen_query" not in answer:
            sys.exit(f"gen_query of the moved tree: {answer}")


if __name__ == "__main__":
    main(sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3], sys.argv[4:])
