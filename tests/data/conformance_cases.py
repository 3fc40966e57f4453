"""Cases rule by rule (ISO/IEC 29500-2): each refused package breaks one rule, each other one is unusual and keeps them all."""

import struct

from package_builder import (A, CORE, CT, HEAD, NS_CP, NS_CT, NS_MC, NS_REL, REL_CONTENT, REL_CORE, RELS, TYPE_CORE, TYPE_RELS, base, case, core,
                             named, rel, rels, types, with_core)
from zip_builder import Entry, archive, extra

SIGNATURE = NS_REL + "/digital-signature/"
TYPE_SIGNATURE = "application/vnd.openxmlformats-package.digital-signature-"
PART_RELS = "content/_rels/a.txt.rels"
CONTENT = rel("/content/a.txt")


def good_markup():
    def typed(name, media_type, what):
        case(f"good-media-type-{name}", "ok", what, archive(base(types(("/content/a.txt", media_type)))), 1, 1)

    typed("blanks", "text/plain; charset=utf-8 ; format=flowed", "blanks around the semicolon, which the schema allows (M1.13, M1.14)")
    typed("quoted", 'text/plain;a=&quot;b (c); d&quot;', "a quoted value holds blanks and brackets (M1.13)")
    typed("token", "x-a!#$&amp;-^_.+/b'`|~%*1", "every character of a token (M1.13)")
    typed("upper-case", "Text/PLAIN;Charset=UTF-8", "a media type in another case (M1.13)")
    case("good-part-without-extension", "ok", "a part without an extension has an override (M2.4)",
         archive(base(types(("/content/a", "text/plain")), rels(rel("/content/a")), Entry("content/a", "x"))), 1, 1)
    case("good-dot-file", "ok", "a name that is nothing but its extension (M2.9)",
         archive(base(rl=rels(rel("/content/.txt")), a=Entry("content/.txt", "x"))), 1, 1)
    case("good-override-wins", "ok", "an override goes before a default (M2.4)",
         archive(base(types(("/content/a.txt", "text/x-special"), ("/_rels/.rels", TYPE_RELS)))), 1, 1)
    case("good-override-iri", "ok", "an override that is an IRI (M2.7)",
         archive(base(types(("/content/\u0446", "text/plain")), rels(rel("/content/%D1%86")), Entry("content/%D1%86", "x"))), 1, 1)
    case("good-override-without-part", "warn", "an override of a part that is not there",
         archive(base(types(("/content/gone.txt", "text/plain")))), 1, 1)
    case("good-default-unused", "ok", "defaults that nothing needs",
         archive(base(types(defaults=(("rels", TYPE_RELS), ("txt", "text/plain"), ("a~b!$&amp;'()*+,:=@-_", "x/y"), ("%C3%A4", "x/z"))))), 1, 1)
    case("good-prefixes", "ok", "content types and relationships with a prefix", archive(base(
        f'<c:Types xmlns:c="{NS_CT}"><c:Default Extension="rels" ContentType="{TYPE_RELS}"/><c:Default Extension="txt" ContentType="a/b"/></c:Types>',
        f'<r:Relationships xmlns:r="{NS_REL}"><r:Relationship Id="a" Type="{REL_CONTENT}" Target="content/a.txt"/></r:Relationships>')), 1, 1)
    case("good-comments", "ok", "comments, instructions and blanks in all markup", archive(base(
        types(inner="<!-- c -->\n\t<?pi x?>\n") + "<!-- end -->\n", "\n".join([rels("<!-- a -->", CONTENT, "<?p?>"), "<?end?>", ""]))), 1, 1)
    case("good-single-quotes", "ok", "attributes in single quotes", archive(base(rl=rels(CONTENT).replace('"', "'"))), 1, 1)
    case("good-no-declaration", "ok", "markup without an XML declaration",
         archive(base(types().replace(HEAD, ""), rels(CONTENT, head=""))), 1, 1)
    case("good-standalone-no", "ok", "a declaration with single quotes and standalone='no'",
         archive(base(rl=rels(CONTENT, head="<?xml version='1.0'  encoding='utf-8' standalone='no' ?>\r\n"))), 1, 1)
    case("good-relationship-with-text", "ok", "the schema lets a relationship hold text",
         archive(base(rl=rels(CONTENT.replace("/>", "> text <![CDATA[<more>]]> </Relationship>")))), 1, 1)
    case("good-character-references", "ok", "character references in a target",
         archive(base(rl=rels(rel("/content/&#97;.&#x74;xt")))), 1, 1)
    case("good-target-mode-internal", "ok", "the target mode that is the default one (M1.29)", archive(base(rl=rels(rel("content/a.txt", more=' TargetMode="Internal"')))), 1, 1)
    case("good-relationship-ids", "ok", "ids in letters of any alphabet, and two that differ in case (M1.26)",
         archive(base(rl=rels(CONTENT, *(rel("/content/a.txt", i, "urn:x") for i in ("\u00e4_1", "_", "a.b-c", "RID1", "\u65e5\u672c"))))), 1, 1)
    case("good-relationships-none", "ok", "a relationships part without relationships", archive(base(rl=rels())), 1, 0)
    for name, encoding in (("utf16-big-endian", "utf-16-be"), ("utf16-little-endian", "utf-16-le")):
        mark = b"\xfe\xff" if "big" in name else b"\xff\xfe"
        case(f"good-{name}", "ok", f"content types, relationships and core properties in {encoding} (M1.17)",
             archive([Entry(CT, mark + types(("/docProps/core.xml", TYPE_CORE)).replace("UTF-8", "UTF-16").encode(encoding)),
                      Entry(RELS, mark + rels(CONTENT, rel("docProps/core.xml", "c", REL_CORE)).replace("UTF-8", "utf-16").encode(encoding)),
                      Entry(CORE, mark + core().replace(' encoding="UTF-8"', "").encode(encoding)), Entry(A, "x")]), 2, 1)
    mc = f' xmlns:mc="{NS_MC}" xmlns:v="urn:v"'
    case("good-mc-alternate-content", "ok", "of a choice that nobody understands and its fallback, the fallback counts (M1.31)",
         archive(base(rl=rels(f'<mc:AlternateContent><mc:Choice Requires="v"><v:x/></mc:Choice><mc:Fallback>{CONTENT}</mc:Fallback></mc:AlternateContent>',
                              attributes=mc))), 1, 1)
    case("good-mc-process-content", "ok", "what stands in an ignored element that is to be looked into (M1.31)",
         archive(base(rl=rels(f"<v:x>{CONTENT}</v:x>", attributes=mc + ' mc:Ignorable="v" mc:ProcessContent="v:x"'))), 1, 1)
    case("good-mc-ignorable-attribute", "ok", "an attribute of an ignorable namespace (M1.31)",
         archive(base(rl=rels(rel("content/a.txt", more=' v:a="1"'), attributes=mc + ' mc:Ignorable="v"'))), 1, 1)


