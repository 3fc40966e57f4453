#!/usr/bin/env python3
"""Every link and picture of a document leads to a file of the tree, and every heading that is linked to is there."""

import pathlib
import re
import sys

TOP = pathlib.Path(__file__).parents[2]


def anchors(document):
    """The names of headings, as they are linked to."""
    headings = re.findall(r"^#+ (.*)", document.read_text(encoding="utf-8"), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def faults(document):
    text = re.sub(r"```.*?```", "", document.read_text(encoding="utf-8"), flags=re.DOTALL)
    for target in re.findall(r"\]\(([^)\s]+)\)", text):
        if "://" in target:
            continue
        path, _, anchor = target.partition("#")
        file = document.parent / path if path else document
        if not file.exists():
            yield f"no file {target}"
        elif anchor and anchor not in anchors(file):
            yield f"no heading {target}"


def main():
    documents = [TOP / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md", "samples/README.md")] + sorted(TOP.glob("docs/*.md"))
    found = [f"{document.relative_to(TOP)}: {fault}" for document in documents for fault in faults(document)]
    print("\n".join(found) or f"{len(documents)} documents")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
