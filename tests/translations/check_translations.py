#!/usr/bin/env python3
"""Collects the texts of the windows anew and compares them with a translation: each has one, and it keeps the marks of the
original.

usage: check_translations.py LUPDATE TRANSLATION
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

TOP = pathlib.Path(__file__).parents[2]


def collected(lupdate, translation):
    """The messages as they stand after an update, as (context, message); those that no source has are gone."""
    with tempfile.TemporaryDirectory() as directory:
        updated = pathlib.Path(directory) / translation.name
        shutil.copy(translation, updated)
        subprocess.run([lupdate, "-silent", "-I", ".", "-no-obsolete", "-locations", "none", "host/shell", "browsers", "editors",
                        "-ts", str(updated)], cwd=TOP, check=True, stderr=subprocess.DEVNULL)
        return list(messages(updated))


def messages(file):
    for context in ElementTree.parse(file).getroot().findall("context"):
        for message in context.findall("message"):
            yield context.find("name").text, message


def texts(translation):
    forms = translation.findall("numerusform")
    return [form.text or "" for form in forms] if forms else [translation.text or ""]


def marks(text):
    """What must stand in a translation as it stands in the original, in any order."""
    return sorted(re.findall(r"%[n\d]|\*\.[\w.]+|\[\*\]|F\d+", text))


def faults(message):
    source, translation = message.find("source").text, message.find("translation")
    if translation.get("type"):
        yield f"is {translation.get('type')}"
    for text in texts(translation):
        if not text.strip():
            yield "is empty"
        elif marks(text) != marks(source):
            yield f"loses a mark: {text}"
        elif text.replace("&&", "").count("&") != source.replace("&&", "").count("&"):
            yield f"has another number of mnemonics: {text}"
        elif text.endswith("…") != source.endswith("…"):
            yield f"ends otherwise: {text}"


def main(lupdate, translation):
    translation = pathlib.Path(translation)
    found = collected(lupdate, translation)
    failed = 0
    for context, message in found:
        for fault in faults(message):
            failed += 1
            print(f"{context}: \"{message.find('source').text}\" {fault}")
    gone = len(list(messages(translation))) - len(found)
    if gone > 0:
        print(f"{gone} texts are in no window any more; \"./dev translations\" drops them")
    print(f"{len(found)} texts")
    return 1 if failed or gone > 0 or not found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
