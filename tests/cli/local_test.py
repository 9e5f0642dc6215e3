# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""What the command does without a printer: the command line, build, parse, text, device-id."""

import json
import os
import subprocess
import unittest

from support import CONTROLS, DATA, PXCL, Case, environment, run

JOB = ["--job", "00000042"]
TIME = ["--time", "20240102030405"]
TITLE = ["--description", "Sheet 3 <of> 5 & more"]
PLAIN = ["--size", "iso_a4_210x297mm", "--type", "stationery"]
DETECTIONS = ["none", "misdetection", "paper-not-forced", "both"]
HOSTS = ["windows", "mac", "linux", "other"]


class CommandLine(Case):
    def test_what_can_not_be_used_is_64_and_a_sentence(self):
        for words, sentence in [
            ([], "missing"),
            (["frobnicate"], 'no command "frobnicate"'),
            (["--printer", "virtual:office"], "command is missing"),
            (["--printer"], "command is missing"),
            (["--json", "frobnicate"], 'no command "frobnicate"'),
            (["--printer", "virtual:office", "text", "encode", "x"], "--printer"),
            (["build"], "missing"),
            (["build", "x"], 'no command "x"'),
            (["print"], "FILE"),
            (["print", "a", "b"], "not expected"),
            (["print", "a", "--sice", "a4"], "--sice"),
            (["print", "a", "--size", "a44"], "a44"),
            (["print", "a", "--size", "vaslo"], "vaslo"),
            (["print", "a", "--copies", "0"], "from 1 to"),
            (["print", "a", "--copies", "1x"], "1x"),
            (["print", "a", "--copies", "99999999999999999999"], "from 1 to"),
            (["print", "a", "--title", "x", "--title", "y"], "--title"),
            (["status"], "PXCL_PRINTER"),
            (["status", "--printer", "lp0"], "names no printer"),
            (["status", "--printer", "virtual:"], "profile"),
            (["status", "--printer", "virtual:nobody"], "office, photo, wide"),
            (["status", "--printer", "virtual:/nowhere.json"], "nowhere"),
            (["status", "--printer", "virtual:office?paper=1"], "paper"),
            (["status", "--printer", "virtual:office?fault=bad luck"], "bad luck"),
            (["status", "--printer", "file:lp0"], "whole path"),
            (["status", "--printer", "virtual:office", "--timeout", "0"], "--timeout"),
            (["build", "end-job"], "--job"),
            (["build", "end-job", "--job", ""], "empty"),
            (["build", "start-job", *JOB, "--host", "linnux"], "linux"),
            (["build", "start-job", *JOB, "--host", "linux"], "needs one"),
            (["build", "start-job", *JOB, "--description", "x" * 65], "64 bytes"),
            (["build", "start-job", *JOB, "--description", "a]]>b"], "]]>"),
            (["build", "send-data", *JOB, "--bytes", "-1"], "--bytes"),
            (["build", "set-configuration", *JOB, *PLAIN, "--capability", "/nowhere"], "nowhere"),
            (["build", "get-status", "--service", "device", *JOB], "no jobs"),
            (["parse", "/nowhere"], "nowhere"),
            (["parse", "/"], "/ can't be read"),
            (["text", "decode", "abc"], "no encoded text"),
            (["text", "lookup", "/dev/zero", "T"], "no file"),
            (["printer", "--fault", "\x1b[31mred"], "red"),
            (["\x1b]0;title\x07"], "no command"),
        ]:
            with self.subTest(words):
                self.expect(run(*words), 64, sentence)
                ended = run(*words, "--json")
                self.assertEqual(ended.code, 64)
                self.assertEqual((ended.json()["exit_code"], ended.json()["error"] != ""), (64, True))

    def test_options_may_stand_in_front_of_their_command(self):
        path = DATA / "replies" / "joblist.xml"
        plain = run("parse", path, "--json").json()
        for words in [["--json", "parse", path], ["--json", "parse", "--", path]]:
            self.assertEqual(run(*words).json(), plain, words)
        self.assertEqual(run("--printer", "virtual:office", "jobs").code, 0)

    def test_help_and_version_are_fine(self):
        for words in (["--help"], ["--version"], ["build", "--help"], ["print", "--help"]):
            self.expect(run(*words), 0)
        self.assertRegex(run("--version").out, r"^pxcl \d+\.\d+\.\d+\n$")

    def test_output_that_can_not_be_written_is_74(self):
        for words in (["--help"], ["device-id", "x"], ["build", "power-off"], ["device-id", "x", "--json"],
                      ["status", "--printer", f"virtual:office?output={self.folder}"]):
            with self.subTest(words), open("/dev/full", "wb") as full:
                ended = subprocess.run([PXCL, *words], stdout=full, stderr=subprocess.PIPE, env=environment())
                self.assertEqual((ended.returncode, b"could not be written" in ended.stderr), (74, True), ended.stderr)
        read_end, write_end = os.pipe()
        os.close(read_end)
        ended = subprocess.run([PXCL, "--help"], stdout=write_end, stderr=subprocess.PIPE)
        os.close(write_end)
        self.assertEqual(ended.returncode, 74)


