#!/usr/bin/env python3
"""Benchmarks quillet against the I/O floor of the same work.

usage: bench/run.py [--sizes 1000 10000 100000] [--shapes text dense] [--options 10] [--repeat 3] [--binary PATH] [--work DIR]
                    [--no-companions]

Builds a Release quillet in build-bench/, generates a definition and an
aliases file per shape and size (bench/generate.py; kept in
build-bench/data/), then for each and each output path (default and -html)
measures, in one go:

- quillet: wall time and peak resident memory of the run;
- its floor: `cat` of the same input to /dev/null plus a `tar` pipe that
  copies the finished output set into a fresh directory, that is reading the
  same bytes and writing the same bytes and files with plain system tools.
  (`cp` is not used: it copies inside the kernel, without the user-space
  write that quillet, like any writer, has to make.)

It also measures the companions on the same definition, each against
quillet's default path (their floor is the `cat` of the input):

- lint: `quillet-lint` of the definition;
- diff: `quillet-diff` of the definition and a copy with one summary changed;
- format: `quillet-format` of the definition to /dev/null;
- lsp: `quillet-lsp`'s median re-check after a one-character change (as
  bench/lsp.py measures it), against lint's time.

Last, it prints each target against the figures of the largest size of each
shape: the default path within 2x its floor and at 100 MB/s (dense) or
150 MB/s (text), peak memory within 1.5x the input, 10x the keywords within
11x the time, -html within 2x its floor, lint within 1.3x quillet's time and
memory, diff and format within 1.5x its time, the server's re-check within
1.5x lint's.

Each figure is the best of --repeat runs. Prints input size, output size,
wall time, input MB/s, records (keywords and options) per second, peak
memory, floor, the ratio of quillet to its floor and of its peak memory to
the input's size.
--binary measures another quillet (an older build, say) on the same data.
--work puts the output sets elsewhere: on a tmpfs (/dev/shm/...) the figures
leave out the disk, whose write-back on a shared machine swamps the -html
path's.
"""
import argparse
import os
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build-bench")


def build():
    subprocess.run(["cmake", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", "-DBUILD_TESTING=OFF"],
                   check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "--target", "quillet", "quillet-lint", "quillet-diff", "quillet-format",
                    "quillet-lsp", "-j", "2"], check=True, stdout=subprocess.DEVNULL)
    return os.path.join(BUILD, "src", "quillet")


def companion(quillet, name):
    """A companion beside the quillet measured, in its build tree."""
    return os.path.join(os.path.dirname(quillet), name.split("-")[1], name)


def generate(keywords, options, shape):
    data = os.path.join(BUILD, "data")
    os.makedirs(data, exist_ok=True)
    definition = os.path.join(data, "%s_k%d_o%d.def" % (shape, keywords, options))
    root = os.path.join(data, "%s_k%d_o%d_src" % (shape, keywords, options))
    aliases = os.path.join(root, "orrery-src", "data", "res", "alias.cmd")
    if not (os.path.exists(definition) and os.path.exists(aliases)):
        os.makedirs(os.path.dirname(aliases), exist_ok=True)
        subprocess.run([sys.executable, os.path.join(ROOT, "bench", "generate.py"), str(keywords), definition,
                        aliases, "--options", str(options), "--shape", shape], check=True)
    return definition, root


def timed(argv, stdin_path=None, cwd=None, env=None, statuses=(0,)):
    """Runs argv; returns (wall seconds, peak RSS in bytes)."""
    # Earlier runs' output is flushed to disk first, so that its write-back
    # does not land in this measurement.
    os.sync()
    stdin = open(stdin_path, "rb") if stdin_path else subprocess.DEVNULL
    start = time.perf_counter()
    process = subprocess.Popen(argv, stdin=stdin, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               cwd=cwd, env=env)
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - start
    if stdin_path:
        stdin.close()
    if os.waitstatus_to_exitcode(status) not in statuses:
        raise SystemExit("failed: %s" % " ".join(argv))
    return wall, usage.ru_maxrss * 1024


def fresh(path):
    shutil.rmtree(path, ignore_errors=True)
    os.makedirs(path)
    return path


def tree_size(path):
    total = files = 0
    for entry in os.scandir(path):
        total += entry.stat().st_size
        files += 1
    return total, files


def measure(quillet, definition, arguments, env, work, repeat):
    best_run = best_floor = None
    peak = 0
    for _ in range(repeat):
        out = fresh(os.path.join(work, "out"))
        wall, rss = timed([quillet] + arguments, stdin_path=definition, cwd=out, env=env)
        best_run = wall if best_run is None else min(best_run, wall)
        peak = max(peak, rss)
        copy = fresh(os.path.join(work, "copy"))
        read_wall, _ = timed(["sh", "-c", 'cat "$0" > /dev/null', definition])
        copy_wall, _ = timed(["sh", "-c", 'tar -C "$0" -cf - . | tar -C "$1" -xf -', out, copy])
        floor = read_wall + copy_wall
        best_floor = floor if best_floor is None else min(best_floor, floor)
    size, files = tree_size(out)
    return best_run, peak, best_floor, size, files


def measure_companion(argv, definition, repeat, statuses=(0,)):
    best_run = best_floor = None
    peak = 0
    for _ in range(repeat):
        wall, rss = timed(argv, statuses=statuses)
        best_run = wall if best_run is None else min(best_run, wall)
        peak = max(peak, rss)
        floor, _ = timed(["sh", "-c", 'cat "$0" > /dev/null', definition])
        best_floor = floor if best_floor is None else min(best_floor, floor)
    return best_run, peak, best_floor


