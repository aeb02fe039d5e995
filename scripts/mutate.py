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
from collections import Counter, namedtuple
from concurrent.futures import ThreadPoolExecutor

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
# Of seconds: a test that runs longer is met last.
SLOW = 0.4
MEMORY = 2 << 30
FILE_SIZE = 64 << 20
# Of waiting for a program that neither works nor ends.
PATIENCE = 300
# The rules are compiled into their own test, which reads no library.
RULES, RULES_TEST = "src/reglas/Reglas.h", "tests/reglas/Reglas_test.cpp"


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace",
                          check=False, **more)


# What is run on a broken library: a test program, or one slow test of it.
Trial = namedtuple("Trial", "name command slow")


class Build:
    """The library as it is: its sources, how each is compiled, and the test programs."""

    def __init__(self, folder, jobs):
        self.folder, self.work, self.jobs = folder, folder / "mutants" / str(os.getpid()), jobs
        self.sources = sorted(str(p) for p in pathlib.Path("src").rglob("*.cpp"))
        self.flags = self.read_flags("CMakeFiles/recalculo.dir/")
        self.rules_flags = self.read_flags("CMakeFiles/reglas_test.dir/")
        self.work.mkdir(parents=True)
        self.flags += self.precompile("library", PRECOMPILED, self.flags)
        self.rules_flags += self.precompile("rules", "#include <algorithm>\n#include <array>\n#include <string_view>\n"
                                            "#include <gtest/gtest.h>\n", self.rules_flags)
        self.rules_libraries = ["-lgtest_main", "-lgtest", "-lpthread", str(folder / LIBRARY),
                                f"-Wl,--disable-new-dtags,-rpath,{folder.resolve()}"]
        self.objects, self.order = {}, {}
        with ThreadPoolExecutor(jobs) as pool:
            self.dependents = {}
            for source, headers in zip(self.sources, pool.map(self.headers, self.sources)):
                for header in headers:
                    self.dependents.setdefault(header, []).append(source)
            list(pool.map(self.compile_whole, self.sources))

    def read_flags(self, word):
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            if word in words[words.index("-o") + 1]:
                flags = [w for w in words[1:words.index("-o")] if not w.startswith(("-W", "-g", "-O"))]
                # Of the sources' copy, in which one is broken.
                flags = [w for w in flags if not w.endswith("/src/reglas")]
                return [COMPILER] + flags + ["-O0", "-w", "-D_GLIBCXX_ASSERTIONS"]
        sys.exit(f"mutate.sh: {self.folder} does not build {word}")

    def precompile(self, name, text, flags):
        header = self.work / f"{name}.h"
        header.write_text(text)
        made = header.with_suffix(".pch")
        subprocess.run(flags + ["-Xclang", "-fpch-instantiate-templates", "-x", "c++-header", header, "-o", made],
                       check=True)
        return ["-include-pch", str(made)]

    def headers(self, source):
        flags = self.flags[:self.flags.index("-include-pch")]
        listing = subprocess.run(flags + ["-MM", source], check=True, capture_output=True, text=True)
        paths = {os.path.relpath(word) for word in listing.stdout.split() if word.endswith(".h")}
        return [path for path in paths if path.startswith("src/")]

    def compile_whole(self, source):
        self.objects[source] = self.work / (source.replace("/", "_") + ".o")
        subprocess.run(self.flags + ["-c", source, "-o", self.objects[source]], check=True)

    def find_trials(self, library):
        """The test programs of the library, and apart from them their slow tests; they must pass as things are."""
        recorded = pathlib.Path("tests/everywhere/recorded").resolve()
        programs = sorted(p.resolve() for p in (self.folder / "tests").rglob("*_test")
                          if p.is_file() and "tools" not in p.parts)
        self.trials = []
        for program in programs:
            output = subprocess.run([program], env=surroundings(library), capture_output=True, text=True,
                                    errors="replace", check=False)
            if output.returncode != 0:
                sys.exit(f"mutate.sh: {program.name} fails without any change")
            times = re.findall(r"OK \] (\S+) \((\d+) ms\)", output.stdout)
            slow = [name for name, ms in times if int(ms) > SLOW * 1000]
            if len(slow) == len(times):
                self.trials.append(Trial(program.name, [program], True))
                continue
            self.trials += [Trial(f"{program.name} {name}", [program, f"--gtest_filter={name}"], True)
                            for name in slow]
            self.trials.append(Trial(program.name, [program, "--gtest_filter=-" + ":".join(slow)], False))
        everywhere = (self.folder / "tests/everywhere/everywhere").resolve()
        self.trials.append(Trial("everywhere", [everywhere, recorded], True))

    def ordered_trials(self, path):
        """Those first that killed most mutants of this source; at the outset, that of its folder."""
        kills = self.order.setdefault(path, {})
        room = pathlib.Path(path).parent.name
        return sorted(self.trials, key=lambda t: (t.slow, -kills.get(t.name, 0),
                                                  not t.name.startswith(room), t.name == "everywhere"))