class Build(Case):
    CASES = {
        "GetCapability_print": ["get-capability"],
        "GetCapability_device": ["get-capability", "--service", "device"],
        "GetCapability_maintenance": ["get-capability", "--service", "maintenance"],
        "GetConfiguration_print": ["get-configuration", "--service", "print"],
        "GetConfiguration_device": ["get-configuration", "--service", "device"],
        "PowerOff": ["power-off"],
        "FRomUpMode": ["firmware-mode"],
        "Handoveroff": ["end-hand-over"],
        "GetStatusDevice": ["get-status", "--service", "device"],
        "GetJobIDList": ["get-jobs"],
        "GetStatus_print": ["get-status"],
        "GetStatus_maintenance": ["get-status", "--service", "maintenance"],
        "GetStatus_print_job": ["get-status", *JOB],
        "GetStatus_maintenance_job": ["get-status", "--service", "maintenance", *JOB],
        "EndJob_print": ["end-job", *JOB],
        "EndJob_fax": ["end-job", *JOB, "--service", "fax"],
        "CancelJob_maintenance": ["cancel-job", *JOB, "--service", "maintenance"],
        "ModeShift": ["mode-shift", *JOB, "--service", "device", "--mode", "1"],
        "SendDataJPEG": ["send-data", *JOB, "--bytes", "1234", "--format", "jpeg"],
        "SendDataJPEGPAGE": ["send-data", *JOB, "--bytes", "2147483647", "--format", "jpegpage"],
        "SendDataPWGRaster": ["send-data", *JOB, "--bytes", "3000000000"],
        "SendDataRAW": ["send-raw-data", *JOB, "--width", "100", "--height", "50"],
        "SetPageConfiguration": ["set-page-configuration", *JOB],
        "SetPageConfiguration_next": ["set-page-configuration", *JOB, "--next-page", "off"],
        "SetPageConfiguration_preparation": ["set-page-configuration", *JOB, "--preparation", "disc"],
        "SetPageConfiguration_both": ["set-page-configuration", *JOB, "--next-page", "ON", "--preparation",
                                      "manualfeed"],
        "SetJobConfiguration": ["set-job-configuration", *JOB],
        "SetJobConfiguration_time": ["set-job-configuration", *JOB, *TIME],
        "SetJobConfiguration_guide": ["set-job-configuration", *JOB, "--guide", "off"],
        "SetJobConfiguration_both": ["set-job-configuration", *JOB, *TIME, "--guide", "on"],
        "SetConfiguration": ["set-configuration", *JOB, *PLAIN],
        "SetConfiguration_color": ["set-configuration", *JOB, *PLAIN, "--color", "monochrome"],
        "SetConfiguration_duplex": ["set-configuration", *JOB, *PLAIN, "--duplex", "on"],
        "SetConfiguration_staple": ["set-configuration", *JOB, *PLAIN, "--duplex", "short"],
        "SetConfiguration_color_duplex": ["set-configuration", *JOB, "--size", "A4", "--type", "Stationery",
                                          "--borderless", "on", "--color", "color", "--duplex", "off"],
        "SetConfiguration_color_staple": ["set-configuration", *JOB, *PLAIN, "--borderless", "on", "--color",
                                          "coldblack", "--duplex", "long"],
        "SetConfiguration_device": ["set-device-configuration", *JOB, "--agreement", "disagree"],
        "SetJobConfiguration_Maintenance": ["set-maintenance-configuration", *JOB],
        "SetJobConfiguration_Maintenance_time": ["set-maintenance-configuration", *JOB, *TIME],
        "TestPrint": ["nozzle-check", *JOB],
        "AutoRegistration": ["align", *JOB],
        "Cleaning": ["clean", *JOB],
    }
    for mode, (detection, host) in enumerate(zip(DETECTIONS, HOSTS)):
        start_job = ["start-job", *JOB, "--bidi", "1", "--detection", detection]
        CASES[f"StartJob_{mode}"] = start_job
        CASES[f"StartJob_{mode}_described"] = [*start_job, "--service", "maintenance", *TITLE]
        CASES[f"StartJob_{mode}_host"] = [*start_job, "--service", "scan", "--host", host, *TITLE]

    # Made with a capability reply of the library's tests, or from rows that have no keyword.
    ELSEWHERE = {"SetConfiguration_schema_size", "SetConfiguration_all_namespaces", "SetConfiguration_vendor",
                 "SetConfiguration_common", "SetConfiguration_unused_rows"}

    def test_documents_are_those_of_the_files(self):
        for name, words in self.CASES.items():
            with self.subTest(name):
                ended = run("build", *words)
                self.expect(ended, 0)
                self.assertEqual(ended.raw, (DATA / "commands" / f"{name}.xml").read_bytes())

    def test_every_file_and_every_builder_has_a_case(self):
        files = {path.stem for path in (DATA / "commands").iterdir()}
        self.assertEqual(files - self.ELSEWHERE, set(self.CASES))
        builders = set(run("complete", "build").out.split())
        self.assertEqual(builders - {"clock-job"}, {words[0] for words in self.CASES.values()})

    def test_namespaces_are_those_of_the_capability_reply(self):
        reply = DATA / "replies" / "capability_small.xml"
        vendor = run("build", "set-configuration", *JOB, "--size", "5x7", "--type", "photographic", "--capability", reply)
        self.expect(vendor, 0)
        self.assertIn("<vrx:papersize>na_5x7_5x7in<", vendor.out)
        unlisted = run("build", "set-configuration", *JOB, "--size", "a3", "--type", "stationery", "--capability", reply)
        self.expect(unlisted, 64, "does not list")

    def test_texts_are_made_safe(self):
        document = run("build", "end-job", "--job", "a<b&c>\x01\x1b").out
        self.assertIn("<zirk:jobID>a&lt;b&amp;c&gt;  </zirk:jobID>", document)
        self.assertEqual(run("build", "end-job", *JOB, "--json").json()["document"],
                         run("build", "end-job", *JOB).out)

    def test_clock_job_tells_the_local_time(self):
        job = run("build", "clock-job", env=environment(TZ="UTC"))
        self.expect(job, 0)
        self.assertEqual(len(job.raw), 65)


