#!/usr/bin/env python3
"""Holds three lists together: docs/dependencies.md, packaging/debian-packages.txt, and what the build files look for."""

import pathlib
import re
import sys

TOP = pathlib.Path(__file__).parents[2]


def explained():
    """The names in the first two columns of the tables."""
    packages, found_as = set(), set()
    for line in (TOP / "docs/dependencies.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.split("|")[1:-1]]
        if len(cells) != 4 or not cells[0].startswith("`"):
            continue
        assert all(cells[i] for i in (2, 3)), f"no reason or no licence: {line}"
        packages |= set(re.findall(r"`([^`]+)`", cells[0]))
        found_as |= set(re.findall(r"`([^`]+)`", cells[1]))
    return packages, found_as


def installed():
    lines = (TOP / "packaging/debian-packages.txt").read_text(encoding="utf-8").splitlines()
    return {line.split()[0] for line in lines if line.strip() and line[0] not in "#["}


def looked_for():
    """What find_package, pkg_check_modules and find_path ask for in the tree."""
    names = set()
    folders = [folder for folder in TOP.iterdir() if folder.is_dir() and folder.name not in ("build", ".git")]
    files = [file for folder in folders for file in folder.rglob("CMakeLists.txt") if "consumer" not in file.parts]
    for file in [TOP / "CMakeLists.txt", *files, *TOP.glob("cmake/*.cmake")]:
        text = file.read_text(encoding="utf-8")
        names |= set(re.findall(r"find_package\((\w+)", text))
        names |= set(re.findall(r"pkg_check_modules\(\w+ .*?([\w.-]+)\)", text))
        names |= set(re.findall(r"find_path\((\w+)", text))
    return names


def main():
    packages, found_as = explained()
    faults = [f"{name}: in packaging/debian-packages.txt, not explained" for name in installed() - packages]
    faults += [f"{name}: explained, not in packaging/debian-packages.txt" for name in packages - installed()]
    faults += [f"{name}: looked for by the build, not explained" for name in looked_for() - found_as]
    faults += [f"{name}: explained, not looked for by the build" for name in found_as - looked_for()]
    print("\n".join(sorted(faults)) or f"{len(packages)} packages, {len(found_as)} names")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
