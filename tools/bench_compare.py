#!/usr/bin/env python3
"""Compares the speed of two builds: bench_compare.py BEFORE AFTER [--filter REGEX] [--rounds N] [PROGRAM...]

BEFORE and AFTER are build folders; PROGRAM is a benchmark's name, such as compose (all that both builds have, the
window's apart, unless given). The two builds run in turns, so that what else the machine does falls on both. A figure
has moved when its medians differ by more than the figure itself spreads from round to round. Ends with 1 when a
figure has grown."""

import argparse
import json
import pathlib
import statistics
import subprocess
import sys


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("before", type=pathlib.Path)
    parser.add_argument("after", type=pathlib.Path)
    parser.add_argument("program", nargs="*")
    parser.add_argument("--filter", default=".", help="benchmarks whose names match")
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--seconds", type=float, default=0.2, help="least time of a benchmark in a round")
    parser.add_argument("--least", type=float, default=2, help="percent that count as a move at all")
    parser.add_argument("--json", type=pathlib.Path, help="file that the figures are written to as well")
    return parser.parse_args()


def programs_of(build):
    found = {path.name.removeprefix("bench_"): path for path in (build / "bench").glob("bench_*") if path.is_file()}
    found.pop("window", None)  # it measures seconds of a window, and has an output of its own
    return found


def run_once(program, arguments):
    """Milliseconds of each benchmark: those of the clock where the benchmark asks for it, else the processor's."""
    command = [program, "--benchmark_format=json", f"--benchmark_filter={arguments.filter}",
               f"--benchmark_min_time={arguments.seconds}"]
    done = subprocess.run(command, capture_output=True, text=True, check=True)
    figures = {}
    for one in json.loads(done.stdout or '{"benchmarks": []}')["benchmarks"]:
        if one.get("error_occurred"):
            sys.exit(f"{one['name']}: {one['error_message']}")
        time = one["real_time"] if one["name"].endswith(("/real_time", "/manual_time")) else one["cpu_time"]
        figures[one["name"]] = time * {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1e3}[one["time_unit"]]
    return figures


def measure(before, after, arguments):
    """For each benchmark of both builds the milliseconds of all rounds."""
    rounds = {}
    for number in range(arguments.rounds):
        order = [(0, before), (1, after)]
        for side, program in order if number % 2 == 0 else reversed(order):
            for name, time in run_once(program, arguments).items():
                rounds.setdefault(name, ([], []))[side].append(time)
    return {name: sides for name, sides in rounds.items() if sides[0] and sides[1]}


def spread_of(times):
    """The range of the middle half of the rounds, in percent of the median."""
    if len(times) < 3:
        return 100.0
    low, _, high = statistics.quantiles(times, n=4)
    return 100 * (high - low) / statistics.median(times)


def judge(name, before, after, least):
    old, new = statistics.median(before), statistics.median(after)
    change = 100 * (new / old - 1)
    spread = max(spread_of(before), spread_of(after))
    moved = abs(change) > max(spread, least)
    verdict = ("slower" if change > 0 else "faster") if moved else ""
    return {"name": name, "before_ms": old, "after_ms": new, "change_percent": change, "spread_percent": spread,
            "verdict": verdict}


def main():
    arguments = parse_arguments()
    before, after = programs_of(arguments.before), programs_of(arguments.after)
    names = arguments.program or sorted(before.keys() & after.keys())
    missing = [name for name in names if name not in before or name not in after]
    if missing or not names:
        sys.exit("Not in both builds: " + (", ".join(missing) or "any benchmark"))
    results = []
    print(f"{'before':>10} {'after':>10} {'change':>8} {'spread':>7}         (milliseconds, medians)")
    for program in names:
        for name, sides in measure(before[program], after[program], arguments).items():
            result = judge(name, *sides, arguments.least)
            results.append(result)
            print(f"{result['before_ms']:10.3f} {result['after_ms']:10.3f} {result['change_percent']:+7.1f}% "
                  f"{result['spread_percent']:6.1f}%  {result['verdict']:6} {name}", flush=True)
    if arguments.json:
        arguments.json.write_text(json.dumps(results, indent=2) + "\n")
    return 1 if any(result["verdict"] == "slower" for result in results) else 0


if __name__ == "__main__":
    sys.exit(main())
