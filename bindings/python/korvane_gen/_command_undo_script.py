"""The scripts that `python3 -m korvane_gen undo` reads."""

import dataclasses
from typing import List, Tuple

from ._command_record import first_word
from ._editing import UndoFile


@dataclasses.dataclass
class Section:
    """A section with its commands: "undo" or "redo", the command, its comment."""

    title: str
    description: str = ""
    commands: List[Tuple[str, str, str]] = dataclasses.field(default_factory=list)

    @property
    def is_recorded(self) -> bool:
        """The library records no section without a title or a command."""
        return bool(self.title and self.commands)

    def count(self, word: str) -> int:
        return sum(command[0] == word for command in self.commands)

    def take(self, word: str, rest: str) -> None:
        """Takes a line that belongs to the section. ValueError for what is none."""
        if word == "describe":
            self.description = rest
        elif word in ("undo", "redo"):
            if not rest:
                raise ValueError(f'"{word}" without a command')
            self.commands.append((word, rest, ""))
        elif word == "comment":
            if not self.commands:
                raise ValueError("a comment without a command above it")
            self.commands[-1] = (*self.commands[-1][:2], rest)
        else:
            raise ValueError(f'unknown word "{word}"')

    def record(self, file: UndoFile) -> None:
        with file.section(self.title, description=self.description) as section:
            for word, command, comment in self.commands:
                (section.undo if word == "undo" else section.redo)(command, comment=comment)


def sections_of(lines: List[str]) -> List[Section]:
    """The sections of a script's lines. ValueError with the line that cannot be understood."""
    sections: List[Section] = []
    for number, line in enumerate(lines, 1):
        word, rest = first_word(line)
        try:
            if word == "section":
                sections.append(Section(rest))
            elif word and word[0] != "#":
                if not sections:
                    raise ValueError("a section has to come first")
                sections[-1].take(word, rest)
        except ValueError as fault:
            raise ValueError(f"line {number}: {fault}") from None
    return sections
