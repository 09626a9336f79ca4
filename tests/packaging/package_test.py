#!/usr/bin/env python3
"""The Debian package: made of what is built, installed into an empty system of the test's own, started
there, and removed again. Libraries and desktop are those of this machine.
"""

import argparse
import contextlib
import gzip
import json
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve()
ROOT = HERE.parents[2]
sys.path.insert(0, str(HERE.parents[1] / "support"))
from desktop import Desktop, end_group, wait_until  # noqa: E402

MIDDLE_OF_SIDEBAR = 119  # from the window's left

OPTIONS = None
SCRATCH = None
PACKAGE = None


def setUpModule():
    global SCRATCH, PACKAGE
    SCRATCH = tempfile.TemporaryDirectory(prefix="tarnwick-package-")
    folder = pathlib.Path(SCRATCH.name).resolve()
    run([OPTIONS.cpack, "-G", "DEB", "-B", folder / "made", "-D",
         "CPACK_DEBIAN_COMPRESSION_TYPE=gzip"], cwd=OPTIONS.build)
    (PACKAGE,) = (folder / "made").glob("*.deb")


def tearDownModule():
    SCRATCH.cleanup()


def run(command, **options):
    ran = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, text=True, **options)
    if ran.returncode != 0:
        raise AssertionError(f"{command}: {ran.stdout}")
    return ran.stdout


def field(name):
    return run(["dpkg-deb", "--field", PACKAGE, name]).strip()


