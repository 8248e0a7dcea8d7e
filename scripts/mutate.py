"""Changes one place of the libraries at a time and runs the tests on it; see mutate.sh.

A mutant is compiled from a copy of its file, with the command of the build, and linked in a folder of its
own under build/mutants. The folder has bin/ and lib/ as the build has them, so that the test programs,
which look for the libraries in ../lib from where they stand, find the changed ones. The build itself is
not touched.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parent.parent
SCRATCH = ROOT / "build/mutants"
EXCUSES = ROOT / "tests/mutants.txt"
TABLE_OF_FIELDS = ROOT / "docs/fields.md"
PROGRAMS = ("orvelutils_tests", "unit_tests", "attack_tests")
FIELDS = "fields"  # prints what docs/fields.md has
STATIC = ("attack_tests", FIELDS)  # the programs that have the libraries in them
LIBRARIES = ("orvelutils", "orvelasn1", "orvelpki")
FOLDERS = ("src", "pki", "utils")
OF_A_CHANGE = 30
OBJECTS_OF_A_HEADER = 3
HEADERS_OF_A_CHANGE = 5  # each is dozens of objects
SECONDS_OF_A_CHANGE = 150  # no more mutants are begun after these

LIKELY = 40  # the unit tests to begin with, of those that failed on other mutants of the file

# The tests in the order in which they run, as filters of GoogleTest: nine of ten mutants fail within the second
# that the first ones take. Tests that measure time fail on a busy machine, and tests of the day's random inputs
# differ by the day: neither says anything about a mutant. Of the attacks, those that take long run on the families
# only that have a word of the file's path in their names.
SLOW_TESTS = "LongName.*:*StringDecoder.*:TraceDump.*:Nested*:GdoTrace.*:Headers.*:LongCrl.*:ObjIdParse.*"
SLOW_ATTACKS = "*EveryValueOf*:*RightInFront*:*TheTime*:Exhaustion.*:EightThreads.*:Deep.AThread*:*ASmallStack*"
SLOW_ATTACKS_ON_ONE = ("*EveryValueOf*/", "*RightInFront*/")
# The same where an octet takes ten times as long.
SLOW_SANITIZED_ATTACKS = SLOW_ATTACKS + ":*ChangedOctet*:*NastyLength*:Deep.*:*Large*"

# One change a library that both test programs must notice, and one that the table of fields must show: without
# these, a script that runs the wrong library would call everything a survivor.
MUST_DIE = (
    ("utils/list.cpp", "list->elements[list->length++] = element;", "list->length++;"),
    ("src/core/record.cpp", "return clone_fields(value, Walked{type});", "return nullptr;"),
    ("pki/type.cpp", "return type_of(type).count;", "return 0;"),
)
MUST_CHANGE_FIELDS = ("pki/forms/rfc6960.cpp", "Required<&OCSPSignature::signature,",
                      "Optional<&OCSPSignature::signature,")
MUST_NOTICE = {"unit_tests": "-" + SLOW_TESTS, "attack_tests": "*SamplesComeBack*:*MissingField*:Findings.*"}


# ------------------------------------------------------------------------------------------------
# Places
# ------------------------------------------------------------------------------------------------


class Mutant(NamedTuple):
    file: str
    start: int
    end: int
    text: str  # in place of what is from start to end
    old: str  # the lines that it is in, without their indentation
    new: str
    line: int
    count: int  # how many of the same old and new lines come before in the file

    def key(self):
        return "\n".join((self.file, self.old, self.new, str(self.count)))

    def difference(self):
        return "\n".join(["- " + l for l in self.old.split("\n")] + ["+ " + l for l in self.new.split("\n")])


def blanked(source):
    """Returns the source with blanks for comments, texts, attributes, assertions and the preprocessor's."""

    def blanks(match):
        return re.sub(r"[^\n]", " ", match[0])

    text = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"'
    source = re.sub(text + r"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'", blanks, source, flags=re.S)
    source = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", blanks, source, flags=re.M)
    source = re.sub(r"\[\[.*?\]\]", blanks, source)
    return re.sub(r"\bstatic_assert\(.*?\);", blanks, source, flags=re.S)


def closing(code, start, opening, closing_one):
    """Returns where the bracket ends that is opened at start, or None."""
    depth = 0
    for i in range(start, len(code)):
        depth += (code[i] == opening) - (code[i] == closing_one)
        if depth == 0:
            return i
    return None


