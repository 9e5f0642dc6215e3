# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""tools.py ROOT: the programs around the library include what they may - the virtual printer nothing of the other side,
the client layer nothing but pxcl.h and itself - and each library of others stands behind one file of a program."""

import collections
import re

import common

MAY_INCLUDE = {
    "printer": {"printer"},
    "client": {"client", "pxcl.h"},
    "cli": {"cli", "client", "printer", "pxcl.h"},
}
OF_OTHERS = ("CLI", "cups", "curl", "fmt", "httplib.h", "nlohmann", "png.h", "pugixml.hpp")
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.M)


def main():
    root = common.argument(1)
    problems, includes = [], 0
    behind = collections.defaultdict(set)
    for program, allowed in MAY_INCLUDE.items():
        for path in sorted((root / program).rglob("*.[ch]pp")):
            for name in INCLUDE.findall(path.read_text()):
                includes += 1
                first = name.split("/")[0]
                if first in OF_OTHERS:
                    behind[program, first].add(path.name)
                elif first not in allowed and (first in MAY_INCLUDE or any((root / "src").glob(f"*/{name}"))):
                    problems.append(f"{path.relative_to(root)} must not include {name}")
    problems += [f"{library} is included by {', '.join(sorted(files))} of {program}: one file is enough"
                 for (program, library), files in sorted(behind.items()) if len(files) > 1]
    if not behind:
        problems.append("no include found")
    common.finish(problems, f"{includes} includes, {len(behind)} libraries of others, each behind one file")


main()
