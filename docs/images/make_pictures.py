#!/usr/bin/env python3
"""Takes the pictures of every window for the documents, in light and in dark, without a display.

usage: make_pictures.py PROGRAM

A picture NAME.png shows the light colours, NAME-dark.png the dark ones.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

IMAGES = pathlib.Path(__file__).parent
TOP = IMAGES.parents[1]

# The name of the picture, the words behind the program's name, and the keys that are typed first. The last picture counts,
# or the first where no keys are typed. "{out}" is the directory of the packed samples.
PICTURES = [
    ("example-browser", ["call", "_example_browser_2", "{out}/samples.kvexs", "designs"], "Tab Tab Down"),
    ("example-browser-location", ["call", "_example_browser_2", "{out}/samples.kvexs", "designs"], "Tab Tab Down Return"),
    ("example-editor", ["call", "_create_example_bundle_editor", "{out}/buck_converter.kvbdl.zip"], ""),
    ("examples-editor", ["call", "_create_examples_bundle_editor", "{out}/samples.kvexs"], "Tab Down Down"),
    ("scriptable-editor", ["call", "_proto_scriptable_bundle_editor"], "Tab 'print(\"Hello\");'"),
    ("bundle-viewer", ["call", "_bundle_viewer", "{out}/buck_converter.kvbdl.zip"], ""),
    ("package-browser", ["call", "_proto_package_browser", "{out}/buck_converter.kvbdl.zip"], "Right Down Right Down"),
    ("examples-browser", ["call", "_proto_examples_browser2", "{out}/samples.kvexs"], "Down"),
    ("prototype-browser", ["call", "_proto_example_browser", "{out}"], ""),
    ("console", ["console"],
     "'const out = _create_temporary_directory()[0];' Return 'const file = \"samples/designs/rc_lowpass/rc_lowpass.kvsch\";' Return "
     "'print(_create_example(file, out + \"/rc.kvbdl.zip\", \"RC low-pass\")[0]);' Return 'console.log(\"packed\");' Return "
     "'nothing();' F5"),
]


def run(program, words, **environment):
    everything = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", **environment)
    subprocess.run([program, *words], cwd=TOP, env=everything, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def take(program, words, keys, scheme, target):
    with tempfile.TemporaryDirectory() as shots:
        run(program, [*words, "--grab", shots, *(["--keys", keys] if keys else [])], HOLLERWICK_PALETTE=scheme)
        taken = sorted(pathlib.Path(shots).glob("*.png"))
        # a window that asks before it closes is pictured last
        wanted = [shot for shot in taken if "-key-" in shot.name] if keys else taken[:1]
        shutil.copy(wanted[-1], target)


def main(program):
    program = str(pathlib.Path(program).resolve())
    with tempfile.TemporaryDirectory() as out:
        run(program, ["run", "samples/build_samples.js", "samples", out])
        for name, words, keys in PICTURES:
            for scheme, mark in (("light", ""), ("dark", "-dark")):
                target = IMAGES / f"{name}{mark}.png"
                take(program, [word.format(out=out) for word in words], keys, scheme, target)
                print(target.relative_to(TOP))


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