def arguments(code, start):
    """Returns the end of a template's arguments, whose bracket is at start, and the range of each."""
    end = closing(code, start, "<", ">")
    if end is None:
        return None, []
    ranges, depth, first = [], 0, start + 1
    for i in range(start + 1, end):
        depth += (code[i] in "<({") - (code[i] in ">)}")
        if code[i] == "," and depth == 0:
            ranges.append((first, i))
            first = i + 1
    return end, ranges + [(first, end)]


def simple_statements(code):
    """Yields the range of each statement that is no declaration, no return and no block."""
    declaration = re.compile(
        r"(?!else\b|delete\b)[\w:]+(?:<[^;=]*>)?[\s*&]+\w+(?:\[\w*\])?\s*(?:=(?!=)|\{|;|\()"
        r"|(?:return|using|template|struct|class|static|constexpr|const|auto|explicit|friend|typedef|"
        r"namespace|public|private|case|default|enum|union|extern|operator|switch|do)\b|[}\])#~]")
    before = ""
    for match in re.finditer(r"^( *)(\S.*?) *$", code, flags=re.M):
        is_first = before.endswith((";", "{", "}", ")")) or re.search(r"(?<!:):$|\belse$", before)
        before = match[2]
        if not is_first or len(match[1]) < 2 or declaration.match(match[2]):
            continue
        start = match.start(2)
        depth = 0
        for i in range(start, min(start + 600, len(code))):
            depth += (code[i] in "([{") - (code[i] in ")]}")
            if depth < 0:
                break
            if code[i] == ";" and depth == 0:
                yield start, i + 1
                break
            # A block that stands by itself is no simple statement.
            if code[i] == "{" and depth == 1 and re.search(r"[)]\s*$|\b(?:else|do)\s*$", code[start:i]):
                break


def tag_names():
    tags = blanked((ROOT / "src/core/tags.h").read_text())
    return re.findall(r"constexpr uint8_t (\w+)", tags)


def following(name, names):
    return names[(names.index(name) + 1) % len(names)]


def changes_of_code(source, code):
    """Yields (start, end, text) for each change of an operator, a constant or a statement."""
    others = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&"}
    for match in re.finditer(r"(?<!template)(?<= )(==|!=|<=?|>=?|&&|\|\|)(?=[ \n])", code):
        yield match.start(), match.end(), others[match[1]]
    for match in re.finditer(r"(?<!\w)!(?=[\w(*])", code):
        yield match.start(), match.end(), ""
    for match in re.finditer(r"\b(?:true|false)\b", code):
        yield match.start(), match.end(), "false" if match[0] == "true" else "true"

    for match in re.finditer(r"(?<![\w.'])(0[xX][0-9A-Fa-f]+|\d+)(?=[uUlL]*\b)(?!['.]|\w*')", code):
        value = int(match[1], 0 if match[1][:2] in ("0x", "0X") else 10)
        # An identifier has many arcs: one change of each will do.
        is_arc = code.startswith("OBJECT_IDENTIFIER", code.rfind("\n", 0, match.start()) + 1)
        for other in (value + 1, value - 1):
            if other >= 0 and not (is_arc and other < value):
                yield match.start(), match.end(), hex(other) if "x" in match[1].lower() else str(other)
    for match in re.finditer(r"(?<![0-9a-fA-F])'([ -&(-\[\]-~])'", source):
        # Not in a comment, which has another blank in front.
        before = source.rfind("\n", 0, match.start()) + 1
        if "//" not in source[before : match.start()] and code[match.start()] == " ":
            other = chr(ord(match[1]) + 1)
            yield match.start(), match.end(), "'%s'" % ("\\" + other if other in "\\'" else other)

    statements = list(simple_statements(code))
    for start, end in statements:
        yield start, end, ";"
    for (start, end), (next_start, next_end) in zip(statements, statements[1:]):
        between = code[end:next_start]
        if between.strip() or between.count("\n") != 1 or code[start:next_end].count("\n") != 1:
            continue
        if not code.startswith(("if ", "for ", "while ", "else"), start):
            yield start, next_end, source[next_start:next_end] + source[end:next_start] + source[start:end]
    for match in re.finditer(r"\bif \(", code):
        end = closing(code, match.end() - 1, "(", ")")
        if end is not None and re.match(r"\) (?:\s)*\{", code[end:]):
            yield match.end(), end, "false"

    # A decoder that fails returns a null pointer, one that does not returns where it stopped.
    functions = list(re.finditer(r"^(?=\S)(?![}#])[^;{}]*\{$", code, flags=re.M))
    for match in re.finditer(r"\breturn nullptr;", code):
        around = [f for f in functions if f.end() <= match.start()]
        if around and re.search(r"\bconst uint8_t \*end\b", around[-1][0]):
            yield match.start(), match.end(), "return end;"


