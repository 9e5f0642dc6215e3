# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""A printer behind HTTP that does not do what it should, signals, and several clients at once."""

import os
import shutil
import signal
import threading
import time
import tty
import unittest
import urllib.request
from pathlib import Path

from support import Case, Served, environment, page, pwg, run, start, terminal

SMALL = pwg([page()] * 2)
LARGE = pwg([page(width=600, height=400)] * 2)  # pages of three pieces
QUICK = ["--timeout", "2", "--wait", "1"]
LIMIT = 12  # seconds: a time-out, waiting for a person, cancelling


class WithDocument(Case):
    def document(self, content=SMALL):
        file = self.folder / "document"
        file.write_bytes(content)
        return file

    def wait_until(self, condition, what, limit=10):
        end = time.monotonic() + limit
        while not condition():
            self.assertLess(time.monotonic(), end, what)
            time.sleep(0.05)


class Faults(WithDocument):
    def test_each_fault_ends_in_its_exit_code_with_the_printer_idle(self):
        for fault, code in [
            ("paper-out at page 1", 2), ("paper-out at page 2", 2), ("cover-open after 1 sends", 2), ("jam at page 2", 2),
            ("ink-out after 2 sends", 2),
            ("ng ParameterError to StartJob", 2), ("ng IllegalOperation to SetConfiguration", 2),
            ("ng DataSizeOver to SendData", 2), ("ng NotStart to EndJob", 2),
            ("ng NotSupportOperation to GetCapability", 2), ("ng Suspended to GetStatus once", 2),
            ("wrong-operation to StartJob", 3), ("wrong-operation to SendData", 3), ("cut reply to GetCapability", 3),
            ("cut reply to EndJob once", 3), ("garbage to SendData", 3), ("garbage to GetStatus once", 3),
            ("huge reply to SetConfiguration", 3), ("drip reply to SendData every 50 ms", 3),
            ("no-answer to StartJob once", 3), ("no-answer to SendData once", 3), ("close on EndJob once", 3),
            ("close on SendData", 3),
        ]:
            with self.subTest(fault), Served(self.folder / "pages", faults=[fault]) as printer:
                began = time.monotonic()
                ended = printer.run("print", self.document(), "--json", *QUICK)
                self.expect(ended, code)
                self.assertEqual(ended.json()["exit_code"], code)
                self.assertLess(time.monotonic() - began, LIMIT)
                self.assertTrue(printer.is_idle())

    def test_a_reply_that_drips_in_time_is_fine(self):
        with Served(self.folder / "pages", faults=["drip reply to SendData every 1 ms"]) as printer:
            self.expect(printer.run("print", self.document()), 0)

    def test_a_printer_that_is_not_there_is_3(self):
        for uri in ("http://127.0.0.1:1", "file:/dev/nowhere"):
            ended = run("status", "--printer", uri, "--json", "--timeout", "2")
            self.expect(ended, 3)
            self.assertIn("error", ended.json())
        self.expect(run("print", self.document(), "--printer", "http://127.0.0.1:1"), 3)

    def test_a_printer_that_wants_a_person_is_told_apart(self):
        with Served(self.folder / "pages", faults=["paper-out at page 1 once"]) as printer:
            with start("print", self.document(), "--printer", printer.uri, "--wait", "30") as first:
                self.wait_until(lambda: printer.run("status").code == 2, "the printer never stops")
                status = printer.run("status", "--json").json()
                self.assertEqual((status["detail"], status["needs_attention"]), ("MediaEmpty", True))
                self.assertTrue(status["attention"])
                printer.attend()
                _, told = first.communicate(timeout=30)
            self.assertEqual(first.returncode, 0, told)
            self.assertIn(b"paper", told.lower())


class Maintenance(WithDocument):
    def test_orders_are_carried_out(self):
        for profile in ("office", "photo", "wide"):
            with Served(self.folder / profile, profile=profile) as printer:
                for words in (["clean"], ["nozzle-check"], ["align"], ["set-time"], ["power-off"]):
                    with self.subTest(profile=profile, words=words):
                        self.expect(printer.run(*words), 2 if words == ["set-time"] and not self.has_clock(printer) else 0)
                self.expect(printer.run("status", "--timeout", "2"), 3)  # it is off

    def has_clock(self, printer):
        return any(printer.run("capability", "--service", service, "--json").json()["date_time"]
                   for service in ("print", "maintenance"))

    def test_device_id_is_the_printers(self):
        with Served(self.folder / "pages") as printer:
            served = printer.run("device-id", "--json")
            self.expect(served, 0)
            self.assertTrue(served.json()["xml_commands"])
            self.assertEqual(served.json(), run("device-id", served.json()["device_id"], "--json").json())

    def test_the_default_printer_is_that_of_the_environment(self):
        with Served(self.folder / "pages") as printer:
            self.expect(run("status", env=environment(PXCL_PRINTER=printer.uri)), 0)


class Devices(WithDocument):
    """A device file: a terminal, with the served printer behind it."""

    def pass_on(self, leader, uri):
        request = b""
        while True:
            try:
                request += os.read(leader, 65536)
            except OSError:  # the other side is closed
                return
            if request.endswith(b"</cmd>"):
                os.write(leader, urllib.request.urlopen(uri, request, timeout=10).read())
                request = b""

    def test_questions_and_orders_go_through_a_device_file(self):
        with Served(self.folder / "pages") as printer:
            leader, follower = terminal()
            tty.setraw(follower)
            thread = threading.Thread(target=self.pass_on, args=(leader, printer.uri))
            thread.start()
            for words in (["status", "--json"], ["capability", "--json"], ["clean"], ["cancel", "00000042"]):
                through_device = run(*words, "--printer", f"file:{os.ttyname(follower)}")
                direct = printer.run(*words)
                self.assertEqual((through_device.code, through_device.out), (direct.code, direct.out), words)
            os.close(follower)
            thread.join()
            os.close(leader)


