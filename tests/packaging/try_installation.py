#!/usr/bin/env python3
"""Installs the build into a directory of its own and uses nothing but what stands there.

usage: try_installation.py BUILD STAGE install|components|move|consumer|frame|plugin

install     installs BUILD into STAGE and runs the demo with the installed program
components  installs the pieces that become Debian packages one by one: together they are the whole
move        runs the demo from another place: an installed tree stands wherever it is put
consumer    builds a project of somebody else against STAGE
frame       builds the lowest layer of the plug-in against the libraries in STAGE instead of those of the tree, through the CMake
            package that they bring and through the one that docs/porting.md shows
plugin      builds all of the plug-in so, and has the installed host load it
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).parents[2]
HERE = pathlib.Path(__file__).parent


def run(*command, **options):
    """What the command prints; its errors too when it fails."""
    clean = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}
    result = subprocess.run([str(word) for word in command], text=True, capture_output=True, env=clean, check=False, **options)
    assert result.returncode == 0, (command, result.returncode, result.stdout[-2000:], result.stderr[-4000:])
    return result.stdout


def names(directory):
    return {str(path.relative_to(directory)) for path in directory.rglob("*") if not path.is_dir()}


def use(stage):
    """The demo, with the installed program and the installed samples, from a directory that holds nothing else."""
    program, samples = stage / "bin/hollerwick-host", stage / "share/hollerwick/samples"
    with tempfile.TemporaryDirectory() as directory:
        assert len(run(program, "functions", cwd=directory).splitlines()) == 23
        printed = run(program, "run", samples / "build_samples.js", samples, directory, cwd=directory)
        assert "samples.kvexs: 13 examples" in printed, printed
        run(program, "call", "_proto_examples_browser2", f"{directory}/samples.kvexs", "--grab", f"{directory}/pictures", cwd=directory)
        assert list(pathlib.Path(directory, "pictures").glob("*.png"))


def check_files(stage):
    found = names(stage)
    contract = {"include/" + name for name in names(TOP / "core") if name.endswith(".h")}
    documents = {"share/doc/hollerwick/docs/" + name for name in names(TOP / "docs") if not name.endswith(".py")}
    samples = {"share/hollerwick/samples/" + name for name in names(TOP / "samples")}
    entries = {"share/applications/" + file.name for file in (TOP / "packaging/desktop").glob("*.desktop")}
    wanted = contract | documents | samples | entries | {
        "bin/hollerwick-host",
        "lib/hollerwick/hollerwick.so",
        "lib/hollerwick/hollerwick-pages.so",
        "share/hollerwick/translations/hollerwick_de.qm",
        "share/man/man1/hollerwick-host.1.gz",
        "share/bash-completion/completions/hollerwick-host",
        "share/zsh/site-functions/_hollerwick-host",
        "share/fish/vendor_completions.d/hollerwick-host.fish",
        "share/metainfo/org.hollerwick.hollerwick.metainfo.xml",
        "share/mime/packages/org.hollerwick.hollerwick.xml",
        "share/icons/hicolor/scalable/apps/hollerwick.svg",
    }
    assert wanted <= found, sorted(wanted - found)
    strays = [name for name in found if name.startswith(("share/doc/hollerwick/docs/", "include/")) and name not in wanted]
    assert not strays, strays


def check_loader_paths(build, stage):
    for file in [stage / "bin/hollerwick-host", stage / "lib/hollerwick/hollerwick.so", *stage.glob("lib/**/libKelvaris*.so.1")]:
        dynamic = run("readelf", "--dynamic", "--wide", file)
        assert "$ORIGIN" in dynamic and str(build) not in dynamic, (file, dynamic)


def install(build, stage):
    shutil.rmtree(stage, ignore_errors=True)
    run("cmake", "--install", build, "--prefix", stage)
    check_files(stage)
    check_loader_paths(build, stage)
    use(stage)


def components(build, stage):
    one_of_each = {
        "host": "share/applications/org.hollerwick.hollerwick.desktop",
        "plugin": "lib/hollerwick/hollerwick.so",
        "libraries": "lib/libKelvarisCore.so.1",
        "development": "lib/libKelvarisCore.so",
        "documents": "share/doc/hollerwick/docs/tutorial.md",
    }
    found = []
    for component, file in one_of_each.items():
        with tempfile.TemporaryDirectory() as directory:
            run("cmake", "--install", build, "--prefix", directory, "--component", component)
            files = names(pathlib.Path(directory))
            assert file in files, (component, files)
            found += files
    assert sorted(found) == sorted(names(stage)), set(found) ^ names(stage)


def move(_, stage):
    with tempfile.TemporaryDirectory(prefix="another place ") as directory:
        moved = pathlib.Path(directory, "tree")
        shutil.copytree(stage, moved, symlinks=True)
        use(moved)


def build_project(source, stage, directory, *options, target="all"):
    quick = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0"]
    if shutil.which("ccache"):
        quick.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    run("cmake", "-G", "Ninja", "-S", source, "-B", directory, f"-DCMAKE_PREFIX_PATH={stage}", *quick, *options)
    run("cmake", "--build", directory, "--target", target)


def consumer(_, stage):
    host = stage / "bin/hollerwick-host"
    with tempfile.TemporaryDirectory() as directory:
        build_project(HERE / "consumer", stage, directory)
        design = TOP / "samples/designs/rc_lowpass/rc_lowpass.kvsch"
        run(host, "call", "_create_example", design, f"{directory}/rc.kvbdl.zip", "Größe 50 %")
        assert run(f"{directory}/print_titles", f"{directory}/rc.kvbdl.zip") == "Größe 50 %\n"
        assert run(host, "--plugin", f"{directory}/shout.so", "call", "_shout", "grün") == "GRÜN\n"


def package_of_the_porting_page(stage, directory):
    """The CMake package that docs/porting.md shows for libraries that come without one, over the libraries in STAGE."""
    page = (TOP / "docs/porting.md").read_text(encoding="utf-8")
    directory.mkdir(exist_ok=True)
    (directory / "KelvarisHostConfig.cmake").write_text(re.search(r"```cmake\n(.*?)```", page, re.DOTALL)[1], encoding="utf-8")
    for folder in ("lib", "include"):
        (directory / folder).unlink(missing_ok=True)
        (directory / folder).symlink_to(stage / folder)
    return directory


def frame(build, stage):
    """The build directory stays for "plugin"."""
    own_package = package_of_the_porting_page(stage, build / "host_package")
    build_project(TOP, own_package, build / "plugin_over_own_package", "-DHOLLERWICK_HOST_PACKAGE=KelvarisHost",
                  target="hollerwick_script_frame")
    build_project(TOP, stage, build / "plugin_alone", "-DHOLLERWICK_HOST_PACKAGE=Kelvaris", target="hollerwick_script_frame")


def plugin(build, stage):
    directory = build / "plugin_alone"
    build_project(TOP, stage, directory, "-DHOLLERWICK_HOST_PACKAGE=Kelvaris", target="hollerwick")
    module = directory / "lib/hollerwick/hollerwick.so"
    assert str(stage) in run("ldd", module) and f"{build}/lib/libKelvaris" not in run("ldd", module)
    assert len(run(stage / "bin/hollerwick-host", "--plugin", module, "functions").splitlines()) == 23


def main(build, stage, step):
    steps = {"install": install, "components": components, "move": move, "consumer": consumer, "frame": frame, "plugin": plugin}
    steps[step](pathlib.Path(build), pathlib.Path(stage))


if __name__ == "__main__":
    main(*sys.argv[1:])