def good_relationships():
    case("good-self-target", "ok", "a part that relates to itself, by a fragment and by nothing (M1.32)",
         archive(base(more=[Entry(PART_RELS, rels(rel("#x", "a", "urn:x"), rel("", "b", "urn:x"), rel("a.txt#y", "c", "urn:x")))])), 1, 1)
    case("good-target-is-the-package", "warn", "a target that is the package itself", archive(base(rl=rels(CONTENT, rel("/", "a", "urn:x"), rel("#x", "b", "urn:x")))), 1, 1)
    case("good-target-with-query", "ok", "a target with a query", archive(base(rl=rels(rel("/content/a.txt?x=y")))), 1, 1)
    case("good-target-escaped", "ok", "a target that encodes what needs no encoding", archive(base(rl=rels(rel("/content/%61.txt")))), 1, 1)
    case("good-target-other-case", "ok", "a target in another case (M1.12)", archive(base(rl=rels(rel("/CONTENT/A.txt")))), 1, 1)
    case("good-target-not-by-the-letter", "warn", "targets with blanks and backslashes, as the wild has them (M1.28)",
         archive(base(rl=rels(CONTENT, rel("content\\a b.txt", "a", "urn:x"), rel("content/{x}^.txt", "b", "urn:x")))), 1, 1)
    case("good-target-above-the-root", "ok", "dot segments above the root end at the root (M1.23)", archive(base(rl=rels(rel("../../content/a.txt")))), 1, 1)
    case("good-external-of-a-part", "ok", "external targets of a part: relative, empty, with blanks",
         archive(base(more=[Entry(PART_RELS, rels(*(rel(t, f"r{i}", "urn:x", ' TargetMode="External"') for i, t in enumerate(
             ("..\\a b.xls", "", "file:///C:/x y", "http://[bad", "mailto:", "/_rels/.rels", "%zz")))))])), 1, 1)
    case("good-thumbnail", "ok", "a thumbnail of the package (M5.1)",
         archive(base(types(("/thumb.png", "image/png")), rels(CONTENT, rel("thumb.png", "t", NS_REL + "/metadata/thumbnail")),
                      more=[Entry("thumb.png", b"\x89PNG\r\n\x1a\n")])), 2, 1)
    case("good-core-properties-elsewhere", "ok", "core properties of another name, extension and case of the media type",
         archive(base(types(("/Metadata/x.prop", TYPE_CORE.upper().replace("APPLICATION", "application"))), rels(CONTENT, rel("Metadata/x.prop", "c", REL_CORE)),
                      more=[Entry("Metadata/x.prop", core())])), 2, 1)
    case("good-core-properties-dangling", "warn", "core properties that are not there", archive(base(rl=rels(CONTENT, rel("core.xml", "c", REL_CORE)))), 1, 1)
    case("good-core-properties-unrelated", "ok", "a part of the media type of core properties that nothing leads to",
         archive(base(types(("/docProps/core.xml", TYPE_CORE)), more=[Entry(CORE, core())])), 2, 1)


def good_core():
    created = '<dcterms:created xsi:type="dcterms:W3CDTF">{}</dcterms:created>'
    for name, text in (("year", "2020"), ("month", "2020-12"), ("day", "2020-02-29"), ("minute", "2020-01-01T00:00Z"), ("second", "2020-01-01T23:59:59Z"),
                       ("fraction", "2020-01-01T10:00:00.123456789Z"), ("zone-east", "2020-01-01T10:00:00+14:00"), ("zone-west", "2020-01-01T10:00:00.5-11:30"),
                       ("without-zone", "2020-01-01T10:00:00"), ("midnight", "2020-01-01T24:00:00Z"), ("blanks-around", "\n 2020-01-01\t")):
        case(f"good-core-date-{name}", "ok", f"the date {text!r} (W3CDTF)", with_core(core(created.format(text))), 2, 1)
    case("good-core-first-edition", "ok", "the property contentType of the 1st edition", with_core(core("<cp:contentType>a</cp:contentType>")), 2, 1)
    case("good-core-empty-elements", "ok", "properties without text", with_core(core("<dc:title/><cp:keywords/><dc:creator></dc:creator>")), 2, 1)
    case("good-core-default-namespace", "ok", "the namespace of the properties is the default one",
         with_core(core().replace("cp:", "").replace(":cp=", "=")), 2, 1)
    case("good-core-local-namespaces", "ok", "namespaces declared where they are used",
         with_core(f'<coreProperties xmlns="{NS_CP}"><d:title xmlns:d="http://purl.org/dc/elements/1.1/">t</d:title></coreProperties>'), 2, 1)
    case("good-core-character-data", "ok", "a title of CDATA, references and comments",
         with_core(core("<dc:title>a<![CDATA[<b>]]><!-- c -->&amp;&#x1F600;</dc:title>")), 2, 1)


