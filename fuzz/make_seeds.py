#!/usr/bin/env python3
"""Lays out the seeds of the fuzz targets, one directory for each.

usage: make_seeds.py BROKEN FINDINGS OUTPUT

Archives, packages and unpacking start from the corpus of broken packages, the readers of markup from what stands in its
entries, the others from short texts. What the fuzzer has found comes along. Files are named by their contents, so that
none is there twice.
"""

import hashlib
import pathlib
import random
import shutil
import sys
import zipfile
import zlib

MARKUP = {"content_types": lambda name: name.lower() == "[content_types].xml", "relationships": lambda name: name.lower().endswith(".rels"),
          "core_properties": lambda name: name.lower().startswith(("docprops/", "metadata/", "core.xml"))}

DATES = ["", "2020", "2020-01", "2020-02-29", "2020-01-01T00:00Z", "2020-01-01T10:00:00", "2020-01-01T10:00:00.123456789Z", "-0044-03-15", "12345-01-01T00:00:00Z",
         "2020-01-01T24:00:00+14:00", "2020-01-01T10:00:00-11:30", " 2020-01-01\n", "0000", "tomorrow", "2021-02-29", "2014aaa-10-28T11:34:00Z"]

NAMES = ["/content/a.txt", "/a/../b", "/a/./b", "//a", "/a.", "/...", "/%41", "/%2F", "/%5c", "/a%20b", "/\u00e4", "/_rels/.rels", "/a/_rels/b.rels", "/[Content_Types].xml",
         "a\\b\\c.txt", "./a", "../a", "C:\\a\\b", "\\\\server\\share", "50% gr\u00f6\u00dfer.txt", "a.xml/[0].piece", "a.xml/[12].last.piece", "x?y#z", "http://x.example/a",
         "mailto:one@", "file:///etc/passwd", "a b", "", "/", "#x", "%", "%zz", "/a%00b", "/%FF", "\U0001F600", "n" * 300]

PATTERNS = ["", "a", "low", "(a+)+$", "(a|a)*b", "(a*)*b", "^(([a-z])+.)+[A-Z]([a-z])+$", "[", "(", "(?R)", "\\b", "(?<=a)b", "\u00fc", "x{0,1000}{0,1000}", "(?i)RC",
            "((a{1,100}){1,100}){1,100}", ".*.*.*.*.*=", "\\p{L}+", "(?(?=a)b|c)", "(*COMMIT)a", "\\"]


def entries(path):
    """Names and bytes of the entries that can be read; broken archives give those that they have."""
    try:
        with zipfile.ZipFile(path) as archive:
            for info in archive.infolist():
                try:
                    yield info.filename, archive.read(info)
                except (zipfile.BadZipFile, zlib.error, EOFError, OSError, RuntimeError, NotImplementedError, ValueError):
                    continue
    except (zipfile.BadZipFile, OSError, NotImplementedError, ValueError, UnicodeError):
        return


def calls(number):
    """Choices for a run of calls; a third of them begins with functions that take few arguments."""
    choices = random.Random(number)
    return bytes(choices.randrange(256) for _ in range(20 + 10 * (number % 10)))


def main(broken, findings, output):
    shutil.rmtree(output, ignore_errors=True)

    def add(target, data):
        directory = output / target
        directory.mkdir(parents=True, exist_ok=True)
        (directory / hashlib.sha1(data).hexdigest()).write_bytes(data)

    for path in sorted(broken.glob("*.zip")):
        data = path.read_bytes()
        for target in ("archive", "package", "unpack"):
            add(target, data)
        for name, content in entries(path):
            for target, is_wanted in MARKUP.items():
                if is_wanted(name):
                    add(target, content)
    for target, texts in (("dates", DATES), ("part_names", NAMES), ("pattern", PATTERNS)):
        for text in texts:
            add(target, text.encode())
    for number in range(60):
        add("script", calls(number))
    for path in sorted(findings.glob("*/*")):
        add(path.parent.name, path.read_bytes())


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:4]))
