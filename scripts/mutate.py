#!/usr/bin/env python3
"""Breaks the library in every way that mutants.py knows, one change at a time, and runs the test programs on each.

mutate.sh calls this with a build of the library and its tests; see there.
"""

import argparse
import json
import os
import pathlib
import queue
import re
import shlex
import shutil
import subprocess
import sys
import threading
import time

from mutants import mutants

# It takes half the time of g++ here, and its objects go with those of g++.
COMPILER = "clang++-19"
PRECOMPILED = """#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <syslog.h>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tRecalculo.h"
"""
LIBRARY = "librecalculo.so.1"
# The random runs take longest; a part of them holds what the other tests let through.
RANDOM_RUNS = "400"
MEMORY = 2 << 30
FILE_SIZE = 64 << 20
# Of waiting for a program that neither works nor ends.
PATIENCE = 300


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace",
                          check=False, **more)


class Build:
    """The library as it is: its objects, how each was made, and the test programs."""

    def __init__(self, folder):
        self.folder, self.work = folder, folder / "mutants" / str(os.getpid())
        self.units = {}
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            path = os.path.relpath(entry["file"])
            if path.startswith("src/"):
                words = shlex.split(entry["command"])
                self.units[path] = folder / words[words.index("-o") + 1]
                self.flags = [COMPILER] + [w for w in words[1:words.index("-o")] if not w.startswith(("-W", "-g"))]
                self.flags += ["-O0", "-w", "-D_GLIBCXX_ASSERTIONS"]
        self.dependents = self.read_dependents()
        self.tests = sorted(p for p in (folder / "tests").rglob("*_test") if p.is_file())
        self.order = {}
        self.precompile()

    def read_dependents(self):
        found, unit = {}, None
        listing = subprocess.run(["ninja", "-C", self.folder, "-t", "deps"], check=True, capture_output=True, text=True)
        for line in listing.stdout.splitlines():
            if line and not line.startswith(" "):
                m = re.match(r"CMakeFiles/recalculo\.dir/(src/\S+)\.o:", line)
                unit = m and m[1]
            elif unit and line.strip():
                path = os.path.relpath(self.folder / line.strip())
                if path.startswith("src/"):
                    found.setdefault(path, []).append(unit)
        return found

    def precompile(self):
        header = self.work / "precompiled.h"
        header.parent.mkdir(parents=True)
        header.write_text(PRECOMPILED)
        made = header.with_suffix(".pch")
        subprocess.run(self.flags + ["-Xclang", "-fpch-instantiate-templates", "-x", "c++-header", header, "-o", made],
                       check=True)
        self.flags += ["-include-pch", str(made)]

    def ordered_tests(self, path):
        """Those first that killed most mutants of this source; at the outset, that which carries its name."""
        kills = self.order.setdefault(path, {})
        stem = pathlib.Path(path).stem
        return sorted(self.tests, key=lambda t: (-kills.get(t, 0), not t.name.startswith(stem), "Azar" in t.name))


class Worker:
    """A copy of the sources, in which one is broken at a time."""

    def __init__(self, build, number):
        self.build = build
        self.folder = build.work / str(number)
        self.folder.mkdir(parents=True)
        subprocess.run(["cp", "-r", "src", self.folder], check=True)

    def compile(self, units):
        """Makes the units' objects; those of one folder together, which saves the time of reading the headers."""
        made = []
        for room in sorted({pathlib.Path(unit).parent for unit in units}):
            members = [unit for unit in units if pathlib.Path(unit).parent == room]
            source = self.folder / members[0]
            if len(members) > 1:
                source = self.folder / room / "together.cpp"
                source.write_text("".join(f'#include "{pathlib.Path(unit).name}"\n' for unit in members))
            made.append(self.folder / (room.name + ".o"))
            if run(self.build.flags + ["-c", source, "-o", made[-1]]).returncode != 0:
                return None
        return made

    def link(self, units, made):
        others = [made_before for unit, made_before in self.build.units.items() if unit not in units]
        result = run([COMPILER, "-shared", "-fuse-ld=gold", f"-Wl,-soname,{LIBRARY}", "-o", self.folder / LIBRARY]
                     + made + others)
        return result.returncode == 0

    def survives(self, test, seconds):
        # What is read after it was freed must not look as it was.
        environment = dict(os.environ, LD_LIBRARY_PATH=str(self.folder.resolve()), RECALCULO_RANDOM_RUNS=RANDOM_RUNS,
                           MALLOC_PERTURB_="165", GLIBC_TUNABLES="glibc.malloc.tcache_count=0")
        command = ["prlimit", f"--cpu={seconds}", f"--as={MEMORY}", f"--fsize={FILE_SIZE}", "--core=0",
                   test.resolve(), "--gtest_brief=1", "--gtest_fail_fast"]
        try:
            return run(command, env=environment, cwd=self.folder, timeout=PATIENCE).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def judge(self, path, source, limits):
        """The name of the test program that kills the mutant, "" when it lives, None when it does not compile."""
        original = (self.folder / path).read_text(encoding="utf-8")
        units = [path] if path in self.build.units else self.build.dependents.get(path, [])
        (self.folder / path).write_text(source, encoding="utf-8")
        try:
            made = self.compile(units)
            if not made or not self.link(units, made):
                return None
            for test in self.build.ordered_tests(path):
                if not self.survives(test, limits[test]):
                    kills = self.build.order[path]
                    kills[test] = kills.get(test, 0) + 1
                    return test.name
            return ""
        finally:
            (self.folder / path).write_text(original, encoding="utf-8")