def good_container():
    x = "x" * 50
    wide = struct.pack("<QQ", len(x), len(Entry("x", x).packed))
    saturated = {"size": 0xFFFFFFFF, "packed": 0xFFFFFFFF}
    case("good-zip64-local", "ok", "sizes in ZIP64 extra fields of both headers (M3.20)",
         archive(base(a=Entry(A, x, lies=saturated, local_extra=extra(1, wide), central_extra=extra(1, wide)))), 1, 1)
    case("good-zip64-local-alone", "ok", "sizes in a ZIP64 extra field of the local header (M3.20)",
         archive(base(a=Entry(A, x, local=saturated, local_extra=extra(1, wide)))), 1, 1)
    offset = sum(len(e.local_record()) for e in base()[:2])
    case("good-zip64-offset", "ok", "the offset in a ZIP64 extra field, with others around (M3.20)",
         archive(base(a=Entry(A, x, central={"offset": 0xFFFFFFFF},
                              central_extra=extra(0x5455, b"\1abcd") + extra(1, struct.pack("<Q", offset)) + extra(0x4242, b"")))), 1, 1)
    case("good-zip64-saturated", "ok", "the end record leaves everything to the ZIP64 end record (M3.21)",
         archive(base(), zip64={}, end={"count": 0xFFFF, "here": 0xFFFF, "size": 0xFFFFFFFF, "offset": 0xFFFFFFFF}), 1, 1)
    case("good-descriptor-without-signature", "ok", "a data descriptor without its signature",
         archive(base(a=Entry(A, x, flags=8, local={"crc": 0, "packed": 0, "size": 0}, trailer=struct.pack("<III", *Entry("x", x).truth())))), 1, 1)
    case("good-descriptor-wide", "ok", "a data descriptor of 64-bit sizes (M3.20)",
         archive(base(a=Entry(A, x, flags=8, local={"crc": 0, "packed": 0xFFFFFFFF, "size": 0xFFFFFFFF}, local_extra=extra(1, bytes(16)),
                              trailer=struct.pack("<IIQQ", 0x08074B50, *Entry("x", x).truth())))), 1, 1)
    case("good-descriptor-of-stored", "ok", "a stored entry with a data descriptor", archive(base(a=Entry(A, x, method=0, descriptor=True))), 1, 1)
    case("good-version-10", "ok", "entries that need version 1.0", archive([Entry(e.name, e.data, method=0, lies={"version": 10}) for e in base()]), 1, 1)
    case("good-version-45", "ok", "entries that need version 4.5", archive([Entry(e.name, e.data, lies={"version": 45}) for e in base()]), 1, 1)
    case("good-deflate-hints", "ok", "flags that tell how hard the writer tried, in one header only",
         archive(base(a=Entry(A, x, central={"flags": 6}))), 1, 1)
    case("good-utf8-flag-on-ascii", "ok", "ASCII names marked as UTF-8", archive([Entry(e.name, e.data, flags=0x800) for e in base()]), 1, 1)
    case("good-timestamps", "ok", "times that are none: zeros, all bits", archive(base(a=Entry(A, x, lies={"date": 0, "time": 0}),
         more=[Entry("content/b.txt", x, lies={"date": 0xFFFF, "time": 0xFFFF})])), 2, 1)
    case("good-extra-timestamps", "ok", "Info-ZIP and NTFS times that differ in the two headers",
         archive(base(a=Entry(A, x, local_extra=extra(0x5455, b"\3" + bytes(8)) + extra(0x7875, b"\1\4" + bytes(4) + b"\4" + bytes(4)),
                              central_extra=extra(0x5455, b"\3" + bytes(4)) + extra(0x000A, bytes(32))))), 1, 1)
    case("good-entry-comment", "ok", "a comment of an entry", archive(base(a=Entry(A, x, comment=b"hello \xff"))), 1, 1)
    case("good-attributes", "ok", "attributes of DOS and of UNIX files",
         archive(base(a=Entry(A, x, external=0x27), more=[Entry("content/b.txt", x, made_by=(3 << 8) | 20, external=0o100600 << 16)])), 2, 1)
    case("good-made-elsewhere", "ok", "made by systems of long ago", archive([Entry(e.name, e.data, made_by=(n << 8) | 63) for n, e in enumerate(base())]), 1, 1)
    case("good-directory-in-other-order", "ok", "the directory lists the entries in another order",
         archive(base(), directory_order=[2, 0, 1]), 1, 1)
    case("good-gap", "ok", "bytes between two entries, as tools that align entries leave them", archive(base(a=Entry(A, x, trailer=bytes(7)), more=[Entry("content/b.txt", x)])), 2, 1)
    case("good-comment-of-65535-bytes", "ok", "the longest comment", archive(base(), comment=b"-" * 65535), 1, 1)
    case("good-ratio", "ok", "zeros that deflate as well as can be, within the grace", archive(base(a=Entry(A, bytes(7 << 20)))), 1, 1)
    case("good-part-that-is-a-package", "ok", "a package in a package, stored and deflated",
         archive(base(a=Entry(A, archive(base()), method=0), more=[Entry("content/b.txt", archive(base()))])), 2, 1)
    case("good-allowed-characters", "ok", "every character that a segment may hold (M1.6)",
         named("content/!$&'()*+,;=:@-._~%20%25%5B%5D%7E".replace("%7E", "") + ".txt", "/content/!$&amp;'()*+,;=:@-._~%20%25%5B%5D.txt"), 1, 1)
    case("good-extension-with-semicolon", "ok", "an extension that no default can name (M2.6)",
         archive(base(types(("/content/a.b;c", "text/plain")), rels(rel("/content/a.b;c")), Entry("content/a.b;c", "x"))), 1, 1)
    case("good-hex-in-lower-case", "ok", "percent-encoding in lower case", named("content/%c3%a4.txt", "/content/%C3%A4.txt"), 1, 1)
    case("good-dots-inside", "ok", "dots that end no segment (M1.9, M1.10)", named("content/..a/.b/c...txt", "/content/..a/.b/c...txt"), 1, 1)
    case("good-deep-name", "ok", "a name of 60 segments", named("content" + "/d" * 58 + "/a.txt", "/content" + "/d" * 58 + "/a.txt"), 1, 1)


def good_pieces():
    def pieces(name, *texts):
        last = len(texts) - 1
        return [Entry(f"{name}/[{n}]{'.last' if n == last else ''}.piece", text) for n, text in enumerate(texts)]

    t, r = types(), rels(CONTENT)
    case("good-interleaved-content-types", "ok", "the content types in pieces (M3.11)", archive([*pieces(CT, t[:40], t[40:90], t[90:]), Entry(RELS, r), Entry(A, "x")]), 1, 1)
    case("good-interleaved-relationships", "ok", "relationships in pieces (M2.18)", archive([Entry(CT, t), *pieces(RELS, r[:70], r[70:]), Entry(A, "x")]), 1, 1)
    case("good-interleaved-core-properties", "ok", "core properties in pieces (M2.18)", archive(base(types(("/docProps/core.xml", TYPE_CORE)),
         rels(CONTENT, rel("docProps/core.xml", "c", REL_CORE)), more=pieces(CORE, core()[:60], "", core()[60:]))), 2, 1)
    case("good-interleaved-upper-case", "ok", "suffixes of pieces compare folded (M2.12, M2.13)",
         archive(base(a=None, more=[Entry("content/A.txt/[0].PIECE", "a"), Entry("Content/a.TXT/[1].Last.Piece", "b")])), 1, 1)
    case("good-interleaved-out-of-order", "ok", "pieces in any order, with other items between (M2.18)",
         archive(list(reversed(base(a=None, more=pieces(A, *"abcdefghijkl"))))), 1, 1)
    case("good-interleaved-one-piece", "ok", "a part in a single piece (M2.18)", archive(base(a=None, more=pieces(A, "x"))), 1, 1)
    case("good-interleaved-growth-hint", "ok", "a growth hint on the first piece (S3.2)", archive(base(a=None, more=[
        Entry(f"{A}/[0].piece", "x", local_extra=extra(0xA220, struct.pack("<HH", 0xA028, 8) + b"\0" * 8)), Entry(f"{A}/[1].last.piece", "y")])), 1, 1)
    case("good-piece-like-names", "ok", "names that are nearly those of pieces are no parts (M2.16)",
         archive(base(more=[Entry(f"content/b.txt/{n}", "x") for n in ("[0].pieces", "[01].piece", "[-1].piece", "[].piece", "[0]last.piece", "[4294967296].piece")])), 1, 1)


