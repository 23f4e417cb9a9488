#!/usr/bin/env python3
"""Checks `pemlo-cli sbt` against a second, independent reading of the rule in docs/sbtn.md.

For every input it runs `pemlo-cli sbt` twice with the same options, as CSV (the rows)
and as JSON (D, a, the water unit weight and the unit weight used, with their
sources), recomputes every column from the CSV's depth, qc, fs and u2 by the rule as
docs/sbtn.md states it, and compares: every number to 1e-9 relative, empty where the
rule leaves it empty, and the zone exactly unless the point lies within 1e-9 of a
zone boundary. The counts in the JSON must match the rows.

    check-sbt.py --cli build/src/cli/pemlo-cli [--plain-u2 DIR] [--sbt-options "--gwt -2 ..."] FILE...

--plain-u2 DIR: every plain ASCII file among FILE is also checked with a u2 column
added in column 4 and, in a second copy, column 5 (written into DIR), read with
--data-units si --u2-column 4|5; with SI data the rows' depth, qc, fs and u2 must be
the file's text in single precision. --skip-refused: a file the import refuses (exit 3)
is skipped rather than failed; at least one file must be checked.
--ags: the SCPT rows `ags --readings` writes with the same options must read back to
the sbt values at the decimals of their headings (qn and u0 in MPa there).
Exit status 0 when every input agrees, 1 otherwise.
"""

import argparse
import csv
import io
import json
import math
import os
import shlex
import struct
import subprocess
import sys
import tempfile
from fractions import Fraction

PA = 100.0
COLUMNS = ("depth,qc,fs,u2,qt,rf,gamma,sigma_v0,u0,sigma_v0_eff,qn,qt1,fr,bq,n,qtn,ic,zone").split(",")
IC_BOUNDS = ((1.31, 7), (2.05, 6), (2.60, 5), (2.95, 4), (3.60, 3))


def unit_weight(qt, fs, gw, above):
    if fs <= 0 or qt <= 0:
        return above
    rf = 100.0 * fs / qt
    g = gw * (0.27 * math.log10(rf) + 0.36 * math.log10(qt / 0.1) + 1.236)
    return min(22.0, max(12.0, g))


def ic_of(qtn, fr):
    x = 3.47 - math.log10(qtn)
    y = math.log10(fr) + 1.22
    return math.sqrt(x * x + y * y)


def zone_of(qtn, fr, ic):
    """The zone, and whether the point lies so near a boundary that rounding may move it."""
    one = 12.0 * math.exp(-1.4 * fr)
    f = 0.005 * (fr - 1.0) - 0.0003 * ((fr - 1.0) * (fr - 1.0)) - 0.002
    near = abs(qtn - one) <= 1e-9 * max(qtn, one) or abs(f) <= 1e-12
    if f > 0:
        near = near or abs(qtn - 1.0 / f) <= 1e-9 * qtn or abs(fr - 4.5) <= 1e-9
    near = near or any(abs(ic - b) <= 1e-9 for b, _ in IC_BOUNDS) or abs(ic - 3.60) <= 1e-9
    if qtn < one:
        return 1, near
    if f > 0 and qtn > 1.0 / f:
        return (8 if fr <= 4.5 else 9), near
    for bound, zone in IC_BOUNDS:
        if ic < bound:
            return zone, near
    return 2, near


def normalise(qn, eff, fs, u2, u0):
    """The values from Qt1 on, or the reason there are none."""
    if qn <= 0:
        return "qn <= 0"
    if eff <= 0:
        return "effective stress <= 0"
    if fs <= 0:
        return "fs <= 0"
    fr = 100.0 * 1000.0 * fs / qn
    out = {"qt1": qn / eff, "fr": fr, "bq": None if u2 is None else (1000.0 * u2 - u0) / qn}
    n = 1.0
    for _ in range(100):
        qtn = (qn / PA) * math.pow(PA / eff, n)
        ic = ic_of(qtn, fr)
        nxt = min(1.0, 0.381 * ic + 0.05 * eff / PA - 0.15)
        if abs(nxt - n) <= 1e-9:
            out.update(n=n, qtn=qtn, ic=ic)
            out["zone"], out["near"] = zone_of(qtn, fr, ic)
            return out
        n = nxt
    return "no convergence"


