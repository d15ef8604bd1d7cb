"""Undo files, flags, histograms."""

from pathlib import Path
from typing import Iterable, List, NamedTuple, Optional

from . import _gen
from ._types import Text


class UndoSection:
    """A section of an undo file. As a context manager it is recorded at the end of its body,
    unless an exception leaves that; outside it, or once another section has begun, a command is a ValueError."""

    def __init__(self, file: "UndoFile", number: int) -> None:
        self._file = file
        self._number = number

    def __enter__(self) -> "UndoSection":
        return self

    def __exit__(self, exception_type: object, *_: object) -> None:
        if exception_type is None:
            self._file._end(self._number)
        else:
            self._file._drop(self._number)

    def undo(self, command: Text, *, comment: Text = "") -> None:
        """Adds a command that undoes the edit."""
        self._file._add(self._number, False, command, comment)

    def redo(self, command: Text, *, comment: Text = "") -> None:
        """Adds a command that does the edit again."""
        self._file._add(self._number, True, command, comment)


class UndoFile:
    """The file undo_redo.txt of a directory. As a context manager it is written at the end.

        with UndoFile("db") as file:
            with file.section("Move node", description="one node") as section:
                section.undo("undo_move a", comment="restores a")
                section.redo("redo_move a")
    """

    def __init__(self, directory: Text = ".") -> None:
        self._file = _gen.undo_create(directory)
        self._sections = 0 # how many have begun; the last of them may be open

    def __enter__(self) -> "UndoFile":
        return self

    def __exit__(self, exception_type: object, *_: object) -> None:
        if exception_type is None:
            self.commit()

    def section(self, title: Text, *, description: Text = "") -> UndoSection:
        """Begins a section; one that is open is over, unrecorded."""
        _gen.undo_begin(self._file, title)
        self._sections += 1
        _gen.undo_describe(self._file, description)
        return UndoSection(self, self._sections)

    def commit(self) -> Path:
        """Writes all recorded sections and gives the file. OSError where it cannot be opened."""
        return _gen.undo_commit(self._file)

    def _check(self, number: int) -> None:
        if number != self._sections:
            raise ValueError("UndoSection: section has not begun or is over")

    def _add(self, number: int, redo: bool, command: Text, comment: Text) -> None:
        self._check(number)
        _gen.undo_add(self._file, redo, command, comment)

    def _end(self, number: int) -> None:
        self._check(number)
        if not _gen.undo_end(self._file):
            raise ValueError("a section needs a title and a command")

    def _drop(self, number: int) -> None:
        """Nothing of the section is recorded, and nothing more belongs to it."""
        if number == self._sections:
            _gen.undo_begin(self._file, "")
            _gen.undo_end(self._file)


class Slot(NamedTuple):
    """A bit of the flag word: its state is "named", "dirty" or "clean"."""

    slot: int
    mask: int
    state: str
    name: Optional[str]


class Statistics(NamedTuple):
    """The manager's counts of its slots."""

    used: int
    dirty: int
    clean: int


class Flags:
    """Hands out the 32 bits of a flag word under names."""

    def __init__(self) -> None:
        self._flags = _gen.flags_create()

    def add(self, name: Text) -> int:
        """The bit for a new name. InternalError for one that is taken, and without a free slot."""
        return _gen.flags_add(self._flags, name)

    def find(self, name: Text) -> int:
        """The bit of a name. InternalError for one that is not there."""
        return _gen.flags_find(self._flags, name)

    def remove(self, mask: int) -> None:
        """Gives a bit back. InternalError for what is not one bit in use."""
        _gen.flags_remove(self._flags, mask)

    def describe(self, mask: int) -> str:
        """A mask for people, "(0x5) alpha | beta"."""
        return _gen.flags_describe(self._flags, mask)

    def swept(self) -> List[int]:
        """The masks that the owner's objects were to be swept of since the last call."""
        return [row["mask"] for row in _gen.flags_swept(self._flags)]

    @property
    def statistics(self) -> Statistics:
        """How many slots are used, dirty, clean."""
        return Statistics(**_gen.flags_statistics(self._flags)[0])

    @property
    def slots(self) -> List[Slot]:
        """All 32 slots."""
        return [Slot(**row) for row in _gen.flags_slots(self._flags)]


class Bin(NamedTuple):
    """A bin of a histogram; the last one has its upper edge too."""

    low: float
    high: float
    items: int


class Outside(NamedTuple):
    """Items that were not counted."""

    below: int
    above: int
    not_a_number: int


class Histogram:
    """Counts numbers into bins of equal width; len() is how many were counted."""

    def __init__(self, low: float, high: float, bins: int = 10) -> None:
        self._histogram = _gen.histogram_create(low, high, bins)

    def __len__(self) -> int:
        return _gen.histogram_size(self._histogram)

    def add(self, item: float) -> None:
        """Counts an item."""
        _gen.histogram_add(self._histogram, item)

    def extend(self, items: Iterable[float]) -> None:
        """Counts many."""
        try:
            items = iter(items)
        except TypeError:
            raise TypeError("Histogram.extend() argument 'items' must be iterable") from None
        for item in items:
            _gen.histogram_add(self._histogram, item)

    def bin(self, item: float) -> Optional[int]:
        """The bin of an item; None outside."""
        return _gen.histogram_bin(self._histogram, item)

    @property
    def bins(self) -> List[Bin]:
        """The bins with their edges and counts."""
        return [Bin(*row.values()) for row in _gen.histogram_bins(self._histogram)]

    @property
    def outside(self) -> Outside:
        """How many items were not counted, and why."""
        return Outside(**_gen.histogram_outside(self._histogram)[0])
