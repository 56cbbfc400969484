"""Compiles every installed header by itself: none may lean on what another happened to include before it.

Usage: check_headers.py COMPILER PREFIX
"""

import concurrent.futures
import os
import subprocess
import sys

FLAGS = "-std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -x c++".split()


def compile_header(compiler, include, header):
    # Included, not compiled as it stands: a compiler warns of #pragma once in a main file.
    return subprocess.run(
        [compiler, *FLAGS, "-I", include, "-"],
        input=f'#include "{header}"\n#include "{header}"\n',
        capture_output=True,
        text=True,
        check=False,
    )


def main():
    compiler, prefix = sys.argv[1:3]
    include = os.path.join(prefix, "include")
    headers = sorted(
        os.path.relpath(os.path.join(path, name), include)
        for path, _, names in os.walk(include)
        for name in names
    )
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda header: compile_header(compiler, include, header), headers))
    failed = [(header, result) for header, result in zip(headers, results) if result.returncode]
    for header, result in failed:
        print(f"{header} does not compile by itself:\n{result.stderr}")
    print(f"headers: {len(headers)} compiled, {len(failed)} failed")
    return 1 if failed or not headers else 0


if __name__ == "__main__":
    sys.exit(main())
