"""What the library has to complain of."""

from typing import List, NamedTuple, Sequence, Tuple


class Error(Exception):
    """Any complaint of the library itself."""


class NotStartedError(Error, RuntimeError):
    """The answer depends on the installation, and start() has not been called."""


class Report(NamedTuple):
    """An internal error: the broken condition, and the source and line that it is reported for."""

    condition: str
    source: str
    line: int

    def __str__(self) -> str:
        return f"{self.condition} ({self.source}:{self.line})"


class InternalError(Error, RuntimeError):
    """The library was asked for what it does not have; reports has all that it reported."""

    def __init__(self, reports: Sequence[Tuple[str, str, int]]) -> None:
        self.reports: List[Report] = [Report(*report) for report in reports]
        super().__init__("; ".join(map(str, self.reports)))


class ConditionError(Error, ValueError):
    """A condition with diagnostics; prefix is its prefix form as far as it goes."""

    def __init__(self, diagnostics: Sequence[str], prefix: str) -> None:
        self.diagnostics = list(diagnostics)
        self.prefix = prefix
        super().__init__("; ".join(self.diagnostics))
