# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""What the checks of this folder share."""

import pathlib
import re
import subprocess
import sys

SKIPPED_FOLDERS = {".git", "build", "__pycache__"}


def blank_comments(text):
    """C or C++ source with comments and the insides of literals blanked, line numbers kept."""
    pattern = re.compile(
        r'R"([^(\s]*)\(.*?\)\1"|//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'',
        re.S)

    def blank(match):
        newlines = "\n" * match.group().count("\n")
        return '""' + newlines if match.group()[0] in "R\"'" else " " + newlines

    return pattern.sub(blank, text)


def tracked_files(root):
    """Every file of the tree that is, or is about to be, under version control."""
    git = ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    try:
        listed = subprocess.run(git, capture_output=True, check=True).stdout.decode().split("\0")
    except (OSError, subprocess.CalledProcessError):  # an unpacked archive
        listed = [str(path.relative_to(root)) for path in root.rglob("*")]
    files = (root / name for name in listed if name)
    return sorted(f for f in files if f.is_file() and not SKIPPED_FOLDERS & set(f.relative_to(root).parts))


def run(*command):
    return subprocess.run(command, capture_output=True, check=True, text=True).stdout


def finish(problems, summary):
    """Ends the check: each problem on a line of its own, or the summary when there is none."""
    for problem in problems:
        print(problem)
    if not problems:
        print(summary)
    sys.exit(1 if problems else 0)


def argument(number):
    return pathlib.Path(sys.argv[number]).resolve()