def bad_content_types():
    for name, value in (("dot", ".txt"), ("two", "a.b"), ("slash", "a/b"), ("blank", "a b"), ("semicolon", "a;b"), ("percent", "a%zz")):
        case(f"types-extension-{name}", "13", f"the extension {value!r} (M2.6)", archive(base(types(inner=f'<Default Extension="{value}" ContentType="a/b"/>'))))
    for name, value in (("empty", ""), ("root", "/"), ("directory", "/content/"), ("relative", "./a.txt"), ("fragment", "/a.txt#x"), ("query", "/a.txt?x"),
                        ("backslash", "/a\\b.txt"), ("encoded-slash", "/a%2fb.txt"), ("encoded-unreserved", "/%41.txt"), ("absolute", "http://x.example/a.txt"),
                        ("percent", "/a%.txt"), ("blank", "/a b.txt")):
        case(f"types-override-{name}", "13", f"an override of {value!r} (M2.7)", archive(base(types((value, "a/b")))))
    case("types-override-no-name", "13 15", "an override that names no part (M2.7)", archive(base(types(inner='<Override ContentType="a/b"/>'))))
    case("types-override-iri-twin", "13", "two overrides of one name, one as an IRI (M2.5)", archive(base(types(("/\u00e4", "a/b"), ("/%C3%A4", "a/b")))))
    for name, value in (("blank-before-equals", "a/b;c =d"), ("blank-behind-equals", "a/b;c= d"), ("tab", "text\t/plain"), ("blank-behind-slash", "text/ plain"),
                        ("line-feed", "text/plain&#10;"), ("open-quote", "a/b;c=&quot;d"), ("no-attribute", "a/b;=d"), ("comment-first", "(c)a/b"), ("comma", "a/b,c/d"),
                        ("comment-in-parameter", "a/b;c=d(e)"), ("wildcard-alone", "*")):
        case(f"types-media-type-{name}", "14", f"the media type {value!r} (M1.13 to M1.15)", archive(base(types(("/content/a.txt", value)))))
    case("types-default-media-type", "14", "a default of a media type that is none (M1.13)", archive(base(types(inner='<Default Extension="q" ContentType="q"/>'))))
    case("types-parameters-on-core-properties", "14", "parameters on the type of core properties (M1.22)",
         with_core(core(), overrides=[("/docProps/core.xml", TYPE_CORE + ";charset=utf-8")]))
    for name, attribute in (("lang", 'xml:lang="en"'), ("base", 'xml:base="/"'), ("space", 'xml:space="preserve"'),
                            ("schema-location", 'xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="a b"')):
        case(f"types-attribute-{name}", "15", f"{attribute.split(' ')[-1]} on the content types (M1.21)", archive(base(types(attributes=" " + attribute))))
    case("types-text", "15", "text in the content types (M1.20)", archive(base(types(inner="text"))))
    case("types-nested", "15", "a default in a default (M1.20)", archive(base(types(inner='<Default Extension="q" ContentType="a/b"><Default/></Default>'))))
    case("types-lower-case", "15", "the root in lower case (M1.20)", archive(base(types(root="types"))))
    case("types-element-lower-case", "15", "a default in lower case (M1.20)", archive(base(types(inner='<default Extension="q" ContentType="a/b"/>'))))
    case("types-no-namespace", "15", "content types without their namespace (M1.20)", archive(base(types(ns=""))))
    mc = f' xmlns:mc="{NS_MC}"'
    case("types-mc-element", "13", "an alternative in content types (M2.10)", archive(base(types(inner="<mc:AlternateContent/>", attributes=mc))))
    case("types-mc-attribute", "13", "an attribute of compatibility markup on a default (M2.10)",
         archive(base(types(inner=f'<Default Extension="q" ContentType="a/b"{mc} mc:Ignorable=""/>'))))


def bad_pieces():
    def pieces(name, verdict, what, *suffixes, unpack=0, parts=1):
        case(f"pieces-{name}", verdict, what, archive(base(rl=rels(), a=None, more=[*(Entry(f"content/a.txt/{s}", "x") for s in suffixes), Entry("content/b.txt", "b")])),
             parts if "ok" in verdict else "-", unpack if "ok" in verdict else "-")

    pieces("missing-first", "ok warn", "pieces without the first are no part (M2.18)", "[1].piece", "[2].last.piece")
    pieces("missing-middle", "ok warn", "pieces with a gap are no part (M2.18)", "[0].piece", "[2].last.piece")
    pieces("two-last", "ok warn", "two last pieces are no part (M2.18)", "[0].last.piece", "[1].last.piece")
    pieces("last-in-the-middle", "ok warn", "a last piece that is not the last is no part (M2.18)", "[0].last.piece", "[1].piece")
    pieces("duplicate-last", "27", "a piece and a last piece of one number (M2.15)", "[0].piece", "[0].last.piece")
    case("pieces-name-of-a-part", "4", "a part whose name is that of incomplete pieces with a piece's own item (M3.3)",
         archive(base(a=None, more=[Entry(f"{A}/[0].piece", "x"), Entry("content/b.txt", "x"), Entry("content/b.txt", "y")])))
    case("pieces-content-types-incomplete", "12", "content types of which pieces are missing (M3.10)",
         archive([Entry(f"{CT}/[0].piece", types()), *base()[1:]]))
    case("pieces-content-types-mixed", "27", "content types as an item and in pieces (M2.11)", archive([*base(), Entry(f"{CT}/[0].last.piece", types())]))
    case("pieces-mixed-in-case", "27", "a part as item and as pieces, in another case (M2.11, M2.12)", archive(base(more=[Entry("CONTENT/a.txt/[0].last.PIECE", "x")])))
    case("pieces-derived", "5", "a part in pieces whose name continues another's (M1.11)", archive(base(more=[Entry("content/a.txt/b.txt/[0].last.piece", "x")])))
    case("pieces-checksum", "10", "a wrong checksum of one piece", archive(base(a=None, more=[Entry(f"{A}/[0].piece", "x"), Entry(f"{A}/[1].last.piece", "y", lies={"crc": 1})])))
    case("name-relationships-twin", "4", "two relationships parts that differ in case (M1.12)", archive(base(more=[Entry("_RELS/.rels", rels())])))
    case("name-derived-from-relationships", "5", "a part whose name continues that of a relationships part (M1.11)", archive(base(more=[Entry("_rels/.rels/a.txt", "x")])))
    case("name-derived-reversed", "5", "the part whose name another continues stands behind it (M1.11)",
         archive(base(rl=rels(), a=None, more=[Entry("content/x.txt/y/z.txt", "1"), Entry("content/x.txt", "2")])))
    case("name-backslash-shadow", "ok", "an item that a reader of backslashes takes for a part is no part (M2.16)", archive(base(more=[Entry("content\\a.txt", "evil")])), 1, 1)
    case("name-content-types-elsewhere", "ok", "content types in a directory are no part (M2.16)", archive(base(more=[Entry("content/" + CT, types())])), 1, 1)
    case("name-content-types-encoded", "ok", "an item that spells the content types percent-encoded is a part like any other",
         archive(base(types(("/%5BContent_Types%5D.xml", "a/b")), more=[Entry("%5BContent_Types%5D.xml", "x")])), 2, 1)
    case("name-latin-1", "ok", "an item name of bytes that are no UTF-8 and not marked so is no part (M3.2)", archive(base(more=[Entry(b"content/\xe4.txt", "x", flags=2)])), 1, 1)
    case("name-utf8-unmarked", "ok", "a name in UTF-8 that is not marked so is no part (M3.2)", archive(base(more=[Entry("content/\u00e4.txt".encode(), "x", flags=2)])), 1, 1)


