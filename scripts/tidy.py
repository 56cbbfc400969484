"""Runs clang-tidy over the project's own sources, as many at a time as there are cores.

Usage: tidy.py ROOT BUILD [FOLDER...]; BUILD is a configured build folder. One that compiles several sources as one is
looked at ten times faster. A unit that passed is not looked at again until a source of it, a header that they reach, its
compile command, the configuration or the tool itself changes: what passed is remembered by a digest of all these in
ROOT/build/tidy-cache. Closes with a line of counts; exits with 1 on a finding.
"""

import concurrent.futures
import hashlib
import json
import os
import re
import subprocess
import sys
import time

from includes import Closure, read

TIDY = "clang-tidy-14"
# Sources that are compiled as one are headers to the tool, and their inclusion is no mistake.
OPTIONS = [r"--header-filter=/(oribund|skin|workbench)/[^.]*\.(h|cpp)$", "--checks=-bugprone-suspicious-include"]
KEEP_DAYS = 30
SECONDS_EACH = 300


def tool_version():
    """The tool's version with those of the big libraries, whose headers are not read for the digest."""
    version = subprocess.run([TIDY, "--version"], capture_output=True, text=True, check=True).stdout
    packages = ["dpkg-query", "-W", "libstdc++-12-dev", "qt6-base-dev", "libmlt++-dev", "nlohmann-json3-dev"]
    try:
        return version + subprocess.run(packages, capture_output=True, text=True, check=False).stdout
    except FileNotFoundError:
        return version


def members(root, path):
    """The sources that one compilation reads as its own: itself, or those that it was put together from."""
    if "/Unity/" not in path:
        return [path]
    return [os.path.relpath(name, root) for name in re.findall(r'#include "([^"]+)"', read(root, path))]


def units(root, build, folders):
    """(path, its sources, compile command) of each compilation of sources in the given folders."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    found = {}
    for entry in commands:
        path = os.path.relpath(os.path.join(entry["directory"], entry["file"]), root)
        own = members(root, path)
        if own[0].startswith(tuple(folder + "/" for folder in folders)):
            found[path] = (path, own, entry["command"])
    return sorted(found.values())


class Cache:
    """Remembers what passed, as empty files that are named after the digest of all that went in."""

    def __init__(self, root, common):
        self._root = root
        self._folder = os.path.join(root, "build", "tidy-cache")
        self._common = common
        self._closure = Closure(root)
        os.makedirs(self._folder, exist_ok=True)

    def entry(self, own, command):
        digest = hashlib.sha256()
        for part in (self._common, command, *self._contents(own)):
            digest.update(part.encode() + b"\0")
        return os.path.join(self._folder, digest.hexdigest())

    def _contents(self, own):
        for path in own:
            for name in self._closure.of(path):
                yield name
                yield read(self._root, name)

    def forget_old(self):
        for name in os.listdir(self._folder):
            entry = os.path.join(self._folder, name)
            if os.path.getmtime(entry) < time.time() - KEEP_DAYS * 86400:
                os.remove(entry)


def tidy(root, build, path):
    """The findings in one unit, as text; empty when there are none."""
    command = ["nice", TIDY, *OPTIONS, "--quiet", "-p", build, os.path.join(root, path)]
    try:
        result = subprocess.run(command, capture_output=True, text=True, check=False, timeout=SECONDS_EACH)
    except subprocess.TimeoutExpired:
        return f"{path}: no answer from {TIDY} within {SECONDS_EACH} s\n"
    if result.returncode == 0:
        return ""
    return result.stdout or result.stderr or f"{path}: {TIDY} ended with {result.returncode}\n"


def check(root, build, path, passed):
    if os.path.exists(passed):
        os.utime(passed)
        return path, ""
    findings = tidy(root, build, path)
    if not findings:
        with open(passed, "w", encoding="utf-8"):
            pass
    return path, findings


def main():
    root, build = (os.path.abspath(argument) for argument in sys.argv[1:3])
    folders = sys.argv[3:] or ["oribund", "skin", "workbench"]
    cache = Cache(root, read(root, ".clang-tidy") + tool_version())
    found = units(root, build, folders)
    work = [(path, cache.entry(own, command)) for path, own, command in found]
    fresh = sum(not os.path.exists(passed) for _, passed in work)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda job: check(root, build, *job), work))
    cache.forget_old()

    # A finding in a header comes up once for each unit that includes it, and is shown once.
    seen = set()
    for _, findings in results:
        for finding in findings.replace(root + "/", "").split("\n\n"):
            if finding.strip() and finding not in seen:
                seen.add(finding)
                print(finding)
    failed = [path for path, findings in results if findings]
    for path in failed:
        print(f"clang-tidy: findings in {path}")
    sources = sum(len(own) for _, own, _ in found)
    print(f"clang-tidy: {sources} sources in {len(work)} units, {len(failed)} units failed, {fresh} looked at")
    return 1 if failed or not work else 0


if __name__ == "__main__":
    sys.exit(main())
