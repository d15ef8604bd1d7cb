"""An installation of the suite in a scratch directory, for tests that run gen_query in it."""

import shutil
import tempfile


def stage(root, binary, examples):
    """A fresh copy of the example suite at root, with that gen_query as its executable."""
    shutil.rmtree(root, ignore_errors=True)
    if examples.is_dir():
        shutil.copytree(examples, root)
    for directory in ("linux", "project", "home"):
        (root / directory).mkdir(parents=True, exist_ok=True)
    (root / "linux" / "gen_query").symlink_to(binary)


def environment(root):
    """What a process of that installation sees, whoever runs the test."""
    return {"PATH": f"{root}/linux:/usr/bin:/bin", "HOME": f"{root}/home", "LC_ALL": "C",
            "TZ": "UTC"}


def scratch():
    """A directory without blanks in its name: documents show names without quotes, and simulators read none with
    blanks."""
    has_blanks = len(tempfile.gettempdir().split()) > 1
    return tempfile.TemporaryDirectory(dir="/tmp" if has_blanks else None)
