#!/usr/bin/env python3
"""Runs the benchmarks: all contenders of a task in turn, round by round, each output checked.

    run.py [--rounds N] [--page FILE] [--without NAME]... [TASK...]

Prints a table for each task, and with --page puts it into that page between the task's marks. --without leaves a
contender out. What fails is told in its table, and the rest goes on; the exit status is 1 then.
"""

import argparse
import collections
import json
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import time
import zipfile
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
BIN = ROOT / "build/release/bin"
WORK = ROOT / "build/bench"
DATA = WORK / "data"
OUTPUT = WORK / "output"
ASIDE = WORK / "aside"
HOST = BIN / "hollerwick-host"
MIB = 1 << 20

PATIENCE = 900  # seconds for one run of one contender

Row = collections.namedtuple("Row", "wall lowest cpu memory size counters runs")


class Failure(Exception):
    pass


class Contender:
    """One program at one task.

    kind      "ours", "peer" or "limit"
    output    what it makes below OUTPUT, measured and removed
    check     called with that path and what the program printed; raises when something is wrong
    clock     "process": from start to end; "inside": the program tells "seconds WALL [CPU]" itself;
              "google": it is a Google Benchmark program
    repeat    runs in a round; the median counts
    rounds    the rounds it takes part in; fewer for a peer that alone would take minutes of each
    """

    def __init__(self, name, command, kind="peer", output=None, check=None, clock="process", repeat=1, cwd=None,
                 rounds=None):
        self.name, self.command, self.kind, self.output = name, [str(word) for word in command], kind, output
        self.check, self.clock, self.repeat, self.cwd = check, clock, repeat, cwd or DATA
        self.rounds = rounds

    def is_there(self):
        program = self.command[0]
        if program == "java":
            return (WORK / "java/PoiTasks.class").exists()
        return shutil.which(program) is not None

    def run(self):
        os.sync()  # what others left to be written is not paid for here
        samples = [self.run_once() for _ in range(self.repeat)]
        return sorted(samples, key=lambda sample: sample["wall"])[len(samples) // 2]

    def run_once(self):
        clear_output()
        report = WORK / "report"
        report.unlink(missing_ok=True)
        printed = self.run_program([BIN / "bench_measure", report, *self.command])
        status, wall, cpu, memory = report.read_text().split()
        if status != "0":
            raise Failure(f"exit status {status}: {printed[-500:]}")
        sample = {"wall": float(wall), "cpu": float(cpu), "memory": int(memory) / 1024, "size": None, "counters": {}}
        if self.clock == "inside":
            seconds = printed.split("seconds", 1)[1].split()
            sample["wall"] = float(seconds[0])
            sample["cpu"] = float(seconds[1]) if len(seconds) > 1 else sample["cpu"]
        elif self.clock == "google":
            self.read_google(sample, json.loads(printed))
        path = OUTPUT / self.output if self.output else None
        if path and path.is_file():
            sample["size"] = path.stat().st_size
        if self.check:
            self.check(path, printed)
        return sample

    def run_program(self, command):
        """What it prints; a program that fails has its errors there, too."""
        with subprocess.Popen(command, cwd=self.cwd, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              start_new_session=True) as program:
            try:
                printed, errors = program.communicate(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                os.killpg(program.pid, signal.SIGKILL)
                raise Failure(f"not done within {PATIENCE} seconds") from None
        return printed if '"benchmarks"' in printed else printed + errors

    def read_google(self, sample, report):
        (result,) = report["benchmarks"]
        if result.get("error_occurred"):
            raise Failure(result["error_message"])
        unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}[result["time_unit"]]
        sample["wall"], sample["cpu"] = result["real_time"] * unit, result["cpu_time"] * unit
        known = {"real_time", "cpu_time", "iterations", "repetitions", "threads", "family_index",
                 "per_family_instance_index", "repetition_index"}
        sample["counters"] = {key: value for key, value in result.items()
                              if isinstance(value, (int, float)) and key not in known}


def clear_output():
    """Empties OUTPUT. Directories are set aside, and gone at the end of everything: for minutes ext4 gives no number of
    a removed file to a new one and looks at all of them again each time, so that whoever unpacks next would pay for the
    removal of thousands of files, and the one after for more."""
    for directory in OUTPUT.glob("*/"):
        for file in directory.rglob("*"):
            if file.is_file():
                os.truncate(file, 0)
        ASIDE.mkdir(exist_ok=True)
        directory.rename(ASIDE / str(len(list(ASIDE.iterdir()))))
    shutil.rmtree(OUTPUT, ignore_errors=True)
    OUTPUT.mkdir(parents=True)


class Task:
    """contenders: a function, so that data that they need is made when the task runs; goals: (text, value, bound)."""

    def __init__(self, name, title, contenders, goals):
        self.name, self.title, self.contenders, self.goals = name, title, contenders, goals

    def run(self, rounds, left_out):
        contenders, missing = [], []
        for contender in self.contenders():
            if contender.name in left_out:
                continue
            (contenders if contender.is_there() else missing).append(contender)
        samples = {contender.name: [] for contender in contenders}
        self.failures = {}
        for number in range(rounds):
            # each round begins with another one
            for contender in contenders[number % len(contenders):] + contenders[:number % len(contenders)]:
                if contender.name not in self.failures and number < (contender.rounds or rounds):
                    self.sample(contender, number + 1, samples[contender.name])
        contenders = [contender for contender in contenders if contender.name not in self.failures]
        rows = {contender.name: row_of(samples[contender.name]) for contender in contenders}
        text = self.table(contenders, rows) + self.goal_lines(rows)
        for contender in missing:
            text += f"- `{contender.name}` is not installed and was left out\n"
        for contender in contenders:
            if rows[contender.name].runs < rounds:
                text += f"- `{contender.name}`: in {rows[contender.name].runs} of the rounds, for its time\n"
        for name, failure in self.failures.items():
            text += f"- `{name}` **failed**: {failure}\n"
        return text

    def sample(self, contender, number, samples):
        try:
            samples.append(contender.run())
            outcome = f"{samples[-1]['wall']:.3f} s"
        except (Failure, OSError, ValueError, LookupError, zipfile.BadZipFile, zlib.error) as failure:
            outcome = self.failures[contender.name] = " ".join(f"{failure}".split()) or type(failure).__name__
        print(f"  {self.name} round {number}: {contender.name} {outcome}", file=sys.stderr, flush=True)

    def table(self, contenders, rows):
        best_peer = min((rows[each.name].wall for each in contenders if each.kind == "peer"), default=None)
        limit = next((rows[each.name].wall for each in contenders if each.kind == "limit"), None)
        counters = sorted({key for row in rows.values() for key in row.counters})
        has_size = any(row.size for row in rows.values())
        heads = ["", "wall, ms", "lowest, ms", "cpu, ms", "memory, MiB"] + (["output, bytes"] if has_size else [])
        heads += (["to limit"] if limit else []) + (["to best peer"] if best_peer else []) + counters
        lines = ["| " + " | ".join(heads) + " |", "|---" + "|---:" * (len(heads) - 1) + "|"]
        for contender in contenders:
            row = rows[contender.name]
            name = {"ours": f"**{contender.name}**", "limit": f"limit: {contender.name}"}.get(contender.kind,
                                                                                            contender.name)
            cells = [name, milliseconds(row.wall), milliseconds(row.lowest), milliseconds(row.cpu), f"{row.memory:.0f}"]
            cells += [f"{row.size:,}" if row.size else ""] if has_size else []
            cells += [f"{row.wall / limit:.2f}"] if limit else []
            cells += [f"{row.wall / best_peer:.2f}"] if best_peer else []
            cells += [f"{row.counters[key]:.4g}" if key in row.counters else "" for key in counters]
            lines.append("| " + " | ".join(cells) + " |")
        return "\n".join(lines) + "\n\n"

    def goal_lines(self, rows):
        lines = ""
        for text, value, bound in self.goals:
            try:
                found = value(rows)
            except KeyError as missing:
                lines += f"- {text}: not measured without {missing}\n"
                continue
            lines += f"- {text}: {found:.3g}, {'met' if found <= bound else '**missed**'}\n"
        return lines


def row_of(samples):
    median = {key: statistics.median(sample[key] for sample in samples) for key in ("wall", "cpu", "memory")}
    counters = {key: statistics.median(sample["counters"][key] for sample in samples)
                for key in samples[0]["counters"]}
    return Row(median["wall"], min(sample["wall"] for sample in samples), median["cpu"], median["memory"],
               samples[0]["size"], counters, len(samples))


def milliseconds(seconds):
    return f"{seconds * 1e3:.1f}" if seconds < 0.1 else f"{seconds * 1e3:.0f}"


# What must come out.

def sums_of(paths):
    return collections.Counter((path.stat().st_size, zlib.crc32(path.read_bytes())) for path in paths)


class Files:
    """The files below a directory of the data, and whether an output holds their bytes."""

    def __init__(self, directory):
        self.directory = DATA / directory
        self.names = sorted(str(path.relative_to(self.directory)) for path in self.directory.rglob("*")
                            if path.is_file())
        self.names.sort(key=lambda name: name.count("/"))  # the primary file lies above the others
        self.sums = sums_of(self.directory / name for name in self.names)

    def argument(self):
        return json.dumps(self.names, separators=(",", ":"))

    def packed(self):
        """A check for one contender: its first archive is read in full, of the others the directory."""
        read = []

        def check(path, _):
            with zipfile.ZipFile(path) as archive:
                found = collections.Counter((entry.file_size, entry.CRC) for entry in archive.infolist())
                if self.sums - found:
                    raise Failure("the archive does not hold all files")
                if not read and archive.testzip() is not None:
                    raise Failure("the archive cannot be read")
            read.append(path)
        return check

    def unpacked(self, path, _):
        if self.sums - sums_of(file for file in path.rglob("*") if file.is_file()):
            raise Failure("not all files are there")

    def joined(self, path, _):
        if path.stat().st_size != sum(size * count for (size, _), count in self.sums.items()):
            raise Failure("the file is too short")


def prints(text):
    def check(_, printed):
        if text not in printed:
            raise Failure(f"expected {text}, and there is: {printed[-500:]}")
    return check


def is_of_size(size):
    def check(path, _):
        if abs(path.stat().st_size - size) > MIB:
            raise Failure("the copy has another size")
    return check


def saved(size):
    """A check of a saved bundle; every entry of the first one is read."""
    read = []

    def check(path, printed):
        is_of_size(size)(path, printed)
        with zipfile.ZipFile(path) as archive:
            if b"after" not in archive.read("docProps/core.xml") or (not read and archive.testzip() is not None):
                raise Failure("the saved bundle is not what it must be")
        read.append(path)
    return check


def both(*checks):
    return lambda path, printed: [check(path, printed) for check in checks]


# The tasks.

def poi(*arguments):
    names = ("poi", "poi-ooxml", "poi-ooxml-schemas", "xmlbeans", "commons-compress", "commons-collections4",
             "commons-math3", "commons-codec")
    path = ":".join([str(WORK / "java")] + [f"/usr/share/java/{name}.jar" for name in names])
    return ["java", "-cp", path, "PoiTasks", *arguments]


def python(*arguments):
    return [sys.executable, ROOT / "bench/zipfile_tasks.py", *arguments]


def google(name):
    return [BIN / "bench_windows", f"--benchmark_filter=^{name}($|/iter|/manual|/process)", "--benchmark_format=json"]


def pack_with_host(files, output):
    return [HOST, "call", "_create_example", files.argument(), output, "a title"]


def packers(files, limit, main_rounds=None, peer_rounds=None):
    """main_rounds: of `zip -6`, which the goals name; peer_rounds: of the other peers."""
    def make():
        cwd, zip_file = files.directory, OUTPUT / "out.zip"
        def packer(name, command, rounds=peer_rounds):
            return Contender(name, command, "peer", "out.zip", files.packed(), cwd=cwd, rounds=rounds)
        def ours(name, *before):
            return Contender(name, [*before, *pack_with_host(files, zip_file)], "ours", "out.zip",
                             both(prints("OK"), files.packed()), cwd=cwd)
        return [
            ours("hollerwick-host"),
            ours("hollerwick-host, one core", "taskset", "-c", "0"),
            packer("zip -6", ["zip", "-6", "-q", "-r", zip_file, "."], main_rounds),
            packer("zip -6, one core", ["taskset", "-c", "0", "zip", "-6", "-q", "-r", zip_file, "."]),
            packer("7z", ["7z", "a", "-tzip", "-bd", zip_file, "."]),
            packer("7z, one thread", ["7z", "a", "-tzip", "-mmt=1", "-bd", zip_file, "."]),
            packer("bsdtar", ["bsdtar", "-a", "-cf", zip_file, "."]),
            packer("python zipfile", python("pack", ".", zip_file)),
            packer("Apache POI", poi("pack", ".", zip_file)),
            Contender(limit[0], [BIN / "bench_limits", limit[1], "1", *files.names], "limit", cwd=cwd),
            Contender(limit[0] + ", two threads", [BIN / "bench_limits", limit[1], "2", *files.names], "limit", cwd=cwd),
        ]
    return make


def unpackers(files, name, peer_rounds=None):
    def make():
        bundle = DATA / name
        if not bundle.exists():
            subprocess.run(pack_with_host(files, bundle), check=True, cwd=files.directory, stdout=subprocess.DEVNULL)
        target = OUTPUT / "out"
        def unpacker(name, command, kind="peer", check=files.unpacked, rounds=None):
            return Contender(name, command, kind, "out", check, rounds=rounds)
        def other(name, command):
            return unpacker(name, command, rounds=peer_rounds)
        return [
            unpacker("hollerwick-host", [HOST, "call", "_unpack_content_bundle", bundle, target], "ours",
                     both(prints("OK"), files.unpacked)),
            unpacker("unzip", ["unzip", "-q", bundle, "-d", target]),
            other("7z", ["7z", "x", "-bd", f"-o{target}", bundle]),
            other("bsdtar", ["sh", "-c", 'mkdir "$1" && bsdtar -xf "$0" -C "$1"', bundle, target]),
            other("python zipfile", python("unpack", bundle, target)),
            other("Apache POI", poi("unpack", bundle, target)),
            unpacker("inflate and write", [BIN / "bench_limits", "inflate", "1", bundle, target], "limit"),
            unpacker("inflate and write, two threads", [BIN / "bench_limits", "inflate", "2", bundle, target], "limit"),
        ]
    return make


def barrel_packers(files, named):
    def make():
        barrel = OUTPUT / "out.zip"
        def ours(name, files):
            return Contender(name, [HOST, "call", "_create_examples", files.argument(), barrel], "ours", "out.zip",
                             both(prints("OK"), files.packed()), cwd=files.directory)
        return [
            ours("hollerwick-host", files),
            ours("hollerwick-host, every design of another name", named),
            Contender("zip -0", ["zip", "-0", "-q", "-r", barrel, "."], "peer", "out.zip", files.packed(),
                      cwd=files.directory),
            Contender("cat", ["sh", "-c", 'cat -- * >"$0"', barrel], "limit", "out.zip", files.joined,
                      cwd=files.directory),
        ]
    return make


def listers():
    barrel = DATA / "barrel-10000.kvexs"
    return [
        Contender("addBarrels", google("addBarrels/10000"), "ours", clock="google"),
        Contender("addBarrels, 200", google("addBarrels/200"), "ours", clock="google"),
        Contender("addBarrels, 50,000", google("addBarrels/50000"), "ours", clock="google"),
        Contender("addBarrels, every design of another name", google("addBarrelOfNames/10000"), "ours", clock="google"),
        Contender("addBarrels, memory", google("memoryOfExamples/10000"), "ours", clock="google"),
        Contender("python zipfile", python("list", barrel), "peer", check=prints("10000 True"), clock="inside"),
        Contender("Apache POI", poi("list", barrel), "peer", check=prints("10000 true"), clock="inside", rounds=1),
        Contender("walker by hand", google("walkByHand/10000"), "limit", clock="google"),
    ]


def searches():
    return [Contender("10,000 rows", google("searchKey/10000"), "ours", clock="google"),
            Contender("50,000 rows", google("searchKey/50000"), "ours", clock="google")]


def browsers():
    return [Contender("window painted", google("openBrowser/10000"), "ours", clock="google"),
            Contender("addBarrels", google("addBarrels/10000"), "limit", clock="google")]


def savers():
    source, target = DATA / "gigabyte.zip", OUTPUT / "out"
    size = source.stat().st_size
    save = ["env", f"HOLLERWICK_BENCH_OUTPUT={target}", *google("saveGigabyte")]
    return [
        Contender("open, setTitle, writeToFile", save, "ours", "out", saved(size), clock="google"),
        Contender("cp", ["cp", source, target], "limit", "out", is_of_size(size)),
        Contender("cp, then sync of the file", ["sh", "-c", 'cp "$0" "$1" && sync "$1"', source, target], "limit", "out",
                  is_of_size(size)),
    ]


def viewers():
    return [Contender("60,000 parts", google("openViewer/60000"), "ours", clock="google"),
            Contender("15,000 parts", google("openViewer/15000"), "ours", clock="google")]


def openers():
    package = DATA / "parts-60000.zip"
    return [
        Contender("open_package", google("openAndClose"), "ours", clock="google"),
        Contender("python zipfile", python("open", package), "peer", clock="inside"),
        Contender("Apache POI", poi("open", package), "peer", clock="inside"),
    ]


def starters():
    return [
        Contender("hollerwick-host call _filename a/b", [HOST, "call", "_filename", "a/b"], "ours", check=prints("b"),
                  repeat=15),
        Contender("a program with the same libraries that does nothing", [BIN / "bench_nothing"], "limit", repeat=15),
    ]


def wall(rows, name):
    return rows[name].wall


def ratio(ours, other):
    return lambda rows: rows[ours].wall / rows[other].wall


def size_ratio(rows):
    return rows["hollerwick-host"].size / rows["zip -6"].size


def counter(name, key):
    return lambda rows: rows[name].counters[key]


def tasks():
    small, large, examples, named = Files("small"), Files("large"), Files("e"), Files("n")
    host, alone = "hollerwick-host", "hollerwick-host, one core"
    return [
        Task("pack-small", "2,000 files, 40 MB", packers(small, ("libdeflate 6 in memory", "deflate")), [
            ("wall to `zip -6`, at most 0.30", ratio(host, "zip -6"), 0.30),
            ("wall to `zip -6` on one core, at most 0.5", ratio(alone, "zip -6, one core"), 0.5),
            ("bytes to `zip -6`, at most 1", size_ratio, 1),
            ("cpu to that of the limit, at most 1.15",
             lambda rows: rows[host].cpu / rows["libdeflate 6 in memory"].cpu, 1.15),
        ]),
        Task("pack-large", "8 files of 64 MB", packers(large, ("isa-l 3 in memory", "stream"), 2, 1), [
            ("wall to `zip -6`, at most 0.20", ratio(host, "zip -6"), 0.20),
            ("bytes to `zip -6`, at most 1.03", size_ratio, 1.03),
            ("peak memory in MiB, below 64", lambda rows: rows[host].memory, 64),
        ]),
        *(Task(name, title, unpackers(files, bundle, rounds), [
            ("wall to `unzip`, at most 0.40", ratio(host, "unzip"), 0.40),
            ("wall to inflating and writing, at most 1.25", ratio(host, "inflate and write"), 1.25),
        ]) for name, title, files, bundle, rounds in (
            ("unpack-small", "2,000 files, 40 MB", small, "small.zip", None),
            ("unpack-large", "8 files of 64 MB", large, "large.zip", 2))),
        Task("barrel", "a barrel of 10,000 examples", barrel_packers(examples, named), [
            ("wall to `zip -0`, below 1", ratio(host, "zip -0"), 1),
            ("wall to `cat`, at most 3", ratio(host, "cat"), 3),
        ]),
        Task("list", "the texts of 10,000 examples", listers, [
            ("wall to python's zipfile, at most 0.15", ratio("addBarrels", "python zipfile"), 0.15),
            ("wall to the walker by hand, at most 2.0", ratio("addBarrels", "walker by hand"), 2),
            ("time of an example among 50,000 to that among 200, about 1",
             lambda rows: rows["addBarrels, 50,000"].cpu / rows["addBarrels, 200"].cpu / 250, 1.15),
            ("bytes for an example above its texts, below 1,536",
             counter("addBarrels, memory", "bytes_above_texts"), 1536),
        ]),
        Task("search", "one key press in the search box", searches, [
            ("95th percentile with 10,000 rows, below 16 ms", counter("10,000 rows", "p95_ms"), 16),
            ("95th percentile with 50,000 rows, below 80 ms", counter("50,000 rows", "p95_ms"), 80),
            ("95th percentile of the cpu with 10,000 rows, in ms", counter("10,000 rows", "p95_cpu_ms"), 16),
            ("95th percentile of the cpu with 50,000 rows, in ms", counter("50,000 rows", "p95_cpu_ms"), 80),
        ]),
        Task("browser", "the example browser with 10,000 examples", browsers, [
            ("wall to addBarrels, at most 1.5", ratio("window painted", "addBarrels"), 1.5),
        ]),
        Task("save", "a bundle of 1 GB after an edit", savers, [
            ("wall to `cp`, at most 1.3", ratio("open, setTitle, writeToFile", "cp"), 1.3),
        ]),
        Task("viewer", "the bundle viewer on 60,000 parts", viewers, [
            ("seconds, below 1", lambda rows: wall(rows, "60,000 parts"), 1),
            ("60,000 parts to four times 15,000, about 1",
             lambda rows: wall(rows, "60,000 parts") / wall(rows, "15,000 parts") / 4, 1.2),
        ]),
        Task("open", "opening and closing 60,000 parts", openers, [
            ("wall to python's zipfile, at most 0.33", ratio("open_package", "python zipfile"), 0.33),
        ]),
        Task("start", "the start of the program", starters, [
            ("wall to the program that does nothing, below 1.5",
             ratio("hollerwick-host call _filename a/b", "a program with the same libraries that does nothing"), 1.5),
        ]),
    ]


def replaced(page, name, text):
    begin, end = f"<!-- begin {name} -->\n", f"<!-- end {name} -->"
    before, rest = page.split(begin, 1)
    return before + begin + text + end + rest.split(end, 1)[1]


def machine(rounds):
    model = next((line.split(":", 1)[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "")
    return f"{rounds} rounds; {os.cpu_count()} processors, {model}; load average {os.getloadavg()[0]:.1f}.\n\n"


def make_data():
    if (WORK / "data-2-is-complete").exists():
        return
    shutil.rmtree(DATA, ignore_errors=True)
    DATA.mkdir(parents=True)
    subprocess.run([BIN / "bench_data", DATA], check=True)
    (WORK / "data-2-is-complete").touch()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--page", type=pathlib.Path)
    parser.add_argument("--without", action="append", default=[], metavar="NAME")
    parser.add_argument("tasks", nargs="*")
    arguments = parser.parse_args()
    os.environ["HOLLERWICK_BENCH_DATA"] = str(DATA)
    os.environ.setdefault("TMPDIR", str(WORK))
    make_data()
    known = tasks()
    for name in arguments.tasks:
        if name not in {task.name for task in known}:
            sys.exit(f"there is no task {name}; there are {', '.join(task.name for task in known)}")
    failed = []
    for task in known:
        if arguments.tasks and task.name not in arguments.tasks:
            continue
        start = time.monotonic()
        text = machine(arguments.rounds)
        try:
            text += task.run(arguments.rounds, arguments.without)
        except (Failure, OSError, subprocess.SubprocessError) as failure:
            text += f"- **failed**: {failure}\n"
        if "**failed**" in text:
            failed.append(task.name)
        print(f"## {task.title}\n\n{text}", flush=True)
        print(f"  {task.name} took {time.monotonic() - start:.0f} s", file=sys.stderr, flush=True)
        if arguments.page:
            arguments.page.write_text(replaced(arguments.page.read_text(), task.name, text))
    if failed:
        sys.exit(f"failed: {', '.join(failed)}")


if __name__ == "__main__":
    try:
        main()
    finally:
        clear_output()
        shutil.rmtree(ASIDE, ignore_errors=True)
