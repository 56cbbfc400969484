"""Holds the sources to the shape of the house: which folder may include which, and no circles.

Usage: check_layers.py ROOT. Prints one line for each fault; exits with 1 when there is any.
"""

import os
import re
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts"))
from includes import direct_includes, read, sources  # noqa: E402

# A folder may include itself, the folders named here, and what those may include.
HOST = "oribund/host/"
LAYERS = {
    HOST + "base": [],
    HOST + "notify": [HOST + "base"],
    HOST + "canvas": [HOST + "notify"],
    HOST + "services": [HOST + "notify"],
    HOST + "toolkit": [HOST + "canvas", HOST + "services"],
    HOST + "effects": [HOST + "services"],
    HOST + "edit": [HOST + "effects", HOST + "services"],
    HOST + "templates": [HOST + "edit"],
    "oribund/cues": [HOST + "toolkit", HOST + "templates"],
    "oribund/controls": ["oribund/cues"],
    "oribund/graphs": ["oribund/controls"],
    "oribund/colour": ["oribund/controls"],
    "oribund/panels": ["oribund/graphs", "oribund/colour"],
    "oribund/transitions": ["oribund/panels"],
    "oribund/browser": ["oribund/transitions"],
    "oribund/shader": [HOST + "toolkit", HOST + "templates"],
    "oribund": [HOST + "base"],
    "workbench/model": ["oribund", "oribund/browser", "oribund/shader"],
    "workbench/system": [],
    "workbench/plugins": [],
    "workbench/store": ["workbench/model", "workbench/system"],
    "workbench/engine/protocol": ["workbench/model", "workbench/system"],
    "workbench/engine/worker": ["workbench/engine/protocol"],
    "workbench/engine/client": ["workbench/engine/protocol", "workbench/store"],
    "workbench/gpu": ["workbench/model"],
    "skin": ["oribund", "oribund/panels"],
    "workbench/app": ["workbench/store", "workbench/engine/client", "workbench/gpu", "skin"],
    "examples": ["oribund", "oribund/browser", "oribund/shader"],
    "examples/qt": ["examples", "skin"],
}

STANDARD = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
    set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream
    syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version""".split()
)
# Too much for every file that includes a header of the library to carry.
NOT_IN_HEADERS = {"iostream", "regex", "filesystem", "ranges"}

# Libraries that only the named folders may touch.
RESERVED = [
    ("MLT", re.compile(r"(mlt\+\+|Mlt|framework/mlt|mlt-7/)"), ["workbench/engine/worker"]),
    ("Qt", re.compile(r"Q(t[A-Z]|[A-Z])"), ["skin", "workbench/app", "examples/qt"]),
    ("Vulkan and glslang", re.compile(r"(vulkan|glslang|SPIRV)/"), ["workbench/gpu"]),
]
STANDARD_ONLY = ("oribund", "workbench/model", "examples")


def layer_of(path):
    """The folder of LAYERS that holds the file, at any depth below it, or None."""
    folder = home = os.path.dirname(path)
    while folder and folder not in LAYERS:
        folder = os.path.dirname(folder)
    # The library's own folder holds its version only: a folder below it needs a place of its own.
    return None if not folder or (folder == "oribund" and home != folder) else folder


def allowed(layer):
    """Every layer that the given one may include, itself first."""
    reached = [layer]
    for one in reached:
        reached += [below for below in LAYERS[one] if below not in reached]
    return reached


def check_own(root, path, layer, name):
    # An example is a project of its own, with its own root.
    beside = ("", "../embed")
    if layer.startswith("examples") and any(
        os.path.isfile(os.path.join(root, os.path.dirname(path), folder, name)) for folder in beside
    ):
        return None
    if not os.path.isfile(os.path.join(root, name)):
        return f'"{name}" is not a file of this project: paths start at its root, other libraries go in <>'
    if name.endswith(".cpp"):
        return f'"{name}" is a source: include headers only'
    below = layer_of(name)
    if below not in allowed(layer):
        return f'{layer} may not include "{name}"'
    return None


def check_system(path, layer, name):
    for title, pattern, folders in RESERVED:
        if pattern.match(name) and layer not in folders:
            return f"<{name}>: only {' and '.join(folders)} may include {title}"
    if layer.startswith(STANDARD_ONLY) and layer != "examples/qt" and name not in STANDARD:
        return f"<{name}> is not a header of the C++ standard library"
    if layer.startswith("oribund") and path.endswith(".h") and name in NOT_IN_HEADERS:
        return f"<{name}> is too heavy for a header of the library"
    return None


def check_includes(root):
    faults, arrows = [], {}
    for path in sources(root, ["oribund", "skin", "workbench", "examples"]):
        layer = layer_of(path)
        if layer is None:
            faults.append(f"{path}: its folder has no place in the layers (tests/layers/check_layers.py)")
            continue
        arrows[path] = []
        for line, kind, name in direct_includes(read(root, path)):
            own = kind == "own" or name.startswith(("oribund/", "skin/", "workbench/"))
            if own:
                arrows[path].append(name)
            # An outside project includes the library as a system would.
            fault = check_own(root, path, layer, name) if own else check_system(path, layer, name)
            if fault:
                faults.append(f"{path}:{line}: {fault}")
    return faults, arrows


def check_circles(arrows):
    """One fault for each include that closes a circle; depth first, without recursion."""
    faults, done = [], set()
    for start in sorted(arrows):
        trail, pending = [], [(start, iter(arrows[start]))]
        while pending:
            path, rest = pending[-1]
            if not trail or trail[-1] != path:
                trail.append(path)
            name = next((n for n in rest if n in arrows and n not in done), None)
            if name is None:
                done.add(path)
                pending.pop()
                trail.pop()
            elif name in trail:
                faults.append("circle of includes: " + " -> ".join(trail[trail.index(name):] + [name]))
            else:
                pending.append((name, iter(arrows[name])))
    return faults


def check_listed(root):
    """A source that no CMakeLists.txt names is neither built nor tested, and nobody notices."""
    faults = []
    for path in sources(root, ["oribund", "skin", "workbench", "tests", "bench", "examples"], (".cpp",)):
        folder, named = os.path.dirname(path), False
        while folder and not named:
            listing = os.path.join(folder, "CMakeLists.txt")
            if os.path.isfile(os.path.join(root, listing)):
                text = re.sub(r"#.*", "", read(root, listing))
                named = os.path.relpath(path, folder) in re.split(r"[\s()\"]+", text)
            folder = os.path.dirname(folder)
        if not named:
            faults.append(f"{path}: no CMakeLists.txt lists it")
    return faults


def check(root):
    faults, arrows = check_includes(root)
    return faults + check_circles(arrows) + check_listed(root), len(arrows)


def main():
    root = sys.argv[1]
    faults, count = check(root)
    for fault in faults:
        print(fault)
    print(f"layers: {count} files, {len(faults)} faults")
    return 1 if faults or not count else 0


if __name__ == "__main__":
    sys.exit(main())
