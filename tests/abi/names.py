# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""names.py LIBRARY MAP COMPILER SRC: the shared library exports, the version script lists and the public headers
declare the same names."""

import re
import sys

import common


def exported(library):
    rows = (line.split() for line in common.run("nm", "-D", "--defined-only", library).splitlines())
    return {row[-1].split("@")[0] for row in rows if row[1] != "A"}


def listed(version_script):
    text = common.blank_comments(version_script.read_text())
    return set(re.findall(r"(\w+);", text.split("local:")[0]))


def declared(compiler, src):
    names = set()
    folders = [f"-I{folder}" for folder in src.iterdir() if folder.is_dir()]
    for header in sorted(src.glob("*/*.h")):
        text = common.run(compiler, "-E", "-P", "-x", "c", *folders, str(header))
        for declaration in re.findall(r'visibility\("default"\)\)\)([^;]+);', text):
            function = re.search(r"(\w+)\s*\(", declaration)
            parts = [function.group(1)] if function else declaration.split(",")
            names.update(re.search(r"(\w+)\s*(\[[^\]]*\]\s*)*$", part).group(1) for part in parts)
    return names


def main():
    places = {
        "the library": exported(str(common.argument(1))),
        "the version script": listed(common.argument(2)),
        "the headers": declared(sys.argv[3], common.argument(4)),
    }
    every = set.union(*places.values())
    problems = [f"{name}: not in {place}" for place, names in places.items() for name in sorted(every - names)]
    common.finish(problems, f"{len(every)} names")


main()
