"""Runs the benchmarks and writes docs/performance.md.

Usage: performance.py BUILD; BUILD is a release build folder with the benchmarks built. Every figure is the median CPU
time of several repetitions; what is compared runs in the same program. Best on an idle machine: the peers suffer from
a busy one as much, but not evenly.
"""

import json
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PROGRAMS = ("notify", "graphs", "binding", "model", "bars", "rows", "surface", "panels", "catalogue_panels",
            "colour")
REPETITIONS = 5
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
SIZES = (10, 100, 1000, 10000, 100000)


def measure(build):
    """Median CPU time in nanoseconds, counters included, by benchmark name."""
    found = {}
    for program in PROGRAMS:
        path = os.path.join(build, "bench", program, f"bench_{program}")
        print(f"running bench_{program}", file=sys.stderr)
        output = subprocess.run(
            [path, f"--benchmark_repetitions={REPETITIONS}", "--benchmark_report_aggregates_only=true", "--benchmark_min_time=0.1",
             "--benchmark_format=json", "--benchmark_enable_random_interleaving=true"],
            capture_output=True, text=True, check=True).stdout
        for run in json.loads(output)["benchmarks"]:
            if run.get("aggregate_name") == "median":
                run["ns"] = run["cpu_time"] * NANOSECONDS[run["time_unit"]]
                found[run["run_name"]] = run
    return found


def time_of(nanoseconds):
    if nanoseconds < 1000:
        return f"{nanoseconds:.1f} ns"
    return f"{nanoseconds / 1000:.2f} us" if nanoseconds < 1e6 else f"{nanoseconds / 1e6:.2f} ms"


class Table:
    """Rows of work, ours, peer, ratio and goal, with a mark where the goal is missed."""

    def __init__(self, runs):
        self._runs = runs
        self.rows = []

    def ns(self, name):
        return self._runs[name]["ns"]

    def has(self, name):
        return name in self._runs

    def at_most(self, work, ours, peer, limit):
        """The ratio to a peer that it must not exceed."""
        ratio = self.ns(ours) / self.ns(peer)
        self._add(work, ours, time_of(self.ns(peer)), f"{ratio:.2f}", f"at most {limit}", ratio <= limit)

    def each_at_most(self, work, ours, count, peer, peers, limit):
        """The same for each of so many things."""
        spent, other = self.ns(ours) / count, self.ns(peer) / peers
        self.rows.append((work, time_of(spent), time_of(other), f"{spent / other:.2f}", f"at most {limit}",
                          spent / other <= limit))

    def faster(self, work, ours, peer, factor):
        """How many times faster than a peer it must be."""
        if self.has(peer):
            ratio = self.ns(peer) / self.ns(ours)
            self._add(work, ours, time_of(self.ns(peer)), f"{ratio:.1f} x faster", f"at least {factor} x",
                      ratio >= factor)

    def below(self, work, ours, nanoseconds, per=1, beside=0.0):
        """A time that it must not exceed: for each of `per` things, `beside` what is spent anyway."""
        spent = self.ns(ours) / per - beside
        self.rows.append((work, time_of(spent), "", "", f"at most {time_of(nanoseconds)}", spent <= nanoseconds))

    def no_allocation(self, work, ours):
        count = self._runs[ours].get("allocations", 0)
        self.rows.append((work + ", allocations", f"{count:g}", "", "", "none", count == 0))

    def bytes_below(self, work, ours, counter, limit):
        """A size that it must not exceed."""
        size = self._runs[ours][counter]
        self.rows.append((work, f"{size:.0f} bytes", "", "", f"at most {limit} bytes", size <= limit))

    def _add(self, work, ours, peer, ratio, goal, good):
        self.rows.append((work, time_of(self.ns(ours)), peer, ratio, goal, good))

    def text(self):
        lines = ["| work | oribund | peer | ratio | goal | reached |", "|---|---|---|---|---|---|"]
        for *cells, good in self.rows:
            lines.append("| " + " | ".join(cells) + f" | {'yes' if good else '**no**'} |")
        return "\n".join(lines)