def surroundings(folder):
    """The environment for a test program; what is read after it was freed must not look as it was."""
    return dict(os.environ, LD_LIBRARY_PATH=str(folder.resolve()), RECALCULO_RANDOM_RUNS=RANDOM_RUNS,
                MALLOC_PERTURB_="165", GLIBC_TUNABLES="glibc.malloc.tcache_count=0", GTEST_BRIEF="1"
                if folder.name != "whole" else "0", GTEST_FAIL_FAST="1")


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
        others = [made_before for unit, made_before in self.build.objects.items() if unit not in units]
        result = run([COMPILER, "-shared", "-fuse-ld=gold", f"-Wl,-soname,{LIBRARY}", "-o", self.folder / LIBRARY]
                     + made + others)
        return result.returncode == 0

    def survives(self, command, seconds):
        limited = ["prlimit", f"--cpu={seconds}", f"--as={MEMORY}", f"--fsize={FILE_SIZE}", "--core=0"] + command
        try:
            return run(limited, env=surroundings(self.folder), cwd=self.folder, timeout=PATIENCE).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def rules_kill(self):
        """Whether the test of the rules, compiled with the broken ones, fails. It must not be what does not compile."""
        program = self.folder / "rules_test"
        compile_rules = self.build.rules_flags + [f"-I{self.folder / 'src/reglas'}", RULES_TEST, "-o", program,
                                                  "-fuse-ld=gold"] + self.build.rules_libraries
        return run(compile_rules).returncode == 0 and not self.survives([program.resolve()], 10)

    def judge(self, path, source, limits):
        """The name of the test program that kills the mutant, "" when it lives, None when it does not compile."""
        original = (self.folder / path).read_text(encoding="utf-8")
        units = [path] if path in self.build.objects else self.build.dependents.get(path, [])
        (self.folder / path).write_text(source, encoding="utf-8")
        try:
            if path == RULES and self.rules_kill():
                return "reglas_test"
            made = self.compile(units)
            if not made or not self.link(units, made):
                return None
            for trial in self.build.ordered_trials(path):
                if not self.survives(trial.command, limits[trial.name]):
                    kills = self.build.order[path]
                    kills[trial.name] = kills.get(trial.name, 0) + 1
                    return trial.name
            return ""
        finally:
            (self.folder / path).write_text(original, encoding="utf-8")


def measure(build):
    """How many seconds of a processor each trial may take."""
    worker, limits = Worker(build, "whole"), {}
    if not worker.link([], []):
        sys.exit("mutate.sh: the library cannot be linked")
    build.find_trials(worker.folder)
    for trial in build.trials:
        before = os.times().children_user
        if not worker.survives(trial.command, 600):
            sys.exit(f"mutate.sh: {trial.name} fails without any change")
        limits[trial.name] = int(3 * (os.times().children_user - before)) + 2
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
        """Why it lives; to be asked only of what does."""
        key = (path, mutant.before, mutant.after)
        if key in self.known:
            self.used.add(key)
        return self.known.get(key)

    def stale(self, paths):
        return [key for key in self.known if key[0] in paths and key not in self.used]


