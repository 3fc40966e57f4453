#!/usr/bin/env python3
"""Writes the corpus of broken and unusual packages into the directory "broken" beside this script; --check only compares.

One small file for each defect, named after it, and INDEX.tsv, which tells what must happen:

    file      the file's name
    verdict   "ok", "warn" (opened; told in a diagnostic) or the opc codes, one of which refuses it
    parts     parts that a walk gives; "-" when it is refused
    unpack    files that unpacking writes, all inside the directory; or the codes, each behind a "!", one of which refuses it
    kinds     bundles: each kind as which it opens, or is refused with the code behind the "!", "b" for codes of bundles
    what      the defect, and the rule where there is one

The same run gives the same bytes. A finding of the fuzzer becomes a case here.
"""

import pathlib
import struct
import sys

import broken_bundles
import conformance_cases
from package_builder import (A, CASES, CORE, CT, NS_MC, REL_CORE, RELS, TYPE_CORE, TYPE_RELS, base, case, core, named, rel, rels,
                             types, with_core)
from zip_builder import Entry, archive, extra


def good_cases():
    case("good-plain", "ok", "nothing is wrong with it", archive(base()), 1, 1)
    case("good-stored", "ok", "entries stored", archive([Entry(e.name, e.data, method=0) for e in base()]), 1, 1)
    case("good-descriptor", "ok", "data descriptors", archive([Entry(e.name, e.data, descriptor=True) for e in base()]), 1, 1)
    case("good-comment", "ok", "a comment behind the end record", archive(base(), comment=b"hello"), 1, 1)
    case("good-comment-with-signature", "ok", "the comment holds the signature of an end record",
         archive(base(), comment=b"PK\x05\x06 is a signature, this is a comment"), 1, 1)
    case("good-zip64-records", "ok", "ZIP64 end records that are not needed", archive(base(), zip64={}), 1, 1)
    case("good-content-types-last", "ok", "the content types stand last", archive(base()[1:] + base()[:1]), 1, 1)
    case("good-content-types-lower-case", "ok", "the content-types item in another case (M3.10)",
         archive([Entry("[content_types].XML", types())] + base()[1:]), 1, 1)
    case("good-directory-items", "ok", "directory items (M3.7)",
         archive(base(more=[Entry("content/", method=0), Entry("_rels/", method=0)])), 1, 1)
    case("good-unknown-item", "ok", "an item without a content type (M3.5)", archive(base(more=[Entry("x/y.zzz", "?")])), 1, 1)
    case("good-trash-item", "ok", "a trash item", archive(base(more=[Entry("[trash]/0000.dat", "?")])), 1, 1)
    case("good-growth-hint", "ok", "a growth hint (M1.16)",
         archive(base(a=Entry(A, "x", local_extra=extra(0xA220, struct.pack("<HH", 0xA028, 8) + b"\0" * 8)))), 1, 1)
    case("good-unknown-extra", "ok", "an extra field that nobody knows", archive(base(a=Entry(A, "x", local_extra=extra(0x4242, b"abc"),
         central_extra=extra(0x4242, b"abcd")))), 1, 1)
    case("good-default-in-another-case", "ok", "extensions compare folded (M2.9)",
         archive(base(types(defaults=(("RELS", TYPE_RELS), ("TXT", "text/plain"))))), 1, 1)
    case("good-override-in-another-case", "ok", "overrides compare folded (M2.9)",
         archive(base(types(("/Content/A.TXT", "text/x-special")))), 1, 1)
    case("good-media-type-parameters", "ok", "parameters of a media type (M1.13)",
         archive(base(types(("/content/a.txt", "text/plain;charset=utf-8")))), 1, 1)
    case("good-utf8-bom", "ok", "a byte order mark before UTF-8 (M1.17)", archive(base(b"\xef\xbb\xbf" + types().encode())), 1, 1)
    case("good-utf16-rels", "ok", "relationships in UTF-16 (M1.17)",
         archive(base(rl=rels(rel("/content/a.txt"), head='<?xml version="1.0" encoding="UTF-16"?>').encode("utf-16"))), 1, 1)
    case("good-dotdot-target", "ok", "a relative target with dot segments (M1.23)", archive(base(rl=rels(rel("x/../content/a.txt")))), 1, 1)
    case("good-relative-target", "ok", "a relative target", archive(base(rl=rels(rel("content/a.txt")))), 1, 1)
    case("good-fragment-target", "ok", "a fragment takes no part in finding the part (M1.32)",
         archive(base(rl=rels(rel("/content/a.txt#x")))), 1, 1)
    case("good-external-anything", "ok", "external targets are anything (M1.28)",
         archive(base(rl=rels(rel("/content/a.txt"), rel("mailto:one@ two\\three%zz", "x", "urn:x", ' TargetMode="External"')))), 1, 1)
    case("good-iri-target", "ok", "a target that is an IRI finds the encoded part (M1.33)",
         archive(base(types(("/content/%D1%86.txt", "text/plain")), rels(rel("/content/\u0446.txt")), Entry("content/%D1%86.txt", "x"))), 1, 1)
    case("good-utf8-item-name", "ok", "an item name in UTF-8 is percent-encoded (M1.6)",
         archive(base(rl=rels(rel("/content/%C3%A4.txt")), a=Entry("content/\u00e4.txt", "x"))), 1, 1)
    case("good-mc-in-rels", "ok", "compatibility markup in relationships (M1.31)",
         archive(base(rl=rels(rel("/content/a.txt"), '<v:x xmlns:v="urn:v" a="1"/>',
                              attributes=f' xmlns:mc="{NS_MC}" xmlns:v="urn:v" mc:Ignorable="v"'))), 1, 1)
    case("good-dangling-internal", "warn", "an internal target that is not there",
         archive(base(rl=rels(rel("/content/a.txt"), rel("/gone.txt", "r2", "urn:x")))), 1, 1)
    case("good-core-empty", "ok", "a core properties part without properties", with_core(core("")), 2, 1)
    case("good-core-all", "ok", "all fifteen core properties", with_core(core(
        "".join(f"<cp:{n}>{n}</cp:{n}>" for n in ("category", "contentStatus", "keywords", "lastModifiedBy", "revision", "version"))
        + "".join(f"<dc:{n}>{n}</dc:{n}>" for n in ("creator", "description", "identifier", "language", "subject", "title"))
        + '<cp:lastPrinted>2020-01-02T03:04:05Z</cp:lastPrinted>'
        + "".join(f'<dcterms:{n} xsi:type="dcterms:W3CDTF">2020-01-02T03:04:05.5+01:00</dcterms:{n}>' for n in ("created", "modified")))), 2, 1)
    case("good-core-keywords-lang", "ok", "xml:lang is legal on keywords (M4.4)",
         with_core(core('<cp:keywords xml:lang="en-US">a <cp:value xml:lang="fr-FR">b</cp:value></cp:keywords>')), 2, 1)
    case("good-core-other-prefix", "ok", "xsi:type by namespace, not by prefix (M4.5)",
         with_core(core('<t:created xmlns:t="http://purl.org/dc/terms/" xsi:type="t:W3CDTF">2020-01-01</t:created>')), 2, 1)
    case("good-interleaved", "ok", "a part in pieces (M2.18)",
         archive(base(a=None, more=[Entry("content/a.txt/[0].piece", "hel"), Entry("content/a.txt/[1].last.piece", "lo!")])), 1, 1)
    case("good-one-byte-behind", "warn", "a byte behind the end record", archive(base(), suffix=b"\0"), 1, 1)
    case("good-prefix", "warn", "bytes before the first entry, offsets from the file's start", archive(base(), prefix=b"#!/bin/sh\n" * 5), 1, 1)
    case("good-nfc-and-nfd", "ok", "names that differ in normalisation are two parts",
         archive(base(rl=rels(rel("/content/%C3%A4.txt"), rel("/content/a%CC%88.txt", "r2")), a=None,
                      more=[Entry("content/%C3%A4.txt", "1"), Entry("content/a%CC%88.txt", "2")])), 2, 2)
    case("good-natural-numbers", "ok", "names that differ in leading zeros are different parts",
         archive(base(rl=rels(rel("/content/1.txt"), rel("/content/01.txt", "r2"), rel("/content/001.txt", "r3")), a=None,
                      more=[Entry(f"content/{n}.txt", n) for n in ("1", "01", "001")])), 3, 3)
    case("good-cyclic-relationships", "ok", "two parts that relate to each other",
         archive(base(more=[Entry("content/b.txt", "b"), Entry("content/_rels/a.txt.rels", rels(rel("b.txt", type="urn:x"))),
                            Entry("content/_rels/b.txt.rels", rels(rel("a.txt", type="urn:x")))])), 2, 1)
    case("good-no-relationships", "warn", "a package without package relationships",
         archive([Entry(CT, types()), Entry(A, "x")]), 1, 0)
    case("good-empty-part", "ok", "a part without bytes", archive(base(a=Entry(A, ""))), 1, 1)
    case("good-reserved-device-name", "ok", "a name that is a device elsewhere (S3.1)", named("content/CON.txt", "/content/CON.txt"), 1, 1)
    case("good-colon-name", "ok", "a colon in a name", named("content/c:x.txt", "/content/c:x.txt"), 1, 1)
    case("good-trailing-blank-name", "ok", "a blank at the end of a name",
         archive(base(types(("/content/a%20", "text/plain")), rels(rel("/content/a%20")), Entry("content/a%20", "x"))), 1, 1)


