#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""dialogue.py PXCL DOCUMENT PROTOCOL.MD [--check]: prints DOCUMENT on the virtual printer with `PXCL print --trace` and puts the
dialogue into protocol.md between its marks, with one job ID and one time for all days. With --check nothing is written:
a dialogue that differs from the one that stands there, numbers of bytes aside, ends in an error."""

import difflib
import pathlib
import re
import subprocess
import sys
import tempfile

BEGIN, END = "<!-- dialogue: made by docs/dialogue.py -->\n", "<!-- end of dialogue -->\n"
JOB_ID, TIME = "00000042", "20260102030405"


def dialogue(pxcl, document):
    with tempfile.TemporaryDirectory() as folder:
        trace = pathlib.Path(folder, "trace")
        subprocess.run([pxcl, "print", document, "--title", "The first page", "--resolution", "72", "--size", "a4",
                        "--printer", f"virtual:office?output={folder}", "--trace", trace], check=True,
                       stdout=subprocess.DEVNULL)
        text = trace.read_text()
    job_id = re.search(r"<zirk:jobID>(.*?)</zirk:jobID>", text).group(1)
    return re.sub(r"(<zirk:datetime>)\d{14}(<)", rf"\g<1>{TIME}\g<2>", text.replace(job_id, JOB_ID))


def without_counts(text):
    return re.sub(r"\d+(?= bytes)|(?<=<zirk:datasize>)\d+", "N", text)


def main():
    pxcl, document, page = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    before, rest = page.read_text().split(BEGIN)
    stands, after = rest.split(END)
    new = f"\n```text\n{dialogue(pxcl, document)}```\n\n"
    if sys.argv[4:] != ["--check"]:
        page.write_text(before + BEGIN + new + END + after)
        return 0
    difference = list(difflib.unified_diff(without_counts(stands).splitlines(), without_counts(new).splitlines(),
                                           page.name, "pxcl print --trace", lineterm=""))
    print("\n".join(difference))
    return 1 if difference else 0


sys.exit(main())
