#!/usr/bin/env python3
"""Writes the completion of gen_query for a shell.

    completion.py bash|zsh|fish DESCRIPTION
"""

import sys

import describe

BASH = """\
# Completion of gen_query for bash.
_gen_query()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} path='' other given=' ' rest='' begun=''
    # "--option=value" comes as three words.
    if [[ $word == = ]]; then
        word=''
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
    COMPREPLY=()
    if [[ $before == *[\\<\\>] ]]; then # the shell's own business
        compopt -o default 2>/dev/null
        return
    fi
    for other in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $other == -- ]]; then
            rest=yes
            break
        fi
        given+="$other "
        case "$path/$other" in
            COMMANDS) path+=/$other ;;
            */-*) ;;
            *) begun=yes ;;
        esac
    done

    local options='' commands='' value='' positional='' excluded=''
    case "$path" in
CASES    esac

    compopt +o filenames 2>/dev/null
    local meant=$value
    if [[ -n $rest || ( -z $value && $word != -* ) ]]; then
        meant=$positional
    fi
    case "$meant" in
        FILE)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
        DIR)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
        COMMAND)
            mapfile -t COMPREPLY < <(compgen -c -- "$word") ;;
        '')
            [[ -n $rest ]] && return
            for other in $commands $options; do
                [[ " $excluded " == *" $other "* ]] || COMPREPLY+=("$other")
            done
            mapfile -t COMPREPLY < <(compgen -W "${COMPREPLY[*]}" -- "$word") ;;
        *)  # words to choose from; none where any text will do
            mapfile -t COMPREPLY < <(compgen -W "${meant#ANY}" -- "$word") ;;
    esac
}
complete -F _gen_query gen_query
"""


def bash_value(option):
    if option.choices:
        return " ".join(option.choices)
    return option.value if option.value in ("FILE", "DIR", "COMMAND") else "ANY"


def bash_case(path, command):
    lines = [f"        '{''.join('/' + name for name in path)}')"]
    names = [name for option in command.options for name in option.names]
    lines.append(f"            options='{' '.join(names)}'")
    if command.commands:
        lines.append(f"            commands='{' '.join(below.name for below in command.commands)}'")
    for option in command.options:
        if option.positional and option.value in ("FILE", "DIR", "COMMAND"):
            lines.append(f"            positional={option.value}")
        if option.takes_rest:  # what follows the first word is that command's own
            lines.append("            [[ -n $begun ]] && rest=yes positional=FILE")
    valued = [option for option in command.options if option.names and option.value]
    if valued:
        lines.append('            case "$before" in')
        lines += [f"                {'|'.join(option.names)}) value='{bash_value(option)}' ;;"
                  for option in valued]
        lines.append("            esac")
    for option in command.options:
        excluded = " ".join(command.excluded_by(option))
        if option.names and excluded:
            tests = " || ".join(f"$given == *' {name} '*" for name in option.names)
            lines.append(f"            [[ {tests} ]] && excluded+=' {excluded}'")
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
    actions = {"FILE": "_files", "DIR": "_files -/", "COMMAND": "_command_names -e"}
    return actions.get(option.value, " ")


def zsh_arguments(command):
    for option in command.options:
        summary = zsh_quoted(option.summary)
        tail = f":{option.value.lower()}:{zsh_action(option)}" if option.value else ""
        if option.takes_rest:
            yield f"'(-):{option.positional}:{zsh_action(option)}'"
            yield "'*::argument:_normal'"
        elif option.positional:
            yield f"'{'*' if option.repeated else ''}:{option.positional}:{zsh_action(option)}'"
        for name in option.names:
            others = " ".join([*option.names, *command.excluded_by(option)])
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


FISH = """\
# Completion of gen_query for fish.
function __gen_query_at -d 'Whether the words typed lead to this subcommand'
    set -l path
    for word in (commandline -opc)[2..-1]
        test "$word" = --; and break
        contains -- "$path/$word" COMMANDS; and set path "$path/$word"
    end
    test "$path" = "$argv[1]"
end
function __gen_query_begun -d 'Whether a command that gen_query is to run is typed'
    set -l path
    for word in (commandline -opc)[2..-1]
        if contains -- "$path/$word" COMMANDS
            set path "$path/$word"
        else if not string match -q -- '-*' $word
            return 0
        end
    end
    return 1
end
function __gen_query_lacks -d 'Whether none of these options is typed'
    for option in $argv
        contains -- $option (commandline -opc); and return 1
    end
end
complete -c gen_query -f
"""


def fish_quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fish_values(option):
    if option.choices:
        return " -x -a " + fish_quoted(" ".join(option.choices))
    return {"FILE": " -r -F", "DIR": " -x -a '(__fish_complete_directories)'", None: ""}.get(option.value, " -x")


def fish_option(at, command, option):
    lacks = " ".join(command.excluded_by(option))
    if any(other.takes_rest for other in command.options):
        at += "; and not __gen_query_begun"
    condition = fish_quoted(at + (f"; and __gen_query_lacks {lacks}" if lacks else ""))
    if option.positional:
        files = {"FILE": "-F", "DIR": "-a '(__fish_complete_directories)'",
                 "COMMAND": "-a '(__fish_complete_command)'"}.get(option.value)
        return f"complete -c gen_query -n {condition} {files}" if files else None
    names = "".join(f" -l {name[2:]}" if name.startswith("--") else f" -s {name[1:]}" for name in option.names)
    return f"complete -c gen_query -n {condition}{names}{fish_values(option)} -d {fish_quoted(option.summary)}"


def fish(root):
    lines = [FISH.replace("COMMANDS", " ".join("/" + "/".join(path) for path, _ in root.all() if path))]
    for path, command in root.all():
        at = "__gen_query_at '" + "".join("/" + name for name in path) + "'"
        lines += [f"complete -c gen_query -n {fish_quoted(at)} -a {below.name} -d {fish_quoted(below.summary)}"
                  for below in command.commands]
        lines += [fish_option(at, command, option) for option in command.options]
        if any(option.takes_rest for option in command.options):
            lines.append(f"complete -c gen_query -n {fish_quoted(at + '; and __gen_query_begun')} -F")
    return "\n".join(line for line in lines if line) + "\n"


def with_common_options(root):
    """The options of gen_query itself that have a value hold behind every subcommand, too."""
    common = [option for option in root.options if option.names and option.value]
    for path, command in root.all():
        if path:
            command.options += common
    return root


if __name__ == "__main__":
    described = with_common_options(describe.read(sys.argv[2]))
    sys.stdout.write({"bash": bash, "zsh": zsh, "fish": fish}[sys.argv[1]](described))
