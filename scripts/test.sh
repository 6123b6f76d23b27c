#!/usr/bin/env bash
# Installs the dependencies, then builds and runs every test: once with GCC
# and once with Clang, both under AddressSanitizer and
# UndefinedBehaviorSanitizer (each test run next to a throw-away PostgreSQL
# server, see with-postgres.sh), checks the formatting, and runs each fuzz
# target for a short while.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

echo "== formatting"
git ls-files -- '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

for preset in test clang; do
  echo "== $preset: configure and build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  echo "== $preset: tests"
  bash scripts/with-postgres.sh ctest --preset "$preset"
done

echo "== fuzz: a short run of each target"
bash scripts/fuzz.sh 30
