"""What stands for a text or a path, and for a table of the library."""

import functools
from os import PathLike
from pathlib import Path
from typing import Any, Dict, List, Union

Text = Union[str, bytes, "PathLike[str]", "PathLike[bytes]"]
Rows = List[Dict[str, Any]]

# The paths that the extension module gives. A path does not change, and to make one takes ten times as long as
# a cached lookup.
kept_path = functools.lru_cache(maxsize=4096)(Path)
