"""What every tool of the korvane suite would answer: the suite's own library, asked from Python.

    import korvane_gen as gen

    with gen.start("/opt/korvane"):
        gen.project.user_libraries = ["~/lib"]
        print(gen.find("adder.v"))
        print(sorted(["data[10]", "data[9]"], key=gen.natural_key))

Files come as Path objects, and None stands for what is not found. Texts and paths are given as str,
bytes or paths and exchanged as os.fsencode and os.fsdecode do, so that names of any bytes come back
as they are. A wrong argument raises TypeError, ValueError or OverflowError and is named; what the
library itself complains of is an Error.

All state is the library's own and the process's; calls keep the interpreter's lock.
"""

from ._errors import ConditionError, Error, InternalError, NotStartedError, Report
from ._gen import (
    byte_compare,
    checksum,
    checksum_sanitised,
    date,
    elapsed,
    find,
    find_cached,
    find_eda,
    fold,
    format_now,
    hash_size,
    natural_compare,
    natural_key,
    sanitise,
    trim,
    version as __version__,
    wildcard,
)
from ._lookup import (
    Asked,
    Cache,
    Include,
    Project,
    Source,
    cache,
    candidates,
    file_types,
    include,
    project,
    sources,
    trace,
    trace_include,
    trace_sources,
)
from ._editing import Bin, Flags, Histogram, Outside, Slot, Statistics, UndoFile, UndoSection
from ._machine import (
    Machine,
    Notice,
    Now,
    Stopwatch,
    Unit,
    do_not_edit,
    frequency_units,
    machine,
    notice,
    notice_lines,
    now,
    time_units,
    usage_report,
)
from ._start import (
    Installation,
    Library,
    ToolFile,
    database_file,
    is_64bit_wanted,
    paths_for_64bit,
    profile_directory,
    start,
    temporary_file,
    tool_files,
)
from ._text import (
    Insert,
    Node,
    Token,
    condition,
    condition_tokens,
    condition_tree,
    message,
    message_inserts,
    read_integer,
    read_real,
    wildcard_matches,
    write_integer,
)

__all__ = [name for name in dir() if not name.startswith("_")]
