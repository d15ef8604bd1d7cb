"""What the library has to complain of."""

from typing import Any, List, NamedTuple, Sequence, Tuple


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
    """The library was asked for what it does not have; reports has all that it reported, answer what it
    answered all the same."""

    def __init__(self, reports: Sequence[Tuple[str, str, int]], answer: Any = None) -> None:
        self.reports: List[Report] = [Report(*report) for report in reports]
        self.answer = answer
        super().__init__("; ".join(map(str, self.reports)))

    def __reduce__(self) -> Tuple[Any, ...]:
        return type(self), (self.reports, self.answer) # what pickle makes it from again


class ConditionError(Error, ValueError):
    """A condition with diagnostics; prefix is its prefix form as far as it goes, reports are the internal
    errors that came with them."""

    def __init__(
        self, diagnostics: Sequence[str], prefix: str, reports: Sequence[Tuple[str, str, int]] = ()
    ) -> None:
        self.diagnostics = list(diagnostics)
        self.prefix = prefix
        self.reports: List[Report] = [Report(*report) for report in reports]
        super().__init__("; ".join(self.diagnostics))

    def __reduce__(self) -> Tuple[Any, ...]:
        return type(self), (self.diagnostics, self.prefix, self.reports)
