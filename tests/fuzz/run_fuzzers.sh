#!/usr/bin/env bash
# Runs every fuzz target of a clang build for a bounded time under ASan and
# UBSan, starting from the committed seed corpus.
#   run_fuzzers.sh <build-dir> <seconds-per-target>
# New corpus entries go to <build-dir>/fuzz-corpus, reproducers of findings
# to <build-dir>/fuzz-artifacts. Exits non-zero when any target finds
# something (a crash, a leak, a timeout or memory growth past the limit).
# Replay a reproducer with <build-dir>/tests/fuzz/<target> <file>; one of
# fuzz_definition is also a definition file to feed to quillet itself.
set -uo pipefail

build=$(cd "$1" && pwd)
seconds=$2
here=$(cd "$(dirname "$0")" && pwd)
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts"

passed=0
failed=0
for target in fuzz_definition fuzz_alias_file fuzz_values fuzz_diff fuzz_preview fuzz_lint fuzz_format fuzz_lsp fuzz_reread; do
  seeds="$here/corpus/${target#fuzz_}"
  dict="$here/definition.dict"
  if [ -f "$here/${target#fuzz_}.dict" ]; then dict="$here/${target#fuzz_}.dict"; fi
  work="$build/fuzz-corpus/${target#fuzz_}"
  log="$build/$target.log"
  mkdir -p "$work"
  # stdin from /dev/null: nothing the tool reads may wait on a terminal.
  if ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
     "$build/tests/fuzz/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 \
       -print_final_stats=1 -dict="$dict" -artifact_prefix="$artifacts/$target-" \
       "$work" "$seeds" </dev/null >"$log" 2>&1; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    echo "$target: ${runs:-?} runs in ${seconds}s, no finding"
    passed=$((passed + 1))
  else
    echo "$target: FINDING (log $log)"
    tail -n 40 "$log"
    failed=$((failed + 1))
  fi
done

if [ "$failed" -gt 0 ]; then
  echo "reproducers in $artifacts:"
  ls -l "$artifacts"
fi
echo "fuzz: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
