# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""layering.py SRC: a layer includes itself and lower layers only, and nothing that is not in the tree."""

import re

import common

LOWER = {"util": set()}
for layer, below in (("xml", "util"), ("keyed", "xml"), ("responses", "keyed"), ("commands", "responses"),
                     ("device", "responses")):
    LOWER[layer] = LOWER[below] | {below}
LOWER["api"] = set(LOWER)

MADE_BY_THE_BUILD = {"model_lists.inc"}


def layer_of(src, including, name):
    """The layer that an #include "name" reaches, found as the compiler finds it."""
    for base in (including.parent, src, *(src / layer for layer in LOWER)):
        if (base / name).is_file():
            return (base / name).resolve().relative_to(src).parts[0]
    return None


def main():
    src = common.argument(1)
    problems, includes = [], 0
    for path in sorted(p for p in src.rglob("*") if p.suffix in {".h", ".hpp", ".cpp", ".c", ".inc"}):
        layer = path.relative_to(src).parts[0]
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
            if not match or match.group(1) in MADE_BY_THE_BUILD:
                continue
            includes += 1
            reached = layer_of(src, path, match.group(1))
            if reached is None or (reached != layer and reached not in LOWER[layer]):
                problems.append(f"{path.relative_to(src)}:{number}: {layer} must not include {match.group(1)}")
    if includes == 0:
        problems.append("no include found")
    common.finish(problems, f"{includes} includes, none upward")


main()
