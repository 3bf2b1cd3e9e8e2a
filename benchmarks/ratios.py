#!/usr/bin/env python3
"""Prints the ratio table of a benchmark run.

Usage: ratios.py RESULTS.json   (the output of orv-benchmarks --benchmark_format=json)

Times are CPU times per iteration (wall time for the cases that time themselves),
the median of the repetitions when there are several. Ratios are taken within the
one run, because absolute times on a shared machine say little.
"""

import json
import statistics
import sys
from collections import defaultdict

UNIT_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
SIZES = (10_000, 1_000_000, 10_000_000)


def load(path):
    """Maps (family, points) to its median time in ns and its counters."""
    with open(path, encoding="utf-8") as f:
        report = json.load(f)
    times = defaultdict(list)
    counters = {}
    for run in report["benchmarks"]:
        if run.get("run_type") == "aggregate" and run.get("aggregate_name") != "median":
            continue
        if run.get("error_occurred"):
            continue
        parts = run["run_name"].split("/")
        points = int(parts[1]) if len(parts) > 1 and parts[1].isdigit() else None
        key = (parts[0], points)
        manual = "manual_time" in run["run_name"]
        ns = run["real_time" if manual else "cpu_time"] * UNIT_NS[run["time_unit"]]
        times[key].append(ns)
        counters[key] = run
    return {key: statistics.median(values) for key, values in times.items()}, counters, report.get("context", {})


def size_label(points):
    if points is None or isinstance(points, str):
        return points or ""
    return f"{points:.0e}".replace("e+0", "e")


class Table:
    def __init__(self, times):
        self.times = times
        self.rows = []

    def time(self, family, points=None):
        return self.times.get((family, points))

    def ratio(self, case, points, ours, reference, reference_name, target, better_below=True):
        """Adds a row comparing `ours` (ns) with `reference` (ns); skipped when either is missing."""
        if ours is None or reference is None or reference == 0:
            return
        ratio = ours / reference
        if target is None:
            verdict = ""
        elif better_below:
            verdict = f"<= {target}: " + ("met" if ratio <= target else "NOT met")
        else:
            verdict = f">= {target}: " + ("met" if ratio >= target else "NOT met")
        per_point = f"{ours / points:.2f} ns/pt" if points else f"{ours:.0f} ns"
        self.rows.append((case, size_label(points), per_point, reference_name, f"{ratio:.3f}", verdict))

    def note(self, case, points, value, reference_name, ratio_text, verdict=""):
        self.rows.append((case, size_label(points), value, reference_name, ratio_text, verdict))

    def print(self):
        header = ("case", "points", "ours", "against", "ratio", "target")
        widths = [max(len(str(row[i])) for row in self.rows + [header]) for i in range(len(header))]
        line = lambda row: "| " + " | ".join(str(c).ljust(w) for c, w in zip(row, widths)) + " |"
        print(line(header))
        print("|" + "|".join("-" * (w + 2) for w in widths) + "|")
        for row in self.rows:
            print(line(row))