def graphs(table):
    for shape, word, limit in (("Straight", "linear", 1.5), ("Smooth", "smooth", 1.3)):
        for size in SIZES:
            table.at_most(f"evaluate, {word}, {size} keyframes; peer: sorted array",
                          f"evaluate<BezierCurve, Shape::{shape}>/{size}",
                          f"evaluate<ArrayPeer, Shape::{shape}>/{size}", limit)
        for size, factor in ((1000, 12), (10000, 100)):
            table.faster(f"evaluate, {word}, {size} keyframes; peer: mlt_animation",
                         f"evaluate<BezierCurve, Shape::{shape}>/{size}",
                         f"evaluateMlt/{'straight' if shape == 'Straight' else 'smooth'}/{size}", factor)
    for size in SIZES:
        ours = f"setExisting<BezierCurve, Shape::Straight>/{size}"
        table.at_most(f"set an existing keyframe, {size}; peer: sorted array", ours,
                      f"setExisting<ArrayPeer, Shape::Straight>/{size}", 2)
    table.no_allocation("set an existing keyframe, 1000", "setExisting<BezierCurve, Shape::Straight>/1000")
    table.faster("set an existing keyframe, 1000; peer: mlt_animation",
                 "setExisting<BezierCurve, Shape::Straight>/1000", "setExistingMlt/1000", 12)
    for size in (10, 100, 1000):
        table.at_most(f"insert and remove, {size}; peer: sorted vector",
                      f"insertAndRemove<BezierCurve, Shape::Straight>/{size}",
                      f"insertAndRemove<ArrayPeer, Shape::Straight>/{size}", 1)
    table.below("insert and remove, 100000: each", "insertAndRemove<BezierCurve, Shape::Straight>/100000", 1000, 2)
    for size in (100, 1000, 10000):
        table.below(f"add a batch of {size}: each key", f"addBatch/{size}", 40, size)


def notification(table):
    for count in (1, 10, 100):
        table.at_most(f"a value change to {count} observers; peer: vector of pointers",
                      f"valServerToCallbacks/{count}", f"pointerVector/{count}", 1.5)
    for count in (10, 100):
        table.faster(f"a value change to {count} observers; peer: Qt signal", f"valServerToCallbacks/{count}",
                     f"qtSignalToSlots/{count}", 5)
    table.no_allocation("a value change to 100 observers", "valServerToCallbacks/100")


def editing(table):
    table.below("one edit through an adaptor with ten sliders", "editWithTenSliders", 1000)
    table.below("one edit through an adaptor with ten entries, beside formatting the text", "editWithTenEntries", 1000,
                beside=table.ns("formatOneText"))
    for one, work in ((1, "undo and redo of a keyframe's value"), (0, "undo and redo of a keyframe's value, in many")):
        small, large = (f"keyframeValue/keys:{size}/one:{one}" for size in (1000, 100000))
        if table.has(small) and table.has(large):
            table.at_most(f"{work}: edit with 100,000 keyframes; peer: 1,000", large, small, 2)
    for graphs, where in ((1, "in one graph"), (100, "in 100 graphs")):
        work = f"a drag of 10,000 keyframes {where}, recorded for undo"
        table.below(f"{work}: first move", f"keyframesMovedFirst/graphs:{graphs}", 2e6)
        table.below(f"{work}: each further move", f"keyframesMoved/graphs:{graphs}", 1e6)
    table.faster("a move of 10,000 keyframes; peer: sorted array, one by one, not recorded", "keyframesMoved/graphs:1",
                 "arrayMoved/graphs:1", 100)