def name_cases():
    refused = [("dotdot", "../evil.txt"), ("dotdot-inside", "content/../../evil.txt"), ("dotdot-backslash", "..\\evil.txt"),
               ("absolute", "/etc/evil.txt"), ("drive", "C:\\evil.txt"), ("unc", "\\\\server\\share\\evil.txt"),
               ("encoded-dots", "%2e%2e/evil.txt"), ("encoded-slash", "content/..%2fevil.txt"),
               ("encoded-backslash", "content/..%5cevil.txt"), ("double-slash", "content//evil.txt"),
               ("dot-segment", "content/./evil.txt"), ("dot-end", "content/evil."), ("dots-only", "content/..."),
               ("blank", "content/evil file.txt"), ("percent-alone", "content/100%.txt"), ("percent-unreserved", "content/%41.txt"),
               ("control", "content/e\x01vil.txt"), ("newline", "content/e\nvil.txt"), ("quote", 'content/"evil".txt'),
               ("backslash", "content\\evil.txt"), ("question-mark", "content/evil?.txt"), ("hash", "content/evil#.txt")]
    for name, item in refused:
        case(f"name-{name}", "ok", f"an item whose name makes no part name, {item!r} (M2.16)",
             archive(base(more=[Entry(item, "evil")])), 1, 1)
    case("name-nul", "ok 7", "a NUL in an item's name", archive(base(more=[Entry(b"content/e\0vil.txt", "evil")])), 1, 1)
    case("name-invalid-utf8", "ok", "an item name that is not UTF-8", archive(base(more=[Entry(b"content/\xff\xfe.txt", "evil", flags=0x800)])), 1, 1)
    case("name-empty", "ok 7", "an item without a name", archive(base(more=[Entry("", "evil")])), 1, 1)
    case("name-encoded-nul", "ok 3", "a part whose name stands for a NUL", named("content/a%00b.txt", "/content/a%00b.txt"), 1, "24 3 1")
    case("name-encoded-invalid-utf8", "ok 3", "a part whose name stands for no UTF-8", named("content/%FF.txt", "/content/%FF.txt"), 1, "24 3 5 1")
    case("name-300-bytes", "ok", "a segment longer than file names are", named(f"content/{'n' * 300}.txt", f"/content/{'n' * 300}.txt"), 1, "24")
    case("name-5000-bytes", "ok", "a path longer than paths are",
         named("content/" + "d" * 200 + ("/" + "d" * 200) * 24 + "/a.txt", "/content/" + "d" * 200 + ("/" + "d" * 200) * 24 + "/a.txt"), 1, "24 36 1")
    case("name-case-pair", "4", "two names that differ in case alone (M1.12)", archive(base(more=[Entry("content/A.TXT", "x")])))
    case("name-twice", "4", "one name twice (M3.3)", archive(base(more=[Entry(A, "y")])))
    case("name-content-types-twice", "4 13", "two content-types items (M2.14)", archive(base(more=[Entry(CT, types())])))
    case("name-content-types-twice-in-case", "4 13", "two content-types items, one in another case",
         archive(base(more=[Entry("[CONTENT_TYPES].xml", types())])))
    case("name-encoded-twin", "4", "one name in UTF-8 and encoded (M1.6)",
         archive(base(more=[Entry("content/\u00e4.txt", "1"), Entry("content/%C3%A4.txt", "2")])))
    case("name-hex-case-twin", "4", "one name with hexadecimal digits in both cases",
         archive(base(more=[Entry("content/%c3%a4.txt", "1"), Entry("content/%C3%A4.txt", "2")])))
    case("name-derived", "5", "a part whose name continues another's (M1.11)", archive(base(more=[Entry("content/a.txt/b.txt", "x")])))
    case("name-derived-in-case", "5", "derived after folding (M1.11)", archive(base(more=[Entry("CONTENT/A.TXT/b.txt", "x")])))
    case("name-derived-far", "5", "derived with other names between (M1.11)",
         archive(base(more=[Entry("content/a.txt-1.txt", "x"), Entry("content/a.txt.txt", "x"), Entry("content/a.txt/b/c/d.txt", "x")])))
    case("name-target-outside", "ok warn", "a content target that climbs above the package",
         archive(base(rl=rels(rel("/content/a.txt"), rel("../../../etc/evil.txt", "r2")))), 1, "1 17 3")


