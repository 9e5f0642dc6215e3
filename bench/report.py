#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Writes the figures of a benchmark run into a Markdown page, between its markers, and two pictures beside it.

report.py PAGE RESULTS BUILD: RESULTS holds what bench/run has left: a JSON file a program, instructions.txt,
growth.md and growth.tsv. A text named T goes between the lines "<!-- T -->" and "<!-- end of T -->".
"""

import dataclasses
import datetime
import json
import os
import pathlib
import re
import shlex
import statistics
import subprocess
import sys

import pictures

PROGRAMS = ["engine", "replies", "settings", "commands", "items"]
US = "pxcl"
NO_PEERS = (US, "floor")
PACKAGES = ["libexpat1-dev", "libpugixml-dev", "librapidxml-dev", "libtinyxml2-dev", "libxml2-dev",
            "libbenchmark-dev"]
SHARED_PEERS = ["libexpat.so.1", "libpugixml.so.1", "libtinyxml2.so.9", "libxml2.so.2"]
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


@dataclasses.dataclass
class Row:
    who: str
    ns: float  # the median
    spread: float  # from the quickest repetition to the slowest, as a part of the median
    instructions: int | None = None


@dataclasses.dataclass
class Task:
    name: str
    title: str
    document: int  # bytes; 0 when nothing is read
    rows: dict[str, Row] = dataclasses.field(default_factory=dict)

    def peers(self):
        return [row for row in self.rows.values() if row.who not in NO_PEERS]

    def least(self, what):
        """Of the peers, the one with the least time ("ns") or "instructions"; None when nobody has any."""
        counted = [row for row in self.peers() if getattr(row, what) is not None]
        return min(counted, key=lambda row: getattr(row, what), default=None)

    def ratio(self, row, what):
        least, own = self.least(what), getattr(row, what)
        return own / getattr(least, what) if least and own is not None else None


def read_tasks(results, instructions):
    """The tasks of one program's JSON file, in the order in which the program lists them."""
    runs = {}
    for run in json.loads(results.read_text())["benchmarks"]:
        if run.get("run_type") == "iteration":
            runs.setdefault(run["run_name"], []).append(run)
    tasks = {}
    for name, repetitions in sorted(runs.items(), key=lambda item: item[1][0]["family_index"]):
        first = repetitions[0]
        task_name, who = name.rsplit("/", 1)
        task = tasks.setdefault(task_name, Task(task_name, first["label"], int(first["document"])))
        # Of the processor: other load is not ours.
        times = [run["cpu_time"] * NANOSECONDS[run["time_unit"]] for run in repetitions]
        median = statistics.median(times)
        task.rows[who] = Row(who, median, (max(times) - min(times)) / median,
                             instructions.get((results.stem, name)))
    return list(tasks.values())


def read_instructions(path):
    """Lines "COUNT PROGRAM ROW"; a run without valgrind leaves none."""
    lines = path.read_text().splitlines() if path.exists() else []
    return {(program, row): int(count)
            for count, program, row in (line.split(maxsplit=2) for line in lines)}


def table(header, rows):
    """A column in which no row has anything is left out."""
    used = [column for column in range(len(header)) if any(row[column] for row in rows)] or range(len(header))
    header, rows = [header[i] for i in used], [[row[i] for i in used] for row in rows]
    lines = ["| " + " | ".join(header) + " |", "|---|" + "--:|" * (len(header) - 1)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines)


def shown(value, form):
    return "" if value is None else format(value, form)


def task_table(tasks):
    rows = []
    for task in tasks:
        title = f"{task.title}, {task.document:,} bytes" if task.document else task.title
        for row in task.rows.values():
            fastest = row is task.least("ns")
            rows.append([
                title, f"**{row.who}**" if row.who == US or fastest else row.who,
                f"{row.ns:,.0f}", f"{row.spread:.0%}",
                f"{task.document * 1e3 / row.ns:,.0f}" if task.document else "",
                shown(task.ratio(row, "ns"), ".2f"), shown(row.instructions, ","),
                shown(task.ratio(row, "instructions"), ".2f"),
            ])
            title = ""
    return table(["what", "who", "ns per call", "spread", "MB/s", "of the fastest peer",
                  "instructions", "of the fewest"], rows)


def summary_table(tasks):
    rows = []
    for task in tasks:
        ours, fastest, fewest = task.rows.get(US), task.least("ns"), task.least("instructions")
        if not ours or not fastest:
            continue
        counted = fewest and ours.instructions
        rows.append([task.title, f"{ours.ns:,.0f} ns", f"{fastest.who}, {fastest.ns:,.0f} ns",
                     f"**{fastest.ns / ours.ns:.2f}**",
                     f"{fewest.instructions / ours.instructions:.2f}" if counted else ""])
    return table(["what", US, "fastest peer", "times as fast", "by instructions"], rows)


