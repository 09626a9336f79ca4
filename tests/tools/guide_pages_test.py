#!/usr/bin/env python3
"""The guide's pages as they are laid out for a browser, and what stops that."""

import html.parser
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tools/guide/guide_pages.py"


class Reader(html.parser.HTMLParser):
    """Checks that tags close in order, and gathers what pages lead to."""

    def __init__(self, text):
        super().__init__()
        self.open, self.links, self.pictures, self.ids = [], [], [], set()
        self.feed(text)
        assert not self.open, self.open

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag not in ("meta", "img"):
            self.open.append(tag)
        if tag == "a":
            self.links.append(attributes["href"])
        if tag == "img":
            self.pictures.append((attributes["src"], attributes["alt"]))
        self.ids.add(attributes.get("id"))

    def handle_endtag(self, tag):
        assert self.open.pop() == tag, tag


class GuidePagesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarnwick-guide-")
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("README.md", "# Guide\n\n- [Repair](repair.md)\n")
        self.write("repair.md", "# Repair\n\n## Missing files\n\nText.\n")

    def write(self, name, text):
        file = self.root / "guide" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def lay_out(self, guide=None):
        return subprocess.run([sys.executable, "-B", SCRIPT, guide or self.root / "guide",
                               self.root / "out"], capture_output=True, text=True, timeout=60)

    def page(self, name="repair.html"):
        ran = self.lay_out()
        self.assertEqual((ran.stdout + ran.stderr, ran.returncode), ("", 0))
        return (self.root / "out" / name).read_text(encoding="utf-8")

    def body(self, markdown):
        self.write("repair.md", f"# Repair\n\n{markdown}\n")
        page = self.page()
        Reader(page)
        return page.split("<main>\n", 1)[1].split("\n</main>")[0].split("</h1>\n", 1)[1]

    def test_every_form_becomes_its_html(self):
        for markdown, expected in (
            ("## Lost cues", '<h2 id="lost-cues">Lost cues</h2>'),
            ("One\nline.", "<p>One line.</p>"),
            ("- one\n- two\n  on", "<ul>\n<li>one</li>\n<li>two on</li>\n</ul>"),
            ("1. one\n2. two", "<ol>\n<li>one</li>\n<li>two</li>\n</ol>"),
            ("A **bold** `code<b>` & more", "<p>A <strong>bold</strong> <code>code&lt;b&gt;</code>"
                                           " &amp; more</p>"),
            ("[The start](README.md)", '<p><a href="index.html">The start</a></p>'),
            ("| a | b |\n|---|---|\n| 1 | **2** |",
             "<table>\n<tr><th>a</th><th>b</th></tr>\n"
             "<tr><td>1</td><td><strong>2</strong></td></tr>\n</table>"),
        ):
            with self.subTest(markdown):
                self.assertEqual(self.body(markdown), expected)

    def test_a_picture_goes_along(self):
        self.write("pictures/score.png", "png")
        self.assertEqual(self.body("![The score](pictures/score.png)"),
                         '<img src="pictures/score.png" alt="The score">')
        self.assertEqual((self.root / "out/pictures/score.png").read_text(), "png")

    def test_each_page_names_the_others_and_marks_itself(self):
        page = self.page()
        self.assertIn('<a href="index.html">Guide</a>\n'
                      '<a href="repair.html" aria-current="page">Repair</a>', page)

    def test_what_is_wrong_is_named_with_its_place(self):
        for markdown, fault in (
            ("```\ncode\n```", "repair.md:3: not known"),
            ("[Gone](gone.md)", "repair.md:3: no page is called gone.md"),
            ("[Gone](README.md#nowhere)", "README.md has no heading “nowhere”"),
            ("![](pictures/score.png)", "a picture without words"),
            ("![Score](pictures/none.png)", "a picture without words, or none"),
            ("a * star", "a star or a backtick"),
            ("## Head\ntext", "an empty line is missing"),
            ("| a |\n| 1 |", "a table has a head"),
            ("| a | b |\n|---|---|\n| 1 |", "differ in length"),
            ("Text.", "no page shows score.png"),
        ):
            with self.subTest(markdown):
                self.write("pictures/score.png", "png")
                self.write("repair.md", f"# Repair\n\n{markdown}\n")
                ran = self.lay_out()
                self.assertIn(fault, ran.stderr)
                self.assertEqual(ran.returncode, 1)

    def test_a_page_that_no_list_names_is_a_fault(self):
        self.write("lost.md", "# Lost\n")
        self.assertIn("no list names lost.md", self.lay_out().stderr)

    def test_the_guide_of_this_house_holds_together(self):
        ran = self.lay_out(ROOT / "docs/guide")
        self.assertEqual((ran.stdout + ran.stderr, ran.returncode), ("", 0))
        pages = {file.name: Reader(file.read_text(encoding="utf-8"))
                 for file in (self.root / "out").glob("*.html")}
        self.assertGreater(len(pages), 5)
        for name, page in pages.items():
            for link in page.links:
                file, _, fragment = link.partition("#")
                self.assertIn(file or name, pages)
                self.assertTrue(not fragment or fragment in pages[file or name].ids, link)
        for picture in (self.root / "out/pictures").glob("*.png"):
            self.assertLess(picture.stat().st_size, 150_000, picture.name)


if __name__ == "__main__":
    unittest.main()
