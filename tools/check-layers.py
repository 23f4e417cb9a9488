#!/usr/bin/env python3
"""Checks `pemlo-cli layers` against a second, independent reading of the layering rule.

For every sounding it runs `pemlo-cli classify` (the intervals) and `pemlo-cli layers`
(the layers) with the same options, groups the intervals into layers here by the rule
as docs/ags4.md states it, and compares layer by layer: count, top, bottom, thickness,
soil, number of intervals and every mean, all exactly.

    check-layers.py --cli build/src/cli/pemlo-cli --data-units si [--graph-units english]
                    [--min-thickness T] [--random N] FILE...

--random N adds N generated soundings with interbedded layers of random thickness.
Exit status 0 when every sounding agrees, 1 otherwise.
"""

import argparse
import csv
import io
import math
import os
import random
import struct
import subprocess
import sys
import tempfile
from fractions import Fraction

SOILS = ("sand", "silt", "clay")


def bits_to_f32(bits):
    return struct.unpack("<f", struct.pack("<I", bits))[0]


def to_f32(text):
    """The single-precision value nearest the decimal text (ties to even), exactly.

    Going through a double first could round twice; the candidates around that first
    guess are compared with the exact decimal instead."""
    exact = Fraction(text)
    guess = struct.unpack("<I", struct.pack("<f", float(text)))[0]
    best = None
    for bits in (guess - 1, guess, guess + 1):
        if bits < 0 or bits >= 1 << 32:
            continue
        value = bits_to_f32(bits)
        if math.isinf(value) or math.isnan(value):
            continue
        key = (abs(Fraction(value) - exact), bits & 1)
        if best is None or key < best[0]:
            best = (key, value)
    return best[1]


def dominant(sand, silt, clay):
    """Largest probability; ties go to the finer soil."""
    if clay >= silt and clay >= sand:
        return "clay"
    if silt >= sand:
        return "silt"
    return "sand"


def mean(values, first, last):
    total = 0.0
    for k in range(first, last + 1):
        total += values[k]
    return total / (last - first + 1)


def layer_rule(rows, interval, minimum):
    """The layers of the intervals as (first, last, soil), top down."""
    prob = [[r[c] for r in rows] for c in ("sand", "silt", "clay")]

    def means(layer):
        return [mean(p, layer[0], layer[1]) for p in prob]

    def distance(a, b):
        ma, mb = means(a), means(b)
        return abs(ma[0] - mb[0]) + abs(ma[1] - mb[1]) + abs(ma[2] - mb[2])

    ratio = minimum / interval
    n = max(1, int(math.floor(ratio + 0.5)))  # halves away from zero (ratio >= 0)

    layers = []
    for k, r in enumerate(rows):
        soil = dominant(r["sand"], r["silt"], r["clay"])
        if layers and layers[-1][2] == soil:
            layers[-1] = (layers[-1][0], k, soil)
        else:
            layers.append((k, k, soil))

    while len(layers) > 1:
        thin = [k for k, l in enumerate(layers) if l[1] - l[0] + 1 < n]
        if not thin:
            break
        k = min(thin, key=lambda i: (layers[i][1] - layers[i][0] + 1, i))
        if k == 0:
            other = 1
        elif k == len(layers) - 1:
            other = k - 1
        else:
            other = k - 1 if distance(layers[k], layers[k - 1]) <= distance(layers[k], layers[k + 1]) else k + 1
        lo, hi = min(k, other), max(k, other)
        merged = (layers[lo][0], layers[hi][1])
        layers[lo:hi + 1] = [merged + (dominant(*means(merged)),)]
        joined = []
        for l in layers:
            if joined and joined[-1][2] == l[2]:
                joined[-1] = (joined[-1][0], l[1], l[2])
            else:
                joined.append(l)
        layers = joined
    return layers, n


def run(cli, command, path, options):
    result = subprocess.run([cli, command, path, "--format", "csv"] + options, capture_output=True, text=True)
    if result.returncode != 0:
        raise RuntimeError(f"{command} {path}: exit {result.returncode}: {result.stderr.strip()}")
    return list(csv.DictReader(io.StringIO(result.stdout)))


