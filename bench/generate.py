#!/usr/bin/env python3
"""Writes a large, valid definition file and a matching aliases file.

usage: generate.py KEYWORDS OUT_DEFINITION OUT_ALIASES [--options N] [--seed S] [--shape text|dense]

The mix is what a real command language looks like: every fourth option an
integer, many of them tied to lookup tables with symbolic defaults, doubles
and integers with limits (some by lookup entry ID), booleans, texts with
quoting, and one alias per ten keywords. The `text` shape gives every
keyword and option a description of a few dozen words; the `dense` shape
has short summaries and describes only one keyword and option in ten, so
that records, not texts, make up the file.
"""
import argparse
import random

WORDS = ("the a of to and in is for on with by body orbit scene camera light time step value "
         "number set show hide draw name file size length width height mass radius speed "
         "current selected each every first last new old default when unless after before "
         "planet moon star comet asteroid trail label units degrees seconds days").split()


def sentence(rng, count):
    return " ".join(rng.choice(WORDS) for _ in range(count))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("keywords", type=int)
    parser.add_argument("definition")
    parser.add_argument("aliases")
    parser.add_argument("--options", type=int, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--shape", choices=("text", "dense"), default="text")
    args = parser.parse_args()
    rng = random.Random(args.seed)

    tables = max(1, args.keywords // 50)
    entries = 8
    with open(args.definition, "w") as out:
        out.write("# Generated definition: %d keywords, %d options each\n" % (args.keywords, args.options))
        for t in range(tables):
            out.write("LOOKUP: Table%d\n" % t)
            for e in range(entries):
                value = ("0x%X" % (e * 16)) if e % 3 == 1 else ("1<%d" % e) if e % 3 == 2 else str(e - 4)
                out.write("    T%d_E%d  name%d_%d  %s\n" % (t, e, t, e, value))
        for k in range(args.keywords):
            out.write("\nKEYWORD: cmd%d CMD%d_KWD\n" % (k, k))
            dense = args.shape == "dense"
            out.write("KEY_SUMMARY: %s\n" % sentence(rng, 2 if dense else 6))
            if not dense or k % 10 == 0:
                out.write("KEY_DESCRIPTION: %s\n    %s\n" % (sentence(rng, 14), sentence(rng, 14)))
            if k % 3 == 0 and not dense:
                out.write("KEY_OPERAND_SYNOPSIS: object_name\n")
                out.write("KEY_OPERAND_DESCRIPTION: %s\n" % sentence(rng, 10))
            if k % 7 == 0:
                out.write("KEY_OPERANDS_ARE_MODEL_NAME: 2\nKEY_NO_NEW_MODEL:\n")
            if k % 11 == 0:
                out.write("KEY_ALLOW_BLANK_OPERANDS:\nKEY_NO_DEFAULTS:\n")
            for o in range(args.options):
                oid = "CMD%d_OPT%d" % (k, o)
                kind = o % 4
                if kind == 0:
                    t = rng.randrange(tables)
                    if o % 8 == 0:
                        out.write('    OPTION: opt%d %s NQ_INT_TYPE name%d_%d\n' % (o, oid, t, rng.randrange(entries)))
                        out.write("    OPT_LOOKUP: Table%d\n" % t)
                    else:
                        out.write('    OPTION: opt%d %s NQ_INT_TYPE %d\n' % (o, oid, rng.randrange(10, 90)))
                        out.write("    OPT_MINIMUM: %s\n    OPT_MAXIMUM: 100\n" % ("T%d_E0" % t if o == 4 and k % 10 == 0 else "0"))
                elif kind == 1:
                    out.write('    OPTION: opt%d %s NQ_DOUBLE_TYPE %.3f\n' % (o, oid, rng.uniform(1, 9)))
                    out.write("    OPT_MINIMUM: 0.5\n    OPT_MAXIMUM: 1e3\n")
                elif kind == 2:
                    out.write('    OPTION: opt%d %s NQ_BOOL_TYPE %s\n' % (o, oid, rng.choice(["on", "off", "true", "false"])))
                else:
                    out.write('    OPTION: opt%d %s NQ_STRING_TYPE "%s"\n' % (o, oid, sentence(rng, 2)))
                if not dense or o == k % 10:
                    out.write("    OPT_DESCRIPTION: %s\n" % sentence(rng, 12))
    with open(args.aliases, "w") as out:
        out.write("# Generated aliases\n")
        for k in range(0, args.keywords, 10):
            out.write("alias c%d cmd%d\n" % (k, k))


if __name__ == "__main__":
    main()
