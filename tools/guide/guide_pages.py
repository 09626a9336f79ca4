#!/usr/bin/env python3
"""Lays the user's guide out as HTML pages that a browser opens from disk:

    guide_pages.py docs/guide FOLDER

README.md becomes index.html; the links of its lists are the pages, in their order, and stand at the
side of each. What the guide's Markdown may hold is what this file knows: headings, paragraphs,
lists, tables, pictures, links, **bold** and `code`. Anything else, a link that leads nowhere, a page
that no list names, a picture without words or one that no page shows ends the run with its place.
"""

import html
import re
import shutil
import sys
from pathlib import Path

LINK = re.compile(r"\[([^\]]+)\]\(([^)\s]+)\)")
PICTURE = re.compile(r"^!\[([^\]]*)\]\(([^)\s]+)\)$")
ITEM = re.compile(r"^(-|\d+\.) +(.*)$")
HEADING = re.compile(r"^(#{1,3}) +(.*)$")
UNKNOWN = re.compile(r"^(>|```|~~~|\* |\+ |#{4,}|<|---|===| {4})")

STYLE = """
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0; background: #f3f2f2; color: #201e1d;
  font: 16px/1.55 Inter, "Noto Sans", system-ui, sans-serif; }
.sheet { display: grid; grid-template-columns: 230px minmax(0, 46rem); gap: 48px;
  max-width: 72rem; margin: 0 auto; padding: 40px 28px 80px; }
nav { font-size: 14px; }
nav strong { display: block; margin-bottom: 12px; font-size: 17px; }
nav a { display: block; padding: 4px 10px; margin-left: -10px; border-radius: 9px;
  color: #444141; text-decoration: none; }
nav a:hover { background: #eae7e7; }
nav a[aria-current] { background: #dd2b0f; color: #fff; font-weight: 600; }
h1 { margin: 0 0 16px; font-size: 30px; line-height: 1.2; }
h2 { margin: 40px 0 8px; font-size: 20px; }
h3 { margin: 28px 0 4px; font-size: 16px; }
p, ul, ol { margin: 10px 0; }
li { margin: 4px 0; }
a { color: #ae1800; }
code { padding: 1px 5px; border-radius: 5px; background: #eae7e7; font-size: 14px; }
img { display: block; width: 100%; height: auto; margin: 20px 0; border: 1px solid #d7d3d3;
  border-radius: 12px; }
table { width: 100%; margin: 14px 0; border-collapse: collapse; background: #fff;
  border-radius: 9px; font-size: 15px; }
th, td { padding: 8px 12px; text-align: left; vertical-align: top;
  border-bottom: 1px solid #eae7e7; }
th { font-size: 13px; color: #605d5d; }
@media (max-width: 760px) { .sheet { grid-template-columns: 1fr; gap: 20px; } }
@media print { nav { display: none; } .sheet { display: block; } }
"""


class GuideError(Exception):
    pass


def anchor(title):
    """The name by which a heading is linked to, here as on the pages of a code host."""
    return re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")


class Page:
    def __init__(self, file):
        self.file = file
        self.lines = file.read_text(encoding="utf-8").splitlines()
        self.headings = [match[2] for line in self.lines if (match := HEADING.match(line))]
        if not self.lines or not self.lines[0].startswith("# "):
            raise GuideError(f"{file}:1: a page begins with its title")
        self.title = self.lines[0][2:].strip()
        self.anchors = {anchor(heading) for heading in self.headings}
        self.name = "index.html" if file.name == "README.md" else f"{file.stem}.html"


