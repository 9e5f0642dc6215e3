# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""words.py ROOT: no file of the tree holds a path of somebody's machine or a word that means nothing to its readers, and
every source names its licence."""

import re

import common

FORBIDDEN = {
    "a path of this machine": re.compile(r"(?<![\w.$}])/(?:work|root|home)/\w"),
    "a document that readers do not have": re.compile(
        r"\bspec(?:s|ifications?)?\b|\bPart [0-9]+\.[0-9]", re.IGNORECASE),
}
SOURCES = {".c", ".h", ".cpp", ".hpp", ".py", ".cmake", ".map", ".sh"}
NAMED_SOURCES = {"CMakeLists.txt", "check", "demo", "run"}
LICENCE = re.compile(
    r"SPDX-FileCopyrightText: 2026 The pxcl developers\n\S{1,2} *SPDX-License-Identifier: Apache-2\.0|"
    r"SPDX-FileCopyrightText: 2026 The pxcl developers\n \* SPDX-License-Identifier: Apache-2\.0")


def main():
    root = common.argument(1)
    problems, files = [], 0
    for path in common.tracked_files(root):
        name = path.relative_to(root)
        try:
            text = path.read_text()
        except UnicodeDecodeError:
            continue
        files += 1
        for number, line in enumerate(text.splitlines(), 1):
            problems += [f"{name}:{number}: {what}: {line.strip()}"
                         for what, pattern in FORBIDDEN.items() if name.name != "LICENSE" and pattern.search(line)]
        if (path.suffix in SOURCES or path.name in NAMED_SOURCES) and not LICENCE.search(text[:200]):
            problems.append(f"{name}: does not begin with the two licence lines")
    common.finish(problems, f"{files} files")


main()