def bad_relationships():
    def one(name, verdict, what, *relationships, attributes="", root="Relationships"):
        """From the package and from a part: the same defect has the same verdict."""
        document = rels(*relationships, attributes=attributes, root=root)
        case(f"rel-{name}", verdict, what, archive(base(rl=document)))
        case(f"rel-part-{name}", verdict, what + ", of a part", archive(base(more=[Entry(PART_RELS, document)])))

    b = rel("/content/a.txt", "a", "urn:x")
    one("id-twice", "18", "one id twice (M1.26)", b, rel("/content/a.txt", "a", "urn:y"))
    one("id-hyphen", "17", "an id that begins with a hyphen (M1.26)", rel("/content/a.txt", "-a", "urn:x"))
    one("id-with-prefix", "15 17", "an id in a namespace (M1.20, M1.26)", b.replace(" Id=", " r:Id="), attributes=' xmlns:r="urn:r"')
    one("type-empty", "17", "an empty type (M1.27)", rel("/content/a.txt", "a", ""))
    one("type-blank", "17", "a type with a blank (M1.27)", rel("/content/a.txt", "a", "urn:x y"))
    one("lower-case", "15", "a relationship in lower case (M1.20)", b.replace("Relationship", "relationship"))
    one("target-mode-upper-case", "15", "a target mode in capitals (M1.20)", rel("/content/a.txt", "a", "urn:x", ' TargetMode="EXTERNAL"'))
    one("target-mode-empty", "15", "an empty target mode (M1.20)", rel("/content/a.txt", "a", "urn:x", ' TargetMode=""'))
    one("nested", "15", "a relationship in a relationship (M1.20)", b.replace("/>", f">{b}</Relationship>"))
    one("text", "15", "text between relationships (M1.20)", b, "text")
    one("other-namespace", "15", "a relationship of another namespace (M1.20)", b.replace(" Id=", ' xmlns="urn:x" Id='))
    one("root", "15", "another root (M1.20)", root="Relationship")
    one("lang-on-one", "15 17", "xml:lang on a relationship (M1.21)", b.replace("/>", ' xml:lang="en"/>'))
    one("base-on-one", "15 17", "xml:base on a relationship (M1.21)", b.replace("/>", ' xml:base="/"/>'))
    one("space", "15 17", "xml:space on the root (M1.21)", b, attributes=' xml:space="preserve"')
    one("schema-location", "15 17", "xsi:schemaLocation on the root (M1.21)", b,
        attributes=' xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="a b"')
    one("to-part-rels", "17", "a relationship to a part's relationships (M1.25)", rel("/content/_rels/a.txt.rels", "a", "urn:x"))
    one("to-rels-in-case", "17", "a relationship to relationships in another case (M1.25)", rel("/_RELS/.Rels", "a", "urn:x"))
    one("to-rels-encoded", "17", "a relationship to relationships, percent-encoded (M1.25)", rel("/%5frels/.rels", "a", "urn:x"))
    one("file-scheme", "17", "an internal target that is a file (M1.29)", rel("file:///etc/hostname", "a", "urn:x"))
    one("drive", "17", "an internal target with a drive (M1.29)", rel("C:\\a.txt", "a", "urn:x"))
    one("backslash-authority", "17", "an internal target with an authority in backslashes (M1.29)", rel("\\\\server\\share\\a.txt", "a", "urn:x"))
    mc = f' xmlns:mc="{NS_MC}" xmlns:v="urn:v"'
    one("mc-not-ignorable", "15", "an element that nobody may ignore (M1.31)", b, "<v:x/>", attributes=mc)
    one("mc-must-understand", "17", "a namespace that must be understood (M1.31)", b, attributes=mc + ' mc:MustUnderstand="v"')
    one("mc-undeclared", "17", "an ignorable prefix that nobody declared (M1.31)", b, attributes=mc + ' mc:Ignorable="w"')
    one("mc-no-choice", "17", "alternatives without a choice (M1.31)", b, "<mc:AlternateContent/>", attributes=mc)
    one("mc-twice-through-choice", "18", "a choice that repeats an id (M1.26, M1.31)", b,
        f'<mc:AlternateContent><mc:Choice Requires="mc">{b}</mc:Choice></mc:AlternateContent>', attributes=mc)
    case("rel-part-of-rels", "17", "relationships of a part's relationships (M1.25)", archive(base(more=[Entry("content/_rels/_rels/a.txt.rels.rels", rels())])))
    case("rel-part-type", "17", "a part's relationships of another media type (M1.30)", archive(base(types(("/content/_rels/a.txt.rels", "application/xml")), more=[Entry(PART_RELS, rels())])))
    case("rel-rels-typed-by-extension", "17", "relationships whose extension stands for another media type (M1.30)",
         archive(base(types(defaults=(("rels", "application/xml"), ("txt", "text/plain"))))))


