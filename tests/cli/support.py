# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""Running the pxcl command from tests: its path stands in $PXCL, that of the test data in $PXCL_TEST_DATA."""

import json
import os
import pty
import signal
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

PXCL = os.environ["PXCL"]
DATA = Path(os.environ["PXCL_TEST_DATA"])
SANITIZED = os.environ.get("PXCL_SANITIZE", "") != ""
CONTROLS = set(range(0x20)) - {0x0A} | set(range(0x7F, 0xA0))


def environment(**changes):
    """This process' environment without a default printer; a change to None takes a variable out."""
    variables = {name: value for name, value in os.environ.items() if name != "PXCL_PRINTER"}
    for name, value in changes.items():
        variables.pop(name, None)
        if value is not None:
            variables[name] = str(value)
    return variables


class Ended:
    """What a run of the command left behind."""

    def __init__(self, code, out, err):
        self.code = code
        self.raw = out
        self.out = out.decode("utf-8", "replace")
        self.err = err.decode("utf-8", "replace")

    def json(self):
        def refuse(constant):
            raise ValueError(f"{constant} is no JSON")

        return json.loads(self.raw.decode("utf-8"), parse_constant=refuse)


def start(*arguments, **options):
    options.setdefault("stdin", subprocess.DEVNULL)
    options.setdefault("env", environment())
    return subprocess.Popen([PXCL, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)


def run(*arguments, feed=None, timeout=60, **options):
    options["stdin"] = subprocess.DEVNULL if feed is None else subprocess.PIPE
    process = start(*arguments, **options)
    try:
        out, err = process.communicate(feed, timeout=timeout)
    except subprocess.TimeoutExpired:
        process.kill()
        out, err = process.communicate()
        raise AssertionError(f"pxcl {arguments} took longer than {timeout} s: {err.decode()}") from None
    return Ended(process.returncode, out, err)


class Served:
    """A virtual printer behind HTTP."""

    def __init__(self, folder, profile="office", faults=()):
        words = ["printer", "--profile", profile, "--output", folder]
        for fault in faults:
            words += ["--fault", fault]
        self.process = start(*words)
        self.uri = self.process.stdout.readline().decode().strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(10)
        self.process.stdout.close()
        self.process.stderr.close()

    def attend(self):
        self.process.send_signal(signal.SIGUSR1)

    def run(self, *arguments, **options):
        return run(*arguments, "--printer", self.uri, **options)

    def is_idle(self):
        status = self.run("status", "--json")
        jobs = self.run("jobs", "--json")
        return status.json()["status"] == "idle" and jobs.json()["jobs"] == []


class Case(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name)

    def expect(self, ended, code, sentence=None):
        """The exit code; for a failure a sentence on standard error that is safe for a terminal."""
        self.assertEqual(ended.code, code, f"stdout: {ended.out}\nstderr: {ended.err}")
        if code not in (0, 1):
            self.assertRegex(ended.err, r"^pxcl: .+[.!']\n")
        if sentence:
            self.assertRegex(ended.err, sentence)
        self.assertFalse(CONTROLS & set(map(ord, ended.err)), repr(ended.err))


# ---- Rasters ----

GRAY, SRGB, ADOBE, BLACK, WHITE, RGB, CMYK, CMY = 18, 19, 20, 3, 0, 1, 6, 4
COLORS = {GRAY: 1, SRGB: 3, ADOBE: 3, BLACK: 1, WHITE: 1, RGB: 3, CMYK: 4, CMY: 3}
HEADER_SIZE = 1796
FIELDS = {  # offsets of the numbers of a page's header
    "resolution_x": 276, "resolution_y": 280, "page_width": 352, "page_height": 356, "width": 372, "height": 376,
    "bits": 384, "pixel_bits": 388, "line": 392, "order": 396, "space": 400, "colors": 420,
}


def header(width, height, space=SRGB, bits=8, **changes):
    fields = {
        "resolution_x": 300, "resolution_y": 300, "page_width": 595, "page_height": 842, "width": width,
        "height": height, "bits": bits, "pixel_bits": bits * COLORS.get(space, 3), "order": 0, "space": space,
        "line": (width * bits * COLORS.get(space, 3) + 7) // 8, "colors": COLORS.get(space, 3),
    }
    fields.update(changes)
    page = bytearray(HEADER_SIZE)
    page[0:9] = b"PwgRaster"
    for name, value in fields.items():
        struct.pack_into(">I", page, FIELDS[name], value)
    return bytes(page)


def packed(lines):
    """Lines of bytes as PWG raster has them: each once, its pixels literally, one byte each."""
    data = bytearray()
    for line, pixel in lines:
        data.append(0)
        count = len(line) // pixel
        for start_at in range(0, count, 128):
            part = line[start_at * pixel:(start_at + 128) * pixel]
            length = len(part) // pixel
            data.append(257 - length if length > 1 else 0)
            data += part
    return bytes(data)


def pwg(pages):
    """A PWG raster stream of (header, pixels) pairs."""
    stream = bytearray(b"RaS2")
    for head, pixels in pages:
        line = struct.unpack_from(">I", head, FIELDS["line"])[0]
        pixel = max(struct.unpack_from(">I", head, FIELDS["pixel_bits"])[0] // 8, 1)
        stream += head
        stream += packed((pixels[at:at + line], pixel) for at in range(0, len(pixels), line))
    return bytes(stream)


def cups(pages):
    """The same as an uncompressed CUPS raster stream."""
    return b"RaS3" + b"".join(head + pixels for head, pixels in pages)


def noise(size, seed=1):
    """Bytes that do not compress, the same for the same seed."""
    state, out = seed, bytearray()
    while len(out) < size:
        state = (state * 6364136223846793005 + 1442695040888963407) % 2**64
        out += struct.pack(">I", state >> 32)
    return bytes(out[:size])


def page(width=200, height=100, space=SRGB, bits=8, seed=1, **changes):
    head = header(width, height, space, bits, **changes)
    line = struct.unpack_from(">I", head, FIELDS["line"])[0]
    return head, noise(line * height, seed)


def read_png(path):
    """Width, height, channels and the pixels of a PNG of 8-bit gray or RGB."""
    data = Path(path).read_bytes()
    assert data.startswith(b"\x89PNG\r\n\x1a\n"), path
    at, compressed, head = 8, b"", None
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        body = data[at + 8:at + 8 + length]
        head = struct.unpack(">IIBB", body[:10]) if kind == b"IHDR" else head
        compressed += body if kind == b"IDAT" else b""
        at += 12 + length
    width, height, depth, kind = head
    assert depth == 8 and kind in (0, 2), head
    channels = 3 if kind == 2 else 1
    return width, height, channels, unfiltered(zlib.decompress(compressed), width * channels, channels)


def mean_difference(first, second):
    """Of two pictures of one kind, where both have pixels, out of 255."""
    width, height = min(first[0], second[0]) * first[2], min(first[1], second[1])
    total = 0
    for row in range(0, height, 4):
        a, b = (picture[3][row * picture[0] * picture[2]:][:width] for picture in (first, second))
        total += sum(abs(x - y) for x, y in zip(a, b))
    return total / (width * len(range(0, height, 4)))


def unfiltered(rows, line, channels):
    before, out = bytes(line), bytearray()
    for at in range(0, len(rows), line + 1):
        kind, row = rows[at], bytearray(rows[at + 1:at + 1 + line])
        for i in range(line):
            left = row[i - channels] if i >= channels else 0
            corner = before[i - channels] if i >= channels else 0
            row[i] = (row[i] + (0, left, before[i], (left + before[i]) // 2, paeth(left, before[i], corner))[kind]) % 256
        before = bytes(row)
        out += row
    return bytes(out)


def paeth(left, above, corner):
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def terminal():
    """The two ends of a new terminal; the test is skipped where the machine gives none."""
    try:
        return pty.openpty()
    except OSError as error:
        raise unittest.SkipTest(f"no terminal: {error}") from error
