#!/usr/bin/env python3
"""Runs every script and every command that a document shows, and compares what they print with what the document says.

usage: run_examples.py PROGRAM DOCUMENT

Blocks by their mark:

js      runs from the top of the checkout. What it must print stands behind three blanks and "//", in order; a script without such
        comments must only end well. Only a script that shows a failure may write to the log. A script that begins with "// NAME.js"
        is saved under that name for the commands of the document instead.
sh      the commands of a document run one after another in a scratch checkout. "hollerwick-host" pictures and closes its windows;
        what builds, installs or fetches is not run, but must exist (the functions at the end of this file).
output  what the block of commands in front of it prints, to the letter.

Any other block needs a mark too, so that no command hides behind its lack.
"""

import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).parents[2]
END_OF_BLOCK = "\x1e"


def blocks(document):
    """line, mark and text of each fenced block"""
    text = document.read_text(encoding="utf-8")
    for match in re.finditer(r"^```(\w*)\n(.*?)^```$", text, re.DOTALL | re.MULTILINE):
        yield text[:match.start()].count("\n") + 2, match.group(1), match.group(2)


def windowless(directory):
    return dict(os.environ, QT_QPA_PLATFORM="offscreen", TMPDIR=directory, LC_ALL="C.UTF-8")


def script_name(text):
    name = re.match(r"// (\w+\.js)\b", text)
    return name and name[1]


def script_faults(program, script):
    expected = re.findall(r"   // (.*)", script)
    with tempfile.TemporaryDirectory() as directory:
        file = pathlib.Path(directory, "example.js")
        file.write_text(script, encoding="utf-8")
        result = subprocess.run([program, "run", str(file), "--grab", f"{directory}/pictures"], cwd=TOP, env=windowless(directory),
                                text=True, capture_output=True, timeout=120, check=False)
    if result.returncode != 0:
        yield f"ended with {result.returncode}: {result.stderr.strip()}"
    if expected and result.stdout.splitlines() != expected:
        yield f"printed {result.stdout.splitlines()}, expected {expected}"
    if result.stderr and "FAILED" not in expected:
        yield f"logged {result.stderr.strip()}"


def write_program(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("#!/usr/bin/env bash\n" + text, encoding="utf-8")
    path.chmod(path.stat().st_mode | stat.S_IXUSR)


def make_checkout(checkout, program, scripts):
    """A checkout whose programs are the ones that were built for the test."""
    for entry in TOP.iterdir():
        if entry.name not in ("build", "dev", ".git"):
            (checkout / entry.name).symlink_to(entry)
    for name, text in scripts.items():
        (checkout / name).write_text(text, encoding="utf-8")
    host = checkout / "build/release/bin/hollerwick-host"
    plugin = checkout / "build/plugin/lib/hollerwick"
    plugin.mkdir(parents=True)
    (plugin / "hollerwick.so").symlink_to(program.parents[1] / "lib/hollerwick/hollerwick.so")
    (checkout / "build/host").symlink_to("release")
    write_program(host, f'''case "${{1:-}}" in call | run | console) set -- "$@" --grab "$TMPDIR/pictures" ;; esac
exec "{program}" "$@"
''')
    write_program(checkout / "dev", f'''[ "$1" = run ] && shift && exec "{host}" "$@"
"{TOP}/dev" help | grep -q "^./dev $1\\b" && grep -q "^command_$1()" "{TOP}/dev"
''')


def command_faults(program, document, scripts):
    commands = [(line, text) for line, mark, text in blocks(document) if mark == "sh"]
    outputs = {line: text for line, mark, text in blocks(document) if mark == "output"}
    with tempfile.TemporaryDirectory() as directory:
        checkout = pathlib.Path(directory, "hollerwick")
        checkout.mkdir()
        make_checkout(checkout, program, scripts)
        whole = "".join(f"{text}printf '{END_OF_BLOCK}'\n" for _, text in commands)
        environment = windowless(directory) | {"PATH": f"{checkout}/build/release/bin:{os.environ['PATH']}"}
        result = subprocess.run(["bash", "-euo", "pipefail", "-c", NOT_RUN + whole], cwd=checkout, env=environment, text=True,
                                capture_output=True, timeout=240, check=False)
    printed = result.stdout.split(END_OF_BLOCK)
    for (line, text), output in zip(commands, printed):
        shown = outputs.get(line + text.count("\n") + 3)
        if shown is not None and output != shown:
            yield line, f"printed\n{output}instead of\n{shown}"
    if result.returncode != 0:
        yield commands[len(printed) - 1][0], f"ended with {result.returncode}: {result.stderr.strip()}"


# Commands that build, change the machine or fetch: what they name must exist.
NOT_RUN = r'''
cmake() {
    case "$1" in --preset) grep -q "\"name\": \"$2\"" CMakePresets.json ;; --build | --install | -G) ;; *) false ;; esac
}
ctest() { [ "$1" = --preset ] && grep -q "\"name\": \"$2\"" CMakePresets.json; }
sudo() { "$@"; }
apt-get() { [ "$1" = install ]; }
git() { [ "$1" = clone ]; }
cd() { [ "$1" = hollerwick ]; }
packaging/try_packages.sh() { [ -x packaging/try_packages.sh ]; }
'''


def faults(program, document):
    scripts = {}
    for line, mark, text in blocks(document):
        if not mark:
            yield line, "a block without a mark"
        if mark == "js" and script_name(text):
            scripts[script_name(text)] = text
        elif mark == "js":
            yield from ((line, fault) for fault in script_faults(program, text))
    commands = "".join(text for _, mark, text in blocks(document) if mark == "sh")
    yield from ((1, f"no command uses {name}") for name in scripts if name not in commands)
    if commands:
        yield from command_faults(program, document, scripts)


def main(program, document):
    found = list(faults(pathlib.Path(program).absolute(), pathlib.Path(document)))
    for line, fault in found:
        print(f"{pathlib.Path(document).name}:{line}: {fault}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