def bad_xml():
    """Well-formedness, encodings and limits, in every document that the package layer reads."""
    def signed(text):
        return signature_package(signature=text)

    def everywhere(name, verdict, what, make):
        case(f"xml-content-types-{name}", verdict, f"content types: {what}", archive(base(ct=make(types()))))
        case(f"xml-relationships-{name}", verdict, f"relationships: {what}", archive(base(rl=make(rels(CONTENT)))))
        case(f"xml-part-relationships-{name}", verdict, f"relationships of a part: {what}", archive(base(more=[Entry(PART_RELS, make(rels(CONTENT)))])))
        case(f"xml-core-properties-{name}", verdict, f"core properties: {what}", with_core(make(core())))
        case(f"xml-signature-{name}", verdict, f"a digital signature: {what}", signed(make(SIGNATURE_XML)))

    everywhere("document-type", "16", "a document type (M1.18)", lambda t: t.replace("?>\n", "?>\n<!DOCTYPE a>", 1))
    everywhere("document-type-external", "16", "a document type elsewhere (M1.18)",
               lambda t: t.replace("?>\n", '?>\n<!-- x --><!DOCTYPE a SYSTEM "http://x.example/a.dtd" [<!ENTITY % b SYSTEM "file:///etc/passwd"> %b;]>', 1))
    everywhere("utf7", "15", "declared as UTF-7 (M1.17)", lambda t: t.replace("UTF-8", "UTF-7"))
    everywhere("utf16-declared-only", "15", "declared as UTF-16 and none (M1.17)", lambda t: t.replace("UTF-8", "UTF-16"))
    everywhere("utf32", "15", "in UTF-32 (M1.17)", lambda t: t.encode("utf-32"))
    everywhere("cut-at-the-start", "15", "the first bytes missing", lambda t: t[10:])

    def once(name, verdict, what, make):
        case(f"xml-{name}", verdict, what, archive(base(rl=make(rels(CONTENT)))))

    once("utf16-odd", "15", "UTF-16 with half a character (M1.17)", lambda t: t.replace("UTF-8", "UTF-16").encode("utf-16") + b"\0")
    once("utf16-lone-surrogate", "15", "UTF-16 with half a pair (M1.17)", lambda t: t.replace("UTF-8", "UTF-16").encode("utf-16") + b"\x00\xd8\x20\x00")
    once("utf8-declared-in-utf16", "15", "UTF-16 that says it is UTF-8 (M1.17)", lambda t: t.encode("utf-16"))
    once("utf8-overlong", "15", "an overlong form of UTF-8 (M1.17)", lambda t: t.encode().replace(b"?>\n", b"?>\n<!-- \xc0\xaf -->"))
    once("utf8-surrogate", "15", "a surrogate in UTF-8 (M1.17)", lambda t: t.encode().replace(b"?>\n", b"?>\n<!-- \xed\xa0\x80 -->"))
    once("version-2", "15", "a version of XML that there is not", lambda t: t.replace('"1.0"', '"2.0"'))
    once("standalone-maybe", "15", "a declaration that is not valid", lambda t: t.replace('"yes"', '"maybe"'))
    once("blank-before-declaration", "15", "a blank before the declaration", lambda t: " " + t)
    once("two-declarations", "15", "the declaration twice", lambda t: HEAD + t)
    once("comment-open", "15", "a comment that does not end", lambda t: t + "<!-- ")
    once("comment-double-hyphen", "15", "two hyphens in a comment", lambda t: t + "<!-- a -- b -->")
    once("text-behind", "15", "text behind the root", lambda t: t + "text")
    once("less-than-in-value", "15", "a '<' in an attribute", lambda t: t.replace("rId1", "r<1"))
    once("value-without-quotes", "15", "an attribute without quotes", lambda t: t.replace('"rId1"', "rId1"))
    once("attributes-without-blank", "15", "no blank between two attributes", lambda t: t.replace('"rId1" ', '"rId1"'))
    once("reference-to-nul", "15", "a reference to NUL", lambda t: t.replace("rId1", "r&#0;"))
    once("reference-to-surrogate", "15", "a reference to a surrogate", lambda t: t.replace("rId1", "r&#xD800;"))
    once("reference-too-big", "15", "a reference beyond Unicode", lambda t: t.replace("rId1", "r&#x110000;"))
    once("ampersand", "15", "an ampersand alone", lambda t: t.replace("rId1", "r&"))
    once("undeclared-prefix", "15", "a prefix that nobody declared", lambda t: t.replace("<Relationship ", "<p:Relationship "))
    once("tags-crossed", "15", "tags that do not match", lambda t: t.replace("</Relationships>", "</Relationship>"))
    once("section-open", "15", "a CDATA section that does not end", lambda t: t.replace("</Relationships>", "<![CDATA[</Relationships>"))
    once("section-end-in-text", "15", "']]>' in text", lambda t: t.replace("</Relationships>", "]]></Relationships>"))
    once("many-attributes", "15 17 23", "3,000 attributes on one element", lambda t: t.replace("<Relationship ", "<Relationship " + "".join(f'a{n}="" ' for n in range(3000))))
    once("depth-70", "15 17 23", "70 levels deep", lambda t: t.replace("</Relationships>", "<a>" * 70 + "</a>" * 70 + "</Relationships>"))


