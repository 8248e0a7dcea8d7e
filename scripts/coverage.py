"""Prints which lines and branches of the libraries the tests do not reach; see coverage.sh.

Its argument is the file that llvm-cov exports.
"""

import collections
import json
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
REASONS = ROOT / "tests/branches.txt"
FOLDERS = ("src", "pki", "utils")
LEAST_LINES = 98
LEAST_BRANCHES = 95

CODE_REGION = 0


def relative(path):
    """Returns the path of a source of the libraries from the root on, or None."""
    path = Path(path).resolve()
    if not path.is_relative_to(ROOT):
        return None
    path = path.relative_to(ROOT)
    return str(path) if path.parts[0] in FOLDERS and not path.name.endswith("_test.cpp") else None


def is_reached(function, place, file):
    """Says whether the innermost region of a function that a place lies in was reached."""
    around = [r for r in function["regions"]
              if r[7] == CODE_REGION and r[5] == file and tuple(r[:2]) <= place <= tuple(r[2:4])]
    return not around or max(around, key=lambda r: (r[:2], [-r[2], -r[3]]))[4] > 0


def branches_of(functions):
    """Returns [times true, times false] by (file, place of the condition)."""
    counts = collections.defaultdict(lambda: [0, 0])
    for function in functions:
        files = [relative(f) for f in function["filenames"]]
        for branch in function["branches"]:
            file = files[branch[6]]
            if file is None:
                continue
            # A condition that is neither where it is reached is one that the compiler has decided.
            if branch[4:6] == [0, 0] and is_reached(function, tuple(branch[:2]), branch[6]):
                continue
            count = counts[file, tuple(branch[:4])]
            count[0] += branch[4]
            count[1] += branch[5]
    return counts


def never_called(functions):
    """Returns the (file, line, column, last line) of the block of each function that no test calls."""
    calls = collections.Counter()
    for function in functions:
        first, start, last, _, _, index = function["regions"][0][:6]
        file = relative(function["filenames"][index])
        if file is not None:
            calls[file, first, start, last] += function["count"]
    return sorted(place for place, count in calls.items() if count == 0)


def is_for_the_compiler(source, line, column):
    """Says whether the function whose block begins here is one that the compiler may call."""
    before = "\n".join([*source[max(0, line - 20):line - 1], source[line - 1][:column - 1]])
    head = re.split(r"[;{}]", before)[-1]
    return re.search(r"\bconst(?:expr|eval)\b", head) is not None and "](" not in head


def text_of(source, place):
    """Returns the text of a condition on one line."""
    first, start, last, end = place
    lines = source[first - 1:last]
    lines[-1] = lines[-1][:end - 1]
    lines[0] = lines[0][start - 1:]
    return " ".join(" ".join(lines).split())


def reasons():
    """Returns the reasons of tests/branches.txt by (file, line, outcome of a condition)."""
    found = {}
    for block in re.split(r"\n\s*\n", REASONS.read_text()):
        lines = [line.strip() for line in block.split("\n") if line.strip() and not line.startswith("#")]
        if not lines:
            continue
        outcomes = [l for l in lines if l.startswith("never ")]
        reason = " ".join(lines[2 + len(outcomes):])
        if not reason or not outcomes or lines[2:2 + len(outcomes)] != outcomes:
            sys.exit("tests/branches.txt: an entry needs a file, a line, outcomes and a reason:\n" + block)
        for outcome in outcomes:
            found[lines[0], lines[1], outcome] = reason
    return found


def share(part, whole):
    return "%6.2f %% (%d of %d)" % (100 * part / whole if whole else 100, part, whole)


def main():
    data = json.loads(Path(sys.argv[1]).read_text())["data"][0]
    lines = {relative(f["filename"]): f["summary"]["lines"] for f in data["files"]}
    branches = branches_of(data["functions"])
    sources = {file: (ROOT / file).read_text().split("\n") for file in lines if file is not None}
    excused = reasons()

    left = []
    for (file, place), times in sorted(branches.items()):
        for outcome, count in zip(("true", "false"), times):
            if count == 0:
                line = sources[file][place[0] - 1].strip()
                text = text_of(sources[file], place)
                left.append((file, place[0], line, "never %s: %s" % (outcome, text)))

    # What the compiler has called has no lines that run.
    print("Functions that no test calls:")
    for file, line, column, last in never_called(data["functions"]):
        if is_for_the_compiler(sources[file], line, column):
            lines[file]["count"] -= last - line + 1
        else:
            print("  %s:%d: %s" % (file, line, sources[file][line - 1].strip()))
    print("\nBranches that no test takes, and why:")
    for file, number, line, outcome in left:
        reason = excused.get((file, line, outcome), "NO REASON IS KNOWN")
        print("  %s:%d: %s\n    %s\n    %s" % (file, number, line, outcome, reason))
    print()

    status = 0
    needed = {(file, line, outcome) for file, _, line, outcome in left}
    for entry in sorted(needed - excused.keys()):
        status = 1
        print("Without a test, and without a reason in tests/branches.txt:\n%s\n%s\n%s\n" % entry)
    for entry in sorted(excused.keys() - needed):
        status = 1
        print("Not needed any more in tests/branches.txt:\n%s\n%s\n%s\n" % entry)

    for folder in (*FOLDERS, ""):
        of = [l for file, l in lines.items() if file is not None and file.startswith(folder)]
        reached, all_lines = sum(l["covered"] for l in of), sum(l["count"] for l in of)
        taken = [count > 0 for (file, _), times in branches.items() if file.startswith(folder) for count in times]
        print("%-7s lines %s, branches %s" % (
            folder or "in all", share(reached, all_lines), share(sum(taken), len(taken))))
    if 100 * reached < LEAST_LINES * all_lines or 100 * sum(taken) < LEAST_BRANCHES * len(taken):
        status = 1
        print("Fewer than %d %% of the lines or %d %% of the branches" % (LEAST_LINES, LEAST_BRANCHES))
    return status


if __name__ == "__main__":
    sys.exit(main())
