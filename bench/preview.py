#!/usr/bin/env python3
"""Measures quillet-preview against quillet -html on the same reference.

usage: bench/preview.py [--sizes 10000 100000] [--options 10] [--repeat 3]

Builds a Release quillet and quillet-preview in build-bench/, generates the
definitions as run.py does, and for each size measures quillet -html writing
the reference into a fresh directory, then quillet-preview writing the site
of that reference into a fresh directory: wall time and peak resident memory,
each the best of --repeat runs, earlier output flushed to disk first.
"""
import argparse
import os
import shutil
import subprocess
import sys

from run import BUILD, ROOT, fresh, generate, timed


def build():
    subprocess.run(["cmake", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", "-DQUILLET_BUILD_TESTS=OFF"],
                   check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "--target", "quillet", "quillet-preview", "-j", "2"], check=True,
                   stdout=subprocess.DEVNULL)
    return os.path.join(BUILD, "src", "quillet"), os.path.join(BUILD, "src", "preview", "quillet-preview")


def size_of(path):
    total = files = 0
    for folder, _, names in os.walk(path):
        for name in names:
            total += os.path.getsize(os.path.join(folder, name))
            files += 1
    return total, files


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sizes", type=int, nargs="+", default=[10000, 100000])
    parser.add_argument("--options", type=int, default=10)
    parser.add_argument("--repeat", type=int, default=3)
    args = parser.parse_args()

    quillet, preview = build()
    work = os.path.join(BUILD, "work")
    columns = ("keywords", "ref MB", "files", "quillet s", "RSS MB", "site MB", "files", "preview s", "RSS MB",
               "x quillet")
    print("%-9s %8s %7s %9s %7s %8s %7s %9s %7s %9s" % columns)
    for keywords in args.sizes:
        definition, aliases_root = generate(keywords, args.options)
        env = dict(os.environ, VELLUM_SRC=aliases_root)
        reference = os.path.join(work, "reference")
        site = os.path.join(work, "site")
        runs = []
        for _ in range(args.repeat):
            quillet_run = timed([quillet, "-html"], stdin_path=definition, cwd=fresh(reference), env=env)
            shutil.rmtree(site, ignore_errors=True)
            preview_run = timed([preview, reference, site])
            runs.append((quillet_run, preview_run))
        quillet_wall = min(run[0][0] for run in runs)
        preview_wall = min(run[1][0] for run in runs)
        quillet_rss = max(run[0][1] for run in runs)
        preview_rss = max(run[1][1] for run in runs)
        reference_size, reference_files = size_of(reference)
        site_size, site_files = size_of(site)
        print("%-9d %8.1f %7d %9.3f %7.0f %8.1f %7d %9.3f %7.0f %9.2f" % (
            keywords, reference_size / 1e6, reference_files, quillet_wall, quillet_rss / 1e6, site_size / 1e6,
            site_files, preview_wall, preview_rss / 1e6, preview_wall / quillet_wall))
        sys.stdout.flush()
    shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
