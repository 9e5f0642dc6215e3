# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Printing on the virtual printer in the same process: what it offers, what arrives there, and what is refused."""

import json
import resource
import shutil
import subprocess
import unittest

from support import (ADOBE, BLACK, CMY, CMYK, DATA, GRAY, HEADER_SIZE, RGB, SANITIZED, SRGB, WHITE, Case, cups,
                     environment, header, mean_difference, page, pwg, read_png, run)

POSTSCRIPT = b"""%!PS
<< /PageSize [595 842] >> setpagedevice
0.2 0.4 0.6 setrgbcolor 0 421 595 421 rectfill showpage
1 0 0 setrgbcolor 0 0 595 421 rectfill showpage
"""
HAS_GHOSTSCRIPT = shutil.which("gs") is not None


class Profiles(Case):
    """What a virtual printer tells of itself is what its profile says."""

    DISC_LABELS = "custom-media-type-vaslo-33"  # no type that can be chosen

    def profiles(self):
        for path in (DATA.parent.parent / "printer/profiles").iterdir():
            with self.subTest(path.stem):
                yield json.loads(path.read_text()), ["--json", "--printer", f"virtual:{path.stem}"]

    def test_capability_is_that_of_the_profile(self):
        def area(name):
            return lambda size: name in size and (*size[name]["area"], *size[name]["margin"])

        def told_area(name):
            return lambda size: bool(size[name]) and (size[name]["width"], size[name]["height"], *size[name]["margins"])

        for profile, words in self.profiles():
            told, offer = run("capability", *words).json(), profile["print"]
            for name, told_name in [("border", "bordered"), ("borderless", "borderless"), ("duplex", "duplex")]:
                self.assertEqual({size["size"]: told_area(told_name)(size) for size in told["sizes"]},
                                 {size["keyword"]: area(name)(size) for size in profile["sizes"]})
            on = [side.removesuffix("side") for side in offer.get("staple_sides", [])] or ["on"]
            types = {}
            for kind in profile["types"]:
                duplex = [word for side in kind.get("duplex", []) for word in (on if side == "ON" else ["off"])]
                border = kind["borderless"]
                types[kind["keyword"]] = ("OFF" in border, "ON" in border, set(kind["color"]), duplex)
            self.assertEqual(told["disc_labels"], types.pop(self.DISC_LABELS, None) is not None)
            self.assertEqual({kind["type"]: (kind["bordered"], kind["borderless"], set(kind["color_modes"]), kind["duplex"])
                              for kind in told["types"]}, types)
            for name, told_name in [("most", "most_pixels"), ("least", "least_pixels")]:
                self.assertEqual(list((told[told_name] or {}).values()), profile.get("pixels", {}).get(name, []))
            self.assertEqual(set(told["formats"]), set(offer["formats"]))
            self.assertEqual(told["print_preparations"], offer.get("print_preparation", []))
            for name, expected in [("next_page", "ON" in offer.get("next_page", [])), ("job_queue", offer.get("job_queue", False)),
                                   ("disc_guide", "ON" in offer.get("disc_guide", [])),
                                   ("mismatch_mode_none", "none" in offer.get("mismatch_modes", []))]:
                self.assertEqual(told[name], expected, name)
            for service in ("print", "maintenance"):
                told, offer = run("capability", "--service", service, *words).json(), profile[service]
                self.assertEqual((told["date_time"], told["host_environment"]),
                                 (offer.get("date_time", False), "linux" if "linux" in offer.get("hosts", []) else None))

    def test_paper_and_ink_are_those_of_the_profile(self):
        for profile, words in self.profiles():
            status = run("status", *words).json()
            self.assertEqual([(paper["size"], paper["type"]) for paper in status["paper"]],
                             [(held["size"], held["type"]) for held in profile["bins"] if "size" in held])
            self.assertEqual(status["inks_fine"], all(ink["tca"] == "AC" for ink in profile["inks"]))
            self.assertEqual((status["status"], status["detail"], status["support_code"]), ("idle", None, None))


