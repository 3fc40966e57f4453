#!/usr/bin/env python3
"""A reader of bundles that knows what docs/format.md says and nothing else: not the program, not its libraries, not its sources.

usage: from_format_page.py list BARREL             the examples: title, manufacturer, keywords, documentation, primary file
       from_format_page.py unpack BUNDLE DIRECTORY  the content files of a content bundle
       from_format_page.py compare PROGRAM          packs the samples with PROGRAM and finds every design again, byte for byte
       from_format_page.py write PROGRAM            writes an example by hand, which PROGRAM unpacks and puts into a barrel
"""

import io
import pathlib
import posixpath
import subprocess
import sys
import tempfile
import urllib.parse
import xml.etree.ElementTree as ElementTree
import zipfile

TYPES = "{http://schemas.openxmlformats.org/package/2006/content-types}"
RELATIONSHIPS = "{http://schemas.openxmlformats.org/package/2006/relationships}"
BUNDLE = "{http://schemas.kelvaris.example/package/2025/bundle}"
TYPE = "http://schemas.kelvaris.example/package/2025/relationships/"
CORE_TYPE = "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties"
CORE = "{http://schemas.openxmlformats.org/package/2006/metadata/core-properties}"
DUBLIN = "{http://purl.org/dc/elements/1.1/}"


def folded(name):
    """Names that differ only in the case of ASCII letters are one name."""
    return "".join(chr(ord(letter) + 32) if "A" <= letter <= "Z" else letter for letter in name)


class Bundle:
    def __init__(self, file):
        self.zip = zipfile.ZipFile(file)
        self.entries = {folded("/" + name): name for name in self.zip.namelist()}
        types = self.xml("/[Content_Types].xml")
        self.overrides = {folded(e.get("PartName")): e.get("ContentType") for e in types.iter(TYPES + "Override")}
        self.defaults = {folded(e.get("Extension")): e.get("ContentType") for e in types.iter(TYPES + "Default")}
        self.kind, self.manufacturer = self.properties()

    def bytes(self, part):
        return self.zip.read(self.entries[folded(part)])

    def xml(self, part):
        return ElementTree.fromstring(self.bytes(part))

    def media_type(self, part):
        _, dot, extension = part.rsplit("/", 1)[1].rpartition(".")
        return self.overrides.get(folded(part)) or (self.defaults.get(folded(extension)) if dot else None)

    def is_part(self, name):
        return folded(name) in self.entries and self.media_type(name) is not None

    def targets(self, relationship_type, source="/"):
        """The parts that the relationships of a type lead to from the package or from a part."""
        directory, name = source.rsplit("/", 1)
        rels = f"{directory}/_rels/{name}.rels"
        if folded(rels) not in self.entries:
            return
        for relationship in self.xml(rels).iter(RELATIONSHIPS + "Relationship"):
            if relationship.get("Type") == relationship_type and relationship.get("TargetMode") != "External":
                reference = relationship.get("Target").partition("#")[0]
                yield posixpath.normpath(posixpath.join("/", directory, reference))

    def target(self, relationship_type):
        return next(self.targets(relationship_type), None)

    def properties(self):
        part = self.target(TYPE + "bundle/properties")
        if part is None:
            return "content", ""
        root = self.xml(part)
        return root.find(BUNDLE + "kind").text.strip(), root.findtext(BUNDLE + "manufacturer", "")

    def core(self):
        part = self.target(CORE_TYPE)
        root = self.xml(part) if part else ElementTree.Element("none")
        keywords = [keyword.strip() for keyword in root.findtext(CORE + "keywords", "").split(";")]
        return root.findtext(DUBLIN + "title", ""), root.findtext(DUBLIN + "description", ""), [k for k in keywords if k]

    def content(self):
        return list(self.targets(TYPE + "content-bundle/content"))

    def documentation(self):
        page = self.target(TYPE + "example-bundle/documentation")
        usual = [f"/content/{name}.html" for name in ("documentation", "readme", "index")]
        present = {folded(part): part for part in self.content()}
        return page or next((present[name] for name in usual if name in present), None)

    def examples(self):
        for part in self.targets(TYPE + "barrel-of-examples/example"):
            assert self.media_type(part) == "application/vnd.kelvaris.example-bundle+zip", part
            yield part, Bundle(io.BytesIO(self.bytes(part)))