def changed_copy(definition):
    """The definition with its first summary changed: what diff compares it with."""
    copy = definition[:-len(".def")] + "_changed.def"
    if not os.path.exists(copy):
        # By sed, not in this process: a child's peak memory would count a
        # large Python heap here.
        with open(copy, "wb") as out:
            subprocess.run(["sed", "0,/^KEY_SUMMARY:/s//KEY_SUMMARY: Changed/", definition], stdout=out, check=True)
    return copy


def lsp_recheck(quillet, definition):
    """The language server's median re-check of the definition, in seconds."""
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    import lsp
    _, _, rechecks, _, _, _, _, _ = lsp.measure(companion(quillet, "quillet-lsp"), definition, 3, 1)
    return sorted(rechecks)[len(rechecks) // 2]


def verdict(name, value, limit, unit="x", at_least=False):
    met = value >= limit if at_least else value <= limit
    print("  %-44s %8.2f%-5s (target %s %g%s): %s" % (name, value, unit, ">=" if at_least else "<=", limit, unit,
                                                      "met" if met else "NOT met"))


def targets(shape, sizes, figures):
    largest = max(sizes)
    f = figures[largest]
    print("%s shape, %d keywords:" % (shape, largest))
    verdict("default path against its floor", f["default"]["wall"] / f["default"]["floor"], 2)
    verdict("default path speed", f["default"]["mbs"], 100 if shape == "dense" else 150, " MB/s", at_least=True)
    verdict("peak memory against the input", f["default"]["rss"] / f["input"], 1.5)
    if largest // 10 in figures:
        verdict("10x the keywords: time", f["default"]["wall"] / figures[largest // 10]["default"]["wall"], 11)
    verdict("-html against its floor", f["-html"]["wall"] / f["-html"]["floor"], 2)
    if "lint" in f:
        verdict("quillet-lint time against quillet", f["lint"]["wall"] / f["default"]["wall"], 1.3)
        verdict("quillet-lint memory against quillet", f["lint"]["rss"] / f["default"]["rss"], 1.3)
        verdict("quillet-diff time against quillet", f["diff"]["wall"] / f["default"]["wall"], 1.5)
        verdict("quillet-format time against quillet", f["format"]["wall"] / f["default"]["wall"], 1.5)
        verdict("quillet-lsp re-check against quillet-lint", f["lsp"]["wall"] / f["lint"]["wall"], 1.5)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sizes", type=int, nargs="+", default=[1000, 10000, 100000])
    parser.add_argument("--shapes", nargs="+", choices=("text", "dense"), default=["text", "dense"])
    parser.add_argument("--options", type=int, default=10)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--binary", help="quillet to measure instead of a fresh Release build")
    parser.add_argument("--work", default=os.path.join(BUILD, "work"), help="directory for the output sets")
    parser.add_argument("--no-companions", action="store_true", help="measure quillet alone")
    args = parser.parse_args()

    quillet = os.path.abspath(args.binary) if args.binary else build()
    work = args.work
    print("%-6s %-9s %-7s %9s %10s %7s %8s %7s %10s %8s %8s %6s %7s" % (
        "shape", "keywords", "path", "input MB", "output MB", "files", "wall s", "MB/s", "records/s", "floor s",
        "x floor", "RSS MB", "x input"))
    results = {}
    for shape in args.shapes:
        figures = results[shape] = {}
        for keywords in args.sizes:
            definition, aliases_root = generate(keywords, args.options, shape)
            input_size = os.path.getsize(definition)
            records = keywords * (1 + args.options)
            figures[keywords] = {"input": input_size}
            row = "%-6s %-9d %-7s %9.1f %10.1f %7d %8.3f %7.1f %10.0f %8.3f %8.2f %6.0f %7.2f"

            def show(path, wall, peak, floor, size, files, against=""):
                figures[keywords][path] = {"wall": wall, "rss": peak, "floor": floor, "mbs": input_size / 1e6 / wall}
                print(row % (shape, keywords, path, input_size / 1e6, size / 1e6, files, wall, input_size / 1e6 / wall,
                             records / wall, floor, wall / floor, peak / 1e6, peak / input_size) + against)
                sys.stdout.flush()

            for path, arguments in (("default", []), ("-html", ["-html"])):
                env = dict(os.environ, VELLUM_SRC=aliases_root)
                show(path, *measure(quillet, definition, arguments, env, work, args.repeat))
            if args.no_companions:
                continue
            default = figures[keywords]["default"]
            for path, argv, statuses in (
                    ("lint", [companion(quillet, "quillet-lint"), definition], (0,)),
                    ("diff", [companion(quillet, "quillet-diff"), definition, changed_copy(definition)], (0, 1)),
                    ("format", [companion(quillet, "quillet-format"), definition], (0,))):
                wall, peak, floor = measure_companion(argv, definition, args.repeat, statuses)
                show(path, wall, peak, floor, 0, 0, "   %.2f x default time, %.2f x its memory" % (
                    wall / default["wall"], peak / default["rss"]))
    # Last: the client holds the whole document, and every process this
    # script starts afterwards would report its size as the child's peak.
    if not args.no_companions:
        for shape, figures in results.items():
            for keywords in args.sizes:
                definition, _ = generate(keywords, args.options, shape)
                recheck = lsp_recheck(quillet, definition)
                figures[keywords]["lsp"] = {"wall": recheck}
                print("%-6s %-9d %-7s %9.1f %10s %7s %8.3f %59s %.2f x lint" % (
                    shape, keywords, "lsp", figures[keywords]["input"] / 1e6, "", "", recheck, "",
                    recheck / figures[keywords]["lint"]["wall"]))
                sys.stdout.flush()
    print()
    print("Targets:")
    for shape, figures in results.items():
        targets(shape, args.sizes, figures)
    shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
