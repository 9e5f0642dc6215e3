#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Builds the coverage presets, runs the tests of the library and prints each line and branch of src/ that none of them takes,
but for the lines that tests/coverage.exceptions lists with their reasons. Fails when there is one, or an exception that is
none."""

import collections
import json
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
# The preset, and what is built and run of it. Refusals that only 32 bits take are the sweep's.
BUILDS = {"coverage": ([], []), "coverage-narrow": (["-t", "sweep"], ["-R", "^sweep/lengths$"])}
EXCEPTIONS = ROOT / "tests" / "coverage.exceptions"
MOST_EXCEPTIONS = 10


def run(*command):
    subprocess.run(command, cwd=ROOT, check=True, stdout=subprocess.DEVNULL)


def build_of(preset):
    return ROOT / "build" / preset


def records():
    """gcov's records of the library's object files, one a source that each was made of."""
    for data in sorted(data for preset in BUILDS for data in build_of(preset).glob("src/**/*.gcda")):
        output = subprocess.run(["gcov", "--json-format", "--branch-probabilities", "--stdout", data], cwd=build_of("coverage"),
                                check=True, capture_output=True).stdout
        for line in output.splitlines():
            yield from json.loads(line)["files"]


def measure():
    """Per source and line: the branches taken of how many, and whether it ran; the best of every function made of it."""
    lines = collections.defaultdict(dict)
    for record in records():
        path = pathlib.Path(os.path.normpath(build_of("coverage") / record["file"]))
        if not path.is_relative_to(ROOT / "src"):
            continue
        for line in record["lines"]:
            taken = [branch["count"] != 0 for branch in line["branches"] if not branch["throw"]]
            ran, before = lines[str(path.relative_to(ROOT))].get(line["line_number"], (False, []))
            if len(before) == len(taken):
                taken = [a or b for a, b in zip(before, taken)]
            elif sum(before) * len(taken) > sum(taken) * len(before):
                taken = before
            lines[str(path.relative_to(ROOT))][line["line_number"]] = (ran or line["count"] != 0, taken)
    return lines


def read_exceptions():
    """{(source, text of the line)}: each stands on a line `source: text`, its reason above it behind a #."""
    rows = [row for row in EXCEPTIONS.read_text().splitlines() if row and not row.startswith("#")]
    return {tuple(row.split(": ", 1)) for row in rows}


def main():
    for preset, (targets, tests) in BUILDS.items():
        run("cmake", "--preset", preset, "-Wno-dev", *sys.argv[1:])
        run("cmake", "--build", "--preset", preset, *targets)
        for data in build_of(preset).glob("**/*.gcda"):
            data.unlink()
        run("ctest", "--preset", preset, "-j", str(os.cpu_count()), *tests)
    exceptions, used, missed = read_exceptions(), set(), 0
    counts = collections.Counter()
    for name, lines in sorted(measure().items()):
        text = (ROOT / name).read_text().splitlines()
        for number, (ran, taken) in sorted(lines.items()):
            counts.update(lines=1, ran=ran, branches=len(taken), taken=sum(taken))
            if ran and all(taken):
                continue
            here = (name, text[number - 1].strip())
            if here in exceptions:
                used.add(here)
                continue
            missed += 1
            print(f"{name}:{number}: {f'{sum(taken)} of {len(taken)} branches' if ran else 'not run'}: {here[1]}")
    print(f"{counts['ran']} of {counts['lines']} lines, {counts['taken']} of {counts['branches']} branches; "
          f"{missed} lines are missed, {len(used)} are exceptions")
    for name, text in sorted(exceptions - used):
        print(f"no exception any more: {name}: {text}")
    sys.exit(1 if missed or exceptions != used or len(exceptions) > MOST_EXCEPTIONS else 0)


if __name__ == "__main__":
    main()