def area_ratios(meta, count):
    a = meta["area_ratio"]
    spans = a.get("from_reading", [[1, a["value"]]])
    ratios = []
    for i in range(count):
        value = spans[0][1]
        for start, v in spans:
            if i + 1 >= start:
                value = v
        ratios.append(value)
    return ratios


def recompute(rows, meta):
    d = meta["groundwater"]["value"]
    gw = meta["water_unit_weight"]["value"]
    fixed = meta["unit_weight"]
    ratios = area_ratios(meta, len(rows))
    sigma = gw * max(0.0, -d)
    previous = 0.0
    above = 18.0
    out = []
    for r, a in zip(rows, ratios):
        z, qc, fs, u2 = r["depth"], r["qc"], r["fs"], r["u2"]
        qt = qc + u2 * (1.0 - a) if u2 is not None else qc
        g = fixed if fixed != "auto" else unit_weight(qt, fs, gw, above)
        above = g
        sigma = sigma + g * (z - previous)
        previous = z
        u0 = gw * (z - d) if z > d else 0.0
        eff = sigma - u0
        qn = 1000.0 * qt - sigma
        row = {"depth": z, "qc": qc, "fs": fs, "u2": u2, "qt": qt, "rf": 100.0 * fs / qt if qt != 0 else None,
               "gamma": g, "sigma_v0": sigma, "u0": u0, "sigma_v0_eff": eff, "qn": qn}
        values = normalise(qn, eff, fs, u2, u0)
        if isinstance(values, str):
            row.update({k: None for k in ("qt1", "fr", "bq", "n", "qtn", "ic", "zone")}, why=values, near=False)
        else:
            row.update(values, why=None)
        out.append(row)
    return out


def number(text):
    return None if text == "" else float(text)


def agree(mine, theirs):
    if mine is None or theirs is None:
        return mine is None and theirs is None
    return mine == theirs or abs(mine - theirs) <= 1e-9 * max(abs(mine), abs(theirs))


class Refused(Exception):
    pass


SKIP_REFUSED = False
CHECKED = [0]


def run(cli, args):
    p = subprocess.run([cli, "sbt"] + args, capture_output=True, text=True)
    if p.returncode == 3:  # a file the import refuses is refused by every command alike
        raise Refused(p.stderr.strip().splitlines()[-1])
    if p.returncode != 0:
        raise RuntimeError(f"pemlo-cli sbt {' '.join(args)}: exit {p.returncode}: {p.stderr.strip()}")
    return p.stdout


def check_one(name, rows, meta):
    mine = recompute(rows, meta)
    faults = []
    near = 0
    for i, (m, t) in enumerate(zip(mine, rows)):
        for key in COLUMNS[:-1]:
            if not agree(m[key], t[key]):
                faults.append(f"reading {i + 1} {key}: rule {m[key]!r}, sbt {t[key]!r}")
        if m["near"]:
            near += 1
        elif m["zone"] != (None if t["zone"] is None else int(t["zone"])):
            faults.append(f"reading {i + 1} zone: rule {m['zone']}, sbt {t['zone']}")
        why = meta["readings"][i].get("invalid")
        if why != m["why"]:
            faults.append(f"reading {i + 1} reason: rule {m['why']!r}, sbt {why!r}")
    if len(mine) != meta["numReadings"]:
        faults.append(f"{len(mine)} rows, json says {meta['numReadings']}")
    counts = meta["counts"]
    valid = sum(1 for m in mine if m["why"] is None)
    if counts["valid"] != valid:
        faults.append(f"valid: rule {valid}, sbt {counts['valid']}")
    for cause, count in counts["invalid"].items():
        if count != sum(1 for m in mine if m["why"] == cause):
            faults.append(f"count of {cause!r} differs")
    with_u2 = sum(1 for r in rows if r["u2"] is not None)
    print(f"{name}: {len(rows)} readings, {with_u2} with u2, {valid} valid, {near} near a zone boundary: "
          + ("agree" if not faults else f"{len(faults)} differences"))
    for f in faults[:10]:
        print("  " + f)
    return not faults


