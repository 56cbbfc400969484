"""Measures what the engine's being a process of its own costs, and prints a table.

Usage: engine_speed.py BUILD; BUILD is a release build folder with bench_engine and the workbench built. The figures are
medians of wall time, of an idle machine: a worker and its peer suffer from a busy one, but not evenly. A peer is the
same engine inside the program, or the framework's own player in the same run.
"""

import json
import os
import statistics
import subprocess
import sys
import time

REPETITIONS = 5
STARTS = 7
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
LOOK = ["xdotool", "search", "--onlyvisible", "--name", "Oribund workbench"]


def measure(program):
    """The median run of each benchmark, with its wall time in seconds; in their order, which memory depends on."""
    text = subprocess.run([program, f"--benchmark_repetitions={REPETITIONS}", "--benchmark_format=json"],
                          capture_output=True, text=True, check=True, env=dict(os.environ, SDL_AUDIODRIVER="dummy")).stdout
    runs = {}
    for run in json.loads(text)["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
        if run.get("aggregate_name") == "median":
            run["seconds"] = run["real_time"] * SECONDS[run["time_unit"]]
            runs[run["run_name"].split("/")[0]] = run
    return runs


def seconds_to_window(program):
    """From the start of the program until its window is on the screen."""
    begun = time.monotonic()
    with subprocess.Popen([program], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as running:
        try:
            while subprocess.run(LOOK, capture_output=True, check=False).returncode:
                if running.poll() is not None:
                    sys.exit(f"{program} ended with {running.returncode}")
            return time.monotonic() - begun
        finally:
            running.kill()


def window_start(program):
    """Asks this script once more, on a display of its own; the first start warms the disk's cache."""
    # A display that starts afresh after its last window would refuse the next one.
    command = ["xvfb-run", "-a", "-s", "-noreset -screen 0 1600x1000x24", sys.executable, __file__, "--window", program]
    text = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    return statistics.median(float(line) for line in text.split()[1:])


def rows(runs, start):
    """(work, ours, peer, goal, whether it is reached)"""
    def pair(ours, peer, what):
        return runs[ours][what], runs[peer][what]

    ours, peer = pair("stillFromWorker", "stillInProcess", "seconds")
    yield ("a still at 720p, one effect: request to picture", f"{ours * 1e3:.2f} ms", f"{peer * 1e3:.2f} ms",
           "at most 2 ms more, and at most 1.05 times", ours - peer <= 0.002 and ours <= 1.05 * peer)
    ours, peer = pair("dragWithWorker", "dragInProcess", "items_per_second")
    yield ("slider drag, pictures a second", f"{ours:.1f}", f"{peer:.1f}", "at least 30", ours >= 30)
    ours, peer = pair("playWithWorker", "playInProcess", "picturesPerSecond")
    yield ("play 720p with three effects, pictures a second", f"{ours:.2f}", f"{peer:.2f}", "at least 0.97 times",
           ours >= 0.97 * peer)
    ours, peer = pair("playWithWorker", "playInProcess", "msApart")
    yield "pictures while playing, off the beat of the sound", f"{ours:.0f} ms", f"{peer:.0f} ms", "at most 40 ms", ours <= 40
    yield "window on screen at start", f"{start:.2f} s", "", "at most 0.5 s", start <= 0.5
    ours, peer = pair("stepWithMarks", "stepLikePlayer", "seconds")
    yield ("a frame step with 31 light effects; peer: the player", f"{ours * 1e3:.1f} ms", f"{peer * 1e3:.1f} ms",
           "at most 1.2 times", ours <= 1.2 * peer)
    ours, peer = pair("stepWithMarks", "stepWithoutMarks", "cpu_time")
    yield ("the watchdog's marks, processor time; peer: without", f"{ours:.1f} ms", f"{peer:.1f} ms",
           "at most 1.02 times", ours <= 1.02 * peer)
    ours, peer = pair("memoryWithWorker", "memoryInProcess", "MiB")
    yield ("memory of both processes, four clips, 720p", f"{ours:.0f} MiB", f"{peer:.0f} MiB", "at most 1.1 times",
           ours <= 1.1 * peer)


def main():
    if sys.argv[1] == "--window":
        for _ in range(STARTS + 1):
            print(seconds_to_window(sys.argv[2]), flush=True)
        return
    build = sys.argv[1]
    runs = measure(os.path.join(build, "bench", "engine", "bench_engine"))
    start = window_start(os.path.join(build, "workbench", "app", "oribund-workbench"))
    print("| work | oribund | peer | goal | reached |\n|---|---|---|---|---|")
    for *cells, good in rows(runs, start):
        print("| " + " | ".join(cells) + f" | {'yes' if good else '**no**'} |")


if __name__ == "__main__":
    main()