def changes_of_tables(source, code, tags):
    """Yields the same for what only tables and identifiers have."""
    for match in re.finditer(r"\btag::(\w+)", code):
        if match[1] in tags:
            yield match.start(1), match.end(1), following(match[1], tags)
    codecs = sorted(set(re.findall(r"\b[A-Z]\w*Codec\b(?!<)", code)))
    for match in re.finditer(r"[<,] *(\w+Codec)\b(?!<)", code):
        if match[1] in codecs and len(codecs) > 1:
            yield match.start(1), match.end(1), following(match[1], codecs)

    # A definition of these words has no bracket right after them.
    words = "Optional|Required|Stored|Wiped|OnlyIf|Explicit|Implicit|SequenceOf|SetOf"
    for match in re.finditer(r"\b(%s)<" % words, code):
        end, ranges = arguments(code, match.end() - 1)
        if end is None:
            continue
        parts = [source[a:b].strip() for a, b in ranges]
        word = match[1]
        made = {
            "Optional": lambda: "Required<%s>" % ", ".join(parts[:2]),
            "Required": lambda: "Optional<%s>" % ", ".join(parts),
            "Stored": lambda: parts[1],
            "Wiped": lambda: parts[0],
            "OnlyIf": lambda: parts[1],
            "Explicit": lambda: "Implicit<%s>" % ", ".join(parts),
            "Implicit": lambda: "Explicit<%s>" % ", ".join(parts),
            "SequenceOf": lambda: "SetOf<%s>" % parts[0],
            "SetOf": lambda: "SequenceOf<%s>" % parts[0],
        }
        if word not in ("Stored", "OnlyIf") or len(parts) > 1:
            yield match.start(), end + 1, made[word]()

    field = r"^    (?:[A-Z]\w*)<.*>,$"
    lines = list(re.finditer(field, code, flags=re.M))
    for one, other in zip(lines, lines[1:]):
        other_line = source[other.start():other.end()]
        if one.end() + 1 == other.start():
            yield one.start(), other.end(), other_line + "\n" + source[one.start():one.end()]


def mutants_of(file, tags):
    source = (ROOT / file).read_text()
    code = blanked(source)
    changes = list(changes_of_code(source, code))
    if file != "src/core/table.h":
        changes += changes_of_tables(source, code, tags)
    seen = {}
    found = []
    for start, end, text in sorted(set(changes)):
        first = source.rfind("\n", 0, start) + 1
        last = source.find("\n", end)
        last = len(source) if last < 0 else last
        old = stripped(source[first:last])
        new = stripped(source[first:start] + text + source[end:last])
        if old == new:
            continue
        # Two changes in one place may come out the same.
        at = seen.setdefault((old, new), [])
        if first in at:
            continue
        found.append(Mutant(file, start, end, text, old, new, source.count("\n", 0, start) + 1, len(at)))
        at.append(first)
    return found


def stripped(lines):
    return "\n".join(line.strip() for line in lines.split("\n"))


def sources():
    return sorted(
        str(path.relative_to(ROOT))
        for folder in FOLDERS
        for path in (ROOT / folder).rglob("*")
        if path.suffix in (".cpp", ".h") and not path.name.endswith("_test.cpp"))


# ------------------------------------------------------------------------------------------------
# Excuses
# ------------------------------------------------------------------------------------------------


def excuses():
    """Returns the reasons of tests/mutants.txt by (file, old lines, new lines)."""
    found = {}
    for block in re.split(r"\n\s*\n", EXCUSES.read_text() if EXCUSES.exists() else ""):
        lines = [line.rstrip() for line in block.split("\n") if line.strip() and not line.startswith("#")]
        if not lines:
            continue
        file = lines[0]
        old = [l[2:].strip() for l in lines[1:] if l.startswith("- ")]
        new = [l[2:].strip() for l in lines[1:] if l.startswith("+ ") or l == "+"]
        reason = " ".join(lines[1 + len(old) + len(new):])
        if not (old and new and reason):
            sys.exit("tests/mutants.txt: an entry needs a file, lines with - and +, and a reason:\n" + block)
        if not (ROOT / file).exists() or "\n".join(old) not in stripped((ROOT / file).read_text()):
            sys.exit("tests/mutants.txt: %s has no such line any more:\n%s" % (file, "\n".join(old)))
        found[file, "\n".join(old), "\n".join(new)] = reason
    return found


