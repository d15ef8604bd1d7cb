"""What `gen_query describe --json` says, read for the generators of this directory."""

import dataclasses
import json
import pathlib


@dataclasses.dataclass
class Option:
    names: list       # "-h", "--help"; none for a positional argument
    positional: str   # its name, or None
    value: str        # TEXT, NUMBER, FILE, DIR or COMMAND; None for a flag
    choices: list     # the only words that a value may be; none where it may be others, too
    default: str
    required: bool
    repeated: bool
    takes_rest: bool  # all that follows on the command line, options too
    excludes: list    # names that cannot be given together with it
    summary: str


@dataclasses.dataclass
class Command:
    name: str
    summary: str
    options: list
    footer: str
    commands: list

    def excluded_by(self, option):
        """The names of the options that cannot be given together with that one."""
        return [name for other in self.options for name in other.names
                if set(other.names) & set(option.excludes)
                or set(option.names or [option.positional]) & set(other.excludes)]

    def all(self, *above):
        """(names of the path to it, command) of this one and of all below."""
        yield above, self
        for command in self.commands:
            yield from command.all(*above, command.name)


def _command(described):
    return Command(described["name"], described["summary"], [Option(**option) for option in described["options"]],
                   described["footer"], [_command(command) for command in described["commands"]])


def read(path):
    described = json.loads(pathlib.Path(path).read_text(encoding="utf-8"))
    return _command(described["gen_query"])