class Guide:
    def __init__(self, folder):
        self.folder = folder
        self.pages = {file.name: Page(file) for file in sorted(folder.glob("*.md"))}
        self.pictures = set()
        if "README.md" not in self.pages:
            raise GuideError(f"{folder}: README.md is missing")
        first = self.pages["README.md"]
        listed = [link[2] for line in first.lines if ITEM.match(line)
                  for link in LINK.finditer(line) if link[2] in self.pages]
        self.order = ["README.md", *dict.fromkeys(listed)]
        if unlisted := self.pages.keys() - set(self.order):
            raise GuideError(f"{first.file}: no list names {', '.join(sorted(unlisted))}")

    def write(self, target):
        written = {self.pages[name].name: self.layout(self.pages[name]) for name in self.order}
        unused = {file.name for file in self.folder.glob("pictures/*.png")} - self.pictures
        if unused:
            raise GuideError(f"no page shows {', '.join(sorted(unused))}")
        if target.exists():
            shutil.rmtree(target)
        (target / "pictures").mkdir(parents=True)
        for name in sorted(self.pictures):
            shutil.copyfile(self.folder / "pictures" / name, target / "pictures" / name)
        # The first page comes last: where it stands, all of them stand.
        for name in sorted(written, key=lambda name: name == "index.html"):
            (target / name).write_text(written[name], encoding="utf-8")

    def layout(self, page):
        here = ' aria-current="page"'
        links = "\n".join(
            f'<a href="{each.name}"{here if each is page else ""}>{html.escape(each.title)}</a>'
            for each in (self.pages[name] for name in self.order))
        body = "\n".join(self.blocks(page))
        return (f'<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n'
                f'<meta name="viewport" content="width=device-width">\n'
                f"<title>{html.escape(page.title)} · Tarnwick</title>\n"
                f"<style>{STYLE}</style>\n</head>\n<body>\n<div class=\"sheet\">\n"
                f'<nav aria-label="Pages"><strong>Tarnwick</strong>\n{links}\n</nav>\n'
                f"<main>\n{body}\n</main>\n</div>\n</body>\n</html>\n")

    def blocks(self, page):
        """The HTML of each block: lines that no empty line parts."""
        block, start = [], 1
        for number, line in enumerate([*page.lines, ""], 1):
            if line.strip():
                start = start if block else number
                block.append(line)
            elif block:
                yield self.block(page, block, f"{page.file}:{start}")
                block = []

    def block(self, page, lines, place):
        for line in lines:
            if UNKNOWN.match(line):
                raise GuideError(f"{place}: not known in a guide: {line}")
        first = lines[0]
        if match := HEADING.match(first):
            if len(lines) > 1:
                raise GuideError(f"{place}: an empty line is missing behind the heading")
            size = len(match[1])
            words = self.words(page, match[2], place)
            return f'<h{size} id="{anchor(match[2])}">{words}</h{size}>'
        if match := PICTURE.match(first):
            return self.picture(match[1], match[2], place)
        if ITEM.match(first):
            return self.list(page, lines, place)
        if first.startswith("|"):
            return self.table(page, lines, place)
        return f"<p>{self.words(page, ' '.join(lines), place)}</p>"

    def picture(self, words, path, place):
        file = self.folder / path
        if not words or not file.is_file() or file.parent != self.folder / "pictures":
            raise GuideError(f"{place}: a picture without words, or none of pictures/: {path}")
        self.pictures.add(file.name)
        return f'<img src="{html.escape(path)}" alt="{html.escape(words)}">'

    def list(self, page, lines, place):
        items = []
        for line in lines:
            if match := ITEM.match(line):
                items.append(match[2])
            else:
                items[-1] += " " + line.strip()
        kind = "ul" if lines[0].startswith("-") else "ol"
        rows = "\n".join(f"<li>{self.words(page, item, place)}</li>" for item in items)
        return f"<{kind}>\n{rows}\n</{kind}>"

    def table(self, page, lines, place):
        rows = [[cell.strip() for cell in line.strip().strip("|").split("|")] for line in lines]
        if len(rows) < 3 or not all(re.fullmatch(r":?-+:?", cell) for cell in rows[1]):
            raise GuideError(f"{place}: a table has a head, a line of dashes, and rows")
        if len({len(row) for row in rows}) != 1:
            raise GuideError(f"{place}: the rows of the table differ in length")

        def row(cells, tag):
            return "<tr>" + "".join(f"<{tag}>{self.words(page, cell, place)}</{tag}>"
                                    for cell in cells) + "</tr>"

        return "\n".join(["<table>", row(rows[0], "th"),
                          *(row(cells, "td") for cells in rows[2:]), "</table>"])

    def words(self, page, text, place):
        parts = re.split(r"(`[^`]+`)", text)
        return "".join(f"<code>{html.escape(part[1:-1])}</code>" if part.startswith("`") else
                       self.plain(page, part, place) for part in parts)

    def plain(self, page, text, place):
        escaped = html.escape(text, quote=False)
        escaped = re.sub(r"\*\*([^*]+)\*\*", r"<strong>\1</strong>", escaped)
        if "*" in escaped or "`" in escaped:
            raise GuideError(f"{place}: a star or a backtick without its partner: {text}")
        return LINK.sub(lambda link: f'<a href="{self.target(page, link[2], place)}">{link[1]}</a>',
                        escaped)

    def target(self, page, link, place):
        name, _, fragment = link.partition("#")
        there = self.pages.get(name) if name else page
        if there is None:
            raise GuideError(f"{place}: no page is called {name}")
        if fragment and fragment not in there.anchors:
            raise GuideError(f"{place}: {there.file.name} has no heading “{fragment}”")
        return html.escape((there.name if name else "") + (f"#{fragment}" if fragment else ""))


def main():
    if len(sys.argv) != 3:
        print("usage: guide_pages.py GUIDE FOLDER", file=sys.stderr)
        return 2
    try:
        Guide(Path(sys.argv[1])).write(Path(sys.argv[2]))
    except GuideError as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
