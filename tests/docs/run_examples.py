#!/usr/bin/env python3
"""Runs every script that a document shows, from the top of the checkout, and compares what it prints with its comments.

usage: run_examples.py PROGRAM DOCUMENT...

A script is a block marked "js". What it must print stands behind three blanks and "//", in order; a script without such comments
must only end well. Windows are pictured and closed. Only a script that shows a failure may
write to the log.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).parents[2]


def examples(document):
    text = document.read_text(encoding="utf-8")
    for match in re.finditer(r"```js\n(.*?)```", text, re.DOTALL):
        yield text[:match.start()].count("\n") + 2, match.group(1)


def run(program, script, directory):
    file = pathlib.Path(directory) / "example.js"
    file.write_text(script, encoding="utf-8")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", TMPDIR=directory)
    return subprocess.run([program, "run", str(file), "--grab", f"{directory}/pictures"], cwd=TOP, env=environment, text=True,
                          capture_output=True, timeout=120, check=False)


def faults(program, script):
    expected = re.findall(r"   // (.*)", script)
    with tempfile.TemporaryDirectory() as directory:
        result = run(program, script, directory)
    if result.returncode != 0:
        yield f"ended with {result.returncode}: {result.stderr.strip()}"
    if expected and result.stdout.splitlines() != expected:
        yield f"printed {result.stdout.splitlines()}, expected {expected}"
    if result.stderr and "FAILED" not in expected:
        yield f"logged {result.stderr.strip()}"


def main(program, *documents):
    count = failed = 0
    for document in map(pathlib.Path, documents):
        for line, script in examples(document):
            count += 1
            for fault in faults(program, script):
                failed += 1
                print(f"{document.name}:{line}: {fault}")
    print(f"{count} examples")
    return 1 if failed or not count else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