class Parse(Case):
    def test_replies_become_json(self):
        for path in sorted((DATA / "replies").iterdir()):
            with self.subTest(path.name):
                ended = run("parse", path, "--json")
                value = ended.json()
                self.assertEqual(value, json.loads((DATA / "parsed" / f"{path.stem}.json").read_text()))
                self.assertEqual(ended.code, 1 if "problems" in value else 0)
                self.assertEqual(run("parse", "-", "--json", feed=path.read_bytes()).json(), value)
                self.assertTrue(run("parse", path).out.startswith("operation: "))

    def test_replies_that_no_dictionary_knows(self):
        status = (DATA / "replies" / "joblist.xml").read_bytes()
        listed = run("parse", "-", "--json", feed=status.replace(b"GetStatusResponse", b"GetJobIDListResponse"))
        self.expect(listed, 0)
        self.assertEqual((listed.json()["response"], len(listed.json()["jobs"])), ("OK", 4))
        maintenance = (DATA / "replies" / "ng_no_detail.xml").read_bytes()
        for operation in (b"CleaningResponse", b"TestPrintResponse"):
            ended = run("parse", "-", "--json", feed=maintenance.replace(b"CancelJobResponse", operation))
            self.expect(ended, 0)
            self.assertEqual(ended.json()["response"], "NG")

    def test_what_is_no_reply_is_refused(self):
        good = (DATA / "replies" / "status_busy.xml").read_bytes()
        for name, text in [
            ("empty", b""), ("no XML", b"hello"), ("binary", bytes(range(256)) * 40), ("zeros", bytes(1000)),
            ("cut", good[:700]), ("another root", good.replace(b"<cmd ", b"<cnd ").replace(b"</cmd>", b"</cnd>")),
            ("too long", b"<?xml version=\"1.0\"?><cmd>" + b" " * (4 << 20) + b"</cmd>"),
        ]:
            with self.subTest(name):
                self.expect(run("parse", "-", feed=text), 64)
                self.assertIn("error", run("parse", "-", "--json", feed=text).json())

    def test_no_control_character_of_a_reply_gets_to_the_terminal(self):
        good = (DATA / "replies" / "status_busy.xml").read_bytes()
        for evil in (b"\x1b[2J\x07x", b"\xc2\x9b31m", b"\x00\x01\r", b"\xff\xfe", "\u202egnp.exe".encode()):
            for place in (b"00000034", b"1681", b"GetStatusResponse", b"printing", b"iso_a4_210x297mm"):
                for words in ((), ("--json",)):
                    ended = run("parse", "-", *words, feed=good.replace(place, evil[:8]))
                    self.assertIn(ended.code, (0, 1, 64))
                    text = ended.raw.decode("utf-8") + ended.err
                    self.assertFalse(CONTROLS & set(map(ord, text)), f"{evil} for {place}: {text!r}")
                    self.assertFalse(not words and "\u202e" in text)


