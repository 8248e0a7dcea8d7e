"""Counts what was compared, and keeps the differences."""
import collections

from compare_der import Refused


class Report:
    def __init__(self):
        self.file = ""  # what is compared now
        self.hostile = False  # whether it is one that no peer needs to read
        self.counts = collections.Counter()
        self.alone = collections.Counter()  # the values that no peer reads
        self.differences = {}

    def differ(self, path, ours, theirs):
        self.differences.setdefault((self.file, path), []).append(f"{ours!r} != {theirs!r}")

    def compare(self, kind, path, ours, theirs):
        """Compares two values of a kind, down to where they differ."""
        self.counts[kind] += 1
        self._compare(path, ours, theirs)

    def _compare(self, path, ours, theirs):
        if isinstance(ours, dict) and isinstance(theirs, dict):
            for name in {**theirs, **ours}:
                self._compare(f"{path}.{name}", ours.get(name), theirs.get(name))
        elif isinstance(ours, list) and isinstance(theirs, list) and len(ours) == len(theirs):
            for number, pair in enumerate(zip(ours, theirs)):
                self._compare(f"{path}[{number}]", *pair)
        elif ours != theirs or isinstance(ours, bool) != isinstance(theirs, bool):
            self.differ(path, ours, theirs)

    def ask(self, kind, path, *questions):
        """Compares a value with each peer's. A question returns ours and theirs, or refuses.

        Returns how many peers answered.
        """
        answers = 0
        for question in questions:
            try:
                ours, theirs = question()
            except Refused:
                continue
            self.compare(kind, path, ours, theirs)
            answers += 1
        if not answers:
            self.alone[kind] += 1
        return answers

    def must_agree(self, kind, path, ours, *questions):
        """Does the same. That no peer answers is a difference, unless the file is hostile."""
        if not self.ask(kind, path, *questions) and not self.hostile:
            self.differ(path, ours, "what no peer reads")
