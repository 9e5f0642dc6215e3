#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Writes the tables of a benchmark run into a Markdown file, between its markers.

report.py DOCUMENT BUILD-DIRECTORY: reads what bench/run left in the build directory. A table named
T goes between the lines "<!-- T -->" and "<!-- end of T -->"; the one of bench/T.cpp is left out when
the file has no place for it.
"""

import json
import pathlib
import re
import subprocess
import sys

NAMES = ["engine", "rapidxml", "rapidxml_copying", "pugixml", "expat", "libxml2", "floor"]
CASES = {
    "status": "27 paths of a status reply",
    "job_list": "500 answers of one path",
    "capability": "500 paths of a capability reply",
    "replace": "4 values of a command replaced",
}
PEERS = [name for name in NAMES if name not in ("engine", "floor")]
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_benchmarks(path):
    """Each benchmark with its best repetition, in ns of the processor: other load is not ours."""
    best = {}
    for row in json.loads(path.read_text())["benchmarks"]:
        if row.get("run_type") != "iteration":
            continue
        row["ns"] = row["cpu_time"] * NANOSECONDS[row["time_unit"]]
        if row["name"] not in best or row["ns"] < best[row["name"]]["ns"]:
            best[row["name"]] = row
    order = lambda item: (item[1]["family_index"], item[1]["per_family_instance_index"])
    return dict(sorted(best.items(), key=order))


def read_times(path):
    times, documents = {}, {}
    for title, row in read_benchmarks(path).items():
        case, name = title.split("/")[:2]
        times.setdefault(case, {})[name] = row["ns"]
        documents[case] = int(row["document"])
    return times, documents


def read_instructions(path):
    counts = {}
    for line in path.read_text().splitlines():
        case, name, count = line.split()
        counts.setdefault(case, {})[name] = int(count)
    return counts


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|---|" + "--:|" * (len(header) - 1)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines)


def speed_table(times, documents, instructions):
    rows = []
    for case, title in CASES.items():
        fastest = min(PEERS, key=lambda name: times[case][name])
        for name in NAMES:
            time = times[case][name]
            count = instructions.get(case, {}).get(name)
            rows.append([
                f"{title}, {documents[case]:,} bytes" if name == NAMES[0] else "",
                f"**{name}**" if name in ("engine", fastest) else name,
                f"{time:,.0f}",
                f"{documents[case] * 1e3 / time:,.0f}",
                f"{time / times[case][fastest]:.2f}",
                f"{count:,}" if count else "",
            ])
    return table(["job", "who", "ns per call", "MB/s", "of the fastest peer", "instructions"], rows)


OURS = ("pxcl", "library")


def job_and_who(name):
    """Jobs that several do are named JOB/WHO."""
    job, _, who = name.rpartition("/")
    return (job, who) if who in (*OURS, *PEERS) else (name, "")


def plain_table(benchmarks):
    fastest_peer = {}
    for name, row in benchmarks.items():
        job, who = job_and_who(name)
        if who and who not in OURS:
            fastest_peer[job] = min(row["ns"], fastest_peer.get(job, row["ns"]))
    rows, last = [], None
    for name, row in benchmarks.items():
        job, who = job_and_who(name)
        peer = fastest_peer.get(job)
        rows.append(["" if job == last else job, f"**{who}**" if who in OURS else who,
                     f"{row['ns']:,.0f}", f"{row['ns'] / peer:.2f}" if peer else ""])
        last = job
    return table(["job", "who", "ns per call", "of the fastest peer"], rows)


def stripped_size(library, build):
    copy = build / "stripped.so"
    subprocess.run(["strip", "-o", copy, library], check=True)
    return copy.stat().st_size


def size_table(build):
    system = pathlib.Path("/usr/lib") / first_line(["gcc", "-print-multiarch"])
    libraries = [build / "src/libpxcl.so.1", *(system / f"lib{name}" for name in (
        "tinyxml2.so.9", "expat.so.1", "pugixml.so.1", "xml2.so.2"))]
    rows = [[library.name, f"{stripped_size(library, build):,}"]
            for library in libraries if library.exists()]
    return table(["library", "bytes, stripped"], rows)


def first_line(command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]


def package_versions():
    packages = ["libexpat1-dev", "libpugixml-dev", "librapidxml-dev", "libxml2-dev",
                "libbenchmark-dev"]
    listed = subprocess.run(["dpkg-query", "-W", "-f=${Package} ${Version}\n", *packages],
                            capture_output=True, text=True, check=True).stdout
    return ", ".join(listed.splitlines())


def machine_text(build):
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    cache = (build / "CMakeCache.txt").read_text()
    compiler = re.search(r"CMAKE_CXX_COMPILER:\w+=(.*)", cache).group(1)
    flags = re.search(r"CMAKE_CXX_FLAGS_RELEASE:\w+=(.*)", cache).group(1)
    return (f"{model.group(1) if model else 'unknown processor'}, one thread; "
            f"{first_line([compiler, '--version'])}, `{flags}`; {package_versions()}.")


def replace_section(text, name, content):
    pattern = re.compile(f"(<!-- {name} -->\n).*?(<!-- end of {name} -->)", re.S)
    if not pattern.search(text):
        sys.exit(f"no markers for {name}")
    return pattern.sub(lambda match: match.group(1) + content + "\n" + match.group(2), text)


def main():
    document, build = map(pathlib.Path, sys.argv[1:3])
    times, documents = read_times(build / "engine.json")
    instructions = read_instructions(build / "instructions.txt")
    text = document.read_text()
    text = replace_section(text, "machine", machine_text(build))
    text = replace_section(text, "speed", speed_table(times, documents, instructions))
    text = replace_section(text, "growth", (build / "growth.md").read_text().rstrip())
    text = replace_section(text, "size", size_table(build))
    for results in sorted(build.glob("*.json")):
        if results.stem != "engine" and f"<!-- {results.stem} -->" in text:
            text = replace_section(text, results.stem, plain_table(read_benchmarks(results)))
    document.write_text(text)


main()
