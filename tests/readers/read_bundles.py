#!/usr/bin/env python3
"""Packs the samples and reads the bundles with readers that nobody here wrote.

usage: read_bundles.py PROGRAM python|poi

"python" reads the ZIP file with zipfile and checks content types, relationships and names against the rules of ISO/IEC 29500-2;
"poi" reads with Apache POI and compares parts, sizes and title with what zipfile finds. Exits with 77 where Java or POI is missing.
"""

import glob
import os
import pathlib
import posixpath
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
import zipfile

TOP = pathlib.Path(__file__).parents[2]
NS = "{http://schemas.openxmlformats.org/package/2006/"
SEGMENT = re.compile(r"([A-Za-z0-9._~!$&'()*+,;=:@-]|%[0-9A-F]{2})+")
SKIPPED = 77


def pack_samples(program, directory):
    subprocess.run([program, "run", "samples/build_samples.js", "samples", directory], cwd=TOP, check=True, stdout=subprocess.DEVNULL)
    bundles = sorted(glob.glob(f"{directory}/*.kvbdl.zip") + glob.glob(f"{directory}/*.kvexs") + glob.glob(f"{directory}/*.schematics.zip"))
    assert len(bundles) >= 14, bundles
    return bundles


class Package:
    def __init__(self, path):
        self.zip = zipfile.ZipFile(path)
        assert self.zip.testzip() is None
        self.names = self.zip.namelist()
        types = ElementTree.fromstring(self.zip.read("[Content_Types].xml"))
        self.defaults = {e.get("Extension").lower(): e.get("ContentType") for e in types.iter(NS + "content-types}Default")}
        self.overrides = {e.get("PartName").lower(): e.get("ContentType") for e in types.iter(NS + "content-types}Override")}
        self.parts = [n for n in self.names if n != "[Content_Types].xml" and not n.endswith(".rels")]

    def type_of(self, item):
        return self.overrides.get("/" + item.lower()) or self.defaults.get(item.rsplit(".", 1)[-1].lower())

    def relationships(self, item):
        root = ElementTree.fromstring(self.zip.read(item))
        assert root.tag == NS + "relationships}Relationships"
        return root.findall(NS + "relationships}Relationship")

    def title(self):
        core = [n for n in self.names if self.type_of(n) == "application/vnd.openxmlformats-package.core-properties+xml"]
        title = ElementTree.fromstring(self.zip.read(core[0])).find("{http://purl.org/dc/elements/1.1/}title") if core else None
        return "" if title is None else title.text

    def check(self):
        assert self.names[0] == "[Content_Types].xml"
        assert len({n.lower() for n in self.names}) == len(self.names)
        for item in self.names[1:]:
            assert item.isascii() and all(SEGMENT.fullmatch(s) and not s.endswith(".") for s in item.split("/")), item
            assert self.type_of(item), item
        for item in (n for n in self.names if n.endswith(".rels")):
            self.check_relationships(item)

    def check_relationships(self, item):
        source = posixpath.dirname(posixpath.dirname(item))
        ids = [r.get("Id") for r in self.relationships(item)]
        assert len(set(ids)) == len(ids), item
        for relationship in self.relationships(item):
            assert relationship.get("TargetMode", "Internal") == "Internal"
            target = posixpath.normpath(posixpath.join("/", source, relationship.get("Target")))
            assert target[1:] in self.parts, (item, target)


def expected_of_poi(path):
    package = Package(path)
    lines = [f"title {package.title()}", f"relationships {len(package.relationships('_rels/.rels'))}"]
    return lines + sorted(f"part /{n} {package.type_of(n)} {package.zip.getinfo(n).file_size}" for n in package.parts if n != "docProps/core.xml")


def readable_by_poi(path):
    """POI 4.0 decodes a part's name once too often when it looks for its relationships, which no encoded character survives."""
    return not any("%" in name for name in Package(path).names)


def read_with_poi(bundles):
    bundles = [bundle for bundle in bundles if readable_by_poi(bundle)]
    jars = [f"/usr/share/java/{name}.jar" for name in ("poi", "poi-ooxml", "poi-ooxml-schemas", "commons-compress", "commons-collections4",
                                                       "xmlbeans", "commons-codec", "commons-math3")]
    if not shutil.which("java") or not os.path.exists(jars[1]):
        print("Java or Apache POI is not installed: skipped")
        sys.exit(SKIPPED)
    result = subprocess.run(["java", "-cp", ":".join(jars), str(TOP / "tests/readers/ReadPackage.java"), *bundles], text=True,
                            capture_output=True, encoding="utf-8", env=dict(os.environ, JAVA_TOOL_OPTIONS="-Dfile.encoding=UTF-8"), check=False)
    assert result.returncode == 0, result.stderr
    expected = [line for bundle in bundles for line in expected_of_poi(bundle)]
    found = result.stdout.splitlines()
    assert found == expected, [pair for pair in zip(found, expected) if pair[0] != pair[1]][:5]


def main(program, reader):
    with tempfile.TemporaryDirectory() as directory:
        bundles = pack_samples(program, directory)
        if reader == "poi":
            read_with_poi(bundles)
        else:
            for bundle in bundles:
                Package(bundle).check()
    print(f"{len(bundles)} bundles read")


if __name__ == "__main__":
    main(*sys.argv[1:])
