#!/usr/bin/env python3
"""Measures quillet-lsp as an editor uses it.

usage: bench/lsp.py [--sizes 2000 100000] [--changes 5] [--requests 20] [--binary PATH]

Builds a Release quillet-lsp in build-bench/ (or takes --binary), generates
the benchmark definitions with bench/generate.py (kept in build-bench/data/,
shared with run.py), and for each size:

- opens the definition and waits for its diagnostics;
- makes one-character changes (a letter of a description replaced) and
  times each from sending the change to receiving the diagnostics of that
  version: the re-check time, against 50 ms for 2,000 keywords and 2 s for
  100,000;
- times hover (an option name), definition (OPT_LOOKUP:'s table) and
  completion (after OPT_LOOKUP:) from request to answer, once with the
  server idle and once right after a change, while the re-check runs:
  against 10 ms, never queued behind the check;
- asks for the whole document's semantic tokens and symbols, as editors do
  after every change, and times a hover asked right after them;
- types: five changes 150 ms apart, timed from the last to its
  diagnostics (a newer change stops the check of an older one);
- reads the server's processor time per change (user and system), which
  a loaded machine does not inflate as it does the wall time;
- reads the server's peak and current resident memory against the
  document's size: against 3x.

Prints the median and worst of each figure.
"""
import argparse
import json
import os
import queue
import statistics
import subprocess
import sys
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build-bench")
URI = "file:///bench.def"


def build():
    subprocess.run(["cmake", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", "-DBUILD_TESTING=OFF"],
                   check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "--target", "quillet-lsp", "-j", "2"], check=True,
                   stdout=subprocess.DEVNULL)
    return os.path.join(BUILD, "src", "lsp", "quillet-lsp")


def generate(keywords):
    data = os.path.join(BUILD, "data")
    os.makedirs(data, exist_ok=True)
    definition = os.path.join(data, "text_k%d_o10.def" % keywords)
    if not os.path.exists(definition):
        aliases = os.path.join(data, "text_k%d_o10_src" % keywords, "orrery-src", "data", "res", "alias.cmd")
        os.makedirs(os.path.dirname(aliases), exist_ok=True)
        subprocess.run([sys.executable, os.path.join(ROOT, "bench", "generate.py"), str(keywords), definition,
                        aliases], check=True)
    return definition


