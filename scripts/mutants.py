#!/usr/bin/env python3
"""Applies the realistic faults of tests/mutants.txt one at a time and says
which ones the test suite catches.

For each mutant: the file is changed, the x86_64 and native trees are
rebuilt, the tests of the mutant's own folder run first and then the rest,
stopping at the first failure, and the file is put back. A mutant that fails
a test is killed; one that passes everything survived. Called by
scripts/run-mutants.sh inside one Xvfb and wineserver.

Environment:
  BUILD     the build root (default ./build)
  MUTANTS   a regular expression: only mutants whose file or title match
  JOBS      parallel test processes (default 2)

With --check, only checks that every mutant's text occurs once in its file.
"""
import os
import re
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.environ.get("BUILD", os.path.join(ROOT, "build"))
WORK = os.path.join(BUILD, "mutants")
LIST = os.path.join(ROOT, "tests", "mutants.txt")
BACKUP = os.path.join(WORK, "original")
JOBS = os.environ.get("JOBS", "2")
TREES = ["native", "x86_64"]
# Folders whose tests carry their name as a CTest label (every manager with a
# folder under tests/); a mutant elsewhere (include/) runs the whole
# suite in one stage.
LABELLED = {d for d in os.listdir(os.path.join(ROOT, "tests"))
            if os.path.isdir(os.path.join(ROOT, "tests", d)) and d != "support"}
# Folders tested under another folder's label: the example programs by the
# host tests that drive them.
TESTED_AS = {"examples": "host"}


class Mutant:
    def __init__(self, number, path, title, old, new):
        self.number, self.path, self.title, self.old, self.new = number, path, title, old, new

    def name(self):
        return "#%d %s: %s" % (self.number, self.path, self.title)


def parse(text):
    """Entries: '@ file: title', then '- exact text' lines, then '+ replacement'
    lines. Several '-' or '+' lines join with newlines; a bare '+' deletes."""
    mutants, entry = [], None
    for lineno, line in enumerate(text.splitlines(), 1):
        if line.startswith("#") or not line.strip():
            continue
        if line.startswith("@ "):
            path, _, title = line[2:].partition(": ")
            entry = {"path": path.strip(), "title": title.strip(), "old": [], "new": [], "line": lineno}
            mutants.append(entry)
        elif entry is not None and (line.startswith("- ") or line == "-"):
            entry["old"].append(line[2:])
        elif entry is not None and (line.startswith("+ ") or line == "+"):
            entry["new"].append(line[2:])
        else:
            sys.exit("%s:%d: not an entry line: %r" % (LIST, lineno, line))
    result = []
    for n, e in enumerate(mutants, 1):
        if not e["old"]:
            sys.exit("%s:%d: the mutant has no '-' text" % (LIST, e["line"]))
        result.append(Mutant(n, e["path"], e["title"], "\n".join(e["old"]), "\n".join(e["new"])))
    return result


def check(mutants):
    bad = []
    for m in mutants:
        path = os.path.join(ROOT, m.path)
        if not os.path.isfile(path):
            bad.append("%s: no such file" % m.name())
            continue
        count = open(path, encoding="utf-8").read().count(m.old)
        if count != 1:
            bad.append("%s: the text occurs %d times, not once" % (m.name(), count))
    if bad:
        sys.exit("tests/mutants.txt does not match the sources:\n  " + "\n  ".join(bad))


def restore_leftovers():
    """A run stopped half-way leaves its original file in BACKUP: put it back."""
    if not os.path.isdir(BACKUP):
        return
    for dirpath, _, files in os.walk(BACKUP):
        for f in files:
            saved = os.path.join(dirpath, f)
            target = os.path.join(ROOT, os.path.relpath(saved, BACKUP))
            shutil.copyfile(saved, target)
            print("restored %s from an interrupted run" % os.path.relpath(target, ROOT))
    shutil.rmtree(BACKUP)


