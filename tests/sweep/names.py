# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""names.py SWEEP MAP LIBRARY: the table of calls holds every function that the version script exports."""

import pathlib
import re
import subprocess
import sys


def run(*command):
    return subprocess.run(command, capture_output=True, check=True, text=True).stdout


sweep, version_script, library = sys.argv[1:]
exported = set(re.findall(r"(\w+);", pathlib.Path(version_script).read_text().split("local:")[0]))
rows = (line.split() for line in run("nm", "-D", "--defined-only", library).splitlines())
functions = {row[2].split("@")[0] for row in rows if row[1] == "T"} & exported
called = set(run(sweep, "names").split())
problems = [f"{name}: no call of it in the table" for name in sorted(functions - called)]
problems += [f"{name}: not exported" for name in sorted(called - exported)]
if not functions:
    problems.append(f"{library}: no functions")
print("\n".join(problems) or f"{len(called)} functions")
sys.exit(1 if problems else 0)
