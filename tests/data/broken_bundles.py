"""Bundles that break what docs/format.md asks: packages that are sound, and hold something else than they should."""

from package_builder import A, CT, NS_REL, REL_CONTENT, RELS, TYPE_RELS, archive, case, rel, rels, types
from zip_builder import Entry

LAYOUT = "http://schemas.kelvaris.example/package/2025/relationships/"
NS_BUNDLE = "http://schemas.kelvaris.example/package/2025/bundle"
TYPE_BUNDLE = "application/vnd.kelvaris.bundle-properties+xml"
TYPE_EXAMPLE = "application/vnd.kelvaris.example-bundle+zip"
PROPERTIES = rel("/bundle.xml", "p", LAYOUT + "bundle/properties")
CONTENT = rel("/content/a.txt", "c")
PRIMARY = rel("/content/a.txt", "f", LAYOUT + "example-bundle/primary-file")
EXTERNAL = ' TargetMode="External"'


def properties(kind, inner=""):
    return f'<bundle xmlns="{NS_BUNDLE}"><kind>{kind}</kind>{inner}</bundle>'


def bundle(kind, *relationships, more=(), document=None, overrides=(), defaults=(), a=Entry(A, "hello")):
    """A bundle of one file; `document` is what stands in the place of its properties."""
    text = properties(kind) if document is None else document
    return archive([
        Entry(CT, types(("/bundle.xml", TYPE_BUNDLE), *overrides, defaults=(("rels", TYPE_RELS), ("txt", "text/plain"), *defaults))),
        Entry(RELS, rels(*(relationships or (PROPERTIES, CONTENT)))), Entry("bundle.xml", text), *([a] if a else []), *more])


def example(*more_relationships, more=(), **changes):
    return bundle("example", PROPERTIES, CONTENT, PRIMARY, *more_relationships, more=more, **changes)


def in_pieces(entry):
    half = len(entry.data) // 2
    return [Entry(entry.name + suffix, data, method=entry.method) for suffix, data in ((b"/[0].piece", entry.data[:half]), (b"/[1].last.piece", entry.data[half:]))]


def barrel(*examples, method=0, target="/examples/{}.kvbdl.zip", kind="barrel-of-examples", media_type=TYPE_EXAMPLE, mode="", items=lambda part: [part]):
    """A barrel; every one of `examples` is the bytes of one part, which lies in the archive as `items` of it."""
    parts = (Entry(f"examples/{n}.kvbdl.zip", data, method=method) for n, data in enumerate(examples))
    return bundle(kind, PROPERTIES, *(rel(target.format(n), f"e{n}", LAYOUT + "barrel-of-examples/example", mode) for n in range(len(examples))),
                  a=None, defaults=[("zip", media_type)], more=[item for part in parts for item in items(part)])


def kinds():
    everything = ("content", "example", "barrel-of-examples", "scriptable")
    for kind in ("content", "example", "barrel-of-examples", "schematic", "scriptable", "recipe", ""):
        opens = {kind} | ({"content"} if kind == "example" else set())
        words = " ".join(k if k in opens else f"{k}!b1" for k in everything)
        case(f"bundle-kind-{kind or 'empty'}", "ok", f"a bundle of the kind {kind!r}", bundle(kind), 2, "=1 b1" if "content" in opens else "b1", words)

    def broken(name, what, code="b2", verdict="ok", parts=2, **changes):
        case(f"bundle-{name}", verdict, what, bundle("example", **changes) if "relationships" not in changes
             else bundle("example", *changes.pop("relationships"), **changes), parts, code, f"content!{code} example!{code} barrel-of-examples!{code}")

    broken("properties-text", "properties that are no XML", document="kind=example")
    broken("properties-doctype", "properties with a document type", document="<!DOCTYPE bundle>" + properties("example"))
    broken("properties-empty", "properties without bytes", document="")
    broken("properties-of-other-year", "properties of a format that is not known here", document=properties("example").replace("2025", "2031"))
    broken("properties-without-kind", "properties that tell no kind", document=f'<bundle xmlns="{NS_BUNDLE}"/>')
    broken("properties-two-kinds", "properties that tell two kinds", document=properties("example", "<kind>content</kind>"))
    broken("properties-two-manufacturers", "properties that tell two manufacturers", document=properties("example", "<manufacturer/><manufacturer/>"))
    broken("properties-deep", "properties 10,000 levels deep", document=properties("example", "<a>" * 10000 + "</a>" * 10000))
    broken("properties-external", "properties outside", relationships=(rel("http://x.example/", "p", LAYOUT + "bundle/properties", EXTERNAL), CONTENT))
    broken("properties-dangling", "properties that are not there", verdict="warn", relationships=(rel("/gone.xml", "p", LAYOUT + "bundle/properties"), CONTENT))
    broken("properties-twice", "two relationships to properties", relationships=(PROPERTIES, rel("/bundle.xml", "q", LAYOUT + "bundle/properties"), CONTENT))
    broken("properties-are-relationships", "properties that are the package's relationships", "17", "17", "-",
           relationships=(rel("/_rels/.rels", "p", LAYOUT + "bundle/properties"), CONTENT))
    case("bundle-properties-more", "ok", "properties with more than is known here", bundle("example", document=properties(" example\n", "<x:y xmlns:x='urn:x'>z</x:y><note/>")),
         2, 1, "example content barrel-of-examples!b1")


