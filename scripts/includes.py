"""Who includes whom: read from the sources themselves, no compiler needed."""

import os
import re

_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"\n]+)[>"]', re.M)
# Text that only looks like code: block comments and raw string literals.
_NOT_CODE = re.compile(r'R"([^()\\ \n]{0,16})\(.*?\)\1"|/\*.*?\*/', re.S)


def sources(root, folders, endings=(".h", ".cpp")):
    """The source files below the given folders of root, as sorted paths relative to it."""
    found = []
    for folder in folders:
        for path, folders_here, files in os.walk(os.path.join(root, folder)):
            folders_here[:] = [name for name in folders_here if not name.startswith(".")]
            found += [os.path.relpath(os.path.join(path, f), root) for f in files if f.endswith(endings)]
    return sorted(found)


def direct_includes(text):
    """The includes of one file: (line, 'own' for "..." or 'system' for <...>, name)."""
    blanked = _NOT_CODE.sub(lambda match: "\n" * match.group().count("\n"), text)
    for match in _INCLUDE.finditer(blanked):
        line = blanked.count("\n", 0, match.start()) + 1
        yield line, "own" if match.group(1) == '"' else "system", match.group(2)


def read(root, path):
    with open(os.path.join(root, path), encoding="utf-8", errors="replace") as file:
        return file.read()


class Closure:
    """Which of the project's files one source reads, all the way down."""

    def __init__(self, root):
        self._root = root
        self._direct = {}

    def of(self, path):
        reached, open_ends = {path}, [path]
        while open_ends:
            for name in self._own(open_ends.pop()):
                if name not in reached:
                    reached.add(name)
                    open_ends.append(name)
        return sorted(reached)

    def _own(self, path):
        if path not in self._direct:
            names = [name for _, kind, name in direct_includes(read(self._root, path)) if kind == "own"]
            self._direct[path] = [name for name in names if os.path.isfile(os.path.join(self._root, name))]
        return self._direct[path]