def main(path):
    times, counters, context = load(path)
    t = Table(times)
    for n in SIZES:
        read = t.time("ReadingFloor", n)
        sort = t.time("SortFloor", n)
        floors = read + sort if read is not None and sort is not None else None
        t.ratio("1 cache, x ascending", n, t.time("CacheAscending", n), read, "reading floor", 1.2)
        t.ratio("2 cache, x shuffled", n, t.time("CacheShuffled", n), floors, "reading + sort floor", 0.5)
        t.ratio("  sort floor", n, sort, read, "reading floor", None)
        t.ratio("3 cache, scalar", n, t.time("CacheScalar", n), t.time("ScalarReadingFloor", n),
                "scalar reading floor", None)
        t.ratio("3 cache, position axis", n, t.time("CachePositional", n), floors, "reading + sort floor", None)
    for n in SIZES:
        t.ratio("4 list cache, 100 variables", n, t.time("ListCache", n), t.time("ListCacheFloor", n),
                "sum of the caches", 1.1)
    small, large = t.time("Pipeline2D", SIZES[0]), t.time("Pipeline2D", SIZES[-1])
    if small is not None and large is not None:
        t.note("5 pipeline, 10 variables", "1e7 vs 1e4", f"{large / 1e3:.1f} us", f"{small / 1e3:.1f} us at 1e4",
               f"{large / small:.3f}", "<= 1.5: " + ("met" if large / small <= 1.5 else "NOT met"))
    ours_ticks = t.time("TicksNiceIntervals")
    no_labels = t.time("TicksNiceIntervalsNoLabels")
    for ours, what in ((ours_ticks, "with labels"), (no_labels, "values only")):
        if ours is None:
            continue
        for peer, name in (("TicksQwt", "Qwt autoScale + divideScale (no labels)"),
                           ("TicksQCustomPlot", "QCPAxisTicker::generate with labels")):
            theirs = t.time(peer)
            if theirs is not None:
                t.note(f"6 NiceIntervals {what}", None, f"{1e3 / ours:.2f} M calls/s",
                       f"{name}: {1e3 / theirs:.2f} M calls/s", f"{theirs / ours:.2f}x as fast",
                       ">= 1: " + ("met" if theirs >= ours else "NOT met"))
    shuffled, qwt_shuffled = t.time("TicksNiceIntervalsShuffled"), t.time("TicksQwtShuffled")
    if shuffled is not None and qwt_shuffled is not None:
        t.note("6 with labels, shuffled", None, f"{1e3 / shuffled:.2f} M calls/s",
               f"Qwt, same order: {1e3 / qwt_shuffled:.2f} M calls/s", f"{qwt_shuffled / shuffled:.2f}x as fast",
               ">= 1: " + ("met" if qwt_shuffled >= shuffled else "NOT met"))
    continuous, time = t.time("ScaleUpdateContinuous"), t.time("ScaleUpdateTime")
    if continuous is not None and time is not None:
        t.note("8 axis scale update, time", None, f"{time / 1e3:.2f} us", f"continuous: {continuous / 1e3:.2f} us",
               f"{time / continuous:.3f}", "<= 3: " + ("met" if time <= 3 * continuous else "NOT met"))
    logarithmic = t.time("ScaleUpdateLogarithmic")
    if continuous is not None and logarithmic is not None:
        t.note("8 axis scale update, logarithmic", None, f"{logarithmic / 1e3:.2f} us",
               f"continuous: {continuous / 1e3:.2f} us", f"{logarithmic / continuous:.3f}", "")
    for family, what in (("MinXDelta", "7 minXDelta"), ("ListBounds", "7 list bounds, 100 variables")):
        value = t.time(family, SIZES[-1])
        if value is not None:
            t.note(what, SIZES[-1], f"{value / 1e3:.1f} us", "", "", "")
    base = t.time("FillBaseLine", SIZES[-1])
    if base is not None:
        t.note("7 fillBaseLine", SIZES[-1], f"{base:.1f} ns", "", "", "")
    for n in SIZES:
        t.ratio("peers: case 1", n, t.time("CacheAscending", n), t.time("QwtBoundingRect", n),
                "Qwt boundingRect", None)
        t.ratio("peers: case 1", n, t.time("CacheAscending", n), t.time("QCustomPlotAddSorted", n),
                "QCustomPlot sorted add + ranges", 1.0)
        t.ratio("peers: case 2", n, t.time("CacheShuffled", n), t.time("QCustomPlotAddUnsorted", n),
                "QCustomPlot unsorted add + ranges", 0.5)
    for n in SIZES:
        for family in ("MemoryCacheAscending", "MemoryCacheShuffled"):
            run = counters.get((family, n))
            if run is None:
                continue
            peer = counters.get(("MemoryQCustomPlot", n))
            against = f"QCustomPlot {peer['held_bytes_per_point']:.1f} B/pt" if peer else "QCustomPlot 16 B/pt"
            t.note(f"memory, {family[len('MemoryCache'):].lower()}", n,
                   f"{run['held_bytes_per_point']:.1f} B/pt held, peak {run['peak_bytes_per_point']:.1f}",
                   against, f"peak/held {run['peak_over_held']:.2f}",
                   "<= 2: " + ("met" if run["peak_over_held"] <= 2 else "NOT met"))
    if context:
        print(f"{context.get('date', '')}, {context.get('num_cpus', '?')} CPUs at {context.get('mhz_per_cpu', '?')} MHz, "
              f"load {', '.join(f'{x:.2f}' for x in context.get('load_avg', []))}")
        print()
    t.print()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
