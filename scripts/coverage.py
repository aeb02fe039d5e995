#!/usr/bin/env python3
"""coverage.py LINES CONDITIONS EXCUSED: what gcovr and llvm-cov have counted, held against 100 %; see coverage.sh.

What cannot be reached is named in EXCUSED, by its text: a file, then for each entry the text of the line ("- ...") or
of the part of a condition ("? ...", after the line or the condition it stands in), and the reason ("= ...").
"""

import json
import os
import pathlib
import sys


def squeeze(text):
    return " ".join(text.split())


class Sources:
    def __init__(self):
        self.files = {}

    def lines(self, path):
        if path not in self.files:
            self.files[path] = pathlib.Path(path).read_text(encoding="utf-8").encode().split(b"\n")
        return self.files[path]

    def stretch(self, path, line, column, last_line, last_column):
        rows = self.lines(path)[line - 1:last_line]
        rows[-1] = rows[-1][:last_column - 1]
        rows[0] = rows[0][column - 1:]
        return squeeze(b" ".join(rows).decode())

    def line(self, path, line):
        return squeeze(self.lines(path)[line - 1].decode())


class Excused:
    def __init__(self, path):
        self.path, self.known, self.used = path, {}, set()
        source, waiting = None, []
        for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
            if line.startswith("src/"):
                source = line.strip()
            elif line.startswith(("- ", "? ")):
                waiting.append((source, line[0], squeeze(line[2:])))
            elif line.startswith("= "):
                self.known[tuple(waiting)] = squeeze(line[2:])
                waiting = []
        if waiting:
            sys.exit(f"{path}: no reason is given for {waiting}")

    def allows(self, *key):
        if key in self.known:
            self.used.add(key)
        return key in self.known

    def stale(self):
        return [key for key in self.known if key not in self.used]


class Count:
    """How many there are, reached or excused, and those that are neither."""

    def __init__(self, what):
        self.what, self.all, self.reached, self.excused, self.missing = what, 0, 0, 0, []

    def add(self, reached, excused, where):
        self.all += 1
        if reached:
            self.reached += 1
        elif excused():
            self.excused += 1
        else:
            self.missing.append(where)

    def tell(self):
        share = 100 * self.reached / (self.all - self.excused)
        print(f"{self.what:<12} {self.reached} of {self.all - self.excused}  {share:.1f} %"
              + (f", {self.excused} excused" if self.excused else ""))
        for where in self.missing:
            print("    " + where)


def count_lines(report, sources, excused):
    lines, branches = Count("lines"), Count("branches")
    for file in report["files"]:
        path = file["file"]
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            number = line["line_number"]
            text = sources.line(path, number)
            where = f"{path}:{number}: {text}"
            lines.add(line["count"] > 0, lambda: excused.allows((path, "-", text)), where)
            for branch in line["branches"]:
                if not branch.get("throw") and line["count"] > 0:
                    branches.add(branch["count"] > 0, lambda: excused.allows((path, "-", text)), where)
    return lines, branches


def count_conditions(report, sources, excused):
    """A part counts once, however many instances its function has."""
    parts = {}
    for file in report["data"][0]["files"]:
        path = os.path.relpath(file["filename"])
        ends = sorted({tuple(branch[:4]) for branch in file["branches"]})
        for record in file["mcdc_records"]:
            span, covered = tuple(record[:4]), record[-1]
            inside = [e for e in ends if span[:2] <= e[:2] and e[2:4] <= span[2:4]]
            inside = [e for e in inside if not any(o != e and e[:2] <= o[:2] and o[2:4] <= e[2:4] for o in inside)]
            if len(inside) != len(covered):
                sys.exit(f"{path}:{span[0]}: {len(covered)} parts, but {len(inside)} in the text")
            for end, yes in zip(inside, covered):
                key = (path, span, end)
                parts[key] = parts.get(key, False) or yes
    count = Count("MC/DC")
    for (path, span, end), yes in sorted(parts.items()):
        whole, part = sources.stretch(path, *span), sources.stretch(path, *end)
        count.add(yes, lambda: excused.allows((path, "-", whole), (path, "?", part)), f"{path}:{end[0]}: {part}   in   {whole}")
    return count


def main(lines, conditions, excuses):
    sources, excused = Sources(), Excused(excuses)
    counts = [*count_lines(json.loads(pathlib.Path(lines).read_text()), sources, excused),
              count_conditions(json.loads(pathlib.Path(conditions).read_text()), sources, excused)]
    for count in counts:
        count.tell()
    for key in excused.stale():
        print(f"{excuses}: matches nothing any more: " + " ".join(text for _, _, text in key))
    return 1 if excused.stale() or any(count.missing for count in counts) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
