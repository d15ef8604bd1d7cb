"""What stands for a text or a path."""

from os import PathLike
from typing import Union

Text = Union[str, bytes, "PathLike[str]", "PathLike[bytes]"]