def first_line(command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]


def size_table(results, build):
    system = pathlib.Path("/usr/lib") / first_line(["gcc", "-print-multiarch"])
    rows = []
    for library in [build / "src/libpxcl.so.1", *(system / name for name in SHARED_PEERS)]:
        if library.exists():
            stripped = results / "stripped.so"
            subprocess.run(["strip", "-o", stripped, library], check=True)
            rows.append([library.name, f"{stripped.stat().st_size:,}"])
    return table(["library", "bytes, stripped"], rows)


def optimization(build):
    """The flag by which the library is optimized, as its sources get it, and the sources that get another."""
    flags = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        if "/src/" in entry["file"]:
            last = [word for word in shlex.split(entry["command"]) if re.match(r"-O\w", word)][-1]
            flags.setdefault(last, []).append(pathlib.Path(entry["file"]).name)
    usual = max(flags, key=lambda flag: len(flags[flag]))
    return ", ".join([f"`{usual}`"] + [f"`{flag}` for {' and '.join(files)}"
                                       for flag, files in flags.items() if flag != usual])


def package_versions():
    listed = subprocess.run(["dpkg-query", "-W", "-f=${Package} ${Version}\n", *PACKAGES],
                            capture_output=True, text=True, check=True).stdout
    return ", ".join(listed.splitlines())


def machine_text(build, repetitions):
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    compiler = re.search(r"CMAKE_CXX_COMPILER:\w+=(.*)", (build / "CMakeCache.txt").read_text()).group(1)
    return (f"Measured on {datetime.date.today():%-d %B %Y}: {model.group(1) if model else 'unknown processor'}, "
            f"{os.cpu_count()} processors, one thread; Linux {os.uname().release}; "
            f"{first_line([compiler, '--version'])}, the library with {optimization(build)}; "
            f"{repetitions} repetitions of each row. Peers as Debian ships them: {package_versions()}.")


def replace_section(text, name, content):
    pattern = re.compile(f"(<!-- {name} -->\n).*?(<!-- end of {name} -->)", re.S)
    if not pattern.search(text):
        sys.exit(f"report.py: no markers for {name}")
    return pattern.sub(lambda match: match.group(1) + content + "\n" + match.group(2), text)


def count_repetitions(results):
    runs = json.loads((results / f"{PROGRAMS[0]}.json").read_text())["benchmarks"]
    return max(run["repetitions"] for run in runs)


def fill(text, results, build):
    """The page with all its tables, and all the tasks."""
    instructions = read_instructions(results / "instructions.txt")
    sections = {name: read_tasks(results / f"{name}.json", instructions) for name in PROGRAMS}
    tasks = [task for section in sections.values() for task in section]
    text = replace_section(text, "machine", machine_text(build, count_repetitions(results)))
    text = replace_section(text, "summary", summary_table(tasks))
    for name, section in sections.items():
        text = replace_section(text, name, task_table(section))
    text = replace_section(text, "growth", (results / "growth.md").read_text().rstrip())
    return replace_section(text, "size", size_table(results, build)), tasks


def columns(tasks):
    """What pictures.speed shows: each task's title, and the peers with their times over ours."""
    def bars(some):
        return [(task.title, [(row.who, row.ns / task.rows[US].ns) for row in task.peers()])
                for task in some if US in task.rows and task.peers()]
    return [("Reading", bars(task for task in tasks if task.document)),
            ("Building commands", bars(task for task in tasks if not task.document))]


def lines(path):
    """What pictures.growth shows: (kind, shape, [(bytes, seconds)])."""
    shapes = {}
    for line in path.read_text().splitlines():
        kind, shape, size, seconds = line.split("\t")
        shapes.setdefault((kind, shape), []).append((int(size), float(seconds)))
    return [(kind, shape, points) for (kind, shape), points in shapes.items()]


def main():
    if len(sys.argv) != 4:
        sys.exit("usage: report.py PAGE RESULTS BUILD")
    page, results, build = map(pathlib.Path, sys.argv[1:])
    try:
        text, tasks = fill(page.read_text(), results, build)
        page.write_text(text)
        (page.parent / "speed.svg").write_text(pictures.speed(columns(tasks)))
        (page.parent / "growth.svg").write_text(pictures.growth(lines(results / "growth.tsv")))
    except FileNotFoundError as missing:
        sys.exit(f"report.py: {missing.filename} is missing; bench/run makes it")


if __name__ == "__main__":
    main()