def file_names(part):
    """The names of the directories and of the file."""
    decoded = [urllib.parse.unquote(segment, errors="strict") for segment in part[1:].split("/")]
    assert not any(name in (".", "..") or "/" in name or "\\" in name for name in decoded), part
    return decoded


def unpack(bundle, directory):
    for part in bundle.content():
        assert bundle.is_part(part), part
        file = pathlib.Path(directory, *file_names(part))
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(bundle.bytes(part))


def show(barrel):
    assert barrel.kind == "barrel-of-examples", barrel.kind
    for part, example in barrel.examples():
        assert example.kind == "example", part
        title, description, keywords = example.core()
        print(title, description, example.manufacturer, ", ".join(keywords), example.documentation(),
              example.target(TYPE + "example-bundle/primary-file"), sep=" | ")


def files_below(directory):
    return {str(file.relative_to(directory)): file.read_bytes() for file in pathlib.Path(directory).rglob("*") if file.is_file()}


def written_by_hand(file):
    """An example with one file, of no more than a ZIP tool and four texts."""
    def relationship(number, name, target):
        return f'<Relationship Id="r{number}" Type="{TYPE}{name}" Target="{target}"/>'
    texts = {
        "[Content_Types].xml":
            f'<Types xmlns="{TYPES[1:-1]}">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="kvsch" ContentType="application/vnd.kelvaris.schematic"/>'
            '<Override PartName="/bundle.xml" ContentType="application/vnd.kelvaris.bundle-properties+xml"/></Types>',
        "_rels/.rels":
            f'<Relationships xmlns="{RELATIONSHIPS[1:-1]}">' + relationship(1, "bundle/properties", "bundle.xml") +
            relationship(2, "content-bundle/content", "/content/50%25%20gr%C3%B6%C3%9Fer.kvsch") +
            relationship(3, "example-bundle/primary-file", "/content/50%25%20gr%C3%B6%C3%9Fer.kvsch") + "</Relationships>",
        "bundle.xml": f'<bundle xmlns="{BUNDLE[1:-1]}"><kind>example</kind></bundle>',
        "content/50%25%20gr%C3%B6%C3%9Fer.kvsch": "kvsch 1\n",
    }
    with zipfile.ZipFile(file, "w") as package:
        for name, text in texts.items():
            package.writestr(name, text)


def write(program):
    with tempfile.TemporaryDirectory() as directory:
        example, barrel = f"{directory}/by hand.kvbdl.zip", f"{directory}/barrel.kvexs"
        written_by_hand(example)
        subprocess.run([program, "call", "_unpack_content_bundle", example, f"{directory}/new"], check=True)
        assert pathlib.Path(directory, "new/content/50% größer.kvsch").read_text(encoding="utf-8") == "kvsch 1\n"
        subprocess.run([program, "call", "_create_examples", example, barrel], check=True)
        assert [part for part, _ in Bundle(barrel).examples()] == ["/examples/by%20hand.kvbdl.zip"]


def compare(program):
    samples = pathlib.Path(__file__).parents[2] / "samples"
    with tempfile.TemporaryDirectory() as directory:
        subprocess.run([program, "run", samples / "build_samples.js", samples, directory], check=True, stdout=subprocess.DEVNULL)
        barrel = Bundle(f"{directory}/samples.kvexs")
        show(barrel)
        for part, example in barrel.examples():
            name = file_names(part)[-1].removesuffix(".kvbdl.zip")
            unpack(example, f"{directory}/by reader/{name}")
            assert files_below(f"{directory}/by reader/{name}/content") == files_below(samples / "designs" / name), name
        hierarchy = Bundle(f"{directory}/active_crossover.schematics.zip")
        root = hierarchy.target(TYPE + "schematic-bundle/root")
        below = [child for part in hierarchy.targets(TYPE + "schematic-bundle/descendant", root)
                 for child in hierarchy.targets(TYPE + "schematic-bundle/descendant", part)]
        assert below == ["/schematics/parts/opamp.kvsch"] * 2, below


if __name__ == "__main__":
    if sys.argv[1] == "list":
        show(Bundle(sys.argv[2]))
    elif sys.argv[1] == "unpack":
        unpack(Bundle(sys.argv[2]), sys.argv[3])
    else:
        {"compare": compare, "write": write}[sys.argv[1]](sys.argv[2])
