"""Reads the built shared library: what it needs, what it is called, and what it shows.

Usage: check_library.py LIBRARY VERSION
"""

import ctypes
import re
import subprocess
import sys

RUN_TIME = re.compile(r"(libc|libm|libstdc\+\+|libgcc_s)\.so\.\d+|ld-linux[-\w]*\.so\.\d+")
SHOWN = re.compile(r"(.* for |.*thunk to )?oribund::|oribundDllVersionStr$")


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def check_dynamic_section(library, version):
    dynamic = output_of("readelf", "--dynamic", "--wide", library)
    for needed in re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic):
        if not RUN_TIME.fullmatch(needed):
            yield f"needs {needed}, which is more than the C and C++ run-time libraries"
    expected = "liboribund.so." + ".".join(version.split(".")[:2])
    if re.findall(r"\(SONAME\).*\[(.*)\]", dynamic) != [expected]:
        yield f"its soname is not {expected}"
    if re.search(r"\((RPATH|RUNPATH)\)", dynamic):
        yield "carries a search path of the machine that built it"


def check_symbols(library):
    lines = output_of("nm", "--dynamic", "--defined-only", "--demangle", "--format=posix", library).splitlines()
    # In this format the demangled name, blanks and all, comes before a one-letter type.
    shown = [re.match(r"(.*?) [A-Za-z](?: [0-9a-f]+){0,2}$", line).group(1) for line in lines]
    for name in shown:
        if not SHOWN.match(name):
            yield f"shows {name}"
    if "oribundDllVersionStr" not in shown:
        yield "does not show oribundDllVersionStr"
    if not any(re.match(r"vtable for oribund::", name) for name in shown):
        yield "shows no class"


def check_version(library, version):
    text = ctypes.c_char_p.in_dll(ctypes.CDLL(library), "oribundDllVersionStr").value.decode()
    if text != version:
        yield f"says that its version is {text}, not {version}"


def main():
    library, version = sys.argv[1:3]
    faults = [*check_dynamic_section(library, version), *check_symbols(library)]
    # Only what looks like the library is loaded.
    faults = faults or list(check_version(library, version))
    for fault in faults:
        print(f"liboribund.so {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
