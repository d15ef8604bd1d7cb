"""What stands for a text or a path, and for a table of the library."""

from os import PathLike
from typing import Any, Dict, List, Union

Text = Union[str, bytes, "PathLike[str]", "PathLike[bytes]"]
Rows = List[Dict[str, Any]]
