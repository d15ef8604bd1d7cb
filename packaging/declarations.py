"""Declarations of a header as their user reads them in 80 columns: no private part, no export marks, no bodies."""

import re

MARK = re.compile(r"(?<!#define )KORVANE_(?:API|PRINTF\(\d+, \d+\)) ?")


def without_bodies(code):
    """The text with the bodies of functions, and what initialises members, taken away."""
    result, depth, begin = "", 0, 0
    for i, character in enumerate(code):
        if character == "{":
            head = code[begin:i]
            if depth == 0 and re.search(r"\)[\w\s]*$|\)\s*(?:const|noexcept)?\s*:\s[^;]*$", head):
                depth = 1
                result += re.sub(r"(\)[\w\s]*?)\s*(?::\s[^;]*)?\s*$", r"\1;", head)
            elif depth:
                depth += 1
        elif character == "}" and depth:
            depth -= 1
            if depth == 0:
                begin = i + 1
        elif not depth and character in ";}":
            result += code[begin:i + 1]
            begin = i + 1
        if not depth and character == "{":
            result += code[begin:i + 1]
            begin = i + 1
    return result if depth else result + code[begin:]


def public(lines):
    """The declarations in these lines, one a line however long, and enumerators with their comments."""
    text = re.sub(r"^ *private:\n.*?(?=^\}|\Z)", "", "\n".join(lines), flags=re.M | re.S)
    text = re.sub(r"^(class [^\n]*\{\n)(?!  public:)[^}]*\Z", r"\1  public:", text, flags=re.M)
    text = re.sub(r"^(#define .*?) *\\\n(?:.*\\\n)*.*$", r"\1", text, flags=re.M)
    text = without_bodies(MARK.sub("", re.sub(r"\s+(KORVANE_PRINTF)", r" \1", text))).replace(" ;", ";")
    result = []
    for line in text.split("\n"):
        if goes_on(result) and not line.startswith("}"):
            result[-1] += ("" if result[-1].endswith("(") else " ") + line.strip()
        elif line.strip():
            result.append(line.rstrip())
    return result


def goes_on(lines):
    """Whether the last of these lines is not the end of a declaration yet."""
    if not lines or lines[-1].startswith("#"):
        return False
    code, remark, _ = lines[-1].partition("//")
    return code.count("(") > code.count(")") or not (remark or re.search(r"[;{}:,>]$", code))


def in_columns(line, width):
    """The declaration in lines that fit, the arguments below each other's beginning where there is room."""
    own = " " * (len(line) - len(line.lstrip()))
    code, mark, remark = line.partition("///<")
    if mark and len(line) - 1 > width:
        remark = re.split(r"(?<= )", f"//{remark}")
        return [*in_columns(code.rstrip(), width), *filled(remark, width, own + " " * 4, "// ")]
    line = line.replace("///<", "//")
    if len(line) <= width:
        return [line]
    arguments = line.find("(") + 1 - len(own)
    for ends, hanging in ((r"(?<=[,=] )", arguments), (r"(?<=[,=] )|(?<=\()", 4), (r"(?<= )", 4)):
        lines = filled(re.split(ends, line.strip()), width, own, " " * hanging)
        if hanging > 0 and max(map(len, lines)) <= width:
            break
    return lines


def filled(parts, width, indent, hanging):
    """The parts in lines of that width; the later ones begin with what is hanging below the first."""
    lines = [indent]
    for part in parts:
        if len(lines[-1]) + len(part.rstrip()) > width and lines[-1].strip():
            lines.append(indent + hanging)
        lines[-1] += part
    return [line.rstrip() for line in lines]