class Printing(Case):
    def uri(self, profile="office", output="pages"):
        return f"virtual:{profile}?output={self.folder / output}"

    def print(self, content, *words, profile="office", output="pages", **options):
        file = self.folder / "document.jpeg"  # what a document is tells its content
        file.write_bytes(content)
        return run("print", file, "--printer", self.uri(profile, output), *words, **options)

    # ---- What arrives ----

    def test_pixels_arrive_as_they_were_sent(self):
        def inverted(pixels):
            return bytes(255 - value for value in pixels)

        for name, make, kind, picture in [
            ("sRGB", pwg, {"space": SRGB}, bytes), ("gray", pwg, {"space": GRAY}, bytes),
            ("CUPS sRGB", cups, {"space": SRGB}, bytes), ("CUPS RGB", cups, {"space": RGB}, bytes),
            ("CUPS white", cups, {"space": WHITE}, bytes), ("CUPS black", cups, {"space": BLACK}, inverted),
            ("one pixel", pwg, {"width": 1, "height": 1}, bytes),
        ]:
            with self.subTest(name):
                head, pixels = page(**kind)
                ended = self.print(make([(head, pixels)]), "--size", "a4", "--type", "stationery", "--json", output=name)
                self.expect(ended, 0)
                report = ended.json()
                self.assertEqual((report["pages"], len(report["files"])), (1, 1))
                self.assertEqual(read_png(report["files"][0])[3], picture(pixels))

    def test_lines_with_padding_arrive_without_it(self):
        head, pixels = page(width=50, height=3, space=SRGB, line=159)  # 150 bytes, and three pixels more
        ended = self.print(cups([(head, pixels)]), "--json")
        self.expect(ended, 0)
        width, _, _, arrived = read_png(ended.json()["files"][0])
        self.assertEqual((width, arrived), (50, b"".join(pixels[at:at + 150] for at in (0, 159, 318))))

    def test_other_pixels_of_pwg_raster_are_passed_on(self):
        for space, bits in [(GRAY, 1), (BLACK, 1), (GRAY, 16), (SRGB, 16), (ADOBE, 8), (CMYK, 8)]:
            with self.subTest(space=space, bits=bits):
                self.expect(self.print(pwg([page(width=64, space=space, bits=bits)])), 0)

    def test_pages_and_copies_come_in_order(self):
        pages = [page(seed=seed, height=20 + seed) for seed in (1, 2, 3)]
        for words, feed, count in [([], False, 3), (["--copies", "3"], False, 9), ([], True, 3)]:
            output = f"{count}{feed}"
            if feed:
                ended = run("print", "-", "--printer", self.uri(output=output), "--json", feed=pwg(pages))
            else:
                ended = self.print(pwg(pages), "--json", *words, output=output)
            self.expect(ended, 0)
            heights = [read_png(file)[1] for file in ended.json()["files"]]
            self.assertEqual(heights, [21, 22, 23] * (count // 3))

    def test_every_profile_prints_on_all_of_its_paper(self):
        for profile in ("office", "photo", "wide"):
            for paper in run("status", "--json", "--printer", self.uri(profile)).json()["paper"]:
                if paper["chosen_on_panel"]:
                    continue
                with self.subTest(profile=profile, paper=paper):
                    words = ["--size", paper["size"], "--type", paper["type"], "--json"]
                    ended = self.print(pwg([page()]), *words, profile=profile, output=profile)
                    self.assertIn(ended.code, (0, 1))  # an ink of the wide one is low
                    self.assertEqual("ink" in ended.err, ended.code == 1)
                    self.assertEqual(ended.json()["pages"], 1)

    def test_settings_are_those_asked_for(self):
        for words, expected in [
            (["--size", "a4"], {"size": "iso_a4_210x297mm", "type": "stationery", "duplex": "off"}),
            (["--size", "letter", "--duplex", "short"], {"size": "na_letter_8.5x11in", "duplex": "short"}),
            (["--size", "a4", "--color", "monochrome"], {"color": "monochrome"}),
            (["--size", "4x6in", "--type", "photographic", "--borderless", "on"], {"borderless": True}),
            ([], {"size": "iso_a4_210x297mm"}),  # the raster's
        ]:
            with self.subTest(words):
                ended = self.print(pwg([page()]), "--json", *words)
                self.expect(ended, 0)
                self.assertEqual(ended.json()["settings"], {**ended.json()["settings"], **expected})

    def test_the_dialogue_is_traced(self):
        trace = self.folder / "trace"
        self.expect(self.print(pwg([page()] * 2), "--trace", trace), 0)
        text, at = trace.read_text(), 0
        for operation in ("GetCapability", "StartJob", "SetJobConfiguration", "SetConfiguration", "SendData", "SendData",
                          "EndJob", "GetStatus"):
            at = text.index(f"<zirk:operation>{operation}<", at) + 1
        self.expect(self.print(pwg([page()]), "--trace", "/dev/full"), 74, "trace")
        self.expect(self.print(pwg([page()]), "--trace", self.folder / "no" / "trace"), 74, "trace")

    # ---- What is refused ----

    def test_hostile_rasters_are_64_and_a_sentence(self):
        head, pixels = page(width=20, height=10)
        good = pwg([(head, pixels)])
        two = pwg([(head, pixels)] * 2)

        def changed(**fields):
            return b"RaS2" + header(**{"width": 20, "height": 10, **fields}) + good[4 + HEADER_SIZE:]

        for name, raster, sentence in [
            ("empty", b"", "no PWG"), ("text", b"hello", "no PWG"), ("sync word alone", b"RaS2", "no pages"),
            ("half a sync word", b"RaS", "no PWG"), ("header cut", good[:1000], "cut short"),
            ("pixels cut", good[:-30], "cut short"), ("no pixels", good[:4 + HEADER_SIZE], "cut short"),
            ("second header cut by all but one byte", good + two[len(good):][:1], "cut short"),
            ("second header cut by a byte", good + two[len(good):][:HEADER_SIZE - 1], "cut short"),
            ("second page cut", two[:-1], "cut short"), ("rubbish behind the page", good + b"\n", "cut short"),
            ("width 0", changed(width=0), "."), ("height 0", changed(height=0), "."),
            ("no lines", changed(line=0), "."), ("short lines", changed(line=3), "lines of 3 bytes"),
            ("long lines", changed(line=6000), "lines of 6000 bytes"),
            ("lines of 2 GiB", changed(line=0x7FFFFFFE), "lines of 2147483646 bytes"),
            ("wide", changed(width=70_000, line=210_000), "no page has"),
            ("high", changed(height=4_000_000_000), "no page has"),
            ("largest", changed(width=2**32 - 1, height=2**32 - 1, line=2**31 - 2), "."),
            ("CMY", changed(space=CMY), "can't be sent"), ("unknown space", changed(space=200), "."),
            ("banded", changed(order=1, pixel_bits=8, line=60), "can't be sent"),
            ("4 bits", changed(bits=4, line=30), "can't be sent"), ("no bits", changed(bits=0, line=60), "."),
        ]:
            with self.subTest(name):
                self.expect(self.print(raster), 64, sentence)
                ended = run("print", "-", "--printer", self.uri(), feed=raster)
                self.expect(ended, 64, sentence)

    def test_files_that_can_not_be_read_are_64(self):
        for path in ("/nowhere", self.folder):
            self.expect(run("print", path, "--printer", self.uri()), 64)

    def test_raster_from_a_pipe_has_no_copies(self):
        ended = run("print", "-", "--copies", "2", "--printer", self.uri(), feed=pwg([page()]))
        self.expect(ended, 64, "copies")

    def test_no_room_for_a_page_is_64(self):
        self.expect(self.print(pwg([page()]), env=environment(TMPDIR="/nowhere")), 64, "temporary")

    @unittest.skipIf(SANITIZED, "the sanitizer has memory of its own")
    def test_memory_is_that_of_a_line(self):
        lines = bytes([255]) + (bytes([127]) + b"\xff" * 3) * 40  # 256 lines of 40 times 128 white pixels
        file = self.folder / "large"
        file.write_bytes(b"RaS2" + header(5120, 5120) + lines * 20)
        most = 48 << 20  # the page has 75 MiB
        ended = run("print", file, "--printer", self.uri(),
                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_DATA, (most, most)))
        self.expect(ended, 0)

    # ---- PDF and PostScript ----

    @unittest.skipUnless(HAS_GHOSTSCRIPT, "ghostscript is not installed")
    def test_postscript_is_rendered_for_the_paper(self):
        for words, size, channels in [
            (["--size", "a4", "--resolution", "100"], (827, 1169), 3),
            (["--size", "a4", "--resolution", "100", "--color", "monochrome"], (827, 1169), 1),
            (["--size", "letter", "--resolution", "72"], (612, 792), 3),
        ]:
            with self.subTest(words):
                ended = self.print(POSTSCRIPT, "--json", *words)
                self.expect(ended, 0)
                files = ended.json()["files"]
                self.assertEqual(len(files), 2)
                width, height, found, pixels = read_png(files[0])
                for expected, actual in zip(size, (width, height)):
                    self.assertAlmostEqual(expected, actual, delta=1)
                self.assertEqual(found, channels)
                top = pixels[(height // 4 * width + width // 2) * found:][:found]
                bottom = pixels[(height * 3 // 4 * width + width // 2) * found:][:found]
                self.assertEqual(bottom, b"\xff" * found)
                if found == 3:
                    self.assertEqual(top, bytes([51, 102, 153]))

    @unittest.skipUnless(HAS_GHOSTSCRIPT, "ghostscript is not installed")
    def test_the_size_is_the_documents_where_that_is_loaded(self):
        letter = POSTSCRIPT.replace(b"595 842", b"612 792")
        for document, profile, words, size in [
            (POSTSCRIPT, "office", [], "iso_a4_210x297mm"), (letter, "office", [], "na_letter_8.5x11in"),
            (POSTSCRIPT, "photo", [], "iso_a4_210x297mm"),
            (POSTSCRIPT, "photo", ["--type", "photographic"], "na_index-4x6_4x6in"),
        ]:
            ended = self.print(document, "--resolution", "72", "--json", *words, profile=profile)
            self.expect(ended, 0)
            self.assertEqual(ended.json()["settings"]["size"], size)
        self.expect(self.print(pwg([page(page_width=612, page_height=792)]), profile="photo"), 2)  # not loaded

    @unittest.skipUnless(HAS_GHOSTSCRIPT and shutil.which("pdftoppm"), "a renderer is not installed")
    def test_a_pdf_comes_out_as_another_program_renders_it(self):
        document = DATA.parent.parent / "examples/testpage.pdf"
        ended = run("print", document, "--resolution", "150", "--size", "a4", "--json", "--printer", self.uri())
        self.expect(ended, 0)
        subprocess.run(["pdftoppm", "-r", "150", "-png", document, self.folder / "other"], check=True)
        ours, other = (read_png(path) for path in (ended.json()["files"][0], next(self.folder.glob("other*.png"))))
        self.assertEqual(ours[2], other[2])
        for mine, theirs in zip(ours[:2], other[:2]):
            self.assertLessEqual(abs(mine - theirs), 1)
        self.assertLess(mean_difference(ours, other), 9)  # measured: 6.8; upside down: 47.5

    @unittest.skipUnless(HAS_GHOSTSCRIPT, "ghostscript is not installed")
    def test_postscript_through_a_pipe_has_copies(self):
        ended = run("print", "-", "--copies", "2", "--resolution", "72", "--size", "a4", "--json", "--printer",
                    self.uri(), feed=POSTSCRIPT)
        self.expect(ended, 0)
        self.assertEqual(ended.json()["pages"], 4)

    @unittest.skipUnless(HAS_GHOSTSCRIPT, "ghostscript is not installed")
    def test_what_can_not_be_rendered_is_64(self):
        for name, document, sentence in [
            ("broken PDF", b"%PDF-1.4\nrubbish\n", "ghostscript|no pages"),
            ("no pages", b"%!PS\n", "no pages"),
            ("error on page 2", b"%!PS\nshowpage\nnonsense showpage\n", "could not render"),
            ("a file of another", b"%!PS\n(/etc/passwd) (r) file pop showpage\n", "could not render"),
            ("a command", b"%!PS\n(%pipe%id) (r) file pop showpage\n", "could not render"),
        ]:
            with self.subTest(name):
                self.expect(self.print(document, "--size", "a4", "--resolution", "72"), 64, sentence)

    def test_without_ghostscript_a_sentence_says_so(self):
        ended = self.print(POSTSCRIPT, "--size", "a4", env=environment(PATH=self.folder))
        self.expect(ended, 64, "Install the package ghostscript")


if __name__ == "__main__":
    unittest.main()
