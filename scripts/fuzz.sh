#!/usr/bin/env bash
# Builds the fuzz targets (Clang, libFuzzer, ASan + UBSan) and runs each one
# for the given number of seconds (default 30), starting from the example
# files and the texts with escaped lines in fuzz/seeds.
# Usage: scripts/fuzz.sh [SECONDS] [CORPUS_DIR]
# The grown corpus stays in CORPUS_DIR (default: a temporary folder that is
# removed afterwards); crashing inputs are written to the current folder.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
keep=${2:-}

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

if [ -n "$keep" ]; then
  work=$keep
else
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
fi

run() {
  local target=$1
  shift
  local corpus=$work/$target
  mkdir -p "$corpus"
  for seed in "$@"; do cp -n "$seed" "$corpus/" 2>/dev/null || true; done
  echo "== fuzz: $target for ${seconds}s"
  local log=$work/$target.log
  if ! "build/fuzz/fuzz/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2560 \
    -max_len=65536 -print_final_stats=1 "$corpus" >"$log" 2>&1; then
    tail -n 80 "$log"
    echo "fuzz: $target found a failing input (written to the current folder)"
    return 1
  fi
  grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units)' "$log" || tail -n 3 "$log"
}

run fuzz_structure_reader examples/data/*.str fuzz/seeds/*.str
run fuzz_query_reader examples/data/*.qry fuzz/seeds/*.qry
run fuzz_captions_loader examples/data/*.qry examples/data/*.txt fuzz/seeds/*.qry
run fuzz_parse_sql examples/data/*.sql
