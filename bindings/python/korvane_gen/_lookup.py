"""The project, and the files that names mean."""

import os
from pathlib import Path
from typing import Callable, Generic, Iterable, List, NamedTuple, Optional, TypeVar, Union, overload

from . import _gen
from ._types import Rows, Text

Directories = Union[Text, Iterable[Text]]
Got = TypeVar("Got")
Given = TypeVar("Given")


class ExistenceCheck(NamedTuple):
    """One existence check of a lookup. standing is "wins" or "shadowed" where candidates are listed."""

    group: str
    there: bool
    standing: Optional[str]
    path: Path


class Include(NamedTuple):
    """An included file, and where it would lie beside the alias of the file that includes it."""

    path: Path
    beside_alias: Optional[Path]


class Source(NamedTuple):
    """A source file: the library's number of its group, the group's name, the type, the path."""

    group: int
    origin: str
    type: str
    path: Path


def _checks(rows: Rows) -> List[ExistenceCheck]:
    return [
        ExistenceCheck(row["group"], row["there"], row["standing"], Path(row["path"])) for row in rows
    ]


def _joined(directories: Directories) -> Text:
    """A path list. One text is one already; of several each is quoted, whatever it contains."""
    if isinstance(directories, (str, bytes, os.PathLike)):
        return directories
    try:
        names = [os.fsencode(directory) for directory in directories]
    except TypeError as fault:
        raise TypeError(f"library directories must be paths: {fault}") from None
    return b";".join(b'"' + name + b'"' for name in names)


class Setting(Generic[Got, Given]):
    """A property of the project that takes more types than it gives. None clears it."""

    def __init__(
        self, get: Callable[[], Got], set: Callable[[Union[Given, str]], object], doc: str
    ) -> None:
        self._get = get
        self._set = set
        self.__doc__ = doc

    @overload
    def __get__(self, project: None, owner: type) -> "Setting[Got, Given]": ...

    @overload
    def __get__(self, project: object, owner: type) -> Got: ...

    def __get__(self, project: object, owner: type) -> Union[Got, "Setting[Got, Given]"]:
        return self if project is None else self._get()

    def __set__(self, project: object, value: Optional[Given]) -> None:
        self._set("" if value is None else value)


def _database() -> Optional[Path]:
    database = _gen.project()[0]["database"]
    return None if database is None else Path(database)


class Project:
    """The project that lookups start at. Without a directory the current one is made it."""

    __slots__ = () # a misspelt property is an error

    directory: Setting[Path, Text] = Setting(
        lambda: Path(_gen.project()[0]["project"]), _gen.set_project, "The project directory."
    )
    database: Setting[Optional[Path], Text] = Setting(
        _database, _gen.set_database, "The database directory, as given."
    )
    output: Setting[Path, Text] = Setting(
        lambda: Path(_gen.project()[0]["output"]),
        _gen.set_output,
        "The output directory, which is created; the project directory where there is none.",
    )
    libraries: Setting[List[Path], Directories] = Setting(
        lambda: _directories(2),
        lambda directories: _gen.set_project_libraries(_joined(directories)),
        'The project\'s library directories, as given. Set it to paths, or to a text parted by ";".',
    )
    user_libraries: Setting[List[Path], Directories] = Setting(
        lambda: _directories(3),
        lambda directories: _gen.set_user_libraries(_joined(directories)),
        "The user's library directories, in the same way.",
    )

    @property
    def parablocks(self) -> Path:
        """The project's parablocks directory."""
        return Path(_gen.project()[0]["parablocks"])

    @property
    def shipped_libraries(self) -> List[Path]:
        """The shipped libraries that lookups ask."""
        return _directories(5)

    @property
    def eda_libraries(self) -> List[Path]:
        """Those for outside tools."""
        return _directories(6)

    def relative(self, path: Text) -> Optional[Path]:
        """The path as seen from the project; None where it does not lie below."""
        return _gen.relative_to_project(path)

    def clear(self) -> None:
        """Frees all search state: libraries have to be set again. The cache stays."""
        _gen.clear_paths()


class Cache:
    """What find_cached() keeps: len() is how many names."""

    __slots__ = ()

    def __len__(self) -> int:
        return _gen.cache_size()

    def clear(self) -> None:
        """Forgets all of it."""
        _gen.clear_cache()


project = Project()
cache = Cache()


def _directories(group: int) -> List[Path]:
    # Groups have the numbers of gen_c_group, in the order of a lookup.
    return [Path(row["directory"]) for row in _gen.directories(group)]


def file_types() -> List[str]:
    """The extensions of source files, most preferred first."""
    return [row["extension"] for row in _gen.file_types()]


def candidates(name: Text, *, eda: bool = False) -> List[ExistenceCheck]:
    """All files that find() could give, the one that it gives first."""
    return [check for check in _checks(_gen.trace_find(name, eda, True)) if check.there]


def trace(name: Text, *, eda: bool = False, all: bool = False) -> List[ExistenceCheck]:
    """Every existence check of find(), in order; with all it walks on behind a hit."""
    return _checks(_gen.trace_find(name, eda, all))


def _check_alias(function: str, from_file: Optional[Text], alias: Optional[Text]) -> None:
    if alias is not None and from_file is None:
        raise ValueError(f"{function}() argument 'alias' needs from_file, which it is another path of")


def include(
    name: Text, *, from_file: Optional[Text] = None, alias: Optional[Text] = None
) -> Optional[Include]:
    """The file that an include directive means, in from_file, which is also known as alias.

    beside_alias is None unless there is an alias and the file lies beside from_file.
    """
    _check_alias("include", from_file, alias)
    found = _gen.include(name, from_file, alias)
    if found is None:
        return None
    path, beside = found
    return Include(path, None if beside == Path() else beside)


def trace_include(
    name: Text,
    *,
    from_file: Optional[Text] = None,
    alias: Optional[Text] = None,
    all: bool = False,
) -> List[ExistenceCheck]:
    """Every existence check of include()."""
    _check_alias("trace_include", from_file, alias)
    return _checks(_gen.trace_include(name, from_file, alias, all))


def sources(unit: Text, *, shipped_only: bool = False) -> List[Source]:
    """The source files of a design unit, one of each type."""
    return [
        Source(row["group"], row["from"], row["type"], Path(row["path"]))
        for row in _gen.sources(unit, shipped_only)
    ]


def trace_sources(
    unit: Text, *, shipped_only: bool = False, all: bool = False
) -> List[ExistenceCheck]:
    """Every existence check of sources()."""
    return _checks(_gen.trace_sources(unit, shipped_only, all))