def bad_core():
    created = '<dcterms:created xsi:type="dcterms:W3CDTF">{}</dcterms:created>'
    for name, text in (("one-digit", "2020-1-1"), ("february", "2021-02-30"), ("basic", "20200101"), ("hour-alone", "2020-01-01T10"), ("minute-60", "2020-01-01T10:60:00Z"),
                       ("second-61", "2020-01-01T10:00:61Z"), ("past-midnight", "2020-01-01T24:00:01Z"), ("zone-without-colon", "2020-01-01T10:00:00+0100"),
                       ("zone-of-letters", "2020-01-01T10:00:00 UTC"), ("comma", "2020-01-01T10:00:00,5Z"), ("point-alone", "2020-01-01T10:00:00.Z"),
                       ("month-zero", "2020-00-01"), ("day-zero", "2020-01-00"), ("year-zero", "0000"), ("lower-case-t", "2020-01-01t10:00:00Z"), ("local", "01/02/2020")):
        case(f"core-date-{name}", "19", f"the date {text!r} (W3CDTF)", with_core(core(created.format(text))))
    case("core-date-modified", "19", "a modified date that is none", with_core(core(created.format("2020").replace("created", "modified").replace(">2020<", ">soon<"))))
    case("core-date-printed", "19", "a printing date that is none", with_core(core("<cp:lastPrinted>soon</cp:lastPrinted>")))
    for element in ("dc:creator", "cp:keywords", "cp:revision", "dcterms:modified"):
        one = f"<{element}>2020</{element}>" if "terms" not in element else created.format("2020").replace("created", "modified")
        case(f"core-repeated-{element.split(':')[1].lower()}", "19", f"{element} twice", with_core(core(one + one)))
    case("core-repeated-other-prefix", "19", "the title twice, under two prefixes",
         with_core(core('<dc:title>a</dc:title><d:title xmlns:d="http://purl.org/dc/elements/1.1/">b</d:title>')))
    mc = f' xmlns:mc="{NS_MC}" xmlns:v="urn:v"'
    case("core-mc-last", "19", "compatibility markup on the last element (M4.2)", with_core(core(f'<dc:title>a</dc:title><dc:creator{mc} mc:Ignorable="v">b</dc:creator>')))
    case("core-mc-element", "19", "an alternative among the properties (M4.2)", with_core(core("<mc:AlternateContent><mc:Choice/></mc:AlternateContent>", mc)))
    case("core-mc-inside", "19", "an alternative in a property (M4.2)", with_core(core("<dc:title><mc:AlternateContent/></dc:title>", mc)))
    case("core-mc-in-keywords", "19", "compatibility markup in keywords (M4.2)", with_core(core('<cp:keywords><cp:value mc:Ignorable="">a</cp:value></cp:keywords>', mc)))
    case("core-refinement-valid", "19", "dcterms:valid (M4.3)", with_core(core('<dcterms:valid xsi:type="dcterms:W3CDTF">2020</dcterms:valid>')))
    case("core-lang-on-root", "15 19", "xml:lang on the root (M4.4)", with_core(core(attributes=' xml:lang="en"')))
    case("core-lang-on-description", "19", "xml:lang on the description (M4.4)", with_core(core('<dc:description xml:lang="en">t</dc:description>')))
    case("core-type-by-prefix-text", "19", "a type whose prefix is of another namespace (M4.5)",
         with_core(core('<dcterms:created xmlns:dcterms="http://purl.org/dc/terms/" xmlns:t="urn:t" xsi:type="t:W3CDTF">2020</dcterms:created>')))
    case("core-type-undeclared", "19", "a type with a prefix that nobody declared (M4.5)", with_core(core('<dcterms:created xsi:type="q:W3CDTF">2020</dcterms:created>')))
    case("core-type-without-prefix", "19", "a type without a prefix (M4.5)", with_core(core('<dcterms:created xsi:type="W3CDTF">2020</dcterms:created>')))
    case("core-type-on-printed", "19", "xsi:type on the printing date (M4.5)", with_core(core('<cp:lastPrinted xsi:type="dcterms:W3CDTF">2020-01-01T00:00:00Z</cp:lastPrinted>')))
    case("core-type-on-root", "15 19", "xsi:type on the root (M4.5)", with_core(core(attributes=' xsi:type="cp:x"')))
    case("core-schema-location", "15 19", "xsi:schemaLocation on the root (M1.21)", with_core(core(attributes=' xsi:schemaLocation="a b"')))
    case("core-attribute", "15 19", "an unknown attribute of a property (M1.20)", with_core(core('<dc:title a="1">t</dc:title>')))
    case("core-text", "15 19", "text between the properties (M1.20)", with_core(core("text")))
    case("core-title-of-other-namespace", "15 19", "cp:title (M1.20)", with_core(core("<cp:title>t</cp:title>")))
    case("core-created-of-other-namespace", "15 19", "dc:created (M1.20)", with_core(core("<dc:created>2020</dc:created>")))
    case("core-value-elsewhere", "15 19", "cp:value outside of keywords (M1.20)", with_core(core("<cp:value>t</cp:value>")))
    case("core-value-in-value", "19", "cp:value in cp:value (M1.20)", with_core(core("<cp:keywords><cp:value>a<cp:value>b</cp:value></cp:value></cp:keywords>")))
    case("core-root", "15", "another root of its namespace (M1.20)", with_core(core().replace("coreProperties", "properties")))
    case("core-two-parts-one-relationship", "20", "two core properties parts, one of them related (M4.1)",
         with_core(core(), [Entry("docProps/core2.xml", core())], overrides=[("/docProps/core.xml", TYPE_CORE), ("/docProps/core2.xml", TYPE_CORE)]))
    case("core-two-relationships-one-dangling", "20", "a second relationship that leads nowhere (M4.1)", with_core(core(), extra_rels=[rel("gone.xml", "rId3", REL_CORE)]))


SIGNATURE_XML = HEAD + '<Signature xmlns="http://www.w3.org/2000/09/xmldsig#" Id="s"><SignedInfo/><SignatureValue>AA==</SignatureValue></Signature>'


def signature_package(signature=SIGNATURE_XML, origin_type=TYPE_SIGNATURE + "origin", signature_type=TYPE_SIGNATURE + "xmlsignature+xml",
                      package_rels=None, origin_rels=None, certificate_type=TYPE_SIGNATURE + "certificate", more=()):
    """A signed package, as far as its parts and relationships go."""
    return archive(base(
        types(("/sig/origin.sigs", origin_type), ("/sig/one.xml", signature_type), ("/sig/one.cer", certificate_type)),
        rels(CONTENT, *(package_rels or [rel("/sig/origin.sigs", "s", SIGNATURE + "origin")])),
        more=[Entry("sig/origin.sigs", ""), Entry("sig/_rels/origin.sigs.rels", rels(*(origin_rels or [rel("one.xml", "s1", SIGNATURE + "signature")]))),
              Entry("sig/one.xml", signature), Entry("sig/_rels/one.xml.rels", rels(rel("one.cer", "c", SIGNATURE + "certificate"))),
              Entry("sig/one.cer", b"\x30\x00"), *more]))


def signatures():
    case("good-signed", "ok", "a signed package (M6.1 to M6.5)", signature_package(), 4, 1)
    case("good-signature-origin-alone", "ok", "an origin without signatures (M6.1)",
         archive(base(types(("/o", TYPE_SIGNATURE + "origin")), rels(CONTENT, rel("/o", "s", SIGNATURE + "origin")), more=[Entry("o", "")])), 2, 1)
    case("signature-two-origins", "17", "two origins (M6.1)",
         signature_package(package_rels=[rel("/sig/origin.sigs", "s", SIGNATURE + "origin"), rel("/content/a.txt", "t", SIGNATURE + "origin")]))
    case("signature-origin-external", "17", "an origin outside (M6.1)",
         archive(base(rl=rels(CONTENT, rel("http://x.example/", "s", SIGNATURE + "origin", ' TargetMode="External"')))))
    case("signature-origin-of-a-part", "17", "an origin that a part leads to (M6.1)",
         signature_package(more=[Entry(PART_RELS, rels(rel("/sig/origin.sigs", "s", SIGNATURE + "origin")))]))
    case("signature-origin-type", "17", "an origin of another media type (M6.2)", signature_package(origin_type="text/plain"))
    case("signature-not-from-the-origin", "17", "a signature that the package leads to (M6.4)",
         signature_package(package_rels=[rel("/sig/origin.sigs", "s", SIGNATURE + "origin"), rel("/sig/one.xml", "t", SIGNATURE + "signature")]))
    case("signature-without-origin", "17", "signatures without an origin (M6.4)", signature_package(package_rels=[rel("/sig/origin.sigs", "s", "urn:x")]))
    case("signature-type", "17", "a signature of another media type (M6.5)", signature_package(signature_type="text/xml"))
    case("signature-external", "17", "a signature outside (M6.4)",
         signature_package(origin_rels=[rel("http://x.example/", "s", SIGNATURE + "signature", ' TargetMode="External"')]))
    case("signature-certificate-type", "17", "a certificate of another media type (M6.6)", signature_package(certificate_type="text/plain"))