# ------------------------------------------------------------------------------------------------
# Builds
# ------------------------------------------------------------------------------------------------


class Failed(Exception):
    """A command of the build failed on a mutant."""


class Outcome(NamedTuple):
    passed: bool
    killer: str
    seconds: float  # of the processor


def filters(program, file, sanitized):
    """Returns the filters of the tests to run on a mutant of a file, in their order."""
    if program == "unit_tests":
        return ["-" + SLOW_TESTS, SLOW_TESTS]
    if program != "attack_tests":
        return ["*"]
    if sanitized:
        return ["-" + SLOW_SANITIZED_ATTACKS]
    words = {word.rstrip("s") for word in re.findall("[a-z0-9]+", file)} | {"certificate"}
    return ["-" + SLOW_ATTACKS,
            ":".join(test + word for test in SLOW_ATTACKS_ON_ONE for word in sorted(words))]


def run(command, folder):
    done = subprocess.run(command, cwd=folder, shell=isinstance(command, str), text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          env=dict(os.environ, CCACHE_DISABLE="1"))
    if done.returncode != 0:
        raise Failed(done.stdout)
    return done.stdout


class Build:
    """A build folder: its commands, and the test programs in it."""

    def __init__(self, preset):
        self.preset = preset
        self.folder = ROOT / "build" / preset
        self.sanitized = preset != "release"
        self.commands = {}  # object: (command, source)
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            if Path(words[0]).name == "ccache":  # which has no use for what is compiled once
                del words[0]
            built = words[words.index("-o") + 1]
            if self.library_of(built):
                self.commands[built] = (words, str(Path(entry["file"]).relative_to(ROOT))
                                        if entry["file"].startswith(str(ROOT)) else entry["file"])
        self.needs = self.dependencies()
        self.links = {name: self.link_of("lib/lib%s.so.1.0.0" % name) for name in LIBRARIES}
        self.static_links = {name: self.link_of("bin/" + name) for name in STATIC}
        programs = PROGRAMS if self.sanitized else (*PROGRAMS, FIELDS)
        self.digests = {name: digest(self.folder / "bin" / name) for name in programs}
        self.digest = "".join(self.digests.values())
        libraries = (self.folder / ("lib/lib%s.so.1.0.0" % name) for name in LIBRARIES)
        self.state = digest(*libraries) + self.digest
        # What was found out about this build by an earlier run: whether the script itself was held against it, and
        # seconds of the processor, by program and tests.
        self.memory = SCRATCH / (preset + ".json")
        known = json.loads(self.memory.read_text()) if self.memory.exists() else {}
        self.checked = known.get("state") == self.state
        self.limits = known.get("limits", {})
        self.measuring = threading.Lock()

    def remember(self):
        self.memory.write_text(json.dumps({"state": self.state, "limits": self.limits}))

    @staticmethod
    def library_of(built):
        match = re.search(r"(\w+)_objects\.dir/", built)
        return match[1] if match and match[1] in LIBRARIES else None

    def dependencies(self):
        """Returns the objects that a file is compiled into, by file."""
        found = {}
        built = None
        for line in run("ninja -t deps", self.folder).split("\n"):
            if line and line[0] != " ":
                built = line.split(": ")[0]
            elif built in self.commands and line.strip():
                path = os.path.normpath(self.folder / line.strip())
                if path.startswith(str(ROOT) + "/"):
                    found.setdefault(os.path.relpath(path, ROOT), []).append(built)
        return found

    def link_of(self, target):
        commands = run(["ninja", "-t", "commands", target], self.folder).split("\n")
        return [line for line in commands if " -o %s " % target in line][-1]

    def stages_of(self, mutant):
        """Returns the objects that a mutant is compiled into, in stages: a test that fails on what the first ones
        change saves the others.

        A source is all of its objects. For a header, these are a few objects of each library, then all of them.
        """
        file = mutant.file
        if not file.endswith(".h"):
            return [[built for built, (_, source) in self.commands.items() if source == file]]
        stages = []
        for name in LIBRARIES:
            objects = sorted(o for o in self.needs.get(file, []) if self.library_of(o) == name)
            random.Random(mutant.key()).shuffle(objects)
            few = 0 if self.sanitized else OBJECTS_OF_A_HEADER
            stages += [objects[:few], objects[few:]]
        return [stage for stage in stages if stage]

    def compile(self, built, file, copy, to):
        """Compiles an object with `copy` in place of `file`."""
        words, source = self.commands[built]
        words = list(words)
        made = to / built
        made.parent.mkdir(parents=True, exist_ok=True)
        words[words.index("-o") + 1] = str(made)
        front = []
        if source == file:
            words[words.index("-c") + 1] = str(copy)
            front = ["-iquote", str((ROOT / file).parent)]
        else:
            # The folders in which the header is found by the names that sources include it by.
            for word in words:
                if word.startswith("-I") and (ROOT / file).is_relative_to(os.path.normpath(word[2:])):
                    front.append("-I" + str(to / "tree" / os.path.relpath(os.path.normpath(word[2:]), ROOT)))
        # A mutant is not judged by its warnings.
        names = to / "names.d"
        words[1:1] = front
        run(words + ["-w", "-MD", "-MF", str(names)], self.folder)
        if source != file and str(ROOT / file) in [os.path.normpath(n) for n in names.read_text().split()]:
            raise RuntimeError("%s: %s was compiled without its change" % (built, file))
        return made

    def link(self, objects, to):
        """Links the libraries of the objects, {object: made}, into `to`, beside the programs that load them."""
        for folder in ("bin", "lib"):
            shutil.rmtree(to / folder, ignore_errors=True)
            (to / folder).mkdir(parents=True)
        changed = {self.library_of(built) for built in objects}
        for name in LIBRARIES:
            target = to / ("lib/lib%s.so.1" % name)
            if name not in changed:
                os.link(self.folder / ("lib/lib%s.so.1.0.0" % name), target)
                continue
            command = self.links[name].replace(" -o lib/lib%s.so.1.0.0 " % name, " -o %s " % target)
            for built, made in objects.items():
                command = command.replace(" %s " % built, " %s " % made)
            run(command, self.folder)
        for program in ("unit_tests", "orvelutils_tests"):
            os.link(self.folder / "bin" / program, to / "bin" / program)

    def link_static(self, program, objects, to):
        """Links a program that has the libraries in it. An object hides that of an archive."""
        output = " -o %s %s " % (to / "bin" / program, " ".join(map(str, objects.values())))
        run(self.static_links[program].replace(" -o bin/%s " % program, output), self.folder)

    def compare_fields(self, objects, to):
        """Compares what is needed of records with docs/fields.md. Ends the script where that differs without a
        change."""
        with self.measuring:
            name = FIELDS + " " + self.digests[FIELDS] + digest(TABLE_OF_FIELDS)
            if name not in self.limits:
                unchanged = SCRATCH / "unchanged"
                self.link({}, unchanged)
                outcome = self.execute_fields({}, unchanged, 600)
                if not outcome.passed:
                    raise RuntimeError("docs/fields.md differs without any change")
                self.limits[name] = 5 + int(3 * outcome.seconds)
                self.remember()
        return self.execute_fields(objects, to, self.limits[name])

    def execute_fields(self, objects, to, limit):
        self.link_static(FIELDS, objects, to)
        outcome = self.execute(FIELDS, None, limit, to)
        same = (to / (FIELDS + ".log")).read_bytes() == TABLE_OF_FIELDS.read_bytes()
        return outcome if same or not outcome.passed else Outcome(False, "docs/fields.md", outcome.seconds)

    def test(self, program, file, to, likely):
        """Runs the tests for a mutant of a file until the first failure, the `likely` ones before the others, for at
        most thrice the time that they take without a change. Ends the script where they fail without one."""
        if likely and program == "unit_tests":
            outcome = self.execute(program, ":".join(likely), 20, to)
            if not outcome.passed:
                return outcome
        for tests in filters(program, file, self.sanitized):
            with self.measuring:
                name = " ".join((program, self.digests[program], tests))
                if name not in self.limits:
                    unchanged = SCRATCH / "unchanged"
                    self.link({}, unchanged)
                    if program in STATIC:
                        self.link_static(program, {}, unchanged)
                    outcome = self.execute(program, tests, 3600, unchanged)
                    if not outcome.passed:
                        raise RuntimeError("%s of build/%s fail without any change: %s"
                                           % (program, self.preset, outcome.killer))
                    print("%s of build/%s take %.1f s: %s" % (program, self.preset, outcome.seconds, tests),
                          flush=True)
                    self.limits[name] = 5 + int(3 * outcome.seconds)
                    self.remember()
            outcome = self.execute(program, tests, self.limits[name], to)
            if not outcome.passed:
                break
        return outcome

    def execute(self, program, tests, limit, to):
        """Runs a program, with tests until the first failure, for at most `limit` seconds of the processor."""

        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (limit, limit + 1))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            if not self.sanitized:
                resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))

        environment = dict(os.environ, TZ="UTC", ASAN_OPTIONS="hard_rss_limit_mb=4096")
        environment.pop("LD_LIBRARY_PATH", None)
        environment.pop("ORVELASN1_CORPUS", None)
        log = to / (program + ".log")
        choice = [] if tests is None else ["--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=" + tests]
        with open(log, "wb") as out:
            process = subprocess.Popen(
                [to / "bin" / program, *choice], stdout=out, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                cwd=to, env=environment, preexec_fn=limits, start_new_session=True)
            timed_out = threading.Event()

            def stop():
                timed_out.set()
                os.killpg(process.pid, signal.SIGKILL)

            timer = threading.Timer(limit * 20, stop)
            timer.start()
            _, status, usage = os.wait4(process.pid, 0)
            timer.cancel()
            process.returncode = status
        seconds = usage.ru_utime + usage.ru_stime
        if status == 0:
            return Outcome(True, "", seconds)
        failed = re.findall(r"^\[  FAILED  \] ([^\s,]+)", log.read_text(errors="replace"), flags=re.M)
        ended = os.WTERMSIG(status) if os.WIFSIGNALED(status) else 0
        if timed_out.is_set() or ended == signal.SIGXCPU:
            return Outcome(False, "the limit of time", seconds)
        return Outcome(False, failed[0] if failed else "signal %d" % ended if ended else "an exit", seconds)


