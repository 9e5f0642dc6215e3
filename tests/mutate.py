#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Do the tests notice? Flips one operator or constant of src/xml and src/keyed at a time, or leaves out a check, in a copy of
the tree, and runs the tests of the layer and of what stands on it; where all pass, once more with address and undefined
behaviour sanitizers. What is left is counted in instructions by the benchmarks: much of the engine is there for speed alone, and
without it a general way is taken. Prints the flips that no test notices, and how many are noticed. Needs what bench/run needs.

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
SANITIZED_SECONDS = 300

# Test programs by layer, those that fail first in front. Tests that measure time are left out: they fail by themselves when
# the machine is busy.
TESTS = {
    "xml": [("xml", "xml_tests"), ("keyed", "keyed_tests"), ("responses", "responses_tests"), ("sweep", "sweep")],
    "keyed": [("keyed", "keyed_tests"), ("responses", "responses_tests"), ("sweep", "sweep")],
}

PLAIN = "-O1"
SANITIZED = "-O1 -fsanitize=address,undefined -fno-sanitize-recover=all"

# Benchmarks whose rows are counted, and how much more of one is a cost: two trees differ in some calls' last digits.
BENCHMARKS = ["engine", "replies"]
COSTLY = 1.005
COSTS = "nothing but instructions"

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


class Build:
    """A tree built in one way."""

    def __init__(self, root, name, *options):
        self.folder = root / name
        subprocess.run(["cmake", "-S", root, "-B", self.folder, "-G", "Ninja", "-Wno-dev", "-DCMAKE_BUILD_TYPE=None",
                        "-DPXCL_BUILD_TOOLS=OFF", *options], check=True, stdout=subprocess.DEVNULL)

    def build(self, target, ccache=False):
        environment = dict(os.environ) if ccache else dict(os.environ, CCACHE_DISABLE="1")
        return subprocess.run(["cmake", "--build", self.folder, "-t", target], env=environment,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def build_whole(self, target):
        if not self.build(target, ccache=True):
            raise SystemExit(f"{target} does not build as it is")


class Tests(Build):
    def __init__(self, root, name, flags, tests, seconds):
        super().__init__(root, name, f"-DCMAKE_CXX_FLAGS={flags}", f"-DCMAKE_C_FLAGS={flags}")
        self.tests, self.seconds = tests, seconds
        for _, target in tests["xml"]:
            self.build_whole(target)
        self.whole = {test: self.program(*test).read_bytes() for test in tests["xml"]}

    def program(self, folder, target):
        return self.folder / "tests" / folder / target

    def passes(self, folder, target):
        program = self.program(folder, target)
        modes = [["pages"], ["memory"], ["nulls"]] if target == "sweep" else [["--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=-*Linear*"]]
        for mode in modes:
            try:
                done = subprocess.run([program, *mode], cwd=self.folder, timeout=self.seconds, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL)
            except subprocess.TimeoutExpired:
                return False
            if done.returncode != 0:
                return False
        return True

    def judge(self, layer):
        """Which test program notices what the tree is now; "compiler" when it does not build or is no other program, None when
        nobody does."""
        for test in self.tests[layer]:
            if not self.build(test[1]):
                return "compiler"
            if self.program(*test).read_bytes() == self.whole[test]:
                return "compiler"  # it stands in code for another processor, say
            if not self.passes(*test):
                return test[1]
        return None


class Benchmarks(Build):
    def __init__(self, root):
        super().__init__(root, "build-benchmarks", "-DPXCL_BUILD_BENCH=ON", "-DPXCL_BUILD_TESTS=OFF")
        self.command = [root / "bench" / "instructions.sh"] + [self.folder / "bench" / name for name in BENCHMARKS]
        for name in BENCHMARKS:
            self.build_whole(f"{name}_bench")
        self.whole = self.count()

    def count(self):
        """The library's instructions by row; None when an answer is another than the peers'."""
        done = subprocess.run(self.command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        counts = (line.split() for line in done.stdout.splitlines())
        return {row: int(count) for count, _, row in counts if row.endswith("/pxcl")} if done.returncode == 0 else None

    def judge(self):
        """Whether the benchmarks notice what the tree is now, and if not, whether it costs."""
        if not all(self.build(f"{name}_bench") for name in BENCHMARKS):
            return "compiler"  # optimized more, it warns
        counts = self.count()
        if counts is None:
            return "benchmarks"
        return COSTS if any(counts[row] > COSTLY * count for row, count in self.whole.items()) else None


class Tree:
    """A copy of the tree with builds of its own. What is being edited meanwhile changes nothing here."""

    def __init__(self, number):
        self.root = WORK / f"tree{number}"
        shutil.rmtree(self.root, ignore_errors=True)
        shutil.copytree(ROOT, self.root, ignore=SKIPPED)
        self.plain = Tests(self.root, "build", PLAIN, TESTS, SECONDS)
        # The sweep has pages of its own that cannot be read.
        tests = {layer: [test for test in of_layer if test[1] != "sweep"] for layer, of_layer in TESTS.items()}
        self.sanitized = Tests(self.root, "build-sanitized", SANITIZED, tests, SANITIZED_SECONDS)
        self.benchmarks = Benchmarks(self.root)

    def judge(self, flip):
        name, offset, old, new = flip
        layer = name.split("/")[1]
        text = (self.root / name).read_text()
        (self.root / name).write_text(text[:offset] + new + text[offset + len(old):])
        try:
            by = self.plain.judge(layer)
            if by is None and self.sanitized.judge(layer) not in (None, "compiler"):
                return "sanitizers"
            return by or self.benchmarks.judge()
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
            if by in (None, COSTS):
                print(describe(texts[flip[0]], flip) + ("" if by is None else " (costs)"), flush=True)
    built = len(chosen) - noticed["compiler"]
    missed = noticed[None] + noticed[COSTS]
    print(f"{len(every)} flips, {len(chosen)} tried, {noticed['compiler']} refused or dropped by the compiler; "
          f"tests notice {built - missed} of {built}; {noticed[COSTS]} of the other {missed} cost {COSTS}")
    for by, count in noticed.most_common():
        if by not in (None, COSTS, "compiler"):
            print(f"  {by}: {count}")


if __name__ == "__main__":
    main()
