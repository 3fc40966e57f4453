"""The tasks of the benchmarks with Python's zipfile."""

import io
import pathlib
import sys
import time
import xml.etree.ElementTree as ET
import zipfile

DC = "{http://purl.org/dc/elements/1.1/}"
CP = "{http://schemas.openxmlformats.org/package/2006/metadata/core-properties}"


def pack(directory, output):
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=6) as archive:
        for file in sorted(pathlib.Path(directory).rglob("*")):
            if file.is_file():
                archive.write(file, file.relative_to(directory))


def unpack(path, directory):
    with zipfile.ZipFile(path) as archive:
        archive.extractall(directory)


def texts_of(example):
    core = ET.fromstring(example.read("docProps/core.xml"))
    bundle = ET.fromstring(example.read("bundle.xml"))
    maker = next((child.text for child in bundle if child.tag.endswith("manufacturer")), "")
    return core.findtext(DC + "title"), core.findtext(DC + "description"), core.findtext(CP + "keywords"), maker


def list_examples(path):
    with zipfile.ZipFile(path) as barrel:
        texts = [
            texts_of(zipfile.ZipFile(io.BytesIO(barrel.read(name))))
            for name in barrel.namelist()
            if name.startswith("examples/")
        ]
    print(len(texts), all(all(text) for text in texts))


def open_and_close(path):
    zipfile.ZipFile(path).close()


if __name__ == "__main__":
    task = {"pack": pack, "unpack": unpack, "list": list_examples, "open": open_and_close}[sys.argv[1]]
    processor = time.process_time()
    start = time.perf_counter()
    task(*sys.argv[2:])
    print("seconds", time.perf_counter() - start, time.process_time() - processor)
