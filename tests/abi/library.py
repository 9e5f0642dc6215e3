# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""library.py LIBRARY ARCHIVE: the shared library loads libc and nothing else, is fully read-only after relocation, and
none of its objects has data that could be written to."""

import re

import common

MAY_LOAD = re.compile(r"libc\.so\.6|ld-linux\S*\.so\.\d+")
# Constant tables that hold addresses are relocated once, then read-only.
WRITABLE = re.compile(r"\.t?(data|bss)\b(?!\.rel\.ro)")


def main():
    library, archive = str(common.argument(1)), str(common.argument(2))
    problems = []

    dynamic = common.run("readelf", "-dW", library)
    needed = re.findall(r"\(NEEDED\).*\[(.+)\]", dynamic)
    problems += [f"loads {name}" for name in needed if not MAY_LOAD.fullmatch(name)]
    if "libpxcl.so.1" not in re.findall(r"\(SONAME\).*\[(.+)\]", dynamic):
        problems.append("the soname is not libpxcl.so.1")

    if "GNU_RELRO" not in common.run("readelf", "-lW", library) or not re.search(r"\bBIND_NOW\b|\bNOW\b", dynamic):
        problems.append("not fully read-only after relocation")
    if "TEXTREL" in dynamic:
        problems.append("relocations in the code")

    sections = re.findall(r"^(\.\S+)\s+(\d+)", common.run("size", "-A", archive), re.M)
    problems += [f"{name}: {size} writable bytes" for name, size in sections if WRITABLE.match(name) and size != "0"]
    common.finish(problems, f"loads {', '.join(needed)}; no writable data in {len(sections)} sections")


main()