def kind_cases():
    case("kind-symbolic-link", "ok warn", "an entry that says it is a symbolic link is no part",
         archive(base(a=Entry(A, "/etc/hostname", made_by=(3 << 8) | 20, external=0o120777 << 16))), 0, "1")
    case("kind-device", "ok warn", "an entry that says it is a device",
         archive(base(a=Entry(A, "x", made_by=(3 << 8) | 20, external=0o060666 << 16))), 0, "1")
    case("kind-fifo", "ok warn", "an entry that says it is a pipe", archive(base(a=Entry(A, "x", made_by=(3 << 8) | 20, external=0o010666 << 16))), 0, "1")
    case("kind-setuid", "ok", "an entry with the set-user bit", archive(base(a=Entry(A, "x", made_by=(3 << 8) | 20, external=0o104777 << 16))), 1, 1)
    case("kind-directory-with-bytes", "ok", "a directory item that has bytes", archive(base(more=[Entry("content/d/", "bytes", method=0)])), 1, 1)


def container_cases():
    whole = archive(base())
    names = [("nothing", 0), ("one-byte", 1), ("signature", 4), ("local-header", 20), ("first-data", 60), ("half", len(whole) // 2)]
    start = whole.index(b"PK\x01\x02")
    end = whole.index(b"PK\x05\x06")
    names += [("before-directory", start), ("in-directory", start + 30), ("before-end-record", end), ("in-end-record", end + 10),
              ("last-byte", len(whole) - 1)]
    for name, length in names:
        case(f"zip-truncated-{name}", "6 7", f"truncated: {name}", whole[:length])
    case("zip-text", "6", "a text file", b"This is no archive.\n" * 10)
    case("zip-zeros", "6", "zeros", b"\0" * 4096)
    case("zip-ole2", "6", "an OLE2 compound file", bytes.fromhex("d0cf11e0a1b11ae1") + b"\0" * 1024)
    case("zip-empty-archive", "12", "an archive without entries", archive([]))
    case("zip-comment-length", "6 7", "a comment longer than the file", archive(base(), end={"comment_length": 500}))
    case("zip-two-end-records", "warn ok 7", "an end record inside the comment that covers the rest",
         archive(base(), comment=archive([])))
    for field, value in (("disk", 1), ("start_disk", 1)):
        case(f"zip-multi-disk-{field.replace('_', '-')}", "8 7", "an archive of several disks (M3.15)", archive(base(), end={field: value}))
    case("zip-count-too-high", "7", "more entries told than there are", archive(base(), end={"count": 9, "here": 9}))
    case("zip-count-too-low", "7", "fewer entries told than there are", archive(base(), end={"count": 2, "here": 2}))
    case("zip-counts-differ", "7 8", "the counts of this disk and of all differ", archive(base(), end={"here": 1}))
    case("zip-directory-size-too-big", "7 6", "a directory that is longer than the file", archive(base(), end={"size": 100000}))
    case("zip-directory-size-too-small", "7", "a directory that ends in the middle of an entry", archive(base(), end={"size": 40}))
    case("zip-directory-offset-outside", "7 6", "a directory outside the file", archive(base(), end={"offset": 0x7FFFFFF0}))
    case("zip-directory-offset-wrong", "7", "a directory that is elsewhere", archive(base(), end={"offset": 3}))
    case("zip-entry-offset-outside", "7", "an entry outside the file", archive(base(a=Entry(A, "x", central={"offset": 0x7FFFFFF0}))))
    case("zip-entry-offset-in-directory", "7", "an entry inside the directory",
         archive(base(a=Entry(A, "x", central={"offset": start + 5}))))
    case("zip-entry-size-outside", "7", "compressed bytes that reach outside the file", archive(base(a=Entry(A, "x", lies={"packed": 100000}))))
    case("zip-entry-disk", "8 7", "an entry on another disk (M3.15)", archive(base(a=Entry(A, "x", central={"disk": 3}))))
    case("zip-overlap-same-header", "7", "two entries share one local header",
         archive(base(more=[Entry("content/b.txt", "x", central={"offset": 0})])))
    inner = Entry("content/b.txt", "secret", method=0).local_record()
    case("zip-overlap-inside", "7", "an entry inside another's bytes",
         archive(base(a=Entry(A, inner, method=0), more=[Entry("content/b.txt", "secret", method=0, central={"offset": 1200})])))
    case("zip-directory-signature", "7", "a directory record with a wrong signature", archive(base(a=Entry(A, "x", central={"signature": 0x11111111}))))
    case("zip-directory-name-too-long", "7", "a name that runs over the directory's end", archive(base(a=Entry(A, "x", central={"name_length": 60000}))))
    case("zip-local-signature", "7", "a local header with a wrong signature (M3.14)", archive(base(a=Entry(A, "x", local={"signature": 0x11111111}))))
    case("zip-local-name", "7", "names disagree (M3.14)", archive(base(a=Entry(A, "x", local={"name": b"content/b.txt"}))))
    case("zip-local-name-length", "7", "name lengths disagree (M3.14)", archive(base(a=Entry(A, "x", local={"name_length": 5}))))
    case("zip-local-method", "7", "methods disagree (M3.14)", archive(base(a=Entry(A, "x", local={"method": 0}))))
    case("zip-local-flags", "7", "encryption flags disagree (M3.14)", archive(base(a=Entry(A, "x", local={"flags": 1}))))
    case("zip-local-crc", "7 10", "checksums disagree (M3.14)", archive(base(a=Entry(A, "x", local={"crc": 1}))))
    case("zip-local-size", "7", "sizes disagree (M3.14)", archive(base(a=Entry(A, "x", local={"size": 77}))))
    case("zip-local-packed-size", "7", "compressed sizes disagree (M3.14)", archive(base(a=Entry(A, "x", local={"packed": 2}))))
    case("zip-descriptor-crc", "7 10", "the data descriptor's checksum disagrees (M3.14)",
         archive(base(a=Entry(A, "x" * 50, descriptor=True, local={"descriptor": {"crc": 5}}))))
    case("zip-descriptor-size", "7", "the data descriptor's size disagrees (M3.14)",
         archive(base(a=Entry(A, "x" * 50, descriptor=True, local={"descriptor": {"size": 5}}))))
    case("zip-crc", "10", "a wrong checksum", archive(base(a=Entry(A, "hello", lies={"crc": 0x12345678}))))
    case("zip-crc-stored", "10", "a wrong checksum of a stored entry", archive(base(a=Entry(A, "hello", method=0, lies={"crc": 0x12345678}))))
    case("zip-crc-of-content-types", "10", "a wrong checksum of the content types",
         archive([Entry(CT, types(), lies={"crc": 1})] + base()[1:]))
    case("zip-crc-of-relationships", "10", "a wrong checksum of the relationships",
         archive([base()[0], Entry(RELS, rels(rel("/content/a.txt")), lies={"crc": 1}), base()[2]]))
    case("zip-size-too-small", "11 7", "inflates to more than is told", archive(base(a=Entry(A, "hello " * 50, lies={"size": 10}))))
    case("zip-size-too-big", "11 7", "inflates to less than is told", archive(base(a=Entry(A, "hello " * 50, lies={"size": 100000}))))
    case("zip-stored-sizes-differ", "7 11", "a stored entry with two sizes", archive(base(a=Entry(A, "hello", method=0, lies={"size": 9}))))
    case("zip-deflate-garbage", "11 7", "compressed bytes that are none", archive(base(a=Entry(A, "hello " * 9, packed=b"\xff\xfe\xfd" * 9))))
    case("zip-deflate-cut", "11 7", "compressed bytes that end too early",
         archive(base(a=Entry(A, bytes(range(256)) * 4, packed=Entry("x", bytes(range(256)) * 4).packed[:100]))))
    case("zip-deflate-trailing", "11 7", "bytes behind the end of the compressed data",
         archive(base(a=Entry(A, "hello " * 9, packed=Entry("x", "hello " * 9).packed + b"tail"))))
    case("zip-deflate-nothing", "11 7", "no compressed bytes at all", archive(base(a=Entry(A, "hello", packed=b""))))
    for method, name in ((1, "shrunk"), (9, "deflate64"), (12, "bzip2"), (14, "lzma"), (93, "zstandard"), (95, "xz"), (99, "aes")):
        case(f"zip-method-{name}", "8 9", f"method {method}, {name} (M3.15)", archive(base(a=Entry(A, "hello", packed=b"hello", method=method))))
    case("zip-encrypted", "9", "an encrypted entry (M3.9)", archive(base(a=Entry(A, "hello", flags=1))))
    case("zip-encrypted-strongly", "9 8", "strong encryption (M3.9)", archive(base(a=Entry(A, "hello", flags=0x41))))
    case("zip-encrypted-unknown-item", "9", "an encrypted item that is no part", archive(base(more=[Entry("x.zzz", "hello", flags=1)])))
    case("zip-directory-encrypted", "9 8 7", "masked headers", archive(base(a=Entry(A, "hello", flags=0x2001))))
    case("zip-patched-data", "8", "patched data (M3.15)", archive(base(a=Entry(A, "hello", flags=0x20))))
    case("zip-version-needed", "8", "a version that nobody here knows (M3.15)", archive(base(a=Entry(A, "hello", lies={"version": 63}))))
    case("zip-ratio", "23 11", "10 MB in a few bytes that claim to be more than deflate can",
         archive(base(a=Entry(A, b"", packed=Entry("x", b"\0" * (10 << 20)).packed, lies={"size": 0x7FFF0000}))))
    case("zip-ratio-of-content-types", "23 11", "content types that claim 2 GB",
         archive([Entry(CT, b"", packed=Entry("x", b" " * (1 << 20)).packed, lies={"size": 0x7FFF0000})] + base()[1:]))
    for field, value in (("count", 1 << 60), ("size", 1 << 60), ("offset", 1 << 60), ("locator", 1 << 60), ("record_size", 1 << 60), ("disks", 7)):
        case(f"zip64-{field.replace('_', '-')}", "6 7 8", f"ZIP64 end records: {field} is absurd",
             archive(base(), zip64={field: value}, end={"count": 0xFFFF, "here": 0xFFFF, "size": 0xFFFFFFFF, "offset": 0xFFFFFFFF}))
    case("zip64-missing", "6 7", "the end record points to ZIP64 records that are not there", archive(base(), end={"offset": 0xFFFFFFFF}))
    case("zip64-extra-missing", "7", "sizes are in a ZIP64 extra field that is not there",
         archive(base(a=Entry(A, "x", central={"size": 0xFFFFFFFF}))))
    case("zip64-extra-short", "7", "a ZIP64 extra field that is too short",
         archive(base(a=Entry(A, "x", central={"size": 0xFFFFFFFF}, central_extra=extra(1, b"abc")))))
    case("zip64-extra-absurd", "7", "a ZIP64 extra field with an absurd offset",
         archive(base(a=Entry(A, "x", central={"offset": 0xFFFFFFFF}, central_extra=extra(1, struct.pack("<Q", 1 << 62))))))
    case("zip64-extra-wraps", "7", "sizes that wrap around",
         archive(base(a=Entry(A, "x", central={"packed": 0xFFFFFFFF}, central_extra=extra(1, struct.pack("<Q", (1 << 64) - 10))))))
    case("zip-extra-too-long", "7 ok", "an extra field that runs over its room",
         archive(base(a=Entry(A, "x", central_extra=struct.pack("<HH", 0x4242, 500) + b"ab"))), 1, 1)
    case("zip-unicode-path", "ok", "a Unicode-path extra field does not rename the item (Info-ZIP 0x7075)",
         archive(base(a=Entry(A, "x", central_extra=extra(0x7075, b"\1\0\0\0\0content/evil.txt")))), 1, 1)
    case("zip-junk-behind", "6 warn", "a kilobyte of junk behind the end record", archive(base(), suffix=b"junk" * 256), 1, 1)
    case("zip-junk-between", "ok warn", "bytes between the last entry and the directory", archive(base(), gap=b"junk" * 5), 1, 1)
    case("zip-self-extractor-shifted", "7 6 warn", "a prefix for which the offsets do not account",
         archive(base(), prefix=b"MZ" + b"x" * 98, shift_offsets=True), 1, 1)


def xml_cases():
    def for_each(name, verdict, what, make):
        """The same defect in content types, relationships and core properties."""
        case(f"xml-content-types-{name}", verdict, f"content types: {what}", archive(base(ct=make(types()))))
        case(f"xml-relationships-{name}", verdict, f"relationships: {what}", archive(base(rl=make(rels(rel("/content/a.txt"))))))
        case(f"xml-core-properties-{name}", verdict, f"core properties: {what}", with_core(make(core())))

    dtd = '<!DOCTYPE x [<!ENTITY a "b">]>'
    for_each("empty", "15 13 17 19", "no bytes", lambda t: "")
    for_each("text", "15 13 17 19", "plain text", lambda t: "hello")
    for_each("cut", "15", "cut in the middle", lambda t: t[:len(t) - 5])
    for_each("doctype", "16", "a DOCTYPE (M1.18)", lambda t: t.replace("?>\n", "?>\n" + dtd))
    for_each("doctype-plain", "16", "a DOCTYPE without entities (M1.18)", lambda t: t.replace("?>\n", "?>\n<!DOCTYPE html>"))
    for_each("two-roots", "15", "two root elements", lambda t: t + "<more/>")
    for_each("unknown-entity", "15", "an entity that nobody declared", lambda t: t.replace("ContentType=\"text", "ContentType=\"&nbsp;text")
             .replace("Target=\"", "Target=\"&nbsp;").replace("<dc:title>", "<dc:title>&nbsp;"))
    for_each("duplicate-attribute", "15", "an attribute twice", lambda t: t.replace(" xmlns", ' xmlns:q="urn:q" xmlns:q="urn:q" xmlns', 1))
    for_each("latin-1", "15", "another encoding (M1.17)", lambda t: t.replace("UTF-8", "ISO-8859-1"))
    for_each("invalid-utf8", "15", "bytes that are not UTF-8", lambda t: t.encode().replace(b"?>\n", b"?>\n<!-- \xff -->"))
    for_each("control-character", "15", "a character that XML forbids", lambda t: t.replace("?>\n", "?>\n<!-- \x01 -->"))
    for_each("other-namespace", "15 13 17 19", "the root in another namespace (M1.20)",
             lambda t: t.replace("package/2006", "package/2005"))
    for_each("deep", "15 23 13 17 19", "10,000 levels deep", lambda t: t[:t.rindex("</")] + "<a>" * 10000 + "</a>" * 10000 + t[t.rindex("</"):])
    case("xml-relationships-lang", "15 17", "xml:lang in relationships (M1.21)", archive(base(rl=rels(rel("/content/a.txt"), attributes=' xml:lang="en"'))))
    case("xml-relationships-base", "15 17", "xml:base in relationships (M1.21)", archive(base(rl=rels(rel("/content/a.txt"), attributes=' xml:base="/x/"'))))
    case("xml-relationships-element", "15 17", "an unknown element (M1.20)", archive(base(rl=rels(rel("/content/a.txt"), "<Other/>"))))
    case("xml-relationships-attribute", "15 17", "an unknown attribute (M1.20)", archive(base(rl=rels(rel("/content/a.txt", more=' Other="1"')))))
    case("xml-content-types-element", "15 13", "an unknown element (M1.20)", archive(base(types(inner="<Other/>"))))
    case("xml-content-types-attribute", "15 13", "an unknown attribute (M1.20)",
         archive(base(types(inner='<Default Extension="q" ContentType="a/b" Other="1"/>'))))


def content_type_cases():
    case("types-missing", "12", "no content types (M2.1)", archive(base()[1:]))
    case("types-two-defaults", "13", "two defaults of one extension (M2.5)",
         archive(base(types(defaults=(("rels", TYPE_RELS), ("txt", "text/plain"), ("TXT", "text/plain"))))))
    case("types-two-overrides", "13", "two overrides of one name (M2.5)",
         archive(base(types(("/content/a.txt", "a/b"), ("/CONTENT/a.txt", "a/b")))))
    case("types-empty-extension", "13", "a default without an extension (M2.6)", archive(base(types(inner='<Default Extension="" ContentType="a/b"/>'))))
    case("types-no-extension", "13 15", "a default that names no extension (M2.6)", archive(base(types(inner='<Default ContentType="a/b"/>'))))
    case("types-default-without-type", "13 14 15", "a default without a type (M2.6)", archive(base(types(inner='<Default Extension="q"/>'))))
    case("types-override-without-type", "13 14 15", "an override without a type (M2.7)", archive(base(types(inner='<Override PartName="/q"/>'))))
    for name, value in (("no-slash", "content/a.txt"), ("two-slashes", "/content//a.txt"), ("dotdot", "/../a.txt"), ("dot-end", "/a.")):
        case(f"types-override-{name}", "13 3", f"an override of {value!r} (M2.7)", archive(base(types((value, "a/b")))))
    for name, value in (("empty", ""), ("no-subtype", "text"), ("no-type", "/plain"), ("blank", "text /plain"), ("leading-blank", " text/plain"),
                        ("trailing-blank", "text/plain "), ("comment", "text/plain (hello)"), ("two", "text/plain/more"), ("semicolon", "text/plain;"),
                        ("umlaut", "text/pl\u00e4in")):
        case(f"types-media-type-{name}", "14 13", f"the media type {value!r} (M1.13 to M1.15)", archive(base(types(("/content/a.txt", value)))))
    case("types-parameters-on-rels", "14 13 17", "parameters on the relationships type (M1.22)",
         archive(base(types(defaults=(("rels", TYPE_RELS + ";a=b"), ("txt", "text/plain"))))))
    case("types-mc", "13 15", "compatibility markup in content types (M2.10)",
         archive(base(types(attributes=f' xmlns:mc="{NS_MC}" xmlns:v="urn:v" mc:Ignorable="v"'))))
    case("types-of-rels", "17 13", "relationships of another type (M1.30)",
         archive(base(types(("/_rels/.rels", "application/xml")))))
    case("pieces-mixed", "27", "a part as item and as pieces (M2.11)",
         archive(base(more=[Entry("content/a.txt/[0].last.piece", "x")])))
    case("pieces-duplicate", "27 4", "two pieces of one number (M2.15)",
         archive(base(a=None, more=[Entry(f"content/a.txt/{n}", "x") for n in ("[0].piece", "[0].PIECE", "[1].last.piece")])))
    case("pieces-incomplete", "ok warn", "pieces without an end are no part (M2.18)",
         archive(base(rl=rels(), a=None, more=[Entry("content/a.txt/[0].piece", "x"), Entry("content/b.txt", "b")])), 1, 0)


def relationship_cases():
    def one(name, verdict, what, *relationships, parts="-", unpack="-"):
        case(f"rel-{name}", verdict, what, archive(base(rl=rels(*relationships))), parts, unpack)

    a = "/content/a.txt"
    one("duplicate-id", "18", "one id twice (M1.26)", rel(a), rel("/content/a.txt", "rId1", "urn:x"))
    one("no-id", "17 15", "no id (M1.26)", f'<Relationship Type="urn:x" Target="{a}"/>')
    one("id-digit", "17 15", "an id that begins with a digit (M1.26)", rel(a, "1"))
    one("id-empty", "17 15", "an empty id (M1.26)", rel(a, ""))
    one("id-blank", "17 15", "an id with a blank (M1.26)", rel(a, "a b"))
    one("id-colon", "17 15", "an id with a colon (M1.26)", rel(a, "a:b"))
    one("no-type", "17 15", "no type (M1.27)", f'<Relationship Id="r" Target="{a}"/>')
    one("no-target", "17 15", "no target (M1.28)", '<Relationship Id="r" Type="urn:x"/>')
    one("mode", "17 15", "an unknown target mode (M1.20)", rel(a, more=' TargetMode="Sideways"'))
    one("mode-lower-case", "17 15", "a target mode in lower case (M1.20)", rel(a, more=' TargetMode="internal"'))
    one("absolute-internal", "17", "an internal target with a scheme (M1.29)", rel("http://example.com/content/a.txt"))
    one("network-path", "17", "an internal target with an authority (M1.29)", rel("//example.com/content/a.txt"))
    one("to-rels", "17", "a relationship to a relationships part (M1.25)", rel("/_rels/.rels"))
    one("external-content", "ok", "content that lies outside", rel("http://example.com/a.txt", more=' TargetMode="External"'), parts=1, unpack="22 1 =0")
    one("dangling-content", "warn", "content that is not there", rel("/content/gone.txt"), parts=1, unpack="1")
    one("content-is-content-types", "ok warn 17 3", "content that is the content-types stream", rel("/%5BContent_Types%5D.xml"), parts=1, unpack="1 3 17 24")
    one("content-twice", "ok", "two relationships to one content part", rel(a), rel(a, "r2"), parts=1, unpack="=1 26")
    case("rel-of-rels", "17", "relationships of a relationships part (M1.25)",
         archive(base(more=[Entry("_rels/_rels/.rels.rels", rels(rel(a)))])))
    case("rel-of-no-part", "warn ok", "relationships of a part that is not there (M1.30)",
         archive(base(more=[Entry("content/_rels/gone.txt.rels", rels(rel("a.txt", type="urn:x")))])), 1, 1)
    case("rel-of-part-broken", "15 17", "a part's relationships are broken",
         archive(base(more=[Entry("content/_rels/a.txt.rels", "no XML")])))


def core_cases():
    created = '<dcterms:created xsi:type="dcterms:W3CDTF">{}</dcterms:created>'
    for name, text in (("word", "tomorrow"), ("month", "2020-13-01"), ("day", "2021-02-29"), ("hour", "2020-01-01T25:00:00Z"), ("zone", "2020-01-01T10:00:00+15:00"),
                       ("letters", "2014aaa-10-28T11:34:00Z"), ("blank-inside", "2020-01-01 10:00:00"), ("two-digits", "20-01-01")):
        case(f"core-date-{name}", "19", f"the date {text!r} (M4.5)", with_core(core(created.format(text))))
    case("core-no-type", "19", "created without xsi:type (M4.5)", with_core(core("<dcterms:created>2020-01-01</dcterms:created>")))
    case("core-wrong-type", "19", "created with another type (M4.5)", with_core(core('<dcterms:created xsi:type="dcterms:Period">2020-01-01</dcterms:created>')))
    case("core-type-elsewhere", "19", "xsi:type on the title (M4.5)", with_core(core('<dc:title xsi:type="dcterms:W3CDTF">t</dc:title>')))
    case("core-lang", "19", "xml:lang on the title (M4.4)", with_core(core('<dc:title xml:lang="en">t</dc:title>')))
    case("core-repeated", "19", "the title twice", with_core(core("<dc:title>a</dc:title><dc:title>b</dc:title>")))
    case("core-nested", "19", "an element in the title", with_core(core("<dc:title>a<b/></dc:title>")))
    case("core-refinement", "19", "a refinement of Dublin Core (M4.3)", with_core(core("<dcterms:abstract>a</dcterms:abstract>")))
    case("core-unknown", "15 19", "an unknown element", with_core(core("<cp:colour>red</cp:colour>")))
    case("core-mc", "19 15", "compatibility markup (M4.2)", with_core(core(attributes=f' xmlns:mc="{NS_MC}" xmlns:v="urn:v" mc:Ignorable="v"')))
    case("core-two-parts", "20", "two core properties parts (M4.1)",
         with_core(core(), [Entry("docProps/core2.xml", core())], [rel("docProps/core2.xml", "rId3", REL_CORE)],
                   [("/docProps/core.xml", TYPE_CORE), ("/docProps/core2.xml", TYPE_CORE)]))
    case("core-two-relationships", "20", "two relationships to one core properties part (M4.1)",
         with_core(core(), extra_rels=[rel("docProps/core.xml", "rId3", REL_CORE)]))
    case("core-external", "19 20 22", "core properties outside (M4.1)",
         archive(base(rl=rels(rel("/content/a.txt"), rel("http://example.com/core.xml", "r2", REL_CORE, ' TargetMode="External"')))))
    case("core-other-type", "19", "core properties of another media type (M4.1)", with_core(core(), overrides=[("/docProps/core.xml", "application/xml")]))
    case("core-of-a-part", "19 17 20", "core properties related from a part (M4.1)",
         archive(base(types(("/docProps/core.xml", TYPE_CORE)), more=[Entry(CORE, core()),
                      Entry("content/_rels/a.txt.rels", rels(rel("/docProps/core.xml", type=REL_CORE)))])))


def files():
    """Every file of the corpus with its bytes."""
    index = ["file\tverdict\tparts\tunpack\tkinds\twhat"]
    for name, verdict, parts, unpack, kinds, what, data in CASES:
        yield f"{name}.zip", data
        index.append(f"{name}.zip\t{verdict}\t{parts}\t{unpack}\t{kinds}\t{what}")
    yield "INDEX.tsv", ("\n".join(index) + "\n").encode()


def write_all(directory):
    directory.mkdir(exist_ok=True)
    for old in directory.glob("*.zip"):
        old.unlink()
    for name, data in files():
        (directory / name).write_bytes(data)


def differences(directory):
    made = dict(files())
    yield from sorted({path.name for path in directory.iterdir()} ^ made.keys())
    yield from (name for name, data in made.items() if (directory / name).exists() and (directory / name).read_bytes() != data)


def main(directory, is_check):
    for make in (good_cases, name_cases, kind_cases, container_cases, xml_cases, content_type_cases, relationship_cases, core_cases,
                 conformance_cases.make, broken_bundles.make):
        make()
    assert len({c[0] for c in CASES}) == len(CASES)
    if not is_check:
        write_all(directory)
        print(len(CASES), "files")
        return 0
    found = list(differences(directory))
    print("differ from what the script makes:", *found) if found else print(len(CASES), "files are as the script makes them")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(__file__).parent / "broken", sys.argv[1:] == ["--check"]))
