#!/usr/bin/env python3
"""Benchmarks quillet against the I/O floor of the same work.

usage: bench/run.py [--sizes 1000 10000 100000] [--shapes text dense] [--options 10] [--repeat 3] [--binary PATH] [--work DIR]
                    [--no-format]

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

It also measures quillet-format on the same definition (path "format":
formatting it to /dev/null; its floor is the `cat` of the input) and
prints its time against quillet's default path.

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
    subprocess.run(["cmake", "--build", BUILD, "--target", "quillet", "quillet-format", "-j", "2"], check=True,
                   stdout=subprocess.DEVNULL)
    return os.path.join(BUILD, "src", "quillet")


def formatter(quillet):
    """quillet-format beside the quillet measured, in its build tree."""
    return os.path.join(os.path.dirname(quillet), "format", "quillet-format")


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


def timed(argv, stdin_path=None, cwd=None, env=None):
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
    if os.waitstatus_to_exitcode(status) != 0:
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


def measure_format(quillet_format, definition, repeat):
    best_run = best_floor = None
    peak = 0
    for _ in range(repeat):
        wall, rss = timed([quillet_format, definition])
        best_run = wall if best_run is None else min(best_run, wall)
        peak = max(peak, rss)
        floor, _ = timed(["sh", "-c", 'cat "$0" > /dev/null', definition])
        best_floor = floor if best_floor is None else min(best_floor, floor)
    return best_run, peak, best_floor


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sizes", type=int, nargs="+", default=[1000, 10000, 100000])
    parser.add_argument("--shapes", nargs="+", choices=("text", "dense"), default=["text", "dense"])
    parser.add_argument("--options", type=int, default=10)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--binary", help="quillet to measure instead of a fresh Release build")
    parser.add_argument("--work", default=os.path.join(BUILD, "work"), help="directory for the output sets")
    parser.add_argument("--no-format", action="store_true", help="leave quillet-format out")
    args = parser.parse_args()

    quillet = os.path.abspath(args.binary) if args.binary else build()
    work = args.work
    print("%-6s %-9s %-7s %9s %10s %7s %8s %7s %10s %8s %8s %6s %7s" % (
        "shape", "keywords", "path", "input MB", "output MB", "files", "wall s", "MB/s", "records/s", "floor s",
        "x floor", "RSS MB", "x input"))
    for shape in args.shapes:
        for keywords in args.sizes:
            definition, aliases_root = generate(keywords, args.options, shape)
            input_size = os.path.getsize(definition)
            records = keywords * (1 + args.options)
            row = "%-6s %-9d %-7s %9.1f %10.1f %7d %8.3f %7.1f %10.0f %8.3f %8.2f %6.0f %7.2f"
            for path, arguments in (("default", []), ("-html", ["-html"])):
                env = dict(os.environ, VELLUM_SRC=aliases_root)
                wall, peak, floor, size, files = measure(quillet, definition, arguments, env, work, args.repeat)
                print(row % (shape, keywords, path, input_size / 1e6, size / 1e6, files, wall,
                             input_size / 1e6 / wall, records / wall, floor, wall / floor, peak / 1e6,
                             peak / input_size))
                sys.stdout.flush()
                if path == "default":
                    default_wall = wall
            if not args.no_format:
                wall, peak, floor = measure_format(formatter(quillet), definition, args.repeat)
                print(row % (shape, keywords, "format", input_size / 1e6, input_size / 1e6, 1, wall,
                             input_size / 1e6 / wall, records / wall, floor, wall / floor, peak / 1e6,
                             peak / input_size) + "   %.2f x default" % (wall / default_wall))
                sys.stdout.flush()
    shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