class Client:
    """Talks to one server: framed messages out, a thread reading them in."""

    def __init__(self, binary):
        self.process = subprocess.Popen([binary], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.messages = queue.Queue()
        self.answered = set()  # ids of the answers read so far
        self.published = {}  # document version: when its diagnostics came, read while waiting for something else
        self.next_id = 0
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        out = self.process.stdout
        while True:
            length = None
            while True:
                line = out.readline()
                if not line:
                    return
                if line in (b"\r\n", b"\n"):
                    break
                if line.lower().startswith(b"content-length:"):
                    length = int(line.split(b":")[1])
            self.messages.put((time.perf_counter(), json.loads(out.read(length))))

    def send(self, message):
        body = json.dumps(message).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def request(self, method, params):
        self.next_id += 1
        self.send({"jsonrpc": "2.0", "id": self.next_id, "method": method, "params": params})
        return self.next_id

    def wait(self, test):
        while True:
            at, message = self.messages.get(timeout=120)
            if "id" in message and "method" not in message:
                self.answered.add(message["id"])
            if message.get("method") == "textDocument/publishDiagnostics":
                self.published[message["params"].get("version")] = at
            if test(message):
                return at, message

    def answer(self, method, params):
        start = time.perf_counter()
        ident = self.request(method, params)
        at, message = self.wait(lambda m: m.get("id") == ident and "method" not in m)
        return at - start, message.get("result")

    def diagnostics(self, version):
        if version not in self.published:
            self.wait(lambda m: m.get("method") == "textDocument/publishDiagnostics"
                      and m["params"].get("version") == version)
        return self.published[version]

    def memory(self):
        fields = {}
        with open("/proc/%d/status" % self.process.pid) as status:
            for line in status:
                name, _, value = line.partition(":")
                fields[name] = value.strip()
        return int(fields["VmRSS"].split()[0]) * 1024, int(fields["VmHWM"].split()[0]) * 1024

    def cpu(self):
        """The server's user and system time so far, in seconds."""
        with open("/proc/%d/stat" % self.process.pid) as stat:
            fields = stat.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def settle(self):
        """Waits until the server's processor time stops growing."""
        before = self.cpu()
        while True:
            time.sleep(0.2)
            now = self.cpu()
            if now == before:
                return
            before = now

    def close(self):
        self.answer("shutdown", None)
        self.send({"jsonrpc": "2.0", "method": "exit"})
        self.process.wait()


def places(text):
    """(line, character) of an option name, an OPT_LOOKUP: table and the place after OPT_LOOKUP:, near the middle."""
    lines = text.split("\n")
    middle = len(lines) // 2
    option = lookup = None
    for number in range(middle, len(lines)):
        line = lines[number]
        stripped = line.lstrip()
        indent = len(line) - len(stripped)
        if option is None and stripped.startswith("OPTION: "):
            option = (number, indent + len("OPTION: ") + 1)
        if lookup is None and stripped.startswith("OPT_LOOKUP: "):
            lookup = (number, indent + len("OPT_LOOKUP: "))
        if option and lookup:
            return option, lookup
    raise SystemExit("no OPTION: and OPT_LOOKUP: in the second half of the definition")


def description_letter(text, start_line):
    lines = text.split("\n")
    for number in range(start_line, len(lines)):
        at = lines[number].find("OPT_DESCRIPTION: ")
        if at >= 0:
            return number, at + len("OPT_DESCRIPTION: ")
    raise SystemExit("no OPT_DESCRIPTION: to change")


def position(place):
    return {"line": place[0], "character": place[1]}


def measure(binary, definition, changes, requests):
    with open(definition, encoding="utf-8") as source:
        text = source.read()
    size = len(text.encode())
    option, lookup = places(text)
    letter = description_letter(text, len(text.split("\n")) // 3)
    client = Client(binary)
    client.answer("initialize", {"capabilities": {"general": {"positionEncodings": ["utf-8"]}}})
    client.send({"jsonrpc": "2.0", "method": "initialized", "params": {}})
    start = time.perf_counter()
    client.send({"jsonrpc": "2.0", "method": "textDocument/didOpen",
                 "params": {"textDocument": {"uri": URI, "languageId": "quillet", "version": 1, "text": text}}})
    opened = client.diagnostics(1) - start
    document = {"uri": URI}

    def ask():
        times = {}
        for name, method, params in (
                ("hover", "textDocument/hover", {"textDocument": document, "position": position(option)}),
                ("definition", "textDocument/definition",
                 {"textDocument": document, "position": position((lookup[0], lookup[1] + 1))}),
                ("completion", "textDocument/completion", {"textDocument": document, "position": position(lookup)})):
            took, result = client.answer(method, params)
            if not result:
                raise SystemExit("%s gave no answer" % name)
            times[name] = took
        return times

    # Editors ask for the semantic tokens and the symbols of the whole
    # document after every change: a hover asked right after them must not
    # wait for their answers.
    whole = [client.request("textDocument/semanticTokens/full", {"textDocument": document}),
             client.request("textDocument/documentSymbol", {"textDocument": document})]
    behind_whole, _ = client.answer("textDocument/hover", {"textDocument": document, "position": position(option)})
    for ident in whole:
        if ident not in client.answered:
            client.wait(lambda m, ident=ident: m.get("id") == ident and "method" not in m)
    rechecks = []
    idle = {"hover": [], "definition": [], "completion": []}
    busy = {"hover": [], "definition": [], "completion": []}
    for _ in range(requests):
        for name, took in ask().items():
            idle[name].append(took)
    version = 1
    cpu_before = client.cpu()
    for change in range(changes):
        version += 1
        edit = {"range": {"start": position(letter), "end": position((letter[0], letter[1] + 1))},
                "text": "xy"[change % 2]}
        start = time.perf_counter()
        client.send({"jsonrpc": "2.0", "method": "textDocument/didChange",
                     "params": {"textDocument": {"uri": URI, "version": version}, "contentChanges": [edit]}})
        for name, took in ask().items():
            busy[name].append(took)
        rechecks.append(client.diagnostics(version) - start)
    client.settle()
    # Of the server's whole process, requests and framing included: on a
    # shared machine the wall time also holds other processes' turns.
    cpu = (client.cpu() - cpu_before) / changes
    # Typing: a change every 150 ms; a newer change stops the check of an
    # older one, so the last waits for one check, not for every one.
    for change in range(5):
        version += 1
        edit = {"range": {"start": position(letter), "end": position((letter[0], letter[1] + 1))},
                "text": "xy"[change % 2]}
        if change:
            time.sleep(0.15)
        start = time.perf_counter()
        client.send({"jsonrpc": "2.0", "method": "textDocument/didChange",
                     "params": {"textDocument": {"uri": URI, "version": version}, "contentChanges": [edit]}})
    typing = client.diagnostics(version) - start
    # The server frees the replaced version after publishing the new one's
    # diagnostics: memory is read once it has stopped working.
    client.settle()
    rss, peak = client.memory()
    client.close()
    return size, opened, rechecks, typing, cpu, idle, busy, behind_whole, rss, peak


def ms(seconds):
    return "%.1f ms" % (seconds * 1000)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sizes", type=int, nargs="+", default=[2000, 100000])
    parser.add_argument("--changes", type=int, default=5)
    parser.add_argument("--requests", type=int, default=20)
    parser.add_argument("--binary")
    args = parser.parse_args()
    binary = args.binary or build()
    targets = {2000: 0.05, 100000: 2.0}
    for keywords in args.sizes:
        definition = generate(keywords)
        size, opened, rechecks, typing, cpu, idle, busy, behind_whole, rss, peak = measure(binary, definition, args.changes, args.requests)
        print("%d keywords, %.1f MB" % (keywords, size / 1e6))
        print("  open to diagnostics:   %s" % ms(opened))
        target = targets.get(keywords)
        print("  one-character re-check: median %s, worst %s%s" % (
            ms(statistics.median(rechecks)), ms(max(rechecks)),
            "" if target is None else " (target %s: %s)" % (ms(target), "met" if max(rechecks) <= target else "NOT met")))
        print("  typing, five changes 150 ms apart: the last one's diagnostics after %s" % ms(typing))
        print("  server CPU time per change: %s" % ms(cpu))
        for name in ("hover", "definition", "completion"):
            print("  %-10s idle: median %s, worst %s; during a re-check: median %s, worst %s" % (
                name, ms(statistics.median(idle[name])), ms(max(idle[name])),
                ms(statistics.median(busy[name])), ms(max(busy[name]))))
        print("  hover asked right after the whole document's semantic tokens and symbols: %s" % ms(behind_whole))
        print("  memory: %.0f MB now, %.0f MB peak = %.2fx / %.2fx the document (target 3x)" % (
            rss / 1e6, peak / 1e6, rss / size, peak / size))


if __name__ == "__main__":
    main()
