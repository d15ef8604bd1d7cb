#!/usr/bin/python3
"""Lists every file that a design unit is made of, who supplied it, and what it shadows.

    files.py ROOT PROJECT UNIT...
"""

import sys

import korvane_gen as gen


def main(root, project, *units):
    with gen.start(root):
        gen.project.directory = project
        gen.project.database = f"{project}/db"
        gen.project.libraries = ["lib"]
        for unit in units:
            for source in gen.sources(unit):
                print(f"{unit:10}{source.origin:20}{source.path}")
                for asked in gen.candidates(source.path.name):
                    if asked.standing == "shadowed":
                        print(f"{'':10}  shadows {asked.group}: {asked.path}")


main(*sys.argv[1:])