def digest(*paths):
    sums = hashlib.sha256()
    for path in paths:
        sums.update(path.read_bytes())
    return sums.hexdigest()[:16]


# ------------------------------------------------------------------------------------------------
# A mutant
# ------------------------------------------------------------------------------------------------


def put_copy(mutant, to):
    """Writes the changed file, alone in a tree of folders as that of the project."""
    source = (ROOT / mutant.file).read_text()
    copy = to / "tree" / mutant.file
    shutil.rmtree(to / "tree", ignore_errors=True)
    copy.parent.mkdir(parents=True)
    copy.write_text(source[: mutant.start] + mutant.text + source[mutant.end:])
    return copy


def try_one(mutant, builds, likely, to):
    """Returns the outcome of a mutant, and what brought it about. Runs the `likely` unit tests before all others."""
    copy = put_copy(mutant, to)
    for build in builds:
        where = "address sanitizer, " if build.sanitized else ""
        objects = {}
        same = True
        stages = build.stages_of(mutant)
        if not any(stages):
            return "left out", "no object has it"
        for stage in stages:
            try:
                for built in stage:
                    objects[built] = build.compile(built, mutant.file, copy, to)
                    if same and objects[built].read_bytes() != (build.folder / built).read_bytes():
                        same = False
                if same:
                    continue
                build.link(objects, to)
            except Failed:
                return "left out", "it does not compile"
            programs = ["orvelutils_tests"] if mutant.file.startswith("utils/") else []
            for program in programs + ["unit_tests"]:
                outcome = build.test(program, mutant.file, to, likely)
                if not outcome.passed:
                    return "killed", "%sunit tests, %s" % (where, outcome.killer)
        if same:
            return "same", "the compiler makes the same of it"
        try:
            if not build.sanitized and not mutant.file.startswith("utils/"):
                outcome = build.compare_fields(objects, to)
                if not outcome.passed:
                    return "killed", "table of fields, %s" % outcome.killer
            build.link_static("attack_tests", objects, to)
        except Failed:
            return "left out", "it does not link"
        outcome = build.test("attack_tests", mutant.file, to, [])
        if not outcome.passed:
            return "killed", "%sattack tests, %s" % (where, outcome.killer)
    return "survived", ""