class Clients(WithDocument):
    def test_the_second_client_is_refused_and_the_first_goes_on(self):
        with Served(self.folder / "pages", faults=["paper-out at page 1 once"]) as printer:
            with start("print", self.document(), "--printer", printer.uri, "--wait", "30", "--json") as first:
                self.wait_until(lambda: printer.run("status").code == 2, "the printer never stops")
                second = printer.run("print", self.document(), *QUICK)
                self.expect(second, 2, "job")
                job = printer.run("jobs", "--json").json()["jobs"][0]["id"]
                printer.attend()
                out, told = first.communicate(timeout=30)
            self.assertEqual(first.returncode, 0, told)
            self.assertIn(job, out.decode())

    def test_a_job_is_cancelled_from_elsewhere(self):
        with Served(self.folder / "pages", faults=["paper-out at page 1"]) as printer:
            with start("print", self.document(), "--printer", printer.uri, "--wait", "30") as first:
                self.wait_until(lambda: printer.run("status").code == 2, "the printer never stops")
                job = printer.run("jobs", "--json").json()["jobs"][0]["id"]
                self.expect(printer.run("cancel", job), 0)
                first.communicate(timeout=20)
            self.assertIn(first.returncode, (2, 3))
            self.assertTrue(printer.is_idle())


class Signals(WithDocument):
    def interrupt(self, process, number):
        began = time.monotonic()
        process.send_signal(number)
        process.communicate(timeout=10)
        self.assertEqual(process.returncode, 130)
        self.assertLess(time.monotonic() - began, 6)

    def test_a_job_is_cancelled_in_mid_page(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number), Served(self.folder / "pages",
                                              faults=["drip reply to SendData every 5 ms"]) as printer:
                with start("print", self.document(LARGE), "--printer", printer.uri) as process:
                    self.wait_until(lambda: not printer.is_idle(), "no job is opened")
                    time.sleep(0.3)
                    self.interrupt(process, number)
                self.assertTrue(printer.is_idle())

    def test_a_job_is_cancelled_while_the_printer_does_not_answer(self):
        with Served(self.folder / "pages", faults=["no-answer to SendData once"]) as printer:
            with start("print", self.document(), "--printer", printer.uri) as process:
                self.wait_until(lambda: not printer.is_idle(), "no job is opened")
                self.interrupt(process, signal.SIGINT)
            self.assertTrue(printer.is_idle())

    def test_waiting_for_the_document_is_interrupted(self):
        read_end, write_end = os.pipe()
        with start("print", "-", "--printer", "virtual:office?output=" + str(self.folder / "pages"),
                   stdin=read_end) as process:
            time.sleep(0.5)
            self.interrupt(process, signal.SIGTERM)
        os.close(read_end)
        os.close(write_end)

    @unittest.skipUnless(shutil.which("gs"), "ghostscript is not installed")
    def test_rendering_is_interrupted_and_leaves_no_ghostscript(self):
        mark = f"pxcl-test-{os.getpid()}"
        with start("print", self.document(b"%!PS\n{} loop\n"), "--size", "a4", "--printer",
                   "virtual:office?output=" + str(self.folder / "pages"), env=environment(MARK=mark)) as process:
            self.wait_until(lambda: "gs" in self.marked(mark), "ghostscript is not started")
            self.interrupt(process, signal.SIGINT)
        self.assertEqual(self.marked(mark), [])

    def marked(self, mark):
        """The names of the processes that have the mark in their environment."""
        names = []
        for folder in Path("/proc").iterdir():
            try:
                if mark.encode() in (folder / "environ").read_bytes():
                    names.append((folder / "comm").read_text().strip())
            except OSError:
                continue
        return names

    def test_watching_goes_on_until_interrupted(self):
        with Served(self.folder / "pages") as printer:
            with start("status", "--watch", "--interval", "1", "--json", "--printer", printer.uri) as process:
                for _ in range(2):
                    self.assertIn(b'"status":"idle"', process.stdout.readline())
                process.send_signal(signal.SIGINT)
                self.assertEqual(process.wait(10), 130)

    def test_the_served_printer_ends_cleanly(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with Served(self.folder / "pages", faults=["no-answer to GetStatus"]) as printer:
                self.assertRegex(printer.uri, r"^http://127\.0\.0\.1:\d+$")
                with start("status", "--printer", printer.uri, "--timeout", "20") as asking:
                    time.sleep(0.5)
                    began = time.monotonic()
                    printer.process.send_signal(number)
                    self.assertEqual(printer.process.wait(10), 0)
                    self.assertLess(time.monotonic() - began, 5)
                    asking.communicate(timeout=10)
                self.assertEqual(asking.returncode, 3)

    def test_a_port_that_is_taken_is_64(self):
        with Served(self.folder / "pages") as printer:
            ended = run("printer", "--port", printer.uri.rsplit(":", 1)[1], "--output", self.folder / "pages")
            self.expect(ended, 64)


if __name__ == "__main__":
    unittest.main()