class System:
    """An empty system with nothing but the lists of a package manager."""

    def __init__(self, folder):
        self.root = folder / "system"
        lists = self.root / "var/lib/dpkg"
        for name in ("info", "updates", "triggers", "parts"):
            (lists / name).mkdir(parents=True)
        for name in ("status", "available"):
            (lists / name).touch()

    def dpkg(self, *arguments):
        as_root = [] if os.geteuid() == 0 else ["unshare", "--map-root-user"]
        return run([*as_root, "dpkg", f"--root={self.root}", f"--log={self.root}/var/dpkg.log",
                    "--force-depends", *arguments],
                   env={**os.environ, "PATH": os.environ["PATH"] + ":/usr/sbin:/sbin"})

    def files(self):
        return sorted(str(path.relative_to(self.root)) for path in self.root.rglob("*")
                      if path.relative_to(self.root).parts[0] != "var")


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(SCRATCH.name).resolve()
        cls.system = System(cls.folder)
        cls.system.dpkg("--install", PACKAGE)
        cls.home = cls.folder / "home"
        run([OPTIONS.build / "tools/demo_library", "--tracks", "120", "--seed", "5",
             "--out", cls.home])

    def usr(self, path):
        return self.system.root / "usr" / path

    def environment(self):
        return {**os.environ, "HOME": str(self.home), "LC_ALL": "C.UTF-8", "TZ": "UTC",
                "XDG_DATA_HOME": str(self.folder / "data")}

    # What is told of it.

    def test_it_tells_what_it_is(self):
        self.assertEqual(field("Package"), "tarnwick")
        self.assertEqual(field("Version"), OPTIONS.version)
        self.assertEqual(field("Architecture"), run(["dpkg", "--print-architecture"]).strip())

    def test_it_runs_nothing_when_it_is_installed_or_removed(self):
        control = self.folder / "control"
        run(["dpkg-deb", "--control", PACKAGE, control])
        self.assertEqual(sorted(file.name for file in control.iterdir()), ["control", "md5sums"])

    def test_it_depends_on_what_is_linked_and_on_what_is_imported(self):
        depends = set(re.findall(r"[\w.+-]+", re.sub(r"\([^)]*\)", "", field("Depends"))))
        self.assertLessEqual({"libc6", "libqt6core6", "libqt6quick6", "libqt6svg6", "libsqlite3-0",
                              "libqt6network6"}, depends)
        imported = set()
        for source in (ROOT / "src").rglob("*.qml"):
            imported |= set(re.findall(r"^import (Qt[\w.]*)", source.read_text(encoding="utf-8"),
                                       re.M))
        self.assertIn("QtQuick", imported)
        modules = {"qml6-module-" + name.lower().replace(".", "-") for name in imported}
        self.assertLessEqual(modules, depends)
        # Dialogs of Qt's own list folders by a module that their package doesn't ask for.
        self.assertIn("qml6-module-qt-labs-folderlistmodel", depends)

    def test_it_needs_nothing_to_build(self):
        self.assertFalse([name for name in re.findall(r"[\w.+-]+", field("Depends"))
                          if name.endswith("-dev") or "test" in name])

    # What lies where.

    def test_programs_and_what_desktops_look_for_are_there(self):
        for path in ("bin/tarnwick", "bin/tarnwick-cli", "lib/tarnwick/modules/tarnwick_http.so",
                     "share/applications/tarnwick.desktop",
                     "share/icons/hicolor/scalable/apps/tarnwick.svg",
                     "share/metainfo/org.tarnwick.tarnwick.metainfo.xml",
                     "share/doc/tarnwick/copyright", "share/tarnwick/guide/index.html"):
            self.assertTrue(self.usr(path).is_file(), path)
        self.assertFalse([file for file in self.system.files()
                          if file != "usr" and not file.startswith("usr/")])

    def test_icons_are_of_the_size_of_their_folder(self):
        sizes = []
        for icon in sorted(self.usr("share/icons/hicolor").glob("*x*/apps/tarnwick.png")):
            head = icon.read_bytes()[:24]
            self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n")
            width, height = struct.unpack(">II", head[16:])
            self.assertEqual(f"{width}x{height}", icon.parents[1].name)
            sizes.append(width)
        self.assertLessEqual({16, 32, 48, 128, 256, 512}, set(sizes))

    def test_packed_pages_are_those_of_the_sources_and_bear_no_date(self):
        pages = {"share/man/man1/tarnwick.1.gz": "packaging/man/tarnwick.1",
                 "share/man/man1/tarnwick-cli.1.gz": "packaging/man/tarnwick-cli.1",
                 "share/doc/tarnwick/changelog.gz": "packaging/linux/changelog"}
        for packed, source in pages.items():
            content = self.usr(packed).read_bytes()
            self.assertEqual(gzip.decompress(content), (ROOT / source).read_bytes())
            self.assertEqual(content[4:8], b"\0\0\0\0", packed)

    def test_completions_are_those_of_the_program(self):
        for shell, path in (("bash", "bash-completion/completions/tarnwick-cli"),
                            ("zsh", "zsh/vendor-completions/_tarnwick-cli")):
            self.assertEqual(self.usr(f"share/{path}").read_text(encoding="utf-8"),
                             run([OPTIONS.build / "tools/completions", shell]))

    def test_programs_carry_no_path_of_the_build(self):
        for path in ("bin/tarnwick", "bin/tarnwick-cli", "lib/tarnwick/modules/tarnwick_http.so"):
            dynamic = run(["readelf", "--dynamic", self.usr(path)])
            self.assertNotRegex(dynamic, "RPATH|RUNPATH")
            self.assertIn("libQt6Core.so.6", dynamic)

    def test_programs_and_module_are_hardened(self):
        if OPTIONS.hardened == "OFF":
            self.skipTest("this build is not what people run")
        run([ROOT / "scripts/checks/hardened", self.usr("bin/tarnwick"), self.usr("bin/tarnwick-cli"),
             self.usr("lib/tarnwick/modules/tarnwick_http.so")])

    def test_nothing_but_the_owner_may_write(self):
        listing = run(["dpkg-deb", "--contents", PACKAGE])
        for line in listing.splitlines():
            mode, owner = line.split()[:2]
            self.assertEqual(owner, "root/root", line)
            self.assertIn(mode, ("drwxr-xr-x", "-rw-r--r--", "-rwxr-xr-x"), line)

    # That it runs.

    def test_the_command_line_runs_from_where_it_is_installed(self):
        version = run([self.usr("bin/tarnwick-cli"), "--version"], env=self.environment())
        self.assertIn(OPTIONS.version, version)
        scan = json.loads(run([self.usr("bin/tarnwick-cli"), "--json", "scan"],
                              env=self.environment()))
        self.assertEqual(scan["total"], 120)

    def test_the_part_that_talks_http_is_found(self):
        with contextlib.ExitStack() as stack:
            server = subprocess.Popen(
                [sys.executable, "-B", ROOT / "tools/signal_server/signal_server.py"],
                stdout=subprocess.PIPE, text=True, start_new_session=True)
            stack.callback(server.stdout.close)
            stack.callback(end_group, server)
            address = server.stdout.readline().split()[-1]
            run([self.usr("bin/tarnwick-cli"), "signal", "set", "--server", address],
                env=self.environment())
            answer = json.loads(run([self.usr("bin/tarnwick-cli"), "--json", "signal", "landing"],
                                    env=self.environment()))
            self.assertIsNone(answer["error"])
            self.assertIsNotNone(answer["poolStats"])

    def test_the_window_opens_and_scores_a_library(self):
        with Desktop() as desktop, desktop.start(
                [self.usr("bin/tarnwick")], HOME=self.home, TARNWICK_AUTOSCAN="1",
                XDG_DATA_HOME=self.folder / "window-data") as program:
            program.wait_for("The six dimensions", "heading")
            program.take_the_keyboard()
            program.key("ctrl+2")
            program.wait_for("Do this first", "heading")
            program.key("ctrl+q")
            self.assertEqual(program.wait_for_end(), 0)
            self.assertEqual(program.output(), "")

    def test_a_new_user_gets_from_the_first_scan_to_the_first_undone_repair(self):
        home = self.folder / "new-home"
        run([OPTIONS.build / "tools/demo_library", "--tracks", "120", "--seed", "8",
             "--out", home])

        def files():
            return {str(path.relative_to(home)): path.stat().st_size
                    for path in home.rglob("*") if path.is_file()}

        before = files()
        with Desktop() as desktop, desktop.start(
                [self.usr("bin/tarnwick")], HOME=home,
                XDG_DATA_HOME=self.folder / "new-user") as program:
            program.press("Scan")
            program.wait_for("The six dimensions", "heading")
            program.take_the_keyboard()
            program.key("ctrl+3")
            program.press("Take snapshot")
            program.wait_for("1 taken")
            program.key("ctrl+5")
            program.press("Keep 1, hold the rest")
            wait_until(lambda: files().keys() < before.keys(), "a copy to leave")
            program.scroll_to("Change log", MIDDLE_OF_SIDEBAR)
            program.press("Change log")
            program.press("Undo everything")
            wait_until(lambda: files() == before, "the copy to come back")
            program.wait_for("Undone")
            self.assertEqual(program.output(), "")

    def test_the_window_opens_without_a_display(self):
        process = subprocess.Popen(
            [self.usr("bin/tarnwick")], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, start_new_session=True,
            env={**self.environment(), "QT_QPA_PLATFORM": "offscreen", "TARNWICK_AUTOSCAN": "1",
                 "TARNWICK_SNAPSHOT": "1", "XDG_DATA_HOME": str(self.folder / "offscreen")})
        with contextlib.ExitStack() as stack:
            stack.callback(process.stdout.close)
            stack.callback(end_group, process)
            snapshots = self.folder / "offscreen/Tarnwick/Snapshots"
            for _ in range(300):
                if list(snapshots.glob("snap-*/meta.json")):
                    return
                with contextlib.suppress(subprocess.TimeoutExpired):
                    process.wait(0.2)
                    break
            self.fail(f"no scan was made: {process.stdout.read().decode()}")

    # That it goes.

    def test_removed_it_leaves_no_trace(self):
        other = System(self.folder / "other")
        other.dpkg("--install", PACKAGE)
        self.assertIn("usr/bin/tarnwick", other.files())
        other.dpkg("--purge", "tarnwick")
        self.assertEqual(other.files(), [])
        status = (other.root / "var/lib/dpkg/status").read_text(encoding="utf-8")
        self.assertNotIn("tarnwick", status)
        shutil.rmtree(other.root)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--cpack", required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--hardened", choices=["ON", "OFF"], required=True)
    OPTIONS, rest = parser.parse_known_args()
    OPTIONS.build = OPTIONS.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