def check_tests(build):
    """Holds the script itself against changes that both test programs must notice."""
    to = SCRATCH / "check"
    build.link({}, to)
    libraries = run(["ldd", str(to / "bin/unit_tests")], to)
    for name in LIBRARIES:
        if " %s/lib%s.so.1 " % (to / "lib", name) not in libraries.replace("bin/../", ""):
            sys.exit("The test programs do not take lib%s from %s:\n%s" % (name, to, libraries))

    def objects_of(file, old, new):
        start = (ROOT / file).read_text().index(old)
        mutant = Mutant(file, start, start + len(old), new, old, new, 0, 0)
        copy = put_copy(mutant, to)
        return {built: build.compile(built, file, copy, to)
                for stage in build.stages_of(mutant) for built in stage}

    if build.compare_fields(objects_of(*MUST_CHANGE_FIELDS), to).passed:
        sys.exit("docs/fields.md has nothing of %s" % MUST_CHANGE_FIELDS[2])
    for file, old, new in MUST_DIE:
        objects = objects_of(file, old, new)
        build.link(objects, to)
        build.link_static("attack_tests", objects, to)
        for program in MUST_NOTICE:
            outcome = build.execute(program, MUST_NOTICE[program], 600, to)
            if outcome.passed:
                sys.exit("%s do not notice that %s has %s" % (program, file, new))
            print("%s notice %s in %s: %s" % (program, new, file, outcome.killer), flush=True)


