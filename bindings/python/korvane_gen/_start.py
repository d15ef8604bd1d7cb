"""Start, installation, names of files, environment."""

import contextlib
import os
from pathlib import Path
from typing import Iterator, List, NamedTuple, Optional

from . import _gen
from ._types import Text


class Library(NamedTuple):
    """A shipped library."""

    library: int
    eda_only: bool
    there: bool
    directory: Path


class ToolFile(NamedTuple):
    """The file that a tool window, report or advisor keeps its data in."""

    family: str
    function: str
    path: Path


class Installation:
    """The installation that the process belongs to. As a context manager it ends what start() began.

    The process goes on belonging to it: what was asked before the end is answered behind it, too.
    """

    __slots__ = ()

    def __enter__(self) -> "Installation":
        return self

    def __exit__(self, *_: object) -> None:
        _gen.finish()

    def __repr__(self) -> str:
        return f"<korvane_gen.Installation {self.root}>"

    @property
    def executable(self) -> Path:
        """The executable that the library takes the process for."""
        return Path(_gen.where()[0]["executable"])

    @property
    def root(self) -> Path:
        """The directory of the installation."""
        return Path(_gen.installation()[0]["root"])

    @property
    def common_data(self) -> Path:
        """The shipped data."""
        return self._directory("common_data")

    @property
    def miscellaneous(self) -> Path:
        """Shipped data that belongs to no tool."""
        return self._directory("miscellaneous")

    @property
    def unshipped_data(self) -> Path:
        """Data of an installation that is not shipped."""
        return self._directory("unshipped_data")

    @property
    def tcl_applications(self) -> Path:
        """The Tcl scripts of the suite."""
        return self._directory("tcl_applications")

    @property
    def tcl_internal(self) -> Path:
        """The Tcl scripts that tools run themselves."""
        return self._directory("tcl_internal")

    @property
    def unshipped_tcl(self) -> Path:
        """Tcl scripts of an installation that is not shipped."""
        return self._directory("unshipped_tcl")

    @property
    def device_database(self) -> Path:
        """The device data."""
        return self._directory("device_database")

    @property
    def device_files(self) -> List[str]:
        """The names of the device databases beside the executable, sorted."""
        return [row["name"] for row in _gen.device_files()]

    @property
    def libraries(self) -> List[Library]:
        """The shipped libraries."""
        return [
            Library(row["library"], row["eda_only"], row["there"], Path(row["directory"]))
            for row in _gen.libraries()
        ]

    def library(self, number: int) -> Path:
        """The directory of a shipped library. A number past the last one is an InternalError."""
        return _gen.library(number)

    def _directory(self, name: str) -> Path:
        return Path(_gen.installation()[0][name])


def start(root: Optional[Text] = None, *, executable: Optional[Text] = None) -> Installation:
    """Starts the library as an executable of an installation.

    The installation is the one at root, that of an executable, or the one that the environment
    variable KORVANE_ROOTDIR names. FileNotFoundError where there is none. A process starts once:
    again with the same location is fine, with another one a ValueError.
    """
    if root is None and executable is None:
        root = os.environ.get("KORVANE_ROOTDIR")
        if root is None:
            raise ValueError("start() needs root or executable, or KORVANE_ROOTDIR in the environment")
    if _gen.start(root, executable) is False:
        raise FileNotFoundError(2, "no such installation", os.fspath(root or executable or ""))
    return Installation()


def tool_files() -> List[ToolFile]:
    """Where tool windows, reports and advisors keep their data."""
    return [ToolFile(row["family"], row["function"], Path(row["path"])) for row in _gen.tool_files()]


def database_file(name: Text, extension: Text = "pdb") -> Path:
    """The path of a database file in the project's database directory."""
    return _gen.database_file(name, extension)


def temporary_file(
    directory: Optional[Text] = None, *, prefix: Text = "gen", number: int = 0
) -> Path:
    """Creates an empty file that was not there and gives its path.

    The directory is the system's for temporary files if not given; number is the first to try, 0 for
    one from the clock. OSError where none can be created.
    """
    return _gen.temporary_file(directory, prefix, number)


def profile_directory() -> Path:
    """The user's settings directory, which is created. OSError where it cannot be had."""
    return _gen.profile_directory()


def is_64bit_wanted() -> bool:
    """KORVANE_BIT_TYPE asks for 64-bit tools; the first answer stays."""
    return bool(_gen.is_64bit_wanted())


@contextlib.contextmanager
def paths_for_64bit(tool: Text) -> Iterator[bool]:
    """In its body PATH and LD_LIBRARY_PATH begin with the directory of the 64-bit tools, if the tool
    is there: the body gets whether they do. Child processes see it through os.environ too."""
    if _gen.enter_64bit(tool) is None:
        yield False
        return
    # os.environ is a copy that does not see what the library has set. It is also what brings the
    # variables back: leave_64bit() would leave one that was not set behind as an empty one.
    names = ("PATH", "LD_LIBRARY_PATH")
    before = [os.environ.get(name) for name in names]
    try:
        for name in names:
            os.environ[name] = _gen.environment(name) or ""
        yield True
    finally:
        for name, value in zip(names, before):
            if value is None:
                del os.environ[name]
            else:
                os.environ[name] = value