def check_file(cli, path, args):
    road = ["--data-units", args.data_units]
    if args.graph_units:
        road += ["--graph-units", args.graph_units]
    english_graph = args.graph_units == "english" or (args.graph_units is None and args.data_units != "si")
    minimum = float(args.min_thickness) if args.min_thickness else (1.64 if english_graph else 0.5)
    layered = road + (["--min-thickness", args.min_thickness] if args.min_thickness else [])

    intervals = [{k: to_f32(v) for k, v in r.items() if k != "interval"} for r in run(cli, "classify", path, road)]
    got = run(cli, "layers", path, layered)
    # The readings are converted to the graph units before the grid is built: 0.328 ft or 0.1 m.
    interval = to_f32("0.328") if english_graph else to_f32("0.1")
    half = interval / 2.0
    expected, n = layer_rule(intervals, interval, minimum)

    problems = []
    if len(got) != len(expected):
        problems.append(f"{len(got)} layers, expected {len(expected)}")
    for number, (row, (first, last, soil)) in enumerate(zip(got, expected), start=1):
        top = intervals[first]["depth"] - half
        bottom = intervals[last]["depth"] + half
        want = {"layer": number, "top": top, "bottom": bottom, "thickness": bottom - top, "soil": soil,
                "intervals": last - first + 1}
        for key in ("qc", "fs", "ratio", "u", "v", "sand", "silt", "clay"):
            want[key] = mean([r[key] for r in intervals], first, last)
        for key, value in want.items():
            actual = row[key] if isinstance(value, str) else (int(row[key]) if isinstance(value, int) else float(row[key]))
            if actual != value:
                problems.append(f"layer {number} {key}: {row[key]}, expected {value!r}")
    return len(expected), n, problems


def random_sounding(directory, index, rng):
    """Interbedded ground: beds of random thickness, each with its own qc and ratio."""
    path = os.path.join(directory, f"random{index:03d}.txt")
    depth, lines = 0.0, []
    while depth < rng.uniform(3.0, 15.0) and len(lines) < 3900:
        bed = rng.choice([0.02, 0.05, 0.1, 0.2, 0.4, 0.8, 1.5])
        qc = rng.choice([0.3, 0.8, 2.0, 6.0, 15.0]) * rng.uniform(0.7, 1.3)
        ratio = rng.choice([0.5, 1.0, 2.0, 4.0, 6.0])
        end = depth + bed
        while depth < end:
            depth += 0.02
            q = qc * rng.uniform(0.9, 1.1)
            lines.append(f"{depth:.3f},{q:.3f},{q * ratio / 100 * rng.uniform(0.9, 1.1):.4f}")
    with open(path, "w", newline="") as f:
        f.write("".join(f"title {i}\r\n" for i in range(10)) + "\r\n".join(lines) + "\r\n")
    return path


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data-units", default="si", choices=("mv", "english", "si"))
    parser.add_argument("--graph-units", choices=("english", "si"))
    parser.add_argument("--min-thickness")
    parser.add_argument("--random", type=int, default=0)
    parser.add_argument("files", nargs="*")
    args = parser.parse_args()

    failed = 0
    with tempfile.TemporaryDirectory() as scratch:
        rng = random.Random(11)
        files = args.files + [random_sounding(scratch, i, rng) for i in range(args.random)]
        for path in files:
            try:
                count, n, problems = check_file(args.cli, path, args)
            except RuntimeError as error:
                count, n, problems = 0, 0, [str(error)]
            if problems:
                failed += 1
                print(f"FAIL {path}: " + "; ".join(problems[:5]))
            else:
                print(f"ok   {path}: {count} layers (N = {n})")
    print(f"{len(files) - failed} of {len(files)} soundings agree")
    return 1 if failed or not files else 0


if __name__ == "__main__":
    sys.exit(main())
