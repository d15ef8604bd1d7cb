#!/usr/bin/env python3
"""Installs a build, moves the tree, and builds the hosts of examples/ against it. README has to show the first
of them, the CMake project and the command as they are.

    consume.py BUILD README EXAMPLES COMPILER [FLAG...]
"""

import os
import pathlib
import re
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

HOSTS = pathlib.Path(__file__).with_name("hosts.sh")


def run(*command, **more):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **more)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def shown_in(readme, language):
    return re.search(rf"^```{language}\n(.*?)^```$", readme, re.M | re.S)[1]


def check_readme(readme, examples):
    """README shows what is built here."""
    for language, path in (("cpp", "find_file/main.cpp"), ("cmake", "cmake_host/CMakeLists.txt")):
        if shown_in(readme, language) != (examples / path).read_text(encoding="utf-8"):
            sys.exit(f"README shows another {path}")
    command = re.search(r"^g\+\+ -m32 (.*)$", readme, re.M)[1]
    if f"$CXX $CXXFLAGS {command}\n" not in HOSTS.read_text(encoding="utf-8"):
        sys.exit(f"{HOSTS.name} does not run what README shows: {command}")


def check_names(headers, environment, compiler, flags):
    """With our directory among those that are searched, the C library's headers are still the C library's."""
    asked = "".join(f"#if __has_include(<{header.name}>)\n{header.name}\n#endif\n" for header in headers)
    hidden = run(compiler, *flags, "-E", "-P", "-x", "c++", "-", input=asked)
    if hidden.strip():
        sys.exit(f"installed headers stand before the system's: {hidden}")
    given = run("pkg-config", "--cflags", "korvane_gen", env=environment).split()
    run(compiler, *flags, *given, "-fsyntax-only", "-x", "c++", "-",
        input="#include <err.h>\n#include <time.h>\nint main() { errx(1, \"%ld\", static_cast<long>(time(nullptr))); }\n")


VERSION_HOST = """
#include <gen.h>
#include <cstdio>
int main() {
    std::printf("%d.%d.%d\\n%s\\n%s\\n", GEN_VERSION_MAJOR, GEN_VERSION_MINOR, GEN_VERSION_PATCH, GEN_VERSION,
                gen_get_version());
}
"""


def check_version(scratch, tree, compiler, flags, environment):
    """Headers, library, pkg-config, the CMake package and gen_query name one version."""
    version = run("pkg-config", "--modversion", "korvane_gen", env=environment).strip()
    answers = [run(tree / "bin" / "gen_query", "--version").split()[1]]
    package = next(tree.rglob("korvane_gen-config-version.cmake")).read_text(encoding="utf-8")
    answers.append(re.search(r'set\(PACKAGE_VERSION "(.*)"\)', package)[1])
    source = scratch / "version.cpp"
    source.write_text(VERSION_HOST, encoding="utf-8")
    options = run("pkg-config", "--cflags", "--libs", "korvane_gen", env=environment).split()
    run(compiler, *flags, "-std=c++20", source, "-o", scratch / "version", *options)
    answers += run(scratch / "version", env=environment).split()
    if answers != 5 * [version]:
        sys.exit(f"pkg-config has version {version}, the others have {answers}")


def main(build, readme, examples, compiler, flags):
    check_readme(readme.read_text(encoding="utf-8"), examples)
    with staging.scratch() as directory:
        scratch = pathlib.Path(os.path.realpath(directory))
        run("cmake", "--install", build, "--prefix", scratch / "staged")
        tree = (scratch / "staged").rename(scratch / "moved")
        libraries = next(tree.rglob("libkorvane_gen.so")).parent
        environment = {
            **os.environ, "CXX": compiler, "CXXFLAGS": " ".join(flags),
            "PKG_CONFIG_PATH": str(libraries / "pkgconfig"), "CMAKE_PREFIX_PATH": str(tree),
            "LD_LIBRARY_PATH": str(libraries)}
        check_names(list(tree.rglob("korvane/*.h")), environment, compiler, flags)
        run("sh", HOSTS, examples, scratch / "hosts", env=environment)
        answer = run(tree / "bin" / "gen_query", "where")
        if f"{tree}/bin/gen_query" not in answer:
            sys.exit(f"gen_query of the moved tree: {answer}")
        check_version(scratch, tree, compiler, flags, environment)


if __name__ == "__main__":
    given = [pathlib.Path(argument) for argument in sys.argv[1:4]]
    main(*given, sys.argv[4], sys.argv[5:])