def examples():
    def one(name, what, data, parts, verdict="ok", unpack=1):
        case(f"example-{name}", verdict, what, data, parts, unpack, "example content")

    def primary(target, *more):
        return bundle("example", PROPERTIES, CONTENT, rel(target, "f", LAYOUT + "example-bundle/primary-file", *more))

    one("primary-file-missing", "no primary file", bundle("example"), 2)
    one("primary-file-dangling", "a primary file that is not there", primary("/content/gone.txt"), 2, "warn")
    one("primary-file-external", "a primary file outside", primary("file:///etc/hostname", EXTERNAL), 2)
    one("primary-file-twice", "two primary files", bundle("example", PROPERTIES, CONTENT, PRIMARY, rel("/bundle.xml", "g", LAYOUT + "example-bundle/primary-file")), 2)
    one("primary-file-not-content", "a primary file that is not unpacked", primary("/bundle.xml"), 2)
    one("primary-file-above", "a primary file above the package", primary("../../../etc/hostname"), 2, "warn")
    page = [Entry("content/x.html", "<script>while(1);</script><img src='http://x.example/'><iframe src='file:///etc/passwd'>")]
    html = dict(more=page, defaults=[("html", "text/html")])
    document = LAYOUT + "example-bundle/documentation"
    one("documentation-hostile", "a page that runs scripts and loads from elsewhere", example(rel("/content/x.html", "d", document), **html), 3)
    one("documentation-external", "a page outside", example(rel("http://x.example/", "d", document, EXTERNAL)), 2)
    one("documentation-dangling", "a page that is not there", example(rel("/content/gone.html", "d", document)), 2, "warn")
    one("documentation-twice", "two pages", example(rel("/content/x.html", "d", document), rel("/content/a.txt", "e", document), **html), 3)
    one("documentation-no-text", "a page of bytes that are no text", example(rel("/content/x.html", "d", document), more=[Entry("content/x.html", bytes(range(256)) * 4)],
                                                                              defaults=[("html", "text/html")]), 3)
    case("example-documentation-checksum", "10", "a page with a wrong checksum",
         example(rel("/content/x.html", "d", document), more=[Entry("content/x.html", "<p>", lies={"crc": 1})], defaults=[("html", "text/html")]), kinds="example content")
    core = ('<cp:coreProperties xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties" xmlns:dc="http://purl.org/dc/elements/1.1/">'
            "<dc:title>{}</dc:title></cp:coreProperties>")
    titled = dict(overrides=[("/core.xml", "application/vnd.openxmlformats-package.core-properties+xml")])
    metadata = rel("/core.xml", "m", NS_REL + "/metadata/core-properties")
    for name, title in (("markup", "&lt;img src='file:///etc/passwd'>&lt;b>bold"), ("long", "x" * 10000), ("right-to-left", "\u202e\u05d0\u0301" * 50), ("combining", "e" + "\u0301" * 500),
                        ("lines", "a&#10;b&#13;c&#9;d"), ("empty", "")):
        one(f"title-{name}", f"a title to trouble a window: {name}", example(metadata, more=[Entry("core.xml", core.format(title))], **titled), 3)
    one("content-external", "a content file outside", example(rel("http://x.example/a", "x", REL_CONTENT, EXTERNAL)), 2, unpack="22")
    one("content-on-disk", "content files on the disk, by a URL and by a relative path",
        example(rel("file:///tmp/a%20b.txt", "x", REL_CONTENT, EXTERNAL), rel("a%20b.txt", "y", REL_CONTENT, EXTERNAL)), 2, unpack="22")
    one("content-is-properties", "content that is the properties of the bundle", example(rel("/bundle.xml", "x")), 2, unpack=2)


