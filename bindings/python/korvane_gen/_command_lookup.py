"""The subcommands of `python3 -m korvane_gen` about the installation, the project and its files."""

import os
from pathlib import Path
from typing import List, Optional, Tuple

from . import _gen
from . import cache, project
from ._command_record import Answer, Arguments, Record, Unusable, answer_each, only
from ._lookup import file_types


def _apply_project(given: Arguments) -> None:
    for name, set_it in (
        ("project", _gen.set_project),
        ("db", _gen.set_database),
        ("output", _gen.set_output),
        ("project_libs", _gen.set_project_libraries),
        ("user_libs", _gen.set_user_libraries),
    ):
        value = getattr(given, name)
        if value is not None:
            set_it(";".join(value) if isinstance(value, list) else value)


def _with_view(record: Record, checks: List[Record], given: Arguments) -> Record:
    """The record with what --trace and --all add."""
    if given.trace:
        record["checks"] = [only(row, "group", "there", "path") for row in checks]
    if given.all:
        hits = (row for row in checks if row["there"])
        record["candidates"] = [only(row, "standing", "group", "path") for row in hits]
    return record


def _found(record: Record, path: Optional[str], hits: List[Record]) -> Record:
    """The record with the path, and with the group that it was found in."""
    if path is None:
        record.update(path=None, group=None)
    else:
        record.update(path=path, group=hits[0]["group"] if hits else "cache")
    return record


def where(_: Arguments) -> Answer:
    answer = _gen.where()[0]
    answer["seen_by_the_memory_library"] = {
        "installation_root": answer["installation_root"],
        "file_name": answer["file_name"],
        "database_directory": _gen.project()[0]["database"] or "",
        "output_directory": _gen.project()[0]["output"],
        "graphical_shell": answer["graphical_shell"],
    }
    return True, answer


def installation(_: Arguments) -> Answer:
    answer = _gen.installation()[0]
    answer["device_files"] = [row["name"] for row in _gen.device_files()]
    answer["libraries"] = _gen.libraries()
    return True, answer


def show_project(given: Arguments) -> Answer:
    _apply_project(given)
    answer = only(_gen.project()[0], "project", "database", "output", "parablocks")
    # By the numbers of gen_c_group.
    groups = {"project_libraries": 2, "user_libraries": 3, "shipped_libraries": 5, "eda_libraries": 6}
    for key, group in groups.items():
        answer[key] = [row["directory"] for row in _gen.directories(group)]
    return True, answer


def _find_one(name: str, given: Arguments) -> Tuple[bool, Record]:
    known = len(cache)
    found = (_gen.find_eda if given.eda else _gen.find_cached if given.cached else _gen.find)(name)
    is_kept = given.cached and len(cache) == known
    # An answer that was kept came without a check.
    checks = [] if is_kept else _gen.trace_find(name, given.eda, given.all)
    hits = [row for row in checks if row["there"]]
    # The text as the library has it, before it became a path.
    path = hits[0]["path"] if hits and found == Path(hits[0]["path"]) else str(found) if found else None
    record = _found({"name": name}, path, hits)
    inside = path is not None and path.startswith("/") and _gen.relative_to_project(path)
    record["in_project"] = str(inside) if inside else None
    return path is not None, _with_view(record, checks, given)


def find(given: Arguments) -> Answer:
    if given.cached and (given.eda or given.all):
        raise Unusable("--cached goes neither with --eda nor with --all")
    _apply_project(given)
    if "-" in given.name:
        return answer_each(given, given.name, lambda name: _find_one(name, given))
    return _all_found(given, [_find_one(name, given) for name in given.name])


def _all_found(given: Arguments, found: List[Tuple[bool, Record]]) -> Answer:
    files = [record for _, record in found]
    answer: Record = {"files": files}
    if not given.all:
        answer["paths"] = [file["path"] for file in files if file["path"] is not None]
    return all(is_there for is_there, _ in found), answer


def _include_one(name: str, given: Arguments) -> Tuple[bool, Record]:
    found = _gen.include(name, given.from_file, given.alias)
    checks = _gen.trace_include(name, given.from_file, given.alias, given.all)
    hits = [row for row in checks if row["there"]]
    record = _found({"name": name}, hits[0]["path"] if found and hits else None, hits)
    beside = found is not None and found[1] != Path() and str(found[1])
    record["beside_alias"] = beside or None
    return record["path"] is not None, _with_view(record, checks, given)


def include(given: Arguments) -> Answer:
    _apply_project(given)
    if "-" in given.name:
        return answer_each(given, given.name, lambda name: _include_one(name, given))
    return _all_found(given, [_include_one(name, given) for name in given.name])


def _sources_of(unit: str, given: Arguments) -> Tuple[bool, Record]:
    checks = _gen.trace_sources(unit, given.shipped, given.all)
    answer = _with_view({"unit": unit, "file_type_order": file_types()}, checks, given)
    if given.all:
        return any(row["there"] for row in checks), answer
    answer["files"] = _gen.sources(unit, given.shipped)
    return bool(answer["files"]), answer


def sources(given: Arguments) -> Answer:
    _apply_project(given)
    if given.unit == "-":
        return answer_each(given, ["-"], lambda unit: _sources_of(unit, given))
    return _sources_of(given.unit, given)


def names(given: Arguments) -> Answer:
    project.directory = Path(given.project or ".").absolute()
    _gen.set_database(given.db or _gen.project()[0]["project"] + "db/")
    rows = _gen.tool_files()
    database = str(_gen.database_file(given.database_file, "pdb"))
    rows.append({"family": "database", "function": "gen_generate_pdb_filename", "path": database})
    if not given.exists:
        return True, {"names": rows}
    for row in rows:
        row["exists"] = Path(row["path"]).exists()
    return any(row["exists"] for row in rows), {"names": rows}


def temp(given: Arguments) -> Answer:
    try:
        made = _gen.temporary_file(given.directory or None, given.prefix, given.number)
    except OSError:
        return False, {"path": None}
    # A path forgets that it began with "./".
    return True, {"path": os.path.join(given.directory, made.name) if given.directory else str(made)}


def _search_paths() -> Record:
    return {"path": _gen.environment("PATH"), "ld_library_path": _gen.environment("LD_LIBRARY_PATH")}


def env(given: Arguments) -> Answer:
    for name, value in ("KORVANE_PLATFORM", given.platform), ("KORVANE_BIT_TYPE", given.bit_type):
        if value is not None:
            os.environ[name] = value
    record: Record = {"64_bit_wanted": bool(_gen.is_64bit_wanted())}
    before = _gen.enter_64bit(given.tool)
    record.update(changed=before is not None, for_the_tool=_search_paths())
    if before is not None:
        _gen.leave_64bit(*before)
    record["restored"] = _search_paths()
    return before is not None, record