class Report:
    """What became of each mutant of the last runs, kept so that --again and a run that was ended need not begin anew."""

    def __init__(self, path):
        self.path, self.lock = path, threading.Lock()
        self.verdicts = json.loads(path.read_text()) if path.exists() else {}

    @staticmethod
    def key(path, mutant, ordinal):
        return f"{path}|{ordinal}|{mutant.before}|{mutant.after}"

    def enter(self, key, killer):
        with self.lock:
            self.verdicts[key] = killer
            self.path.write_text(json.dumps(self.verdicts, indent=0))


def score(work, report, excuses):
    """Prints the score of each file and of all; returns how many mutants are open."""
    rows, total = {}, Counter()
    for path, mutant, key in work:
        row = rows.setdefault(path, Counter())
        killer = report.verdicts.get(key)
        row["none" if killer is None else "killed" if killer else
            "equivalent" if excuses.reason(path, mutant) else "open"] += 1
    print(f"{'file':40} {'mutants':>7} {'killed':>6} {'equivalent':>10} {'open':>4}")
    for path, row in list(rows.items()) + [("all", total)]:
        print(f"{path:40} {row.total() - row['none']:7} {row['killed']:6} {row['equivalent']:10} {row['open']:4}")
        total.update(row if row is not total else {})
    print(f"{total['none']} more do not compile; {100 * total['killed'] / max(1, total['killed'] + total['open']):.1f} % "
          "of those that can be noticed are killed")
    return total["open"]


def main():
    parser = argparse.ArgumentParser(prog="mutate.sh", description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--report", type=pathlib.Path, required=True, help="where --again finds what survived")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--again", action="store_true", help="only what survived or was not tried")
    parser.add_argument("files", nargs="*", metavar="FILE", help="sources to break; all of src/ if none")
    options = parser.parse_args()
    paths = options.files or sorted(str(p) for p in pathlib.Path("src").rglob("*") if p.suffix in (".cpp", ".h"))

    excuses = Excuses(pathlib.Path("tests/equivalent_mutants.txt"))
    report = Report(options.report)
    every = [(path, mutant, Report.key(path, mutant, n)) for path in paths
             for n, mutant in enumerate(mutants(pathlib.Path(path).read_text(encoding="utf-8")))]
    work = queue.Queue()
    for one in every:
        if not options.again or report.verdicts.get(one[2], "") == "":
            work.put(one)
    total, begin = work.qsize(), time.time()
    build = Build(options.build, options.jobs)
    limits = measure(build)
    print(f"{total} changes in {len(paths)} files, {len(build.trials)} programs", flush=True)

    def labour(number):
        worker = Worker(build, number)
        while True:
            try:
                path, mutant, key = work.get_nowait()
            except queue.Empty:
                return
            killer = worker.judge(path, mutant.source, limits)
            report.enter(key, killer)
            if killer == "" and not excuses.reason(path, mutant):
                print(f"{path}:{mutant.line}: survives\n    - {mutant.before}\n    + {mutant.after}", flush=True)
            left = work.qsize()
            if left % 200 == 0:
                print(f"[{(time.time() - begin) / 60:.0f} min] {left} left", flush=True)

    with ThreadPoolExecutor(options.jobs) as pool:
        list(pool.map(labour, range(options.jobs)))

    # A header that was touched meanwhile makes every compilation fail, and would look like few mutants.
    if not Worker(build, "end").compile(list(build.objects)):
        sys.exit("mutate.sh: the tree has changed during the run")
    shutil.rmtree(build.work)
    open_ = score(every, report, excuses)
    # What was excused and is killed, or is no longer there.
    stale = excuses.stale(paths)
    for key in stale:
        print("tests/equivalent_mutants.txt: no such survivor: " + " | ".join(key))
    print(f"{(time.time() - begin) / 60:.0f} min")
    return 1 if open_ or stale else 0


if __name__ == "__main__":
    sys.exit(main())
