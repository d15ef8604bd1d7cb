"""Not run but read by mypy: what users write, with the types that they get. Each "type: ignore" stands
for a complaint that there has to be."""

from pathlib import Path
from typing import List, Optional

import korvane_gen as gen

with gen.start("/opt/korvane"):
    gen.project.directory = "/opt/korvane/project"
    gen.project.database = Path("db")
    gen.project.output = b"out"
    gen.project.libraries = "lib;../lib"
    gen.project.user_libraries = ["/opt/korvane/home/ada/lib", Path("lib"), b"lib"]
    gen.project.database = gen.project.user_libraries = None
    gen.project.user_libraries = 5  # type: ignore[assignment]
    gen.project.user_libs = ["lib"]  # type: ignore[attr-defined]

    directory: Path = gen.project.directory
    database: Optional[Path] = gen.project.database
    libraries: List[Path] = gen.project.user_libraries
    text: str = gen.project.output  # type: ignore[assignment]
    found: Path = gen.find("adder.v")  # type: ignore[assignment]

    version: str = gen.__version__
    folded: str = gen.fold("a", upper=True)
    gen.fold("a", upper="no")  # type: ignore[arg-type]
    gen.trim("a", white_space=2)  # type: ignore[arg-type]

    names: List[str] = sorted(["data[10]", "data[9]"], key=gen.natural_key)
    standings: List[Optional[str]] = [check.standing for check in gen.candidates("adder.v")]
