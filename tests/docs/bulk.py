"""Makes inputs of docs/bulk.md from certificates.txt, and serves them as a log of Certificate Transparency.

    bulk.py FOLDER PORT_FILE

Writes table.csv, objects.jsonl and scan.jsonl to the folder, and the port to the file. An answer has seven
entries at most (RFC 6962, 4.6), and the first question for entries is refused for now.
"""

import base64
import csv
import http.server
import json
import os
import sys
import urllib.parse

folder, port_file = sys.argv[1:]
with open(f"{folder}/certificates.txt") as file:
    certificates = file.read().split()

with open(f"{folder}/table.csv", "w", newline="") as file:
    table = csv.writer(file)
    table.writerow(["name", "certificate", "seen"])
    table.writerows([f'a "name",\n{i}', one, i] for i, one in enumerate(certificates))
with open(f"{folder}/objects.jsonl", "w") as file:
    for one in certificates:
        print(json.dumps({"parsed": {"raw": "no"}, "raw": one}), file=file)
with open(f"{folder}/scan.jsonl", "w") as file:
    for i, one in enumerate(certificates):
        print(json.dumps({"ip": f"192.0.2.{i}", "tls": {"certificate": {"raw": one}}}), file=file)


def vector(octets):
    return len(octets).to_bytes(3, "big") + octets


def entry(number):
    """Returns an entry of RFC 6962, 3.4: a certificate, or every third time a precertificate."""
    der = base64.b64decode(certificates[number])
    is_precertificate = number % 3 == 0
    start = bytes(2) + (1700000000000).to_bytes(8, "big") + is_precertificate.to_bytes(2, "big")
    issuer = vector(b"\x30\x00")
    if is_precertificate:
        leaf = start + bytes(32) + vector(b"\x30\x00") + bytes(2)
        extra = vector(der) + vector(issuer)
    else:
        leaf = start + vector(der) + bytes(2)
        extra = vector(issuer)
    return {
        "leaf_input": base64.b64encode(leaf).decode(),
        "extra_data": base64.b64encode(extra).decode(),
    }


class Log(http.server.BaseHTTPRequestHandler):
    is_busy = True

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        query = urllib.parse.parse_qs(url.query)
        answer = None
        if url.path == "/2026/ct/v1/get-sth":
            answer = {"tree_size": len(certificates), "timestamp": 0}
        elif url.path == "/2026/ct/v1/get-entries" and not Log.is_busy:
            start, end = int(query["start"][0]), int(query["end"][0])
            assert 0 <= start <= end < len(certificates)
            answer = {"entries": [entry(i) for i in range(start, min(start + 7, end + 1))]}
        else:
            Log.is_busy = False
        self.send_response(503 if answer is None else 200)
        self.end_headers()
        self.wfile.write(json.dumps(answer).encode())

    def log_message(self, *_):
        pass


with http.server.HTTPServer(("127.0.0.1", 0), Log) as server:
    with open(port_file + ".new", "w") as file:
        print(server.server_port, file=file)
    os.rename(port_file + ".new", port_file)
    server.serve_forever()
