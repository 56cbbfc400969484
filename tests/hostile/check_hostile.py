"""Runs the program on projects that somebody wrote to do harm, and looks at every system call that it makes.

Usage: check_hostile.py PROGRAM [--window] [--every COUNT]. Each project is exported, or with --window opened in
a window that is not seen. Nothing may be read or written but what the program needs of its own, no socket may lead
out of the machine, and no program may be started but the program's own workers. --every takes only some of the projects.
"""

import argparse
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from projects import all_projects  # noqa: E402

CALLS = "trace=execve,execveat,socket,connect,bind,open,openat,openat2,creat,unlink,unlinkat,rename,renameat,renameat2," \
    "truncate,link,linkat,symlink,symlinkat,mkdir,mkdirat"
WRITES = re.compile(r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC")
PATH = re.compile(r'"((?:[^"\\]|\\.)*)"')
BAIT = ("x.so", "x.txt", "x.png", "x.melt", "x.html", "secret")


def make_bait(folder):
    for name in BAIT:
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write("untouched")
    texts = {
        "x.mlt": f'<mlt><producer><property name="resource">{folder}/secret</property></producer></mlt>',
        "list.m3u8": f"#EXTM3U\n#EXTINF:1,\nfile://{folder}/secret\n#EXT-X-ENDLIST\n",
        "list.ffconcat": f"ffconcat version 1.0\nfile '{folder}/secret'\n",
        "list.mp4": f"ffconcat version 1.0\nfile '{folder}/secret'\n",
        "x.sdp": "v=0\nc=IN IP4 127.0.0.1\nm=video 9 RTP/AVP 96\na=rtpmap:96 H264/90000\n",
    }
    for name, text in texts.items():
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write(text)
    os.mkfifo(os.path.join(folder, "pipe.mp4"))


def contents(folder):
    """Of all that is no fifo, what it holds."""
    result = {}
    for name in sorted(os.listdir(folder)):
        path = os.path.join(folder, name)
        result[name] = open(path, "rb").read() if os.path.isfile(path) else b""
    return result


def faults_of(trace, program, folder, home):
    """What a line of the trace does that it must not; none of it for a call that was refused."""
    own = (home, "/dev/", "/proc/", "/memfd:", "/run/", "/sys/")
    for line in trace:
        call = re.match(r"\d+ +(\w+)\((.*)\) += (-?\d+)", line)
        if not call:
            continue
        name, arguments, result = call.groups()
        refused = result.startswith("-")
        path = PATH.search(arguments)
        path = path.group(1) if path else ""
        if name in ("execve", "execveat") and not refused:
            if os.path.dirname(path) != os.path.dirname(program) and not path.endswith("oribund-engine"):
                yield line
        elif name == "socket" and not refused and "AF_UNIX" not in arguments and "AF_NETLINK" not in arguments:
            yield line
        elif name in ("connect", "bind") and "AF_UNIX" not in arguments and "AF_NETLINK" not in arguments:
            yield line
        elif name.startswith(("open", "creat")):
            touches_secret = path.startswith(folder) and os.path.basename(path) in ("secret", "x.so", "environ")
            writes = name == "creat" or WRITES.search(arguments)
            if not refused and (touches_secret or writes and path.startswith("/") and not path.startswith(own)):
                yield line
        elif name not in ("socket", "connect", "bind") and not refused:
            paths = PATH.findall(arguments)
            if any(one.startswith("/") and not one.startswith(own) for one in paths):
                yield line


class Round:
    def __init__(self, arguments, base):
        self.arguments = arguments
        self.folder = os.path.join(base, "bait")
        self.home = os.path.join(base, "home")
        os.mkdir(self.folder)
        make_bait(self.folder)
        self.before = contents(self.folder)
        self.environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", SDL_AUDIODRIVER="dummy", TMPDIR=self.home)
        for kind in ("CONFIG", "DATA", "CACHE", "STATE"):
            self.environment[f"XDG_{kind}_HOME"] = os.path.join(self.home, kind.lower())

    def run(self, project):
        """The faults of one project."""
        # What is left of a window that was ended would be asked about in the next one.
        shutil.rmtree(self.home, ignore_errors=True)
        os.mkdir(self.home)
        file = os.path.join(self.home, "project.mlt")
        with open(file, "w", encoding="utf-8") as out:
            out.write(project)
        trace = os.path.join(self.home, "trace")
        command = ["strace", "-f", "-qq", "-s", "300", "-e", CALLS, "-e", "signal=none", "-o", trace]
        command += [self.arguments.program, file]
        if not self.arguments.window:
            command += ["--export", os.path.join(self.home, "out.mp4"), "--replace"]
        started = time.monotonic()
        process = subprocess.Popen(
            command, env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True
        )
        try:
            process.wait(4 if self.arguments.window else 40)
            ended = True
        except subprocess.TimeoutExpired:
            ended = False
        if not ended:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        with open(trace, encoding="utf-8", errors="replace") as lines:
            lines = lines.readlines()
        faults = list(faults_of(lines, self.arguments.program, self.folder, self.home))
        if sum("execve" in line and "oribund-engine" in line for line in lines) < 2:
            faults.append("the project reached no worker")
        if contents(self.folder) != self.before:
            faults.append("a file of the folder was changed")
        if self.arguments.window == ended:
            took = time.monotonic() - started
            faults.append(f"the program ended after {took:.1f} s" if ended else "the program did not end")
        elif ended and process.returncode not in (0, 1):
            faults.append(f"the program ended with {process.returncode}")
        return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--window", action="store_true")
    parser.add_argument("--every", type=int, default=1)
    arguments = parser.parse_args()
    if not shutil.which("strace"):
        print("strace is not installed: nothing was looked at")
        return 77
    listener = socket.create_server(("127.0.0.1", 0))
    listener.settimeout(0)
    with tempfile.TemporaryDirectory(prefix="oribund-hostile-") as base:
        hostile = Round(arguments, base)
        projects = list(all_projects(hostile.folder, listener.getsockname()[1]))[:: arguments.every]
        bad = 0
        for project in projects:
            faults = hostile.run(project)
            bad += bool(faults)
            for fault in faults[:5]:
                print(f"{fault.strip()}\n    in {project[:400]}")
    try:
        listener.accept()
        print("somebody connected")
        bad += 1
    except OSError:
        pass
    print(f"{len(projects)} projects, {bad} with faults")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