def check(cli, args):
    """Every sounding of one sbt call: several inputs give one CSV with a file column
    and a JSON array."""
    try:
        table = list(csv.DictReader(io.StringIO(run(cli, args))))
        metas = json.loads(run(cli, args + ["--format", "json"]))
    except Refused as e:
        print(f"{args[-1]}: not read{', skipped' if SKIP_REFUSED else ''} ({e})")
        return SKIP_REFUSED
    CHECKED[0] += 1
    if isinstance(metas, dict):
        metas = [metas]
    ok = bool(metas)
    for meta in metas:
        rows = [r for r in table if r.get("file", meta["file"]) == meta["file"]]
        rows = [{k: number(v) for k, v in r.items() if k != "file"} for r in rows]
        ok = check_one(" ".join([meta["file"]] + args[:-1]), rows, meta) and ok
    return ok


def with_u2_column(path, column, folder):
    """A copy of a plain file with a u2 column (a smooth made-up pore pressure) in column 4 or 5."""
    target = os.path.join(folder, f"{os.path.splitext(os.path.basename(path))[0]}_u2c{column}.txt")
    with open(path, newline="") as src, open(target, "w", newline="") as dst:
        for number_, line in enumerate(src.read().split("\r\n")):
            fields = line.split(",")
            if number_ >= 10 and len(fields) == 3:
                depth = float(fields[0])
                u2 = f"{0.01 * depth - 0.02 + 0.003 * math.sin(depth):.4f}"
                fields += ([u2] if column == 4 else ["0", u2])
            dst.write(",".join(fields) + ("\r\n" if line or number_ == 0 else ""))
    return target


def to_f32(text):
    """The single-precision value nearest the decimal text, exactly (no double rounding)."""
    exact = Fraction(text)
    guess = struct.unpack("<I", struct.pack("<f", float(text)))[0]
    candidates = [(struct.unpack("<f", struct.pack("<I", b))[0], b) for b in (guess - 1, guess, guess + 1)
                  if 0 <= b < 1 << 32]
    candidates = [(v, b) for v, b in candidates if math.isfinite(v)]
    return min(candidates, key=lambda c: (abs(Fraction(c[0]) - exact), c[1] & 1))[0]


def check_si_inputs(cli, args, path, column):
    """An SI plain file's depth, qc, fs and u2 reach the rows as the file's text in single
    precision, u2 from the column named."""
    rows = list(csv.DictReader(io.StringIO(run(cli, args))))
    with open(path, newline="") as f:
        lines = [line.split(",") for line in f.read().split("\r\n")[10:] if line]
    faults = [i + 1 for i, (r, fields) in enumerate(zip(rows, lines))
              if [float(r[k]) for k in ("depth", "qc", "fs", "u2")]
              != [to_f32(fields[0]), to_f32(fields[1]), to_f32(fields[2]), to_f32(fields[column - 1])]]
    if len(rows) != len(lines) or faults:
        print(f"{path}: the inputs differ from the file at readings {faults[:10]} ({len(rows)} rows, {len(lines)} lines)")
        return False
    return True


# The SCPT headings of `ags --readings` and the sbt column each holds, with its scale.
AGS_COLUMNS = {"SCPT_DPTH": ("depth", 1), "SCPT_RES": ("qc", 1), "SCPT_FRES": ("fs", 1), "SCPT_PWP2": ("u2", 1),
               "SCPT_FRR": ("rf", 1), "SCPT_QT": ("qt", 1), "SCPT_BDEN": ("gamma", 1 / 9.80665), "SCPT_CPO": ("sigma_v0", 1),
               "SCPT_CPOD": ("sigma_v0_eff", 1), "SCPT_QNET": ("qn", 1e-3), "SCPT_BQ": ("bq", 1),
               "SCPT_ISPP": ("u0", 1e-3), "SCPT_NQT": ("qt1", 1), "SCPT_NFR": ("fr", 1), "SCPT_QTN": ("qtn", 1),
               "SCPT_NEXP": ("n", 1), "SCPT_CIC": ("ic", 1), "SCPT_SBTN": ("zone", 1)}


