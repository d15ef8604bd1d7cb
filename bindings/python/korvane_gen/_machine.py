"""Time, machine, notices."""

import enum
from typing import List, NamedTuple, Optional

from . import _gen
from ._types import Text


class Unit(NamedTuple):
    """A unit of time or frequency; magnitude is its power of ten."""

    number: int
    short_name: str
    long_name: str
    magnitude: int


class Now(NamedTuple):
    """The time in all the ways the library has."""

    date_and_time: str
    time: str
    seconds: int
    tick_count_ms: int
    own_cpu_seconds: float


class Machine(NamedTuple):
    """The machine; None for what the system does not say."""

    operating_system: str
    operating_system_code: int
    os_name: Optional[str]
    os_version: Optional[str]
    kernel_version: Optional[str]
    hardware_name: Optional[str]
    processors: Optional[int]
    clock_ticks_per_second: Optional[int]
    physical_ram_bytes: Optional[int]
    virtual_ram_bytes: Optional[int]
    total_ram_bytes: Optional[int]
    available_ram_bytes: Optional[int]
    total_usage_ram_bytes: Optional[int]
    host_name: Optional[str]
    ip_address: Optional[str]
    user_name: Optional[str]
    any_web_browser_will_do: bool


class Notice(enum.IntEnum):
    """The notices of generated files."""

    BANNER = 0
    TRADEMARK = 1
    WARNING = 2
    BITSTREAM = 3


class Stopwatch:
    """A stopwatch over the process's own CPU time; as a context manager it runs in the body."""

    def __init__(self) -> None:
        self._watch = _gen.stopwatch_create()

    def __enter__(self) -> "Stopwatch":
        self.start()
        return self

    def __exit__(self, *_: object) -> None:
        self.stop()

    def __str__(self) -> str:
        return _gen.stopwatch_lap(self._watch)

    def start(self) -> None:
        """Begins to measure; a running watch goes on."""
        _gen.stopwatch_start(self._watch)

    def stop(self) -> None:
        """Takes the time since the start."""
        _gen.stopwatch_stop(self._watch)

    def reset(self) -> None:
        """Stops and clears."""
        _gen.stopwatch_reset(self._watch)

    @property
    def seconds(self) -> float:
        """From the start to now, or to the stop."""
        return _gen.stopwatch_seconds(self._watch)


def time_units() -> List[Unit]:
    """The units of time."""
    return [Unit(*row.values()) for row in _gen.time_units()]


def frequency_units() -> List[Unit]:
    """The units of frequency."""
    return [Unit(*row.values()) for row in _gen.frequency_units()]


def now() -> Now:
    """The time."""
    return Now(**_gen.now()[0])


def machine(host: Optional[Text] = None) -> Machine:
    """The machine, and the address of host, or of this one."""
    return Machine(**_gen.machine(host)[0])


def usage_report(
    tag: Text = "python",
    phase: Optional[Text] = None,
    *,
    modules: bool = False,
    details: bool = False,
    memory: bool = False,
) -> List[str]:
    """The lines of the usage report: modules beside the executable, each of them, memory in use.
    What KORVANE_CFG asks for is there too."""
    return [row["line"] for row in _gen.usage_report(tag, phase, modules, details, memory)]


def notice(notice: Notice) -> str:
    """A notice as one paragraph."""
    return _gen.notice(notice)


def notice_lines(notice: Notice, prefix: Text = "") -> List[str]:
    """A notice as comment lines behind prefix, the banner with the copyright line."""
    return [row["line"] for row in _gen.notice_lines(notice, prefix)]


def do_not_edit(prefix: Text = "") -> List[str]:
    """The warning against editing, as comment lines."""
    return [row["line"] for row in _gen.do_not_edit(prefix)]