def measure(build):
    """How many seconds of a processor each test program may take; they must pass as things are."""
    worker, limits = Worker(build, "whole"), {}
    units = list(build.units)
    if not worker.link(units, worker.compile(units)):
        sys.exit("mutate.sh: the library cannot be linked")
    for test in build.tests:
        before = os.times().children_user
        if not worker.survives(test, 600):
            sys.exit(f"mutate.sh: {test.name} fails without any change")
        limits[test] = int(3 * (os.times().children_user - before)) + 2
    return limits


class Excuses:
    """The mutants that no test can kill, each with its reason: tests/equivalent_mutants.txt."""

    def __init__(self, path):
        self.path, self.known, self.used = path, {}, set()
        source = before = None
        waiting = []
        for line in path.read_text(encoding="utf-8").splitlines():
            if line.startswith("src/"):
                source = line.strip()
            elif line.startswith("- "):
                before = line[2:].strip()
            elif line.startswith("+"):
                waiting.append((source, before, line[1:].strip()))
            elif line.startswith("= "):
                self.known.update({key: line[2:].strip() for key in waiting})
                waiting = []
        if waiting:
            sys.exit(f"mutate.sh: {path}: no reason is given for {waiting[0]}")

    def reason(self, path, mutant):
        key = (path, mutant.before, mutant.after)
        if key in self.known:
            self.used.add(key)
        return self.known.get(key)

    def stale(self, paths):
        return [key for key in self.known if key[0] in paths and key not in self.used]


def main():
    parser = argparse.ArgumentParser(prog="mutate.sh", description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--report", type=pathlib.Path, required=True, help="where --again finds what survived")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--again", action="store_true", help="only what survived the last run")
    parser.add_argument("files", nargs="*", metavar="FILE", help="sources to break; all of src/ if none")
    options = parser.parse_args()
    paths = options.files or sorted(str(p) for p in pathlib.Path("src").rglob("*") if p.suffix in (".cpp", ".h"))

    build = Build(options.build)
    limits = measure(build)
    excuses = Excuses(pathlib.Path("tests/equivalent_mutants.txt"))
    report = options.report
    last = {tuple(key) for key in json.loads(report.read_text())} if options.again else None

    work = queue.Queue()
    for path in paths:
        for mutant in mutants(pathlib.Path(path).read_text(encoding="utf-8")):
            if last is None or (path, mutant.before, mutant.after) in last:
                work.put((path, mutant))
    total, begin = work.qsize(), time.time()
    print(f"{total} changes in {len(paths)} files, {len(build.tests)} test programs", flush=True)
    results, lock = [], threading.Lock()

    def labour(number):
        worker = Worker(build, number)
        while True:
            try:
                path, mutant = work.get_nowait()
            except queue.Empty:
                return
            killer = worker.judge(path, mutant.source, limits)
            with lock:
                results.append((path, mutant, killer))
                if killer == "" and not excuses.reason(path, mutant):
                    print(f"{path}:{mutant.line}: survives\n    - {mutant.before}\n    + {mutant.after}", flush=True)
                if len(results) % 200 == 0:
                    print(f"[{(time.time() - begin) / 60:.0f} min] {len(results)} of {total}", flush=True)

    threads = [threading.Thread(target=labour, args=(n,)) for n in range(options.jobs)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()

    # A header that was touched meanwhile makes every compilation fail, and would look like few mutants.
    if not Worker(build, "end").compile(list(build.units)):
        sys.exit("mutate.sh: the tree has changed during the run")
    shutil.rmtree(build.work)
    lives = [(path, m) for path, m, killer in results if killer == ""]
    report.write_text(json.dumps([[path, m.before, m.after] for path, m in lives]))
    tried = sum(killer is not None for _, _, killer in results)
    open_ = [(path, m) for path, m in lives if not excuses.reason(path, m)]
    # What was excused and is killed, or is no longer there.
    stale = excuses.stale(paths) if last is None else []
    for key in stale:
        print("tests/equivalent_mutants.txt: no such survivor: " + " | ".join(key))
    killed = tried - len(lives)
    print(f"{tried} mutants ({total - tried} did not compile), {killed} killed, {len(lives) - len(open_)} equivalent, "
          f"{len(open_)} survive: {100 * killed / max(1, killed + len(open_)):.1f} % "
          f"in {(time.time() - begin) / 60:.0f} min")
    return 1 if open_ or stale else 0


if __name__ == "__main__":
    sys.exit(main())