def scpt_rows(path):
    """The SCPT rows of an AGS4 file, by LOCA_ID in the order they come, with the decimals of each heading."""
    headings, decimals, rows = [], {}, {}
    group = None
    with open(path, newline="") as f:
        for fields in csv.reader(f):
            if not fields:
                continue
            if fields[0] == "GROUP":
                group = fields[1]
            elif group == "SCPT" and fields[0] == "HEADING":
                headings = fields
            elif group == "SCPT" and fields[0] == "TYPE":
                decimals = {h: int(t[:-2]) for h, t in zip(headings, fields) if t.endswith("DP")}
            elif group == "SCPT" and fields[0] == "DATA":
                row = dict(zip(headings, fields))
                rows.setdefault(row["LOCA_ID"], []).append(row)
    return list(rows.values()), decimals


def check_ags(cli, args):
    """`ags --readings` writes every reading's values as sbt gives them, at the dictionary's decimals."""
    target = os.path.join(tempfile.mkdtemp(), "readings.ags")
    p = subprocess.run([cli, "ags", "--readings", "-o", target] + args, capture_output=True, text=True)
    if p.returncode != 0:
        print(f"ags --readings {' '.join(args)}: exit {p.returncode}: {p.stderr.strip().splitlines()[-1:]}")
        return p.returncode == 3 and SKIP_REFUSED
    table = list(csv.DictReader(io.StringIO(run(cli, args))))
    metas = json.loads(run(cli, args + ["--format", "json"]))
    metas = [metas] if isinstance(metas, dict) else metas
    locations, decimals = scpt_rows(target)
    faults = []
    if len(locations) != len(metas):
        faults.append(f"{len(locations)} locations with SCPT rows for {len(metas)} soundings")
    for meta, written in zip(metas, locations):
        rows = [r for r in table if r.get("file", meta["file"]) == meta["file"]]
        if len(rows) != len(written):
            faults.append(f"{meta['file']}: {len(written)} SCPT rows for {len(rows)} readings")
        for i, (mine, theirs) in enumerate(zip(rows, written)):
            for heading, (key, scale) in AGS_COLUMNS.items():
                text, value = theirs.get(heading, ""), mine[key]
                if value == "" or text == "":
                    if value != text:
                        faults.append(f"{meta['file']} reading {i + 1} {heading}: {text!r}, sbt {value!r}")
                    continue
                half = 0.5 * 10.0 ** -decimals[heading]
                if abs(float(text) - float(value) * scale) > half * (1 + 1e-9) + 1e-12:
                    faults.append(f"{meta['file']} reading {i + 1} {heading}: {text}, sbt {value}")
    print(f"ags --readings {' '.join(args)}: {sum(len(w) for w in locations)} SCPT rows: "
          + ("agree" if not faults else f"{len(faults)} differences"))
    for f in faults[:10]:
        print("  " + f)
    CHECKED[0] += 1
    return not faults


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--plain-u2", metavar="DIR")
    parser.add_argument("--sbt-options", default="", help="options for every sbt call, as one string")
    parser.add_argument("--skip-refused", action="store_true",
                        help="a file the import refuses (exit 3) is skipped, not a failure")
    parser.add_argument("--ags", action="store_true",
                        help="also check the SCPT rows `ags --readings` writes against the sbt values")
    parser.add_argument("files", nargs="+")
    options = parser.parse_args()
    global SKIP_REFUSED
    SKIP_REFUSED = options.skip_refused
    extra = shlex.split(options.sbt_options)
    ok = True
    for path in options.files:
        ok = check(options.cli, extra + [path]) and ok
        if options.ags:
            ok = check_ags(options.cli, extra + [path]) and ok
        if options.plain_u2 and path.endswith(".txt"):
            os.makedirs(options.plain_u2, exist_ok=True)
            for column in (4, 5):
                copy = with_u2_column(path, column, options.plain_u2)
                units = [] if "--data-units" in extra else ["--data-units", "si"]
                call = extra + units + ["--u2-column", str(column), copy]
                ok = check(options.cli, call) and ok
                if "english" not in extra and "mv" not in extra:
                    ok = check_si_inputs(options.cli, call, copy, column) and ok
    if CHECKED[0] == 0:
        print("no file was checked")
        ok = False
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
