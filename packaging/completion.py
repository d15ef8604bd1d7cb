#!/usr/bin/env python3
"""Writes the completion of gen_query for a shell.

    completion.py bash|zsh DESCRIPTION
"""

import sys

import describe

BASH = """\
# Completion of gen_query for bash.
_gen_query()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} path='' other
    # "--option=value" comes as three words.
    if [[ $word == = ]]; then
        word=''
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
    for other in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$path/$other" in
            COMMANDS) path+=/$other ;;
        esac
    done

    local options='' commands='' value='' positional=''
    case "$path" in
CASES    esac

    compopt +o filenames 2>/dev/null
    case "${value:-$([[ $word == -* ]] || echo "$positional")}" in
        FILE)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
        DIR)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
        '')
            mapfile -t COMPREPLY < <(compgen -W "$commands $options" -- "$word") ;;
        *)  # words to choose from; none where any text will do
            mapfile -t COMPREPLY < <(compgen -W "${value#ANY}" -- "$word") ;;
    esac
}
complete -F _gen_query gen_query
"""


def bash_value(option):
    if option.choices:
        return " ".join(option.choices)
    return option.value if option.value in ("FILE", "DIR") else "ANY"


def bash_case(path, command):
    lines = [f"        '{''.join('/' + name for name in path)}')"]
    names = [name for option in command.options for name in option.names]
    lines.append(f"            options='{' '.join(names)}'")
    if command.commands:
        lines.append(f"            commands='{' '.join(below.name for below in command.commands)}'")
    for option in command.options:
        if option.positional and option.value in ("FILE", "DIR"):
            lines.append(f"            positional={option.value}")
    valued = [option for option in command.options if option.names and option.value]
    if valued:
        lines.append('            case "$before" in')
        lines += [f"                {'|'.join(option.names)}) value='{bash_value(option)}' ;;"
                  for option in valued]
        lines.append("            esac")
    return "\n".join(lines) + " ;;\n"


def bash(root):
    paths = [path for path, _ in root.all() if path]
    commands = "|".join("/" + "/".join(path) for path in paths)
    cases = "".join(bash_case(path, command) for path, command in root.all())
    return BASH.replace("COMMANDS", commands, 1).replace("CASES", cases, 1)


def zsh_quoted(text):
    """The text as it stands within '...[here]' of _arguments."""
    return text.replace("'", "'\\''").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:")


def zsh_action(option):
    if option.choices:
        return "(" + " ".join(option.choices) + ")"
    return {"FILE": "_files", "DIR": "_files -/"}.get(option.value, " ")


def zsh_arguments(command):
    for option in command.options:
        summary = zsh_quoted(option.summary)
        tail = f":{option.value.lower()}:{zsh_action(option)}" if option.value else ""
        if option.positional:
            yield f"'{'*' if option.repeated else ''}:{option.positional}:{zsh_action(option)}'"
        for name in option.names:
            others = " ".join(option.names)
            equals = "=" if option.value and name.startswith("--") else ""
            yield f"'({others}){name}{equals}[{summary}]{tail}'"


def zsh_function(path, command):
    name = "_".join(("_gen_query", *path)).replace("-", "_")
    if not command.commands:
        arguments = " \\\n        ".join(zsh_arguments(command))
        return f"{name}() {{\n    _arguments -s -S \\\n        {arguments}\n}}\n"
    arguments = " \\\n        ".join([*zsh_arguments(command), "'1:subcommand:->command'", "'*:: :->rest'"])
    listed = "\n".join(f"                '{below.name}:{zsh_quoted(below.summary)}'"
                       for below in command.commands)
    chosen = "\n".join(f"                {below.name}) {name}_{below.name.replace('-', '_')} ;;"
                       for below in command.commands)
    return f"""{name}() {{
    local state line
    _arguments -C \\
        {arguments}
    case $state in
        command)
            local -a commands=(
{listed}
            )
            _describe subcommand commands ;;
        rest)
            case $line[1] in
{chosen}
            esac ;;
    esac
}}
"""


def zsh(root):
    functions = "\n".join(zsh_function(path, command) for path, command in root.all())
    return f"#compdef gen_query\n# Completion of gen_query for zsh.\n\n{functions}\n_gen_query \"$@\"\n"


if __name__ == "__main__":
    sys.stdout.write({"bash": bash, "zsh": zsh}[sys.argv[1]](describe.read(sys.argv[2])))