# ------------------------------------------------------------------------------------------------
# All of them
# ------------------------------------------------------------------------------------------------


def changed_lines(base):
    """Returns the lines that differ from where this commit and `base` part, by file; None where there is nothing to
    compare with."""

    def commit(*words):
        done = subprocess.run(["git", *words], cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True)
        return done.stdout.strip() if done.returncode == 0 else None

    head = commit("rev-parse", "--verify", "HEAD")
    for name in [base] if base else ["origin/main", "main", "HEAD^"]:
        parted = commit("merge-base", name, "HEAD")
        if parted is not None and (base or parted != head):
            break
    else:
        return None
    print("Compared with %s, %s" % (name, parted[:12]))
    found, file = {}, None
    for line in run(["git", "diff", "-U0", "--no-color", parted, "--", *FOLDERS], ROOT).split("\n"):
        if line.startswith("+++ "):
            file = line[6:]
        elif match := re.match(r"@@ \S+ \+(\d+)(?:,(\d+))? @@", line):
            first, count = int(match[1]), int(match[2] or 1)
            found.setdefault(file, set()).update(range(first, first + count))
    return found


def main():
    parser = argparse.ArgumentParser(prog="mutate.sh")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--changed", nargs="?", const="", metavar="BASE")
    parser.add_argument("--listed", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("words", nargs="*", metavar="COUNT FILE")
    options = parser.parse_args()
    count = int(options.words.pop(0)) if options.words and options.words[0].isdigit() else 100

    excused = excuses()
    tags = tag_names()
    files = options.words or sources()
    places = [m for file in files for m in mutants_of(file, tags)]
    begun_by = None
    if options.changed is not None:
        lines = changed_lines(options.changed)
        if lines is None and options.changed:
            parser.error("%s is no commit of this clone that HEAD has a past in common with" % options.changed)
        if lines is None:
            print("Nothing to compare with: in this clone, HEAD has no parent. Fetch more of the history, or name a "
                  "commit.")
            return 0
        places = [m for m in places
                  if lines.get(m.file, set()) & set(range(m.line, m.line + m.old.count("\n") + 1))]
    print("%d changes are possible in %d files" % (len(places), len(files)))
    if options.listed:
        chosen = [m for m in places if (m.file, m.old, m.new) in excused]
    else:
        # By the mutant and the seed alone: a change of one file leaves the order of the others as it was.
        places.sort(key=lambda m: hashlib.sha256(("%d\n%s" % (options.seed, m.key())).encode()).digest())
        chosen = places[:count]
    if options.changed is not None:
        in_headers = [m for m in places if m.file.endswith(".h")][:HEADERS_OF_A_CHANGE]
        in_sources = [m for m in places if not m.file.endswith(".h")]
        chosen = in_sources[: OF_A_CHANGE - len(in_headers)] + in_headers
        begun_by = time.monotonic() + SECONDS_OF_A_CHANGE

    SCRATCH.mkdir(parents=True, exist_ok=True)
    builds = [Build("release")]
    if all((ROOT / "build/asan/bin" / program).exists() for program in PROGRAMS):
        builds.append(Build("asan"))
    if chosen and not builds[0].checked:
        check_tests(builds[0])
        builds[0].remember()
    return run_all(chosen, excused, builds, options, begun_by)


def learn(killers_of, file, by):
    """Notes the unit test that an outcome names as the latest that failed on a mutant of a file."""
    match = re.fullmatch(r"unit tests, (\S+\.\S+)", by)
    if match:
        tests = killers_of.setdefault(file, {})
        tests.pop(match[1], None)
        tests[match[1]] = True


def run_all(chosen, excused, builds, options, begun_by):
    """Tries the mutants; begins no more of them after `begun_by`. Returns the status of the script."""
    results = SCRATCH / "results.jsonl"
    tests = "+".join(b.digest for b in builds)
    known = {}
    if results.exists():
        for line in results.read_text().splitlines():
            entry = json.loads(line)
            known[entry["key"], entry["file"]] = entry
    digests = {file: digest(ROOT / file) for file in {m.file for m in chosen}}
    # The tests that failed on a file's mutants, the latest last.
    killers_of = {}
    for entry in known.values():
        learn(killers_of, entry["key"].split("\n")[0], entry["by"])
    lock = threading.Lock()
    folders = [SCRATCH / str(i) for i in range(options.jobs)]
    began = time.monotonic()
    tried = 0

    def outcome_of(mutant):
        nonlocal tried
        if (mutant.file, mutant.old, mutant.new) in excused and not options.listed:
            return "listed", ""
        entry = known.get((mutant.key(), digests[mutant.file]))
        # New tests may kill what survived.
        if entry and (entry["outcome"] != "survived" or entry["tests"] == tests):
            return entry["outcome"], entry["by"]
        if begun_by is not None and time.monotonic() > begun_by:
            return "not tried", ""
        with lock:
            folder = folders.pop()
        try:
            start = time.monotonic()
            likely = list(killers_of.get(mutant.file, []))[: -LIKELY - 1 : -1]
            outcome, by = try_one(mutant, builds, likely, folder)
        finally:
            with lock:
                folders.append(folder)
        with lock:
            tried += 1
            learn(killers_of, mutant.file, by)
            print("%s:%d: %s%s" % (mutant.file, mutant.line, outcome, by and ", " + by), flush=True)
            if outcome == "survived":
                print(mutant.difference(), flush=True)
            with open(results, "a") as out:
                entry = {"key": mutant.key(), "file": digests[mutant.file], "tests": tests,
                         "outcome": outcome, "by": by, "seconds": round(time.monotonic() - start, 1)}
                out.write(json.dumps(entry) + "\n")
        return outcome, by

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        outcomes = list(zip(chosen, pool.map(outcome_of, chosen)))

    survivors = [m for m, (outcome, _) in outcomes if outcome == "survived"]
    new = [m for m in survivors if (m.file, m.old, m.new) not in excused]
    for mutant in new:
        print("\n%s:%d survived:\n%s" % (mutant.file, mutant.line, mutant.difference()))
    minutes = (time.monotonic() - began) / 60
    if tried:
        print("\n%d tried now, %.1f a minute" % (tried, tried / minutes))

    kinds = [outcome for _, (outcome, _) in outcomes]
    killers = [by.split(", ")[0] for _, (outcome, by) in outcomes if outcome == "killed"]
    print("%d mutants: %d killed, %d survived, %d in tests/mutants.txt; left out are %d that the compiler makes "
          "the same of and %d that do not compile"
          % (len(chosen), len(killers), len(new), kinds.count("listed") + len(survivors) - len(new),
             kinds.count("same"), kinds.count("left out")))
    if "not tried" in kinds:
        print("%d were not tried: the time was up" % kinds.count("not tried"))
    for killer in sorted(set(killers)):
        print("  %d by the %s" % (killers.count(killer), killer))
    if killers or new:
        print("%.1f of 100 killed of those that are not in tests/mutants.txt"
              % (100 * len(killers) / (len(killers) + len(new))))
    if options.listed:
        for mutant, (outcome, by) in outcomes:
            if outcome == "killed" and not by.startswith("address"):
                print("%s:%d is in tests/mutants.txt, and killed by %s" % (mutant.file, mutant.line, by))
                new.append(mutant)
    return 1 if new else 0


if __name__ == "__main__":
    sys.exit(main())
