"""What the build knows of our sources, for the checks that read them with its flags."""

import hashlib
import json
import re
import shlex
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
COMPILER = re.compile(r"(^|/)[\w.-]*(c\+\+|g\+\+)[\w.-]*$")


def compiled_sources(build, root, folders):
    """Each source below these folders with its compiler and the words behind it."""
    places = [root / folder for folder in folders]
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        file = Path(entry["file"])
        if any(place in file.parents for place in places):
            words = shlex.split(entry["command"])
            start = next(i for i, word in enumerate(words) if COMPILER.search(word))
            yield file, words[start:]


def kept_flags(words, kept):
    """Those words that match, and the folders of other people's headers."""
    flags = []
    for before, word in zip(words, words[1:]):
        if before == "-isystem":
            flags += [before, word]
        elif kept.match(word):
            flags.append(word)
    return flags


def digest(file, words, src):
    """One digest of the words, the file and every header of ours that it leads to."""
    pending, seen = [file], set()
    whole = hashlib.sha256("\0".join(words).encode())
    while pending:
        file = pending.pop()
        if file in seen or not file.exists():
            continue
        seen.add(file)
        text = file.read_text(encoding="utf-8")
        whole.update(text.encode())
        names = sorted(INCLUDE.findall(text), reverse=True)
        pending += [place / name for name in names for place in (src, file.parent)]
    return whole.hexdigest()
