#!/usr/bin/python3
"""Runs `orvelasn1 map` over files on the workers of a Dask cluster.

    map.py --scheduler ADDRESS --results FOLDER FILE... -- OPTION...

A file is a partition. Its lines are in FOLDER/FILE.out when they are complete, and under no such name
before. Run the same again after a break: partitions whose results are there are not done twice. The
options are those of `orvelasn1 map`. Files that end with .gz or .zst are unpacked on the way.

The workers see the files and the folder under the same names as this program, and have orvelasn1 in
their PATH. A worker of one thread uses one processor.
"""

import argparse
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

from distributed import Client, as_completed

UNPACKERS = {".gz": ["gzip", "-dc"], ".zst": ["zstd", "-dcq"]}
UNFINISHED = ".unfinished-"


def work(partition, result, options):
    """Writes the result of a partition, on a worker. Returns the tool's count of elements and errors.

    Two workers may do this at a time where one was taken for dead. Each writes to a file of its own, and
    both write the same lines. A partition that is finished is done again where what this returned was lost
    with its worker.
    """
    if result.exists():
        return "was there"
    command = ["orvelasn1", "map", "--jobs", "1", *options]
    unpacker = UNPACKERS.get(partition.suffix, ["cat"])
    descriptor, unfinished = tempfile.mkstemp(dir=result.parent, prefix=UNFINISHED)
    try:
        with open(partition, "rb") as source, open(descriptor, "wb") as sink:
            with subprocess.Popen(unpacker, stdin=source, stdout=subprocess.PIPE) as unpacked:
                tool = subprocess.run(
                    command, stdin=unpacked.stdout, stdout=sink, stderr=subprocess.PIPE
                )
            said = tool.stderr.decode(errors="replace").strip()
            if tool.returncode != 0:
                raise RuntimeError(f"orvelasn1 ended with {tool.returncode}: {said}")
            if unpacked.returncode != 0:
                raise RuntimeError(f"{unpacker[0]} ended with {unpacked.returncode}")
            os.fsync(sink.fileno())
        os.chmod(unfinished, 0o644)
        os.replace(unfinished, result)
    except BaseException:
        os.unlink(unfinished)
        raise
    return said


def keep_options(file, options):
    """Writes the options of the first run to a file. Ends the program where a later run has others."""
    text = json.dumps(options)
    if not file.exists():
        file.write_text(text)
    elif file.read_text() != text:
        sys.exit(f"{file.parent} has results of other options: {file.read_text()}")


def main():
    words = sys.argv[1:]
    end = words.index("--") if "--" in words else len(words)
    parser = argparse.ArgumentParser(usage="map.py --scheduler ADDRESS --results FOLDER FILE... -- OPTION...")
    parser.add_argument("--scheduler", required=True)
    parser.add_argument("--results", required=True, type=Path)
    parser.add_argument("files", nargs="+", type=Path)
    arguments = parser.parse_args(words[:end])
    options = words[end + 1 :]

    folder = arguments.results.absolute()
    results = {folder / (file.name + ".out"): file.absolute() for file in arguments.files}
    if len(results) != len(arguments.files):
        sys.exit("Two files have the same name.")
    folder.mkdir(parents=True, exist_ok=True)
    keep_options(folder / ".options", options)

    missing = {result: file for result, file in results.items() if not result.exists()}
    failed = 0
    with Client(arguments.scheduler) as client:
        # A task that fails is tried once more, and one whose worker dies, on three more workers.
        tasks = {
            client.submit(work, file, result, options, pure=False, retries=1): file
            for result, file in missing.items()
        }
        for task in as_completed(tasks):
            try:
                outcome = task.result()
            except Exception as error:
                failed += 1
                outcome = f"failed: {error}"
            print(f"{tasks[task].name}: {outcome}", file=sys.stderr)
    # What workers left that died.
    for file in folder.glob(UNFINISHED + "*"):
        file.unlink()
    done = len(missing) - failed
    print(f"{done} done, {len(results) - len(missing)} were there, {failed} failed", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
