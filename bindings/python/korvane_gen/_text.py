"""Conditions, messages, numbers, wildcards."""

from typing import List, NamedTuple, Optional, Tuple

from . import _gen
from ._errors import ConditionError
from ._types import Text


class Token(NamedTuple):
    """A token of a condition: the number and name of its type, and its text."""

    type: int
    name: str
    text: str


class Node(NamedTuple):
    """A node of a condition's prefix form; roots have depth 0."""

    depth: int
    text: str


class Insert(NamedTuple):
    """An insert of a message: its number, and the conversion that it asks for."""

    insert: int
    conversion: str


def condition(text: Text) -> str:
    """The prefix form of a simulation condition. ConditionError with its diagnostics, if any."""
    prefix, diagnostics = _gen.condition(text)
    if diagnostics:
        raise ConditionError(diagnostics[:-1].split("\n"), prefix, _gen.reports())
    return prefix


def condition_tokens(text: Text) -> List[Token]:
    """What a condition is made of."""
    return [Token(**row) for row in _gen.condition_tokens(text)]


def condition_tree(text: Text) -> List[Node]:
    """The prefix form of a condition as a tree, roots first. ConditionError as from condition()."""
    condition(text) # raises what is wrong with it
    return [Node(**row) for row in _gen.condition_tree(text)]


def message(format: Text, *arguments: object) -> str:
    """A message with its inserts %1 to %99 filled in, "%1!d!" by a conversion of printf.

    ValueError for an argument that is missing, or is nothing that its conversion can print.
    """
    texts = [a if isinstance(a, (str, bytes)) else str(a) for a in arguments]
    return _gen.message(format, *texts)


def message_inserts(format: Text) -> List[Insert]:
    """What the inserts of a message ask for."""
    return [Insert(**row) for row in _gen.message_inserts(format)]


def read_integer(text: Text) -> Optional[Tuple[int, int]]:
    """The integer that a text begins with, wrapped to 32 bits, and how many bytes were read."""
    return _gen.read_integer(text)


def read_real(text: Text) -> Optional[Tuple[float, int]]:
    """The real number that a text begins with, and how many bytes were read."""
    return _gen.read_real(text)


def write_integer(number: int, radix: int = 10) -> str:
    """A number in a radix from 2 to 36; only radix 10 has a sign."""
    return _gen.write_integer(number, radix)


def wildcard_matches(pattern: Text, name: Text, *, part: bool = False) -> bool:
    """Whether a name matches a pattern of * and ?; with part, whether a part of it does."""
    return bool(_gen.wildcard_matches(pattern, part, name))
