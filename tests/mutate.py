#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Do the tests notice? Flips one operator or constant of src/xml and src/keyed at a time, or leaves out a check, in a copy of
the tree, and runs the tests of the layer and of what stands on it. Prints the flips that no test notices, and how many one does.

    tests/mutate.py --count 150 --seed 1 [--jobs 2] [FILE...]
"""

import argparse
import collections
import concurrent.futures
import os
import pathlib
import queue
import random
import re
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
SKIPPED = shutil.ignore_patterns("build", ".git", "__pycache__")
SECONDS = 60  # of one test program; the slowest takes ten

# Test programs by layer, those that fail first in front. Tests that measure time are left out: they fail by themselves when
# the machine is busy.
TESTS = {
    "xml": [("xml", "xml_tests"), ("keyed", "keyed_tests"), ("responses", "responses_tests"), ("sweep", "sweep")],
    "keyed": [("keyed", "keyed_tests"), ("responses", "responses_tests"), ("sweep", "sweep")],
}

FLIPS = [
    (r"==", ["!="]), (r"!=", ["=="]), (r"(?<= )<=(?= )", ["<"]), (r"(?<= )>=(?= )", [">"]), (r"(?<= )<(?= )", ["<="]),
    (r"(?<= )>(?= )", [">="]), (r"&&", ["||"]), (r"\|\|", ["&&"]), (r"\+\+", ["--"]), (r"--", ["++"]), (r"\+=", ["-="]),
    (r"-=", ["+="]), (r"(?<= )\+(?= )", ["-"]), (r"(?<= )-(?= )", ["+"]), (r"(?<= )&(?= )", ["|"]), (r"(?<= )\|(?= )", ["&"]),
    (r"(?<= )<<(?= )", [">>"]), (r"(?<= )>>(?= )", ["<<"]), (r"(?<=[ (])!(?=[\w(*])", [""]), (r"\btrue\b", ["false"]),
    (r"\bfalse\b", ["true"]), (r"(?<![\w.'])\d+(?![\w.'])", None), (r"(?<=\bif \()", ["true ? false : "]),
]


def blank(text):
    """The source with comments, literals, directives, compile-time checks and the room that an array starts with blanked,
    every other byte in its place."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<!\d)\'(?:\\.|[^\'\\\n])+\'|^#(?:\\\n|[^\n])*|\bstatic_assert\(.*?;|&&(?= \w+[,)])|'
                         r'\bGrowingArray<[^>]*>',
                         re.S | re.M)
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def flips_of(name, text):
    blanked = blank(text)
    for pattern, results in FLIPS:
        for match in re.finditer(pattern, blanked):
            for result in results or [str(int(match.group()) + 1)]:
                yield name, match.start(), match.group(), result


class Tree:
    """A copy of the tree with a build of its own. What is being edited meanwhile changes nothing here."""

    def __init__(self, number):
        self.root = WORK / f"tree{number}"
        shutil.rmtree(self.root, ignore_errors=True)
        shutil.copytree(ROOT, self.root, ignore=SKIPPED)
        self.build_folder = self.root / "build"
        subprocess.run(["cmake", "-S", self.root, "-B", self.build_folder, "-G", "Ninja", "-Wno-dev", "-DCMAKE_BUILD_TYPE=None",
                        "-DCMAKE_CXX_FLAGS=-O1", "-DPXCL_BUILD_TOOLS=OFF"], check=True, stdout=subprocess.DEVNULL)
        for _, target in TESTS["xml"]:
            if not self.build(target, ccache=True):
                raise SystemExit(f"{target} does not build as it is")
        self.whole = {(folder, target): self.program(folder, target).read_bytes() for folder, target in TESTS["xml"]}

    def program(self, folder, target):
        return self.build_folder / "tests" / folder / target

    def build(self, target, ccache=False):
        environment = dict(os.environ) if ccache else dict(os.environ, CCACHE_DISABLE="1")
        return subprocess.run(["cmake", "--build", self.build_folder, "-t", target], env=environment,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def passes(self, folder, target):
        program = self.program(folder, target)
        modes = [["pages"], ["memory"], ["nulls"]] if target == "sweep" else [["--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=-*Linear*"]]
        for mode in modes:
            try:
                done = subprocess.run([program, *mode], cwd=self.build_folder, timeout=SECONDS, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL)
            except subprocess.TimeoutExpired:
                return False
            if done.returncode != 0:
                return False
        return True

    def judge(self, flip):
        """Which test program notices; "compiler" when the flip does not build or changes nothing, None when nobody does."""
        name, offset, old, new = flip
        text = (self.root / name).read_text()
        (self.root / name).write_text(text[:offset] + new + text[offset + len(old):])
        try:
            for folder, target in TESTS[name.split("/")[1]]:
                if not self.build(target):
                    return "compiler"
                if self.program(folder, target).read_bytes() == self.whole[folder, target]:
                    return "compiler"  # it stands in code for another processor, say
                if not self.passes(folder, target):
                    return target
            return None
        finally:
            (self.root / name).write_text(text)


def describe(text, flip):
    name, offset, old, new = flip
    number = text.count("\n", 0, offset)
    column = offset - text.rfind("\n", 0, offset)
    return f"{name}:{number + 1}:{column}: '{old}' becomes '{new}' in: {text.splitlines()[number].strip()}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=150)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("files", nargs="*", metavar="FILE")
    options = parser.parse_args()
    files = options.files or sorted(str(path.relative_to(ROOT)) for layer in TESTS for path in (ROOT / "src" / layer).glob("*.[ch]pp"))
    texts = {name: (ROOT / name).read_text() for name in files}
    every = [flip for name in files for flip in flips_of(name, texts[name])]
    # In the order of the files: a file that was flipped has to be built once more when it is whole again.
    chosen = sorted(random.Random(options.seed).sample(every, min(options.count, len(every))))
    noticed, trees = collections.Counter(), queue.SimpleQueue()
    for number in range(options.jobs):
        trees.put(Tree(number))

    def judge(flip):
        tree = trees.get()
        try:
            return flip, tree.judge(flip)
        finally:
            trees.put(tree)

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for flip, by in pool.map(judge, chosen):
            noticed[by] += 1
            if by is None:
                print(describe(texts[flip[0]], flip), flush=True)
    built = len(chosen) - noticed["compiler"]
    print(f"{len(every)} flips, {len(chosen)} tried, {noticed['compiler']} refused or dropped by the compiler; "
          f"tests notice {built - noticed[None]} of {built}")
    for by, count in noticed.most_common():
        if by not in (None, "compiler"):
            print(f"  {by}: {count}")


if __name__ == "__main__":
    main()