def bad_container():
    x = "x" * 50
    e = Entry("x", x)
    case("zip-descriptor-missing", "7", "a data descriptor that is not there (M3.14)", archive(base(a=Entry(A, x, flags=8))))
    case("zip-descriptor-packed-size", "7", "the data descriptor's compressed size disagrees (M3.14)",
         archive(base(a=Entry(A, x, descriptor=True, local={"descriptor": {"packed": 5}}))))
    case("zip-descriptor-local-sizes", "7", "sizes before a data descriptor that disagree (M3.14)", archive(base(a=Entry(A, x, descriptor=True, local={"size": 7, "packed": 9, "crc": 3}))))
    case("zip-local-utf8-flag", "7", "one header says that the name is UTF-8 (M3.14)", archive(base(a=Entry(A, x, local={"flags": 0x800}))))
    case("zip-local-descriptor-flag", "7", "one header tells of a data descriptor (M3.14)", archive(base(a=Entry(A, x, local={"flags": 8}))))
    case("zip-local-name-case", "7", "names that differ in case (M3.14)", archive(base(a=Entry(A, x, local={"name": b"content/A.txt"}))))
    case("zip-local-zip64-size", "7", "the ZIP64 sizes of the local header disagree (M3.14)",
         archive(base(a=Entry(A, x, local={"size": 0xFFFFFFFF, "packed": 0xFFFFFFFF}, local_extra=extra(1, struct.pack("<QQ", 51, len(e.packed)))))))
    case("zip-local-extra-too-long", "7", "a local extra field that runs into what follows", archive(base(a=Entry(A, x, local={"extra_length": 60000}))))
    case("zip-local-of-unknown-item", "7", "headers disagree on an item that is no part (M3.14)", archive(base(more=[Entry("x.zzz", x, local={"name": b"y.zzz"})])))
    case("zip-local-of-directory-item", "7", "headers disagree on a directory item (M3.14)", archive(base(more=[Entry("d/", method=0, local={"name": b"e/"})])))
    case("zip-crc-of-core-properties", "10", "a wrong checksum of core properties",
         archive(base(types(("/docProps/core.xml", TYPE_CORE)), rels(CONTENT, rel("docProps/core.xml", "c", REL_CORE)), more=[Entry(CORE, core(), lies={"crc": 1})])))
    case("zip-crc-of-unknown-item", "10", "a wrong checksum of an item that is no part", archive(base(more=[Entry("x.zzz", "x", lies={"crc": 1})])))
    case("zip-size-one-too-small", "11", "inflates to one byte more than is told", archive(base(a=Entry(A, x, lies={"size": 49}))))
    case("zip-size-one-too-big", "11", "inflates to one byte less than is told", archive(base(a=Entry(A, x, lies={"size": 51}))))
    case("zip-size-zero", "11", "inflates to more than nothing", archive(base(a=Entry(A, x, lies={"size": 0, "crc": 0}))))
    case("zip-deflate-cut-by-one", "11", "the last byte of the compressed data is missing", archive(base(a=Entry(A, x, packed=e.packed[:-1]))))
    case("zip-deflate-trailing-byte", "11", "one byte behind the end of the compressed data", archive(base(a=Entry(A, x, packed=e.packed + b"\0"))))
    case("zip-deflate-reserved-block", "11", "a block of the reserved kind", archive(base(a=Entry(A, x, packed=b"\x07" + bytes(8)))))
    case("zip-deflate-distance", "11", "a distance before the beginning", archive(base(a=Entry(A, x, packed=bytes.fromhex("4b040200")))))
    case("zip-ratio-beyond-the-grace", "23", "zeros that inflate to more than 1000 times their size", archive(base(a=Entry(A, bytes(9 << 20)))))
    for name, method in (("reduced", 2), ("imploded", 6), ("tokenised", 7), ("library", 10), ("reserved", 11), ("wavpack", 97), ("ppmd", 98), ("unknown", 4711)):
        case(f"zip-method-{name}", "8", f"method {method} (M3.15)", archive(base(a=Entry(A, x, packed=b"hello", method=method))))
    case("zip-method-of-unknown-item", "8", "an unsupported method of an item that is no part (M3.15)", archive(base(more=[Entry("x.zzz", "x", packed=b"x", method=12)])))
    case("zip-version-46", "8", "an entry that needs version 4.6 (M3.15)", archive(base(a=Entry(A, x, lies={"version": 46}))))
    case("zip-encrypted-all", "9", "every entry is encrypted (M3.9)", archive([Entry(i.name, i.data, flags=1) for i in base()]))
    case("zip-encrypted-in-directory-only", "9", "only the directory says that the entry is encrypted (M3.9, M3.14)", archive(base(a=Entry(A, x, central={"flags": 1}))))
    case("zip-patched-unknown-item", "8", "patched data of an item that is no part (M3.15)", archive(base(more=[Entry("x.zzz", "x", flags=0x20)])))
    case("zip-no-entries-counted", "7", "a directory of which the end record counts nothing", archive(base(), end={"count": 0, "here": 0}))
    case("zip-count-zero-and-no-directory", "7 12", "a file that counts and lists nothing", archive(base(), end={"count": 0, "here": 0, "size": 0}))
    inner = Entry("content/b.txt", "secret", method=0)
    start = sum(len(i.local_record()) for i in base()[:2]) + 30 + len(A) + 4
    case("zip-overlap-in-extra-field", "7", "an entry hidden in the extra field of another",
         archive(base(a=Entry(A, x, local_extra=extra(0x9999, inner.local_record())), more=[Entry("content/b.txt", "secret", method=0, central={"offset": start})])))
    case("zip-overlap-chain", "7", "many entries that share one piece of compressed data",
         archive(base(a=Entry(A, bytes(100000)), more=[Entry(f"content/{n}.txt", bytes(100000), packed=b"", central={
             "offset": sum(len(i.local_record()) for i in base()[:2]), "packed": len(Entry("x", bytes(100000)).packed)}) for n in range(20)])))
    case("zip64-end-records-differ", "7", "the end record and the ZIP64 end record differ", archive(base(), zip64={"count": 4}))
    case("zip64-version", "8 7", "a ZIP64 end record that needs a newer version", archive(base(), zip64={"version": 62}))
    case("zip64-locator-lost", "6 7", "a ZIP64 locator that leads into an entry", archive(base(), zip64={"locator": 40},
         end={"count": 0xFFFF, "here": 0xFFFF, "size": 0xFFFFFFFF, "offset": 0xFFFFFFFF}))
    case("zip64-disk-number", "8 7", "an entry whose disk stands in a ZIP64 extra field and is not the first",
         archive(base(a=Entry(A, x, central={"disk": 0xFFFF}, central_extra=extra(1, struct.pack("<I", 2))))))
    case("zip-lost-end", "7", "a file whose own end is lost and that ends with that of a stored package",
         archive(base(a=Entry(A, archive(base()), method=0)))[:sum(len(i.local_record()) for i in base()[:2]) + 30 + len(A) + len(archive(base()))])
    case("zip-end-record-cut-by-comment", "6 7", "an end record whose comment ends beyond the file by one", archive(base(), comment=b"ab")[:-1])


def make():
    for group in (good_markup, good_relationships, good_core, good_container, good_pieces, signatures, bad_content_types, bad_pieces, bad_relationships, bad_xml,
                  bad_core, bad_container):
        group()