def bars(table):
    table.below("the next keyframe of 4 effects with 50 parameters of 100 keyframes", "adjacentKeyframe", 200)
    table.faster("the next keyframe; peer: a std::map for each parameter", "adjacentKeyframe", "adjacentInMaps", 20)
    table.at_most("draw a bar of 1,000 pixels with 1,000,000 keyframes; peer: with 10,000", "drawBar/1000000",
                  "drawBar/10000", 3)
    table.at_most("find the pixels of 1,000,000 keyframes alone; peer: of 10,000", "visitCells/1/1000000",
                  "visitCells/1/10000", 3)
    table.at_most("the nearest of 1,000 keyframes; peer: std::lower_bound", "nearestKeyframe", "nearestByLowerBound", 2)
    table.faster("the nearest of 1,000 keyframes; peer: a scan of all", "nearestKeyframe", "nearestByScan", 10)
    table.below("one move of a drag of 10,000 keyframes, undo included", "trimMove/10000", 2e6)
    table.below("the current time moves over 100 rows, all animated", "playAnimatedRows", 1e6)
    table.below("the current time moves over 100 rows, all constant: each row", "playConstantRows", 100, 100)


def surfaces(table):
    table.at_most("a panel of 1,000 float rows, made, laid out and shown; peer: a form of 100 rows of Qt's widgets",
                  "showPanel/1000", "showForm/100", 1)
    table.below("a panel of 1,000 float rows, made, laid out and shown", "showPanel/1000", 20e6)
    table.below("a panel of 10,000 float rows, made, laid out and shown", "showPanel/10000", 150e6)
    table.at_most("one notch of scrolling in 10,000 rows; peer: in 100", "scrollPanel/10000", "scrollPanel/100", 1.3)
    table.at_most("one edit in 10,000 rows; peer: in 100", "editPanel/10000", "editPanel/100", 1.3)
    table.bytes_below("memory of a float row", "showPanel/10000", "bytesPerRow", 4096)


def panels(table):
    for rows in (10, 100, 1000):
        table.at_most(f"generate a panel of {rows} float rows in groups of ten; peer: their objects alone",
                      f"generatePanel/{rows}", f"makeObjects/{rows}", 3)
    table.faster("generate a panel of 1,000 float rows; peer: make the same widgets of Qt's", "generatePanel/1000",
                 "makeNativeForm/1000", 30)
    table.each_at_most("generate a panel: each of 1,000 rows; peer: each of 10", "generatePanel/1000", 1000,
                       "generatePanel/10", 10, 1.3)
    table.at_most("a panel of 1,000 float rows, generated, laid out and shown; peer: a form of 100 rows of Qt's widgets",
                  "showGenerated/1000", "showNativeForm/100", 1)
    table.at_most("one edit in a generated panel of 1,000 rows; peer: of 10", "editGenerated/1000", "editGenerated/10",
                  1.1)
    table.below("the panels of all installed effects, generated once", "makeAllPanels/iterations:100", 500e6)
    table.bytes_below("memory kept by 100 rounds of them", "makeAllPanels/iterations:100", "bytesKept", 65536)


def strips(table):
    for axis, name in enumerate(("hue", "saturation", "luminance")):
        table.at_most(f"a strip of {name}, 1,000 by 24, with a histogram; peer: QPainter stretches a line of pixels to it",
                      f"drawStrip/axis:{axis}", "drawStretchedPicture", 1)
    table.below("the same of hue, made anew as in a drag", "drawMovedStrip", 200e3)


def main():
    table = Table(measure(sys.argv[1]))
    graphs(table)
    notification(table)
    editing(table)
    bars(table)
    surfaces(table)
    panels(table)
    strips(table)
    with open("/proc/cpuinfo", encoding="utf-8") as cpuinfo:
        cpu = next((line.split(":")[1].strip() for line in cpuinfo if line.startswith("model name")), "unknown")
    with open(os.path.join(ROOT, "docs", "performance.md"), "w", encoding="utf-8") as page:
        page.write(f"""# Performance

Median CPU times of {REPETITIONS} repetitions, with Google Benchmark; what is compared runs in the same program. Made on
{cpu}, by

    cmake --preset release && ninja -C build/release benchmarks && python3 scripts/performance.py build/release

"Sorted array" is an array of times with binary search and the rest apart, written for the comparison: what nothing
that finds keyframes by time can beat by much.

{table.text()}
""")
    missed = [row[0] for row in table.rows if not row[-1]]
    print(f"{len(table.rows) - len(missed)} of {len(table.rows)} goals reached")
    for work in missed:
        print("missed:", work)


if __name__ == "__main__":
    main()
