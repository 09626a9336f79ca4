#!/usr/bin/env python3
"""What the dump tool makes of files whose bytes are spelled out here."""

import argparse
import importlib.util
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = None  # the module under test


def record(tag, payload):
    return tag + len(payload).to_bytes(4, "big") + payload


def text(tag, value):
    return record(tag, value.encode("utf-16-be"))


class SeratoDumpTest(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def write(self, name, data):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        return path

    def dump(self, path, tags=False):
        return TOOL.dumped([path], tags).splitlines()

    def test_a_crate_of_the_format_page(self):
        data = bytes.fromhex(
            "7672736e 00000038"
            "0031 002e 0030 002f"
            "0053 0065 0072 0061 0074 006f 0020"
            "0053 0063 0072 0061 0074 0063 0068"
            "004c 0069 0076 0065 0020 0043 0072 0061 0074 0065"
            "6f74726b 00000012 7074726b 0000000a 0061 002e 006d 0070 0033")
        self.assertEqual(self.dump(self.write("Mix.crate", data)), [
            'Mix.crate',
            '  vrsn  "1.0/Serato ScratchLive Crate"',
            '  otrk',
            '    ptrk  "a.mp3"',
        ])

    def test_columns_and_sort_order_of_a_crate(self):
        data = record(b"osrt", text(b"tvcn", "bpm") + record(b"brev", b"\1"))
        self.assertEqual(self.dump(self.write("a.CRATE", data)),
                         ['a.CRATE', '  osrt', '    tvcn  "bpm"', '    brev  true'])

    def test_values_by_their_kind(self):
        fields = [
            (text(b"tsng", 'a "b" \u00f6 \U0001f600\n'), r'tsng  "a \"b\" ö 😀\n"'),
            (record(b"tsng", b""), 'tsng  ""'),
            (record(b"tsng", b"\0a\0"), 'tsng  "a\ufffd" (00 61 00)'),
            (record(b"tsng", b"\xd8\x00\0a"), 'tsng  "\ufffda" (d8 00 00 61)'),
            (record(b"utpc", b"\0\0\1\0"), 'utpc  256'),
            (record(b"ufsb", b"\xff" * 8), 'ufsb  18446744073709551615'),
            (record(b"utpc", b"\0\1\0"), 'utpc  00 01 00'),
            (record(b"bmis", b"\0"), 'bmis  false'),
            (record(b"bmis", b"\2"), 'bmis  02'),
            (record(b"sbav", b"\2\1"), 'sbav  02 01'),
            (record(b"sbav", b""), 'sbav  (nothing)'),
            (record(b"sbav", b"x" * 33), 'sbav  33 bytes, sha256 '),
            (record(b"\0\0\0\1", b"x"), '00 00 00 01  78'),
        ]
        for data, line in fields:
            with self.subTest(line):
                shown = self.dump(self.write("database V2", record(b"otrk", data)))
                self.assertEqual(shown[:2], ['database V2', '  otrk'])
                self.assertTrue(shown[2].startswith('    ' + line), shown[2])

    def test_damage_is_told(self):
        whole = text(b"vrsn", "1")
        for rest in (b"otrk\0\0\0", b"otrk\0\0\0\5abcd"):
            with self.subTest(rest):
                self.assertEqual(self.dump(self.write("a.crate", whole + rest)), [
                    'a.crate', '  vrsn  "1"',
                    f'  [damaged: {len(rest)} bytes from offset 10 are no record]'])

    def test_damage_inside_a_record_ends_that_record(self):
        data = record(b"otrk", text(b"ptrk", "a") + b"x") + record(b"otrk", text(b"ptrk", "b"))
        self.assertEqual(self.dump(self.write("a.crate", data)), [
            'a.crate', '  otrk', '    ptrk  "a"',
            '    [damaged: 1 bytes from offset 10 are no record]', '  otrk', '    ptrk  "b"'])

    def test_a_session(self):
        play = record(b"\0\0\0\2", "/a.mp3".encode("utf-16-be"))
        play += record(b"\0\0\0\x1c", bytes.fromhex("5ff06400")) + record(b"\0\0\0\x30", b"\7")
        data = record(b"oent", record(b"adat", play))
        self.assertEqual(self.dump(self.write("7.session", data)), [
            '7.session', '  oent', '    adat', '      2 path  "/a.mp3"',
            '      28 start  1609589760', '      48  07'])

    def test_a_tag(self):
        frames = bytes.fromhex("54495432 00000002 0000 0041")
        frames += b"TXXX" + bytes.fromhex("00000006 4000") + b"\0ab\0cd"
        frames += b"GEOB" + bytes.fromhex("00000006 0000") + b"\0\0\0N\0x"
        frames += b"PRIV" + bytes.fromhex("00000001 0000") + b"\x7f"
        data = b"ID3\3\0\0\0\0\0" + bytes([len(frames) + 3]) + frames + b"\0\0\0" + b"\xff\xfb"
        self.assertEqual(self.dump(self.write("a.mp3", data)), [
            'a.mp3', '  ID3v2.3.0  flags 00  58 bytes',
            '    TIT2  flags 0000  "A"',
            '    TXXX  flags 4000  "ab"  "cd"',
            '    GEOB  flags 0000  "N"  00 00 00 4e 00 78',
            '    PRIV  flags 0000  7f',
            '    padding  3 bytes', '  audio  ff fb'])

    def test_sizes_of_frames_by_version(self):
        frame = b"PRIV" + bytes.fromhex("00000100 0000")
        for major, length in ((3, 256), (4, 128)):
            with self.subTest(major=major):
                body = frame + b"\1" * length
                size = bytes([0, 0, len(body) >> 7, len(body) & 127])
                shown = self.dump(self.write("a.mp3", b"ID3" + bytes([major, 0, 0]) + size + body))
                self.assertTrue(shown[2].startswith(f'    PRIV  flags 0000  {length} bytes'), shown)
                self.assertEqual(shown[3:], ['  audio  (nothing)'])

    def test_tags_that_are_not_taken_apart(self):
        self.assertEqual(self.dump(self.write("a.wav", b"RIFF")),
                         ['a.wav', '  no tag', '  audio  52 49 46 46'])
        self.assertEqual(self.dump(self.write("a.mp3", b"ID3\3\0\x80\0\0\0\1x")),
                         ['a.mp3', '  ID3v2.3.0  flags 80  1 bytes', '  tag  78',
                          '  audio  (nothing)'])
        self.assertEqual(self.dump(self.write("a.mp3", b"ID3\3\0\0\0\0\0\5x"))[2],
                         '  [the tag runs past the end of the file]')
        self.assertEqual(self.dump(self.write("a.mp3", b"ID3\3\0\0\0\0\0\2xy"))[2],
                         '    [2 bytes are no frame]')

    def test_a_library(self):
        audio = self.write("music/a.mp3", b"RIFF")
        self.write("_Serato_/database V2",
                   record(b"otrk", text(b"pfil", str(audio).lstrip("/"))) +
                   record(b"otrk", text(b"pfil", "/nowhere/b.mp3")))
        self.write("_Serato_/Subcrates/b.crate", b"")
        self.write("_Serato_/Subcrates/a%%b.crate", b"")
        self.write("_Serato_/Subcrates/notes.txt", b"")
        self.write("_Serato_/History/Sessions/1.session", b"")
        database = ['database V2', '  otrk', f'    pfil  "{str(audio)[1:]}"', '  otrk',
                    '    pfil  "/nowhere/b.mp3"']
        rest = ['Subcrates/a%%b.crate', 'Subcrates/b.crate', 'History/Sessions/1.session']
        folder = self.folder / "_Serato_"
        self.assertEqual(self.dump(folder), database + rest)
        self.assertEqual(self.dump(folder, tags=True), database + rest + [
            str(audio), '  no tag', '  audio  52 49 46 46',
            '/nowhere/b.mp3', '  [No such file or directory]'])

    def test_the_command(self):
        crate = self.write("ö.crate", record(b"otrk", text(b"ptrk", "ü")))
        done = self.run_tool(crate, crate)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.decode(), 2 * 'ö.crate\n  otrk\n    ptrk  "ü"\n')
        done = self.run_tool(self.folder / "none")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout, b"")
        self.assertIn(b"no such file", done.stderr)

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, "-B", TOOL.__file__, *map(str, arguments)],
                              capture_output=True, check=False)


def load(path):
    spec = importlib.util.spec_from_file_location("serato_dump", path)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--dump", required=True)
    options, rest_of_arguments = parser.parse_known_args()
    TOOL = load(options.dump)
    unittest.main(argv=[sys.argv[0], *rest_of_arguments])
