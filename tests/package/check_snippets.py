"""Compiles every piece of C++ in a document by itself, as a reader would who copies it.

Usage: check_snippets.py COMPILER INCLUDE DOCUMENT
"""

import concurrent.futures
import os
import re
import subprocess
import sys

FLAGS = "-std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -x c++".split()


def snippets(text):
    """(line, code) of each fenced block of C++."""
    for match in re.finditer(r"^```cpp\n(.*?)^```$", text, re.M | re.S):
        yield text.count("\n", 0, match.start()) + 2, match.group(1)


def main():
    compiler, include, document = sys.argv[1:4]
    with open(document, encoding="utf-8") as file:
        found = list(snippets(file.read()))

    def compile_one(snippet):
        line, code = snippet
        source = f'#line {line} "{os.path.basename(document)}"\n{code}'
        command = [compiler, *FLAGS, "-I", include, "-"]
        return subprocess.run(command, input=source, capture_output=True, text=True, check=False)

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        failed = [result for result in pool.map(compile_one, found) if result.returncode]
    for result in failed:
        print(result.stderr)
    print(f"snippets: {len(found)} compiled, {len(failed)} failed")
    return 1 if failed or not found else 0


if __name__ == "__main__":
    sys.exit(main())
