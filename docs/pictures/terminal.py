# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Draws what a terminal shows, from standard input, as an SVG picture on standard output."""

import io
import os
import re
import sys

from rich.console import Console
from rich.text import Text

COLUMNS = 100


def shown(recording):
    """The lines as they stand at the end: what a carriage return overwrote is gone, and so is where the tree lies."""
    for line in recording.replace("\r\n", "\n").split("\n"):
        last = re.split(r"\r|\x1b\[2?K", line.rstrip("\r"))[-1]
        yield last.replace(os.path.abspath("../..") + "/", "")


def without_fonts(svg):
    """The reader's own monospaced font does, and nothing is fetched."""
    svg = re.sub(r"@font-face \{.*?\n    \}\n", "", svg, flags=re.DOTALL)
    return re.sub(r" *<!-- Generated.*?-->\n", "", svg)


console = Console(record=True, width=COLUMNS, file=io.StringIO(), legacy_windows=False)
for text in shown(sys.stdin.read()):
    console.print(Text.from_ansi(text), soft_wrap=True)
sys.stdout.write(without_fonts(console.export_svg(title="./demo")))