def barrels():
    sound = example()

    def one(name, what, data, parts, verdict="ok"):
        case(f"barrel-{name}", verdict, what, data, parts, "b1", "barrel-of-examples example!b1")

    one("sound", "a barrel of two examples", barrel(sound, sound), 3)
    one("empty", "a barrel without examples", barrel(), 1)
    one("compressed", "examples that are compressed", barrel(sound, method=8), 2)
    one("in-pieces", "examples in pieces (M2.18)", barrel(sound, sound, items=in_pieces), 3)
    one("in-pieces-compressed", "examples in pieces that are compressed (M2.18)", barrel(sound, method=8, items=in_pieces), 2)
    one("no-archive", "an example that is no ZIP file", barrel(b"no archive at all", sound), 3)
    one("empty-example", "an example without bytes", barrel(b""), 2)
    one("cut-example", "an example that is cut in the middle", barrel(sound[:len(sound) // 2], sound[:-3]), 3)
    one("other-kind", "an example that is a content bundle", barrel(bundle("content")), 2)
    one("in-a-barrel", "a barrel in a barrel", barrel(barrel(sound)), 2)
    one("broken-properties", "an example with broken core properties", barrel(example(rel("/content/a.txt", "m", NS_REL + "/metadata/core-properties"))), 2)
    one("external", "an example outside", barrel(sound, target="http://x.example/{}", mode=EXTERNAL), 2)
    one("dangling", "an example that is not there", barrel(sound, target="/gone/{}.zip"), 2, "warn")
    one("other-type", "an example of another media type", barrel(sound, media_type="application/zip"), 2)
    deep = sound
    for _ in range(12):
        deep = barrel(deep)
    one("deep", "twelve barrels in each other", deep, 2)
    case("barrel-that-says-example", "ok", "a barrel that says it is an example", barrel(sound, kind="example"), 2, 0, "example content barrel-of-examples!b1")


def others():
    script = LAYOUT + "scriptable-bundle/script"

    def scriptable(name, what, data, parts, verdict="ok"):
        case(f"script-{name}", verdict, what, data, parts, "b1", "scriptable content!b1")

    scriptable("missing", "no script", bundle("scriptable"), 2)
    scriptable("external", "a script outside", bundle("scriptable", PROPERTIES, CONTENT, rel("file:///etc/passwd", "s", script, EXTERNAL)), 2)
    scriptable("dangling", "a script that is not there", bundle("scriptable", PROPERTIES, CONTENT, rel("/gone", "s", script)), 2, "warn")
    scriptable("twice", "two scripts", bundle("scriptable", PROPERTIES, CONTENT, rel("/content/a.txt", "s", script), rel("/bundle.xml", "t", script)), 2)
    scriptable("no-text", "a script of bytes that are no text", bundle("scriptable", PROPERTIES, CONTENT, rel("/content/a.txt", "s", script), a=Entry(A, bytes(range(256)))), 2)
    root, child = LAYOUT + "schematic-bundle/root", LAYOUT + "schematic-bundle/descendant"
    cycle = [Entry("content/_rels/a.txt.rels", rels(rel("a.txt", "d", child), rel("/bundle.xml", "e", child), rel("/gone", "g", child)))]
    case("schematic-cycle", "warn", "a schematic below itself", bundle("schematic", PROPERTIES, rel("/content/a.txt", "r", root), more=cycle), 2, "b1", "content!b1")


def make():
    for group in (kinds, examples, barrels, others):
        group()
