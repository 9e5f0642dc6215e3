# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""function_lengths.py SRC: lines from a function's first to its last; none over 60, nine in ten up to 35, the median
up to 10. Tables, which are no functions, do not count."""

import re
import statistics

import common

LONGEST, NINE_IN_TEN, MEDIAN = 60, 35, 10
CONTAINER = re.compile(r'\b(namespace|struct|class|union|enum|extern "")\b[^()=]*$|^extern ""$')


def kind_of(head):
    if CONTAINER.search(head):
        return "container"
    return "function" if ")" in head and not re.search(r"[=,(]$", head) else "table"


def functions(text):
    """(first line, last line) of each function that is defined at the level of a namespace or a class."""
    text = re.sub(r"^[ \t]*#(?:.*\\\n)*.*$", lambda m: "\n" * m.group().count("\n"), text, flags=re.M)
    found, open_blocks, begin, line = [], [], 0, 1
    for token in re.finditer(r"[{};\n]", text):
        mark = token.group()
        if mark == "\n":
            line += 1
            continue
        inside = open_blocks[-1][0] if open_blocks else "container"
        if mark == "{":
            head = re.sub(r"^(?:public|private|protected)\s*:", "", text[begin:token.start()].strip()).strip()
            kind = kind_of(head) if inside == "container" else "block"
            open_blocks.append((kind, line - head.count("\n")))
        elif mark == "}" and open_blocks:
            kind, first = open_blocks.pop()
            if kind == "function":
                found.append((first, line))
        if inside == "container" or kind_is_container(open_blocks):
            begin = token.end()
    return found


def kind_is_container(open_blocks):
    return not open_blocks or open_blocks[-1][0] == "container"


def main():
    src = common.argument(1)
    lengths, problems = [], []
    for path in sorted(p for p in src.rglob("*") if p.suffix in {".cpp", ".hpp", ".h"}):
        for first, last in functions(common.blank_comments(path.read_text())):
            lengths.append(last - first + 1)
            if lengths[-1] > LONGEST:
                problems.append(f"{path.relative_to(src)}:{first}: {lengths[-1]} lines, at most {LONGEST}")
    median = statistics.median(lengths)
    tenth = sorted(lengths)[int(len(lengths) * 0.9)]
    if median > MEDIAN:
        problems.append(f"the median is {median} lines, at most {MEDIAN}")
    if tenth > NINE_IN_TEN:
        problems.append(f"nine in ten reach {tenth} lines, at most {NINE_IN_TEN}")
    common.finish(problems, f"{len(lengths)} functions: median {median}, nine in ten up to {tenth}, longest {max(lengths)}")


main()
