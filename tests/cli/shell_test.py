# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""What surrounds the command: its manual page, its completion, a terminal, its installation."""

import os
import re
import subprocess
import unittest
from pathlib import Path

from support import PXCL, SANITIZED, Case, environment, page, pwg, run, terminal

CLI = Path(os.environ["PXCL_SOURCE"]) / "cli"
SHARED = {"--help", "--version", "--printer", "--timeout", "--trace", "--json"}
BUILD_SHARED = {"--job", "--service", "--time"}


def options_of(*words):
    return set(re.findall(r"^  (?:-h,)?(--[a-z-]+)", run(*words, "--help").out, re.M))


def all_commands():
    names = run("complete").out.split()
    groups = {name: run("complete", name).out.split() for name in ("build", "text")}
    return [name for name in names if name not in groups] + [
        f"{group} {name}" for group, members in groups.items() for name in members]


class Manual(Case):
    """The page says of each command what --help says."""

    def setUp(self):
        super().setUp()
        self.text = (CLI / "pxcl.1").read_text().replace("\\-", "-")
        self.sections = {}
        for part in re.split(r"^\.SS pxcl ", self.text, flags=re.M)[1:]:
            name = re.match(r"(?:(?:build|text) )?[a-z-]+", part).group()
            body = re.split(r"^\.S[HS] ", part, flags=re.M)[0]
            self.sections[name] = set(re.findall(r"^\.BI? \"?(--[a-z-]+)", body, re.M))

    def test_commands_are_those_of_the_program(self):
        listed = set(re.findall(r"^  ([a-z][a-z-]*)  +[A-Z]", run("--help").out, re.M))
        self.assertEqual(listed, {name.split()[0] for name in all_commands()})
        self.assertEqual(set(self.sections) - {"build COMMAND", "build"}, set(all_commands()))

    def test_options_are_those_of_each_command(self):
        together = {"clean", "nozzle-check", "align"}  # their option stands under set-time
        for name in all_commands():
            with self.subTest(name):
                shared = SHARED | (BUILD_SHARED if name.startswith("build ") else set())
                section = "set-time" if name in together else name
                self.assertEqual(self.sections[section] - shared, options_of(*name.split()) - shared)

    def test_options_of_all_commands_are_explained(self):
        for option in SHARED | BUILD_SHARED:
            self.assertIn(option, self.text)

    def test_exit_codes_are_those_of_the_help(self):
        told = re.findall(r"^  (\d+)  ", run("--help").out, re.M)
        section = self.text.split('.SH "EXIT STATUS"')[1].split(".SH ")[0]
        self.assertEqual(re.findall(r"^\.B (\d+)$", section, re.M), told)

    def test_every_command_has_an_example_that_begins_with_it(self):
        for name in all_commands():
            examples = run(*name.split(), "--help").out.split("Examples:\n")[1]
            self.assertIn(f"pxcl {name}", examples)


class Completion(Case):
    SCRIPT = """
source "$1"
COMP_LINE="$2" COMP_POINT=${#2}
read -r -a COMP_WORDS <<<"$2"
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_pxcl
printf '%s\\n' "${COMPREPLY[@]}"
"""

    def complete(self, line):
        path = f"{Path(PXCL).parent}:{os.environ['PATH']}"
        ended = subprocess.run(["bash", "-c", self.SCRIPT, "bash", CLI / "pxcl.bash-completion", line], check=True,
                               capture_output=True, text=True, env=environment(PATH=path))
        self.assertEqual(ended.stderr, "")
        return set(ended.stdout.split())

    def test_words_that_can_follow(self):
        for line, expected in [
            ("pxcl sta", {"status"}), ("pxcl build start", {"start-job"}), ("pxcl text ", {"encode", "decode", "lookup"}),
            ("pxcl print --si", {"--size"}), ("pxcl print x --dup", {"--duplex"}),
            ("pxcl print --duplex ", {"off", "on", "long", "short"}),
            ("pxcl print --size iso_a4", {"iso_a4_210x297mm"}), ("pxcl print --size lett", {"letter"}),
            ("pxcl build set-configuration --type photo", {"photographic"}),
            ("pxcl printer --profile ph", {"photo"}), ("pxcl status --printer virtual:of", {"office"}),
            ("pxcl status --printer virt", {"virtual:office", "virtual:photo", "virtual:wide"}),
            ("pxcl status --watch --int", {"--interval"}), ("pxcl print ", set()), ("pxcl nonsense --", set()),
        ]:
            with self.subTest(line):
                self.assertEqual(self.complete(line), expected)

    def test_every_option_is_offered(self):
        for name in all_commands():
            with self.subTest(name):
                self.assertEqual(self.complete(f"pxcl {name} --"), options_of(*name.split()))


class Terminal(Case):
    def on_terminal(self, *words):
        """What a command writes to a terminal, and its exit code."""
        leader, follower = terminal()
        process = subprocess.Popen([PXCL, *map(str, words)], stdout=follower, stderr=follower, env=environment())
        os.close(follower)
        text = b""
        while True:
            try:
                part = os.read(leader, 65536)
            except OSError:  # the other side is closed
                break
            if not part:
                break
            text += part
        os.close(leader)
        return text.decode(), process.wait(10)

    def test_a_bar_shows_progress_on_a_terminal_alone(self):
        file = self.folder / "document"
        file.write_bytes(pwg([page(width=600, height=400)] * 2))
        words = ["print", file, "--printer", f"virtual:office?output={self.folder / 'pages'}"]
        text, code = self.on_terminal(*words)
        self.assertEqual(code, 0)
        for expected in ("page 1", "page 2", "100 %", "\u2588"):
            self.assertIn(expected, text)
        self.assertEqual(run(*words).err, "")

    def test_documents_end_with_a_line_feed_on_a_terminal_alone(self):
        self.assertTrue(self.on_terminal("build", "power-off")[0].endswith("</cmd>\r\n"))
        self.assertTrue(run("build", "power-off").out.endswith("</cmd>"))


class Installation(Case):
    @unittest.skipIf(SANITIZED, "what is installed is a release")
    def test_the_installed_command_runs_from_wherever_it_lies(self):
        first, moved = self.folder / "first", self.folder / "moved"
        subprocess.run(["cmake", "--install", os.environ["PXCL_BUILD"], "--prefix", first], check=True,
                       stdout=subprocess.DEVNULL)
        first.rename(moved)
        command = moved / "bin" / "pxcl"
        plain = environment(LD_LIBRARY_PATH=None)
        ended = subprocess.run([command, "build", "power-off"], capture_output=True, env=plain)
        self.assertEqual((ended.returncode, ended.stderr), (0, b""))
        libraries = subprocess.run(["ldd", command], capture_output=True, text=True, env=plain).stdout
        self.assertIn(str(moved), libraries)
        for path in ("share/man/man1/pxcl.1", "share/bash-completion/completions/pxcl"):
            self.assertTrue((moved / path).is_file(), path)


if __name__ == "__main__":
    unittest.main()
