#!/usr/bin/env python3
"""Checks what a desktop knows of the program: desktop entries, AppStream metadata, media types, icons.

usage: check_desktop_files.py entries|metadata|media_types|icons

Exits with 77 where the tool that judges is missing.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

TOP = pathlib.Path(__file__).parents[2]
DESKTOP = TOP / "packaging/desktop"
MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"
SKIPPED = 77


def run(tool, *words):
    if not shutil.which(tool):
        print(f"{tool} is not installed: skipped")
        sys.exit(SKIPPED)
    result = subprocess.run([tool, *map(str, words)], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    assert result.returncode == 0, result.stdout
    return result.stdout


def declared_types():
    """media type -> (its base, its globs with their weights)"""
    root = ElementTree.parse(next(DESKTOP.glob("*.hollerwick.xml"))).getroot()
    return {element.get("type"): (element.find(MIME + "sub-class-of").get("type"),
                                  {glob.get("pattern"): glob.get("weight") for glob in element.iter(MIME + "glob")})
            for element in root.iter(MIME + "mime-type")}


def types_of_the_libraries():
    """glob -> media type, from the one table of the libraries"""
    table = (TOP / "host/core/text/file_kinds.cpp").read_text(encoding="utf-8")
    names = dict(re.findall(r'string_view (\w+) = "(application/vnd\.kelvaris\.[\w.-]+\+zip)"', table))
    return {"*" + suffix: names[name] for suffix, name in re.findall(r'"(\.\w+(?:\.\w+)?)", (\w+)}', table) if name in names}


def entries():
    for entry in DESKTOP.glob("*.desktop"):
        assert run("desktop-file-validate", entry) == "", entry
        text = entry.read_text(encoding="utf-8")
        opened = re.search(r"^MimeType=(.*)", text, re.MULTILINE)
        assert set(opened[1].split(";")[:-1] if opened else []) <= set(declared_types()), entry
        assert "Exec=hollerwick-host " in text and "Icon=hollerwick\n" in text
    program = (TOP / "host/shell/host_application.cpp").read_text(encoding="utf-8")
    named = re.search(r'setDesktopFileName\(QStringLiteral\("(.*)"\)\)', program)[1]
    assert (DESKTOP / f"{named}.desktop").exists(), named


def metadata():
    file = next(DESKTOP.glob("*.metainfo.xml"))
    findings = [line for line in run("appstreamcli", "validate", "--no-net", "--no-color", file).splitlines() if re.match(r"[EWI]:", line)]
    assert not findings, findings
    root = ElementTree.parse(file).getroot()
    assert (DESKTOP / root.find("launchable").text).exists()
    assert {element.text for element in root.iter("mediatype")} == set(declared_types())


def media_types():
    types = declared_types()
    assert "application/zip" not in types
    for media_type, (base, globs) in types.items():
        assert base == "application/zip" or types[base][0] == "application/zip", media_type
        assert set(globs.values()) <= {"60"}, media_type
    assert {glob: media_type for media_type, (_, globs) in types.items() for glob in globs} == types_of_the_libraries()
    with tempfile.TemporaryDirectory() as directory:
        packages = pathlib.Path(directory, "packages")
        packages.mkdir()
        shutil.copy(next(DESKTOP.glob("*.hollerwick.xml")), packages)
        run("update-mime-database", directory)
        assert "60:application/vnd.kelvaris.content-bundle+zip:*.kvbdl.zip\n" in pathlib.Path(directory, "globs2").read_text(encoding="utf-8")


def icons():
    wanted = {f"mimetypes/{media_type.replace('/', '-')}.svg" for media_type in declared_types()} | {"apps/hollerwick.svg"}
    found = {str(file.relative_to(DESKTOP / "icons")) for file in (DESKTOP / "icons").rglob("*.svg")}
    assert found == wanted, found ^ wanted
    for file in found:
        root = ElementTree.parse(DESKTOP / "icons" / file).getroot()
        assert root.get("width") == root.get("height") and root.get("viewBox"), file


if __name__ == "__main__":
    {"entries": entries, "metadata": metadata, "media_types": media_types, "icons": icons}[sys.argv[1]]()