class TextsAndIds(Case):
    def test_texts_come_back(self):
        for text in (b"", b"office, 2nd floor", bytes(range(256)), "größe".encode(), b"x" * 100_000):
            code = run("text", "encode", "-", feed=text)
            self.expect(code, 0)
            back = run("text", "decode", "-", feed=code.raw)
            self.assertEqual(back.raw, text)
            self.assertEqual(run("text", "decode", "-", "--json", feed=code.raw).json()["hexadecimal"], text.hex())
        self.assertEqual(run("text", "encode", "-", feed=b"\0").out, "fk=aaaaaaaa\n")
        self.expect(run("text", "decode", "fk=aaaaaaab"), 64, "damaged")

    def test_tagged_values(self):
        file = self.folder / "tagged"
        code = run("text", "encode", "secret").out.strip()
        file.write_text(f"*% #NAME:Müller\n*% #CODE:{code}\n*% #BLOCK>\n*% ab\n*% cd\n*% #<BLOCK\n")
        for words, expected in [(["NAME"], "Müller"), (["BLOCK"], "abcd"), (["CODE", "--decode"], "secret")]:
            ended = run("text", "lookup", file, *words)
            self.expect(ended, 0)
            self.assertEqual(ended.out, expected)
        for words in (["NONE"], ["NAME", "--decode"]):
            self.expect(run("text", "lookup", file, *words), 64, "no value")

    def test_device_ids(self):
        for text, expected in [
            ("MFG:Acme;MDL:Q1;CMD:ZIRK,NOLP;SOJ:NOLP;", ("newer", True, True, "Q1")),
            ("MDL:Q1;CMD:KWNP;", ("older", False, False, "Q1")),
            ("CMD:ZIRKX;", ("older", False, False, None)),
            ("", ("older", False, False, None)),
            ("\x1b[31m", ("older", False, False, None)),
        ]:
            with self.subTest(text):
                value = run("device-id", "-", "--json", feed=text.encode()).json()
                keys = ("protocol", "xml_commands", "usage_information", "model")
                self.assertEqual(tuple(value[key] for key in keys), expected)
                self.assertFalse(CONTROLS & set(map(ord, run("device-id", "-", feed=text.encode()).out)))

    def test_tables_are_aligned_by_what_characters_take_on_the_screen(self):
        lines = run("device-id", "MFG:日本é;MDL:x;").out.splitlines()
        self.assertEqual(len({len(line) - len(line.split(":", 1)[1].lstrip()) for line in lines}), 1)


if __name__ == "__main__":
    unittest.main()