def build():
    for tree in TREES:
        r = subprocess.run(["cmake", "--build", os.path.join(BUILD, tree), "-j", JOBS, "--", "--quiet"],
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if r.returncode != 0:
            return False, r.stdout.decode(errors="replace")
    return True, ""


def ctest(args):
    """Runs the mutation tree's tests; None when all pass, else the first failure.
    A timed-out test runs once more, as in scripts/run-tests.sh: a Wine process
    sometimes finishes its test and does not exit, which is no kill."""
    r = subprocess.run(["ctest", "--test-dir", WORK, "-j", JOBS, "--timeout", "60", "--stop-on-failure",
                        "--repeat", "after-timeout:2",
                        "-E", "^fuzz\\.|\\.Format\\.|\\.ExportTable\\."] + args, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    out = r.stdout.decode(errors="replace")
    if r.returncode == 0:
        return None
    failed = re.findall(r"^\s*\d+ - (\S+) \(", out, re.M)
    if failed:
        return failed[0]
    if "No tests were found" in out:
        return None
    return "ctest exit %d" % r.returncode


def run_suite(folder):
    folder = TESTED_AS.get(folder, folder)
    if folder in LABELLED:
        first = ctest(["-L", "^%s$" % folder])
        if first:
            return first
        return ctest(["-LE", "^%s$" % folder])
    return ctest([])


def main():
    os.makedirs(WORK, exist_ok=True)
    with open(os.path.join(WORK, "CTestTestfile.cmake"), "w") as f:
        for tree in TREES:
            f.write('subdirs("%s")\n' % os.path.join(BUILD, tree))
    restore_leftovers()
    mutants = parse(open(LIST, encoding="utf-8").read())
    check(mutants)
    if "--check" in sys.argv[1:]:
        print("%d mutants, each found once in its file" % len(mutants))
        return 0
    pattern = os.environ.get("MUTANTS")
    if pattern:
        mutants = [m for m in mutants if re.search(pattern, m.path) or re.search(pattern, m.title)]
    ok, log = build()
    if not ok:
        sys.exit("the unchanged tree does not build:\n" + log)
    if os.environ.get("MUTANTS_BASELINE", "1") != "0":
        print("== the unchanged suite", flush=True)
        failure = ctest([])
        if failure:
            sys.exit("the unchanged suite fails (%s): fix it before counting mutants" % failure)

    killed, survived, broken = [], [], []
    report = open(os.path.join(WORK, "report.txt"), "w")
    for m in mutants:
        start = time.time()
        path = os.path.join(ROOT, m.path)
        original = open(path, encoding="utf-8").read()
        saved = os.path.join(BACKUP, m.path)
        os.makedirs(os.path.dirname(saved), exist_ok=True)
        shutil.copyfile(path, saved)
        try:
            with open(path, "w", encoding="utf-8") as f:
                f.write(original.replace(m.old, m.new, 1))
            ok, log = build()
            if not ok:
                verdict, by = "DID NOT BUILD", log.strip().splitlines()[-1:] or [""]
                broken.append(m)
                by = by[0]
            else:
                failure = run_suite(m.path.split("/")[0])
                if failure:
                    verdict, by = "killed", failure
                    killed.append(m)
                else:
                    verdict, by = "SURVIVED", ""
                    survived.append(m)
        finally:
            with open(path, "w", encoding="utf-8") as f:
                f.write(original)
            os.remove(saved)
        line = "%-13s %s%s  (%.0f s)" % (verdict, m.name(), "  [by %s]" % by if by else "", time.time() - start)
        print(line, flush=True)
        report.write(line + "\n")
    shutil.rmtree(BACKUP, ignore_errors=True)
    build()

    counted = len(killed) + len(survived)
    total = "killed %d of %d mutants (%.1f%%)" % (len(killed), counted, 100.0 * len(killed) / max(counted, 1))
    if broken:
        total += "; %d did not build and are not counted" % len(broken)
    print(total)
    report.write(total + "\n")
    for m in survived:
        print("  survived: " + m.name())
    return 0


if __name__ == "__main__":
    sys.exit(main())
