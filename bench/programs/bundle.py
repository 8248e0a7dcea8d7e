"""Writes a PEM file of the certificates of a folder, again and again, up to a number of them. Leaves out
those for which a command, which reads a PEM file, prints "refused".

  bundle.py FOLDER NUMBER FILE [COMMAND...]"""
import base64
import pathlib
import subprocess
import sys
import textwrap


def pem(der):
    lines = textwrap.wrap(base64.b64encode(der).decode(), 64)
    return "\n".join(["-----BEGIN CERTIFICATE-----", *lines, "-----END CERTIFICATE-----\n"])


def main():
    folder, number, file, *commands = sys.argv[1:]
    blocks = [pem(path.read_bytes()) for path in sorted(pathlib.Path(folder).iterdir())]
    file = pathlib.Path(file)
    for command in commands:
        file.write_text("".join(blocks))
        lines = subprocess.check_output([*command.split(), file]).split(b"\n")[:-1]
        if len(lines) != len(blocks):
            sys.exit(f"{command}: {len(lines)} lines for {len(blocks)} certificates")
        blocks = [block for block, line in zip(blocks, lines) if line != b"refused"]
    print(f"{len(blocks)} certificates, again and again", file=sys.stderr)
    with file.open("w") as out:
        for i in range(int(number)):
            out.write(blocks[i % len(blocks)])


main()
